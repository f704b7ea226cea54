// Entities found by where they are seen, and highlighted there.
#include "db/polylines.h"
#include "db/solids.h"
#include "host/gs/gs_fixture.h"

namespace {

class SelectionTest : public GsTest {
protected:
    /// A pixel as the fixture counts them, y upward.
    AcDbObjectId hit(int x, int y, int reach = 0) { return view->entityAt({x, kSide - 1 - y}, reach); }
    std::vector<AcDbObjectId> within(int left, int low, int right, int high, bool touching) {
        std::vector<AcDbObjectId> found;
        view->entitiesIn({{left, kSide - 1 - high}, {right, kSide - 1 - low}}, touching, found);
        return found;
    }
    AcDbObjectId line(double x0, double y0, double x1, double y1, short color = 1) {
        auto made = std::make_unique<AcDbLine>(AcGePoint3d(x0, y0, 0), AcGePoint3d(x1, y1, 0));
        made->setColorIndex(color);
        return append(std::move(made));
    }
    using Ids = std::vector<AcDbObjectId>;
};

} // namespace

TEST_F(SelectionTest, TheLastDrawnIsHitWhereItIsSeen) {
    const AcDbObjectId first = line(10.5, 10.5, 90.5, 90.5), second = line(10.5, 90.5, 90.5, 10.5);
    draw();
    EXPECT_EQ(hit(20, 20), first);
    EXPECT_EQ(hit(20, 80), second);
    EXPECT_EQ(hit(50, 50), second);
    EXPECT_TRUE(hit(20, 50, 5).isNull()) << "the box around a line isn't the line";
    EXPECT_EQ(hit(22, 20, 2), first);
    EXPECT_TRUE(hit(24, 20, 1).isNull());
    AcDbObjectPointer<AcDbEntity>(second, AcDb::kForWrite)->erase();
    EXPECT_EQ(hit(50, 50), first);
}

TEST_F(SelectionTest, WindowsTakeWhatLiesInsideAndCrossingsWhatTheyTouch) {
    const AcDbObjectId inner = line(30, 30, 40, 40), through = line(0, 35.5, 99, 35.5), outer = line(5, 5, 5, 90);
    auto circle = std::make_unique<AcDbCircle>(AcGePoint3d(50, 50, 0), AcGeVector3d::kZAxis, 45);
    const AcDbObjectId around = append(std::move(circle));
    draw();
    EXPECT_EQ(within(20, 20, 60, 60, false), Ids{inner});
    EXPECT_EQ(within(20, 20, 60, 60, true), (Ids{inner, through}));
    EXPECT_EQ(within(0, 0, 99, 99, false), (Ids{inner, through, outer, around}));
    EXPECT_EQ(within(4, 50, 6, 52, true), (Ids{outer, around}));
}

TEST_F(SelectionTest, ReferencesCountWithTheirAttributesAndWhatIsHiddenDoesNot) {
    const AcDbObjectId block = newBlock("part");
    append(lineInRow(10), block);
    auto made = std::make_unique<AcDbBlockReference>(AcGePoint3d(0, 5, 0), block);
    const AcDbObjectId reference = append(std::move(made));
    auto* const attribute = new AcDbAttribute(AcGePoint3d(10, 60, 0), "HHH", "TAG");
    attribute->setHeight(20);
    AcDbObjectPointer<AcDbBlockReference>(reference, AcDb::kForWrite)->appendAttribute(attribute);
    attribute->close();
    const AcDbObjectId layer = newLayer("hidden", 1);
    auto hidden = lineInRow(30);
    hidden->setLayer(layer);
    const AcDbObjectId onLayer = append(std::move(hidden));
    draw();
    EXPECT_EQ(hit(50, 15), reference);
    EXPECT_EQ(hit(30, 70), reference) << "between the strokes of a text is still the text";
    EXPECT_EQ(hit(50, 30), onLayer);
    AcDbObjectPointer<AcDbLayerTableRecord>(layer, AcDb::kForWrite)->setIsOff(true);
    EXPECT_TRUE(hit(50, 30).isNull());
    EXPECT_TRUE(within(0, 0, 99, 20, false).empty()) << "its attribute lies outside";
    EXPECT_EQ(within(0, 0, 100, 99, false), Ids{reference});
}

TEST_F(SelectionTest, FindsAmongManyFromAnySide) {
    Ids ids;
    for (int i = 0; i < 50; ++i)
        for (int j = 0; j < 50; ++j)
            ids.push_back(line(i * 2 + 0.5, j * 2 + 0.5, i * 2 + 1.5, j * 2 + 0.5));
    draw();
    for (int i = 3; i < 50; i += 11)
        EXPECT_EQ(hit(i * 2, 40), ids[static_cast<size_t>(i * 50 + 20)]);
    EXPECT_EQ(within(0, 0, 19, 19, true).size(), 100U);
    EXPECT_EQ(within(0, 0, 19, 19, false).size(), 100U);
    EXPECT_EQ(within(0, 0, 99, 99, true), ids);
    view->roll(kAcGePi / 2); // a quarter turn counter-clockwise
    EXPECT_EQ(hit(99 - 40, 6 + 1), ids[3 * 50 + 20]);
    // One that comes later is found as well, and one that moves is found where it is.
    view->roll(-kAcGePi / 2);
    const AcDbObjectId late = line(0, 55, 99, 55);
    EXPECT_EQ(hit(50, 55), late);
    AcDbObjectPointer<AcDbEntity>(ids[0], AcDb::kForWrite)
        ->transformBy(AcGeMatrix3d::translation(AcGeVector3d(49, 77, 0)));
    EXPECT_EQ(hit(50, 77), ids[0]);
    EXPECT_TRUE(hit(0, 0).isNull());
}

TEST_F(SelectionTest, HighlightedEntitiesAreDashedOverThePictureThatStays) {
    const AcDbObjectId id = append(lineInRow(10)), other = append(lineInRow(20));
    draw();
    view->highlight(Ids{id});
    EXPECT_TRUE(view->isValid());
    GsTest::device->update();
    EXPECT_NEAR(count(kRed, 0, 10, 99, 10), 65, 15);
    EXPECT_EQ(count(kRed, 0, 20, 99, 20), kSide);
    view->highlight(Ids{other, AcDbObjectId()});
    GsTest::device->update();
    EXPECT_EQ(count(kRed, 0, 10, 99, 10), kSide);
    EXPECT_LT(count(kRed, 0, 20, 99, 20), kSide);
    view->highlight({});
    GsTest::device->update();
    EXPECT_EQ(count(kRed), 2 * kSide);
}
