// Symbol tables: the named records of a drawing (layers, blocks, linetypes ...).
//
// Names compare without regard to case (A to Z and the letters of code page 1252). An erased record's name is
// free again. Tables and records follow the open rules of db/object.h; iterators belong to the caller and
// may be used while the table is open or closed, as long as its database lives.
#pragma once

#include "db/not_copied.h"
#include "db/object.h"
#include "db/open.h"

#include <string>
#include <unordered_map>
#include <vector>

class AcDbSymbolTable;
class AcDbSymbolTableIterator;

/// True if the text can name a record: 1 to 255 characters, none of  < > / \ " : ; ? * | , = `  and no
/// control character; a leading `*` is for anonymous blocks and spaces alone.
bool acdbIsValidSymbolName(const char* name);
/// Letters in upper case by code page 1252: the form under which names compare.
std::string acdbFoldName(std::string_view name);
/// Whether both are the same by that comparison.
bool acdbIsSameName(std::string_view a, std::string_view b);

class AcDbSymbolTableRecord : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord)
public:
    /// A copy of the name, released by the caller with acutDelString.
    Acad::ErrorStatus getName(char*& name) const;
    const std::string& name() const { return name_; }
    /// eInvalidSymbolTableName; eDuplicateRecordName: another record of the table has it.
    Acad::ErrorStatus setName(const char* name);
    /// True for a record that came in with an external reference ("xref|name").
    bool isDependent() const { return xrefDependent_; }
    /// True for a record that is known by something else than its name: a shape file's style.
    virtual bool mayBeNameless() const { return false; }
    void dataRestored() override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;

    /// The flags with which every record begins in a file.
    struct FileFlags {
        bool referenced = true;
        unsigned short xrefIndex = 0; // 0 none, 256 resolved
        AcDbObjectId xrefBlock;
    };
    const FileFlags& fileFlags() const { return fileFlags_; }
    /// Sets name and flags while decoding.
    void setFromFile(std::string name, bool dependent, const FileFlags& flags);

protected:
    AcDbSymbolTableRecord() = default;

private:
    std::string name_;
    FileFlags fileFlags_;
    bool xrefDependent_ = false;
};

class AcDbSymbolTable : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable)
public:
    bool has(const char* name) const;
    bool has(AcDbObjectId record) const;
    /// eKeyNotFound; eWasErased only with an id of an erased record of that name and `getErased` false.
    Acad::ErrorStatus getAt(const char* name, AcDbObjectId& id, bool getErased = false) const;
    Acad::ErrorStatus getAt(const char* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                            bool openErased = false) const;
    /// Appends a temporary record, which stays open for write. Needs the table open for write.
    /// eDuplicateRecordName, eInvalidSymbolTableName, eAlreadyInDb.
    Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
    Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);
    /// A new iterator, owned by the caller, at the first or the last record.
    Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

    /// Records in order, erased ones included. For the database's own code.
    const std::vector<AcDbObjectId>& records() const { return content_.records; }
    /// Fills the table while decoding; a null id keeps an empty place of the file's list.
    void addFromFile(AcDbObjectId record);
    /// Takes out the last record, which is to be removed for good.
    void forgetLast();
    /// The record's name was changed (also by undo): the look-up follows.
    void recordRenamed(const AcDbSymbolTableRecord& record);
    void visitReferences(AcDbReferenceVisitor& visitor) override;

protected:
    AcDbSymbolTable() = default;

private:
    void ensureIndexed() const;
    AcDbObjectId find(std::string_view name, bool erasedToo) const;

    struct Content {
        std::vector<AcDbObjectId> records;
        std::unordered_multimap<std::string, AcDbObjectId> byName; // folded names, stale ones are skipped
        size_t indexed = 0;                                        // records that byName has been offered
    };
    mutable NotCopied<Content> content_;
};

/// Walks the records of a table in their order. Records added while it walks are seen.
class AcDbSymbolTableIterator {
public:
    AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning, bool skipDeleted);
    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forwards = true, bool skipDeleted = true);
    /// eInvalidInput at the end; otherwise as acdbOpenAcDbObject.
    Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
    Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode, bool openErased = false) const;

private:
    void skip(bool forwards, bool skipDeleted);

    const std::vector<AcDbObjectId>& records_;
    ptrdiff_t position_ = 0;
};

/// Typed look-up for the tables below: getAt(name, record, mode).
#define ACDB_SYMBOL_TABLE(TABLE, RECORD)                                                                               \
    class TABLE : public AcDbSymbolTable {                                                                             \
        ACDB_DECLARE_MEMBERS(TABLE)                                                                                    \
    public:                                                                                                            \
        using Record = RECORD;                                                                                         \
        using AcDbSymbolTable::getAt;                                                                                  \
        Acad::ErrorStatus getAt(const char* name, RECORD*& record, AcDb::OpenMode mode,                                \
                                bool openErased = false) const {                                                       \
            AcDbObjectId id;                                                                                           \
            record = nullptr;                                                                                          \
            const Acad::ErrorStatus status = AcDbSymbolTable::getAt(name, id, openErased);                             \
            return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;                        \
        }                                                                                                              \
    };
