// The attribute dialogs over blocks with many attributes: how long they take to open, from a key to painted pixels, and
// from row to row in a drawing with many layers. The dialogs' sources are built into this program; the loaded library
// lends its resources.
#include "attributes/edit_attribute_dlg.h"
#include "attributes/enhanced_attribute_dlg.h"
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

#include <functional>
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
constexpr int kEditorAttributes = 500;
constexpr int kLayers = 1000;

std::map<std::string, double> g_median; // milliseconds by name
std::function<void()> g_select;         // what the command that asks for a block runs

/// Keeps the median of the rounds; `work` gives the seconds of one.
template <class F>
void measure(benchmark::State& state, const std::string& name, F&& work) {
    g_median[name] = vndk::bench::median(vndk::bench::sortedRounds(state, work));
}

/// Notes the time at which everything is painted, and ends.
template <class Dialog>
class TimedDlg : public Dialog {
public:
    TimedDlg(CWnd* pParent, vndk::win32::Desktop& desktop, int listId)
        : Dialog(pParent), m_desktop(desktop), m_listId(listId) {}
    double m_painted = 0;
    int m_rows = 0;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_KICKIDLE)
            return Dialog::WindowProc(message, wParam, lParam);
        m_desktop.settle();
        m_painted = vndk::bench::processorSeconds();
        m_rows = ListView_GetItemCount(::GetDlgItem(this->m_hWnd, m_listId));
        this->EndDialog(IDCANCEL);
        return FALSE;
    }

private:
    vndk::win32::Desktop& m_desktop;
    int m_listId;
};

/// A drawing with an Intelligent Block of many attributes, and a desktop to show its dialog on.
class Scene {
public:
    explicit Scene(int attributes, int layers = 0) {
        m_host.linker().loadModule(OBJECTS_FILE, false);
        m_host.documents().appContextNewDocument(nullptr);
        m_host.linker().loadModule(MODULE_FILE, false);
        buildBlock(attributes);
        addLayers(layers);
        m_host.runText("(c:_bInsert \"FORM\" (list 0 0 0))\n");
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
        m_reference = space->entities().front();
        m_host.commands().addCommand(
            "BENCH", "SELECTFORBENCH", "SELECTFORBENCH", ACRX_CMD_MODAL, [] { g_select(); }, nullptr, -1, nullptr,
            nullptr);
        m_frame.CreateEx(0, AfxRegisterWndClass(0), "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 800, 600, nullptr,
                         nullptr);
        m_desktop.settle();
    }
    ~Scene() { m_frame.DestroyWindow(); }

    /// The editor asks for its block itself; the reference is the first entity.
    bool select(CEnhancedAttributeDlg& dlg) {
        bool selected = false;
        g_select = [&] { selected = dlg.SelectBlock(); };
        m_host.runText("SELECTFORBENCH (entnext)\n");
        return selected;
    }
    bool select(CEditAttributeDlg& dlg) {
        VNDKBlockReference* pReference = nullptr;
        return acdbOpenObject(pReference, m_reference) == Acad::eOk && dlg.SelectBlock(pReference);
    }
    vndk::screen::MemoryScreen& screen() { return m_screen; }
    vndk::win32::Desktop& desktop() { return m_desktop; }
    CWnd* frame() { return &m_frame; }

private:
    AcDbDatabase& database() { return *m_host.documents().curDocument()->database(); }

    void buildBlock(int attributes) {
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId(), AcDb::kForWrite);
        auto* const block = new AcDbBlockTableRecord;
        block->setName("FORM");
        table->add(block);
        for (int i = 0; i < attributes; ++i) {
            const std::string number = std::to_string(i);
            auto* const definition =
                new AcDbAttributeDefinition({}, "value", ("TAG" + number).c_str(), ("Prompt " + number).c_str());
            block->appendAcDbEntity(definition);
            definition->close();
        }
        block->close();
    }

    void addLayers(int layers) {
        const AcDbObjectPointer<AcDbLayerTable> table(database().layerTableId(), AcDb::kForWrite);
        for (int i = 0; i < layers; ++i) {
            auto* const layer = new AcDbLayerTableRecord;
            layer->setName(("Layer " + std::to_string(i * 7919 % layers)).c_str()); // in no order
            table->add(layer);
            layer->close();
        }
    }

    vndk::screen::MemoryScreen m_screen{1280, 800};
    vndk::win32::Desktop m_desktop{m_screen};
    vndk::host::Host m_host;
    CFrameWnd m_frame;
    AcDbObjectId m_reference;
};

template <class Dialog>
void measureOpening(benchmark::State& state, const char* name, int listId, int attributes) {
    Scene scene(attributes);
    measure(state, name, [&] {
        const double start = vndk::bench::processorSeconds();
        TimedDlg<Dialog> dlg(scene.frame(), scene.desktop(), listId);
        if (!scene.select(dlg) || dlg.DoModal() != IDCANCEL || dlg.m_rows != attributes)
            state.SkipWithError("the dialog didn't open");
        return dlg.m_painted - start;
    });
}

void openDialog(benchmark::State& state) {
    measureOpening<CEditAttributeDlg>(state, "open", IDC_ATTRIBUTE_LIST, kAttributes);
}
BENCHMARK(openDialog)->UseManualTime()->Iterations(40)->Unit(benchmark::kMillisecond);

void openEditor(benchmark::State& state) {
    measureOpening<CEnhancedAttributeDlg>(state, "open editor", IDC_ATTRIBUTES, kEditorAttributes);
}
BENCHMARK(openEditor)->UseManualTime()->Iterations(40)->Unit(benchmark::kMillisecond);

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

/// Clicks the value of the first row.
void openFirstCell(Scene& scene, HWND list) {
    POINT value{150, 30};
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
}

void pressKey(benchmark::State& state) {
    Scene scene(kAttributes);
    CEditAttributeDlg dlg(scene.frame());
    if (!scene.select(dlg) || !dlg.Create(IDD_EDIT_ATTRIBUTE, scene.frame())) {
        state.SkipWithError("the dialog wasn't made");
        return;
    }
    dlg.ShowWindow(SW_SHOW);
    deliver(scene);
    const HWND list = ::GetDlgItem(dlg.m_hWnd, IDC_ATTRIBUTE_LIST);
    openFirstCell(scene, list);
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

void moveToNextRow(benchmark::State& state) {
    Scene scene(kEditorAttributes, kLayers);
    CEnhancedAttributeDlg dlg(scene.frame());
    if (!scene.select(dlg) || !dlg.Create(IDD_ENHANCED_ATTRIBUTES, scene.frame())) {
        state.SkipWithError("the editor wasn't made");
        return;
    }
    dlg.ShowWindow(SW_SHOW);
    deliver(scene);
    openFirstCell(scene, ::GetDlgItem(dlg.m_hWnd, IDC_ATTRIBUTES));
    int moves = 0;
    measure(state, "row", [&] {
        const double start = vndk::bench::processorSeconds();
        post(scene, Event::Kind::keyDown, VK_DOWN, 0);
        deliver(scene);
        const double seconds = vndk::bench::processorSeconds() - start;
        post(scene, Event::Kind::keyUp, VK_DOWN, 0);
        deliver(scene);
        ++moves;
        return seconds;
    });
    char tag[80] = "";
    ::GetDlgItemTextA(dlg.m_hWnd, IDC_TAG_NAME, tag, sizeof tag);
    if (scene.screen().takePresented() == 0 || tag != "TAG" + std::to_string(moves % kEditorAttributes))
        state.SkipWithError("the editor didn't move");
    dlg.DestroyWindow();
}
BENCHMARK(moveToNextRow)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    vndk::bench::Limits limits;
    limits.atMost("the attribute dialog over 1,000 attributes opened and painted, ms", g_median["open"], 50);
    limits.atMost("from a key in one of its cells to painted pixels, ms", g_median["key"], 1);
    limits.atMost("the Enhanced Attribute Editor over 500 attributes opened and painted, ms", g_median["open editor"],
                  50);
    limits.atMost("from row to row in it with 1,000 layers, ms", g_median["row"], 5);
    return limits.exitStatus();
}
