#include "commands/property_text.h"
#include "db/line_weight.h"
#include "mfc/dc.h"
#include "ui/acui.h"

#include <algorithm>
#include <cmath>

IMPLEMENT_DYNAMIC(CAcUiLineWeightComboBox, CAcUiComboBox)

namespace {

constexpr unsigned kWidths = 24;      // codes of widths
constexpr int kLineWidth = 32;        // pixels from end to end
constexpr int kGap = 4;               // before the text
constexpr double kPixels = 96 / 25.4; // in a millimetre

} // namespace

void CAcUiLineWeightComboBox::AddItems() {
    AddItem("ByLayer", AcDb::kLnWtByLayer);
    AddItem("ByBlock", AcDb::kLnWtByBlock);
    AddItem("Default", AcDb::kLnWtByLwDefault);
    for (unsigned code = 0; code < kWidths; ++code) {
        const AcDb::LineWeight weight = acdbLineWeightOfCode(code);
        AddItem(vndk::host::lineWeightText(weight).c_str(), weight);
    }
    FitDroppedWidth();
}

int CAcUiLineWeightComboBox::ImageWidth() const { return kLineWidth + kGap; }

void CAcUiLineWeightComboBox::DrawItemImage(CDC& dc, const CRect& rect, int cargo, COLORREF textColor) {
    const int wanted = static_cast<int>(std::lround(cargo / 100.0 * kPixels));
    const int thickness = std::clamp(wanted, 1, std::max(rect.Height(), 1));
    dc.FillSolidRect(rect.left, rect.top + (rect.Height() - thickness) / 2, kLineWidth, thickness, textColor);
}

AcDb::LineWeight CAcUiLineWeightComboBox::GetItemLineWeight(int item) const {
    return static_cast<AcDb::LineWeight>(GetItemCargo(item, AcDb::kLnWtByLayer));
}
