// A part of the frame that takes a strip of the frame's room, at its top or bottom, when the frame is laid out.
#pragma once

#include "mfc/afx.h"

namespace vndk::host {

enum class Edge { Top, Bottom };

/// For WM_SIZEPARENT: places the window at that edge of what is left, and takes the strip away from it.
LRESULT takeStrip(const CWnd& part, LPARAM layout, Edge edge, int height);

} // namespace vndk::host
