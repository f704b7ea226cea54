// External references: attached, drawn, kept in files, found again, read anew, detached.
#include "ads/xref.h"
#include "commands_fixture.h"
#include "db/block_reference.h"
#include "db/curves.h"
#include "db/xref.h"
#include "gs/manager.h"
#include "platform/temp_folder.h"
#include "win32/drive_map.h"

namespace {

class XrefTest : public CommandsTest {
protected:
    XrefTest() {
        EXPECT_TRUE(vndk::win32::DriveMap::current().map('T', folder.path()).ok());
        std::filesystem::create_directories(folder / "parts");
    }
    ~XrefTest() override { vndk::win32::DriveMap::current() = former; }

    /// A drawing with what the lines draw, saved and closed; an empty one is current then.
    void makeDrawing(const std::string& name, const std::string& lines) {
        startAgain();
        run(lines + "SAVEAS 2000 T:\\" + name + "\n");
        ASSERT_TRUE(std::filesystem::exists(folder / name)) << output;
        startAgain();
    }
    std::vector<AcDbObjectId> xrefs() { return acdbXrefBlocks(database()); }
    const AcDbDatabase* shownBy(AcDbObjectId block) {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
        return record ? record->xrefDatabase() : nullptr;
    }
    size_t references() {
        size_t count = 0;
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
        for (const AcDbObjectId id : space->entities())
            count += !id.isErased() && AcDbObjectPointer<AcDbBlockReference>(id).openStatus() == Acad::eOk;
        return count;
    }
    /// The colours of a few pixels of the model space, 100 x 100 with the origin in the lower left corner.
    uint32_t pixel(int x, int y) {
        constexpr int kSide = 100;
        AcGsManager& manager = *acgsGetGsManager();
        AcGsDevice* const device = manager.createAutoCADOffScreenDevice();
        AcGsModel* const model = manager.createAutoCADModel();
        AcGsView* const view = manager.getGSClassFactory()->createView();
        device->onSize(kSide, kSide);
        device->add(view);
        view->setView({50, 50, 1}, {50, 50, 0}, AcGeVector3d::kYAxis, kSide, kSide);
        {
            const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
            EXPECT_TRUE(view->add(space.object(), model));
        }
        view->update();
        const uint32_t color = device->picture().at(x, kSide - 1 - y);
        manager.getGSClassFactory()->deleteView(view);
        manager.destroyAutoCADModel(model);
        manager.destroyAutoCADDevice(device);
        return color;
    }

    vndk::win32::DriveMap former = vndk::win32::DriveMap::current();
    TempFolder folder;
};

constexpr uint32_t kBlack = 0xFF000000, kRed = 0xFFFF0000, kGreen = 0xFF00FF00;

/// A line from (0, 0.5) to (20, 0.5), in the layer's colour.
const char* const kRedLine = "LAYER Make WALL Color 1\n\n\nLINE 0,0.5 20,0.5\n\n";

} // namespace

TEST_F(XrefTest, ShowsTheOtherDrawingAndKeepsNothingOfIt) {
    makeDrawing("door.dwg", std::string(kRedLine) + "SETVAR INSBASE 0,0\n");
    AcDbObjectId block, reference;
    const AcGePoint3d at(10, 20, 0);
    ASSERT_EQ(acedXrefAttach("T:\\door.dwg", "door", &block, &reference, &at, nullptr, nullptr, false), Acad::eOk)
        << output;
    EXPECT_EQ(pixel(15, 20), kRed);
    EXPECT_EQ(pixel(40, 20), kBlack);
    AcDbExtents box;
    ASSERT_EQ(AcDbObjectPointer<AcDbEntity>(reference)->getGeomExtents(box), Acad::eOk);
    EXPECT_EQ(box.maxPoint(), AcGePoint3d(30, 20.5, 0));
    EXPECT_EQ(drawnIn(database()).find("LINE"), std::string::npos);
    run("SAVEAS 2000 T:\\plan.dwg\nCLOSE\n");

    run("OPEN T:\\plan.dwg\n");
    ASSERT_EQ(xrefs().size(), 1U) << output;
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(xrefs()[0]);
        EXPECT_EQ(record->name(), "door");
        EXPECT_EQ(record->pathName(), "T:\\door.dwg");
        EXPECT_TRUE(record->isFromExternalReference());
        EXPECT_EQ(record->entities().size(), 0U);
    }
    EXPECT_EQ(pixel(15, 20), kRed);
    EXPECT_FALSE(database().isDirty()) << "showing it is no change";
}

TEST_F(XrefTest, IsOneUndoStep) {
    makeDrawing("door.dwg", kRedLine);
    const AcGePoint3d at(10, 20, 0);
    ASSERT_EQ(acedXrefAttach("T:\\door.dwg", "door", nullptr, nullptr, &at, nullptr, nullptr, false), Acad::eOk);
    run("U\n");
    EXPECT_TRUE(xrefs().empty());
    EXPECT_EQ(pixel(15, 20), kBlack);
    run("REDO\n");
    EXPECT_EQ(pixel(15, 20), kRed);
}

TEST_F(XrefTest, TakesScaleRotationAndTheUcs) {
    makeDrawing("door.dwg", kRedLine);
    run("UCS Origin 10,10\n");
    const AcGePoint3d at(5, 5, 0);
    const AcGeScale3d scale(2, 2, 2);
    const double quarter = kAcGePi / 2;
    ASSERT_EQ(acedXrefAttach("T:\\door.dwg", "door", nullptr, nullptr, &at, &scale, &quarter, false), Acad::eOk);
    EXPECT_EQ(pixel(14, 50), kRed) << "from (15, 15) upward, 40 long, one to the left";
    EXPECT_EQ(pixel(14, 60), kBlack);
}

TEST_F(XrefTest, FollowsLayersOfTheOtherDrawingAndItsOwnReference) {
    makeDrawing("door.dwg", std::string(kRedLine) + "LAYER Set 0\n\nLINE 0,2.5 20,2.5\n\n" +
                                "LAYER Make GONE OFF GONE Yes\n\nLINE 0,4.5 20,4.5\n\n");
    run("LAYER Make HERE Color 3\n\n\n");
    const AcGePoint3d at(10, 20, 0);
    ASSERT_EQ(acedXrefAttach("T:\\door.dwg", "door", nullptr, nullptr, &at, nullptr, nullptr, false), Acad::eOk);
    EXPECT_EQ(pixel(15, 20), kRed);
    EXPECT_EQ(pixel(15, 22), kGreen) << "layer 0 takes the reference's";
    EXPECT_EQ(pixel(15, 24), kBlack) << "a layer that is off";
}

TEST_F(XrefTest, FindsMovedDrawingsAndTellsOfMissingOnes) {
    makeDrawing("parts/door.dwg", kRedLine);
    const AcGePoint3d at(10, 20, 0);
    ASSERT_EQ(acedXrefAttach("T:\\parts\\door.dwg", "door", nullptr, nullptr, &at, nullptr, nullptr, false), Acad::eOk);
    run("SAVEAS 2000 T:\\plan.dwg\nCLOSE\n");
    std::filesystem::copy_file(folder / "parts/door.dwg", folder / "kept");
    // Beside the drawing that refers to it.
    std::filesystem::rename(folder / "parts/door.dwg", folder / "door.dwg");
    run("OPEN T:\\plan.dwg\n");
    EXPECT_EQ(pixel(15, 20), kRed);
    run("CLOSE\n");
    // Among the support files.
    std::filesystem::create_directories(folder / "support");
    std::filesystem::rename(folder / "door.dwg", folder / "support/door.dwg");
    host.linker().addSupportFolder(folder / "support");
    run("OPEN T:\\plan.dwg\n");
    EXPECT_EQ(pixel(15, 20), kRed);
    run("CLOSE\n");
    std::filesystem::remove(folder / "support/door.dwg");
    run("OPEN T:\\plan.dwg\n");
    EXPECT_NE(output.find("T:\\parts\\door.dwg was not found"), std::string::npos) << output;
    ASSERT_EQ(xrefs().size(), 1U);
    EXPECT_EQ(shownBy(xrefs()[0]), nullptr);
    EXPECT_EQ(references(), 1U);
    run("-XREF\n?\n\n?\ndoor\n\x1b\n");
    EXPECT_NE(output.find("\"door\"  T:\\parts\\door.dwg  Attach  not found"), std::string::npos) << output;
    // It is back: who attaches it once more gets both references.
    std::filesystem::rename(folder / "kept", folder / "parts/door.dwg");
    const AcGePoint3d above(10, 40, 0);
    ASSERT_EQ(acedXrefAttach("T:\\parts\\door.dwg", "door", nullptr, nullptr, &above, nullptr, nullptr, false),
              Acad::eOk);
    EXPECT_EQ(pixel(15, 20), kRed);
    EXPECT_EQ(pixel(15, 40), kRed);
    std::filesystem::remove(folder / "parts/door.dwg");
    run("CIRCLE 0,0 1\nQSAVE\n");
    makeDrawing("other.dwg", kRedLine);
    run("CLOSE\nOPEN T:\\plan.dwg\n-XREF\nPath\ndoor\nT:\\other.dwg\n");
    EXPECT_EQ(pixel(15, 20), kRed) << output;
}

TEST_F(XrefTest, ShowsNestedOnesAndNoCircles) {
    makeDrawing("inner.dwg", kRedLine);
    const AcGePoint3d at(0, 10, 0);
    ASSERT_EQ(acedXrefAttach("T:\\inner.dwg", "inner", nullptr, nullptr, &at, nullptr, nullptr, false), Acad::eOk);
    run("SAVEAS 2000 T:\\outer.dwg\nCLOSE\nNEW\n\n");
    ASSERT_EQ(acedXrefAttach("T:\\outer.dwg", "outer", nullptr, nullptr, &at, nullptr, nullptr, false), Acad::eOk);
    EXPECT_EQ(pixel(5, 20), kRed);
    run("SAVEAS 2000 T:\\plan.dwg\nCLOSE\n");
    // The innermost one comes to refer to the outermost.
    run("OPEN T:\\inner.dwg\n");
    const AcGePoint3d origin;
    output.clear();
    acedXrefAttach("T:\\plan.dwg", "plan", nullptr, nullptr, &origin, nullptr, nullptr, false);
    EXPECT_NE(output.find("refers to itself"), std::string::npos) << output;
    output.clear();
    EXPECT_NE(acedXrefAttach("T:\\inner.dwg", "self", nullptr, nullptr, &origin, nullptr, nullptr, false), Acad::eOk);
    EXPECT_NE(output.find("refers to itself"), std::string::npos) << output;
    run("QSAVE\nCLOSE\nOPEN T:\\plan.dwg\n");
    EXPECT_NE(output.find("refers to itself"), std::string::npos) << output;
    EXPECT_EQ(pixel(5, 20), kRed);
}

TEST_F(XrefTest, LeavesOverlaysOutWhereTheyAreNested) {
    makeDrawing("inner.dwg", kRedLine);
    run("-XREF\nOverlay\nT:\\inner.dwg\n0,10\n\n\n\nSAVEAS 2000 T:\\outer.dwg\n");
    EXPECT_EQ(pixel(5, 10), kRed) << output;
    run("CLOSE\nNEW\n\n-XREF\nAttach\nT:\\outer.dwg\n0,10\n\n\n\n");
    ASSERT_EQ(xrefs().size(), 1U) << output;
    EXPECT_EQ(pixel(5, 20), kBlack);
}

TEST_F(XrefTest, ReadsAnewAndDetaches) {
    makeDrawing("door.dwg", kRedLine);
    run("-XREF\n\nT:\\door.dwg\n10,20\n\n\n\n");
    EXPECT_EQ(pixel(15, 20), kRed) << output;
    run("SAVEAS 2000 T:\\plan.dwg\nOPEN T:\\door.dwg\nERASE ALL\n\nLINE 0,5.5 20,5.5\n\nQSAVE\nCLOSE\n");
    EXPECT_EQ(pixel(15, 20), kRed);
    run("-XREF\nReload\n*\n");
    EXPECT_EQ(pixel(15, 20), kBlack) << output;
    EXPECT_EQ(pixel(15, 25), kRed) << output;
    std::filesystem::remove(folder / "door.dwg");
    run("XREF\nReload\ndoor\n");
    EXPECT_TRUE(problem.has_value());
    EXPECT_EQ(pixel(15, 25), kRed) << "what it showed stays";
    run("PURGE\nBlocks\n*\nNo\n");
    EXPECT_EQ(xrefs().size(), 1U) << "it isn't purged";
    run("EXPLODE ALL\n\n");
    EXPECT_EQ(references(), 1U);
    run("-XREF\nDetach\ndoor\n");
    EXPECT_TRUE(xrefs().empty()) << output;
    EXPECT_EQ(references(), 0U);
    EXPECT_EQ(pixel(15, 25), kBlack);
    run("U\n");
    EXPECT_EQ(pixel(15, 25), kRed);
}

TEST_F(XrefTest, ChangesNothingWhereItCannotAttach) {
    makeDrawing("door.dwg", kRedLine);
    folder.write("junk.dwg", "junk");
    run("LINE 0,0 1,1\n\n-BLOCK\ndoor\n0,0\nLAST\n\n");
    const AcGePoint3d at;
    const auto attach = [&](const char* path, const char* name) {
        output.clear();
        return acedXrefAttach(path, name, nullptr, nullptr, &at, nullptr, nullptr, false);
    };
    EXPECT_EQ(attach("T:\\gone.dwg", "gone"), Acad::eFileNotFound);
    EXPECT_NE(output.find("T:\\gone.dwg was not found"), std::string::npos) << output;
    EXPECT_NE(attach("T:\\junk.dwg", "junk"), Acad::eOk);
    EXPECT_NE(output.find("junk.dwg"), std::string::npos) << output;
    EXPECT_NE(attach("T:\\door.dwg", "door"), Acad::eOk);
    EXPECT_NE(output.find("There is a block \"door\" already"), std::string::npos) << output;
    EXPECT_NE(attach("T:\\door.dwg", "a|b"), Acad::eOk);
    EXPECT_TRUE(xrefs().empty());
    EXPECT_EQ(references(), 0U);
    // A second reference to the same drawing takes the block that is there.
    EXPECT_EQ(attach("T:\\door.dwg", "leaf"), Acad::eOk);
    EXPECT_EQ(attach("T:\\door.dwg", "leaf"), Acad::eOk);
    EXPECT_EQ(xrefs().size(), 1U);
    EXPECT_EQ(references(), 2U);
    run("-XREF\n\nT:\\door.dwg\n\x1b\n");
    EXPECT_EQ(references(), 2U);
}
