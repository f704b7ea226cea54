// Hatches and multilines: what of a pattern lies within contours, transforms, and their pieces.
#include "database_fixture.h"
#include "db/hatch.h"
#include "db/hatch_contours.h"
#include "db/mline.h"
#include "db/mline_picture.h"
#include "db/opaque.h"
#include "db/point.h"
#include "drawing/db/matrix_cases.h"
#include "dwg/bit_writer.h"

#include <functional>
#include <memory>
#include <numeric>

namespace vndk::test {

namespace {

using Hatch = AcDbHatch;

Hatch::Loop square(double low, double high) {
    Hatch::Loop loop;
    loop.flags = Hatch::kPolyline;
    for (const auto& [x, y] : {std::pair(low, low), std::pair(high, low), std::pair(high, high), std::pair(low, high)})
        loop.vertices.push_back({{x, y}, 0});
    return loop;
}

/// Horizontal lines at odd halves, one unit apart.
Hatch::Data lined(std::vector<Hatch::Loop> loops, std::vector<double> dashes = {}) {
    Hatch::Data data;
    data.loops = std::move(loops);
    data.lines = {{0, {0, 0.5}, {0, 1}, std::move(dashes)}};
    return data;
}

double lengthOf(const db::PatternDashes& pattern) {
    return std::accumulate(pattern.dashes.begin(), pattern.dashes.end(), 0.0,
                           [](double sum, const db::Dash& dash) { return sum + dash.start.distanceTo(dash.end); });
}

constexpr size_t kPlenty = 100'000;

/// Every kind of edge, the arcs clockwise and the splines with weights.
Hatch::Data ofAllEdges() {
    Hatch::Loop loop;
    loop.edges = {Hatch::LineEdge{{0, 0}, {10, 0}}, Hatch::ArcEdge{{10, 5}, 5, -kAcGePi / 2, kAcGePi / 2, true},
                  Hatch::EllipseEdge{{5, 10}, {5, 0}, 0.5, 0, kAcGePi, true},
                  Hatch::ArcEdge{{0, 7}, 3, -kAcGePi / 2, kAcGePi / 2, false},
                  Hatch::SplineEdge{2, true, false, {0, 0, 0, 1, 1, 1}, {{0, 4}, {-2, 2}, {0, 0}}, {1, 2, 1}}};
    Hatch::Data data = lined({loop, square(4.1, 6.2)}, {1, -0.5});
    data.lines.push_back({1, {0.3, 0}, {0.2, 0.9}, {0.5, -0.25, 0, -0.25}});
    data.elevation = 2;
    data.normal = kTilted;
    data.seeds = {{1, 1}};
    return data;
}

/// Where the points of a hatch come out in the world: its contours, and the middles of its dashes.
std::vector<AcGePoint3d> placesOf(const Hatch::Data& data) {
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data.normal);
    std::vector<AcGePoint3d> places;
    const auto add = [&](const AcGePoint2d& p) { places.push_back(toWorld * AcGePoint3d(p.x, p.y, data.elevation)); };
    for (const Hatch::Loop& loop : data.loops)
        for (const AcGePoint2d& p : db::contourOf(loop))
            add(p);
    for (const db::Dash& dash : db::patternDashes(data, kPlenty).dashes)
        add({(dash.start.x + dash.end.x) / 2, (dash.start.y + dash.end.y) / 2});
    return places;
}

/// Each point of one list has one of the other near it. Equal neighbours may have become one.
void expectSamePlaces(const std::vector<AcGePoint3d>& a, const std::vector<AcGePoint3d>& b, const char* what) {
    for (const AcGePoint3d& p : a)
        EXPECT_TRUE(std::any_of(b.begin(), b.end(), [&](const AcGePoint3d& q) { return p.distanceTo(q) < 1e-6; }))
            << what << ": " << p.x << ", " << p.y << ", " << p.z;
}

} // namespace

TEST(Hatch, ItsStyleSaysWhatLiesBetweenContours) {
    const std::vector<Hatch::Loop> loops = {square(0, 10), square(2, 8), square(4, 6)};
    for (const auto& [style, length] :
         {std::pair(Hatch::kNormal, 68.0), std::pair(Hatch::kOuter, 64.0), std::pair(Hatch::kIgnore, 100.0)}) {
        Hatch::Data data = lined(loops);
        data.style = style;
        EXPECT_NEAR(lengthOf(db::patternDashes(data, kPlenty)), length, 1e-9) << style;
        // Solid areas go by the same contours: those within run round the other way.
        double area = 0;
        for (const db::Contour& contour : db::filledContours(data))
            for (size_t i = 0; i < contour.size(); ++i) {
                const AcGePoint2d &a = contour[i], &b = contour[(i + 1) % contour.size()];
                area += (a.x * b.y - b.x * a.y) / 2;
            }
        EXPECT_NEAR(area, length, 1e-9) << style;
    }
}

TEST(Hatch, DashesGoOnFromTheirOriginAndAreCutAtContours) {
    Hatch::Data data = lined({square(0.25, 3)}, {1, -0.5, 0, -0.5});
    const db::PatternDashes pattern = db::patternDashes(data, kPlenty);
    ASSERT_TRUE(pattern.complete);
    ASSERT_EQ(pattern.dashes.size(), 9U) << "two dashes and a dot on each of three lines";
    EXPECT_NEAR(pattern.dashes[0].start.x, 0.25, 1e-9);
    EXPECT_NEAR(pattern.dashes[0].end.x, 1, 1e-9);
    EXPECT_EQ(pattern.dashes[1].start, pattern.dashes[1].end);
    EXPECT_NEAR(pattern.dashes[1].start.x, 1.5, 1e-9);
    EXPECT_NEAR(pattern.dashes[2].end.x, 3, 1e-9);
}

TEST(Hatch, APatternBeyondAllMeasureIsThinnedOut) {
    for (const double spacing : {1e-9, 1e-5, 1e-300}) {
        Hatch::Data data = lined({square(0, 1000)}, {spacing, -spacing});
        data.lines[0].offset = {0, spacing};
        const db::PatternDashes pattern = db::patternDashes(data, 5000);
        EXPECT_FALSE(pattern.complete && !pattern.dashes.empty());
        EXPECT_LE(pattern.dashes.size(), 5000U);
        Hatch hatch;
        hatch.setFileData(data);
        std::vector<AcDbEntity*> parts;
        EXPECT_EQ(hatch.explode(parts), Acad::eNotApplicable);
        EXPECT_TRUE(parts.empty());
    }
    Hatch::Data far = lined({square(1e15, 1e15 + 8)}, {1, -1});
    far.lines.push_back({0, {0, 0}, {1, 0}, {}}); // its lines lie on each other
    EXPECT_LE(db::patternDashes(far, kPlenty).dashes.size(), kPlenty);
}

TEST(Hatch, ContoursAndPatternFollowATransform) {
    for (const MatrixCase& c : evenMatrices()) {
        Hatch hatch;
        hatch.setFileData(ofAllEdges());
        std::vector<AcGePoint3d> expected = placesOf(hatch.data());
        ASSERT_GT(expected.size(), 200U);
        for (AcGePoint3d& p : expected)
            p = c.matrix * p;
        ASSERT_EQ(hatch.transformBy(c.matrix), Acad::eOk) << c.name;
        expectSamePlaces(expected, placesOf(hatch.data()), c.name);
        expectSamePlaces(placesOf(hatch.data()), expected, c.name);
        EXPECT_NEAR(hatch.patternScale(), c.matrix.scale(), 1e-9) << c.name;
    }
    Hatch hatch;
    hatch.setFileData(ofAllEdges());
    EXPECT_EQ(hatch.transformBy(kUneven), Acad::eCannotScaleNonUniformly);
}

TEST(Hatch, ComesApartIntoLinesAndPoints) {
    Hatch hatch;
    hatch.setFileData(lined({square(0.25, 3)}, {1, -0.5, 0, -0.5}));
    hatch.setColorIndex(3);
    std::vector<AcDbEntity*> raw;
    ASSERT_EQ(hatch.explode(raw), Acad::eOk);
    const std::vector<std::unique_ptr<AcDbEntity>> parts(raw.begin(), raw.end());
    ASSERT_EQ(parts.size(), 9U);
    EXPECT_TRUE(AcDbLine::cast(parts[0].get()));
    EXPECT_TRUE(AcDbPoint::cast(parts[1].get()));
    EXPECT_EQ(parts[1]->colorIndex(), 3);
    Hatch::Data solid = hatch.data();
    solid.solid = true;
    hatch.setFileData(solid);
    raw.clear();
    EXPECT_EQ(hatch.explode(raw), Acad::eNotApplicable);
}

namespace {

class MlineTest : public DatabaseTest {
protected:
    /// Two lines, one of them red and dashed by its place in the table, with all ends and joints.
    AcDbObjectId addStyle(unsigned flags) {
        dwg::BitWriter w;
        w.TV("WALL");
        w.TV("");
        w.BS(static_cast<uint16_t>(flags));
        w.BS(5);
        w.BD(kAcGePi / 2);
        w.BD(kAcGePi / 2);
        w.RC(2);
        for (const auto& [offset, color, linetype] : {std::tuple(0.5, 1, 0), std::tuple(-0.5, 256, 32767)}) {
            w.BD(offset);
            w.BS(static_cast<uint16_t>(color));
            w.BS(static_cast<uint16_t>(linetype));
        }
        AcDbOpaqueFields fields;
        fields.typeName = "MLINESTYLE";
        fields.fixedType = 73;
        fields.bitCount = static_cast<uint32_t>(w.position());
        fields.bits.assign(w.data().begin(), w.data().end());
        auto* const style = new AcDbOpaqueObject;
        style->setFields(std::move(fields));
        AcDbObjectId id;
        EXPECT_EQ(database.addAcDbObject(id, style, database.namedObjectsDictionaryId()), Acad::eOk);
        style->close();
        return id;
    }
    /// A corner of two legs; the second line of the first leg is broken off from 2 to 3.
    static AcDbMline::Data corner(AcDbObjectId style) {
        const double diagonal = std::sqrt(0.5);
        AcDbMline::Data data;
        data.lines = 2;
        data.style = style;
        data.vertices = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {{{0.5, 0}, {}}, {{-0.5, 0, 2, 3}, {}}}},
                         {{10, 0, 0}, {0, 1, 0}, {-diagonal, diagonal, 0}, {{{diagonal, 0}, {}}, {{-diagonal, 0}, {}}}},
                         {{10, 8, 0}, {0, 1, 0}, {-1, 0, 0}, {{{0.5, 0}, {}}, {{-0.5, 0}, {}}}}};
        return data;
    }
};

} // namespace

TEST_F(MlineTest, ItsLinesJointsAndEndsAreThoseOfItsStyle) {
    AcDbMline mline;
    mline.setFileData(corner(addStyle(0)));
    const db::MlinePicture plain = db::mlinePicture(mline);
    ASSERT_EQ(plain.strokes.size(), 5U);
    EXPECT_EQ(plain.strokes[0].color, 1);
    EXPECT_FALSE(plain.strokes[0].linetype.isNull());
    EXPECT_TRUE(plain.strokes[0].end.isEqualTo({9.5, 0.5, 0}));
    EXPECT_TRUE(plain.strokes[1].end.isEqualTo({2, -0.5, 0}));
    EXPECT_TRUE(plain.strokes[2].start.isEqualTo({3, -0.5, 0}));
    EXPECT_TRUE(plain.strokes[2].end.isEqualTo({10.5, -0.5, 0}));

    mline.setFileData(corner(addStyle(1 | 2 | 16 | 1024)));
    const db::MlinePicture rich = db::mlinePicture(mline);
    EXPECT_EQ(rich.strokes.size(), 8U) << "a joint, a straight end and a round one";
    EXPECT_EQ(rich.fills.size(), 2U);
    AcDbMline::Data open = corner(mline.style());
    open.flags |= AcDbMline::kNoStartCaps | AcDbMline::kNoEndCaps;
    mline.setFileData(open);
    EXPECT_EQ(db::mlinePicture(mline).strokes.size(), 6U);
    open.flags = AcDbMline::kHasVertices | AcDbMline::kClosed;
    mline.setFileData(open);
    EXPECT_EQ(db::mlinePicture(mline).strokes.size(), 7U + 3) << "a third leg, and joints at all vertices";
}

TEST_F(MlineTest, FollowsATransformAndComesApart) {
    const AcDbObjectId style = addStyle(2 | 16 | 1024);
    for (const MatrixCase& c : evenMatrices()) {
        AcDbMline mline;
        mline.setFileData(corner(style));
        const db::MlinePicture before = db::mlinePicture(mline);
        ASSERT_EQ(mline.transformBy(c.matrix), Acad::eOk) << c.name;
        const db::MlinePicture after = db::mlinePicture(mline);
        ASSERT_EQ(after.strokes.size(), before.strokes.size()) << c.name;
        // A mirror may turn lines across round.
        const auto middle = [](const db::MlinePicture::Stroke& s) { return s.start + (s.end - s.start) * 0.5; };
        for (size_t i = 0; i < after.strokes.size(); ++i)
            EXPECT_TRUE(middle(after.strokes[i]).isEqualTo(c.matrix * middle(before.strokes[i]), {1e-9, 1e-9}))
                << c.name << " " << i;
        EXPECT_NEAR(mline.scale(), c.matrix.scale() * (c.matrix.det() < 0 ? -1 : 1), 1e-9) << c.name;
        // The round end bulges away from its leg.
        std::vector<AcDbEntity*> raw;
        ASSERT_EQ(mline.explode(raw), Acad::eOk);
        const std::vector<std::unique_ptr<AcDbEntity>> parts(raw.begin(), raw.end());
        const auto* const arc = AcDbArc::cast(parts.back().get());
        ASSERT_NE(arc, nullptr) << c.name;
        const AcGeVector3d toMiddle(std::cos(arc->startAngle() + kAcGePi / 2),
                                    std::sin(arc->startAngle() + kAcGePi / 2), 0);
        const AcGePoint3d top = arc->center() + AcGeMatrix3d::planeToWorld(arc->normal()) * toMiddle * arc->radius();
        EXPECT_TRUE(top.isEqualTo(c.matrix * AcGePoint3d(10, 8.5, 0), {1e-9, 1e-9})) << c.name;
    }
}

} // namespace vndk::test
