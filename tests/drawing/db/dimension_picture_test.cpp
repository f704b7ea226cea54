// How dimensions are drawn, and what they measure.
#include "db/point.h"
#include "db/xdata.h"
#include "drawing/db/dimension_fixture.h"
#include "dwg/drawing_reader.h"
#include "support/drawings.h"

namespace {

TEST_F(DimensionTest, AlignedHasLinesHeadsAndText) {
    const Parts parts = pictureOf(appendAligned());
    const auto lines = partsOf<AcDbLine>(parts);
    ASSERT_EQ(lines.size(), 3U);
    expectEnds(*lines[0], {0, 0.5, 0}, {0, 5.5, 0});
    expectEnds(*lines[1], {20, 0.5, 0}, {20, 5.5, 0});
    expectEnds(*lines[2], {1, 5, 0}, {19, 5, 0});
    const auto heads = partsOf<AcDbSolid>(parts);
    ASSERT_EQ(heads.size(), 2U);
    EXPECT_LT(heads[0]->data().corners[2].distanceTo({0, 5}), kNear);
    EXPECT_LT(heads[1]->data().corners[2].distanceTo({20, 5}), kNear);
    const auto texts = partsOf<AcDbMText>(parts);
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_EQ(texts[0]->contentsValue(), "20");
    EXPECT_LT(texts[0]->location().distanceTo({10, 6, 0}), kNear) << "half its height and a gap above the line";
    EXPECT_EQ(partsOf<AcDbPoint>(parts).size(), 3U);
}

TEST_F(DimensionTest, LineIsBrokenForATextOnIt) {
    changeStyle([](auto& style) { style.dimtad = 0; });
    const Parts parts = pictureOf(appendAligned());
    const auto pieces = partsOf<AcDbLine>(parts);
    ASSERT_EQ(pieces.size(), 4U);
    const double half = 2 * 0.84 / 2 + 0.5;
    expectEnds(*pieces[2], {1, 5, 0}, {10 - half, 5, 0});
    expectEnds(*pieces[3], {10 + half, 5, 0}, {19, 5, 0});
}

TEST_F(DimensionTest, WhatDoesNotFitGoesOutside) {
    const AcDbObjectId id = append(new AcDbAlignedDimension({0, 0, 0}, {1, 0, 0}, {1, 5, 0}));
    const Parts parts = pictureOf(id);
    const auto heads = partsOf<AcDbSolid>(parts);
    ASSERT_EQ(heads.size(), 2U);
    EXPECT_LT(heads[0]->data().corners[0].x, 0) << "the first head points inwards";
    EXPECT_GT(heads[1]->data().corners[0].x, 1);
    const auto texts = partsOf<AcDbMText>(parts);
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_GT(texts[0]->location().x, 3) << "behind the second head and its stub";
}

TEST_F(DimensionTest, StyleLeavesOutAndReplacesParts) {
    changeStyle([](auto& style) {
        style.dimse1 = true;
        style.dimtsz = 0.5;
        style.dimclrd = 3;
        style.dimclrt = 4;
        style.dimscale = 2;
    });
    const Parts parts = pictureOf(appendAligned());
    const auto lines = partsOf<AcDbLine>(parts);
    ASSERT_EQ(lines.size(), 4U) << "one extension line, the dimension line and two strokes";
    expectEnds(*lines[0], {20, 1, 0}, {20, 6, 0});
    expectEnds(*lines[1], {0, 5, 0}, {20, 5, 0});
    expectEnds(*lines[2], {-1, 4, 0}, {1, 6, 0});
    EXPECT_EQ(lines[1]->colorIndex(), 3);
    EXPECT_TRUE(partsOf<AcDbSolid>(parts).empty());
    EXPECT_EQ(partsOf<AcDbMText>(parts).at(0)->colorIndex(), 4);
    EXPECT_EQ(partsOf<AcDbMText>(parts).at(0)->textHeight(), 2);
}

TEST_F(DimensionTest, HeadsCanBeBlocks) {
    const AcDbObjectId dot = addBlock("_DOT");
    append(new AcDbCircle({0, 0, 0}, {0, 0, 1}, 0.5), dot);
    changeStyle([&](auto& style) {
        style.dimsah = true;
        style.dimblk1 = dot;
    });
    const AcDbObjectId id = appendAligned();
    const Parts parts = pictureOf(id);
    const auto heads = partsOf<AcDbBlockReference>(parts);
    ASSERT_EQ(heads.size(), 1U);
    EXPECT_EQ(heads[0]->blockTableRecord(), dot);
    EXPECT_NEAR(heads[0]->rotation(), kAcGePi, kNear);
    EXPECT_EQ(partsOf<AcDbSolid>(parts).size(), 1U);
}

TEST_F(DimensionTest, TextsFollowTheStyle) {
    struct Case {
        const char* expected;
        const char* user;
        std::function<void(AcDbDimStyleTableRecord::Data&)> change;
    };
    const Case cases[] = {
        {"20.00", nullptr, [](auto& s) { s.dimzin = 0; }},
        {"20,00", nullptr, [](auto& s) { s.dimzin = 0, s.dimdsep = ','; }},
        {"508", nullptr, [](auto& s) { s.dimlfac = -25.4; }},
        {"21", nullptr, [](auto& s) { s.dimrnd = 7; }},
        {"20 mm", nullptr, [](auto& s) { s.dimpost = " mm"; }},
        {"= 20 mm", nullptr, [](auto& s) { s.dimpost = "= <> mm"; }},
        {"20\xB1"
         "0.1",
         nullptr, [](auto& s) { s.dimtol = true, s.dimtp = s.dimtm = 0.1, s.dimtzin = 8; }},
        {"20{\\H0.5x;\\S+0.2^ -0.1;}", nullptr,
         [](auto& s) { s.dimtol = true, s.dimtp = 0.2, s.dimtm = 0.1, s.dimtfac = 0.5, s.dimtzin = 8; }},
        {"{\\H1x;\\S20.2^ 19.9;}", nullptr, [](auto& s) { s.dimlim = true, s.dimtp = 0.2, s.dimtm = 0.1; }},
        {"20 [508]", nullptr, [](auto& s) { s.dimalt = true, s.dimaltz = 8; }},
        {"1'-8\"", nullptr, [](auto& s) { s.dimlunit = 4; }},
        {"about 20!", "about <>!", [](auto&) {}},
        {"wide", "wide", [](auto&) {}},
        {"no text", " ", [](auto&) {}},
    };
    for (const Case& c : cases) {
        changeStyle([&](auto& style) {
            style = plainStyle();
            c.change(style);
        });
        EXPECT_EQ(textOf(pictureOf(appendAligned(c.user))), c.expected);
    }
}

TEST_F(DimensionTest, ExtendedDataHoldForOneDimension) {
    const AcDbObjectId id = appendAligned();
    {
        const AcDbObjectPointer<AcDbDimension> dimension(id, AcDb::kForWrite);
        AcDbXDataGroup& group = dimension->packedXDataForWrite()->groups.emplace_back();
        group.application = database.registerApplication("ACAD");
        AcDbXDataWriter writer(group.items);
        writer.text("DSTYLE");
        writer.brace(true);
        writer.int16(144);
        writer.real(40, 2);
        writer.int16(271);
        writer.int16(0);
        writer.brace(false);
        EXPECT_EQ(dimension->shownText(), "40");
    }
    EXPECT_EQ(AcDbObjectPointer<AcDbDimension>(appendAligned())->shownText(), "20");
}

TEST_F(DimensionTest, KindsMeasureAndDraw) {
    auto* const rotated = new AcDbRotatedDimension(kAcGePi / 2, {0, 0, 0}, {3, 8, 0}, {10, 0, 0});
    EXPECT_EQ(textOf(pictureOf(append(rotated))), "8");

    auto* const corner = new AcDb3PointAngularDimension;
    corner->setXLine1Point({10, 0, 0});
    corner->setXLine2Point({0, 10, 0});
    corner->setArcPoint({20, 20, 0});
    Parts parts = pictureOf(append(corner));
    EXPECT_EQ(textOf(parts), "90\xB0");
    ASSERT_EQ(partsOf<AcDbArc>(parts).size(), 1U);
    EXPECT_NEAR(partsOf<AcDbArc>(parts)[0]->radius(), std::sqrt(800.0), kNear);
    ASSERT_EQ(partsOf<AcDbLine>(parts).size(), 2U) << "from the points out to the arc";
    expectEnds(*partsOf<AcDbLine>(parts)[0], {10.5, 0, 0}, {std::sqrt(800.0) + 0.5, 0, 0});

    auto* const outer = new AcDb3PointAngularDimension;
    outer->setXLine1Point({10, 0, 0});
    outer->setXLine2Point({0, 10, 0});
    outer->setArcPoint({-20, -20, 0});
    EXPECT_EQ(textOf(pictureOf(append(outer))), "270\xB0") << "the arc point is in the other angle";

    // Two lines that cross at the origin; four sectors of 45 and 135 degrees.
    for (const auto& [arc, text] : {std::pair(AcGePoint3d(20, 5, 0), "45\xB0"),
                                    {{-20, -5, 0}, "45\xB0"},
                                    {{-5, 20, 0}, "135\xB0"},
                                    {{5, -20, 0}, "135\xB0"}}) {
        auto* const lines = new AcDb2LineAngularDimension;
        lines->setXLine1Start({-1, 0, 0});
        lines->setXLine1End({5, 0, 0});
        lines->setXLine2Start({1, 1, 0});
        lines->setXLine2End({4, 4, 0});
        lines->setArcPoint(arc);
        EXPECT_EQ(textOf(pictureOf(append(lines))), text) << arc.x << "," << arc.y;
    }

    auto* const radius = new AcDbRadialDimension;
    radius->setChordPoint({3, 4, 0});
    parts = pictureOf(append(radius));
    EXPECT_EQ(textOf(parts), "R5");
    ASSERT_EQ(partsOf<AcDbSolid>(parts).size(), 1U);
    EXPECT_EQ(partsOf<AcDbSolid>(parts)[0]->data().corners[2], AcGePoint2d(3, 4));

    auto* const diameter = new AcDbDiametricDimension;
    diameter->setChordPoint({20, 0, 0});
    diameter->setFarChordPoint({-20, 0, 0});
    parts = pictureOf(append(diameter));
    EXPECT_EQ(textOf(parts), "\xD8"
                             "40");
    EXPECT_EQ(partsOf<AcDbSolid>(parts).size(), 2U) << "a head at both ends, the text being inside";

    auto* const ordinate = new AcDbOrdinateDimension;
    ordinate->setOrigin({1, 1, 0});
    ordinate->setDefiningPoint({8, 3, 0});
    ordinate->setLeaderEndPoint({20, 6, 0});
    parts = pictureOf(append(ordinate));
    EXPECT_EQ(textOf(parts), "2") << "its height over the origin";
    const auto lines = partsOf<AcDbLine>(parts);
    ASSERT_EQ(lines.size(), 3U);
    expectEnds(*lines[0], {8.5, 3, 0}, {16, 3, 0});
    expectEnds(*lines[1], {16, 3, 0}, {18, 6, 0});
}

TEST_F(DimensionTest, NothingToMeasureDrawsNoNonsense) {
    append(new AcDbAlignedDimension({1, 1, 0}, {1, 1, 0}, {1, 1, 0}));
    append(new AcDbRotatedDimension(0, {1, 1, 0}, {1, 5, 0}, {1, 1, 0}));
    append(new AcDb3PointAngularDimension);
    append(new AcDb2LineAngularDimension);
    append(new AcDbRadialDimension);
    append(new AcDbDiametricDimension);
    const AcDbObjectId last = append(new AcDbOrdinateDimension);
    for (const AcDbObjectId id : AcDbObjectPointer<AcDbBlockTableRecord>(last.database()->modelSpaceId())->entities()) {
        AcDbExtents box;
        if (AcDbObjectPointer<AcDbDimension>(id)->getGeomExtents(box) == Acad::eOk)
            EXPECT_TRUE(std::isfinite(box.minPoint().x + box.maxPoint().y));
    }
}

/// The lines and heads that another program drew for the same dimensions, against ours.
TEST(DimensionPictures, AreThoseOfAnotherProgram) {
    SKIP_WITHOUT_DRAWINGS();
    int compared = 0;
    for (const std::string& path : vndk::test::realDrawings("r2000")) {
        if (path.find("example_2000") == std::string::npos)
            continue;
        AcDbDatabase database(false);
        ASSERT_TRUE(vndk::dwg::readDrawing(database, path));
        for (const AcDbObjectId id : AcDbObjectPointer<AcDbBlockTableRecord>(database.modelSpaceId())->entities()) {
            const AcDbObjectPointer<AcDbDimension> dimension(id);
            if (!dimension)
                continue;
            const Parts ours = dimension->picture();
            const AcDbObjectPointer<AcDbBlockTableRecord> block(dimension->dimBlockId());
            ASSERT_TRUE(block);
            ASSERT_EQ(ours.size(), block->entities().size()) << dimension->isA()->name();
            for (size_t i = 0; i < ours.size(); ++i) {
                const AcDbObjectPointer<AcDbEntity> theirs(block->entities()[i]);
                SCOPED_TRACE(std::string(dimension->isA()->name()) + " part " + std::to_string(i));
                ASSERT_EQ(ours[i]->isA(), theirs->isA());
                ++compared;
                if (const auto* const text = AcDbMText::cast(ours[i].get())) {
                    const auto& other = static_cast<const AcDbMText&>(*theirs);
                    EXPECT_EQ(text->contentsValue(), other.contentsValue());
                    EXPECT_LT((text->direction() - other.direction()).length(), 1e-3);
                    // Its width depends on the font.
                    EXPECT_LT(text->location().distanceTo(other.location()), 0.5);
                    continue;
                }
                AcDbExtents mine, other;
                ours[i]->getGeomExtents(mine);
                theirs->getGeomExtents(other);
                const bool underText = dimension->isKindOf(AcDbOrdinateDimension::desc());
                EXPECT_LT(mine.minPoint().distanceTo(other.minPoint()), underText ? 0.7 : kNear);
                EXPECT_LT(mine.maxPoint().distanceTo(other.maxPoint()), underText ? 0.7 : kNear);
            }
        }
    }
    EXPECT_GT(compared, 60);
}

} // namespace
