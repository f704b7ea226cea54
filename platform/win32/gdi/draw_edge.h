// Edges in the classic look.
#pragma once

#include "gdi/device_context.h"

namespace vndk::win32 {

/// What DrawEdge paints (BF_ADJUST doesn't count), in surface points. Answers what lies inside of the edge.
RECT paintEdge(DeviceContext& dc, const RECT& rect, UINT edge, UINT flags);

} // namespace vndk::win32
