#include "start.h"

#include "console.h"
#include "win32/codepage.h"

namespace vndk::app {

namespace {

bool load(host::Host& host, const char* name) {
    if (host.linker().loadModule(name, false))
        return true;
    complain(win32::toUtf8(host.linker().lastError()));
    return false;
}

} // namespace

bool loadObjectLibrary(host::Host& host) { return load(host, "VNDKObjectsDbx.dbx"); }
bool loadModule(host::Host& host) { return load(host, "VNDKKeldmoor.arx"); }

std::string openDrawing(host::Host& host, const std::string& drawing) {
    AcApDocManager& documents = host.documents();
    Acad::ErrorStatus status = Acad::eOk;
    if (drawing.empty()) {
        status = documents.appContextNewDocument(nullptr);
    } else if (const auto name = win32::fromUtf8(drawing)) {
        status = documents.appContextOpenDocument(name->c_str());
    } else {
        const std::string message = "The drawing's name \"" + drawing +
                                    "\" holds a character that isn't in code page 1252. Rename or link the file.";
        complain(message);
        return win32::fromUtf8Lossy(message);
    }
    if (status == Acad::eOk)
        return {};
    complain(win32::toUtf8(documents.lastError()));
    return documents.lastError();
}

} // namespace vndk::app
