#include "canvas.h"
#include "gdi/dib.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace {

/// A header with room for masks and a full table.
struct Info {
    BITMAPINFOHEADER header{sizeof(BITMAPINFOHEADER), 0, 0, 1, 0, BI_RGB, 0, 0, 0, 0, 0};
    union {
        RGBQUAD colors[256];
        DWORD masks[3];
    };

    Info(int width, int height, int bits) : colors{} {
        header.biWidth = width;
        header.biHeight = height;
        header.biBitCount = static_cast<WORD>(bits);
    }
    operator BITMAPINFO*() { return reinterpret_cast<BITMAPINFO*>(this); }
    operator const BITMAPINFO*() const { return reinterpret_cast<const BITMAPINFO*>(this); }
};

void paintSample(Canvas& canvas) {
    canvas.brush(kGreen);
    Ellipse(canvas.dc(), 0, 0, canvas.width(), canvas.height());
    SetPixel(canvas.dc(), 0, 0, kRed);
    SetPixel(canvas.dc(), canvas.width() - 1, canvas.height() - 1, kBlue);
}

TEST(DibBits, GoOutAndComeInAgainInEveryFormat) {
    struct Case {
        int bits;
        DWORD compression;
        DWORD masks[3];
    };
    for (const Case& row :
         {Case{4, BI_RGB, {}}, Case{8, BI_RGB, {}}, Case{16, BI_RGB, {}}, Case{24, BI_RGB, {}}, Case{32, BI_RGB, {}},
          Case{16, BI_BITFIELDS, {0xF800, 0x07E0, 0x001F}}, Case{32, BI_BITFIELDS, {0xFF, 0xFF00, 0xFF0000}}}) {
        for (int direction : {1, -1}) {
            SCOPED_TRACE(std::to_string(row.bits) + " bits, direction " + std::to_string(direction));
            Canvas original(9, 7);
            paintSample(original);
            Info info(9, 7 * direction, row.bits);
            info.header.biCompression = row.compression;
            std::memcpy(info.masks, row.masks, sizeof row.masks);
            std::vector<std::uint8_t> bits(7 * 36 + 1, 0xEE);
            ASSERT_EQ(GetDIBits(original.dc(), original.bitmap(), 0, 7, bits.data(), info, DIB_RGB_COLORS), 7);
            EXPECT_EQ(bits[info.header.biSizeImage], 0xEE) << "wrote past the rows";
            Canvas copy(9, 7);
            ASSERT_EQ(SetDIBits(copy.dc(), copy.bitmap(), 0, 7, bits.data(), info, DIB_RGB_COLORS), 7);
            EXPECT_EQ(copy.rows(), original.rows());
            Canvas painted(9, 7);
            EXPECT_EQ(StretchDIBits(painted.dc(), 0, 0, 9, 7, 0, 0, 9, 7, bits.data(), info, DIB_RGB_COLORS, SRCCOPY),
                      7);
            EXPECT_EQ(painted.rows(), original.rows());
            Canvas onDevice(9, 7);
            EXPECT_EQ(SetDIBitsToDevice(onDevice.dc(), 0, 0, 9, 7, 0, 0, 0, 7, bits.data(), info, DIB_RGB_COLORS), 7);
            EXPECT_EQ(onDevice.rows(), original.rows());
        }
    }
}

TEST(DibBits, HeaderIsFilledInWhenOnlyItIsAskedFor) {
    Canvas canvas(9, 7);
    Info info(0, 0, 0);
    EXPECT_NE(GetDIBits(canvas.dc(), canvas.bitmap(), 0, 0, nullptr, info, DIB_RGB_COLORS), 0);
    EXPECT_EQ(info.header.biWidth, 9);
    EXPECT_EQ(info.header.biHeight, -7);
    EXPECT_EQ(info.header.biBitCount, 32);
    EXPECT_EQ(info.header.biSizeImage, 9U * 7 * 4);
    Info asked(9, 7, 24);
    EXPECT_NE(GetDIBits(canvas.dc(), canvas.bitmap(), 0, 0, nullptr, asked, DIB_RGB_COLORS), 0);
    EXPECT_EQ(asked.header.biSizeImage, 28U * 7);
}

TEST(DibBits, RowsAreCountedFromThePicturesFirstOne) {
    Canvas canvas(2, 4);
    Info info(2, 4, 32);
    const std::vector<std::uint32_t> red(4, 0xFF0000); // two rows
    EXPECT_EQ(SetDIBits(canvas.dc(), canvas.bitmap(), 1, 2, red.data(), info, DIB_RGB_COLORS), 2);
    EXPECT_EQ(canvas.rows(), (Rows{"..", "RR", "RR", ".."}));
    EXPECT_EQ(SetDIBits(canvas.dc(), canvas.bitmap(), 3, 9, red.data(), info, DIB_RGB_COLORS), 1) << "one row is left";
    EXPECT_EQ(canvas.rows()[0], "RR");
    EXPECT_EQ(SetDIBits(canvas.dc(), canvas.bitmap(), 4, 1, red.data(), info, DIB_RGB_COLORS), 0);
    canvas.clear();
    // Onto a context: row 1 from the bottom, of which the right half.
    EXPECT_EQ(SetDIBitsToDevice(canvas.dc(), 0, 0, 1, 4, 1, 0, 1, 1, red.data(), info, DIB_RGB_COLORS), 1);
    EXPECT_EQ(canvas.rows(), (Rows{"..", "..", "R.", ".."}));
}

TEST(DibBits, PartsCountFromTheLowerLeftCorner) {
    Info info(2, 2, 32);
    const std::uint32_t bits[] = {0xFF0000, 0x00FF00, 0x0000FF, 0x000000}; // R G below, B # above
    Canvas canvas(4, 4);
    StretchDIBits(canvas.dc(), 0, 0, 2, 1, 0, 0, 2, 1, bits, info, DIB_RGB_COLORS, SRCCOPY);
    EXPECT_EQ(canvas.rows()[0], "RG..");
    StretchDIBits(canvas.dc(), 0, 0, 4, 4, 0, 0, 2, 2, bits, info, DIB_RGB_COLORS, SRCCOPY);
    EXPECT_EQ(canvas.rows(), (Rows{"BB##", "BB##", "RRGG", "RRGG"}));
    StretchDIBits(canvas.dc(), 1, 0, -2, 2, 0, 0, 2, 2, bits, info, DIB_RGB_COLORS, SRCCOPY);
    EXPECT_EQ(canvas.rows()[0].substr(0, 2), "#B");
    StretchDIBits(canvas.dc(), 0, 0, 2, 2, 0, 1, 2, -2, bits, info, DIB_RGB_COLORS, SRCCOPY);
    EXPECT_EQ(canvas.rows()[0].substr(0, 2), "RG") << "upside down";
    EXPECT_EQ(canvas.rows()[1].substr(0, 2), "B#");
}

TEST(Sections, ShareTheirMemoryWithTheCaller) {
    Info info(3, 2, 8);
    info.colors[5] = {0, 0, 255, 0};
    void* bits = nullptr;
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateDIBSection(dc, info, DIB_RGB_COLORS, &bits, nullptr, 0);
    ASSERT_NE(bitmap, nullptr);
    SelectObject(dc, bitmap);
    static_cast<std::uint8_t*>(bits)[4 + 2] = 5; // the upper row
    EXPECT_EQ(GetPixel(dc, 2, 0), kRed);
    const RGBQUAD blue{255, 0, 0, 0};
    EXPECT_EQ(SetDIBColorTable(dc, 5, 1, &blue), 1U);
    EXPECT_EQ(GetPixel(dc, 2, 0), kBlue);
    RGBQUAD read[300]{};
    EXPECT_EQ(GetDIBColorTable(dc, 4, 300, read), 252U);
    EXPECT_EQ(read[1].rgbBlue, 255);
    EXPECT_EQ(GetDIBColorTable(dc, 256, 1, read), 0U);
    DIBSECTION section{};
    ASSERT_EQ(GetObject(bitmap, sizeof section, &section), static_cast<int>(sizeof section));
    EXPECT_EQ(section.dsBm.bmBits, bits);
    EXPECT_EQ(section.dsBm.bmWidthBytes, 4);
    EXPECT_EQ(section.dsBmih.biBitCount, 8);
    EXPECT_EQ(section.dsBmih.biHeight, 2);
    DeleteDC(dc);
    DeleteObject(bitmap);
}

TEST(CreateDIBitmap, MakesAScreenBitmapOfAPackedPicture) {
    Info info(2, 2, 1);
    info.colors[0] = {0, 0, 255, 0};
    info.colors[1] = {0, 255, 0, 0};
    const std::uint8_t bits[] = {0x80, 0, 0, 0, 0x40, 0, 0, 0};
    Canvas canvas(2, 2);
    const HBITMAP bitmap = CreateDIBitmap(canvas.dc(), &info.header, CBM_INIT, bits, info, DIB_RGB_COLORS);
    BITMAP data{};
    GetObject(bitmap, sizeof data, &data);
    EXPECT_EQ(data.bmBitsPixel, 32);
    const HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, bitmap);
    BitBlt(canvas.dc(), 0, 0, 2, 2, dc, 0, 0, SRCCOPY);
    EXPECT_EQ(canvas.rows(), (Rows{"RG", "GR"}));
    DeleteDC(dc);
    DeleteObject(bitmap);
    const HBITMAP empty = CreateDIBitmap(canvas.dc(), &info.header, 0, nullptr, nullptr, DIB_RGB_COLORS);
    EXPECT_NE(empty, nullptr);
    DeleteObject(empty);
}

TEST(CreateDIBitmap, TakesHeadersOfTheOldForm) {
    struct {
        BITMAPCOREHEADER header{sizeof(BITMAPCOREHEADER), 2, 1, 1, 4};
        RGBTRIPLE colors[16] = {{0, 0, 255}, {255, 0, 0}};
    } info;
    const std::uint8_t bits[] = {0x01, 0, 0, 0};
    Canvas canvas(2, 1);
    EXPECT_EQ(StretchDIBits(canvas.dc(), 0, 0, 2, 1, 0, 0, 2, 1, bits, reinterpret_cast<BITMAPINFO*>(&info),
                            DIB_RGB_COLORS, SRCCOPY),
              1);
    EXPECT_EQ(canvas.rows()[0], "RB");
}

TEST(HostileHeaders, AreRefusedWithAnError) {
    struct Case {
        const char* name;
        std::function<void(Info&)> spoil;
    };
    const std::vector<Case> cases{
        {"size 0", [](Info& i) { i.header.biSize = 0; }},
        {"size 39", [](Info& i) { i.header.biSize = 39; }},
        {"size of a page", [](Info& i) { i.header.biSize = 4096; }},
        {"width 0", [](Info& i) { i.header.biWidth = 0; }},
        {"width negative", [](Info& i) { i.header.biWidth = -4; }},
        {"width huge", [](Info& i) { i.header.biWidth = INT_MAX; }},
        {"height 0", [](Info& i) { i.header.biHeight = 0; }},
        {"height lowest", [](Info& i) { i.header.biHeight = INT_MIN; }},
        {"height huge", [](Info& i) { i.header.biHeight = INT_MAX; }},
        {"both large", [](Info& i) { i.header.biWidth = i.header.biHeight = 1 << 16; }},
        {"planes", [](Info& i) { i.header.biPlanes = 3; }},
        {"bits 0", [](Info& i) { i.header.biBitCount = 0; }},
        {"bits 7", [](Info& i) { i.header.biBitCount = 7; }},
        {"bits 65535", [](Info& i) { i.header.biBitCount = 65535; }},
        {"unknown compression", [](Info& i) { i.header.biCompression = 5; }},
        {"run lengths of 24 bits", [](Info& i) { i.header.biCompression = BI_RLE8; }},
        {"masks of 24 bits", [](Info& i) { i.header.biCompression = BI_BITFIELDS; }},
        {"masks empty",
         [](Info& i) {
             i.header.biBitCount = 32;
             i.header.biCompression = BI_BITFIELDS;
         }},
        {"masks overlap",
         [](Info& i) {
             i.header.biBitCount = 16;
             i.header.biCompression = BI_BITFIELDS;
             i.masks[0] = i.masks[1] = i.masks[2] = 0x1F;
         }},
        {"mask with a hole",
         [](Info& i) {
             i.header.biBitCount = 16;
             i.header.biCompression = BI_BITFIELDS;
             i.masks[0] = 0x5000;
             i.masks[1] = 0x07E0;
             i.masks[2] = 0x1F;
         }},
        {"run lengths from the top",
         [](Info& i) {
             i.header.biBitCount = 8;
             i.header.biCompression = BI_RLE8;
             i.header.biHeight = -4;
         }},
    };
    const std::uint8_t bits[64]{};
    Canvas canvas(4, 4);
    for (const Case& row : cases) {
        Info info(4, 4, 24);
        row.spoil(info);
        void* memory = &info;
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(CreateDIBSection(nullptr, info, DIB_RGB_COLORS, &memory, nullptr, 0), nullptr) << row.name;
        EXPECT_EQ(memory, nullptr) << row.name;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER) << row.name;
        EXPECT_EQ(SetDIBits(canvas.dc(), canvas.bitmap(), 0, 4, bits, info, DIB_RGB_COLORS), 0) << row.name;
        EXPECT_EQ(StretchDIBits(canvas.dc(), 0, 0, 4, 4, 0, 0, 4, 4, bits, info, DIB_RGB_COLORS, SRCCOPY), 0)
            << row.name;
    }
    Info info(4, 4, 8);
    info.header.biClrUsed = UINT_MAX; // more colours than there can be: the table has as many as the depth allows
    const HBITMAP bitmap = CreateDIBSection(nullptr, info, DIB_RGB_COLORS, nullptr, nullptr, 0);
    EXPECT_NE(bitmap, nullptr);
    DeleteObject(bitmap);
    EXPECT_EQ(CreateDIBSection(nullptr, info, DIB_PAL_COLORS, nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(CreateDIBSection(nullptr, nullptr, DIB_RGB_COLORS, nullptr, nullptr, 0), nullptr);
}

// ---- Run lengths ---------------------------------------------------------------------------------------------------

/// The decoded indexes, top row first, as digits.
Rows decode(int width, int height, int bits, const std::vector<std::uint8_t>& data) {
    Info info(width, height, bits);
    info.header.biCompression = bits == 8 ? BI_RLE8 : BI_RLE4;
    info.header.biSizeImage = static_cast<DWORD>(data.size());
    for (int index = 0; index < 16; ++index)
        info.colors[index] = {static_cast<BYTE>(index), 0, 0, 0};
    Canvas canvas(width, height);
    // A copy of exactly the size, so that a read past its end is noticed.
    const auto exact = std::make_unique<std::uint8_t[]>(data.size());
    std::copy(data.begin(), data.end(), exact.get());
    SetDIBits(canvas.dc(), canvas.bitmap(), 0, static_cast<UINT>(height), exact.get(), info, DIB_RGB_COLORS);
    Rows rows;
    for (int y = 0; y < height; ++y) {
        std::string row;
        for (int x = 0; x < width; ++x)
            row += static_cast<char>('0' + (canvas.pixel(x, y) & 0xFF));
        rows.push_back(row);
    }
    return rows;
}

TEST(RunLengths, AreDecodedWithEscapes) {
    struct Case {
        const char* name;
        int bits;
        std::vector<std::uint8_t> data;
        Rows rows;
    };
    for (const Case& row : {
             Case{"runs and lines", 8, {3, 1, 2, 2, 0, 0, 5, 3, 0, 1}, {"33333", "11122"}},
             Case{"literals, padded", 8, {0, 3, 4, 5, 6, 0, 2, 7, 0, 1}, {"00000", "45677"}},
             Case{"jump", 8, {1, 1, 0, 2, 2, 1, 1, 2, 0, 1}, {"00020", "10000"}},
             Case{"four bits in turn", 4, {5, 0x12, 0, 0, 4, 0x33, 0, 1}, {"33330", "12121"}},
             Case{"four bits literal", 4, {0, 5, 0x12, 0x34, 0x50, 0, 0, 1}, {"00000", "12345"}},
             Case{"run beyond the line", 8, {200, 9, 0, 0, 1, 1, 0, 1}, {"10000", "99999"}},
             Case{"jump out of the picture", 8, {0, 2, 200, 200, 5, 7, 0, 1}, {"00000", "00000"}},
             Case{"more lines than there are", 8, {0, 0, 0, 0, 0, 0, 5, 7, 0, 1}, {"00000", "00000"}},
             Case{"no end", 8, {5, 1}, {"00000", "11111"}},
             Case{"nothing", 8, {}, {"00000", "00000"}},
         })
        EXPECT_EQ(decode(5, 2, row.bits, row.data), row.rows) << row.name;
}

TEST(RunLengths, CutOffOrRandomNeverReadOrWriteOutside) {
    const std::vector<std::uint8_t> whole{3, 1, 0, 5, 1, 2, 3, 4, 5, 0, 0, 2, 1, 1, 0, 0, 4, 7, 0, 1};
    for (std::size_t length = 0; length <= whole.size(); ++length)
        for (int bits : {4, 8})
            decode(7, 3, bits, {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
    std::mt19937 engine(99);
    for (int round = 0; round < 2000; ++round) {
        std::vector<std::uint8_t> data(engine() % 40);
        for (std::uint8_t& byte : data)
            byte = static_cast<std::uint8_t>(engine() % 3 == 0 ? engine() % 4 : engine());
        const Rows rows = decode(1 + static_cast<int>(engine() % 9), 1 + static_cast<int>(engine() % 5),
                                 round % 2 == 0 ? 4 : 8, data);
        ASSERT_FALSE(rows.empty());
    }
}

TEST(PackedPictures, RowsBeginBehindTheTableOrTheMasks) {
    struct Case {
        int bits;
        DWORD compression;
        DWORD used;
        std::size_t bytes;
    };
    for (const Case& row : {Case{1, BI_RGB, 0, 48}, Case{4, BI_RGB, 0, 104}, Case{8, BI_RGB, 0, 1064},
                            Case{8, BI_RGB, 3, 52}, Case{8, BI_RGB, 999, 1064}, Case{24, BI_RGB, 0, 40},
                            Case{24, BI_RGB, 2, 48}, Case{16, BI_BITFIELDS, 0, 52}}) {
        Info info(4, 4, row.bits);
        info.header.biCompression = row.compression;
        info.header.biClrUsed = row.used;
        EXPECT_EQ(vndk::win32::dibHeaderBytes(*static_cast<BITMAPINFO*>(info)), row.bytes)
            << row.bits << ", " << row.used;
    }
}

} // namespace
