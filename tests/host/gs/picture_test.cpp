// Pixels of simple drawings.
#include "db/point.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "host/gs/gs_fixture.h"

namespace {

class PictureTest : public GsTest {
protected:
    std::unique_ptr<AcDbBlockReference> reference(AcDbObjectId block, const AcGePoint3d& place = {}) {
        auto made = std::make_unique<AcDbBlockReference>(place, block);
        made->setDatabaseDefaults(&database);
        return made;
    }
    std::unique_ptr<AcDbText> text(const char* value) {
        auto made = std::make_unique<AcDbText>(AcGePoint3d(10, 20, 0), value, AcDbObjectId(), 20);
        made->setColorIndex(7);
        return made;
    }
    /// The columns of everything that isn't black.
    std::pair<int, int> columns() const {
        std::pair<int, int> found{kSide, -1};
        for (int x = 0; x < kSide; ++x)
            if (count(kBlack, x, 0, x) < kSide)
                found = {std::min(found.first, x), x};
        return found;
    }
};

} // namespace

TEST_F(PictureTest, LinesArcsAndFilledAreasLieWhereTheyAre) {
    append(lineInRow(10));
    auto circle = std::make_unique<AcDbCircle>(AcGePoint3d(50.5, 50.5, 0), AcGeVector3d::kZAxis, 30);
    circle->setColorIndex(3);
    append(std::move(circle));
    auto wide = std::make_unique<AcDbPolyline>();
    wide->addVertexAt(0, {20, 90}, 0, 6, 6);
    wide->addVertexAt(1, {40, 90});
    wide->setColorIndex(2);
    append(std::move(wide));
    draw();
    EXPECT_EQ(count(kRed), kSide);
    EXPECT_EQ(count(kRed, 0, 10, 99, 10), kSide);
    for (const auto& [x, y] : {std::pair{80, 50}, {20, 50}, {50, 80}, {50, 20}})
        EXPECT_EQ(at(x, y), kGreen) << x << ' ' << y;
    EXPECT_EQ(count(kGreen, 40, 40, 60, 60), 0);
    EXPECT_EQ(count(kYellow, 21, 88, 39, 92), 19 * 5);
    EXPECT_EQ(count(kYellow, 0, 0, 99, 85), 0);
}

TEST_F(PictureTest, BulgesBendToTheirSide) {
    auto half = std::make_unique<AcDbPolyline>();
    half->addVertexAt(0, {20.5, 50.5}, 1);
    half->addVertexAt(1, {80.5, 50.5});
    half->setColorIndex(1);
    append(std::move(half));
    draw();
    EXPECT_EQ(at(50, 20), kRed);
    EXPECT_EQ(count(kRed, 0, 52), 0);
}

TEST_F(PictureTest, ColoursComeFromTheLayerOrTheReference) {
    const AcDbObjectId layer = newLayer("wall", 5);
    const AcDbObjectId inner = newBlock("inner"), outer = newBlock("outer");
    append(lineInRow(10, kAcDbColorByBlock), inner);
    append(lineInRow(20, kAcDbColorByLayer), inner); // on layer 0: as the reference's layer
    auto onLayer = lineInRow(30, kAcDbColorByLayer);
    onLayer->setLayer(layer);
    append(std::move(onLayer), inner);
    auto nested = reference(inner);
    nested->setColorIndex(kAcDbColorByBlock);
    append(std::move(nested), outer);
    auto placed = reference(outer);
    placed->setColorIndex(3);
    placed->setLayer(newLayer("door", 2));
    append(std::move(placed));
    auto moved = reference(outer, {0, 40, 0});
    moved->setColorIndex(1);
    append(std::move(moved));
    draw();
    EXPECT_EQ(at(50, 10), kGreen);
    EXPECT_EQ(at(50, 20), kYellow);
    EXPECT_EQ(at(50, 30), kBlue);
    EXPECT_EQ(at(50, 50), kRed);
    EXPECT_EQ(at(50, 60), kWhite);
    EXPECT_EQ(at(50, 70), kBlue);
}

TEST_F(PictureTest, HiddenLayersHide) {
    const AcDbObjectId off = newLayer("off", 1), frozen = newLayer("frozen", 1);
    AcDbObjectPointer<AcDbLayerTableRecord>(off, AcDb::kForWrite)->setIsOff(true);
    AcDbObjectPointer<AcDbLayerTableRecord>(frozen, AcDb::kForWrite)->setIsFrozen(true);
    const AcDbObjectId block = newBlock("part");
    append(lineInRow(10, 1), block);
    auto fixed = lineInRow(20, 3);
    fixed->setLayer(newLayer("on", 1));
    append(std::move(fixed), block);
    auto onOff = reference(block);
    onOff->setLayer(off);
    append(std::move(onOff));
    auto onFrozen = reference(block, {0, 50, 0});
    onFrozen->setLayer(frozen);
    append(std::move(onFrozen));
    auto invisible = lineInRow(90);
    invisible->setVisibility(AcDb::kInvisible);
    append(std::move(invisible));
    draw();
    EXPECT_EQ(count(kRed), 0);
    EXPECT_EQ(count(kGreen), kSide);
    EXPECT_EQ(count(kBlack), kSide * (kSide - 1));
    AcDbObjectPointer<AcDbLayerTableRecord>(off, AcDb::kForWrite)->setIsOff(false);
    draw();
    EXPECT_EQ(count(kRed, 0, 10, 99, 10), kSide);
}

TEST_F(PictureTest, DefinitionsAreSeenInSpacesAndAttributesAtReferences) {
    const AcDbObjectId block = newBlock("tag");
    append(std::make_unique<AcDbAttributeDefinition>(AcGePoint3d(10, 10, 0), "VALUE", "TAG", "?"), block);
    auto constant = std::make_unique<AcDbAttributeDefinition>(AcGePoint3d(10, 70, 0), "HHH", "CONSTANT", "?");
    constant->setHeight(20);
    constant->setConstant(true);
    constant->setColorIndex(3);
    append(std::move(constant), block);
    const AcDbObjectId id = append(reference(block));
    for (const bool hidden : {true, false}) {
        auto* const attribute = new AcDbAttribute(AcGePoint3d(10, 40, 0), "HHH", "TAG");
        attribute->setHeight(20);
        attribute->setColorIndex(1);
        attribute->setInvisible(hidden);
        AcDbObjectPointer<AcDbBlockReference>(id, AcDb::kForWrite)->appendAttribute(attribute);
        attribute->close();
        draw();
        EXPECT_EQ(count(kRed) > 50, !hidden);
    }
    EXPECT_GT(count(kGreen), 50);
    EXPECT_EQ(count(kBlack, 0, 0, 99, 35), kSide * 36) << "the definition isn't drawn";
    show(block);
    view->update();
    EXPECT_LT(count(kBlack, 0, 0, 99, 35), kSide * 36) << "the block by itself shows the tag";
}

TEST_F(PictureTest, TextStandsOnItsPointAndObeysItsAlignment) {
    const AcDbObjectId id = append(text("HHH"));
    draw();
    const auto [left, right] = columns();
    EXPECT_NEAR(left, 12, 2);
    EXPECT_GT(right, 45);
    EXPECT_EQ(count(kBlack, 0, 0, 99, 19), kSide * 20);
    EXPECT_GT(count(kWhite, 0, 38, 99, 39), 10) << "capitals are as high as the text says";
    EXPECT_EQ(count(kBlack, 0, 41, 99, 99), kSide * 59);

    const auto change = [&](auto&& how) {
        how(*AcDbObjectPointer<AcDbText>(id, AcDb::kForWrite));
        draw();
    };
    change([](AcDbText& t) {
        t.setHorizontalMode(AcDb::kTextRight);
        t.setAlignmentPoint({90, 20, 0});
    });
    EXPECT_NEAR(columns().second, 88, 2);
    change([](AcDbText& t) { t.setHorizontalMode(AcDb::kTextFit), t.setAlignmentPoint({90, 20, 0}); });
    EXPECT_NEAR(columns().first, 12, 2);
    EXPECT_NEAR(columns().second, 88, 2);
    change([](AcDbText& t) { t.setHorizontalMode(AcDb::kTextLeft), t.mirrorInX(true), t.setPosition({90, 20, 0}); });
    EXPECT_NEAR(columns().second, 88, 2);
    change([](AcDbText& t) { t.mirrorInX(false), t.setPosition({20, 10, 0}), t.setRotation(kAcGePi / 2); });
    EXPECT_LE(columns().second, 20);
}

TEST_F(PictureTest, SmallTextIsNeverInvisible) {
    append(text("a long note"));
    view->setView({50, 50, 1}, {50, 50, 0}, AcGeVector3d::kYAxis, 1200, 1200);
    draw();
    EXPECT_GT(count(kWhite), 3);
}

TEST_F(PictureTest, ParagraphsBreakAtTheirWidth) {
    auto paragraph = std::make_unique<AcDbMText>();
    paragraph->setLocation({5, 95, 0});
    paragraph->setTextHeight(9);
    paragraph->setWidth(50);
    paragraph->setContents("{\\C1;HHHH} HHHH\\PHHHH");
    paragraph->setColorIndex(7);
    append(std::move(paragraph));
    draw();
    for (const int top : {95, 80, 65})
        EXPECT_LT(count(kBlack, 0, top - 9, 99, top - 1), 9 * kSide - 60) << top;
    EXPECT_EQ(count(kBlack, 0, 0, 99, 54), kSide * 55);
    EXPECT_LT(columns().second, 56);
}

TEST_F(PictureTest, ParagraphsShowTheirFormats) {
    auto paragraph = std::make_unique<AcDbMText>();
    paragraph->setLocation({5, 95, 0});
    paragraph->setTextHeight(10);
    paragraph->setContents("H{\\C1;H\\H2x;H}{\\c65280;\\fCourier New|b1|i0;\\H1.5x;H}\\P\\LH\\l");
    paragraph->setColorIndex(7);
    append(std::move(paragraph));
    draw();
    EXPECT_GT(count(kRed), 30);
    EXPECT_GT(count(kGreen), 3);
    EXPECT_GT(count(kRed, 0, 86, 99, 94), 5) << "twice as high";
    EXPECT_EQ(count(kWhite, 0, 86, 99, 94), 0);
    EXPECT_GE(count(kWhite, 0, 55, 99, 57), 8) << "a line below the letter";
}

TEST_F(PictureTest, LinetypesBreakLinesAndSettleTheEnds) {
    const AcDbObjectId dashed = newDashes();
    auto line = lineInRow(10);
    line->setLinetype(dashed);
    append(std::move(line));
    auto fine = lineInRow(20);
    fine->setLinetype(dashed);
    fine->setLinetypeScale(0.01);
    append(std::move(fine));
    draw();
    EXPECT_EQ(at(0, 10), kRed);
    EXPECT_EQ(at(99, 10), kRed);
    EXPECT_NEAR(count(kRed, 0, 10, 99, 10), 55, 7);
    EXPECT_EQ(count(kRed, 0, 20, 99, 20), kSide) << "a pattern finer than pixels is unbroken";
}

TEST_F(PictureTest, ColourSevenIsSeenOnAnyBackground) {
    append(lineInRow(10, 7));
    device->setBackgroundColor(RGB(255, 255, 255));
    draw();
    EXPECT_EQ(count(kBlack), kSide);
    EXPECT_EQ(count(kWhite), kSide * (kSide - 1));
}

TEST_F(PictureTest, FollowsChangesOfTheDrawing) {
    const AcDbObjectId block = newBlock("part");
    append(lineInRow(10, 1), block);
    append(reference(block));
    draw();
    const AcDbObjectId added = append(lineInRow(20, 1), block);
    draw();
    EXPECT_EQ(count(kRed), 2 * kSide);
    AcDbObjectPointer<AcDbEntity>(added, AcDb::kForWrite)->erase();
    draw();
    EXPECT_EQ(count(kRed), kSide);
    AcDbObjectPointer<AcDbBlockTableRecord>(block, AcDb::kForWrite)->setOrigin({0, -5, 0});
    draw();
    EXPECT_EQ(count(kRed, 0, 15, 99, 15), kSide);
}

TEST_F(PictureTest, ADrawableShowsItselfInItsColour) {
    class Marker : public AcGiDrawable {
    public:
        uint32_t setAttributes(AcGiDrawableTraits* traits) override {
            traits->setTrueColor(AcCmEntityColor(0xC200C800));
            return 0;
        }
        bool worldDraw(AcGiWorldDraw*) override { return false; }
        void viewportDraw(AcGiViewportDraw* context) override {
            const AcGePoint3d ends[] = {{0, 10.5, 0}, {100, 10.5, 0}};
            context->geometry().polyline(ends);
        }
        bool isPersistent() const override { return false; }
        AcDbObjectId id() const override { return {}; }
        void setGsNode(AcGsNode* node) override { node_ = node; }
        AcGsNode* gsNode() const override { return node_; }

    private:
        AcGsNode* node_ = nullptr;
    } marker;
    EXPECT_TRUE(view->add(&marker, model));
    view->update();
    EXPECT_EQ(count(0xFF00C800), kSide);
    EXPECT_TRUE(view->erase(&marker));
    view->update();
    EXPECT_EQ(count(kBlack), kSide * kSide);
    EXPECT_EQ(marker.isA(), acrxFindClass("AcGiDrawable"));
}

namespace {

/// Draws an area with a hole and a shell, with triangles that name corners that aren't there if it is told to.
class AreaAndShell : public AcGiDrawable {
public:
    bool damaged = false;

    uint32_t setAttributes(AcGiDrawableTraits* traits) override {
        traits->setColor(1);
        return 0;
    }
    bool worldDraw(AcGiWorldDraw* context) override {
        const AcGePoint3d corners[] = {{10, 10, 0}, {30, 10, 0}, {30, 30, 0}, {10, 30, 0},
                                       {15, 15, 0}, {15, 25, 0}, {25, 25, 0}, {25, 15, 0}};
        const uint32_t ends[] = {4, damaged ? 9U : 8U};
        context->geometry().polyPolygon(corners, ends);
        const AcGePoint3d points[] = {{50, 10.5, 0}, {90, 10.5, 0}, {90.5, 50, 0}, {50, 50, 0}};
        const AcGiTriangle faces[] = {{{0, 1, 2}, 3}, {{0, 2, damaged ? 4U : 3U}, 0}};
        context->geometry().shell(points, faces, {});
        return true;
    }
    void viewportDraw(AcGiViewportDraw*) override {}
    bool isPersistent() const override { return false; }
    AcDbObjectId id() const override { return {}; }
    void setGsNode(AcGsNode*) override {}
    AcGsNode* gsNode() const override { return nullptr; }
};

} // namespace

TEST_F(PictureTest, AreasHaveHolesAndShellsShowTheirEdges) {
    AreaAndShell drawable;
    EXPECT_TRUE(view->add(&drawable, model));
    view->update();
    EXPECT_EQ(at(12, 20), kRed);
    EXPECT_EQ(at(20, 20), kBlack);
    EXPECT_EQ(at(20, 27), kRed);
    EXPECT_EQ(count(kRed, 51, 10, 89, 10), 39) << "an edge";
    EXPECT_EQ(count(kRed, 90, 11, 90, 49), 39) << "an edge";
    EXPECT_EQ(count(kRed, 51, 11, 89, 49), 0) << "sides between pieces, and what lies within";

    drawable.damaged = true;
    view->invalidate();
    view->update();
    EXPECT_EQ(count(kBlack), kSide * kSide);
}
