// Sizes and settings of the system: those of the classic look at 96 dots per inch.
#pragma once

#include "win32/fonts.h"
#include "win32/types.h"

constexpr int SM_CXSCREEN = 0;
constexpr int SM_CYSCREEN = 1;
constexpr int SM_CXVSCROLL = 2; // width of an upright scroll bar
constexpr int SM_CYHSCROLL = 3; // height of a level one
constexpr int SM_CYCAPTION = 4; // with the line below it
constexpr int SM_CXBORDER = 5;
constexpr int SM_CYBORDER = 6;
constexpr int SM_CXDLGFRAME = 7;
constexpr int SM_CXFIXEDFRAME = SM_CXDLGFRAME;
constexpr int SM_CYDLGFRAME = 8;
constexpr int SM_CYFIXEDFRAME = SM_CYDLGFRAME;
constexpr int SM_CYVTHUMB = 9;
constexpr int SM_CXHTHUMB = 10;
constexpr int SM_CXICON = 11;
constexpr int SM_CYICON = 12;
constexpr int SM_CXCURSOR = 13;
constexpr int SM_CYCURSOR = 14;
constexpr int SM_CYMENU = 15;       // with the line below it
constexpr int SM_CXFULLSCREEN = 16; // client area of a maximised window
constexpr int SM_CYFULLSCREEN = 17;
constexpr int SM_CYKANJIWINDOW = 18;
constexpr int SM_MOUSEPRESENT = 19;
constexpr int SM_CYVSCROLL = 20; // height of its arrows
constexpr int SM_CXHSCROLL = 21; // width of its arrows
constexpr int SM_DEBUG = 22;
constexpr int SM_SWAPBUTTON = 23;
constexpr int SM_CXMIN = 28; // smallest size of a window
constexpr int SM_CYMIN = 29;
constexpr int SM_CXSIZE = 30; // cell of a caption's button
constexpr int SM_CYSIZE = 31;
constexpr int SM_CXFRAME = 32;
constexpr int SM_CXSIZEFRAME = SM_CXFRAME;
constexpr int SM_CYFRAME = 33;
constexpr int SM_CYSIZEFRAME = SM_CYFRAME;
constexpr int SM_CXMINTRACK = 34;
constexpr int SM_CYMINTRACK = 35;
constexpr int SM_CXDOUBLECLK = 36;
constexpr int SM_CYDOUBLECLK = 37;
constexpr int SM_CXICONSPACING = 38;
constexpr int SM_CYICONSPACING = 39;
constexpr int SM_MENUDROPALIGNMENT = 40;
constexpr int SM_PENWINDOWS = 41;
constexpr int SM_DBCSENABLED = 42;
constexpr int SM_CMOUSEBUTTONS = 43;
constexpr int SM_SECURE = 44;
constexpr int SM_CXEDGE = 45;
constexpr int SM_CYEDGE = 46;
constexpr int SM_CXMINSPACING = 47;
constexpr int SM_CYMINSPACING = 48;
constexpr int SM_CXSMICON = 49;
constexpr int SM_CYSMICON = 50;
constexpr int SM_CYSMCAPTION = 51;
constexpr int SM_CXSMSIZE = 52;
constexpr int SM_CYSMSIZE = 53;
constexpr int SM_CXMENUSIZE = 54;
constexpr int SM_CYMENUSIZE = 55;
constexpr int SM_ARRANGE = 56;
constexpr int SM_CXMINIMIZED = 57;
constexpr int SM_CYMINIMIZED = 58;
constexpr int SM_CXMAXTRACK = 59;
constexpr int SM_CYMAXTRACK = 60;
constexpr int SM_CXMAXIMIZED = 61;
constexpr int SM_CYMAXIMIZED = 62;
constexpr int SM_NETWORK = 63;
constexpr int SM_CLEANBOOT = 67;
constexpr int SM_CXDRAG = 68; // the pointer may move so far before a drag begins
constexpr int SM_CYDRAG = 69;
constexpr int SM_SHOWSOUNDS = 70;
constexpr int SM_CXMENUCHECK = 71;
constexpr int SM_CYMENUCHECK = 72;
constexpr int SM_SLOWMACHINE = 73;
constexpr int SM_MIDEASTENABLED = 74;
constexpr int SM_MOUSEWHEELPRESENT = 75;
constexpr int SM_XVIRTUALSCREEN = 76;
constexpr int SM_YVIRTUALSCREEN = 77;
constexpr int SM_CXVIRTUALSCREEN = 78;
constexpr int SM_CYVIRTUALSCREEN = 79;
constexpr int SM_CMONITORS = 80;
constexpr int SM_SAMEDISPLAYFORMAT = 81;
constexpr int SM_CXFOCUSBORDER = 83;
constexpr int SM_CYFOCUSBORDER = 84;

/// Pixels, counts or truth values; 0 for an index that isn't known. The screen has the current desktop's size, and
/// 1024 x 768 before there was one.
int GetSystemMetrics(int index);

constexpr UINT SPI_GETBEEP = 0x0001;
constexpr UINT SPI_GETBORDER = 0x0005;
constexpr UINT SPI_GETKEYBOARDSPEED = 0x000A;
constexpr UINT SPI_ICONHORIZONTALSPACING = 0x000D; // param != 0 sets; else into *(int*)
constexpr UINT SPI_GETKEYBOARDDELAY = 0x0016;
constexpr UINT SPI_ICONVERTICALSPACING = 0x0018;
constexpr UINT SPI_GETICONTITLEWRAP = 0x0019;
constexpr UINT SPI_GETMENUDROPALIGNMENT = 0x001B;
constexpr UINT SPI_GETICONTITLELOGFONT = 0x001F;
constexpr UINT SPI_GETDRAGFULLWINDOWS = 0x0026;
constexpr UINT SPI_GETNONCLIENTMETRICS = 0x0029;
constexpr UINT SPI_GETWORKAREA = 0x0030;
constexpr UINT SPI_GETKEYBOARDPREF = 0x0044;
constexpr UINT SPI_GETSCREENREADER = 0x0046;
constexpr UINT SPI_GETFONTSMOOTHING = 0x004A;
constexpr UINT SPI_GETMOUSEHOVERWIDTH = 0x0062;
constexpr UINT SPI_GETMOUSEHOVERHEIGHT = 0x0064;
constexpr UINT SPI_GETMOUSEHOVERTIME = 0x0066; // milliseconds
constexpr UINT SPI_GETWHEELSCROLLLINES = 0x0068;
constexpr UINT SPI_GETMENUSHOWDELAY = 0x006A; // milliseconds
constexpr UINT SPI_GETMENUANIMATION = 0x1002;
constexpr UINT SPI_GETCOMBOBOXANIMATION = 0x1004;
constexpr UINT SPI_GETLISTBOXSMOOTHSCROLLING = 0x1006;
constexpr UINT SPI_GETGRADIENTCAPTIONS = 0x1008;
constexpr UINT SPI_GETKEYBOARDCUES = 0x100A; // underlines of mnemonics are always shown
constexpr UINT SPI_GETHOTTRACKING = 0x100E;
constexpr UINT SPI_GETFLATMENU = 0x1022;
constexpr UINT SPI_GETCARETWIDTH = 0x2006;

struct NONCLIENTMETRICSA {
    UINT cbSize;
    int iBorderWidth;
    int iScrollWidth;
    int iScrollHeight;
    int iCaptionWidth;
    int iCaptionHeight; // without the line below it
    LOGFONTA lfCaptionFont;
    int iSmCaptionWidth;
    int iSmCaptionHeight;
    LOGFONTA lfSmCaptionFont;
    int iMenuWidth;
    int iMenuHeight; // without the line below it
    LOGFONTA lfMenuFont;
    LOGFONTA lfStatusFont; // of tool tips, too
    LOGFONTA lfMessageFont;
};
using NONCLIENTMETRICS = NONCLIENTMETRICSA;

/// Writes a setting to what `data` points at: a BOOL or UINT, or the structure that the setting has. `param` is the
/// structure's size where there is one. FALSE with ERROR_INVALID_PARAMETER for a setting that isn't known, a null
/// pointer or a wrong size. Settings can be read only.
BOOL SystemParametersInfoA(UINT action, UINT param, LPVOID data, UINT winIni);
VNDK_TEXT_CALL(SystemParametersInfo);
