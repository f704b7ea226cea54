#include "gallery.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

namespace vndk::gallery {

namespace {

constexpr DWORD kShown = WS_CHILD | WS_VISIBLE;
constexpr DWORD kOff = kShown | WS_DISABLED;
constexpr DWORD kTab = kShown | WS_TABSTOP;

constexpr COLORREF kSwatches[] = {RGB(192, 32, 32),  RGB(224, 144, 32), RGB(48, 144, 48),
                                  RGB(32, 128, 192), RGB(112, 64, 176), RGB(96, 96, 96)};
constexpr int kSwatchCount = static_cast<int>(std::size(kSwatches));

const char* const kRichText =
    "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}{\\f1 Times New Roman;}{\\f2 Courier New;}}"
    "{\\colortbl ;\\red0\\green0\\blue128;\\red192\\green0\\blue0;}"
    "\\pard\\sa80\\cf1\\b\\f0\\fs28 Rich text\\par"
    "\\pard\\sa60\\cf0\\b0\\f1\\fs20 A paragraph with \\b bold\\b0 , \\i italic\\i0 , \\ul underlined\\ulnone  and "
    "\\cf2 coloured\\cf0  words, long enough to be wrapped at the edge.\\par"
    "\\pard\\qc\\f2\\fs18 centred, of one width\\par"
    "\\pard\\qr\\f0\\fs16 to the right\\par}";

} // namespace

BEGIN_MESSAGE_MAP(Gallery, CFrameWnd)
ON_WM_ERASEBKGND()
ON_WM_DRAWITEM()
ON_WM_MEASUREITEM()
ON_WM_CLOSE()
END_MESSAGE_MAP()

bool Gallery::open() {
    const CRect screen(0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW));
    if (!CFrameWnd::Create(className, "Gallery of controls", WS_OVERLAPPEDWINDOW, screen))
        return false;
    font_.CreatePointFont(80, "MS Sans Serif");
    makeImages();
    addButtons();
    addStatics();
    addEdits();
    addLists();
    addCombos();
    addScrollBars();
    addIconList();
    addReport();
    addTree();
    addTabs();
    addRichText();
    addToolTip();
    addDistanceEdit();
    ShowWindow(SW_SHOW);
    UpdateWindow();
    return true;
}

HWND Gallery::add(LPCSTR className, LPCSTR text, DWORD style, int x, int y, int width, int height, DWORD exStyle) {
    const HWND control =
        ::CreateWindowExA(exStyle, className, text, style, x, y, width, height, m_hWnd,
                          reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nextId_++)), AfxGetInstanceHandle(), nullptr);
    ::SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_.GetSafeHandle()), TRUE);
    return control;
}

void Gallery::group(LPCSTR title, int x, int y, int width, int height) {
    add("BUTTON", title, kShown | BS_GROUPBOX, x, y, width, height);
}

/// Squares in colours, on a ground that becomes transparent.
void Gallery::makeImages() {
    constexpr COLORREF ground = RGB(255, 0, 255);
    const auto fill = [&](CImageList& list, int size) {
        list.Create(size, size, ILC_COLOR24 | ILC_MASK, kSwatchCount, 1);
        CClientDC screen(this);
        CDC dc;
        dc.CreateCompatibleDC(&screen);
        CBitmap strip;
        strip.CreateCompatibleBitmap(&screen, size * kSwatchCount, size);
        CBitmap* former = dc.SelectObject(&strip);
        dc.FillSolidRect(0, 0, size * kSwatchCount, size, ground);
        for (int i = 0; i < kSwatchCount; ++i) {
            CRect square(i * size + 1, 1, (i + 1) * size - 1, size - 1);
            dc.FillSolidRect(square, kSwatches[i]);
            dc.Draw3dRect(square, RGB(255, 255, 255), RGB(0, 0, 0));
        }
        dc.SelectObject(former);
        list.Add(&strip, ground);
    };
    fill(small_, 16);
    fill(large_, 32);
}

void Gallery::addButtons() {
    group("Buttons", 8, 4, 300, 226);
    add("BUTTON", "&Push", kTab | BS_PUSHBUTTON, 18, 24, 84, 24);
    add("BUTTON", "De&fault", kTab | BS_DEFPUSHBUTTON, 110, 24, 84, 24);
    add("BUTTON", "Disabled", kOff | BS_PUSHBUTTON, 202, 24, 84, 24);
    ::SendMessageA(add("BUTTON", "Pushed", kTab, 18, 54, 84, 24), BM_SETSTATE, TRUE, 0);
    add("BUTTON", "Two lines\r\nof text", kTab | BS_MULTILINE, 110, 54, 84, 34);
    add("BUTTON", "Owner drawn", kTab | BS_OWNERDRAW, 202, 54, 84, 24);
    const DWORD kinds[] = {BS_AUTOCHECKBOX, BS_AUTO3STATE, BS_AUTORADIOBUTTON};
    const char* const names[] = {"Check", "Three", "Radio"};
    for (int column = 0; column < 3; ++column) {
        const int x = 18 + 92 * column;
        const std::string name = names[column];
        add("BUTTON", (name + " off").c_str(), kTab | kinds[column] | (column == 2 ? WS_GROUP : 0), x, 98, 88, 16);
        ::SendMessageA(add("BUTTON", (name + " on").c_str(), kTab | kinds[column], x, 118, 88, 16), BM_SETCHECK, 1, 0);
        ::SendMessageA(add("BUTTON", (name + " grey").c_str(), kOff | kinds[column], x, 138, 88, 16), BM_SETCHECK,
                       column == 1 ? 2 : 1, 0);
        ::SendMessageA(add("BUTTON", "Left text", kTab | kinds[column] | BS_LEFTTEXT, x, 158, 80, 16), BM_SETCHECK,
                       column == 1 ? 2 : 0, 0);
        ::SendMessageA(add("BUTTON", "Like push", kTab | kinds[column] | BS_PUSHLIKE, x, 182, 80, 22), BM_SETCHECK,
                       column == 0 ? 1 : 0, 0);
    }
}

void Gallery::addStatics() {
    group("Statics", 8, 236, 300, 122);
    add("STATIC", "Left, wrapped where the line ends", kShown | SS_LEFT, 18, 254, 88, 42);
    add("STATIC", "Centre", kShown | SS_CENTER, 114, 254, 84, 15);
    add("STATIC", "Right", kShown | SS_RIGHT, 206, 254, 84, 15);
    add("STATIC", "Grey", kOff | SS_LEFT, 114, 272, 84, 15);
    add("STATIC", "A && B, A&ccess", kShown | SS_LEFT, 206, 272, 84, 15);
    const DWORD frames[] = {SS_BLACKRECT, SS_GRAYRECT,   SS_WHITERECT,  SS_BLACKFRAME,
                            SS_GRAYFRAME, SS_WHITEFRAME, SS_ETCHEDFRAME};
    for (int i = 0; i < 7; ++i)
        add("STATIC", "", kShown | frames[i], 18 + 39 * i, 296, 32, 24);
    add("STATIC", "", kShown | SS_ETCHEDHORZ, 18, 328, 130, 2);
    add("STATIC", "Sunken", kShown | SS_SUNKEN | SS_CENTERIMAGE, 18, 336, 84, 16);
    add("STATIC", "Static edge", kShown | SS_CENTERIMAGE, 114, 336, 84, 16, WS_EX_STATICEDGE);
    add("STATIC", "Client edge", kShown | SS_CENTERIMAGE, 206, 334, 84, 18, WS_EX_CLIENTEDGE);
}

void Gallery::addEdits() {
    group("Edits", 8, 364, 300, 180);
    const HWND selected =
        add("EDIT", "Selected text", kTab | ES_AUTOHSCROLL | ES_NOHIDESEL, 18, 382, 132, 20, WS_EX_CLIENTEDGE);
    ::SendMessageA(selected, EM_SETSEL, 0, 8);
    add("EDIT", "Read only", kTab | ES_READONLY, 158, 382, 132, 20, WS_EX_CLIENTEDGE);
    add("EDIT", "Disabled", kOff, 18, 408, 132, 20, WS_EX_CLIENTEDGE);
    add("EDIT", "secret", kTab | ES_PASSWORD, 158, 408, 132, 20, WS_EX_CLIENTEDGE);
    add("EDIT", "Right", kTab | ES_RIGHT | WS_BORDER, 18, 434, 132, 20);
    add("EDIT", "Centred", kTab | ES_CENTER | WS_BORDER, 158, 434, 132, 20);
    add("EDIT",
        "Several lines, wrapped at the edge:\r\nGr\xF6\xDF"
        "e, \xC5ngstr\xF6m, fa\xE7"
        "ade.\r\nThird line\r\nFourth line"
        "\r\nFifth line",
        kTab | ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL, 18, 460, 272, 74, WS_EX_CLIENTEDGE);
}

void Gallery::addLists() {
    group("List boxes", 316, 4, 300, 166);
    const HWND plain = add("LISTBOX", "", kTab | LBS_NOTIFY | WS_VSCROLL, 326, 24, 88, 134, WS_EX_CLIENTEDGE);
    const HWND many = add("LISTBOX", "", kTab | LBS_EXTENDEDSEL | WS_VSCROLL, 420, 24, 88, 134, WS_EX_CLIENTEDGE);
    const HWND owner =
        add("LISTBOX", "", kTab | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | WS_VSCROLL, 514, 24, 92, 100, WS_EX_CLIENTEDGE);
    for (int i = 1; i <= 14; ++i) {
        const std::string text = "Row " + std::to_string(i);
        ::SendMessageA(plain, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        ::SendMessageA(many, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        ::SendMessageA(owner, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
    ::SendMessageA(plain, LB_SETCURSEL, 2, 0);
    for (const WPARAM row : {1, 3, 4})
        ::SendMessageA(many, LB_SETSEL, TRUE, static_cast<LPARAM>(row));
    ::SendMessageA(owner, LB_SETCURSEL, 1, 0);
    const HWND grey = add("LISTBOX", "", kOff, 514, 128, 92, 32, WS_EX_CLIENTEDGE);
    ::SendMessageA(grey, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("Disabled"));
}

void Gallery::addCombos() {
    group("Combo boxes", 316, 176, 300, 122);
    const struct {
        DWORD style;
        int x, y, width, height;
    } places[] = {{kTab | CBS_DROPDOWN | CBS_AUTOHSCROLL, 326, 194, 136, 120},
                  {kTab | CBS_DROPDOWNLIST, 470, 194, 136, 120},
                  {kOff | CBS_DROPDOWNLIST, 326, 222, 136, 120},
                  {kTab | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, 326, 250, 136, 120},
                  {kTab | CBS_SIMPLE, 470, 222, 136, 68}};
    for (const auto& place : places) {
        const HWND combo = add("COMBOBOX", "", place.style | WS_VSCROLL, place.x, place.y, place.width, place.height);
        for (const char* const text : {"Red", "Orange", "Green", "Blue", "Violet", "Grey"})
            ::SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        ::SendMessageA(combo, CB_SETCURSEL, 1, 0);
    }
}

void Gallery::addScrollBars() {
    group("Scroll bars", 316, 304, 300, 66);
    const auto bar = [this](DWORD style, int x, int y, int width, int height, int position, UINT page) {
        const HWND control = add("SCROLLBAR", "", style, x, y, width, height);
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        info.nMax = 99;
        info.nPage = page;
        info.nPos = position;
        ::SetScrollInfo(control, SB_CTL, &info, TRUE);
    };
    bar(kTab | SBS_HORZ, 326, 322, 200, 16, 30, 25);
    bar(kOff | SBS_HORZ, 326, 344, 200, 16, 0, 10);
    bar(kTab | SBS_VERT, 540, 314, 16, 50, 40, 30);
    bar(kTab | SBS_VERT, 562, 314, 16, 50, 0, 1);
}

void Gallery::addIconList() {
    group("List view: icons", 624, 4, 316, 150);
    const HWND list = add(WC_LISTVIEW, "", kTab | LVS_ICON | LVS_SHOWSELALWAYS | LVS_AUTOARRANGE, 634, 22, 296, 124,
                          WS_EX_CLIENTEDGE);
    ::SendMessageA(list, LVM_SETIMAGELIST, LVSIL_NORMAL, reinterpret_cast<LPARAM>(large_.GetSafeHandle()));
    const char* const names[] = {"Door", "Window", "Chair with a long name", "Table", "Lamp", "Bath"};
    for (int i = 0; i < kSwatchCount; ++i) {
        LVITEM item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = i;
        item.iImage = i;
        item.pszText = const_cast<LPSTR>(names[i]);
        ::SendMessageA(list, LVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&item));
    }
    LVITEM state{};
    state.state = state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    ::SendMessageA(list, LVM_SETITEMSTATE, 1, reinterpret_cast<LPARAM>(&state));
}

void Gallery::addReport() {
    group("List view: report", 624, 160, 316, 138);
    const HWND list = add(WC_LISTVIEW, "", kTab | LVS_REPORT | LVS_SHOWSELALWAYS, 634, 178, 296, 112, WS_EX_CLIENTEDGE);
    ::SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
    ::SendMessageA(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(small_.GetSafeHandle()));
    const char* const heads[] = {"Tag", "Value", "Length"};
    const int widths[] = {110, 110, 56};
    for (int i = 0; i < 3; ++i) {
        LVCOLUMN column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
        column.fmt = i == 2 ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.cx = widths[i];
        column.pszText = const_cast<LPSTR>(heads[i]);
        column.iSubItem = i;
        ::SendMessageA(list, LVM_INSERTCOLUMN, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
    for (int row = 0; row < 12; ++row) {
        const std::string tag = "TAG_" + std::to_string(row);
        LVITEM item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = row;
        item.iImage = row % kSwatchCount;
        item.pszText = const_cast<LPSTR>(tag.c_str());
        ::SendMessageA(list, LVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&item));
        const std::string cells[] = {"Value " + std::to_string(row * 7), std::to_string(row * 3)};
        for (int column = 1; column <= 2; ++column) {
            LVITEM cell{};
            cell.iSubItem = column;
            cell.pszText = const_cast<LPSTR>(cells[column - 1].c_str());
            ::SendMessageA(list, LVM_SETITEMTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&cell));
        }
    }
    LVITEM state{};
    state.state = state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    ::SendMessageA(list, LVM_SETITEMSTATE, 2, reinterpret_cast<LPARAM>(&state));
}

void Gallery::addTree() {
    group("Tree view", 624, 304, 316, 240);
    const auto fill = [this](HWND tree) {
        ::SendMessageA(tree, TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(small_.GetSafeHandle()));
        const auto insert = [tree](HTREEITEM parent, const char* text, int image) {
            TVINSERTSTRUCT entry{};
            entry.hParent = parent;
            entry.hInsertAfter = TVI_LAST;
            entry.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
            entry.item.pszText = const_cast<LPSTR>(text);
            entry.item.iImage = entry.item.iSelectedImage = image;
            return reinterpret_cast<HTREEITEM>(
                ::SendMessageA(tree, TVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&entry)));
        };
        const HTREEITEM root = insert(TVI_ROOT, "Desktop", 3);
        const HTREEITEM computer = insert(root, "My Computer", 5);
        const HTREEITEM disk = insert(computer, "C:", 1);
        insert(disk, "dwg", 2);
        insert(disk, "library", 2);
        insert(computer, "Z:", 1);
        insert(root, "My Documents", 4);
        for (const HTREEITEM item : {root, computer})
            ::SendMessageA(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(item));
        ::SendMessageA(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(disk));
    };
    fill(add(WC_TREEVIEW, "", kTab | TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS, 634, 322, 144,
             212, WS_EX_CLIENTEDGE));
    fill(add(WC_TREEVIEW, "", kTab | TVS_SHOWSELALWAYS, 786, 322, 144, 212, WS_EX_CLIENTEDGE));
}

void Gallery::addTabs() {
    group("Tabs", 316, 376, 300, 168);
    const auto fill = [](HWND tabs, int count) {
        // They leave out what stands in front of them, and so would the group box.
        ::SetWindowPos(tabs, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        const char* const names[] = {"Dwgs", "Blocks", "Third"};
        for (int i = 0; i < count; ++i) {
            TCITEM item{};
            item.mask = TCIF_TEXT;
            item.pszText = const_cast<LPSTR>(names[i]);
            ::SendMessageA(tabs, TCM_INSERTITEM, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        }
    };
    fill(add(WC_TABCONTROL, "", kTab, 326, 394, 136, 66), 2);
    fill(add(WC_TABCONTROL, "", kTab | TCS_BOTTOM, 470, 394, 136, 66), 2);
    fill(add(WC_TABCONTROL, "", kTab | TCS_BUTTONS, 326, 468, 280, 30), 3);
    fill(add(WC_TABCONTROL, "", kTab | TCS_FIXEDWIDTH, 326, 502, 200, 34), 3);
}

void Gallery::addRichText() {
    group("Rich edit", 8, 550, 608, 206);
    const HWND edit =
        add(RICHEDIT_CLASS10A, "", kTab | ES_MULTILINE | ES_READONLY | WS_VSCROLL, 18, 568, 588, 178, WS_EX_CLIENTEDGE);
    struct Rest {
        const char* at;
    } rest{kRichText};
    EDITSTREAM stream{};
    stream.dwCookie = reinterpret_cast<DWORD_PTR>(&rest);
    stream.pfnCallback = [](DWORD_PTR cookie, LPBYTE buffer, LONG count, LONG* done) -> DWORD {
        auto& text = *reinterpret_cast<Rest*>(cookie);
        *done = static_cast<LONG>(std::min<std::size_t>(std::strlen(text.at), static_cast<std::size_t>(count)));
        std::memcpy(buffer, text.at, static_cast<std::size_t>(*done));
        text.at += *done;
        return 0;
    };
    ::SendMessageA(edit, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
}

/// A tip that stays, for the picture.
void Gallery::addToolTip() {
    group("Tool tip", 624, 550, 316, 96);
    const HWND tip = ::CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASS, "", TTS_ALWAYSTIP, 0, 0, 0, 0, m_hWnd, nullptr,
                                       AfxGetInstanceHandle(), nullptr);
    const HWND button = add("BUTTON", "With a tip", kTab, 640, 580, 90, 24);
    TOOLINFO tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_TRACK | TTF_ABSOLUTE;
    tool.hwnd = m_hWnd;
    tool.uId = reinterpret_cast<UINT_PTR>(button);
    tool.lpszText = const_cast<LPSTR>("Preview a block or drawing");
    ::SendMessageA(tip, TTM_ADDTOOL, 0, reinterpret_cast<LPARAM>(&tool));
    CPoint place(650, 612);
    ClientToScreen(&place);
    ::SendMessageA(tip, TTM_TRACKPOSITION, 0, MAKELPARAM(place.x, place.y));
    ::SendMessageA(tip, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}

/// In the units of the drawing, if there is one.
void Gallery::addDistanceEdit() {
    group("Distance edit", 624, 652, 316, 104);
    add("STATIC", "&Length:", kShown | SS_LEFT, 640, 676, 50, 15);
    const HWND box = add("EDIT", "1'-5 1/2\"", kTab | ES_AUTOHSCROLL, 692, 673, 120, 20, WS_EX_CLIENTEDGE);
    distance_.SubclassWindow(box);
    const CString chars = CDistanceEdit::CharsOfUnits();
    distance_.SetUp(chars, "A distance in the drawing's units");
    add("STATIC", "It takes " + chars, kShown | SS_LEFT | SS_NOPREFIX, 640, 726, 290, 15);
}

void Gallery::OnDrawItem(int, DRAWITEMSTRUCT* item) {
    CDC& dc = *CDC::FromHandle(item->hDC);
    CRect rect(item->rcItem);
    const bool selected = (item->itemState & ODS_SELECTED) != 0;
    if (item->CtlType == ODT_BUTTON) {
        dc.DrawFrameControl(rect, DFC_BUTTON, DFCS_BUTTONPUSH | (selected ? DFCS_PUSHED : 0));
        dc.SetBkMode(TRANSPARENT);
        dc.SetTextColor(kSwatches[3]);
        dc.DrawText("Owner drawn", -1, rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        return;
    }
    dc.FillSolidRect(rect, ::GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    if (item->itemID == static_cast<UINT>(-1))
        return;
    CRect swatch(rect.left + 2, rect.top + 2, rect.left + 18, rect.bottom - 2);
    dc.FillSolidRect(swatch, kSwatches[item->itemID % kSwatchCount]);
    char text[64] = "";
    if (item->CtlType == ODT_LISTBOX)
        ::SendMessageA(item->hwndItem, LB_GETTEXT, item->itemID, reinterpret_cast<LPARAM>(text));
    else
        ::SendMessageA(item->hwndItem, CB_GETLBTEXT, item->itemID, reinterpret_cast<LPARAM>(text));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(::GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    rect.left += 22;
    dc.DrawText(text, -1, rect, DT_VCENTER | DT_SINGLELINE);
    if ((item->itemState & ODS_FOCUS) != 0)
        dc.DrawFocusRect(CRect(item->rcItem));
}

void Gallery::OnMeasureItem(int, MEASUREITEMSTRUCT* item) { item->itemHeight = 16; }

BOOL Gallery::OnEraseBkgnd(CDC* dc) {
    CRect client;
    GetClientRect(client);
    dc->FillSolidRect(client, ::GetSysColor(COLOR_3DFACE));
    return TRUE;
}

void Gallery::OnClose() { ::PostQuitMessage(0); }

} // namespace vndk::gallery
