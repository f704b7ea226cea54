#include "canvas.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <vector>

namespace {

/// A monochrome bitmap in a context, from rows of '1' and '0'.
class Mono {
public:
    explicit Mono(const Rows& rows)
        : dc_(CreateCompatibleDC(nullptr)),
          bitmap_(CreateBitmap(static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), 1, 1, nullptr)) {
        SelectObject(dc_, bitmap_);
        for (std::size_t y = 0; y < rows.size(); ++y)
            for (std::size_t x = 0; x < rows[y].size(); ++x)
                SetPixel(dc_, static_cast<int>(x), static_cast<int>(y), rows[y][x] == '1' ? kWhite : kBlack);
    }
    ~Mono() {
        DeleteDC(dc_);
        DeleteObject(bitmap_);
    }
    Mono(const Mono&) = delete;
    Mono& operator=(const Mono&) = delete;

    [[nodiscard]] HDC dc() const { return dc_; }
    [[nodiscard]] HBITMAP bitmap() const { return bitmap_; }
    [[nodiscard]] std::string row(int y, int width) const {
        std::string text;
        for (int x = 0; x < width; ++x)
            text += GetPixel(dc_, x, y) == kWhite ? '1' : '0';
        return text;
    }

private:
    HDC dc_;
    HBITMAP bitmap_;
};

void write(Canvas& canvas, const Rows& rows) {
    for (std::size_t y = 0; y < rows.size(); ++y)
        for (std::size_t x = 0; x < rows[y].size(); ++x) {
            const char letter = rows[y][x];
            const COLORREF color = letter == '#'   ? kBlack
                                   : letter == 'R' ? kRed
                                   : letter == 'G' ? kGreen
                                   : letter == 'B' ? kBlue
                                                   : kWhite;
            SetPixel(canvas.dc(), static_cast<int>(x), static_cast<int>(y), color);
        }
}

TEST(Blit, OfOnePixelStretchedFillsAllWithIt) {
    Canvas source(1, 1);
    write(source, {"R"});
    Canvas target(3, 3);
    EXPECT_TRUE(StretchBlt(target.dc(), 0, 0, 2, 2, source.dc(), 0, 0, 1, 1, SRCCOPY));
    EXPECT_EQ(target.rows(), (Rows{"RR.", "RR.", "..."}));
}

TEST(Blit, SizesOfDifferentSignMirror) {
    Canvas source(3, 2);
    write(source, {"RGB", "#RG"});
    struct Case {
        const char* name;
        int x, y, width, height;
        int sourceX, sourceY, sourceWidth, sourceHeight;
        Rows rows;
    };
    for (const Case& row : {Case{"plain", 0, 0, 3, 2, 0, 0, 3, 2, {"RGB.", "#RG.", "...."}},
                            Case{"target to the left", 2, 0, -3, 2, 0, 0, 3, 2, {"BGR.", "GR#.", "...."}},
                            Case{"source to the left", 0, 0, 3, 2, 2, 0, -3, 2, {"BGR.", "GR#.", "...."}},
                            Case{"both to the left", 2, 0, -3, 2, 2, 0, -3, 2, {"RGB.", "#RG.", "...."}},
                            Case{"upside down", 0, 1, 3, -2, 0, 0, 3, 2, {"#RG.", "RGB.", "...."}},
                            Case{"turned round", 2, 1, -3, -2, 0, 0, 3, 2, {"GR#.", "BGR.", "...."}},
                            Case{"doubled and mirrored", 3, 0, -4, 2, 0, 0, 2, 2, {"GGRR", "RR##", "...."}}}) {
        Canvas target(4, 3);
        StretchBlt(target.dc(), row.x, row.y, row.width, row.height, source.dc(), row.sourceX, row.sourceY,
                   row.sourceWidth, row.sourceHeight, SRCCOPY);
        EXPECT_EQ(target.rows(), row.rows) << row.name;
    }
}

TEST(Blit, BetweenOrdersOfRowsKeepsThePictureUpright) {
    Canvas topDown(2, 2);
    write(topDown, {"RG", "B#"});
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), 2, 2, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HBITMAP bottomUp = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, bottomUp);
    const auto* memory = static_cast<const std::uint32_t*>(bits);
    for (bool stretched : {false, true}) {
        PatBlt(dc, 0, 0, 2, 2, WHITENESS);
        if (stretched)
            StretchBlt(dc, 0, 0, 2, 2, topDown.dc(), 0, 0, 2, 2, SRCCOPY);
        else
            BitBlt(dc, 0, 0, 2, 2, topDown.dc(), 0, 0, SRCCOPY);
        EXPECT_EQ(GetPixel(dc, 0, 0), kRed) << stretched;
        EXPECT_EQ(GetPixel(dc, 0, 1), kBlue) << stretched;
        EXPECT_EQ(memory[0] & 0xFFFFFF, 0x0000FFU) << "the bottom row comes first in memory";
    }
    DeleteDC(dc);
    DeleteObject(bottomUp);
}

TEST(Blit, MonochromeSourceShowsTextAndBackgroundColour) {
    const Mono source({"01", "10"});
    Canvas target(2, 2);
    SetTextColor(target.dc(), kRed);
    SetBkColor(target.dc(), kGreen);
    BitBlt(target.dc(), 0, 0, 2, 2, source.dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(target.rows(), (Rows{"RG", "GR"}));
    SetBkColor(source.dc(), kBlue); // the source's own colours don't count
    BitBlt(target.dc(), 0, 0, 2, 2, source.dc(), 0, 0, NOTSRCCOPY);
    EXPECT_EQ(target.color(0, 0), RGB(0, 255, 255)) << "the colours are inverted, not the bits";
}

TEST(Blit, MonochromeTargetHasOnesForTheSourcesBackground) {
    Canvas source(4, 1);
    write(source, {"RG.R"});
    SetBkColor(source.dc(), kRed);
    const Mono target({"0000"});
    BitBlt(target.dc(), 0, 0, 4, 1, source.dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(target.row(0, 4), "1001");
    BitBlt(target.dc(), 0, 0, 4, 1, source.dc(), 0, 0, SRCINVERT);
    EXPECT_EQ(target.row(0, 4), "0000");
}

TEST(Blit, MonochromeToMonochromeKeepsTheBits) {
    const Mono source({"0110"});
    const Mono target({"1111"});
    SetTextColor(target.dc(), kWhite);
    SetBkColor(target.dc(), kBlack);
    SetBkColor(source.dc(), kRed);
    BitBlt(target.dc(), 0, 0, 4, 1, source.dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(target.row(0, 4), "0110");
}

TEST(Blit, TransparentPictureByMaskAndImage) {
    // The classic pair: AND with the mask, then OR with the image.
    Canvas image(3, 1);
    write(image, {"R#G"});
    const Mono mask({"010"});
    Canvas target(3, 1);
    target.clear(kBlue);
    SetTextColor(target.dc(), kBlack);
    SetBkColor(target.dc(), kWhite);
    BitBlt(target.dc(), 0, 0, 3, 1, mask.dc(), 0, 0, SRCAND);
    BitBlt(target.dc(), 0, 0, 3, 1, image.dc(), 0, 0, SRCPAINT);
    EXPECT_EQ(target.rows()[0], "RBG");
}

TEST(Blit, OntoItselfMovesThePictureAsItWas) {
    for (int dy = -3; dy <= 3; ++dy)
        for (int dx = -3; dx <= 3; ++dx) {
            Canvas canvas(12, 12);
            for (int y = 0; y < 12; ++y)
                for (int x = 0; x < 12; ++x)
                    canvas.pixel(x, y) = static_cast<std::uint32_t>(y * 12 + x);
            BitBlt(canvas.dc(), 3 + dx, 3 + dy, 6, 6, canvas.dc(), 3, 3, SRCCOPY);
            for (int y = 0; y < 6; ++y)
                for (int x = 0; x < 6; ++x)
                    ASSERT_EQ(canvas.pixel(3 + dx + x, 3 + dy + y), static_cast<std::uint32_t>((3 + y) * 12 + 3 + x))
                        << dx << ", " << dy << ": " << x << ", " << y;
        }
}

TEST(Blit, OntoItselfMirroredReadsBeforeItWrites) {
    Canvas canvas(4, 1);
    write(canvas, {"RGB#"});
    StretchBlt(canvas.dc(), 3, 0, -4, 1, canvas.dc(), 0, 0, 4, 1, SRCCOPY);
    EXPECT_EQ(canvas.rows()[0], "#BGR");
}

TEST(Blit, PaintsNothingWhereTheSourceEnds) {
    Canvas source(2, 2);
    source.clear(kRed);
    Canvas target(5, 3);
    BitBlt(target.dc(), 0, 0, 5, 3, source.dc(), -1, -1, SRCCOPY);
    EXPECT_EQ(target.rows(), (Rows{".....", ".RR..", ".RR.."}));
    target.clear();
    StretchBlt(target.dc(), 0, 0, 5, 1, source.dc(), 0, 0, 5, 1, SRCCOPY);
    EXPECT_EQ(target.rows()[0], "RR...");
    EXPECT_TRUE(BitBlt(target.dc(), 0, 0, 5, 3, source.dc(), INT_MAX, INT_MIN, SRCCOPY));
}

TEST(Blit, ColoursOfTheSourceAreFoundInTheTargetsTable) {
    struct {
        BITMAPINFOHEADER header{sizeof(BITMAPINFOHEADER), 3, 1, 1, 4, BI_RGB, 0, 0, 0, 3, 0};
        RGBQUAD colors[3] = {{0, 0, 255, 0}, {0, 255, 0, 0}, {255, 0, 0, 0}}; // red, green, blue
    } info;
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap =
        CreateDIBSection(dc, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS, nullptr, nullptr, 0);
    SelectObject(dc, bitmap);
    Canvas source(3, 1);
    source.pixel(0, 0) = 0x2010F0; // nearly blue
    source.pixel(1, 0) = 0xE00010; // nearly red
    source.pixel(2, 0) = 0x00FF00;
    BitBlt(dc, 0, 0, 3, 1, source.dc(), 0, 0, SRCCOPY);
    EXPECT_EQ(GetPixel(dc, 0, 0), kBlue);
    EXPECT_EQ(GetPixel(dc, 1, 0), kRed);
    EXPECT_EQ(GetPixel(dc, 2, 0), kGreen);
    DeleteDC(dc);
    DeleteObject(bitmap);
}

TEST(Shrinking, MergesPixelsByTheStretchMode) {
    struct Case {
        int mode;
        COLORREF first;   // of a pair red, green
        COLORREF other;   // of a pair blue, white
        const char* mono; // of 01 11 00
    };
    for (const Case& row :
         {Case{BLACKONWHITE, kBlack, kBlue, "010"}, Case{WHITEONBLACK, RGB(255, 255, 0), kWhite, "110"},
          Case{COLORONCOLOR, kGreen, kWhite, "110"}, Case{HALFTONE, RGB(128, 128, 0), RGB(128, 128, 255), "010"}}) {
        Canvas source(4, 1);
        write(source, {"RGB."});
        Canvas target(2, 1);
        EXPECT_NE(SetStretchBltMode(target.dc(), row.mode), 0);
        StretchBlt(target.dc(), 0, 0, 2, 1, source.dc(), 0, 0, 4, 1, SRCCOPY);
        EXPECT_EQ(target.color(0, 0), row.first) << row.mode;
        EXPECT_EQ(target.color(1, 0), row.other) << row.mode;
        const Mono bits({"011100"});
        const Mono few({"000"});
        SetStretchBltMode(few.dc(), row.mode);
        StretchBlt(few.dc(), 0, 0, 3, 1, bits.dc(), 0, 0, 6, 1, SRCCOPY);
        EXPECT_EQ(few.row(0, 3), row.mono) << row.mode;
    }
}

TEST(Shrinking, TakesEverySourcePixelOnce) {
    // The mean over everything is kept when sizes don't divide, to within rounding.
    Canvas source(7, 5);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x)
            source.pixel(x, y) = static_cast<std::uint32_t>(x * 30);
    Canvas target(3, 2);
    SetStretchBltMode(target.dc(), HALFTONE);
    StretchBlt(target.dc(), 0, 0, 3, 2, source.dc(), 0, 0, 7, 5, SRCCOPY);
    EXPECT_EQ(target.pixel(0, 0), 15U);  // columns 0 and 1
    EXPECT_EQ(target.pixel(1, 1), 75U);  // 2 and 3
    EXPECT_EQ(target.pixel(2, 0), 150U); // 4 to 6
}

TEST(Enlarging, IsSymmetric) {
    Canvas source(3, 1);
    write(source, {"RGB"});
    for (int width : {4, 5, 7, 8}) {
        Canvas forth(width, 1);
        Canvas back(width, 1);
        StretchBlt(forth.dc(), 0, 0, width, 1, source.dc(), 0, 0, 3, 1, SRCCOPY);
        StretchBlt(back.dc(), width - 1, 0, -width, 1, source.dc(), 0, 0, 3, 1, SRCCOPY);
        std::string mirrored = back.rows()[0];
        std::reverse(mirrored.begin(), mirrored.end());
        EXPECT_EQ(forth.rows()[0], mirrored) << width;
        EXPECT_NE(forth.rows()[0].find('G'), std::string::npos) << width;
    }
}

TEST(MaskBlt, ChoosesTheOperationByTheMask) {
    Canvas source(3, 1);
    source.clear(kRed);
    Canvas target(3, 1);
    const Mono mask({"0101"});
    EXPECT_TRUE(MaskBlt(target.dc(), 0, 0, 3, 1, source.dc(), 0, 0, mask.bitmap(), 1, 0, MAKEROP4(SRCCOPY, DSTINVERT)));
    EXPECT_EQ(target.rows()[0], "R#R");
    EXPECT_FALSE(MaskBlt(target.dc(), 0, 0, 3, 1, source.dc(), 0, 0, mask.bitmap(), 2, 0, MAKEROP4(SRCCOPY, SRCCOPY)));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER) << "the mask is too small";
    EXPECT_TRUE(MaskBlt(target.dc(), 0, 0, 3, 1, source.dc(), 0, 0, nullptr, 0, 0, MAKEROP4(SRCCOPY, DSTINVERT)));
    EXPECT_EQ(target.rows()[0], "RRR");
}

TEST(GetPixel, OutsideOfTheBitmapIsInvalid) {
    Canvas canvas(4, 4);
    for (const POINT& place : {POINT{-1, 0}, POINT{0, -1}, POINT{4, 0}, POINT{0, 4}})
        EXPECT_EQ(GetPixel(canvas.dc(), place.x, place.y), CLR_INVALID) << place.x << ", " << place.y;
    EXPECT_EQ(GetPixel(canvas.dc(), 3, 3), kWhite);
}

} // namespace
