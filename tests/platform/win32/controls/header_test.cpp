// The header control.
#include "notify_fixture.h"

#include "win32/draw.h"
#include "win32/header.h"

#include <cstring>

namespace vndk::test {
namespace {

class HeaderTest : public NotifyFixture {
protected:
    /// Takes the place of the one made before, which would lie over the new one.
    void makeHeader(DWORD style = HDS_BUTTONS, std::initializer_list<int> widths = {100, 50, 80}) {
        if (IsWindow(header))
            DestroyWindow(header);
        header = make(WC_HEADER, style, 0, 0, 300, 17);
        int index = 0;
        for (const int width : widths)
            insert(index++, width, "item");
        settle();
        takeNotes();
    }
    LRESULT insert(int index, int width, std::string text) {
        HDITEM item{};
        item.mask = HDI_WIDTH | HDI_TEXT;
        item.cxy = width;
        item.pszText = text.data();
        return Header_InsertItem(header, index, &item);
    }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessage(header, message, wParam, lParam);
    }
    [[nodiscard]] int width(int index) {
        HDITEM item{};
        item.mask = HDI_WIDTH;
        Header_GetItem(header, index, &item);
        return item.cxy;
    }
    [[nodiscard]] std::vector<int> order() {
        std::vector<int> found(static_cast<std::size_t>(Header_GetItemCount(header)));
        EXPECT_TRUE(send(HDM_GETORDERARRAY, found.size(), reinterpret_cast<LPARAM>(found.data())));
        return found;
    }
    std::string describe(NMHDR& told) override {
        // What all controls tell has no item.
        if (told.code > HDN_FIRST || told.code < HDN_FILTERBTNCLICK)
            return "";
        const auto& note = reinterpret_cast<NMHEADER&>(told);
        const std::string index = " " + std::to_string(note.iItem);
        switch (told.code) {
        case HDN_ITEMCHANGING:
            return "changing" + index;
        case HDN_ITEMCHANGED:
            return "changed" + index;
        case HDN_ITEMCLICK:
            return "click" + index;
        case HDN_ITEMDBLCLICK:
            return "double" + index;
        case HDN_DIVIDERDBLCLICK:
            return "divider" + index;
        case HDN_BEGINTRACK:
            return "begin" + index;
        case HDN_TRACK:
            return "track" + index + " " + std::to_string(note.pitem->cxy);
        case HDN_ENDTRACK:
            return "end" + index + " " + std::to_string(note.pitem->cxy);
        case HDN_BEGINDRAG:
            return "drag" + index;
        case HDN_ENDDRAG:
            return "drop" + index + " " + std::to_string(note.pitem->iOrder);
        default:
            return "";
        }
    }
    [[nodiscard]] POINT at(int x) { return onScreen(header, x, 8); }

    HWND header = nullptr;
};

TEST_F(HeaderTest, ItemsAreInsertedChangedAndDeleted) {
    makeHeader();
    EXPECT_EQ(insert(99, 10, "last"), 3);
    EXPECT_EQ(insert(-1, 10, "x"), -1);
    HDITEM item{};
    EXPECT_EQ(Header_InsertItem(header, 0, &item), -1) << "nothing was given";
    EXPECT_TRUE(takeNotes().empty()) << "insertion isn't told";
    char text[10] = "new text";
    item.mask = HDI_TEXT | HDI_WIDTH | HDI_LPARAM;
    item.pszText = text;
    item.cxy = 33;
    item.lParam = 9;
    EXPECT_TRUE(Header_SetItem(header, 1, &item));
    EXPECT_EQ(takeNotes(), (Lines{"changing 1", "changed 1"}));
    char buffer[6] = "";
    HDITEM read{};
    read.mask = HDI_TEXT | HDI_WIDTH | HDI_LPARAM | HDI_FORMAT | HDI_ORDER;
    read.pszText = buffer;
    read.cchTextMax = 6;
    EXPECT_TRUE(Header_GetItem(header, 1, &read));
    EXPECT_STREQ(buffer, "new t");
    EXPECT_EQ(read.cxy, 33);
    EXPECT_EQ(read.lParam, 9);
    EXPECT_EQ(read.fmt, HDF_STRING) << "a text shows without a format being given";
    EXPECT_EQ(read.iOrder, 1);
    answers[HDN_ITEMCHANGING] = TRUE;
    EXPECT_FALSE(Header_SetItem(header, 0, &item));
    EXPECT_EQ(width(0), 100);
    EXPECT_TRUE(Header_DeleteItem(header, 0));
    EXPECT_FALSE(Header_DeleteItem(header, 3));
    EXPECT_EQ(width(0), 33);
}

TEST_F(HeaderTest, OrderIsIndependentOfTheIndex) {
    makeHeader();
    const int wanted[] = {2, 0, 1};
    EXPECT_TRUE(send(HDM_SETORDERARRAY, 3, reinterpret_cast<LPARAM>(wanted)));
    EXPECT_EQ(order(), (std::vector<int>{2, 0, 1}));
    RECT rect{};
    EXPECT_TRUE(Header_GetItemRect(header, 0, &rect));
    EXPECT_EQ(rect.left, 80);
    EXPECT_EQ(rect.right, 180);
    EXPECT_EQ(Header_OrderToIndex(header, 0), 2);
    EXPECT_EQ(Header_OrderToIndex(header, 7), 7);
    EXPECT_EQ(insert(1, 10, "between"), 1);
    EXPECT_EQ(order(), (std::vector<int>{3, 1, 0, 2}));
    Header_DeleteItem(header, 0);
    EXPECT_EQ(order(), (std::vector<int>{2, 0, 1}));
    const int twice[] = {0, 0, 1};
    EXPECT_FALSE(send(HDM_SETORDERARRAY, 3, reinterpret_cast<LPARAM>(twice)));
    EXPECT_FALSE(send(HDM_SETORDERARRAY, 2, reinterpret_cast<LPARAM>(wanted)));
    EXPECT_FALSE(send(HDM_GETORDERARRAY, 3, 0));
}

TEST_F(HeaderTest, TheLayoutLeavesRoomBelow) {
    makeHeader();
    RECT space{10, 20, 210, 220};
    WINDOWPOS position{};
    HDLAYOUT layout{&space, &position};
    EXPECT_TRUE(Header_Layout(header, &layout));
    EXPECT_EQ(position.x, 10);
    EXPECT_EQ(position.y, 20);
    EXPECT_EQ(position.cx, 200);
    EXPECT_EQ(position.cy, 17);
    EXPECT_EQ(space.top, 37);
    SetWindowLong(header, GWL_STYLE, static_cast<LONG>(WS_CHILD | HDS_HIDDEN));
    EXPECT_TRUE(Header_Layout(header, &layout));
    EXPECT_EQ(position.cy, 0);
}

TEST_F(HeaderTest, PointsHitItemsAndDividers) {
    makeHeader(HDS_BUTTONS, {100, 0, 80});
    const struct {
        int x;
        int item;
        UINT flags;
    } rows[] = {{50, 0, HHT_ONHEADER},   {95, 0, HHT_ONDIVIDER}, {103, 1, HHT_ONDIVOPEN}, {140, 2, HHT_ONHEADER},
                {183, 2, HHT_ONDIVIDER}, {250, -1, HHT_NOWHERE}, {-1, -1, HHT_TOLEFT},    {400, -1, HHT_TORIGHT}};
    for (const auto& row : rows) {
        HDHITTESTINFO info{};
        info.pt = {row.x, 5};
        EXPECT_EQ(send(HDM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)), row.item) << row.x;
        EXPECT_EQ(info.flags, row.flags) << row.x;
    }
}

TEST_F(HeaderTest, ClicksAreToldOnButtonsOnly) {
    makeHeader();
    user.click(at(120).x, at(120).y);
    settle();
    EXPECT_EQ(takeNotes(), (Lines{"click 1"}));
    wait(1000); // or the press would be the second one of a double click
    user.drag(at(120), at(30));
    settle();
    EXPECT_TRUE(takeNotes().empty()) << "let go over another one";
    wait(1000);
    user.doubleClick(at(50).x, at(50).y);
    settle();
    EXPECT_EQ(takeNotes(), (Lines{"click 0", "double 0"}));
    wait(1000);
    user.doubleClick(at(99).x, at(99).y);
    settle();
    EXPECT_EQ(takeNotes().back(), "divider 0");
    makeHeader(0);
    user.click(at(120).x, at(120).y);
    settle();
    EXPECT_TRUE(takeNotes().empty());
}

TEST_F(HeaderTest, DividersAreDragged) {
    makeHeader(HDS_BUTTONS | HDS_FULLDRAG);
    user.drag(at(98), at(118));
    settle();
    EXPECT_EQ(takeNotes(), (Lines{"begin 0", "changing 0", "changed 0", "end 0 120"}));
    EXPECT_EQ(width(0), 120);
    user.drag(at(118), at(-50));
    settle();
    EXPECT_EQ(width(0), 0) << "not below nothing";
    makeHeader();
    user.drag(at(98), at(108));
    settle();
    EXPECT_EQ(takeNotes(), (Lines{"begin 0", "track 0 110", "track 0 110", "end 0 110", "changing 0", "changed 0"}));
    EXPECT_EQ(width(0), 110);
    user.moveTo(at(108).x, at(108).y);
    user.press();
    user.moveTo(at(150).x, at(150).y);
    settle();
    ReleaseCapture();
    settle();
    EXPECT_EQ(width(0), 110) << "the drag was broken off";
    user.release();
    settle();
    takeNotes();
    wait(1000); // or the press would be the second one of a double click
    answers[HDN_BEGINTRACK] = TRUE;
    user.drag(at(108), at(150));
    settle();
    EXPECT_EQ(width(0), 110);
    EXPECT_EQ(takeNotes(), Lines{"begin 0"}) << "refused";
}

TEST_F(HeaderTest, ItemsAreDraggedToAnotherPlace) {
    makeHeader(HDS_BUTTONS | HDS_DRAGDROP);
    user.drag(at(20), at(140));
    settle();
    EXPECT_EQ(order(), (std::vector<int>{1, 0, 2}));
    EXPECT_EQ(takeNotes(), (Lines{"drag 0", "drop 0 1", "changing 0", "changed 0"}));
    answers[HDN_ENDDRAG] = TRUE;
    user.drag(at(20), at(220));
    settle();
    EXPECT_EQ(order(), (std::vector<int>{1, 0, 2}));
    answers[HDN_BEGINDRAG] = TRUE;
    user.drag(at(20), at(220));
    settle();
    EXPECT_EQ(order(), (std::vector<int>{1, 0, 2}));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(HeaderTest, TextsAreAlignedAndCut) {
    makeHeader(HDS_BUTTONS, {});
    const struct {
        int format;
        int from;
        int to;
    } rows[] = {{HDF_LEFT, 6, 40}, {HDF_RIGHT, 70, 94}, {HDF_CENTER, 35, 65}};
    int index = 0;
    for (const auto& row : rows) {
        char text[] = "text";
        HDITEM item{};
        item.mask = HDI_WIDTH | HDI_TEXT | HDI_FORMAT;
        item.cxy = 100;
        item.pszText = text;
        item.fmt = row.format | HDF_STRING;
        Header_InsertItem(header, index++, &item);
    }
    settle();
    const std::uint32_t ink = rgbOf(GetSysColor(COLOR_BTNTEXT));
    for (index = 0; index < 3; ++index) {
        for (int x = 3; x < 97; ++x)
            for (int y = 3; y < 14; ++y) {
                const POINT point = onScreen(header, index * 100 + x, y);
                if (pixel(point.x, point.y) == ink) {
                    EXPECT_GE(x, rows[index].from) << index;
                    EXPECT_LT(x, rows[index].to) << index;
                }
            }
        const POINT light = onScreen(header, index * 100, 5);
        EXPECT_EQ(pixel(light.x, light.y), rgbOf(GetSysColor(COLOR_BTNHIGHLIGHT)));
    }
}

TEST_F(HeaderTest, NonsenseArgumentsAndDestructionAreSurvived) {
    makeHeader(HDS_BUTTONS | HDS_FULLDRAG);
    for (UINT message = HDM_FIRST; message <= HDM_CLEARFILTER; ++message)
        for (const WPARAM wParam : {WPARAM{0}, static_cast<WPARAM>(-1), WPARAM{0x7FFFFFFF}})
            if (message != HDM_DELETEITEM)
                send(message, wParam, 0);
    for (const UINT code : {HDN_ITEMCHANGING, HDN_ITEMCHANGED, HDN_BEGINTRACK, HDN_ENDTRACK, HDN_ITEMCLICK,
                            NM_CUSTOMDRAW, NM_RELEASEDCAPTURE}) {
        onNotify.clear();
        makeHeader(HDS_BUTTONS | HDS_FULLDRAG);
        onNotify[code] = [this](NMHDR&) -> LRESULT {
            DestroyWindow(header);
            return 0;
        };
        InvalidateRect(header, nullptr, TRUE);
        user.click(at(50).x, at(50).y);
        user.drag(at(98), at(120));
        settle();
        if (IsWindow(header))
            DestroyWindow(header);
    }
}

} // namespace
} // namespace vndk::test
