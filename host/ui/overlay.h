// What stands above the drawing for a moment: cross-hair, rubber bands, markers. It is painted over the kept picture;
// where it was, the picture is blitted again and nothing else.
//
//     former.swap(overlay);
//     overlay.line(a, b, RGB(255, 255, 255));
//     former.invalidate(window);
//     overlay.invalidate(window);
#pragma once

#include "mfc/afx.h"

#include <string>
#include <vector>

namespace vndk::host {

class Overlay {
public:
    enum class Look { Solid, Dashed };

    void clear();
    /// Both ends are painted.
    void line(CPoint a, CPoint b, COLORREF color, Look look = Look::Solid);
    /// The edge of a rectangle.
    void frame(const CRect& rect, COLORREF color);
    /// A filled strip with a text, as tool tips have it; stays within `bounds`.
    void label(CPoint at, const std::string& text, const CRect& bounds);
    /// A letter about its middle.
    void letter(CPoint middle, const char* letter, COLORREF color);
    /// The lines that follow until endGroup() are invalidated as one: many, close together.
    void beginGroup();
    void endGroup();

    void paint(CDC& dc) const;
    void invalidate(CWnd& window) const;

private:
    struct Line {
        CPoint a, b;
        COLORREF color;
        Look look;
    };
    struct Label {
        CRect place;
        std::string text;
        COLORREF color;
        bool filled;
    };
    void coverLine(CPoint a, CPoint b);

    std::vector<Line> lines_;
    std::vector<Label> labels_;
    std::vector<CRect> areas_;
    CRect group_;
    bool grouping_ = false;
};

} // namespace vndk::host
