// Solids: what is enclosed by the triangles of their faces, their lines, and transforms.
#include "acis/body.h"
#include "acis/face_mesh.h"
#include "acis/sat_text.h"
#include "db/curves.h"
#include "db/modeler_geometry.h"
#include "drawing/db/matrix_cases.h"
#include "drawing/db/solid_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace vndk::test {

namespace {

/// What the triangles enclose: negative if they look inwards.
double volumeOf(const std::string& text) {
    double sixfold = 0;
    for (const acis::Body& body : acis::Body::read(text)) {
        acis::Mesh mesh;
        for (const acis::Face& face : body.faces)
            if (face.surface)
                acis::FaceDomain(face).addTo(mesh);
        const double side = body.transform.det() < 0 ? -1 : 1;
        for (size_t i = 0; i + 2 < mesh.triangles.size(); i += 3) {
            const auto corner = [&](size_t k) {
                return (body.transform * mesh.points[mesh.triangles[i + k]]).asVector();
            };
            sixfold += corner(0).dotProduct(corner(1).crossProduct(corner(2))) * side;
        }
        for (const AcGeVector3d& normal : mesh.normals)
            EXPECT_NEAR(normal.length(), 1, 1e-9);
    }
    return sixfold / 6;
}

const std::string kBall = SolidText({{"sphere-surface 1 2 3 2 1 0 0 0 0 1 forward_v I I I I", false, {}}}, {}).text();
const std::string kRing = SolidText({{"torus-surface 0 0 0 0 0 1 5 1 1 0 0 forward_v I I I I", false, {}}}, {}).text();
/// The upper half of a ball, with a floor.
const std::string kDome = SolidText({{"sphere-surface 0 0 0 2 1 0 0 0 0 1 forward_v I I I I", false, {{{0, false}}}},
                                     {"plane-surface 0 0 0 0 0 -1 1 0 0 forward_v I I I I", false, {{{0, true}}}}},
                                    {{"ellipse-curve 0 0 0 0 0 1 2 0 0 1 I I", {2, 0, 0}, {2, 0, 0}}})
                              .text();
/// A quarter of a ring, closed at both ends.
const std::string kElbow =
    SolidText({{"torus-surface 0 0 0 0 0 1 5 1 1 0 0 forward_v I I I I", false, {{{0, false}}, {{1, true}}}},
               {"plane-surface 5 0 0 0 -1 0 1 0 0 forward_v I I I I", false, {{{0, true}}}},
               {"plane-surface 0 5 0 -1 0 0 0 1 0 forward_v I I I I", false, {{{1, false}}}}},
              {{"ellipse-curve 5 0 0 0 1 0 1 0 0 1 I I", {6, 0, 0}, {6, 0, 0}},
               {"ellipse-curve 0 5 0 -1 0 0 0 1 0 1 I I", {0, 6, 0}, {0, 6, 0}}})
        .text();

std::shared_ptr<AcDb3dSolid> solidOf(const std::string& text) {
    AcDbModelerGeometry::Data data;
    data.empty = false;
    data.text = text;
    auto solid = std::make_shared<AcDb3dSolid>();
    solid->setFileData(data);
    return solid;
}

} // namespace

TEST(Solids, TheirTrianglesEncloseThem) {
    constexpr double kPi = kAcGePi;
    EXPECT_NEAR(volumeOf(boxText(2, 3, 4)), 24, 1e-9);
    EXPECT_NEAR(volumeOf(boxText(4, 4, 1, true)), 15, 1e-9);
    EXPECT_NEAR(volumeOf(coneText(2)), kPi * 12, 0.02 * kPi * 12);
    EXPECT_NEAR(volumeOf(coneText(1)), kPi * 7, 0.02 * kPi * 7);
    EXPECT_NEAR(volumeOf(coneText(0)), kPi * 4, 0.02 * kPi * 4);
    EXPECT_NEAR(volumeOf(kBall), kPi * 32 / 3, 0.03 * kPi * 32 / 3);
    EXPECT_NEAR(volumeOf(kDome), kPi * 16 / 3, 0.03 * kPi * 16 / 3);
    EXPECT_NEAR(volumeOf(kRing), 2 * kPi * kPi * 5, 0.03 * 2 * kPi * kPi * 5);
    EXPECT_NEAR(volumeOf(kElbow), kPi * kPi * 2.5, 0.03 * kPi * kPi * 2.5);
}

TEST(Solids, FollowTransformsOneAfterAnother) {
    for (const MatrixCase& c : evenMatrices()) {
        const auto solid = solidOf(coneText(1));
        const double volume = volumeOf(solid->data().text);
        const AcGeMatrix3d second = AcGeMatrix3d::rotation(0.3, kTilted, {1, 0, 0});
        ASSERT_EQ(solid->transformBy(c.matrix), Acad::eOk) << c.name;
        ASSERT_EQ(solid->transformBy(second), Acad::eOk) << c.name;
        EXPECT_NEAR(volumeOf(solid->data().text), volume * std::pow(c.matrix.scale(), 3), 1e-6) << c.name;
        const std::vector<acis::Body> bodies = acis::Body::read(solid->data().text);
        ASSERT_EQ(bodies.size(), 1U);
        EXPECT_TRUE(bodies[0].transform.isEqualTo(second * c.matrix, {1e-9, 1e-9})) << c.name;
        EXPECT_EQ(coneText(1).substr(0, 7), "400 25 ");
        EXPECT_EQ(solid->data().text.substr(0, 7), "400 26 ") << "one record more, and no more";
        EXPECT_EQ(acis::SatText::parse(solid->data().text)->records.size(), 26U);
    }
    EXPECT_EQ(solidOf(coneText(1))->transformBy(kUneven), Acad::eCannotScaleNonUniformly);
    const auto unknown = solidOf("no text of a solid");
    EXPECT_EQ(unknown->transformBy(AcGeMatrix3d::translation({1, 0, 0})), Acad::eNotApplicable);
    EXPECT_EQ(unknown->data().text, "no text of a solid");
}

TEST(Solids, AreAsLargeAsTheirFaces) {
    AcDbExtents box;
    ASSERT_EQ(solidOf(kBall)->getGeomExtents(box), Acad::eOk);
    EXPECT_NEAR(box.maxPoint().z, 5, 1e-9);
    EXPECT_NEAR(box.minPoint().x, -1, 0.02);
    const auto moved = solidOf(boxText(2, 3, 4));
    ASSERT_EQ(moved->transformBy(AcGeMatrix3d::translation({10, 0, 0})), Acad::eOk);
    ASSERT_EQ(moved->getGeomExtents(box), Acad::eOk);
    EXPECT_TRUE(box.minPoint().isEqualTo({10, 0, 0}));
    EXPECT_TRUE(box.maxPoint().isEqualTo({12, 3, 4}));
    EXPECT_EQ(solidOf("")->getGeomExtents(box), Acad::eNullExtents);
}

TEST(Solids, IsolinesLieOnRoundFaces) {
    for (const auto& [text, lines] :
         {std::pair(coneText(0), 4U), std::pair(kBall, 5U), std::pair(kRing, 8U), std::pair(boxText(1, 1, 1), 0U)}) {
        std::vector<std::vector<AcGePoint3d>> found;
        for (const acis::Body& body : acis::Body::read(text))
            for (const acis::Face& face : body.faces)
                acis::FaceDomain(face).addIsolines(4, found);
        EXPECT_EQ(found.size(), lines);
        for (const std::vector<AcGePoint3d>& line : found)
            EXPECT_GE(line.size(), 2U);
    }
}

TEST(Solids, ARegionComesApartIntoItsEdges) {
    const std::string text =
        SolidText(
            {{"plane-surface 0 0 0 0 0 1 1 0 0 forward_v I I I I", false, {{{0, false}, {1, false}}, {{2, true}}}}},
            {{"straight-curve -3 0 0 1 0 0 I I", {-3, 0, 0}, {3, 0, 0}},
             {"ellipse-curve 0 0 0 0 0 1 3 0 0 1 I I", {3, 0, 0}, {-3, 0, 0}},
             {"ellipse-curve 0 1 0 0 0 1 1 0 0 0.5 I I", {1, 1, 0}, {1, 1, 0}}})
            .text();
    AcDbModelerGeometry::Data data;
    data.empty = false;
    data.text = text;
    AcDbRegion region;
    region.setFileData(data);
    ASSERT_EQ(region.transformBy(AcGeMatrix3d::mirroring({0, 0, 0}, AcGeVector3d::kYAxis)), Acad::eOk);
    std::vector<AcDbEntity*> raw;
    ASSERT_EQ(region.explode(raw), Acad::eOk);
    const std::vector<std::unique_ptr<AcDbEntity>> parts(raw.begin(), raw.end());
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_TRUE(AcDbLine::cast(parts[0].get()));
    const auto* const arc = AcDbArc::cast(parts[1].get());
    ASSERT_NE(arc, nullptr);
    AcDbExtents box;
    ASSERT_EQ(arc->getGeomExtents(box), Acad::eOk);
    EXPECT_TRUE(box.minPoint().isEqualTo({-3, -3, 0}, {1e-9, 1e-9}));
    EXPECT_TRUE(box.maxPoint().isEqualTo({3, 0, 0}, {1e-9, 1e-9}));
    const auto* const ellipse = AcDbEllipse::cast(parts[2].get());
    ASSERT_NE(ellipse, nullptr);
    EXPECT_TRUE(ellipse->center().isEqualTo({0, -1, 0}));
}

TEST(Solids, FreeCurvesArePassedThroughTheirSplines) {
    const std::vector<SolidEdge> edges = {
        {"intcurve-curve forward { exactcur nubs 2 open 2 0 2 1 2 0 0 0 1 2 0 2 0 0 0 } I I", {0, 0, 0}, {2, 0, 0}}};
    const auto bodies = acis::Body::read(SolidText({}, edges).text());
    ASSERT_EQ(bodies.size(), 1U);
    ASSERT_EQ(bodies[0].edges.size(), 1U);
    const std::vector<AcGePoint3d> points = bodies[0].edges[0].flattened();
    EXPECT_TRUE(points.front().isEqualTo({0, 0, 0}));
    EXPECT_TRUE(points[points.size() / 2].isEqualTo({1, 1, 0}));
    EXPECT_TRUE(points.back().isEqualTo({2, 0, 0}));
}

/// Both hold the same faces and edges.
TEST(Solids, TwoBodiesOfOneTextHaveEdgesOfTheirOwn) {
    const std::string text = coneText(1) + "body $-1 $1 $-1 $-1 #\n";
    const auto bodies = acis::Body::read(text);
    ASSERT_EQ(bodies.size(), 2U);
    EXPECT_EQ(bodies[1].edges.size(), bodies[0].edges.size());
    EXPECT_EQ(bodies[1].faces.size(), 3U);
    EXPECT_EQ(acis::Body::read(*acis::transformed(text, AcGeMatrix3d::scaling(2))).size(), 2U);
}

/// Tokens changed, doubled, left out: nothing hangs or is read that isn't there.
TEST(Solids, BodiesThatShareATransformMoveTogether) {
    const std::string text =
        "400 3 1 0\n5 Maker 3 One 4 Date\n1 1e-7 1e-10\nbody $-1 $-1 $-1 $2 #\n"
        "body $-1 $-1 $-1 $2 #\ntransform $-1 1 0 0 0 1 0 0 0 1 5 0 0 1 no_rotate no_reflect no_shear #\n";
    const auto moved = acis::transformed(text, AcGeMatrix3d::translation({1, 2, 3}));
    ASSERT_TRUE(moved);
    const auto sat = acis::SatText::parse(*moved);
    ASSERT_TRUE(sat && sat->records.size() == 3);
    for (const size_t body : {0, 1})
        EXPECT_TRUE(sat->transformOf(sat->records[body]).isEqualTo(AcGeMatrix3d::translation({6, 2, 3})));
}

TEST(Solids, DamagedTextsDoNoHarm) {
    std::mt19937 random(7);
    for (const std::string& whole : {boxText(4, 4, 1, true), coneText(1), kDome, kElbow})
        for (int i = 0; i < 60; ++i) {
            std::string text = whole;
            for (unsigned changes = 1 + random() % 4; changes > 0; --changes) {
                const size_t place = random() % text.size();
                switch (random() % 4) {
                case 0:
                    text[place] = "0123456789$-# IF.e"[random() % 18];
                    break;
                case 1:
                    text.erase(place, 1 + random() % 8);
                    break;
                case 2:
                    text.insert(place, text.substr(random() % text.size(), 12));
                    break;
                default:
                    text.resize(place + 1);
                }
            }
            const auto solid = solidOf(text);
            AcDbExtents box;
            solid->getGeomExtents(box);
            if (solid->transformBy(AcGeMatrix3d::translation({1, 2, 3})) == Acad::eOk) {
                EXPECT_TRUE(acis::SatText::parse(solid->data().text)) << text;
            }
        }
}

} // namespace vndk::test
