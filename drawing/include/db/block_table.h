// Blocks: the block table, its records and the walk over a record's entities.
#pragma once

#include "db/entity.h"
#include "db/symbol_table.h"

#include <memory>

class AcDbBlockTableRecordIterator;

/// A block definition or a space. Entities are kept in the order in which they came.
class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
    ACDB_DECLARE_MEMBERS(AcDbBlockTableRecord)
public:
    /// The base point, in the block's coordinates.
    AcGePoint3d origin() const { return data_.origin; }
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
    bool isAnonymous() const { return data_.anonymous; }
    /// True for *Model_Space, *Paper_Space and the further paper spaces.
    bool isLayout() const;
    bool isFromExternalReference() const { return data_.isXref; }
    bool isFromOverlayReference() const { return data_.xrefOverlaid; }
    const std::string& pathName() const { return data_.xrefPath; }
    Acad::ErrorStatus setPathName(const char* path);
    /// What an external reference shows: the drawing that was read for it; null while none has been. It is no part of
    /// the record's data.
    AcDbDatabase* xrefDatabase() const { return content_.xref.get(); }
    void setXrefDatabase(std::shared_ptr<AcDbDatabase> shown) const { content_.xref = std::move(shown); }
    /// What a reference to this block shows: its own entities or, of an external reference, the model space of the
    /// drawing that was read; and the base point there.
    struct Shown {
        AcDbObjectId record;
        AcGePoint3d base;
    };
    Shown shown() const;
    const std::string& comments() const { return data_.description; }
    Acad::ErrorStatus setComments(const char* text);
    /// The picture that lists of blocks show: a device-independent bitmap without file header, its bytes as they stand
    /// in the file. Nobody has checked them.
    using PreviewIcon = std::vector<uint8_t>;
    bool hasPreviewIcon() const { return !data_.previewIcon.empty(); }
    /// eNotApplicable: there is none.
    Acad::ErrorStatus getPreviewIcon(PreviewIcon& icon) const;
    /// An empty one takes the picture away. eNotOpenForWrite.
    Acad::ErrorStatus setPreviewIcon(const PreviewIcon& icon);
    AcDbObjectId getLayoutId() const { return data_.layout; }
    /// True if an attribute definition that isn't erased is among the entities.
    bool hasAttributeDefinitions() const;

    /// Appends a temporary entity, which becomes resident and stays open for write. Needs this record open for
    /// write. An entity that was given no layer gets the database's defaults. eAlreadyInDb, eNotOpenForWrite.
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
    /// A new iterator, owned by the caller, at the first or the last entity. With `skipDeleted` an erased one
    /// there is passed over.
    Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;
    /// Ids of the references to this block that aren't erased.
    Acad::ErrorStatus getBlockReferenceIds(std::vector<AcDbObjectId>& ids) const;

    void visitReferences(AcDbReferenceVisitor& visitor) override;

    struct Data {
        AcGePoint3d origin;
        bool anonymous = false, isXref = false, xrefOverlaid = false, xrefLoaded = false;
        std::string xrefPath;
        std::string description;
        std::string previewIcon;
        AcDbObjectId layout;
        AcDbObjectId blockBegin, blockEnd;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }
    /// A copy that goes into another drawing has neither the layout nor the enclosing entities of the original.
    void dropFileParts();
    /// A new record gets the two entities that enclose its contents in a file.
    void madeResident() override;
    /// Contents go with their record, and come back with it.
    Acad::ErrorStatus subErase(bool erasing) override;

    // The sequence of entities and the list of references belong to the record's identity, not to its data:
    // undo doesn't touch them, since erased entities stay in the sequence.

    /// Ids of all entities in order, erased ones included. Loaded from the file at the first call; with `decoding` the
    /// entities themselves as well, which is quicker for who opens all of them than one by one.
    const std::vector<AcDbObjectId>& entities(bool decoding = false) const;
    bool entitiesLoaded() const { return content_.loaded; }
    /// True if the file's chain didn't lead to the last entity: some are missing. Known once the sequence is loaded.
    bool isChainBroken() const { return content_.broken; }
    /// First and last entity as the file names them, before the sequence is loaded.
    void setFileChain(AcDbObjectId first, AcDbObjectId last) {
        content_.first = first;
        content_.last = last;
        content_.loaded = first.isNull();
    }
    AcDbObjectId fileFirst() const { return content_.first; }
    AcDbObjectId fileLast() const { return content_.last; }
    /// Whether the file says that attribute definitions are among the entities; holds until the sequence is loaded.
    bool fileHasDefinitions() const { return content_.hasDefinitions; }
    void setFileDefinitions(bool has) { content_.hasDefinitions = has; }
    void noteReference(AcDbObjectId reference);
    void setFileReferences(std::vector<AcDbObjectId> references) { content_.references = std::move(references); }
    const std::vector<AcDbObjectId>& references() const { return content_.references; }
    /// Forgets the references behind the first `count`.
    void forgetReferences(size_t count) { content_.references.resize(std::min(count, content_.references.size())); }
    /// Forgets entities that aren't even erased objects any more.
    void forgetRemovedEntities() {
        std::erase_if(content_.entities, [](AcDbObjectId id) { return !id.isNull() && !id.isValid(); });
    }

private:
    friend class AcDbBlockTableRecordIterator;
    struct Content {
        std::vector<AcDbObjectId> entities;
        std::vector<AcDbObjectId> references;
        std::vector<AcDbObjectId> erasedWithRecord;
        AcDbObjectId first, last;
        std::shared_ptr<AcDbDatabase> xref;
        bool loaded = true;
        bool broken = false;
        bool hasDefinitions = false;
    };
    Data data_;
    mutable NotCopied<Content> content_;
};

ACDB_SYMBOL_TABLE(AcDbBlockTable, AcDbBlockTableRecord)

/// Walks a record's entities. Entities appended while it walks are seen by a forward walk.
class AcDbBlockTableRecordIterator {
public:
    AcDbBlockTableRecordIterator(const AcDbBlockTableRecord& record, bool atBeginning, bool skipDeleted);
    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forwards = true, bool skipDeleted = true);
    /// Moves to that entity. eInvalidInput: it isn't in the record.
    Acad::ErrorStatus seek(AcDbObjectId entity);
    Acad::ErrorStatus getEntityId(AcDbObjectId& id) const;
    /// Opens the entity; on failure `entity` is null. eInvalidInput at the end.
    Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode, bool openErased = false) const;

private:
    void skip(bool forwards, bool skipDeleted);

    const std::vector<AcDbObjectId>& entities_;
    ptrdiff_t position_ = 0;
};

/// Names of the two spaces that every drawing has.
inline constexpr const char* ACDB_MODEL_SPACE = "*Model_Space";
inline constexpr const char* ACDB_PAPER_SPACE = "*Paper_Space";
