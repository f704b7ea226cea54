#include "commands/object_changes.h"
#include "db/block_reference.h"
#include "db/database.h"
#include "db/text.h"
#include "db/tied_entities.h"

#include <cmath>

namespace vndk::host {

namespace {

/// Which side of the mirrored frame is turned round. `along` is the mirrored direction of writing: where it still runs
/// as it did, the text is turned upside up, elsewhere it is turned to run forwards.
bool turnsUp(const AcGeVector3d& along, const AcGeMatrix3d& mirror) { return along.dotProduct(mirror * along) > 0; }

AcDb::TextHorzMode otherSide(AcDb::TextHorzMode mode) {
    return mode == AcDb::kTextLeft ? AcDb::kTextRight : mode == AcDb::kTextRight ? AcDb::kTextLeft : mode;
}

AcDb::TextVertMode otherEdge(AcDb::TextVertMode mode) {
    return mode == AcDb::kTextTop ? AcDb::kTextBottom : mode == AcDb::kTextVertMid ? mode : AcDb::kTextTop;
}

/// Aligned and fitted text stands between its two points.
void turnBetweenPoints(AcDbText& text, bool up, const AcGeVector3d& mirroredUp) {
    const AcGeVector3d shift = up ? mirroredUp * text.height() : AcGeVector3d();
    const AcGePoint3d first = (up ? text.position() : text.alignmentPoint()) + shift;
    const AcGePoint3d second = (up ? text.alignmentPoint() : text.position()) + shift;
    text.setPosition(first);
    text.setAlignmentPoint(second);
}

void turn(AcDbText& text, const AcGeMatrix3d& mirror) {
    // Text that was backwards before has come to run forwards.
    if (!text.isMirroredInX())
        return;
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(text.normal());
    const auto direction = [&](double angle) { return plane * AcGeVector3d(std::cos(angle), std::sin(angle), 0); };
    const bool up = turnsUp(-direction(text.rotation()), mirror);
    text.mirrorInX(false);
    if (up)
        text.setRotation(text.rotation() + (text.rotation() < kAcGePi ? kAcGePi : -kAcGePi));
    if (text.horizontalMode() == AcDb::kTextAlign || text.horizontalMode() == AcDb::kTextFit)
        return turnBetweenPoints(text, up, -direction(text.rotation() + kAcGePi / 2));
    const AcGePoint3d anchor = text.isDefaultAlignment() ? text.position() : text.alignmentPoint();
    if (!up)
        text.setHorizontalMode(otherSide(text.horizontalMode()));
    else if (text.horizontalMode() != AcDb::kTextMid)
        text.setVerticalMode(otherEdge(text.verticalMode()));
    if (text.isDefaultAlignment()) {
        text.setPosition(anchor);
    } else {
        text.setAlignmentPoint(anchor);
        text.adjustAlignment();
    }
}

void turn(AcDbMText& text, const AcGeMatrix3d& mirror) {
    const bool up = turnsUp(text.direction(), mirror);
    const int column = (text.attachment() - 1) % 3, row = (text.attachment() - 1) / 3;
    text.setNormal(-text.normal());
    if (!up)
        text.setDirection(-text.direction());
    text.setAttachment(1 + (up ? column : 2 - column) + 3 * (up ? 2 - row : row));
}

} // namespace

void keepReadable(AcDbObjectId id, const AcGeMatrix3d& mirror) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (!entity)
        return;
    if (auto* const text = AcDbText::cast(entity.object()))
        return turn(*text, mirror);
    if (auto* const paragraph = AcDbMText::cast(entity.object()))
        return turn(*paragraph, mirror);
    if (auto* const reference = AcDbBlockReference::cast(entity.object()))
        for (const AcDbObjectId attribute : reference->attributes())
            if (!attribute.isErased())
                keepReadable(attribute, mirror);
    for (const AcDbObjectId tied : acdbTiedEntities(*entity))
        keepReadable(tied, mirror);
}

} // namespace vndk::host
