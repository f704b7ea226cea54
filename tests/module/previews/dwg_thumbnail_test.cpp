// Thumbnails read from files and painted, by pixels.
#include "module/previews/thumbnail_file.h"
#include "platform/temp_folder.h"
#include "platform/win32/gdi/canvas.h"
#include "previews/dwg_thumbnail.h"
#include "support/desktop_fixture.h"
#include "support/drawings.h"
#include "win32/drive_map.h"

#include <random>

namespace {

using vndk::win32::DriveMap;

constexpr int kBoxX = 1, kBoxY = 30, kBoxWidth = 200, kBoxHeight = 140;

class DwgThumbnailTest : public vndk::test::DesktopFixture {
protected:
    DwgThumbnailTest() { EXPECT_TRUE(DriveMap::current().map('T', folder.path()).ok()); }

    void paint(CDwgThumbnail& thumbnail) {
        canvas.clear(kGreen);
        CDC dc;
        dc.Attach(canvas.dc());
        thumbnail.Paint(dc, kBoxX, kBoxY, kBoxWidth, kBoxHeight);
        dc.Detach();
    }
    bool showsCross() {
        return canvas.color(kBoxX, kBoxY) == kRed && canvas.color(kBoxX, kBoxY + kBoxHeight) == kRed &&
               canvas.color(kBoxX + kBoxWidth - 2, kBoxY + 70) == kRed &&
               canvas.color(kBoxX + 50, kBoxY + 10) == kWhite;
    }

    TempFolder folder;
    CString strFolder = "T:";
    Canvas canvas{260, 200};
};

TEST_F(DwgThumbnailTest, PaintsThePictureAndTheGroundAroundIt) {
    folder.write("a.dwg", thumbnailFile({{1, "header"}, {2, plainPicture(100, 50, {0, 0, 255})}}));
    for (const char* spelt : {"T:", "T:\\"}) {
        strFolder = spelt;
        CDwgThumbnail thumbnail(&strFolder, "a.dwg");
        paint(thumbnail);
        EXPECT_EQ(thumbnail.loaded, 1) << spelt;
        EXPECT_EQ(thumbnail.width, 100);
        EXPECT_EQ(thumbnail.height, 50);
        // 200 x 100 at (1, 50)
        EXPECT_EQ(canvas.color(1, 50), kRed);
        EXPECT_EQ(canvas.color(200, 149), kRed);
        EXPECT_EQ(canvas.color(1, 49), kWhite);
        EXPECT_EQ(canvas.color(200, 150), kWhite);
        EXPECT_EQ(canvas.color(0, 60), kGreen);
        EXPECT_EQ(canvas.color(201, 60), kGreen);
        EXPECT_EQ(canvas.color(1, kBoxY - 1), kGreen);
        EXPECT_EQ(canvas.color(1, kBoxY + kBoxHeight), kGreen);
    }
}

TEST_F(DwgThumbnailTest, DrawsTheCrossLineByLine) {
    CDwgThumbnail thumbnail(&strFolder, "gone.dwg");
    paint(thumbnail);
    EXPECT_TRUE(showsCross());
    EXPECT_EQ(canvas.color(kBoxX + kBoxWidth - 1, kBoxY + 5), kWhite) << "two pixels narrower than the box";
    EXPECT_EQ(canvas.color(kBoxX + kBoxWidth, kBoxY + 5), kGreen);
    EXPECT_EQ(canvas.color(kBoxX + 60, kBoxY + kBoxHeight), kRed) << "its lower edge lies below the box";
    EXPECT_EQ(canvas.color(kBoxX + 99, kBoxY + 70), kRed) << "the diagonals meet";
    EXPECT_EQ(canvas.color(kBoxX + kBoxWidth - 2, kBoxY + kBoxHeight), kRed) << "closed by the second one";
}

TEST_F(DwgThumbnailTest, ShowsTheCrossForWhatHasNoPictureAndReadsItOnce) {
    const std::string picture = plainPicture(4, 2, {255, 0, 0});
    const struct {
        const char* what;
        std::string file;
    } rows[] = {
        {"no records", thumbnailFile({})},
        {"a count below zero", thumbnailFile({{2, picture}}, 0x80)},
        {"the highest count", thumbnailFile({{2, picture}}, 0xFF)},
        {"other records", thumbnailFile({{1, picture}, {3, picture}, {6, picture}})},
        {"a picture cut off", thumbnailFile({{2, picture.substr(0, picture.size() - 1)}})},
        {"a header cut off", thumbnailFile({{2, picture.substr(0, 30)}})},
        {"nothing of a picture", thumbnailFile({{2, ""}})},
        {"no kind of bitmap", thumbnailFile({{2, pictureHeader({.bits = 7}) + std::string(2000, 'x')}})},
    };
    for (const auto& row : rows) {
        folder.write("a.dwg", row.file);
        CDwgThumbnail thumbnail(&strFolder, "a.dwg");
        paint(thumbnail);
        EXPECT_TRUE(showsCross()) << row.what;
        EXPECT_EQ(thumbnail.loaded, 1) << row.what;
        folder.write("a.dwg", thumbnailFile({{2, picture}}));
        paint(thumbnail);
        EXPECT_TRUE(showsCross()) << row.what << ": the change of the file isn't noticed";
    }
}

TEST_F(DwgThumbnailTest, TriesAgainWhatWasNotThereOrNotWhole) {
    const std::string whole = thumbnailFile({{2, plainPicture(4, 2, {255, 0, 0})}});
    const std::size_t lengths[] = {0, 14, 50, 65, 68, whole.size() - 31};
    for (const std::size_t length : lengths) {
        folder.write("a.dwg", whole.substr(0, length));
        CDwgThumbnail thumbnail(&strFolder, "a.dwg");
        paint(thumbnail);
        EXPECT_TRUE(showsCross()) << length;
        EXPECT_EQ(thumbnail.loaded, 0) << length;
        folder.write("a.dwg", whole);
        paint(thumbnail);
        EXPECT_EQ(canvas.color(100, 100), kBlue) << length;
        EXPECT_EQ(thumbnail.loaded, 1) << length;
    }
    CDwgThumbnail late(&strFolder, "late.dwg");
    late.LoadPreview();
    EXPECT_EQ(late.loaded, 0);
    folder.write("late.dwg", whole);
    paint(late);
    EXPECT_EQ(canvas.color(100, 100), kBlue);
    folder.write("late.dwg", "");
    paint(late);
    EXPECT_EQ(canvas.color(100, 100), kBlue) << "what was read stays";
}

TEST_F(DwgThumbnailTest, TakesTheLastOfSeveralPictures) {
    folder.write(
        "a.dwg",
        thumbnailFile(
            {{2, plainPicture(4, 2, {255, 0, 0})}, {2, plainPicture(8, 4, {0, 0, 255})}, {2, "damaged"}, {1, ""}}));
    CDwgThumbnail thumbnail(&strFolder, "a.dwg");
    paint(thumbnail);
    EXPECT_EQ(thumbnail.width, 8);
    EXPECT_EQ(canvas.color(100, 100), kRed);
}

TEST_F(DwgThumbnailTest, ShowsPicturesWhoseRowsBeginAtTheTop) {
    std::string picture = plainPicture(2, -2, {0, 0, 255});
    picture[picture.size() - 3] = picture[picture.size() - 4] = '\x07'; // the lower row is another colour
    folder.write("a.dwg", thumbnailFile({{2, picture}}));
    CDwgThumbnail thumbnail(&strFolder, "a.dwg");
    paint(thumbnail);
    EXPECT_EQ(canvas.color(70, 32), kRed);
    EXPECT_EQ(canvas.color(70, kBoxY + 100), RGB(16, 16, 16));
}

TEST_F(DwgThumbnailTest, PaintsAndReadsNothingInABoxWithoutHeight) {
    folder.write("a.dwg", thumbnailFile({{2, plainPicture(4, 2, {255, 0, 0})}}));
    CDwgThumbnail thumbnail(&strFolder, "a.dwg");
    canvas.clear(kGreen);
    CDC dc;
    dc.Attach(canvas.dc());
    thumbnail.Paint(dc, 1, 30, 200, -2);
    thumbnail.Paint(dc, 1, 30, 200, 0);
    thumbnail.Paint(dc, 1, 30, 0, 20);
    dc.Detach();
    EXPECT_EQ(canvas.rows(), Rows(200, std::string(260, 'G')));
    EXPECT_EQ(thumbnail.loaded, 0);
}

struct PictureFile {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels; // 0xRRGGBB; black and white exchanged where there is a table
};

PictureFile readPictureFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    const std::string bmp = text.str();
    const auto number = [&](std::size_t at) {
        std::uint32_t value = 0;
        std::memcpy(&value, bmp.data() + at, 4);
        return value;
    };
    PictureFile file{static_cast<int>(number(18)), static_cast<int>(number(22)), {}};
    const std::size_t bits = number(28) & 0xFFFF;
    const std::size_t rows = bits == 32 ? 54 : 54 + 4 * (number(46) == 0 ? 256 : number(46));
    const std::size_t stride = (static_cast<std::size_t>(file.width) * bits + 31) / 32 * 4;
    for (int y = file.height - 1; y >= 0; --y)
        for (int x = 0; x < file.width; ++x) {
            const std::size_t at = rows + static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x) * bits / 8;
            if (bits == 32) {
                file.pixels.push_back(number(at) & 0xFFFFFF);
                continue;
            }
            const std::uint32_t color = number(54 + std::size_t{4} * static_cast<std::uint8_t>(bmp[at])) & 0xFFFFFF;
            file.pixels.push_back(color == 0 ? 0xFFFFFF : color == 0xFFFFFF ? 0 : color);
        }
    return file;
}

TEST_F(DwgThumbnailTest, EqualsThePicturesBesideRealDrawings) {
    SKIP_WITHOUT_DRAWINGS();
    int compared = 0, several = 0;
    for (const char* subfolder : {"thumbs", "r2000", "r14"}) {
        for (const std::string& path : vndk::test::realDrawings(subfolder)) {
            const std::filesystem::path file(path);
            if (!std::filesystem::exists(vndk::test::besideDrawing(path, ".bmp")))
                continue;
            const CString host(file.parent_path().c_str());
            const CString folderName(DriveMap::current().toDos(std::string_view(host)).value_or("").c_str());
            CDwgThumbnail thumbnail(&folderName, file.filename().c_str());
            const PictureFile expected = readPictureFile(vndk::test::besideDrawing(path, ".bmp"));
            // A box of just its size, low enough for the floor: pixel by pixel.
            Canvas exact(expected.width, expected.height + 20);
            CDC dc;
            dc.Attach(exact.dc());
            thumbnail.Paint(dc, 0, 20, expected.width, expected.height);
            dc.Detach();
            if (thumbnail.width != expected.width) {
                ++several; // the last of its pictures counts, and the file beside it is the first
                continue;
            }
            std::vector<std::uint32_t> shown;
            for (int y = 0; y < expected.height; ++y)
                for (int x = 0; x < expected.width; ++x)
                    shown.push_back(exact.pixel(x, y + 20) & 0xFFFFFF);
            EXPECT_TRUE(shown == expected.pixels) << path;
            ++compared;
        }
    }
    EXPECT_LE(several, 1);
    EXPECT_GT(compared, 30);
}

TEST_F(DwgThumbnailTest, LivesThroughDamageOfAnyKind) {
    constexpr unsigned seed = 20261123;
    std::mt19937 random(seed);
    int pictures = 0;
    const int count = damagedFileCount(1500);
    for (int round = 0; round < count; ++round) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        folder.write("a.dwg", damagedThumbnailFile(random));
        CDwgThumbnail thumbnail(&strFolder, "a.dwg");
        paint(thumbnail);
        pictures += thumbnail.bitmap != nullptr;
        ASSERT_TRUE(thumbnail.bitmap || showsCross());
    }
    EXPECT_GT(pictures, count / 5);
    EXPECT_LT(pictures, count);
}

} // namespace
