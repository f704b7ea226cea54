#include "ads/xref.h"

#include "ap/xrefs.h"
#include "db/block_reference.h"
#include "ed/coordinates.h"
#include "ed/host.h"

#include <cmath>

using namespace vndk::host;

namespace {

/// A group of its own, or a part of the one that is open.
class UndoGroup {
public:
    explicit UndoGroup(AcDbDatabase& database) : undo_(database.undo()) { undo_.beginGroup("XREF"); }
    ~UndoGroup() { undo_.endGroup(); }
    UndoGroup(const UndoGroup&) = delete;
    UndoGroup& operator=(const UndoGroup&) = delete;

private:
    AcDbUndoController& undo_;
};

std::unique_ptr<AcDbBlockReference> makeReference(const AcDbDatabase& database, AcDbObjectId block,
                                                  const AcGePoint3d& position, const AcGeScale3d& scale,
                                                  double rotation) {
    const AcGeMatrix3d toWorld = ucsToWorld(database);
    const AcGeVector3d normal = toWorld.zAxis().normal();
    const AcGeVector3d direction =
        AcGeMatrix3d::worldToPlane(normal) * toWorld * AcGeVector3d(std::cos(rotation), std::sin(rotation), 0);
    auto reference = std::make_unique<AcDbBlockReference>();
    reference->setBlockTableRecord(block);
    reference->setNormal(normal);
    reference->setPosition(toWorld * position);
    reference->setScaleFactors(scale);
    reference->setRotation(wholeTurn(std::atan2(direction.y, direction.x)));
    return reference;
}

AcDbObjectId append(AcDbDatabase& database, std::unique_ptr<AcDbBlockReference> reference) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(
        database.tilemode() ? database.modelSpaceId() : database.paperSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    if (space && space->appendAcDbEntity(id, reference.get()) == Acad::eOk)
        reference.release()->close();
    return id;
}

} // namespace

Acad::ErrorStatus acedXrefAttach(const char* path, const char* name, AcDbObjectId* blockId, AcDbObjectId* referenceId,
                                 const AcGePoint3d* position, const AcGeScale3d* scale, const double* rotation,
                                 bool overlay) {
    Host* const host = Host::current();
    AcApDocument* const document = host ? host->documents().curDocument() : nullptr;
    if (!document)
        return Acad::eNoDocument;
    if (!path || !name)
        return Acad::eInvalidInput;
    AcDbDatabase& database = *document->database();
    const std::string holder = document->hasFile() ? document->fileName() : "";
    const UndoGroup group(database);
    AcDbObjectId block;
    if (const std::string problem = attachXref(*host, database, path, name, overlay, holder, block); !problem.empty()) {
        host->freshLine();
        host->print(problem + "\n");
        return findXref(*host, path, holder) ? Acad::eInvalidInput : Acad::eFileNotFound;
    }
    host->freshLine();
    host->print("Attach Xref \"" + std::string(name) + "\": " + path + "\n\"" + name + "\" loaded.\n");
    const AcDbObjectId reference =
        append(database, makeReference(database, block, position ? *position : AcGePoint3d(),
                                       scale ? *scale : AcGeScale3d(1, 1, 1), rotation ? *rotation : 0));
    if (blockId)
        *blockId = block;
    if (referenceId)
        *referenceId = reference;
    return reference.isNull() ? Acad::eInvalidInput : Acad::eOk;
}
