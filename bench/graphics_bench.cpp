// Pictures of large drawings: many segments beside Cairo in the same run, frames of a drag, the entity at a point, one
// entity changed, from a file to its picture, and a shaded surface.
#include "db/curves.h"
#include "db/database.h"
#include "db/open.h"
#include "db/solids.h"
#include "db/stub.h"
#include "dwg/active_view.h"
#include "gs/manager.h"
#include "limits.h"
#include "plan_drawing.h"
#include "processor_time.h"

#include <benchmark/benchmark.h>
#include <cairo.h>
#include <malloc.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr int kWidth = 1280, kHeight = 800;
constexpr int kMany = 100'000, kVeryMany = 1'000'000;
constexpr double kLength = 30;

std::map<std::string, std::vector<double>> g_rounds; // milliseconds by name, in ascending order

template <class F>
void measure(benchmark::State& state, const std::string& name, F&& work) {
    g_rounds[name] = vndk::bench::sortedRounds(state, [&] { return vndk::bench::timed(work); });
}

double median(const std::string& name) { return g_rounds[name].empty() ? 0 : vndk::bench::median(g_rounds[name]); }
double longest(const std::string& name) { return g_rounds[name].empty() ? 0 : g_rounds[name].back(); }

struct Segment {
    AcGePoint3d from, to;
};

std::vector<Segment> segments(int count) {
    std::mt19937 random(7);
    std::uniform_real_distribution across(0.0, double{kWidth}), down(0.0, double{kHeight}), around(0.0, 6.2831853);
    std::vector<Segment> made;
    for (int i = 0; i < count; ++i) {
        const AcGePoint3d from(across(random), down(random), 0);
        const double angle = around(random);
        made.push_back({from, from + AcGeVector3d(std::cos(angle), std::sin(angle), 0) * kLength});
    }
    return made;
}

/// A view on a device in memory that shows as many pixels as units.
class Scene {
public:
    Scene() : device(manager.createAutoCADOffScreenDevice()), model(manager.createAutoCADModel()) {
        view = manager.getGSClassFactory()->createView();
        device->onSize(kWidth, kHeight);
        device->add(view);
        view->setView({kWidth / 2.0, kHeight / 2.0, 1}, {kWidth / 2.0, kHeight / 2.0, 0}, AcGeVector3d::kYAxis, kWidth,
                      kHeight);
    }
    ~Scene() {
        manager.getGSClassFactory()->deleteView(view);
        manager.destroyAutoCADModel(model);
        manager.destroyAutoCADDevice(device);
    }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    void show(AcDbDatabase& database) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
        view->add(space.object(), model);
    }
    void draw() {
        view->invalidate();
        device->update();
    }

    AcGsManager& manager = *acgsGetGsManager();
    AcGsDevice* device;
    AcGsModel* model;
    AcGsView* view = nullptr;
};

/// Lines in a drawing, the same ones as long as their number is.
class Lines {
public:
    explicit Lines(int count) {
        database.disableUndoRecording(true);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        for (const Segment& segment : segments(count)) {
            auto* const line = new AcDbLine(segment.from, segment.to);
            AcDbObjectId id;
            if (space->appendAcDbEntity(id, line) != Acad::eOk)
                std::exit(1);
            line->close();
            ids.push_back(id);
        }
    }
    AcDbDatabase database{true, true};
    std::vector<AcDbObjectId> ids;
};

Lines& lines(int count) {
    static std::unique_ptr<Lines> made;
    if (!made || static_cast<int>(made->ids.size()) != count) {
        made.reset();
        made = std::make_unique<Lines>(count);
    }
    return *made;
}

void segmentsOfOurs(benchmark::State& state) {
    Scene scene;
    scene.show(lines(kMany).database);
    scene.draw();
    measure(state, "segments", [&] { scene.draw(); });
}
BENCHMARK(segmentsOfOurs)->UseManualTime()->Iterations(40)->Unit(benchmark::kMillisecond);

void segmentsOfCairo(benchmark::State& state) {
    const std::vector<Segment> drawn = segments(kMany);
    cairo_surface_t* const surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight);
    cairo_t* const context = cairo_create(surface);
    cairo_set_antialias(context, CAIRO_ANTIALIAS_NONE);
    cairo_set_line_width(context, 1);
    measure(state, "cairo", [&] {
        cairo_set_source_rgb(context, 0, 0, 0);
        cairo_paint(context);
        cairo_set_source_rgb(context, 1, 1, 1);
        for (const Segment& segment : drawn) {
            cairo_move_to(context, segment.from.x, segment.from.y);
            cairo_line_to(context, segment.to.x, segment.to.y);
            cairo_stroke(context);
        }
        cairo_surface_flush(surface);
    });
    cairo_destroy(context);
    cairo_surface_destroy(surface);
}
BENCHMARK(segmentsOfCairo)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

void entityAtAPoint(benchmark::State& state) {
    Scene scene;
    Lines& drawn = lines(kMany);
    scene.show(drawn.database);
    scene.draw();
    std::mt19937 random(3);
    AcDbObjectId found = scene.view->entityAt({0, 0}, 3);
    int hits = 0;
    measure(state, "pick", [&] {
        const AcGsDCPoint at{static_cast<int>(random() % kWidth), static_cast<int>(random() % kHeight)};
        found = scene.view->entityAt(at, 3);
        hits += !found.isNull();
    });
    if (hits == 0)
        state.SkipWithError("nothing was hit");
}
BENCHMARK(entityAtAPoint)->UseManualTime()->Iterations(500)->Unit(benchmark::kMicrosecond);

void oneEntityChanged(benchmark::State& state) {
    Scene scene;
    Lines& drawn = lines(kMany);
    scene.show(drawn.database);
    scene.draw();
    size_t next = 0;
    measure(state, "change", [&] {
        next = (next + 7919) % drawn.ids.size();
        AcDbLine* line = nullptr;
        if (acdbOpenObject(line, drawn.ids[next], AcDb::kForWrite) != Acad::eOk)
            return state.SkipWithError("a line can't be opened");
        line->setEndPoint(line->endPoint() + AcGeVector3d(1, 0, 0));
        line->close();
        scene.draw();
    });
}
BENCHMARK(oneEntityChanged)->UseManualTime()->Iterations(40)->Unit(benchmark::kMillisecond);

void restAtAMillion(benchmark::State& state) {
    Scene scene;
    scene.show(lines(kVeryMany).database);
    scene.draw();
    measure(state, "rest", [&] { scene.draw(); });
}
BENCHMARK(restAtAMillion)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

void dragAtAMillion(benchmark::State& state) {
    Scene scene;
    scene.show(lines(kVeryMany).database);
    scene.draw();
    const std::function<void()> steps[] = {[&] { scene.view->dolly(3, 2, 0); }, [&] { scene.view->zoom(1.05); },
                                           [&] { scene.view->orbit(0.02, 0.01); }, [&] { scene.view->zoom(0.9); }};
    size_t step = 0;
    scene.view->setInteractive(true);
    measure(state, "drag", [&] {
        steps[step++ / 10 % std::size(steps)]();
        scene.draw();
    });
}
BENCHMARK(dragAtAMillion)->UseManualTime()->Iterations(120)->Unit(benchmark::kMillisecond);

/// A wavy sheet of 100,000 triangles.
void orbitOfASurface(benchmark::State& state) {
    constexpr int kSide = 224;
    AcDbDatabase database(true, true);
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        const auto at = [](int i, int j) {
            return AcGePoint3d(240 + i * 800.0 / kSide, j * 800.0 / kSide, 60 * std::sin(i / 9.0) * std::cos(j / 11.0));
        };
        for (int i = 0; i < kSide; ++i)
            for (int j = 0; j < kSide; ++j) {
                auto* const face = new AcDbFace;
                face->setFileData({{at(i, j), at(i + 1, j), at(i + 1, j + 1), at(i, j + 1)}, 0});
                face->setColorIndex(1 + i % 6);
                if (space->appendAcDbEntity(face) != Acad::eOk)
                    std::exit(1);
                face->close();
            }
    }
    Scene scene;
    scene.show(database);
    scene.view->setMode(AcGsView::kGouraudShadedWithWireframe);
    scene.draw();
    measure(state, "surface at rest", [&] { scene.draw(); });
    scene.view->setInteractive(true);
    std::vector<double>& frames = g_rounds["surface"];
    for (int i = 0; i < 60; ++i)
        frames.push_back(1000 * vndk::bench::timed([&] {
                             scene.view->orbit(0.03, 0.02);
                             scene.draw();
                         }));
    std::sort(frames.begin(), frames.end());
}
BENCHMARK(orbitOfASurface)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

std::string g_drawing; // a file of 150,000 objects

std::unique_ptr<AcDbDatabase> readDrawing() {
    auto database = std::make_unique<AcDbDatabase>(false, true);
    if (database->readDwgFile(g_drawing.c_str()) == Acad::eOk)
        return database;
    std::fprintf(stderr, "%s\n", database->lastFileError().c_str());
    std::exit(1);
}

/// A drawing opened, and a place to show it.
struct Opened {
    std::unique_ptr<AcDbDatabase> database;
    std::unique_ptr<Scene> scene;

    void show(const AcGePoint3d& eye, const AcGePoint3d& center, const AcGeVector3d& up, double width, double height) {
        scene->view->setView(eye, center, up, width, height);
        scene->show(*database);
        scene->draw();
    }
};

[[noreturn]] void fail(const char* why) {
    std::fprintf(stderr, "%s\n", why);
    std::exit(1);
}

void decodeAll(Opened& opened) {
    for (AcDbStub& stub : opened.database->stubs())
        benchmark::DoNotOptimize(opened.database->objectOf(stub));
}

/// As a window shows it: what was seen when the drawing was saved.
void showAsSaved(Opened& opened) {
    opened.scene = std::make_unique<Scene>();
    const auto saved = vndk::dwg::activeView(*opened.database, true);
    if (!saved)
        fail("the drawing has no view");
    opened.show(saved->center + saved->direction, saved->center, saved->up, 1e-9, saved->height);
}

void showAll(Opened& opened) {
    opened.scene = std::make_unique<Scene>();
    AcDbExtents extents;
    if (!opened.scene->model->visibleExtents(opened.database->modelSpaceId(), extents))
        fail("the drawing shows nothing");
    const AcGePoint3d middle = extents.minPoint() + (extents.maxPoint() - extents.minPoint()) * 0.5;
    opened.show(middle + AcGeVector3d::kZAxis, middle, AcGeVector3d::kYAxis,
                extents.maxPoint().x - extents.minPoint().x, extents.maxPoint().y - extents.minPoint().y);
}

/// By turns, so that a machine that slows down does so for all. Each begins as a program does that was just started:
/// without memory that others have left behind.
void opening(benchmark::State& state) {
    struct Kind {
        const char* name;
        void (*use)(Opened&);
    };
    constexpr Kind kKinds[] = {{"codec", decodeAll}, {"as saved", showAsSaved}, {"all", showAll}};
    for (auto _ : state) {
        double total = 0;
        for (const Kind& kind : kKinds) {
            Opened opened;
            malloc_trim(0);
            const double seconds = vndk::bench::timed([&] {
                opened.database = readDrawing();
                kind.use(opened);
            });
            g_rounds[kind.name].push_back(seconds * 1000);
            total += seconds;
        }
        state.SetIterationTime(total);
    }
    for (const Kind& kind : kKinds)
        std::sort(g_rounds[kind.name].begin(), g_rounds[kind.name].end());
}
BENCHMARK(opening)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);

int run(const fs::path& folder) {
    const char* const drawings = std::getenv("VONDRAKE_DRAWINGS");
    const fs::path real = drawings ? fs::path(drawings) / "big" / "plan-150k.dwg" : fs::path();
    g_drawing = !real.empty() && fs::exists(real) ? real : folder / "plan.dwg";
    if (g_drawing != real && !vndk::bench::makePlanDrawing(g_drawing))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    std::printf("\n100,000 segments through Cairo %.1f ms, 100,000 triangles at rest %.1f ms\n", median("cairo"),
                median("surface at rest"));
    std::printf("codec %.1f ms, picture as saved %.1f ms, of all %.1f ms\n", median("codec"), median("as saved"),
                median("all"));
    vndk::bench::Limits limits;
    limits.atMost("100,000 segments of 30 pixels, ms", median("segments"), 8);
    limits.atMost("the entity at a point among 100,000, the longest of 500, ms", longest("pick"), 1);
    limits.atMost("one of 100,000 entities changed to the picture, ms", median("change"), 12);
    limits.atMost("1,000,000 segments at rest, ms", median("rest"), 150);
    limits.atMost("1,000,000 segments dragged, the longest frame, ms", longest("drag"), 33);
    limits.atMost("100,000 triangles shaded and turned, the longest frame, ms", longest("surface"), 33);
    limits.atMost("a drawing to its first picture, times the codec", median("as saved") / median("codec"), 2);
    limits.atMost("the same, showing all of it", median("all") / median("codec"), 2);
    return limits.exitStatus();
}

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    const fs::path folder = fs::temp_directory_path() / ("vondrake-graphics-" + std::to_string(getpid()));
    std::error_code error;
    fs::create_directory(folder, error);
    const int status = run(folder);
    fs::remove_all(folder, error);
    return status;
}
