// The clipboard, shared with the screen.
#include "support/desktop_fixture.h"
#include "win32/error.h"
#include "win32/gdi.h"
#include "win32/memory.h"

#include <cstring>
#include <string>

namespace {

using namespace vndk::test;

class ClipboardTest : public DesktopFixture {
protected:
    static HANDLE block(const std::string& bytes) {
        const HANDLE data = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
        std::memcpy(GlobalLock(data), bytes.data(), bytes.size());
        GlobalUnlock(data);
        return data;
    }
    static std::string content(UINT format) {
        const HANDLE data = GetClipboardData(format);
        const auto* bytes = static_cast<const char*>(GlobalLock(data));
        std::string text = bytes != nullptr ? bytes : "none";
        GlobalUnlock(data);
        return text;
    }
};

TEST_F(ClipboardTest, TextGoesOutAndComesBackThroughTheScreen) {
    ASSERT_TRUE(OpenClipboard(nullptr));
    ASSERT_TRUE(EmptyClipboard());
    const HANDLE data = block(std::string("Gr\xFC\xDF"
                                          "e \x80\r\nzwei\0rest",
                                          17));
    EXPECT_EQ(SetClipboardData(CF_TEXT, data), data);
    EXPECT_TRUE(CloseClipboard());
    EXPECT_EQ(screen.clipboardText(), "Gr\u00FC\u00DFe \u20AC\nzwei");
    EXPECT_TRUE(OpenClipboard(nullptr));
    EXPECT_EQ(GetClipboardData(CF_TEXT), data) << "its own block, not a copy";
    CloseClipboard();

    screen.setClipboardText("fremd \u00E4 \u0416\nb");
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_TEXT));
    OpenClipboard(nullptr);
    EXPECT_EQ(content(CF_TEXT), "fremd \xE4 ?\r\nb");
    EXPECT_EQ(GlobalSize(data), 0u) << "the old one is gone";
    EmptyClipboard();
    EXPECT_EQ(screen.clipboardText(), "");
    EXPECT_EQ(GetClipboardData(CF_TEXT), nullptr);
    CloseClipboard();
}

TEST_F(ClipboardTest, OtherFormsOfTextAreMadeWhenAsked) {
    OpenClipboard(nullptr);
    EmptyClipboard();
    SetClipboardData(CF_TEXT, block(std::string("\x80"
                                                "a",
                                                3)));
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_OEMTEXT));
    const auto* wide = static_cast<const WCHAR*>(GlobalLock(GetClipboardData(CF_UNICODETEXT)));
    ASSERT_NE(wide, nullptr);
    EXPECT_EQ(std::u16string(wide), u"\u20ACa");
    EXPECT_EQ(content(CF_OEMTEXT), "\x80"
                                   "a");
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_BITMAP));
    CloseClipboard();
}

TEST_F(ClipboardTest, ProgramsKeepFormatsOfTheirOwn) {
    const UINT format = RegisterClipboardFormat("Vondrake Block");
    EXPECT_GE(format, 0xC000u);
    EXPECT_EQ(RegisterClipboardFormat("VONDRAKE BLOCK"), format);
    EXPECT_NE(RegisterClipboardFormat("another"), format);
    OpenClipboard(nullptr);
    EmptyClipboard();
    SetClipboardData(format, block(std::string("own", 4)));
    const HBITMAP bitmap = CreateBitmap(2, 2, 1, 1, nullptr);
    EXPECT_EQ(SetClipboardData(CF_BITMAP, bitmap), bitmap);
    CloseClipboard();
    OpenClipboard(nullptr);
    EXPECT_EQ(content(format), "own");
    EXPECT_EQ(GetClipboardData(CF_BITMAP), bitmap);
    SetClipboardData(format, block(std::string("new", 4)));
    EXPECT_EQ(content(format), "new");
    EmptyClipboard();
    EXPECT_EQ(GetObjectType(bitmap), 0u) << "it belonged to the clipboard";
    CloseClipboard();
}

TEST_F(ClipboardTest, ItHasToBeOpenAndIsOpenToOneOnly) {
    EXPECT_FALSE(EmptyClipboard());
    EXPECT_EQ(GetLastError(), ERROR_CLIPBOARD_NOT_OPEN);
    EXPECT_FALSE(CloseClipboard());
    EXPECT_EQ(GetClipboardData(CF_TEXT), nullptr);
    const HANDLE data = block("x");
    EXPECT_EQ(SetClipboardData(CF_TEXT, data), nullptr);
    EXPECT_EQ(GlobalSize(data), 1u) << "still the caller's";
    const HWND window = CreateWindow("Static", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    ASSERT_TRUE(OpenClipboard(window));
    EXPECT_FALSE(OpenClipboard(nullptr));
    EXPECT_TRUE(OpenClipboard(window));
    EXPECT_EQ(SetClipboardData(0, data), nullptr);
    EXPECT_EQ(SetClipboardData(CF_TEXT, reinterpret_cast<HANDLE>(UINT_PTR{0x1234})), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    DestroyWindow(window);
    EXPECT_TRUE(OpenClipboard(nullptr)) << "it closed with the window that had it open";
    CloseClipboard();
    EXPECT_EQ(RegisterClipboardFormat(nullptr), 0u);
    EXPECT_EQ(RegisterClipboardFormat(""), 0u);
    GlobalFree(data);
}

} // namespace
