#include "commands/list_text.h"

#include "commands/arc_shape.h"
#include "db/block_reference.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/dimensions.h"
#include "db/hatch.h"
#include "db/helix.h"
#include "db/leader.h"
#include "db/mline.h"
#include "db/point.h"
#include "db/polylines.h"
#include "db/shape.h"
#include "db/text.h"
#include "db/viewport.h"
#include "ed/coordinates.h"

#include <algorithm>
#include <cmath>

namespace vndk::host {

namespace {

/// Labels end in this column.
constexpr size_t kLabelEnd = 24;

/// Collects lines of a label and a value. Points are shown in the UCS.
class Lines {
public:
    explicit Lines(const CommandContext& ctx) : ctx_(ctx), toUcs_(ucsToWorld(ctx.database()).inverse()) {}

    void text(const std::string& label, const std::string& value) {
        text_ += '\n' + std::string(kLabelEnd - std::min(kLabelEnd, label.size()), ' ') + label + "  " + value;
    }
    void point(const std::string& label, const AcGePoint3d& world) { text(label, shownPoint(ctx_, toUcs_ * world)); }
    void length(const std::string& label, double length) { text(label, shownLength(ctx_, length)); }
    void angle(const std::string& label, double radians) { text(label, shownAngle(ctx_, radians)); }
    const AcGeMatrix3d& toUcs() const { return toUcs_; }
    const CommandContext& context() const { return ctx_; }
    std::string take() { return std::move(text_); }

private:
    const CommandContext& ctx_;
    AcGeMatrix3d toUcs_;
    std::string text_;
};

void list(const AcDbLine& line, Lines& out) {
    out.point("from point,", line.startPoint());
    out.point("to point,", line.endPoint());
    const AcGeVector3d delta = out.toUcs() * (line.endPoint() - line.startPoint());
    out.length("Length =", delta.length());
    out.angle("Angle in XY Plane =", std::atan2(delta.y, delta.x));
    out.text("Delta,", shownPoint(out.context(), AcGePoint3d::kOrigin + delta));
}

void list(const AcDbCircle& circle, Lines& out) {
    out.point("center point,", circle.center());
    out.length("radius", circle.radius());
    out.length("circumference", 2 * kAcGePi * circle.radius());
    out.length("area", kAcGePi * circle.radius() * circle.radius());
}

void list(const AcDbArc& arc, Lines& out) {
    out.point("center point,", arc.center());
    out.length("radius", arc.radius());
    out.angle("start angle", arc.startAngle());
    out.angle("end angle", arc.endAngle());
    out.length("length", arc.radius() * wholeTurn(arc.endAngle() - arc.startAngle()));
}

void list(const AcDbPoint& point, Lines& out) { out.point("at point,", point.position()); }

void list(const AcDbPolyline& polyline, Lines& out) {
    out.text(polyline.isClosed() ? "Closed" : "Open", "");
    out.length("Constant width", polyline.data().constantWidth);
    for (unsigned int i = 0; i < polyline.numVerts(); ++i) {
        AcGePoint3d point;
        double bulge = 0;
        polyline.getPointAt(i, point);
        polyline.getBulgeAt(i, bulge);
        out.point("at point", point);
        if (bulge != 0)
            out.text("bulge", std::to_string(bulge));
    }
}

void listTextData(const AcDbText& text, Lines& out) {
    out.text("Style =", '"' + recordName(text.textStyle()) + '"');
    out.point("start point,", text.position());
    if (!text.isDefaultAlignment())
        out.point("alignment point,", text.alignmentPoint());
    out.length("height", text.height());
    out.text("text", text.textValue());
    out.angle("rotation angle", text.rotation());
    out.text("width scale factor", shownLength(out.context(), text.widthFactor()));
    out.angle("obliquing angle", text.oblique());
}

void listFlags(const AcDbAttributeData& data, Lines& out) {
    static constexpr const char* names[] = {"invisible", "constant", "verify", "preset"};
    std::string flags;
    for (int i = 0; i < 4; ++i)
        if (data.flags >> i & 1)
            flags += (flags.empty() ? "" : ", ") + std::string(names[i]);
    out.text("flags", flags.empty() ? "normal" : flags);
}

void list(const AcDbAttributeDefinition& definition, Lines& out) {
    out.text("tag", definition.tagValue());
    out.text("prompt", definition.promptValue());
    listTextData(definition, out);
    listFlags(definition.attributeData(), out);
}

void list(const AcDbAttribute& attribute, Lines& out) {
    out.text("tag", attribute.tagValue());
    listTextData(attribute, out);
    listFlags(attribute.attributeData(), out);
}

void list(const AcDbText& text, Lines& out) { listTextData(text, out); }

void list(const AcDbMText& text, Lines& out) {
    out.point("Location:", text.location());
    out.length("Width:", text.width());
    out.text("Text style:", '"' + recordName(text.textStyle()) + '"');
    out.length("Text height:", text.textHeight());
    out.text("Contents:", text.contentsValue());
}

void list(const AcDbEllipse& ellipse, Lines& out) {
    out.point("Center:", ellipse.center());
    out.text("Radius Ratio:", shownLength(out.context(), ellipse.radiusRatio()));
    out.length("Major radius", (out.toUcs() * ellipse.data().majorAxis).length());
}

void list(const AcDbHatch& hatch, Lines& out) {
    out.text("Hatch pattern", hatch.patternName());
    if (!hatch.isSolidFill()) {
        out.text("Hatch scale", shownLength(out.context(), hatch.patternScale()));
        out.angle("Hatch angle", hatch.patternAngle());
    }
    out.text(hatch.associative() ? "Associative" : "Not associative", "");
    out.text("Boundaries", std::to_string(hatch.numLoops()));
}

void list(const AcDbMline& mline, Lines& out) {
    static constexpr const char* justifications[] = {"Top", "Zero", "Bottom"};
    out.text(mline.closedMline() ? "Closed" : "Open", "");
    out.text("Justification =", justifications[std::clamp(mline.justification(), 0, 2)]);
    out.text("Scale =", shownLength(out.context(), mline.scale()));
    for (const AcDbMline::Vertex& vertex : mline.data().vertices)
        out.point("at point", vertex.point);
}

void list(const AcDbHelix& helix, Lines& out) {
    out.point("axis point", helix.axisPoint());
    out.length("radius", helix.baseRadius());
    out.text("turns", std::to_string(helix.turns()));
    out.length("turn height", helix.turnHeight());
}

void list(const AcDbBlockReference& reference, Lines& out) {
    out.text("name", '"' + recordName(reference.blockTableRecord()) + '"');
    out.point("at point,", reference.position());
    const AcGeScale3d scale = reference.scaleFactors();
    out.text("X scale factor", shownLength(out.context(), scale.sx));
    out.text("Y scale factor", shownLength(out.context(), scale.sy));
    out.text("Z scale factor", shownLength(out.context(), scale.sz));
    out.angle("rotation angle", reference.rotation());
    for (const AcDbObjectId id : reference.attributes()) {
        const AcDbObjectPointer<AcDbAttribute> attribute(id);
        if (attribute)
            out.text("attribute " + attribute->tagValue(), attribute->textValue());
    }
}

void listMeasurement(const AcDbDimension& dimension, Lines& out) {
    out.text("dimension text", '"' + dimension.shownText() + '"');
    out.text("dimension style", '"' + recordName(dimension.dimensionStyle()) + '"');
}

template <class Linear>
void listLinear(const Linear& dimension, Lines& out) {
    out.point("first extension defining point,", dimension.xLine1Point());
    out.point("second extension defining point,", dimension.xLine2Point());
    out.point("dimension line defining point,", dimension.dimLinePoint());
}

void list(const AcDbDimension& dimension, Lines& out) {
    if (const auto* const aligned = AcDbAlignedDimension::cast(&dimension))
        listLinear(*aligned, out);
    if (const auto* const rotated = AcDbRotatedDimension::cast(&dimension)) {
        listLinear(*rotated, out);
        out.angle("rotation angle", rotated->rotation());
    }
    if (const auto* const radial = AcDbRadialDimension::cast(&dimension)) {
        out.point("center point,", radial->center());
        out.point("arc point,", radial->chordPoint());
    }
    if (const auto* const diametric = AcDbDiametricDimension::cast(&dimension)) {
        out.point("arc point,", diametric->chordPoint());
        out.point("opposite arc point,", diametric->farChordPoint());
    }
    if (const auto* const ordinate = AcDbOrdinateDimension::cast(&dimension)) {
        out.text("measures along", ordinate->isUsingXAxis() ? "X" : "Y");
        out.point("feature location,", ordinate->definingPoint());
        out.point("leader endpoint,", ordinate->leaderEndPoint());
    }
    if (const auto* const corner = AcDb3PointAngularDimension::cast(&dimension)) {
        out.point("vertex,", corner->centerPoint());
        out.point("first side,", corner->xLine1Point());
        out.point("second side,", corner->xLine2Point());
    }
    if (const auto* const lines = AcDb2LineAngularDimension::cast(&dimension)) {
        out.point("first line from point,", lines->xLine1Start());
        out.point("to point,", lines->xLine1End());
        out.point("second line from point,", lines->xLine2Start());
        out.point("to point,", lines->xLine2End());
    }
    out.point("text position,", dimension.textPosition());
    listMeasurement(dimension, out);
}

void list(const AcDbLeader& leader, Lines& out) {
    for (const AcGePoint3d& vertex : leader.data().vertices)
        out.point("at point,", vertex);
    out.text("path", leader.isSplined() ? "spline" : "straight");
    out.text("arrow head", leader.hasArrowHead() ? "on" : "off");
    out.text("dimension style", '"' + recordName(leader.dimensionStyle()) + '"');
}

void list(const AcDbFcf& tolerance, Lines& out) {
    out.point("at point,", tolerance.location());
    out.text("tolerance text", tolerance.textValue());
    out.text("dimension style", '"' + recordName(tolerance.dimensionStyle()) + '"');
}

void list(const AcDbShape& shape, Lines& out) {
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(shape.shapeStyle());
    out.text("shape", "number " + std::to_string(shape.shapeNumber()) +
                          (style ? " of \"" + style->data().fileName + '"' : std::string()));
    out.point("at point,", shape.position());
    out.length("size", shape.size());
    out.angle("rotation angle", shape.rotation());
    out.text("width scale factor", shownLength(out.context(), shape.widthFactor()));
}

void list(const AcDbViewport& viewport, Lines& out) {
    out.point("center point,", viewport.centerPoint());
    out.length("width", viewport.width());
    out.length("height", viewport.height());
}

/// False when the entity is of another class.
template <class T>
bool listAs(const AcDbEntity& entity, Lines& out) {
    const T* const typed = T::cast(&entity);
    if (typed)
        list(*typed, out);
    return typed != nullptr;
}

void listCommon(const AcDbEntity& entity, Lines& out) {
    out.text(entity.dxfName() ? entity.dxfName() : entity.isA()->name(),
             "Layer: \"" + recordName(entity.layerId()) + '"');
    const AcDbObjectPointer<AcDbBlockTableRecord> owner(entity.ownerId());
    if (owner)
        out.text("Space:", acdbFoldName(owner->name()).starts_with("*PAPER") ? "Paper space"
                           : owner->isLayout()                               ? "Model space"
                                                                             : "Block \"" + owner->name() + '"');
    char handle[17];
    AcDbHandle number;
    entity.getAcDbHandle(number);
    number.getIntoAsciiBuffer(handle);
    out.text("Handle =", handle);
    if (entity.colorIndex() != kAcDbColorByLayer)
        out.text("Color:", entity.colorIndex() == 0 ? "BYBLOCK" : std::to_string(entity.colorIndex()));
    if (entity.linetypeId() != out.context().database().byLayerLinetypeId())
        out.text("Linetype:", '"' + recordName(entity.linetypeId()) + '"');
}

} // namespace

std::string listText(const CommandContext& ctx, const AcDbEntity& entity) {
    Lines out(ctx);
    listCommon(entity, out);
    // Derived classes stand before their bases.
    const bool known =
        listAs<AcDbLine>(entity, out) || listAs<AcDbCircle>(entity, out) || listAs<AcDbArc>(entity, out) ||
        listAs<AcDbPoint>(entity, out) || listAs<AcDbPolyline>(entity, out) ||
        listAs<AcDbAttributeDefinition>(entity, out) || listAs<AcDbAttribute>(entity, out) ||
        listAs<AcDbText>(entity, out) || listAs<AcDbMText>(entity, out) || listAs<AcDbEllipse>(entity, out) ||
        listAs<AcDbBlockReference>(entity, out) || listAs<AcDbDimension>(entity, out) ||
        listAs<AcDbLeader>(entity, out) || listAs<AcDbFcf>(entity, out) || listAs<AcDbShape>(entity, out) ||
        listAs<AcDbViewport>(entity, out) || listAs<AcDbHatch>(entity, out) || listAs<AcDbMline>(entity, out) ||
        listAs<AcDbHelix>(entity, out);
    AcDbExtents box;
    if (!known && entity.getGeomExtents(box) == Acad::eOk && !box.isEmpty()) {
        out.point("Bounding Box: Lower", box.minPoint());
        out.point("Upper", box.maxPoint());
    }
    return out.take() + '\n';
}

} // namespace vndk::host
