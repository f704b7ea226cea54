// How the pictures of dimensions follow what is done to them.
#include "db/usage.h"
#include "drawing/db/dimension_fixture.h"

namespace {

TEST_F(DimensionTest, AShiftTakesThePictureAlongAsItIs) {
    const AcDbObjectId id = appendAligned(), block = blockOf(id);
    // Somebody else's picture: not what would be drawn here.
    append(new AcDbCircle({1, 1, 0}, {0, 0, 1}, 3), block);
    ASSERT_EQ(transform(id, AcGeMatrix3d::translation({100, 0, 7})), Acad::eOk);
    EXPECT_EQ(blockOf(id), block);
    const Parts parts = pictureOf(id);
    ASSERT_EQ(partsOf<AcDbCircle>(parts).size(), 1U);
    EXPECT_LT(partsOf<AcDbCircle>(parts)[0]->center().distanceTo({101, 1, 7}), kNear);
    expectEnds(*partsOf<AcDbLine>(parts)[0], {100, 0.5, 7}, {100, 5.5, 7});
    EXPECT_EQ(AcDbObjectPointer<AcDbAlignedDimension>(id)->xLine2Point(), AcGePoint3d(120, 0, 7));
}

TEST_F(DimensionTest, AScaleShowsTheNewMeasurement) {
    const AcDbObjectId plain = appendAligned(), within = appendAligned("L = <>"), fixed = appendAligned("wide");
    for (const AcDbObjectId id : {plain, within, fixed})
        ASSERT_EQ(transform(id, AcGeMatrix3d::scaling(2.5, {0, 0, 0})), Acad::eOk);
    EXPECT_EQ(textOf(pictureOf(plain)), "50");
    EXPECT_EQ(textOf(pictureOf(within)), "L = 50");
    EXPECT_EQ(textOf(pictureOf(fixed)), "wide");
    EXPECT_EQ(partsOf<AcDbMText>(pictureOf(plain)).size(), 1U) << "the former picture is gone";
    EXPECT_EQ(AcDbObjectPointer<AcDbDimension>(plain)->data().measurement, 50);
}

TEST_F(DimensionTest, ATextStaysReadable) {
    const AcDbObjectId turned = appendAligned(), mirrored = appendAligned();
    ASSERT_EQ(transform(turned, AcGeMatrix3d::rotation(kAcGePi, {0, 0, 1})), Acad::eOk);
    ASSERT_EQ(transform(mirrored, AcGeMatrix3d::mirroring({-5, 0, 0}, {1, 0, 0})), Acad::eOk);
    for (const AcDbObjectId id : {turned, mirrored}) {
        const Parts parts = pictureOf(id);
        const AcDbMText& text = *partsOf<AcDbMText>(parts).at(0);
        EXPECT_EQ(text.contentsValue(), "20");
        EXPECT_LT((text.direction() - AcGeVector3d(1, 0, 0)).length(), kNear);
        EXPECT_LT((text.normal() - AcGeVector3d(0, 0, 1)).length(), kNear);
    }
}

TEST_F(DimensionTest, EveryKindMeasuresTheSameAfterAMotion) {
    const AcGeVector3d tilted = AcGeVector3d(1, 2, 3).normal();
    const AcGeMatrix3d matrices[] = {
        AcGeMatrix3d::translation({3, -4, 5}),          AcGeMatrix3d::rotation(0.7, AcGeVector3d::kZAxis, {1, 2, 0}),
        AcGeMatrix3d::rotation(2.1, tilted, {1, 2, 3}), AcGeMatrix3d::mirroring({2, 0, 0}, AcGeVector3d::kXAxis),
        AcGeMatrix3d::mirroring({1, 1, 1}, tilted),     AcGeMatrix3d::scaling(3)};
    const std::function<AcDbDimension*()> kinds[] = {
        [] {
            return new AcDbAlignedDimension({0, 0, 0}, {20, 3, 0}, {20, 9, 0});
        },
        [] {
            return new AcDbRotatedDimension(0.4, {0, 0, 0}, {20, 3, 0}, {20, 9, 0});
        },
        [] {
            auto* const d = new AcDb3PointAngularDimension;
            d->setXLine1Point({10, 1, 0});
            d->setXLine2Point({1, 10, 0});
            d->setArcPoint({9, 9, 0});
            return d;
        },
        [] {
            auto* const d = new AcDb2LineAngularDimension;
            d->setXLine1Start({1, 0, 0});
            d->setXLine1End({9, 1, 0});
            d->setXLine2Start({0, 1, 0});
            d->setXLine2End({2, 9, 0});
            d->setArcPoint({12, 12, 0});
            return d;
        },
        [] {
            auto* const d = new AcDbRadialDimension;
            d->setChordPoint({30, 40, 0});
            return d;
        },
        [] {
            auto* const d = new AcDbDiametricDimension;
            d->setChordPoint({30, 40, 0});
            return d;
        },
        [] {
            auto* const d = new AcDbOrdinateDimension;
            d->setDefiningPoint({8, 3, 0});
            d->setLeaderEndPoint({20, 6, 0});
            d->useXAxis();
            return d;
        }};
    for (const auto& make : kinds)
        for (const AcGeMatrix3d& matrix : matrices) {
            const AcDbObjectId id = append(make());
            const AcDbObjectPointer<AcDbDimension> dimension(id, AcDb::kForWrite);
            SCOPED_TRACE(dimension->isA()->name());
            double before = 0, after = 0;
            dimension->measurement(before);
            ASSERT_GT(before, 0);
            ASSERT_EQ(dimension->transformBy(matrix), Acad::eOk);
            dimension->measurement(after);
            const bool angle = dimension->isKindOf(AcDb3PointAngularDimension::desc()) ||
                               dimension->isKindOf(AcDb2LineAngularDimension::desc());
            EXPECT_NEAR(after, before * (angle ? 1 : matrix.scale()), kNear);
            EXPECT_EQ(dimension->transformBy(AcGeMatrix3d::scaling(AcGeScale3d(1, 2, 1))),
                      Acad::eCannotScaleNonUniformly);
        }
}

TEST_F(DimensionTest, ACopyHasAPictureOfItsOwn) {
    const AcDbObjectId id = appendAligned(), second = copy(id);
    ASSERT_NE(blockOf(second), blockOf(id));
    EXPECT_EQ(pictureOf(second).size(), pictureOf(id).size());
    ASSERT_EQ(transform(second, AcGeMatrix3d::scaling(2)), Acad::eOk);
    EXPECT_EQ(textOf(pictureOf(id)), "20");
    EXPECT_EQ(textOf(pictureOf(second)), "40");
}

TEST_F(DimensionTest, WithoutAPictureItIsGivenOne) {
    const AcDbObjectId shared = appendAligned(), erased = appendAligned(), none = appendAligned();
    {
        const AcDbObjectPointer<AcDbDimension> dimension(shared, AcDb::kForWrite);
        AcDbDimension::Data data = dimension->data();
        data.flags &= ~2; // the picture is others', too
        dimension->setFileData(data);
        EXPECT_EQ(AcDbObjectPointer<AcDbBlockTableRecord>(blockOf(erased), AcDb::kForWrite)->erase(), Acad::eOk);
        EXPECT_EQ(AcDbObjectPointer<AcDbDimension>(none, AcDb::kForWrite)->setDimBlockId({}), Acad::eOk);
    }
    const AcDbObjectId former = blockOf(shared);
    for (const AcDbObjectId id : {shared, erased, none}) {
        ASSERT_EQ(transform(id, AcGeMatrix3d::translation({1, 0, 0})), Acad::eOk);
        expectEnds(*partsOf<AcDbLine>(pictureOf(id)).at(0), {1, 0.5, 0}, {1, 5.5, 0});
    }
    EXPECT_NE(blockOf(shared), former);
    EXPECT_EQ(AcDbObjectPointer<AcDbBlockTableRecord>(former)->entities().size(), pictureOf(shared).size())
        << "what others see stays in its place";
}

TEST_F(DimensionTest, APictureThatIsHeldOpenKeepsTheDimension) {
    const AcDbObjectId id = appendAligned();
    const AcDbObjectPointer<AcDbBlockTableRecord> held(blockOf(id));
    EXPECT_EQ(transform(id, AcGeMatrix3d::scaling(2)), Acad::eWasOpenForRead);
    EXPECT_EQ(AcDbObjectPointer<AcDbAlignedDimension>(id)->xLine2Point(), AcGePoint3d(20, 0, 0));
}

TEST_F(DimensionTest, UndoBringsTheFormerPictureBack) {
    const AcDbObjectId id = appendAligned();
    database.undo().clear();
    for (const AcGeMatrix3d& matrix :
         {AcGeMatrix3d::translation({5, 5, 0}), AcGeMatrix3d::scaling(2), AcGeMatrix3d::rotation(1, {0, 0, 1})}) {
        database.undo().beginGroup("change");
        ASSERT_EQ(transform(id, matrix), Acad::eOk);
        database.undo().endGroup();
    }
    while (database.undo().undoCount() > 0)
        database.undo().undo();
    const Parts parts = pictureOf(id);
    EXPECT_EQ(textOf(parts), "20");
    EXPECT_EQ(parts.size(), 9U);
    expectEnds(*partsOf<AcDbLine>(parts).at(0), {0, 0.5, 0}, {0, 5.5, 0});
    while (database.undo().redoCount() > 0)
        database.undo().redo();
    EXPECT_EQ(textOf(pictureOf(id)), "40");
}

TEST_F(DimensionTest, ExplodedItIsItsPicture) {
    const AcDbObjectId id = appendAligned();
    std::vector<AcDbEntity*> raw;
    {
        const AcDbObjectPointer<AcDbDimension> dimension(id, AcDb::kForWrite);
        dimension->setColorIndex(5);
        ASSERT_EQ(dimension->explode(raw), Acad::eOk);
    }
    const Parts parts(raw.begin(), raw.end());
    EXPECT_EQ(parts.size(), 9U);
    EXPECT_EQ(partsOf<AcDbLine>(parts).at(0)->colorIndex(), 5) << "ByBlock becomes what the dimension has";
    EXPECT_EQ(partsOf<AcDbSolid>(parts).size(), 2U);
}

TEST_F(DimensionTest, WithinABlockItFollowsTheReference) {
    const AcDbObjectId block = addBlock("PLAN");
    append(new AcDbAlignedDimension({0, 0, 0}, {20, 0, 0}, {20, 5, 0}), block);
    const AcDbObjectId even = append(new AcDbBlockReference({0, 0, 0}, block));
    const AcDbObjectId uneven = append(new AcDbBlockReference({100, 0, 0}, block));
    {
        const AcDbObjectPointer<AcDbBlockReference> first(even, AcDb::kForWrite), second(uneven, AcDb::kForWrite);
        first->setScaleFactors(AcGeScale3d(3));
        second->setScaleFactors({1, 2, 1});
        ASSERT_EQ(first->explodeToOwnerSpace(), Acad::eOk);
        ASSERT_EQ(second->explodeToOwnerSpace(), Acad::eOk) << "in pieces";
    }
    const std::vector<AcDbObjectId> ids = AcDbObjectPointer<AcDbBlockTableRecord>(database.modelSpaceId())->entities();
    EXPECT_EQ(textOf(pictureOf(ids.at(2))), "60");
    EXPECT_EQ(ids.size(), 3U + 9U);
}

TEST_F(DimensionTest, OnlyWhatNoDimensionShowsIsUnused) {
    const AcDbObjectId id = appendAligned(), gone = appendAligned();
    AcDbObjectPointer<AcDbEntity>(gone, AcDb::kForWrite)->erase();
    AcDbUsage usage(database);
    const auto unused = usage.unused(AcDbUsage::kBlocks);
    ASSERT_EQ(unused.size(), 1U);
    EXPECT_NE(unused[0].id, blockOf(id));
    EXPECT_TRUE(usage.unused(AcDbUsage::kDimStyles).empty());
}

TEST_F(DimensionTest, GoesIntoOtherDrawingsWithStyleAndPicture) {
    const AcDbObjectId own =
        addRecord<AcDbDimStyleTable>(database.dimStyleTableId(), new AcDbDimStyleTableRecord, "MINE");
    {
        const AcDbObjectPointer<AcDbDimStyleTableRecord> record(own, AcDb::kForWrite);
        AcDbDimStyleTableRecord::Data data = plainStyle();
        data.dimpost = " cm";
        record->setData(data);
    }
    append(new AcDbAlignedDimension({0, 0, 0}, {20, 0, 0}, {20, 5, 0}, nullptr, own));
    AcDbDatabase other;
    AcDbObjectId block;
    ASSERT_EQ(other.insert(block, "PLAN", &database), Acad::eOk);
    const std::vector<AcDbObjectId> ids = AcDbObjectPointer<AcDbBlockTableRecord>(block)->entities();
    ASSERT_EQ(ids.size(), 1U);
    ASSERT_EQ(blockOf(ids[0]).database(), &other);
    EXPECT_EQ(pictureOf(ids[0]).size(), 9U);
    ASSERT_EQ(transform(ids[0], AcGeMatrix3d::scaling(2)), Acad::eOk);
    EXPECT_EQ(textOf(pictureOf(ids[0])), "40 cm");
    EXPECT_EQ(textOf(pictureOf(AcDbObjectPointer<AcDbBlockTableRecord>(database.modelSpaceId())->entities()[0])),
              "20 cm");
    expectAllClosed(other);
}

} // namespace
