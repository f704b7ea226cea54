#include "text_canvas.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>

namespace {

/// All colours of the classic look told apart: in the standard scheme two of them are equal.
///   f face   L light   H highlight   s shadow   d dark shadow   w window   t text   n window frame
class Parts : public testing::Test {
protected:
    Parts() {
        for (std::size_t index = 0; index < std::size(indexes); ++index)
            before_[index] = GetSysColor(indexes[index]);
        SetSysColors(static_cast<int>(std::size(indexes)), indexes, colors);
    }
    ~Parts() override { SetSysColors(static_cast<int>(std::size(indexes)), indexes, before_); }

    /// '.' is what was there before.
    static Rows rowsOf(Canvas& canvas) {
        constexpr const char* letters = "fLHsdwtbn";
        Rows rows;
        for (int y = 0; y < canvas.height(); ++y) {
            std::string row;
            for (int x = 0; x < canvas.width(); ++x) {
                const COLORREF color = canvas.color(x, y);
                const auto* found = std::find(std::begin(colors), std::end(colors), color);
                row += found != std::end(colors) ? letters[found - std::begin(colors)] : color == kWhite ? '.' : '?';
            }
            rows.push_back(row);
        }
        return rows;
    }

    static Rows control(int width, int height, UINT kind, UINT state) {
        Canvas canvas(width, height);
        RECT rect{0, 0, width, height};
        EXPECT_NE(DrawFrameControl(canvas.dc(), &rect, kind, state), FALSE);
        return rowsOf(canvas);
    }

private:
    static constexpr INT indexes[] = {COLOR_3DFACE,     COLOR_3DLIGHT,    COLOR_3DHILIGHT,
                                      COLOR_3DSHADOW,   COLOR_3DDKSHADOW, COLOR_WINDOW,
                                      COLOR_WINDOWTEXT, COLOR_BTNTEXT,    COLOR_WINDOWFRAME};
    static constexpr COLORREF colors[] = {0x010101, 0x020202, 0x030303, 0x040404, 0x050505,
                                          0x060606, 0x070707, 0x080808, 0x090909};
    COLORREF before_[std::size(indexes)];
};

constexpr INT Parts::indexes[];
constexpr COLORREF Parts::colors[];

TEST_F(Parts, EdgesHaveTheirLightAboveAndShadowBelow) {
    const struct {
        UINT edge;
        UINT flags;
        Rows rows;
    } cases[] = {
        {EDGE_RAISED, BF_RECT | BF_MIDDLE, {"LLLLd", "LHHsd", "LHfsd", "Lsssd", "ddddd"}},
        {EDGE_RAISED, BF_RECT | BF_SOFT, {"HHHHd", "HLLsd", "HL.sd", "Hsssd", "ddddd"}},
        {EDGE_SUNKEN, BF_RECT, {"ssssH", "sddLH", "sd.LH", "sLLLH", "HHHHH"}},
        {EDGE_SUNKEN, BF_RECT | BF_SOFT, {"ddddH", "dssLH", "ds.LH", "dLLLH", "HHHHH"}},
        {EDGE_ETCHED, BF_RECT, {"ssssH", "sHHsH", "sH.sH", "ssssH", "HHHHH"}},
        {EDGE_BUMP, BF_RECT, {"LLLLd", "LddLd", "Ld.Ld", "LLLLd", "ddddd"}},
        {BDR_SUNKENOUTER, BF_RECT, {"ssssH", "s...H", "s...H", "s...H", "HHHHH"}},
        {BDR_RAISEDINNER, BF_TOPLEFT, {"HHHHH", "H....", "H....", "H....", "H...."}},
        {EDGE_SUNKEN, BF_BOTTOM, {".....", ".....", ".....", "LLLLL", "HHHHH"}},
        {EDGE_RAISED, BF_RECT | BF_FLAT | BF_MIDDLE, {"sssss", "sfffs", "sfffs", "sfffs", "sssss"}},
        {EDGE_RAISED, BF_RECT | BF_MONO, {"nnnnn", "nwwwn", "nw.wn", "nwwwn", "nnnnn"}},
        {0, BF_RECT, {".....", ".....", ".....", ".....", "....."}},
    };
    for (const auto& row : cases) {
        Canvas canvas(5, 5);
        RECT rect{0, 0, 5, 5};
        DrawEdge(canvas.dc(), &rect, row.edge, row.flags);
        EXPECT_EQ(rowsOf(canvas), row.rows) << row.edge << ' ' << row.flags;
        EXPECT_EQ(rect, (RECT{0, 0, 5, 5}));
    }
}

TEST_F(Parts, EdgesTellTheInsideWhereAskedTo) {
    Canvas canvas(20, 20);
    RECT rect{2, 3, 15, 16};
    DrawEdge(canvas.dc(), &rect, EDGE_RAISED, BF_RECT | BF_ADJUST);
    EXPECT_EQ(rect, (RECT{4, 5, 13, 14}));
    DrawEdge(canvas.dc(), &rect, BDR_SUNKENOUTER, BF_LEFT | BF_BOTTOM | BF_ADJUST);
    EXPECT_EQ(rect, (RECT{5, 5, 13, 13}));
    EXPECT_EQ(DrawEdge(canvas.dc(), nullptr, EDGE_RAISED, BF_RECT), FALSE);
    EXPECT_EQ(DrawEdge(nullptr, &rect, EDGE_RAISED, BF_RECT), FALSE);
}

TEST_F(Parts, EdgesOfNothingStayInside) {
    for (const RECT rect : {RECT{5, 5, 5, 9}, RECT{5, 5, 6, 6}, RECT{9, 9, 5, 5}}) {
        Canvas canvas(12, 12);
        RECT copy = rect;
        DrawEdge(canvas.dc(), &copy, EDGE_RAISED, BF_RECT | BF_MIDDLE | BF_ADJUST);
        for (int y = 0; y < 12; ++y)
            for (int x = 0; x < 12; ++x)
                EXPECT_TRUE(canvas.color(x, y) == kWhite || PtInRect(&rect, {x, y}) != FALSE) << rect;
    }
}

TEST_F(Parts, CheckBoxIsSunkenWithItsMark) {
    EXPECT_EQ(control(13, 13, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_CHECKED),
              (Rows{"ssssssssssssH", "sddddddddddLH", "sdwwwwwwwwwLH", "sdwwwwwwwtwLH", "sdwwwwwwttwLH",
                    "sdwtwwwtttwLH", "sdwttwtttwwLH", "sdwtttttwwwLH", "sdwwtttwwwwLH", "sdwwwtwwwwwLH",
                    "sdwwwwwwwwwLH", "sLLLLLLLLLLLH", "HHHHHHHHHHHHH"}));
    const Rows dead = control(13, 13, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_CHECKED | DFCS_INACTIVE);
    EXPECT_EQ(dead[5], "sdfsfffsssfLH");
    const Rows pushed = control(13, 13, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_PUSHED);
    EXPECT_EQ(pushed[5], "sdfffffffffLH");
    const Rows between = control(13, 13, DFC_BUTTON, DFCS_BUTTON3STATE | DFCS_CHECKED);
    EXPECT_EQ(between[2], "sdfHfHfHfHfLH");
    EXPECT_EQ(between[3], "sdHfHfHfHsHLH");
}

TEST_F(Parts, RadioButtonIsRoundAndLeavesItsCorners) {
    EXPECT_EQ(control(12, 12, DFC_BUTTON, DFCS_BUTTONRADIO | DFCS_CHECKED),
              (Rows{"....ssss....", "..ssddddss..", ".sddwwwwddH.", ".sdwwwwwwLH.", "sdwwwttwwwLH", "sdwwttttwwLH",
                    "sdwwttttwwLH", "sdwwwttwwwLH", ".sdwwwwwwLH.", ".sLLwwwwLLH.", "..HHLLLLHH..", "....HHHH...."}));
}

TEST_F(Parts, PushButtonHasTheSoftEdge) {
    EXPECT_EQ(control(6, 5, DFC_BUTTON, DFCS_BUTTONPUSH), (Rows{"HHHHHd", "HLLLsd", "HLffsd", "Hssssd", "dddddd"}));
    EXPECT_EQ(control(6, 5, DFC_BUTTON, DFCS_BUTTONPUSH | DFCS_PUSHED),
              (Rows{"dddddH", "dsssLH", "dsffLH", "dLLLLH", "HHHHHH"}));
    EXPECT_EQ(control(6, 6, DFC_BUTTON, DFCS_BUTTONPUSH | DFCS_CHECKED)[2], "dsfHLH") << "a checked one is dithered";
    Canvas canvas(30, 30);
    RECT rect{0, 0, 30, 30};
    DrawFrameControl(canvas.dc(), &rect, DFC_BUTTON, DFCS_BUTTONPUSH | DFCS_ADJUSTRECT);
    EXPECT_EQ(rect, (RECT{2, 2, 28, 28}));
}

TEST_F(Parts, ArrowsOfScrollBarsMoveWhenPushed) {
    const Rows up = control(16, 16, DFC_SCROLL, DFCS_SCROLLUP);
    EXPECT_EQ(up[0], "LLLLLLLLLLLLLLLd");
    EXPECT_EQ(up[1], "LHHHHHHHHHHHHHsd");
    EXPECT_EQ(up[6], "LHfffffbffffffsd");
    EXPECT_EQ(up[9], "LHffbbbbbbbfffsd");
    const Rows pushed = control(16, 16, DFC_SCROLL, DFCS_SCROLLUP | DFCS_PUSHED);
    EXPECT_EQ(pushed[0], "ssssssssssssssss");
    EXPECT_EQ(pushed[7], "sfffffffbffffffs");
    const Rows dead = control(16, 16, DFC_SCROLL, DFCS_SCROLLLEFT | DFCS_INACTIVE);
    EXPECT_EQ(dead[7], "LHfffssssHffffsd") << "embossed";
}

TEST_F(Parts, CloseButtonHasItsCross) {
    const Rows rows = control(16, 14, DFC_CAPTION, DFCS_CAPTIONCLOSE);
    EXPECT_EQ(rows[3], "HLffbbffffbbffsd");
    EXPECT_EQ(rows[6], "HLfffffbbfffffsd");
    EXPECT_EQ(rows[9], "HLffbbffffbbffsd");
    EXPECT_EQ(control(16, 14, DFC_CAPTION, DFCS_CAPTIONCLOSE | DFCS_PUSHED)[4], "dsfffbbffffbbfLH");
    const Rows twice = control(32, 28, DFC_CAPTION, DFCS_CAPTIONCLOSE);
    EXPECT_EQ(twice[6].substr(8, 4), "bbbb") << "twice as large in a button of twice the size";
    EXPECT_EQ(twice[7].substr(8, 4), "bbbb");
}

TEST_F(Parts, SizeGripHasRidgesAcrossTheCorner) {
    EXPECT_EQ(control(8, 8, DFC_SCROLL, DFCS_SCROLLSIZEGRIP),
              (Rows{"ffffffff", "fffffffH", "ffffffHs", "fffffHss", "ffffHssf", "fffHssfH", "ffHssfHs", "fHssfHss"}));
    EXPECT_EQ(control(8, 8, DFC_SCROLL, DFCS_SCROLLSIZEGRIP | DFCS_TRANSPARENT)[7], ".Hss.Hss");
}

TEST_F(Parts, MenuSignsAreBlackOnWhite) {
    const Rows rows = control(13, 13, DFC_MENU, DFCS_MENUCHECK);
    EXPECT_EQ(rows[3], ".........?...");
    EXPECT_EQ(rows[5], "...?...???...");
}

/// Whatever is asked for and wherever: nothing is painted outside.
TEST_F(Parts, StayInTheirRectangles) {
    std::mt19937 random(98);
    for (int round = 0; round < 600; ++round) {
        TextCanvas canvas(40, 40);
        const int left = static_cast<int>(random() % 20);
        const int top = static_cast<int>(random() % 20);
        const RECT rect{left, top, left + static_cast<int>(random() % 20), top + static_cast<int>(random() % 20)};
        const UINT kind = DFC_CAPTION + random() % 4;
        const UINT state = random() & 0xFFFF & ~UINT{DFCS_ADJUSTRECT};
        RECT copy = rect;
        ASSERT_NE(DrawFrameControl(canvas.dc(), &copy, kind, state), FALSE);
        const RECT painted = canvas.painted();
        RECT both{};
        UnionRect(&both, &painted, &rect);
        ASSERT_TRUE(IsRectEmpty(&painted) != FALSE || both == rect) << kind << ' ' << state << ' ' << rect << painted;
    }
}

TEST_F(Parts, OfNonsenseAreRefusedAndWildPlacesSurvived) {
    Canvas canvas(10, 10);
    RECT rect{0, 0, 10, 10};
    EXPECT_EQ(DrawFrameControl(canvas.dc(), &rect, 77, 0), FALSE);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(DrawFrameControl(canvas.dc(), nullptr, DFC_BUTTON, 0), FALSE);
    EXPECT_EQ(DrawFrameControl(nullptr, &rect, DFC_BUTTON, 0), FALSE);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    for (RECT wild : {RECT{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, RECT{INT_MAX, 0, INT_MIN, 5}, RECT{0, -9, INT_MAX, 3}})
        for (UINT kind = DFC_CAPTION; kind <= DFC_BUTTON; ++kind)
            for (const UINT state : {0U, 1U, 2U, 3U, 4U, 8U, 0x10U, 0x100U, 0x600U}) {
                RECT copy = wild;
                EXPECT_NE(DrawFrameControl(canvas.dc(), &copy, kind, state), FALSE) << kind << ' ' << state;
            }
}

} // namespace
