// What a plain reference becomes.
#include "module/watcher_fixture.h"

using testing::HasSubstr;
using testing::Not;

namespace {

using UpgradeTest = WatcherTest;

TEST_F(UpgradeTest, TheNewReferenceStandsWhereThePlainOneStood) {
    define("WIDTH", "900", {5, 6, 7});
    const AcDbObjectId layer = [&] {
        run("LAYER N Furniture\n");
        AcDbObjectId id;
        AcDbObjectPointer<AcDbLayerTable>(database().layerTableId())->getAt("Furniture", id);
        return id;
    }();
    run("LAYER S Furniture\n");
    database().setAttreq(0);
    rotation = 0.5;
    scale = AcGeScale3d(2, 3, 4);
    run("INSERT 1,2,3");
    EXPECT_FALSE(problem) << output;
    ASSERT_EQ(drawn(), "intelligent1 '900'");
    const AcDbObjectPointer<VNDKBlockReference> made(modelSpace()[0]);
    EXPECT_EQ(made->position(), AcGePoint3d(1, 2, 3));
    EXPECT_NEAR(made->rotation(), 0.5, 1e-12);
    EXPECT_NEAR(made->scaleFactors().sy, 3, 1e-12);
    EXPECT_EQ(made->blockTableRecord(), block);
    EXPECT_STREQ(made->originalBlockName(), "DESK");
    EXPECT_EQ(made->insBase(), AcGePoint3d(10, 20, 30));
    EXPECT_EQ(made->layerId(), layer);
    const AcDbObjectPointer<VNDKAttribute> attribute(made->getAttribute(0));
    EXPECT_EQ(attribute->position(), AcGePoint3d(6, 8, 10)) << "neither turned nor scaled";
    EXPECT_EQ(attribute->rotation(), 0);
}

TEST_F(UpgradeTest, DefinitionsOfBothClassesCountIfTheyArentConstant) {
    define("A", "1");
    define("C", "2", {}, true);
    auto* const definition = new VNDKAttributeDefinition;
    definition->setTag("V");
    definition->setTextString("3");
    append(block, definition);
    append(block, new AcDbText({0, 0, 0}, "no definition"));
    database().setAttreq(0);
    run("INSERT 1,1");
    EXPECT_EQ(drawn(), "intelligent1 '1' '3'");
}

TEST_F(UpgradeTest, FormulasRunOnTheValuesUnlessADialogWouldHaveGivenThem) {
    auto* const definition = new VNDKAttributeDefinition;
    definition->setTag("WIDE");
    definition->setPrompt("How wide");
    definition->setTextString("900");
    definition->setPosition({5, 5, 0});
    definition->setConditionalPoint1({10, 0, 0});
    definition->setConditionalPoint2({20, 0, 0});
    auto* const formula = new CCondFormula;
    ASSERT_EQ(formula->setText("stretch = value > 800"), Acad::eOk);
    definition->AddFormula(formula);
    append(block, definition);
    const struct {
        short attreq, attdia;
        const char* line;
        AcGePoint3d position;
    } cases[] = {
        {1, 0, "INSERT 1,2\n700", {11, 2, 0}},  // false: the first point
        {1, 0, "INSERT 1,2\n1000", {21, 2, 0}}, // true: the second
        {0, 0, "INSERT 1,2", {21, 2, 0}},       // the definition's own text counts as well
        {0, 1, "INSERT 1,2", {6, 7, 0}},        // nothing is asked, and nothing moved
    };
    for (const auto& row : cases) {
        database().setAttreq(row.attreq);
        run("(setvar \"ATTDIA\" " + std::to_string(row.attdia) + ")");
        run(row.line);
        const AcDbObjectPointer<VNDKAttribute> made(modelSpace().back());
        ASSERT_TRUE(made) << output;
        EXPECT_EQ(made->position(), row.position) << row.line << row.attdia;
        EXPECT_EQ(made->conditionalPoint1(), AcGePoint3d(11, 2, 0));
    }
}

TEST_F(UpgradeTest, WithoutDefinitionsThereIsJustTheReference) {
    run("INSERT 1,1");
    EXPECT_EQ(drawn(), "intelligent1");
    define("C", "2", {}, true);
    run("INSERT 2,2");
    EXPECT_EQ(drawn(), "intelligent1 intelligent2");
}

TEST_F(UpgradeTest, ValuesAreAskedForWhereTheHostWouldHaveAsked) {
    define("A", "one");
    define("B", "two");
    run("INSERT 1,1\nfirst value\n");
    EXPECT_THAT(output, HasSubstr("Prompt <one>: "));
    EXPECT_EQ(drawn(), "intelligent1 'first value' 'two'");
    const AcDbObjectPointer<VNDKAttribute> attribute(modelSpace()[1]);
    EXPECT_EQ(attribute->defaultText(), "one");
    database().setAttreq(0);
    run("INSERT 2,2\n(setq seen 5)");
    EXPECT_THAT(output, Not(HasSubstr("Prompt <")));
    EXPECT_EQ(drawn(), "intelligent1 'first value' 'two' intelligent2 'one' 'two'");
}

TEST_F(UpgradeTest, ACancelledPromptLeavesTheBlockWholeAndAsksNoMore) {
    define("A", "one");
    define("B", "two");
    define("C", "three");
    run("INSERT 1,1\nkept\n\x1B\n(setq seen 5)");
    EXPECT_EQ(drawn(), "intelligent1 'kept' 'two' 'three'");
    EXPECT_THAT(output, HasSubstr("5"));
    EXPECT_EQ(attreq(), 1);
    run("U");
    EXPECT_EQ(drawn(), "");
}

TEST_F(UpgradeTest, OneUndoTakesBackInsertionAndUpgrade) {
    define("A", "one");
    database().setAttreq(0);
    run("INSERT 1,1");
    run("INSERT 2,2");
    ASSERT_EQ(drawn(), "intelligent1 'one' intelligent2 'one'");
    run("U");
    EXPECT_EQ(drawn(), "intelligent1 'one'");
    run("REDO");
    EXPECT_EQ(drawn(), "intelligent1 'one' intelligent2 'one'");
    run("U");
    run("U");
    EXPECT_EQ(drawn(), "");
    EXPECT_EQ(attreq(), 0);
}

TEST_F(UpgradeTest, TheReferenceThatWasReplacedLastIsntReplacedAgain) {
    run("INSERT 1,1");
    const AcDbObjectId intelligent = modelSpace()[0];
    const AcDbObjectId plain = AcDbObjectPointer<AcDbBlockTableRecord>(space())->entities()[0];
    ASSERT_TRUE(plain.isErased());
    AcDbObjectPointer<AcDbEntity>(plain, AcDb::kForWrite, true)->erase(false);
    AcDbObjectPointer<AcDbEntity>(intelligent, AcDb::kForWrite)->erase();
    run("LINE 0,0 1,1\n");
    run("BLOCK X 0,0 L\n");
    EXPECT_EQ(drawn(), "plain1");
    // Another document has a memory of its own.
    AcApDocument* const first = host.documents().curDocument();
    host.documents().appContextNewDocument(nullptr);
    block = addBlock("DESK");
    run("INSERT 3,3");
    EXPECT_EQ(drawn(), "intelligent3");
    host.documents().setCurDocument(first);
    run("LINE 0,0 1,1\n");
    run("BLOCK Y 0,0 L\n");
    EXPECT_EQ(drawn(), "plain1");
}

TEST_F(UpgradeTest, APlainReferenceStaysWhereNothingCanTakeItsPlace) {
    define("A", "one");
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> writer(block, AcDb::kForWrite);
        run("PLACE 1,1");
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandEnded("INSERT"); });
    }
    EXPECT_EQ(drawn(), "plain1");
    {
        const AcDbObjectPointer<AcDbEntity> reader(modelSpace()[0]);
        database().setAttreq(0);
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandWillStart("PURGE"); });
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandEnded("INSERT"); });
    }
    EXPECT_EQ(drawn(), "plain1 intelligent1 'one'") << "built, but the plain one couldn't be erased";
}

TEST_F(UpgradeTest, ReferencesOfOtherClassesAreLeftAlone) {
    auto* const array = new AcDbMInsertBlock;
    array->setBlockTableRecord(block);
    host.editor().reactors().tell([](AcEditorReactor& r) { r.commandWillStart("INSERT"); });
    append(space(), array);
    host.editor().reactors().tell([](AcEditorReactor& r) { r.commandEnded("INSERT"); });
    ASSERT_EQ(modelSpace().size(), 1u);
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(modelSpace()[0])->isA(), AcDbMInsertBlock::desc());
}

} // namespace
