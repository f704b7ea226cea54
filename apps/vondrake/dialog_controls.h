// What stands in a dialog, found as a user names it.
#pragma once

#include "dialog_steps.h"

#include <string>
#include <string_view>
#include <vector>

namespace vndk::app {

/// Kinds of controls that are looked into.
enum class ControlKind {
    Button,
    GroupBox,
    Label,
    TextBox,
    ListBox,
    ComboBox,
    List,
    Header,
    Tree,
    Tabs,
    Dialog,
    Other,
};

ControlKind controlKind(HWND control);
std::string classNameOf(HWND window);
std::string textOf(HWND window);
/// Without mnemonic marks.
std::string captionOf(HWND control);
/// All windows below a dialog, in tab order, each before those that lie in it; hidden ones too.
std::vector<HWND> controlsOf(HWND dialog);

/// The control that is meant; of several with one name one that can be used. A label stands for the control that
/// follows it. Null when there is none.
HWND findControl(HWND dialog, const ControlName& name);
/// "OK" or 223, as a user would write it.
std::string shownName(const ControlName& name);

} // namespace vndk::app
