#pragma once
/// What must hold in a drawing after another one was inserted into it, or was refused.

#include "drawing/dwg/file_audit.h"
#include "support/drawing_digest.h"

namespace vndk::test {

/// References that lead out of the drawing or to what is gone: "holder -> handle".
inline std::vector<std::string> strayReferences(AcDbDatabase& database) {
    class Visitor : public AcDbReferenceVisitor {
    public:
        explicit Visitor(const AcDbDatabase& home) : home_(home) {}
        void visit(AcDbObjectId& id, AcDb::ReferenceKind) override {
            const bool stray = !id.isNull() && (id.database() != &home_ || id.isErased() || !id.isValid());
            if (stray)
                found.push_back(hexOf(holder) + " -> " + hexOf(id.handle().value()));
        }
        uint64_t holder = 0;
        std::vector<std::string> found;

    private:
        const AcDbDatabase& home_;
    };
    Visitor visitor(database);
    for (AcDbStub& stub : database.stubs())
        if (AcDbObject* const object = stub.has(kStubErased) ? nullptr : database.objectOf(stub)) {
            visitor.holder = stub.handle.value();
            object->visitReferences(visitor);
        }
    return visitor.found;
}

/// Everything by which somebody could notice that something was tried.
struct DrawingState {
    explicit DrawingState(AcDbDatabase& database)
        : digest(digestOf(database)), undoName(database.undo().undoName()), redoName(database.undo().redoName()),
          undoCount(database.undo().undoCount()), redoCount(database.undo().redoCount()),
          recording(database.undoRecording()), dirty(database.isDirty()), warnings(database.warnings()) {
        for (const AcDbObjectId id : {database.blockTableId(), database.layerTableId(), database.textStyleTableId(),
                                      database.linetypeTableId(), database.regAppTableId()})
            records.push_back(AcDbSymbolTable::cast(id.stub()->object)->records());
    }

    /// What differs in a later state; empty for nothing.
    std::string difference(const DrawingState& later) const {
        const std::string objects = digestDifference(digest, later.digest);
        if (!objects.empty())
            return objects;
        if (undoName != later.undoName || undoCount != later.undoCount)
            return "undo: " + std::to_string(undoCount) + " " + undoName + ", " + std::to_string(later.undoCount) +
                   " " + later.undoName;
        if (redoName != later.redoName || redoCount != later.redoCount)
            return "redo: " + std::to_string(redoCount) + ", " + std::to_string(later.redoCount);
        if (recording != later.recording || dirty != later.dirty)
            return "recording or the mark of unsaved changes";
        if (warnings != later.warnings)
            return "warnings: " + later.warnings.back();
        return records == later.records ? "" : "the records of a table";
    }

    DrawingDigest digest;
    std::string undoName, redoName;
    size_t undoCount, redoCount;
    bool recording, dirty;
    std::vector<std::string> warnings;
    std::vector<std::vector<AcDbObjectId>> records;
};

} // namespace vndk::test
