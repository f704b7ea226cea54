#include "gdi/icon.h"
#include "gdi/objects.h"
#include "platform/temp_folder.h"
#include "res_file.h"
#include "text_canvas.h"
#include "win32/drive_map.h"
#include "win32/error.h"
#include "win32/metrics.h"

#include <gtest/gtest.h>

#include <random>

using namespace vndk::win32;

namespace {

constexpr unsigned kCursorType = 1;
constexpr unsigned kBitmapType = 2;
constexpr unsigned kIconType = 3;
constexpr unsigned kStringType = 6;
constexpr unsigned kCursorGroupType = 12;
constexpr unsigned kIconGroupType = 14;

const std::vector<std::uint32_t> kColors{0x000000, 0xFFFFFF, 0xFF0000, 0x0000FF,
                                         0x808080, 0xC0C0C0, 0xDFDFDF, 0x00FF00};

/// A square of one colour by its index.
Picture square(int size, int bits, char color) {
    return {bits, kColors, Rows(static_cast<std::size_t>(size), std::string(static_cast<std::size_t>(size), color))};
}

Bytes stringBlock(unsigned index, const std::string& text) {
    Bytes bytes;
    for (unsigned at = 0; at < 16; ++at) {
        put16(bytes, at == index ? static_cast<unsigned>(text.size()) : 0);
        if (at == index)
            for (const char character : text)
                put16(bytes, static_cast<unsigned char>(character));
    }
    return bytes;
}

/// Bitmaps 1 (8 bits), 2 (black and white), 3 (damaged), 4 (run lengths); icon 10 in three forms; cursor 20.
Bytes resources() {
    ResFile file;
    file.add(kBitmapType, 1, packedBitmap({8, kColors, {"7456", "7123"}}));
    file.add(kBitmapType, 2, packedBitmap({1, {0x000000, 0xFFFFFF}, {"0110", "1001"}}));
    Bytes damaged = packedBitmap(square(4, 24, '2'));
    damaged.resize(damaged.size() - 1);
    file.add(kBitmapType, 3, damaged);
    Bytes packed = packedBitmap({8, kColors, {"2222", "3331"}});
    packed.resize(40 + 1024);
    packed[16] = 1; // run lengths of 8 bits, the bottom row first
    append(packed, {3, 3, 1, 1, 0, 0, 4, 2, 0, 1});
    file.add(kBitmapType, 4, packed);
    file.add(kIconType, 1, packedIcon(square(16, 4, '2')));
    file.add(kIconType, 2, packedIcon(square(32, 4, '3')));
    file.add(kIconType, 3, packedIcon(square(32, 24, '7')));
    file.add(kIconType, 4, packedIcon(square(32, 1, '1')));
    file.add(kIconGroupType, 10, iconGroup({{16, 16, 4, 1}, {32, 32, 4, 2}, {32, 32, 24, 3}, {32, 32, 1, 4}}));
    file.add(kIconGroupType, 11, iconGroup({{16, 16, 4, 99}}));
    file.add(kIconGroupType, 12, iconGroup({}));
    file.add(kCursorType, 7, packedCursor(square(32, 1, '0'), 9, 30));
    file.add(kCursorGroupType, 20, iconGroup({{32, 32, 1, 7}}, true));
    file.add(kStringType, 1, stringBlock(0, "zero"));
    file.add(kStringType, 2, stringBlock(1, "seventeen"));
    file.add(kStringType, 4096, stringBlock(14, "last"));
    return file.bytes();
}

class LoadImages : public testing::Test {
protected:
    LoadImages() : instance_(resources()), objects_(objectCount()), icons_(iconCount()) {}
    void TearDown() override {
        EXPECT_EQ(objectCount(), objects_);
        EXPECT_EQ(iconCount(), icons_);
    }

    [[nodiscard]] HINSTANCE instance() const { return instance_.handle(); }
    template <typename Handle>
    Handle load(unsigned name, UINT kind, int width = 0, int height = 0, UINT flags = 0) const {
        return static_cast<Handle>(LoadImageA(instance(), MAKEINTRESOURCE(name), kind, width, height, flags));
    }

    /// Paints a bitmap at its size; deletes it.
    static Rows rowsOf(HBITMAP bitmap) {
        BITMAP form{};
        GetObjectA(bitmap, sizeof form, &form);
        Canvas canvas(form.bmWidth, form.bmHeight);
        HDC dc = CreateCompatibleDC(nullptr);
        SelectObject(dc, bitmap);
        BitBlt(canvas.dc(), 0, 0, form.bmWidth, form.bmHeight, dc, 0, 0, SRCCOPY);
        DeleteDC(dc);
        DeleteObject(bitmap);
        return canvas.rows();
    }

    /// Width and height, and the colour in the middle; destroys it.
    struct Seen {
        int width;
        int height;
        COLORREF color;
        bool operator==(const Seen&) const = default;
    };
    static Seen look(HICON icon) {
        const IconImage* image = requireIcon(icon);
        if (image == nullptr)
            return {};
        Canvas canvas(image->width, image->height);
        canvas.clear(RGB(1, 2, 3));
        const Seen seen{image->width, image->height,
                        (DrawIconEx(canvas.dc(), 0, 0, icon, 0, 0, 0, nullptr, DI_NORMAL),
                         canvas.color(image->width / 2, image->height / 2))};
        DestroyIcon(icon);
        return seen;
    }

private:
    TestInstance instance_;
    std::size_t objects_;
    std::size_t icons_;
};

TEST_F(LoadImages, BitmapsComeLikeTheScreensOrAsTheyAre) {
    EXPECT_EQ(rowsOf(LoadBitmapA(instance(), MAKEINTRESOURCE(1))), (Rows{"G???", "G.RB"}));
    EXPECT_EQ(rowsOf(load<HBITMAP>(4, IMAGE_BITMAP)), (Rows{"RRRR", "BBB."})) << "run lengths";

    const auto formOf = [](HBITMAP bitmap) {
        BITMAP form{};
        GetObjectA(bitmap, sizeof form, &form);
        DeleteObject(bitmap);
        return std::pair(form.bmBitsPixel, form.bmBits != nullptr);
    };
    EXPECT_EQ(formOf(load<HBITMAP>(1, IMAGE_BITMAP)), std::pair(WORD{32}, false));
    EXPECT_EQ(formOf(load<HBITMAP>(1, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)), std::pair(WORD{8}, true));
    EXPECT_EQ(formOf(load<HBITMAP>(2, IMAGE_BITMAP)), std::pair(WORD{1}, false)) << "black and white stays so";
    EXPECT_EQ(formOf(load<HBITMAP>(1, IMAGE_BITMAP, 0, 0, LR_MONOCHROME)), std::pair(WORD{1}, false));
    EXPECT_EQ(rowsOf(load<HBITMAP>(1, IMAGE_BITMAP, 8, 2, LR_CREATEDIBSECTION)), (Rows{"GG??????", "GG..RRBB"}));
    EXPECT_EQ(rowsOf(load<HBITMAP>(4, IMAGE_BITMAP, 2, 1, LR_CREATEDIBSECTION)), Rows{"RR"});
}

TEST_F(LoadImages, BitmapsTakeTheSystemsColorsWhereAskedTo) {
    const INT indexes[] = {COLOR_WINDOW, COLOR_3DSHADOW, COLOR_3DFACE, COLOR_3DLIGHT};
    const COLORREF pure[] = {kBlue, kRed, kGreen, kBlack};
    COLORREF before[4];
    for (int at = 0; at < 4; ++at)
        before[at] = GetSysColor(indexes[at]);
    SetSysColors(4, indexes, pure);
    EXPECT_EQ(rowsOf(load<HBITMAP>(1, IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS)), (Rows{"GRG#", "G.RB"}));
    EXPECT_EQ(rowsOf(load<HBITMAP>(1, IMAGE_BITMAP, 0, 0, LR_LOADTRANSPARENT)), (Rows{"B???", "B.RB"}));
    EXPECT_EQ(rowsOf(load<HBITMAP>(1, IMAGE_BITMAP, 0, 0, LR_LOADTRANSPARENT | LR_LOADMAP3DCOLORS))[0], "G???");
    SetSysColors(4, indexes, before);
}

TEST_F(LoadImages, TheBestPictureOfAGroupIsTaken) {
    const struct {
        int size;
        UINT flags;
        Seen seen;
    } cases[] = {{0, 0, {16, 16, kRed}},
                 {0, LR_DEFAULTSIZE, {32, 32, kGreen}},
                 {32, 0, {32, 32, kGreen}},
                 {16, 0, {16, 16, kRed}},
                 {20, 0, {20, 20, kRed}},
                 {48, 0, {48, 48, kGreen}},
                 {32, LR_MONOCHROME, {32, 32, kWhite}}};
    for (const auto& row : cases)
        EXPECT_EQ(look(load<HICON>(10, IMAGE_ICON, row.size, row.size, row.flags)), row.seen) << row.size;
}

TEST_F(LoadImages, CursorsKeepTheirHotSpot) {
    HCURSOR cursor = load<HCURSOR>(20, IMAGE_CURSOR, 16, 16);
    ICONINFO info{};
    ASSERT_NE(GetIconInfo(cursor, &info), FALSE);
    EXPECT_EQ(info.fIcon, FALSE);
    EXPECT_EQ(info.xHotspot, 4u) << "half the size, half as far";
    EXPECT_EQ(info.yHotspot, 15u);
    DeleteObject(info.hbmMask);
    DestroyCursor(cursor);
}

TEST_F(LoadImages, SharedIconsAreOneUntilTheirLibraryGoes) {
    HICON icon = nullptr;
    {
        const TestInstance other(resources());
        icon = LoadIconA(other.handle(), MAKEINTRESOURCE(10));
        ASSERT_NE(icon, nullptr);
        EXPECT_EQ(LoadIconA(other.handle(), "#10"), icon);
        EXPECT_NE(DestroyIcon(icon), FALSE);
        EXPECT_EQ(LoadImageA(other.handle(), MAKEINTRESOURCE(10), IMAGE_ICON, 32, 32, LR_SHARED), icon);
        EXPECT_NE(LoadImageA(other.handle(), MAKEINTRESOURCE(10), IMAGE_ICON, 16, 16, LR_SHARED), icon);
        HICON own = CopyIcon(icon);
        EXPECT_NE(DestroyIcon(own), FALSE);
        EXPECT_EQ(DestroyIcon(own), FALSE) << "a copy isn't shared";
    }
    ICONINFO info{};
    EXPECT_EQ(GetIconInfo(icon, &info), FALSE);
}

TEST_F(LoadImages, TheSystemHasPicturesOfItsOwn) {
    for (const LPCSTR name :
         {IDC_ARROW, IDC_IBEAM, IDC_WAIT, IDC_CROSS, IDC_UPARROW, IDC_SIZE, IDC_SIZENWSE, IDC_SIZENESW, IDC_SIZEWE,
          IDC_SIZENS, IDC_SIZEALL, IDC_NO, IDC_HAND, IDC_APPSTARTING, IDC_HELP}) {
        HCURSOR cursor = LoadCursorA(nullptr, name);
        ASSERT_NE(cursor, nullptr) << reinterpret_cast<ULONG_PTR>(name);
        EXPECT_EQ(LoadCursorA(nullptr, name), cursor);
        Canvas canvas(32, 32);
        DrawIcon(canvas.dc(), 0, 0, cursor);
        const IconImage& image = *requireIcon(cursor);
        const RECT around{image.hot.x - 4, image.hot.y - 4, image.hot.x + 5, image.hot.y + 5};
        bool near = false;
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 32; ++x)
                near = near || (PtInRect(&around, {x, y}) != FALSE && canvas.color(x, y) == kBlack);
        EXPECT_TRUE(near) << reinterpret_cast<ULONG_PTR>(name) << ": the hot spot is where the picture is";
    }
    for (const LPCSTR name : {IDI_APPLICATION, IDI_HAND, IDI_QUESTION, IDI_EXCLAMATION, IDI_ASTERISK, IDI_WINLOGO})
        EXPECT_NE(LoadIconA(nullptr, name), nullptr) << reinterpret_cast<ULONG_PTR>(name);
    EXPECT_EQ(LoadIconA(nullptr, MAKEINTRESOURCE(5)), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_RESOURCE_NAME_NOT_FOUND);
    EXPECT_EQ(LoadCursorA(nullptr, "arrow"), nullptr);
    forgetSharedIcons(nullptr);
}

TEST_F(LoadImages, WhatIsMissingOrDamagedGivesNull) {
    const struct {
        unsigned name;
        UINT kind;
        DWORD error;
    } cases[] = {{3, IMAGE_BITMAP, ERROR_INVALID_DATA},
                 {99, IMAGE_BITMAP, ERROR_RESOURCE_NAME_NOT_FOUND},
                 {11, IMAGE_ICON, ERROR_RESOURCE_NAME_NOT_FOUND},
                 {12, IMAGE_ICON, ERROR_INVALID_DATA},
                 {10, IMAGE_CURSOR, ERROR_RESOURCE_NAME_NOT_FOUND},
                 {10, 3, ERROR_INVALID_PARAMETER}};
    for (const auto& row : cases) {
        EXPECT_EQ(load<HANDLE>(row.name, row.kind), nullptr) << row.name;
        EXPECT_EQ(GetLastError(), row.error) << row.name << ' ' << row.kind;
    }
    EXPECT_EQ(load<HANDLE>(10, IMAGE_ICON, -1, 5), nullptr);
    EXPECT_EQ(load<HANDLE>(10, IMAGE_ICON, 100000, 5), nullptr);
    EXPECT_EQ(load<HANDLE>(1, IMAGE_BITMAP, 1 << 20, 1 << 20), nullptr);
    EXPECT_EQ(load<HANDLE>(1, IMAGE_BITMAP, 4, -4), nullptr);
    EXPECT_EQ(LoadImageA(nullptr, MAKEINTRESOURCE(1), IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE), nullptr);
    EXPECT_EQ(LoadBitmapA(nullptr, MAKEINTRESOURCE(1)), nullptr);
}

TEST_F(LoadImages, BitmapsCutShortOrWildDoNoHarm) {
    const Bytes good = packedBitmap({4, kColors, {"0123456", "7654321"}});
    std::mt19937 random(4);
    for (std::size_t round = 0; round < good.size() + 500; ++round) {
        Bytes bytes = good;
        if (round < good.size())
            bytes.resize(round);
        else
            for (int change = 0; change < 3; ++change)
                bytes[random() % 44] = static_cast<std::uint8_t>(random());
        ResFile file;
        file.add(kBitmapType, 1, bytes);
        const TestInstance broken(file.bytes());
        HBITMAP bitmap = LoadBitmapA(broken.handle(), MAKEINTRESOURCE(1));
        if (round < good.size()) {
            EXPECT_EQ(bitmap, nullptr) << round;
            EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA) << round;
        }
        if (bitmap != nullptr)
            DeleteObject(bitmap);
    }
}

// ---- Files ---------------------------------------------------------------------------------------------------------

std::string text(const Bytes& bytes) { return {bytes.begin(), bytes.end()}; }

Bytes bitmapFile(const Bytes& packed, std::size_t rowsAt) {
    Bytes bytes{'B', 'M'};
    put32(bytes, static_cast<std::uint32_t>(14 + packed.size()));
    put32(bytes, 0);
    put32(bytes, static_cast<std::uint32_t>(14 + rowsAt));
    append(bytes, packed);
    return bytes;
}

Bytes iconFile(const Bytes& picture, bool cursor) {
    Bytes bytes;
    put16(bytes, 0);
    put16(bytes, cursor ? 2 : 1);
    put16(bytes, 1);
    append(bytes, {16, 16, 0, 0});
    put16(bytes, cursor ? 5 : 1);
    put16(bytes, cursor ? 6 : 24);
    put32(bytes, static_cast<std::uint32_t>(picture.size()));
    put32(bytes, 22);
    append(bytes, picture);
    return bytes;
}

TEST_F(LoadImages, FilesAreReadByTheirPaths) {
    const TempFolder folder;
    folder.write("Red.BMP", text(bitmapFile(packedBitmap(square(3, 24, '2')), 40)));
    folder.write("red.ico", text(iconFile(packedIcon(square(16, 24, '2')), false)));
    folder.write("point.cur", text(iconFile(packedIcon(square(16, 1, '0')), true)));
    const auto path = [&](const char* name) { return DriveMap::current().toDos(folder.path()).value() + "\\" + name; };
    const auto loadFile = [&](const char* name, UINT kind) {
        return LoadImageA(nullptr, path(name).c_str(), kind, 0, 0, LR_LOADFROMFILE);
    };
    EXPECT_EQ(rowsOf(static_cast<HBITMAP>(loadFile("red.bmp", IMAGE_BITMAP))), (Rows{"RRR", "RRR", "RRR"}));
    EXPECT_EQ(look(static_cast<HICON>(loadFile("red.ico", IMAGE_ICON))), (Seen{16, 16, kRed}));
    auto cursor = static_cast<HCURSOR>(loadFile("point.cur", IMAGE_CURSOR));
    ASSERT_NE(requireIcon(cursor), nullptr);
    EXPECT_EQ(requireIcon(cursor)->hot.x, 5);
    EXPECT_EQ(requireIcon(cursor)->hot.y, 6);
    DestroyCursor(cursor);

    EXPECT_EQ(loadFile("none.bmp", IMAGE_BITMAP), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(loadFile("red.ico", IMAGE_BITMAP), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_DATA);
    EXPECT_EQ(loadFile("red.ico", IMAGE_CURSOR), nullptr);
}

TEST_F(LoadImages, FilesCutShortAreRefused) {
    const TempFolder folder;
    const auto path = DriveMap::current().toDos(folder.path()).value() + "\\cut";
    const struct {
        Bytes bytes;
        UINT kind;
    } cases[] = {{bitmapFile(packedBitmap(square(2, 24, '2')), 40), IMAGE_BITMAP},
                 {iconFile(packedIcon(square(2, 4, '2')), false), IMAGE_ICON}};
    for (const auto& row : cases) {
        for (std::size_t length = 0; length < row.bytes.size(); ++length) {
            folder.write("cut", text(row.bytes).substr(0, length));
            EXPECT_EQ(LoadImageA(nullptr, path.c_str(), row.kind, 0, 0, LR_LOADFROMFILE), nullptr) << length;
        }
    }
}

// ---- Strings -------------------------------------------------------------------------------------------------------

TEST_F(LoadImages, StringsOfEveryNumberAreFound) {
    const struct {
        UINT id;
        int size;
        const char* text;
    } cases[] = {{0, 100, "zero"}, {17, 100, "seventeen"}, {65534, 100, "last"}, {0xFFFF0011, 100, "seventeen"},
                 {17, 6, "seven"}, {18, 100, ""},          {300, 100, ""}};
    for (const auto& row : cases) {
        char buffer[100] = "before";
        EXPECT_EQ(LoadStringA(instance(), row.id, buffer, row.size), static_cast<int>(std::strlen(row.text))) << row.id;
        EXPECT_STREQ(buffer, row.text) << row.id;
    }
}

} // namespace
