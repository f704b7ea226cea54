#include "ui/color_dialog.h"

#include "ads/ads.h"
#include "mfc/dc.h"
#include "mfc/dialog.h"
#include "mfc/message_map.h"
#include "mfc/module_state.h"
#include "ui/color_dialog_ids.h"
#include "ui/color_grid.h"
#include "ui/color_names.h"
#include "win32/input.h"
#include "win32/loader.h"
#include "win32/messagebox.h"

namespace vndk::host {

namespace {

constexpr int kFirstHue = 10, kFirstGray = 250;

int standardColor(int /*row*/, int column) { return column + 1; }
int grayColor(int /*row*/, int column) { return kFirstGray + column; }

/// Hues from left to right; bright in the middle rows, dark outside, pale in the lower half.
int paletteColor(int row, int column) {
    const int shade = row < 5 ? 8 - 2 * row : 2 * (row - 5) + 1;
    return kFirstHue * (column + 1) + shade;
}

/// The colour that is chosen, as it looks.
class ColorSwatch : public CButton {
public:
    int color = kColorByLayer;
    int layerColor = kColorByLayer;

    void DrawItem(LPDRAWITEMSTRUCT draw) override {
        CDC& dc = *CDC::FromHandle(draw->hDC);
        dc.FillSolidRect(&draw->rcItem, shownColor(color == kColorByLayer ? layerColor : color));
        dc.Draw3dRect(&draw->rcItem, RGB(0, 0, 0), RGB(0, 0, 0));
    }
};

class SelectColorDialog : public CDialog {
public:
    SelectColorDialog(int color, bool metaColors, int layerColor, CWnd* parent)
        : CDialog(IDD_SELECT_COLOR, parent), color_(color), metaColors_(metaColors) {
        swatch_.layerColor = layerColor;
    }

    [[nodiscard]] int color() const { return color_; }

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        CDialog::DoDataExchange(exchange);
        DDX_Control(exchange, IDC_STANDARD_COLORS, standard_);
        DDX_Control(exchange, IDC_GRAYS, grays_);
        DDX_Control(exchange, IDC_FULL_PALETTE, palette_);
        DDX_Control(exchange, IDC_COLOR_SHOWN, swatch_);
    }

    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        GetDlgItem(IDC_BYLAYER)->EnableWindow(metaColors_);
        GetDlgItem(IDC_BYBLOCK)->EnableWindow(metaColors_);
        choose(color_);
        return TRUE;
    }

    void OnOK() override {
        const std::optional<int> typed = typedColor();
        if (!typed) {
            ::MessageBoxA(m_hWnd, "Type the name of a color or a number from 1 to 255.", "Select Color",
                          MB_OK | MB_ICONEXCLAMATION);
            GotoDlgCtrl(GetDlgItem(IDC_COLOR_NAME));
            return;
        }
        color_ = *typed;
        CDialog::OnOK();
    }

    void OnStandard() { choose(standard_.selected()); }
    void OnGray() { choose(grays_.selected()); }
    void OnPalette() { choose(palette_.selected()); }
    void OnByLayer() { choose(kColorByLayer); }
    void OnByBlock() { choose(kColorByBlock); }
    void OnTyped() {
        if (const std::optional<int> color = typedColor())
            mark(*color);
    }

    DECLARE_MESSAGE_MAP()

private:
    [[nodiscard]] std::optional<int> typedColor() const {
        CString text;
        GetDlgItem(IDC_COLOR_NAME)->GetWindowText(text);
        const std::optional<int> color = colorOfName(std::string(text.View()));
        const bool meta = color == kColorByLayer || color == kColorByBlock;
        return meta && !metaColors_ ? std::nullopt : color;
    }
    /// Writes the name, and marks by it.
    void choose(int color) {
        if (color != ColorGrid::kNone)
            SetDlgItemText(IDC_COLOR_NAME, colorName(color).c_str());
    }
    void mark(int color) {
        for (ColorGrid* const grid : {&standard_, &grays_, &palette_})
            grid->select(color);
        swatch_.color = color;
        swatch_.Invalidate();
    }

    int color_;
    bool metaColors_;
    ColorGrid standard_{1, 9, standardColor};
    ColorGrid grays_{1, 6, grayColor};
    ColorGrid palette_{10, 24, paletteColor};
    ColorSwatch swatch_;
};

BEGIN_MESSAGE_MAP(SelectColorDialog, CDialog)
ON_BN_CLICKED(IDC_STANDARD_COLORS, &SelectColorDialog::OnStandard)
ON_BN_CLICKED(IDC_GRAYS, &SelectColorDialog::OnGray)
ON_BN_CLICKED(IDC_FULL_PALETTE, &SelectColorDialog::OnPalette)
ON_BN_DOUBLECLICKED(IDC_STANDARD_COLORS, &SelectColorDialog::OnOK)
ON_BN_DOUBLECLICKED(IDC_GRAYS, &SelectColorDialog::OnOK)
ON_BN_DOUBLECLICKED(IDC_FULL_PALETTE, &SelectColorDialog::OnOK)
ON_BN_CLICKED(IDC_BYLAYER, &SelectColorDialog::OnByLayer)
ON_BN_CLICKED(IDC_BYBLOCK, &SelectColorDialog::OnByBlock)
ON_EN_CHANGE(IDC_COLOR_NAME, &SelectColorDialog::OnTyped)
END_MESSAGE_MAP()

/// The program's own resources come first as long as this lives.
class ProgramResourceScope {
public:
    ProgramResourceScope() : former_(AfxGetResourceHandle()) { AfxSetResourceHandle(::GetModuleHandleA("Acad.exe")); }
    ~ProgramResourceScope() { AfxSetResourceHandle(former_); }
    ProgramResourceScope(const ProgramResourceScope&) = delete;
    ProgramResourceScope& operator=(const ProgramResourceScope&) = delete;

private:
    HINSTANCE former_;
};

} // namespace

} // namespace vndk::host

bool acedSetColorDialog(int& color, bool allowMetaColor, int layerColor) {
    using namespace vndk::host;
    const ProgramResourceScope resources;
    // In front of the dialog that asks, which is the active window.
    HWND owner = ::GetActiveWindow();
    SelectColorDialog dialog(color, allowMetaColor, layerColor, CWnd::FromHandle(owner ? owner : adsw_acadMainWnd()));
    if (dialog.DoModal() != IDOK)
        return false;
    color = dialog.color();
    return true;
}
