// (c:_bInsertFile "path" (list x y z)) from the command line to the drawing and its file.
#include "module/file_insertion_fixture.h"

#include <filesystem>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

class InsertFileTest : public FileInsertionTest {};

TEST_F(InsertFileTest, BuildsTheReferenceAndItsAttributesBesideIt) {
    const std::string path = file("desk.dwg",
                                  {new AcDbText({0, 0, 0}, "not a definition"),
                                   define("WIDTH", "900", "Width", {5, 6, 7}), define("OWNER", "nobody", "Owner")},
                                  {10, 20, 30});
    insert(path, "\n\n");
    EXPECT_FALSE(problem) << problem->message;
    const auto ids = modelSpace();
    ASSERT_EQ(ids.size(), 3U);
    const AcDbObjectPointer<VNDKBlockReference> reference(ids[0]);
    ASSERT_EQ(reference->isA(), VNDKBlockReference::desc());
    EXPECT_EQ(reference->blockTableRecord(), blockNamed("desk"));
    EXPECT_STREQ(reference->originalBlockName(), "desk");
    EXPECT_EQ(reference->position(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(reference->insBase(), AcGePoint3d(10, 20, 30));
    EXPECT_EQ(reference->scaleFactors(), AcGeScale3d(1));
    EXPECT_EQ(reference->rotation(), 0);
    EXPECT_EQ(reference->normal(), AcGeVector3d(0, 0, 1));
    EXPECT_EQ(reference->getAttribute(0), ids[1]);
    const AcDbObjectPointer<AcDbBlockTableRecord> block(blockNamed("DESK"));
    EXPECT_EQ(block->origin(), AcGePoint3d(10, 20, 30));
    // The definition's point and the reference's position; the base point is no part of it.
    const AcDbObjectPointer<VNDKAttribute> attribute(ids[1]);
    EXPECT_EQ(attribute->position(), AcGePoint3d(6, 8, 10));
    EXPECT_EQ(attribute->ownerId(), database().modelSpaceId());
    EXPECT_EQ(attribute->definitionId(), entities(block->objectId())[1]);
    EXPECT_THAT(output, Not(HasSubstr("\nnil"))) << "the result is void";
}

TEST_F(InsertFileTest, TheBlockHasTheFilesNameUpToTheFirstExtension) {
    const std::string dos = *vndk::win32::DriveMap::current().toDos(folder.path());
    const std::pair<const char*, const char*> files[] = {
        {"door.dwg", "door"},
        {"a.dwg.dwg", "a"},
        {"my.dwgs.dwg", "my"},
        {"gate.DWG", "gate.DWG"},
        {"plain", "plain"},
        {".b.dwg", ".b"},
        {"T\xC3\xBCr 2.dwg", "T\xFCr 2"},
        {"x y.Dwg.dwg", "x y.Dwg"},
    };
    for (const auto& [name, block] : files) {
        file(name, {new AcDbText({0, 0, 0}, name)});
        // The same file by its system path and by its drive; the second time the block is there.
        const std::string inside = std::string(name) == "T\xC3\xBCr 2.dwg" ? "T\xFCr 2.dwg" : name;
        for (const std::string& path : {folder / inside, dos + "\\" + inside, dos + "/" + inside}) {
            const size_t before = references().size();
            insert(path);
            EXPECT_FALSE(problem) << path;
            ASSERT_EQ(references().size(), before + 1) << path;
            const AcDbObjectPointer<VNDKBlockReference> reference(references().back());
            EXPECT_STREQ(reference->originalBlockName(), block);
            EXPECT_EQ(reference->blockTableRecord(), blockNamed(block)) << path;
        }
    }
    EXPECT_EQ(entities(blockNamed("door")).size(), 1U);
}

TEST_F(InsertFileTest, ABlockThatIsThereIsTakenAsItIsAndTheFileIsNotRead) {
    const AcDbObjectId block = addBlock("Desk", {7, 8, 9});
    append(block, define("MINE", "1"));
    const std::string path = desk();
    insert(path, "\n");
    EXPECT_THAT(lastValues(), ElementsAre("MINE=1|1"));
    EXPECT_EQ(AcDbObjectPointer<VNDKBlockReference>(references().back())->insBase(), AcGePoint3d(7, 8, 9));
    // Neither does it matter when the file changes, is damaged or goes.
    folder.write("desk.dwg", "no drawing");
    insert(path, "two\n");
    EXPECT_THAT(lastValues(), ElementsAre("MINE=two|1"));
    std::filesystem::remove(path);
    insert(path, "three\n");
    EXPECT_FALSE(problem);
    EXPECT_THAT(lastValues(), ElementsAre("MINE=three|1"));
    EXPECT_EQ(entities(block).size(), 1U);
}

TEST_F(InsertFileTest, AsksForEachValueInTheDefinitionsOrder) {
    const std::string printed = insert(desk(), "Ada Lovelace \n\nT\xFCr & \xC4rger; \"x\" (1+2) %s\n(setq seen 5)");
    EXPECT_FALSE(problem);
    EXPECT_THAT(printed, HasSubstr("\nWho works here <nobody>: Ada Lovelace \nRoom <study>: \nAsset number <0000>: "));
    EXPECT_THAT(printed, HasSubstr("\n5\n")) << "it asks thrice and no more";
    EXPECT_THAT(lastValues(), ElementsAre("OWNER=Ada Lovelace |nobody", "ROOM=study|study",
                                          "ASSET=T\xFCr & \xC4rger; \"x\" (1+2) %s|0000"));
    insert(folder / "desk.dwg", "   \n" + std::string(255, 'x') + "\n\n");
    EXPECT_THAT(lastValues(),
                ElementsAre("OWNER=   |nobody", "ROOM=" + std::string(255, 'x') + "|study", "ASSET=0000|0000"));
}

TEST_F(InsertFileTest, AnAnswerThatIsTooLongIsRefusedAndNeverCut) {
    const std::string tooLong(256, 'x');
    EXPECT_THAT(insert(desk(), "A\n" + tooLong + "\nB\nC\n"), HasSubstr("The text may have 255 characters at most."));
    EXPECT_FALSE(problem);
    EXPECT_THAT(lastValues(), ElementsAre("OWNER=A|nobody", "ROOM=B|study", "ASSET=C|0000"));
    // A script fails there; what is made is whole.
    host.commandLine().setInvalidAnswers(vndk::host::InvalidAnswers::FailCommand);
    insert(folder / "desk.dwg", "A\n" + tooLong + "\n(setq seen 5)\n");
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, vndk::host::Problem::Kind::InvalidAnswer);
    EXPECT_THAT(output, HasSubstr("\n5\n")) << "it asks no more";
    EXPECT_THAT(lastValues(), ElementsAre("OWNER=A|nobody", "ROOM=study|study", "ASSET=0000|0000"));
}

TEST_F(InsertFileTest, ACancelAtAnyPromptLeavesAWholeReferenceAndAsksNoMore) {
    const std::string path = desk();
    const std::vector<std::string> given = {"OWNER=A|nobody", "ROOM=A|study", "ASSET=A|0000"};
    const std::vector<std::string> kept = {"OWNER=nobody|nobody", "ROOM=study|study", "ASSET=0000|0000"};
    for (size_t answered = 0; answered < 3; ++answered) {
        std::string answers;
        for (size_t i = 0; i < answered; ++i)
            answers += "A\n";
        const size_t objects = liveObjects();
        const std::string printed = insert(path, answers + "\x1B(setq seen 5)\n");
        EXPECT_FALSE(problem) << "a cancel is the user's will";
        EXPECT_THAT(printed, HasSubstr("\n5\n")) << answered;
        std::vector<std::string> expected(given.begin(), given.begin() + static_cast<std::ptrdiff_t>(answered));
        expected.insert(expected.end(), kept.begin() + static_cast<std::ptrdiff_t>(answered), kept.end());
        EXPECT_EQ(lastValues(), expected) << answered;
        expectAllClosed();
        run("U");
        EXPECT_EQ(liveObjects(), objects) << "the block's definition goes too";
        EXPECT_TRUE(blockNamed("desk").isNull() || blockNamed("desk").isErased());
        run("REDO");
        EXPECT_EQ(lastValues(), expected) << answered;
        run("U");
    }
}

TEST_F(InsertFileTest, TheEndOfAScriptInAPromptIsACancelAndAFailure) {
    host.commandLine().input().feed(call(desk()) + "\nA\n");
    problem = host.commandLine().run();
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, vndk::host::Problem::Kind::CommandCancelled);
    EXPECT_EQ(problem->message, "C:_BINSERTFILE was still asking when the input ended.");
    EXPECT_EQ(problem->line, 1U);
    EXPECT_THAT(lastValues(), ElementsAre("OWNER=A|nobody", "ROOM=study|study", "ASSET=0000|0000"));
    run("U");
    EXPECT_TRUE(modelSpace().empty());
}

TEST_F(InsertFileTest, OneUndoTakesBackTheReferenceTheAttributesAndTheBlock) {
    const std::string path = desk();
    const size_t objects = liveObjects();
    insert(path, "A\nB\nC\n");
    insert(path, "D\nE\nF\n");
    run("U");
    EXPECT_THAT(lastValues(), ElementsAre("OWNER=A|nobody", "ROOM=B|study", "ASSET=C|0000"));
    run("U");
    EXPECT_EQ(liveObjects(), objects);
    // The name is free again, so the file is read anew.
    file("desk.dwg", {define("NEW", "n")});
    insert(path, "\n");
    EXPECT_THAT(lastValues(), ElementsAre("NEW=n|n"));
    EXPECT_EQ(references().size(), 1U);
}

TEST_F(InsertFileTest, AllKindsOfDefinitionsGetAnAttributeButConstantOnes) {
    AcDbAttributeDefinition* const constant = define("CONSTANT", "1");
    constant->setConstant(true);
    AcDbAttributeDefinition* const preset = define("PRESET", "2", "Preset");
    preset->setPreset(true);
    AcDbAttributeDefinition* const invisible = define("INVISIBLE", "3", "Invisible");
    invisible->setInvisible(true);
    // ATTREQ has no say on this road.
    run("(setvar \"ATTREQ\" 0)");
    const std::string printed = insert(file("mix.dwg", {constant, preset, invisible, defineWide("700")}), "p\n\n900\n");
    EXPECT_THAT(printed, HasSubstr("Preset <2>: p\nInvisible <3>: \nHow wide <700>: 900\n"));
    EXPECT_THAT(lastValues(), ElementsAre("PRESET=p|2", "INVISIBLE=3|3", "WIDE=900|700"));
    const auto ids = modelSpace();
    ASSERT_EQ(ids.size(), 4U);
    EXPECT_TRUE(AcDbObjectPointer<VNDKAttribute>(ids[1])->isPreset());
    EXPECT_TRUE(AcDbObjectPointer<VNDKAttribute>(ids[2])->isInvisible());
    {
        // The formula ran on the answer, between the points moved along with the reference at 1,2,3.
        const AcDbObjectPointer<VNDKAttribute> wide(ids[3]);
        EXPECT_EQ(wide->conditionalPoint2(), AcGePoint3d(21, 2, 3));
        EXPECT_EQ(wide->position(), AcGePoint3d(21, 2, 3));
    }
    insert(folder / "mix.dwg", "\n\n\n");
    EXPECT_EQ(AcDbObjectPointer<VNDKAttribute>(modelSpace().back())->position(), AcGePoint3d(11, 2, 3));
}

TEST_F(InsertFileTest, WithoutDefinitionsNothingIsAsked) {
    for (const char* attdia : {"0", "1"}) {
        run(std::string("(setvar \"ATTDIA\" ") + attdia + ")");
        insert(file("line.dwg", {new AcDbText({0, 0, 0}, "x")}), "(setq seen 5)");
        EXPECT_THAT(output, HasSubstr("\n5\n"));
        EXPECT_TRUE(lastValues().empty());
    }
    EXPECT_EQ(references().size(), 2U);
}

TEST_F(InsertFileTest, GoesToPaperSpaceAndByWorldCoordinates) {
    run("UCS O 100,200,300");
    run("(setvar \"TILEMODE\" 0)");
    insert(desk(), "A\n\n\n");
    EXPECT_TRUE(modelSpace().empty());
    const auto ids = paperSpace();
    ASSERT_GE(ids.size(), 4U);
    const AcDbObjectId id = ids[ids.size() - 4];
    EXPECT_THAT(values(id), ElementsAre("OWNER=A|nobody", "ROOM=study|study", "ASSET=0000|0000"));
    const AcDbObjectPointer<VNDKBlockReference> reference(id);
    EXPECT_EQ(reference->position(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(ids.back())->ownerId(), database().paperSpaceId());
}

TEST_F(InsertFileTest, TakesTheArgumentsInTheirForms) {
    const std::string path = file("line.dwg", {new AcDbText({0, 0, 0}, "x")});
    for (const std::string& nothing : {std::string("(c:_bInsertFile)"), "(c:_bInsertFile \"" + path + "\")"}) {
        EXPECT_THAT(run(nothing), HasSubstr("\nnil")) << nothing;
        EXPECT_TRUE(references().empty());
    }
    size_t inserted = 0;
    for (const char* noPoint : {"5", "nil", "\"1,2,3\"", "(list 1 2)"}) {
        run(call(path, noPoint));
        ASSERT_EQ(references().size(), ++inserted) << noPoint;
        EXPECT_EQ(AcDbObjectPointer<VNDKBlockReference>(references().back())->position(), AcGePoint3d()) << noPoint;
    }
    // A head that is no path is the point, and an empty path is no file.
    EXPECT_THAT(run("(c:_bInsertFile (list 1 2 3))"), HasSubstr("Could not load drawing selected."));
    EXPECT_EQ(references().size(), inserted);
}

TEST_F(InsertFileTest, TextThatIsSentAsksTheUser) {
    run("LINE 0,0 1,1");
    host.documents().sendStringToExecute(host.documents().curDocument(), ("\x1B\x1B" + call(desk()) + " ").c_str(),
                                         false, true, false);
    host.commandLine().input().feed("A\nB\nC\n(setq seen 5)\n");
    output.clear();
    host.pump();
    problem = host.commandLine().run();
    EXPECT_FALSE(problem);
    EXPECT_THAT(lastValues(), ElementsAre("OWNER=A|nobody", "ROOM=B|study", "ASSET=C|0000"));
    EXPECT_THAT(output, HasSubstr("\n5\n"));
}

TEST_F(InsertFileTest, TheSavedFileHoldsItAll) {
    AcDbAttributeDefinition* const preset = define("PRESET", "2", "Preset", {3, 4, 0});
    preset->setPreset(true);
    auto* const conditional = new VNDKAttributeDefinition;
    conditional->setTag("NOTE");
    conditional->setTextString("note");
    insert(file("frame.dwg", {preset, conditional}, {1, 1, 0}), "Pr\xFC"
                                                                "fung\n\n");
    ASSERT_EQ(database().saveAs((folder / "saved.dwg").c_str()), Acad::eOk) << database().lastFileError();
    AcDbDatabase drawing(false, true);
    ASSERT_EQ(drawing.readDwgFile((folder / "saved.dwg").c_str()), Acad::eOk) << drawing.lastFileError();
    EXPECT_TRUE(drawing.warnings().empty());
    ASSERT_EQ(references(drawing).size(), 1U);
    EXPECT_THAT(values(references(drawing)[0]), ElementsAre("PRESET=Pr\xFC"
                                                            "fung|2",
                                                            "NOTE=note|note"));
    const AcDbObjectPointer<VNDKBlockReference> reference(references(drawing)[0]);
    EXPECT_STREQ(reference->originalBlockName(), "frame");
    EXPECT_EQ(reference->insBase(), AcGePoint3d(1, 1, 0));
    const auto definitions = entities(reference->blockTableRecord());
    ASSERT_EQ(definitions.size(), 2U);
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(definitions[1])->isA(), VNDKAttributeDefinition::desc());
    EXPECT_EQ(AcDbObjectPointer<VNDKAttribute>(reference->getAttribute(1))->definitionId(), definitions[1]);
}

TEST_F(InsertFileTest, IntelligentObjectsOfTheFileStayIntelligent) {
    const std::string inner = desk();
    insert(inner, "A\nB\nC\n");
    ASSERT_EQ(database().saveAs((folder / "room.dwg").c_str()), Acad::eOk);
    ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    insert(folder / "room.dwg");
    EXPECT_FALSE(problem);
    ASSERT_EQ(references().size(), 1U);
    const auto inside = entities(blockNamed("room"));
    ASSERT_EQ(inside.size(), 4U);
    EXPECT_THAT(values(inside[0]), ElementsAre("OWNER=A|nobody", "ROOM=B|study", "ASSET=C|0000"));
    const AcDbObjectPointer<VNDKBlockReference> nested(inside[0]);
    EXPECT_EQ(nested->getAttribute(0), inside[1]) << "the copies belong together";
    EXPECT_EQ(nested->blockTableRecord(), blockNamed("desk"));
    EXPECT_EQ(AcDbObjectPointer<VNDKAttribute>(inside[1])->definitionId(), entities(blockNamed("desk"))[0]);
}

} // namespace
