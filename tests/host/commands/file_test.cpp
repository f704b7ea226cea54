// NEW, OPEN, QSAVE, SAVEAS, CLOSE and QUIT on real files.
#include "commands_fixture.h"
#include "win32/drive_map.h"

#include <unistd.h>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

class FileTest : public CommandsTest {
protected:
    FileTest() : folder(fs::temp_directory_path() / ("vondrake-commands-" + std::to_string(getpid()))) {
        fs::create_directories(folder);
        former = vndk::win32::DriveMap::current();
        EXPECT_TRUE(vndk::win32::DriveMap::current().map('T', folder.string()).ok());
    }
    ~FileTest() override {
        vndk::win32::DriveMap::current() = former;
        fs::remove_all(folder);
    }
    std::string path(const char* name) const { return (folder / name).string(); }

    fs::path folder;
    vndk::win32::DriveMap former;
};

} // namespace

TEST_F(FileTest, bothFormsOfNamesLeadToTheSameFile) {
    run("LINE 0,0 1,0\n\nSAVEAS 2000 T:\\plan one\n");
    EXPECT_TRUE(fs::exists(path("plan one.dwg"))) << output;
    EXPECT_STREQ(document().fileName(), "T:\\plan one.dwg");
    EXPECT_FALSE(database().isDirty());
    run("CIRCLE 0,0 1\nQSAVE\n");
    EXPECT_TRUE(fs::exists(path("plan one.bak"))) << output;
    for (const std::string& name : {path("plan one.dwg"), std::string("\"t:/PLAN ONE.DWG\""), path("plan one")}) {
        run("CLOSE\nNEW\n\n");
        run("OPEN " + name + "\n");
        EXPECT_EQ(drawn(), "LINE 0,0 1,0\nCIRCLE 0,0 r 1") << name << output;
    }
}

TEST_F(FileTest, qsaveAsksForANameOnlyTheFirstTime) {
    run("QSAVE\n\nT:first\n");
    EXPECT_TRUE(fs::exists(path("first.dwg"))) << output;
    EXPECT_TRUE(printed("Save drawing as <Drawing1.dwg>: ")) << output;
    run("LINE 0,0 1,0\n\nQSAVE\n");
    EXPECT_FALSE(printed("Save drawing as")) << output;
    EXPECT_FALSE(database().isDirty());
}

TEST_F(FileTest, anotherFileIsReplacedOnlyWhenAsked) {
    run("SAVEAS\n\nT:a\nNEW\n\nLINE 0,0 1,0\n\nSAVEAS\n\nT:b\n");
    const auto size = fs::file_size(path("a.dwg"));
    run("SAVEAS\n\nT:a\n");
    EXPECT_TRUE(printed("is open as another drawing")) << output;
    run("SAVEAS\n\nT:c\nCLOSE\n"); // now a.dwg is open alone
    run("NEW\n\nSAVEAS\n\nT:b\nN\n");
    EXPECT_TRUE(printed("Do you want to replace it? <N>: ")) << output;
    EXPECT_FALSE(fs::exists(path("b.bak")));
    EXPECT_FALSE(document().hasFile());
    run("SAVEAS\n\nT:b\nY\n");
    EXPECT_TRUE(fs::exists(path("b.bak"))) << output;
    EXPECT_EQ(fs::file_size(path("a.dwg")), size);
}

TEST_F(FileTest, troubleWithFilesIsToldAsSuch) {
    std::ofstream(path("text.dwg")) << "not a drawing";
    const char* const scripts[] = {"OPEN T:nothing\n", "OPEN T:text\n",       "OPEN\n\n",
                                   "OPEN Q:\\a.dwg\n", "NEW T:nothing.dwt\n", "SAVEAS\n\nT:no/such/folder/a\n",
                                   "SAVEAS\n\nQ:\\a\n"};
    for (const char* script : scripts) {
        const AcApDocument* const before = &document();
        const int count = host.documents().documentCount();
        run(script);
        ASSERT_TRUE(problem) << script << output;
        EXPECT_EQ(problem->kind, vndk::host::Problem::Kind::DrawingFailed) << script << output;
        EXPECT_EQ(&document(), before) << script;
        EXPECT_EQ(host.documents().documentCount(), count) << script;
    }
}

TEST_F(FileTest, changesArentLostWithoutAQuestion) {
    run("QUIT\n");
    EXPECT_TRUE(host.quitRequested());
    run("LINE 0,0 1,0\n\nCLOSE\n\n");
    EXPECT_EQ(host.documents().documentCount(), 1) << output;
    EXPECT_EQ(drawn(), "LINE 0,0 1,0");
    run("CLOSE Y\n");
    EXPECT_EQ(host.documents().documentCount(), 0) << output;
    run("LINE\n");
    EXPECT_TRUE(problem);
    run("NEW\n\n");
    EXPECT_EQ(host.documents().documentCount(), 1) << output;
}

TEST_F(FileTest, commandsThatNeedNoDrawingFollowACloseInOneScript) {
    run("LINE 0,0 1,0\n\nSAVEAS\n\nT:kept\nCLOSE\nNEW\n\nCIRCLE 0,0 1\n");
    EXPECT_FALSE(problem) << output;
    EXPECT_EQ(drawn(), "CIRCLE 0,0 r 1");
    run("CLOSE Y\nOPEN T:kept\nCIRCLE 0,0 2\nQSAVE\n");
    EXPECT_FALSE(problem) << output;
    EXPECT_EQ(drawn(), "LINE 0,0 1,0\nCIRCLE 0,0 r 2");
    run("CLOSE\nQUIT\n");
    EXPECT_FALSE(problem) << output;
    EXPECT_TRUE(host.quitRequested());
    EXPECT_EQ(host.documents().documentCount(), 0);
}

TEST_F(FileTest, withoutADrawingTheOthersSaySoAndNothingElseHappens) {
    run("CLOSE\n");
    for (const char* script : {"LINE 0,0 1,0\n\n", "QSAVE\n", "SAVEAS\n\nT:none\n", "CLOSE\n", "U\n", "LTSCALE 2\n",
                               "(setq a 1)\n", "!a\n", "OPEN T:nothing\n"}) {
        run(script);
        EXPECT_TRUE(problem) << script << output;
        EXPECT_EQ(host.documents().documentCount(), 0) << script;
    }
    run("NEW\n\n(setq a 1)\n");
    EXPECT_FALSE(problem) << output;
}

TEST_F(FileTest, quitAsksForEachChangedDrawing) {
    run("LINE 0,0 1,0\n\nNEW\n\nLINE 0,0 2,0\n\nQUIT Y N\n");
    EXPECT_FALSE(host.quitRequested());
    EXPECT_EQ(events.back(), "cancel QUIT");
    run("QUIT Y Y\n");
    EXPECT_TRUE(host.quitRequested());
}
