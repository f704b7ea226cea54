// Windows in use: the gallery of controls painted whole, from an event to painted pixels, long lists scrolled, a dialog
// built.
#include "gallery/gallery.h"
#include "limits.h"
#include "processor_time.h"
#include "screen/memory.h"
#include "win32/desktop.h"
#include "win32/dialog.h"
#include "win32/listview.h"
#include "win32/scrollbar.h"
#include "win32/treeview.h"

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace {

using vndk::screen::Event;
using vndk::screen::MemoryScreen;
using vndk::win32::Desktop;

constexpr int kWidth = 1280;
constexpr int kHeight = 800;
constexpr int kManyItems = 100000;

std::map<std::string, double> g_median; // milliseconds by name

/// Keeps the median of the rounds.
template <class F>
void measure(benchmark::State& state, const std::string& name, F&& work) {
    g_median[name] = vndk::bench::median(vndk::bench::sortedRounds(state, [&] { return vndk::bench::timed(work); }));
}

void repaintGallery(benchmark::State& state) {
    MemoryScreen screen(kWidth, kHeight);
    Desktop desktop(screen);
    vndk::gallery::Gallery gallery;
    gallery.open();
    desktop.settle();
    measure(state, "repaint", [&] {
        RedrawWindow(nullptr, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
        desktop.settle();
    });
    gallery.DestroyWindow();
}
BENCHMARK(repaintGallery)->UseManualTime()->Iterations(60)->Unit(benchmark::kMillisecond);

void pressButton(benchmark::State& state) {
    MemoryScreen screen(kWidth, kHeight);
    Desktop desktop(screen);
    vndk::gallery::Gallery gallery;
    gallery.open();
    desktop.settle();
    POINT place{60, 36}; // the first push button
    ClientToScreen(gallery.m_hWnd, &place);
    bool down = false;
    static_cast<void>(screen.takePresented());
    measure(state, "event", [&] {
        Event event;
        event.kind = down ? Event::Kind::mouseUp : Event::Kind::mouseDown;
        event.x = place.x;
        event.y = place.y;
        event.held.left = !down;
        down = !down;
        screen.post(event);
        desktop.settle();
    });
    if (screen.takePresented() == 0)
        state.SkipWithError("nothing was painted");
    gallery.DestroyWindow();
}
BENCHMARK(pressButton)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

void scrollList(benchmark::State& state) {
    MemoryScreen screen(kWidth, kHeight);
    Desktop desktop(screen);
    const HWND list = CreateWindowEx(0, WC_LISTVIEW, "", WS_POPUP | WS_VISIBLE | LVS_REPORT, 0, 0, 800, 600, nullptr,
                                     nullptr, nullptr, nullptr);
    LVCOLUMN column{};
    column.mask = LVCF_WIDTH;
    column.cx = 300;
    SendMessage(list, LVM_INSERTCOLUMN, 0, reinterpret_cast<LPARAM>(&column));
    SendMessage(list, WM_SETREDRAW, FALSE, 0);
    for (int i = 0; i < kManyItems; ++i) {
        std::string text = "Drawing number " + std::to_string(i);
        LVITEM item{};
        item.mask = LVIF_TEXT;
        item.iItem = i;
        item.pszText = text.data();
        SendMessage(list, LVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&item));
    }
    SendMessage(list, WM_SETREDRAW, TRUE, 0);
    desktop.settle();
    measure(state, "list", [&] {
        SendMessage(list, WM_VSCROLL, SB_PAGEDOWN, 0);
        desktop.settle();
    });
    DestroyWindow(list);
}
BENCHMARK(scrollList)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

void scrollTree(benchmark::State& state) {
    MemoryScreen screen(kWidth, kHeight);
    Desktop desktop(screen);
    const HWND tree = CreateWindowEx(0, WC_TREEVIEW, "", WS_POPUP | WS_VISIBLE | TVS_HASLINES | TVS_HASBUTTONS, 0, 0,
                                     800, 600, nullptr, nullptr, nullptr, nullptr);
    SendMessage(tree, WM_SETREDRAW, FALSE, 0);
    for (int i = 0; i < kManyItems; ++i) {
        std::string text = "Folder number " + std::to_string(i);
        TVINSERTSTRUCT insert{};
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT;
        insert.item.pszText = text.data();
        SendMessage(tree, TVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&insert));
    }
    SendMessage(tree, WM_SETREDRAW, TRUE, 0);
    desktop.settle();
    measure(state, "tree", [&] {
        SendMessage(tree, WM_VSCROLL, SB_PAGEDOWN, 0);
        desktop.settle();
    });
    DestroyWindow(tree);
}
BENCHMARK(scrollTree)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

/// A template of twenty controls in memory.
std::vector<WORD> dialogTemplate() {
    std::vector<WORD> words;
    const auto dword = [&words](DWORD value) {
        words.push_back(LOWORD(value));
        words.push_back(HIWORD(value));
    };
    constexpr WORD controls = 20;
    dword(WS_POPUP | WS_CAPTION | WS_SYSMENU);
    dword(0);
    for (const WORD value : {controls, WORD{0}, WORD{0}, WORD{200}, WORD{300}, WORD{0}, WORD{0}, WORD{0}})
        words.push_back(value); // count, place, size, no menu, no class, no title
    for (WORD i = 0; i < controls; ++i) {
        if (words.size() % 2 != 0)
            words.push_back(0);
        dword(WS_CHILD | WS_VISIBLE | WS_TABSTOP);
        dword(0);
        constexpr WORD buttonClass = 0x0080, editClass = 0x0081;
        const WORD className = i % 2 != 0 ? buttonClass : editClass;
        for (const WORD value : {WORD{5}, static_cast<WORD>(5 + 14 * i), WORD{80}, WORD{12}, static_cast<WORD>(100 + i),
                                 WORD{0xFFFF}, className, WORD{'x'}, WORD{0}, WORD{0}})
            words.push_back(value); // place, size, id, class, text, no data
    }
    return words;
}

void buildDialog(benchmark::State& state) {
    MemoryScreen screen(kWidth, kHeight);
    Desktop desktop(screen);
    const std::vector<WORD> words = dialogTemplate();
    const auto procedure = [](HWND, UINT message, WPARAM, LPARAM) -> INT_PTR { return message == WM_INITDIALOG; };
    HWND dialog = nullptr;
    measure(state, "dialog", [&] {
        dialog = CreateDialogIndirectParam(nullptr, reinterpret_cast<const DLGTEMPLATE*>(words.data()), nullptr,
                                           procedure, 0);
        if (dialog == nullptr)
            state.SkipWithError("the dialog wasn't made");
        DestroyWindow(dialog);
    });
}
BENCHMARK(buildDialog)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    vndk::bench::Limits limits;
    limits.atMost("whole repaint of the gallery on 1280 x 800, ms", g_median["repaint"], 4);
    limits.atMost("from a press of the mouse to painted pixels, ms", g_median["event"], 2);
    limits.atMost("a page of a list of 100,000 items scrolled and painted, ms", g_median["list"], 16);
    limits.atMost("a page of a tree of 100,000 items scrolled and painted, ms", g_median["tree"], 16);
    limits.atMost("a dialog of twenty controls made and ended, ms", g_median["dialog"], 1);
    return limits.exitStatus();
}
