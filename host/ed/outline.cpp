#include "ed/outline.h"

#include "db/block_reference.h"
#include "db/block_table.h"
#include "db/entity.h"
#include "db/open.h"
#include "db/text.h"
#include "gi/drawable.h"
#include "gi/entity_drawing.h"
#include "gs/text_fonts.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vndk::host {

namespace {

constexpr size_t kDeepest = 64; // references within references
constexpr size_t kMostPoints = 2000000;

/// Takes what an entity draws. Colours and the like don't matter.
class OutlineBuilder : public AcGiWorldDraw, private AcGiGeometry, private AcGiDrawableTraits {
public:
    OutlineBuilder(Outline& outline, const AcGeMatrix3d& toWorld) : outline_(outline), toWorld_(toWorld) {}

    AcGiGeometry& geometry() override { return *this; }
    AcGiSubEntityTraits& subEntityTraits() override { return *this; }

private:
    void polyline(std::span<const AcGePoint3d> points) override { addLines(outline_.lines, points, false); }
    void polygon(std::span<const AcGePoint3d> corners) override { addLines(outline_.lines, corners, true); }
    void polyPolygon(std::span<const AcGePoint3d> corners, std::span<const uint32_t> ends) override;
    void shell(std::span<const AcGePoint3d> points, std::span<const AcGiTriangle> faces,
               std::span<const AcGeVector3d> normals) override;
    void ellipArc(const AcGePoint3d& center, const AcGeVector3d& major, const AcGeVector3d& minor, double start,
                  double sweep) override {
        outline_.arcs.push_back({toWorld_ * center, toWorld_ * major, toWorld_ * minor, start, sweep});
    }
    void text(const AcGiText& text) override;
    double textWidth(const AcGiText& text) override {
        return gs::widthOf(text.text, gs::fontOfStyle(text.style)) * text.height * text.widthFactor;
    }
    void ray(const AcGePoint3d&, const AcGeVector3d&) override {}
    void xline(const AcGePoint3d&, const AcGeVector3d&) override {}
    void point(const AcGePoint3d& position, double) override { outline_.nodes.push_back(toWorld_ * position); }
    void block(AcDbObjectId record, const AcGeMatrix3d& transform) override;

    void setTrueColor(const AcCmEntityColor&) override {}
    void setLayer(AcDbObjectId) override {}
    void setLineType(AcDbObjectId) override {}
    void setLineTypeScale(double) override {}
    void setLineWeight(AcDb::LineWeight) override {}

    void addLines(Outline::Lines& lines, std::span<const AcGePoint3d> points, bool closed);

    Outline& outline_;
    AcGeMatrix3d toWorld_;
    size_t depth_ = 0;
    std::vector<AcGePoint3d> moved_;
};

void OutlineBuilder::addLines(Outline::Lines& lines, std::span<const AcGePoint3d> points, bool closed) {
    if (points.empty() || lines.points.size() > kMostPoints)
        return;
    moved_.clear();
    for (const AcGePoint3d& point : points)
        moved_.push_back(toWorld_ * point);
    if (closed)
        moved_.push_back(moved_.front());
    lines.add(moved_);
}

void OutlineBuilder::polyPolygon(std::span<const AcGePoint3d> corners, std::span<const uint32_t> ends) {
    uint32_t begin = 0;
    for (const uint32_t end : ends) {
        if (end < begin || end > corners.size())
            return;
        addLines(outline_.lines, corners.subspan(begin, end - begin), true);
        begin = end;
    }
}

void OutlineBuilder::shell(std::span<const AcGePoint3d> points, std::span<const AcGiTriangle> faces,
                           std::span<const AcGeVector3d>) {
    for (const AcGiTriangle& face : faces)
        for (unsigned i = 0; i < 3; ++i) {
            const uint32_t a = face.corners[i], b = face.corners[(i + 1) % 3];
            if ((face.edges >> i & 1) && a < points.size() && b < points.size())
                addLines(outline_.lines, std::array{points[a], points[b]}, false);
        }
}

void OutlineBuilder::text(const AcGiText& text) {
    const double width = text.fitWidth > 0 ? text.fitWidth : textWidth(text);
    const double along = text.along == AcGiText::kLeft ? 0 : text.along == AcGiText::kCenter ? 0.5 : 1;
    const double across = text.across == AcGiText::kTop ? 1 : text.across == AcGiText::kMiddle ? 0.5 : 0;
    const AcGeVector3d x = text.direction * width, y = text.up * text.height;
    const AcGePoint3d origin = text.position - x * along - y * across;
    addLines(outline_.frames, std::array{origin, origin + x, origin + x + y, origin + y}, true);
}

void OutlineBuilder::block(AcDbObjectId record, const AcGeMatrix3d& transform) {
    const AcDbObjectPointer<AcDbBlockTableRecord> block(record);
    if (!block || depth_ >= kDeepest || outline_.lines.points.size() > kMostPoints)
        return;
    const AcGeMatrix3d former = toWorld_;
    toWorld_ = toWorld_ * transform;
    ++depth_;
    for (const AcDbObjectId id : block->entities())
        if (const AcDbObjectPointer<AcDbEntity> entity(id); entity)
            acgiDrawInBlock(*entity, false, *this);
    --depth_;
    toWorld_ = former;
}

} // namespace

AcGePoint3d OutlineArc::at(double u) const { return center + major * std::cos(u) + minor * std::sin(u); }

void Outline::Lines::add(std::span<const AcGePoint3d> line) {
    points.insert(points.end(), line.begin(), line.end());
    ends.push_back(static_cast<uint32_t>(points.size()));
}

void forEachPiece(const Outline& outline, const AcGeMatrix3d& toSeen,
                  const std::function<void(const AcGePoint3d&, const AcGePoint3d&)>& piece) {
    for (const Outline::Lines* const lines : {&outline.lines, &outline.frames}) {
        size_t begin = 0;
        for (const size_t end : lines->ends) {
            for (size_t i = begin + 1; i < end; ++i)
                piece(toSeen * lines->points[i - 1], toSeen * lines->points[i]);
            begin = end;
        }
    }
    for (const OutlineArc& arc : outline.arcs) {
        const AcGeVector3d major = toSeen * arc.major;
        const double radius = std::max(std::hypot(major.x, major.y), 1.0);
        const int steps = std::clamp(static_cast<int>(std::sqrt(radius) * std::fabs(arc.sweep)), 4, 2000);
        for (int i = 0; i < steps; ++i)
            piece(toSeen * arc.at(arc.start + arc.sweep * i / steps),
                  toSeen * arc.at(arc.start + arc.sweep * (i + 1) / steps));
    }
}

void addOutline(const AcDbEntity& entity, const AcGeMatrix3d& toWorld, Outline& outline) {
    OutlineBuilder builder(outline, toWorld);
    acgiDrawEntity(entity, builder);
    if (const auto* reference = AcDbBlockReference::cast(&entity))
        outline.insertions.push_back(toWorld * reference->position());
    else if (const auto* text = AcDbText::cast(&entity))
        outline.insertions.push_back(toWorld * text->position());
    else if (const auto* paragraph = AcDbMText::cast(&entity))
        outline.insertions.push_back(toWorld * paragraph->location());
}

void addBlockOutline(AcDbObjectId block, const AcGeMatrix3d& toWorld, Outline& outline) {
    OutlineBuilder builder(outline, toWorld);
    builder.geometry().block(block, {});
}

Outline outlineOf(AcDbObjectId id) {
    Outline outline;
    if (const AcDbObjectPointer<AcDbEntity> entity(id); entity)
        addOutline(*entity, {}, outline);
    return outline;
}

} // namespace vndk::host
