// What entities ask to be drawn, without fonts and pixels.
#include "db/database.h"
#include "db/modeler_geometry.h"
#include "db/polylines.h"
#include "db/raster_image.h"
#include "db/solids.h"
#include "db/text.h"
#include "drawing/db/solid_text.h"
#include "drawing/gi/recorder.h"
#include "gi/entity_drawing.h"
#include "gi/paragraph_runs.h"
#include "gi/text_codes.h"

#include <gtest/gtest.h>

using vndk::test::Recorder;

TEST(TextCodesTest, SignsAreReplacedAndWhatIsNoCodeStays) {
    using vndk::gi::withoutCodes;
    EXPECT_EQ(withoutCodes("90%%d %%P1 %%c5 100%%% %%065").text, "90\xB0 \xB1"
                                                                 "1 \xD8"
                                                                 "5 100% A");
    EXPECT_EQ(withoutCodes("\\U+20AC \\U+00e4 \\U+4E00 \\U+12").text, "\x80 \xE4 ? \\U+12");
    EXPECT_EQ(withoutCodes("%%x 100%% %%999 %").text, "%%x 100%% %%999 %");
    EXPECT_TRUE(withoutCodes("%%uA").underlined);
    EXPECT_TRUE(withoutCodes("%%oA").overlined);
}

TEST(TextCodesTest, ParagraphsAreRunsOfEqualFormat) {
    using vndk::gi::paragraphRuns;
    using vndk::gi::TextRun;
    vndk::gi::TextFormat plain;
    plain.height = 2;
    const auto first = paragraphRuns("a{\\fTimes New Roman|b1|i1|c0;b\\C1;\\H1.5x;c}d\\P\\Le\\l\\W0.5;\\Q15;f", plain);
    ASSERT_EQ(first.size(), 2U);
    ASSERT_EQ(first[0].size(), 4U);
    EXPECT_EQ(first[0][1].format.face, "Times New Roman");
    EXPECT_TRUE(first[0][1].format.bold && first[0][1].format.italic);
    EXPECT_EQ(first[0][2].text, "c");
    EXPECT_EQ(first[0][2].format.height, 3);
    EXPECT_EQ(first[0][2].format.color, 0xC3000001);
    EXPECT_EQ(first[0][3].format, plain) << "braces end what began in them";
    ASSERT_EQ(first[1].size(), 2U);
    EXPECT_TRUE(first[1][0].format.underlined && !first[1][1].format.underlined);
    EXPECT_EQ(first[1][1].format.widthFactor, 0.5);
    EXPECT_NEAR(first[1][1].format.oblique, kAcGePi / 12, 1e-12);

    const auto stacked = paragraphRuns("x\\S1/2;\\S+1^ -3;\\S5#8;", plain)[0];
    ASSERT_EQ(stacked.size(), 4U);
    EXPECT_EQ(stacked[1].text + "|" + stacked[1].below, "1|2");
    EXPECT_EQ(stacked[1].stacking, TextRun::kOverLine);
    EXPECT_EQ(stacked[2].text + "|" + stacked[2].below, "+1|-3");
    EXPECT_EQ(stacked[2].stacking, TextRun::kOverNothing);
    EXPECT_EQ(stacked[3].text, "5/8");

    // What makes no sense changes nothing, and no text is lost.
    const auto odd = paragraphRuns("\\A1;\\H-2;\\Hx;\\C999;\\Qnan;}a\\~\\\\\\{\\}%%d\\", plain)[0];
    ASSERT_EQ(odd.size(), 1U);
    EXPECT_EQ(odd[0].text, "a\xA0\\{}\xB0\\");
    EXPECT_EQ(odd[0].format, plain);
    EXPECT_TRUE(paragraphRuns("\\fArial", plain)[0].empty());
    EXPECT_EQ(paragraphRuns("", plain).size(), 1U);
}

TEST(EntityDrawingTest, SplinesBeginAndEndAtTheirControlPoints) {
    AcDbSpline spline;
    AcDbSpline::Data data;
    data.controlPoints = {{0, 0, 0}, {0, 4, 0}, {4, 4, 0}, {4, 0, 0}};
    data.knots = {0, 0, 0, 0, 1, 1, 1, 1};
    spline.setFileData(data);
    Recorder recorder;
    EXPECT_TRUE(acgiDrawEntity(spline, recorder));
    ASSERT_EQ(recorder.lines.size(), 1U);
    const auto& line = recorder.lines[0];
    EXPECT_TRUE(line.front().isEqualTo({0, 0, 0}));
    EXPECT_TRUE(line.back().isEqualTo({4, 0, 0}));
    EXPECT_TRUE(line[line.size() / 2].isEqualTo({2, 3, 0})) << "a cubic is three quarters up in its middle";

    data.knots.pop_back(); // no curve by control points then
    data.fitPoints = {{0, 0, 0}, {1, 1, 0}, {2, 0, 0}};
    spline.setFileData(data);
    EXPECT_TRUE(acgiDrawEntity(spline, recorder));
    ASSERT_EQ(recorder.lines.size(), 2U);
    EXPECT_NE(std::find(recorder.lines[1].begin(), recorder.lines[1].end(), AcGePoint3d(1, 1, 0)),
              recorder.lines[1].end());
}

TEST(EntityDrawingTest, FacesLeaveOutTheirInvisibleEdges) {
    AcDbFace face;
    AcDbFace::Data data{{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, 0b0101};
    face.setFileData(data);
    Recorder square;
    acgiDrawEntity(face, square);
    EXPECT_EQ(square.lines.size(), 2U);
    EXPECT_EQ(square.lines[0][0], data.corners[1]);
    // A triangle's third edge has no length; the fourth closes it.
    data.corners[3] = data.corners[2];
    data.invisibleEdges = 0b1000;
    face.setFileData(data);
    Recorder triangle;
    acgiDrawEntity(face, triangle);
    EXPECT_EQ(triangle.lines.size(), 2U);
}

TEST(EntityDrawingTest, WidthsTaperAndSolidsCross) {
    AcDbPolyline polyline;
    polyline.addVertexAt(0, {0, 0}, 0, 2, 4);
    polyline.addVertexAt(1, {10, 0});
    AcDbSolid solid;
    AcDbFilledArea::Data data;
    data.corners[1] = {1, 0};
    data.corners[2] = {0, 1};
    data.corners[3] = {1, 1};
    solid.setFileData(data);
    Recorder recorder;
    acgiDrawEntity(polyline, recorder);
    acgiDrawEntity(solid, recorder);
    const std::vector<std::vector<AcGePoint3d>> expected = {{{0, 1, 0}, {10, 2, 0}, {10, -2, 0}, {0, -1, 0}},
                                                            {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}};
    EXPECT_EQ(recorder.areas, expected);
    EXPECT_TRUE(recorder.lines.empty());
}

TEST(EntityDrawingTest, ParagraphsHangOnTheirAttachment) {
    AcDbMText paragraph;
    paragraph.setTextHeight(3);
    paragraph.setWidth(9);
    paragraph.setContents("one two\\Pabc defghijk");
    for (const auto& [attachment, first] : {std::pair{1, -3.0}, {5, 6.0}, {9, 15.0}}) {
        paragraph.setAttachment(attachment);
        Recorder recorder;
        acgiDrawEntity(paragraph, recorder);
        ASSERT_EQ(recorder.texts.size(), 4U);
        EXPECT_EQ(recorder.texts[3].text, "defghijk");
        EXPECT_NEAR(recorder.texts[0].position.y, first, 1e-9);
        EXPECT_NEAR(recorder.texts[3].position.y, first - 15, 1e-9);
    }
}

TEST(EntityDrawingTest, LinesOfParagraphsHoldRunsOfAnySize) {
    AcDbMText paragraph;
    paragraph.setTextHeight(2);
    paragraph.setWidth(12);
    paragraph.setAttachment(3); // at the right
    paragraph.setContents("ab {\\H4;c}d\\S1/2; efghi\\P\\Pend");
    Recorder recorder;
    acgiDrawEntity(paragraph, recorder);
    std::vector<std::string> letters;
    for (const AcGiText& text : recorder.texts)
        letters.push_back(text.text);
    EXPECT_EQ(letters, (std::vector<std::string>{"ab ", "c", "d", "1", "2", "efghi", "end"}));
    // 3 + 2 + 1 wide, and half letters of 1.4 high.
    EXPECT_NEAR(recorder.texts[0].position.x, -6.7, 1e-9);
    EXPECT_NEAR(recorder.texts[1].position.x, -3.7, 1e-9);
    EXPECT_NEAR(recorder.texts[0].position.y, -4, 1e-9) << "as low as the highest letters want";
    EXPECT_EQ(recorder.texts[1].height, 4);
    EXPECT_NEAR(recorder.texts[3].height, 1.4, 1e-9);
    EXPECT_GT(recorder.texts[3].position.y, recorder.texts[4].position.y + 1.4);
    ASSERT_EQ(recorder.lines.size(), 1U) << "the bar";
    EXPECT_NEAR(recorder.texts[5].position.y, -4 - 10.0 / 3, 1e-9);
    EXPECT_NEAR(recorder.texts[6].position.y, -4 - 10, 1e-9) << "an empty line is one of the text's own height";
}

TEST(EntityDrawingTest, TheInvisibleAsksForNothing) {
    AcDbLine line({0, 0, 0}, {1, 0, 0});
    line.setVisibility(AcDb::kInvisible);
    Recorder recorder;
    EXPECT_TRUE(acgiDrawEntity(line, recorder));
    EXPECT_TRUE(recorder.lines.empty());
}

TEST(EntityDrawingTest, SolidsHaveEdgesIsolinesAndASurface) {
    AcDbModelerGeometry::Data data;
    data.empty = false;
    data.text = vndk::test::coneText(0);
    AcDb3dSolid solid;
    solid.setFileData(data);
    Recorder recorder;
    EXPECT_TRUE(acgiDrawEntity(solid, recorder));
    ASSERT_EQ(recorder.arcs.size(), 1U);
    EXPECT_EQ(recorder.lines.size(), 4U);
    for (const auto& line : recorder.lines)
        EXPECT_TRUE(line.back().isEqualTo({0, 0, 3}) || line.front().isEqualTo({0, 0, 3}));
    EXPECT_GT(recorder.triangles, 60U);
}

TEST(EntityDrawingTest, AnImageShowsTheFrameOfWhatIsClipped) {
    AcDbRasterImage image;
    AcDbRasterImage::Data data;
    data.origin = {10, 20, 0};
    data.u = {2, 0, 0};
    data.v = {0, 2, 0};
    data.size = {4, 3};
    image.setFileData(data);
    Recorder recorder;
    EXPECT_TRUE(acgiDrawEntity(image, recorder));
    data.clipping = true;
    data.clip = {{0.5, 0.5}, {1.5, 1.5}};
    image.setFileData(data);
    EXPECT_TRUE(acgiDrawEntity(image, recorder));
    ASSERT_EQ(recorder.lines.size(), 2U);
    EXPECT_TRUE(recorder.lines[0][0].isEqualTo({10, 26, 0})) << "the first pixel is at the top";
    EXPECT_TRUE(recorder.lines[0][2].isEqualTo({18, 20, 0}));
    EXPECT_TRUE(recorder.lines[1][0].isEqualTo({12, 24, 0}));
    EXPECT_TRUE(recorder.lines[1][2].isEqualTo({14, 22, 0}));

    const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring({0, 0, 0}, AcGeVector3d::kXAxis);
    ASSERT_EQ(image.transformBy(mirror), Acad::eOk);
    EXPECT_TRUE(image.frame()[2].isEqualTo({-14, 22, 0}));
}
