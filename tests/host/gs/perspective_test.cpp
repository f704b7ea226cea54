// Views in perspective: what is near is large, what lies before the eye isn't seen.
#include "db/block_reference.h"
#include "db/solids.h"
#include "db/symbol_tables.h"
#include "db/viewport.h"
#include "dwg/active_view.h"
#include "dwg/bit_reader.h"
#include "host/gs/gs_fixture.h"

namespace {

class PerspectiveTest : public GsTest {
protected:
    /// The plane z = 0 as in the parallel view, seen from 100 units.
    PerspectiveTest() { lookFrom({50, 50, 100}, {50, 50, 0}, AcGeVector3d::kYAxis); }
    void lookFrom(const AcGePoint3d& eye, const AcGePoint3d& target, const AcGeVector3d& up) {
        view->setView(eye, target, up, kSide, kSide, AcGsView::kPerspective);
    }
    AcDbObjectId line(const AcGePoint3d& a, const AcGePoint3d& b, short color = 1) {
        auto made = std::make_unique<AcDbLine>(a, b);
        made->setColorIndex(color);
        return append(std::move(made));
    }
    AcDbObjectId face(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, const AcGePoint3d& d,
                      short color) {
        auto made = std::make_unique<AcDbFace>();
        made->setFileData({{a, b, c, d}, 0});
        made->setColorIndex(color);
        return append(std::move(made));
    }
};

} // namespace

TEST_F(PerspectiveTest, EnlargesWhatIsNearAndCutsOffWhatIsBeforeTheEye) {
    line({0, 10.5, 0}, {100, 10.5, 0});
    line({25, 55.25, 50}, {40, 55.25, 50}, 3);
    line({70.5, 60.5, 0}, {70.5, 60.5, 300}, 5);
    line({0, 0, 101}, {100, 100, 150}, 2);
    draw();
    EXPECT_EQ(count(kRed, 0, 10, 99, 10), kSide) << "at the target's depth";
    EXPECT_EQ(count(kGreen, 0, 60, 30, 60), 31) << "twice as large, from the middle";
    EXPECT_EQ(count(kGreen), 31);
    EXPECT_EQ(at(70, 60), kBlue);
    EXPECT_EQ(at(99, 75), kBlue) << "it comes towards the viewer and leaves aside";
    EXPECT_EQ(count(kBlue), 30);
    EXPECT_EQ(count(kYellow), 0);
}

TEST_F(PerspectiveTest, FillsAFloorUpToTheHorizonAndHidesWhatIsBehind) {
    lookFrom({50, -100, 10}, {50, 0, 10}, AcGeVector3d::kZAxis);
    face({-9e5, -9e5, 0}, {9e5, -9e5, 0}, {9e5, 9e5, 0}, {-9e5, 9e5, 0}, 3);
    face({40, 50, 0}, {60, 50, 0}, {60, 50, 40}, {40, 50, 40}, 1);
    line({50, 100, 5}, {50, 100, 70}, 5);
    view->setMode(AcGsView::kFlatShaded);
    draw();
    EXPECT_EQ(count(kBlack, 0, 0, 99, 48), 0) << "the floor";
    EXPECT_GT(count(kBlack, 0, 52, 30, 99), 1480) << "above the horizon";
    EXPECT_EQ(at(50, 60), at(45, 60)) << "a wall before the post";
    EXPECT_NE(at(50, 60), kBlue);
    EXPECT_NE(at(50, 60), kBlack);
    EXPECT_EQ(at(50, 75), kBlue) << "which reaches above the wall";
}

TEST_F(PerspectiveTest, FindsThingsWhereTheyAreSeen) {
    const AcDbObjectId block = newBlock("mark");
    append(lineInRow(0), block);
    auto far = std::make_unique<AcDbBlockReference>(AcGePoint3d(150, 90.5, -300), block);
    const AcDbObjectId reference = append(std::move(far));
    std::vector<AcDbObjectId> rows;
    for (int i = 0; i < 600; ++i)
        rows.push_back(line({0, 49 + i * 0.5, 50}, {60, 49 + i * 0.5, 50}, 3));
    draw();
    EXPECT_GT(count(kRed, 75, 60, 99, 60), 20) << "beside the picture if it were parallel";
    EXPECT_EQ(view->entityAt({90, kSide - 1 - 60}, 0), reference);
    EXPECT_EQ(view->entityAt({10, kSide - 1 - 49}, 0), rows[2]);
    EXPECT_EQ(view->entityAt({10, kSide - 1 - 89}, 0), rows[42]);
    std::vector<AcDbObjectId> found;
    view->entitiesIn({{0, 0}, {99, 99}}, true, found);
    EXPECT_NEAR(static_cast<double>(found.size()), 53, 1);
}

TEST_F(PerspectiveTest, IsWhatAViewportOnASheetShows) {
    const AcDbObjectId other = newBlock("*Paper_Space0");
    for (const uint32_t status : {0x20000U, 1U}) { // the sheet, a perspective
        AcDbViewport::Data data;
        data.center = {50, 50, 0};
        data.width = data.height = 50;
        data.direction = {0, 0, 100};
        data.target = {0, 0, 0};
        data.viewHeight = 100;
        data.status = status;
        auto viewport = std::make_unique<AcDbViewport>();
        viewport->setFileData(data);
        append(std::move(viewport), other);
    }
    line({-20, 5.5, 50}, {20, 5.5, 50});
    view->setView({50, 50, 1}, {50, 50, 0}, AcGeVector3d::kYAxis, kSide, kSide);
    show(other);
    view->update();
    EXPECT_EQ(count(kRed, 30, 55, 70, 55), 41);
    EXPECT_EQ(count(kRed), 41);
}

TEST_F(PerspectiveTest, IsKeptWithTheViewOfADrawing) {
    using vndk::dwg::activeView;
    const AcGeVector3d front(0, -1, 0), up(0, 0, 1);
    ASSERT_TRUE(vndk::dwg::setActiveView(database, true, {{1, 2, 3}, 30, front, up}, 1.5));
    EXPECT_EQ(activeView(database)->eye, 0);
    {
        AcDbObjectId id;
        const AcDbObjectPointer<AcDbViewportTable> table(database.viewportTableId());
        static_cast<const AcDbSymbolTable&>(*table).getAt("*Active", id);
        const AcDbObjectPointer<AcDbOpaqueTableRecord> record(id, AcDb::kForWrite);
        AcDbOpaqueFields fields = record->fields();
        vndk::dwg::BitReader bits(reinterpret_cast<const uint8_t*>(fields.bits.data()), 0, fields.bitCount);
        for (const char code : std::string_view("BBRRBBBBBBBBBB"))
            code == 'B' ? bits.BD() : bits.RD();
        fields.bits[bits.position() / 8] |= static_cast<char>(0x80 >> bits.position() % 8);
        record->assertWriteEnabled();
        record->setFields(fields);
    }
    EXPECT_EQ(activeView(database)->eye, 1);
    const vndk::dwg::ActiveView far{{4, 5, 6}, 20, {0, 0, 1}, {0, 1, 0}, 80};
    ASSERT_TRUE(vndk::dwg::setActiveView(database, true, far, 1));
    EXPECT_EQ(activeView(database), far);
}
