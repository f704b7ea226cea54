// Documents: the open drawings, and who is told when they come, go and change places.
//
// Each document has a database, a LISP of its own and a lock state. One is the current document; its database is the
// working database. Order of events:
//   a new document  documentCreateStarted; it becomes current (documentToBeDeactivated of the former one,
//                   documentBecameCurrent); documentCreated; kLoadDwgMsg to each application; documentToBeActivated,
//                   documentActivated. If its file can't be read: documentCreateCanceled, and the former one stays.
//   another current documentToBeDeactivated, documentToBeActivated, documentBecameCurrent, documentActivated
//   closing         the document becomes current; kUnloadDwgMsg; documentToBeDestroyed; a surviving document becomes
//                   current (documentBecameCurrent); documentDestroyed with the file name; documentActivated
//   locking         documentLockModeWillChange, documentLockModeChanged
// In documentCreated curDocument() is the new document, in documentDestroyed the surviving one (or null).
#pragma once

#include "ap/transaction_manager.h"
#include "db/database.h"

#include <memory>
#include <string>
#include <vector>

namespace vndk::lisp {
class Interpreter;
}
namespace vndk::host {
class Host;
class DrawingViews;
class LispLink;
struct CommandMemory;
} // namespace vndk::host

namespace AcAp {

enum DocLockMode {
    kNone = 0x00,
    kAutoWrite = 0x01,
    kNotLocked = 0x02,
    kWrite = 0x04,
    kProtectedAutoWrite = 0x14,
    kRead = 0x20,
    kXWrite = 0x40
};

} // namespace AcAp

/// One open drawing. Owned by the document manager.
class AcApDocument : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcApDocument)
public:
    AcDbDatabase* database() const { return database_.get(); }
    AcTransactionManager* transactionManager() { return &transactionManager_; }
    /// Full name in the DOS form ("C:\dwg\plan.dwg"), or "Drawing1.dwg" as long as it has no file.
    const char* fileName() const { return fileName_.c_str(); }
    const char* docTitle() const { return fileName_.c_str(); }
    bool hasFile() const { return hasFile_; }
    AcAp::DocLockMode lockMode() const;
    /// True if no command runs in it and nothing is locked.
    bool isQuiescent() const;
    /// True if another program has the file open for writing, or the folder can't be written.
    bool isReadOnly() const { return readOnly_; }
    vndk::lisp::Interpreter& lisp() const { return *lisp_; }

    ~AcApDocument() override;
    vndk::host::Host& host() const { return host_; }
    /// What the document shows of its spaces.
    vndk::host::DrawingViews& views() const { return *views_; }

    /// Last point given, in the current UCS, for `@` and LASTPOINT.
    AcGePoint3d lastPoint;
    /// What the user has chosen ahead of a command, for commands that take such a selection.
    std::vector<AcDbObjectId> pickedFirst;
    /// What the host's own commands remember of this document; they make it when they first need it.
    std::shared_ptr<vndk::host::CommandMemory> commandMemory;

private:
    friend class AcApDocManager;
    AcApDocument(vndk::host::Host& host, std::unique_ptr<AcDbDatabase> database, std::string fileName, bool hasFile);

    vndk::host::Host& host_;
    std::unique_ptr<AcDbDatabase> database_;
    std::unique_ptr<vndk::host::DrawingViews> views_;
    AcTransactionManager transactionManager_;
    std::unique_ptr<vndk::host::LispLink> link_;
    std::unique_ptr<vndk::lisp::Interpreter> lisp_;
    std::string fileName_;
    std::vector<AcAp::DocLockMode> locks_;
    bool hasFile_;
    bool readOnly_ = false;
};

class AcApDocManagerReactor : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcApDocManagerReactor)
public:
    virtual void documentCreateStarted(AcApDocument* /*document*/) {}
    virtual void documentCreated(AcApDocument* /*document*/) {}
    virtual void documentToBeDestroyed(AcApDocument* /*document*/) {}
    virtual void documentCreateCanceled(AcApDocument* /*document*/) {}
    virtual void documentLockModeWillChange(AcApDocument*, AcAp::DocLockMode /*myCurrent*/, AcAp::DocLockMode /*myNew*/,
                                            AcAp::DocLockMode /*current*/, const char* /*globalCmdName*/) {}
    virtual void documentLockModeChangeVetoed(AcApDocument*, const char* /*globalCmdName*/) {}
    virtual void documentLockModeChanged(AcApDocument*, AcAp::DocLockMode /*myPrevious*/,
                                         AcAp::DocLockMode /*myCurrent*/, AcAp::DocLockMode /*current*/,
                                         const char* /*globalCmdName*/) {}
    virtual void documentBecameCurrent(AcApDocument* /*document*/) {}
    virtual void documentToBeActivated(AcApDocument* /*document*/) {}
    virtual void documentToBeDeactivated(AcApDocument* /*document*/) {}
    virtual void documentActivationModified(bool /*activated*/) {}
    virtual void documentActivated(AcApDocument* /*document*/) {}
    virtual void documentDestroyed(const char* /*fileName*/) {}
};

/// Walks the open documents in the order in which they came.
class AcApDocumentIterator {
public:
    explicit AcApDocumentIterator(std::vector<AcApDocument*> documents) : documents_(std::move(documents)) {}
    bool done() const { return position_ >= documents_.size(); }
    void step() { ++position_; }
    AcApDocument* document() const { return done() ? nullptr : documents_[position_]; }

private:
    std::vector<AcApDocument*> documents_;
    size_t position_ = 0;
};

class AcApDocManager : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcApDocManager)
public:
    explicit AcApDocManager(vndk::host::Host& host);
    ~AcApDocManager() override;

    AcApDocument* curDocument() const { return current_; }
    AcApDocument* mdiActiveDocument() const { return current_; }
    AcApDocument* document(const AcDbDatabase* database) const;
    int documentCount() const { return static_cast<int>(documents_.size()); }
    /// A new iterator, owned by the caller.
    AcApDocumentIterator* newAcApDocumentIterator() const;

    /// Reactors aren't owned; they may be removed while they are being told.
    void addReactor(AcApDocManagerReactor* reactor);
    void removeReactor(AcApDocManagerReactor* reactor);

    /// Brackets writes from outside a command; locks nest. eNoDocument; eLockConflict with an exclusive lock.
    Acad::ErrorStatus lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite,
                                   const char* globalCmdName = nullptr, const char* localCmdName = nullptr,
                                   bool prompt = true);
    /// eNoDocument; eNotApplicable: it isn't locked.
    Acad::ErrorStatus unlockDocument(AcApDocument* document);

    /// Queues text for the document's command line; it runs later, in the document's command context, ahead of what
    /// else has been typed. `activate` makes the document current then. `wrapUpInactive` is accepted: text for a
    /// document that isn't current waits until it is. `echo` repeats the text on the command line as it runs.
    Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const char* text, bool activate = true,
                                          bool wrapUpInactive = false, bool echo = true);

    /// Both make a document current; the second is for the user's sight too.
    Acad::ErrorStatus setCurDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kNone,
                                     bool activate = false);
    Acad::ErrorStatus activateDocument(AcApDocument* document);

    /// An empty drawing; `templateName` null or empty for the plain one.
    Acad::ErrorStatus appContextNewDocument(const char* templateName);
    /// Name in either form. The statuses of AcDbDatabase::readDwgFile; lastError() tells more. A drawing that is open
    /// already becomes current.
    Acad::ErrorStatus appContextOpenDocument(const char* fileName);
    /// Closes without saving. eNoDocument.
    Acad::ErrorStatus closeDocument(AcApDocument* document);
    /// A sentence about the last failure of the calls above.
    const std::string& lastError() const { return lastError_; }
    /// A sentence about the last failure of a database to read or write its file, as text for the command line.
    static std::string fileErrorOf(const AcDbDatabase& database);
    /// After SAVEAS: the drawing now has that file, a full name in the DOS form, and locks it.
    void renameDocument(AcApDocument& document, std::string fileName);

    /// The module (an HINSTANCE) whose resources are looked through first; pushes and pops are in pairs.
    void pushResourceHandle(void* instance);
    void popResourceHandle();

    // For the host.
    /// Hands what is queued for the current document to its command line.
    void deliverSentText();
    void closeAll();
    /// A document that closes while its own command or LISP runs stays in memory until this is called.
    void releaseClosed() { closed_.clear(); }

private:
    struct Sent {
        AcApDocument* document;
        std::string text;
        bool activate;
        bool echo;
    };
    using Event = void (AcApDocManagerReactor::*)(AcApDocument*);
    void tell(Event event, AcApDocument* document);
    void tellLock(AcApDocument& document, AcAp::DocLockMode former, AcAp::DocLockMode next, const char* command);
    AcApDocument* adopt(std::unique_ptr<AcApDocument> document);
    void enter(AcApDocument* document);
    bool owns(const AcApDocument* document) const;
    Acad::ErrorStatus fail(Acad::ErrorStatus status, std::string message);
    AcApDocument* documentOf(const std::string& dosName, const std::string& path) const;
    Acad::ErrorStatus readAndLock(AcApDocument& document, const std::string& path);
    /// Keeps other programs from saving the document's file. Where that can't be done the document is read-only.
    void lockFile(AcApDocument& document);

    vndk::host::Host& host_;
    std::vector<std::unique_ptr<AcApDocument>> documents_;
    std::vector<std::unique_ptr<AcApDocument>> closed_;
    AcApDocument* current_ = nullptr;
    std::vector<Sent> sent_;
    std::vector<void*> resourceHandles_; // those that were in force before each push
    AcDbReactorList<AcApDocManagerReactor> reactors_;
    std::string lastError_;
    int newCount_ = 0;
};

/// The current host's document manager; null without a host.
AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
