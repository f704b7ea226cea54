// Makes display lists: what drawables are given to draw with.
#pragma once

#include "gi/drawable.h"
#include "gs/display_list.h"

#include <array>

namespace vndk::gs {

class ListBuilder : public AcGiWorldDraw, private AcGiGeometry, private AcGiDrawableTraits {
public:
    explicit ListBuilder(DisplayList& list) : list_(list) {}
    /// What is drawn from here on becomes the part of that number, which replaces what it was. It comes before any
    /// drawing.
    void begin(size_t part);

    AcGiGeometry& geometry() override { return *this; }
    AcGiSubEntityTraits& subEntityTraits() override { return *this; }
    AcGiDrawableTraits& drawableTraits() { return *this; }

private:
    void polyline(std::span<const AcGePoint3d> points) override;
    void polygon(std::span<const AcGePoint3d> corners) override;
    void polyPolygon(std::span<const AcGePoint3d> corners, std::span<const uint32_t> ends) override;
    void shell(std::span<const AcGePoint3d> points, std::span<const AcGiTriangle> faces,
               std::span<const AcGeVector3d> normals) override;
    void ellipArc(const AcGePoint3d& center, const AcGeVector3d& major, const AcGeVector3d& minor, double start,
                  double sweep) override;
    void text(const AcGiText& text) override;
    double textWidth(const AcGiText& text) override;
    void ray(const AcGePoint3d& base, const AcGeVector3d& direction) override;
    void xline(const AcGePoint3d& base, const AcGeVector3d& direction) override;
    void point(const AcGePoint3d& position, double rotation) override;
    void block(AcDbObjectId record, const AcGeMatrix3d& transform) override;

    void setTrueColor(const AcCmEntityColor& color) override { look_.color = color; }
    void setLayer(AcDbObjectId layer) override { look_.layer = layer; }
    void setLineType(AcDbObjectId linetype) override { look_.linetype = linetype; }
    void setLineTypeScale(double scale) override { look_.linetypeScale = scale; }
    void setLineWeight(AcDb::LineWeight weight) override { look_.weight = weight; }
    void setTraitsOf(const AcDbEntity& entity) override;

    void add(Item::Kind kind, size_t first, size_t count = 1);
    void addPoints(Item::Kind kind, std::span<const AcGePoint3d> points);
    bool keepPoints(std::span<const AcGePoint3d> points, uint32_t& first, uint32_t& count);
    uint32_t lookNumber();
    uint32_t findLook();
    template <class T>
    void makeRoom(std::vector<T>& shapes) const;
    AcDbExtents& box() { return list_.boxes[part_]; }

    const LOGFONTA& fontOf(const AcGiText& text);

    DisplayList& list_;
    size_t part_ = 0;
    AcDbObjectId lastStyle_;
    const LOGFONTA* lastFont_ = nullptr;
    Look look_;
    static constexpr unsigned kRecentBits = 8;
    std::array<uint32_t, 1U << kRecentBits> recentLooks_{}; // numbers, by a few bits of what they are
};

} // namespace vndk::gs
