// The host's own INSERT of a block with three attributes, from the text of the command line to the database: what one
// costs in an empty drawing and in one of 100,000 entities, and what the line costs when another command takes it. The
// same with the module, which makes an Intelligent Block of each.

#include "ed/host.h"
#include "limits.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace {

using vndk::host::Host;

constexpr int kFullDrawing = 100'000;
constexpr int kTimed = 250; // short runs: the fastest is then one that nothing else broke into
constexpr int kRepetitions = 40;

constexpr const char* kMakeBlock = "ATTDEF\n\nNAME\nName\ndesk\n10,20\n2.5\n0\n"
                                   "ATTDEF\n\nSIZE\nSize\n1600 x 800\n10,16\n2.5\n0\n"
                                   "ATTDEF\n\nPRICE\nPrice\n420\n10,12\n2.5\n0\n"
                                   "LINE 0,0 30,0 30,15 0,15 C\n"
                                   "BLOCK DESK 0,0 ALL\n\n";

[[noreturn]] void giveUp(const std::string& why) {
    std::fprintf(stderr, "The measurement can't be made: %s\n", why.c_str());
    std::exit(1);
}

enum class Module { kAway, kLoaded };

/// A drawing that holds the block, and as many lines as it is told.
class Drawing {
public:
    explicit Drawing(int lines, Module module = Module::kAway) {
        const bool loads = module == Module::kLoaded;
        bool well = !loads || host_.linker().loadModule(OBJECTS_FILE, false);
        well = well && host_.documents().appContextNewDocument(nullptr) == Acad::eOk;
        well = well && (!loads || host_.linker().loadModule(MODULE_FILE, false));
        if (!well)
            giveUp(host_.linker().lastError());
        run(kMakeBlock);
        repeat(lines, "LINE 0,0 10,10\n\n");
    }

    /// Runs a script that many times and gives the seconds that it took.
    double repeat(int count, const std::string& script) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += script;
        const auto start = std::chrono::steady_clock::now();
        run(text);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    size_t handles() const { return host_.documents().curDocument()->database()->handseed().value(); }

private:
    void run(const std::string& text) {
        if (const auto problem = host_.runText(text))
            giveUp(problem->message);
    }

    mutable Host host_;
};

/// Seconds for one command, the fastest of some runs: others use the machine too.
double secondsForOne(Drawing& drawing, benchmark::State& state, const std::string& script) {
    double best = 1e9;
    for (auto _ : state) {
        const double seconds = drawing.repeat(kTimed, script);
        best = std::min(best, seconds);
        state.SetIterationTime(seconds);
    }
    state.SetItemsProcessed(state.iterations() * kTimed);
    return best / kTimed;
}

constexpr const char* kInsert = "-INSERT DESK 12.5,7.25 2 2 30\nfirst\nsecond\nthird\n";
// Watched by the module, which asks in the host's place.
constexpr const char* kWatched = "INSERT DESK 12.5,7.25 2 2 30\nfirst\nsecond\nthird\n";
// As many objects and answers, without a block: what prompts, undo and new entities cost in any case.
constexpr const char* kPeer = "LINE 12.5,7.25 2,2 30,0 4,4 5,5 6,6\n\n";

double empty = 0, full = 0, peer = 0, upgradedEmpty = 0, upgradedFull = 0;

void insertIntoEmptyDrawing(benchmark::State& state) {
    Drawing drawing(0);
    empty = secondsForOne(drawing, state, kInsert);
}
BENCHMARK(insertIntoEmptyDrawing)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

void insertIntoFullDrawing(benchmark::State& state) {
    Drawing drawing(kFullDrawing);
    const size_t handles = drawing.handles();
    full = secondsForOne(drawing, state, kInsert);
    // A reference, three attributes and what ends them each, or the figures would be those of something else.
    if (drawing.handles() - handles < size_t{5} * kTimed * kRepetitions)
        giveUp("the insertions didn't make what they should");
}
BENCHMARK(insertIntoFullDrawing)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

void drawLinesInFullDrawing(benchmark::State& state) {
    Drawing drawing(kFullDrawing);
    peer = secondsForOne(drawing, state, kPeer);
}
BENCHMARK(drawLinesInFullDrawing)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

/// Besides what the host makes, an Intelligent Block with its three attributes.
void upgrade(benchmark::State& state, Drawing& drawing, double& seconds) {
    const size_t handles = drawing.handles();
    seconds = secondsForOne(drawing, state, kWatched);
    if (drawing.handles() - handles < size_t{9} * kTimed * kRepetitions)
        giveUp("the insertions weren't upgraded");
}

void upgradeInEmptyDrawing(benchmark::State& state) {
    Drawing drawing(0, Module::kLoaded);
    upgrade(state, drawing, upgradedEmpty);
}
BENCHMARK(upgradeInEmptyDrawing)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

void upgradeInFullDrawing(benchmark::State& state) {
    Drawing drawing(kFullDrawing, Module::kLoaded);
    upgrade(state, drawing, upgradedFull);
}
BENCHMARK(upgradeInFullDrawing)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    std::printf(
        "\nINSERT with three attributes: %.1f us in an empty drawing, %.1f us in one of %d; LINE of five: %.1f us\n",
        empty * 1e6, full * 1e6, kFullDrawing, peer * 1e6);
    std::printf("with the module: %.1f us in an empty drawing, %.1f us in the full one\n", upgradedEmpty * 1e6,
                upgradedFull * 1e6);
    vndk::bench::Limits limits;
    limits.atMost("INSERT in the full drawing, times that in the empty one", full / empty, 1.5);
    limits.atMost("INSERT with the module in the full drawing, times the empty one", upgradedFull / upgradedEmpty, 1.5);
    limits.atMost("INSERT with the module, times that without it", upgradedEmpty / empty, 3);
    limits.atMost("INSERT in the full drawing, times LINE of five lines", full / peer, 5);
    return limits.exitStatus();
}
