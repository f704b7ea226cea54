// Leaders, tolerances and shapes: how they look and follow what is done to them.
#include "db/id_mapping.h"
#include "db/leader.h"
#include "db/shape.h"
#include "db/solids.h"
#include "drawing/db/database_fixture.h"

namespace {

constexpr double kNear = 1e-9;

using Parts = std::vector<std::unique_ptr<AcDbEntity>>;

template <class T>
std::vector<const T*> partsOf(const Parts& parts) {
    std::vector<const T*> found;
    for (const auto& part : parts)
        if (const T* const typed = T::cast(part.get()))
            found.push_back(typed);
    return found;
}

class AnnotationTest : public DatabaseTest {
protected:
    AnnotationTest() {
        const AcDbObjectPointer<AcDbDimStyleTableRecord> style(database.idOf(database.header().DIMSTYLE),
                                                               AcDb::kForWrite);
        AcDbDimStyleTableRecord::Data data = style->data();
        data.dimasz = data.dimtxt = 1;
        style->setData(data);
    }

    static AcDbLeader* newLeader() {
        auto* const leader = new AcDbLeader;
        for (const AcGePoint3d& point : {AcGePoint3d(0, 0, 0), AcGePoint3d(10, 10, 0), AcGePoint3d(14, 20, 0)})
            leader->appendVertex(point);
        return leader;
    }

    Parts exploded(AcDbObjectId id) {
        std::vector<AcDbEntity*> raw;
        EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(id)->explode(raw), Acad::eOk);
        return Parts(raw.begin(), raw.end());
    }
};

TEST_F(AnnotationTest, LeaderHasHeadSegmentsAndHook) {
    auto* const leader = newLeader();
    AcDbLeader::Data data = leader->data();
    data.hookAlongX = true;
    leader->setFileData(data);
    const AcDbObjectId text = append(new AcDbMText), id = append(leader);
    {
        const AcDbObjectPointer<AcDbLeader> open(id, AcDb::kForWrite);
        open->setColorIndex(4);
        EXPECT_FALSE(open->hasHookLine()) << "nothing is said";
        ASSERT_EQ(open->attachAnnotation(text, AcDbLeader::kMText), Acad::eOk);
        EXPECT_TRUE(open->hasHookLine());
    }
    const Parts parts = exploded(id);
    const auto lines = partsOf<AcDbLine>(parts);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_NEAR(lines[0]->startPoint().x, std::sqrt(0.5), kNear) << "the line begins behind the head";
    EXPECT_EQ(lines[1]->endPoint(), AcGePoint3d(14, 20, 0));
    EXPECT_EQ(lines[2]->endPoint(), AcGePoint3d(15, 20, 0));
    EXPECT_EQ(lines[2]->colorIndex(), 4);
    ASSERT_EQ(partsOf<AcDbSolid>(parts).size(), 1U);
    EXPECT_LT(partsOf<AcDbSolid>(parts)[0]->data().corners[2].distanceTo({0, 0}), kNear);
    {
        const AcDbObjectPointer<AcDbLeader> open(id, AcDb::kForWrite);
        open->disableArrowHead();
        open->setToSpline();
    }
    const Parts curved = exploded(id);
    ASSERT_EQ(curved.size(), 1U);
    ASSERT_EQ(partsOf<AcDbSpline>(curved).size(), 1U);
    EXPECT_EQ(partsOf<AcDbSpline>(curved)[0]->numFitPoints(), 3);
}

TEST_F(AnnotationTest, LeaderIsTransformedWithItsPieces) {
    const AcDbObjectId id = append(newLeader());
    const AcGeMatrix3d turn = AcGeMatrix3d::rotation(0.5, {0, 0, 1}) * AcGeMatrix3d::mirroring({1, 0, 0}, {1, 1, 0}) *
                              AcGeMatrix3d::scaling(2);
    const Parts before = exploded(id);
    {
        const AcDbObjectPointer<AcDbLeader> leader(id, AcDb::kForWrite);
        EXPECT_EQ(leader->transformBy(AcGeMatrix3d::scaling(AcGeScale3d(1, 2, 1))), Acad::eCannotScaleNonUniformly);
        ASSERT_EQ(leader->transformBy(turn), Acad::eOk);
    }
    const Parts after = exploded(id);
    const AcGePoint3d corner = turn * partsOf<AcDbLine>(before).at(0)->endPoint();
    EXPECT_LT(partsOf<AcDbLine>(after).at(0)->endPoint().distanceTo(corner), kNear);
}

TEST_F(AnnotationTest, LeaderTakesItsAnnotationAlongWhenThatIsCopiedToo) {
    const AcDbObjectId text = append(new AcDbMText), id = append(newLeader());
    AcDbObjectPointer<AcDbLeader>(id, AcDb::kForWrite)->attachAnnotation(text, AcDbLeader::kMText);
    for (const bool both : {true, false}) {
        AcDbIdMapping mapping(&database, &database);
        const std::vector<AcDbObjectId> objects = both ? std::vector{id, text} : std::vector{id};
        ASSERT_EQ(database.deepCloneObjects(objects, database.modelSpaceId(), mapping), Acad::eOk);
        const AcDbObjectPointer<AcDbLeader> copy(mapping.lookUp(id));
        EXPECT_EQ(copy->annotationObjId(), both ? mapping.lookUp(text) : AcDbObjectId());
        EXPECT_EQ(copy->annoType(), both ? AcDbLeader::kMText : AcDbLeader::kNoAnno);
    }
    EXPECT_EQ(AcDbObjectPointer<AcDbLeader>(id)->annotationObjId(), text);
}

TEST_F(AnnotationTest, ToleranceHasFramesTextsAndSymbols) {
    const AcDbObjectId id = append(new AcDbFcf("{\\Fgdt;j}%%v{\\Fgdt;n}0.5{\\Fgdt;m}%%vA%%v%%v\nB", {5, 5, 0},
                                               AcGeVector3d::kZAxis, AcGeVector3d::kXAxis));
    const Parts parts = exploded(id);
    std::vector<std::string> texts;
    for (const AcDbText* const text : partsOf<AcDbText>(parts))
        texts.push_back(text->textValue());
    EXPECT_EQ(texts, (std::vector<std::string>{"0.5", "M", "A", "B"}));
    EXPECT_EQ(partsOf<AcDbArc>(parts).size(), 6U) << "circles of the symbols j, n and m in halves";
    EXPECT_EQ(partsOf<AcDbLine>(parts).size(), 4U * 4 + 2 + 1) << "four cells, a cross and a stroke";
    AcDbExtents box;
    ASSERT_EQ(AcDbObjectPointer<AcDbFcf>(id)->getGeomExtents(box), Acad::eOk);
    EXPECT_NEAR(box.minPoint().x, 5, kNear);
    EXPECT_NEAR(box.maxPoint().y, 6, kNear) << "the first row is two texts high, its middle at the location";
    EXPECT_NEAR(box.minPoint().y, 2, kNear);
}

TEST_F(AnnotationTest, ToleranceStaysReadable) {
    const AcDbObjectId id = append(new AcDbFcf("A%%vB", {5, 5, 0}, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis));
    const AcDbObjectPointer<AcDbFcf> tolerance(id, AcDb::kForWrite);
    ASSERT_EQ(tolerance->transformBy(AcGeMatrix3d::mirroring({0, 0, 0}, {1, 0, 0})), Acad::eOk);
    EXPECT_EQ(tolerance->location(), AcGePoint3d(-5, 5, 0));
    EXPECT_EQ(tolerance->direction(), AcGeVector3d(1, 0, 0));
    ASSERT_EQ(tolerance->transformBy(AcGeMatrix3d::rotation(kAcGePi / 2, {0, 0, 1})), Acad::eOk);
    EXPECT_LT((tolerance->direction() - AcGeVector3d(0, 1, 0)).length(), kNear);
}

TEST_F(AnnotationTest, OddTextsDrawSomething) {
    for (const char* const text : {"", "%%v", "%%v%%v\n\n%%v", "{\\Fgdt", "{\\Fgdt;", "{\\Fgdt;?}", "\\", "}{", "^J"}) {
        AcDbExtents box;
        EXPECT_EQ(AcDbFcf(text, {1, 2, 3}, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis).getGeomExtents(box), Acad::eOk);
        EXPECT_FALSE(box.isEmpty()) << text;
    }
}

TEST_F(AnnotationTest, ShapeFollowsWithItsSquare) {
    AcDbShape::Data data;
    data.position = {1, 2, 0};
    data.size = 3;
    data.rotation = 0.3;
    data.widthFactor = 0.5;
    data.oblique = 0.2;
    for (const AcGeMatrix3d& matrix :
         {AcGeMatrix3d::translation({3, 4, 5}), AcGeMatrix3d::scaling(2), AcGeMatrix3d::rotation(1, {0, 0, 1}),
          AcGeMatrix3d::mirroring({1, 0, 0}, {1, 2, 0}), AcGeMatrix3d::rotation(1, AcGeVector3d(1, 2, 3).normal())}) {
        AcDbShape shape;
        shape.setFileData(data);
        AcGePoint3d before[4], after[4];
        shape.getCorners(before);
        ASSERT_EQ(shape.transformBy(matrix), Acad::eOk);
        shape.getCorners(after);
        for (int i = 0; i < 4; ++i)
            EXPECT_LT(after[i].distanceTo(matrix * before[i]), kNear) << i;
    }
    AcDbShape shape;
    EXPECT_EQ(shape.transformBy(AcGeMatrix3d::scaling(AcGeScale3d(1, 2, 1))), Acad::eCannotScaleNonUniformly);
}

} // namespace
