#include "platform/modules/sibling.h"

#include "platform/modules/journal.h"
#include "win32/windows.h"

namespace {

struct Watcher {
    Watcher() { journal().push_back("sibling: statics built"); }
    ~Watcher() { journal().push_back("sibling: statics destroyed"); }
} g_watcher;

} // namespace

Shape::~Shape() = default;
Round::~Round() = default;

Shape* makeRound() { return new Round; }

extern "C" int siblingName() { return 1; }

extern "C" __attribute__((visibility("hidden"))) BOOL APIENTRY DllMain(HINSTANCE, DWORD reason, LPVOID) {
    journal().push_back(reason == DLL_PROCESS_ATTACH ? "sibling: attach" : "sibling: detach");
    return TRUE;
}
