// The window of the drawing: how it looks at it, what is chosen in it ahead of a command, the cross-hair.
#include "window_fixture.h"

#include "db/curves.h"
#include "db/open.h"
#include "dwg/active_view.h"
#include "platform/temp_folder.h"
#include "ui/document_tabs.h"

namespace {

class CanvasTest : public WindowTest {
protected:
    vndk::host::DrawingViews::View view() { return document().views().current(); }
};

} // namespace

TEST_F(CanvasTest, zoomsAtTheCursorPansAndShowsAll) {
    run("LINE 0,0 8,0\n\n");
    const POINT mouse = onScreen(frame.canvas().m_hWnd, at(8, 0).x, at(8, 0).y);
    user.moveTo(mouse.x, mouse.y);
    user.turnWheel(120);
    user.turnWheel(120);
    pump();
    const AcGePoint3d under = frame.canvas().worldAt(at(8, 0));
    EXPECT_NEAR(under.x, 8.05, 0.001); // the middle of the pixel
    EXPECT_NEAR(view().height, canvas().Height() / 10.0 / (1.25 * 1.25), 1e-9);
    EXPECT_GT(litIn({at(8, 0).x - 100, at(8, 0).y}, {at(8, 0).x - 1, at(8, 0).y}), 90);
    run("ZOOM P\n"); // one turning of the wheel
    EXPECT_NEAR(view().height, canvas().Height() / 10.0, 1e-9);

    user.drag(onScreen(frame.canvas().m_hWnd, 100, 100), onScreen(frame.canvas().m_hWnd, 150, 120),
              vndk::test::User::Button::middle);
    settle();
    EXPECT_NEAR(view().center.x, -5, 1e-9);
    EXPECT_NEAR(view().center.y, 2, 1e-9);
    user.doubleClick(mouse.x, mouse.y, vndk::test::User::Button::middle);
    settle();
    EXPECT_NEAR(view().center.x, 4, 1e-9);
    EXPECT_NEAR(view().center.y, 0, 1e-9);
}

TEST_F(CanvasTest, showsTheLimitsOfWhatIsEmpty) {
    for (const char* const space : {"TILEMODE 0\n", "TILEMODE 1\n"}) {
        run(space);
        run("ZOOM C -500,0 10\n");
        user.doubleClick(screenWidth / 2, screenHeight / 2, vndk::test::User::Button::middle);
        settle();
        EXPECT_NEAR(view().center.x, 6, 1e-9) << space;
        EXPECT_NEAR(view().center.y, 4.5, 1e-9) << space;
        EXPECT_GE(view().height, 9) << space;
        EXPECT_LT(view().height, 12) << space;
    }
}

TEST_F(CanvasTest, followsTheCommandsAndVariablesOfTheView) {
    run("ZOOM C 10,20 30\n");
    EXPECT_EQ(view().center, AcGePoint3d(10, 20, 0));
    EXPECT_EQ(host.variables().getReal("VIEWSIZE"), 30);
    vndk::host::VariableValue size;
    host.variables().get("SCREENSIZE", size);
    EXPECT_EQ(std::get<AcGePoint3d>(size), AcGePoint3d(canvas().Width(), canvas().Height(), 0));
    frame.MoveWindow(0, 0, 640, 480);
    settle();
    EXPECT_EQ(view().center, AcGePoint3d(10, 20, 0));
    EXPECT_NEAR(frame.canvas().worldAt({canvas().Width() / 2, canvas().Height() / 2}).x, 10, 0.1);
    // Within another command.
    steps.clickAt(kCanvas, {50, 50});
    run("LINE 10,20 'ZOOM 2x\n'PAN 0,0 5,0\n15,20\n\n");
    EXPECT_EQ(entities().size(), 1U);
    EXPECT_EQ(view().center, AcGePoint3d(5, 20, 0));
    EXPECT_EQ(view().height, 15);
}

TEST_F(CanvasTest, keepsAViewForEachDrawing) {
    run("ZOOM C 10,20 30\n");
    AcApDocument* const first = &document();
    host.documents().appContextNewDocument(nullptr);
    settle();
    EXPECT_NE(view().height, 30);
    run("LINE 0,0 12,9\n\n");
    host.documents().activateDocument(first);
    settle();
    EXPECT_EQ(view().height, 30);
    EXPECT_EQ(litIn({10, 10}, {canvas().Width() - 100, canvas().Height() - 100}), 0);
    host.documents().closeDocument(first);
    settle();
    EXPECT_GT(litIn({10, 10}, {canvas().Width() - 100, canvas().Height() - 100}), 100);
}

TEST_F(CanvasTest, showsInANarrowWindowWhatWasSeenInAWideOne) {
    const TempFolder folder;
    const std::string path = folder / "wide.dwg";
    ASSERT_TRUE(vndk::dwg::setActiveView(database(), true, {{0, 0, 0}, 30}, 10));
    ASSERT_EQ(database().saveAs(path.c_str()), Acad::eOk);
    ASSERT_EQ(host.documents().appContextOpenDocument(path.c_str()), Acad::eOk);
    settle();
    EXPECT_NEAR(view().height * canvas().Width() / canvas().Height(), 300, 1e-6);
    run("LINE 0,0 1,1\n\nQSAVE\n");
    EXPECT_EQ(vndk::dwg::activeView(database(), true)->height, 30) << "nobody has looked elsewhere";
    run("ZOOM 2x\nQSAVE\n");
    EXPECT_EQ(vndk::dwg::activeView(database(), true)->height, view().height);
    EXPECT_NEAR(vndk::dwg::activeViewAspect(database(), true), canvas().Width() / double(canvas().Height()), 1e-9);
}

TEST_F(CanvasTest, leavesNothingOfTheTabsFrameAboveIt) {
    CRect strip;
    frame.tabs().GetClientRect(strip);
    const COLORREF face = GetSysColor(COLOR_3DFACE);
    for (LONG y = strip.bottom - 3; y < strip.bottom; ++y)
        for (LONG x = strip.Width() / 2; x < strip.right; ++x) {
            const POINT at = onScreen(frame.tabs().m_hWnd, x, y);
            const std::uint32_t color = pixel(at.x, at.y);
            ASSERT_EQ(RGB(color >> 16 & 0xFF, color >> 8 & 0xFF, color & 0xFF), face) << x << ' ' << y;
        }
}

TEST_F(CanvasTest, keepsTheAxesInTheCornerWhole) {
    for (const char* const from : {"0,0,1", "0,0,-1", "-1,-1,1", "1,1,1", "1,-1,-1"}) {
        SCOPED_TRACE(from);
        run(std::string("VPOINT ") + from + "\n");
        const LONG bottom = canvas().Height() - 1;
        EXPECT_GT(litIn({0, bottom}, {110, bottom - 110}), 70);
        EXPECT_EQ(litIn({0, bottom}, {0, bottom - 110}), 0) << "cut at the left";
        EXPECT_EQ(litIn({0, bottom}, {110, bottom}), 0) << "cut at the bottom";
    }
}

TEST_F(CanvasTest, movesTheCrossHairWithoutATrace) {
    // Nothing that looks the same upside down.
    run("LINE -20,5 20,9\n\nLINE -15,-12 -15,3\n\n");
    user.moveTo(1, screenHeight - 2);
    settle();
    const auto before = litIn({0, 0}, {canvas().Width() - 1, canvas().Height() - 1});
    std::vector<std::uint32_t> picture;
    const auto eachPixel = [&](auto&& use) {
        for (LONG y = 0; y < canvas().Height(); ++y)
            for (LONG x = 0; x < canvas().Width(); ++x)
                use(colorAt({x, y}));
    };
    eachPixel([&](std::uint32_t color) { picture.push_back(color); });
    for (int i = 0; i < 30; ++i) {
        const POINT place = onScreen(frame.canvas().m_hWnd, 40 + i * 17, 60 + i * 11);
        user.moveTo(place.x, place.y);
        settle();
        EXPECT_GT(litIn({0, 0}, {canvas().Width() - 1, canvas().Height() - 1}), before);
    }
    user.moveTo(1, screenHeight - 2);
    settle();
    size_t place = 0, different = 0;
    eachPixel([&](std::uint32_t color) { different += picture[place++] != color; });
    EXPECT_EQ(different, 0U);
}

TEST_F(CanvasTest, givesWhatIsChosenAheadToTheNextCommand) {
    run("LINE -5,2 5,2\n\nLINE -5,-2 5,-2\n\nCIRCLE 20,0 3\n");
    const auto click = [this](POINT place) {
        const POINT mouse = onScreen(frame.canvas().m_hWnd, place.x, place.y);
        user.click(mouse.x, mouse.y);
        settle();
    };
    click(at(0, 2));
    EXPECT_EQ(document().pickedFirst.size(), 1U);
    click(at(-8, -1));
    click(at(8, -4));
    EXPECT_EQ(document().pickedFirst.size(), 2U) << "by window";
    run("MOVE 0,0 0,10\n");
    ASSERT_EQ(entities().size(), 3U);
    EXPECT_EQ(AcDbObjectPointer<AcDbLine>(entities()[0])->startPoint().y, 12);
    EXPECT_TRUE(document().pickedFirst.empty());

    user.drag(onScreen(frame.canvas().m_hWnd, at(18, -7).x, at(18, -7).y),
              onScreen(frame.canvas().m_hWnd, at(10, -11).x, at(10, -11).y));
    settle();
    EXPECT_TRUE(document().pickedFirst.empty()) << "the rectangle touches nothing";
    user.drag(onScreen(frame.canvas().m_hWnd, at(25, -5).x, at(25, -5).y),
              onScreen(frame.canvas().m_hWnd, at(20, 5).x, at(20, 5).y));
    settle();
    EXPECT_EQ(document().pickedFirst.size(), 1U) << "a rectangle dragged to the left takes what it touches";
    user.key(VK_ESCAPE);
    pump();
    EXPECT_TRUE(document().pickedFirst.empty());
    click(at(23, 0));
    user.key(VK_DELETE);
    pump();
    EXPECT_EQ(entities().size(), 2U);

    // What is typed has the key for itself, and so has a command that waits.
    click(at(0, 12));
    ASSERT_EQ(document().pickedFirst.size(), 1U);
    user.type("LINE");
    user.key(VK_DELETE);
    pump();
    EXPECT_EQ(entities().size(), 2U);
    EXPECT_EQ(document().pickedFirst.size(), 1U);
    user.key(VK_ESCAPE);
    pump();
    bool waits = false;
    steps.press(VK_DELETE).clickAt(kCanvas, at(30, 0)).call([&] { waits = true; }).clickAt(kCanvas, at(33, 0));
    steps.rightClick(kCanvas);
    run("LINE\n");
    finish();
    EXPECT_TRUE(waits);
    EXPECT_EQ(entities().size(), 3U);
}

TEST_F(CanvasTest, tellsWhereTheCursorIsWhenTheViewMoves) {
    AcGePoint3d told;
    frame.canvas().onCursor = [&](const AcGePoint3d& point) { told = point; };
    const POINT mouse = onScreen(frame.canvas().m_hWnd, at(5, 5).x, at(5, 5).y);
    user.moveTo(mouse.x, mouse.y);
    settle();
    EXPECT_NEAR(told.x, 5, 0.1);
    look({100, 0, 0}, canvas().Height() / 10.0);
    EXPECT_NEAR(told.x, 105, 0.1);
    EXPECT_NEAR(told.y, 5, 0.1);
}
