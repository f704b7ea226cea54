// (c:_bInsert "name" (list x y z)) from the command line to the drawing.
#include "module/module_fixture.h"

using testing::HasSubstr;
using testing::Not;

namespace {

class InsertionTest : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        block = addBlock("DESK", {10, 20, 30});
    }

    AcDbAttributeDefinition* define(const char* tag, const char* text, AcGePoint3d position = {}) {
        auto* const definition = new AcDbAttributeDefinition(position, text, tag, "Prompt");
        definition->setHeight(2.5);
        return definition;
    }

    /// Tags of the reference's attributes.
    static std::vector<std::string> tags(AcDbObjectId referenceId) {
        std::vector<std::string> found;
        const AcDbObjectPointer<VNDKBlockReference> reference(referenceId);
        for (int i = 0; reference && i < reference->attributeCount(); ++i)
            found.push_back(AcDbObjectPointer<VNDKAttribute>(reference->getAttribute(i))->tagValue());
        return found;
    }

    AcGePoint3d insertedAt(const std::string& arguments) {
        run("(c:_bInsert " + arguments + ")");
        const auto ids = modelSpace();
        if (ids.empty())
            return {-1, -1, -1};
        const AcDbObjectPointer<VNDKBlockReference> reference(ids.back());
        return reference ? reference->position() : AcGePoint3d(-2, -2, -2);
    }

    AcDbObjectId block;
};

TEST_F(InsertionTest, BuildsTheReferenceAndItsAttributesBesideIt) {
    append(block, new AcDbText({0, 0, 0}, "not a definition"));
    append(block, define("WIDTH", "900"));
    append(block, define("OWNER", "nobody"));
    run("(c:_bInsert \"desk\" (list 1 2 3))");
    EXPECT_FALSE(problem);
    const auto ids = modelSpace();
    ASSERT_EQ(ids.size(), 3U);
    EXPECT_THAT(tags(ids[0]), testing::ElementsAre("WIDTH", "OWNER"));
    const AcDbObjectPointer<VNDKBlockReference> reference(ids[0]);
    ASSERT_EQ(reference->isA(), VNDKBlockReference::desc());
    EXPECT_EQ(reference->blockTableRecord(), block);
    EXPECT_STREQ(reference->originalBlockName(), "desk") << "the name as it was given";
    EXPECT_EQ(reference->position(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(reference->insBase(), AcGePoint3d(10, 20, 30));
    EXPECT_EQ(reference->scaleFactors(), AcGeScale3d(1));
    EXPECT_EQ(reference->rotation(), 0);
    EXPECT_EQ(reference->normal(), AcGeVector3d(0, 0, 1));
    EXPECT_TRUE(reference->attributes().empty()) << "attributes are no part of the reference";
    EXPECT_EQ(reference->getAttribute(0), ids[1]);
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(ids[1])->ownerId(), database().modelSpaceId());
}

TEST_F(InsertionTest, AnAttributeTakesWhatItShouldFromItsDefinitionAndNoMore) {
    AcDbAttributeDefinition* const definition = define("WIDTH", "900", {5, 6, 7});
    definition->setPrompt("How wide");
    definition->setHeight(3.5);
    definition->setHorizontalMode(AcDb::kTextCenter);
    definition->setVerticalMode(AcDb::kTextTop);
    definition->setAlignmentPoint({8, 9, 7});
    definition->setFieldLength(12);
    definition->setVerifiable(true);
    definition->setPreset(true);
    definition->setRotation(1);
    definition->setWidthFactor(0.7);
    definition->setOblique(0.2);
    definition->setTextStyle(addStyle("NARROW"));
    const AcDbObjectId definitionId = append(block, definition);
    { AcDbObjectPointer<AcDbEntity>(definitionId, AcDb::kForWrite)->setColorIndex(3); }

    run("(c:_bInsert \"DESK\" (list 100.5 200.0 -1.0))");
    ASSERT_EQ(modelSpace().size(), 2U);
    const AcDbObjectPointer<VNDKAttribute> made(modelSpace()[1]);
    ASSERT_EQ(made->isA(), VNDKAttribute::desc());
    EXPECT_EQ(made->tagValue(), "WIDTH");
    EXPECT_EQ(made->textValue(), "900");
    EXPECT_EQ(made->defaultText(), "900");
    EXPECT_EQ(made->height(), 3.5);
    EXPECT_EQ(made->horizontalMode(), AcDb::kTextCenter);
    EXPECT_EQ(made->verticalMode(), AcDb::kTextTop);
    EXPECT_EQ(made->fieldLength(), 12.0);
    EXPECT_TRUE(made->isVerifiable() && made->isPreset());
    EXPECT_FALSE(made->isInvisible() || made->isConstant());
    EXPECT_EQ(made->definitionId(), definitionId);
    EXPECT_EQ(made->colorIndex(), 3);
    // Moved by the reference's position alone: the base point (10,20,30) is no part of it.
    EXPECT_EQ(made->position(), AcGePoint3d(105.5, 206, 6));
    EXPECT_EQ(made->alignmentPoint(), AcGePoint3d(108.5, 209, 6));
    EXPECT_EQ(made->rotation(), 0);
    EXPECT_EQ(made->widthFactor(), 1);
    EXPECT_EQ(made->oblique(), 0);
    EXPECT_EQ(made->textStyle(), database().textstyle()) << "the current style, not the definition's";
}

TEST_F(InsertionTest, OnlyPlainDefinitionsThatAreNotConstantGetAnAttribute) {
    AcDbAttributeDefinition* const constant = define("CONSTANT", "1");
    constant->setConstant(true);
    append(block, constant);
    AcDbAttributeDefinition* const invisible = define("INVISIBLE", "2");
    invisible->setInvisible(true);
    append(block, invisible);
    auto* const conditional = new VNDKAttributeDefinition;
    conditional->setTag("CONDITIONAL");
    append(block, conditional);
    const AcDbObjectId erased = append(block, define("ERASED", "3"));
    { AcDbObjectPointer<AcDbEntity>(erased, AcDb::kForWrite)->erase(); }
    append(block, define("PLAIN", "4"));

    run("(c:_bInsert \"DESK\" '(0 0 0))");
    EXPECT_THAT(tags(modelSpace()[0]), testing::ElementsAre("INVISIBLE", "PLAIN"));
    EXPECT_EQ(modelSpace().size(), 3U);
    EXPECT_TRUE(AcDbObjectPointer<VNDKAttribute>(modelSpace()[1])->isInvisible());
}

TEST_F(InsertionTest, TakesTheArgumentsInTheirForms) {
    const struct {
        const char* arguments;
        AcGePoint3d position;
    } cases[] = {
        {"\"DESK\" (list 1 2 3)", {1, 2, 3}},
        {"\"DESK\" (list 1.5 2 3)", {1.5, 2, 3}},
        {"\"DESK\" (list 1.0 2.0 3.0) \"more\" 4", {1, 2, 3}},
        {"\"DESK\" (list 1 2)", {0, 0, 0}}, // a point of two coordinates is another type
        {"\"DESK\" 5", {0, 0, 0}},
        {"\"DESK\" 5.5", {0, 0, 0}},
        {"\"DESK\" \"1,2,3\"", {0, 0, 0}},
        {"\"DESK\" nil", {0, 0, 0}},
        {"\"DESK\" T", {0, 0, 0}},
        {"\"DESK\" (list 1 2 3 4)", {0, 0, 0}},
    };
    size_t inserted = 0;
    for (const auto& row : cases) {
        EXPECT_EQ(insertedAt(row.arguments), row.position) << row.arguments;
        EXPECT_EQ(modelSpace().size(), ++inserted) << row.arguments;
        EXPECT_THAT(output, Not(HasSubstr("\nnil"))) << row.arguments << ": the result is void";
    }
}

TEST_F(InsertionTest, MissingArgumentsDoNothingAndGiveNoVoid) {
    for (const char* call : {"(c:_bInsert)", "(c:_bInsert \"DESK\")"}) {
        EXPECT_THAT(run(call), HasSubstr("\nnil")) << call;
        EXPECT_FALSE(problem) << call;
        EXPECT_TRUE(modelSpace().empty()) << call;
    }
}

TEST_F(InsertionTest, AHeadThatIsNoNameIsThePoint) {
    EXPECT_THAT(run("(c:_bInsert (list 1 2 3))"), HasSubstr("Block \"\" isn't in this drawing."));
    EXPECT_TRUE(modelSpace().empty());
}

TEST_F(InsertionTest, WhatCannotBeInsertedIsToldAndChangesNothing) {
    EXPECT_THAT(run("(c:_bInsert \"NOPE\" (list 0 0 0))"),
                HasSubstr("Block \"NOPE\" isn't in this drawing. Nothing was inserted."));
    EXPECT_THAT(run("(c:_bInsert \"%s%n\" (list 0 0 0))"), HasSubstr("Block \"%s%n\" isn't in this drawing."));
    EXPECT_THAT(run("(c:_bInsert \"*Model_Space\" (list 0 0 0))"),
                HasSubstr("The current space can't take block \"*Model_Space\"."));
    EXPECT_TRUE(modelSpace().empty());
    const std::string longName(5000, 'x');
    EXPECT_THAT(run("(c:_bInsert \"" + longName + "\" (list 0 0 0))"), HasSubstr("isn't in this drawing."));
}

TEST_F(InsertionTest, ASpaceOrDefinitionThatSomebodyHoldsIsLeftAlone) {
    append(block, define("A", "1"));
    append(block, define("B", "2"));
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> reader(database().modelSpaceId());
        EXPECT_THAT(run("(c:_bInsert \"DESK\" (list 0 0 0))"), HasSubstr("The current space can't take"));
    }
    EXPECT_TRUE(modelSpace().empty());
    {
        const AcDbObjectPointer<AcDbEntity> reader(entities(block)[0]);
        run("(c:_bInsert \"DESK\" (list 0 0 0))");
    }
    EXPECT_THAT(tags(modelSpace()[0]), testing::ElementsAre("B")) << "what doesn't open is passed over";
}

TEST_F(InsertionTest, GoesToPaperSpaceWhenTilemodeIsOff) {
    append(block, define("A", "1"));
    run("(setvar \"TILEMODE\" 0)");
    run("(c:_bInsert \"DESK\" (list 1 1 1))");
    EXPECT_TRUE(modelSpace().empty());
    const auto ids = paperSpace();
    ASSERT_GE(ids.size(), 2U);
    EXPECT_THAT(tags(ids[ids.size() - 2]), testing::ElementsAre("A"));
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(ids.back())->ownerId(), database().paperSpaceId());
}

TEST_F(InsertionTest, TheUserCoordinateSystemPlaysNoPart) {
    append(block, define("A", "1", {1, 0, 0}));
    run("UCS O 100,200,300");
    run("UCS X 90");
    run("(c:_bInsert \"DESK\" (list 1 2 3))");
    ASSERT_EQ(modelSpace().size(), 2U);
    const AcDbObjectPointer<VNDKBlockReference> reference(modelSpace()[0]);
    EXPECT_EQ(reference->position(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(reference->normal(), AcGeVector3d(0, 0, 1));
    EXPECT_EQ(AcDbObjectPointer<VNDKAttribute>(modelSpace()[1])->position(), AcGePoint3d(2, 2, 3));
}

TEST_F(InsertionTest, AsksNothingWhateverAttdiaAndAttreqSay) {
    append(block, define("A", "default"));
    for (const char* settings : {"(setvar \"ATTDIA\" 1)(setvar \"ATTREQ\" 1)", "(setvar \"ATTDIA\" 0)"}) {
        run(settings);
        // Were it to ask, it would swallow the line behind it.
        run("(c:_bInsert \"DESK\" (list 0 0 0))\n(setq seen 5)");
        EXPECT_THAT(output, HasSubstr("5"));
        EXPECT_EQ(AcDbObjectPointer<VNDKAttribute>(modelSpace().back())->textValue(), "default");
    }
}

TEST_F(InsertionTest, UndoTakesBackAnInsertionAsOneStep) {
    append(block, define("A", "1"));
    append(block, define("B", "2"));
    run("(c:_bInsert \"DESK\" (list 0 0 0))");
    run("(c:_bInsert \"DESK\" (list 5 0 0))");
    ASSERT_EQ(modelSpace().size(), 6U);
    run("U");
    EXPECT_EQ(modelSpace().size(), 3U);
    run("REDO");
    ASSERT_EQ(modelSpace().size(), 6U);
    EXPECT_THAT(tags(modelSpace()[3]), testing::ElementsAre("A", "B"));
    run("U");
    run("U");
    EXPECT_TRUE(modelSpace().empty());
}

TEST_F(InsertionTest, TextThatIsSentRunsAfterTheCommandItCancels) {
    append(block, define("A", "1"));
    run("LINE 0,0 1,1"); // ends with its input
    host.documents().sendStringToExecute(host.documents().curDocument(),
                                         "\x1B\x1B(c:_bInsert \"DESK\" (list 7.0 8.0 0.0)) ", false, true, false);
    host.pump();
    const auto ids = modelSpace();
    ASSERT_GE(ids.size(), 2U);
    const AcDbObjectPointer<VNDKBlockReference> reference(ids[ids.size() - 2]);
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->position(), AcGePoint3d(7, 8, 0));
}

TEST_F(InsertionTest, WorksInEveryDocumentAndOnTheCurrentOneOnly) {
    AcApDocument* const first = host.documents().curDocument();
    ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    addBlock("CHAIR");
    EXPECT_THAT(run("(c:_bInsert \"DESK\" (list 0 0 0))"), HasSubstr("isn't in this drawing"));
    run("(c:_bInsert \"CHAIR\" (list 0 0 0))");
    EXPECT_EQ(modelSpace().size(), 1U);
    host.documents().setCurDocument(first);
    EXPECT_TRUE(modelSpace().empty());
    run("(c:_bInsert \"DESK\" (list 0 0 0))");
    EXPECT_EQ(modelSpace().size(), 1U);
}

} // namespace
