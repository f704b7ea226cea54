// Owner drawing, and the pixels of lists that draw themselves.
#include "list_box_fixture.h"

using namespace vndk::test;

namespace {

class ListBoxDrawTest : public ListBoxFixture {
protected:
    struct Drawn {
        int item;
        UINT action;
        UINT state;
        bool operator==(const Drawn&) const = default;
        friend void PrintTo(const Drawn& drawn, std::ostream* out) {
            *out << "item " << drawn.item << " action " << drawn.action << " state " << drawn.state;
        }
    };

    void SetUp() override {
        ListBoxFixture::SetUp();
        recorder.onMessage(WM_DRAWITEM, [this](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            check(wParam, item);
            drawn.push_back({static_cast<int>(item.itemID), item.itemAction, item.itemState});
            if (onDraw)
                onDraw(item);
            return TRUE;
        });
    }
    void check(WPARAM wParam, const DRAWITEMSTRUCT& item) const {
        EXPECT_EQ(wParam, item.CtlID);
        EXPECT_EQ(item.CtlID, static_cast<UINT>(controlId));
        EXPECT_EQ(item.CtlType, ODT_LISTBOX);
        EXPECT_EQ(item.hwndItem, list);
        RECT clip{};
        GetClipBox(item.hDC, &clip);
        const RECT client = clientRect(list);
        EXPECT_NE(EqualRect(&clip, &client), FALSE);
        if (item.itemID == static_cast<UINT>(-1))
            return;
        const RECT rect = rectOf(static_cast<int>(item.itemID));
        EXPECT_NE(EqualRect(&rect, &item.rcItem), FALSE) << "item " << item.itemID;
    }
    std::vector<Drawn> takeDrawn() { return std::exchange(drawn, {}); }
    /// The list's colour at a point of its client area.
    [[nodiscard]] std::uint32_t colorAt(int x, int y) {
        const POINT point = at(x, y);
        return pixel(point.x, point.y);
    }

    std::vector<Drawn> drawn;
    std::function<void(const DRAWITEMSTRUCT&)> onDraw;
};

TEST_F(ListBoxDrawTest, asksForOneHeightAtCreationOfAFixedList) {
    std::vector<MEASUREITEMSTRUCT> asked;
    recorder.onMessage(WM_MEASUREITEM, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        auto& item = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        EXPECT_EQ(wParam, static_cast<WPARAM>(controlId));
        asked.push_back(item);
        item.itemHeight = 23;
        return TRUE;
    });
    makeList(plain | LBS_OWNERDRAWFIXED);
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].CtlType, ODT_LISTBOX);
    EXPECT_GT(asked[0].itemHeight, 0U);
    fill(2);
    EXPECT_EQ(asked.size(), 1U);
    EXPECT_EQ(ask(LB_GETITEMHEIGHT, 0), 23);
}

TEST_F(ListBoxDrawTest, asksForTheHeightOfEachItemOfAVariableListWhenItIsInTheList) {
    std::vector<std::string> asked;
    recorder.onMessage(WM_MEASUREITEM, [&](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        auto& item = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        asked.push_back(textAt(static_cast<int>(item.itemID)));
        EXPECT_EQ(item.itemData, 0U);
        item.itemHeight = 10 + 10 * static_cast<UINT>(asked.size());
        return TRUE;
    });
    makeList(plain | LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS);
    add("b");
    askText(LB_INSERTSTRING, 0, "a");
    EXPECT_EQ(asked, (Texts{"b", "a"}));
    EXPECT_EQ(ask(LB_GETITEMHEIGHT, 0), 30);
    EXPECT_EQ(ask(LB_GETITEMHEIGHT, 1), 20);
}

TEST_F(ListBoxDrawTest, asksItsOwnerForTheOrderOfItemsWithoutStrings) {
    std::vector<std::pair<ULONG_PTR, ULONG_PTR>> compared;
    recorder.onMessage(WM_COMPAREITEM, [&](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        const auto& pair = *reinterpret_cast<const COMPAREITEMSTRUCT*>(lParam);
        compared.emplace_back(pair.itemData1, pair.itemData2);
        EXPECT_EQ(pair.itemID2, static_cast<UINT>(-1));
        return pair.itemData1 < pair.itemData2 ? -1 : pair.itemData1 > pair.itemData2 ? 1 : 0;
    });
    makeList(plain | LBS_OWNERDRAWFIXED | LBS_SORT);
    const LPARAM values[] = {50, 10, 90, 30, 70};
    for (const LPARAM value : values)
        ask(LB_ADDSTRING, 0, value);
    Indexes order;
    for (int i = 0; i < 5; ++i)
        order.push_back(static_cast<int>(ask(LB_GETITEMDATA, static_cast<WPARAM>(i))));
    EXPECT_EQ(order, (Indexes{10, 30, 50, 70, 90}));
    EXPECT_EQ(compared.front(), (std::pair<ULONG_PTR, ULONG_PTR>{50, 10}));
    EXPECT_EQ(ask(LB_FINDSTRING, static_cast<WPARAM>(-1), 70), 3);
}

TEST_F(ListBoxDrawTest, drawsWhatChangesAndSaysWhat) {
    makeList(plain | LBS_OWNERDRAWFIXED);
    ask(LB_SETITEMHEIGHT, 0, 20);
    for (int i = 0; i < 3; ++i)
        ask(LB_ADDSTRING, 0, 100 + i);
    settle();
    takeDrawn();
    InvalidateRect(list, nullptr, TRUE);
    settle();
    EXPECT_EQ(takeDrawn(),
              (std::vector<Drawn>{{0, ODA_DRAWENTIRE, 0}, {1, ODA_DRAWENTIRE, 0}, {2, ODA_DRAWENTIRE, 0}}));
    ask(LB_SETCURSEL, 1);
    EXPECT_EQ(takeDrawn(), (std::vector<Drawn>{{1, ODA_SELECT, ODS_SELECTED}}));
    SetFocus(list);
    EXPECT_EQ(takeDrawn(), (std::vector<Drawn>{{1, ODA_FOCUS, ODS_SELECTED | ODS_FOCUS}}));
    ask(WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ(takeDrawn(), (std::vector<Drawn>{{1, ODA_FOCUS, ODS_SELECTED},
                                               {1, ODA_SELECT, 0},
                                               {2, ODA_SELECT, ODS_SELECTED},
                                               {2, ODA_FOCUS, ODS_SELECTED | ODS_FOCUS}}));
    SetFocus(owner);
    EXPECT_EQ(takeDrawn(), (std::vector<Drawn>{{2, ODA_FOCUS, ODS_SELECTED}}));
    EnableWindow(list, FALSE);
    settle();
    EXPECT_EQ(takeDrawn().back(), (Drawn{2, ODA_DRAWENTIRE, ODS_SELECTED | ODS_DISABLED}));
}

TEST_F(ListBoxDrawTest, drawsTheFocusOfAnEmptyList) {
    makeList(plain | LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS);
    settle();
    takeDrawn();
    SetFocus(list);
    EXPECT_EQ(takeDrawn(), (std::vector<Drawn>{{-1, ODA_FOCUS, ODS_FOCUS}}));
}

TEST_F(ListBoxDrawTest, paintsOnlyItemsThatAreSeenAndInvalid) {
    makeList(plain | LBS_OWNERDRAWFIXED);
    ask(LB_SETITEMHEIGHT, 0, 20);
    for (int i = 0; i < 1000; ++i)
        ask(LB_ADDSTRING, 0, i);
    ask(LB_SETTOPINDEX, 500);
    settle();
    takeDrawn();
    onDraw = {};
    const RECT part{0, 25, 10, 45};
    InvalidateRect(list, &part, FALSE);
    drawn.clear();
    // The clip is the invalid part now, so only the items are looked at.
    recorder.onMessage(WM_DRAWITEM, [this](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        drawn.push_back({static_cast<int>(item.itemID), item.itemAction, item.itemState});
        return TRUE;
    });
    settle();
    EXPECT_EQ(takeDrawn(), (std::vector<Drawn>{{501, ODA_DRAWENTIRE, 0}, {502, ODA_DRAWENTIRE, 0}}));
    ask(WM_VSCROLL, SB_LINEDOWN);
    settle();
    EXPECT_EQ(takeDrawn(), (std::vector<Drawn>{{505, ODA_DRAWENTIRE, 0}})) << "the rest is moved";
}

TEST_F(ListBoxDrawTest, tellsItsOwnerOfEachItemThatGoes) {
    std::vector<std::pair<UINT, ULONG_PTR>> deleted;
    recorder.onMessage(WM_DELETEITEM, [&](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        const auto& item = *reinterpret_cast<const DELETEITEMSTRUCT*>(lParam);
        EXPECT_EQ(item.hwndItem, list);
        deleted.emplace_back(item.itemID, item.itemData);
        EXPECT_EQ(ask(LB_DELETESTRING, 0), LB_ERR) << "while items go, no others can";
        return TRUE;
    });
    makeList(plain | LBS_OWNERDRAWFIXED);
    for (int i = 0; i < 4; ++i)
        ask(LB_ADDSTRING, 0, 10 + i);
    ask(LB_DELETESTRING, 1);
    using Deleted = std::vector<std::pair<UINT, ULONG_PTR>>;
    EXPECT_EQ(std::exchange(deleted, {}), (Deleted{{1, 11}}));
    ask(LB_RESETCONTENT);
    EXPECT_EQ(std::exchange(deleted, {}), (Deleted{{2, 13}, {1, 12}, {0, 10}}));
    ask(LB_ADDSTRING, 0, 5);
    DestroyWindow(list);
    EXPECT_EQ(std::exchange(deleted, {}), (Deleted{{0, 5}}));
    makeList(plain);
    fill(2);
    DestroyWindow(list);
    EXPECT_EQ(deleted, Deleted{}) << "texts need no owner";
}

TEST_F(ListBoxDrawTest, survivesAnOwnerThatDestroysItOrEmptiesItWhileDrawing) {
    makeList(plain | LBS_OWNERDRAWVARIABLE);
    for (int i = 0; i < 10; ++i)
        ask(LB_ADDSTRING, 0, i);
    onDraw = [this](const DRAWITEMSTRUCT&) { ask(LB_RESETCONTENT); };
    settle();
    EXPECT_EQ(ask(LB_GETCOUNT), 0);
    onDraw = {};
    for (int i = 0; i < 10; ++i)
        ask(LB_ADDSTRING, 0, i);
    onDraw = [this](const DRAWITEMSTRUCT&) { DestroyWindow(list); };
    settle();
    EXPECT_EQ(IsWindow(list), FALSE);
}

TEST_F(ListBoxDrawTest, givesBackTheContextsAttributesAfterEachItem) {
    makeList(plain | LBS_OWNERDRAWFIXED);
    fill(2);
    onDraw = [](const DRAWITEMSTRUCT& item) {
        EXPECT_NE(GetTextColor(item.hDC), RGB(1, 2, 3));
        SetTextColor(item.hDC, RGB(1, 2, 3));
        IntersectClipRect(item.hDC, 0, 0, 1, 1);
    };
    InvalidateRect(list, nullptr, TRUE);
    settle();
    EXPECT_EQ(takeDrawn().size(), 2U);
}

TEST_F(ListBoxDrawTest, paintsSelectionAndGroundInSystemColors) {
    makeList(plain);
    ask(LB_SETITEMHEIGHT, 0, 20);
    fill(3);
    ask(LB_SETCURSEL, 1);
    settle();
    const std::uint32_t window = rgbOf(GetSysColor(COLOR_WINDOW));
    const std::uint32_t highlight = rgbOf(GetSysColor(COLOR_HIGHLIGHT));
    EXPECT_EQ(colorAt(110, 19), window);
    EXPECT_EQ(colorAt(110, 20), highlight);
    EXPECT_EQ(colorAt(0, 39), highlight);
    EXPECT_EQ(colorAt(0, 40), window);
    EXPECT_EQ(colorAt(60, 90), window);
    EXPECT_EQ(colorAt(119, 30), highlight) << "the whole row";
    SetFocus(list);
    settle();
    EXPECT_NE(colorAt(0, 20), colorAt(1, 20)) << "dotted frame of the focus";
    ask(LB_SETCURSEL, static_cast<WPARAM>(-1));
    settle();
    EXPECT_EQ(colorAt(110, 30), window);
}

TEST_F(ListBoxDrawTest, takesItsColorsFromTheParent) {
    const HBRUSH brush = CreateSolidBrush(RGB(10, 200, 30));
    recorder.onMessage(WM_CTLCOLORLISTBOX, [&](HWND, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        SetTextColor(reinterpret_cast<HDC>(wParam), RGB(200, 0, 0));
        return reinterpret_cast<LRESULT>(brush);
    });
    makeList(plain);
    add("MMMM");
    settle();
    EXPECT_EQ(colorAt(60, 90), 0x0AC81EU);
    EXPECT_EQ(colorAt(110, 5), 0x0AC81EU);
    bool text = false;
    for (int x = 0; x < 40 && !text; ++x)
        text = colorAt(x, 8) == 0xC80000U;
    EXPECT_TRUE(text);
    DestroyWindow(list);
    DeleteObject(brush);
}

TEST_F(ListBoxDrawTest, putsTextAtTabStopsWhenAsked) {
    const auto firstInk = [this](int from) {
        for (int x = from; x < 120; ++x)
            for (int y = 0; y < 16; ++y)
                if (colorAt(x, y) == 0)
                    return x;
        return -1;
    };
    makeList(plain | LBS_USETABSTOPS);
    add("\tM");
    settle();
    const int normal = firstInk(0);
    const int stops[] = {10};
    EXPECT_EQ(ask(LB_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(stops)), TRUE);
    settle();
    const int nearer = firstInk(0);
    EXPECT_GT(nearer, 4);
    EXPECT_LT(nearer, normal);
    DestroyWindow(list);
    makeList(plain);
    EXPECT_EQ(ask(LB_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(stops)), FALSE) << "without the style";
}

} // namespace
