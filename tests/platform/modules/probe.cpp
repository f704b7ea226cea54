// A module that writes down when its statics are built, when it is told to attach and detach, and when it goes.
#include "platform/modules/journal.h"
#include "platform/modules/sibling.h"
#include "win32/windows.h"

#include <memory>

namespace {

struct Watcher {
    Watcher() { journal().push_back("probe: statics built"); }
    ~Watcher() { journal().push_back("probe: statics destroyed"); }
    int attached = 0;
};

Watcher g_watcher;

// A static of a template: with gcc's unique symbols it would pin the library in memory.
template <class T>
int& counter() {
    static int count = 0;
    return count;
}

} // namespace

extern "C" BOOL APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        ++g_watcher.attached;
        ++counter<std::unique_ptr<int>>();
        char text[40];
        LoadStringA(instance, 101, text, sizeof text);
        journal().push_back("probe: attach " + std::to_string(g_watcher.attached) + " " + text);
    } else if (reason == DLL_PROCESS_DETACH) {
        journal().push_back("probe: detach");
    }
    return TRUE;
}

extern "C" __attribute__((visibility("default"))) int probeCounter() { return counter<std::unique_ptr<int>>(); }

extern "C" __attribute__((visibility("default"))) bool probeKnowsRound() {
    const std::unique_ptr<Shape> shape(makeRound());
    return dynamic_cast<const Round*>(shape.get()) != nullptr;
}

extern "C" int probeHidden() { return 1; }
