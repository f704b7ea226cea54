// Pictures after changes are those that would be drawn from the beginning.
#include "db/dictionary.h"
#include "db/opaque.h"
#include "dwg/active_view.h"
#include "dwg/bit_writer.h"
#include "gs/graphics_model.h"
#include "host/gs/gs_fixture.h"

#include <random>

namespace {

class FollowingTest : public GsTest {
protected:
    /// What a view shows that has never seen the drawing before, and looks for nothing.
    vndk::win32::Picture afresh() {
        AcGsDevice* const otherDevice = manager.createAutoCADOffScreenDevice();
        AcGsModel* const otherModel = manager.createAutoCADModel();
        AcGsView* const other = manager.getGSClassFactory()->createView();
        otherDevice->onSize(kSide, kSide);
        otherDevice->add(other);
        other->setView(view->position(), view->target(), view->upVector(), view->fieldWidth(), view->fieldHeight());
        other->setInteractive(true);
        {
            const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
            other->add(space.object(), otherModel);
        }
        other->update();
        vndk::win32::Picture picture = otherDevice->picture();
        manager.getGSClassFactory()->deleteView(other);
        manager.destroyAutoCADModel(otherModel);
        manager.destroyAutoCADDevice(otherDevice);
        return picture;
    }
    std::unique_ptr<AcDbLine> anyLine() {
        auto line = std::make_unique<AcDbLine>(anywhere(), anywhere());
        line->setColorIndex(static_cast<short>(1 + random() % 6));
        return line;
    }
    AcGePoint3d anywhere() {
        std::uniform_real_distribution place(0.0, 300.0);
        return {place(random), place(random), place(random)};
    }
    std::mt19937 random{11};
};

} // namespace

TEST_F(FollowingTest, ManyChangesOneByOne) {
    const AcDbObjectId block = newBlock("part");
    append(lineInRow(10), block);
    std::vector<AcDbObjectId> ids;
    for (int i = 0; i < 500; ++i)
        ids.push_back(append(anyLine()));
    view->setView({150, 150, 1}, {150, 150, 0}, AcGeVector3d::kYAxis, 60, 60);
    draw();
    ASSERT_TRUE(vndk::win32::comparePictures(afresh(), device->picture()).same());
    for (int round = 0; round < 40; ++round) {
        for (unsigned i = random() % 60; i > 0; --i) {
            const AcDbObjectId id = ids[random() % ids.size()];
            switch (random() % 6) {
            case 0:
                ids.push_back(append(anyLine()));
                break;
            case 1:
                ids.push_back(append(std::make_unique<AcDbBlockReference>(anywhere(), block)));
                break;
            case 2: {
                const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite, true);
                entity->erase(!entity->isErased());
                break;
            }
            case 3:
                append(lineInRow(static_cast<int>(random() % 20)), block);
                break;
            default:
                if (const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite); entity)
                    entity->transformBy(AcGeMatrix3d::translation(anywhere() - anywhere()));
            }
        }
        view->orbit(0.1, round % 7 * 0.05);
        draw();
        ASSERT_TRUE(vndk::win32::comparePictures(afresh(), device->picture()).same()) << "round " << round;
    }
}

TEST_F(FollowingTest, ExtentsShrinkWithWhatIsErasedMovedOrHidden) {
    const AcDbObjectId block = newBlock("part"), layer = newLayer("notes", 2);
    append(lineInRow(0), block);
    const AcDbObjectId line = append(lineInRow(10)), high = append(lineInRow(500));
    const AcDbObjectId reference = append(std::make_unique<AcDbBlockReference>(AcGePoint3d(300, 40, 0), block));
    AcDbExtents box;
    const auto expectReach = [&](double right, double low, double top, const char* when) {
        ASSERT_TRUE(model->visibleExtents(database.modelSpaceId(), box)) << when;
        EXPECT_EQ(box.minPoint(), AcGePoint3d(0, low, 0)) << when;
        EXPECT_EQ(box.maxPoint(), AcGePoint3d(right, top, 0)) << when;
    };
    expectReach(400, 10.5, 500.5, "all");
    AcDbObjectPointer<AcDbLine>(high, AcDb::kForWrite)->erase();
    expectReach(400, 10.5, 40.5, "one erased");
    append(lineInRow(-20));
    expectReach(400, -19.5, 40.5, "one more");
    AcDbObjectPointer<AcDbBlockReference>(reference, AcDb::kForWrite)->setPosition({50, 90, 0});
    expectReach(150, -19.5, 90.5, "moved");
    AcDbObjectPointer<AcDbBlockReference>(reference, AcDb::kForWrite)->setLayer(layer);
    AcDbObjectPointer<AcDbLayerTableRecord>(layer, AcDb::kForWrite)->setIsFrozen(true);
    expectReach(100, -19.5, 10.5, "frozen");
    AcDbObjectPointer<AcDbLine>(line, AcDb::kForWrite)->erase();
    AcDbObjectPointer<AcDbLayerTableRecord>(layer, AcDb::kForWrite)->setIsFrozen(false);
    expectReach(150, -19.5, 90.5, "thawed");
}

TEST_F(FollowingTest, ABlockOpenForWriteIsDrawnWhenItIsClosed) {
    append(lineInRow(10));
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        view->add(space.object(), model);
        view->update();
        EXPECT_EQ(count(kRed), 0);
    }
    view->update();
    EXPECT_EQ(count(kRed), kSide);
}

TEST_F(FollowingTest, HeaderVariablesCountAtTheNextPicture) {
    const AcDbObjectId block = newBlock("part");
    append(lineInRow(70), block);
    const AcDbObjectId id = append(std::make_unique<AcDbBlockReference>(AcGePoint3d(), block));
    for (const bool hidden : {false, true}) {
        auto* const attribute = new AcDbAttribute(AcGePoint3d(10, hidden ? 40 : 10, 0), "HHH", "TAG");
        attribute->setHeight(20);
        attribute->setColorIndex(hidden ? 3 : 1);
        attribute->setInvisible(hidden);
        AcDbObjectPointer<AcDbBlockReference>(id, AcDb::kForWrite)->appendAttribute(attribute);
        attribute->close();
    }
    for (const int16_t mode : {1, 0, 2, 1}) {
        database.changeHeader("ATTMODE", [mode](auto& header) { header.ATTMODE = mode; });
        draw();
        EXPECT_EQ(count(kRed, 0, 0, 99, 35) > 50, mode > 0) << mode;
        EXPECT_EQ(count(kGreen) > 50, mode == 2) << mode;
    }
}

TEST_F(FollowingTest, AKeptViewIsNoReasonToDrawAllAnew) {
    for (int row = 0; row < 1100; ++row)
        append(lineInRow(row));
    draw();
    auto& lists = static_cast<vndk::gs::GraphicsModel*>(model)->lists();
    AcGeMatrix3d anywhere;
    lists.partsIn(database.modelSpaceId(), true, vndk::gs::BoxProjector(anywhere), {0, 0, 10, 10});
    ASSERT_TRUE(lists.canFind(database.modelSpaceId(), true));
    ASSERT_TRUE(vndk::dwg::setActiveView(database, true, {{1, 2, 0}, 30}, 1.5));
    EXPECT_TRUE(lists.canFind(database.modelSpaceId(), true));
}

TEST_F(FollowingTest, ATableSaysWhatCoversWhat) {
    const AcDbObjectId red = append(lineInRow(10, 1)), green = append(lineInRow(10, 3));
    append(lineInRow(20, 5));
    append(lineInRow(20, 2));
    draw();
    EXPECT_EQ(at(50, 10), kGreen);
    // Red and green change places; the others keep theirs.
    const auto order = [&](bool whole) {
        vndk::dwg::BitWriter bits;
        bits.BL(2);
        bits.H(0, green.handle().value());
        bits.H(0, red.handle().value());
        AcDbOpaqueFields fields;
        fields.typeName = "SORTENTSTABLE";
        fields.bitCount = static_cast<uint32_t>(whole ? bits.position() : bits.position() - 9);
        fields.bits.assign(reinterpret_cast<const char*>(bits.data().data()), bits.data().size());
        for (const AcDbObjectId id : {database.modelSpaceId(), red, green})
            fields.references.push_back({4, id});
        return fields;
    };
    AcDbObjectId table;
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(space->createExtensionDictionary(), Acad::eOk);
        const AcDbObjectPointer<AcDbDictionary> dictionary(space->extensionDictionary(), AcDb::kForWrite);
        auto* const object = new AcDbOpaqueObject;
        object->setFields(order(true));
        ASSERT_EQ(dictionary->setAt("ACAD_SORTENTS", object, table), Acad::eOk);
        object->close();
    }
    draw();
    EXPECT_EQ(at(50, 10), kRed);
    EXPECT_EQ(at(50, 20), kYellow);
    EXPECT_EQ(view->entityAt({50, kSide - 1 - 10}, 0), red);
    const AcDbObjectId last = append(lineInRow(10, 5));
    draw();
    EXPECT_EQ(view->entityAt({50, kSide - 1 - 10}, 0), last);
    AcDbObjectPointer<AcDbEntity>(last, AcDb::kForWrite)->erase();

    AcDbObjectPointer<AcDbOpaqueObject> changed(table, AcDb::kForWrite);
    changed->assertWriteEnabled();
    changed->setFields(order(false));
    changed.close();
    draw();
    EXPECT_EQ(at(50, 10), kGreen) << "one that can't be read is none";
}
