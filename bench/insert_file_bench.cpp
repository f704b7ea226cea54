// Insertions of a drawing file of 1,000 entities, three of them attribute definitions, from the text of the command
// line over LISP, the module and its prompts to the database. The first one of a file, against reading the same file
// and decoding what is in it; the later ones, which find the block in the drawing, against c:_bInsert of the same
// block.

#include "db/curves.h"
#include "db/stub.h"
#include "db/text.h"
#include "ed/host.h"
#include "limits.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>

namespace {

using vndk::host::Host;

constexpr int kEntities = 1'000;
constexpr int kFiles = 40;    // files for the first insertions, each with a name of its own
constexpr int kRepeated = 50; // short runs: the fastest is then one that nothing else broke into
constexpr int kRepetitions = 50;
constexpr const char* kAnswers = "Ada\n\nstudy 2\n";

[[noreturn]] void giveUp(const std::string& why) {
    std::fprintf(stderr, "The measurement can't be made: %s\n", why.c_str());
    std::exit(1);
}

bool append(AcDbBlockTableRecord& record, std::unique_ptr<AcDbEntity> entity) {
    return record.appendAcDbEntity(entity.get()) == Acad::eOk && entity.release()->close() == Acad::eOk;
}

/// The files, in a folder that goes with them.
class Library {
public:
    Library() {
        std::string name = (std::filesystem::temp_directory_path() / "vndk-insert-file-XXXXXX").string();
        folder_ = mkdtemp(name.data());
        AcDbDatabase drawing(true, true);
        if (!fill(drawing) || drawing.saveAs(path(0).c_str()) != Acad::eOk)
            giveUp("no drawing for it: " + drawing.lastFileError());
        for (int i = 1; i < kFiles; ++i)
            std::filesystem::copy_file(path(0), path(i));
    }
    ~Library() { std::filesystem::remove_all(folder_); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    static std::string block(int i) { return "part" + std::to_string(i); }
    std::string path(int i) const { return (folder_ / (block(i) + ".dwg")).string(); }

private:
    static bool fill(AcDbDatabase& drawing) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
        bool well = true;
        for (const char* const tag : {"OWNER", "SIZE", "ROOM"})
            well = well && append(*space, std::make_unique<AcDbAttributeDefinition>(AcGePoint3d(), "-", tag, tag));
        for (int i = 3; well && i < kEntities; ++i)
            well = append(*space, std::make_unique<AcDbLine>(AcGePoint3d(i, 0, 0), AcGePoint3d(0, i, 0)));
        return well;
    }

    std::filesystem::path folder_;
};

const Library& library() {
    static const Library files;
    return files;
}

/// A host with the module and an empty drawing.
class Drawing {
public:
    Drawing() {
        bool well = host_.linker().loadModule(OBJECTS_FILE, false);
        well = well && host_.documents().appContextNewDocument(nullptr) == Acad::eOk;
        well = well && host_.linker().loadModule(MODULE_FILE, false);
        if (!well)
            giveUp(host_.linker().lastError());
    }

    /// Runs the lines and gives the seconds that they took.
    double run(const std::string& lines) {
        const auto start = std::chrono::steady_clock::now();
        if (const auto problem = host_.runText(lines))
            giveUp(problem->message);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    double insertFile(int i, int times = 1) {
        std::string lines;
        for (int k = 0; k < times; ++k)
            lines += "(c:_bInsertFile \"" + library().path(i) + "\" (list " + std::to_string(k) + ".5 0.0 0.0))\n" +
                     kAnswers;
        return run(lines);
    }
    double insertBlock(int i, int times) {
        std::string lines;
        for (int k = 0; k < times; ++k)
            lines += "(c:_bInsert \"" + Library::block(i) + "\" (list " + std::to_string(k) + ".5 0.0 0.0))\n";
        return run(lines);
    }
    size_t handles() { return host_.documents().curDocument()->database()->handseed().value(); }

private:
    Host host_;
};

double first = 0, reading = 0, repeated = 0, byName = 0; // seconds of one, the fastest: others use the machine too

void note(benchmark::State& state, double& best, double seconds, int count = 1) {
    state.SetIterationTime(seconds);
    best = best == 0 ? seconds / count : std::min(best, seconds / count);
}

void insertNewFiles(benchmark::State& state) {
    Drawing drawing;
    int i = 0;
    for (auto _ : state) {
        const size_t handles = drawing.handles();
        note(state, first, drawing.insertFile(i++));
        if (drawing.handles() - handles < kEntities)
            giveUp("the insertion didn't make what it should");
    }
}
BENCHMARK(insertNewFiles)->UseManualTime()->Iterations(kFiles)->Unit(benchmark::kMillisecond);

void readFiles(benchmark::State& state) {
    int i = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        AcDbDatabase drawing(false, true);
        if (drawing.readDwgFile(library().path(i++).c_str()) != Acad::eOk)
            giveUp(drawing.lastFileError());
        for (AcDbStub& stub : drawing.stubs())
            benchmark::DoNotOptimize(drawing.objectOf(stub));
        note(state, reading, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
}
BENCHMARK(readFiles)->UseManualTime()->Iterations(kFiles)->Unit(benchmark::kMillisecond);

void insertKnownFile(benchmark::State& state) {
    Drawing drawing;
    drawing.insertFile(0);
    for (auto _ : state)
        note(state, repeated, drawing.insertFile(0, kRepeated), kRepeated);
}
BENCHMARK(insertKnownFile)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

void insertSameBlockByName(benchmark::State& state) {
    Drawing drawing;
    drawing.insertFile(0);
    for (auto _ : state)
        note(state, byName, drawing.insertBlock(0, kRepeated), kRepeated);
}
BENCHMARK(insertSameBlockByName)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    std::printf("\na drawing of %d entities: first insertion %.2f ms, reading it %.2f ms; later insertions %.3f ms, "
                "c:_bInsert of its block %.3f ms\n",
                kEntities, first * 1e3, reading * 1e3, repeated * 1e3, byName * 1e3);
    vndk::bench::Limits limits;
    limits.atMost("first insertion, times reading the file", first / reading, 6);
    limits.atMost("later insertion, times c:_bInsert of the block", repeated / byName, 1.5);
    return limits.exitStatus();
}
