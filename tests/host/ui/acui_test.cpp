// The boxes for colours, lineweights and plot styles, and the dialog "Select Color", by a user's events.
#include "db/line_weight.h"
#include "ed/host.h"
#include "mfc/afx.h"
#include "screen/memory.h"
#include "ui/acui.h"
#include "ui/color_dialog.h"
#include "win32/desktop.h"
#include "win32/user_script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

using namespace vndk::host;
using testing::ElementsAre;
using vndk::win32::UserPlace;
using vndk::win32::UserScript;

namespace {

constexpr int kColors = 262, kWeights = 264, kTables = 263;

struct Settings : ProfileStore {
    std::map<std::string, std::string> values;
    std::optional<std::string> read(std::string_view section, std::string_view key) override {
        const auto found = values.find(std::string(section) + "/" + std::string(key));
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void write(std::string_view section, std::string_view key, std::string_view value) override {
        values[std::string(section) + "/" + std::string(key)] = value;
    }
};

/// A window with the three boxes, made sorted as templates do.
class Panel : public CWnd {
public:
    CAcUiColorComboBox colors;
    CAcUiLineWeightComboBox weights;
    CAcUiPlotStyleTablesComboBox tables;
    std::vector<int> told; ///< the colours that were told

    bool make() {
        if (!CreateEx(0, AfxRegisterWndClass(0, nullptr, ::GetSysColorBrush(COLOR_3DFACE)), "panel",
                      WS_POPUP | WS_VISIBLE, 0, 0, 400, 300, nullptr, nullptr))
            return false;
        const DWORD style = WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED |
                            CBS_SORT | CBS_HASSTRINGS;
        for (const auto& [id, x, width] : {std::array{kColors, 10, 75}, {kWeights, 100, 130}, {kTables, 250, 130}})
            ::CreateWindowExA(0, "COMBOBOX", "", style, x, 10, width, 200, m_hWnd,
                              reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
        return colors.SubclassDlgItem(kColors, this) && weights.SubclassDlgItem(kWeights, this) &&
               tables.SubclassDlgItem(kTables, this);
    }

protected:
    void OnColor() { told.push_back(colors.GetItemColorIndex(colors.GetCurSel())); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Panel, CWnd)
ON_CBN_SELCHANGE(kColors, &Panel::OnColor)
END_MESSAGE_MAP()

class AcUiTest : public testing::Test {
protected:
    AcUiTest() {
        host.setProfile(&settings);
        EXPECT_TRUE(panel.make());
        desktop.settle();
    }
    ~AcUiTest() override { panel.DestroyWindow(); }

    static std::vector<std::string> rows(const CComboBox& combo) {
        std::vector<std::string> found;
        for (int item = 0; item < combo.GetCount(); ++item) {
            CString text;
            combo.GetLBText(item, text);
            found.emplace_back(text.View());
        }
        return found;
    }
    static UserPlace rowOf(HWND combo, const char* name) {
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        ::GetComboBoxInfo(combo, &info);
        const LRESULT row =
            ::SendMessageA(info.hwndList, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(name));
        RECT rect{};
        ::SendMessageA(info.hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(row), 0);
        ::SendMessageA(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect));
        return {row < 0 ? nullptr : info.hwndList, {rect.left + 5, (rect.top + rect.bottom) / 2}, "no such row"};
    }
    void choose(UserScript& user, const char* name) {
        user.inWindow(panel.m_hWnd).pause(600).click(kColors).clickPlace(name, [this, name] {
            return rowOf(panel.colors.m_hWnd, name);
        });
    }
    /// A pixel of the screen, 0xRRGGBB.
    std::uint32_t pixel(POINT at) {
        const vndk::screen::Surface surface = screen.surface();
        return surface
                   .pixels[static_cast<size_t>(at.y) * static_cast<size_t>(surface.width) + static_cast<size_t>(at.x)] &
               0xFFFFFF;
    }

    vndk::screen::MemoryScreen screen{800, 600};
    vndk::win32::Desktop desktop{screen};
    CWinApp application{"acui-test"};
    Settings settings;
    Host host;
    Panel panel;
};

TEST_F(AcUiTest, RowsStandInTheirOwnOrderAndAreFoundByValue) {
    EXPECT_THAT(rows(panel.colors), ElementsAre("ByLayer", "ByBlock", "Red", "Yellow", "Green", "Cyan", "Blue",
                                                "Magenta", "White", "Select Color..."));
    EXPECT_EQ(panel.colors.GetCurSel(), -1);
    for (const int color : {0, 1, 7, 256})
        EXPECT_EQ(panel.colors.GetItemColorIndex(panel.colors.FindItemByColorIndex(color)), color);
    EXPECT_EQ(panel.colors.FindItemByColorIndex(8), -1);
    EXPECT_EQ(panel.colors.GetItemColorIndex(9), -1) << "the last row is no colour";
    EXPECT_EQ(panel.colors.GetItemColorIndex(-1), -1);

    ASSERT_EQ(panel.weights.GetCount(), 27);
    EXPECT_EQ(rows(panel.weights)[0], "ByLayer");
    EXPECT_EQ(rows(panel.weights)[26], "2.11 mm");
    for (const int weight : {-3, -2, -1, 0, 5, 211}) {
        panel.weights.SetCurSel(panel.weights.FindItemByLineWeight(static_cast<AcDb::LineWeight>(weight)));
        EXPECT_EQ(panel.weights.GetCurrentItemLineWeight(), weight);
    }
    EXPECT_EQ(panel.weights.FindItemByLineWeight(static_cast<AcDb::LineWeight>(12)), -1);
    EXPECT_THAT(rows(panel.tables), ElementsAre("None"));
    EXPECT_TRUE(panel.told.empty()) << "nothing that the program does is told";
}

TEST_F(AcUiTest, RecentColoursAreFewTheLatestFirst) {
    for (int color = 20; color < 30; ++color)
        EXPECT_EQ(panel.colors.AddColorToMRU(color), 9);
    EXPECT_EQ(panel.colors.GetCount(), 18);
    EXPECT_EQ(panel.colors.FindItemByColorIndex(29), 9);
    EXPECT_EQ(panel.colors.FindItemByColorIndex(22), 16);
    EXPECT_EQ(panel.colors.FindItemByColorIndex(21), -1);
    EXPECT_EQ(panel.colors.AddColorToMRU(25), 13) << "listed already";
    EXPECT_EQ(panel.colors.AddColorToMRU(1), 2);
    EXPECT_EQ(panel.colors.AddColorToMRU(257), -1);
    EXPECT_TRUE(settings.values.empty()) << "shown, but not chosen";
}

TEST_F(AcUiTest, WhatTheProfileHoldsIsListedIfItIsAColour) {
    settings.values["Dialogs/RecentColors"] = "30,7,x,900,,30,171,-4";
    CAcUiColorComboBox colors;
    panel.colors.UnsubclassWindow();
    panel.colors.Detach();
    ::SendDlgItemMessageA(panel.m_hWnd, kColors, CB_RESETCONTENT, 0, 0);
    ASSERT_TRUE(colors.SubclassDlgItem(kColors, &panel));
    EXPECT_EQ(colors.FindItemByColorIndex(30), 9);
    EXPECT_EQ(colors.FindItemByColorIndex(171), 10);
    EXPECT_EQ(colors.GetCount(), 12);
}

TEST_F(AcUiTest, AColourFromTheDialogIsSelectedToldAndRemembered) {
    panel.colors.SetCurSel(2);
    UserScript user(screen);
    choose(user, "Select Color...");
    user.in("Select Color").expect("the present colour's name", [] {
        char text[20] = "";
        ::GetDlgItemTextA(::FindWindowA(nullptr, "Select Color"), 20106, text, sizeof text);
        return std::string(text) == "Red";
    });
    // Cell 3 of row 2 of the palette: hue 40, the third darkest.
    user.clickAt(20103, {11 * 3 + 5, 11 * 2 + 5}).click(IDOK);
    choose(user, "Select Color...");
    user.in("Select Color").clickAt(20102, {5, 5}).click(IDCANCEL);
    choose(user, "Select Color...");
    user.in("Select Color").doubleClickAt(20101, {14 * 8 + 5, 5});
    choose(user, "Magenta");
    ASSERT_TRUE(user.finish()) << user.failure();
    EXPECT_THAT(panel.told, ElementsAre(44, 9, 6)) << "and never the row itself";
    EXPECT_EQ(settings.values["Dialogs/RecentColors"], "9,44");
    EXPECT_EQ(panel.colors.GetItemColorIndex(9), 9);
    EXPECT_EQ(panel.colors.GetItemColorIndex(10), 44);
}

TEST_F(AcUiTest, WithTheKeyboardTheRowOpensTheDialogOnlyWhenItIsTaken) {
    panel.colors.SetCurSel(8);
    UserScript user(screen);
    user.inWindow(panel.m_hWnd).click(kColors).press(VK_DOWN);
    user.expect("passed over, the dialog isn't there", [] { return !::FindWindowA(nullptr, "Select Color"); });
    user.press(VK_RETURN).in("Select Color").press(VK_ESCAPE);
    user.inWindow(panel.m_hWnd).expect("back where it was", [this] { return panel.colors.GetCurSel() == 8; });
    user.press(VK_DOWN).in("Select Color").press(VK_ESCAPE);
    ASSERT_TRUE(user.finish()) << user.failure();
    EXPECT_EQ(panel.colors.GetCurSel(), 8);
    EXPECT_TRUE(panel.told.empty());
}

TEST_F(AcUiTest, TheDialogTakesNamesAndNumbersAndSaysWhatItWants) {
    const struct {
        const char* typed;
        int color;
    } rows[] = {{"magenta", 6}, {"255", 255}, {" 30 ", 30}, {"BYLAYER", 256}, {"byblock", 0}};
    for (const auto& row : rows) {
        UserScript user(screen);
        user.in("Select Color").doubleClick(20106).type(row.typed).press(VK_RETURN);
        int color = 1;
        EXPECT_TRUE(acedSetColorDialog(color, true, 7)) << row.typed;
        EXPECT_EQ(color, row.color) << row.typed;
        EXPECT_TRUE(user.finish()) << user.failure();
    }
    for (const char* wrong : {"0", "256", "purple", "1.5", "ByLayer"}) {
        UserScript user(screen);
        user.in("Select Color").doubleClick(20106).type(wrong).press(VK_RETURN);
        user.in("#32770").expect("a message", [] { return ::GetDlgItem(::GetActiveWindow(), 20106) == nullptr; });
        user.press(VK_RETURN).in("Select Color").expect("the field again", [] {
            return ::GetDlgCtrlID(::GetFocus()) == 20106;
        });
        user.press(VK_ESCAPE);
        int color = 1;
        EXPECT_FALSE(acedSetColorDialog(color, false, 7)) << wrong;
        EXPECT_EQ(color, 1);
        EXPECT_TRUE(user.finish()) << user.failure();
    }
}

TEST_F(AcUiTest, ArrowsMoveInThePaletteAndTheNameFollows) {
    UserScript user(screen);
    user.in("Select Color").clickAt(20103, {5, 11 * 4 + 5}).press(VK_RIGHT).press(VK_DOWN).press(VK_RIGHT);
    for (int i = 0; i < 30; ++i)
        user.press(VK_UP);
    user.press(VK_RETURN);
    int color = 256;
    EXPECT_TRUE(acedSetColorDialog(color, true, 7));
    EXPECT_TRUE(user.finish()) << user.failure();
    EXPECT_EQ(color, 38) << "third hue, darkest";
}

TEST_F(AcUiTest, SwatchesAndLinesAreDrawnAsTheySay) {
    panel.colors.SetCurSel(panel.colors.FindItemByColorIndex(5));
    panel.weights.SetCurSel(panel.weights.FindItemByLineWeight(static_cast<AcDb::LineWeight>(100)));
    desktop.settle();
    POINT swatch{8, 10}, line{20, 0};
    panel.colors.ClientToScreen(&swatch);
    panel.weights.ClientToScreen(&line);
    EXPECT_EQ(pixel(swatch), 0x0000FFU);
    const auto thickness = [&] {
        desktop.settle();
        int found = 0;
        for (int y = 3; y < 18; ++y)
            found += pixel({line.x, line.y + y}) == 0;
        return found;
    };
    EXPECT_EQ(thickness(), 4) << "1.00 mm at 96 dots an inch";
    panel.weights.SetCurSel(panel.weights.FindItemByLineWeight(AcDb::kLnWt000));
    EXPECT_EQ(thickness(), 1);
    panel.colors.EnableWindow(FALSE);
    desktop.settle();
    EXPECT_EQ(pixel(swatch), 0x0000FFU) << "what is chosen shows while it can't be changed, too";
}

} // namespace
