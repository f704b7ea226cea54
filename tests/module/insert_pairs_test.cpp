// (c:_bInsertFile ...) with every pair of real drawings: asked at the command line, and in the dialog.
#include "db/viewport.h"
#include "mfc/afx.h"
#include "module/module_fixture.h"
#include "platform/temp_folder.h"
#include "screen/memory.h"
#include "support/drawing_digest.h"
#include "support/drawings.h"
#include "win32/desktop.h"
#include "win32/user_script.h"

#include <filesystem>

namespace {

using vndk::test::digestDifference;
using vndk::test::digestOf;
using vndk::test::DrawingDigest;
using vndk::test::realDrawings;

/// What the file holds for an insertion.
struct Source {
    explicit Source(const std::string& file) : path(file), name(std::filesystem::path(file).stem().string()) {
        AcDbDatabase drawing(false, true);
        EXPECT_EQ(drawing.readDwgFile(file.c_str()), Acad::eOk);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId());
        for (const AcDbObjectId id : space->entities()) {
            const AcDbObjectPointer<AcDbEntity> entity(id);
            const auto* const definition = AcDbAttributeDefinition::cast(entity.object());
            asked += definition && !definition->isConstant();
            entities += !AcDbViewport::cast(entity.object());
        }
    }

    std::string path, name;
    size_t entities = 0;
    size_t asked = 0; // definitions that the user is asked for
};

class InsertPairsTest : public ModuleTest {
protected:
    /// Opens a copy of the drawing, inserts the other by `insert`, undoes, redoes, saves and reads.
    template <class F>
    void tryPair(const std::string& destination, const Source& source, bool dialog, F&& insert) {
        SCOPED_TRACE(source.name + " into " + std::filesystem::path(destination).stem().string());
        const std::string copy = folder / "destination.dwg";
        std::filesystem::copy_file(destination, copy, std::filesystem::copy_options::overwrite_existing);
        ASSERT_EQ(host.documents().appContextOpenDocument(copy.c_str()), Acad::eOk) << host.documents().lastError();
        database().setAttdia(dialog);
        const DrawingDigest before = digestOf(database());
        const size_t spaceBefore = modelSpace().size();
        output.clear();
        insert("(c:_bInsertFile \"" + source.path + "\" (list 10.0 20.0 0.0))\n");
        EXPECT_FALSE(problem) << output;
        expectInserted(source, spaceBefore);
        const DrawingDigest after = digestOf(database());
        run("U");
        EXPECT_EQ(digestDifference(before, digestOf(database())), "") << "after U";
        run("REDO");
        EXPECT_EQ(digestDifference(after, digestOf(database())), "") << "after REDO";
        const std::string saved = folder / "saved.dwg";
        ASSERT_EQ(database().saveAs(saved.c_str()), Acad::eOk) << database().lastFileError();
        AcDbDatabase again(false, true);
        ASSERT_EQ(again.readDwgFile(saved.c_str()), Acad::eOk) << again.lastFileError();
        EXPECT_EQ(digestDifference(digestOf(database()), digestOf(again)), "") << "after saving";
        expectAllClosed();
        EXPECT_EQ(host.documents().closeDocument(host.documents().curDocument()), Acad::eOk);
    }

    void expectInserted(const Source& source, size_t spaceBefore) {
        AcDbObjectId block;
        {
            const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId());
            ASSERT_EQ(table->getAt(source.name.c_str(), block), Acad::eOk) << output;
        }
        EXPECT_EQ(entities(block).size(), source.entities);
        const std::vector<AcDbObjectId> space = modelSpace();
        ASSERT_EQ(space.size(), spaceBefore + 1 + source.asked);
        const AcDbObjectPointer<VNDKBlockReference> reference(space[spaceBefore]);
        ASSERT_TRUE(reference);
        EXPECT_EQ(reference->blockTableRecord(), block);
        EXPECT_EQ(static_cast<size_t>(reference->attributeCount()), source.asked);
    }

    static std::vector<Source> sources() {
        std::vector<Source> all;
        for (const std::string& path : realDrawings("r2000"))
            all.emplace_back(path);
        return all;
    }

    TempFolder folder;
};

TEST_F(InsertPairsTest, AskedAtTheCommandLine) {
    SKIP_WITHOUT_DRAWINGS();
    for (const Source& source : sources()) {
        // Answers and bare Enters by turns.
        std::string answers;
        for (size_t i = 0; i < source.asked; ++i)
            answers += i % 2 == 0 ? "an answer\n" : "\n";
        for (const std::string& destination : realDrawings("r2000"))
            tryPair(destination, source, false,
                    [&](const std::string& call) { problem = host.runText(call + answers); });
    }
}

class InsertPairsDialogTest : public InsertPairsTest {
protected:
    static constexpr int kOk = 223;

    InsertPairsDialogTest() {
        application.SetProfileFile((folder / "profile.ini").c_str());
        application.WriteProfileInt("Vondrake", "DoNotShow", 1);
        EXPECT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 800, 600,
                                   nullptr, nullptr));
        host.setMainWindow(frame.m_hWnd);
    }
    ~InsertPairsDialogTest() override {
        host.setMainWindow(nullptr);
        frame.DestroyWindow();
    }

    CWinApp application{"insert-pairs-test"};
    vndk::screen::MemoryScreen screen{800, 600};
    vndk::win32::Desktop desktop{screen};
    CFrameWnd frame;
};

/// A drawing without definitions shows no dialog.
TEST_F(InsertPairsDialogTest, AskedInTheDialog) {
    SKIP_WITHOUT_DRAWINGS();
    for (const Source& source : sources())
        for (const std::string& destination : realDrawings("r2000"))
            tryPair(destination, source, true, [&](const std::string& call) {
                vndk::win32::UserScript user(screen);
                if (source.asked > 0)
                    user.in("Edit Attribute").waitForWindow().click(kOk).waitUntilGone();
                problem = host.runText(call);
                EXPECT_TRUE(user.finish()) << user.failure();
            });
}

} // namespace
