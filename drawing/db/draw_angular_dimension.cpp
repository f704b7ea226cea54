// The picture of angular dimensions.
#include "db/dimension_picture.h"
#include "db/plane_math.h"

#include <algorithm>

namespace vndk::db {

namespace {

/// The line from where a side ends to the arc, where the arc isn't on the side itself.
void drawSide(DimensionPicture& picture, int which, const AngularShape& shape, const AngleSide& side) {
    const DimVariables& v = picture.variables();
    const double nearest = std::min(side.from, side.to), farthest = std::max(side.from, side.to);
    const double offset = picture.scaled(v.dimexo), beyond = picture.scaled(v.dimexe);
    const AcGeVector2d along = directionOf(side.angle);
    if (shape.radius > farthest)
        picture.extensionLine(which, shape.vertex + along * (farthest + offset),
                              shape.vertex + along * (shape.radius + beyond));
    else if (shape.radius < nearest)
        picture.extensionLine(which, shape.vertex + along * (nearest - offset),
                              shape.vertex + along * (shape.radius - beyond));
}

} // namespace

void drawAngular(DimensionPicture& picture, const AngularShape& shape) {
    const double radius = shape.radius;
    if (!(radius > AcGeTol().equalPoint))
        return;
    drawSide(picture, 0, shape, shape.first);
    drawSide(picture, 1, shape, shape.second);
    const double start = shape.first.angle;
    const double sweep = normalizedAngle(shape.second.angle - start);
    const double end = start + sweep;
    const double headSize = picture.hasTicks() ? 0 : picture.arrowSize();
    // A head is a chord of the arc.
    const double head = 2 * std::asin(std::min(1.0, headSize / (2 * radius)));
    const double textRoom = picture.hasText() ? (picture.textWidth() + 2 * picture.gap()) / radius : 0;
    const bool headsInside = sweep >= textRoom + 2 * head;
    const bool textInside = sweep >= textRoom || picture.variables().dimtix;
    const double textAt = textInside ? start + sweep / 2 : end + (headsInside ? 0 : 2 * head) + textRoom / 2;
    const double lineAngle = textAt - kAcGePi / 2;
    const double textAngle = picture.textAngle(lineAngle, !textInside);
    const AcGeVector2d offset = picture.textOffset(textAngle, lineAngle);
    const auto& wanted = picture.userTextMiddle();
    const AcGePoint2d middle = wanted ? *wanted : shape.vertex + directionOf(textAt) * radius + offset;
    const double textRadius = shape.vertex.distanceTo(middle);
    const bool breaks = picture.hasText() && std::fabs(textRadius - radius) < picture.textBlockHeight() / 2;
    const double low = start + (headsInside ? head : 0), high = end - (headsInside ? head : 0);
    if (breaks && (textInside || wanted)) {
        const double at = start + normalizedAngle(angleOf(middle - shape.vertex) - start);
        const double half = (picture.textExtent(textAngle, at - kAcGePi / 2) / 2 + picture.gap()) / radius;
        picture.dimensionArc(shape.vertex, radius, low, std::min(high, at - half));
        picture.dimensionArc(shape.vertex, radius, std::max(low, at + half), high);
    } else {
        picture.dimensionArc(shape.vertex, radius, low, high);
    }
    if (!headsInside) {
        picture.dimensionArc(shape.vertex, radius, start - 2 * head, start - head);
        picture.dimensionArc(shape.vertex, radius, end + head, end + 2 * head);
    }
    const double side = headsInside ? 1 : -1;
    const auto headAt = [&](int which, double angle, double turn) {
        // The chord's direction at the tip.
        picture.arrow(which, shape.vertex + directionOf(angle) * radius,
                      leftOf(directionOf(angle - turn * head / 2)) * turn);
    };
    headAt(0, start, -side);
    headAt(1, end, side);
    picture.text(middle, textAngle);
}

} // namespace vndk::db
