// The list of drawings over folders of 10,000 and 100,000: filled, scrolled with its thumbnails, and how quickly and
// how frugally those are read. The list's sources are built into this program; the loaded library lends its resources.
#include "../tests/module/previews/thumbnail_file.h"
#include "../tests/platform/temp_folder.h"
#include "ed/host.h"
#include "frame/module.h"
#include "limits.h"
#include "mfc/afx.h"
#include "palette/dwg_list_box.h"
#include "previews/dwg_thumbnail.h"
#include "processor_time.h"
#include "screen/memory.h"
#include "win32/desktop.h"
#include "win32/drive_map.h"

#include <benchmark/benchmark.h>

#include <map>

HINSTANCE ModuleInstance() { return ::GetModuleHandleA("VNDKKeldmoor.arx"); }

CString LoadResString(UINT id) {
    char text[1000];
    return ::LoadStringA(ModuleInstance(), id, text, sizeof text) > 0 ? CString(text) : CString();
}

namespace {

constexpr int kListId = 202;
constexpr int kMany = 10000, kVeryMany = 100000;

std::map<std::string, double> g_figures;

/// As drawings mostly are: 256 colours, some 30 KB, at the beginning of a larger file.
std::string drawingFile() {
    return thumbnailFile({{1, std::string(80, 'h')}, {2, plainPicture(256, 102, {90, 60, 30})}});
}

/// A folder of drawings as drive T:, made once for each number.
const TempFolder& folderOf(int count) {
    static std::map<int, TempFolder> folders;
    const auto [place, isNew] = folders.try_emplace(count);
    if (isNew) {
        const std::string whole = drawingFile();
        for (int i = 0; i < count; ++i) {
            const std::string name = "Drawing " + std::to_string(i * 7919 % count) + ".dwg";
            place->second.write(name, count == kMany ? whole + std::string(10000, 'x') : std::string());
        }
        if (count == kMany)
            for (int i = 0; i < 1000; ++i)
                std::filesystem::create_directory(place->second / ("folder" + std::to_string(i)));
    }
    return place->second;
}

class Scene {
public:
    explicit Scene(int count) {
        if (!vndk::win32::DriveMap::current().map('T', folderOf(count).path()).ok())
            std::abort();
        m_host.linker().loadModule(OBJECTS_FILE, false);
        m_host.documents().appContextNewDocument(nullptr);
        m_host.linker().loadModule(MODULE_FILE, false);
        m_parent.CreateEx(0, AfxRegisterWndClass(0), "parent", WS_POPUP | WS_VISIBLE, 0, 0, 400, 760, nullptr, nullptr);
        ::CreateWindowExA(0, "LISTBOX", "",
                          WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | LBS_NOTIFY | LBS_OWNERDRAWVARIABLE |
                              LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT,
                          10, 10, 220, 740, m_parent.m_hWnd, reinterpret_cast<HMENU>(UINT_PTR{kListId}), nullptr,
                          nullptr);
        m_list.SubclassDlgItem(kListId, &m_parent);
        AfxSetResourceHandle(ModuleInstance());
        m_list.LoadImages();
        m_desktop.settle();
    }
    ~Scene() {
        m_parent.DestroyWindow();
        AfxSetResourceHandle(nullptr);
    }

    CDwgListBox& list() { return m_list; }
    vndk::win32::Desktop& desktop() { return m_desktop; }

private:
    vndk::screen::MemoryScreen m_screen{1280, 800};
    vndk::win32::Desktop m_desktop{m_screen};
    vndk::host::Host m_host;
    CWnd m_parent;
    CDwgListBox m_list;
};

void fill(benchmark::State& state, int count, const char* name) {
    Scene scene(count);
    g_figures[name] = vndk::bench::median(
        vndk::bench::sortedRounds(state, [&] { return vndk::bench::timed([&] { scene.list().FillList("T:\\"); }); }));
    if (scene.list().GetCount() != count + (count == kMany ? 1000 : 0))
        state.SkipWithError("rows are missing");
}
void fillMany(benchmark::State& state) { fill(state, kMany, "fill"); }
BENCHMARK(fillMany)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);
void fillVeryMany(benchmark::State& state) { fill(state, kVeryMany, "fill very many"); }
BENCHMARK(fillVeryMany)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

void scroll(benchmark::State& state) {
    Scene scene(kMany);
    scene.list().FillList("T:\\");
    const int first = 1000 + kMany / 2, last = first + 300;
    for (int top = first; top < last; top += 2) { // reads them
        scene.list().SetTopIndex(top);
        scene.desktop().settle();
    }
    int top = first;
    const auto rounds = vndk::bench::sortedRounds(state, [&] {
        top = top + 1 < last ? top + 1 : first;
        return vndk::bench::timed([&] {
            scene.list().SetTopIndex(top);
            scene.desktop().settle();
        });
    });
    g_figures["frame"] = rounds[rounds.size() * 95 / 100];
}
BENCHMARK(scroll)->UseManualTime()->Iterations(600)->Unit(benchmark::kMillisecond);

/// Bytes that this program has read from files.
long long bytesRead() {
    std::ifstream counters("/proc/self/io");
    std::string name;
    long long value = 0;
    counters >> name >> value;
    return value;
}

void readThumbnails(benchmark::State& state) {
    constexpr int kFiles = 2000;
    Scene scene(kMany);
    const CString folder("T:\\");
    const auto readAll = [&] {
        int pictures = 0;
        for (int i = 0; i < kFiles; ++i) {
            CDwgThumbnail thumbnail(&folder, CString(("Drawing " + std::to_string(i) + ".dwg").c_str()));
            thumbnail.LoadPreview();
            pictures += thumbnail.bitmap != nullptr;
        }
        return pictures;
    };
    if (readAll() != kFiles) { // into the page cache
        state.SkipWithError("pictures are missing");
        return;
    }
    const long long before = bytesRead(), counting = bytesRead() - before;
    const long long begin = bytesRead();
    readAll();
    const long long read = bytesRead() - begin - counting;
    const long long needed = 4 + 21 + 2 * 9 + static_cast<long long>(plainPicture(256, 102, {0, 0, 0}).size());
    g_figures["excess"] = static_cast<double>(read) / static_cast<double>(needed * kFiles);
    g_figures["rate"] =
        kFiles * 1000 /
        vndk::bench::median(vndk::bench::sortedRounds(state, [&] { return vndk::bench::timed([&] { readAll(); }); }));
}
BENCHMARK(readThumbnails)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    CWinApp application("palette-bench");
    const TempFolder profile;
    application.SetProfileFile((profile / "profile.ini").c_str());
    benchmark::RunSpecifiedBenchmarks();
    vndk::bench::Limits limits;
    limits.atMost("10,000 drawings and 1,000 folders listed, ms", g_figures["fill"], 100);
    limits.atMost("100,000 drawings listed, ms", g_figures["fill very many"], 1000);
    limits.atMost("95 of 100 steps of scrolling through read thumbnails, ms", g_figures["frame"], 16);
    limits.atLeast("thumbnails read from the page cache in a second", g_figures["rate"], 2000);
    limits.atMost("bytes read for each that is needed", g_figures["excess"], 1.001);
    return limits.exitStatus();
}
