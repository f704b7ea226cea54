// Painting in memory: a desktop of 1280 x 800 with 600 controls from nothing, and the parts that it is made of.

#include "gdi/device_context.h"
#include "limits.h"
#include "processor_time.h"

#include <benchmark/benchmark.h>

#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace vndk::win32;

constexpr int width = 1280;
constexpr int height = 800;

std::map<std::string, double> g_best; // milliseconds by name

template <class F>
void measure(benchmark::State& state, const std::string& name, F&& work) {
    g_best[name] = vndk::bench::sortedRounds(state, [&] { return vndk::bench::timed(work); }).front();
}

/// The screen, a context onto all of it, and one for each of 600 controls that are cut out of the desktop's own.
class Desktop {
public:
    Desktop() : pixels_(std::size_t{width} * height) {
        const PixelTarget target{pixels_.data(), width, height, width};
        all = createWindowDC(target, {0, 0}, Region(RECT{0, 0, width, height}), nullptr);
        Region free(RECT{0, 0, width, height});
        for (int y = 2; y < height - 38; y += 40)
            for (int x = 2; x < width - 40; x += 42) {
                const RECT control{x, y, x + 38, y + 36};
                free -= Region(control);
                controls.push_back(createWindowDC(target, {x, y}, Region(control), nullptr));
            }
        ground = createWindowDC(target, {0, 0}, free, nullptr);
    }
    ~Desktop() {
        deleteWindowDC(all);
        deleteWindowDC(ground);
        for (HDC dc : controls)
            deleteWindowDC(dc);
    }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    HDC all;
    HDC ground;
    std::vector<HDC> controls;

private:
    std::vector<std::uint32_t> pixels_;
};

/// A face with a raised edge and five letters.
void paintControl(HDC dc, HBRUSH face, HPEN light, HPEN shadow) {
    constexpr std::uint8_t letter[] = {0x38, 0x44, 0x82, 0x82, 0xFE, 0x82, 0x82, 0x82};
    const RECT rect{0, 0, 38, 36};
    FillRect(dc, &rect, face);
    const POINT upper[] = {{0, 35}, {0, 0}, {37, 0}};
    const POINT lower[] = {{0, 35}, {37, 35}, {37, -1}};
    const HGDIOBJ old = SelectObject(dc, light);
    Polyline(dc, upper, 3);
    SelectObject(dc, shadow);
    Polyline(dc, lower, 3);
    SelectObject(dc, old);
    DeviceContext& context = *contextOf(dc);
    for (int place = 0; place < 5; ++place)
        paintMask(context, {letter, 8, 8, 1}, context.toSurface(POINT{4 + place * 6, 10}), context.pixelOf(0));
}

void repaint(benchmark::State& state) {
    const Desktop desktop;
    const HBRUSH face = CreateSolidBrush(RGB(212, 208, 200));
    const HPEN light = CreatePen(PS_SOLID, 1, RGB(255, 255, 255));
    const HPEN shadow = CreatePen(PS_SOLID, 1, RGB(128, 128, 128));
    measure(state, "repaint", [&] {
        const RECT all{0, 0, width, height};
        FillRect(desktop.ground, &all, face);
        for (HDC dc : desktop.controls)
            paintControl(dc, face, light, shadow);
    });
}
BENCHMARK(repaint)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

void shortLines(benchmark::State& state) {
    const Desktop desktop;
    std::mt19937 engine(1);
    std::vector<POINT> points;
    const auto upTo = [&](int end) { return static_cast<LONG>(engine() % static_cast<unsigned>(end)); };
    for (int index = 0; index < 100000; ++index) {
        const POINT from{upTo(width), upTo(height)};
        points.push_back(from);
        points.push_back({from.x + upTo(61) - 30, from.y + upTo(61) - 30});
    }
    measure(state, "lines", [&] {
        for (std::size_t index = 0; index < points.size(); index += 2) {
            MoveToEx(desktop.all, points[index].x, points[index].y, nullptr);
            LineTo(desktop.all, points[index + 1].x, points[index + 1].y);
        }
    });
}
BENCHMARK(shortLines)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

void copyScreen(benchmark::State& state) {
    const Desktop desktop;
    const HDC memory = CreateCompatibleDC(desktop.all);
    const HBITMAP bitmap = CreateCompatibleBitmap(desktop.all, width, height);
    SelectObject(memory, bitmap);
    measure(state, "copy", [&] { BitBlt(desktop.all, 0, 0, width, height, memory, 0, 0, SRCCOPY); });
    DeleteDC(memory);
    DeleteObject(bitmap);
}
BENCHMARK(copyScreen)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    vndk::bench::Limits limits;
    limits.atMost("whole repaint of 1280 x 800 with 600 controls, ms", g_best["repaint"], 4);
    limits.atMost("100,000 lines of about 30 pixels, ms", g_best["lines"], 30);
    limits.atMost("whole screen copied from a bitmap, ms", g_best["copy"], 2);
    return limits.exitStatus();
}
