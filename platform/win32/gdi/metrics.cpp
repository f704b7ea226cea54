#include "gdi/metrics.h"

#include "win32/error.h"
#include "win32/metrics.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>

namespace vndk::win32 {

namespace {

struct ScreenSize {
    int width = 1024;
    int height = 768;
};

ScreenSize& screenSize() {
    static ScreenSize size;
    return size;
}

struct Metric {
    int index;
    int value;
};

constexpr int captionHeight = 18; // without the line below it
constexpr int smallCaptionHeight = 15;
constexpr int menuHeight = 18;
constexpr int scrollWidth = 16;
constexpr int frameWidth = 4;
constexpr int iconSpacing = 75;
constexpr int dragDistance = 4;

/// All that don't depend on the screen.
constexpr Metric fixedMetrics[] = {
    {SM_CXVSCROLL, scrollWidth},
    {SM_CYHSCROLL, scrollWidth},
    {SM_CYCAPTION, captionHeight + 1},
    {SM_CXBORDER, 1},
    {SM_CYBORDER, 1},
    {SM_CXFIXEDFRAME, 3},
    {SM_CYFIXEDFRAME, 3},
    {SM_CYVTHUMB, scrollWidth},
    {SM_CXHTHUMB, scrollWidth},
    {SM_CXICON, 32},
    {SM_CYICON, 32},
    {SM_CXCURSOR, 32},
    {SM_CYCURSOR, 32},
    {SM_CYMENU, menuHeight + 1},
    {SM_MOUSEPRESENT, 1},
    {SM_CYVSCROLL, scrollWidth},
    {SM_CXHSCROLL, scrollWidth},
    {SM_CXMIN, 112},
    {SM_CYMIN, 27},
    {SM_CXSIZE, captionHeight},
    {SM_CYSIZE, captionHeight},
    {SM_CXSIZEFRAME, frameWidth},
    {SM_CYSIZEFRAME, frameWidth},
    {SM_CXMINTRACK, 112},
    {SM_CYMINTRACK, 27},
    {SM_CXDOUBLECLK, dragDistance},
    {SM_CYDOUBLECLK, dragDistance},
    {SM_CXICONSPACING, iconSpacing},
    {SM_CYICONSPACING, iconSpacing},
    {SM_CMOUSEBUTTONS, 3},
    {SM_CXEDGE, 2},
    {SM_CYEDGE, 2},
    {SM_CXMINSPACING, 160},
    {SM_CYMINSPACING, 24},
    {SM_CXSMICON, 16},
    {SM_CYSMICON, 16},
    {SM_CYSMCAPTION, smallCaptionHeight + 1},
    {SM_CXSMSIZE, 12},
    {SM_CYSMSIZE, smallCaptionHeight},
    {SM_CXMENUSIZE, menuHeight},
    {SM_CYMENUSIZE, menuHeight},
    {SM_ARRANGE, 8}, // minimised windows are hidden
    {SM_CXMINIMIZED, 160},
    {SM_CYMINIMIZED, 24},
    {SM_CXDRAG, dragDistance},
    {SM_CYDRAG, dragDistance},
    {SM_CXMENUCHECK, 13},
    {SM_CYMENUCHECK, 13},
    {SM_MOUSEWHEELPRESENT, 1},
    {SM_CMONITORS, 1},
    {SM_SAMEDISPLAYFORMAT, 1},
    {SM_CXFOCUSBORDER, 1},
    {SM_CYFOCUSBORDER, 1},
};

std::optional<int> screenMetric(int index) {
    constexpr int outsideOfMaximized = 2 * frameWidth;   // a maximised window's frame lies beyond the screen
    constexpr int outsideOfLargest = 2 * frameWidth + 4; // and a window may be dragged a little larger
    const ScreenSize& screen = screenSize();
    switch (index) {
    case SM_CXSCREEN:
    case SM_CXVIRTUALSCREEN:
    case SM_CXFULLSCREEN:
        return screen.width;
    case SM_CYSCREEN:
    case SM_CYVIRTUALSCREEN:
        return screen.height;
    case SM_CYFULLSCREEN:
        return std::max(screen.height - captionHeight - 1, 0);
    case SM_CXMAXTRACK:
        return screen.width + outsideOfLargest;
    case SM_CYMAXTRACK:
        return screen.height + outsideOfLargest;
    case SM_CXMAXIMIZED:
        return screen.width + outsideOfMaximized;
    case SM_CYMAXIMIZED:
        return screen.height + outsideOfMaximized;
    default:
        return {};
    }
}

// ---- SystemParametersInfo ------------------------------------------------------------------------------------------

/// Settings that are a BOOL or a UINT.
constexpr Metric simpleSettings[] = {
    {SPI_GETBEEP, 1},
    {SPI_GETBORDER, 1},
    {SPI_GETKEYBOARDSPEED, 31},
    {SPI_GETKEYBOARDDELAY, 1},
    {SPI_GETICONTITLEWRAP, 1},
    {SPI_GETMENUDROPALIGNMENT, 0},
    {SPI_GETDRAGFULLWINDOWS, 1},
    {SPI_GETKEYBOARDPREF, 0},
    {SPI_GETSCREENREADER, 0},
    {SPI_GETFONTSMOOTHING, 0},
    {SPI_GETMOUSEHOVERWIDTH, dragDistance},
    {SPI_GETMOUSEHOVERHEIGHT, dragDistance},
    {SPI_GETMOUSEHOVERTIME, 400},
    {SPI_GETWHEELSCROLLLINES, 3},
    {SPI_GETMENUSHOWDELAY, 400},
    {SPI_GETMENUANIMATION, 0},
    {SPI_GETCOMBOBOXANIMATION, 0},
    {SPI_GETLISTBOXSMOOTHSCROLLING, 0},
    {SPI_GETGRADIENTCAPTIONS, 1},
    {SPI_GETKEYBOARDCUES, 1},
    {SPI_GETHOTTRACKING, 0},
    {SPI_GETFLATMENU, 0},
    {SPI_GETCARETWIDTH, 1},
    {SPI_ICONHORIZONTALSPACING, iconSpacing},
    {SPI_ICONVERTICALSPACING, iconSpacing},
};

LOGFONTA interfaceFont(int weight) {
    LOGFONTA font{};
    font.lfHeight = -11;
    font.lfWeight = weight;
    font.lfPitchAndFamily = VARIABLE_PITCH | FF_SWISS;
    std::strcpy(font.lfFaceName, "Tahoma");
    return font;
}

NONCLIENTMETRICSA nonClientMetrics() {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof metrics;
    metrics.iBorderWidth = 1;
    metrics.iScrollWidth = scrollWidth;
    metrics.iScrollHeight = scrollWidth;
    metrics.iCaptionWidth = captionHeight;
    metrics.iCaptionHeight = captionHeight;
    metrics.lfCaptionFont = interfaceFont(FW_BOLD);
    metrics.iSmCaptionWidth = GetSystemMetrics(SM_CXSMSIZE);
    metrics.iSmCaptionHeight = smallCaptionHeight;
    metrics.lfSmCaptionFont = interfaceFont(FW_BOLD);
    metrics.iMenuWidth = menuHeight;
    metrics.iMenuHeight = menuHeight;
    metrics.lfMenuFont = interfaceFont(FW_NORMAL);
    metrics.lfStatusFont = interfaceFont(FW_NORMAL);
    metrics.lfMessageFont = interfaceFont(FW_NORMAL);
    return metrics;
}

BOOL refused() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

std::optional<int> lookUp(std::span<const Metric> table, int index) {
    const auto found = std::find_if(table.begin(), table.end(), [=](const Metric& row) { return row.index == index; });
    return found != table.end() ? std::optional(found->value) : std::nullopt;
}

} // namespace

void setScreenSize(int width, int height) { screenSize() = {std::max(width, 0), std::max(height, 0)}; }

} // namespace vndk::win32

using namespace vndk::win32;

int GetSystemMetrics(int index) {
    if (const auto value = screenMetric(index))
        return *value;
    return lookUp(fixedMetrics, index).value_or(0);
}

BOOL SystemParametersInfoA(UINT action, UINT param, LPVOID data, UINT /*winIni*/) {
    if (data == nullptr)
        return refused();
    switch (action) {
    case SPI_GETWORKAREA:
        *static_cast<RECT*>(data) = {0, 0, screenSize().width, screenSize().height};
        return TRUE;
    case SPI_GETNONCLIENTMETRICS: {
        auto& metrics = *static_cast<NONCLIENTMETRICSA*>(data);
        if (metrics.cbSize != sizeof metrics)
            return refused();
        metrics = nonClientMetrics();
        return TRUE;
    }
    case SPI_GETICONTITLELOGFONT:
        if (param != 0 && param != sizeof(LOGFONTA))
            return refused();
        *static_cast<LOGFONTA*>(data) = interfaceFont(FW_NORMAL);
        return TRUE;
    default:
        break;
    }
    const auto value = lookUp(simpleSettings, static_cast<int>(action));
    if (!value)
        return refused();
    *static_cast<INT*>(data) = *value;
    return TRUE;
}
