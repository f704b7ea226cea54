#include "gdi/source_rows.h"

#include <algorithm>

namespace vndk::win32 {

BlitSamples samplesOf(const BlitAxis& axis, int place, int stretchMode) {
    const std::int64_t targetSize = std::abs(std::int64_t{axis.targetSize});
    const std::int64_t sourceSize = std::abs(std::int64_t{axis.sourceSize});
    const std::int64_t step = axis.targetSize > 0 ? place - axis.target : axis.target - place;
    std::int64_t first = (2 * step + 1) * sourceSize / (2 * targetSize);
    std::int64_t end = first + 1;
    if (sourceSize > targetSize && stretchMode != COLORONCOLOR) {
        first = step * sourceSize / targetSize;
        end = (step + 1) * sourceSize / targetSize;
    }
    if (axis.sourceSize > 0)
        return {static_cast<int>(axis.source + first), static_cast<int>(axis.source + end)};
    return {static_cast<int>(axis.source - end + 1), static_cast<int>(axis.source - first + 1)};
}

SourceRows::Merge SourceRows::mergeOf(const BlitJob& job, const Surface& target) {
    const bool shrinks = std::abs(job.columns.sourceSize) > std::abs(job.columns.targetSize) ||
                         std::abs(job.rows.sourceSize) > std::abs(job.rows.targetSize);
    if (!shrinks || job.stretchMode == COLORONCOLOR)
        return Merge::none;
    if (job.stretchMode == WHITEONBLACK)
        return Merge::bitwiseOr;
    // A mean of black and white means nothing to a monochrome target.
    return job.stretchMode == HALFTONE && !target.format.monochrome ? Merge::average : Merge::bitwiseAnd;
}

/// What the converter sees: source pixels, or ARGB values where several colours are merged into one. Merging pixels of
/// a table would merge their numbers.
Surface SourceRows::valuesOf(const BlitJob& job, Merge merge) {
    const bool asPixels = merge == Merge::none || (merge != Merge::average && job.source->format.monochrome);
    return asPixels ? *job.source : Surface{};
}

SourceRows::SourceRows(const BlitJob& job, const Surface& target, const RECT& area)
    : job_(job), merge_(mergeOf(job, target)), converter_(valuesOf(job, merge_), target, job.rule), area_(area),
      covered_(area) {
    const auto empty = [](BlitSamples samples) { return samples.first >= samples.end; };
    for (int x = area.left; x < area.right; ++x)
        columns_.push_back(clipped(job.columns, x, job.source->width));
    const auto columnIsEmpty = [&](int x) { return empty(columns_[static_cast<std::size_t>(x - area.left)]); };
    while (covered_.left < covered_.right && columnIsEmpty(covered_.left))
        ++covered_.left;
    while (covered_.left < covered_.right && columnIsEmpty(covered_.right - 1))
        --covered_.right;
    const auto rowIsEmpty = [&](int y) { return empty(clipped(job.rows, y, job.source->height)); };
    while (covered_.top < covered_.bottom && rowIsEmpty(covered_.top))
        ++covered_.top;
    while (covered_.top < covered_.bottom && rowIsEmpty(covered_.bottom - 1))
        --covered_.bottom;
    result_.resize(columns_.size());
    values_.resize(static_cast<std::size_t>(job.source->width));
}

BlitSamples SourceRows::clipped(const BlitAxis& axis, int place, int limit) const {
    const BlitSamples samples = samplesOf(axis, place, merge_ == Merge::none ? COLORONCOLOR : job_.stretchMode);
    return {std::max(samples.first, 0), std::min(samples.end, limit)};
}

const std::uint32_t* SourceRows::row(int x, int y, int count) {
    const BlitSamples rows = clipped(job_.rows, y, job_.source->height);
    const bool single = rows.end - rows.first == 1;
    if (single && rows.first == lastRow_ && x == lastX_ && count == lastCount_)
        return result_.data();
    lastRow_ = single ? rows.first : -1;
    lastX_ = x;
    lastCount_ = count;
    const bool straight = merge_ == Merge::none && job_.columns.plain() && job_.columns.sourceSize > 0;
    if (straight)
        loadPixels(*job_.source, x - job_.columns.target + job_.columns.source, rows.first, count, result_.data());
    else if (merge_ == Merge::average)
        averageRow(x, count, rows);
    else
        sampleRow(x, count, rows);
    converter_.convert(result_.data(), count);
    return result_.data();
}

void SourceRows::loadValues(int row) {
    const Surface& source = *job_.source;
    const int from = std::min(columns_.front().first, columns_.back().first);
    const int end = std::max(columns_.front().end, columns_.back().end);
    const int first = std::clamp(from, 0, source.width);
    const int count = std::clamp(end, first, source.width) - first;
    std::uint32_t* values = values_.data() + first;
    if (merge_ == Merge::none || (merge_ != Merge::average && source.format.monochrome)) {
        loadPixels(source, first, row, count, values);
    } else if (source.format.monochrome) {
        loadPixels(source, first, row, count, values);
        const std::uint32_t zeros = argbFromColor(job_.rule.zeros);
        const std::uint32_t ones = argbFromColor(job_.rule.ones);
        std::transform(values, values + count, values, [=](std::uint32_t bit) { return bit != 0 ? ones : zeros; });
    } else {
        loadArgb(source, first, row, count, values);
    }
}

void SourceRows::sampleRow(int x, int count, BlitSamples rows) {
    const bool either = merge_ == Merge::bitwiseOr;
    const std::uint32_t neutral = either ? 0 : 0xFFFFFFFF;
    std::fill_n(result_.begin(), count, neutral);
    for (int row = rows.first; row < rows.end; ++row) {
        loadValues(row);
        for (int index = 0; index < count; ++index) {
            const BlitSamples samples = columnSamples(x + index);
            std::uint32_t& result = result_[static_cast<std::size_t>(index)];
            for (int column = samples.first; column < samples.end; ++column) {
                const std::uint32_t value = values_[static_cast<std::size_t>(column)];
                result = either ? result | value : result & value;
            }
        }
    }
}

void SourceRows::averageRow(int x, int count, BlitSamples rows) {
    sums_.assign(static_cast<std::size_t>(count) * 3, 0);
    counts_.assign(static_cast<std::size_t>(count), 0);
    for (int row = rows.first; row < rows.end; ++row) {
        loadValues(row);
        for (int index = 0; index < count; ++index) {
            const BlitSamples samples = columnSamples(x + index);
            std::uint64_t* sums = sums_.data() + static_cast<std::size_t>(index) * 3;
            for (int column = samples.first; column < samples.end; ++column) {
                const std::uint32_t value = values_[static_cast<std::size_t>(column)];
                sums[0] += (value >> 16) & 0xFF;
                sums[1] += (value >> 8) & 0xFF;
                sums[2] += value & 0xFF;
            }
            counts_[static_cast<std::size_t>(index)] += static_cast<std::uint64_t>(samples.end - samples.first);
        }
    }
    for (int index = 0; index < count; ++index) {
        const std::uint64_t* sums = sums_.data() + static_cast<std::size_t>(index) * 3;
        const std::uint64_t number = counts_[static_cast<std::size_t>(index)];
        const auto mean = [=](std::uint64_t sum) { return static_cast<std::uint32_t>((sum + number / 2) / number); };
        result_[static_cast<std::size_t>(index)] = mean(sums[0]) << 16 | mean(sums[1]) << 8 | mean(sums[2]);
    }
}

} // namespace vndk::win32
