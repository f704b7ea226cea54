// The preview's control: what it asks of the graphics system, number by number, and what the user sees.
#include "db/block_reference.h"
#include "module/previews/gs_preview_fixture.h"
#include "resources/resource.h"

#include <gmock/gmock.h>

#include <cmath>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

TEST_F(PreviewCallsTest, SetUpAViewOnABlockInOrder) {
    graphics.log.take();
    ctrl->LoadBlock("DOOR");
    EXPECT_THAT(graphics.log.take(),
                ElementsAre("manager.createAutoCADDevice", "device.onSize(200, 100)", "factory.createView(null, 0)",
                            "manager.createAutoCADModel", "factory.createModel(2, 0, null, null)", "view.add(gadget)",
                            "device.add", "view.setView(0,0,1; 0,0,0; 0,1,0; 1, 1, 0)",
                            "view.setView(3,5,2.5; 3,5,1.5; 0,1,0; 4, 6, 0)", "view.zoom(1)", "view.setMode(5)",
                            "view.eraseAll", "view.add(record)", "view.invalidate", "view.update"));
    EXPECT_STREQ(ctrl->ShownName(), "DOOR");

    // Another load gives everything back first.
    ctrl->LoadBlock("");
    EXPECT_THAT(graphics.log.take(),
                ElementsAre("view.eraseAll", "device.erase", "factory.deleteView", "factory.deleteModel",
                            "manager.destroyAutoCADModel", "manager.destroyAutoCADDevice"));
    EXPECT_STREQ(ctrl->ShownName(), "");
}

TEST_F(PreviewCallsTest, ShowADrawingByTheExtentsItWasSavedWith) {
    const std::string path = drawing("plan.dwg");
    graphics.log.take();
    ctrl->LoadDrawing(path.c_str());
    const std::vector<std::string> calls = steps(graphics.log);
    EXPECT_THAT(calls, Contains("view.setView(20,15,1; 20,15,0; 0,1,0; 40, 30, 0)"));
    EXPECT_THAT(calls, Not(Contains("view.zoom(1)")));
    EXPECT_THAT(calls, Not(Contains("view.eraseAll"))) << "the gadget stays";
    EXPECT_STREQ(ctrl->ShownName(), "*Model_Space");
    EXPECT_STREQ(ctrl->DrawingPath(), path.c_str());
    EXPECT_THAT(alerts, IsEmpty());

    // A block is then looked for in that drawing.
    addBlock("LATER", {});
    ctrl->LoadBlock("LATER");
    EXPECT_STREQ(ctrl->ShownName(), "");
    graphics.log.take();
    ctrl->LoadBlock("*Paper_Space");
    EXPECT_STREQ(ctrl->ShownName(), "*Paper_Space");
    EXPECT_THAT(graphics.log.take(), Not(Contains("view.eraseAll")));
}

TEST_F(PreviewCallsTest, TakeTheExtentsAsTheyAre) {
    // A reference of an empty block has none, and adds nothing.
    addBlock("NOTHING", {});
    addBlock("MARKED", {{{1, 2, 0}, {5, 8, 0}}});
    {
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId());
        AcDbObjectId marked;
        ASSERT_EQ(table->getAt("MARKED", marked), Acad::eOk);
        AcDbObjectId nothing;
        ASSERT_EQ(table->getAt("NOTHING", nothing), Acad::eOk);
        const AcDbObjectPointer<AcDbBlockTableRecord> record(marked, AcDb::kForWrite);
        auto* const reference = new AcDbBlockReference(AcGePoint3d(50, 50, 0), nothing);
        AcDbObjectId id;
        ASSERT_EQ(record->appendAcDbEntity(id, reference), Acad::eOk);
        AcDbExtents none;
        EXPECT_NE(reference->getGeomExtents(none), Acad::eOk);
        reference->close();
    }
    ctrl->LoadBlock("MARKED");
    EXPECT_THAT(graphics.log.take(), Contains("view.setView(3,5,1; 3,5,0; 0,1,0; 4, 6, 0)"));
    // A drawing that was saved empty has its least and its greatest point the wrong way round.
    ASSERT_EQ(database().saveAs((folder / "t/empty.dwg").c_str()), Acad::eOk);
    ctrl->LoadDrawing("T:\\empty.dwg");
    EXPECT_THAT(graphics.log.take(), Contains("view.setView(0,0,1; 0,0,0; 0,1,0; 2e+20, 2e+20, 0)"));
}

TEST_F(PreviewCallsTest, NeverLookAtAFieldWithoutSize) {
    addBlock("FLAT", {{{7, 7, 0}, {9, 7, 0}}});
    ctrl->LoadBlock("FLAT");
    EXPECT_THAT(graphics.log.take(), Contains("view.setView(8,7,1; 8,7,0; 0,1,0; 2, 2e-11, 0)"));
    addBlock("NOTHING", {});
    ctrl->LoadBlock("NOTHING");
    EXPECT_STREQ(ctrl->ShownName(), "NOTHING");
    EXPECT_THAT(graphics.log.take(), Contains(HasSubstr("view.add(record")));
}

TEST_F(PreviewCallsTest, ZoomByTheFactorOfTheStepBeforeToo) {
    show(CGsPreviewCtrl::kZoom);
    hold(100, 90);
    move(100, 80);
    EXPECT_THAT(steps(graphics.log), ElementsAre("view.zoom(1.1)"));
    move(130, 80); // sideways
    EXPECT_THAT(graphics.log.take(), IsEmpty()) << "nothing is redrawn";
    move(130, 70);
    EXPECT_THAT(steps(graphics.log), ElementsAre("view.zoom(1.1)", "view.zoom(1.1)"));
    move(130, 90);
    EXPECT_THAT(steps(graphics.log), ElementsAre("view.zoom(1.1)", "view.zoom(0.8)"));
    release();
    graphics.log.take();
    move(130, 50);
    EXPECT_THAT(graphics.log.take(), IsEmpty());

    // The next drag begins anew.
    hold(100, 50);
    move(100, 45);
    EXPECT_THAT(steps(graphics.log), ElementsAre("view.zoom(1.05)"));
    release();
}

TEST_F(PreviewCallsTest, PanByTheMouseThroughBothMatrices) {
    show(CGsPreviewCtrl::kPan);
    hold(100, 50);
    move(90, 58); // 10 to the left, 8 down: (5, 2) of the world, turned by a quarter
    EXPECT_THAT(steps(graphics.log), ElementsAre(HasSubstr("view.dolly(-2,5,")));
    release();

    // The middle button pans in every mode, and both buttons act at once.
    ctrl->mMode = CGsPreviewCtrl::kZoom;
    graphics.log.take();
    hold(100, 50, Button::middle);
    move(90, 50);
    EXPECT_THAT(steps(graphics.log), ElementsAre(HasSubstr("view.dolly(")));
    release(Button::middle);
    graphics.log.take();
    move(80, 50);
    EXPECT_THAT(graphics.log.take(), IsEmpty());
}

TEST_F(PreviewCallsTest, DragByTwoButtonsAtOnce) {
    show(CGsPreviewCtrl::kZoom);
    hold(100, 50);
    hold(100, 50, Button::middle);
    move(90, 40);
    // The zoom step has stored the point when the pan looks at it.
    EXPECT_THAT(steps(graphics.log), ElementsAre("view.zoom(1.1)", HasSubstr("view.dolly(0,0,")));
    release(Button::middle);
    move(90, 30);
    EXPECT_THAT(steps(graphics.log), ElementsAre("view.zoom(1.1)", "view.zoom(1.1)"));
    release();
}

TEST_F(PreviewCallsTest, ShowWhatTheMouseDoesByItsCursor) {
    const auto cursor = [](int id) { return ::LoadCursor(ModuleInstance(), MAKEINTRESOURCE(id)); };
    for (const auto& [mode, id] :
         {std::pair(CGsPreviewCtrl::kOrbit, IDC_CURSOR_ORBIT), std::pair(CGsPreviewCtrl::kPan, IDC_CURSOR_PAN),
          std::pair(CGsPreviewCtrl::kZoom, IDC_CURSOR_ZOOM)}) {
        show(mode);
        move(50, 50);
        EXPECT_EQ(::GetCursor(), cursor(id)) << mode;
        hold(50, 50, Button::middle);
        EXPECT_EQ(::GetCursor(), cursor(IDC_CURSOR_PAN)) << mode;
        move(52, 50);
        EXPECT_EQ(::GetCursor(), cursor(id)) << "a hand until the first move, " << mode;
        release(Button::middle);
        EXPECT_EQ(::GetCursor(), ::LoadCursor(nullptr, IDC_ARROW)) << mode;
        hold(50, 50);
        EXPECT_EQ(::GetCursor(), cursor(id)) << mode;
        release();
    }
}

TEST_F(PreviewCallsTest, OrbitAsABallInTheMiddleOfTheViewport) {
    show(CGsPreviewCtrl::kOrbit);
    hold(100, 50); // the middle: straight at the viewer
    move(120, 50); // half a radius to the right
    const double turn = std::asin(20 / (100 * static_cast<double>(0.4F)));
    // The axis is the picture's y, so the roll is none, and it lies a quarter from the line of sight.
    char orbit[64];
    std::snprintf(orbit, sizeof orbit, "view.orbit(%.9f, 0.000000000)", turn);
    EXPECT_THAT(steps(graphics.log),
                ElementsAre("view.roll(0.000000000)", "view.orbit(0.000000000, 3.141592654)", orbit,
                            "view.orbit(0.000000000, -3.141592654)", "view.roll(-0.000000000)"));
    move(120, 50);
    move(121, 50);
    graphics.log.take();
    // Outside of the ball both points lie on its outline: the picture rolls, whatever the way to the middle.
    release();
    hold(100, 0);
    graphics.log.take();
    move(100, 4);
    EXPECT_THAT(steps(graphics.log), ElementsAre("view.roll(0.000000000)", "view.orbit(0.000000000, 1.570796327)",
                                                 "view.orbit(0.000000000, 0.000000000)",
                                                 "view.orbit(0.000000000, -1.570796327)", "view.roll(-0.000000000)"));
    release();
}

TEST_F(PreviewCallsTest, TakeOneStepOfTheWheelWhateverItsSize) {
    show(CGsPreviewCtrl::kOrbit);
    user.click(at(5, 5).x, at(5, 5).y);
    settle();
    graphics.log.take();
    user.turnWheel(360);
    settle();
    EXPECT_THAT(steps(graphics.log), ElementsAre("view.zoom(1.1)"));
    user.turnWheel(-30);
    settle();
    EXPECT_THAT(steps(graphics.log), ElementsAre("view.zoom(0.9)"));
}

TEST_F(PreviewCallsTest, FollowTheWindowsSizeAndTakeTheFocus) {
    EXPECT_THAT(graphics.log.take(), IsEmpty());
    hold(50, 50); // an empty control takes the focus, and that is all
    move(60, 60);
    release();
    EXPECT_EQ(::GetFocus(), ctrl->m_hWnd);
    EXPECT_THAT(graphics.log.take(), IsEmpty());
    show(CGsPreviewCtrl::kPan);
    ctrl->MoveWindow(0, 0, 150, 90);
    EXPECT_THAT(graphics.log.take(), ElementsAre("device.onSize(150, 90)", "view.invalidate", "view.update"));
}

// With the real system.

class PreviewPictureTest : public PreviewTest {
protected:
    PreviewPictureTest() {
        make();
        addBlock("CROSS", {{{-10, 0, 0}, {10, 0, 0}}, {{0, -5, 0}, {0, 5, 0}}});
    }
    std::uint32_t seen(int x, int y) { return pixel(at(x, y).x, at(x, y).y); }
    /// A white pixel there or next to it: turning rounds.
    bool isLit(int x, int y) {
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy)
                if (seen(x + dx, y + dy) == 0xFFFFFF)
                    return true;
        return false;
    }
};

TEST_F(PreviewPictureTest, ShowABlockThatFillsTheWindow) {
    EXPECT_EQ(seen(100, 50), 0x000000U) << "nothing is on show";
    ctrl->LoadBlock("CROSS");
    settle();
    EXPECT_EQ(seen(3, 50), 0xFFFFFFU);
    EXPECT_EQ(seen(196, 50), 0xFFFFFFU);
    EXPECT_EQ(seen(100, 3), 0xFFFFFFU);
    EXPECT_EQ(seen(50, 25), 0x000000U);
}

TEST_F(PreviewPictureTest, DrawTheGadgetWhileOrbitingOnly) {
    ctrl->LoadBlock("CROSS");
    ctrl->mMode = CGsPreviewCtrl::kOrbit;
    ctrl->DrawOrbitGadgetNow(false);
    EXPECT_NE(seen(70, 50), 0x00FF00U);
    ctrl->DrawOrbitGadgetNow(true);
    // The circle's box reaches 30 pixels around the middle, the handles 9 further.
    EXPECT_EQ(seen(100, 20), 0x00FF00U);
    EXPECT_EQ(seen(61, 50), 0x00FF00U);
    EXPECT_EQ(seen(138, 50), 0x00FF00U);
    hold(20, 10, Button::middle);
    move(21, 10);
    EXPECT_NE(seen(100, 20), 0x00FF00U) << "not while panning";
    release(Button::middle);
    ctrl->Invalidate();
    settle();
    EXPECT_EQ(seen(100, 20), 0x00FF00U);
}

TEST_F(PreviewPictureTest, TurnWhatIsGrabbedWithTheMouse) {
    ctrl->LoadBlock("CROSS");
    ctrl->mMode = CGsPreviewCtrl::kOrbit;
    settle();
    // From the middle to the ball's right side: the long line is seen from its end.
    hold(100, 50);
    move(139, 50);
    release();
    EXPECT_FALSE(isLit(20, 50));
    EXPECT_TRUE(isLit(100, 10)) << "the upright line stays";
    // And back.
    hold(139, 50);
    move(100, 50);
    release();
    EXPECT_TRUE(isLit(20, 50));
}

TEST_F(PreviewPictureTest, MarkTheFocusByARectangleTwoPixelsInside) {
    ctrl->LoadBlock("CROSS");
    settle();
    const auto corner = [this] { return std::pair(seen(2, 2), seen(3, 2)); }; // every other pixel is dotted
    const auto former = corner();
    ctrl->SetFocus();
    settle();
    EXPECT_NE(corner(), former);
    parent.SetFocus();
    settle();
    EXPECT_EQ(corner(), former);
}

} // namespace
