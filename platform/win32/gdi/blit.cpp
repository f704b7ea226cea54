#include "gdi/blit.h"

#include "gdi/painter.h"
#include "gdi/source_rows.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace vndk::win32 {

namespace {

RECT targetRect(const BlitJob& job) {
    return {job.columns.firstTarget(), job.rows.firstTarget(), job.columns.endTarget(), job.rows.endTarget()};
}

bool plain(const BlitJob& job) { return job.columns.plain() && job.rows.plain(); }

bool sharesMemory(const Surface& a, const Surface& b) {
    const auto range = [](const Surface& surface) {
        const std::uint8_t* first = surface.row(0);
        const std::uint8_t* last = surface.row(surface.height - 1);
        const std::size_t rowBytes = static_cast<std::size_t>(std::abs(surface.stride));
        return std::pair(std::min(first, last), std::max(first, last) + rowBytes);
    };
    if (a.height == 0 || b.height == 0)
        return false;
    const auto [beginA, endA] = range(a);
    const auto [beginB, endB] = range(b);
    return beginA < endB && beginB < endA;
}

/// A copy of a surface's pixels.
class Snapshot {
public:
    explicit Snapshot(const Surface& original) : surface_(original) {
        const auto stride = static_cast<std::size_t>(std::abs(original.stride));
        bytes_.resize(stride * static_cast<std::size_t>(original.height));
        const std::size_t used =
            (static_cast<std::size_t>(original.width) * static_cast<std::size_t>(original.format.bits) + 7) / 8;
        for (int y = 0; y < original.height; ++y)
            std::memcpy(bytes_.data() + stride * static_cast<std::size_t>(y), original.row(y), used);
        surface_.top = bytes_.data();
        surface_.stride = static_cast<std::ptrdiff_t>(stride);
    }

    [[nodiscard]] const Surface& surface() const { return surface_; }

private:
    std::vector<std::uint8_t> bytes_;
    Surface surface_;
};

/// Combines rows of a target with those of source and pattern.
class RowCombiner {
public:
    RowCombiner(const DeviceContext& context, const BlitJob& job, SourceRows* source)
        : target_(context.surface()), job_(job), source_(source), pattern_(context, selectedBrush(context)) {
        const auto width = static_cast<std::size_t>(target_.width);
        const TernaryTable second = job.mask != nullptr ? job.mask->background : job.table;
        needsPattern_ = usesPattern(job.table) || usesPattern(second);
        if (needsPattern_)
            patternRow_.resize(width);
        needsOld_ = usesDestination(job.table) || usesDestination(second);
        targetRow_.resize(width);
        if (job.mask != nullptr) {
            backgroundRow_.resize(width);
            maskRow_.resize(width);
        }
    }

    /// REQUIRES: the pixels may be painted and have source pixels.
    void combine(int x, int y, int count) {
        const std::uint32_t* source = source_ == nullptr ? nullptr : source_->row(x, y, count);
        if (needsPattern_)
            pattern_.row(x, y, count, patternRow_.data());
        const std::uint32_t* pattern = needsPattern_ ? patternRow_.data() : nullptr;
        if (needsOld_)
            loadPixels(target_, x, y, count, targetRow_.data());
        if (job_.mask != nullptr) {
            std::copy_n(targetRow_.data(), count, backgroundRow_.data());
            combineRow(job_.mask->background, {backgroundRow_.data(), source, pattern, count});
        }
        combineRow(job_.table, {targetRow_.data(), source, pattern, count});
        if (job_.mask != nullptr)
            applyMask(x, y, count);
        storePixels(target_, x, y, count, targetRow_.data());
    }

private:
    void applyMask(int x, int y, int count) {
        const BlitMask& mask = *job_.mask;
        loadPixels(mask.surface, x - job_.columns.firstTarget() + mask.x, y - job_.rows.firstTarget() + mask.y, count,
                   maskRow_.data());
        for (int index = 0; index < count; ++index) {
            const auto at = static_cast<std::size_t>(index);
            if (maskRow_[at] == 0)
                targetRow_[at] = backgroundRow_[at];
        }
    }

    const Surface& target_;
    const BlitJob& job_;
    SourceRows* source_;
    BrushPaint pattern_;
    bool needsPattern_ = false;
    bool needsOld_ = false;
    std::vector<std::uint32_t> patternRow_;
    std::vector<std::uint32_t> targetRow_;
    std::vector<std::uint32_t> backgroundRow_;
    std::vector<std::uint32_t> maskRow_;
};

void eachRow(const RECT& piece, bool upward, const auto& paintRow) {
    for (int y = piece.top; y < piece.bottom; ++y)
        paintRow(upward ? piece.bottom - 1 - (y - piece.top) : y);
}

/// Rows of 32 bits that need no conversion, moved as they are.
bool canMove(const DeviceContext& context, const BlitJob& job, const SourceRows& source) {
    const Surface& target = context.surface();
    return job.table == ternaryTable(SRCCOPY) && job.mask == nullptr && plain(job) && source.converter().keeps() &&
           target.format.bits == 32 && (target.format.always & ~job.source->format.always) == 0;
}

void moveRows(const Surface& target, const BlitJob& job, const RECT& piece, bool upward) {
    const int dx = job.columns.source - job.columns.target;
    const int dy = job.rows.source - job.rows.target;
    const std::size_t bytes = std::size_t{4} * static_cast<std::size_t>(piece.right - piece.left);
    eachRow(piece, upward, [&](int y) {
        std::memmove(target.row(y) + std::ptrdiff_t{4} * piece.left,
                     job.source->row(y + dy) + std::ptrdiff_t{4} * (piece.left + dx), bytes);
    });
}

void blitPieces(const DeviceContext& context, const BlitJob& job, RECT area, bool upward) {
    std::optional<SourceRows> source;
    if (job.source != nullptr) {
        source.emplace(job, context.surface(), area);
        area = intersected(area, source->covered());
    }
    if (isEmptyRect(area))
        return;
    if (source && canMove(context, job, *source)) {
        eachVisible(context, area, [&](const RECT& piece) { moveRows(context.surface(), job, piece, upward); });
        return;
    }
    RowCombiner combiner(context, job, source ? &*source : nullptr);
    eachVisible(context, area, [&](const RECT& piece) {
        eachRow(piece, upward, [&](int y) { combiner.combine(piece.left, y, piece.right - piece.left); });
    });
}

/// The mix mode of an operation without a source.
int mixModeOf(TernaryTable table) { return R2_BLACK + ((table & 3) | (table >> 4 & 3) << 2); }

void fillPattern(const DeviceContext& context, const RECT& area, TernaryTable table) {
    const BrushObject any;
    const BrushObject& brush = usesPattern(table) ? selectedBrush(context) : any;
    paintRect(context, area, BrushPaint(context, brush), mixModeOf(table));
}

} // namespace

bool blit(const DeviceContext& context, const BlitJob& job) {
    if (job.columns.targetSize == 0 || job.rows.targetSize == 0)
        return true;
    const RECT area = intersected(targetRect(job), context.reach().bounds());
    if (isEmptyRect(area))
        return true;
    if (job.mask == nullptr && !usesSource(job.table)) {
        fillPattern(context, area, job.table);
        return true;
    }
    if (job.source == nullptr || !sharesMemory(*job.source, context.surface())) {
        blitPieces(context, job, area, false);
        return true;
    }
    // Onto itself: rows in an order that reads each before it is written; where one order isn't enough, from a copy.
    const bool oneView = job.source->top == context.surface().top && job.source->stride == context.surface().stride;
    if (oneView && plain(job) && context.reach().rects().size() == 1) {
        blitPieces(context, job, area, job.rows.source < job.rows.target);
        return true;
    }
    const Snapshot copy(*job.source);
    BlitJob fromCopy = job;
    fromCopy.source = &copy.surface();
    blitPieces(context, fromCopy, area, false);
    return true;
}

} // namespace vndk::win32
