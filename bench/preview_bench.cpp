// The preview's control in use: an orbit step over a block of 100,000 segments, from a mouse move to what the screen
// shows, and a drawing of 10 MB opened, beside the codec's time for the same file.
#include "db/block_table.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/open.h"
#include "db/stub.h"
#include "ed/host.h"
#include "limits.h"
#include "plan_drawing.h"
#include "previews/gs_preview_ctrl.h"
#include "processor_time.h"
#include "screen/memory.h"
#include "win32/desktop.h"
#include "win32/drive_map.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <string>

// What the module answers when it is loaded; cursors aren't measured.
HINSTANCE ModuleInstance() { return nullptr; }

namespace {

namespace fs = std::filesystem;
using vndk::screen::Event;

constexpr int kWidth = 800, kHeight = 600;
constexpr int kMany = 100'000;
constexpr double kLength = 30;
constexpr double kPlans = 1.35; // of the usual plan: 10 MB

std::map<std::string, double> g_median; // milliseconds by name
fs::path g_folder;

template <class F>
void measure(benchmark::State& state, const std::string& name, F&& work) {
    g_median[name] = vndk::bench::median(vndk::bench::sortedRounds(state, [&] { return vndk::bench::timed(work); }));
}

void addBlock(AcDbDatabase& database) {
    std::mt19937 random(7);
    std::uniform_real_distribution place(0.0, double{kHeight}), around(0.0, 6.2831853);
    const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
    auto* const record = new AcDbBlockTableRecord;
    record->setName("MANY");
    AcDbObjectId id;
    if (table->add(id, record) != Acad::eOk)
        std::exit(1);
    for (int i = 0; i < kMany; ++i) {
        const AcGePoint3d from(place(random), place(random), place(random));
        const double along = around(random), up = around(random);
        auto* const line = new AcDbLine(
            from, from + AcGeVector3d(std::cos(along) * std::cos(up), std::sin(along) * std::cos(up), std::sin(up)) *
                             kLength);
        if (record->appendAcDbEntity(line) != Acad::eOk)
            std::exit(1);
        line->close();
    }
    record->close();
}

/// The control in a window of its own.
class Workplace {
public:
    Workplace() {
        host.documents().appContextNewDocument(nullptr);
        database().disableUndoRecording(true);
        host.setAlert([](std::string_view text) {
            std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
            std::exit(1);
        });
        if (!parent.CreateEx(0, AfxRegisterWndClass(CS_DBLCLKS), "", WS_POPUP | WS_VISIBLE, 0, 0, kWidth, kHeight,
                             nullptr, nullptr) ||
            !ctrl.Create("", WS_CHILD | WS_VISIBLE, CRect(0, 0, kWidth, kHeight), &parent, 1100))
            std::exit(1);
        desktop.settle();
    }
    ~Workplace() {
        ctrl.DestroyWindow();
        parent.DestroyWindow();
    }
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    AcDbDatabase& database() { return *host.documents().curDocument()->database(); }
    void send(Event::Kind kind, int x, int y) {
        Event event;
        event.kind = kind;
        event.x = x;
        event.y = y;
        event.held.left = true;
        screen.post(event);
        desktop.settle();
    }

    vndk::screen::MemoryScreen screen{kWidth, kHeight};
    vndk::win32::Desktop desktop{screen};
    vndk::host::Host host;
    CWnd parent;
    CGsPreviewCtrl ctrl;
};

void orbitStep(benchmark::State& state) {
    Workplace place;
    addBlock(place.database());
    place.ctrl.LoadBlock("MANY");
    place.ctrl.mMode = CGsPreviewCtrl::kOrbit;
    constexpr int x = kWidth / 2;
    int step = 0;
    place.send(Event::Kind::mouseMove, x, kHeight / 2);
    place.send(Event::Kind::mouseDown, x, kHeight / 2);
    static_cast<void>(place.screen.takePresented());
    measure(state, "orbit", [&] {
        ++step;
        place.send(Event::Kind::mouseMove, x + 2 * step, kHeight / 2 + step % 3);
    });
    if (place.screen.takePresented() == 0)
        state.SkipWithError("nothing was shown");
}
BENCHMARK(orbitStep)->UseManualTime()->Iterations(60)->Unit(benchmark::kMillisecond);

void readingAndDecoding(benchmark::State& state) {
    std::unique_ptr<AcDbDatabase> database;
    measure(state, "codec", [&] {
        database = std::make_unique<AcDbDatabase>(false, true);
        if (database->readDwgFile((g_folder / "plan.dwg").c_str()) != Acad::eOk)
            return state.SkipWithError("the drawing can't be read");
        for (AcDbStub& stub : database->stubs())
            benchmark::DoNotOptimize(database->objectOf(stub));
    });
}
BENCHMARK(readingAndDecoding)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);

void openingADrawing(benchmark::State& state) {
    Workplace place;
    static_cast<void>(place.screen.takePresented());
    measure(state, "open", [&] {
        place.ctrl.LoadDrawing("T:\\plan.dwg");
        place.desktop.settle();
    });
    if (place.screen.takePresented() == 0)
        state.SkipWithError("nothing was shown");
}
BENCHMARK(openingADrawing)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);

int run() {
    const fs::path drawing = g_folder / "plan.dwg";
    if (!vndk::bench::makePlanDrawing(drawing, kPlans) || !vndk::win32::DriveMap::current().map('T', g_folder).ok())
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    std::printf("\na drawing of %.1f MB, codec %.1f ms\n", static_cast<double>(fs::file_size(drawing)) / 1e6,
                g_median["codec"]);
    vndk::bench::Limits limits;
    limits.atMost("an orbit step over 100,000 segments to the screen, ms", g_median["orbit"], 16);
    limits.atMost("a drawing to its preview, times the codec", g_median["open"] / g_median["codec"], 2);
    return limits.exitStatus();
}

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    g_folder = fs::temp_directory_path() / ("vondrake-preview-" + std::to_string(getpid()));
    std::error_code error;
    fs::create_directory(g_folder, error);
    const int status = run();
    fs::remove_all(g_folder, error);
    return status;
}
