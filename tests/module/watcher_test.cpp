// Which commands are watched, and what becomes of ATTREQ.
#include "module/watcher_fixture.h"
#include "objects/grip_point.h"

using testing::HasSubstr;
using testing::Not;

namespace {

TEST_F(WatcherTest, TheHostAsksForNothingWhileAWatchedCommandRuns) {
    for (const char* name : {"INSERT", "DDINSERT"})
        for (const short before : {0, 1}) {
            database().setAttreq(before);
            run(std::string(name) + " 1,1");
            EXPECT_EQ(attreqWithin, 0) << name;
            EXPECT_EQ(attreq(), before) << name;
        }
    EXPECT_EQ(drawn(), "intelligent1 intelligent1 intelligent1 intelligent1");
}

TEST_F(WatcherTest, OtherNamesArentWatched) {
    for (const char* name : {"-INSERT", "MINSERT", "PLACE"}) {
        run(std::string(name) + " 1,1");
        EXPECT_EQ(attreqWithin, 1) << name;
    }
    EXPECT_EQ(drawn(), "plain1 plain1 plain1");
    for (const char* name : {"insert", "Block", "INSERT ", ""}) {
        host.editor().reactors().tell([&](AcEditorReactor& r) { r.commandWillStart(name); });
        EXPECT_EQ(attreq(), 1) << name;
        host.editor().reactors().tell([&](AcEditorReactor& r) { r.commandEnded(name); });
    }
    EXPECT_EQ(drawn(), "plain1 plain1 plain1");
}

TEST_F(WatcherTest, ACancelledInsertionGivesAttreqBackAndUpgradesNothing) {
    run("LINE 0,0 1,1\n");
    const AcDbObjectId plain = addPlain({3, 0, 0});
    run("LINE 0,0 1,1\n");
    run("INSERT \x1B");
    EXPECT_EQ(attreqWithin, 0);
    EXPECT_EQ(attreq(), 1);
    EXPECT_EQ(drawn(), "LINE plain3 LINE");
    EXPECT_FALSE(plain.isErased());
    run("INSERT"); // ends with its input
    EXPECT_EQ(attreq(), 1);
    EXPECT_EQ(drawn(), "LINE plain3 LINE");
    host.editor().reactors().tell([](AcEditorReactor& r) { r.commandWillStart("BLOCK"); });
    EXPECT_EQ(attreq(), 0);
    host.editor().reactors().tell([](AcEditorReactor& r) { r.commandFailed("BLOCK"); });
    EXPECT_EQ(attreq(), 1);
}

TEST_F(WatcherTest, TheStartLooksAtTheLastEntityAndTheEndAtTheLastPlainReference) {
    // The last entity at the start is the last plain reference at the end: the command made none.
    addPlain({1, 0, 0});
    addPlain({2, 0, 0});
    run("CIRCLE 50,50 1");
    run("BLOCK ROUND 0,0 51,50\n");
    EXPECT_EQ(drawn(), "plain1 intelligent2") << "a circle was last";
    addPlain({4, 0, 0});
    host.editor().reactors().tell([](AcEditorReactor& r) { r.commandWillStart("BLOCK"); });
    host.editor().reactors().tell([](AcEditorReactor& r) { r.commandEnded("BLOCK"); });
    EXPECT_EQ(drawn(), "plain1 intelligent2 plain4");
    // The last one goes into the block; the one before it is the last now, and it wasn't remembered.
    run("BLOCK PAIR 0,0 L\n");
    EXPECT_EQ(drawn(), "intelligent2 intelligent1");
    run("BLOCK LAST 0,0 ALL\n");
    EXPECT_EQ(drawn(), "") << "no plain reference is left";
}

TEST_F(WatcherTest, CancellingAnyCommandForgetsTheLastReference) {
    addPlain({1, 0, 0});
    for (const char* cancelled : {"LINE", "PURGE", "WBLOCK"}) {
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandWillStart("INSERT"); });
        host.editor().reactors().tell([&](AcEditorReactor& r) { r.commandCancelled(cancelled); });
        EXPECT_EQ(attreq(), 0) << "it belongs to the command that runs on";
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandEnded("INSERT"); });
        EXPECT_EQ(attreq(), 1);
        EXPECT_EQ(drawn(), "intelligent1") << "nothing was remembered, so it counts as new";
    }
}

TEST_F(WatcherTest, TheCurrentSpaceIsWatched) {
    addPlain({1, 0, 0});
    run("(setvar \"TILEMODE\" 0)");
    run("INSERT 7,7");
    EXPECT_THAT(drawn(), HasSubstr("intelligent7"));
    run("(setvar \"TILEMODE\" 1)");
    EXPECT_EQ(drawn(), "plain1");
}

TEST_F(WatcherTest, ASpaceThatSomebodyHoldsIsNotLookedAt) {
    host.editor().reactors().tell([](AcEditorReactor& r) { r.commandWillStart("INSERT"); });
    addPlain({1, 0, 0});
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> reader(space());
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandEnded("INSERT"); });
    }
    EXPECT_EQ(drawn(), "plain1");
    EXPECT_EQ(attreq(), 1);
}

TEST_F(WatcherTest, WhatSomebodyHoldsForWriteIsPassedOver) {
    addPlain({1, 0, 0});
    host.editor().reactors().tell([](AcEditorReactor& r) { r.commandWillStart("INSERT"); });
    run("LINE 0,0 1,1\n");
    const AcDbObjectId second = addPlain({2, 0, 0});
    {
        const AcDbObjectPointer<AcDbEntity> writer(second, AcDb::kForWrite);
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandEnded("INSERT"); });
    }
    EXPECT_EQ(drawn(), "plain1 LINE plain2") << "the one before it was last at the start";
}

TEST_F(WatcherTest, BlockAndWblockBringGripPointsUpToDate) {
    run("LINE 5,5 9,9\n");
    auto* const grip = new VNDKGripPoint;
    grip->setPosition({5, 5, 0});
    const AcDbObjectId gripId = append(space(), grip);
    database().setInsbase({1, 2, 3});
    run("CIRCLE 50,50 1");
    for (const char* command : {"WBLOCK \x1B", "BLOCK \x1B"}) {
        run(command);
        const AcDbObjectPointer<VNDKGripPoint> linked(gripId, AcDb::kForWrite);
        EXPECT_EQ(linked->insBase(), AcGePoint3d(1, 2, 3)) << command;
        EXPECT_EQ(linked->childEntities().size(), 1u) << command;
        linked->setInsBase({});
        linked->setChildEntityIds({});
    }
    run("INSERT 0,0");
    EXPECT_TRUE(AcDbObjectPointer<VNDKGripPoint>(gripId)->childEntities().empty());
    EXPECT_EQ(attreq(), 1);
}

TEST_F(WatcherTest, WblockTakesAnIntelligentBlockWhole) {
    define("WIDTH", "900", {1, 0, 0});
    database().setAttreq(0);
    run("INSERT 5,0");
    AcDbDatabase* made = nullptr;
    ASSERT_EQ(database().wblock(made, {modelSpace()[0]}, AcGePoint3d(5, 0, 0)), Acad::eOk);
    const std::unique_ptr<AcDbDatabase> part(made);
    const auto ids = entities(part->modelSpaceId());
    ASSERT_EQ(ids.size(), 2u);
    const AcDbObjectPointer<VNDKBlockReference> reference(ids[0]);
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->position(), AcGePoint3d::kOrigin);
    ASSERT_EQ(reference->attributeCount(), 1);
    EXPECT_EQ(reference->getAttribute(0), ids[1]);
    EXPECT_STREQ(reference->originalBlockName(), "DESK");
    const AcDbObjectPointer<VNDKAttribute> attribute(ids[1]);
    EXPECT_EQ(attribute->position(), AcGePoint3d(1, 0, 0)) << "moved with its reference, and once";
    EXPECT_EQ(attribute->textValue(), "900");
    ASSERT_FALSE(attribute->definitionId().isNull()) << "the definition came along";
    EXPECT_EQ(AcDbObjectPointer<AcDbAttributeDefinition>(attribute->definitionId())->ownerId(),
              reference->blockTableRecord());
}

} // namespace
