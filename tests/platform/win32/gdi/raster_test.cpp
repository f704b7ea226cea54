#include "canvas.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>

namespace {

/// A section of any depth in a context of its own.
class Section {
public:
    Section(int width, int height, int bits) : dc_(CreateCompatibleDC(nullptr)) {
        struct {
            BITMAPINFOHEADER header;
            RGBQUAD colors[256];
        } info{};
        info.header = {sizeof(BITMAPINFOHEADER), width, height, 1, static_cast<WORD>(bits), BI_RGB, 0, 0, 0, 0, 0};
        for (int index = 0; index < 256; ++index) // a spread of colours, all different
            info.colors[index] = {static_cast<BYTE>(index * 7), static_cast<BYTE>(index * 13), static_cast<BYTE>(index),
                                  0};
        bitmap_ = CreateDIBSection(dc_, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits_, nullptr, 0);
        SelectObject(dc_, bitmap_);
        stride_ = (width * bits + 31) / 32 * 4;
        height_ = height;
        bitsPerPixel_ = bits;
    }
    ~Section() {
        DeleteDC(dc_);
        DeleteObject(bitmap_);
    }
    Section(const Section&) = delete;
    Section& operator=(const Section&) = delete;

    [[nodiscard]] HDC dc() const { return dc_; }
    [[nodiscard]] std::uint8_t* row(int y) const {
        return static_cast<std::uint8_t*>(bits_) + std::ptrdiff_t{stride_} * (height_ - 1 - y);
    }
    [[nodiscard]] std::uint32_t mask() const { return bitsPerPixel_ == 32 ? 0xFFFFFFFF : (1U << bitsPerPixel_) - 1; }
    /// What is stored, by a way of its own: bit by bit.
    [[nodiscard]] std::uint32_t stored(int x, int y) const {
        std::uint32_t value = 0;
        const int bytes = std::max(bitsPerPixel_ / 8, 1);
        const std::uint8_t* bytesOfRow = row(y);
        if (bitsPerPixel_ < 8)
            return bytesOfRow[x * bitsPerPixel_ / 8] >> (8 - bitsPerPixel_ - x * bitsPerPixel_ % 8) & mask();
        for (int byte = bytes - 1; byte >= 0; --byte)
            value = value << 8 | bytesOfRow[x * bytes + byte];
        return value;
    }
    void store(int x, int y, std::uint32_t value) {
        std::uint8_t* bytesOfRow = row(y);
        if (bitsPerPixel_ < 8) {
            const int shift = 8 - bitsPerPixel_ - x * bitsPerPixel_ % 8;
            std::uint8_t& byte = bytesOfRow[x * bitsPerPixel_ / 8];
            byte = static_cast<std::uint8_t>((byte & ~(mask() << shift)) | (value & mask()) << shift);
            return;
        }
        std::memcpy(bytesOfRow + std::ptrdiff_t{x} * (bitsPerPixel_ / 8), &value,
                    static_cast<std::size_t>(bitsPerPixel_ / 8));
    }

private:
    HDC dc_;
    HBITMAP bitmap_;
    void* bits_ = nullptr;
    int stride_ = 0;
    int height_ = 0;
    int bitsPerPixel_ = 0;
};

constexpr std::array<int, 6> depths{1, 4, 8, 16, 24, 32};

/// A picture with all sorts of bits.
std::uint32_t noise(int x, int y, std::uint32_t seed) {
    std::uint32_t value = static_cast<std::uint32_t>(x) * 2654435761U + static_cast<std::uint32_t>(y) * 40503U + seed;
    value ^= value >> 13;
    return value * 2246822519U;
}

/// From the definition: look each bit up in the operation's table.
std::uint32_t ternary(unsigned table, std::uint32_t pattern, std::uint32_t source, std::uint32_t target) {
    std::uint32_t result = 0;
    for (int bit = 0; bit < 32; ++bit) {
        const unsigned index = (pattern >> bit & 1) * 4 + (source >> bit & 1) * 2 + (target >> bit & 1);
        result |= (table >> index & 1U) << bit;
    }
    return result;
}

class EachDepth : public testing::TestWithParam<int> {};

TEST_P(EachDepth, All256OperationsFollowTheirTable) {
    constexpr int width = 11;
    Section target(width, 2, GetParam());
    Section source(width, 2, GetParam());
    // The pattern is as wide as the picture, so that each pixel has its own.
    const HBITMAP pattern = CreateCompatibleBitmap(source.dc(), width, 2);
    const HDC patternDc = CreateCompatibleDC(nullptr);
    SelectObject(patternDc, pattern);
    BitBlt(patternDc, 0, 0, width, 2, source.dc(), 0, 0, SRCCOPY);
    Section patternBits(width, 2, GetParam());
    for (int x = 0; x < width; ++x)
        for (int y = 0; y < 2; ++y)
            patternBits.store(x, y, noise(x, y, 3));
    BitBlt(patternDc, 0, 0, width, 2, patternBits.dc(), 0, 0, SRCCOPY);
    const HBRUSH brush = CreatePatternBrush(pattern);
    SelectObject(target.dc(), brush);
    for (unsigned table = 0; table < 256; ++table) {
        for (int x = 0; x < width; ++x)
            for (int y = 0; y < 2; ++y) {
                target.store(x, y, noise(x, y, 1));
                source.store(x, y, noise(x, y, 2));
            }
        ASSERT_TRUE(BitBlt(target.dc(), 1, 0, width - 2, 2, source.dc(), 1, 0, table << 16)) << table;
        for (int x = 0; x < width; ++x)
            for (int y = 0; y < 2; ++y) {
                const bool inside = x >= 1 && x < width - 1;
                const std::uint32_t old = noise(x, y, 1) & target.mask();
                const std::uint32_t expected =
                    inside ? ternary(table, noise(x, y, 3), noise(x, y, 2), old) & target.mask() : old;
                ASSERT_EQ(target.stored(x, y), expected) << "operation " << table << " at " << x << ", " << y;
            }
    }
    DeleteDC(patternDc);
    DeleteObject(pattern);
    SelectObject(target.dc(), GetStockObject(WHITE_BRUSH));
    DeleteObject(brush);
}

TEST_P(EachDepth, All16MixModesFollowTheirTable) {
    constexpr int width = 9;
    for (int mode = R2_BLACK; mode <= R2_WHITE; ++mode) {
        Section target(width, 3, GetParam());
        Section reference(1, 1, GetParam());
        const HPEN pen = CreatePen(PS_SOLID, 1, RGB(130, 40, 200));
        const HBRUSH brush = CreateSolidBrush(RGB(130, 40, 200));
        SelectObject(target.dc(), pen);
        SelectObject(target.dc(), brush);
        SetPixel(reference.dc(), 0, 0, RGB(130, 40, 200));
        const std::uint32_t pixel = reference.stored(0, 0);
        for (int x = 0; x < width; ++x)
            for (int y = 0; y < 3; ++y)
                target.store(x, y, noise(x, y, 1));
        SetROP2(target.dc(), mode);
        Rectangle(target.dc(), 1, 0, width, 3); // frame by the pen, inside by the brush
        MoveToEx(target.dc(), 0, 0, nullptr);
        for (int x = 1; x < width; ++x)
            for (int y = 0; y < 3; ++y) {
                const auto both = static_cast<unsigned>(mode - R2_BLACK);
                std::uint32_t expected = 0;
                const std::uint32_t old = noise(x, y, 1);
                for (int bit = 0; bit < 32; ++bit)
                    expected |= (both >> ((pixel >> bit & 1) * 2 + (old >> bit & 1)) & 1U) << bit;
                ASSERT_EQ(target.stored(x, y), expected & target.mask()) << "mode " << mode << " at " << x << ", " << y;
            }
        SelectObject(target.dc(), GetStockObject(BLACK_PEN));
        SelectObject(target.dc(), GetStockObject(WHITE_BRUSH));
        DeleteObject(pen);
        DeleteObject(brush);
    }
}

TEST_P(EachDepth, TakesTheNearestColourAndTellsIt) {
    Section section(2, 2, GetParam());
    for (COLORREF color : {kBlack, kWhite, kRed, RGB(120, 130, 140), RGB(3, 250, 77)}) {
        const COLORREF nearest = GetNearestColor(section.dc(), color);
        EXPECT_EQ(SetPixel(section.dc(), 1, 1, color), nearest) << std::hex << color;
        EXPECT_EQ(GetPixel(section.dc(), 1, 1), nearest) << std::hex << color;
        if (GetParam() >= 24) {
            EXPECT_EQ(nearest, color);
        }
        if (GetParam() == 16) {
            EXPECT_NEAR(GetGValue(nearest), GetGValue(color), 8);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Bits, EachDepth, testing::ValuesIn(depths));

TEST(Pattern, BeginsAtTheBrushOriginOfTheDevice) {
    const std::uint8_t bits[] = {0x80, 0, 0x00, 0}; // one bit in 2 x 2
    const HBITMAP bitmap = CreateBitmap(2, 2, 1, 1, bits);
    Canvas canvas(6, 4);
    canvas.use(CreatePatternBrush(bitmap));
    DeleteObject(bitmap); // the brush has its own copy
    SetTextColor(canvas.dc(), kGreen);
    SetBkColor(canvas.dc(), kRed);
    SetViewportOrgEx(canvas.dc(), 1, 0, nullptr);
    PatBlt(canvas.dc(), -1, 0, 6, 2, PATCOPY);
    EXPECT_EQ(canvas.rows()[0], "RGRGRG") << "0 bits in the text colour, 1 bits in the background colour";
    EXPECT_EQ(canvas.rows()[1], "GGGGGG");
    POINT former{7, 7};
    EXPECT_TRUE(SetBrushOrgEx(canvas.dc(), -1, 1, &former));
    EXPECT_EQ(former.x, 0);
    PatBlt(canvas.dc(), -1, 0, 6, 2, PATCOPY);
    EXPECT_EQ(canvas.rows()[0], "GGGGGG");
    EXPECT_EQ(canvas.rows()[1], "GRGRGR");
}

TEST(Hatch, RepeatsEveryEightPixelsWithGapsByBackgroundMode) {
    struct Case {
        int hatch;
        std::function<bool(int, int)> onLine;
    };
    for (const Case& row : {Case{HS_HORIZONTAL, [](int, int y) { return y % 8 == 4; }},
                            Case{HS_VERTICAL, [](int x, int) { return x % 8 == 4; }},
                            Case{HS_FDIAGONAL, [](int x, int y) { return x % 8 == y % 8; }},
                            Case{HS_BDIAGONAL, [](int x, int y) { return (x + y) % 8 == 7; }},
                            Case{HS_CROSS, [](int x, int y) { return x % 8 == 4 || y % 8 == 4; }},
                            Case{HS_DIAGCROSS, [](int x, int y) { return x % 8 == y % 8 || (x + y) % 8 == 7; }}}) {
        for (int mode : {OPAQUE, TRANSPARENT}) {
            Canvas canvas(17, 17);
            canvas.use(CreateHatchBrush(row.hatch, kRed));
            SetBkMode(canvas.dc(), mode);
            SetBkColor(canvas.dc(), kGreen);
            SelectObject(canvas.dc(), GetStockObject(NULL_PEN));
            Rectangle(canvas.dc(), 0, 0, 18, 18);
            for (int y = 0; y < 17; ++y)
                for (int x = 0; x < 17; ++x)
                    ASSERT_EQ(canvas.color(x, y), row.onLine(x, y) ? kRed
                                                  : mode == OPAQUE ? kGreen
                                                                   : kWhite)
                        << row.hatch << ", " << mode << ": " << x << ", " << y;
        }
    }
}

TEST(PatBlt, NeedsNoBrushForWhatUsesNone) {
    Canvas canvas(3, 1);
    SelectObject(canvas.dc(), GetStockObject(NULL_BRUSH));
    EXPECT_TRUE(PatBlt(canvas.dc(), 0, 0, 1, 1, BLACKNESS));
    EXPECT_TRUE(PatBlt(canvas.dc(), 1, 0, 1, 1, DSTINVERT));
    EXPECT_TRUE(PatBlt(canvas.dc(), 2, 0, 1, 1, PATCOPY));
    EXPECT_EQ(canvas.rows()[0], "##.");
    EXPECT_FALSE(PatBlt(canvas.dc(), 0, 0, 1, 1, SRCCOPY));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

} // namespace
