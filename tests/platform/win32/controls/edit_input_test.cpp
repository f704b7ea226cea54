// The edit control by keyboard and mouse.
#include "control_fixture.h"
#include "win32/draw.h"
#include "win32/edit.h"

namespace vndk::win32 {
namespace {

using namespace test;

class EditInputTest : public ControlFixture {
protected:
    HWND makeEdit(DWORD style, LPCSTR text = "", int width = 200, int height = 100) {
        const HWND edit = make("EDIT", style, 10, 10, width, height, text);
        SetFocus(edit);
        settle();
        codes.clear();
        return edit;
    }
    static std::pair<int, int> selectionOf(HWND edit) {
        DWORD begin = 0;
        DWORD end = 0;
        SendMessage(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
        return {static_cast<int>(begin), static_cast<int>(end)};
    }
    static void setCaret(HWND edit, int position) {
        SendMessage(edit, EM_SETSEL, static_cast<WPARAM>(position), position);
    }
    POINT placeOf(HWND edit, int position) {
        const LRESULT place = SendMessage(edit, EM_POSFROMCHAR, static_cast<WPARAM>(position), 0);
        return onScreen(edit, GET_X_LPARAM(place), GET_Y_LPARAM(place) + 3);
    }
};

constexpr DWORD multi = ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL;
const LPCSTR sample = "one two\r\nthree\r\n\r\nfour five six";

TEST_F(EditInputTest, MovementKeysGoWhereTheyShould) {
    struct Row {
        const char* name;
        int from, key;
        bool control;
        int expected;
    };
    const Row rows[] = {
        {"left", 3, VK_LEFT, false, 2},
        {"left at the begin", 0, VK_LEFT, false, 0},
        {"left over a break", 9, VK_LEFT, false, 7},
        {"right", 3, VK_RIGHT, false, 4},
        {"right over a break", 7, VK_RIGHT, false, 9},
        {"right at the end", 31, VK_RIGHT, false, 31},
        {"home", 12, VK_HOME, false, 9},
        {"end", 10, VK_END, false, 14},
        {"to the begin of all", 12, VK_HOME, true, 0},
        {"to the end of all", 10, VK_END, true, 31},
        {"word left", 6, VK_LEFT, true, 4},
        {"word left over blanks", 4, VK_LEFT, true, 0},
        {"word left to the line's end", 9, VK_LEFT, true, 7},
        {"word right", 0, VK_RIGHT, true, 4},
        {"word right at the line's end", 7, VK_RIGHT, true, 9},
        {"up", 9, VK_UP, false, 0},
        {"up in the first line", 3, VK_UP, false, 3},
        {"down", 0, VK_DOWN, false, 9},
        {"down to a shorter line", 14, VK_DOWN, false, 16},
        {"down in the last line", 20, VK_DOWN, false, 20},
    };
    const HWND edit = makeEdit(multi, sample);
    for (const Row& row : rows) {
        setCaret(edit, row.from);
        if (row.control)
            user.keyWith(VK_CONTROL, row.key);
        else
            user.key(row.key);
        settle();
        EXPECT_EQ(selectionOf(edit), std::pair(row.expected, row.expected)) << row.name;
        setCaret(edit, row.from);
        user.keyDown(VK_SHIFT);
        if (row.control)
            user.keyWith(VK_CONTROL, row.key);
        else
            user.key(row.key);
        user.keyUp(VK_SHIFT);
        settle();
        EXPECT_EQ(selectionOf(edit), std::pair(std::min(row.from, row.expected), std::max(row.from, row.expected)))
            << row.name << " with Shift";
    }
}

TEST_F(EditInputTest, UpAndDownKeepTheColumn) {
    const HWND edit = makeEdit(multi, "wwwwww\r\ni\r\nwwwwww");
    setCaret(edit, 5);
    user.key(VK_DOWN);
    settle();
    EXPECT_EQ(selectionOf(edit).first, 9) << "the short line's end";
    user.key(VK_DOWN);
    settle();
    EXPECT_EQ(selectionOf(edit).first, 16);
    user.key(VK_UP);
    user.key(VK_LEFT);
    user.key(VK_DOWN);
    settle();
    EXPECT_EQ(selectionOf(edit).first, 11) << "moving sideways sets a new column";
}

TEST_F(EditInputTest, ArrowsCollapseASelectionToItsSide) {
    const HWND edit = makeEdit(multi, sample);
    SendMessage(edit, EM_SETSEL, 2, 5);
    user.key(VK_LEFT);
    settle();
    EXPECT_EQ(selectionOf(edit), std::pair(2, 2));
    SendMessage(edit, EM_SETSEL, 2, 5);
    user.key(VK_RIGHT);
    settle();
    EXPECT_EQ(selectionOf(edit), std::pair(5, 5));
}

TEST_F(EditInputTest, EndOfAWrappedLineIsNotTheNextLinesBegin) {
    const HWND edit = make("EDIT", ES_MULTILINE | ES_AUTOVSCROLL, 10, 10, 45, 100, "wwwwwwwwwwww");
    SetFocus(edit);
    const int second = static_cast<int>(SendMessage(edit, EM_LINEINDEX, 1, 0));
    ASSERT_GT(second, 0);
    setCaret(edit, 0);
    POINT first{};
    GetCaretPos(&first);
    user.key(VK_END);
    settle();
    POINT caret{};
    GetCaretPos(&caret);
    EXPECT_EQ(selectionOf(edit).first, second);
    EXPECT_EQ(caret.y, first.y);
    user.key(VK_HOME);
    settle();
    EXPECT_EQ(selectionOf(edit).first, 0) << "of the line where the caret shows";
}

TEST_F(EditInputTest, KeysChangeTheText) {
    struct Row {
        const char* name;
        int begin, end, modifier, key;
        char32_t character;
        const char* expected;
    };
    const Row rows[] = {
        {"letter", 3, 3, 0, 'X', 'x', "onex two"},
        {"letter over a selection", 0, 4, 0, 'X', 'x', "xtwo"},
        {"backspace", 3, 3, 0, VK_BACK, 0, "on two"},
        {"backspace at the begin", 0, 0, 0, VK_BACK, 0, "one two"},
        {"backspace with a selection", 1, 3, 0, VK_BACK, 0, "o two"},
        {"delete", 3, 3, 0, VK_DELETE, 0, "onetwo"},
        {"delete at the end", 7, 7, 0, VK_DELETE, 0, "one two"},
        {"delete to the line's end", 3, 3, VK_CONTROL, VK_DELETE, 0, "one"},
        {"cut", 0, 4, VK_SHIFT, VK_DELETE, 0, "two"},
        {"cut by letter", 0, 4, VK_CONTROL, 'X', 0, "two"},
    };
    for (const DWORD style : {ES_AUTOHSCROLL, multi})
        for (const Row& row : rows) {
            const HWND edit = makeEdit(style, "one two");
            SendMessage(edit, EM_SETSEL, static_cast<WPARAM>(row.begin), row.end);
            if (row.modifier != 0)
                user.keyWith(row.modifier, row.key, row.character);
            else
                user.key(row.key, row.character);
            settle();
            EXPECT_EQ(textOf(edit), row.expected) << row.name;
            DestroyWindow(edit);
        }
}

TEST_F(EditInputTest, ClipboardAndUndoHaveTheirKeys) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL, "one two");
    SendMessage(edit, EM_SETSEL, 0, 3);
    user.keyWith(VK_CONTROL, 'C');
    settle();
    setCaret(edit, 7);
    user.keyWith(VK_CONTROL, 'V');
    settle();
    EXPECT_EQ(textOf(edit), "one twoone");
    user.keyWith(VK_CONTROL, 'Z');
    settle();
    EXPECT_EQ(textOf(edit), "one two");
    user.keyWith(VK_SHIFT, VK_INSERT);
    settle();
    EXPECT_EQ(textOf(edit), "one twoone");
    user.keyWith(VK_MENU, VK_BACK);
    settle();
    EXPECT_EQ(textOf(edit), "one two");
}

TEST_F(EditInputTest, ReturnAndTabBelongToManyLinesOnly) {
    const HWND many = makeEdit(multi, "ab");
    setCaret(many, 1);
    EXPECT_EQ(SendMessage(many, WM_KEYDOWN, VK_RETURN, 1), 1);
    SendMessage(many, WM_CHAR, '\r', 1);
    SendMessage(many, WM_CHAR, '\t', 1);
    EXPECT_EQ(textOf(many), "a\r\n\tb");
    SendMessage(many, WM_CHAR, VK_BACK, 1);
    SendMessage(many, WM_CHAR, VK_BACK, 1);
    EXPECT_EQ(textOf(many), "ab") << "a break goes as one";
    const HWND single = makeEdit(ES_AUTOHSCROLL | ES_WANTRETURN, "ab");
    SendMessage(single, WM_CHAR, '\r', 1);
    SendMessage(single, WM_CHAR, '\t', 1);
    SendMessage(single, WM_CHAR, VK_ESCAPE, 1);
    EXPECT_EQ(textOf(single), "ab");
}

TEST_F(EditInputTest, NumberStyleRefusesTypedLettersOnly) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL | ES_NUMBER);
    user.type("1A2");
    settle();
    EXPECT_EQ(textOf(edit), "12");
    EXPECT_EQ(screen.beeps(), 1);
    SendMessage(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>("abc"));
    EXPECT_EQ(textOf(edit), "12abc");
}

// ---- Mouse ---------------------------------------------------------------------------------------------------------

TEST_F(EditInputTest, PressTakesTheFocusThenTheCapture) {
    const HWND edit = make("EDIT", ES_AUTOHSCROLL, 10, 10, 200, 20, "some text");
    HWND captureAtFocus = edit;
    onCode = [&](int code) {
        if (code == EN_SETFOCUS)
            captureAtFocus = GetCapture();
    };
    SendMessage(edit, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(takeCodes(), std::vector<int>{EN_SETFOCUS});
    EXPECT_EQ(captureAtFocus, nullptr);
    EXPECT_EQ(GetCapture(), edit);
    SendMessage(edit, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(EditInputTest, MouseSelects) {
    const HWND edit = makeEdit(multi, sample);
    const POINT from = placeOf(edit, 2);
    const POINT to = placeOf(edit, 11);
    user.drag(from, to);
    settle();
    EXPECT_EQ(selectionOf(edit), std::pair(2, 11));
    wait(1000);
    user.keyDown(VK_SHIFT);
    user.click(placeOf(edit, 20).x, placeOf(edit, 20).y);
    user.keyUp(VK_SHIFT);
    settle();
    EXPECT_EQ(selectionOf(edit), std::pair(2, 20)) << "Shift extends";
    wait(1000);
    const POINT word = placeOf(edit, 5);
    user.doubleClick(word.x, word.y);
    settle();
    EXPECT_EQ(selectionOf(edit), std::pair(4, 7)) << "the word \"two\"";
    wait(1000);
    const POINT first = placeOf(edit, 1);
    user.doubleClick(first.x, first.y);
    settle();
    EXPECT_EQ(selectionOf(edit), std::pair(0, 4)) << "with the blank behind it";
}

TEST_F(EditInputTest, PointerHeldBelowGoesOnScrolling) {
    std::string text;
    for (int line = 0; line < 40; ++line)
        text += "line\r\n";
    const HWND edit = makeEdit(multi, text.c_str(), 200, 50);
    const POINT start = placeOf(edit, 0);
    user.moveTo(start.x, start.y);
    user.press();
    user.moveTo(start.x, start.y + 100);
    settle();
    const LRESULT before = SendMessage(edit, EM_GETFIRSTVISIBLELINE, 0, 0);
    wait(500);
    EXPECT_GT(SendMessage(edit, EM_GETFIRSTVISIBLELINE, 0, 0), before + 3);
    user.release();
    settle();
    const LRESULT after = SendMessage(edit, EM_GETFIRSTVISIBLELINE, 0, 0);
    wait(500);
    EXPECT_EQ(SendMessage(edit, EM_GETFIRSTVISIBLELINE, 0, 0), after) << "let go";
}

TEST_F(EditInputTest, SelectionShowsOnlyWithTheFocusUnlessAsked) {
    const std::uint32_t highlight = rgbOf(GetSysColor(COLOR_HIGHLIGHT));
    const auto highlighted = [&](HWND edit) {
        int count = 0;
        const RECT rect = windowRect(edit);
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                count += pixel(x, y) == highlight ? 1 : 0;
        return count > 20;
    };
    for (const DWORD style : {DWORD{0}, ES_NOHIDESEL}) {
        const HWND edit = makeEdit(ES_AUTOHSCROLL | style, "some text", 200, 20);
        SendMessage(edit, EM_SETSEL, 0, -1);
        settle();
        EXPECT_TRUE(highlighted(edit)) << style;
        SetFocus(owner);
        settle();
        EXPECT_EQ(highlighted(edit), style != 0) << style;
        DestroyWindow(edit);
    }
}

} // namespace
} // namespace vndk::win32
