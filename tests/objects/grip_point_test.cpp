// What hangs on a grip point.
#include "db/polylines.h"
#include "db/solids.h"
#include "objects/support.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAreArray;
using testing::IsEmpty;

class GripPointTest : public DatabaseTest {
protected:
    static constexpr AcGePoint3d kPlace{100, 50, 0};

    AcDbObjectId appendGrip() {
        auto* const grip = new VNDKGripPoint;
        grip->setPosition(kPlace);
        return append(grip);
    }

    /// As a caller does: a new iterator, the grip point closed, both functions one after the other.
    void relink(AcDbObjectId gripId) {
        VNDKGripPoint* grip = nullptr;
        ASSERT_EQ(acdbOpenObject(grip, gripId), Acad::eOk);
        grip->close();
        AcDbBlockTableRecordIterator* iterator = nullptr;
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(space->newIterator(iterator, true, true), Acad::eOk);
        EXPECT_TRUE(setChildEntities(grip, iterator));
        EXPECT_TRUE(setFormulaChildEntities(grip, iterator));
        delete iterator;
    }

    std::vector<AcDbObjectId> children(AcDbObjectId grip) {
        const auto& ids = AcDbObjectPointer<VNDKGripPoint>(grip)->childEntities();
        return {ids.begin(), ids.end()};
    }
    std::vector<AcDbObjectId> formulaChildren(AcDbObjectId grip) {
        const auto& ids = AcDbObjectPointer<VNDKGripPoint>(grip)->formulaChildEntities();
        return {ids.begin(), ids.end()};
    }
};

TEST_F(GripPointTest, HoldsTheEntitiesWithAPointOnIt) {
    const AcDbObjectId grip = appendGrip();
    appendGrip(); // another one isn't a child
    std::vector<AcDbObjectId> hanging;
    hanging.push_back(append(new AcDbLine({0, 0, 0}, kPlace)));
    append(new AcDbLine({0, 50, 0}, {200, 50, 0})); // passes through it
    hanging.push_back(append(new AcDbCircle(kPlace, {0, 0, 1}, 5)));
    append(new AcDbCircle({95, 50, 0}, {0, 0, 1}, 5)); // touches it
    hanging.push_back(append(new AcDbArc({90, 50, 0}, 10, 0, 1)));
    auto* const polyline = new AcDbPolyline;
    for (const AcGePoint2d& vertex : {AcGePoint2d(0, 0), AcGePoint2d(100, 50), AcGePoint2d(200, 0)})
        polyline->addVertexAt(polyline->numVerts(), vertex);
    hanging.push_back(append(polyline));
    hanging.push_back(append(new AcDbText(kPlace, "text")));
    hanging.push_back(append(new AcDbPoint(kPlace)));
    auto* const reference = new AcDbBlockReference(kPlace, addBlock("B"));
    hanging.push_back(append(reference));
    const AcDbObjectId erased = append(new AcDbPoint(kPlace));
    { AcDbObjectPointer<AcDbPoint>(erased, AcDb::kForWrite)->erase(); }

    relink(grip);
    EXPECT_THAT(children(grip), ElementsAreArray(hanging));
    EXPECT_THAT(formulaChildren(grip), IsEmpty());
}

TEST_F(GripPointTest, OldPolylinesHangOnItByTheirVertices) {
    const AcDbObjectId grip = appendGrip();
    auto* const polyline = new AcDb3dPolyline;
    const AcDbObjectId id = append(polyline);
    {
        const AcDbObjectPointer<AcDb3dPolyline> open(id, AcDb::kForWrite);
        for (const AcGePoint3d& point : {AcGePoint3d(0, 0, 0), kPlace, AcGePoint3d(7, 7, 7)}) {
            auto* const vertex = new AcDb3dPolylineVertex(point);
            ASSERT_EQ(open->appendVertex(vertex), Acad::eOk);
            vertex->close();
        }
    }
    relink(grip);
    EXPECT_THAT(children(grip), ElementsAreArray({id}));
}

TEST_F(GripPointTest, HoldsTheAttributesWithFormulasThatStretchToIt) {
    const AcDbObjectId grip = appendGrip();
    VNDKAttribute* const attribute = newAttribute("A", "1", {"stretch = 1"});
    attribute->setConditionalPoint2(kPlace);
    const AcDbObjectId attributeId = append(attribute);
    VNDKAttribute* const withoutFormulas = newAttribute("B", "1");
    withoutFormulas->setConditionalPoint2(kPlace);
    append(withoutFormulas);
    append(newAttribute("C", "1", {"stretch = 1"})); // its points are elsewhere
    auto* const definition = new VNDKAttributeDefinition;
    definition->setConditionalPoint1(kPlace);
    definition->AddFormula(newFormula("stretch = 1"));
    const AcDbObjectId definitionId = append(definition);

    relink(grip);
    EXPECT_THAT(formulaChildren(grip), ElementsAreArray({attributeId, definitionId}));
}

TEST_F(GripPointTest, FindsAnewEachTime) {
    const AcDbObjectId grip = appendGrip();
    const AcDbObjectId first = append(new AcDbPoint(kPlace));
    relink(grip);
    { AcDbObjectPointer<AcDbPoint>(first, AcDb::kForWrite)->setPosition({0, 0, 0}); }
    const AcDbObjectId second = append(new AcDbPoint(kPlace));
    relink(grip);
    EXPECT_THAT(children(grip), ElementsAreArray({second}));
}

TEST_F(GripPointTest, RefusesWhatItCannotDoAndKeepsItsChildren) {
    const AcDbObjectId gripId = appendGrip();
    const AcDbObjectId only = append(new AcDbPoint(kPlace));
    relink(gripId);
    for (size_t i = 0; i < VNDKGripPoint::kMaxChildren; ++i)
        append(new AcDbPoint(kPlace));
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
    AcDbBlockTableRecordIterator* iterator = nullptr;
    space->newIterator(iterator);
    VNDKGripPoint* grip = nullptr;
    ASSERT_EQ(acdbOpenObject(grip, gripId), Acad::eOk);
    EXPECT_FALSE(setFormulaChildEntities(grip, iterator)) << "it is open";
    grip->close();
    EXPECT_FALSE(setChildEntities(grip, iterator)) << "too many for a file";
    EXPECT_FALSE(setChildEntities(nullptr, iterator));
    EXPECT_FALSE(setChildEntities(grip, nullptr));
    delete iterator;
    EXPECT_THAT(children(gripId), ElementsAreArray({only}));
}

} // namespace
