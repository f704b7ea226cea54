// Reading and saving a drawing of 150,000 objects, beside reading its bytes and running the format's checksum over
// them in the same run. The drawing is big/plan-150k.dwg below VONDRAKE_DRAWINGS, or else one like it of our own.
//
// Files stand in the memory file system where there is one, so that the disk isn't what is measured.

#include "db/database.h"
#include "db/stub.h"
#include "dwg/crc.h"
#include "limits.h"
#include "plan_drawing.h"

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>

namespace {

namespace fs = std::filesystem;

fs::path g_folder;
std::string g_drawing;
std::map<std::string, double> g_best; // seconds by name

template <class F>
void measure(benchmark::State& state, const std::string& name, F&& work) {
    double best = 1e9;
    for (auto _ : state) {
        const double seconds = work();
        best = std::min(best, seconds);
        state.SetIterationTime(seconds);
    }
    g_best[name] = best;
}

template <class F>
double secondsOf(F&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::unique_ptr<AcDbDatabase> readDrawing() {
    auto database = std::make_unique<AcDbDatabase>(false, true);
    if (database->readDwgFile(g_drawing.c_str()) == Acad::eOk)
        return database;
    std::fprintf(stderr, "%s\n", database->lastFileError().c_str());
    std::exit(1);
}

void saveDrawing(AcDbDatabase& database) {
    if (database.saveAs((g_folder / "saved.dwg").c_str()) == Acad::eOk)
        return;
    std::fprintf(stderr, "%s\n", database.lastFileError().c_str());
    std::exit(1);
}

void decodeAll(AcDbDatabase& database) {
    for (AcDbStub& stub : database.stubs())
        benchmark::DoNotOptimize(database.objectOf(stub));
}

void bytesAndChecksum(benchmark::State& state) {
    measure(state, "bytes", [] {
        return secondsOf([] {
            std::ifstream file(g_drawing, std::ios::binary);
            std::vector<char> bytes(fs::file_size(g_drawing));
            file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
            benchmark::DoNotOptimize(
                vndk::dwg::crc16(vndk::dwg::kCrcSeed, reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()));
        });
    });
}
BENCHMARK(bytesAndChecksum)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);

void readingTheDrawing(benchmark::State& state) {
    measure(state, "read", [] {
        std::unique_ptr<AcDbDatabase> database;
        return secondsOf([&] { database = readDrawing(); });
    });
}
BENCHMARK(readingTheDrawing)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

void decodingAllObjects(benchmark::State& state) {
    measure(state, "decode", [] {
        const auto database = readDrawing();
        return secondsOf([&] { decodeAll(*database); });
    });
}
BENCHMARK(decodingAllObjects)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

void savingTheDrawing(benchmark::State& state) {
    const auto database = readDrawing();
    measure(state, "save", [&] { return secondsOf([&] { saveDrawing(*database); }); });
}
BENCHMARK(savingTheDrawing)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

/// Bytes that reading and saving take at their peak, in a process of their own.
double peakMemory() {
    int ends[2];
    if (pipe(ends) != 0)
        return 1e18;
    const pid_t child = fork();
    if (child == 0) {
        rusage before{}, after{};
        getrusage(RUSAGE_SELF, &before);
        saveDrawing(*readDrawing());
        getrusage(RUSAGE_SELF, &after);
        const double bytes = double(after.ru_maxrss - before.ru_maxrss) * 1024;
        _exit(write(ends[1], &bytes, sizeof bytes) == sizeof bytes ? 0 : 1);
    }
    double bytes = 0;
    int status = 0;
    close(ends[1]);
    const bool told = read(ends[0], &bytes, sizeof bytes) == sizeof bytes;
    close(ends[0]);
    waitpid(child, &status, 0);
    return told && status == 0 ? bytes : 1e18;
}

bool prepare() {
    std::error_code error;
    const fs::path root = fs::is_directory("/dev/shm", error) ? fs::path("/dev/shm") : fs::temp_directory_path();
    g_folder = root / ("vondrake-bench-" + std::to_string(getpid()));
    fs::create_directory(g_folder);
    g_drawing = g_folder / "plan.dwg";
    const char* const drawings = std::getenv("VONDRAKE_DRAWINGS");
    const fs::path real = drawings ? fs::path(drawings) / "big" / "plan-150k.dwg" : fs::path();
    if (!real.empty() && fs::exists(real))
        return fs::copy_file(real, g_drawing, error);
    // In a process of its own, so that its memory isn't counted.
    const pid_t child = fork();
    if (child == 0)
        _exit(vndk::bench::makePlanDrawing(g_drawing) ? 0 : 1);
    int status = 1;
    waitpid(child, &status, 0);
    return status == 0;
}

int run() {
    if (!prepare())
        return 1;
    const double memory = peakMemory();
    benchmark::RunSpecifiedBenchmarks();
    const double size = double(fs::file_size(g_drawing));
    const double base = g_best["bytes"];
    std::printf("\n%.1f MB; best of each: bytes and checksum %.1f ms, reading %.1f ms, decoding all %.1f ms, "
                "saving %.1f ms\n",
                size / 1e6, base * 1e3, g_best["read"] * 1e3, g_best["decode"] * 1e3, g_best["save"] * 1e3);
    vndk::bench::Limits limits;
    limits.atMost("reading, times bytes and checksum", g_best["read"] / base, 5);
    limits.atMost("saving, times bytes and checksum", g_best["save"] / base, 8);
    limits.atMost("peak memory of reading and saving, times the file", memory / size, 6);
    return limits.exitStatus();
}

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    const int status = run();
    std::error_code error;
    fs::remove_all(g_folder, error);
    return status;
}
