// The main window in use over 100,000 entities, its canvas 1280 x 800: from a mouse move to what the screen shows, with
// the cross-hair, a rubber band, object snap, and with the entity under the pick box found and highlighted.
#include "ap/drawing_views.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/open.h"
#include "ed/host.h"
#include "limits.h"
#include "processor_time.h"
#include "screen/memory.h"
#include "ui/canvas.h"
#include "ui/main_frame.h"
#include "win32/desktop.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <random>
#include <string>

namespace {

using vndk::host::PromptRequest;
using vndk::screen::Event;

constexpr int kWidth = 1280, kHeight = 800;
constexpr int kMany = 100'000;
constexpr double kLength = 30;
constexpr short kUsualSnaps = 4133; // ends, centres, intersections, extensions

std::map<std::string, double> g_median; // milliseconds by name

void draw(AcDbDatabase& database) {
    std::mt19937 random(7);
    std::uniform_real_distribution across(0.0, double{kWidth}), down(0.0, double{kHeight}), around(0.0, 6.2831853);
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    for (int i = 0; i < kMany; ++i) {
        const AcGePoint3d from(across(random), down(random), 0);
        const double angle = around(random);
        auto* const line = new AcDbLine(from, from + AcGeVector3d(std::cos(angle), std::sin(angle), 0) * kLength);
        if (space->appendAcDbEntity(line) != Acad::eOk)
            std::exit(1);
        line->close();
    }
}

/// The main window before a user, as many pixels as units in its drawing.
class Workplace {
public:
    Workplace() {
        host.documents().appContextNewDocument(nullptr);
        AcApDocument& document = *host.documents().curDocument();
        document.database()->disableUndoRecording(true);
        draw(*document.database());
        if (!frame.open())
            std::exit(1);
        CRect outer, inner;
        frame.GetWindowRect(outer);
        frame.canvas().GetClientRect(inner);
        frame.MoveWindow(0, 0, outer.Width() + kWidth - inner.Width(), outer.Height() + kHeight - inner.Height());
        document.views().show({{kWidth / 2.0, kHeight / 2.0, 0}, kHeight});
        frame.canvas().follow();
        desktop.settle();
        frame.canvas().ClientToScreen(&corner);
    }
    ~Workplace() { frame.leave(); }
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    void moveTo(int x, int y) {
        Event event;
        event.kind = Event::Kind::mouseMove;
        event.x = corner.x + x;
        event.y = corner.y + y;
        screen.post(event);
        desktop.settle();
    }
    /// To the next of many places all over the canvas.
    void move() {
        ++step;
        moveTo(100 + step * 37 % 1000, 100 + step * 53 % 600);
    }

    vndk::screen::MemoryScreen screen{kWidth + 200, kHeight + 300};
    vndk::win32::Desktop desktop{screen};
    vndk::host::Host host;
    vndk::host::MainFrame frame{host};
    CPoint corner; // of the canvas on the screen
    int step = 0;
};

void moveWith(benchmark::State& state, const std::string& name, const PromptRequest& request, short snaps) {
    Workplace place;
    CRect client;
    place.frame.canvas().GetClientRect(client);
    if (client.Width() != kWidth || client.Height() != kHeight)
        return state.SkipWithError("the canvas hasn't got its size");
    place.host.variables().set("OSMODE", snaps);
    place.host.variables().set("CURSORSIZE", short{100}); // from edge to edge
    const bool asks = request.kind != PromptRequest::Kind::Command;
    if (asks)
        place.frame.canvas().beginPrompt(request);
    place.move();
    static_cast<void>(place.screen.takePresented());
    g_median[name] = vndk::bench::median(
        vndk::bench::sortedRounds(state, [&] { return vndk::bench::timed([&] { place.move(); }); }));
    if (place.screen.takePresented() == 0)
        state.SkipWithError("nothing was shown");
    if (asks)
        place.frame.canvas().endPrompt();
}

void crossHair(benchmark::State& state) { moveWith(state, "cross", {}, 0); }
BENCHMARK(crossHair)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);

void rubberBand(benchmark::State& state) {
    moveWith(state, "band", {.text = {}, .kind = PromptRequest::Kind::Point, .base = AcGePoint3d(600, 400, 0)}, 0);
}
BENCHMARK(rubberBand)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);

void objectSnap(benchmark::State& state) {
    moveWith(state, "snap", {.text = {}, .kind = PromptRequest::Kind::Point}, kUsualSnaps);
}
BENCHMARK(objectSnap)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);

void hover(benchmark::State& state) { moveWith(state, "hover", {.text = {}, .kind = PromptRequest::Kind::Entity}, 0); }
BENCHMARK(hover)->UseManualTime()->Iterations(300)->Unit(benchmark::kMillisecond);

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    vndk::bench::Limits limits;
    limits.atMost("a mouse move with the cross-hair to the screen, ms", g_median["cross"], 2);
    limits.atMost("the same with a rubber band, ms", g_median["band"], 2);
    limits.atMost("the same with object snap, ms", g_median["snap"], 2);
    limits.atMost("the same with the entity under the pick box highlighted, ms", g_median["hover"], 1);
    return limits.exitStatus();
}
