// Prompts answered by mouse: what is drawn meanwhile, and what comes of it.
#include "window_fixture.h"

#include "ads/ads.h"
#include "db/block_reference.h"
#include "db/curves.h"
#include "db/open.h"
#include "ui/command_window.h"

namespace {

class PointingTest : public WindowTest {
protected:
    /// The ends of the last line.
    std::pair<AcGePoint3d, AcGePoint3d> lastLine() {
        const AcDbObjectPointer<AcDbLine> line(entities().back());
        return line ? std::pair(line->startPoint(), line->endPoint()) : std::pair<AcGePoint3d, AcGePoint3d>();
    }
    void expectNear(const AcGePoint3d& point, double x, double y) {
        EXPECT_NEAR(point.x, x, 0.051);
        EXPECT_NEAR(point.y, y, 0.051);
    }
};

} // namespace

TEST_F(PointingTest, takesPointsBesideABandAndPaintsTheLineAtOnce) {
    bool band = false;
    steps.clickAt(kCanvas, at(-5, -5)).moveTo(kCanvas, at(5, -5)).call([&] {
        settle();
        band = litIn(at(-2, -5), at(2, -5)) > 35;
    });
    steps.clickAt(kCanvas, at(5, 5)).clickAt(kCanvas, at(-5, 5));
    // Typed coordinates count whatever the mouse does; the right button is Enter.
    steps.call([this] { host.commandLine().input().feed("@0,-3\n"); }).moveTo(kCanvas, at(9, 9)).rightClick(kCanvas);
    run("LINE\n");
    finish();
    EXPECT_TRUE(band) << "a band runs from the point before to the cursor";
    ASSERT_EQ(entities().size(), 3U);
    const auto [start, end] = lastLine();
    expectNear(start, -5, 5);
    EXPECT_NEAR(end.y, start.y - 3, 1e-12);
    user.moveTo(1, screenHeight - 2);
    settle();
    EXPECT_GT(litIn(at(-1, 5), at(1, 5)), 15) << "the lines are there without a redraw";
    const int before = litIn(at(-6, -6), at(6, 6));
    run("U\n");
    settle();
    EXPECT_LT(litIn(at(-6, -6), at(6, 6)), before / 4);
}

TEST_F(PointingTest, keepsToTheAxesWithOrtho) {
    run("ORTHO ON\n");
    steps.clickAt(kCanvas, at(-5, 0)).clickAt(kCanvas, at(5, 2)).rightClick(kCanvas);
    run("LINE\n");
    finish();
    const auto [start, end] = lastLine();
    EXPECT_EQ(start.y, end.y);
    expectNear(end, 5, 0);
}

TEST_F(PointingTest, snapsToPlacesOfWhatIsThere) {
    run("LINE 0,0 8,0\n\nCIRCLE -10,0 3\nLINE 4,-4 4,4\n\n");
    const struct {
        const char* mode;
        POINT click;
        double x, y;
    } cases[] = {
        {"end", at(7.7, 0.2), 8, 0},   {"mid", at(4.4, 0.1), 4, 0},     {"cen", at(-7, 0.2), -10, 0},
        {"qua", at(-10.2, 3), -10, 3}, {"int", at(4.3, 0.3), 4, 0},     {"nea", at(2, 0.3), 2, 0},
        {"non", at(7.7, 0.2), 7.7, 0}, {"end,mid", at(4.2, 3.8), 4, 4},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.mode);
        vndk::win32::UserScript user(screen);
        user.clickAt(kCanvas, c.click).rightClick(kCanvas);
        run(std::string("LINE 20,20 ") + c.mode + "\n");
        EXPECT_TRUE(user.finish()) << user.failure();
        const AcGePoint3d end = lastLine().second;
        if (std::string_view(c.mode) == "non") {
            EXPECT_NE(end.y, 0);
            continue;
        }
        EXPECT_NEAR(end.x, c.x, std::string_view(c.mode) == "nea" ? 0.1 : 1e-12);
        EXPECT_NEAR(end.y, c.y, 1e-12);
        run("ERASE L\n\n");
    }
    // A click where the named place isn't found is no answer.
    steps.clickAt(kCanvas, at(-3, 8)).clickAt(kCanvas, at(7.8, 0)).rightClick(kCanvas);
    run("LINE 20,20 end\n");
    finish();
    EXPECT_EQ(lastLine().second, AcGePoint3d(8, 0, 0));
}

TEST_F(PointingTest, marksTheSnapOfOsmode) {
    run("LINE 0,0 8,0\n\n");
    host.variables().set("OSMODE", short{1});
    int yellow = 0;
    steps.moveTo(kCanvas, at(7.6, 0.3)).call([&] {
        settle();
        for (LONG y = at(8, 0).y - 8; y <= at(8, 0).y + 8; ++y)
            for (LONG x = at(8, 0).x - 8; x <= at(8, 0).x + 8; ++x)
                yellow += colorAt({x, y}) == 0xFFFF00;
    });
    steps.clickAt(kCanvas, at(7.6, 0.3)).press(VK_ESCAPE);
    run("LINE\n");
    finish();
    EXPECT_GT(yellow, 40);
    EXPECT_EQ(document().lastPoint, AcGePoint3d(8, 0, 0));
}

TEST_F(PointingTest, choosesByClickWindowAndCrossing) {
    const struct {
        POINT first, second;
        size_t left;
    } cases[] = {
        {at(-6, 6), at(6, -6), 2}, // a window: what lies inside
        {at(6, -6), at(-6, 6), 1}, // a crossing: what it touches too
        {at(0, 2), at(20, 15), 2}, // a click takes what is under the pick box; the second one finds nothing
        {at(11, 11), at(14, 14), 3},
    };
    for (const auto& c : cases) {
        run("ERASE ALL\n\nLINE -5,2 5,2\n\nLINE 0,4 20,4\n\nCIRCLE 30,0 2\n");
        vndk::win32::UserScript user(screen);
        user.clickAt(kCanvas, c.first).clickAt(kCanvas, c.second);
        if (c.first.x == at(0, 2).x)
            user.clickAt(kCanvas, at(22, 17));
        user.rightClick(kCanvas);
        run("ERASE\n");
        EXPECT_TRUE(user.finish()) << user.failure();
        EXPECT_EQ(entities().size(), c.left) << c.first.x << ' ' << c.first.y;
    }
}

TEST_F(PointingTest, choosesOnTheScreenFromWhicheverSide) {
    // From the front the posts stand side by side; from the top they are dots.
    constexpr const char* kPosts = "ERASE ALL\n\nLINE -8,0,-6 -8,50,6\n\nLINE 4,-90,-3 4,-90,3\n\n";
    const vndk::host::DrawingViews::View front{{}, canvas().Height() / 10.0, {0, -1, 0}, {0, 0, 1}};
    const struct {
        POINT first, second;
        size_t left;
    } cases[] = {
        {at(0, 5), at(9, -5), 1}, {at(9, -2), at(0, 2), 1}, {at(0, 2), at(9, -2), 2}, {at(-10, 8), at(9, -8), 0}};
    for (const char* const ucs : {"UCS W\n", "UCS Z 30\n"})
        for (const auto& c : cases) {
            run(kPosts);
            run(ucs);
            document().views().show(front);
            settle();
            vndk::win32::UserScript user(screen);
            user.clickAt(kCanvas, c.first).clickAt(kCanvas, c.second).rightClick(kCanvas);
            run("ERASE\n");
            EXPECT_TRUE(user.finish()) << user.failure();
            EXPECT_EQ(entities().size(), c.left) << ucs << c.first.x << ' ' << c.first.y;
            run("UCS W\n");
        }
    run(kPosts);
    document().views().show(front);
    run("ERASE W 0,0,-5 9,0,5\n\n");
    EXPECT_EQ(entities().size(), 1U) << "typed corners";
    run("ERASE F -10,0,0 0,0,0\n\n\n");
    EXPECT_EQ(entities().size(), 0U);
}

TEST_F(PointingTest, takesPointsWherePerspectiveShowsThem) {
    vndk::host::DrawingViews::View view{{}, canvas().Height() / 10.0};
    view.eye = 20;
    document().views().show(view);
    run("ELEVATION 10\n");
    bool band = false;
    steps.clickAt(kCanvas, at(-10, 0)).moveTo(kCanvas, at(10, 4)).call([&] {
        settle();
        band = colorAt(at(0, 2)) != 0;
    });
    steps.clickAt(kCanvas, at(10, 4)).rightClick(kCanvas);
    run("LINE\n");
    finish();
    EXPECT_TRUE(band);
    ASSERT_EQ(entities().size(), 1U);
    expectNear(lastLine().first, -5, 0);
    expectNear(lastLine().second, 5, 2);
    EXPECT_EQ(lastLine().first.z, 10);
    EXPECT_GT(litIn(at(-9, 1), at(9, -1)), 90) << "the line is where it was shown";
}

TEST_F(PointingTest, aTurnedCoordinateSystemTurnsNoWindow) {
    run("UCS Z 45\n");
    user.moveTo(1, screenHeight - 2);
    const POINT first = onScreen(frame.canvas().m_hWnd, at(-6, 6).x, at(-6, 6).y);
    user.click(first.x, first.y);
    const POINT second = onScreen(frame.canvas().m_hWnd, at(6, -6).x, at(6, -6).y);
    user.moveTo(second.x, second.y);
    settle();
    EXPECT_EQ(litIn(at(-6, 6), {at(6, 6).x, at(6, 6).y}), 121) << "its upper side";
    EXPECT_EQ(litIn(at(-6, 6), {at(-6, -6).x, at(-6, -6).y}), 121) << "its left side";
}

TEST_F(PointingTest, takesOutWithShiftAndShowsWhatIsChosen) {
    run("LINE -5,2 5,2\n\nLINE -5,-2 5,-2\n\n");
    const int solid = litIn(at(-4, 2), at(4, 2));
    int dashed = 0, again = 0;
    steps.clickAt(kCanvas, at(0, 2)).clickAt(kCanvas, at(0, -2)).moveTo(kCanvas, at(10, 10)).call([&] {
        settle();
        dashed = litIn(at(-4, 2), at(4, 2));
    });
    steps.clickAt(kCanvas, at(0, 2), {.shift = true}).moveTo(kCanvas, at(10, 10)).call([&] {
        settle();
        again = litIn(at(-4, 2), at(4, 2));
    });
    steps.rightClick(kCanvas);
    run("ERASE\n");
    finish();
    EXPECT_LT(dashed, solid * 3 / 4);
    EXPECT_GT(dashed, solid / 4);
    EXPECT_EQ(again, solid);
    ASSERT_EQ(entities().size(), 1U);
    expectNear(lastLine().first, -5, 2);
}

TEST_F(PointingTest, picksOneEntityAndTellsOfNone) {
    run("CIRCLE 0,0 3\n");
    steps.clickAt(kCanvas, at(3, 0));
    run("(setq e (car (entsel)))\n");
    EXPECT_TRUE(steps.finish()) << steps.failure();
    run("(command \"ERASE\" e \"\")\n");
    EXPECT_TRUE(entities().empty());
    steps.clickAt(kCanvas, at(3, 0));
    run("(setq e (entsel))\n");
    finish();
    run("(if (not e) (command \"LINE\" \"0,0\" \"1,1\" \"\"))\n");
    EXPECT_EQ(entities().size(), 1U);
}

TEST_F(PointingTest, showsTheBlockAtTheCursorWhileItIsPlaced) {
    run("LINE 0,0 4,0\n\nLINE 4,0 4,4\n\n-BLOCK CORNER 0,0 ALL\n\n");
    int shown = 0;
    steps.moveTo(kCanvas, at(-8, 3)).call([&] {
        settle();
        shown = litIn(at(-7, 3), at(-5, 3)) + litIn(at(-4, 4), at(-4, 6));
    });
    steps.clickAt(kCanvas, at(-8, 3)).call([this] { host.commandLine().input().feed("1\n1\n0\n"); });
    run("-INSERT CORNER\n");
    finish();
    EXPECT_GT(shown, 38);
    EXPECT_EQ(entities().size(), 1U);
}

TEST_F(PointingTest, answersPromptsOutsideOfCommandsAndWithinThem) {
    // What a palette does from one of its messages: it asks, then sends text that cancels what waits.
    AcGePoint3d given;
    vndk::host::PromptStatus status{};
    const auto ask = [&] { status = host.prompts().getPoint("Specify insertion point: ", given); };
    const auto wanted = [this] {
        char text[100];
        GetWindowTextA(GetDlgItem(frame.commandWindow().m_hWnd, 1002), text, sizeof text);
        return std::string(text);
    };
    std::string meanwhile;
    steps.call([&] { meanwhile = wanted(); }).clickAt(kCanvas, at(2, 1));
    ask();
    EXPECT_TRUE(steps.finish()) << steps.failure();
    EXPECT_EQ(status, vndk::host::PromptStatus::Normal);
    EXPECT_EQ(meanwhile, "Specify insertion point: ");
    EXPECT_EQ(wanted(), "Command:") << "nothing is wanted any more";
    expectNear(given, 2, 1);

    vndk::win32::UserScript again(screen);
    again.call([&] {
        vndk::win32::UserScript inner(screen);
        inner.clickAt(kCanvas, at(-3, -1));
        ask();
        EXPECT_TRUE(inner.finish()) << inner.failure();
        host.documents().sendStringToExecute(&document(), "\x1b\x1b(setq sent 7) ", false, true, false);
    });
    run("LINE 0,0\n");
    EXPECT_TRUE(again.finish()) << again.failure();
    settle();
    expectNear(given, -3, -1);
    EXPECT_TRUE(entities().empty()) << "the point went to the prompt that asked last";
    EXPECT_FALSE(host.commandLine().commandActive());
    frame.runInput();
    run("(if (= sent 7) (command \"LINE\" \"0,0\" \"1,1\" \"\"))\n");
    EXPECT_EQ(entities().size(), 1U);
}

TEST_F(PointingTest, answersADialogThatHidAndStaysModal) {
    frame.EnableWindow(FALSE);
    steps.inWindow(frame.m_hWnd).clickAt(kCanvas, at(3, 2));
    ads_point point = {0, 0, 0};
    EXPECT_EQ(acedGetPoint(nullptr, "Where: ", point), RTNORM);
    EXPECT_NEAR(point[0], 3, 0.1);
    EXPECT_NEAR(point[1], 2, 0.1);
    EXPECT_FALSE(frame.IsWindowEnabled());
    frame.EnableWindow(TRUE);
    finish();

    // By keys, too.
    frame.EnableWindow(FALSE);
    steps.press(VK_ESCAPE);
    EXPECT_EQ(acedGetPoint(nullptr, "Where: ", point), RTCAN);
    frame.EnableWindow(TRUE);
    finish();
}

TEST_F(PointingTest, runsWhatADialogSendsAndLeavesWhatIsTyped) {
    frame.EnableWindow(FALSE);
    host.commandLine().input().feed("LINE 0,0 1,1\n\n");
    host.documents().sendStringToExecute(&document(), "(command \"CIRCLE\" \"0,0\" \"2\") ", false, true, false);
    settle();
    EXPECT_EQ(entities().size(), 1U) << "the circle";
    frame.EnableWindow(TRUE);
    settle();
    EXPECT_EQ(entities().size(), 2U);
}

TEST_F(PointingTest, cancelsAPromptWhoseDrawingIsLeft) {
    steps.clickAt(kCanvas, at(0, 0)).call([this] { host.documents().appContextNewDocument(nullptr); });
    run("LINE\n");
    finish();
    EXPECT_FALSE(host.commandLine().commandActive());
    EXPECT_TRUE(entities().empty());
}
