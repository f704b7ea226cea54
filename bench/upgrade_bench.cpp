// What the module's watch costs a BLOCK or INSERT in a full drawing: the look for the last plain reference at the end
// of the command, with none there, so that all of the space is looked at.

#include "db/curves.h"
#include "db/database.h"
#include "ed/host.h"
#include "limits.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>

namespace {

using vndk::host::Host;

constexpr int kEntities = 100'000;
constexpr int kRepetitions = 15;
constexpr double kMillisecond = 1e3;

constexpr const char* kMakeBlock = "ATTDEF\n\nNAME\nName\ndesk\n10,20\n2.5\n0\n"
                                   "ATTDEF\n\nSIZE\nSize\n1600 x 800\n10,16\n2.5\n0\n"
                                   "ATTDEF\n\nPRICE\nPrice\n420\n10,12\n2.5\n0\n"
                                   "LINE 0,0 30,0 30,15 0,15 C\n"
                                   "BLOCK DESK 0,0 ALL\n\n";
constexpr int kEntitiesOfInsertion = 4;

[[noreturn]] void giveUp(const std::string& why) {
    std::fprintf(stderr, "The drawing can't be made: %s\n", why.c_str());
    std::exit(1);
}

/// A host with the module and a drawing.
class Drawing {
public:
    Drawing() {
        if (!host_.linker().loadModule(OBJECTS_FILE, false) ||
            host_.documents().appContextNewDocument(nullptr) != Acad::eOk ||
            !host_.linker().loadModule(MODULE_FILE, false))
            giveUp(host_.linker().lastError());
    }

    void addLines() {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
        for (int i = 0; i < kEntities; ++i) {
            auto* const line = new AcDbLine({double(i), 0, 0}, {double(i), 1, 0});
            space->appendAcDbEntity(line);
            line->close();
        }
    }
    void addIntelligentBlocks() {
        std::string text = kMakeBlock;
        for (int i = 0; i < kEntities / kEntitiesOfInsertion; ++i)
            text += "(c:_bInsert \"DESK\" (list " + std::to_string(i) + ".0 0.0 0.0))\n";
        if (const auto problem = host_.runText(text))
            giveUp(problem->message);
    }
    /// Saves, closes and opens again: nothing is decoded then.
    void reopen() {
        const std::string path =
            (std::filesystem::temp_directory_path() / ("upgrade-bench-" + std::to_string(getpid()) + ".dwg")).string();
        if (database().saveAs(path.c_str()) != Acad::eOk)
            giveUp(database().lastFileError());
        host_.documents().closeDocument(host_.documents().curDocument());
        host_.documents().releaseClosed();
        const bool opened = host_.documents().appContextOpenDocument(path.c_str()) == Acad::eOk;
        std::filesystem::remove(path);
        if (!opened)
            giveUp(host_.documents().lastError());
    }

    /// Milliseconds of the events of one command.
    double watchCommand() {
        auto& reactors = host_.editor().reactors();
        reactors.tell([](AcEditorReactor& r) { r.commandWillStart("INSERT"); });
        const auto start = std::chrono::steady_clock::now();
        reactors.tell([](AcEditorReactor& r) { r.commandEnded("INSERT"); });
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() * kMillisecond;
    }

private:
    AcDbDatabase& database() { return *host_.documents().curDocument()->database(); }

    Host host_;
};

struct Figures {
    double first = 0, best = 1e9;
};

Figures newLines, readLines, readBlocks;

void watch(benchmark::State& state, Drawing& drawing, Figures& figures) {
    for (auto _ : state) {
        const double milliseconds = drawing.watchCommand();
        figures.first = figures.first == 0 ? milliseconds : figures.first;
        figures.best = std::min(figures.best, milliseconds);
        state.SetIterationTime(milliseconds / kMillisecond);
    }
    state.counters["first ms"] = figures.first;
}

void linesJustDrawn(benchmark::State& state) {
    Drawing drawing;
    drawing.addLines();
    watch(state, drawing, newLines);
}
BENCHMARK(linesJustDrawn)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

void linesOfAFile(benchmark::State& state) {
    Drawing drawing;
    drawing.addLines();
    drawing.reopen();
    watch(state, drawing, readLines);
}
BENCHMARK(linesOfAFile)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

void intelligentBlocksOfAFile(benchmark::State& state) {
    Drawing drawing;
    drawing.addIntelligentBlocks();
    drawing.reopen();
    watch(state, drawing, readBlocks);
}
BENCHMARK(intelligentBlocksOfAFile)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    // References that extended data may have made Intelligent have to be decoded, once.
    std::printf("\nfirst look at %d entities of Intelligent Blocks in a file: %.1f ms\n", kEntities, readBlocks.first);
    vndk::bench::Limits limits;
    limits.atMost("ms to look at 100,000 lines just drawn", newLines.best, 5);
    limits.atMost("ms to look at 100,000 lines of a file that was just read", readLines.best, 5);
    limits.atMost("ms to look at 100,000 entities of Intelligent Blocks again", readBlocks.best, 5);
    return limits.exitStatus();
}
