#include "mfc/dc.h"
#include "mfc/message_map.h"
#include "ui/acui.h"
#include "ui/color_dialog.h"
#include "ui/color_names.h"
#include "ui/recent_colors.h"

using namespace vndk::host;

IMPLEMENT_DYNAMIC(CAcUiColorComboBox, CAcUiComboBox)

namespace {

constexpr UINT kSelectColorMessage = WM_APP; // to the box itself: "Select Color..." was chosen
constexpr int kSelectColor = -1;             // what stands behind that row
constexpr int kNoColor = -1;
constexpr int kSwatchWidth = 9;                   // pixels; names are as long as the box is wide
constexpr int kFirstRecent = kLastNamedColor + 2; // behind "ByLayer" and "ByBlock"

} // namespace

BEGIN_MESSAGE_MAP(CAcUiColorComboBox, CAcUiComboBox)
ON_MESSAGE(CB_SETCURSEL, &CAcUiColorComboBox::OnSetCurSel)
ON_MESSAGE(kSelectColorMessage, &CAcUiColorComboBox::OnSelectColor)
ON_CONTROL_REFLECT_EX(CBN_SELCHANGE, &CAcUiColorComboBox::OnSelChange)
ON_CONTROL_REFLECT_EX(CBN_SELENDOK, &CAcUiColorComboBox::OnSelEndOk)
END_MESSAGE_MAP()

void CAcUiColorComboBox::AddItems() {
    AddItem(colorName(kColorByLayer).c_str(), kColorByLayer);
    for (int color = kColorByBlock; color <= kLastNamedColor; ++color)
        AddItem(colorName(color).c_str(), color);
    for (const int color : recentColors())
        if (color > kLastNamedColor)
            AddItem(colorName(color).c_str(), color);
    AddItem("Select Color...", kSelectColor);
    FitDroppedWidth();
}

int CAcUiColorComboBox::ImageWidth() const { return kSwatchWidth; }

void CAcUiColorComboBox::DrawItemImage(CDC& dc, const CRect& rect, int cargo, COLORREF /*textColor*/) {
    if (cargo == kSelectColor)
        return;
    dc.FillSolidRect(rect, shownColor(cargo));
    dc.Draw3dRect(rect, RGB(0, 0, 0), RGB(0, 0, 0));
}

int CAcUiColorComboBox::GetItemColorIndex(int item) const { return GetItemCargo(item, kNoColor); }

int CAcUiColorComboBox::AddColorToMRU(int color) {
    if (color < kColorByBlock || color > kColorByLayer)
        return CB_ERR;
    if (const int listed = FindItemByColorIndex(color); listed != CB_ERR)
        return listed;
    const int last = GetCount() - 1; // "Select Color..."
    if (last - kFirstRecent >= kMostRecentColors)
        DeleteString(static_cast<UINT>(last - 1));
    return AddItem(colorName(color).c_str(), color, kFirstRecent);
}

LRESULT CAcUiColorComboBox::OnSetCurSel(WPARAM, LPARAM) {
    const LRESULT item = Default();
    m_shown = static_cast<int>(item);
    return item;
}

/// "Select Color..." is no colour: the dialog hears of the one that is chosen, not of the row.
BOOL CAcUiColorComboBox::OnSelChange() {
    const int item = GetCurSel();
    if (GetItemColorIndex(item) == kNoColor)
        return TRUE;
    m_shown = item;
    return FALSE;
}

BOOL CAcUiColorComboBox::OnSelEndOk() {
    // The list is still closing.
    if (GetCurSel() != CB_ERR && GetItemColorIndex(GetCurSel()) == kNoColor)
        PostMessage(kSelectColorMessage);
    return FALSE;
}

LRESULT CAcUiColorComboBox::OnSelectColor(WPARAM, LPARAM) {
    const int former = GetItemColorIndex(m_shown);
    int color = former == kNoColor ? kColorByLayer : former;
    if (!acedSetColorDialog(color, true, kLastNamedColor)) {
        SetCurSel(m_shown);
        return 0;
    }
    if (color > kLastNamedColor && color != kColorByLayer)
        rememberColor(color);
    SetCurSel(AddColorToMRU(color));
    GetParent()->SendMessage(WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), CBN_SELCHANGE), reinterpret_cast<LPARAM>(m_hWnd));
    return 0;
}
