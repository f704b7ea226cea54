// CHPROP.
#include "commands_fixture.h"
#include "db/curves.h"
#include "db/polylines.h"

namespace {

class ChpropTest : public CommandsTest {
protected:
    /// The properties of each entity, a line for each.
    std::string properties() {
        std::string text;
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
        for (const AcDbObjectId id : space->entities()) {
            const AcDbObjectPointer<AcDbEntity> entity(id);
            const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId());
            const AcDbObjectPointer<AcDbLinetypeTableRecord> linetype(entity->linetypeId());
            text += layer->name() + " " + std::to_string(entity->colorIndex()) + " " + linetype->name() + " " +
                    std::to_string(std::lround(entity->linetypeScale() * 10)) + " " +
                    std::to_string(entity->lineWeight());
            if (const auto* const line = AcDbLine::cast(entity.object()))
                text += " t" + std::to_string(std::lround(line->thickness()));
            text += "\n";
        }
        return text;
    }
};

} // namespace

TEST_F(ChpropTest, changesAllThatIsAskedForAtTheLastEnter) {
    run("-LAYER N WALLS\n\nLINE 0,0 1,0\n\n");
    run("CHPROP L\n\nC green LA walls LT Continuous S 2.5 LW 0.26 T 3\n\n");
    EXPECT_EQ(properties(), "WALLS 3 Continuous 25 25 t3\n") << output;
    for (const char* prompt :
         {"Enter property to change [Color/LAyer/LType/ltScale/LWeight/Thickness]: ", "Enter new color <BYLAYER>: ",
          "Enter new layer name <0>: ", "Enter new linetype name <ByLayer>: ", "Specify new linetype scale <1.0000>: ",
          "Enter new lineweight <ByLayer>: ", "Specify new thickness <0.0000>: "})
        EXPECT_TRUE(printed(prompt)) << prompt << "\n" << output;
    run("CHPROP L\n\nC BYB LW BYB LT ByBlock\n\n");
    EXPECT_EQ(properties(), "WALLS 0 ByBlock 25 -2 t3\n") << output;
    run("U\nU\n");
    EXPECT_EQ(properties(), "0 256 ByLayer 10 -1 t0\n");
}

TEST_F(ChpropTest, enterKeepsAndEscapeDiscards) {
    run("LINE 0,0 1,0\n\nLINE 0,1 1,1\n\nCHPROP L\n\nC 1\n\n");
    const std::string before = properties();
    run("CHPROP ALL\n\nC\n\nLA\n\nS\n\nT\n\nLW\n\n\n");
    EXPECT_TRUE(printed("Enter new color <varies>: ")) << output;
    EXPECT_EQ(properties(), before);
    run("CHPROP ALL\n\nC 5 T 4 \x1B");
    EXPECT_EQ(properties(), before);
    EXPECT_EQ(events.back(), "cancel CHPROP");
}

TEST_F(ChpropTest, aPolylineTakesItsVerticesAlong) {
    auto* const polyline = new AcDb2dPolyline;
    AcDbObjectId id, vertexId;
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
        space->appendAcDbEntity(id, polyline);
        auto* const vertex = new AcDb2dVertex({1, 1, 0});
        polyline->appendVertex(vertexId, vertex);
        vertex->close();
        polyline->close();
    }
    run("CHPROP L\n\nC 4 T 7\n\n");
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(vertexId)->colorIndex(), 4);
    EXPECT_EQ(AcDbObjectPointer<AcDb2dPolyline>(id)->thickness(), 7);
    run("U\n");
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(vertexId)->colorIndex(), 256);
    EXPECT_EQ(AcDbObjectPointer<AcDb2dPolyline>(id)->thickness(), 0);
}
