// The palette's tab "Blocks" with 5,000 blocks that all have pictures, through the loaded library: read anew because
// the drawing became the current one.
#include "../tests/platform/temp_folder.h"
#include "db/block_table.h"
#include "db/database.h"
#include "ed/host.h"
#include "limits.h"
#include "mfc/afx.h"
#include "processor_time.h"
#include "screen/memory.h"
#include "win32/desktop.h"
#include "win32/listview.h"

#include <benchmark/benchmark.h>

#include <cstring>

namespace {

constexpr int kBlocks = 5000;
constexpr int kListId = 204;
constexpr int kBarId = 403;

double g_refresh = 0;

/// 32 x 32 in 256 colours, as drawings keep them.
AcDbBlockTableRecord::PreviewIcon picture(int number) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = header.biHeight = 32;
    header.biPlanes = 1;
    header.biBitCount = 8;
    header.biSizeImage = 32 * 32;
    AcDbBlockTableRecord::PreviewIcon bytes(sizeof header + 1024 + header.biSizeImage);
    for (std::size_t i = sizeof header; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(i * 31 + static_cast<std::size_t>(number));
    std::memcpy(bytes.data(), &header, sizeof header);
    return bytes;
}

void addBlocks(AcDbDatabase& database) {
    AcDbBlockTable* table = nullptr;
    database.getSymbolTable(table, AcDb::kForWrite);
    for (int i = 0; i < kBlocks; ++i) {
        auto* const record = new AcDbBlockTableRecord;
        record->setName(("BLOCK" + std::to_string(i)).c_str());
        AcDbObjectId id;
        table->add(id, record);
        record->setPreviewIcon(picture(i));
        record->close();
    }
    table->close();
}

HWND listIn(HWND window) {
    if (const HWND found = ::GetDlgItem(window, kListId))
        return found;
    for (HWND child = ::GetWindow(window, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        if (const HWND found = listIn(child))
            return found;
    return nullptr;
}

void refresh(benchmark::State& state) {
    vndk::screen::MemoryScreen screen(1280, 800);
    vndk::win32::Desktop desktop(screen);
    vndk::host::Host host;
    CFrameWnd frame;
    frame.Create(AfxRegisterWndClass(0), "frame", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, CRect(0, 0, 1280, 800));
    frame.EnableDocking(CBRS_ALIGN_LEFT);
    host.setMainWindow(frame.m_hWnd);
    host.linker().loadModule(OBJECTS_FILE, false);
    host.documents().appContextNewDocument(nullptr);
    AcApDocument* const full = host.documents().curDocument();
    host.linker().loadModule(MODULE_FILE, false);
    addBlocks(*full->database());
    host.documents().appContextNewDocument(nullptr);
    AcApDocument* const empty = host.documents().curDocument();
    (void)host.runText("BLOCKS\n");
    CControlBar* const bar = frame.GetControlBar(kBarId);
    const HWND list = bar ? listIn(bar->m_hWnd) : nullptr;
    if (!list) {
        state.SkipWithError("there is no palette");
        return;
    }
    ::ShowWindow(list, SW_SHOW);
    const auto rounds = vndk::bench::sortedRounds(state, [&] {
        host.documents().activateDocument(empty);
        desktop.settle();
        return vndk::bench::timed([&] { host.documents().activateDocument(full); });
    });
    g_refresh = vndk::bench::median(rounds);
    if (::SendMessageA(list, LVM_GETITEMCOUNT, 0, 0) != kBlocks)
        state.SkipWithError("blocks are missing");
    host.linker().unloadModule("VNDKKeldmoor.arx", false);
    frame.DestroyWindow();
}
BENCHMARK(refresh)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    CWinApp application("block-icons-bench");
    const TempFolder profile;
    application.SetProfileFile((profile / "profile.ini").c_str());
    application.WriteProfileInt("Vondrake", "DoNotShow", 1);
    benchmark::RunSpecifiedBenchmarks();
    vndk::bench::Limits limits;
    limits.atMost("5,000 blocks with pictures read anew, ms", g_refresh, 50);
    return limits.exitStatus();
}
