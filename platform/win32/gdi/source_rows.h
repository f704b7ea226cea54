// The source of a blit as rows that lie pixel over pixel on the target, in the target's format.
#pragma once

#include "gdi/blit.h"
#include "gdi/pixel_converter.h"

#include <vector>

namespace vndk::win32 {

class SourceRows {
public:
    /// `area`: the part of the target that is asked for. REQUIRES: the job has a source and outlives this object.
    SourceRows(const BlitJob& job, const Surface& target, const RECT& area);

    /// The part of the area that has source pixels.
    [[nodiscard]] const RECT& covered() const { return covered_; }
    [[nodiscard]] const PixelConverter& converter() const { return converter_; }
    /// Pixels for the target's row `y` from column `x`; valid until the next call. REQUIRES: within `covered()`.
    [[nodiscard]] const std::uint32_t* row(int x, int y, int count);

private:
    /// What becomes of several source pixels that one target pixel is made of.
    enum class Merge { none, bitwiseAnd, bitwiseOr, average };

    [[nodiscard]] static Merge mergeOf(const BlitJob& job, const Surface& target);
    [[nodiscard]] static Surface valuesOf(const BlitJob& job, Merge merge);
    [[nodiscard]] BlitSamples clipped(const BlitAxis& axis, int place, int limit) const;
    [[nodiscard]] const BlitSamples& columnSamples(int x) const {
        const int column = x - area_.left;
        return columns_[static_cast<std::size_t>(column)];
    }
    void loadValues(int row);
    void sampleRow(int x, int count, BlitSamples rows);
    void averageRow(int x, int count, BlitSamples rows);

    const BlitJob& job_;
    Merge merge_;
    PixelConverter converter_;
    RECT area_;
    RECT covered_;
    std::vector<BlitSamples> columns_; // for each column of the area
    std::vector<std::uint32_t> result_;
    std::vector<std::uint32_t> values_; // a row of the source, as pixels or, for an average, as ARGB values
    std::vector<std::uint64_t> sums_;   // of the channels, three for each target pixel
    std::vector<std::uint64_t> counts_;
    int lastRow_ = -1; // the source row that result_ was made of, when it was one
    int lastX_ = 0;
    int lastCount_ = 0;
};

} // namespace vndk::win32
