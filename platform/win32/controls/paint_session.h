// Painting of one WM_PAINT or WM_PRINTCLIENT, and what is selected into a context for a while.
#pragma once

#include "win32/gdi.h"
#include "win32/paint.h"

namespace vndk::win32 {

/// BeginPaint to EndPaint; with a context given (wParam of both messages) that context, and nothing is validated.
class PaintSession {
public:
    PaintSession(HWND window, HDC given) : window_(window), dc_(given) {
        if (given != nullptr) {
            if (GetClipBox(given, &paint_.rcPaint) == ERROR)
                paint_.rcPaint = RECT{};
        } else {
            dc_ = BeginPaint(window, &paint_);
            begun_ = true;
        }
    }
    ~PaintSession() {
        if (begun_)
            EndPaint(window_, &paint_);
    }
    PaintSession(const PaintSession&) = delete;
    PaintSession& operator=(const PaintSession&) = delete;

    [[nodiscard]] HDC dc() const { return dc_; }
    /// What has to be painted, in client coordinates.
    [[nodiscard]] const RECT& area() const { return paint_.rcPaint; }

private:
    HWND window_;
    HDC dc_;
    PAINTSTRUCT paint_{};
    bool begun_ = false;
};

/// Selects an object for a scope. The context has the former one again at its end, so that the object can be deleted.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object) : dc_(dc), former_(SelectObject(dc, object)) {}
    ~SelectedObject() {
        if (former_ != nullptr)
            SelectObject(dc_, former_);
    }
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;

private:
    HDC dc_;
    HGDIOBJ former_;
};

/// Saves all attributes of a context and brings them back: handlers of custom drawing may change any of them.
class SavedContext {
public:
    explicit SavedContext(HDC dc) : dc_(dc), level_(SaveDC(dc)) {}
    ~SavedContext() {
        if (level_ != 0)
            RestoreDC(dc_, level_);
    }
    SavedContext(const SavedContext&) = delete;
    SavedContext& operator=(const SavedContext&) = delete;

private:
    HDC dc_;
    int level_;
};

} // namespace vndk::win32
