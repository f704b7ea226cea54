// Solid things in the preview, turned by the mouse: shaded, and what lies behind is hidden.
#include "db/polylines.h"
#include "db/solids.h"
#include "module/previews/gs_preview_fixture.h"
#include "support/drawings.h"

#include <map>
#include <set>

namespace {

constexpr short kRed = 1, kYellow = 2, kGreen = 3, kCyan = 4, kBlue = 5, kMagenta = 6;
constexpr int kQuarter = 40; // pixels from the ball's middle to its outline

class SolidPreviewTest : public PreviewTest {
protected:
    SolidPreviewTest() { make(); }

    AcDbObjectId block(const char* name) {
        addBlock(name, {});
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId());
        AcDbObjectId id;
        EXPECT_EQ(table->getAt(name, id), Acad::eOk);
        return id;
    }
    static void append(AcDbObjectId block, AcDbEntity* entity, short color,
                       const std::vector<AcDbEntity*>& vertices = {}) {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
        AcDbObjectId id;
        ASSERT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
        entity->setColorIndex(color);
        for (AcDbEntity* vertex : vertices) {
            ASSERT_EQ(static_cast<AcDbVertexOwner*>(entity)->appendVertex(vertex), Acad::eOk);
            vertex->close();
        }
        entity->close();
    }
    static void appendFace(AcDbObjectId block, const std::array<AcGePoint3d, 4>& corners, short color) {
        auto* const face = new AcDbFace;
        for (unsigned short i = 0; i < 4; ++i)
            face->setVertexAt(i, corners[i]);
        append(block, face, color);
    }

    void showBlock(const char* name) {
        ctrl->LoadBlock(name);
        ctrl->mMode = CGsPreviewCtrl::kOrbit;
        look();
    }
    /// The gadget isn't in the pictures.
    void look() {
        const int mode = std::exchange(ctrl->mMode, static_cast<int>(CGsPreviewCtrl::kPan));
        ctrl->Invalidate();
        settle();
        shades.clear();
        rows = 0;
        for (int y = 4; y < kHeight - 4; ++y) {
            const int dark = shades[0];
            for (int x = 4; x < kWidth - 4; ++x)
                ++shades[pixel(at(x, y).x, at(x, y).y)];
            rows += shades[0] - dark < kWidth - 8 ? 1 : 0;
        }
        shades.erase(0);
        ctrl->mMode = mode;
    }
    /// Turns by the ball: a quarter turn for kQuarter pixels from its middle.
    void turn(int dx, int dy) {
        screen.advance(2000); // or the press would be the second of a double click
        hold(kWidth / 2, kHeight / 2);
        move(kWidth / 2 + dx, kHeight / 2 + dy);
        release();
        look();
    }
    /// Colours in the picture, whatever their shade, and their brightest shade. A side seen edge-on is a line, which
    /// doesn't count.
    std::map<short, unsigned> colors() const {
        std::map<short, unsigned> found;
        std::map<short, int> counts;
        for (const auto& [shade, count] : shades) {
            const unsigned red = shade >> 16 & 0xFF;
            const unsigned green = shade >> 8 & 0xFF;
            const unsigned blue = shade & 0xFF;
            const short byChannels[] = {0, kBlue, kGreen, kCyan, kRed, kMagenta, kYellow, 7};
            const short color = byChannels[(red != 0) << 2 | (green != 0) << 1 | (blue != 0)];
            counts[color] += count;
            found[color] = std::max({found[color], red, green, blue});
        }
        for (const auto& [color, count] : counts)
            if (count < 200)
                found.erase(color);
        return found;
    }
    std::set<short> seen() const {
        std::set<short> names;
        for (const auto& [color, brightness] : colors())
            names.insert(color);
        return names;
    }

    std::map<std::uint32_t, int> shades; ///< of the last picture, without the ground
    int rows = 0;                        ///< in which there is something
};

/// A die: each side in a colour of its own.
class DiePreviewTest : public SolidPreviewTest {
protected:
    DiePreviewTest() {
        const AcDbObjectId die = block("DIE");
        const auto corner = [](int x, int y, int z) { return AcGePoint3d(20.0 * x, 20.0 * y, 20.0 * z); };
        appendFace(die, {corner(0, 0, 1), corner(1, 0, 1), corner(1, 1, 1), corner(0, 1, 1)}, kRed);
        appendFace(die, {corner(0, 0, 0), corner(1, 0, 0), corner(1, 1, 0), corner(0, 1, 0)}, kYellow);
        appendFace(die, {corner(0, 0, 0), corner(1, 0, 0), corner(1, 0, 1), corner(0, 0, 1)}, kGreen);
        appendFace(die, {corner(0, 1, 0), corner(1, 1, 0), corner(1, 1, 1), corner(0, 1, 1)}, kCyan);
        appendFace(die, {corner(0, 0, 0), corner(0, 1, 0), corner(0, 1, 1), corner(0, 0, 1)}, kBlue);
        appendFace(die, {corner(1, 0, 0), corner(1, 1, 0), corner(1, 1, 1), corner(1, 0, 1)}, kMagenta);
    }
};

TEST_F(DiePreviewTest, TurnWithTheMouseAndHideTheSidesBehind) {
    showBlock("DIE");
    EXPECT_EQ(seen(), std::set<short>{kRed});
    // Its top pulled downwards, the far side comes to light; upwards, the near one.
    turn(0, kQuarter / 2);
    EXPECT_EQ(seen(), (std::set<short>{kRed, kCyan}));
    const std::map<short, unsigned> shown = colors();
    EXPECT_NE(shown.at(kRed), shown.at(kCyan)) << "light falls onto them under different angles";
    turn(0, -kQuarter / 2);
    EXPECT_EQ(seen(), std::set<short>{kRed});
    turn(0, -kQuarter / 2);
    EXPECT_EQ(seen(), (std::set<short>{kRed, kGreen}));
    turn(0, kQuarter / 2);
    turn(kQuarter / 2, 0);
    EXPECT_EQ(seen(), (std::set<short>{kRed, kBlue}));
}

TEST_F(DiePreviewTest, NeverShowOppositeSidesOnAnyWayAround) {
    showBlock("DIE");
    const POINT ways[] = {{13, 5}, {21, -9}, {-7, 30}, {30, 12}, {0, 35}, {-25, 25}, {33, 0}, {11, -31}};
    std::set<short> ever;
    for (int round = 0; round < 3; ++round)
        for (const auto& [dx, dy] : ways) {
            turn(dx, dy);
            const std::set<short> now = seen();
            ASSERT_FALSE(now.empty());
            EXPECT_LE(now.size(), 3U);
            for (const auto& [one, other] :
                 {std::pair(kRed, kYellow), std::pair(kGreen, kCyan), std::pair(kBlue, kMagenta)})
                EXPECT_FALSE(now.contains(one) && now.contains(other)) << one << ' ' << other;
            ever.insert(now.begin(), now.end());
        }
    EXPECT_EQ(ever.size(), 6U) << "the way leads around the whole die";
}

TEST_F(SolidPreviewTest, MeshesHideWhatLiesBehindThem) {
    const AcDbObjectId stack = block("STACK");
    auto* const roof = new AcDbPolygonMesh;
    roof->setFileData({.flag = 0, .mSize = 3, .nSize = 2});
    std::vector<AcDbEntity*> corners;
    for (const double x : {0.0, 20.0, 40.0})
        for (const double y : {0.0, 20.0})
            corners.push_back(new AcDbPolygonMeshVertex({x, y, x == 20 ? 15.0 : 10.0}));
    append(stack, roof, kRed, corners);
    auto* const sides = new AcDbFaceRecord;
    sides->setFileData({{1, 2, 3, 4}});
    append(stack, new AcDbPolyFaceMesh, kGreen,
           {new AcDbPolyFaceMeshVertex({0, 0, 0}), new AcDbPolyFaceMeshVertex({40, 0, 0}),
            new AcDbPolyFaceMeshVertex({40, 20, 0}), new AcDbPolyFaceMeshVertex({0, 20, 0}), sides});
    showBlock("STACK");
    EXPECT_EQ(seen(), std::set<short>{kRed});
    // A ridge: seen from its end the two slopes are of different shades.
    turn(kQuarter / 3, 0);
    int large = 0;
    for (const auto& [shade, count] : shades)
        large += count > 300 ? 1 : 0;
    EXPECT_GE(large, 2);
    turn(-kQuarter / 3, 0);
    turn(0, kQuarter);
    turn(0, kQuarter);
    EXPECT_EQ(seen(), std::set<short>{kGreen}) << "from below";
}

TEST_F(SolidPreviewTest, RealDrawingsTurnAsSolidThingsDo) {
    SKIP_WITHOUT_DRAWINGS();
    ASSERT_TRUE(vndk::win32::DriveMap::current().map('R', std::getenv("VONDRAKE_DRAWINGS")).ok());
    const auto load = [this](const char* path) {
        ctrl->LoadDrawing(path);
        EXPECT_TRUE(alerts.empty());
        ctrl->mMode = CGsPreviewCtrl::kOrbit;
        look();
    };
    const auto litPixels = [this] {
        int lit = 0;
        for (const auto& [shade, count] : shades)
            lit += count;
        return lit;
    };
    // A cone from above its top: light goes around it. From below its base, all of one shade, hides the rest.
    load("R:\\r2000\\Cone.dwg");
    EXPECT_GT(litPixels(), 5000);
    EXPECT_GT(shades.size(), 20U);
    turn(0, kQuarter);
    EXPECT_GT(shades.size(), 20U) << "from the side";
    turn(0, kQuarter);
    const auto most = std::max_element(shades.begin(), shades.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    EXPECT_GT(most->second, litPixels() * 9 / 10) << "from below";
    // A spiral is a curve in space: looked at from its side it is nearly flat.
    load("R:\\r2000\\Helix.dwg");
    const int fromAbove = rows;
    EXPECT_GT(fromAbove, 20);
    turn(0, kQuarter);
    EXPECT_GT(rows, 0);
    EXPECT_LT(rows, fromAbove / 3);
}

} // namespace
