// Insertions of a block with three attributes through the whole road, from the text of the command line over LISP and
// the module to the database: how many a second, whether a full drawing makes them dearer, what one takes of memory,
// and how that stands to ezdxf's add_blockref and add_auto_attribs (ezdxf_insertions.py), measured in the same run.

#include "ed/host.h"
#include "limits.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace {

using vndk::host::Host;

constexpr int kSmallDrawing = 1'000;
constexpr int kFullDrawing = 100'000;
constexpr int kTimed = 2'000;
constexpr int kRepetitions = 5;

constexpr const char* kMakeBlock = "ATTDEF\n\nNAME\nName\ndesk\n10,20\n2.5\n0\n"
                                   "ATTDEF\n\nSIZE\nSize\n1600 x 800\n10,16\n2.5\n0\n"
                                   "ATTDEF\n\nPRICE\nPrice\n420\n10,12\n2.5\n0\n"
                                   "LINE 0,0 30,0 30,15 0,15 C\n"
                                   "BLOCK DESK 0,0 ALL\n\n";

/// A host with the module, and a drawing that holds the block.
class Drawing {
public:
    Drawing() {
        bool well = host_.linker().loadModule(OBJECTS_FILE, false);
        well = well && host_.documents().appContextNewDocument(nullptr) == Acad::eOk;
        well = well && host_.linker().loadModule(MODULE_FILE, false);
        well = well && !host_.runText(kMakeBlock);
        if (!well) {
            std::fprintf(stderr, "The drawing can't be made: %s\n", host_.linker().lastError().c_str());
            std::exit(1);
        }
    }

    /// Runs that many lines of text, each an insertion.
    void insert(int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += "(c:_bInsert \"DESK\" (list " + std::to_string(held_ + i) + ".25 " + std::to_string(i % 100) +
                    ".5 0.0))\n";
        if (const auto problem = host_.runText(text)) {
            std::fprintf(stderr, "An insertion failed: %s\n", problem->message.c_str());
            std::exit(1);
        }
        held_ += count;
    }

    int held() const { return held_; }
    size_t handles() const { return host_.documents().curDocument()->database()->handseed().value(); }

private:
    mutable Host host_;
    int held_ = 0;
};

double bytesPerReference = 0;
double perSecondSmall = 0, perSecondFull = 0;

/// Seconds of the fastest of some runs: others use the machine too.
double fastest(Drawing& drawing, benchmark::State& state) {
    double best = 1e9;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        drawing.insert(kTimed);
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        best = std::min(best, seconds);
        state.SetIterationTime(seconds);
    }
    state.SetItemsProcessed(state.iterations() * kTimed);
    return best;
}

void insertIntoSmallDrawing(benchmark::State& state) {
    Drawing drawing;
    drawing.insert(kSmallDrawing);
    perSecondSmall = kTimed / fastest(drawing, state);
}
BENCHMARK(insertIntoSmallDrawing)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

void insertIntoFullDrawing(benchmark::State& state) {
    Drawing drawing;
    const size_t handles = drawing.handles();
    const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    drawing.insert(kFullDrawing);
    bytesPerReference = double(mallinfo2().uordblks + mallinfo2().hblkhd - before) / kFullDrawing;
    // A reference and three attributes each, or the figures would be those of something else.
    if (drawing.handles() - handles < size_t{4} * kFullDrawing)
        return state.SkipWithError("the insertions didn't make what they should");
    state.counters["bytes/reference"] = bytesPerReference;
    perSecondFull = kTimed / fastest(drawing, state);
}
BENCHMARK(insertIntoFullDrawing)->UseManualTime()->Iterations(kRepetitions)->Unit(benchmark::kMillisecond);

/// Insertions a second of ezdxf; 0 when it can't be run.
double ezdxfPerSecond() {
    std::FILE* const pipe = popen(PYTHON " " EZDXF_SCRIPT, "r");
    double figure = 0;
    if (!pipe || std::fscanf(pipe, "%lf", &figure) != 1)
        figure = 0;
    if (pipe)
        pclose(pipe);
    return figure;
}

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    const double other = ezdxfPerSecond();
    if (other <= 0) {
        std::fprintf(stderr, "ezdxf can't be measured: install the package python3-ezdxf (scripts/setup bench).\n");
        return 1;
    }
    std::printf("\ninsertions a second: %.0f into a drawing of %d, %.0f into one of %d, ezdxf %.0f\n", perSecondSmall,
                kSmallDrawing, perSecondFull, kFullDrawing, other);
    std::printf("memory of a reference with three attributes: %.0f bytes\n", bytesPerReference);
    vndk::bench::Limits limits;
    limits.atLeast("insertions into the full drawing, times ezdxf's", perSecondFull / other, 50);
    limits.atMost("cost of one in the full drawing, times that in the small one", perSecondSmall / perSecondFull, 1.25);
    return limits.exitStatus();
}
