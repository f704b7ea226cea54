// Accelerator tables.
#include "menu_fixture.h"
#include "template_builder.h"
#include "win32/accelerators.h"
#include "win32/resources.h"

namespace {

using namespace vndk::test;
using namespace vndk::win32;

class AcceleratorTest : public MenuFixture {
protected:
    /// Sends keys through a message loop with the table in front.
    void settleKeys(HACCEL table) {
        MSG message{};
        while (PeekMessage(&message, nullptr, 0, 0, PM_REMOVE) != FALSE)
            if (TranslateAccelerator(window, table, &message) == 0) {
                TranslateMessage(&message);
                DispatchMessage(&message);
            }
    }
    static HACCEL table(std::vector<ACCEL> entries) {
        return CreateAcceleratorTable(entries.data(), static_cast<int>(entries.size()));
    }
};

TEST_F(AcceleratorTest, KeysMatchWithExactlyTheirModifiers) {
    struct Case {
        const char* name;
        ACCEL entry;
        int key;
        char32_t character;
        int modifier;
        bool wanted;
    };
    const Case cases[] = {
        {"Ctrl+O", {FVIRTKEY | FCONTROL, 'O', 1}, 'O', 0, VK_CONTROL, true},
        {"Ctrl is missing", {FVIRTKEY | FCONTROL, 'O', 1}, 'O', 'o', 0, false},
        {"Shift too much", {FVIRTKEY, VK_F5, 1}, VK_F5, 0, VK_SHIFT, false},
        {"plain key", {FVIRTKEY, VK_F5, 1}, VK_F5, 0, 0, true},
        {"Alt+key", {FVIRTKEY | FALT, 'X', 1}, 'X', 0, VK_MENU, true},
        {"character", {0, 'q', 1}, 'Q', 'q', 0, true},
        {"character of the other case", {0, 'Q', 1}, 'Q', 'q', 0, false},
        {"character with Alt", {FALT, 'q', 1}, 'Q', 'q', VK_MENU, true},
        {"character without Alt", {FALT, 'q', 1}, 'Q', 'q', 0, false},
    };
    for (const Case& each : cases) {
        const HACCEL keys = table({each.entry});
        commands.clear();
        if (each.modifier != 0)
            user.keyWith(each.modifier, each.key, each.character);
        else
            user.key(each.key, each.character);
        settleKeys(keys);
        EXPECT_EQ(commands.size(), each.wanted ? 1U : 0U) << each.name;
        DestroyAcceleratorTable(keys);
    }
}

TEST_F(AcceleratorTest, CommandSaysWhereItCameFrom) {
    const HACCEL keys = table({{FVIRTKEY, VK_F5, 77}});
    WPARAM seen = 0;
    recorder.onMessage(WM_COMMAND, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        seen = wParam;
        EXPECT_EQ(lParam, 0);
        return 0;
    });
    MSG message{window, WM_KEYDOWN, VK_F5, 1, 0, {0, 0}};
    EXPECT_EQ(TranslateAccelerator(window, keys, &message), 1);
    EXPECT_EQ(seen, MAKEWPARAM(77, 1));
    message.message = WM_KEYUP;
    EXPECT_EQ(TranslateAccelerator(window, keys, &message), 0);
}

TEST_F(AcceleratorTest, MenuItemDecidesWhetherTheCommandGoes) {
    const HMENU bar = CreateMenu();
    const HMENU sub = CreatePopupMenu();
    AppendMenu(sub, MF_STRING | MF_GRAYED, 77, "x");
    AppendMenu(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "sub");
    SetMenu(window, bar);
    const HACCEL keys = table({{FVIRTKEY, VK_F5, 77}});
    MSG message{window, WM_KEYDOWN, VK_F5, 1, 0, {0, 0}};
    recorder.clear();
    EXPECT_EQ(TranslateAccelerator(window, keys, &message), 1) << "the key counts as used";
    EXPECT_TRUE(commands.empty());
    EXPECT_EQ(recorder.count(WM_INITMENU), 1);
    EXPECT_EQ(recorder.count(WM_INITMENUPOPUP), 1);
    // The window may enable the item when it is asked.
    recorder.onMessage(WM_INITMENUPOPUP, [&](HWND, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        EXPECT_EQ(reinterpret_cast<HMENU>(wParam), sub);
        EnableMenuItem(sub, 77, MF_BYCOMMAND | MF_ENABLED);
        return 0;
    });
    EXPECT_EQ(TranslateAccelerator(window, keys, &message), 1);
    EXPECT_EQ(commands, (std::vector<int>{77}));
    EnableWindow(window, FALSE);
    EXPECT_EQ(TranslateAccelerator(window, keys, &message), 1);
    EXPECT_EQ(commands.size(), 1U) << "a disabled window gets none";
}

TEST_F(AcceleratorTest, CommandsOfTheSystemMenuGoAsSuch) {
    ASSERT_NE(GetSystemMenu(window, FALSE), nullptr);
    const HACCEL keys = table({{FVIRTKEY, VK_F6, static_cast<WORD>(SC_CLOSE)}});
    MSG message{window, WM_KEYDOWN, VK_F6, 1, 0, {0, 0}};
    EXPECT_EQ(TranslateAccelerator(window, keys, &message), 1);
    EXPECT_EQ(systemCommands, (std::vector<int>{SC_CLOSE}));
    EXPECT_TRUE(commands.empty());
}

TEST_F(AcceleratorTest, TablesAreCopiedAndLoaded) {
    const HACCEL made = table({{FVIRTKEY, 1, 10}, {FVIRTKEY, 2, 20}});
    EXPECT_EQ(CopyAcceleratorTable(made, nullptr, 0), 2);
    ACCEL copy[3] = {};
    EXPECT_EQ(CopyAcceleratorTable(made, copy, 3), 2);
    EXPECT_EQ(copy[1].cmd, 20);
    EXPECT_TRUE(DestroyAcceleratorTable(made));
    EXPECT_FALSE(DestroyAcceleratorTable(made));
    EXPECT_EQ(CreateAcceleratorTable(nullptr, 2), nullptr);
    EXPECT_EQ(CreateAcceleratorTable(copy, 0), nullptr);
    EXPECT_EQ(CreateAcceleratorTable(copy, 40000), nullptr);

    Bytes whole;
    whole.word(FVIRTKEY | FCONTROL).word('O').word(100).word(0);
    whole.word(FVIRTKEY | 0x80).word(VK_F5).word(200).word(0);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        const auto& data = whole.data();
        const auto compiled =
            compiledResource(9, 1, {data.begin(), data.begin() + static_cast<std::ptrdiff_t>(length)});
        HINSTANCE instance = nullptr;
        ASSERT_TRUE(registerInstance(compiled, instance).ok());
        const HACCEL loaded = LoadAccelerators(instance, MAKEINTRESOURCE(1));
        EXPECT_EQ(loaded != nullptr, length == whole.size()) << "length " << length;
        if (loaded != nullptr) {
            EXPECT_EQ(LoadAccelerators(instance, MAKEINTRESOURCE(1)), loaded) << "the same table";
            EXPECT_EQ(CopyAcceleratorTable(loaded, copy, 3), 2);
            EXPECT_EQ(copy[0].fVirt, FVIRTKEY | FCONTROL);
        }
        unregisterInstance(instance);
    }
}

} // namespace
