// INSERT of drawing files: new blocks, redefinitions, and files that can't be taken.
#include "db/viewport.h"
#include "insert_fixture.h"
#include "support/drawings.h"
#include "win32/drive_map.h"

#include <unistd.h>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

class InsertFileTest : public InsertFixture {
protected:
    InsertFileTest()
        : folder(fs::temp_directory_path() / ("vondrake-insert-" + std::to_string(getpid()))), cwd(fs::current_path()),
          former(vndk::win32::DriveMap::current()) {
        fs::create_directories(folder);
        EXPECT_TRUE(vndk::win32::DriveMap::current().map('T', folder.string()).ok());
    }
    ~InsertFileTest() override {
        vndk::win32::DriveMap::current() = former;
        fs::current_path(cwd);
        fs::remove_all(folder);
    }
    std::string path(const char* name) const { return (folder / name).string(); }
    /// Saves what a script draws as T:name.
    void save(const std::string& name, const std::string& script) {
        run("NEW\n\n" + script + "SAVEAS\n\nT:" + name + "\nCLOSE\n");
        ASSERT_TRUE(fs::exists(folder / (name + ".dwg"))) << output;
    }
    /// What the drawing holds, told by all that INSERT could have left behind.
    std::string state() {
        return blockContents("DESK") + "\n" + blockContents("B") + "\n" + drawn() + "\n" + references() + "\n" +
               std::to_string(database().isDirty()) + std::to_string(database().undo().undoCount());
    }

    fs::path folder, cwd;
    vndk::win32::DriveMap former;
};

constexpr int kDenyNone = 0x40; // the drawing is still open

/// A desk with a label 1 right of its base point.
constexpr const char* kDesk = "SETVAR INSBASE 1,0\nLINE 1,0 3,0\n\nATTDEF\n\nWOOD Wood?\noak\n2,0 1 0\n";
constexpr const char* kDeskContents = "LINE 1,0 3,0\nATTDEF 'oak' at 2,0 h 1 r 0 tag WOOD prompt 'Wood?' flags 0";

/// Notes the order of events.
class Notes : public AcEditorReactor {
public:
    explicit Notes(std::string& text) : text_(text) {}
    void commandWillStart(const char*) override { text_ += "start "; }
    void commandEnded(const char*) override { text_ += "end"; }
    void beginInsert(AcDbDatabase*, const char* name, AcDbDatabase*) override {
        text_ += std::string("beginInsert:") + name + ' ';
    }
    void beginDeepClone(AcDbDatabase*, AcDbIdMapping&) override { text_ += "beginDeepClone "; }
    void beginDeepCloneXlation(AcDbIdMapping&) override { text_ += "translate "; }
    void otherInsert(AcDbDatabase*, AcDbIdMapping&, AcDbDatabase*) override { text_ += "otherInsert "; }
    void endDeepClone(AcDbIdMapping&) override { text_ += "endDeepClone "; }
    void endInsert(AcDbDatabase*) override { text_ += "endInsert "; }

private:
    std::string& text_;
};

class Appended : public AcDbDatabaseReactor {
public:
    explicit Appended(std::string& text) : text_(text) {}
    void objectAppended(const AcDbDatabase*, const AcDbObject* object) override {
        if (AcDbBlockReference::cast(object) || AcDbAttribute::cast(object))
            text_ += std::string("+") + object->isA()->name() + ' ';
    }

private:
    std::string& text_;
};

} // namespace

TEST_F(InsertFileTest, aFileBecomesABlockOfItsNameWhereverItIsFound) {
    for (const char* place : {"here", "beside", "support dir"})
        fs::create_directories(folder / place);
    save("Desk", kDesk);
    save("here/near", kDesk);
    save("beside/side", kDesk);
    save("support dir/lib", kDesk);
    fs::current_path(folder / "here");
    host.linker().addSupportFolder(path("support dir"));
    run("SAVEAS\n\nT:beside\\plan\n");
    const struct {
        std::string typed;
        const char* block;
    } cases[] = {
        {"T:\\desk", "Desk"},    {"t:/DESK.DWG", "Desk"}, {path("Desk.dwg"), "Desk"},
        {"..\\desk", "Desk"},    {"near", "near"},        {"NEAR.dwg", "near"},
        {"side", "side"},        {"lib.dwg", "lib"},      {"\"T:support dir/lib\"", "lib"},
        {"new=T:\\desk", "new"}, {"near=", "near"},
    };
    for (const auto& c : cases) {
        run("INSERT " + c.typed + " 10,10 1 1 0\nash\n");
        EXPECT_EQ(references(), std::string(c.block) + " 10,10 s 1,1,1 r 0 WOOD='ash'@11,10") << c.typed << output;
        EXPECT_EQ(blockContents(c.block), kDeskContents) << c.typed;
        EXPECT_EQ(host.variables().getText("INSNAME"), c.block);
        run("U\n");
        EXPECT_EQ(references(), "") << c.typed;
        EXPECT_EQ(blockContents(c.block), "no block") << c.typed;
    }
    run("REDO\nINSERT near 0,0 1 1 0\n\n");
    EXPECT_EQ(references(), "near 10,10 s 1,1,1 r 0 WOOD='ash'@11,10\nnear 0,0 s 1,1,1 r 0 WOOD='oak'@1,0");
    const std::string before = references();
    run("QSAVE\n");
    AcDbDatabase saved(false);
    ASSERT_EQ(saved.readDwgFile(path("beside/plan.dwg").c_str(), kDenyNone), Acad::eOk);
    EXPECT_EQ(references(saved), before);
}

TEST_F(InsertFileTest, minsertIsKeptInTheFile) {
    save("desk", kDesk);
    run("MINSERT T:desk 1,1 1 1 0 2 3 10 20\n\n");
    EXPECT_EQ(references(), "desk 1,1 s 1,1,1 r 0 3 x 20, 2 x 10 WOOD='oak'@2,1") << output;
    const std::string before = references();
    run("SAVEAS\n\nT:grid\n");
    AcDbDatabase saved(false);
    ASSERT_EQ(saved.readDwgFile(path("grid.dwg").c_str(), kDenyNone), Acad::eOk);
    EXPECT_EQ(references(saved), before);
}

TEST_F(InsertFileTest, redefinesABlockUnderAllItsReferences) {
    save("desk", kDesk);
    save("round", "CIRCLE 0,0 2\nATTDEF\n\nSIZE\n\n9\n0,0 1 0\n");
    run("SETVAR ATTREQ 0\nINSERT T:desk 10,10 1 1 0\nINSERT desk 20,20 1 1 0\n");
    const AcDbObjectId first = referenceIds()[0];
    const AcDbHandle handle = first.handle();
    run("INSERT DESK=T:round 30,30 1 1 0\n");
    EXPECT_TRUE(printed("Block \"desk\" redefined.")) << output;
    const char* const circle = "CIRCLE 0,0 r 2\nATTDEF '9' at 0,0 h 1 r 0 tag SIZE prompt '' flags 0";
    EXPECT_EQ(blockContents("desk"), circle);
    EXPECT_EQ(references(), "desk 10,10 s 1,1,1 r 0 WOOD='oak'@11,10\ndesk 20,20 s 1,1,1 r 0 WOOD='oak'@21,20\n"
                            "desk 30,30 s 1,1,1 r 0 SIZE='9'@30,30");
    EXPECT_EQ(referenceIds()[0], first);
    EXPECT_EQ(first.handle().value(), handle.value());
    run("U\n");
    EXPECT_EQ(blockContents("desk"), kDeskContents);
    EXPECT_EQ(references(), "desk 10,10 s 1,1,1 r 0 WOOD='oak'@11,10\ndesk 20,20 s 1,1,1 r 0 WOOD='oak'@21,20");
    run("INSERT desk 5,5 1 1 0\n");
    EXPECT_TRUE(references().ends_with("desk 5,5 s 1,1,1 r 0 WOOD='oak'@6,5")) << "the base point is back, too";
}

TEST_F(InsertFileTest, asksBeforeAPathRedefinesABlock) {
    save("desk", "LINE 0,0 1,0\n\n");
    run("CIRCLE 0,0 1\nBLOCK DESK 0,0 L\n\nINSERT T:desk\n\n1,1 1 1 0\n");
    EXPECT_TRUE(printed("Block \"DESK\" already exists.  Redefine it? [Yes/No] <N>: ")) << output;
    EXPECT_EQ(blockContents("DESK"), "CIRCLE 0,0 r 1");
    EXPECT_EQ(references(), "DESK 1,1 s 1,1,1 r 0");
    run("INSERT T:desk Y 2,2 1 1 0\n");
    EXPECT_EQ(blockContents("DESK"), "LINE 0,0 1,0");
    run("U\nSETVAR EXPERT 2\nINSERT T:desk.dwg 2,2 1 1 0\n");
    EXPECT_FALSE(printed("Redefine it?")) << output;
    EXPECT_EQ(blockContents("DESK"), "LINE 0,0 1,0");
}

TEST_F(InsertFileTest, aCancelLeavesTheDrawingAsItWas) {
    save("desk", kDesk);
    run("LINE 0,0 1,0\n\nBLOCK B 0,0 L\n\nSAVEAS\n\nT:plan\n");
    const std::string before = state();
    const std::vector<std::vector<const char*>> scripts = {
        {"INSERT", "T:desk", "1,1", "2", "3", "0", "ash"},
        {"INSERT", "B=T:desk", "S", "2", "1,1", "0"},
        {"INSERT", "B", "1,1", "XYZ", "1", "2", "3"},
        {"INSERT", "*T:desk", "1,1", "2"},
        {"MINSERT", "T:desk", "1,1", "1", "1", "0", "2", "2", "5", "6"},
        {"INSERT", "?"},
    };
    for (const auto& lines : scripts)
        for (size_t typed = 1; typed <= lines.size(); ++typed) {
            std::string script;
            for (size_t i = 0; i < typed && i + (lines.back() == std::string("ash")) < lines.size(); ++i)
                script += std::string(lines[i]) + "\n";
            run(script + "\x1B");
            EXPECT_EQ(state(), before) << script << output;
            EXPECT_EQ(events.back().substr(0, 7), "cancel ") << script << output;
        }
}

TEST_F(InsertFileTest, aFileThatCantBeTakenCostsNothing) {
    save("desk", kDesk);
    save("holds", "LINE 0,0 1,0\n\nBLOCK B 0,0 L\n\nINSERT B 0,0 1 1 0\n");
    save("over", "LINE 0,0 9,0\n\nBLOCK OUTER 0,0 L\n\nINSERT OUTER 0,0 1 1 0\n");
    std::ofstream(path("text.dwg")) << "not a drawing";
    fs::create_directories(path("folder.dwg"));
    run("LINE 0,0 1,0\n\nBLOCK B 0,0 L\n\nINSERT B 0,0 1 1 0\nBLOCK OUTER 0,0 L\n\nSAVEAS\n\nT:plan\n");
    const std::string contents = blockContents("B");
    const struct {
        const char* script;
        const char* complaint;
    } cases[] = {
        {"INSERT T:text\n", "text.dwg"},
        {"INSERT B=T:text\n", "text.dwg"},
        {"INSERT B=T:nothing\n\x1B", "Can't find file in search path:"},
        {"INSERT T:folder\n\x1B", "Can't find file in search path:"},
        {"INSERT T:plan\n\x1B", "Block \"plan\" references itself"},
        {"INSERT B=T:holds 0,0 1 1 0\n", "Block \"B\" references itself"},
        {"INSERT B=T:over 0,0 1 1 0\n", "Block \"B\" references itself"}, // the drawing's own OUTER holds B
        {"INSERT a/b=T:desk\n\x1B", "Can't find file in search path:"},
        {"INSERT *B=T:desk\n\x1B", "can't be inserted in pieces"},
    };
    for (const auto& c : cases) {
        run(c.script);
        EXPECT_TRUE(printed(c.complaint)) << c.script << output;
        EXPECT_EQ(blockContents("B"), contents) << c.script;
        EXPECT_EQ(references(), "") << c.script;
        EXPECT_EQ(blockContents("text"), "no block");
        EXPECT_EQ(blockContents("holds"), "no block");
    }
    fs::rename(path("desk.dwg"), path("a,b.dwg"));
    run("INSERT T:a,b\n\x1B");
    EXPECT_TRUE(printed("\"a,b\" can't name a block: give another name as in NAME=FILE.")) << output;
    run("INSERT AB=T:a,b 0,0 1 1 0\n\n");
    EXPECT_EQ(references(), "AB 0,0 s 1,1,1 r 0 WOOD='oak'@1,0");
}

TEST_F(InsertFileTest, putsAFilesContentsInPiecesWithoutABlock) {
    save("desk", kDesk);
    run("INSERT *T:desk 10,10 2 0\n");
    EXPECT_EQ(drawn(), "LINE 10,10 14,10\nATTDEF 'oak' at 12,10 h 2 r 0 tag WOOD prompt 'Wood?' flags 0") << output;
    EXPECT_EQ(blockContents("desk"), "no block");
    run("INSERT ?\n\n\x1B");
    EXPECT_TRUE(printed("User blocks: 0  Unnamed blocks: 0")) << output;
    run("U\n");
    EXPECT_EQ(drawn(), "");
    run("REDO\n");
    EXPECT_EQ(drawn(), "LINE 10,10 14,10\nATTDEF 'oak' at 12,10 h 2 r 0 tag WOOD prompt 'Wood?' flags 0");
}

TEST_F(InsertFileTest, tellsTheEventsInTheirOrder) {
    save("desk", kDesk);
    std::string told;
    Notes notes(told);
    Appended appended(told);
    host.editor().addReactor(&notes);
    database().addReactor(&appended);
    run("INSERT T:desk 0,0 1 1 0\n\n");
    const std::string making = " beginDeepClone translate otherInsert endDeepClone endInsert ";
    const std::string reference = "+AcDbBlockReference +AcDbAttribute end";
    EXPECT_EQ(told, "start beginInsert:desk" + making + reference);
    told.clear();
    run("INSERT desk=T:desk 0,0 1 1 0\n\n");
    EXPECT_EQ(told, "start beginInsert:desk" + making + reference);
    told.clear();
    run("INSERT desk 0,0 1 1 0\n\n");
    EXPECT_EQ(told, "start " + reference);
    database().removeReactor(&appended);
    host.editor().removeReactor(&notes);
}

TEST_F(InsertFileTest, takesRealDrawings) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& drawing : vndk::test::realDrawings("r2000")) {
        size_t expected = 0;
        {
            AcDbDatabase source(false);
            ASSERT_EQ(source.readDwgFile(drawing.c_str()), Acad::eOk) << drawing;
            const AcDbObjectPointer<AcDbBlockTableRecord> space(source.modelSpaceId());
            for (const AcDbObjectId id : space->entities())
                if (const AcDbObjectPointer<AcDbEntity> entity(id); entity)
                    expected += !AcDbViewport::cast(&*entity); // those stay in their drawing
        }
        startAgain();
        run("SETVAR ATTREQ 0\nINSERT X=" + drawing + " 0,0 2 3 45\nINSERT X=" + drawing +
            " 5,5 1 1 0\nMINSERT X 1,1 1 1 0 2 2 3 3\n");
        ASSERT_EQ(referenceIds().size(), 3u) << drawing << output;
        const AcDbObjectPointer<AcDbBlockReference> reference(lastReference());
        const AcDbObjectPointer<AcDbBlockTableRecord> block(reference->blockTableRecord());
        size_t held = 0;
        for (const AcDbObjectId id : block->entities())
            held += !id.isErased();
        EXPECT_EQ(held, expected) << drawing;
        const std::string before = references();
        const std::string copy = path("copy.dwg");
        ASSERT_EQ(database().saveAs(copy.c_str()), Acad::eOk) << drawing << database().lastFileError();
        AcDbDatabase saved(false);
        ASSERT_EQ(saved.readDwgFile(copy.c_str()), Acad::eOk) << drawing;
        EXPECT_EQ(references(saved), before) << drawing;
    }
}
