#include "gs/part_tree.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vndk::gs {

namespace {

constexpr uint32_t kCells = 1 << 10; // along an axis

/// The bits of a number of ten bits, two free places behind each.
uint32_t spread(uint32_t n) {
    n = (n | n << 16) & 0x030000FF;
    n = (n | n << 8) & 0x0300F00F;
    n = (n | n << 4) & 0x030C30C3;
    return (n | n << 2) & 0x09249249;
}

uint32_t cellOf(double place, double low, double high) {
    const double share = high > low ? (place - low) / (high - low) : 0;
    return share > 0 ? std::min(static_cast<uint32_t>(std::min(share, 1.0) * kCells), kCells - 1) : 0;
}

AcGePoint3d middleOf(const AcDbExtents& box) {
    const AcGePoint3d &low = box.minPoint(), &high = box.maxPoint();
    return {(low.x + high.x) / 2, (low.y + high.y) / 2, (low.z + high.z) / 2};
}

} // namespace

PictureBox BoxProjector::operator()(const AcDbExtents& box) const {
    const AcGePoint3d &low = box.minPoint(), &high = box.maxPoint();
    const AcGePoint3d middle = middleOf(box);
    const std::array half = {(high.x - low.x) / 2, (high.y - low.y) / 2, (high.z - low.z) / 2};
    if (half[0] < 0)
        return {1, 1, 0, 0};
    const auto& e = m_.entry;
    const auto place = [&](const double* row) {
        return row[0] * middle.x + row[1] * middle.y + row[2] * middle.z + row[3];
    };
    const auto reach = [&](const double* row) {
        return std::fabs(row[0]) * half[0] + std::fabs(row[1]) * half[1] + std::fabs(row[2]) * half[2];
    };
    const double x = place(e[0]), y = place(e[1]), across = reach(e[0]), down = reach(e[1]);
    const PictureBox seen{x - across, y - down, x + across, y + down};
    return lens_ ? throughLens(seen, place(e[2]) - reach(e[2]), place(e[2]) + reach(e[2])) : seen;
}

PictureBox BoxProjector::throughLens(const PictureBox& box, double low, double high) const {
    constexpr double kEverywhere = 1e100;
    if (!lens_->sees({0, 0, high}))
        return {-kEverywhere, -kEverywhere, kEverywhere, kEverywhere};
    const Spot corners[] = {(*lens_)({box.left, box.top, low}), (*lens_)({box.right, box.bottom, low}),
                            (*lens_)({box.left, box.top, high}), (*lens_)({box.right, box.bottom, high})};
    return {std::min(corners[0].x, corners[2].x), std::min(corners[0].y, corners[2].y),
            std::max(corners[1].x, corners[3].x), std::max(corners[1].y, corners[3].y)};
}

/// Along a curve that fills space, so that what follows each other there lies side by side.
void PartTree::build(std::span<const AcDbExtents> boxes) {
    AcDbExtents whole;
    for (const AcDbExtents& box : boxes)
        if (!box.isEmpty())
            whole.addPoint(middleOf(box));
    const AcGePoint3d &low = whole.minPoint(), &high = whole.maxPoint();
    std::vector<std::pair<uint32_t, uint32_t>> keys(boxes.size());
    for (size_t i = 0; i < boxes.size(); ++i) {
        const AcGePoint3d at = middleOf(boxes[i]);
        keys[i] = {spread(cellOf(at.x, low.x, high.x)) << 2 | spread(cellOf(at.y, low.y, high.y)) << 1 |
                       spread(cellOf(at.z, low.z, high.z)),
                   static_cast<uint32_t>(i)};
    }
    std::sort(keys.begin(), keys.end());
    order_.resize(keys.size());
    places_.resize(keys.size());
    for (size_t i = 0; i < keys.size(); ++i) {
        order_[i] = keys[i].second;
        places_[keys[i].second] = static_cast<uint32_t>(i);
    }
    levels_.clear();
    for (size_t level = 0; sizeOf(level) > kFan; ++level) {
        std::vector<AcDbExtents> above((sizeOf(level) + kFan - 1) / kFan);
        for (size_t place = 0; place < above.size(); ++place)
            above[place] = around(boxes, level + 1, place);
        levels_.push_back(std::move(above));
    }
}

/// The box around what stands below a place of a level above the lowest.
AcDbExtents PartTree::around(std::span<const AcDbExtents> boxes, size_t level, size_t place) const {
    AcDbExtents box;
    const size_t end = std::min((place + 1) * kFan, sizeOf(level - 1));
    for (size_t i = place * kFan; i < end; ++i)
        box.addExt(level == 1 ? boxes[order_[i]] : levels_[level - 2][i]);
    return box;
}

void PartTree::update(std::span<const AcDbExtents> boxes, uint32_t changed) {
    if (changed >= places_.size())
        return;
    size_t place = places_[changed];
    for (size_t level = 1; level <= levels_.size(); ++level) {
        place /= kFan;
        levels_[level - 1][place] = around(boxes, level, place);
    }
}

void PartTree::find(std::span<const AcDbExtents> boxes, const BoxProjector& projector, const PictureBox& seen,
                    std::vector<uint32_t>& found) const {
    for (size_t place = 0; place < sizeOf(levels_.size()); ++place)
        findBelow(boxes, projector, seen, levels_.size(), place, found);
}

void PartTree::findBelow(std::span<const AcDbExtents> boxes, const BoxProjector& projector, const PictureBox& seen,
                         size_t level, size_t place, std::vector<uint32_t>& found) const {
    const AcDbExtents& box = level == 0 ? boxes[order_[place]] : levels_[level - 1][place];
    const PictureBox shown = projector(box);
    if (!shown.meets(seen))
        return;
    if (level == 0 || shown.isWithin(seen))
        return takeBelow(level, place, found);
    const size_t end = std::min((place + 1) * kFan, sizeOf(level - 1));
    for (size_t i = place * kFan; i < end; ++i)
        findBelow(boxes, projector, seen, level - 1, i, found);
}

void PartTree::takeBelow(size_t level, size_t place, std::vector<uint32_t>& found) const {
    size_t begin = place, end = place + 1;
    for (; level > 0; --level) {
        begin *= kFan;
        end *= kFan;
    }
    for (size_t i = begin; i < std::min(end, order_.size()); ++i)
        found.push_back(order_[i]);
}

} // namespace vndk::gs
