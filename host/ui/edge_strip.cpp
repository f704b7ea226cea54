#include "ui/edge_strip.h"

#include <algorithm>

namespace vndk::host {

LRESULT takeStrip(const CWnd& part, LPARAM layout, Edge edge, int height) {
    auto& room = *reinterpret_cast<AFX_SIZEPARENTPARAMS*>(layout);
    CRect strip(room.rect);
    height = std::min(height, strip.Height());
    if (edge == Edge::Top)
        room.rect.top = strip.bottom = strip.top + height;
    else
        room.rect.bottom = strip.top = strip.bottom - height;
    if (room.hDWP)
        room.hDWP = ::DeferWindowPos(room.hDWP, part.m_hWnd, nullptr, strip.left, strip.top, strip.Width(),
                                     strip.Height(), SWP_NOACTIVATE | SWP_NOZORDER);
    return 0;
}

} // namespace vndk::host
