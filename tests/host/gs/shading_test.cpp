// What surfaces hide, and how they are lighted.
#include "db/polylines.h"
#include "db/solids.h"
#include "host/gs/gs_fixture.h"

#include <set>

namespace {

class ShadingTest : public GsTest {
protected:
    /// A square face parallel to the picture, or one whose right side lies that much deeper.
    AcDbObjectId face(double left, double low, double right, double high, double z, short color, double deeper = 0) {
        auto made = std::make_unique<AcDbFace>();
        made->setFileData({{{left, low, z}, {right, low, z - deeper}, {right, high, z - deeper}, {left, high, z}}, 0});
        made->setColorIndex(color);
        return append(std::move(made));
    }
    AcDbObjectId lineAt(int row, double z, short color = 1) {
        auto made = std::make_unique<AcDbLine>(AcGePoint3d(0, row + 0.5, z), AcGePoint3d(kSide, row + 0.5, z));
        made->setColorIndex(color);
        return append(std::move(made));
    }
    void draw(AcGsView::RenderMode mode) {
        view->setMode(mode);
        GsTest::draw();
    }
    static constexpr AcGsView::RenderMode kHiding[] = {
        AcGsView::kHiddenLine,
        AcGsView::kFlatShaded,
        AcGsView::kGouraudShaded,
        AcGsView::kFlatShadedWithWireframe,
        AcGsView::kGouraudShadedWithWireframe,
    };
};

} // namespace

TEST_F(ShadingTest, SurfacesHideWhatLiesBehindThemInAnyOrder) {
    lineAt(30, 0);
    lineAt(40, 20);
    face(20, 20, 80, 80, 10, 3);
    lineAt(50, 0);
    lineAt(60, 20);
    lineAt(70, 10);
    for (const auto mode : {AcGsView::k2DOptimized, AcGsView::kWireframe, AcGsView::kLastRenderMode}) {
        draw(mode);
        for (const int row : {30, 40, 50, 60, 70})
            EXPECT_GE(count(kRed, 0, row, 99, row), kSide - 2) << mode << ' ' << row;
    }
    for (const auto mode : kHiding) {
        draw(mode);
        for (const int row : {30, 50}) {
            EXPECT_EQ(count(kRed, 21, row, 79, row), 0) << mode << ' ' << row;
            EXPECT_EQ(count(kRed, 0, row, 18, row), 19) << mode << ' ' << row;
        }
        for (const int row : {40, 60, 70})
            EXPECT_EQ(count(kRed, 21, row, 79, row), 59) << mode << ' ' << row << ": before it or in it";
    }
}

TEST_F(ShadingTest, LinesHideEachOtherInAnyOrder) {
    const auto line = [&](const AcGePoint3d& from, const AcGePoint3d& to, short color) {
        auto made = std::make_unique<AcDbLine>(from, to);
        made->setColorIndex(color);
        append(std::move(made));
    };
    line({10.5, 50.5, 5}, {90.5, 50.5, 5}, 1);
    line({10.5, 10.5, 0}, {90.5, 90.5, 0}, 3);
    line({30.5, 10.5, 2}, {30.5, 90.5, 2}, 5);
    line({10.5, 70.5, 1}, {90.5, 70.5, 1}, 2);
    line({20.5, 70.5, 1}, {40.5, 70.5, 1}, 1);  // as deep: the last one is seen
    line({70.5, 10.5, -9}, {70.5, 90.5, 9}, 5); // rises through the others
    for (const auto mode : kHiding) {
        draw(mode);
        EXPECT_EQ(count(kRed, 10, 50, 90, 50), 81) << mode << ": before all others";
        EXPECT_EQ(count(kBlue, 30, 30, 30, 30), 1) << mode;
        EXPECT_EQ(count(kBlue, 30, 70, 30, 70), 1) << mode;
        EXPECT_EQ(count(kRed, 20, 70, 40, 70), 20) << mode << ": all but where the steep one passes";
        EXPECT_EQ(count(kYellow, 10, 70, 90, 70), 81 - 21 - 1) << mode;
        EXPECT_EQ(count(kGreen, 60, 60, 60, 60), 1) << mode;
        EXPECT_EQ(count(kBlue, 70, 10, 70, 49), 40) << mode;
        EXPECT_EQ(count(kBlue, 70, 70, 70, 90), 21) << mode;
    }
}

TEST_F(ShadingTest, NearerFacesWinWhicheverComesFirst) {
    face(20, 20, 60, 60, 10, 1);
    face(40, 40, 80, 80, 0, 3);
    face(50, 10, 90, 50, 20, 5);
    draw(AcGsView::kFlatShaded);
    EXPECT_EQ(at(30, 30), kRed);
    EXPECT_EQ(at(50, 55), kRed);
    EXPECT_EQ(at(70, 70), kGreen);
    EXPECT_EQ(at(55, 45), kBlue);
    view->orbit(kAcGePi, 0); // from behind, left and right change
    view->update();
    EXPECT_NE(at(49, 55) & 0xFF00, 0U) << "the far one is the near one now";
    EXPECT_EQ(at(49, 55) & 0xFF00FF, 0U);
}

TEST_F(ShadingTest, TheStylesOfTheModes) {
    face(20.5, 20.5, 80.5, 80.5, 0, 1);
    const auto colors = [&] {
        std::set<uint32_t> found;
        for (int y = 15; y < 85; ++y)
            for (int x = 15; x < 85; ++x)
                found.insert(at(x, y));
        return found;
    };
    constexpr uint32_t kDark = 0xFF7F0000;
    draw(AcGsView::kHiddenLine);
    EXPECT_EQ(colors(), (std::set{kBlack, kRed}));
    EXPECT_EQ(at(50, 50), kBlack);
    EXPECT_EQ(at(50, 20), kRed);
    draw(AcGsView::kFlatShaded);
    EXPECT_EQ(at(50, 50), kRed) << "what faces the viewer has its own colour";
    EXPECT_EQ(colors(), (std::set{kBlack, kRed}));
    for (const auto mode : {AcGsView::kFlatShadedWithWireframe, AcGsView::kGouraudShadedWithWireframe}) {
        draw(mode);
        EXPECT_EQ(at(50, 50), kRed);
        EXPECT_EQ(at(50, 20), kDark) << mode;
        EXPECT_EQ(count(kDark), 4 * 60) << mode;
    }
}

TEST_F(ShadingTest, LightComesOverTheLeftShoulder) {
    face(10, 20, 40, 80, 0, 7, -60); // turned to the left
    face(60, 20, 90, 80, 0, 7, 60);  // to the right
    draw(AcGsView::kFlatShaded);
    const uint32_t left = at(25, 50) & 0xFF, right = at(75, 50) & 0xFF;
    EXPECT_GT(left, right + 40);
    EXPECT_GT(right, 60U) << "nothing is black";
    EXPECT_EQ(at(12, 25), at(38, 75)) << "flat";
}

TEST_F(ShadingTest, RoundWallsAreSmoothOrFacetedAndClosed) {
    auto circle = std::make_unique<AcDbCircle>(AcGePoint3d(50, 50, 0), AcGeVector3d::kZAxis, 30);
    circle->setThickness(40);
    circle->setColorIndex(7);
    append(std::move(circle));
    view->setView({50, -100, 20}, {50, 50, 20}, AcGeVector3d::kZAxis, kSide, kSide);
    const auto steps = [&] {
        int changes = 0, largest = 0;
        for (int x = 24; x < 76; ++x) {
            const int step = std::abs(int(at(x, 50) & 0xFF) - int(at(x - 1, 50) & 0xFF));
            changes += step != 0;
            largest = std::max(largest, step);
        }
        return std::pair{changes, largest};
    };
    draw(AcGsView::kFlatShaded);
    const auto flat = steps();
    draw(AcGsView::kGouraudShaded);
    const auto smooth = steps();
    EXPECT_GT(smooth.first, flat.first);
    EXPECT_LT(smooth.second, flat.second);
    // From above it is a disc, which hides what stands in it.
    lineAt(50, 10);
    view->setView({50, 50, 100}, {50, 50, 0}, AcGeVector3d::kYAxis, kSide, kSide);
    draw(AcGsView::kFlatShaded);
    EXPECT_EQ(count(kRed, 25, 50, 75, 50), 0);
    EXPECT_EQ(at(50, 60), kWhite);
}

TEST_F(ShadingTest, ThicknessMakesWalls) {
    auto wall = std::make_unique<AcDbLine>(AcGePoint3d(20, 50, 0), AcGePoint3d(80, 50, 0));
    wall->setThickness(30);
    wall->setColorIndex(3);
    append(std::move(wall));
    auto thick = std::make_unique<AcDbPolyline>();
    thick->addVertexAt(0, {0, 60}, 0, 4, 4);
    thick->addVertexAt(1, {99, 60});
    thick->setThickness(10);
    thick->setColorIndex(1);
    append(std::move(thick));
    view->setView({50, -100, 50}, {50, 50, 50}, AcGeVector3d::kZAxis, kSide, kSide); // from the front
    draw(AcGsView::kFlatShaded);
    EXPECT_NE(at(50, 15) & 0xFF00, 0U);
    EXPECT_EQ(at(50, 15) & 0xFF00FF, 0U) << "the red one stands behind";
    EXPECT_EQ(at(50, 40), kBlack);
    EXPECT_NE(at(10, 5) & 0xFF0000, 0U);
    EXPECT_EQ(at(10, 15), kBlack);
    draw(AcGsView::kHiddenLine);
    EXPECT_GE(count(kRed, 0, 9, 19, 10), 19) << "the edge at its top";
    EXPECT_EQ(at(10, 5), kBlack);
}

TEST_F(ShadingTest, MeshesAreShadedAndTextsStandInFrontOrBehind) {
    auto mesh = std::make_unique<AcDbPolyFaceMesh>();
    const AcDbObjectId id = append(std::move(mesh));
    {
        const AcDbObjectPointer<AcDbPolyFaceMesh> open(id, AcDb::kForWrite);
        open->setColorIndex(3);
        for (const AcGePoint3d& p : {AcGePoint3d(20, 20, 5), {80, 20, 5}, {80, 80, 5}, {20, 80, 5}}) {
            auto* const vertex = new AcDbPolyFaceMeshVertex(p);
            ASSERT_EQ(open->appendVertex(vertex), Acad::eOk);
            vertex->close();
        }
        auto* const record = new AcDbFaceRecord;
        record->setFileData({{1, 2, 3, 4}});
        ASSERT_EQ(open->appendVertex(record), Acad::eOk);
        record->close();
    }
    for (const double z : {0.0, 10.0}) {
        auto text = std::make_unique<AcDbText>(AcGePoint3d(25, z == 0 ? 30 : 55, z), "HHH", AcDbObjectId(), 20);
        text->setColorIndex(1);
        AcDbText::Data data = text->data();
        data.elevation = z;
        text->setFileData(data);
        append(std::move(text));
    }
    draw(AcGsView::kFlatShaded);
    EXPECT_GT(count(kGreen), 2500);
    EXPECT_EQ(count(kRed, 0, 25, 79, 52), 0);
    EXPECT_GT(count(kRed, 0, 55, 99, 76), 50);
}

TEST_F(ShadingTest, WithoutFillAreasAreOutlines) {
    auto wide = std::make_unique<AcDbPolyline>();
    wide->addVertexAt(0, {20, 50}, 0, 20, 20);
    wide->addVertexAt(1, {80, 50});
    wide->setColorIndex(1);
    append(std::move(wide));
    database.changeHeader("FILLMODE", [](auto& header) { header.FILLMODE = false; });
    GsTest::draw();
    EXPECT_EQ(at(50, 50), kBlack);
    EXPECT_NEAR(count(kRed), 160, 6);
    database.changeHeader("FILLMODE", [](auto& header) { header.FILLMODE = true; });
    GsTest::draw();
    EXPECT_EQ(at(50, 50), kRed);
}
