// Dimensions made by prompts, and the commands that change objects over them and their kin.
#include "commands_fixture.h"

#include "db/dimensions.h"
#include "db/leader.h"
#include "db/shape.h"

#include <set>

namespace {

class DimensionCommands : public CommandsTest {
protected:
    std::vector<AcDbObjectId> space() {
        std::vector<AcDbObjectId> live;
        const AcDbObjectPointer<AcDbBlockTableRecord> record(database().modelSpaceId());
        for (const AcDbObjectId id : record->entities())
            if (!id.isErased())
                live.push_back(id);
        return live;
    }

    /// The texts of all dimensions, in order.
    std::string texts() {
        std::string all;
        for (const AcDbObjectId id : space())
            if (const AcDbObjectPointer<AcDbDimension> dimension(id); dimension)
                all += (all.empty() ? "" : " ") + dimension->shownText();
        return all;
    }

    void append(AcDbEntity* entity) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(space->appendAcDbEntity(entity), Acad::eOk);
        entity->close();
    }

    /// One entity of each kind that stays in one piece, side by side.
    void appendKin() {
        auto* const leader = new AcDbLeader;
        leader->appendVertex({0, 0, 0});
        leader->appendVertex({5, 5, 0});
        append(leader);
        append(new AcDbFcf("{\\Fgdt;j}%%v0.5", {10, 0, 0}, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis));
        append(new AcDbShape);
    }
};

TEST_F(DimensionCommands, measureBetweenPoints) {
    run("DIMLINEAR 0,0 3,4 1,9\nDIMLINEAR 0,0 3,4 9,1\nDIMLINEAR 0,0 3,4 R 0 9,1\nDIMALIGNED 0,0 3,4 0,5\n");
    EXPECT_EQ(texts(), "3.0000 4.0000 3.0000 5.0000");
    EXPECT_TRUE(printed("Dimension text = 5.0000")) << output;
    run("DIMALIGNED 0,0 3,4 T about <>\n0,5\nDIMALIGNED 1,1 1,1 5,5\n");
    EXPECT_TRUE(printed("there is nothing to measure.")) << output;
    EXPECT_EQ(texts(), "3.0000 4.0000 3.0000 5.0000 about 5.0000");
    run("UCS Z 90\nDIMLINEAR 0,0 0,-7 -1,-3\n");
    const AcDbObjectPointer<AcDbRotatedDimension> last(space().back());
    EXPECT_EQ(last->shownText(), "7.0000");
    EXPECT_NEAR(last->xLine2Point().x, 7, 1e-9) << "points are those of the UCS";
}

TEST_F(DimensionCommands, objectsAreMovedCopiedScaledAndMirrored) {
    run("DIMLINEAR 0,0 3,4 1,9\n");
    appendKin();
    run("MOVE ALL\n\n0,0 1,0\nCOPY ALL\n\n0,0 0,50\nSCALE P\n\n0,0 2\nMIRROR ALL\n\n0,0 0,1 N\nROTATE ALL\n\n0,0 90\n");
    EXPECT_FALSE(problem) << output;
    EXPECT_EQ(output.find("stay as they are"), std::string::npos) << output;
    EXPECT_EQ(space().size(), 16u);
    EXPECT_EQ(texts(), "6.0000 3.0000 6.0000 3.0000");
    std::set<AcDbObjectId> blocks;
    for (const AcDbObjectId id : space())
        if (const AcDbObjectPointer<AcDbDimension> dimension(id); dimension)
            blocks.insert(dimension->dimBlockId());
    EXPECT_EQ(blocks.size(), 4u) << "each has a picture of its own";
    run("UNDO 5\n");
    EXPECT_EQ(texts(), "3.0000");
    EXPECT_EQ(space().size(), 4u);
}

TEST_F(DimensionCommands, objectsAreExploded) {
    run("DIMLINEAR 0,0 3,4 1,9\n");
    appendKin();
    run("EXPLODE ALL\n\n");
    EXPECT_TRUE(printed("1 SHAPE could not be exploded.")) << output;
    for (const AcDbObjectId id : space()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        EXPECT_FALSE(entity->isKindOf(AcDbDimension::desc()) || entity->isKindOf(AcDbLeader::desc()) ||
                     entity->isKindOf(AcDbFcf::desc()));
    }
    EXPECT_GT(space().size(), 20u);
}

TEST_F(DimensionCommands, areListed) {
    run("DIMALIGNED 0,0 3,4 0,5\n");
    appendKin();
    run("LIST ALL\n\n");
    for (const char* const line : {"dimension text  \"5.0000\"", "dimension style  \"Standard\"",
                                   "at point,  X=   5.0000", "tolerance text  {\\Fgdt;j}%%v0.5", "shape  number 0"})
        EXPECT_TRUE(printed(line)) << line << output;
}

TEST_F(DimensionCommands, picturesInUseArentPurged) {
    run("DIMLINEAR 0,0 3,4 1,9\nDIMLINEAR 0,0 3,4 9,1\nERASE L\n\nPURGE B *\nN\n");
    EXPECT_TRUE(printed("Deleting block \"*D")) << output;
    for (const AcDbObjectId id : space())
        EXPECT_FALSE(AcDbObjectPointer<AcDbDimension>(id)->dimBlockId().isErased());
}

} // namespace
