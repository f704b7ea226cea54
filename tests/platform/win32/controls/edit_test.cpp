// The edit control by its messages: text, selection, lines, limits, margins, notifications.
#include "control_fixture.h"
#include "win32/draw.h"
#include "win32/edit.h"
#include "win32/fonts.h"
#include "win32/memory.h"
#include "win32/scrollbar.h"

namespace vndk::win32 {
namespace {

using namespace test;

class EditTest : public ControlFixture {
protected:
    HWND makeEdit(DWORD style, LPCSTR text = "", int width = 200, int height = 100, DWORD exStyle = 0) {
        return make("EDIT", style, 10, 10, width, height, text, exStyle);
    }
    static LRESULT send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessage(window, message, wParam, lParam);
    }
    static LRESULT replace(HWND edit, LPCSTR text) {
        return send(edit, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
    }
    static std::pair<int, int> selectionOf(HWND edit) {
        DWORD begin = 0;
        DWORD end = 0;
        SendMessage(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
        return {static_cast<int>(begin), static_cast<int>(end)};
    }
    static int xOfPosition(HWND edit, int position) {
        return GET_X_LPARAM(SendMessage(edit, EM_POSFROMCHAR, static_cast<WPARAM>(position), 0));
    }
};

constexpr DWORD multi = ES_MULTILINE | ES_AUTOVSCROLL;
const LPCSTR threeLines = "first\r\nsecond line\r\n\r\nlast";

// ---- Text and notifications ----------------------------------------------------------------------------------------

TEST_F(EditTest, SettingTextNotifiesFromSingleLinesOnly) {
    const HWND single = makeEdit(ES_AUTOHSCROLL, "old");
    EXPECT_EQ(textOf(single), "old");
    SetWindowText(single, "new");
    EXPECT_EQ(takeCodes(), (std::vector<int>{EN_UPDATE, EN_CHANGE}));
    EXPECT_EQ(textOf(single), "new");
    const HWND many = makeEdit(multi, "old");
    SetWindowText(many, "new");
    EXPECT_TRUE(takeCodes().empty());
    EXPECT_EQ(textOf(many), "new");
    SetWindowText(many, nullptr);
    EXPECT_EQ(textOf(many), "");
}

TEST_F(EditTest, GettingTextStopsAtTheBuffer) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL, "abcdef");
    char buffer[16] = "????????";
    EXPECT_EQ(GetWindowText(edit, buffer, 4), 3);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(send(edit, WM_GETTEXT, 0, reinterpret_cast<LPARAM>(buffer)), 0);
    EXPECT_EQ(send(edit, WM_GETTEXT, 5, 0), 0);
    EXPECT_EQ(GetWindowTextLength(edit), 6);
}

TEST_F(EditTest, ReplacingIsToldBeforeAndAfterItShows) {
    for (const DWORD style : {ES_AUTOHSCROLL, multi, multi | ES_READONLY}) {
        const HWND edit = makeEdit(style, "one two");
        send(edit, EM_SETSEL, 4, 7);
        replace(edit, "three");
        EXPECT_EQ(textOf(edit), "one three") << style;
        EXPECT_EQ(takeCodes(), (std::vector<int>{EN_UPDATE, EN_CHANGE})) << style;
        EXPECT_EQ(selectionOf(edit), std::pair(9, 9)) << style;
        EXPECT_TRUE(send(edit, EM_GETMODIFY)) << style;
        send(edit, EM_REPLACESEL, TRUE, 0);
        EXPECT_EQ(textOf(edit), "one three") << "no text is an empty one";
        DestroyWindow(edit);
    }
}

TEST_F(EditTest, WindowMayDieInItsNotifications) {
    for (const int deadly : {EN_MAXTEXT, EN_UPDATE, EN_CHANGE, EN_SETFOCUS, EN_KILLFOCUS}) {
        const HWND edit = makeEdit(ES_AUTOHSCROLL, "abc");
        send(edit, EM_LIMITTEXT, 5);
        onCode = [&](int code) {
            if (code == deadly)
                DestroyWindow(edit);
        };
        SetFocus(edit);
        replace(edit, "defghi");
        SetFocus(owner);
        EXPECT_FALSE(IsWindow(edit)) << deadly;
        onCode = nullptr;
    }
}

TEST_F(EditTest, ModifiedFlagFollowsChanges) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL, "abc");
    EXPECT_FALSE(send(edit, EM_GETMODIFY));
    send(edit, WM_CHAR, 'x', 1);
    EXPECT_TRUE(send(edit, EM_GETMODIFY));
    SetWindowText(edit, "abc");
    EXPECT_FALSE(send(edit, EM_GETMODIFY));
    send(edit, EM_SETMODIFY, TRUE);
    EXPECT_TRUE(send(edit, EM_GETMODIFY));
}

TEST_F(EditTest, FocusIsToldToTheParent) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL);
    SetFocus(edit);
    SetFocus(owner);
    EXPECT_EQ(takeCodes(), (std::vector<int>{EN_SETFOCUS, EN_KILLFOCUS}));
}

// ---- Limits --------------------------------------------------------------------------------------------------------

TEST_F(EditTest, LimitIsThirtyThousandAndNoneIsTheLargest) {
    const HWND single = makeEdit(ES_AUTOHSCROLL);
    EXPECT_EQ(send(single, EM_GETLIMITTEXT), 30000);
    send(single, EM_SETLIMITTEXT, 0);
    EXPECT_EQ(send(single, EM_GETLIMITTEXT), 0x7FFFFFFE);
    const HWND many = makeEdit(multi);
    EXPECT_EQ(send(many, EM_GETLIMITTEXT), 30000);
    send(many, EM_SETLIMITTEXT, 0);
    EXPECT_EQ(send(many, EM_GETLIMITTEXT), 0xFFFFFFFFLL);
}

TEST_F(EditTest, TooMuchTextIsCutAndTold) {
    struct Row {
        const char* name;
        DWORD style;
        UINT limit;
        int width;
        bool cut;
    };
    const Row rows[] = {
        {"single line, limit", ES_AUTOHSCROLL, 5, 200, true},
        {"single line, room enough", ES_AUTOHSCROLL, 100, 30, false},
        {"single line that can't scroll", ES_LEFT, 100, 30, true},
        {"many lines, limit", multi, 5, 200, true},
        {"many lines, wrapped", multi, 100, 30, false},
    };
    const std::string text = "this is a long text";
    for (const Row& row : rows) {
        const HWND edit = makeEdit(row.style, "", row.width);
        send(edit, EM_LIMITTEXT, row.limit);
        takeCodes();
        replace(edit, text.c_str());
        const auto expected =
            row.cut ? std::vector<int>{EN_MAXTEXT, EN_UPDATE, EN_CHANGE} : std::vector<int>{EN_UPDATE, EN_CHANGE};
        EXPECT_EQ(takeCodes(), expected) << row.name;
        EXPECT_EQ(GetWindowTextLength(edit) < static_cast<int>(text.size()), row.cut) << row.name;
        if (row.limit == 5)
            EXPECT_EQ(textOf(edit), "this ") << row.name;
        SetWindowText(edit, text.c_str());
        EXPECT_EQ(textOf(edit), text) << row.name << ": a program may set what it likes";
        DestroyWindow(edit);
    }
}

TEST_F(EditTest, FullControlRefusesAndKeepsTheSelection) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL, "abcde");
    send(edit, EM_LIMITTEXT, 3);
    send(edit, EM_SETSEL, 1, 2);
    send(edit, WM_CHAR, 'x', 1);
    EXPECT_EQ(textOf(edit), "abcde");
    EXPECT_EQ(selectionOf(edit), std::pair(1, 2));
    EXPECT_EQ(takeCodes(), std::vector<int>{EN_MAXTEXT});
}

TEST_F(EditTest, ControlThatCannotScrollDownTakesAsManyLinesAsShow) {
    const HWND edit = makeEdit(ES_MULTILINE, "a", 100, 40);
    send(edit, EM_SETSEL, 1, 1);
    for (int count = 0; count < 10; ++count)
        send(edit, WM_CHAR, '\r', 1);
    const LRESULT lines = send(edit, EM_GETLINECOUNT);
    EXPECT_GE(lines, 2);
    EXPECT_LE(lines, 3);
    const HWND scrolling = makeEdit(multi, "a", 100, 40);
    for (int count = 0; count < 10; ++count)
        send(scrolling, WM_CHAR, '\r', 1);
    EXPECT_EQ(send(scrolling, EM_GETLINECOUNT), 11);
}

// ---- Selection and lines -------------------------------------------------------------------------------------------

TEST_F(EditTest, SelectionIsClampedAndOrdered) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL, "0123456789");
    struct Row {
        const char* name;
        int begin, end, expectedBegin, expectedEnd;
    };
    const Row rows[] = {
        {"plain", 2, 5, 2, 5},           {"backward", 5, 2, 2, 5},
        {"all", 0, -1, 0, 10},           {"behind the end", 8, 99, 8, 10},
        {"both behind", 50, 60, 10, 10}, {"none, at the caret", -1, 3, 10, 10},
        {"to the end", 4, -1, 4, 10},    {"caret", 3, 3, 3, 3},
    };
    for (const Row& row : rows) {
        send(edit, EM_SETSEL, static_cast<WPARAM>(row.begin), row.end);
        EXPECT_EQ(selectionOf(edit), std::pair(row.expectedBegin, row.expectedEnd)) << row.name;
        EXPECT_EQ(send(edit, EM_GETSEL), MAKELRESULT(row.expectedBegin, row.expectedEnd)) << row.name;
    }
    EXPECT_TRUE(takeCodes().empty());
    send(edit, EM_SETLIMITTEXT, 0);
    SetWindowText(edit, std::string(70000, 'x').c_str());
    send(edit, EM_SETSEL, 0, -1);
    EXPECT_EQ(send(edit, EM_GETSEL), -1) << "doesn't fit into words";
    EXPECT_EQ(selectionOf(edit), std::pair(0, 70000));
}

TEST_F(EditTest, LinesAreFoundByNumberAndByCharacter) {
    const HWND edit = makeEdit(multi | ES_AUTOHSCROLL, threeLines);
    EXPECT_EQ(send(edit, EM_GETLINECOUNT), 4);
    struct Row {
        UINT message;
        int argument;
        LRESULT expected;
    };
    const Row rows[] = {
        {EM_LINEINDEX, 0, 0},    {EM_LINEINDEX, 1, 7},     {EM_LINEINDEX, 2, 20},    {EM_LINEINDEX, 3, 22},
        {EM_LINEINDEX, 4, -1},   {EM_LINEINDEX, -2, -1},   {EM_LINEFROMCHAR, 0, 0},  {EM_LINEFROMCHAR, 6, 0},
        {EM_LINEFROMCHAR, 7, 1}, {EM_LINEFROMCHAR, 20, 2}, {EM_LINEFROMCHAR, 99, 3}, {EM_LINELENGTH, 0, 5},
        {EM_LINELENGTH, 10, 11}, {EM_LINELENGTH, 20, 0},   {EM_LINELENGTH, 26, 4},   {EM_LINELENGTH, 99, 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(send(edit, row.message, static_cast<WPARAM>(row.argument)), row.expected)
            << "message " << row.message << ", " << row.argument;
    send(edit, EM_SETSEL, 9, 24);
    EXPECT_EQ(send(edit, EM_LINEINDEX, static_cast<WPARAM>(-1)), 22) << "the caret's line";
    EXPECT_EQ(send(edit, EM_LINEFROMCHAR, static_cast<WPARAM>(-1)), 1) << "where the selection begins";
    EXPECT_EQ(send(edit, EM_LINELENGTH, static_cast<WPARAM>(-1)), 2 + 2) << "what the selection leaves";
}

TEST_F(EditTest, LineIsCopiedWithoutAnEndMark) {
    const HWND edit = makeEdit(multi | ES_AUTOHSCROLL, threeLines);
    const auto get = [edit](int line, WORD size) {
        char buffer[32];
        std::fill(std::begin(buffer), std::end(buffer), '?');
        std::memcpy(buffer, &size, sizeof size);
        const LRESULT count =
            SendMessage(edit, EM_GETLINE, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(buffer));
        return std::pair(count, std::string(buffer, 13));
    };
    EXPECT_EQ(get(1, 32), std::pair(LRESULT{11}, std::string("second line??")));
    EXPECT_EQ(get(1, 6), std::pair(LRESULT{6}, std::string("second???????")));
    EXPECT_EQ(get(2, 32).first, 0);
    EXPECT_EQ(get(4, 32).first, 0);
    EXPECT_EQ(get(-1, 32).first, 0);
    EXPECT_EQ(send(edit, EM_GETLINE, 0, 0), 0);
    const HWND single = makeEdit(ES_AUTOHSCROLL, "only");
    char buffer[8] = {8, 0};
    EXPECT_EQ(send(single, EM_GETLINE, 77, reinterpret_cast<LPARAM>(buffer)), 4) << "the number doesn't count";
}

TEST_F(EditTest, PositionsAndPointsBelongTogether) {
    for (const DWORD align : {ES_LEFT, ES_CENTER, ES_RIGHT})
        for (const DWORD style : {ES_AUTOHSCROLL, ES_MULTILINE}) {
            const HWND edit = makeEdit(align | style, "aa");
            const int first = xOfPosition(edit, 0);
            const int second = xOfPosition(edit, 1);
            ASSERT_LT(first, second);
            EXPECT_EQ(send(edit, EM_POSFROMCHAR, 2), -1) << "behind the last character";
            const int middle = first + (second - first) / 2;
            for (int x = first; x <= second; ++x)
                EXPECT_EQ(LOWORD(static_cast<DWORD_PTR>(send(edit, EM_CHARFROMPOS, 0, MAKELPARAM(x, 1)))),
                          x < middle ? 0 : 1)
                    << align << ' ' << style << ' ' << x;
            EXPECT_EQ(send(edit, EM_CHARFROMPOS, 0, MAKELPARAM(199, 1)), 2) << "nearest to the end";
            EXPECT_EQ(send(edit, EM_CHARFROMPOS, 0, MAKELPARAM(201, 1)), -1) << "outside";
            EXPECT_EQ(send(edit, EM_CHARFROMPOS, 0, MAKELPARAM(1, -1)), -1) << "outside";
            DestroyWindow(edit);
        }
    const HWND many = makeEdit(multi | ES_AUTOHSCROLL, threeLines);
    const LRESULT place = send(many, EM_POSFROMCHAR, 22);
    EXPECT_EQ(send(many, EM_CHARFROMPOS, 0, place), MAKELRESULT(22, 3));
}

TEST_F(EditTest, SoftBreaksAreReadWhenAsked) {
    const HWND edit = makeEdit(multi, "word word word word", 40);
    const LRESULT lines = send(edit, EM_GETLINECOUNT);
    ASSERT_GT(lines, 1);
    EXPECT_EQ(textOf(edit), "word word word word");
    EXPECT_EQ(send(edit, EM_FMTLINES, TRUE), TRUE);
    EXPECT_EQ(GetWindowTextLength(edit), 19 + 3 * static_cast<int>(lines - 1));
    EXPECT_NE(textOf(edit).find("word \r\r\nword"), std::string::npos);
}

// ---- Undo ----------------------------------------------------------------------------------------------------------

TEST_F(EditTest, UndoTakesBackAndDoesAgain) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL, "abc");
    EXPECT_FALSE(send(edit, EM_CANUNDO));
    send(edit, EM_SETSEL, 0, 3);
    for (const char character : {'x', 'y', 'z'})
        send(edit, WM_CHAR, static_cast<WPARAM>(character), 1);
    EXPECT_EQ(textOf(edit), "xyz");
    EXPECT_TRUE(send(edit, EM_CANUNDO));
    takeCodes();
    EXPECT_TRUE(send(edit, EM_UNDO));
    EXPECT_EQ(textOf(edit), "abc") << "what was typed is one change";
    EXPECT_EQ(takeCodes(), (std::vector<int>{EN_UPDATE, EN_CHANGE}));
    EXPECT_EQ(selectionOf(edit), std::pair(0, 3));
    EXPECT_TRUE(send(edit, WM_UNDO));
    EXPECT_EQ(textOf(edit), "xyz");
    send(edit, EM_EMPTYUNDOBUFFER);
    EXPECT_FALSE(send(edit, EM_CANUNDO));
    EXPECT_TRUE(send(edit, EM_UNDO)) << "a single-line control always says so";
    EXPECT_EQ(textOf(edit), "xyz");
    send(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>("q"));
    EXPECT_FALSE(send(edit, EM_CANUNDO)) << "asked not to be undone";
    const HWND many = makeEdit(multi);
    EXPECT_FALSE(send(many, EM_UNDO));
}

TEST_F(EditTest, MemoryBlockCarriesTheTextBothWays) {
    const HWND edit = makeEdit(multi, "first");
    const auto block = reinterpret_cast<HLOCAL>(send(edit, EM_GETHANDLE));
    ASSERT_NE(block, nullptr);
    EXPECT_STREQ(static_cast<const char*>(LocalLock(block)), "first");
    LocalUnlock(block);
    const HLOCAL other = LocalAlloc(LMEM_MOVEABLE, 16);
    std::strcpy(static_cast<char*>(LocalLock(other)), "second");
    LocalUnlock(other);
    send(edit, EM_SETHANDLE, reinterpret_cast<WPARAM>(other));
    LocalFree(block);
    EXPECT_EQ(textOf(edit), "second");
    EXPECT_TRUE(takeCodes().empty());
    send(edit, EM_SETHANDLE, 0x1234);
    EXPECT_EQ(textOf(edit), "second") << "no block";
    EXPECT_EQ(send(makeEdit(ES_AUTOHSCROLL, "one"), EM_GETHANDLE), 0);
}

// ---- Rectangle, margins, tabs --------------------------------------------------------------------------------------

TEST_F(EditTest, MarginsNarrowTheTextSideways) {
    for (const DWORD style : {ES_AUTOHSCROLL, multi}) {
        const HWND edit = makeEdit(style);
        RECT before{};
        send(edit, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(5, 5));
        send(edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&before));
        send(edit, EM_SETMARGINS, EC_LEFTMARGIN, MAKELPARAM(15, 77));
        EXPECT_EQ(send(edit, EM_GETMARGINS), MAKELRESULT(15, 5));
        send(edit, EM_SETMARGINS, EC_RIGHTMARGIN, MAKELPARAM(77, 20));
        EXPECT_EQ(send(edit, EM_GETMARGINS), MAKELRESULT(15, 20));
        RECT after{};
        send(edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&after));
        EXPECT_EQ(after.left, before.left + 10);
        EXPECT_EQ(after.right, before.right - 15);
        EXPECT_EQ(after.top, before.top);
        EXPECT_EQ(after.bottom, before.bottom);
        DestroyWindow(edit);
    }
}

TEST_F(EditTest, RectangleOfManyLinesCanBeSet) {
    const HWND edit = makeEdit(multi, "word word word");
    EXPECT_EQ(send(edit, EM_GETLINECOUNT), 1);
    const int word = xOfPosition(edit, 5) - xOfPosition(edit, 0);
    const RECT narrow{20, 30, 20 + word + 2, 80};
    send(edit, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&narrow));
    EXPECT_EQ(send(edit, EM_GETLINECOUNT), 3);
    EXPECT_EQ(send(edit, EM_POSFROMCHAR, 0), MAKELRESULT(20, 30));
    const RECT wider{-10, 0, 2 * word, 0};
    send(edit, EM_SETRECTNP, 1, reinterpret_cast<LPARAM>(&wider));
    RECT rect{};
    send(edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rect));
    EXPECT_EQ(rect.left, 10);
    EXPECT_EQ(rect.right, narrow.right + 2 * word);
    EXPECT_EQ(send(edit, EM_GETLINECOUNT), 1);
    const RECT absurd{INT32_MIN, 50, INT32_MAX, -2000000000};
    send(edit, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&absurd));
    send(edit, EM_SETRECT, 0, 0);
    send(edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rect));
    EXPECT_EQ(rect.right, 200) << "back to the client area";
    const HWND single = makeEdit(ES_AUTOHSCROLL);
    RECT before{};
    send(single, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&before));
    send(single, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&narrow));
    send(single, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rect));
    EXPECT_TRUE(EqualRect(&rect, &before)) << "one line stays where it is";
}

TEST_F(EditTest, TabStopsAreQuartersOfTheAverageWidth) {
    const HWND edit = makeEdit(multi | ES_AUTOHSCROLL, "\tx");
    const HDC dc = GetDC(edit);
    TEXTMETRIC metrics{};
    GetTextMetrics(dc, &metrics);
    ReleaseDC(edit, dc);
    const int average = metrics.tmAveCharWidth;
    const int begin = xOfPosition(edit, 0);
    EXPECT_EQ(xOfPosition(edit, 1) - begin, 8 * average);
    const int stops[] = {16, 64};
    EXPECT_TRUE(send(edit, EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(stops)));
    EXPECT_EQ(xOfPosition(edit, 1) - begin, 4 * average);
    SetWindowText(edit, "\t\tx");
    EXPECT_TRUE(send(edit, EM_SETTABSTOPS, 2, reinterpret_cast<LPARAM>(stops)));
    EXPECT_EQ(xOfPosition(edit, 2) - begin, 16 * average);
    const int absurd[] = {INT32_MAX, INT32_MIN, -5};
    EXPECT_TRUE(send(edit, EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(absurd)));
    EXPECT_TRUE(send(edit, EM_SETTABSTOPS, 3, reinterpret_cast<LPARAM>(absurd)));
    EXPECT_TRUE(send(edit, EM_SETTABSTOPS, 0, 0));
    EXPECT_FALSE(send(edit, EM_SETTABSTOPS, 3, 0));
    EXPECT_FALSE(send(makeEdit(ES_AUTOHSCROLL), EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(stops)));
}

// ---- Styles --------------------------------------------------------------------------------------------------------

TEST_F(EditTest, CaseStylesFoldAllText) {
    const HWND upper = makeEdit(ES_AUTOHSCROLL | ES_UPPERCASE, "ab\xE4");
    EXPECT_EQ(textOf(upper), "AB\xC4");
    send(upper, EM_SETSEL, 3, 3);
    send(upper, WM_CHAR, 'x', 1);
    replace(upper, "yZ");
    EXPECT_EQ(textOf(upper), "AB\xC4XYZ");
    const HWND lower = makeEdit(ES_AUTOHSCROLL | ES_LOWERCASE, "AB\xC4");
    EXPECT_EQ(textOf(lower), "ab\xE4");
}

TEST_F(EditTest, PasswordShowsStarsAndIsNeverCopied) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL | ES_PASSWORD, "iiiiWWWW");
    EXPECT_EQ(send(edit, EM_GETPASSWORDCHAR), '*');
    EXPECT_EQ(xOfPosition(edit, 4) - xOfPosition(edit, 0),
              xOfPosition(edit, 7) - xOfPosition(edit, 4) + xOfPosition(edit, 1) - xOfPosition(edit, 0))
        << "all characters look alike";
    OpenClipboard(owner);
    EmptyClipboard();
    CloseClipboard();
    send(edit, EM_SETSEL, 0, -1);
    send(edit, WM_COPY);
    send(edit, WM_CUT);
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_TEXT));
    EXPECT_EQ(textOf(edit), "iiiiWWWW");
    EXPECT_TRUE(send(edit, EM_SETPASSWORDCHAR, 0));
    EXPECT_EQ(send(edit, EM_GETPASSWORDCHAR), 0);
    EXPECT_LT(xOfPosition(edit, 4) - xOfPosition(edit, 0), xOfPosition(edit, 7) - xOfPosition(edit, 4));
    EXPECT_EQ(send(makeEdit(multi | ES_PASSWORD), EM_GETPASSWORDCHAR), 0) << "many lines have no password";
}

TEST_F(EditTest, ReadOnlyIsSetByMessageAndShowsInTheColours) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL, "abc");
    EXPECT_TRUE(send(edit, EM_SETREADONLY, TRUE));
    EXPECT_TRUE((GetWindowLong(edit, GWL_STYLE) & static_cast<LONG>(ES_READONLY)) != 0);
    recorder.clear();
    settle();
    EXPECT_EQ(recorder.count(WM_CTLCOLORSTATIC), 1);
    EXPECT_EQ(recorder.count(WM_CTLCOLOREDIT), 0);
    send(edit, WM_CHAR, 'x', 1);
    send(edit, WM_CHAR, VK_BACK, 1);
    send(edit, WM_KEYDOWN, VK_DELETE, 1);
    send(edit, EM_SETSEL, 0, -1);
    send(edit, WM_CLEAR);
    send(edit, WM_CUT);
    send(edit, WM_PASTE);
    EXPECT_EQ(textOf(edit), "abc");
    send(edit, EM_SETREADONLY, FALSE);
    recorder.clear();
    settle();
    EXPECT_EQ(recorder.count(WM_CTLCOLOREDIT), 1);
}

TEST_F(EditTest, DialogsAreToldWhichKeysItWants) {
    MSG message{};
    const auto asked = reinterpret_cast<LPARAM>(&message);
    const HWND single = makeEdit(ES_AUTOHSCROLL);
    const HWND many = makeEdit(multi);
    for (const UINT key : {VK_RETURN, VK_ESCAPE, VK_TAB, VK_LEFT, static_cast<int>('A')}) {
        message.message = WM_KEYDOWN;
        message.wParam = key;
        EXPECT_EQ(send(single, WM_GETDLGCODE, key, asked), 0x89);
        EXPECT_EQ(send(many, WM_GETDLGCODE, key, asked), 0x8D);
    }
    EXPECT_EQ(send(single, WM_GETDLGCODE), 0x89);
}

// ---- Clipboard -----------------------------------------------------------------------------------------------------

TEST_F(EditTest, ClipboardCarriesTheSelection) {
    const HWND source = makeEdit(multi | ES_AUTOHSCROLL, "one\r\ntwo three");
    const HWND target = makeEdit(ES_AUTOHSCROLL, "<>");
    send(source, EM_SETSEL, 0, 8);
    send(source, WM_COPY);
    EXPECT_EQ(textOf(source), "one\r\ntwo three");
    send(target, EM_SETSEL, 1, 1);
    send(target, WM_PASTE);
    EXPECT_EQ(textOf(target), "<one>") << "a single line takes the first line";
    send(source, EM_SETSEL, 8, 14);
    takeCodes();
    send(source, WM_CUT);
    EXPECT_EQ(textOf(source), "one\r\ntwo");
    EXPECT_EQ(takeCodes(), (std::vector<int>{EN_UPDATE, EN_CHANGE}));
    send(target, EM_SETSEL, 0, -1);
    send(target, WM_PASTE);
    EXPECT_EQ(textOf(target), " three");
    send(target, EM_SETSEL, 0, 1);
    send(target, WM_CLEAR);
    EXPECT_EQ(textOf(target), "three");
    send(target, WM_CLEAR);
    EXPECT_EQ(textOf(target), "three") << "nothing is selected";
}

// ---- Scrolling -----------------------------------------------------------------------------------------------------

std::string manyLines(int count) {
    std::string text;
    for (int line = 0; line < count; ++line)
        text += "line " + std::to_string(line) + (line + 1 < count ? "\r\n" : "");
    return text;
}

TEST_F(EditTest, ScrollingByMessageStopsAtTheEnds) {
    const HWND edit = makeEdit(multi | ES_AUTOHSCROLL, manyLines(50).c_str());
    RECT rect{};
    send(edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rect));
    const int height = GET_Y_LPARAM(send(edit, EM_POSFROMCHAR, static_cast<WPARAM>(send(edit, EM_LINEINDEX, 1)))) -
                       GET_Y_LPARAM(send(edit, EM_POSFROMCHAR, 0));
    const int page = (rect.bottom - rect.top) / height;
    EXPECT_EQ(send(edit, EM_SCROLL, SB_LINEUP), 0) << "nothing above";
    EXPECT_EQ(send(edit, EM_SCROLL, SB_LINEDOWN), MAKELRESULT(1, TRUE));
    EXPECT_EQ(send(edit, EM_SCROLL, SB_PAGEDOWN), MAKELRESULT(page, TRUE));
    EXPECT_EQ(send(edit, EM_GETFIRSTVISIBLELINE), page + 1);
    EXPECT_TRUE(send(edit, EM_LINESCROLL, 0, 1000000));
    EXPECT_EQ(send(edit, EM_GETFIRSTVISIBLELINE), 50 - page);
    EXPECT_TRUE(send(edit, EM_LINESCROLL, 0, INT32_MIN));
    EXPECT_EQ(send(edit, EM_GETFIRSTVISIBLELINE), 0);
    send(edit, EM_SETSEL, static_cast<WPARAM>(GetWindowTextLength(edit)), -1);
    EXPECT_EQ(send(edit, EM_GETFIRSTVISIBLELINE), 0) << "setting the selection doesn't scroll";
    send(edit, EM_SCROLLCARET);
    EXPECT_EQ(send(edit, EM_GETFIRSTVISIBLELINE), 50 - page);
    const HWND single = makeEdit(ES_AUTOHSCROLL, "text");
    EXPECT_EQ(send(single, EM_SCROLL, SB_LINEDOWN), 0);
    EXPECT_FALSE(send(single, EM_LINESCROLL, 0, 3));
}

TEST_F(EditTest, ScrollBarShowsTheLinesAndMovesThem) {
    const HWND edit = makeEdit(multi | ES_AUTOHSCROLL | WS_VSCROLL, manyLines(50).c_str());
    SCROLLINFO info{sizeof(SCROLLINFO), SIF_ALL, 0, 0, 0, 0, 0};
    ASSERT_TRUE(GetScrollInfo(edit, SB_VERT, &info));
    EXPECT_EQ(info.nMax, 49);
    EXPECT_GT(info.nPage, 1U);
    send(edit, WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 7));
    EXPECT_EQ(send(edit, EM_GETFIRSTVISIBLELINE), 7);
    EXPECT_EQ(send(edit, EM_GETTHUMB), 7);
    EXPECT_EQ(takeCodes(), std::vector<int>{EN_VSCROLL});
    user.moveTo(left + 50, top + 50);
    user.turnWheel(-120);
    settle();
    SetFocus(edit);
    user.turnWheel(-120);
    settle();
    EXPECT_GE(send(edit, EM_GETFIRSTVISIBLELINE), 10);
    SetWindowText(edit, "short");
    EXPECT_EQ(send(edit, EM_GETFIRSTVISIBLELINE), 0);
    EXPECT_TRUE((GetWindowLong(edit, GWL_STYLE) & static_cast<LONG>(WS_VSCROLL)) != 0) << "disabled, not hidden";
}

TEST_F(EditTest, LongLineFollowsTheCaret) {
    const HWND edit = makeEdit(ES_AUTOHSCROLL, "", 60, 20);
    SetFocus(edit);
    user.type("THE QUICK BROWN FOX");
    settle();
    EXPECT_EQ(textOf(edit), "THE QUICK BROWN FOX");
    EXPECT_GT(send(edit, EM_GETFIRSTVISIBLELINE), 0) << "the first visible character";
    POINT caret{};
    GetCaretPos(&caret);
    EXPECT_GE(caret.x, 0);
    EXPECT_LT(caret.x, 60);
    user.key(VK_HOME);
    settle();
    EXPECT_EQ(send(edit, EM_GETFIRSTVISIBLELINE), 0);
}

TEST_F(EditTest, LargeTextIsEditedQuickly) {
    const HWND edit = makeEdit(multi | ES_AUTOHSCROLL | WS_VSCROLL);
    send(edit, EM_SETLIMITTEXT, 0);
    SetWindowText(edit, manyLines(100000).c_str());
    EXPECT_EQ(send(edit, EM_GETLINECOUNT), 100000);
    send(edit, EM_LINESCROLL, 0, 50000);
    EXPECT_EQ(send(edit, EM_GETFIRSTVISIBLELINE), 50000);
    send(edit, EM_SETSEL, 5, 5);
    replace(edit, "x\r\ny");
    EXPECT_EQ(send(edit, EM_GETLINECOUNT), 100001);
    EXPECT_EQ(send(edit, EM_LINEFROMCHAR, 8), 1);
}

} // namespace
} // namespace vndk::win32
