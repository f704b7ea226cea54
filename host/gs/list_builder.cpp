#include "gs/list_builder.h"

#include "gs/text_fonts.h"

#include <algorithm>
#include <cmath>

namespace vndk::gs {

namespace {

constexpr double kDescent = 0.3; // of the height: how far letters reach below the base line

/// One that isn't finite makes the sum so. Sums of what is farther than anything may leave the numbers, too.
bool isFinite(const AcGeVector3d& v) { return std::isfinite(v.x + v.y + v.z); }

void addArcBox(AcDbExtents& box, const ArcShape& arc) {
    // The whole ellipse reaches this far along each axis; a part is taken by its points.
    const AcGeVector3d reach(std::hypot(arc.major.x, arc.minor.x), std::hypot(arc.major.y, arc.minor.y),
                             std::hypot(arc.major.z, arc.minor.z));
    if (std::fabs(arc.sweep) >= 2 * kAcGePi) {
        box.addPoint(arc.center + reach);
        box.addPoint(arc.center - reach);
        return;
    }
    constexpr int kSteps = 32;
    for (int i = 0; i <= kSteps; ++i) {
        const double u = arc.start + arc.sweep * i / kSteps;
        box.addPoint(arc.center + arc.major * std::cos(u) + arc.minor * std::sin(u));
    }
}

/// At each point the mean of the faces that share it, larger faces counting more.
std::vector<AcGeVector3d> normalsOf(std::span<const AcGePoint3d> points, std::span<const AcGiTriangle> faces) {
    std::vector<AcGeVector3d> normals(points.size());
    for (const AcGiTriangle& face : faces) {
        const AcGePoint3d &a = points[face.corners[0]], &b = points[face.corners[1]], &c = points[face.corners[2]];
        for (const uint32_t corner : face.corners)
            normals[corner] = normals[corner] + (b - a).crossProduct(c - a);
    }
    return normals;
}

void addTextBox(AcDbExtents& box, const TextShape& shape) {
    const AcGeVector3d along = shape.x * shape.width;
    for (const AcGePoint3d& begin : {shape.origin - shape.y * kDescent, shape.origin + shape.y}) {
        box.addPoint(begin);
        box.addPoint(begin + along);
    }
}

} // namespace

/// Room for as many as there will be if the rest of the block is like what has been drawn of it, though for no more
/// than one in each part.
template <class T>
void ListBuilder::makeRoom(std::vector<T>& shapes) const {
    constexpr size_t kFew = 64;
    constexpr double kSpare = 1.1;
    if (shapes.size() < shapes.capacity() || shapes.size() < kFew)
        return;
    const size_t parts = list_.parts.size();
    const double share = std::min(kSpare * static_cast<double>(shapes.size()) / static_cast<double>(part_ + 1), 1.0);
    shapes.reserve(std::max(static_cast<size_t>(share * static_cast<double>(parts)), 2 * shapes.size()));
}

void ListBuilder::begin(size_t part) {
    part_ = part;
    look_ = Look();
    if (list_.parts.size() <= part) {
        list_.parts.resize(part + 1);
        list_.boxes.resize(part + 1);
    }
    list_.parts[part].first = static_cast<uint32_t>(list_.items.size());
    list_.parts[part].count = 0;
    list_.boxes[part] = AcDbExtents();
}

/// Neighbours mostly have one style.
const LOGFONTA& ListBuilder::fontOf(const AcGiText& text) {
    if (!text.face.empty())
        return fontOfFace(text.face, text.bold, text.italic);
    if (!lastFont_ || lastStyle_ != text.style)
        lastFont_ = &fontOfStyle(text.style);
    lastStyle_ = text.style;
    return *lastFont_;
}

void ListBuilder::setTraitsOf(const AcDbEntity& entity) {
    look_ = {AcCmEntityColor::index(entity.colorIndex()), entity.layerId(), entity.linetypeId(), entity.linetypeScale(),
             entity.lineWeight()};
}

/// A drawing has few looks, which take turns.
uint32_t ListBuilder::lookNumber() {
    const auto bits = [](AcDbObjectId id) { return reinterpret_cast<uintptr_t>(id.stub()) / sizeof(void*); };
    constexpr uint32_t kShuffle = 2654435761;
    const auto mixed = static_cast<uint32_t>(bits(look_.layer) ^ bits(look_.linetype) * 3 ^ look_.color.value * 5);
    uint32_t& recent = recentLooks_[mixed * kShuffle >> (32 - kRecentBits)];
    if (recent >= list_.looks.size() || list_.looks[recent] != look_)
        recent = findLook();
    return recent;
}

uint32_t ListBuilder::findLook() {
    const auto [place, isNew] = list_.lookNumbers.try_emplace(look_, static_cast<uint32_t>(list_.looks.size()));
    if (isNew)
        list_.looks.push_back(look_);
    return place->second;
}

void ListBuilder::add(Item::Kind kind, size_t first, size_t count) {
    ++list_.parts[part_].count;
    list_.items.push_back({kind, lookNumber(), static_cast<uint32_t>(first), static_cast<uint32_t>(count)});
}

void ListBuilder::addPoints(Item::Kind kind, std::span<const AcGePoint3d> points) {
    const size_t first = list_.points.size();
    for (const AcGePoint3d& p : points)
        if (isFinite(p.asVector())) {
            list_.points.push_back(p);
            box().addPoint(p);
        }
    if (const size_t count = list_.points.size() - first; count > 0)
        add(kind, first, count);
}

void ListBuilder::polyline(std::span<const AcGePoint3d> points) { addPoints(Item::Kind::Polyline, points); }
void ListBuilder::polygon(std::span<const AcGePoint3d> corners) { addPoints(Item::Kind::Polygon, corners); }

/// Takes all points or, if one isn't a place, none: others refer to them by number.
bool ListBuilder::keepPoints(std::span<const AcGePoint3d> points, uint32_t& first, uint32_t& count) {
    if (points.empty() ||
        !std::all_of(points.begin(), points.end(), [](const AcGePoint3d& p) { return isFinite(p.asVector()); }))
        return false;
    first = static_cast<uint32_t>(list_.points.size());
    count = static_cast<uint32_t>(points.size());
    list_.points.insert(list_.points.end(), points.begin(), points.end());
    for (const AcGePoint3d& p : points)
        box().addPoint(p);
    return true;
}

void ListBuilder::polyPolygon(std::span<const AcGePoint3d> corners, std::span<const uint32_t> ends) {
    AreaShape area;
    if (ends.empty() || ends.back() != corners.size() || !std::is_sorted(ends.begin(), ends.end()) ||
        !keepPoints(corners, area.first, area.count))
        return;
    area.ends.assign(ends.begin(), ends.end());
    add(Item::Kind::Area, list_.areas.size());
    list_.areas.push_back(std::move(area));
}

void ListBuilder::shell(std::span<const AcGePoint3d> points, std::span<const AcGiTriangle> faces,
                        std::span<const AcGeVector3d> normals) {
    ShellShape shape;
    const auto fits = [&](const AcGiTriangle& face) {
        return std::all_of(std::begin(face.corners), std::end(face.corners),
                           [&](uint32_t corner) { return corner < points.size(); });
    };
    if (!std::all_of(faces.begin(), faces.end(), fits) || !keepPoints(points, shape.first, shape.count))
        return;
    shape.faces.assign(faces.begin(), faces.end());
    if (normals.size() == points.size())
        shape.normals.assign(normals.begin(), normals.end());
    else
        shape.normals = normalsOf(points, faces);
    add(Item::Kind::Shell, list_.shells.size());
    list_.shells.push_back(std::move(shape));
}

void ListBuilder::ellipArc(const AcGePoint3d& center, const AcGeVector3d& major, const AcGeVector3d& minor,
                           double start, double sweep) {
    if (!isFinite(center.asVector()) || !isFinite(major) || !isFinite(minor) || !std::isfinite(start + sweep))
        return;
    // More than a full turn shows nothing new.
    const double once = std::clamp(sweep, -2 * kAcGePi, 2 * kAcGePi);
    add(Item::Kind::Arc, list_.arcs.size());
    const double begin = std::fabs(start) > 2 * kAcGePi ? std::remainder(start, 2 * kAcGePi) : start;
    makeRoom(list_.arcs);
    list_.arcs.push_back({center, major, minor, begin, once});
    addArcBox(box(), list_.arcs.back());
}

double ListBuilder::textWidth(const AcGiText& text) {
    return widthOf(text.text, fontOf(text)) * text.height * text.widthFactor;
}

void ListBuilder::text(const AcGiText& text) {
    TextShape shape;
    shape.font = &fontOf(text);
    shape.letters = text.text;
    shape.width = widthOf(text.text, *shape.font);
    shape.underlined = text.underlined;
    shape.overlined = text.overlined;
    double height = text.height, along = text.height * text.widthFactor;
    if (text.fitWidth > 0 && shape.width > 0) {
        along = text.fitWidth / shape.width;
        if (text.fitHeight && text.widthFactor > 0)
            height = along / text.widthFactor;
    }
    const AcGeVector3d x = text.direction * (text.backward ? -along : along);
    const AcGeVector3d y = text.up * (text.upsideDown ? -height : height);
    const double slope = text.oblique == 0 ? 0 : std::tan(text.oblique);
    const AcGeVector3d lean = text.direction * (height * slope * (text.backward ? -1 : 1));
    constexpr double kAlong[] = {0, 0.5, 1};
    constexpr double kAcross[] = {0, -kDescent, 0.5, 1};
    shape.x = x;
    shape.y = y + lean;
    shape.origin = text.position + x * (-kAlong[text.along] * shape.width) + y * -kAcross[text.across];
    if (shape.letters.empty() || !isFinite(shape.origin.asVector() + shape.x + shape.y))
        return;
    addTextBox(box(), shape);
    const AcCmEntityColor set = look_.color;
    if (text.color != 0)
        look_.color = AcCmEntityColor(text.color);
    add(Item::Kind::Text, list_.texts.size());
    look_.color = set;
    makeRoom(list_.texts);
    list_.texts.push_back(std::move(shape));
}

void ListBuilder::ray(const AcGePoint3d& base, const AcGeVector3d& direction) {
    add(Item::Kind::Endless, list_.endless.size());
    list_.endless.push_back({base, direction, false});
}

void ListBuilder::xline(const AcGePoint3d& base, const AcGeVector3d& direction) {
    add(Item::Kind::Endless, list_.endless.size());
    list_.endless.push_back({base, direction, true});
}

void ListBuilder::point(const AcGePoint3d& position, double rotation) {
    if (!isFinite(position.asVector()) || !std::isfinite(rotation))
        return;
    box().addPoint(position);
    add(Item::Kind::Point, list_.marks.size());
    list_.marks.push_back({position, rotation});
}

void ListBuilder::block(AcDbObjectId record, const AcGeMatrix3d& transform) {
    if (record.isNull())
        return;
    add(Item::Kind::Block, list_.blocks.size());
    makeRoom(list_.blocks);
    list_.blocks.push_back({record, transform});
}

} // namespace vndk::gs
