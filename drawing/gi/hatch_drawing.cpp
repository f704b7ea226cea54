#include "db/hatch_contours.h"
#include "db/mline_picture.h"
#include "gi/entity_drawing_parts.h"

#include <array>

namespace vndk::gi {

namespace {

constexpr size_t kMostDashes = 200'000; // more are no pattern any more, but an area

void drawSolid(const AcDbHatch::Data& data, const AcGeMatrix3d& toWorld, AcGiGeometry& geometry) {
    std::vector<AcGePoint3d> corners;
    std::vector<uint32_t> ends;
    for (const db::Contour& contour : db::filledContours(data)) {
        for (const AcGePoint2d& p : contour)
            corners.push_back(toWorld * AcGePoint3d(p.x, p.y, data.elevation));
        ends.push_back(static_cast<uint32_t>(corners.size()));
    }
    geometry.polyPolygon(corners, ends);
}

} // namespace

void drawHatch(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const AcDbHatch::Data& data = static_cast<const AcDbHatch&>(entity).data();
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data.normal);
    if (data.solid)
        return drawSolid(data, toWorld, geometry);
    for (const db::Dash& dash : db::patternDashes(data, kMostDashes).dashes)
        geometry.polyline(std::array{toWorld * AcGePoint3d(dash.start.x, dash.start.y, data.elevation),
                                     toWorld * AcGePoint3d(dash.end.x, dash.end.y, data.elevation)});
}

void drawMline(const AcDbMline& mline, AcGiWorldDraw& context) {
    const db::MlinePicture picture = db::mlinePicture(mline);
    AcGiSubEntityTraits& traits = context.subEntityTraits();
    const auto setColor = [&](short color) {
        const bool own = color == kAcDbColorByLayer || color == kAcDbColorByBlock;
        traits.setColor(own ? mline.colorIndex() : color);
    };
    setColor(picture.fillColor);
    for (const std::vector<AcGePoint3d>& fill : picture.fills)
        context.geometry().polygon(fill);
    for (const db::MlinePicture::Stroke& stroke : picture.strokes) {
        setColor(stroke.color);
        traits.setLineType(stroke.linetype.isNull() ? mline.linetypeId() : stroke.linetype);
        if (!stroke.outward) {
            context.geometry().polyline(std::array{stroke.start, stroke.end});
            continue;
        }
        const AcGeVector3d half = (stroke.end - stroke.start) * 0.5;
        context.geometry().ellipArc(stroke.start + half, -half, stroke.outward->normal() * half.length(), 0, kAcGePi);
    }
}

void drawImage(const AcDbEntity& entity, AcGiGeometry& geometry) {
    std::vector<AcGePoint3d> frame = static_cast<const AcDbRasterImage&>(entity).frame();
    frame.push_back(frame.front());
    geometry.polyline(frame);
}

} // namespace vndk::gi
