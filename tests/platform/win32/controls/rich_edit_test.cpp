// The rich edit control through its messages, keys and pixels.
#include "control_fixture.h"

#include "win32/richedit.h"
#include "win32/scrollbar.h"

#include <cstring>

namespace vndk::test {
namespace {

struct Source {
    std::string bytes;
    std::size_t at = 0;
    LONG piece = 7; // less than a word of rich text, so that pieces break everywhere

    static DWORD CALLBACK read(DWORD_PTR cookie, LPBYTE buffer, LONG count, LONG* done) {
        auto& source = *reinterpret_cast<Source*>(cookie);
        const std::size_t rest = source.bytes.size() - source.at;
        *done = static_cast<LONG>(std::min<std::size_t>(rest, static_cast<std::size_t>(std::min(count, source.piece))));
        std::memcpy(buffer, source.bytes.data() + source.at, static_cast<std::size_t>(*done));
        source.at += static_cast<std::size_t>(*done);
        return 0;
    }
};

class RichEditTest : public ControlFixture {
protected:
    HWND makeEdit(DWORD style = ES_MULTILINE | WS_VSCROLL, int height = 100) {
        edit = make(RICHEDIT_CLASS10A, style, 10, 10, 300, height);
        SetFocus(edit);
        settle();
        return edit;
    }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessage(edit, message, wParam, lParam);
    }
    LRESULT stream(const std::string& bytes, WPARAM format, DWORD* error = nullptr) {
        Source source{bytes};
        EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&source), 99, &Source::read};
        const LRESULT result = send(EM_STREAMIN, format, reinterpret_cast<LPARAM>(&stream));
        if (error != nullptr)
            *error = stream.dwError;
        return result;
    }
    void setLines(int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += (i > 0 ? "\r\nline " : "line ") + std::to_string(i);
        SetWindowText(edit, text.c_str());
    }
    POINT placeOf(int position) {
        POINT point{};
        send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&point), position);
        return point;
    }

    HWND edit = nullptr;
};

TEST_F(RichEditTest, StreamsRichTextIn) {
    makeEdit();
    const struct {
        const char* bytes;
        LRESULT result;
        const char* text;
        DWORD error;
    } rows[] = {{"{\\rtf1 abcdefghijkl}", 12, "abcdefghijkl", 0},
                {"{\\rtf1 text\\par\\par}", 5, "text\r\n", 0},
                {"not rich text", 0, "", static_cast<DWORD>(-16)}};
    for (const auto& row : rows) {
        DWORD error = 0;
        EXPECT_EQ(stream(row.bytes, SF_RTF, &error), row.result) << row.bytes;
        EXPECT_EQ(textOf(edit), row.text) << row.bytes;
        EXPECT_EQ(error, row.error) << row.bytes;
    }
    EXPECT_EQ(stream("plain\r\ntext", SF_TEXT), 10) << "a line's end is one character";
}

TEST_F(RichEditTest, CountsEachLineBreakAsOneCharacter) {
    makeEdit();
    SetWindowText(edit, "one\rthree\nfive5\r\nx");
    EXPECT_EQ(send(EM_GETLINECOUNT), 4);
    const struct {
        WPARAM position;
        LRESULT length;
    } rows[] = {{0, 3}, {3, 3}, {4, 5}, {9, 5}, {10, 5}, {16, 1}};
    for (const auto& row : rows)
        EXPECT_EQ(send(EM_LINELENGTH, row.position), row.length) << row.position;
    EXPECT_EQ(send(EM_LINEINDEX, 2), 10);
    EXPECT_EQ(send(EM_LINEINDEX, 9), -1);
    send(EM_SETSEL, 0, -1);
    send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>("a\n\nb"));
    EXPECT_EQ(send(EM_GETLINECOUNT), 3);
}

TEST_F(RichEditTest, PlacesCharactersInTheClientArea) {
    makeEdit();
    setLines(30);
    EXPECT_EQ(placeOf(0).x, 1);
    EXPECT_EQ(placeOf(0).y, 0);
    const int lineHeight = placeOf(static_cast<int>(send(EM_LINEINDEX, 1))).y;
    EXPECT_GT(lineHeight, 5);
    for (const int line : {2, 5, 9})
        EXPECT_EQ(placeOf(static_cast<int>(send(EM_LINEINDEX, static_cast<WPARAM>(line)))).y, line * lineHeight);
    send(EM_LINESCROLL, 0, 1);
    EXPECT_EQ(placeOf(0).y, -lineHeight);
    EXPECT_EQ(send(EM_GETFIRSTVISIBLELINE), 1);
}

TEST_F(RichEditTest, FollowsItsCaret) {
    makeEdit();
    setLines(60);
    send(EM_SETSEL, 400, 400);
    const int height = clientRect(edit).bottom;
    EXPECT_GE(placeOf(400).y, 0);
    EXPECT_LT(placeOf(400).y, height);
    send(EM_LINESCROLL, 0, -100);
    EXPECT_EQ(send(EM_GETFIRSTVISIBLELINE), 0);
    send(EM_SCROLLCARET);
    EXPECT_LT(placeOf(400).y, height);
    EXPECT_GT(send(EM_GETFIRSTVISIBLELINE), 0);
    send(EM_SETSEL, 10, 10);
    EXPECT_GE(placeOf(10).y, 0) << "upwards, too";
    send(EM_LINESCROLL, 0, 100);
    EXPECT_LT(placeOf(10).y, 0);
    send(EM_SCROLLCARET);
    EXPECT_GE(placeOf(10).y, 0);
}

TEST_F(RichEditTest, TakesNoBreakInASingleLine) {
    makeEdit(0, 20);
    user.type("AB");
    user.key(VK_RETURN, '\r');
    user.type("C");
    settle();
    EXPECT_EQ(textOf(edit), "ABC");
}

TEST_F(RichEditTest, IsEditedCopiedAndUndoneByKeys) {
    makeEdit();
    user.type("HALLO");
    user.keyWith(VK_CONTROL, 'A');
    user.keyWith(VK_CONTROL, 'C');
    user.key(VK_END);
    user.keyWith(VK_CONTROL, 'V');
    settle();
    EXPECT_EQ(textOf(edit), "HALLOHALLO");
    user.keyWith(VK_CONTROL, 'Z');
    settle();
    EXPECT_EQ(textOf(edit), "HALLO");
    send(WM_CHAR, 22, 0);
    EXPECT_EQ(textOf(edit), "HALLO") << "the control character alone pastes nothing";
    user.key(VK_BACK, '\b');
    user.key(VK_HOME);
    user.key(VK_DELETE);
    settle();
    EXPECT_EQ(textOf(edit), "ALL");
}

TEST_F(RichEditTest, CanOnlyBeReadWhenItIsReadOnly) {
    makeEdit(ES_MULTILINE | ES_READONLY | WS_VSCROLL);
    setLines(40);
    const std::string before = textOf(edit);
    user.type("X");
    user.key(VK_DELETE);
    user.key(VK_RETURN, '\r');
    settle();
    send(WM_PASTE);
    EXPECT_EQ(textOf(edit), before);
    user.key(VK_NEXT);
    settle();
    EXPECT_GT(send(EM_GETFIRSTVISIBLELINE), 0) << "Page Down moves the view";
    user.keyWith(VK_CONTROL, VK_HOME);
    settle();
    EXPECT_EQ(send(EM_GETFIRSTVISIBLELINE), 0);
    user.moveTo(left + 50, top + 50);
    user.turnWheel(-120);
    settle();
    EXPECT_GT(send(EM_GETFIRSTVISIBLELINE), 0) << "so does the wheel";
}

TEST_F(RichEditTest, WrapsAtItsEdgeAndShowsColours) {
    makeEdit(ES_MULTILINE | ES_READONLY);
    std::string words;
    for (int i = 0; i < 40; ++i)
        words += "word ";
    stream("{\\rtf1{\\colortbl;\\red200\\green0\\blue0;}\\cf1\\fs40\\b " + words + "}", SF_RTF);
    EXPECT_GT(send(EM_GETLINECOUNT), 3);
    settle();
    int red = 0;
    for (int y = 0; y < 90; ++y)
        for (int x = 0; x < 290; ++x)
            red += pixel(left + 10 + x, top + 10 + y) == 0xC80000;
    EXPECT_GT(red, 200);
}

TEST_F(RichEditTest, GivesAndTakesFormats) {
    makeEdit();
    SetWindowText(edit, "abcdef");
    send(EM_SETSEL, 2, 4);
    CHARFORMAT format{};
    format.cbSize = sizeof format;
    format.dwMask = CFM_BOLD | CFM_COLOR | CFM_SIZE;
    format.dwEffects = CFE_BOLD;
    format.crTextColor = RGB(1, 2, 3);
    format.yHeight = 300;
    EXPECT_NE(send(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format)), 0);
    CHARFORMAT got{};
    got.cbSize = sizeof got;
    send(EM_GETCHARFORMAT, TRUE, reinterpret_cast<LPARAM>(&got));
    EXPECT_EQ(got.dwEffects & CFE_BOLD, CFE_BOLD);
    EXPECT_EQ(got.crTextColor, RGB(1, 2, 3));
    EXPECT_EQ(got.yHeight, 300);
    send(EM_SETSEL, 0, 6);
    send(EM_GETCHARFORMAT, TRUE, reinterpret_cast<LPARAM>(&got));
    EXPECT_EQ(got.dwMask & (CFM_BOLD | CFM_COLOR | CFM_SIZE), 0U) << "the selection doesn't share these";
    for (const UINT message : {EM_SETCHARFORMAT, EM_GETCHARFORMAT, EM_SETPARAFORMAT, EM_GETPARAFORMAT, EM_STREAMIN,
                               EM_STREAMOUT, EM_EXSETSEL, EM_GETTEXTRANGE, EM_FINDTEXT, EM_GETLINE, EM_GETRECT})
        send(message, 0, 0);
}

} // namespace
} // namespace vndk::test
