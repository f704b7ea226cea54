#pragma once
/// One copying run: copies objects with all that they own, then turns the copies' references to the copies.
///
/// Between two drawings what a copy points at is looked up in the destination by name (layers, styles, blocks, members
/// of named dictionaries): the destination's stands, what it lacks is copied along. A reference to what has no
/// counterpart becomes null. A run that fails leaves its destination to the savepoint.

#include "db/database.h"
#include "db/id_mapping.h"
#include "db/savepoint.h"

#include <deque>
#include <unordered_set>

struct AcDbOpaqueFields;

class AcDbCloneRun {
public:
    AcDbCloneRun(AcDbDatabase& from, AcDbDatabase& to, AcDbIdMapping& mapping, AcDbSavepoint& savepoint);
    AcDbCloneRun(const AcDbCloneRun&) = delete;
    AcDbCloneRun& operator=(const AcDbCloneRun&) = delete;

    /// Copies entities into a block of the destination, which is open for write.
    Acad::ErrorStatus cloneEntities(const std::vector<AcDbObjectId>& entities, AcDbBlockTableRecord& target);
    /// The same with all entities of a block.
    Acad::ErrorStatus cloneContents(AcDbObjectId block, AcDbBlockTableRecord& target);
    /// Gives an object that the destination has already the data of its namesake, which counts as a copy from then on.
    /// For a new destination, which nobody brings back to a former state.
    Acad::ErrorStatus adopt(AcDbObjectId source, AcDbObjectId namesake);
    /// Copies what the copies need until nothing is missing.
    Acad::ErrorStatus cloneNeeded();
    /// Turns the references of all copies. Can't fail.
    void translate();
    /// A source block that must not be needed: the block that is being made would contain itself.
    void forbid(AcDbObjectId sourceBlock) { forbidden_ = sourceBlock; }
    /// A sentence about the failure, empty where the status tells all.
    const std::string& failureText() const { return failureText_; }
    /// What the destination's user should know of what was copied.
    const std::vector<std::string>& warnings() const { return warnings_; }

private:
    friend class AcDbTranslator;
    /// A copy whose original's references haven't been followed yet.
    struct Pending {
        AcDbObject* original;
        AcDbObject* copy;
    };

    bool betweenDrawings() const { return &from_ != &to_; }
    Acad::ErrorStatus checkSound(const AcDbObject& original, bool listBroken = false);
    void remember(AcDbObject& original, AcDbObject& copy);

    // Growth
    Acad::ErrorStatus cloneEntity(AcDbObject& original, AcDbBlockTableRecord& target);
    Acad::ErrorStatus cloneChild(AcDbObject& original, AcDbObject& copy);
    Acad::ErrorStatus cloneRecordContents(const AcDbBlockTableRecord& original, const AcDbObject& copy);
    Acad::ErrorStatus followAll(const Pending& pending);
    Acad::ErrorStatus follow(const Pending& pending, AcDbObjectId id, AcDb::ReferenceKind kind);
    Acad::ErrorStatus followBeside(AcDbObject& original, const AcDbObject& copy);
    Acad::ErrorStatus noteUse(const AcDbObject& user, const AcDbBlockTableRecord& block);
    Acad::ErrorStatus checkNesting() const;

    // Counterparts in another drawing
    Acad::ErrorStatus findRecord(AcDbSymbolTableRecord& record);
    AcDbObjectId tableFor(const AcDbSymbolTableRecord& record) const;
    AcDbObjectId standingRecord(const AcDbSymbolTableRecord& record, const AcDbSymbolTable& table);
    const std::string& shapeFileKey(const AcDbSymbolTableRecord& record) const;
    std::string freeAnonymousName(const std::string& name, const AcDbSymbolTable& table);
    Acad::ErrorStatus findMember(AcDbObject& object);
    Acad::ErrorStatus findFolder(AcDbDictionary& dictionary, AcDbObjectId& counterpart, int depth = 0);
    const std::string& keyIn(const AcDbDictionary& dictionary, AcDbObjectId member);

    // Translation
    void tidy(AcDbObject& copy);
    void translateXData(AcDbObject& copy);
    void translateOpaque(AcDbObject& copy);
    void translateFields(AcDbOpaqueFields& fields);
    uint64_t translatedHandle(uint64_t handle) const;

    AcDbDatabase& from_;
    AcDbDatabase& to_;
    AcDbIdMapping& mapping_;
    AcDbSavepoint& savepoint_;
    std::deque<Pending> pending_;
    std::vector<AcDbObjectId> created_;
    /// Between copied blocks, by the originals: which holds references to which.
    std::unordered_map<AcDbObjectId, std::unordered_set<AcDbObjectId>> uses_;
    std::unordered_map<AcDbObjectId, std::unordered_map<AcDbObjectId, std::string>> keys_; // by dictionary
    std::unordered_map<AcDbObjectId, AcDbObjectId> folders_; // named dictionaries and their counterparts
    std::unordered_map<std::string, size_t> nextNumbers_;    // of anonymous blocks, by what stands before the number
    AcDbObjectId forbidden_;
    std::string failureText_;
    std::vector<std::string> warnings_;
    bool lostReference_ = false; // by the copy that is being turned
};

/// Objects that stay in the drawing that they belong to.
bool acdbStaysBehind(const AcDbObject& object);
