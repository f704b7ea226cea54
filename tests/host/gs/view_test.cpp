// The arithmetic of views, by numbers.
#include "host/gs/gs_fixture.h"

#include <limits>

namespace {

void expectNear(const AcGePoint3d& a, const AcGePoint3d& b) { EXPECT_NEAR(a.distanceTo(b), 0, 1e-9); }
void expectNear(const AcGeVector3d& a, const AcGeVector3d& b) { EXPECT_NEAR((a - b).length(), 0, 1e-9); }

class ViewTest : public GsTest {
protected:
    AcGePoint3d device(double x, double y, double z = 0) const {
        return view->worldToDeviceMatrix() * AcGePoint3d(x, y, z);
    }
};

} // namespace

TEST_F(ViewTest, FieldFillsTheViewportInItsTighterDirection) {
    GsTest::device->onSize(200, 100);
    view->setView({10, 20, 5}, {10, 20, 0}, AcGeVector3d::kYAxis, 50, 50);
    expectNear(device(10, 20), {100, 50, 0});
    expectNear(device(35, 45), {150, 0, 0});
    expectNear(device(-15, -5), {50, 100, 0});
    AcGsDCRect viewport;
    view->getViewport(viewport);
    EXPECT_EQ(viewport, (AcGsDCRect{{0, 0}, {199, 99}}));

    view->setViewport({{100, 0}, {199, 49}});
    expectNear(device(10, 20), {150, 25, 0});
    expectNear(device(35, 45), {175, 0, 0});
}

TEST_F(ViewTest, SeesFromAnySide) {
    view->setView({10, 0, 0}, {0, 0, 0}, AcGeVector3d::kZAxis, 100, 100);
    expectNear(view->viewingMatrix() * AcGePoint3d(1, 2, 3), {2, 3, 1});
    expectNear(device(0, 10, 20), {60, 30, 0});
    // An up vector that leans is put upright.
    view->setView({0, 0, 1}, {0, 0, 0}, {0, 3, 4}, 100, 100);
    expectNear(view->upVector(), AcGeVector3d::kYAxis);
}

TEST_F(ViewTest, RefusesWhatMakesNoCamera) {
    const AcGeMatrix3d before = view->worldToDeviceMatrix();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    view->setView({0, 0, 0}, {0, 0, 0}, AcGeVector3d::kYAxis, 1, 1);
    view->setView({0, 0, 1}, {0, 0, 0}, AcGeVector3d::kZAxis, 1, 1);
    view->setView({0, 0, 1}, {0, 0, 0}, AcGeVector3d::kYAxis, 0, 1);
    view->setView({0, nan, 1}, {0, 0, 0}, AcGeVector3d::kYAxis, 1, 1);
    view->zoom(0);
    view->zoom(-2);
    view->zoom(nan);
    view->zoom(1e-320);
    view->roll(nan);
    view->dolly(nan, 0, 0);
    EXPECT_TRUE(view->worldToDeviceMatrix().isEqualTo(before));
}

TEST_F(ViewTest, ZoomKeepsTheTargetAndDividesTheField) {
    view->zoom(2);
    EXPECT_DOUBLE_EQ(view->fieldWidth(), 50);
    expectNear(device(50, 50), {50, 50, 0});
    expectNear(device(60, 50), {70, 50, 0});
    view->zoom(0.25);
    expectNear(device(60, 50), {55, 50, 0});
}

TEST_F(ViewTest, DollyFollowsTheMouse) {
    view->zoom(2);
    // A drag by 10 pixels to the right and 4 down, as a window does it.
    AcGeVector3d drag(-10, -4, 0);
    drag.transformBy(view->viewingMatrix() * view->worldToDeviceMatrix().inverse());
    view->dolly(drag);
    expectNear(device(50, 50), {60, 54, 0});
    expectNear(view->target(), {45, 52, 0});
    expectNear(view->position(), {45, 52, 1});
}

TEST_F(ViewTest, RollTurnsThePictureCounterClockwise) {
    view->roll(kAcGePi / 2);
    expectNear(device(60, 50), {50, 40, 0});
    view->roll(-kAcGePi / 2);
    expectNear(device(60, 50), {60, 50, 0});
}

TEST_F(ViewTest, OrbitCarriesTheCameraAboutTheTarget) {
    view->setView({50, 50, 10}, {50, 50, 0}, AcGeVector3d::kYAxis, 100, 100);
    view->orbit(kAcGePi / 2, 0);
    expectNear(view->position(), {60, 50, 0});
    expectNear(view->upVector(), AcGeVector3d::kYAxis);
    view->orbit(-kAcGePi / 2, kAcGePi / 2);
    expectNear(view->position(), {50, 60, 0});
    expectNear(view->upVector(), {0, 0, -1});
    expectNear(view->target(), {50, 50, 0});
}

// A ball that is turned by the mouse: roll and orbit together turn the drawing about the ball's axis, so that the point
// that was grabbed stays under the mouse.
TEST_F(ViewTest, TrackballTurnsTheDrawingWithTheMouse) {
    const AcGeVector3d grabs[][2] = {{{0, 0, 1}, {0.3, 0, std::sqrt(0.91)}},
                                     {{0, 0, 1}, {0, 0.3, std::sqrt(0.91)}},
                                     {{0.5, 0.5, std::sqrt(0.5)}, {0.1, 0.6, std::sqrt(0.63)}},
                                     {{1, 0, 0}, {0.8, 0.6, 0}}};
    for (const auto& [from, to] : grabs) {
        view->setView({50, 50, 1}, {50, 50, 0}, AcGeVector3d::kYAxis, 100, 100);
        const AcGeVector3d axis = from.crossProduct(to);
        const double roll = std::atan2(axis.x, axis.y);
        const double tilt = std::acos(axis.z / axis.length()) + kAcGePi / 2;
        view->roll(roll);
        view->orbit(0, tilt);
        view->orbit(std::asin(axis.length()), 0);
        view->orbit(0, -tilt);
        view->roll(-roll);
        expectNear(view->viewingMatrix() * from, to);
    }
}

TEST_F(ViewTest, IsOnOneDeviceAtATime) {
    AcGsDevice* const other = manager.createAutoCADOffScreenDevice();
    EXPECT_FALSE(other->add(view));
    EXPECT_FALSE(other->erase(view));
    EXPECT_TRUE(GsTest::device->erase(view));
    AcGsDCRect viewport{{7, 7}, {7, 7}};
    view->getViewport(viewport);
    EXPECT_EQ(viewport, AcGsDCRect());
    view->update();
    EXPECT_TRUE(other->add(view));
    manager.destroyAutoCADDevice(other);
    EXPECT_TRUE(GsTest::device->add(view));
}

TEST_F(ViewTest, AnInteractiveViewIsStaleAfterwardsOnlyIfItLeftSomethingOut) {
    append(lineInRow(10));
    view->setInteractive(true);
    draw();
    EXPECT_EQ(count(kRed), kSide) << "so little is drawn whole";
    view->setInteractive(false);
    EXPECT_TRUE(view->isValid());
    EXPECT_FALSE(view->isInteractive());
}
