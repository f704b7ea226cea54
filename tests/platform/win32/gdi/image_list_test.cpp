#include "gdi/icon.h"
#include "gdi/image_list.h"
#include "gdi/objects.h"
#include "res_file.h"
#include "text_canvas.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <climits>

using namespace vndk::win32;

namespace {

/// Lists of images of 2 x 2, with what goes into them. Looks for objects that are left over.
class ImageLists : public testing::Test {
protected:
    void SetUp() override { objects_ = objectCount(); }
    void TearDown() override {
        for (HIMAGELIST list : lists_)
            ImageList_Destroy(list);
        for (HBITMAP bitmap : bitmaps_)
            DeleteObject(bitmap);
        EXPECT_EQ(objectCount(), objects_);
    }

    HIMAGELIST make(UINT flags, int width = 2, int height = 2, int initial = 1, int grow = 1) {
        lists_.push_back(ImageList_Create(width, height, flags, initial, grow));
        EXPECT_NE(lists_.back(), nullptr);
        return lists_.back();
    }

    /// A bitmap of letters as Canvas has them; 'M' is magenta.
    HBITMAP bitmap(const Rows& rows, bool monochrome = false) {
        const int width = static_cast<int>(rows[0].size());
        const int height = static_cast<int>(rows.size());
        HBITMAP made = CreateBitmap(width, height, 1, monochrome ? 1 : 32, nullptr);
        bitmaps_.push_back(made);
        HDC dc = CreateCompatibleDC(nullptr);
        SelectObject(dc, made);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                SetPixelV(dc, x, y, colorOf(rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]));
        DeleteDC(dc);
        return made;
    }

    static COLORREF colorOf(char letter) {
        switch (letter) {
        case '.':
            return kWhite;
        case 'R':
            return kRed;
        case 'G':
            return kGreen;
        case 'B':
            return kBlue;
        case 'M':
            return RGB(255, 0, 255);
        default:
            return kBlack;
        }
    }

    static Rows rowsOf(HBITMAP bitmap, int width, int height) {
        Canvas canvas(width, height);
        HDC dc = CreateCompatibleDC(nullptr);
        SelectObject(dc, bitmap);
        BitBlt(canvas.dc(), 0, 0, width, height, dc, 0, 0, SRCCOPY);
        DeleteDC(dc);
        return canvas.rows();
    }

    /// An image on a ground.
    static Rows drawn(HIMAGELIST list, int index, UINT style, COLORREF ground = kGreen) {
        Canvas canvas(2, 2);
        canvas.clear(ground);
        EXPECT_NE(ImageList_Draw(list, index, canvas.dc(), 0, 0, style), FALSE);
        return canvas.rows();
    }

private:
    std::size_t objects_ = 0;
    std::vector<HIMAGELIST> lists_;
    std::vector<HBITMAP> bitmaps_;
};

TEST_F(ImageLists, HaveRoomAsTheyWereAskedTo) {
    const struct {
        int initial;
        int grow;
        int capacity; // at first
        int grown;    // when one more than that is in
    } cases[] = {{1, 1, 2, 7}, {10, 5, 11, 20}, {0, 0, 1, 6}, {3, -7, 4, 9}};
    for (const auto& row : cases) {
        HIMAGELIST handle = make(ILC_COLOR24, 2, 2, row.initial, row.grow);
        const ImageList& list = *requireImageList(handle);
        EXPECT_EQ(list.capacity(), row.capacity) << row.initial << ' ' << row.grow;
        ASSERT_NE(ImageList_SetImageCount(handle, static_cast<UINT>(row.capacity + 1)), FALSE);
        EXPECT_EQ(list.capacity(), row.grown) << "grown by a multiple of 4 beyond what is needed";
    }
}

TEST_F(ImageLists, CutAStripIntoImages) {
    for (const UINT depth : {ILC_COLOR4, ILC_COLOR8, ILC_COLOR16, ILC_COLOR24, ILC_COLOR32, ILC_COLORDDB, ILC_COLOR}) {
        HIMAGELIST list = make(depth);
        EXPECT_EQ(ImageList_Add(list, bitmap({"RGB.#", ".#RGB", "#####"}), nullptr), 0) << depth;
        EXPECT_EQ(ImageList_GetImageCount(list), 2) << "the rest doesn't count";
        EXPECT_EQ(ImageList_Add(list, bitmap({"BB"}), nullptr), 2);
        EXPECT_EQ(drawn(list, 0, ILD_NORMAL), (Rows{"RG", ".#"})) << depth;
        EXPECT_EQ(drawn(list, 1, ILD_NORMAL), (Rows{"B.", "RG"})) << depth;
        EXPECT_EQ(drawn(list, 2, ILD_NORMAL), (Rows{"BB", "##"})) << "what the bitmap lacks is black";
    }
}

TEST_F(ImageLists, TakeAColorOut) {
    HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
    HBITMAP strip = bitmap({"MRGM", "MM.B"});
    EXPECT_EQ(ImageList_AddMasked(list, strip, RGB(255, 0, 255)), 0);
    EXPECT_EQ(rowsOf(strip, 4, 2), (Rows{"#RG#", "##.B"})) << "in the caller's bitmap, too";
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT), (Rows{"GR", "GG"}));
    EXPECT_EQ(drawn(list, 0, ILD_IMAGE), (Rows{"#R", "##"}));
    EXPECT_EQ(drawn(list, 0, ILD_MASK), (Rows{".#", ".."}));
    EXPECT_EQ(drawn(list, 1, ILD_NORMAL, kRed), (Rows{"GR", ".B"}));

    HIMAGELIST plain = make(ILC_COLOR4);
    EXPECT_EQ(ImageList_AddMasked(plain, bitmap({"MR", "BM"}), CLR_DEFAULT), 0);
    EXPECT_EQ(drawn(plain, 0, ILD_TRANSPARENT), (Rows{"#R", "B#"})) << "no mask: black";
}

TEST_F(ImageLists, TakeAColorOutOfEveryKindOfBitmap) {
    for (const int bits : {8, 16, 24, 32}) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), 2, 2, 1, static_cast<WORD>(bits), BI_RGB, 0, 0, 0, 1, 0};
        info.bmiColors[0] = {255, 0, 255, 0};
        void* rows = nullptr;
        HBITMAP section = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &rows, nullptr, 0);
        HDC dc = CreateCompatibleDC(nullptr);
        SelectObject(dc, section);
        const RECT top{0, 0, 2, 1};
        HBRUSH magenta = CreateSolidBrush(RGB(255, 0, 255));
        PatBlt(dc, 0, 0, 2, 2, BLACKNESS);
        FillRect(dc, &top, magenta);
        if (bits == 8)
            std::memset(rows, 1, 4); // the lower row: an entry that is black
        DeleteDC(dc);
        HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
        ImageList_AddMasked(list, section, RGB(255, 0, 255));
        EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT), (Rows{"GG", "##"})) << bits;
        DeleteObject(section);
        DeleteObject(magenta);
    }
}

TEST_F(ImageLists, TakeAMaskAlongside) {
    HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
    EXPECT_EQ(ImageList_Add(list, bitmap({"RR", "BB"}), bitmap({".#", "#."}, true)), 0);
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT), (Rows{"GR", "BG"}));
    EXPECT_EQ(drawn(list, 0, ILD_IMAGE), (Rows{"#R", "B#"})) << "masked pixels are kept black";
    EXPECT_NE(ImageList_Replace(list, 0, bitmap({"BB", "RR"}), nullptr), FALSE);
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT), (Rows{"BB", "RR"}));
}

TEST_F(ImageLists, FillTheMaskedPartWithTheirBackground) {
    HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
    ImageList_AddMasked(list, bitmap({"MR", "RM"}), RGB(255, 0, 255));
    EXPECT_EQ(ImageList_GetBkColor(list), CLR_NONE);
    EXPECT_EQ(drawn(list, 0, ILD_NORMAL), (Rows{"GR", "RG"}));
    EXPECT_EQ(ImageList_SetBkColor(list, kBlue), CLR_NONE);
    EXPECT_EQ(drawn(list, 0, ILD_NORMAL), (Rows{"BR", "RB"}));
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT), (Rows{"GR", "RG"}));
    EXPECT_EQ(ImageList_SetBkColor(list, CLR_NONE), kBlue);

    Canvas canvas(2, 2);
    canvas.clear(kGreen);
    ImageList_DrawEx(list, 0, canvas.dc(), 0, 0, 0, 0, kBlack, CLR_NONE, ILD_NORMAL);
    EXPECT_EQ(canvas.rows(), (Rows{"#R", "R#"}));
}

TEST_F(ImageLists, BlendWithAColorOrTheGround) {
    HIMAGELIST list = make(ILC_COLOR32 | ILC_MASK);
    ImageList_AddMasked(list, bitmap({"MR", ".#"}), RGB(255, 0, 255));
    const struct {
        UINT style;
        COLORREF foreground;
        COLORREF onRed;
        COLORREF onWhite;
    } cases[] = {{ILD_BLEND50, kBlue, RGB(127, 0, 127), RGB(127, 127, 255)},
                 {ILD_BLEND25, kBlue, RGB(191, 0, 63), RGB(191, 191, 255)},
                 {ILD_BLEND50, CLR_NONE, RGB(127, 127, 0), RGB(127, 255, 127)},
                 {ILD_BLEND50, CLR_DEFAULT, RGB(132, 18, 53), RGB(132, 145, 180)}};
    for (const auto& row : cases) {
        Canvas canvas(2, 2);
        canvas.clear(kGreen);
        ImageList_DrawEx(list, 0, canvas.dc(), 0, 0, 0, 0, CLR_NONE, row.foreground, row.style);
        EXPECT_EQ(canvas.color(0, 0), kGreen) << row.style << ' ' << row.foreground;
        EXPECT_EQ(canvas.color(1, 0), row.onRed) << row.style << ' ' << row.foreground;
        EXPECT_EQ(canvas.color(0, 1), row.onWhite) << row.style << ' ' << row.foreground;
    }
}

TEST_F(ImageLists, LayAnOverlayOnTop) {
    HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
    ImageList_AddMasked(list, bitmap({"RRMM", "RRMB"}), RGB(255, 0, 255));
    EXPECT_NE(ImageList_SetOverlayImage(list, 1, 15), FALSE);
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT | INDEXTOOVERLAYMASK(15)), (Rows{"RR", "RB"}));
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT | INDEXTOOVERLAYMASK(3)), (Rows{"RR", "RR"})) << "no such overlay";
    ImageList_Remove(list, 1);
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT | INDEXTOOVERLAYMASK(15)), (Rows{"RR", "RR"})) << "its image is gone";
    EXPECT_EQ(ImageList_SetOverlayImage(list, 0, 0), FALSE);
    EXPECT_EQ(ImageList_SetOverlayImage(list, 0, 16), FALSE);
    EXPECT_EQ(ImageList_SetOverlayImage(list, 1, 1), FALSE);
}

TEST_F(ImageLists, CloseUpWhenAnImageGoes) {
    HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
    EXPECT_EQ(ImageList_Remove(list, 0), FALSE);
    EXPECT_NE(ImageList_Remove(list, -1), FALSE) << "all of none";
    ImageList_AddMasked(list, bitmap({"RRM.BB", "RMM.BB"}), RGB(255, 0, 255));
    EXPECT_NE(ImageList_Remove(list, 0), FALSE);
    EXPECT_EQ(ImageList_GetImageCount(list), 2);
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT), (Rows{"G.", "G."}));
    EXPECT_EQ(drawn(list, 1, ILD_TRANSPARENT), (Rows{"BB", "BB"}));
    EXPECT_EQ(ImageList_Remove(list, 2), FALSE);
    ImageList_RemoveAll(list);
    EXPECT_EQ(ImageList_GetImageCount(list), 0);
    EXPECT_NE(ImageList_SetImageCount(list, 1), FALSE);
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT), (Rows{"##", "##"})) << "new images are black";
}

TEST_F(ImageLists, KeepTheirImagesWhenTheyGrow) {
    HIMAGELIST list = make(ILC_COLOR4 | ILC_MASK);
    for (int round = 0; round < 50; ++round)
        EXPECT_EQ(ImageList_AddMasked(list, bitmap({round % 2 == 0 ? "MR" : "BM", "GG"}), RGB(255, 0, 255)), round);
    for (int round = 0; round < 50; ++round)
        EXPECT_EQ(drawn(list, round, ILD_TRANSPARENT, kWhite), (Rows{round % 2 == 0 ? ".R" : "B.", "GG"})) << round;
}

TEST_F(ImageLists, HaveRoomForAsManyAsTheirBitsTake) {
    HIMAGELIST list = make(ILC_COLOR4, 32, 32);
    EXPECT_EQ(ImageList_SetImageCount(list, 100000), TRUE);
    EXPECT_EQ(ImageList_Add(list, bitmap(Rows(32, std::string(32, 'R'))), nullptr), 100000);
    Canvas canvas(1, 1);
    EXPECT_NE(ImageList_Draw(list, 100000, canvas.dc(), 0, 0, ILD_NORMAL), FALSE);
    EXPECT_EQ(canvas.rows(), Rows{"R"});
    EXPECT_EQ(ImageList_SetImageCount(list, 1000000), FALSE);
    EXPECT_EQ(ImageList_GetImageCount(list), 100001);
}

/// Each with a table of its own colours.
TEST_F(ImageLists, TakeTheNearestColorsInTurns) {
    constexpr int kSide = 33; // rows end within a byte
    HBITMAP noise = CreateBitmap(kSide, kSide, 1, 32, nullptr);
    HDC source = CreateCompatibleDC(nullptr);
    SelectObject(source, noise);
    for (unsigned i = 0; i < kSide * kSide; ++i)
        SetPixelV(source, static_cast<int>(i % kSide), static_cast<int>(i / kSide), i * 2654435761U >> 8);
    for (int round = 0; round < 3; ++round) {
        for (const UINT depth : {ILC_COLOR4, ILC_COLOR8}) {
            HIMAGELIST list = make(depth, kSide, kSide);
            ImageList_Add(list, noise, nullptr);
            IMAGEINFO info{};
            ImageList_GetImageInfo(list, 0, &info);
            HDC dc = CreateCompatibleDC(nullptr);
            SelectObject(dc, info.hbmImage);
            int wrong = 0;
            for (int y = 0; y < kSide; ++y)
                for (int x = 0; x < kSide; ++x)
                    wrong += GetPixel(dc, x, y) == GetNearestColor(dc, GetPixel(source, x, y)) ? 0 : 1;
            EXPECT_EQ(wrong, 0) << depth;
            DeleteDC(dc);
        }
    }
    DeleteDC(source);
    DeleteObject(noise);
}

TEST_F(ImageLists, CopySwapAndDuplicate) {
    HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
    ImageList_AddMasked(list, bitmap({"RRM.BB", "RRM.BB"}), RGB(255, 0, 255));
    EXPECT_NE(ImageList_Copy(list, 0, list, 1, ILCF_SWAP), FALSE);
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT), (Rows{"G.", "G."}));
    EXPECT_EQ(drawn(list, 1, ILD_TRANSPARENT), (Rows{"RR", "RR"}));
    EXPECT_NE(ImageList_Copy(list, 2, list, 0, ILCF_MOVE), FALSE);
    EXPECT_EQ(drawn(list, 2, ILD_TRANSPARENT), (Rows{"G.", "G."}));

    ImageList_SetBkColor(list, kBlue);
    HIMAGELIST copy = ImageList_Duplicate(list);
    ImageList_RemoveAll(list);
    EXPECT_EQ(ImageList_GetImageCount(copy), 3);
    EXPECT_EQ(drawn(copy, 0, ILD_NORMAL), (Rows{"B.", "B."}));
    EXPECT_EQ(ImageList_Copy(copy, 0, list, 0, ILCF_MOVE), FALSE);
    ImageList_Destroy(copy);
}

TEST_F(ImageLists, TakeIconsAndGiveThem) {
    HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
    const Bytes bytes = packedIcon({24, {0xFF0000, 0x0000FF}, {"0000", "0000", "11  ", "11  "}});
    HICON icon = CreateIconFromResourceEx(bytes.data(), static_cast<DWORD>(bytes.size()), TRUE, 0x00030000, 0, 0, 0);
    EXPECT_EQ(ImageList_ReplaceIcon(list, -1, icon), 0);
    EXPECT_EQ(ImageList_AddIcon(list, icon), 1);
    EXPECT_EQ(drawn(list, 1, ILD_TRANSPARENT), (Rows{"RR", "BG"})) << "stretched to the list's size";
    EXPECT_EQ(ImageList_ReplaceIcon(list, 5, icon), -1);
    EXPECT_EQ(ImageList_ReplaceIcon(list, -1, nullptr), -1);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_CURSOR_HANDLE);

    HICON given = ImageList_GetIcon(list, 0, ILD_TRANSPARENT);
    Canvas canvas(2, 2);
    canvas.clear(kGreen);
    DrawIconEx(canvas.dc(), 0, 0, given, 0, 0, 0, nullptr, DI_NORMAL);
    EXPECT_EQ(canvas.rows(), (Rows{"RR", "BG"}));
    DestroyIcon(given);

    HIMAGELIST plain = make(ILC_COLOR4);
    ImageList_SetBkColor(plain, kGreen);
    ImageList_ReplaceIcon(plain, -1, icon);
    EXPECT_EQ(drawn(plain, 0, ILD_NORMAL, kWhite), (Rows{"RR", "BG"})) << "on the background colour";
    DestroyIcon(icon);
}

TEST_F(ImageLists, DrawPartsWithinTheClip) {
    HIMAGELIST list = make(ILC_COLOR24, 4, 3);
    ImageList_Add(list, bitmap({"RGB.", "#RGB", ".#RG"}), nullptr);
    Canvas canvas(6, 5);
    IntersectClipRect(canvas.dc(), 0, 0, 3, 5);
    IMAGELISTDRAWPARAMS params{};
    params.cbSize = sizeof params;
    params.himl = list;
    params.hdcDst = canvas.dc();
    params.x = 1;
    params.y = 1;
    params.xBitmap = 1;
    params.yBitmap = 1;
    params.cx = 99;
    params.rgbBk = CLR_NONE;
    params.rgbFg = CLR_NONE;
    EXPECT_NE(ImageList_DrawIndirect(&params), FALSE);
    EXPECT_EQ(canvas.rows(), (Rows{"......", ".RG...", ".#R...", "......", "......"}));
    params.xBitmap = 4;
    EXPECT_EQ(ImageList_DrawIndirect(&params), FALSE);
    params.cbSize = 4;
    EXPECT_EQ(ImageList_DrawIndirect(&params), FALSE);
}

TEST_F(ImageLists, TellWhereTheirImagesLie) {
    HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
    ImageList_AddMasked(list, bitmap({"RRM.", "RRM."}), RGB(255, 0, 255));
    IMAGEINFO info{};
    ASSERT_NE(ImageList_GetImageInfo(list, 1, &info), FALSE);
    HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, info.hbmImage);
    EXPECT_EQ(GetPixel(dc, info.rcImage.left + 1, info.rcImage.top), kWhite);
    SelectObject(dc, info.hbmMask);
    EXPECT_EQ(GetPixel(dc, info.rcImage.left, info.rcImage.top), kWhite);
    EXPECT_EQ(GetPixel(dc, info.rcImage.left + 1, info.rcImage.top), kBlack);
    DeleteDC(dc);
    DeleteObject(info.hbmImage);
    EXPECT_EQ(drawn(list, 0, ILD_NORMAL), (Rows{"RR", "RR"})) << "the list keeps its bitmaps";
    EXPECT_EQ(ImageList_Add(list, info.hbmImage, nullptr), -1) << "nor does it add them to itself";
    EXPECT_EQ(ImageList_AddMasked(list, info.hbmMask, 0), -1);
}

TEST_F(ImageLists, ForgetTheirImagesWithAnotherSize) {
    HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
    ImageList_Add(list, bitmap({"RR", "RR"}), nullptr);
    EXPECT_EQ(ImageList_SetIconSize(list, 2, 2), FALSE);
    EXPECT_NE(ImageList_SetIconSize(list, 3, 1), FALSE);
    EXPECT_EQ(ImageList_GetImageCount(list), 0);
    int width = 0;
    int height = 0;
    EXPECT_NE(ImageList_GetIconSize(list, &width, &height), FALSE);
    EXPECT_EQ(std::pair(width, height), std::pair(3, 1));
    EXPECT_EQ(ImageList_Add(list, bitmap({"RGB"}), nullptr), 0);
}

TEST_F(ImageLists, AreLoadedFromAStrip) {
    ResFile file;
    file.add(2, 1, packedBitmap({8, {0xFF0000, 0x0000FF, 0xFF00FF}, {"202011", "000011"}}));
    const TestInstance instance(file.bytes());
    HIMAGELIST list = ImageList_LoadBitmap(instance.handle(), MAKEINTRESOURCE(1), 3, 4, CLR_DEFAULT);
    ASSERT_EQ(ImageList_GetImageCount(list), 2);
    EXPECT_EQ(drawn(list, 0, ILD_TRANSPARENT), (Rows{"GR", "RR"}));
    ImageList_Destroy(list);
    list =
        ImageList_LoadImageA(instance.handle(), MAKEINTRESOURCE(1), 0, 4, CLR_NONE, IMAGE_BITMAP, LR_CREATEDIBSECTION);
    EXPECT_EQ(ImageList_GetImageCount(list), 3) << "as wide as high";
    ImageList_Destroy(list);
    EXPECT_EQ(ImageList_LoadBitmap(instance.handle(), MAKEINTRESOURCE(2), 3, 4, CLR_NONE), nullptr);
    EXPECT_EQ(ImageList_LoadBitmap(instance.handle(), MAKEINTRESOURCE(1), 7, 4, CLR_NONE), nullptr);
}

TEST_F(ImageLists, OfNonsenseAreRefused) {
    EXPECT_EQ(ImageList_Create(0, 2, ILC_COLOR24, 1, 1), nullptr);
    EXPECT_EQ(ImageList_Create(2, -1, ILC_COLOR24, 1, 1), nullptr);
    EXPECT_EQ(ImageList_Create(2, 2, ILC_COLOR24, -1, 1), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(ImageList_Create(4096, 4096, ILC_COLOR24, INT_MAX, INT_MAX), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);

    HIMAGELIST list = make(ILC_COLOR24 | ILC_MASK);
    HIMAGELIST dead = ImageList_Create(2, 2, ILC_COLOR24, 1, 1);
    ImageList_Destroy(dead);
    Canvas canvas(4, 4);
    HBITMAP image = bitmap({"RR", "RR"});
    EXPECT_EQ(ImageList_Add(list, nullptr, nullptr), -1);
    EXPECT_EQ(ImageList_Add(list, bitmap({"R"}), nullptr), -1) << "narrower than an image";
    EXPECT_EQ(ImageList_SetImageCount(list, 0xFFFFFFFF), FALSE);
    EXPECT_EQ(ImageList_SetImageCount(list, 1 << 14), TRUE);
    EXPECT_EQ(ImageList_SetImageCount(list, 0), TRUE);
    for (HIMAGELIST none : {dead, HIMAGELIST{nullptr}}) {
        EXPECT_EQ(ImageList_Add(none, image, nullptr), -1);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
        EXPECT_EQ(ImageList_AddMasked(none, image, 0), -1);
        EXPECT_EQ(ImageList_Draw(none, 0, canvas.dc(), 0, 0, ILD_NORMAL), FALSE);
        EXPECT_EQ(ImageList_GetImageCount(none), 0);
        EXPECT_EQ(ImageList_Remove(none, -1), FALSE);
        EXPECT_EQ(ImageList_SetBkColor(none, 0), CLR_NONE);
        EXPECT_EQ(ImageList_Destroy(none), FALSE);
        EXPECT_EQ(ImageList_Duplicate(none), nullptr);
        EXPECT_EQ(ImageList_GetIcon(none, 0, 0), nullptr);
    }
    for (const int index : {-1, 0, INT_MAX, INT_MIN}) {
        EXPECT_EQ(ImageList_Draw(list, index, canvas.dc(), 0, 0, ILD_NORMAL), FALSE) << index;
        EXPECT_EQ(ImageList_Replace(list, index, image, nullptr), FALSE) << index;
        EXPECT_EQ(ImageList_GetIcon(list, index, 0), nullptr) << index;
    }
    ImageList_Add(list, image, nullptr);
    EXPECT_EQ(ImageList_Draw(list, 0, nullptr, 0, 0, ILD_NORMAL), FALSE);
    EXPECT_EQ(ImageList_GetImageInfo(list, 0, nullptr), FALSE);
    EXPECT_EQ(ImageList_GetIconSize(list, nullptr, nullptr), FALSE);
    EXPECT_EQ(ImageList_DrawIndirect(nullptr), FALSE);
    for (const int place : {INT_MIN, INT_MAX})
        EXPECT_NE(ImageList_Draw(list, 0, canvas.dc(), place, place, ILD_NORMAL), FALSE);
}

} // namespace
