// Files that (c:_bInsertFile ...) can't insert: each is told, and leaves the drawing as it was.
#include "dwg/drawing_lock.h"
#include "module/file_insertion_fixture.h"

#include <filesystem>
#include <fstream>

using testing::HasSubstr;

namespace {

constexpr const char* kAlert = "Could not load drawing selected. Perhaps it is open by another user.";

class InsertFileFailuresTest : public FileInsertionTest {
protected:
    /// Inserting the file alerts, gives the reason, and changes nothing.
    void expectRefused(const std::string& path, const std::string& alert, const std::string& reason) {
        SCOPED_TRACE(path);
        AcDbDatabase& drawing = database();
        drawing.setDirty(false);
        const size_t objects = liveObjects();
        const size_t undoable = drawing.undo().undoCount();
        insert(path, "(setq seen 5)");
        EXPECT_THAT(output, HasSubstr(alert));
        EXPECT_THAT(output, HasSubstr(reason));
        EXPECT_THAT(output, HasSubstr("\n5\n")) << "nothing is asked";
        EXPECT_THAT(output, testing::Not(HasSubstr("\nnil")));
        ASSERT_TRUE(problem) << "a script doesn't go on as if nothing had happened";
        EXPECT_EQ(problem->kind, vndk::host::Problem::Kind::CommandFailed);
        EXPECT_EQ(alert.find(problem->message.substr(0, 20)), 0U) << problem->message;
        EXPECT_FALSE(drawing.isDirty());
        EXPECT_EQ(liveObjects(), objects);
        EXPECT_EQ(drawing.undo().undoCount(), undoable);
        EXPECT_TRUE(references().empty());
        expectAllClosed();
    }
};

TEST_F(InsertFileFailuresTest, FilesThatCannotBeRead) {
    const std::string good = desk();
    const std::string bytes = folder.read("desk.dwg");
    expectRefused(folder / "no such.dwg", kAlert, "/no such.dwg can't be opened");
    expectRefused(folder / "n\xF6.dwg", kAlert, "/n\xF6.dwg can't be opened");
    expectRefused("Q:\\nodrive.dwg", kAlert, "Q:\\nodrive.dwg can't be opened");
    expectRefused("nowhere.dwg", kAlert, "nowhere.dwg can't be opened");
    expectRefused("", kAlert, "");
    std::filesystem::create_directory(folder / "folder.dwg");
    expectRefused(folder / "folder.dwg", kAlert, "/folder.dwg");
    expectRefused(folder.write("text.dwg", "This is no drawing."), kAlert, "/text.dwg");
    expectRefused(folder.write("r14.dwg", "AC1014" + bytes.substr(6)), kAlert, "/r14.dwg");
    expectRefused(folder.write("cut.dwg", bytes.substr(0, bytes.size() / 2)), kAlert, "/cut.dwg");
    std::string damaged = bytes;
    damaged.replace(0x15, 40, std::string(40, '\x55'));
    expectRefused(folder.write("damaged.dwg", damaged), kAlert, "/damaged.dwg");
    std::filesystem::permissions(good, std::filesystem::perms::none);
    if (!std::ifstream(good)) // the superuser reads it all the same
        expectRefused(good, kAlert, "/desk.dwg can't be opened");
}

TEST_F(InsertFileFailuresTest, ADrawingThatSomebodyHasOpenForWriting) {
    const std::string path = desk();
    {
        const auto lock = vndk::dwg::DrawingLock::acquire(path);
        ASSERT_TRUE(lock);
        expectRefused(path, kAlert, "/desk.dwg is open for writing by ");
        expectRefused(path, kAlert, "Close it there, then try again.");
    }
    // A lock file that was left behind locks nothing, and looking for locks leaves none.
    folder.write(".desk.dwg.lock", "somebody\n");
    insert(path, "A\n\n\n");
    EXPECT_FALSE(problem);
    EXPECT_EQ(references().size(), 1U);
    file("other.dwg", {});
    insert(folder / "other.dwg");
    EXPECT_EQ(references().size(), 2U);
    EXPECT_FALSE(std::filesystem::exists(folder / ".other.dwg.lock"));
}

TEST_F(InsertFileFailuresTest, TheDrawingItselfAndOthersThatAreOpenHere) {
    const std::string own = file("own.dwg", {new AcDbText({0, 0, 0}, "x")});
    const std::string other = desk();
    ASSERT_EQ(host.documents().appContextOpenDocument(other.c_str()), Acad::eOk);
    ASSERT_EQ(host.documents().appContextOpenDocument(own.c_str()), Acad::eOk);
    expectRefused(own, kAlert, "/own.dwg is open for writing by ");
    expectRefused(other, kAlert, "/desk.dwg is open for writing by ");
}

TEST_F(InsertFileFailuresTest, NamesThatNoBlockCanHave) {
    for (const char* name : {"a,b", "a=b", "a`b", "a;b"}) {
        const std::string path = file(std::string(name) + ".dwg", {define("A", "1")});
        expectRefused(path, kAlert, "\"" + std::string(name) + "\" can't be the name of a block.");
    }
    expectRefused(file(".dwg", {}), kAlert, "\"\" can't be the name of a block.");
}

TEST_F(InsertFileFailuresTest, ADrawingThatHoldsItsOwnName) {
    const AcDbObjectId inner = addBlock("FRAME");
    append(inner, new AcDbText({0, 0, 0}, "x"));
    append(database().modelSpaceId(), new AcDbBlockReference({0, 0, 0}, inner));
    ASSERT_EQ(database().saveAs((folder / "frame.dwg").c_str()), Acad::eOk);
    ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    expectRefused(folder / "frame.dwg", kAlert, "The drawing uses a block \"frame\" itself");
}

TEST_F(InsertFileFailuresTest, ASpaceOrABlockTableThatSomebodyHolds) {
    const std::string path = desk();
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> reader(database().modelSpaceId());
        database().setDirty(false);
        EXPECT_THAT(insert(path), HasSubstr("The current space can't take block \"desk\". Nothing was inserted."));
        EXPECT_TRUE(blockNamed("desk").isNull());
        EXPECT_FALSE(database().isDirty());
    }
    {
        const AcDbObjectPointer<AcDbBlockTable> reader(database().blockTableId());
        EXPECT_THAT(insert(path), HasSubstr(kAlert));
        EXPECT_FALSE(database().isDirty());
    }
    EXPECT_TRUE(references().empty());
    insert(path, "\n\n\n");
    const AcDbObjectPointer<AcDbBlockTableRecord> writer(blockNamed("desk"), AcDb::kForWrite);
    EXPECT_THAT(insert(path), HasSubstr("Block \"desk\" is being changed and can't be read."));
    EXPECT_EQ(references().size(), 1U);
}

} // namespace
