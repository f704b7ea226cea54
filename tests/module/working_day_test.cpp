// Days of work with the host's commands and the module's, by a user without an aim: each step that is undone or redone
// has to lead to the state that was there, and the file has to hold what the drawing holds.
//
// A failure prints the seed and what was typed so far. VONDRAKE_SEEDS="40 200" tries 200 days from the 40th on in place
// of the few of each run; VONDRAKE_SEEDS=40 that day alone, telling what is typed at once: also ahead of a crash.
#include "mfc/afx.h"
#include "module/aimless_user.h"
#include "module/module_fixture.h"
#include "module/working_day.h"
#include "platform/temp_folder.h"
#include "screen/memory.h"
#include "support/drawings.h"
#include "win32/desktop.h"
#include "win32/drive_map.h"
#include "win32/user_script.h"

#include <algorithm>
#include <sstream>

using vndk::win32::UserScript;

namespace {

constexpr const char* kTitle = "Edit Attribute";
constexpr int kList = 220;
constexpr int kOk = 223;

/// Whenever the dialog waits for its user, values are typed or it is given up.
class EditingScreen : public vndk::screen::MemoryScreen {
public:
    using MemoryScreen::MemoryScreen;

    void wait(int milliseconds) override {
        if (user_ && user_->done())
            user_.reset();
        if (!user_ && FindWindowA(nullptr, kTitle)) {
            user_ = std::make_unique<UserScript>(*this);
            user_->in(kTitle).waitForWindow();
            if (++dialogs_ % 3 == 0)
                user_->press(VK_ESCAPE);
            else
                user_->clickAt(kList, {150, 24}).type("set " + std::to_string(dialogs_)).press(VK_DOWN).click(kOk);
            user_->waitUntilGone();
        }
        MemoryScreen::wait(milliseconds);
    }

private:
    std::unique_ptr<UserScript> user_;
    int dialogs_ = 0;
};

struct Seeds {
    uint32_t first = 1, count = 6;
};

Seeds seeds() {
    Seeds seeds;
    if (const char* const wanted = std::getenv("VONDRAKE_SEEDS")) {
        seeds.count = 1;
        std::istringstream text(wanted);
        text >> seeds.first;
        if (uint32_t count = 0; text >> count)
            seeds.count = count;
    }
    return seeds;
}

/// Puts blocks with attributes, and one within another, into an empty drawing.
constexpr const char* kBlocks =
    "ATTDEF\n\nWIDTH\nHow wide\n900\n1,0 1 0\nLINE 0,0 2,1\n\nBLOCK DESK 0,0 ALL\n\n"
    "ATTDEF\n\nOWNER\nWhose\nnobody\n0,0 1 0\nATTDEF\nC\n\nMAKER\nus\n0,2 1 0\nCIRCLE 1,1 1\nBLOCK CHAIR 1,1 ALL\n\n"
    "-INSERT DESK 0,0 1 1 0\n800\n-INSERT CHAIR 2,2 1 1 0\nme\nCIRCLE 3,3 1\nBLOCK LAMP 0,0 ALL\n\n"
    "LAYER N WALLS N FURNITURE\n\nATTDEF\nC\n\nROOM\nWhich room\n12\n5,5 1 0\n";

class WorkingDayTest : public ModuleTest {
protected:
    WorkingDayTest() {
        application.SetProfileFile((folder / "profile.ini").c_str());
        application.WriteProfileInt("Vondrake", "DoNotShow", 1);
        EXPECT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 800, 600,
                                   nullptr, nullptr));
        host.setMainWindow(frame.m_hWnd);
    }
    ~WorkingDayTest() override {
        host.commandLine().setSource(nullptr);
        host.setMainWindow(nullptr);
        frame.DestroyWindow();
    }

    void SetUp() override {
        ModuleTest::SetUp();
        run(kBlocks);
        for (const char* name : {"DESK", "CHAIR"}) {
            run("WBLOCK " + (folder / (std::string("file ") + name + ".dwg")) + "\n" + name);
            ASSERT_FALSE(problem) << output;
        }
        run("WBLOCK " + (folder / "room.dwg") + "\n*");
        ASSERT_FALSE(problem) << output;
    }

    /// Another host's day must not begin with this one's files.
    std::vector<std::string> files() const {
        const std::string desk = folder / "file DESK.dwg", room = folder / "room.dwg";
        std::string dos = vndk::win32::DriveMap::current().toDos(room).value_or("");
        std::replace(dos.begin(), dos.end(), '\\', '/');
        return {desk, room, dos, folder / "missing.dwg", vndk::win32::DriveMap::current().toHost(desk).value_or("")};
    }

    void openCopy(const std::string& path, const std::string& name) {
        const std::string copy = folder / name;
        std::filesystem::copy_file(path, copy, std::filesystem::copy_options::overwrite_existing);
        ASSERT_EQ(host.documents().appContextOpenDocument(copy.c_str()), Acad::eOk) << host.documents().lastError();
    }

    /// A line about steps, now and then.
    static std::string stepsLine(AimlessUser& user) {
        switch (user.below(12)) {
        case 0:
        case 1:
        case 2:
            return "REDO";
        case 3:
        case 4:
            return "UNDO " + std::to_string(1 + user.below(6));
        case 5:
            return user.oneIn(4) ? "UNDO B" : "UNDO M";
        case 6:
            return "UNDO BE";
        case 7:
            return "UNDO E";
        default:
            return "U";
        }
    }

    /// Types one line and answers what it leads to. False: something is wrong, and has been told.
    bool type(AimlessUser& user, WorkingDay& day, const std::string& line) {
        const short attreq = database().attreq();
        run(line);
        std::string trouble = WorkingDay::isAboutSteps(line) ? day.afterSteps(line) : day.afterCommand();
        if (trouble.empty() && database().attreq() != attreq && !line.starts_with("ATTREQ"))
            trouble = "ATTREQ was changed to " + std::to_string(database().attreq());
        if (trouble.empty() && host.commandLine().commandActive())
            trouble = "a command still runs";
        expectAllClosed();
        return expectNo(trouble, user);
    }

    bool expectNo(const std::string& trouble, const AimlessUser& user) {
        EXPECT_EQ(trouble, "") << "typed so far:\n" << user.typed() << "\nprinted last:\n" << output;
        return trouble.empty() && !HasFailure();
    }

    bool work(AimlessUser& user, WorkingDay& day, size_t lines) {
        for (size_t i = 0; i < lines; ++i) {
            const bool steps = user.oneIn(4);
            const std::string line = steps ? stepsLine(user) : user.command();
            if (steps)
                user.note(line);
            if (!type(user, day, line))
                return false;
            if (user.oneIn(40) && !expectNo(day.saved(), user))
                return false;
        }
        return true;
    }

    bool typeSteps(AimlessUser& user, WorkingDay& day, const char* line) {
        user.note(line);
        return type(user, day, line);
    }

    void liveThrough(uint32_t seed, size_t lines) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        AimlessUser user(seed, files(), folder.path());
        user.setAloud(seeds().count == 1);
        host.commandLine().setSource(&user);
        WorkingDay day(*host.documents().curDocument());
        if (!work(user, day, lines) || !expectNo(day.saved(), user))
            return;
        typeSteps(user, day, "UNDO E");
        if (!typeSteps(user, day, "UNDO 9999") || !expectNo(day.saved(), user))
            return;
        EXPECT_EQ(database().undo().undoCount(), 0U);
        while (database().undo().redoCount() > 0)
            if (!typeSteps(user, day, "REDO"))
                return;
        if (work(user, day, lines / 6))
            expectNo(day.saved(), user);
        host.commandLine().setSource(nullptr);
        EXPECT_EQ(host.documents().closeDocument(host.documents().curDocument()), Acad::eOk);
    }

    TempFolder folder;
    CWinApp application{"working-day-test"};
    EditingScreen screen{800, 600};
    vndk::win32::Desktop desktop{screen};
    CFrameWnd frame;
};

constexpr size_t kLines = 250;

TEST_F(WorkingDayTest, InANewDrawing) {
    for (uint32_t seed = seeds().first; seed < seeds().first + seeds().count && !HasFailure(); ++seed) {
        host.documents().appContextNewDocument(nullptr);
        run(kBlocks);
        liveThrough(seed, kLines);
    }
}

std::string realDrawing(const char* name) { return std::getenv("VONDRAKE_DRAWINGS") + std::string("/r2000/") + name; }

TEST_F(WorkingDayTest, InARealDrawing) {
    SKIP_WITHOUT_DRAWINGS();
    for (uint32_t seed = seeds().first; seed < seeds().first + seeds().count && !HasFailure(); ++seed) {
        openCopy(realDrawing("entities-2d.dwg"), "day.dwg");
        liveThrough(seed, kLines);
    }
}

/// It has dimensions of most kinds, and its objects lie far apart: what is chosen is mostly all or the last.
TEST_F(WorkingDayTest, InADrawingOfDimensions) {
    SKIP_WITHOUT_DRAWINGS();
    for (uint32_t seed = seeds().first; seed < seeds().first + (seeds().count + 2) / 3 && !HasFailure(); ++seed) {
        openCopy(realDrawing("example_2000.dwg"), "dimensions.dwg");
        liveThrough(seed, kLines / 3);
    }
}

/// BLOCK upgrades a reference that lies about. Brought back by an undo it stays plain, whatever was upgraded elsewhere.
TEST_F(WorkingDayTest, EachDrawingKnowsItsLastUpgrade) {
    const auto blockLine = [this](const std::string& name) {
        run("LINE 5,5 6,5\n\nBLOCK " + name + " 0,0 L\n");
        EXPECT_FALSE(problem) << output;
        const std::vector<AcDbObjectId> ids = modelSpace();
        return std::count_if(ids.begin(), ids.end(), [](AcDbObjectId id) {
            return AcDbObjectPointer<AcDbEntity>(id)->isA() == VNDKBlockReference::desc();
        });
    };
    run("ATTREQ 0");
    std::vector<AcApDocument*> documents;
    for (int i = 0; i < 2; ++i) {
        host.documents().appContextNewDocument(nullptr);
        run(kBlocks);
        run("ATTREQ 0\n-INSERT DESK 0,0 1 1 0");
        documents.push_back(host.documents().curDocument());
        EXPECT_EQ(blockLine("FIRST"), 1);
        run("U");
    }
    for (AcApDocument* const document : documents) {
        ASSERT_EQ(host.documents().setCurDocument(document), Acad::eOk);
        EXPECT_EQ(blockLine("SECOND"), 0);
        run("-INSERT CHAIR 8,8 1 1 0");
        EXPECT_EQ(blockLine("THIRD"), 1) << "another one";
    }
}

TEST_F(WorkingDayTest, InTwoDrawingsByTurns) {
    for (uint32_t seed = seeds().first; seed < seeds().first + seeds().count && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        AimlessUser user(seed, files(), folder.path());
        user.setAloud(seeds().count == 1);
        std::vector<std::unique_ptr<WorkingDay>> days;
        for (int i = 0; i < 2; ++i) {
            host.documents().appContextNewDocument(nullptr);
            run(kBlocks);
            days.push_back(std::make_unique<WorkingDay>(*host.documents().curDocument()));
        }
        host.commandLine().setSource(&user);
        for (size_t turn = 0; turn < kLines / 4; ++turn) {
            const size_t here = user.below(2);
            ASSERT_EQ(host.documents().setCurDocument(&days[here]->document()), Acad::eOk);
            user.note(";; in drawing " + std::to_string(here));
            if (!work(user, *days[here], 1 + user.below(4)) || !expectNo(days[1 - here]->whileAway(), user))
                break;
        }
        for (const auto& day : days)
            expectNo(day->saved(), user);
        host.commandLine().setSource(nullptr);
        for (const auto& day : days)
            host.documents().closeDocument(&day->document());
    }
}

} // namespace
