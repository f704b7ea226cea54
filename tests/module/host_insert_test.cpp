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
    ASSERT_EQ(modelSpace().size(), 1U);
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(modelSpace()[0])->isA(), AcDbBlockReference::desc());
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
}

} // namespace
