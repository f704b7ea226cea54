// A scroll bar without window and pixels of the screen: its values, and where its parts lie along its length.
//
// Offsets are pixels from the bar's left or upper end.
#pragma once

#include "user/window.h"
#include "win32/scrollbar.h"

namespace vndk::win32 {

/// The highest position that a bar can take.
[[nodiscard]] int highestPosition(const ScrollState& state);
/// There is something to scroll.
[[nodiscard]] bool canScroll(const ScrollState& state);

/// Takes over what `info.fMask` names, then makes page and position fit. True when anything is different now.
bool applyScrollInfo(ScrollState& state, const SCROLLINFO& info);
/// Writes what `info.fMask` names. False when the structure's size or mask is wrong, or the mask asks for nothing.
bool readScrollInfo(const ScrollState& state, SCROLLINFO& info);
/// The size is one of the two known and the mask holds known bits only.
[[nodiscard]] bool isValid(const SCROLLINFO& info);

enum class ScrollPart : int { none, lineUp, pageUp, thumb, pageDown, lineDown };

struct ScrollLayout {
    int length = 0;
    int arrow = 0; // length of either arrow
    bool hasThumb = false;
    int thumbBegin = 0;
    int thumbEnd = 0;

    [[nodiscard]] int shaftBegin() const { return arrow; }
    [[nodiscard]] int shaftEnd() const { return length - arrow; }
    /// Pixels that the thumb can move.
    [[nodiscard]] int travel() const { return shaftEnd() - shaftBegin() - (thumbEnd - thumbBegin); }
};

/// `arrow` is the length that an arrow would like to have; a short bar halves what there is.
[[nodiscard]] ScrollLayout layoutScrollBar(const ScrollState& state, int length, int arrow, bool enabled);

/// The part at an offset; none outside of the bar.
[[nodiscard]] ScrollPart partAt(const ScrollLayout& layout, int offset);
/// The position for a thumb that has been moved `thumbOffset` pixels from the begin of its way.
[[nodiscard]] int positionAt(const ScrollState& state, const ScrollLayout& layout, int thumbOffset);

} // namespace vndk::win32
