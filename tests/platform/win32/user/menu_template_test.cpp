// Menus from templates.
#include "support/desktop_fixture.h"
#include "template_builder.h"
#include "win32/error.h"
#include "win32/menu.h"
#include "win32/resources.h"

namespace {

using namespace vndk::test;
using namespace vndk::win32;

constexpr unsigned extendedPopup = 1;
constexpr unsigned extendedLast = 0x80;

class MenuTemplateTest : public DesktopFixture {
protected:
    /// Open, a line, and a popup with one item.
    static std::vector<std::uint8_t> plain() {
        Bytes out;
        out.word(0).word(0);
        out.word(MF_CHECKED).word(10).text("&Open");
        out.word(0).word(0).text("");
        out.word(MF_POPUP | MF_END | MF_GRAYED).text("More");
        out.word(MF_END).word(20).text("Inner");
        return out.data();
    }
    static std::vector<std::uint8_t> extended() {
        Bytes out;
        out.word(1).word(4).dword(0);
        const auto item = [&out](UINT type, UINT state, UINT id, unsigned bits, std::string_view text) {
            out.align().dword(type).dword(state).dword(id).word(bits).text(text);
        };
        item(0, MFS_CHECKED, 10, 0, "&Open");
        item(MFT_SEPARATOR, 0, 0, 0, "");
        item(0, MFS_GRAYED, 7, extendedPopup | extendedLast, "More");
        out.align().dword(0);
        item(MFT_RADIOCHECK, 0, 0x12345, extendedLast, "Inner");
        return out.data();
    }
};

TEST_F(MenuTemplateTest, BothFormsMakeTheSameMenu) {
    for (const auto& bytes : {plain(), extended()}) {
        SCOPED_TRACE(bytes[0] == 0 ? "MENU" : "MENUEX");
        const HMENU menu = LoadMenuIndirect(bytes.data());
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(GetMenuItemCount(menu), 3);
        EXPECT_EQ(GetMenuItemID(menu, 0), 10U);
        EXPECT_EQ(GetMenuState(menu, 0, MF_BYPOSITION), MF_CHECKED);
        EXPECT_NE(GetMenuState(menu, 1, MF_BYPOSITION) & MF_SEPARATOR, 0U);
        const HMENU sub = GetSubMenu(menu, 2);
        ASSERT_NE(sub, nullptr);
        EXPECT_NE(GetMenuState(menu, 2, MF_BYPOSITION) & MF_GRAYED, 0U);
        char text[10];
        GetMenuString(sub, 0, text, sizeof text, MF_BYPOSITION);
        EXPECT_STREQ(text, "Inner");
        DestroyMenu(menu);
    }
}

TEST_F(MenuTemplateTest, ItemWithoutTextIsALine) {
    Bytes out;
    out.word(0).word(0).word(MF_END).word(2).text("");
    const HMENU menu = LoadMenuIndirect(out.data().data());
    MENUITEMINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID;
    ASSERT_TRUE(GetMenuItemInfo(menu, 0, TRUE, &info));
    EXPECT_EQ(info.fType, MFT_SEPARATOR);
    EXPECT_EQ(info.fState, MF_GRAYED | MF_DISABLED);
    EXPECT_EQ(info.wID, 2U);
}

TEST_F(MenuTemplateTest, EveryCutTemplateIsRefusedAndLeavesNoMenuBehind) {
    for (const auto& whole : {plain(), extended()}) {
        for (std::size_t length = 1; length < whole.size(); ++length) {
            const std::vector<std::uint8_t> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            const auto compiled = compiledResource(4, 1, cut);
            HINSTANCE instance = nullptr;
            ASSERT_TRUE(registerInstance(compiled, instance).ok());
            SetLastError(ERROR_SUCCESS);
            EXPECT_EQ(LoadMenu(instance, MAKEINTRESOURCE(1)), nullptr) << "length " << length;
            EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA) << "length " << length;
            unregisterInstance(instance);
        }
    }
    // Handles count up; one that was left behind would stand in the next one's way.
    const HMENU first = CreateMenu();
    DestroyMenu(first);
    EXPECT_EQ(reinterpret_cast<UINT_PTR>(first) & 0xFFFFF, 0U);
}

TEST_F(MenuTemplateTest, EndlessNestingIsRefused) {
    Bytes out;
    out.word(0).word(0);
    for (int i = 0; i < 5000; ++i)
        out.word(MF_POPUP | MF_END).text("x");
    out.word(MF_END).word(1).text("y");
    const auto compiled = compiledResource(4, 1, out.data());
    HINSTANCE instance = nullptr;
    ASSERT_TRUE(registerInstance(compiled, instance).ok());
    EXPECT_EQ(LoadMenu(instance, MAKEINTRESOURCE(1)), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
    unregisterInstance(instance);
    EXPECT_EQ(LoadMenuIndirect(nullptr), nullptr);
}

} // namespace
