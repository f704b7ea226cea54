#include "controls/scroll_model.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

// A thumb for a huge range can still be grasped.
constexpr int smallestThumb = 8;

using Wide = std::int64_t;

/// a * b / c, rounded to the nearest; 0 for c = 0.
int scale(Wide a, Wide b, Wide c) { return c > 0 ? static_cast<int>((a * b + c / 2) / c) : 0; }

bool rangeIsValid(int minimum, int maximum) { return minimum <= maximum && Wide{maximum} - minimum <= 0x7FFFFFFF; }

/// Page and position stay inside of the range.
void fit(ScrollState& state) {
    const Wide span = Wide{state.maximum} - state.minimum + 1;
    state.page = static_cast<UINT>(std::min(Wide{state.page}, span));
    state.position = std::clamp(state.position, state.minimum, highestPosition(state));
}

} // namespace

int highestPosition(const ScrollState& state) {
    const Wide highest = Wide{state.maximum} - std::max(Wide{state.page} - 1, Wide{0});
    return static_cast<int>(std::max(highest, Wide{state.minimum}));
}

bool canScroll(const ScrollState& state) { return state.minimum < highestPosition(state); }

bool isValid(const SCROLLINFO& info) {
    constexpr UINT sizeWithoutTrack = sizeof(SCROLLINFO) - sizeof(info.nTrackPos);
    if (info.cbSize != sizeof(SCROLLINFO) && info.cbSize != sizeWithoutTrack)
        return false;
    return (info.fMask & ~(SIF_ALL | SIF_DISABLENOSCROLL)) == 0;
}

bool applyScrollInfo(ScrollState& state, const SCROLLINFO& info) {
    const ScrollState before = state;
    if ((info.fMask & SIF_RANGE) != 0) {
        const bool valid = rangeIsValid(info.nMin, info.nMax);
        state.minimum = valid ? info.nMin : 0;
        state.maximum = valid ? info.nMax : 0;
    }
    if ((info.fMask & SIF_PAGE) != 0)
        state.page = info.nPage;
    if ((info.fMask & SIF_POS) != 0)
        state.position = info.nPos;
    fit(state);
    return state.minimum != before.minimum || state.maximum != before.maximum || state.page != before.page ||
           state.position != before.position;
}

bool readScrollInfo(const ScrollState& state, SCROLLINFO& info) {
    if (!isValid(info))
        return false;
    if ((info.fMask & SIF_RANGE) != 0) {
        info.nMin = state.minimum;
        info.nMax = state.maximum;
    }
    if ((info.fMask & SIF_PAGE) != 0)
        info.nPage = state.page;
    if ((info.fMask & SIF_POS) != 0)
        info.nPos = state.position;
    if ((info.fMask & SIF_TRACKPOS) != 0 && info.cbSize == sizeof(SCROLLINFO))
        info.nTrackPos = state.tracking ? state.trackPosition : state.position;
    return (info.fMask & SIF_ALL) != 0;
}

ScrollLayout layoutScrollBar(const ScrollState& state, int length, int arrow, bool enabled) {
    ScrollLayout layout;
    layout.length = std::max(length, 0);
    layout.arrow = std::min(arrow, layout.length / 2);
    const int shaft = layout.shaftEnd() - layout.shaftBegin();
    const Wide span = Wide{state.maximum} - state.minimum + 1;
    const int thumb = state.page != 0 ? std::max(scale(shaft, state.page, span), smallestThumb) : arrow;
    layout.hasThumb = enabled && state.disabledArrows != ESB_DISABLE_BOTH && canScroll(state) && thumb <= shaft;
    if (!layout.hasThumb)
        return layout;
    const Wide way = Wide{highestPosition(state)} - state.minimum;
    const int offset = state.thumbOffset >= 0 ? std::min(state.thumbOffset, shaft - thumb)
                                              : scale(Wide{state.position} - state.minimum, shaft - thumb, way);
    layout.thumbBegin = layout.shaftBegin() + offset;
    layout.thumbEnd = layout.thumbBegin + thumb;
    return layout;
}

ScrollPart partAt(const ScrollLayout& layout, int offset) {
    if (offset < 0 || offset >= layout.length)
        return ScrollPart::none;
    if (offset < layout.shaftBegin())
        return ScrollPart::lineUp;
    if (offset >= layout.shaftEnd())
        return ScrollPart::lineDown;
    if (!layout.hasThumb)
        return ScrollPart::none;
    if (offset < layout.thumbBegin)
        return ScrollPart::pageUp;
    return offset < layout.thumbEnd ? ScrollPart::thumb : ScrollPart::pageDown;
}

int positionAt(const ScrollState& state, const ScrollLayout& layout, int thumbOffset) {
    const Wide way = Wide{highestPosition(state)} - state.minimum;
    const int offset = std::clamp(thumbOffset, 0, std::max(layout.travel(), 0));
    return static_cast<int>(Wide{state.minimum} + scale(offset, way, layout.travel()));
}

} // namespace vndk::win32
