// Several windows placed in one go.
#include "kernel/handle_table.h"
#include "user/desktop_state.h"
#include "user/window_position.h"
#include "win32/error.h"

#include <vector>

namespace vndk::win32 {

namespace {

struct Positions {
    std::vector<WINDOWPOS> windows;
};

HandleTable<Positions, HDWP>& positions() {
    static HandleTable<Positions, HDWP> table{HandleKind::positions};
    return table;
}

} // namespace

} // namespace vndk::win32

using vndk::win32::findWindow;
using vndk::win32::Positions;
using vndk::win32::positions;

HDWP BeginDeferWindowPos(int count) {
    if (count < 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return positions().add(std::make_unique<Positions>());
}

HDWP DeferWindowPos(HDWP handle, HWND window, HWND insertAfter, int x, int y, int width, int height, UINT flags) {
    Positions* list = positions().find(handle);
    if (list == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    if (findWindow(window) == nullptr) {
        // A list with a dead window is lost as a whole.
        positions().remove(handle);
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    list->windows.push_back({window, insertAfter, x, y, width, height, flags});
    return handle;
}

BOOL EndDeferWindowPos(HDWP handle) {
    const std::unique_ptr<Positions> list = positions().remove(handle);
    if (list == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    BOOL allPlaced = TRUE;
    for (const WINDOWPOS& each : list->windows)
        if (SetWindowPos(each.hwnd, each.hwndInsertAfter, each.x, each.y, each.cx, each.cy, each.flags) == FALSE)
            allPlaced = FALSE;
    return allPlaced;
}
