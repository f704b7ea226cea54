#include "dialog_controls.h"

#include "win32/button.h"
#include "win32/codepage.h"
#include "win32/dialog.h"
#include "win32/static.h"
#include "win32/window.h"

#include <algorithm>
#include <utility>

namespace vndk::app {

namespace {

constexpr std::pair<std::string_view, ControlKind> kKinds[] = {
    {"Button", ControlKind::Button},      {"Static", ControlKind::Label},        {"Edit", ControlKind::TextBox},
    {"RICHEDIT", ControlKind::TextBox},   {"RichEdit20A", ControlKind::TextBox}, {"ListBox", ControlKind::ListBox},
    {"ComboLBox", ControlKind::ListBox},  {"ComboBox", ControlKind::ComboBox},   {"SysListView32", ControlKind::List},
    {"SysHeader32", ControlKind::Header}, {"SysTreeView32", ControlKind::Tree},  {"SysTabControl32", ControlKind::Tabs},
    {"#32770", ControlKind::Dialog},
};

void addBelow(HWND parent, std::vector<HWND>& all) {
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        all.push_back(child);
        addBelow(child, all);
    }
}

bool isUsable(HWND control) { return IsWindowVisible(control) != FALSE && IsWindowEnabled(control) != FALSE; }

/// What a user may call a control by: not what is in it.
bool hasCaption(HWND control) {
    const ControlKind kind = controlKind(control);
    return kind != ControlKind::TextBox && kind != ControlKind::ComboBox;
}

/// The control that a label's mnemonic would lead to.
HWND afterLabel(const std::vector<HWND>& controls, HWND label) {
    auto next = std::find(controls.begin(), controls.end(), label);
    while (++next != controls.end())
        if (controlKind(*next) != ControlKind::Label)
            return *next;
    return nullptr;
}

bool takesClicks(HWND label) { return (static_cast<DWORD>(GetWindowLongA(label, GWL_STYLE)) & SS_NOTIFY) != 0; }

} // namespace

ControlKind controlKind(HWND control) {
    const std::string name = classNameOf(control);
    for (const auto& [className, kind] : kKinds) {
        if (win32::compareNoCase(name, className) != 0)
            continue;
        const auto style = static_cast<DWORD>(GetWindowLongA(control, GWL_STYLE));
        return kind == ControlKind::Button && (style & BS_TYPEMASK) == BS_GROUPBOX ? ControlKind::GroupBox : kind;
    }
    return ControlKind::Other;
}

std::string classNameOf(HWND window) {
    char name[256] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

std::string textOf(HWND window) {
    const int length = GetWindowTextLengthA(window);
    std::string text(static_cast<size_t>(std::max(length, 0)) + 1, '\0');
    text.resize(static_cast<size_t>(std::max(GetWindowTextA(window, text.data(), static_cast<int>(text.size())), 0)));
    return text;
}

std::string captionOf(HWND control) {
    const std::string text = textOf(control);
    std::string caption;
    for (size_t i = 0; i < text.size(); ++i)
        if (text[i] != '&' || (++i < text.size()))
            caption += text[i];
    return caption;
}

std::vector<HWND> controlsOf(HWND dialog) {
    std::vector<HWND> all;
    addBelow(dialog, all);
    return all;
}

HWND findControl(HWND dialog, const ControlName& name) {
    if (const int* const id = std::get_if<int>(&name); id && *id == 0)
        return dialog;
    const auto controls = controlsOf(dialog);
    HWND best = nullptr;
    int bestRank = 0;
    for (const HWND control : controls) {
        int rank = 1;
        if (const int* const id = std::get_if<int>(&name)) {
            if ((GetWindowLongA(control, GWL_ID) & 0xFFFF) != (*id & 0xFFFF))
                continue;
        } else {
            const std::string& wanted = std::get<std::string>(name);
            if (!hasCaption(control) || win32::compareNoCase(captionOf(control), wanted) != 0)
                continue;
            const ControlKind kind = controlKind(control);
            rank += captionOf(control) == wanted ? 1 : 0;
            rank += kind != ControlKind::Label && kind != ControlKind::GroupBox ? 2 : 0;
        }
        rank += IsWindowVisible(control) != FALSE ? 8 : 0;
        rank += isUsable(control) ? 4 : 0;
        if (rank > bestRank) {
            best = control;
            bestRank = rank;
        }
    }
    const bool label = best && std::holds_alternative<std::string>(name) && controlKind(best) == ControlKind::Label;
    return label && !takesClicks(best) ? afterLabel(controls, best) : best;
}

std::string shownName(const ControlName& name) {
    if (const int* const id = std::get_if<int>(&name))
        return std::to_string(*id);
    return "\"" + std::get<std::string>(name) + "\"";
}

} // namespace vndk::app
