// Hatches, multilines, solids, images and helices under the commands of every day.
#include "commands_fixture.h"
#include "db/hatch.h"
#include "db/helix.h"
#include "db/mline.h"
#include "db/modeler_geometry.h"
#include "db/raster_image.h"
#include "drawing/db/solid_text.h"
#include "support/drawing_digest.h"

namespace {

class AreasAndSolidsTest : public CommandsTest {
protected:
    template <class T, class Data>
    void append(const Data& data) {
        auto* const entity = new T;
        entity->setFileData(data);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(space->appendAcDbEntity(entity), Acad::eOk);
        entity->setDatabaseDefaults(&database());
        entity->close();
    }

    /// One of each kind, in a square from 0,0 to 4,4.
    void appendAll() {
        AcDbHatch::Data area;
        AcDbHatch::Loop loop;
        loop.flags = AcDbHatch::kPolyline;
        loop.vertices = {{{0, 0}, 0}, {{4, 0}, 0}, {{4, 4}, 0}, {{0, 4}, 0}};
        area.loops = {loop};
        area.name = "LINE";
        area.lines = {{0, {0, 0.5}, {0, 1}, {}}};
        append<AcDbHatch>(area);
        AcDbMline::Data lines;
        lines.lines = 2;
        lines.vertices = {{{0, 1, 0}, {1, 0, 0}, {0, 1, 0}, {{{0, 0}, {}}, {{-1, 0}, {}}}},
                          {{4, 1, 0}, {1, 0, 0}, {0, 1, 0}, {{{0, 0}, {}}, {{-1, 0}, {}}}}};
        append<AcDbMline>(lines);
        AcDbModelerGeometry::Data body;
        body.empty = false;
        body.text = vndk::test::boxText(4, 4, 2);
        append<AcDb3dSolid>(body);
        append<AcDbRegion>(body);
        AcDbRasterImage::Data image;
        image.size = {4, 4};
        append<AcDbWipeout>(image);
        AcDbSpline::Data curve;
        curve.degree = 1;
        curve.knots = {0, 0, 1, 1};
        curve.controlPoints = {{0, 0, 0}, {4, 4, 0}};
        append<AcDbHelix>(curve);
    }
    AcDbDatabase& database() { return *host.documents().curDocument()->database(); }

    /// The boxes of all entities in order.
    std::string boxes() {
        std::string text;
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
        for (const AcDbObjectId id : space->entities()) {
            const AcDbObjectPointer<AcDbEntity> entity(id);
            AcDbExtents box;
            if (!entity || entity->getGeomExtents(box) != Acad::eOk)
                continue;
            const AcGePoint3d &low = box.minPoint(), &high = box.maxPoint();
            for (const double value : {low.x, low.y, high.x, high.y})
                text += std::to_string(std::lround(value * 100)) + " ";
            text += "; ";
        }
        return text;
    }
    static std::string times(const std::string& text, int count) {
        std::string all;
        for (int i = 0; i < count; ++i)
            all += text;
        return all;
    }
};

} // namespace

TEST_F(AreasAndSolidsTest, AreMovedTurnedScaledMirroredAndBroughtBack) {
    appendAll();
    const std::string square = "0 0 400 400 ; ", lower = "0 0 400 100 ; ";
    ASSERT_EQ(boxes(), square + lower + times(square, 4));
    const auto before = vndk::test::digestOf(database());
    const struct {
        const char* script;
        const char *square, *lower;
    } cases[] = {
        {"MOVE ALL\n\n0,0 10,1\n", "1000 100 1400 500 ; ", "1000 100 1400 200 ; "},
        {"ROTATE ALL\n\n0,0 90\n", "-400 0 0 400 ; ", "-100 0 0 400 ; "},
        {"SCALE ALL\n\n0,0 2\n", "0 0 800 800 ; ", "0 0 800 200 ; "},
        {"MIRROR ALL\n\n0,0 0,1 Y\n", "-400 0 0 400 ; ", "-400 0 0 100 ; "},
    };
    for (const auto& c : cases) {
        run(c.script);
        EXPECT_EQ(boxes(), c.square + std::string(c.lower) + times(c.square, 4)) << c.script << output;
        EXPECT_EQ(output.find("stay as they are"), std::string::npos) << output;
        run("U\n");
        EXPECT_EQ(vndk::test::digestDifference(before, vndk::test::digestOf(database())), "") << c.script;
    }
    run("COPY ALL\n\n0,0 5,0\n");
    EXPECT_EQ(boxes(),
              square + lower + times(square, 4) + "500 0 900 400 ; 500 0 900 100 ; " + times("500 0 900 400 ; ", 4));
    run("U\n");
    EXPECT_EQ(vndk::test::digestDifference(before, vndk::test::digestOf(database())), "");
}

TEST_F(AreasAndSolidsTest, ComeApartWhereTheyCan) {
    appendAll();
    const auto before = vndk::test::digestOf(database());
    run("EXPLODE ALL\n\n");
    EXPECT_TRUE(printed("1 3DSOLID could not be exploded.")) << output;
    EXPECT_TRUE(printed("1 WIPEOUT could not be exploded.")) << output;
    const std::string pieces = drawn();
    EXPECT_EQ(pieces.find("HATCH"), std::string::npos);
    EXPECT_EQ(pieces.find("MLINE"), std::string::npos);
    EXPECT_EQ(pieces.find("REGION"), std::string::npos);
    EXPECT_NE(pieces.find("LINE 0,0.5 4,0.5"), std::string::npos) << pieces;
    EXPECT_NE(pieces.find("LINE 0,1 4,1"), std::string::npos) << pieces;
    run("U\n");
    EXPECT_EQ(vndk::test::digestDifference(before, vndk::test::digestOf(database())), "");
}

TEST_F(AreasAndSolidsTest, ListShowsWhatTheyAre) {
    appendAll();
    run("LIST ALL\n\n");
    for (const char* const text : {"HATCH  Layer: \"0\"", "Hatch pattern  LINE", "Hatch scale  1.0000",
                                   "Justification =  Top", "3DSOLID  Layer: \"0\"", "Upper  X=   4.0000", "turns  3"})
        EXPECT_TRUE(printed(text)) << text << output;
}
