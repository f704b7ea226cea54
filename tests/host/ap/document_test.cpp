#include "host/host_fixture.h"

#include "ads/ads.h"
#include "win32/drive_map.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace vndk::host;

namespace {

class DocumentRecorder : public AcApDocManagerReactor {
public:
    explicit DocumentRecorder(Host& host) : host_(host) {}

    void documentCreateStarted(AcApDocument* d) override { add("create started", d); }
    void documentCreated(AcApDocument* d) override { add("created", d); }
    void documentToBeDestroyed(AcApDocument* d) override { add("to be destroyed", d); }
    void documentCreateCanceled(AcApDocument* d) override { add("create cancelled", d); }
    void documentBecameCurrent(AcApDocument* d) override { add("became current", d); }
    void documentToBeActivated(AcApDocument* d) override { add("to be activated", d); }
    void documentToBeDeactivated(AcApDocument* d) override { add("to be deactivated", d); }
    void documentActivated(AcApDocument* d) override { add("activated", d); }
    void documentDestroyed(const char* name) override { events.push_back("destroyed " + shortName(name) + current()); }
    void documentLockModeChanged(AcApDocument*, AcAp::DocLockMode from, AcAp::DocLockMode to, AcAp::DocLockMode,
                                 const char* name) override {
        events.push_back("lock " + std::to_string(from) + "->" + std::to_string(to) + name);
    }

    std::vector<std::string> take() { return std::exchange(events, {}); }
    std::vector<std::string> events;

private:
    static std::string shortName(const std::string& path) { return path.substr(path.find_last_of("\\/") + 1); }
    /// The current document and whether the working database is its own.
    std::string current() const {
        AcApDocument* const document = host_.documents().curDocument();
        AcDbDatabase* const working = acdbHostApplicationServices()->workingDatabase();
        return std::string(" in ") + (document ? shortName(document->fileName()) : "none") +
               ((document ? document->database() : nullptr) == working ? "" : " (another working database)");
    }
    void add(const char* what, AcApDocument* document) {
        events.push_back(std::string(what) + " " + shortName(document->fileName()) + current());
    }
    Host& host_;
};

class DocumentTest : public HostTest {
protected:
    DocumentTest() : documentRecorder(host) { host.documents().addReactor(&documentRecorder); }
    ~DocumentTest() override { host.documents().removeReactor(&documentRecorder); }
    using Events = std::vector<std::string>;
    DocumentRecorder documentRecorder;
};

} // namespace

TEST_F(DocumentTest, eventsOfANewAndAClosedDrawingComeInOrder) {
    AcApDocument* const first = &document();
    host.documents().appContextNewDocument(nullptr);
    EXPECT_EQ(documentRecorder.take(),
              (Events{"create started Drawing2.dwg in Drawing1.dwg", "to be deactivated Drawing1.dwg in Drawing1.dwg",
                      "became current Drawing2.dwg in Drawing2.dwg", "created Drawing2.dwg in Drawing2.dwg",
                      "to be activated Drawing2.dwg in Drawing2.dwg", "activated Drawing2.dwg in Drawing2.dwg"}));

    EXPECT_EQ(host.documents().closeDocument(&document()), Acad::eOk);
    EXPECT_EQ(documentRecorder.take(),
              (Events{"to be destroyed Drawing2.dwg in Drawing2.dwg", "became current Drawing1.dwg in Drawing1.dwg",
                      "destroyed Drawing2.dwg in Drawing1.dwg", "activated Drawing1.dwg in Drawing1.dwg"}));

    EXPECT_EQ(host.documents().closeDocument(first), Acad::eOk);
    EXPECT_EQ(documentRecorder.take(),
              (Events{"to be destroyed Drawing1.dwg in Drawing1.dwg", "destroyed Drawing1.dwg in none"}));
    EXPECT_EQ(host.documents().closeDocument(nullptr), Acad::eNoDocument);
}

TEST_F(DocumentTest, closingADrawingInTheBackgroundGoesBackToTheCurrentOne) {
    AcApDocument* const first = &document();
    host.documents().appContextNewDocument(nullptr);
    AcApDocument* const second = &document();
    host.documents().closeDocument(first);
    EXPECT_EQ(&document(), second);
    EXPECT_EQ(documentRecorder.take().back(), "activated Drawing2.dwg in Drawing2.dwg");
}

TEST_F(DocumentTest, aFileThatCannotBeReadLeavesTheCurrentDrawing) {
    const std::filesystem::path file = std::filesystem::temp_directory_path() / "vndk_no_drawing.dwg";
    std::ofstream(file) << "this is no drawing";
    AcApDocument* const first = &document();
    documentRecorder.take();
    EXPECT_NE(host.documents().appContextOpenDocument(file.c_str()), Acad::eOk);
    EXPECT_FALSE(host.documents().lastError().empty());
    EXPECT_NE(host.documents().appContextOpenDocument("/no/such/folder/a.dwg"), Acad::eOk);
    EXPECT_NE(host.documents().appContextOpenDocument(""), Acad::eOk);
    EXPECT_EQ(&document(), first);
    EXPECT_EQ(host.documents().documentCount(), 1);
    EXPECT_EQ(documentRecorder.events[1], "create cancelled vndk_no_drawing.dwg in Drawing1.dwg");
    std::filesystem::remove(file);
}

TEST_F(DocumentTest, locksNestAndExcludeOthersWhenExclusive) {
    AcApDocManager& documents = host.documents();
    EXPECT_EQ(documents.lockDocument(&document(), AcAp::kWrite, nullptr, nullptr, true), Acad::eOk);
    EXPECT_EQ(documents.lockDocument(&document(), AcAp::kRead), Acad::eOk);
    EXPECT_EQ(documents.lockDocument(&document(), AcAp::kXWrite), Acad::eLockConflict);
    EXPECT_FALSE(document().isQuiescent());
    EXPECT_EQ(documents.unlockDocument(&document()), Acad::eOk);
    EXPECT_EQ(documents.unlockDocument(&document()), Acad::eOk);
    EXPECT_EQ(documents.unlockDocument(&document()), Acad::eNotApplicable);
    EXPECT_TRUE(document().isQuiescent());
    EXPECT_EQ(documentRecorder.take(), (Events{"lock 2->4", "lock 4->32", "lock 32->4", "lock 4->2"}));
    EXPECT_EQ(documents.lockDocument(nullptr), Acad::eNoDocument);
}

TEST_F(DocumentTest, eachDrawingHasALispOfItsOwn) {
    lisp("(setq a 1)");
    AcApDocument* const first = &document();
    host.documents().appContextNewDocument(nullptr);
    EXPECT_EQ(lisp("a"), "nil");
    host.documents().setCurDocument(first);
    EXPECT_EQ(lisp("a"), "1");
}

TEST_F(DocumentTest, aDrawingMayCloseInTheMiddleOfItsOwnExpression) {
    static Host* current;
    current = &host;
    host.documents().appContextNewDocument(nullptr);
    host.commands().addCommand("G", "TCLOSE", "TCLOSE", 0,
                               [] { current->documents().closeDocument(current->documents().curDocument()); });
    run("(progn (command \"TCLOSE\") (setq a (list 1 2 3)))\n");
    EXPECT_NE(output.find("(1 2 3)"), std::string::npos) << output;
    EXPECT_EQ(host.documents().documentCount(), 1);
    EXPECT_EQ(lisp("a"), "nil");
}

TEST_F(DocumentTest, withoutADrawingCommandsAndExpressionsSayWhatToDo) {
    host.documents().closeDocument(&document());
    EXPECT_NE(run("(+ 1 2)\n").find("There is no drawing."), std::string::npos) << output;
    ads_point point{};
    EXPECT_EQ(acedGetPoint(nullptr, "", point), RTERROR);
}
