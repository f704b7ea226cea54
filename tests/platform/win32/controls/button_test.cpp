// Buttons of all kinds: states, clicks by mouse and keyboard, notifications, looks.
#include "control_fixture.h"
#include "win32/button.h"
#include "win32/draw.h"
#include "win32/gdi.h"
#include "win32/icons.h"

namespace vndk::win32 {
namespace {

using namespace test;

class ButtonTest : public ControlFixture {
protected:
    HWND makeButton(DWORD style, LPCSTR text = "Button", int y = 20, int id = controlId) {
        return make("BUTTON", style, 20, y, 100, 30, text, 0, id);
    }
    static LRESULT checkOf(HWND button) { return SendMessage(button, BM_GETCHECK, 0, 0); }
    static LRESULT stateOf(HWND button) { return SendMessage(button, BM_GETSTATE, 0, 0); }
    static bool isPushed(HWND button) { return (stateOf(button) & BST_PUSHED) != 0; }
    /// The middle of the first button.
    void clickIt() {
        user.click(left + 70, top + 35);
        settle();
    }
};

// ---- Kinds ---------------------------------------------------------------------------------------------------------

TEST_F(ButtonTest, KindsSayWhatTheyAreToDialogs) {
    struct Row {
        DWORD style;
        LRESULT code;
    };
    const Row rows[] = {
        {BS_PUSHBUTTON, DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON},
        {BS_DEFPUSHBUTTON, DLGC_BUTTON | DLGC_DEFPUSHBUTTON},
        {BS_CHECKBOX, DLGC_BUTTON},
        {BS_AUTOCHECKBOX, DLGC_BUTTON},
        {BS_3STATE, DLGC_BUTTON},
        {BS_AUTO3STATE, DLGC_BUTTON},
        {BS_RADIOBUTTON, DLGC_BUTTON | DLGC_RADIOBUTTON},
        {BS_AUTORADIOBUTTON, DLGC_BUTTON | DLGC_RADIOBUTTON},
        {BS_GROUPBOX, DLGC_STATIC},
        {BS_OWNERDRAW, DLGC_BUTTON},
    };
    for (const Row& row : rows) {
        const HWND button = makeButton(row.style);
        EXPECT_EQ(SendMessage(button, WM_GETDLGCODE, 0, 0), row.code) << "style " << row.style;
        DestroyWindow(button);
    }
}

TEST_F(ButtonTest, EachKindHoldsItsOwnChecks) {
    struct Row {
        DWORD style;
        LRESULT afterOne, afterTwo, afterMany;
    };
    const Row rows[] = {
        {BS_PUSHBUTTON, 0, 0, 0},  {BS_DEFPUSHBUTTON, 0, 0, 0},   {BS_GROUPBOX, 0, 0, 0}, {BS_OWNERDRAW, 0, 0, 0},
        {BS_CHECKBOX, 1, 1, 1},    {BS_AUTOCHECKBOX, 1, 1, 1},    {BS_3STATE, 1, 2, 2},   {BS_AUTO3STATE, 1, 2, 2},
        {BS_RADIOBUTTON, 1, 1, 1}, {BS_AUTORADIOBUTTON, 1, 1, 1},
    };
    for (const Row& row : rows) {
        const HWND button = makeButton(row.style);
        SendMessage(button, BM_SETCHECK, 1, 0);
        EXPECT_EQ(checkOf(button), row.afterOne) << "style " << row.style;
        SendMessage(button, BM_SETCHECK, 2, 0);
        EXPECT_EQ(checkOf(button), row.afterTwo) << "style " << row.style;
        SendMessage(button, BM_SETCHECK, static_cast<WPARAM>(-1), 0);
        EXPECT_EQ(checkOf(button), row.afterMany) << "style " << row.style;
        EXPECT_TRUE(takeCodes().empty()) << "set by program";
        DestroyWindow(button);
    }
}

TEST_F(ButtonTest, CheckedRadioButtonsAreTabStops) {
    for (const DWORD style : {BS_RADIOBUTTON, BS_AUTORADIOBUTTON}) {
        const HWND button = makeButton(style);
        const auto stops = [&] { return (GetWindowLong(button, GWL_STYLE) & static_cast<LONG>(WS_TABSTOP)) != 0; };
        SendMessage(button, BM_SETCHECK, BST_CHECKED, 0);
        EXPECT_TRUE(stops()) << "style " << style;
        SendMessage(button, BM_SETCHECK, BST_UNCHECKED, 0);
        EXPECT_FALSE(stops()) << "style " << style;
        DestroyWindow(button);
    }
}

TEST_F(ButtonTest, SetStyleReplacesTheKindAndKeepsTheRest) {
    const HWND button = makeButton(BS_PUSHBUTTON | BS_NOTIFY | BS_LEFT | WS_TABSTOP);
    SendMessage(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, FALSE);
    const auto style = static_cast<DWORD>(GetWindowLong(button, GWL_STYLE));
    EXPECT_EQ(style & BS_TYPEMASK, BS_DEFPUSHBUTTON);
    EXPECT_EQ(style & (BS_NOTIFY | BS_LEFT | WS_TABSTOP), BS_NOTIFY | BS_LEFT | WS_TABSTOP);
    EXPECT_FALSE(GetUpdateRect(button, nullptr, FALSE)) << "no redraw was asked for";
    SendMessage(button, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
    EXPECT_TRUE(GetUpdateRect(button, nullptr, FALSE));
    SendMessage(button, BM_SETSTYLE, (static_cast<WPARAM>(style) | 11) & 255, TRUE);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLong(button, GWL_STYLE)) & BS_TYPEMASK, BS_OWNERDRAW);
}

// ---- Clicks --------------------------------------------------------------------------------------------------------

TEST_F(ButtonTest, ClicksWalkThroughTheStatesOfAutomaticKinds) {
    struct Row {
        const char* name;
        DWORD style;
        LRESULT states[4];
    };
    const Row rows[] = {
        {"check box, left to the parent", BS_CHECKBOX, {0, 0, 0, 0}},
        {"automatic check box", BS_AUTOCHECKBOX, {1, 0, 1, 0}},
        {"three states, left to the parent", BS_3STATE, {0, 0, 0, 0}},
        {"automatic three states", BS_AUTO3STATE, {1, 2, 0, 1}},
        {"automatic radio button", BS_AUTORADIOBUTTON, {1, 1, 1, 1}},
        {"push button", BS_PUSHBUTTON, {0, 0, 0, 0}},
    };
    for (const Row& row : rows) {
        const HWND button = makeButton(row.style);
        for (const LRESULT state : row.states) {
            clickIt();
            wait(600); // two clicks in a row would be a double click
            EXPECT_EQ(checkOf(button), state) << row.name;
            EXPECT_EQ(takeCodes(), std::vector<int>{BN_CLICKED}) << row.name;
        }
        DestroyWindow(button);
    }
}

TEST_F(ButtonTest, ClickGoesThroughTheButtonsOwnMessages) {
    const HWND button = makeButton(BS_AUTOCHECKBOX);
    SetFocus(button);
    settle();
    recorder.watch(button);
    recorder.ignore({WM_PAINT, WM_ERASEBKGND, WM_NCPAINT, WM_SETCURSOR, WM_MOUSEACTIVATE, WM_PARENTNOTIFY, WM_MOUSEMOVE,
                     WM_CTLCOLORSTATIC, WM_GETDLGCODE, WM_CTLCOLORBTN});
    recorder.clear();
    clickIt();
    EXPECT_TRUE(recorder.saw({{WM_LBUTTONDOWN, posted},
                              {BM_SETSTATE, sent | wparam, TRUE},
                              {WM_LBUTTONUP, posted},
                              {BM_SETSTATE, sent | wparam, FALSE},
                              {WM_CAPTURECHANGED, sent | optional},
                              {BM_SETCHECK, sent | wparam | optional, BST_CHECKED},
                              {WM_CAPTURECHANGED, sent | optional},
                              {WM_COMMAND, sent | parent | wparam, controlId}}));
}

TEST_F(ButtonTest, PushedLookFollowsThePointerWhileHeld) {
    const HWND button = makeButton(BS_PUSHBUTTON);
    user.moveTo(left + 70, top + 35);
    user.press();
    settle();
    EXPECT_TRUE(isPushed(button));
    EXPECT_EQ(GetCapture(), button);
    user.moveTo(left + 300, top + 35);
    settle();
    EXPECT_FALSE(isPushed(button));
    user.moveTo(left + 60, top + 35);
    settle();
    EXPECT_TRUE(isPushed(button));
    user.moveTo(left + 300, top + 35);
    user.release();
    settle();
    EXPECT_TRUE(takeCodes().empty()) << "let go outside";
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_FALSE(isPushed(button));
}

TEST_F(ButtonTest, LosingTheFocusInThePressGivesTheCaptureBack) {
    const HWND button = makeButton(BS_PUSHBUTTON);
    user.moveTo(left + 70, top + 35);
    user.press();
    settle();
    ASSERT_EQ(GetCapture(), button);
    SendMessage(button, WM_KILLFOCUS, 0, 0);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_FALSE(isPushed(button));
    user.release();
    settle();
    EXPECT_TRUE(takeCodes().empty());
}

TEST_F(ButtonTest, LosingTheCaptureUndoesThePress) {
    const HWND button = makeButton(BS_PUSHBUTTON);
    SendMessage(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    ReleaseCapture();
    EXPECT_FALSE(isPushed(button));
    SendMessage(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(takeCodes().empty());
}

TEST_F(ButtonTest, SpaceBarPressesAndLettingGoClicks) {
    const HWND button = makeButton(BS_PUSHBUTTON);
    SetFocus(button);
    user.keyDown(VK_SPACE, ' ');
    settle();
    EXPECT_TRUE(isPushed(button));
    EXPECT_TRUE(takeCodes().empty());
    user.keyUp(VK_SPACE);
    settle();
    EXPECT_FALSE(isPushed(button));
    EXPECT_EQ(takeCodes(), std::vector<int>{BN_CLICKED});
    user.keyDown(VK_SPACE, ' ');
    user.key(VK_LEFT);
    user.keyUp(VK_SPACE);
    settle();
    EXPECT_TRUE(takeCodes().empty()) << "another key takes the press back";
}

TEST_F(ButtonTest, PlusAndMinusCheckABox) {
    const HWND button = makeButton(BS_AUTOCHECKBOX);
    for (const auto& [character, check, clicks] :
         {std::tuple{'+', 1, 1}, std::tuple{'=', 1, 0}, std::tuple{'-', 0, 1}, std::tuple{'-', 0, 0}}) {
        SendMessage(button, WM_CHAR, static_cast<WPARAM>(character), 1);
        EXPECT_EQ(checkOf(button), check) << character;
        EXPECT_EQ(takeCodes().size(), static_cast<std::size_t>(clicks)) << character;
    }
}

TEST_F(ButtonTest, ClickByMessageNotifiesAndSurvivesDestruction) {
    const HWND button = makeButton(BS_AUTOCHECKBOX);
    SendMessage(button, BM_CLICK, 0, 0);
    EXPECT_EQ(takeCodes(), std::vector<int>{BN_CLICKED});
    EXPECT_EQ(checkOf(button), BST_CHECKED);
    onCode = [&](int) { DestroyWindow(button); };
    SendMessage(button, BM_CLICK, 0, 0);
    EXPECT_FALSE(IsWindow(button));
}

TEST_F(ButtonTest, DoubleClickIsToldByKindOrWhenAsked) {
    struct Row {
        const char* name;
        DWORD style;
        std::vector<int> expected;
    };
    const Row rows[] = {
        {"push button", BS_PUSHBUTTON, {BN_CLICKED, BN_CLICKED}},
        {"owner-drawn", BS_OWNERDRAW, {BN_CLICKED, BN_DOUBLECLICKED}},
        {"radio button", BS_RADIOBUTTON, {BN_CLICKED, BN_DOUBLECLICKED}},
    };
    for (const Row& row : rows) {
        const HWND button = makeButton(row.style);
        wait(1000);
        user.doubleClick(left + 70, top + 35);
        settle();
        EXPECT_EQ(takeCodes(), row.expected) << row.name;
        DestroyWindow(button);
    }
    const HWND button = makeButton(BS_PUSHBUTTON | BS_NOTIFY);
    wait(1000);
    user.doubleClick(left + 70, top + 35);
    settle();
    EXPECT_EQ(takeCodes(), (std::vector<int>{BN_SETFOCUS, BN_CLICKED, BN_DOUBLECLICKED}));
    DestroyWindow(button);
}

// ---- Groups --------------------------------------------------------------------------------------------------------

TEST_F(ButtonTest, AutomaticRadioButtonTakesTheCheckFromItsGroup) {
    const HWND first = makeButton(BS_AUTORADIOBUTTON | WS_GROUP, "one", 20, 1);
    const HWND second = makeButton(BS_AUTORADIOBUTTON, "two", 60, 2);
    const HWND box = makeButton(BS_AUTOCHECKBOX, "box", 100, 3);
    const HWND other = makeButton(BS_AUTORADIOBUTTON | WS_GROUP, "other group", 140, 4);
    SendMessage(first, BM_SETCHECK, 1, 0);
    SendMessage(box, BM_SETCHECK, 1, 0);
    SendMessage(other, BM_SETCHECK, 1, 0);
    SendMessage(second, BM_CLICK, 0, 0);
    EXPECT_EQ(checkOf(first), 0);
    EXPECT_EQ(checkOf(second), 1);
    EXPECT_EQ(checkOf(box), 1) << "no radio button";
    EXPECT_EQ(checkOf(other), 1) << "another group";
}

TEST_F(ButtonTest, FocusChoosesARadioButton) {
    const HWND first = makeButton(BS_AUTORADIOBUTTON | WS_GROUP, "one", 20, 1);
    const HWND second = makeButton(BS_AUTORADIOBUTTON, "two", 60, 2);
    SendMessage(first, BM_SETCHECK, 1, 0);
    SetFocus(first);
    EXPECT_TRUE(takeCodes().empty()) << "checked already";
    SetFocus(second);
    EXPECT_EQ(checkOf(second), 1);
    EXPECT_EQ(checkOf(first), 0);
    EXPECT_EQ(takeCodes(), std::vector<int>{BN_CLICKED});
}

// ---- Painting ------------------------------------------------------------------------------------------------------

TEST_F(ButtonTest, FocusRepaintsWithTheColoursOfTheKind) {
    struct Row {
        const char* name;
        DWORD style;
        UINT color;
    };
    const Row rows[] = {
        {"push button", BS_PUSHBUTTON, WM_CTLCOLORBTN},
        {"default button", BS_DEFPUSHBUTTON, WM_CTLCOLORBTN},
        {"check box", BS_CHECKBOX, WM_CTLCOLORSTATIC},
        {"automatic check box", BS_AUTOCHECKBOX, WM_CTLCOLORSTATIC},
        {"radio button", BS_RADIOBUTTON, WM_CTLCOLORSTATIC},
        {"group box", BS_GROUPBOX, WM_CTLCOLORSTATIC},
    };
    for (const Row& row : rows) {
        const HWND button = makeButton(row.style);
        SendMessage(button, BM_SETCHECK, 1, 0);
        SetFocus(owner);
        settle();
        recorder.watch(button);
        recorder.ignore({WM_SETCURSOR, WM_NCPAINT, WM_ERASEBKGND, WM_GETDLGCODE});
        recorder.clear();
        SetFocus(button);
        EXPECT_TRUE(recorder.saw({{WM_KILLFOCUS, sent | parent}, {WM_SETFOCUS, sent}, {row.color, sent | parent}}))
            << row.name;
        SetFocus(owner);
        EXPECT_TRUE(recorder.saw({{WM_KILLFOCUS, sent}, {row.color, sent | parent}, {WM_SETFOCUS, sent | parent}}))
            << row.name;
        DestroyWindow(button);
    }
}

TEST_F(ButtonTest, NothingIsPaintedWhileRedrawIsOff) {
    const HWND button = makeButton(BS_AUTOCHECKBOX);
    recorder.clear();
    SendMessage(button, WM_SETREDRAW, FALSE, 0);
    SendMessage(button, BM_SETCHECK, 1, 0);
    settle();
    EXPECT_EQ(recorder.count(WM_CTLCOLORSTATIC), 0);
}

TEST_F(ButtonTest, OwnerDrawnButtonAsksTheParent) {
    const HWND button = makeButton(BS_OWNERDRAW);
    std::vector<DRAWITEMSTRUCT> items;
    recorder.onMessage(WM_DRAWITEM, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        EXPECT_EQ(wParam, static_cast<WPARAM>(controlId));
        items.push_back(*reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    });
    InvalidateRect(button, nullptr, TRUE);
    settle();
    SetFocus(button);
    SendMessage(button, BM_SETSTATE, TRUE, 0);
    SetFocus(owner);
    EnableWindow(button, FALSE);
    ASSERT_EQ(items.size(), 5U);
    for (const DRAWITEMSTRUCT& item : items) {
        EXPECT_EQ(item.CtlType, ODT_BUTTON);
        EXPECT_EQ(item.CtlID, static_cast<UINT>(controlId));
        EXPECT_EQ(item.hwndItem, button);
        EXPECT_EQ(item.rcItem.right, 100);
        EXPECT_EQ(item.rcItem.bottom, 30);
    }
    EXPECT_EQ(items[0].itemAction, ODA_DRAWENTIRE);
    EXPECT_EQ(items[0].itemState, 0U);
    EXPECT_EQ(items[1].itemAction, ODA_FOCUS);
    EXPECT_EQ(items[1].itemState, ODS_FOCUS);
    EXPECT_EQ(items[2].itemAction, ODA_SELECT);
    EXPECT_EQ(items[2].itemState, ODS_FOCUS | ODS_SELECTED);
    EXPECT_EQ(items[3].itemState, ODS_SELECTED) << "the focus went";
    EXPECT_EQ(items[4].itemState, ODS_SELECTED | ODS_DISABLED);
}

TEST_F(ButtonTest, GroupBoxLetsTheMouseThroughAndPaintsOnlyItsFrame) {
    const HWND box = make("BUTTON", BS_GROUPBOX, 10, 10, 200, 100, "Group");
    EXPECT_EQ(SendMessage(box, WM_NCHITTEST, 0, MAKELPARAM(left + 60, top + 60)), HTTRANSPARENT);
    const std::uint32_t inside = pixel(left + 60, top + 60);
    const HDC dc = GetDC(box);
    SetPixel(dc, 50, 50, RGB(1, 2, 3));
    ReleaseDC(box, dc);
    // The parent's content inside of the frame survives, because nothing fills it.
    InvalidateRect(box, nullptr, FALSE);
    settle();
    EXPECT_NE(pixel(left + 60, top + 60), inside);
    EXPECT_EQ(pixel(left + 10, top + 60), rgbOf(GetSysColor(COLOR_BTNSHADOW)));
    EXPECT_EQ(pixel(left + 11, top + 60), rgbOf(GetSysColor(COLOR_BTNHIGHLIGHT)));
}

TEST_F(ButtonTest, PushButtonLooksPressedAndDefault) {
    const HWND button = makeButton(BS_PUSHBUTTON, "");
    const int x = left + 20;
    const int y = top + 20;
    const std::uint32_t light = rgbOf(GetSysColor(COLOR_BTNHIGHLIGHT));
    const std::uint32_t shadow = rgbOf(GetSysColor(COLOR_BTNSHADOW));
    const std::uint32_t dark = rgbOf(GetSysColor(COLOR_3DDKSHADOW));
    const std::uint32_t frame = rgbOf(GetSysColor(COLOR_WINDOWFRAME));
    EXPECT_EQ(pixel(x, y), light);
    EXPECT_EQ(pixel(x + 99, y + 29), dark);
    SendMessage(button, BM_SETSTATE, TRUE, 0);
    EXPECT_EQ(pixel(x, y), dark) << "painted at once";
    EXPECT_EQ(pixel(x + 99, y + 29), light);
    SendMessage(button, BM_SETSTATE, FALSE, 0);
    SendMessage(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    settle();
    EXPECT_EQ(pixel(x, y), frame);
    EXPECT_EQ(pixel(x + 1, y + 1), light);
    SendMessage(button, BM_SETSTATE, TRUE, 0);
    EXPECT_EQ(pixel(x + 1, y + 1), shadow) << "pressed flat";
    EXPECT_EQ(pixel(x + 98, y + 28), shadow);
}

TEST_F(ButtonTest, PicturesAreKeptOnlyWhenTheStyleNamesTheirKind) {
    const HBITMAP first = CreateBitmap(8, 8, 1, 1, nullptr);
    const HBITMAP second = CreateBitmap(8, 8, 1, 1, nullptr);
    const auto set = [](HWND button, UINT kind, HBITMAP image) {
        return reinterpret_cast<HBITMAP>(SendMessage(button, BM_SETIMAGE, kind, reinterpret_cast<LPARAM>(image)));
    };
    const HWND plain = makeButton(BS_PUSHBUTTON);
    set(plain, IMAGE_BITMAP, first);
    EXPECT_EQ(SendMessage(plain, BM_GETIMAGE, IMAGE_BITMAP, 0), 0);
    const HWND button = makeButton(BS_PUSHBUTTON | BS_BITMAP, "", 60);
    EXPECT_EQ(set(button, IMAGE_BITMAP, first), nullptr);
    EXPECT_EQ(set(button, IMAGE_ICON, second), nullptr) << "refused";
    EXPECT_EQ(set(button, IMAGE_BITMAP, second), first);
    EXPECT_EQ(SendMessage(button, BM_GETIMAGE, IMAGE_BITMAP, 0), reinterpret_cast<LRESULT>(second));
    EXPECT_EQ(SendMessage(button, BM_GETIMAGE, IMAGE_ICON, 0), 0);
    DeleteObject(first);
    DeleteObject(second);
    InvalidateRect(button, nullptr, TRUE);
    settle(); // a dead bitmap is left out
}

TEST_F(ButtonTest, NotificationsBeyondClicksComeOnlyWhenAsked) {
    const HWND quiet = makeButton(BS_PUSHBUTTON);
    SetFocus(quiet);
    SetFocus(owner);
    EXPECT_TRUE(takeCodes().empty());
    const HWND telling = makeButton(BS_PUSHBUTTON | BS_NOTIFY, "", 60);
    SetFocus(telling);
    SetFocus(owner);
    EXPECT_EQ(takeCodes(), (std::vector<int>{BN_SETFOCUS, BN_KILLFOCUS}));
    EXPECT_EQ(stateOf(telling), 0);
}

} // namespace
} // namespace vndk::win32
