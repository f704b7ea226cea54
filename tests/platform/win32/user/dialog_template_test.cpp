// What templates say, and that damaged ones cost nothing but their dialog.
#include "dialog_fixture.h"
#include "user/dialog_template.h"
#include "win32/dialog_init.h"
#include "win32/fonts.h"
#include "win32/gdi.h"
#include "win32/resources.h"

#include <cstring>

namespace {

using namespace vndk::test;
using namespace vndk::win32;

class DialogTemplateTest : public DialogFixture {
protected:
    static DialogBuilder sample(DialogForm form) {
        DialogBuilder builder(WS_POPUP | WS_CAPTION, form);
        builder.caption("Sample").font(8, "MS Sans Serif").place(10, 20).size(120, 80);
        builder.control("Button", "&OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK);
        builder.control(0x81U, "text", WS_TABSTOP | WS_BORDER, 100).data({1, 2, 3, 4});
        builder.control(0x82U, 7U, 0, 101);
        return builder;
    }
};

TEST_F(DialogTemplateTest, BothFormsSayTheSame) {
    for (const DialogForm form : {DialogForm::plain, DialogForm::extended}) {
        SCOPED_TRACE(form == DialogForm::plain ? "DIALOG" : "DIALOGEX");
        const auto made = sample(form).bytes();
        const auto dialog = parseDialogTemplate(made);
        ASSERT_TRUE(dialog);
        EXPECT_EQ(dialog->caption, "Sample");
        ASSERT_TRUE(dialog->font);
        EXPECT_EQ(dialog->font->points, 8);
        EXPECT_EQ(dialog->font->face, "MS Sans Serif");
        EXPECT_EQ(dialog->units.right, 120);
        ASSERT_EQ(dialog->controls.size(), 3U);
        EXPECT_EQ(dialog->controls[0].className, "Button");
        EXPECT_EQ(dialog->controls[1].className, "Edit");
        EXPECT_EQ(dialog->controls[1].text.text, "text");
        EXPECT_EQ(dialog->controls[2].className, "Static");
        EXPECT_EQ(dialog->controls[2].text.number, 7);
        EXPECT_EQ(dialog->controls[0].creationData, nullptr);
        ASSERT_NE(dialog->controls[1].creationData, nullptr);
        EXPECT_EQ(dialog->controls[1].creationData[2], 1) << "the size comes first";
    }
}

TEST_F(DialogTemplateTest, EveryCutTemplateIsRefused) {
    for (const DialogForm form : {DialogForm::plain, DialogForm::extended}) {
        const auto whole = sample(form).bytes();
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::vector<std::uint8_t> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            SetLastError(ERROR_SUCCESS);
            EXPECT_EQ(createDialog(nullptr, cut, nullptr, nullptr, 0), nullptr) << "length " << length;
            EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA) << "length " << length;
        }
    }
}

TEST_F(DialogTemplateTest, ResourceEndsWhereItsEntryEnds) {
    auto whole = sample(DialogForm::extended).bytes();
    whole.resize(whole.size() - 6);
    const auto compiled = compiledResource(5, 12, whole);
    HINSTANCE instance = nullptr;
    ASSERT_TRUE(registerInstance(compiled, instance).ok());
    const void* start = LockResource(LoadResource(instance, FindResourceA(instance, MAKEINTRESOURCE(12), RT_DIALOG)));
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(CreateDialog(instance, MAKEINTRESOURCE(12), nullptr, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
    EXPECT_EQ(CreateDialogIndirect(instance, static_cast<const DLGTEMPLATE*>(start), nullptr, nullptr), nullptr);
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(CreateDialog(instance, MAKEINTRESOURCE(13), nullptr, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_RESOURCE_NAME_NOT_FOUND);
    unregisterInstance(instance);
}

TEST_F(DialogTemplateTest, MissingClassFailsTheDialogUnlessItMayBeLeftOut) {
    const auto build = [](DWORD style) {
        return DialogBuilder(WS_POPUP | style)
            .control("Button", "one", 0, 1)
            .control("NoSuchClass", "", 0, 2)
            .control(0x90U, "", 0, 3)
            .control("Button", "four", 0, 4);
    };
    EXPECT_EQ(create(build(0)), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_CANNOT_FIND_WND_CLASS);
    EXPECT_EQ(GetTopWindow(nullptr), nullptr) << "nothing of it is left";

    const HWND dialog = create(build(DS_NOFAILCREATE));
    ASSERT_NE(dialog, nullptr);
    EXPECT_NE(GetDlgItem(dialog, 1), nullptr);
    EXPECT_EQ(GetDlgItem(dialog, 2), nullptr);
    EXPECT_EQ(GetDlgItem(dialog, 3), nullptr);
    EXPECT_NE(GetDlgItem(dialog, 4), nullptr);
}

TEST_F(DialogTemplateTest, IdsHaveThirtyTwoBitsInTheExtendedForm) {
    const HWND dialog = create(DialogBuilder(WS_POPUP).control("Button", "", 0, 0x12345).control("Static", "", 0, -1));
    EXPECT_NE(GetDlgItem(dialog, 0x12345), nullptr);
    EXPECT_EQ(GetDlgItem(dialog, 0x2345), nullptr);
    EXPECT_NE(GetDlgItem(dialog, IDC_STATIC), nullptr);
}

TEST_F(DialogTemplateTest, ControlGetsItsCreationDataWithTheSizeInFront) {
    static std::vector<BYTE> seen;
    WNDCLASSA curious{};
    curious.lpszClassName = "Curious";
    curious.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        if (message == WM_CREATE) {
            const auto* data = static_cast<const BYTE*>(reinterpret_cast<CREATESTRUCT*>(lParam)->lpCreateParams);
            seen.assign(data, data + 5);
        }
        return DefWindowProc(window, message, wParam, lParam);
    };
    RegisterClass(&curious);
    create(DialogBuilder(WS_POPUP).control("Curious", "", 0, 1).data({7, 8, 9}));
    EXPECT_EQ(seen, (std::vector<BYTE>{3, 0, 7, 8, 9}));
    create(DialogBuilder(WS_POPUP, DialogForm::plain).control("Curious", "", 0, 1).data({7, 8, 9}));
    EXPECT_EQ(seen, (std::vector<BYTE>{5, 0, 7, 8, 9})) << "the old form counts the size itself";
}

TEST_F(DialogTemplateTest, UnitsAreAFourthOfTheWidthAndAnEighthOfTheHeightOfTheFont) {
    const HWND dialog = create(
        DialogBuilder(WS_POPUP)
            .font(8, "MS Sans Serif")
            .size(100, 50)
            .add({.className = "Static", .text = "", .style = WS_VISIBLE, .id = 5, .size = {30, 9}, .at = {7, 3}}));
    const auto font = reinterpret_cast<HFONT>(SendMessage(dialog, WM_GETFONT, 0, 0));
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ former = SelectObject(dc, font);
    TEXTMETRIC metrics{};
    GetTextMetrics(dc, &metrics);
    SIZE letters{};
    GetTextExtentPoint32(dc, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", 52, &letters);
    SelectObject(dc, former);
    DeleteDC(dc);
    const int width = (letters.cx / 26 + 1) / 2;
    const int height = metrics.tmHeight;
    EXPECT_EQ(width, 6);
    EXPECT_EQ(height, 13);

    RECT rect{4, 8, 7, 3};
    ASSERT_TRUE(MapDialogRect(dialog, &rect));
    EXPECT_EQ(rect.left, width);
    EXPECT_EQ(rect.top, height);
    EXPECT_EQ(rect.right, MulDiv(7, width, 4)) << "rounded, not cut";
    EXPECT_EQ(rect.bottom, MulDiv(3, height, 8));

    EXPECT_EQ(clientRect(dialog).right, MulDiv(100, width, 4));
    EXPECT_EQ(clientRect(dialog).bottom, MulDiv(50, height, 8));
    const RECT control = windowRect(GetDlgItem(dialog, 5));
    const POINT origin = onScreen(dialog, 0, 0);
    EXPECT_EQ(control.left - origin.x, MulDiv(7, width, 4));
    EXPECT_EQ(control.right - control.left, MulDiv(30, width, 4));
    EXPECT_EQ(control.bottom - control.top, MulDiv(9, height, 8));
}

TEST_F(DialogTemplateTest, OnlyDialogsMapUnits) {
    RECT rect{4, 8, 0, 0};
    EXPECT_FALSE(MapDialogRect(createOwner(), &rect));
    EXPECT_FALSE(MapDialogRect(nullptr, &rect));
    EXPECT_FALSE(MapDialogRect(create(DialogBuilder()), nullptr));
}

TEST_F(DialogTemplateTest, ControlsWithBorderLookSunken) {
    const HWND dialog = create(DialogBuilder(WS_POPUP)
                                   .control("Edit", "", WS_BORDER, 1)
                                   .control("Static", "", WS_BORDER, 2)
                                   .control("Edit", "", 0, 3));
    EXPECT_TRUE(GetWindowLong(GetDlgItem(dialog, 1), GWL_EXSTYLE) & static_cast<LONG>(WS_EX_CLIENTEDGE));
    EXPECT_FALSE(GetWindowLong(GetDlgItem(dialog, 2), GWL_EXSTYLE) & static_cast<LONG>(WS_EX_CLIENTEDGE));
    EXPECT_FALSE(GetWindowLong(GetDlgItem(dialog, 3), GWL_EXSTYLE) & static_cast<LONG>(WS_EX_CLIENTEDGE));
}

// ---- Where dialogs come up -----------------------------------------------------------------------------------------

TEST_F(DialogTemplateTest, PlaceCountsFromTheOwnersClientArea) {
    const HWND owner = createOwner();
    const POINT origin = onScreen(owner, 0, 0);
    RECT units{20, 16, 0, 0};
    const HWND relative = create(DialogBuilder(WS_POPUP).place(20, 16), owner);
    MapDialogRect(relative, &units);
    EXPECT_EQ(windowRect(relative).left, origin.x + units.left);
    EXPECT_EQ(windowRect(relative).top, origin.y + units.top);
    const HWND absolute = create(DialogBuilder(WS_POPUP | DS_ABSALIGN).place(20, 16), owner);
    EXPECT_EQ(windowRect(absolute).left, units.left);
    const HWND child = create(DialogBuilder(WS_CHILD).place(20, 16), owner);
    EXPECT_EQ(windowRect(child).left, origin.x + units.left);
    EXPECT_EQ(GetParent(child), owner);
}

TEST_F(DialogTemplateTest, DialogsStayInsideOfTheScreenOrStandInItsMiddle) {
    const HWND beyond = create(DialogBuilder(WS_POPUP | DS_ABSALIGN).place(3000, -500));
    const RECT rect = windowRect(beyond);
    EXPECT_EQ(rect.right, screenWidth);
    EXPECT_EQ(rect.top, 0);
    const RECT middle = windowRect(create(DialogBuilder(WS_POPUP | WS_CAPTION | DS_CENTER)));
    EXPECT_NEAR(middle.left + middle.right, screenWidth, 1);
    EXPECT_NEAR(middle.top + middle.bottom, screenHeight, 1);
}

TEST_F(DialogTemplateTest, StylesFollowFromDialogStyles) {
    struct Case {
        const char* name;
        DWORD style;
        DWORD wanted;   // style
        DWORD unwanted; // style
        DWORD exWanted; // extended style
    };
    const Case cases[] = {
        {"frame", WS_POPUP | DS_MODALFRAME, 0, 0, WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT},
        {"part", WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_CONTROL, 0, WS_CAPTION | WS_SYSMENU, WS_EX_CONTROLPARENT},
        {"help", WS_POPUP | DS_CONTEXTHELP, 0, 0, WS_EX_CONTEXTHELP},
    };
    for (const Case& each : cases) {
        const HWND dialog = create(DialogBuilder(each.style));
        ASSERT_NE(dialog, nullptr) << each.name;
        EXPECT_EQ(static_cast<DWORD>(GetWindowLong(dialog, GWL_STYLE)) & each.unwanted, 0U) << each.name;
        EXPECT_EQ(static_cast<DWORD>(GetWindowLong(dialog, GWL_EXSTYLE)) & each.exWanted, each.exWanted) << each.name;
    }
}

// ---- Dialog-init rows ----------------------------------------------------------------------------------------------

std::vector<std::uint8_t> initRows() {
    Bytes out;
    for (const char* text : {"Left", "Align"}) {
        const auto length = static_cast<std::uint32_t>(std::strlen(text) + 1);
        out.word(255).word(DIALOG_INIT_CB_ADDSTRING).dword(length);
        for (std::uint32_t i = 0; i < length; ++i)
            out.byte(static_cast<unsigned char>(text[i]));
    }
    return out.word(0).data();
}

TEST_F(DialogTemplateTest, InitRowsComeInOrder) {
    std::vector<std::string> texts;
    EXPECT_TRUE(forEachInitRow(initRows(), [&](const DialogInitRow& row) {
        EXPECT_EQ(row.control, 255);
        EXPECT_EQ(row.message, DIALOG_INIT_CB_ADDSTRING);
        texts.push_back(row.text);
        return true;
    }));
    EXPECT_EQ(texts, (std::vector<std::string>{"Left", "Align"}));
}

TEST_F(DialogTemplateTest, CutInitRowsEndInFailureAfterTheWholeOnes) {
    const auto whole = initRows();
    for (std::size_t length = 1; length < whole.size(); ++length) {
        int rows = 0;
        EXPECT_FALSE(forEachInitRow(std::span(whole).first(length), [&](const DialogInitRow&) { return ++rows > 0; }))
            << "length " << length;
        EXPECT_EQ(rows, length >= 27 ? 2 : length >= 13 ? 1 : 0) << "length " << length;
    }
    auto huge = whole;
    huge[7] = 0xFF; // the first row's length
    EXPECT_FALSE(forEachInitRow(huge, [](const DialogInitRow&) { return true; }));
}

} // namespace
