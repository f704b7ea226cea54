// Keys and what they type.
#include "support/desktop_fixture.h"
#include "support/message_recorder.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace vndk::test;

constexpr LPARAM scan(int code, bool extended = false) { return 1 | (code << 16) | (extended ? 1 << 24 : 0); }
constexpr LPARAM alt = LPARAM{1} << 29;
constexpr LPARAM before = LPARAM{1} << 30;
constexpr LPARAM up = before | (LPARAM{1} << 31);

class KeyboardTest : public DesktopFixture {
protected:
    void SetUp() override {
        recorder.registerClass();
        window = CreateWindow(MessageRecorder::className, "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                              nullptr, nullptr);
        SetFocus(window);
        settle();
        recorder.clear();
        // System keys must not reach menus and the like.
        for (const UINT message : {WM_SYSKEYDOWN, WM_SYSKEYUP, WM_SYSCHAR})
            recorder.onMessage(message, [](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return 0; });
    }
    /// What comes as WM_CHAR or WM_SYSCHAR ("[x]").
    std::string typed() {
        settle();
        std::string text;
        for (const RecordedMessage& message : recorder.messages())
            if (message.message == WM_CHAR)
                text += static_cast<char>(message.wParam);
            else if (message.message == WM_SYSCHAR)
                text += std::string("[") + static_cast<char>(message.wParam) + ']';
        recorder.clear();
        return text;
    }
    MessageRecorder recorder;
    HWND window = nullptr;
};

TEST_F(KeyboardTest, CharactersComeBetweenTheirKeysDownAndUp) {
    user.key('N', 'n');
    settle();
    EXPECT_TRUE(recorder.saw({{WM_KEYDOWN, posted | wparam | lparam, 'N', scan(0x31)},
                              {WM_CHAR, posted | wparam | lparam, 'n', scan(0x31)},
                              {WM_KEYUP, posted | wparam | lparam, 'N', scan(0x31) | up}}));
    PostMessage(window, WM_KEYDOWN, 'N', scan(0x31));
    PostMessage(window, WM_KEYUP, 'N', scan(0x31) | up);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_KEYDOWN}, {WM_CHAR, wparam, 'n'}, {WM_KEYUP}})) << "posted by a program";
}

TEST_F(KeyboardTest, RepeatedKeysTellThatTheyWereDown) {
    user.keyDown(VK_LEFT);
    user.keyDown(VK_LEFT);
    user.keyUp(VK_LEFT);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_KEYDOWN, lparam, 0, scan(0x4B, true)},
                              {WM_KEYDOWN, lparam, 0, scan(0x4B, true) | before},
                              {WM_KEYUP, lparam, 0, scan(0x4B, true) | up}}));
}

TEST_F(KeyboardTest, TheScreensTextIsTakenAsItComes) {
    user.key('2', U'\u20AC');
    user.key(VK_SPACE, ' ');
    user.key('X', U'\u0416');
    EXPECT_EQ(typed(), "\x80 ?") << "code page 1252";
    user.keyDown(0xDC); // a dead key: the screen delivers nothing for it
    user.keyUp(0xDC);
    user.key('E', U'\u00EA');
    EXPECT_EQ(typed(), "\xEA");
    vndk::screen::Event composed;
    composed.kind = vndk::screen::Event::Kind::character;
    composed.character = U'\u00FC';
    screen.post(composed);
    EXPECT_EQ(typed(), "\xFC") << "without a key";
}

TEST_F(KeyboardTest, ControlKeysTypeControlCharacters) {
    const struct {
        int modifier, key;
        std::string text;
    } cases[] = {{0, VK_RETURN, "\r"},
                 {0, VK_BACK, "\b"},
                 {0, VK_TAB, "\t"},
                 {0, VK_ESCAPE, "\x1B"},
                 {VK_CONTROL, 'A', "\x01"},
                 {VK_CONTROL, 'Z', "\x1A"},
                 {VK_CONTROL, VK_RETURN, "\n"},
                 {VK_CONTROL, VK_BACK, "\x7F"},
                 {VK_CONTROL, 0xDB, "\x1B"},
                 {VK_CONTROL, VK_LEFT, ""},
                 {VK_SHIFT, VK_RETURN, "\r"},
                 {VK_MENU, VK_RETURN, "[\r]"},
                 {VK_MENU, 'F', "[f]"},
                 {0, VK_DELETE, ""},
                 {0, VK_F1, ""},
                 {VK_CONTROL, '1', ""}};
    for (const auto& row : cases) {
        if (row.modifier != 0)
            user.keyWith(row.modifier, row.key);
        else
            user.key(row.key);
        EXPECT_EQ(typed(), row.text) << row.modifier << '+' << row.key;
    }
}

TEST_F(KeyboardTest, WithoutAScreenThatTypesAnAmericanKeyboardDoes) {
    user.key('A');
    user.keyWith(VK_SHIFT, 'A');
    user.keyWith(VK_SHIFT, '1');
    user.key(VK_NUMPAD0 + 7);
    user.key(VK_CAPITAL);
    user.key('B');
    user.keyWith(VK_SHIFT, 'B');
    user.key(VK_CAPITAL);
    user.key(0xBC);
    EXPECT_EQ(typed(), "aA!7Bb,");
}

TEST_F(KeyboardTest, AltMakesSystemKeys) {
    user.keyDown(VK_MENU);
    user.key('F');
    user.keyUp(VK_MENU);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_SYSKEYDOWN, wparam | lparam, static_cast<WPARAM>(VK_MENU), scan(0x38) | alt},
                              {WM_SYSKEYDOWN, wparam | lparam, 'F', scan(0x21) | alt},
                              {WM_SYSCHAR, wparam, 'f'},
                              {WM_SYSKEYUP, wparam | lparam, 'F', scan(0x21) | alt | up},
                              {WM_KEYUP, wparam, static_cast<WPARAM>(VK_MENU)}}))
        << "Alt served another key, so its own release is none of the system's";
    user.key(VK_MENU);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_SYSKEYDOWN, wparam, static_cast<WPARAM>(VK_MENU)},
                              {WM_SYSKEYUP, wparam | lparam, static_cast<WPARAM>(VK_MENU), scan(0x38) | up}}));
    user.key(VK_F10);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_SYSKEYDOWN, wparam | lparam, static_cast<WPARAM>(VK_F10), scan(0x44)},
                              {WM_SYSKEYUP, wparam, static_cast<WPARAM>(VK_F10)}}));
    user.keyDown(VK_CONTROL);
    user.keyWith(VK_MENU, 'Q', '@');
    user.keyUp(VK_CONTROL);
    settle();
    EXPECT_EQ(recorder.count(WM_SYSKEYDOWN), 0) << "Ctrl and Alt together choose a key's third sign";
    EXPECT_EQ(recorder.count(WM_CHAR), 1);
}

TEST_F(KeyboardTest, KeysGoToTheFocusOrElseTheActiveWindow) {
    const HWND other = CreateWindow(MessageRecorder::className, "", WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, window,
                                    nullptr, nullptr, nullptr);
    SetFocus(other);
    user.keyDown(VK_LEFT);
    settle();
    EXPECT_EQ(recorder.count(WM_KEYDOWN, other), 1);
    SetFocus(nullptr);
    recorder.clear();
    user.keyDown(VK_RIGHT);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_SYSKEYDOWN, lparam, 0, scan(0x4D, true)}}));
}

TEST_F(KeyboardTest, KeyStatesBelongToTheLastMessage) {
    user.keyDown(VK_SHIFT);
    desktop->collectInput();
    EXPECT_GE(GetKeyState(VK_SHIFT), 0) << "its message was not taken yet";
    EXPECT_LT(GetAsyncKeyState(VK_SHIFT), 0);
    settle();
    EXPECT_LT(GetKeyState(VK_SHIFT), 0);
    BYTE states[256];
    ASSERT_TRUE(GetKeyboardState(states));
    EXPECT_EQ(states[VK_SHIFT], 0x81);
    user.keyUp(VK_SHIFT);
    settle();
    EXPECT_GE(GetKeyState(VK_SHIFT), 0);
    EXPECT_EQ(GetAsyncKeyState(VK_SHIFT), 0);
    for (const int toggled : {1, 0}) {
        user.key(VK_CAPITAL);
        settle();
        EXPECT_EQ(GetKeyState(VK_CAPITAL), toggled);
    }
    states[VK_CONTROL] = 0x80;
    EXPECT_TRUE(SetKeyboardState(states));
    EXPECT_LT(GetKeyState(VK_CONTROL), 0);
    EXPECT_EQ(GetKeyState(-1), 0);
    EXPECT_EQ(GetKeyState(256), 0);
    EXPECT_FALSE(GetKeyboardState(nullptr));
}

TEST_F(KeyboardTest, RightKeysAreTheSameKeysAndMissedReleasesAreMadeGood) {
    user.keyDown(0xA3); // right Ctrl
    settle();
    EXPECT_TRUE(recorder.saw({{WM_KEYDOWN, wparam | lparam, static_cast<WPARAM>(VK_CONTROL), scan(0x1D, true)}}));
    EXPECT_LT(GetKeyState(VK_CONTROL), 0);
    vndk::screen::Event lost;
    lost.kind = vndk::screen::Event::Kind::deactivated;
    screen.post(lost);
    settle();
    EXPECT_EQ(GetKeyState(VK_CONTROL) & 0x80, 0);
    vndk::screen::Event moved;
    moved.held.shift = true; // it went down while another program had the keyboard
    screen.post(moved);
    settle();
    EXPECT_LT(GetKeyState(VK_SHIFT), 0);
    moved.held.shift = false;
    screen.post(moved);
    settle();
    EXPECT_GE(GetKeyState(VK_SHIFT), 0);
}

TEST_F(KeyboardTest, KeysHavePlacesNamesAndCharacters) {
    const struct {
        int key;
        UINT place;
        char character;
        SHORT typed; // VkKeyScan of the character
    } cases[] = {{'A', 0x1E, 'A', 'A' | 0x100}, {'1', 0x02, '1', '1'},  {VK_RETURN, 0x1C, '\r', VK_RETURN},
                 {VK_F1, 0x3B, 0, -1},          {VK_LEFT, 0x4B, 0, -1}, {0xBF, 0x35, '/', 0xBF}};
    for (const auto& row : cases) {
        const auto key = static_cast<UINT>(row.key);
        EXPECT_EQ(MapVirtualKey(key, MAPVK_VK_TO_VSC), row.place) << row.key;
        EXPECT_EQ(MapVirtualKey(key, MAPVK_VK_TO_CHAR), static_cast<UINT>(row.character)) << row.key;
        EXPECT_EQ(VkKeyScan(row.character), row.typed) << row.key;
    }
    EXPECT_EQ(MapVirtualKey(0x1E, MAPVK_VSC_TO_VK), 'A');
    EXPECT_EQ(MapVirtualKey(0x4B, MAPVK_VSC_TO_VK), static_cast<UINT>(VK_NUMPAD0 + 4));
    EXPECT_EQ(MapVirtualKey(0x1E, 99), 0u);
    EXPECT_EQ(VkKeyScan('!'), '1' | 0x100);
    EXPECT_EQ(VkKeyScan('\x03'), VK_CANCEL);
    EXPECT_EQ(VkKeyScan('\x04'), 'D' | 0x200);
    EXPECT_EQ(VkKeyScan('\xE4'), -1);
    char name[20];
    EXPECT_EQ(GetKeyNameText(0x004B0001 | 0x01000000, name, sizeof name), 4);
    EXPECT_STREQ(name, "Left");
    EXPECT_EQ(GetKeyNameText(0x004B0001, name, 4), 3);
    EXPECT_STREQ(name, "Num") << "cut";
    EXPECT_EQ(GetKeyNameText(0x00FF0001, name, sizeof name), 0);
    EXPECT_EQ(GetKeyNameText(0x004B0001, nullptr, 4), 0);
}

} // namespace
