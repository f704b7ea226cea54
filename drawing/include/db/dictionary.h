// Dictionaries: objects by name, in the order in which they came. Names compare without regard to case.
#pragma once

#include "db/not_copied.h"
#include "db/object.h"

#include <string>

class AcDbDictionaryIterator;

class AcDbDictionary : public AcDbObject {
    ACDB_DECLARE_MEMBERS(AcDbDictionary)
public:
    bool has(const char* name) const;
    /// eKeyNotFound.
    Acad::ErrorStatus getAt(const char* name, AcDbObjectId& id) const;
    Acad::ErrorStatus getAt(const char* name, AcDbObject*& object, AcDb::OpenMode mode) const;
    /// The name of an entry, owned by the caller. eKeyNotFound.
    Acad::ErrorStatus nameAt(AcDbObjectId id, char*& name) const;
    /// Adds or replaces; a replaced object is erased. A temporary object becomes resident, owned by this
    /// dictionary, and stays open for write. Needs write.
    Acad::ErrorStatus setAt(const char* name, AcDbObject* object, AcDbObjectId& id);
    /// Takes an entry out without erasing its object. eKeyNotFound.
    Acad::ErrorStatus remove(const char* name);
    size_t numEntries() const;
    AcDbDictionaryIterator* newIterator() const;

    void visitReferences(AcDbReferenceVisitor& visitor) override;
    const char* dxfName() const override { return withDefault_ ? "ACDBDICTIONARYWDFLT" : "DICTIONARY"; }

    struct Entry {
        std::string name;
        AcDbObjectId id;
    };
    const std::vector<Entry>& entries() const { return entries_; }
    struct FileData {
        std::vector<Entry> entries;
        unsigned short cloning = 1;
        unsigned char hardOwner = 0;
        bool withDefault = false;
        AcDbObjectId defaultId;
    };
    void setFileData(FileData data);
    FileData fileData() const;
    void dataRestored() override;

private:
    struct Index;
    /// The place of the entry of that name that isn't erased; the number of entries if there is none.
    size_t find(const char* name) const;

    std::vector<Entry> entries_;
    AcDbObjectId defaultId_;
    unsigned short cloning_ = 1;
    unsigned char hardOwner_ = 0;
    bool withDefault_ = false;
    mutable NotCopied<std::shared_ptr<Index>> index_; // of a large dictionary's names
};

/// Walks the entries that aren't erased. REQUIRES: the dictionary isn't changed while it walks.
class AcDbDictionaryIterator {
public:
    explicit AcDbDictionaryIterator(const AcDbDictionary& dictionary) : entries_(dictionary.entries()) { skip(); }
    bool done() const { return position_ >= entries_.size(); }
    void next() {
        ++position_;
        skip();
    }
    const char* name() const { return entries_[position_].name.c_str(); }
    AcDbObjectId objectId() const { return entries_[position_].id; }

private:
    void skip() {
        while (!done() && entries_[position_].id.isErased())
            ++position_;
    }
    const std::vector<AcDbDictionary::Entry>& entries_;
    size_t position_ = 0;
};
