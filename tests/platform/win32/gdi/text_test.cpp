#include "gdi/font.h"
#include "gdi/text_out.h"
#include "text_canvas.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <climits>

using namespace vndk::win32;

namespace {

const char* const kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

TEXTMETRICA metricsOf(Canvas& canvas) {
    TEXTMETRICA metrics{};
    EXPECT_NE(GetTextMetricsA(canvas.dc(), &metrics), FALSE);
    return metrics;
}

LOGFONTA described(const char* face, int height) {
    LOGFONTA description{};
    description.lfHeight = height;
    std::strcpy(description.lfFaceName, face);
    return description;
}

TEST(Font, OfDialogsGivesUnitsOfSixByThirteen) {
    TextCanvas canvas(10, 10);
    const TEXTMETRICA metrics = metricsOf(canvas);
    EXPECT_EQ(metrics.tmHeight, 13);
    EXPECT_EQ(metrics.tmAscent + metrics.tmDescent, metrics.tmHeight);
    EXPECT_EQ(metrics.tmInternalLeading, 2);
    EXPECT_EQ(metrics.tmAveCharWidth, 6);
    EXPECT_EQ((canvas.textWidth(kAlphabet) / 26 + 1) / 2, 6);
}

TEST(Font, HeightIsTheEmsWhenNegativeAndTheCellsWhenPositive) {
    const struct {
        int height;
        int em;   // 0: doesn't matter
        int cell; // the highest that may come out
    } cases[] = {{-11, 11, 13},  {13, 11, 13},  {-16, 16, 100},        {16, 0, 16},
                 {0, 0, 16},     {1, 1, 100},   {-1, 1, 100},          {24, 0, 24},
                 {-24, 24, 100}, {100, 0, 100}, {INT_MIN, 0, INT_MAX}, {INT_MAX, 0, INT_MAX}};
    for (const auto& row : cases) {
        Canvas canvas(1, 1);
        canvas.use(CreateFontA(row.height, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"));
        const TEXTMETRICA metrics = metricsOf(canvas);
        EXPECT_LE(metrics.tmHeight, row.cell) << row.height;
        EXPECT_GT(metrics.tmHeight, 0) << row.height;
        if (row.em != 0) {
            EXPECT_EQ(metrics.tmHeight - metrics.tmInternalLeading, row.em) << row.height;
        }
    }
}

TEST(Font, WidthAskedForIsTheAverage) {
    Canvas canvas(1, 1);
    canvas.use(CreateFontA(-16, 20, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Arial"));
    EXPECT_NEAR(metricsOf(canvas).tmAveCharWidth, 20, 1);
    EXPECT_EQ(metricsOf(canvas).tmHeight - metricsOf(canvas).tmInternalLeading, 16);
}

TEST(Font, IsFoundByNameElseByPitchAndFamily) {
    const struct {
        const char* name;
        int pitchAndFamily;
        Family family;
    } cases[] = {{"MS Shell Dlg", 0, Family::sans},
                 {"tahoma", FF_ROMAN, Family::sans},
                 {"Times New Roman", 0, Family::serif},
                 {"COURIER NEW", FF_SWISS, Family::mono},
                 {"no such face", 0, Family::sans},
                 {"no such face", FF_ROMAN, Family::serif},
                 {"no such face", FF_MODERN, Family::mono},
                 {"", FIXED_PITCH, Family::mono},
                 {"", 0, Family::sans}};
    for (const auto& row : cases) {
        LOGFONTA description = described(row.name, -11);
        description.lfPitchAndFamily = static_cast<BYTE>(row.pitchAndFamily);
        EXPECT_EQ(faceStyleFor(description).family, row.family) << row.name << ' ' << row.pitchAndFamily;
    }
}

TEST(Font, OfFixedPitchHasCharactersOfOneWidth) {
    Canvas canvas(1, 1);
    canvas.use(CreateFontA(-13, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, FIXED_PITCH, "Terminal"));
    INT widths[224];
    ASSERT_NE(GetCharWidth32A(canvas.dc(), 32, 255, widths), FALSE);
    for (const INT width : widths)
        EXPECT_EQ(width, widths[0]);
    EXPECT_EQ(metricsOf(canvas).tmPitchAndFamily & TMPF_FIXED_PITCH, 0) << "the bit means that widths differ";
}

TEST(Font, KeepsItsDescription) {
    LOGFONTA asked = described("Some Face", -20);
    asked.lfWeight = FW_BOLD;
    asked.lfItalic = 1;
    HFONT font = CreateFontIndirectA(&asked);
    LOGFONTA answered{};
    EXPECT_EQ(GetObjectA(font, sizeof answered, &answered), static_cast<int>(sizeof answered));
    EXPECT_EQ(std::memcmp(&asked, &answered, sizeof asked), 0);

    Canvas canvas(1, 1);
    canvas.use(font);
    char name[LF_FACESIZE] = "";
    EXPECT_EQ(GetTextFaceA(canvas.dc(), 5, name), 5);
    EXPECT_STREQ(name, "Some");
    EXPECT_EQ(GetTextFaceA(canvas.dc(), 0, nullptr), 10);
    EXPECT_EQ(metricsOf(canvas).tmWeight, FW_BOLD);
    EXPECT_EQ(CreateFontIndirectA(nullptr), nullptr);
}

TEST(Font, WithoutFilesHasNoWidthAndSaysSoOnce) {
    FontFiles files("/no/such/folder");
    testing::internal::CaptureStderr();
    const Font font(described("Arial", -11), files);
    const Font other(described("Courier", -20), files);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("/no/such/folder/LiberationSans-Regular.ttf"), std::string::npos) << said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    EXPECT_EQ(font.width("text"), 0);
    EXPECT_EQ(font.metrics().tmHeight, 13) << "lines keep their distance";
    EXPECT_EQ(font.glyph('W').width, 0);
}

TEST(TextExtent, IsTheSumOfTheWidths) {
    TextCanvas canvas(1, 1);
    INT widths[256];
    ASSERT_NE(GetCharWidth32A(canvas.dc(), 0, 255, widths), FALSE);
    const char* text = "Bl\xF6"
                       "cke \x80";
    int sum = 0;
    for (const char* at = text; *at != '\0'; ++at)
        sum += widths[static_cast<unsigned char>(*at)];
    EXPECT_EQ(canvas.textWidth(text), sum);
    EXPECT_GT(widths[0x80], 0) << "the euro sign is there";
}

TEST(TextExtent, CountsTheCharactersThatFit) {
    TextCanvas canvas(1, 1);
    const char* text = "Fitting";
    for (int room = -1; room <= canvas.textWidth(text) + 1; ++room) {
        int fit = -1;
        INT extents[7] = {};
        SIZE size{};
        ASSERT_NE(GetTextExtentExPointA(canvas.dc(), text, 7, room, &fit, extents, &size), FALSE);
        EXPECT_EQ(size.cx, canvas.textWidth(text));
        ASSERT_LE(fit, 7);
        EXPECT_LE(fit == 0 ? -1 : extents[fit - 1], room) << room;
        if (fit < 7) {
            EXPECT_GT(canvas.textWidth(std::string(text, static_cast<std::size_t>(fit) + 1).c_str()), room) << room;
        }
    }
}

TEST(TextOutput, TransparentLeavesTheGroundAndOpaqueFillsTheCell) {
    TextCanvas canvas(60, 30);
    SetTextColor(canvas.dc(), kRed);
    SetBkColor(canvas.dc(), kBlue);
    TextOutA(canvas.dc(), 5, 7, "Mono", 4);
    const auto ink = canvas.pixelsOf(kRed);
    EXPECT_FALSE(ink.empty());
    EXPECT_EQ(canvas.pixelsOf(kWhite).size(), 60u * 30u - ink.size());

    canvas.clear();
    SetBkMode(canvas.dc(), OPAQUE);
    TextOutA(canvas.dc(), 5, 7, "Mono", 4);
    EXPECT_EQ(canvas.pixelsOf(kRed), ink);
    EXPECT_EQ(canvas.painted(), (RECT{5, 7, 5 + canvas.textWidth("Mono"), 7 + 13}));
    EXPECT_EQ(canvas.pixelsOf(kBlue).size() + ink.size(), static_cast<std::size_t>(canvas.textWidth("Mono") * 13));
}

TEST(TextOutput, IsAlignedToThePoint) {
    TextCanvas canvas(100, 60);
    SetBkMode(canvas.dc(), OPAQUE);
    SetBkColor(canvas.dc(), kGreen);
    const int width = canvas.textWidth("Align");
    const struct {
        UINT align;
        int left;
        int top;
    } cases[] = {{TA_LEFT | TA_TOP, 50, 30},
                 {TA_RIGHT | TA_TOP, 50 - width, 30},
                 {TA_CENTER | TA_BOTTOM, 50 - width / 2, 30 - 13},
                 {TA_LEFT | TA_BASELINE, 50, 30 - 10}};
    for (const auto& row : cases) {
        canvas.clear();
        SetTextAlign(canvas.dc(), row.align);
        TextOutA(canvas.dc(), 50, 30, "Align", 5);
        EXPECT_EQ(canvas.painted(), (RECT{row.left, row.top, row.left + width, row.top + 13})) << row.align;
    }
}

TEST(TextOutput, MovesThePositionWhereItIsAskedTo) {
    TextCanvas canvas(100, 20);
    const int width = canvas.textWidth("ab");
    const struct {
        UINT align;
        int moved;
    } cases[] = {{TA_LEFT, width}, {TA_RIGHT, -width}, {TA_CENTER, 0}};
    for (const auto& row : cases) {
        SetTextAlign(canvas.dc(), row.align | TA_UPDATECP);
        MoveToEx(canvas.dc(), 40, 3, nullptr);
        TextOutA(canvas.dc(), 1000, 1000, "ab", 2);
        POINT position{};
        GetCurrentPositionEx(canvas.dc(), &position);
        EXPECT_EQ(position.x, 40 + row.moved) << row.align;
        EXPECT_EQ(position.y, 3) << row.align;
    }
    EXPECT_NE(canvas.painted(), RECT{}) << "the position counts, not the point";
}

TEST(TextOutput, FillsAndClipsToARectangle) {
    TextCanvas canvas(80, 30);
    SetBkColor(canvas.dc(), kGreen);
    const RECT rect{10, 5, 22, 14};
    ExtTextOutA(canvas.dc(), 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
    EXPECT_EQ(canvas.pixelsOf(kGreen).size(), 12u * 9u);
    EXPECT_EQ(canvas.painted(), rect);

    canvas.clear();
    TextOutA(canvas.dc(), 5, 5, "WWWW", 4);
    const auto all = canvas.pixelsOf(kBlack);
    canvas.clear();
    ExtTextOutA(canvas.dc(), 5, 5, ETO_CLIPPED, &rect, "WWWW", 4, nullptr);
    for (const auto& [x, y] : all)
        EXPECT_EQ(canvas.pixelsOf(kBlack).count({x, y}), PtInRect(&rect, {x, y}) != FALSE ? 1u : 0u) << x << ' ' << y;
}

TEST(TextOutput, TakesTheDistancesThatAreGiven) {
    TextCanvas spaced(60, 20);
    TextCanvas single(60, 20);
    const INT advances[] = {17, 23, 5};
    ExtTextOutA(spaced.dc(), 2, 2, 0, nullptr, "abc", 3, advances);
    TextOutA(single.dc(), 2, 2, "a", 1);
    TextOutA(single.dc(), 19, 2, "b", 1);
    TextOutA(single.dc(), 42, 2, "c", 1);
    EXPECT_EQ(spaced.rows(), single.rows());
}

TEST(TextOutput, GoesThroughTheClip) {
    TextCanvas whole(120, 20);
    TextOutA(whole.dc(), 1, 1, "Clipped by pieces", 17);
    TextCanvas clipped(120, 20);
    HRGN region = CreateRectRgn(0, 0, 0, 0);
    for (int index = 0; index < 12; ++index) {
        HRGN piece = CreateRectRgn(index * 10, index % 5, index * 10 + 7, 9 + index);
        CombineRgn(region, region, piece, RGN_OR);
        DeleteObject(piece);
    }
    SelectClipRgn(clipped.dc(), region);
    TextOutA(clipped.dc(), 1, 1, "Clipped by pieces", 17);
    std::set<std::pair<int, int>> expected;
    for (const auto& [x, y] : whole.pixelsOf(kBlack))
        if (PtInRegion(region, x, y) != FALSE)
            expected.emplace(x, y);
    EXPECT_EQ(clipped.pixelsOf(kBlack), expected);
    DeleteObject(region);
}

TEST(TextOutput, PaintsOnEveryKindOfBitmap) {
    TextCanvas model(40, 16);
    TextOutA(model.dc(), 2, 1, "g%W", 3);
    for (const int bits : {1, 4, 8, 16, 24}) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), 40, 16, 1, static_cast<WORD>(bits), BI_RGB, 0, 0, 0, 2, 0};
        struct {
            BITMAPINFO info;
            RGBQUAD second;
        } table{info, {255, 255, 255, 0}};
        void* rows = nullptr;
        HBITMAP bitmap = CreateDIBSection(nullptr, &table.info, DIB_RGB_COLORS, &rows, nullptr, 0);
        ASSERT_NE(bitmap, nullptr) << bits;
        HDC dc = CreateCompatibleDC(nullptr);
        HFONT font = dialogFont();
        SelectObject(dc, bitmap);
        SelectObject(dc, font);
        const RECT all{0, 0, 40, 16};
        FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        SetBkMode(dc, TRANSPARENT);
        TextOutA(dc, 2, 1, "g%W", 3);
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 40; ++x)
                ASSERT_EQ(GetPixel(dc, x, y) == kBlack, model.color(x, y) == kBlack) << bits << ": " << x << ' ' << y;
        DeleteDC(dc);
        DeleteObject(font);
        DeleteObject(bitmap);
    }
}

TEST(TextOutput, TurnsByQuarters) {
    TextCanvas upright(100, 100);
    TextOutA(upright.dc(), 50, 50, "Turn", 4);
    const auto model = upright.pixelsOf(kBlack);
    for (int turns = 0; turns < 4; ++turns) {
        TextCanvas turned(100, 100);
        turned.use(CreateFontA(-11, 0, 900 * turns + 7, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "MS Sans Serif"));
        TextOutA(turned.dc(), 50, 50, "Turn", 4);
        std::set<std::pair<int, int>> expected;
        for (auto [x, y] : model) {
            x -= 50;
            y -= 50;
            for (int turn = 0; turn < turns; ++turn)
                std::tie(x, y) = std::pair(y, -x - 1); // counterclockwise about the corner between pixels
            expected.emplace(50 + x, 50 + y);
        }
        EXPECT_EQ(turned.pixelsOf(kBlack), expected) << turns;
    }
}

TEST(TextOutput, UnderlinesBelowTheBaseLineAndStrikesThrough) {
    TextCanvas plain(60, 20);
    TextOutA(plain.dc(), 3, 2, "bar", 3);
    TextCanvas barred(60, 20);
    barred.use(CreateFontA(-11, 0, 0, 0, FW_NORMAL, 0, 1, 1, 0, 0, 0, 0, 0, "MS Sans Serif"));
    TextOutA(barred.dc(), 3, 2, "bar", 3);
    std::set<int> rows;
    const auto before = plain.pixelsOf(kBlack);
    for (const auto& place : barred.pixelsOf(kBlack))
        if (before.count(place) == 0)
            rows.insert(place.second);
    EXPECT_EQ(rows, (std::set<int>{2 + 10 - 3, 2 + 10 + 1}));
}

TEST(TextOutput, OfNonsenseIsRefused) {
    TextCanvas canvas(10, 10);
    HDC dead = CreateCompatibleDC(nullptr);
    DeleteDC(dead);
    SIZE size{};
    TEXTMETRICA metrics{};
    INT widths[4];
    const auto fails = [](BOOL result, DWORD error) { return result == FALSE && GetLastError() == error; };
    EXPECT_TRUE(fails(TextOutA(dead, 0, 0, "x", 1), ERROR_INVALID_HANDLE));
    EXPECT_TRUE(fails(GetTextMetricsA(dead, &metrics), ERROR_INVALID_HANDLE));
    EXPECT_TRUE(fails(GetTextExtentPoint32A(dead, "x", 1, &size), ERROR_INVALID_HANDLE));
    EXPECT_TRUE(fails(TextOutA(canvas.dc(), 0, 0, nullptr, 1), ERROR_INVALID_PARAMETER));
    EXPECT_TRUE(fails(TextOutA(canvas.dc(), 0, 0, "x", -1), ERROR_INVALID_PARAMETER));
    EXPECT_TRUE(fails(ExtTextOutA(canvas.dc(), 0, 0, ETO_OPAQUE, nullptr, "x", 1, nullptr), ERROR_INVALID_PARAMETER));
    EXPECT_TRUE(fails(GetTextExtentPoint32A(canvas.dc(), "x", 1, nullptr), ERROR_INVALID_PARAMETER));
    EXPECT_TRUE(fails(GetTextMetricsA(canvas.dc(), nullptr), ERROR_INVALID_PARAMETER));
    EXPECT_TRUE(fails(GetCharWidth32A(canvas.dc(), 254, 256, widths), ERROR_INVALID_PARAMETER));
    EXPECT_TRUE(fails(GetCharWidth32A(canvas.dc(), 5, 4, widths), ERROR_INVALID_PARAMETER));
    EXPECT_TRUE(fails(GetTextFaceA(canvas.dc(), 0, reinterpret_cast<LPSTR>(widths)), ERROR_INVALID_PARAMETER));
}

TEST(TextOutput, SurvivesWildPlacesAndSizes) {
    Canvas canvas(20, 20);
    const INT wild[] = {INT_MAX, INT_MIN, INT_MAX};
    for (const int height : {INT_MIN, INT_MAX}) {
        canvas.use(CreateFontA(height, INT_MAX, 900, 0, 0, 0, 1, 1, 0, 0, 0, 0, 0, "Arial"));
        for (const int place : {INT_MIN, -5, 0, INT_MAX}) {
            EXPECT_NE(TextOutA(canvas.dc(), place, place, "WW", 2), FALSE);
            EXPECT_NE(ExtTextOutA(canvas.dc(), place, 0, 0, nullptr, "abc", 3, wild), FALSE);
        }
    }
}

TEST(MulDiv, RoundsToNearestAndTellsWhatDoesNotFit) {
    const struct {
        int number;
        int numerator;
        int denominator;
        int result;
    } cases[] = {{8, 96, 72, 11},         {-8, 96, 72, -11},   {1, 1, 2, 1},
                 {-1, 1, 2, -1},          {1, 1, -2, -1},      {7, 10, 4, 18},
                 {5, 1, 0, -1},           {INT_MAX, 2, 1, -1}, {INT_MAX, 1000, 1000, INT_MAX},
                 {INT_MIN, 1, 1, INT_MIN}};
    for (const auto& row : cases)
        EXPECT_EQ(MulDiv(row.number, row.numerator, row.denominator), row.result) << row.number << ' ' << row.numerator;
}

} // namespace
