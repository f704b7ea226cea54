// Coordinates beyond all bounds, blocks that hold themselves, and drawings without sense.
#include "db/point.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "gs/raster.h"
#include "host/gs/gs_fixture.h"

#include <limits>
#include <random>

namespace {

using vndk::gs::Raster;
using vndk::gs::Spot;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// Numbers of all sizes.
class Wild {
public:
    double number() {
        constexpr double kOdd[] = {0, -0.0, 1e-300, 1e16, -1e16, 1e99, 1e101, -1e300, kInfinity, -kInfinity, kNan};
        return pick(3) == 0 ? kOdd[pick(std::size(kOdd))] : std::uniform_real_distribution(-50.0, 150.0)(random_);
    }
    unsigned pick(size_t count) { return static_cast<unsigned>(random_() % count); }
    AcGePoint3d point() { return {number(), number(), number()}; }
    AcGeVector3d vector() { return {number(), number(), number()}; }

private:
    std::mt19937 random_{20};
};

class ExtremesTest : public GsTest {
protected:
    std::unique_ptr<AcDbEntity> anything(Wild& wild, AcDbObjectId block) {
        switch (wild.pick(10)) {
        case 0: {
            auto line = std::make_unique<AcDbLine>();
            line->setFileData({wild.point(), wild.point(), wild.number(), wild.vector()});
            return line;
        }
        case 1: {
            auto arc = std::make_unique<AcDbArc>();
            arc->setFileData({wild.point(), wild.number(), wild.number(), wild.vector(), wild.number(), wild.number()});
            return arc;
        }
        case 2: {
            auto ellipse = std::make_unique<AcDbEllipse>();
            ellipse->setFileData(
                {wild.point(), wild.vector(), wild.vector(), wild.number(), wild.number(), wild.number()});
            return ellipse;
        }
        case 3: {
            auto spline = std::make_unique<AcDbSpline>();
            AcDbSpline::Data data;
            data.degree = static_cast<int>(wild.pick(30)) - 1;
            data.weighted = wild.pick(2);
            for (unsigned i = wild.pick(12); i > 0; --i) {
                data.controlPoints.push_back(wild.point());
                data.fitPoints.push_back(wild.point());
                data.weights.push_back(wild.number());
            }
            data.knots.assign(data.controlPoints.size() + static_cast<size_t>(std::max(data.degree, 0)) + 1, 0);
            for (size_t i = 0; i < data.knots.size(); ++i)
                data.knots[i] = wild.pick(20) == 0 ? wild.number() : static_cast<double>(i / 2);
            spline->setFileData(std::move(data));
            return spline;
        }
        case 4: {
            auto polyline = std::make_unique<AcDbPolyline>();
            AcDbPolyline::Data data;
            for (unsigned i = wild.pick(8); i > 0; --i)
                data.vertices.push_back(
                    {{wild.number(), wild.number()}, wild.number(), wild.pick(2) * wild.number(), wild.number()});
            data.closed = wild.pick(2);
            data.normal = wild.vector();
            data.thickness = wild.number();
            polyline->setFileData(std::move(data));
            return polyline;
        }
        case 5: {
            auto text = std::make_unique<AcDbText>(wild.point(), "Ab%%c \\U+00e4 %%u%%999", AcDbObjectId());
            AcDbText::Data data = text->data();
            data.alignment = {wild.number(), wild.number()};
            data.height = wild.number();
            data.widthFactor = wild.number();
            data.oblique = wild.number();
            data.rotation = wild.number();
            data.horizontal = static_cast<unsigned char>(wild.pick(8));
            data.vertical = static_cast<unsigned char>(wild.pick(6));
            data.generation = static_cast<unsigned char>(wild.pick(8));
            text->setFileData(std::move(data));
            return text;
        }
        case 6: {
            auto paragraph = std::make_unique<AcDbMText>();
            AcDbMText::Data data;
            data.location = wild.point();
            data.direction = wild.vector();
            data.width = wild.number();
            data.height = wild.number();
            data.attachment = static_cast<uint16_t>(wild.pick(12));
            data.contents = "{\\fArial|b1;one two\\P\\S1/2; \\H3x";
            data.lineSpacingFactor = wild.number();
            paragraph->setFileData(std::move(data));
            return paragraph;
        }
        case 7: {
            auto solid = std::make_unique<AcDbSolid>();
            AcDbFilledArea::Data data;
            for (AcGePoint2d& corner : data.corners)
                corner = {wild.number(), wild.number()};
            data.thickness = wild.pick(2) * wild.number();
            solid->setFileData(data);
            return solid;
        }
        case 8: {
            auto ray = std::make_unique<AcDbXline>();
            ray->setFileData({wild.point(), wild.vector()});
            return ray;
        }
        default: {
            auto reference = std::make_unique<AcDbBlockReference>();
            reference->setFileData(
                {wild.point(), AcGeScale3d(wild.number(), wild.number(), 1), wild.number(), {0, 0, 1}, block});
            return reference;
        }
        }
    }
};

} // namespace

TEST(RasterTest, ClipsBeforeItRounds) {
    constexpr int kSide = 16;
    std::vector<uint32_t> pixels(static_cast<size_t>(kSide + 2) * (kSide + 2), 0);
    // One pixel on each side lies outside of the clip.
    Raster raster(pixels.data(), kSide + 2, {1, 1, kSide, kSide});
    const auto drawn = [&] {
        size_t inside = 0;
        for (size_t i = 0; i < pixels.size(); ++i) {
            const size_t x = i % (kSide + 2), y = i / (kSide + 2);
            const bool edge = x == 0 || y == 0 || x > kSide || y > kSide;
            EXPECT_FALSE(edge && pixels[i]) << x << ' ' << y;
            inside += pixels[i] != 0;
            pixels[i] = 0;
        }
        return inside;
    };
    raster.line({-1e90, 8.5}, {1e90, 8.5}, 1);
    EXPECT_EQ(drawn(), 16U);
    raster.line({1, 1}, {17, 17}, 1);
    EXPECT_EQ(drawn(), 16U);
    raster.line({-100, -100}, {100, 100}, 1);
    EXPECT_EQ(drawn(), 16U);
    for (const double odd : {kInfinity, -kInfinity, kNan, 1e200}) {
        raster.line({5, 5}, {odd, 5}, 1);
        raster.line({odd, odd}, {5, 5}, 1);
        raster.dot({odd, 5}, 1);
        const std::vector<Spot> corners = {{0, 0}, {odd, 3}, {5, 8}};
        raster.fillSmooth(corners, std::vector<size_t>{3}, 1);
    }
    EXPECT_EQ(drawn(), 0U);
    const std::vector<Spot> vast = {{-1e60, -1e60}, {1e60, -1e60}, {1e60, 1e60}, {-1e60, 1e60}};
    raster.fill(vast, std::vector<size_t>{4}, 1);
    EXPECT_EQ(drawn(), 256U);
}

TEST(RasterTest, FillsByTheWindingNumber) {
    std::vector<uint32_t> pixels(100, 0);
    Raster raster(pixels.data(), 10, {0, 0, 9, 9});
    // A ring: the inner contour runs the other way.
    const std::vector<Spot> ring = {{1, 1}, {9, 1}, {9, 9}, {1, 9}, {3, 3}, {3, 7}, {7, 7}, {7, 3}};
    const std::vector<size_t> ends = {4, 8};
    raster.fill(ring, ends, 0xFFFFFFFF);
    EXPECT_EQ(std::count(pixels.begin(), pixels.end(), 0xFFFFFFFF), 64 - 16);
    const std::vector<uint32_t> plain = pixels;
    std::fill(pixels.begin(), pixels.end(), 0);
    raster.fillSmooth(ring, ends, 0xFFFFFFFF);
    EXPECT_EQ(pixels, plain) << "on whole pixels nothing is smoothed";
    std::fill(pixels.begin(), pixels.end(), 0xFF000000);
    const std::vector<Spot> half = {{1, 1}, {2, 1}, {2, 1.5}, {1, 1.5}};
    raster.fillSmooth(half, std::vector<size_t>{4}, 0xFFFFFFFF);
    EXPECT_EQ(pixels[11], 0xFF808080);
}

TEST_F(ExtremesTest, FarAwayAndEndlessThingsAreSeen) {
    const double far = 1e12;
    auto ray = std::make_unique<AcDbRay>();
    ray->setFileData({{-far, 30.5, 0}, {1, 0, 0}});
    ray->setColorIndex(1);
    append(std::move(ray));
    auto line = std::make_unique<AcDbLine>(AcGePoint3d(-far, 60.5, 0), AcGePoint3d(far, 60.5, 0));
    line->setColorIndex(3);
    append(std::move(line));
    draw();
    EXPECT_EQ(count(kRed, 0, 30, 99, 30), kSide);
    EXPECT_EQ(count(kGreen, 0, 60, 99, 60), kSide);
}

TEST_F(ExtremesTest, BlocksThatHoldThemselvesEnd) {
    const AcDbObjectId a = newBlock("a"), b = newBlock("b");
    append(lineInRow(10), a);
    for (int i = 0; i < 3; ++i) {
        append(std::make_unique<AcDbBlockReference>(AcGePoint3d(0, i, 0), b), a);
        append(std::make_unique<AcDbBlockReference>(AcGePoint3d(0, i, 0), a), b);
    }
    append(std::make_unique<AcDbBlockReference>(AcGePoint3d(), a));
    AcDbExtents box;
    EXPECT_TRUE(model->visibleExtents(database.modelSpaceId(), box));
    view->setView({50, 50, 1}, {50, 50, 0}, AcGeVector3d::kYAxis, 30000, 30000);
    draw();
}

TEST_F(ExtremesTest, SenselessDrawingsAreDrawnWithoutHarm) {
    Wild wild;
    constexpr double kEyes[] = {1, 1e-9, 60, 1e200};
    for (int round = 0; round < 15; ++round) {
        const AcGePoint3d eye(50, 50, kEyes[round / 2 % std::size(kEyes)]);
        const auto projection = round % 2 == 0 ? AcGsView::kParallel : AcGsView::kPerspective;
        const AcDbObjectId block = newBlock(("b" + std::to_string(round)).c_str());
        for (int i = 0; i < 20; ++i)
            append(anything(wild, AcDbObjectId()), block);
        for (int i = 0; i < 20; ++i)
            append(anything(wild, block));
        for (const double field : {0.01, 100.0, 1e15}) {
            view->setView(eye, {50, 50, 0}, AcGeVector3d::kYAxis, field, field, projection);
            view->orbit(0.3 * round, 0.2 * round);
            view->setMode(round % 3 == 0 ? AcGsView::kGouraudShaded : AcGsView::k2DOptimized);
            draw();
            std::vector<AcDbObjectId> found;
            view->entitiesIn({{20, 20}, {60, 60}}, true, found);
        }
    }
    EXPECT_LT(count(kBlack), kSide * kSide) << "what makes sense among it is seen";
}
