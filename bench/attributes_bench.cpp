// The attribute dialog over a block with a thousand attributes: how long it takes to open, and from a key to painted
// pixels. The dialog's sources are built into this program; the loaded library lends its resources.
#include "attributes/edit_attribute_dlg.h"
#include "db/text.h"
#include "ed/host.h"
#include "frame/module.h"
#include "limits.h"
#include "mfc/afx.h"
#include "objects/attribute.h"
#include "objects/block_reference.h"
#include "processor_time.h"
#include "resources/resource.h"
#include "screen/memory.h"
#include "win32/desktop.h"

#include <benchmark/benchmark.h>

#include <map>
#include <string>

HINSTANCE ModuleInstance() { return ::GetModuleHandleA("VNDKKeldmoor.arx"); }

CString LoadResString(UINT id) {
    char text[1000];
    return ::LoadStringA(ModuleInstance(), id, text, sizeof text) > 0 ? CString(text) : CString();
}

namespace {

using vndk::screen::Event;

constexpr int kAttributes = 1000;

std::map<std::string, double> g_median; // milliseconds by name

/// Keeps the median of the rounds; `work` gives the seconds of one.
template <class F>
void measure(benchmark::State& state, const std::string& name, F&& work) {
    g_median[name] = vndk::bench::median(vndk::bench::sortedRounds(state, work));
}

/// Notes the time at which everything is painted, and ends.
class TimedDlg : public CEditAttributeDlg {
public:
    TimedDlg(CWnd* pParent, vndk::win32::Desktop& desktop) : CEditAttributeDlg(pParent), m_desktop(desktop) {}
    double m_painted = 0;
    int m_rows = 0;

protected:
    LRESULT OnKickIdle(WPARAM, LPARAM) {
        m_desktop.settle();
        m_painted = vndk::bench::processorSeconds();
        m_rows = ListView_GetItemCount(::GetDlgItem(m_hWnd, IDC_ATTRIBUTE_LIST));
        EndDialog(IDCANCEL);
        return FALSE;
    }
    DECLARE_MESSAGE_MAP()

private:
    vndk::win32::Desktop& m_desktop;
};

BEGIN_MESSAGE_MAP(TimedDlg, CEditAttributeDlg)
ON_MESSAGE(WM_KICKIDLE, &TimedDlg::OnKickIdle)
END_MESSAGE_MAP()

/// A drawing with an Intelligent Block of many attributes, and a desktop to show its dialog on.
class Scene {
public:
    Scene() {
        m_host.linker().loadModule(OBJECTS_FILE, false);
        m_host.documents().appContextNewDocument(nullptr);
        m_host.linker().loadModule(MODULE_FILE, false);
        buildBlock();
        m_host.runText("(c:_bInsert \"FORM\" (list 0 0 0))\n");
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
        m_reference = space->entities().front();
        m_frame.CreateEx(0, AfxRegisterWndClass(0), "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 800, 600, nullptr,
                         nullptr);
        m_desktop.settle();
    }
    ~Scene() { m_frame.DestroyWindow(); }

    bool select(CEditAttributeDlg& dlg) {
        VNDKBlockReference* pReference = nullptr;
        return acdbOpenObject(pReference, m_reference) == Acad::eOk && dlg.SelectBlock(pReference);
    }
    vndk::screen::MemoryScreen& screen() { return m_screen; }
    vndk::win32::Desktop& desktop() { return m_desktop; }
    CWnd* frame() { return &m_frame; }

private:
    AcDbDatabase& database() { return *m_host.documents().curDocument()->database(); }

    void buildBlock() {
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId(), AcDb::kForWrite);
        auto* const block = new AcDbBlockTableRecord;
        block->setName("FORM");
        table->add(block);
        for (int i = 0; i < kAttributes; ++i) {
            const std::string number = std::to_string(i);
            auto* const definition =
                new AcDbAttributeDefinition({}, "value", ("TAG" + number).c_str(), ("Prompt " + number).c_str());
            block->appendAcDbEntity(definition);
            definition->close();
        }
        block->close();
    }

    vndk::screen::MemoryScreen m_screen{1280, 800};
    vndk::win32::Desktop m_desktop{m_screen};
    vndk::host::Host m_host;
    CFrameWnd m_frame;
    AcDbObjectId m_reference;
};

void openDialog(benchmark::State& state) {
    Scene scene;
    measure(state, "open", [&] {
        const double start = vndk::bench::processorSeconds();
        TimedDlg dlg(scene.frame(), scene.desktop());
        if (!scene.select(dlg) || dlg.DoModal() != IDCANCEL || dlg.m_rows != kAttributes)
            state.SkipWithError("the dialog didn't open");
        return dlg.m_painted - start;
    });
}
BENCHMARK(openDialog)->UseManualTime()->Iterations(40)->Unit(benchmark::kMillisecond);

void deliver(Scene& scene) {
    MSG message{};
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE)
        AfxPumpMessage();
    scene.desktop().settle();
}

void post(Scene& scene, Event::Kind kind, int key, char32_t character) {
    Event event;
    event.kind = kind;
    event.key = static_cast<vndk::screen::KeyCode>(key);
    event.character = character;
    scene.screen().post(event);
}

void pressKey(benchmark::State& state) {
    Scene scene;
    CEditAttributeDlg dlg(scene.frame());
    if (!scene.select(dlg) || !dlg.Create(IDD_EDIT_ATTRIBUTE, scene.frame())) {
        state.SkipWithError("the dialog wasn't made");
        return;
    }
    dlg.ShowWindow(SW_SHOW);
    deliver(scene);
    const HWND list = ::GetDlgItem(dlg.m_hWnd, IDC_ATTRIBUTE_LIST);
    POINT value{150, 30}; // of the first row
    ::ClientToScreen(list, &value);
    for (const Event::Kind kind : {Event::Kind::mouseDown, Event::Kind::mouseUp}) {
        Event event;
        event.kind = kind;
        event.x = value.x;
        event.y = value.y;
        event.held.left = kind == Event::Kind::mouseDown;
        scene.screen().post(event);
    }
    deliver(scene);
    static_cast<void>(scene.screen().takePresented());
    bool letter = true;
    measure(state, "key", [&] {
        const int key = letter ? 'X' : VK_BACK;
        const char32_t character = letter ? U'x' : U'\b';
        letter = !letter;
        const double start = vndk::bench::processorSeconds();
        post(scene, Event::Kind::keyDown, key, 0);
        post(scene, Event::Kind::character, key, character);
        deliver(scene);
        const double seconds = vndk::bench::processorSeconds() - start;
        post(scene, Event::Kind::keyUp, key, 0);
        deliver(scene);
        return seconds;
    });
    char text[80] = "";
    ListView_GetItemText(list, 0, 1, text, sizeof text);
    if (scene.screen().takePresented() == 0 || std::string(text) == "value")
        state.SkipWithError("the cell took no key");
    dlg.DestroyWindow();
}
BENCHMARK(pressKey)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    vndk::bench::Limits limits;
    limits.atMost("the attribute dialog over 1,000 attributes opened and painted, ms", g_median["open"], 50);
    limits.atMost("from a key in one of its cells to painted pixels, ms", g_median["key"], 1);
    return limits.exitStatus();
}
