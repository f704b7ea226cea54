// Rows, tabs and branches of controls: what they say and where they stand. Rows and columns count from 0 here.
#pragma once

#include "dialog_steps.h"

#include <functional>
#include <string>

namespace vndk::app {

/// Rows of a list, list box or combo box, tabs of a tab control.
int rowCount(HWND control);
/// Columns of a list in report view, else 1.
int columnCount(HWND control);
/// Empty where the control keeps no text (a list box that the program draws).
std::string rowText(HWND control, int row, int column = 0);
bool rowSelected(HWND control, int row);
/// Of a list's column.
std::string columnTitle(HWND list, int column);

struct Branch {
    int depth = 0;
    std::string text;
    bool selected = false;
    bool hasChildren = false;
    bool expanded = false;
};
/// Calls `visit` for each item of a tree whose parents are all expanded, from the top.
void visitShownBranches(HWND tree, const std::function<void(const Branch&)>& visit);

/// Where to click for an item, which is scrolled into view. Without a window: the trouble. Of a combo box its list has
/// to be open.
win32::UserPlace placeOfItem(HWND control, const ItemName& item);

} // namespace vndk::app
