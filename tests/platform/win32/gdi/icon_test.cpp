#include "gdi/cursor_image.h"
#include "gdi/icon.h"
#include "gdi/objects.h"
#include "res_file.h"
#include "text_canvas.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>

using namespace vndk::win32;

namespace {

/// Looks for objects and icons that are left over.
class Icons : public testing::Test {
protected:
    void SetUp() override {
        objects_ = objectCount();
        icons_ = iconCount();
    }
    void TearDown() override {
        EXPECT_EQ(objectCount(), objects_);
        EXPECT_EQ(iconCount(), icons_);
    }

private:
    std::size_t objects_ = 0;
    std::size_t icons_ = 0;
};

/// 4 x 2: red, red, masked black, masked white / green, green, green, masked black.
HICON makeIcon() {
    constexpr BYTE mask[] = {0x30, 0, 0x10, 0};
    constexpr std::uint32_t colors[] = {0xFF0000, 0xFF0000, 0, 0xFFFFFF, 0x00FF00, 0x00FF00, 0x00FF00, 0};
    return CreateIcon(nullptr, 4, 2, 1, 32, mask, reinterpret_cast<const BYTE*>(colors));
}

TEST_F(Icons, ShowTheGroundWhereTheyAreMaskedAndInvertItWhereWhite) {
    HICON icon = makeIcon();
    for (const bool dark : {false, true}) {
        Canvas canvas(6, 4);
        canvas.clear(dark ? kBlack : kWhite);
        EXPECT_NE(DrawIconEx(canvas.dc(), 1, 1, icon, 0, 0, 0, nullptr, DI_NORMAL), FALSE);
        EXPECT_EQ(canvas.rows(),
                  (dark ? Rows{"######", "#RR#.#", "#GGG##", "######"} : Rows{"......", ".RR.#.", ".GGG..", "......"}));
    }
    DestroyIcon(icon);
}

TEST_F(Icons, PaintTheirPartsAlone) {
    HICON icon = makeIcon();
    Canvas canvas(4, 2);
    canvas.clear(kBlue);
    DrawIconEx(canvas.dc(), 0, 0, icon, 0, 0, 0, nullptr, DI_MASK);
    EXPECT_EQ(canvas.rows(), (Rows{"##..", "###."}));
    DrawIconEx(canvas.dc(), 0, 0, icon, 0, 0, 0, nullptr, DI_IMAGE);
    EXPECT_EQ(canvas.rows(), (Rows{"RR#.", "GGG#"}));
    HBRUSH blue = CreateSolidBrush(kBlue);
    DrawIconEx(canvas.dc(), 0, 0, icon, 0, 0, 0, blue, DI_NORMAL);
    EXPECT_EQ(canvas.color(2, 0), kBlue);
    DeleteObject(blue);
    DestroyIcon(icon);
}

TEST_F(Icons, AreStretchedAndClipped) {
    HICON icon = makeIcon();
    Canvas canvas(8, 5);
    IntersectClipRect(canvas.dc(), 0, 0, 7, 3);
    DrawIconEx(canvas.dc(), 0, 0, icon, 8, 4, 0, nullptr, DI_NORMAL);
    EXPECT_EQ(canvas.rows(), (Rows{"RRRR..#.", "RRRR..#.", "GGGGGG..", "........", "........"}));
    Canvas large(32, 32);
    DrawIcon(large.dc(), 0, 0, icon);
    EXPECT_EQ(large.color(15, 15), kRed) << "the system's size";
    EXPECT_EQ(large.color(15, 16), kGreen);
    DestroyIcon(icon);
}

TEST_F(Icons, BlendWhereTheyHaveAlpha) {
    Canvas colors(3, 1);
    Canvas mask(3, 1);
    colors.pixel(0, 0) = 0x80FF0000;
    colors.pixel(1, 0) = 0x00FF0000;
    colors.pixel(2, 0) = 0xFF0000FF;
    ICONINFO info{TRUE, 0, 0, mask.bitmap(), colors.bitmap()};
    HICON icon = CreateIconIndirect(&info);
    Canvas canvas(3, 1);
    canvas.clear(kGreen);
    DrawIconEx(canvas.dc(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL);
    EXPECT_EQ(canvas.color(0, 0), RGB(128, 127, 0));
    EXPECT_EQ(canvas.color(1, 0), kGreen) << "the white mask doesn't count";
    EXPECT_EQ(canvas.color(2, 0), kBlue);
    DestroyIcon(icon);
}

TEST_F(Icons, OfWhichAllAlphasAreAlikeGoByTheMask) {
    for (const std::uint32_t alpha : {0x00000000U, 0xFF000000U}) {
        Canvas colors(2, 1);
        Canvas mask(2, 1);
        colors.pixel(0, 0) = alpha | 0xFF0000;
        colors.pixel(1, 0) = alpha;
        mask.pixel(0, 0) = 0;
        ICONINFO info{TRUE, 0, 0, mask.bitmap(), colors.bitmap()};
        HICON icon = CreateIconIndirect(&info);
        Canvas canvas(2, 1);
        canvas.clear(kGreen);
        DrawIconEx(canvas.dc(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL);
        EXPECT_EQ(canvas.rows(), Rows{"RG"}) << alpha;
        DestroyIcon(icon);
    }
}

TEST_F(Icons, GiveCopiesOfTheirBitmaps) {
    HICON icon = makeIcon();
    ICONINFO info{};
    ASSERT_NE(GetIconInfo(icon, &info), FALSE);
    EXPECT_NE(info.fIcon, FALSE);
    EXPECT_EQ(info.xHotspot, 2u);
    EXPECT_EQ(info.yHotspot, 1u);
    BITMAP mask{};
    BITMAP color{};
    GetObjectA(info.hbmMask, sizeof mask, &mask);
    GetObjectA(info.hbmColor, sizeof color, &color);
    EXPECT_EQ(mask.bmBitsPixel, 1);
    EXPECT_EQ(mask.bmHeight, 2);
    EXPECT_EQ(color.bmWidth, 4);
    HICON again = CreateIconIndirect(&info);
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    Canvas one(4, 2);
    Canvas two(4, 2);
    DrawIconEx(one.dc(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL);
    DrawIconEx(two.dc(), 0, 0, again, 0, 0, 0, nullptr, DI_NORMAL);
    EXPECT_EQ(one.rows(), two.rows());
    EXPECT_NE(DestroyIcon(icon), FALSE);
    EXPECT_NE(DestroyIcon(again), FALSE);
}

TEST_F(Icons, OfOneColorKeepMaskAndInversionInOneBitmap) {
    constexpr BYTE andBits[] = {0x30, 0, 0x30, 0};
    constexpr BYTE xorBits[] = {0x50, 0, 0x50, 0};
    HCURSOR cursor = CreateCursor(nullptr, 3, 1, 4, 2, andBits, xorBits);
    ICONINFO info{};
    ASSERT_NE(GetIconInfo(cursor, &info), FALSE);
    EXPECT_EQ(info.fIcon, FALSE);
    EXPECT_EQ(info.xHotspot, 3u);
    EXPECT_EQ(info.hbmColor, nullptr);
    BITMAP mask{};
    GetObjectA(info.hbmMask, sizeof mask, &mask);
    EXPECT_EQ(mask.bmHeight, 4);
    HICON again = CreateIconIndirect(&info);
    DeleteObject(info.hbmMask);
    Canvas canvas(4, 2);
    DrawIconEx(canvas.dc(), 0, 0, again, 0, 0, 0, nullptr, DI_NORMAL);
    EXPECT_EQ(canvas.rows(), (Rows{"#..#", "#..#"})) << "black, white, the ground, inverted";
    DestroyCursor(cursor);
    DestroyIcon(again);
}

TEST_F(Icons, AreGoneOnceDestroyed) {
    HICON icon = makeIcon();
    HICON copy = CopyIcon(icon);
    EXPECT_NE(copy, icon);
    EXPECT_NE(DestroyIcon(icon), FALSE);
    Canvas canvas(4, 4);
    ICONINFO info{};
    for (HICON dead : {icon, HICON{nullptr}, reinterpret_cast<HICON>(canvas.bitmap())}) {
        EXPECT_EQ(DestroyIcon(dead), FALSE);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_CURSOR_HANDLE);
        EXPECT_EQ(GetIconInfo(dead, &info), FALSE);
        EXPECT_EQ(CopyIcon(dead), nullptr);
        EXPECT_EQ(DrawIcon(canvas.dc(), 0, 0, dead), FALSE);
        EXPECT_FALSE(cursorImage(dead));
    }
    EXPECT_NE(DrawIcon(canvas.dc(), 0, 0, copy), FALSE);
    DestroyIcon(copy);
}

TEST_F(Icons, OfNonsenseAreRefused) {
    constexpr BYTE bits[64] = {};
    EXPECT_EQ(CreateIcon(nullptr, 0, 4, 1, 1, bits, bits), nullptr);
    EXPECT_EQ(CreateIcon(nullptr, 4, INT_MAX, 1, 1, bits, bits), nullptr);
    EXPECT_EQ(CreateIcon(nullptr, 4, 4, 1, 7, bits, bits), nullptr);
    EXPECT_EQ(CreateIcon(nullptr, 4, 4, 1, 1, nullptr, bits), nullptr);
    EXPECT_EQ(CreateCursor(nullptr, -1, 0, 4, 4, bits, bits), nullptr);
    EXPECT_EQ(CreateIconIndirect(nullptr), nullptr);
    ICONINFO none{};
    EXPECT_EQ(CreateIconIndirect(&none), nullptr);
    HICON icon = makeIcon();
    Canvas canvas(4, 4);
    EXPECT_EQ(GetIconInfo(icon, nullptr), FALSE);
    EXPECT_EQ(DrawIconEx(canvas.dc(), 0, 0, icon, -1, 0, 0, nullptr, DI_NORMAL), FALSE);
    EXPECT_EQ(DrawIconEx(canvas.dc(), 0, 0, icon, 0, 0, 3, nullptr, DI_NORMAL), FALSE);
    EXPECT_EQ(DrawIconEx(canvas.dc(), 0, 0, icon, 0, 0, 0, nullptr, 0), FALSE);
    EXPECT_EQ(DrawIconEx(nullptr, 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL), FALSE);
    for (const int place : {INT_MIN, INT_MAX})
        EXPECT_NE(DrawIconEx(canvas.dc(), place, place, icon, INT_MAX, INT_MAX, 0, nullptr, DI_NORMAL), FALSE);
    DestroyIcon(icon);
}

TEST_F(Icons, OfMaskAndColorsOfDifferentSizesAreReadWithinBoth) {
    HBITMAP small = CreateBitmap(1, 1, 1, 1, nullptr);
    Canvas colors(3, 2);
    colors.clear(kRed);
    ICONINFO info{FALSE, 99, 99, small, colors.bitmap()};
    HICON icon = CreateIconIndirect(&info);
    ASSERT_NE(icon, nullptr);
    const auto image = cursorImage(icon);
    EXPECT_EQ(image->hotX, 2) << "the hot spot lies inside";
    EXPECT_EQ(image->hotY, 1);
    DestroyIcon(icon);
    DeleteObject(small);
}

// ---- Pictures as resources hold them -------------------------------------------------------------------------------

const std::vector<std::uint32_t> kColors{0x000000, 0xFFFFFF, 0xFF0000, 0x0000FF};

TEST_F(Icons, AreDecodedInEveryDepth) {
    for (const int bits : {1, 4, 8, 24, 32}) {
        const bool twoColors = bits == 1;
        const Picture picture{bits, kColors, twoColors ? Rows{"01 ", " 10", "1 1"} : Rows{"02 ", " 32", "1 3"}};
        const Bytes bytes = packedIcon(picture);
        HICON icon =
            CreateIconFromResourceEx(bytes.data(), static_cast<DWORD>(bytes.size()), TRUE, 0x00030000, 0, 0, 0);
        ASSERT_NE(icon, nullptr) << bits;
        Canvas canvas(3, 3);
        canvas.clear(kGreen);
        DrawIconEx(canvas.dc(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL);
        EXPECT_EQ(canvas.rows(), twoColors ? (Rows{"#.G", "G.#", ".G."}) : (Rows{"#RG", "GBR", ".GB"})) << bits;
        DestroyIcon(icon);
    }
}

TEST_F(Icons, KeepTheCursorsHotSpot) {
    const Bytes bytes = packedCursor({1, {0x000000, 0xFFFFFF}, {"0 1", " 0 ", "1 0"}}, 2, 1);
    HCURSOR cursor = CreateIconFromResourceEx(bytes.data(), static_cast<DWORD>(bytes.size()), FALSE, 0x00030000, 0, 0,
                                              LR_DEFAULTCOLOR);
    const auto image = cursorImage(cursor);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->hotX, 2);
    EXPECT_EQ(image->hotY, 1);
    EXPECT_EQ(image->pixels[0], 0xFF000000u);
    EXPECT_EQ(image->pixels[1], 0u);
    EXPECT_EQ(image->pixels[2], 0xFFFFFFFFu);
    EXPECT_TRUE(image->inverted.empty());
    DestroyCursor(cursor);
}

TEST_F(Icons, TellWhatTheyInvert) {
    HCURSOR beam = LoadCursorA(nullptr, IDC_IBEAM);
    const auto image = cursorImage(beam);
    ASSERT_TRUE(image);
    ASSERT_EQ(image->inverted.size(), image->pixels.size());
    const auto middle = static_cast<std::size_t>(image->hotY * image->width + image->hotX);
    EXPECT_TRUE(image->inverted[middle]);
    EXPECT_EQ(image->pixels[middle], 0u);
    forgetSharedIcons(nullptr);
}

TEST_F(Icons, CutShortAreRefusedAtEveryLength) {
    for (const int bits : {1, 4, 24, 32}) {
        const Bytes bytes = packedCursor({bits, kColors, {"01 ", " 10"}}, 0, 0);
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const Bytes part(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
            SetLastError(0);
            EXPECT_EQ(CreateIconFromResourceEx(part.data() == nullptr ? bytes.data() : part.data(),
                                               static_cast<DWORD>(length), FALSE, 0x00030000, 0, 0, 0),
                      nullptr)
                << bits << ": " << length;
            EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA) << bits << ": " << length;
        }
    }
}

TEST_F(Icons, WithWildHeadersDoNoHarm) {
    std::mt19937 random(31);
    const Bytes good = packedIcon({8, kColors, {"01 ", " 10", "222"}});
    for (int round = 0; round < 2000; ++round) {
        Bytes bytes = good;
        for (int change = 0; change < 3; ++change)
            bytes[random() % 44] = static_cast<std::uint8_t>(random());
        HICON icon = CreateIconFromResource(bytes.data(), static_cast<DWORD>(bytes.size()), TRUE, 0x00030000);
        if (icon != nullptr)
            DestroyIcon(icon);
    }
    EXPECT_EQ(CreateIconFromResource(nullptr, 5, TRUE, 0x00030000), nullptr);
    EXPECT_EQ(CreateIconFromResource(good.data(), static_cast<DWORD>(good.size()), TRUE, 0x00020000), nullptr);
}

} // namespace
