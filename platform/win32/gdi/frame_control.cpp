// The parts of controls and frames: buttons, check boxes, arrows, the size grip, marks of menus.
#include "gdi/draw_edge.h"
#include "gdi/pixel_art.h"
#include "win32/draw.h"

#include <algorithm>
#include <array>

using namespace vndk::win32;

namespace {

template <std::size_t rows>
using Rows = std::array<std::string_view, rows>;

constexpr Rows<7> checkRows{"......#", ".....##", "#...###", "##.###.", "#####..", ".###...", "..#...."};
constexpr Rows<6> bulletRows{".####.", "######", "######", "######", "######", ".####."};
constexpr Rows<4> upRows{"...#...", "..###..", ".#####.", "#######"};
constexpr Rows<4> downRows{"#######", ".#####.", "..###..", "...#..."};
constexpr Rows<7> leftRows{"...#", "..##", ".###", "####", ".###", "..##", "...#"};
constexpr Rows<7> rightRows{"#...", "##..", "###.", "####", "###.", "##..", "#..."};
constexpr Rows<7> closeRows{"##....##", ".##..##.", "..####..", "...##...", "..####..", ".##..##.", "##....##"};
constexpr Rows<2> minimizeRows{"######", "######"};
constexpr Rows<9> maximizeRows{"#########", "#########", "#.......#", "#.......#", "#.......#",
                               "#.......#", "#.......#", "#.......#", "#########"};
constexpr Rows<9> restoreRows{"..######", "..######", "..#....#", "######.#", "######.#",
                              "#....###", "#....#..", "#....#..", "######.."};
constexpr Rows<9> helpRows{".####.", "##..##", "##..##", "...##.", "..##..", "..##..", "......", "..##..", "..##.."};

/// A round button of 12 x 12: S shadow, D dark shadow, L light, H highlight, W inside.
constexpr Rows<12> radioRows{"....SSSS....", "..SSDDDDSS..", ".SDDWWWWDDH.", ".SDWWWWWWLH.",
                             "SDWWWWWWWWLH", "SDWWWWWWWWLH", "SDWWWWWWWWLH", "SDWWWWWWWWLH",
                             ".SDWWWWWWLH.", ".SLLWWWWLLH.", "..HHLLLLHH..", "....HHHH...."};
constexpr Rows<12> radioDotRows{"............", "............", "............", "............",
                                ".....##.....", "....####....", "....####....", ".....##.....",
                                "............", "............", "............", "............"};

/// A picture and where it lies in a part of the usual size.
struct PlacedArt {
    PixelArt art;
    POINT at;
    SIZE usual;
};

constexpr SIZE captionButton{16, 14};
constexpr SIZE scrollButton{16, 16};

/// The place of a picture in a part of any size: larger parts hold it two, three... times as large.
RECT placeIn(const RECT& part, const PlacedArt& placed) {
    const std::int64_t width = part.right - part.left;
    const std::int64_t height = part.bottom - part.top;
    const int times = static_cast<int>(std::min(width / placed.usual.cx, height / placed.usual.cy));
    if (times >= 1) {
        const int left = part.left + limited((width - times * placed.usual.cx) / 2) + times * placed.at.x;
        const int top = part.top + limited((height - times * placed.usual.cy) / 2) + times * placed.at.y;
        return {left, top, left + times * placed.art.width(), top + times * placed.art.height()};
    }
    // Smaller parts: scaled down on the smaller side's measure, at least a pixel each way.
    const auto scaled = [&](int value) {
        const bool byWidth = width * placed.usual.cy < height * placed.usual.cx;
        return static_cast<int>(byWidth ? value * width / placed.usual.cx : value * height / placed.usual.cy);
    };
    const int artWidth = std::max(scaled(placed.art.width()), 1);
    const int artHeight = std::max(scaled(placed.art.height()), 1);
    const int left = part.left + limited((width - artWidth + 1) / 2);
    const int top = part.top + limited((height - scaled(placed.usual.cy)) / 2) + scaled(placed.at.y);
    return {left, top, left + artWidth, top + artHeight};
}

RECT moved(const RECT& rect, int by) { return {rect.left + by, rect.top + by, rect.right + by, rect.bottom + by}; }

void paintColored(DeviceContext& dc, const PixelArt& art, const RECT& place, const RECT& part, int color,
                  char cell = '#') {
    paintArt(dc, art, place, part, dc.pixelOf(GetSysColor(color)), cell);
}

/// In the text colour of buttons, or embossed where the part can't be used.
void paintSign(DeviceContext& dc, const PixelArt& art, const RECT& place, const RECT& part, UINT state) {
    if ((state & DFCS_INACTIVE) != 0) {
        paintColored(dc, art, moved(place, 1), part, COLOR_3DHILIGHT);
        paintColored(dc, art, place, part, COLOR_3DSHADOW);
    } else {
        paintColored(dc, art, place, part, (state & DFCS_HOT) != 0 ? COLOR_HOTLIGHT : COLOR_BTNTEXT);
    }
}

UINT lookFlags(UINT state) {
    return ((state & DFCS_FLAT) != 0 ? BF_FLAT : 0U) | ((state & DFCS_MONO) != 0 ? BF_MONO : 0U);
}

/// The largest square in the middle.
RECT squareIn(const RECT& rect) {
    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    const int size = std::min(width, height);
    const int left = rect.left + (width - size) / 2;
    const int top = rect.top + (height - size) / 2;
    return {left, top, left + size, top + size};
}

// ---- One function for each kind. Rectangles are in surface points. -------------------------------------------------

void drawPushButton(DeviceContext& dc, const RECT& rect, UINT state) {
    const bool down = (state & (DFCS_PUSHED | DFCS_CHECKED)) != 0;
    const RECT inside =
        paintEdge(dc, rect, down ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT | BF_SOFT | BF_MIDDLE | lookFlags(state));
    if ((state & DFCS_CHECKED) != 0 && (state & DFCS_PUSHED) == 0)
        paintChecked(dc, inside, GetSysColor(COLOR_3DFACE), GetSysColor(COLOR_3DHILIGHT));
}

void drawCheckBox(DeviceContext& dc, const RECT& rect, UINT state) {
    const RECT box = squareIn(rect);
    const RECT inside = paintEdge(dc, box, EDGE_SUNKEN, BF_RECT | lookFlags(state));
    const bool dead = (state & (DFCS_INACTIVE | DFCS_PUSHED)) != 0;
    const bool between = (state & DFCS_BUTTON3STATE) != 0 && (state & DFCS_CHECKED) != 0;
    if (between && !dead)
        paintChecked(dc, inside, GetSysColor(COLOR_3DFACE), GetSysColor(COLOR_3DHILIGHT));
    else
        paintRect(dc, inside, dc.pixelOf(GetSysColor(dead ? COLOR_3DFACE : COLOR_WINDOW)));
    if ((state & DFCS_CHECKED) == 0)
        return;
    const bool gray = between || (state & DFCS_INACTIVE) != 0;
    paintColored(dc, {checkRows}, placeIn(box, {{checkRows}, {3, 3}, {13, 13}}), box,
                 gray ? COLOR_3DSHADOW : COLOR_WINDOWTEXT);
}

void drawRadioButton(DeviceContext& dc, const RECT& rect, UINT state) {
    const PixelArt art{radioRows};
    const RECT button = squareIn(rect);
    const bool mono = (state & DFCS_MONO) != 0;
    const bool flat = (state & (DFCS_FLAT | DFCS_MONO)) != 0;
    const bool dead = (state & (DFCS_INACTIVE | DFCS_PUSHED)) != 0;
    const int inside = dead ? COLOR_3DFACE : COLOR_WINDOW;
    const int ring = mono ? COLOR_WINDOWFRAME : COLOR_3DSHADOW;
    paintColored(dc, art, button, button, ring, 'S');
    paintColored(dc, art, button, button, flat ? inside : COLOR_3DDKSHADOW, 'D');
    paintColored(dc, art, button, button, flat ? inside : COLOR_3DLIGHT, 'L');
    paintColored(dc, art, button, button, flat ? ring : COLOR_3DHILIGHT, 'H');
    paintColored(dc, art, button, button, inside, 'W');
    if ((state & DFCS_CHECKED) != 0)
        paintColored(dc, {radioDotRows}, button, button,
                     (state & DFCS_INACTIVE) != 0 ? COLOR_3DSHADOW : COLOR_WINDOWTEXT);
}

/// White where the background is to stay, black where the button goes.
void drawRadioMask(DeviceContext& dc, const RECT& rect) {
    paintRect(dc, rect, dc.pixelOf(RGB(255, 255, 255)));
    for (const char cell : {'S', 'D', 'L', 'H', 'W'})
        paintArt(dc, {radioRows}, squareIn(rect), rect, dc.pixelOf(RGB(0, 0, 0)), cell);
}

void drawButton(DeviceContext& dc, const RECT& rect, UINT state) {
    if ((state & DFCS_BUTTONPUSH) != 0) {
        drawPushButton(dc, rect, state);
    } else if ((state & DFCS_BUTTONRADIOMASK) != 0) {
        drawRadioMask(dc, rect);
    } else if ((state & DFCS_BUTTONRADIOIMAGE) != 0) {
        paintRect(dc, rect, dc.pixelOf(RGB(0, 0, 0)));
        drawRadioButton(dc, rect, state);
    } else if ((state & DFCS_BUTTONRADIO) != 0) {
        drawRadioButton(dc, rect, state);
    } else {
        drawCheckBox(dc, rect, state);
    }
}

void drawCaptionButton(DeviceContext& dc, const RECT& rect, UINT state) {
    const PlacedArt signs[] = {{{closeRows}, {4, 3}, captionButton},
                               {{minimizeRows}, {4, 9}, captionButton},
                               {{maximizeRows}, {3, 2}, captionButton},
                               {{restoreRows}, {3, 2}, captionButton},
                               {{helpRows}, {5, 2}, captionButton}};
    const UINT which = state & 0xFF;
    if (which >= std::size(signs))
        return;
    const bool pushed = (state & DFCS_PUSHED) != 0;
    paintEdge(dc, rect, pushed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT | BF_SOFT | BF_MIDDLE | lookFlags(state));
    paintSign(dc, signs[which].art, moved(placeIn(rect, signs[which]), pushed ? 1 : 0), rect, state);
}

/// Ridges across the corner: two lines of shadow and one of light, three times.
void drawSizeGrip(DeviceContext& dc, const RECT& rect, UINT state) {
    constexpr int ridge = 4;
    constexpr int ridges = 3;
    const bool atLeft = (state & DFCS_SCROLLSIZEGRIPRIGHT) != 0; // the grip of windows that read from the right
    if ((state & DFCS_TRANSPARENT) == 0)
        paintRect(dc, rect, dc.pixelOf(GetSysColor(COLOR_3DFACE)));
    const int size = std::min<int>({rect.right - rect.left, rect.bottom - rect.top, ridge * ridges + 1});
    for (int distance = 1; distance < size; ++distance) {
        const int line = distance % ridge;
        if (line == 0)
            continue;
        const std::uint32_t pixel = dc.pixelOf(GetSysColor(line == ridge - 1 ? COLOR_3DHILIGHT : COLOR_3DSHADOW));
        for (int step = 0; step < distance; ++step) {
            const int x = atLeft ? rect.left + distance - 1 - step : rect.right - distance + step;
            const int y = rect.bottom - 1 - step;
            paintRect(dc, {x, y, x + 1, y + 1}, pixel);
        }
    }
}

void drawScrollButton(DeviceContext& dc, const RECT& rect, UINT state) {
    if ((state & (DFCS_SCROLLSIZEGRIP | DFCS_SCROLLSIZEGRIPRIGHT)) != 0) {
        drawSizeGrip(dc, rect, state);
        return;
    }
    const PlacedArt up{{upRows}, {4, 6}, scrollButton};
    const PlacedArt down{{downRows}, {4, 6}, scrollButton};
    const PlacedArt left{{leftRows}, {5, 4}, scrollButton};
    const PlacedArt right{{rightRows}, {6, 4}, scrollButton};
    const PlacedArt arrows[] = {up, down, left, right, down, down};
    const UINT which = state & 0x07;
    if (which >= std::size(arrows))
        return;
    const bool pushed = (state & DFCS_PUSHED) != 0;
    paintEdge(dc, rect, EDGE_RAISED, BF_RECT | BF_MIDDLE | lookFlags(state) | (pushed ? BF_FLAT : 0U));
    paintSign(dc, arrows[which].art, moved(placeIn(rect, arrows[which]), pushed ? 1 : 0), rect, state);
}

void drawMenuSign(DeviceContext& dc, const RECT& rect, UINT state) {
    constexpr SIZE usual{13, 13};
    paintRect(dc, rect, dc.pixelOf(RGB(255, 255, 255)));
    PlacedArt sign{{rightRows}, {5, 3}, usual};
    if ((state & DFCS_MENUBULLET) != 0)
        sign = {{bulletRows}, {4, 4}, usual};
    else if ((state & DFCS_MENUCHECK) != 0)
        sign = {{checkRows}, {3, 3}, usual};
    else if ((state & DFCS_MENUARROWRIGHT) != 0)
        sign.art = {leftRows};
    paintArt(dc, sign.art, placeIn(rect, sign), rect, dc.pixelOf(RGB(0, 0, 0)));
}

using DrawPart = void (*)(DeviceContext& dc, const RECT& rect, UINT state);

/// Null for a kind that isn't known.
DrawPart partOf(UINT kind) {
    switch (kind) {
    case DFC_CAPTION:
        return &drawCaptionButton;
    case DFC_MENU:
        return &drawMenuSign;
    case DFC_SCROLL:
        return &drawScrollButton;
    case DFC_BUTTON:
        return &drawButton;
    default:
        return nullptr;
    }
}

} // namespace

BOOL DrawFrameControl(HDC dc, RECT* rect, UINT kind, UINT state) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    const DrawPart draw = partOf(kind);
    if (rect == nullptr || draw == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const RECT place = context->toSurface(*rect);
    if (!isEmptyRect(place))
        draw(*context, place, state);
    if ((state & DFCS_ADJUSTRECT) != 0)
        InflateRect(rect, -2, -2);
    return TRUE;
}
