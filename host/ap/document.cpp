#include "ap/document.h"

#include "ads/external_functions.h"
#include "ads/lisp_link.h"
#include "ap/drawing_views.h"
#include "ap/xrefs.h"
#include "dwg/drawing_reader.h"
#include "ed/display.h"
#include "ed/host.h"
#include "lisp/interpreter.h"
#include "mfc/module_state.h"
#include "win32/codepage.h"
#include "win32/drive_map.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <tuple>
#include <utility>

ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocument, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocManagerReactor, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcApDocManager, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcTransactionManager, AcRxObject)

using vndk::host::Host;

namespace {

/// Tells a file from the one that a save puts in its place.
auto markOf(const std::string& path) {
    struct stat status = {};
    const bool there = ::stat(path.c_str(), &status) == 0;
    return std::make_tuple(there, status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                           status.st_mtim.tv_nsec);
}

constexpr int kShareWithAll = 0x40; // a drawing that others have open can be opened too, for reading

} // namespace

AcApDocument::AcApDocument(Host& host, std::unique_ptr<AcDbDatabase> database, std::string fileName, bool hasFile)
    : host_(host), database_(std::move(database)), views_(std::make_unique<vndk::host::DrawingViews>(*database_)),
      link_(std::make_unique<vndk::host::LispLink>(host, *this)),
      lisp_(std::make_unique<vndk::lisp::Interpreter>(*link_)), fileName_(std::move(fileName)), hasFile_(hasFile) {}

AcApDocument::~AcApDocument() = default;

AcAp::DocLockMode AcApDocument::lockMode() const { return locks_.empty() ? AcAp::kNotLocked : locks_.back(); }

bool AcApDocument::isQuiescent() const {
    const bool commandHere = host_.documents().curDocument() == this && host_.commandLine().commandActive();
    return locks_.empty() && !commandHere;
}

void AcTransactionManager::flushGraphics() {
    Host* const host = Host::current();
    if (host && host->display())
        host->display()->update();
}

AcApDocManager::AcApDocManager(Host& host) : host_(host) {}

AcApDocManager::~AcApDocManager() = default;

AcApDocManager* acDocManagerPtr() {
    Host* const host = Host::current();
    return host ? &host->documents() : nullptr;
}

AcApDocument* AcApDocManager::document(const AcDbDatabase* database) const {
    for (const auto& document : documents_)
        if (document->database() == database)
            return document.get();
    return nullptr;
}

AcApDocumentIterator* AcApDocManager::newAcApDocumentIterator() const {
    std::vector<AcApDocument*> all;
    for (const auto& document : documents_)
        all.push_back(document.get());
    return new AcApDocumentIterator(std::move(all));
}

bool AcApDocManager::owns(const AcApDocument* document) const {
    return std::any_of(documents_.begin(), documents_.end(),
                       [document](const auto& item) { return item.get() == document; });
}

void AcApDocManager::addReactor(AcApDocManagerReactor* reactor) {
    if (reactor)
        reactors_.add(reactor);
}

void AcApDocManager::removeReactor(AcApDocManagerReactor* reactor) { reactors_.remove(reactor); }

void AcApDocManager::tell(Event event, AcApDocument* document) {
    reactors_.tell([event, document](AcApDocManagerReactor& reactor) { (reactor.*event)(document); });
}

/// The file layer names files as the system does.
std::string AcApDocManager::fileErrorOf(const AcDbDatabase& database) {
    return vndk::win32::fromUtf8Lossy(database.lastFileError());
}

Acad::ErrorStatus AcApDocManager::fail(Acad::ErrorStatus status, std::string message) {
    lastError_ = std::move(message);
    return status;
}

// Locks.

void AcApDocManager::tellLock(AcApDocument& document, AcAp::DocLockMode former, AcAp::DocLockMode next,
                              const char* command) {
    const char* const name = command ? command : "";
    reactors_.tell([&](AcApDocManagerReactor& r) { r.documentLockModeChanged(&document, former, next, next, name); });
}

Acad::ErrorStatus AcApDocManager::lockDocument(AcApDocument* document, AcAp::DocLockMode mode,
                                               const char* globalCmdName, const char*, bool) {
    if (!owns(document))
        return fail(Acad::eNoDocument, "There is no such drawing to lock.");
    const AcAp::DocLockMode former = document->lockMode();
    const bool locked = !document->locks_.empty();
    if (locked && (former == AcAp::kXWrite || mode == AcAp::kXWrite))
        return fail(Acad::eLockConflict, "The drawing is locked by another action. Try again when it has ended.");
    const char* const name = globalCmdName ? globalCmdName : "";
    reactors_.tell([&](AcApDocManagerReactor& r) { r.documentLockModeWillChange(document, former, mode, mode, name); });
    document->locks_.push_back(mode);
    tellLock(*document, former, mode, globalCmdName);
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::unlockDocument(AcApDocument* document) {
    if (!owns(document))
        return fail(Acad::eNoDocument, "There is no such drawing to unlock.");
    if (document->locks_.empty())
        return fail(Acad::eNotApplicable, "The drawing isn't locked.");
    const AcAp::DocLockMode former = document->lockMode();
    const AcAp::DocLockMode next =
        document->locks_.size() > 1 ? document->locks_[document->locks_.size() - 2] : AcAp::kNotLocked;
    reactors_.tell([&](AcApDocManagerReactor& r) { r.documentLockModeWillChange(document, former, next, next, ""); });
    document->locks_.pop_back();
    tellLock(*document, former, next, nullptr);
    return Acad::eOk;
}

// Text for the command line.

Acad::ErrorStatus AcApDocManager::sendStringToExecute(AcApDocument* document, const char* text, bool activate, bool,
                                                      bool echo) {
    if (!owns(document))
        return fail(Acad::eNoDocument, "There is no such drawing to send text to.");
    if (!text)
        return fail(Acad::eInvalidInput, "There is no text to send.");
    sent_.push_back({document, text, activate, echo});
    host_.wake();
    return Acad::eOk;
}

void AcApDocManager::deliverSentText() {
    std::vector<Sent> waiting;
    for (Sent& sent : std::exchange(sent_, {})) {
        if (!owns(sent.document))
            continue;
        if (sent.activate)
            activateDocument(sent.document);
        if (sent.document != current_) {
            waiting.push_back(std::move(sent));
            continue;
        }
        if (sent.echo)
            host_.print(sent.text);
        host_.commandLine().input().send(sent.text);
    }
    sent_.insert(sent_.begin(), std::make_move_iterator(waiting.begin()), std::make_move_iterator(waiting.end()));
}

// The current document.

void AcApDocManager::enter(AcApDocument* document) {
    current_ = document;
    acdbHostApplicationServices()->setWorkingDatabase(document ? document->database() : nullptr);
    if (document)
        tell(&AcApDocManagerReactor::documentBecameCurrent, document);
}

Acad::ErrorStatus AcApDocManager::setCurDocument(AcApDocument* document, AcAp::DocLockMode mode, bool activate) {
    if (!owns(document))
        return fail(Acad::eNoDocument, "There is no such drawing to go to.");
    if (activate)
        activateDocument(document);
    else if (document != current_)
        enter(document);
    return mode == AcAp::kNone ? Acad::eOk : lockDocument(document, mode);
}

Acad::ErrorStatus AcApDocManager::activateDocument(AcApDocument* document) {
    if (!owns(document))
        return fail(Acad::eNoDocument, "There is no such drawing to go to.");
    if (document == current_)
        return Acad::eOk;
    if (current_)
        tell(&AcApDocManagerReactor::documentToBeDeactivated, current_);
    tell(&AcApDocManagerReactor::documentToBeActivated, document);
    enter(document);
    tell(&AcApDocManagerReactor::documentActivated, document);
    return Acad::eOk;
}

// Coming and going.

AcApDocument* AcApDocManager::adopt(std::unique_ptr<AcApDocument> owned) {
    AcApDocument* const document = owned.get();
    documents_.push_back(std::move(owned));
    document->database()->disableUndoRecording(false);
    host_.variables().applyTo(*document);
    if (current_)
        tell(&AcApDocManagerReactor::documentToBeDeactivated, current_);
    enter(document);
    tell(&AcApDocManagerReactor::documentCreated, document);
    host_.linker().tellDocument(AcRx::kLoadDwgMsg);
    tell(&AcApDocManagerReactor::documentToBeActivated, document);
    tell(&AcApDocManagerReactor::documentActivated, document);
    document->database()->undo().clear();
    document->database()->setDirty(false);
    return document;
}

Acad::ErrorStatus AcApDocManager::appContextNewDocument(const char* templateName) {
    const bool plain = !templateName || !*templateName;
    auto database = std::make_unique<AcDbDatabase>(plain);
    if (!plain) {
        const auto path = vndk::win32::DriveMap::current().toHost(templateName);
        if (!path)
            return fail(Acad::eFileNotFound, std::string("The template \"") + templateName +
                                                 "\" can't be a file's name. Give a path on a mapped drive.");
        if (const Acad::ErrorStatus status = database->readDwgFile(path->c_str(), kShareWithAll); status != Acad::eOk)
            return fail(status, fileErrorOf(*database));
    }
    auto document = std::unique_ptr<AcApDocument>(
        new AcApDocument(host_, std::move(database), "Drawing" + std::to_string(++newCount_) + ".dwg", false));
    tell(&AcApDocManagerReactor::documentCreateStarted, document.get());
    adopt(std::move(document));
    return Acad::eOk;
}

Acad::ErrorStatus AcApDocManager::appContextOpenDocument(const char* fileName) {
    const auto& drives = vndk::win32::DriveMap::current();
    const auto path = fileName && *fileName ? drives.toHost(fileName) : std::nullopt;
    if (!path)
        return fail(Acad::eFileNotFound, std::string("\"") + (fileName ? fileName : "") +
                                             "\" can't be a file's name. Give a path on a mapped drive.");
    const auto dosName = drives.toDos(*path);
    std::string name = dosName ? *dosName : vndk::win32::fromUtf8Lossy(*path);
    if (AcApDocument* const open = documentOf(name, *path))
        return activateDocument(open);
    auto document = std::unique_ptr<AcApDocument>(
        new AcApDocument(host_, std::make_unique<AcDbDatabase>(false), std::move(name), true));
    tell(&AcApDocManagerReactor::documentCreateStarted, document.get());
    if (const Acad::ErrorStatus status = readAndLock(*document, *path); status != Acad::eOk) {
        tell(&AcApDocManagerReactor::documentCreateCanceled, document.get());
        return status;
    }
    adopt(std::move(document));
    return Acad::eOk;
}

/// A link leads to the same file under another name.
AcApDocument* AcApDocManager::documentOf(const std::string& dosName, const std::string& path) const {
    const auto& drives = vndk::win32::DriveMap::current();
    for (const auto& document : documents_) {
        if (!document->hasFile())
            continue;
        if (vndk::win32::compareNoCase(document->fileName(), dosName) == 0)
            return document.get();
        std::error_code ignored;
        const auto other = drives.toHost(document->fileName());
        if (other && std::filesystem::equivalent(*other, path, ignored))
            return document.get();
    }
    return nullptr;
}

Acad::ErrorStatus AcApDocManager::readAndLock(AcApDocument& document, const std::string& path) {
    AcDbDatabase& database = *document.database();
    const auto mark = markOf(path);
    if (const Acad::ErrorStatus status = database.readDwgFile(path.c_str(), kShareWithAll); status != Acad::eOk)
        return fail(status, fileErrorOf(database));
    vndk::host::loadXrefs(host_, database, document.fileName_);
    lockFile(document);
    if (document.isReadOnly() && !host_.confirm(document.fileName_ + " can't be opened for writing:\n\n" + lastError_ +
                                                "\n\nOpen it for reading only?"))
        return fail(Acad::eFileSharingViolation, lastError_ + "\nIt wasn't opened.");
    if (!document.isReadOnly() && markOf(path) != mark)
        return fail(Acad::eFileSharingViolation, document.fileName_ +
                                                     " was saved by another program while it was being read. "
                                                     "Open it again.");
    return Acad::eOk;
}

void AcApDocManager::lockFile(AcApDocument& document) {
    // By the name under which the file will be saved.
    const auto path = vndk::win32::DriveMap::current().toHost(document.fileName_);
    const auto locked = path ? vndk::dwg::lockDrawing(*document.database(), *path) : vndk::dwg::Result<void>();
    document.readOnly_ = !locked;
    if (locked)
        return;
    lastError_ = vndk::win32::fromUtf8Lossy(locked.error().message);
    host_.freshLine();
    host_.print(lastError_ + "\nIt is open for reading only.\n");
}

void AcApDocManager::renameDocument(AcApDocument& document, std::string fileName) {
    document.fileName_ = std::move(fileName);
    document.hasFile_ = true;
    lockFile(document);
}

Acad::ErrorStatus AcApDocManager::closeDocument(AcApDocument* document) {
    if (!owns(document))
        return fail(Acad::eNoDocument, "There is no such drawing to close.");
    AcApDocument* next = current_ != document ? current_ : nullptr;
    activateDocument(document);
    host_.linker().tellDocument(AcRx::kUnloadDwgMsg);
    tell(&AcApDocManagerReactor::documentToBeDestroyed, document);
    host_.externals().forgetDocument(*document);
    const auto place = std::find_if(documents_.begin(), documents_.end(),
                                    [document](const auto& item) { return item.get() == document; });
    closed_.push_back(std::move(*place));
    documents_.erase(place);
    std::erase_if(sent_, [document](const Sent& sent) { return sent.document == document; });
    if (!next && !documents_.empty())
        next = documents_.back().get();
    enter(next);
    const std::string name = document->fileName();
    reactors_.tell([&name](AcApDocManagerReactor& r) { r.documentDestroyed(name.c_str()); });
    if (next)
        tell(&AcApDocManagerReactor::documentActivated, next);
    if (!host_.commandLine().isStepping())
        releaseClosed();
    return Acad::eOk;
}

void AcApDocManager::closeAll() {
    while (!documents_.empty())
        closeDocument(documents_.back().get());
    releaseClosed();
}

void AcApDocManager::pushResourceHandle(void* instance) {
    resourceHandles_.push_back(AfxGetResourceHandle());
    AfxSetResourceHandle(static_cast<HINSTANCE>(instance));
}

void AcApDocManager::popResourceHandle() {
    if (resourceHandles_.empty())
        return;
    AfxSetResourceHandle(static_cast<HINSTANCE>(resourceHandles_.back()));
    resourceHandles_.pop_back();
}
