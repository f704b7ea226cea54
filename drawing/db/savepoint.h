#pragma once
/// A state of a database that it can be brought back to, whatever has been added since: undo within an undo group,
/// and also where nothing is recorded.

#include "db/object_id.h"

#include <unordered_map>

class AcDbSavepoint {
public:
    /// Records from here on, also when the database doesn't.
    explicit AcDbSavepoint(AcDbDatabase& database);
    /// Without rollBack() the changes stay.
    ~AcDbSavepoint();
    AcDbSavepoint(const AcDbSavepoint&) = delete;
    AcDbSavepoint& operator=(const AcDbSavepoint&) = delete;

    /// To be called before an object of the former state gets a record, an entry, an entity or a reference more.
    void touch(AcDbObjectId object);
    /// Brings the former state back. What was added is removed for good where it stood in a table, a dictionary, a
    /// touched block or an object that was added too, and stays as an erased object elsewhere; its handles aren't given
    /// again.
    void rollBack();

private:
    struct Former {
        uint16_t flags;
        size_t references; // of a block
    };

    void takeOutReferences();
    void removeAdded();

    AcDbDatabase& database_;
    std::unordered_map<AcDbStub*, Former> touched_;
    size_t mark_;
    size_t slots_;
    bool recording_;
    bool dirty_;
};
