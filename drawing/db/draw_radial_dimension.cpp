// The pictures of dimensions with a leader: radius, diameter and ordinate.
#include "db/dimension_picture.h"

#include <algorithm>

namespace vndk::db {

namespace {

/// The text at the end of a leader, which goes on horizontally up to it where the text doesn't stand along the leader.
void drawOutsideText(DimensionPicture& picture, const AcGePoint2d& bend, const AcGeVector2d& along) {
    const double lineAngle = angleOf(along);
    const double angle = picture.textAngle(lineAngle, true);
    const bool parallel = std::fabs(std::sin(angle - lineAngle)) < 1e-6;
    AcGeVector2d onward = along;
    if (!parallel)
        onward = directionOf(angle) * (directionOf(angle).dotProduct(along) < 0 ? -1 : 1);
    const AcGeVector2d offset = picture.textOffset(angle, angleOf(onward));
    const bool above = offset.length() > picture.textBlockHeight() / 2;
    const double hook = parallel ? 0 : picture.arrowSize();
    const double width = picture.textWidth();
    const AcGePoint2d textBegin = bend + onward * (hook + (picture.hasText() ? picture.gap() : 0));
    picture.dimensionLine(bend, above ? textBegin + onward * width : bend + onward * hook);
    picture.text(textBegin + onward * (width / 2) + offset, angle);
}

/// The text where the user put it, with the leader up to it.
void drawPlacedText(DimensionPicture& picture, const AcGePoint2d& from, const AcGePoint2d& middle) {
    const auto along = unitOf(middle - from);
    const double lineAngle = along ? angleOf(*along) : 0;
    const double angle = picture.textAngle(lineAngle, true);
    const double room = picture.hasText() ? picture.textExtent(angle, lineAngle) / 2 + picture.gap() : 0;
    if (along && middle.distanceTo(from) > room)
        picture.dimensionLine(from, middle - *along * room);
    picture.text(middle, angle);
}

} // namespace

void drawRadial(DimensionPicture& picture, const RadialShape& shape) {
    const auto outward = unitOf(shape.chord - shape.center);
    if (!outward)
        return picture.text(picture.userTextMiddle().value_or(shape.center), picture.horizontal());
    const double radius = shape.center.distanceTo(shape.chord), head = picture.arrowSize();
    const double lineAngle = angleOf(*outward);
    const double room = picture.textExtent(picture.textAngle(lineAngle, false), lineAngle) + 2 * picture.gap();
    const auto& wanted = picture.userTextMiddle();
    const double textDistance = wanted ? shape.center.distanceTo(*wanted) : 0;
    const bool fits = (shape.diameter ? 2 * radius : radius) >= room + (shape.diameter ? 2 : 1) * head;
    const bool inside = wanted ? textDistance < radius : fits && !(shape.leaderLength > 0);
    const AcGePoint2d far = shape.center + *outward * (shape.diameter ? -radius : 0);
    if (inside) {
        const double angle = picture.textAngle(lineAngle, false);
        const AcGePoint2d half = shape.diameter ? shape.center : shape.center + *outward * (radius / 2);
        const AcGeVector2d offset = picture.textOffset(angle, lineAngle);
        const AcGePoint2d middle = wanted.value_or(half + offset);
        const double at = (middle - far).dotProduct(*outward);
        const double off = std::fabs((middle - far).dotProduct(leftOf(*outward)));
        const AcGePoint2d begin = far + *outward * (shape.diameter ? head : 0), end = shape.chord - *outward * head;
        if (picture.hasText() && off < picture.textBlockHeight() / 2) {
            picture.dimensionLine(begin, far + *outward * std::max(at - room / 2, shape.diameter ? head : 0));
            picture.dimensionLine(far + *outward * (at + room / 2), end);
        } else {
            picture.dimensionLine(begin, end);
        }
        if (shape.diameter)
            picture.arrow(0, far, *outward * -1);
        picture.arrow(1, shape.chord, *outward);
        return picture.text(middle, angle);
    }
    if (!shape.diameter || !picture.variables().dimtofl)
        picture.centerMark(shape.center, radius);
    if (picture.variables().dimtofl)
        picture.dimensionLine(far, shape.chord);
    picture.arrow(1, shape.chord, *outward * -1);
    const AcGePoint2d behindHead = shape.chord + *outward * head;
    if (wanted)
        return drawPlacedText(picture, behindHead, *wanted);
    const AcGePoint2d bend = shape.chord + *outward * std::max(shape.leaderLength, 2 * head);
    picture.dimensionLine(behindHead, bend);
    drawOutsideText(picture, bend, *outward);
}

void drawOrdinate(DimensionPicture& picture, const OrdinateShape& shape) {
    const AcGeVector2d across = leftOf(shape.axis);
    const AcGeVector2d arm = shape.leaderEnd - shape.feature;
    const double reach = arm.dotProduct(shape.axis);
    const AcGeVector2d onward = shape.axis * (reach < 0 ? -1 : 1);
    const double lineAngle = angleOf(onward);
    // The text runs along the leader, whatever the style says of other dimensions.
    const double angle = readable(lineAngle);
    const AcGeVector2d offset = picture.textOffset(angle, lineAngle);
    const bool above = picture.hasText() && offset.length() > picture.textBlockHeight() / 2;
    const AcGePoint2d last = shape.leaderEnd + onward * (above ? picture.gap() + picture.textWidth() : 0);
    const AcGePoint2d first = shape.feature + onward * picture.scaled(picture.variables().dimexo);
    const double sideways = arm.dotProduct(across);
    if (std::fabs(sideways) <= AcGeTol().equalPoint) {
        picture.extensionLine(0, first, last);
    } else {
        // The leader changes its height between two and four heads before its end.
        const double head = picture.arrowSize();
        const AcGePoint2d bend = shape.leaderEnd - across * sideways - onward * (4 * head);
        const AcGePoint2d back = shape.leaderEnd - onward * (2 * head);
        picture.extensionLine(0, first, bend);
        picture.extensionLine(0, bend, back);
        picture.extensionLine(0, back, last);
    }
    const AcGeVector2d toMiddle = onward * (picture.gap() + picture.textWidth() / 2);
    picture.text(picture.userTextMiddle().value_or(shape.leaderEnd + toMiddle + offset), angle);
}

} // namespace vndk::db
