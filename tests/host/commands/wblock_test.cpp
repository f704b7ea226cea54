// WBLOCK on real files.
#include "commands_fixture.h"
#include "dwg/drawing_lock.h"
#include "win32/drive_map.h"

#include <unistd.h>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

constexpr const char* kSourcePrompt =
    "Enter name of existing block or\n[= (block=output file)/* (whole drawing)] <define new drawing>: ";

class WblockTest : public CommandsTest {
protected:
    WblockTest() : folder(fs::temp_directory_path() / ("vondrake-wblock-" + std::to_string(getpid()))) {
        fs::create_directories(folder);
        former = vndk::win32::DriveMap::current();
        EXPECT_TRUE(vndk::win32::DriveMap::current().map('T', folder.string()).ok());
        run("LINE 5,5 6,5\n\nCIRCLE 1,1 1\nLINE 0,0 0,3\n\nBLOCK DOOR 0,0 L\n\n");
        database().undo().clear();
    }
    ~WblockTest() override {
        vndk::win32::DriveMap::current() = former;
        fs::remove_all(folder);
    }
    std::string path(const char* name) const { return (folder / name).string(); }
    /// What the file draws, seen in another document.
    std::string drawnIn(const char* name) {
        AcApDocument* const here = &document();
        host.documents().appContextOpenDocument((std::string("T:\\") + name + ".dwg").c_str());
        const std::string text = &document() == here ? "can't be opened" : drawn();
        if (&document() != here)
            host.documents().closeDocument(&document());
        host.runText("");
        return text;
    }

    fs::path folder;
    vndk::win32::DriveMap former;
};

} // namespace

TEST_F(WblockTest, objectsGoIntoTheFileAndOutOfTheDrawing) {
    run("WBLOCK T:part\n\n5,5 6,5 2,1\n\n");
    EXPECT_FALSE(problem) << output;
    EXPECT_TRUE(printed("Enter name of output file: ")) << output;
    EXPECT_TRUE(printed(kSourcePrompt)) << output;
    EXPECT_TRUE(printed("Specify insertion base point: ")) << output;
    EXPECT_EQ(drawn(), "");
    EXPECT_EQ(drawnIn("part"), "LINE 0,0 1,0\nCIRCLE -4,-4 r 1");
    run("U\n");
    EXPECT_EQ(drawn(), "LINE 5,5 6,5\nCIRCLE 1,1 r 1");
    EXPECT_TRUE(fs::exists(path("part.dwg")));
}

TEST_F(WblockTest, theFileIsSeenFromTheCurrentCoordinateSystem) {
    run("UCS O 5,5\nUCS Z 90\nWBLOCK T:turned\n\n0,0 L\n\n");
    EXPECT_FALSE(problem) << output;
    EXPECT_EQ(drawnIn("turned"), "CIRCLE -4,4 r 1");
}

TEST_F(WblockTest, blocksAndTheWholeDrawingStay) {
    const std::string before = drawn();
    run("WBLOCK T:leaf\ndoor\n");
    run("WBLOCK T:door\n=\n");
    run("-WBLOCK T:all\n*\n");
    EXPECT_FALSE(problem) << output;
    EXPECT_EQ(drawnIn("leaf"), "LINE 0,0 0,3");
    EXPECT_EQ(drawnIn("door"), "LINE 0,0 0,3");
    EXPECT_EQ(drawnIn("all"), before);
    EXPECT_EQ(drawn(), before);
    EXPECT_EQ(blockContents("DOOR"), "LINE 0,0 0,3");
    EXPECT_EQ(database().undo().undoCount(), 0u) << "nothing was changed";
}

TEST_F(WblockTest, anUnknownBlockIsNoAnswer) {
    host.commandLine().setInvalidAnswers(vndk::host::InvalidAnswers::AskAgain);
    run("WBLOCK T:a\nwindow\n*Model_Space\nDOOR\n");
    EXPECT_TRUE(printed("Block \"window\" not found.")) << output;
    EXPECT_TRUE(printed("is a space or an external reference")) << output;
    EXPECT_EQ(drawnIn("a"), "LINE 0,0 0,3");
    host.commandLine().setInvalidAnswers(vndk::host::InvalidAnswers::FailCommand);
    run("WBLOCK T:b\n=\n");
    EXPECT_TRUE(problem);
    EXPECT_FALSE(fs::exists(path("b.dwg")));
}

TEST_F(WblockTest, filesAreReplacedOnlyWhenAskedAndNeverWhileTheyAreOpen) {
    const std::string before = drawn();
    std::ofstream(path("old.dwg")) << "old";
    run("WBLOCK T:old\nN\n");
    EXPECT_TRUE(printed("Do you want to replace it? <N>: ")) << output;
    EXPECT_EQ(fs::file_size(path("old.dwg")), 3u);
    run("WBLOCK T:old\nY\nDOOR\n");
    EXPECT_EQ(drawnIn("old"), "LINE 0,0 0,3");
    EXPECT_EQ(fs::file_size(path("old.bak")), 3u);

    run("SAVEAS\n\nT:own\nWBLOCK " + path("own.dwg") + "\n*\n");
    EXPECT_TRUE(printed("is open as a drawing")) << output;
    EXPECT_EQ(problem->kind, vndk::host::Problem::Kind::DrawingFailed);

    const auto lock = vndk::dwg::DrawingLock::acquire(path("locked.dwg"));
    ASSERT_TRUE(lock);
    run("WBLOCK T:locked\n\n0,0 ALL\n\n");
    ASSERT_TRUE(problem) << output;
    EXPECT_EQ(problem->kind, vndk::host::Problem::Kind::DrawingFailed) << output;
    EXPECT_FALSE(fs::exists(path("locked.dwg")));
    EXPECT_EQ(drawn(), before) << "what isn't in a file stays in the drawing";
}

TEST_F(WblockTest, whatCantBeWrittenIsToldAndNothingIsLost) {
    const std::string before = drawn();
    for (const char* script : {"WBLOCK\n\n", "WBLOCK T:no/such/folder/a\n*\n", "WBLOCK Q:\\a\n*\n", "WBLOCK T:\n",
                               "WBLOCK T:a\n\n0,0\n\n"}) {
        run(script);
        EXPECT_TRUE(problem) << script << output;
        EXPECT_EQ(drawn(), before) << script;
    }
    for (const char* script :
         {"WBLOCK \x1B\n", "WBLOCK T:a\n\x1B\n", "WBLOCK T:a\n\n\x1B\n", "WBLOCK T:a\n\n0,0 ALL \x1B\n"}) {
        run(script);
        EXPECT_EQ(events.back(), "cancel WBLOCK") << script << output;
        EXPECT_EQ(drawn(), before) << script;
    }
    EXPECT_FALSE(fs::exists(path("a.dwg")));
}

TEST_F(WblockTest, objectsOnLockedLayersAreCopiedAndStay) {
    run("LAYER M Fixed\n\nLINE 7,7 8,8\n\nLAYER LO Fixed\n\nWBLOCK T:a\n\n0,0 ALL\n\n");
    EXPECT_FALSE(problem) << output;
    EXPECT_TRUE(printed("1 on locked layers or in use stayed in the drawing too.")) << output;
    EXPECT_EQ(drawn(), "LINE 7,7 8,8");
    EXPECT_EQ(drawnIn("a"), "LINE 5,5 6,5\nCIRCLE 1,1 r 1\nLINE 7,7 8,8");
}
