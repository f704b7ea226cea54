#include "dialog_text.h"

#include "dialog_controls.h"
#include "dialog_items.h"
#include "win32/button.h"
#include "win32/combobox.h"
#include "win32/dialog.h"
#include "win32/edit.h"
#include "win32/input.h"
#include "win32/menu.h"
#include "win32/static.h"
#include "win32/window.h"

#include <algorithm>

namespace vndk::app {

namespace {

constexpr int kMostRows = 1000;
constexpr size_t kIdWidth = 5;
constexpr std::string_view kRowIndent = "        ";

std::string quoted(std::string_view text) {
    std::string shown = "\"";
    for (const char c : text)
        shown += c == '\n' ? "\\n" : c == '\r' ? "" : std::string(1, c);
    return shown + '"';
}

std::string padded(const std::string& number, size_t width) {
    return std::string(width - std::min(width, number.size()), ' ') + number;
}

DWORD styleOf(HWND window) { return static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)); }

std::string buttonKind(DWORD type) {
    switch (type) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE:
        return "check box";
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return "radio button";
    default:
        return "button";
    }
}

std::string labelKind(DWORD type) {
    switch (type) {
    case SS_ICON:
    case SS_BITMAP:
    case SS_ENHMETAFILE:
    case SS_OWNERDRAW:
        return "picture";
    case SS_BLACKRECT:
    case SS_GRAYRECT:
    case SS_WHITERECT:
    case SS_BLACKFRAME:
    case SS_GRAYFRAME:
    case SS_WHITEFRAME:
    case SS_ETCHEDHORZ:
    case SS_ETCHEDVERT:
    case SS_ETCHEDFRAME:
        return "frame";
    default:
        return "label";
    }
}

bool isChoice(HWND control) { return controlKind(control) == ControlKind::Button && kindOf(control) != "button"; }

bool isDefault(HWND control) {
    return controlKind(control) == ControlKind::Button &&
           (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) != 0;
}

bool isReadOnly(HWND control) {
    return controlKind(control) == ControlKind::TextBox && (styleOf(control) & ES_READONLY) != 0;
}

std::string countText(HWND control) {
    const ControlKind kind = controlKind(control);
    if (kind != ControlKind::List && kind != ControlKind::ListBox && kind != ControlKind::ComboBox)
        return {};
    const int rows = rowCount(control);
    return ", " + std::to_string(rows) + (rows == 1 ? " row" : " rows");
}

std::string stateText(HWND control) {
    std::string text = countText(control);
    if (isChoice(control)) {
        const LRESULT check = SendMessageA(control, BM_GETCHECK, 0, 0);
        text += check == BST_CHECKED ? ", checked" : check == BST_INDETERMINATE ? ", half checked" : ", not checked";
    }
    if (isDefault(control))
        text += ", default";
    if (isReadOnly(control))
        text += ", read-only";
    if (IsWindowEnabled(control) == FALSE)
        text += ", disabled";
    const HWND focus = GetFocus();
    if (focus == control || (controlKind(control) == ControlKind::ComboBox && IsChild(control, focus) != FALSE))
        text += ", focus";
    return text;
}

/// What the control shows by itself; rows come below.
std::string ownText(HWND control) {
    switch (controlKind(control)) {
    case ControlKind::TextBox:
        return " " + quoted(textOf(control));
    case ControlKind::ComboBox: {
        const auto row = static_cast<int>(SendMessageA(control, CB_GETCURSEL, 0, 0));
        const std::string text = textOf(control);
        return " " + quoted(text.empty() && row >= 0 ? rowText(control, row) : text);
    }
    default: {
        const std::string caption = captionOf(control);
        return caption.empty() ? "" : " " + quoted(caption);
    }
    }
}

std::string cells(HWND control, int row) {
    std::string text = rowText(control, row);
    for (int column = 1; column < columnCount(control); ++column)
        text += " | " + rowText(control, row, column);
    return text;
}

std::string rowsText(HWND control, const std::string& indent) {
    std::string text;
    if (columnCount(control) > 1) {
        text += indent + "      ";
        for (int column = 0; column < columnCount(control); ++column)
            text += (column > 0 ? " | " : "") + columnTitle(control, column);
        text += "\n";
    }
    const int rows = rowCount(control);
    for (int row = 0; row < std::min(rows, kMostRows); ++row)
        text += indent + (rowSelected(control, row) ? "* " : "  ") + padded(std::to_string(row + 1), 3) + " " +
                cells(control, row) + "\n";
    if (rows > kMostRows)
        text += indent + "      and " + std::to_string(rows - kMostRows) + " more\n";
    return text;
}

std::string branchesText(HWND tree, const std::string& indent) {
    std::string text;
    int row = 0;
    visitShownBranches(tree, [&](const Branch& branch) {
        if (++row > kMostRows)
            return;
        text += indent + (branch.selected ? "* " : "  ") + padded(std::to_string(row), 3) + " " +
                std::string(static_cast<size_t>(branch.depth) * 2, ' ') + branch.text +
                (branch.hasChildren ? branch.expanded ? " (open)" : " (closed)" : "") + "\n";
    });
    return text;
}

/// The header of a list and the parts of a combo box are told with it.
bool isPart(HWND parent, HWND child) {
    const ControlKind kind = controlKind(parent);
    return kind == ControlKind::ComboBox || (kind == ControlKind::List && controlKind(child) == ControlKind::Header);
}

void addControls(HWND parent, const std::string& indent, std::string& text) {
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsWindowVisible(child) == FALSE || isPart(parent, child))
            continue;
        const int id = static_cast<SHORT>(GetWindowLongA(child, GWL_ID));
        text += indent + padded(std::to_string(id), kIdWidth) + "  " + kindOf(child) + ownText(child) +
                stateText(child) + "\n";
        text += controlKind(child) == ControlKind::Tree ? branchesText(child, indent + std::string(kRowIndent))
                                                        : rowsText(child, indent + std::string(kRowIndent));
        addControls(child, indent + "  ", text);
    }
}

std::string itemText(HMENU menu, int position) {
    char buffer[512] = "";
    const auto index = static_cast<UINT>(position);
    GetMenuStringA(menu, index, buffer, sizeof buffer, MF_BYPOSITION);
    std::string text;
    for (const char* c = buffer; *c != '\0'; ++c)
        if (*c != '&' || *++c != '\0')
            text += *c == '\t' ? ' ' : *c;
        else
            break;
    const UINT state = GetMenuState(menu, index, MF_BYPOSITION);
    if ((state & MF_SEPARATOR) != 0 && text.empty())
        return "  --";
    text = "  " + quoted(text);
    if (GetSubMenu(menu, position))
        text += ", opens";
    if ((state & MF_CHECKED) != 0)
        text += ", checked";
    if ((state & (MF_GRAYED | MF_DISABLED)) != 0 && !GetSubMenu(menu, position))
        text += ", disabled";
    return text;
}

} // namespace

std::string kindOf(HWND control) {
    const DWORD style = styleOf(control);
    switch (controlKind(control)) {
    case ControlKind::Button:
        return buttonKind(style & BS_TYPEMASK);
    case ControlKind::GroupBox:
        return "group";
    case ControlKind::Label:
        return labelKind(style & SS_TYPEMASK);
    case ControlKind::TextBox:
        return "text box";
    case ControlKind::ListBox:
        return "list box";
    case ControlKind::ComboBox:
        return "combo box";
    case ControlKind::List:
        return "list";
    case ControlKind::Header:
        return "header";
    case ControlKind::Tree:
        return "tree";
    case ControlKind::Tabs:
        return "tabs";
    case ControlKind::Dialog:
        return "page";
    case ControlKind::Other:
        break;
    }
    return "control (" + classNameOf(control) + ")";
}

std::string dialogText(HWND dialog) {
    std::string text = "Dialog " + quoted(textOf(dialog)) + "\n";
    addControls(dialog, "", text);
    return text;
}

std::string openMenusText() {
    std::string text;
    for (HWND popup = GetTopWindow(nullptr); popup; popup = GetWindow(popup, GW_HWNDNEXT)) {
        if (classNameOf(popup) != "#32768" || IsWindowVisible(popup) == FALSE)
            continue;
        const auto menu = reinterpret_cast<HMENU>(SendMessageA(popup, MN_GETHMENU, 0, 0));
        text += "Menu\n";
        for (int i = 0; i < GetMenuItemCount(menu); ++i)
            text += itemText(menu, i) + "\n";
    }
    return text;
}

} // namespace vndk::app
