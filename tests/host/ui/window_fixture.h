// The main window on a screen in memory, with a user in front of it. What the user does happens while the program
// waits, wherever it waits.
#pragma once

#include "ap/drawing_views.h"
#include "support/desktop_fixture.h"
#include "ui/canvas.h"
#include "ui/main_frame.h"
#include "win32/user_script.h"

#include <algorithm>

class WindowTest : public vndk::test::DesktopFixture {
protected:
    static constexpr int kCanvas = 0xE900;

    WindowTest() {
        host.documents().appContextNewDocument(nullptr);
        EXPECT_TRUE(frame.open());
        frame.SetFocus();
        // Ten pixels to a drawing unit, the origin in the middle.
        look({0, 0, 0}, canvas().Height() / 10.0);
        host.variables().set("OSMODE", short{0});
    }
    ~WindowTest() override { frame.leave(); }

    AcApDocument& document() { return *host.documents().curDocument(); }
    AcDbDatabase& database() { return *document().database(); }
    void look(const AcGePoint3d& center, double height) {
        document().views().show({center, height});
        frame.canvas().follow();
        settle();
    }
    CRect canvas() {
        CRect client;
        frame.canvas().GetClientRect(client);
        return client;
    }
    /// The pixel of a point of the drawing, as long as the origin is in the middle.
    POINT at(double x, double y) {
        return {canvas().Width() / 2 + static_cast<int>(x * 10), canvas().Height() / 2 - static_cast<int>(y * 10)};
    }
    /// 0xRRGGBB of a pixel of the drawing.
    std::uint32_t colorAt(POINT point) {
        const POINT place = onScreen(frame.canvas().m_hWnd, point.x, point.y);
        return pixel(place.x, place.y);
    }
    /// Pixels of the rectangle between two corners that aren't black.
    int litIn(POINT low, POINT high) {
        int lit = 0;
        for (LONG y = std::min(low.y, high.y); y <= std::max(low.y, high.y); ++y)
            for (LONG x = std::min(low.x, high.x); x <= std::max(low.x, high.x); ++x)
                lit += colorAt({x, y}) != 0;
        return lit;
    }
    /// Runs typed lines; the steps of `user` are done while their prompts wait.
    void run(std::string_view lines) {
        host.commandLine().input().feed(lines);
        frame.runInput();
        settle();
    }
    /// Delivers what waits as the program's own loop does.
    void pump() {
        MSG next{};
        while (PeekMessageA(&next, nullptr, 0, 0, PM_NOREMOVE) != FALSE)
            AfxPumpMessage();
        settle();
    }
    /// All steps have been done; the command has ended.
    void finish() {
        EXPECT_TRUE(steps.finish()) << steps.failure();
        settle();
    }
    std::vector<AcDbObjectId> entities() {
        std::vector<AcDbObjectId> ids;
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
        for (const AcDbObjectId id : space->entities())
            if (!id.isErased())
                ids.push_back(id);
        return ids;
    }

    vndk::host::Host host;
    vndk::host::MainFrame frame{host};
    vndk::win32::UserScript steps{screen};
};
