// What the preview's control tells of what fails, and what survives.
#include "module/previews/gs_preview_fixture.h"
#include "win32/user_script.h"

#include <gmock/gmock.h>

#include <fstream>
#include <functional>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using vndk::win32::UserScript;

namespace {

/// Graphics that can't be given back.
class ClingingCtrl : public CGsPreviewCtrl {
public:
    void clearAll() override {
        if (clings)
            throw std::runtime_error("still in use");
        CGsPreviewCtrl::clearAll();
    }
    bool clings = false;
};

/// Does something to each drawing that has been read.
class OpeningReactor : public AcRxEventReactor {
public:
    explicit OpeningReactor(std::function<void(AcDbDatabase&)> action) : action_(std::move(action)) {
        acrxEventReactors().add(this);
    }
    ~OpeningReactor() override { acrxEventReactors().remove(this); }
    void dwgFileOpened(AcDbDatabase* database, char*) override { action_(*database); }

private:
    std::function<void(AcDbDatabase&)> action_;
};

class PreviewFailuresTest : public PreviewCallsTest {
protected:
    void makeClinging() {
        auto made = std::make_unique<ClingingCtrl>();
        clinging = made.get();
        ctrl.reset();
        make(std::move(made));
    }
    void expectNothingShown() {
        EXPECT_STREQ(ctrl->ShownName(), "");
        EXPECT_STREQ(ctrl->DrawingPath(), "");
    }

    ClingingCtrl* clinging = nullptr;
    const std::string path = drawing("plan.dwg");
};

TEST_F(PreviewFailuresTest, TellWhatDoesntLoad) {
    ctrl->LoadDrawing("C:\\no\\\\where.dwg");
    EXPECT_THAT(alerts, ElementsAre("Could not load the drawing file: C:/no/where.dwg"));
    alerts.clear();

    // What is on show stays when there is no such file, and goes when there is one that isn't a drawing.
    ctrl->LoadBlock("DOOR");
    ctrl->LoadDrawing("C:\\nowhere.dwg");
    EXPECT_STREQ(ctrl->ShownName(), "DOOR");
    alerts.clear();
    std::ofstream(folder / "t/bad.dwg") << "AC1015 and nothing more";
    ctrl->LoadDrawing("T:\\bad.dwg");
    EXPECT_THAT(alerts, ElementsAre("Failed to load drawing.", "Could not load the drawing file: T:\\bad.dwg"));
    expectNothingShown();
}

TEST_F(PreviewFailuresTest, ShowNothingWithoutAWordForABlockThatCantBeHad) {
    ctrl->LoadBlock("DOOR");
    ctrl->LoadBlock("NO_SUCH_BLOCK");
    expectNothingShown();
    graphics.log.throwingDevices = 1;
    ctrl->LoadBlock("DOOR");
    expectNothingShown();
    ctrl->LoadBlock("DOOR");
    EXPECT_STREQ(ctrl->ShownName(), "DOOR");
    host.documents().closeAll();
    ctrl->LoadBlock("DOOR");
    expectNothingShown();
    EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(PreviewFailuresTest, GoOnWhenGraphicsCantBeGivenBack) {
    makeClinging();
    ctrl->LoadBlock("DOOR");
    clinging->clings = true;
    graphics.log.take();
    ctrl->LoadDrawing(path.c_str());
    EXPECT_THAT(alerts, ElementsAre("clearAll failed"));
    EXPECT_STREQ(ctrl->ShownName(), "*Model_Space");
    EXPECT_THAT(graphics.log.take(), Contains("view.add(record)"));
    alerts.clear();
    ctrl->LoadBlock("DOOR");
    EXPECT_STREQ(ctrl->ShownName(), "");
    EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(PreviewFailuresTest, TellOfADrawingWhoseReadingThrowsOrThatHasNoModelSpace) {
    ctrl->LoadBlock("DOOR");
    {
        const OpeningReactor reactor([](AcDbDatabase&) { throw std::runtime_error("no more"); });
        ctrl->LoadDrawing(path.c_str());
    }
    EXPECT_THAT(alerts, ElementsAre("Failed to load drawing."));
    expectNothingShown();
    alerts.clear();
    {
        const OpeningReactor reactor([](AcDbDatabase& database) {
            const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
            space->setName("ELSEWHERE");
        });
        ctrl->LoadDrawing(path.c_str());
    }
    EXPECT_THAT(alerts, ElementsAre("Failed to load drawing."));
    expectNothingShown();
}

TEST_F(PreviewFailuresTest, SwallowWhatElseFailsWhileADrawingLoads) {
    graphics.log.throwingDevices = 1;
    ctrl->LoadDrawing(path.c_str());
    EXPECT_THAT(alerts, IsEmpty());
    // Without a view nothing can be done to it.
    hold(100, 50);
    move(120, 60);
    release();
    user.turnWheel(120);
    ctrl->MoveWindow(0, 0, 150, 90);
    settle();
    graphics.log.take();
    ctrl->LoadDrawing(path.c_str());
    EXPECT_THAT(graphics.log.take(), Contains("view.add(record)"));
}

TEST_F(PreviewFailuresTest, AskWhetherToTryAgainWhenTheFirstPictureFails) {
    ctrl->mMode = CGsPreviewCtrl::kOrbit;
    std::string question;
    const auto load = [&](int failures, const std::function<void(UserScript&)>& answer) {
        UserScript script(screen);
        script.in("#32770").waitForWindow().call([&] {
            char text[100] = "";
            ::GetDlgItemTextA(::GetActiveWindow(), 0xFFFF, text, sizeof text);
            question = text;
        });
        answer(script);
        graphics.log.throwingUpdates = failures;
        graphics.log.take();
        ctrl->LoadDrawing(path.c_str());
        EXPECT_TRUE(script.finish()) << script.failure();
        EXPECT_THAT(alerts, IsEmpty());
        EXPECT_STREQ(ctrl->ShownName(), "*Model_Space");
        const std::vector<std::string> calls = graphics.log.take();
        return std::count(calls.begin(), calls.end(), "view.add(record)");
    };
    EXPECT_EQ(load(1, [](UserScript& script) { script.click(IDNO); }), 1);
    EXPECT_EQ(question, "Error loading drawing.\n\nTry again?");
    EXPECT_EQ(load(1, [](UserScript& script) { script.click(IDYES); }), 2);
    EXPECT_EQ(load(2, [](UserScript& script) { script.click(IDYES).in("#32770").click(IDNO); }), 2);
    EXPECT_STREQ(ctrl->DrawingPath(), path.c_str());
}

TEST_F(PreviewFailuresTest, TellWhenAPictureFailsOnlyWhilePainting) {
    show(CGsPreviewCtrl::kPan);
    graphics.log.throwingUpdates = 1;
    ctrl->Invalidate();
    settle();
    EXPECT_THAT(alerts, ElementsAre("mpView->update() failed"));
    alerts.clear();
    graphics.log.throwingUpdates = 1;
    ctrl->SendMessage(WM_SIZE, SIZE_RESTORED, MAKELPARAM(150, 90));
    EXPECT_EQ(graphics.log.throwingUpdates, 0);
    EXPECT_THAT(alerts, IsEmpty());
}

/// On the real system: what a view still shows of a drawing that has gone is gone with it.
class PreviewLeftoversTest : public PreviewTest {};

TEST_F(PreviewLeftoversTest, ShowTheNextDrawingThoughTheLastWasntGivenBack) {
    auto made = std::make_unique<ClingingCtrl>();
    ClingingCtrl& clinging = *made;
    make(std::move(made));
    const std::string first = drawing("first.dwg");
    host.runText("CIRCLE 20,15 15\n\n");
    ASSERT_EQ(database().saveAs((folder / "t/second.dwg").c_str()), Acad::eOk);
    ctrl->LoadDrawing(first.c_str());
    settle();
    clinging.clings = true;
    ctrl->LoadDrawing("T:\\second.dwg");
    ctrl->Invalidate();
    settle();
    EXPECT_THAT(alerts, ElementsAre("clearAll failed"));
    // The circle reaches the upper edge in the middle.
    bool lit = false;
    for (int x = 90; x < 110; ++x)
        for (int y = 0; y < 4; ++y)
            lit = lit || pixel(at(x, y).x, at(x, y).y) == 0xFFFFFF;
    EXPECT_TRUE(lit);
    clinging.clings = false;
}

} // namespace
