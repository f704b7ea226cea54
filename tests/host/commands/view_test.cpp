// ZOOM and PAN, what a file keeps of the view, the pictures that saves and BLOCK leave.
#include "commands_fixture.h"

#include "ap/drawing_views.h"
#include "db/open.h"
#include "dwg/file_image.h"
#include "ed/object_snap.h"
#include "win32/drive_map.h"

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace {

class ViewTest : public CommandsTest {
protected:
    ViewTest() : folder(fs::temp_directory_path() / ("vondrake-views-" + std::to_string(getpid()))) {
        fs::create_directories(folder);
        former = vndk::win32::DriveMap::current();
        EXPECT_TRUE(vndk::win32::DriveMap::current().map('T', folder.string()).ok());
    }
    ~ViewTest() override {
        vndk::win32::DriveMap::current() = former;
        fs::remove_all(folder);
    }
    std::string path(const char* name) const { return (folder / name).string(); }
    vndk::host::DrawingViews::View view() { return document().views().current(); }
    /// The icon of a block; empty without one.
    std::vector<uint8_t> icon(const char* name) {
        AcDbObjectId id;
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId());
        std::vector<uint8_t> bytes;
        if (static_cast<const AcDbSymbolTable&>(*table).getAt(name, id) == Acad::eOk)
            AcDbObjectPointer<AcDbBlockTableRecord>(id)->getPreviewIcon(bytes);
        return bytes;
    }

    fs::path folder;
    vndk::win32::DriveMap former;
};

/// A bitmap of 256 colours as a file holds it.
struct Bitmap {
    explicit Bitmap(std::span<const uint8_t> bytes) : bytes_(bytes) {
        width = static_cast<int>(number(4));
        height = static_cast<int>(number(8));
        isWhole = number(0) == 40 && number(14) == 8 &&
                  bytes.size() == 40 + 1024 + static_cast<size_t>((width + 3) / 4 * 4) * static_cast<size_t>(height);
    }
    /// 0xRRGGBB, y downward.
    uint32_t at(int x, int y) const {
        const size_t row = static_cast<size_t>(height - 1 - y) * static_cast<size_t>((width + 3) / 4 * 4);
        return number(40 + 4 * size_t{bytes_[1064 + row + static_cast<size_t>(x)]});
    }
    std::map<uint32_t, int> colors() const {
        std::map<uint32_t, int> counts;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                ++counts[at(x, y)];
        return counts;
    }
    int width = 0, height = 0;
    bool isWhole = false;

private:
    uint32_t number(size_t at) const {
        uint32_t value = 0;
        std::memcpy(&value, &bytes_[at], 4);
        return at == 14 ? value & 0xFFFF : value;
    }
    std::span<const uint8_t> bytes_;
};

} // namespace

TEST_F(ViewTest, zoomsByEachOption) {
    constexpr const char* kScene = "LINE 10,10 50,10\n\nLINE 10,10 10,40\n\n"; // on a screen of 4 to 3
    const struct {
        const char* script;
        double x, y, height;
    } cases[] = {
        {"ZOOM E\n", 30, 25, 31.2},
        {"ZOOM W 0,0 8,3\n", 4, 1.5, 6},
        {"ZOOM 0,0 2,3\n", 1, 1.5, 3},
        {"ZOOM C 5,6 20\n", 5, 6, 20},
        {"ZOOM C 5,6 2x\n", 5, 6, 4.5},
        {"ZOOM 3x\n", 6, 4.5, 3},
        {"ZOOM S .5x\n", 6, 4.5, 18},
        {"ZOOM 0.5\n", 6, 4.5, 18},
        {"ZOOM A\n", 25, 20, 40},
        {"ZOOM 2x\nZOOM 2x\nZOOM P\n", 6, 4.5, 4.5},
        {"ZOOM 2x\nZOOM P\nZOOM P\n", 6, 4.5, 9},
        {"PAN 1,1 3,0\n", 4, 5.5, 9},
        {"PAN 1,1\n\n", 5, 3.5, 9},
        {"UCS O 100,0\nZOOM C 5,6 20\n", 105, 6, 20},
    };
    for (const auto& c : cases) {
        startAgain();
        run(kScene);
        run(c.script);
        EXPECT_NEAR(view().center.x, c.x, 1e-9) << c.script << output;
        EXPECT_NEAR(view().center.y, c.y, 1e-9) << c.script;
        EXPECT_NEAR(view().height, c.height, 1e-9) << c.script;
    }
    run("ZOOM 0\n");
    EXPECT_TRUE(printed("Requires")) << output;
}

TEST_F(ViewTest, looksFromEachSide) {
    run("LINE 10,10,0 50,10,30\n\n");
    const double third = std::sqrt(1.0 / 3);
    const struct {
        const char* script;
        AcGeVector3d direction, up;
    } cases[] = {
        {"VPOINT 0,-2,0\n", {0, -1, 0}, {0, 0, 1}},
        {"VPOINT 5,0,0\n", {1, 0, 0}, {0, 0, 1}},
        {"VPOINT 0,0,-1\n", {0, 0, -1}, {0, 1, 0}},
        {"VPOINT -1,-1,1\n", {-third, -third, third}, AcGeVector3d(1, 1, 2).normal()},
        {"VPOINT -1,-1,1\nVPOINT\n\n", {-third, -third, third}, AcGeVector3d(1, 1, 2).normal()},
        {"UCS X 90\nPLAN\n\n", {0, -1, 0}, {0, 0, 1}},
        {"UCS X 90\nPLAN World\n", {0, 0, 1}, {0, 1, 0}},
        {"UCS X 90\nVPOINT 0,1,0\n", {0, 1, 0}, {0, 0, 1}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.script);
        run("UCS World\nPLAN World\n");
        run(c.script);
        EXPECT_TRUE(view().direction.isEqualTo(c.direction)) << output;
        EXPECT_TRUE(view().up.isEqualTo(c.up)) << view().up.x << ' ' << view().up.y << ' ' << view().up.z;
        // The line is seen whole, in the middle.
        const AcGeMatrix3d toView = vndk::host::worldToView(view());
        EXPECT_TRUE((toView * AcGePoint3d(30, 10, 15)).asVector().crossProduct(AcGeVector3d::kZAxis).isZeroLength());
    }
    run("ZOOM P\nVPOINT 0,0,0\n");
    EXPECT_TRUE(printed("give one beside the origin")) << output;
    EXPECT_TRUE(view().direction.isEqualTo({0, 0, 1})) << "of before the last VPOINT";
    run("(setvar \"TILEMODE\" 0)\nPLAN\n");
    EXPECT_TRUE(printed("** Command only valid in Model space **")) << output;
}

TEST_F(ViewTest, savesTheViewAndLeavesAnUntouchedOneAlone) {
    run("LINE 0,0 40,30\n\nSAVEAS\n\nT:a\n");
    run("UCS Z 30\nZOOM C 7,8 25\n");
    EXPECT_TRUE(database().isDirty()); // by the UCS
    const AcGePoint3d center = view().center;
    run("QSAVE\nCLOSE\nOPEN T:a\n");
    EXPECT_NEAR(view().center.x, center.x, 1e-12);
    EXPECT_NEAR(view().center.y, center.y, 1e-12);
    EXPECT_EQ(view().height, 25);
    EXPECT_FALSE(database().isDirty());
    run("ZOOM 2x\n");
    EXPECT_FALSE(database().isDirty()) << "looking is no change";
    run("QSAVE\n");
    EXPECT_EQ(database().undo().undoCount(), 0U) << "a save leaves nothing to be undone";
}

TEST_F(ViewTest, eachSaveLeavesAPictureOfWhatIsShown) {
    run("CECOLOR 1\nCIRCLE 0,0 10\nCECOLOR BYLAYER\nLINE -100,0 100,0\n\nZOOM C 0,0 30\nSAVEAS\n\nT:a\n");
    run("-WBLOCK T:b\n*\nZOOM C 500,0 30\nQSAVE\n");
    const auto bitmapOf = [&](const char* name, auto&& look) {
        const auto image = vndk::dwg::FileImage::read(path(name));
        ASSERT_TRUE(image) << name;
        ASSERT_EQ((*image)->preview().size(), 2U);
        EXPECT_EQ((*image)->preview()[1].type, 2);
        const Bitmap bitmap((*image)->preview()[1].data);
        EXPECT_TRUE(bitmap.isWhole);
        look(bitmap);
    };
    bitmapOf("a.bak", [](const Bitmap& bitmap) {
        EXPECT_EQ(bitmap.width, 256);
        EXPECT_EQ(bitmap.height, 192);
        EXPECT_EQ(bitmap.at(5, 96), 0xFFFFFFU);
        EXPECT_GT(bitmap.colors()[0xFF0000], 300);
        EXPECT_EQ(bitmap.at(128, 20), 0U);
        EXPECT_EQ(bitmap.colors().size(), 3U);
    });
    bitmapOf("a.dwg", [](const Bitmap& bitmap) { EXPECT_EQ(bitmap.colors().size(), 1U); });
    bitmapOf("b.dwg", [](const Bitmap& bitmap) { EXPECT_GT(bitmap.colors()[0xFFFFFF], 200); });
}

TEST_F(ViewTest, givesBlocksIcons) {
    run("CECOLOR 5\nLINE 0,0 10,0\n\nLINE 10,0 10,10\n\n-BLOCK CORNER 0,0 ALL\n\n");
    const std::vector<uint8_t> made = icon("CORNER");
    ASSERT_EQ(made.size(), 2088U);
    const Bitmap bitmap(made);
    EXPECT_TRUE(bitmap.isWhole);
    EXPECT_EQ(bitmap.width, 32);
    EXPECT_GT(Bitmap(made).colors()[0x0000FF], 40);
    EXPECT_GT(Bitmap(made).colors()[0xFFFFFF], 900);
    run("U\nU\nU\n");
    EXPECT_TRUE(icon("CORNER").empty());
    run("REDO\n");

    startAgain();
    run("CIRCLE 0,0 1\n-BLOCK A 0,0 L\n\nLINE 0,0 1,1\n\n-BLOCK B 0,0 L\n\n");
    const std::vector<uint8_t> a = icon("A"), b = icon("B");
    EXPECT_NE(a, b);
    run("CIRCLE 0,0 1\nCIRCLE 0,0 .5\n-BLOCK A\nY\n0,0 ALL\n\n");
    EXPECT_NE(icon("A"), a) << output;
    run("BLOCKICON B\n");
    EXPECT_TRUE(printed("1 block updated.")) << output;
    EXPECT_EQ(icon("B"), b);
    run("BLOCKICON NONE\n");
    EXPECT_TRUE(printed("No block fits")) << output;
}

TEST_F(ViewTest, givesIconsToBlocksThatComeOutOfDrawings) {
    run("CECOLOR 1\nLINE 0,0 10,0 10,10\n\nSAVEAS 2000 " + path("part.dwg") + "\n");
    startAgain();
    run("CECOLOR 3\nLINE 0,0 10,0 10,10\n\nSAVEAS 2000 " + path("other.dwg") + "\n");
    startAgain();
    run("-INSERT " + path("part.dwg") + " 0,0\n\n\n\n");
    ASSERT_EQ(icon("part").size(), 2088U) << output;
    EXPECT_GT(Bitmap(icon("part")).colors()[0xFF0000], 40);
    run("-INSERT part=" + path("other.dwg") + " 0,0\n\n\n\n");
    EXPECT_GT(Bitmap(icon("part")).colors()[0x00FF00], 40) << "a new definition, a new picture";
    run("U\n");
    ASSERT_EQ(icon("part").size(), 2088U) << output;
    EXPECT_GT(Bitmap(icon("part")).colors()[0xFF0000], 40);
    AcDbDatabase empty(true, true);
    AcDbObjectId block;
    ASSERT_EQ(database().insert(block, "nothing", &empty), Acad::eOk);
    EXPECT_TRUE(icon("nothing").empty());
}

TEST_F(ViewTest, snapsTypedPointsWhereASnapIsNamed) {
    run("LINE 0,0 8,0\n\nCIRCLE 20,0 2\nLINE 10,10 end 7.95,0\n\n");
    EXPECT_EQ(lisp("(cdr (assoc 11 (entget (entlast))))"), "(8.0 0.0 0.0)") << output;
    run("LINE 10,10 cen 22,0\n\n");
    EXPECT_EQ(lisp("(cdr (assoc 11 (entget (entlast))))"), "(20.0 0.0 0.0)") << output;
    run("LINE 10,10 mid 30,30 mid 4,0\n\n");
    EXPECT_EQ(lisp("(cdr (assoc 11 (entget (entlast))))"), "(4.0 0.0 0.0)") << output;
    // A keyword of the prompt goes first.
    run("ARC 0,0 EN 4,0 R 3\n");
    EXPECT_EQ(lisp("(cdr (assoc 0 (entget (entlast))))"), "\"ARC\"") << output;
    EXPECT_EQ(vndk::host::snapModesOf("endp,MID"), 3);
    EXPECT_EQ(vndk::host::snapModesOf("en"), std::nullopt);
    EXPECT_EQ(vndk::host::snapModesOf("end,"), 1);
    EXPECT_EQ(vndk::host::snapModesOf("entity"), std::nullopt);
}
