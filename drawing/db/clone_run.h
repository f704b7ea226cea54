#pragma once
/// One copying run: copies objects with all that they own, then turns the copies' references to the copies.
///
/// Between two drawings, what a copy points at is looked up in the destination by name (layers, styles, blocks,
/// members of named dictionaries): the destination's stands, what it lacks is copied along. A reference that has no
/// counterpart becomes null.

#include "db/database.h"
#include "db/id_mapping.h"

#include <deque>

class AcDbCloneRun {
public:
    AcDbCloneRun(AcDbDatabase& from, AcDbDatabase& to, AcDbIdMapping& mapping)
        : from_(from), to_(to), mapping_(mapping) {}
    AcDbCloneRun(const AcDbCloneRun&) = delete;
    AcDbCloneRun& operator=(const AcDbCloneRun&) = delete;

    /// Copies entities into a block of the destination, which is open for write.
    Acad::ErrorStatus cloneEntities(const std::vector<AcDbObjectId>& entities, AcDbBlockTableRecord& target);
    /// Turns references, copying records that turn out to be missing, until nothing is left to do.
    Acad::ErrorStatus translate();
    /// A source block that must not be needed: the block that is being made would contain itself.
    void forbid(AcDbObjectId sourceBlock) { forbidden_ = sourceBlock; }
    /// Takes out again all that was copied.
    void rollBack();

private:
    friend class AcDbTranslator;
    Acad::ErrorStatus cloneEntity(AcDbObjectId source, AcDbBlockTableRecord& target);
    Acad::ErrorStatus cloneOwned(AcDbObject& source, AcDbObject& copy, AcDbBlockTableRecord* target);
    Acad::ErrorStatus cloneChild(AcDbObjectId child, AcDbObject& copy);
    Acad::ErrorStatus cloneBlockContents(AcDbObjectId source, AcDbObjectId copy);
    void remember(AcDbObject& source, AcDbObject& copy);
    AcDbObjectId counterpart(AcDbObjectId foreign);
    AcDbObjectId counterpartRecord(AcDbSymbolTableRecord& record);
    AcDbObjectId counterpartInDictionary(AcDbObject& object, AcDbDictionary& dictionary);
    AcDbObjectId counterpartTable(AcDbObjectId table) const;
    std::string freeAnonymousName(const std::string& name, const AcDbSymbolTable& table) const;

    AcDbDatabase& from_;
    AcDbDatabase& to_;
    AcDbIdMapping& mapping_;
    std::deque<AcDbObjectId> untranslated_; // copies whose references still name originals
    std::deque<std::pair<AcDbObjectId, AcDbObjectId>> blocks_; // copied blocks whose contents are still to come
    std::vector<AcDbObjectId> created_;
    AcDbObjectId forbidden_;
    Acad::ErrorStatus failure_ = Acad::eOk;
};
