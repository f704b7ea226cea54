#include "db/dimension_picture.h"

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/plane_math.h"
#include "db/point.h"
#include "db/solids.h"
#include "db/text.h"

namespace vndk::db {

namespace {

AcDbObjectId layerNamed(const AcDbDatabase* database, const char* name) {
    AcDbObjectId id;
    if (const AcDbObjectPointer<AcDbLayerTable> layers(database ? database->layerTableId() : AcDbObjectId()); layers)
        layers->getAt(name, id);
    return id;
}

} // namespace

std::optional<AcGeVector2d> unitOf(const AcGeVector2d& v) {
    const double length = v.length();
    if (!(length > AcGeTol().equalVector))
        return std::nullopt;
    return v * (1 / length);
}

double readable(double angle) {
    constexpr double kSlack = 1e-9;
    const double turned = normalizedAngle(angle);
    return turned > kAcGePi / 2 + kSlack && turned <= 3 * kAcGePi / 2 + kSlack ? turned - kAcGePi : turned;
}

DimensionPicture::DimensionPicture(AcDbDatabase* database, const AcGeVector3d& normal, double elevation,
                                   const DimVariables& variables)
    : database_(database), normal_(normal), toWorld_(AcGeMatrix3d::planeToWorld(normal)),
      toPlane_(AcGeMatrix3d::worldToPlane(normal)), elevation_(elevation), variables_(variables),
      scale_(variables.dimscale > 0 ? variables.dimscale : 1), layerZero_(layerNamed(database, "0")),
      definitionLayer_(layerNamed(database, kDefinitionLayerName)) {
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(variables.dimtxsty);
    const double fixed = style ? style->data().textSize : 0;
    textHeight_ = fixed > 0 ? fixed : scaled(variables.dimtxt);
    // Text of no height couldn't be written down.
    if (!(textHeight_ > 0))
        textHeight_ = DimVariables().dimtxt;
}

AcGePoint2d DimensionPicture::inPlane(const AcGePoint3d& point) const {
    const AcGePoint3d p = toPlane_ * point;
    return {p.x, p.y};
}

AcGePoint3d DimensionPicture::toWorld(const AcGePoint2d& point) const {
    return toWorld_ * AcGePoint3d(point.x, point.y, elevation_);
}

void DimensionPicture::setText(std::string text) {
    text_ = std::move(text);
    textWidth_ = estimatedWidth(text_) * textHeight_;
    textLines_ = lineCount(text_);
}

double DimensionPicture::textAngle(double lineAngle, bool outside) const {
    if (textRotation_ != 0)
        return textRotation_ + horizontal_;
    return (outside ? variables_.dimtoh : variables_.dimtih) ? horizontal_ : readable(lineAngle);
}

double DimensionPicture::textExtent(double textAngle, double lineAngle) const {
    if (!hasText())
        return 0;
    const double turn = textAngle - lineAngle;
    return std::fabs(textWidth() * std::cos(turn)) + std::fabs(textBlockHeight() * std::sin(turn));
}

AcGeVector2d DimensionPicture::textOffset(double textAngle, double lineAngle) const {
    enum Place : short { kCentered = 0, kOutside = 2, kBelow = 4 };
    constexpr double kParallel = 1e-6;
    const AcGeVector2d up = leftOf(directionOf(textAngle));
    if (std::fabs(std::sin(textAngle - lineAngle)) > kParallel)
        return {};
    if (variables_.dimtad == kCentered)
        return up * (variables_.dimtvp * textHeight());
    const double distance = gap() + textBlockHeight() / 2;
    return up * (variables_.dimtad == kBelow ? -distance : distance);
}

void DimensionPicture::add(std::unique_ptr<AcDbEntity> part, short color, short lineWeight) {
    AcDbEntity::CommonData common;
    common.layer = layerZero_;
    common.linetype = database_ ? database_->byBlockLinetypeId() : AcDbObjectId();
    common.color = color;
    common.lineWeight = static_cast<AcDb::LineWeight>(lineWeight);
    part->setCommonData(common);
    parts_.push_back(std::move(part));
}

namespace {

std::unique_ptr<AcDbLine> lineBetween(const AcGePoint3d& from, const AcGePoint3d& to, const AcGeVector3d& normal) {
    auto line = std::make_unique<AcDbLine>(from, to);
    line->setNormal(normal);
    return line;
}

} // namespace

void DimensionPicture::line(const AcGePoint2d& from, const AcGePoint2d& to) {
    add(lineBetween(toWorld(from), toWorld(to), normal_), variables_.dimclrd, variables_.dimlwd);
}

void DimensionPicture::dimensionLine(const AcGePoint2d& from, const AcGePoint2d& to) {
    if (unitOf(to - from))
        line(from, to);
}

void DimensionPicture::extensionLine(int which, const AcGePoint2d& from, const AcGePoint2d& to) {
    if ((which == 0 ? variables_.dimse1 : variables_.dimse2) || !unitOf(to - from))
        return;
    add(lineBetween(toWorld(from), toWorld(to), normal_), variables_.dimclre, variables_.dimlwe);
}

void DimensionPicture::arc(const AcGePoint2d& center, double radius, double startAngle, double endAngle) {
    if (!(radius > 0))
        return;
    auto arc = std::make_unique<AcDbArc>();
    AcDbArc::Data data;
    data.center = {center.x, center.y, elevation_};
    data.radius = radius;
    data.normal = normal_;
    data.startAngle = normalizedAngle(startAngle);
    data.endAngle = normalizedAngle(endAngle);
    arc->setFileData(data);
    add(std::move(arc), variables_.dimclrd, variables_.dimlwd);
}

void DimensionPicture::dimensionArc(const AcGePoint2d& center, double radius, double startAngle, double endAngle) {
    if (endAngle - startAngle > AcGeTol().equalVector)
        arc(center, radius, startAngle, endAngle);
}

AcDbObjectId DimensionPicture::arrowBlock(int which) const {
    const auto byName = [this](const std::string& name) {
        AcDbObjectId id;
        const AcDbObjectPointer<AcDbBlockTable> blocks(database_ && !name.empty() ? database_->blockTableId()
                                                                                  : AcDbObjectId());
        if (blocks)
            blocks->getAt(name.c_str(), id);
        return id;
    };
    if (which == 2)
        return variables_.dimldrblk;
    const int place = variables_.dimsah ? which + 1 : 0;
    const AcDbObjectId ids[] = {variables_.dimblk, variables_.dimblk1, variables_.dimblk2};
    return ids[place].isNull() ? byName(variables_.arrowNames[place]) : ids[place];
}

/// A stroke from lower left to upper right of the line, as long on both sides as DIMTSZ along both axes.
void DimensionPicture::tick(const AcGePoint2d& tip, const AcGeVector2d& direction) {
    const AcGeVector2d along = directionOf(readable(angleOf(direction)));
    const AcGeVector2d half = (along + leftOf(along)) * scaled(variables_.dimtsz);
    line(tip - half, tip + half);
}

void DimensionPicture::arrow(int which, const AcGePoint2d& tip, const AcGeVector2d& direction) {
    const double size = arrowSize();
    if (which != 2 && hasTicks())
        return tick(tip, direction);
    if (!(size > 0))
        return;
    const AcDbObjectId block = arrowBlock(which);
    if (!block.isNull() && !block.isErased()) {
        auto head = std::make_unique<AcDbBlockReference>(AcGePoint3d(tip.x, tip.y, elevation_), block);
        AcDbBlockReference::Data data = head->data();
        data.normal = normal_;
        data.scale = AcGeScale3d(size);
        data.rotation = normalizedAngle(angleOf(direction));
        head->setFileData(data);
        return add(std::move(head), variables_.dimclrd);
    }
    constexpr double kHalfWidth = 1.0 / 6; // of the length
    const AcGePoint2d base = tip - direction * size;
    const AcGeVector2d side = leftOf(direction) * (size * kHalfWidth);
    auto head = std::make_unique<AcDbSolid>();
    AcDbSolid::Data data;
    data.normal = normal_;
    data.elevation = elevation_;
    data.corners[0] = base + side;
    data.corners[1] = base - side;
    data.corners[2] = data.corners[3] = tip;
    head->setFileData(data);
    add(std::move(head), variables_.dimclrd);
}

void DimensionPicture::text(const AcGePoint2d& middle, double angle) {
    middle_ = middle;
    if (!hasText())
        return;
    constexpr uint16_t kMiddleCenter = 5;
    auto text = std::make_unique<AcDbMText>();
    AcDbMText::Data data;
    data.location = toWorld(middle);
    data.normal = normal_;
    data.direction = toWorld_ * AcGeVector3d(std::cos(angle), std::sin(angle), 0);
    data.height = textHeight();
    data.attachment = kMiddleCenter;
    data.extentsHeight = textBlockHeight();
    data.extentsWidth = textWidth();
    data.contents = text_;
    data.style = variables_.dimtxsty;
    text->setFileData(std::move(data));
    add(std::move(text), variables_.dimclrt);
}

void DimensionPicture::definitionPoint(const AcGePoint3d& position) {
    // On another layer the points would be plotted.
    if (definitionLayer_.isNull())
        return;
    auto point = std::make_unique<AcDbPoint>(position);
    point->setNormal(normal_);
    point->setLayer(definitionLayer_);
    point->setLinetype(database_->byBlockLinetypeId());
    point->setColorIndex(kAcDbColorByBlock);
    parts_.push_back(std::move(point));
}

void DimensionPicture::centerMark(const AcGePoint2d& center, double radius) {
    const double size = scaled(std::fabs(variables_.dimcen));
    if (!(size > 0))
        return;
    for (const AcGeVector2d& axis : {AcGeVector2d(1, 0), AcGeVector2d(0, 1)}) {
        line(center - axis * size, center + axis * size);
        // A negative size asks for lines across the whole circle.
        for (const double side : {-1.0, 1.0})
            if (variables_.dimcen < 0 && radius > 2 * size)
                line(center + axis * (2 * size * side), center + axis * ((radius + size) * side));
    }
}

} // namespace vndk::db
