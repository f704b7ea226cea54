// Which entity is found at a point, and how near one has to point.
#include "ed/pick.h"

#include "ap/drawing_views.h"
#include "db/curves.h"
#include "db/symbol_table.h"
#include "host/host_fixture.h"
#include "support/drawings.h"

#include <cstdlib>

using namespace vndk::host;

namespace {

class PickTest : public HostTest {
protected:
    /// The entity at the point, by its place in the drawing from 1; 0 for none.
    size_t at(double x, double y, double aperture = 0.1) {
        const AcDbObjectId id = entityAt(document(), {x, y, 0}, aperture);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(currentSpace(database()));
        size_t place = 0;
        for (const AcDbObjectId entity : space->entities()) {
            ++place;
            if (entity == id)
                return place;
        }
        return 0;
    }
};

} // namespace

TEST_F(PickTest, findsWhatPassesThroughTheBox) {
    run("LINE 0,0 10,0\n\n"            // 1
        "CIRCLE 20,0 5\n"              // 2
        "ARC C 40,0 45,0 40,5\n"       // 3
        "PLINE 60,0 70,0 A 70,10\n\n"  // 4
        "TEXT 80,0 2 0\nabcde\n\n"     // 5
        "CIRCLE 1000,5000 4000\n"      // 6
        "ARC C 50,-9 55,-9 50,-14\n"); // 7: from 0 to 270 degrees
    const struct {
        double x, y;
        size_t found;
    } cases[] = {
        {5, 0.09, 1},      {5, 0.11, 0},       {10.09, 0.09, 1},  {10.11, 0, 0},    {-0.11, 0, 0},    {25.09, 0, 2},
        {24.89, 0, 0},     {20, 0, 0},         {20, -4.95, 2},    {16.4, 3.6, 2},   {45, -0.05, 3},   {45, -0.2, 0},
        {40.05, 5, 3},     {39.8, 5, 0},       {43.6, 3.6, 3},    {65, 0, 4},       {75, 5.05, 4},    {70, 5, 0},
        {65, 5, 0},        {73.5, 8.5, 4},     {66.5, 8.5, 0},    {81, 1, 5},       {81, 3, 0},       {1000, 999.95, 6},
        {1000, 1000.2, 0}, {2000, 1127.02, 6}, {2000, 1127.5, 0}, {53.5, -12.6, 0}, {46.5, -12.5, 7},
    };
    for (const auto& c : cases)
        EXPECT_EQ(at(c.x, c.y), c.found) << c.x << ',' << c.y;
}

TEST_F(PickTest, takesTheLatestThatIsShown) {
    run("LINE 0,0 10,0\n\n-LAYER M TOP\n\nLINE 5,-5 5,5\n\n");
    EXPECT_EQ(at(5, 0), 2U);
    run("-LAYER S 0 OFF TOP\n\n");
    EXPECT_EQ(at(5, 0), 1U);
    run("-LAYER ON TOP FREEZE TOP\n\n");
    EXPECT_EQ(at(5, 0), 1U);
    run("-LAYER THAW TOP\n\nERASE L\n\n");
    EXPECT_EQ(at(5, 0), 1U);
    run("SETVAR TILEMODE 0\n");
    EXPECT_EQ(at(5, 0), 0U) << "the other space";
}

TEST_F(PickTest, seesTheDrawingAsTheScreenShowsIt) {
    run("LINE 0,0,50 10,0,50\n\nCIRCLE 0,0,7 5\n");
    EXPECT_EQ(at(7, 0), 1U) << "height doesn't count";
    EXPECT_EQ(at(0, 5), 2U);
    run("UCS O 100,100\n");
    EXPECT_EQ(at(-93, -100), 1U);
    run("UCS W\nUCS 3 0,0,0 1,0,0 0,0,1\n");
    EXPECT_EQ(at(5, 7), 2U) << "seen from the top still";
    document().views().show({{}, 100, {0, -1, 0}, {0, 0, 1}}); // from the front: the circle is a line at height 7
    EXPECT_EQ(at(3, 7), 2U);
    EXPECT_EQ(at(0, 5), 0U);
}

TEST_F(PickTest, theBoxGrowsWithPickboxAndWithTheView) {
    EXPECT_DOUBLE_EQ(host.variables().getReal("VIEWSIZE"), 9);
    EXPECT_DOUBLE_EQ(pickAperture(host), 9.0 * 3 / 600);
    run("LINE 0,0 10,0\n\nSETVAR PICKBOX 20\nERASE 5,0.29\n\n");
    EXPECT_EQ(entityCount(), 0U) << output;
    run("U\nSETVAR PICKBOX 3\nERASE 5,0.29 5,0.3\n\n");
    EXPECT_EQ(entityCount(), 1U) << output;
    run("SETVAR PICKBOX 51\n");
    EXPECT_TRUE(problem);
    run("SETVAR VIEWSIZE 5\n");
    EXPECT_DOUBLE_EQ(host.variables().getReal("VIEWSIZE"), 9);
}

TEST_F(PickTest, realDrawingsBringTheirView) {
    SKIP_WITHOUT_DRAWINGS();
    const vndk::test::DrawingCopies copies;
    const struct {
        const char* file;
        double size, x, y;
    } cases[] = {{"Arc.dwg", 20.49489104393754, -10.30543733550006, 10.02263864953424},
                 {"example_2000.dwg", 13314.951254288697, 5771.997569792082, 789.3256133671557}};
    for (const auto& c : cases) {
        const std::string path = copies.copy(std::string(std::getenv("VONDRAKE_DRAWINGS")) + "/r2000/" + c.file);
        ASSERT_EQ(host.documents().appContextOpenDocument(path.c_str()), Acad::eOk) << host.documents().lastError();
        run("SETVAR TILEMODE 1\n");
        EXPECT_DOUBLE_EQ(host.variables().getReal("VIEWSIZE"), c.size) << c.file;
        VariableValue center;
        ASSERT_EQ(host.variables().get("VIEWCTR", center), VariableError::None);
        EXPECT_TRUE(std::get<AcGePoint3d>(center).isEqualTo({c.x, c.y, 0}))
            << c.file << ' ' << SystemVariables::text(center);
    }
}
