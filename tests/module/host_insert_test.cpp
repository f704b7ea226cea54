// The host's own INSERT and DDINSERT while the module is there: from the line that is typed to Intelligent Blocks.
#include "ads/ads.h"
#include "module/module_fixture.h"
#include "platform/temp_folder.h"

using testing::HasSubstr;
using testing::Not;

namespace {

class HostInsertTest : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        run("ATTDEF\n\nWIDTH\nHow wide\n900\n1,0 1 0");
        run("LINE 0,0 2,1\n");
        run("BLOCK DESK 0,0 ALL\n");
        ASSERT_TRUE(modelSpace().empty()) << output;
        database().undo().clear();
    }
    /// The attribute of the one Intelligent Block of the drawing; "?" if that isn't what it holds.
    std::string value() {
        const auto ids = modelSpace();
        const AcDbObjectPointer<VNDKBlockReference> reference(ids.empty() ? AcDbObjectId() : ids.front());
        if (ids.size() != 2 || !reference || reference->attributeCount() != 1)
            return "?";
        return AcDbObjectPointer<VNDKAttribute>(reference->getAttribute(0))->textValue();
    }
    static std::string classOf(AcDbObjectId id) { return AcDbObjectPointer<AcDbEntity>(id)->isA()->name(); }
    bool hasBlock(const char* name) { return AcDbObjectPointer<AcDbBlockTable>(database().blockTableId())->has(name); }
};

TEST_F(HostInsertTest, TheModuleAsksInPlaceOfTheHost) {
    for (const char* command : {"INSERT", "DDINSERT"}) {
        run(std::string(command) + " DESK 1,2 2 3 90\n1200");
        EXPECT_FALSE(problem) << output;
        EXPECT_THAT(output, HasSubstr("How wide <900>: "));
        EXPECT_EQ(value(), "1200") << output;
        const AcDbObjectPointer<VNDKBlockReference> reference(modelSpace()[0]);
        EXPECT_EQ(reference->position(), AcGePoint3d(1, 2, 0));
        EXPECT_NEAR(reference->scaleFactors().sy, 3, 1e-12);
        EXPECT_NEAR(reference->rotation(), kAcGePi / 2, 1e-12);
        EXPECT_EQ(AcDbObjectPointer<VNDKAttribute>(reference->getAttribute(0))->position(), AcGePoint3d(2, 2, 0));
        EXPECT_EQ(database().attreq(), 1);
        run("U");
        EXPECT_TRUE(modelSpace().empty()) << "one step";
        run("REDO");
        EXPECT_EQ(value(), "1200");
        run("U");
    }
}

TEST_F(HostInsertTest, WithoutAttreqNobodyAsks) {
    run("ATTREQ 0");
    run("INSERT DESK 0,0 1 1 0\n(setq seen 5)");
    EXPECT_EQ(value(), "900");
    EXPECT_THAT(output, Not(HasSubstr("How wide")));
    EXPECT_EQ(database().attreq(), 0);
}

TEST_F(HostInsertTest, LispAnswersTheModulesPromptsToo) {
    run("(command \"INSERT\" \"DESK\" '(3 4) 1 1 0 \"by lisp\")");
    EXPECT_FALSE(problem) << output;
    EXPECT_EQ(value(), "by lisp") << output;
}

TEST_F(HostInsertTest, ACancelLeavesTheDrawingAsItWas) {
    for (const char* script : {"INSERT \x1B", "INSERT DESK \x1B", "INSERT DESK 0,0 1 \x1B", "DDINSERT DESK"}) {
        run(script);
        EXPECT_TRUE(modelSpace().empty()) << script;
        EXPECT_EQ(database().attreq(), 1) << script;
    }
}

TEST_F(HostInsertTest, OtherCommandsKeepPlainReferences) {
    run("-INSERT DESK 0,0 1 1 0\n700");
    run("MINSERT DESK 0,0 1 1 0 2 1 10\n700");
    EXPECT_THAT(output, HasSubstr("How wide <900>: ")) << "the host asks itself";
    ASSERT_EQ(modelSpace().size(), 2U);
    EXPECT_EQ(classOf(modelSpace()[0]), "AcDbBlockReference");
    EXPECT_EQ(classOf(modelSpace()[1]), "AcDbMInsertBlock");
}

TEST_F(HostInsertTest, EachWayToTypeTheNameIsWatched) {
    for (const char* typed : {"insert", "_Insert", ".INSERT", "_.dDiNsErT"}) {
        run(std::string(typed) + " desk 0,0 1 1 0\n1200");
        EXPECT_EQ(value(), "1200") << typed << output;
        run("U");
    }
}

TEST_F(HostInsertTest, TheOneAfterAnUndoIsUpgradedToo) {
    for (int round = 0; round < 3; ++round) {
        run("INSERT DESK 0,0 1 1 0\n1200");
        EXPECT_EQ(value(), "1200") << round;
        run("U");
        ASSERT_TRUE(modelSpace().empty());
    }
    run("REDO");
    EXPECT_EQ(value(), "1200");
    run("INSERT DESK 5,0 1 1 0\n700");
    EXPECT_EQ(modelSpace().size(), 4U);
}

TEST_F(HostInsertTest, ABlockInPiecesLeavesNothingToUpgrade) {
    run("-INSERT DESK 0,0 1 1 0\n700");
    run("INSERT *DESK 3,0 1 0");
    EXPECT_FALSE(problem) << output;
    ASSERT_EQ(modelSpace().size(), 3U) << output;
    EXPECT_EQ(classOf(modelSpace()[0]), "AcDbBlockReference") << "it was last before";
    EXPECT_EQ(database().attreq(), 1);
    // A piece may itself be a reference, and a plain one that is new is upgraded.
    run("BLOCK ROOM 0,0 ALL\n");
    ASSERT_TRUE(modelSpace().empty()) << output;
    run("INSERT *ROOM 0,0 1 0\n1200");
    const auto ids = modelSpace();
    EXPECT_THAT(output, HasSubstr("How wide <900>: "));
    ASSERT_EQ(ids.size(), 4U) << output;
    EXPECT_EQ(classOf(ids[2]), "VNDKBlockReference");
    EXPECT_EQ(AcDbObjectPointer<VNDKAttribute>(ids[3])->textValue(), "1200");
}

TEST_F(HostInsertTest, ATransparentCommandThatIsCancelledForgetsTheLastReference) {
    run("LINE 50,50 60,50\n");
    run("LINE 50,60 60,60\n");
    run("-INSERT DESK 0,0 1 1 0\n700");
    run("BLOCK ONE 'ORTHOMODE 1\n0,0 55,50\n");
    ASSERT_EQ(modelSpace().size(), 2U) << output;
    EXPECT_EQ(classOf(modelSpace()[1]), "AcDbBlockReference") << "it was last before";
    run("BLOCK TWO 'ORTHOMODE\n\x1B\n0,0 55,60\n\nforgotten");
    EXPECT_THAT(output, HasSubstr("*Cancel*"));
    EXPECT_EQ(value(), "forgotten") << output;
    EXPECT_EQ(database().attreq(), 1);
}

TEST_F(HostInsertTest, EachDocumentHasItsOwnAttreqAndItsOwnLastReference) {
    AcApDocument* const first = host.documents().curDocument();
    const TempFolder folder;
    run("WBLOCK " + (folder / "desk.dwg") + "\nDESK");
    run("INSERT DESK 0,0 1 1 0\n1200");
    run("ATTREQ 0");
    ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    run("INSERT " + (folder / "desk.dwg") + "\n0,0 1 1 0");
    EXPECT_EQ(value(), "900") << "a new drawing begins with the setting that was made last" << output;
    run("ATTREQ 1");
    run("INSERT DESK 5,0 1 1 0\n700");
    EXPECT_EQ(AcDbObjectPointer<VNDKAttribute>(modelSpace().back())->textValue(), "700") << output;
    EXPECT_EQ(database().attreq(), 1);
    host.documents().setCurDocument(first);
    EXPECT_EQ(value(), "1200");
    EXPECT_EQ(database().attreq(), 0);
    run("INSERT DESK 5,0 1 1 0\n(setq seen 5)");
    EXPECT_EQ(modelSpace().size(), 4U) << output;
    EXPECT_EQ(database().attreq(), 0);
}

TEST_F(HostInsertTest, OneUndoTakesBackABlockOfAFileToo) {
    const TempFolder folder;
    const std::string file = folder / "chair.dwg";
    run("WBLOCK " + file + "\nDESK");
    ASSERT_FALSE(problem) << output;
    run("INSERT " + file + "\n0,0 1 1 0\nfrom file");
    EXPECT_FALSE(problem) << output;
    EXPECT_EQ(value(), "from file");
    EXPECT_TRUE(hasBlock("CHAIR"));
    run("U");
    EXPECT_TRUE(modelSpace().empty());
    EXPECT_FALSE(hasBlock("CHAIR"));
    run("REDO");
    EXPECT_EQ(value(), "from file");
    EXPECT_TRUE(hasBlock("CHAIR"));
    run("U");
    EXPECT_TRUE(modelSpace().empty());
    // The name is free again: the file is read anew.
    run("INSERT " + file + "\n0,0 1 1 0\nonce more");
    EXPECT_EQ(value(), "once more") << output;
}

} // namespace
