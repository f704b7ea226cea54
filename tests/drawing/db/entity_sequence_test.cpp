// Entities that own others: references with attributes, polylines with vertices, blocks within blocks.
#include "database_fixture.h"

#include "db/polylines.h"

namespace {

class EntitySequence : public DatabaseTest {
protected:
    AcDbObjectId addAttribute(AcDbObjectId reference, const char* tag) {
        const AcDbObjectPointer<AcDbBlockReference> open(reference, AcDb::kForWrite);
        auto* const attribute = new AcDbAttribute({1, 1, 0}, "value", tag);
        AcDbObjectId id;
        EXPECT_EQ(open->appendAttribute(id, attribute), Acad::eOk);
        attribute->close();
        return id;
    }
    void setErased(AcDbObjectId id, bool erasing) {
        const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite, true);
        EXPECT_EQ(object->erase(erasing), Acad::eOk);
    }
};

TEST_F(EntitySequence, ErasingAReferenceTakesItsAttributesAndBringsBackOnlyThose) {
    const AcDbObjectId reference = append(new AcDbBlockReference({}, addBlock("B")));
    const AcDbObjectId first = addAttribute(reference, "A"), second = addAttribute(reference, "B");
    setErased(first, true);
    setErased(reference, true);
    EXPECT_TRUE(second.isErased());
    setErased(reference, false);
    EXPECT_TRUE(first.isErased()) << "it was erased on its own";
    EXPECT_FALSE(second.isErased());
    const AcDbObjectPointer<AcDbBlockReference> open(reference);
    const std::unique_ptr<AcDbObjectIterator> iterator(open->attributeIterator());
    EXPECT_EQ(iterator->objectId(), second);
}

TEST_F(EntitySequence, TheIteratorGoesBothWaysWithErasedOnesOrWithout) {
    const AcDbObjectId reference = append(new AcDbBlockReference({}, addBlock("B")));
    const AcDbObjectId first = addAttribute(reference, "A"), second = addAttribute(reference, "B"),
                       third = addAttribute(reference, "C"), fourth = addAttribute(reference, "D");
    setErased(first, true);
    setErased(third, true);
    const AcDbObjectPointer<AcDbBlockReference> open(reference);
    const std::unique_ptr<AcDbObjectIterator> iterator(open->attributeIterator());
    const auto walked = [&](bool backwards, bool skipDeleted) {
        std::vector<AcDbObjectId> ids;
        for (iterator->start(backwards, skipDeleted); !iterator->done(); iterator->step(backwards, skipDeleted))
            ids.push_back(iterator->objectId());
        return ids;
    };
    using Ids = std::vector<AcDbObjectId>;
    EXPECT_EQ(walked(false, true), (Ids{second, fourth}));
    EXPECT_EQ(walked(true, true), (Ids{fourth, second}));
    EXPECT_EQ(walked(false, false), (Ids{first, second, third, fourth}));
    EXPECT_EQ(walked(true, false), (Ids{fourth, third, second, first}));
    const AcDbObjectId bare = append(new AcDbBlockReference({}, addBlock("C")));
    const AcDbObjectPointer<AcDbBlockReference> openBare(bare);
    const std::unique_ptr<AcDbObjectIterator> none(openBare->attributeIterator());
    for (const bool backwards : {false, true}) {
        none->start(backwards);
        EXPECT_TRUE(none->done());
    }
}

TEST_F(EntitySequence, UndoTakesAttributesBackAndRedoBringsThem) {
    database.undo().beginGroup("INSERT");
    const AcDbObjectId reference = append(new AcDbBlockReference({}, addBlock("B")));
    const AcDbObjectId attribute = addAttribute(reference, "A");
    database.undo().endGroup();
    ASSERT_TRUE(database.undo().undo());
    EXPECT_TRUE(reference.isErased());
    EXPECT_TRUE(attribute.isErased());
    ASSERT_TRUE(database.undo().redo());
    EXPECT_FALSE(attribute.isErased());
}

TEST_F(EntitySequence, RefusesAttributesForAReferenceThatIsntInADrawing) {
    AcDbBlockReference loose;
    AcDbAttribute attribute;
    EXPECT_EQ(loose.appendAttribute(&attribute), Acad::eNotInDatabase);
    const AcDbObjectId reference = append(new AcDbBlockReference({}, addBlock("B")));
    const AcDbObjectPointer<AcDbBlockReference> reader(reference);
    EXPECT_EQ(reader->appendAttribute(&attribute), Acad::eNotOpenForWrite);
}

TEST_F(EntitySequence, MovingAPolylineOrAReferenceMovesWhatItOwns) {
    const AcDbObjectId polylineId = append(new AcDb3dPolyline);
    const AcDbObjectId reference = append(new AcDbBlockReference({}, addBlock("B")));
    const AcDbObjectId attribute = addAttribute(reference, "A");
    const AcGeMatrix3d move = AcGeMatrix3d::translation({10, 0, 0});
    AcDbObjectId vertexId;
    {
        const AcDbObjectPointer<AcDb3dPolyline> polyline(polylineId, AcDb::kForWrite);
        auto* const vertex = new AcDb3dPolylineVertex({1, 2, 3});
        ASSERT_EQ(polyline->appendVertex(vertexId, vertex), Acad::eOk);
        vertex->close();
        EXPECT_EQ(polyline->transformBy(move), Acad::eOk);
        const AcDbObjectPointer<AcDbBlockReference> insert(reference, AcDb::kForWrite);
        EXPECT_EQ(insert->transformBy(move), Acad::eOk);
    }
    EXPECT_EQ(AcDbObjectPointer<AcDbVertex>(vertexId)->position(), AcGePoint3d(11, 2, 3));
    EXPECT_EQ(AcDbObjectPointer<AcDbAttribute>(attribute)->position(), AcGePoint3d(11, 1, 0));
}

TEST_F(EntitySequence, TheBlockKnowsItsReferencesAfterAChangeOfBlock) {
    const AcDbObjectId first = addBlock("FIRST"), second = addBlock("SECOND");
    const AcDbObjectId reference = append(new AcDbBlockReference({}, first));
    {
        const AcDbObjectPointer<AcDbBlockReference> open(reference, AcDb::kForWrite);
        ASSERT_EQ(open->setBlockTableRecord(second), Acad::eOk);
    }
    std::vector<AcDbObjectId> ids;
    AcDbObjectPointer<AcDbBlockTableRecord>(second)->getBlockReferenceIds(ids);
    EXPECT_EQ(ids, std::vector<AcDbObjectId>{reference});
}

TEST_F(EntitySequence, ABlockThatHoldsItselfStillHasABox) {
    const AcDbObjectId block = addBlock("LOOP");
    append(new AcDbLine({0, 0, 0}, {1, 2, 0}), block);
    append(new AcDbBlockReference({0, 0, 0}, block), block);
    AcDbBlockReference reference({5, 0, 0}, block);
    AcDbExtents box;
    ASSERT_EQ(reference.getGeomExtents(box), Acad::eOk);
    EXPECT_EQ(box.minPoint(), AcGePoint3d(5, 0, 0));
    EXPECT_EQ(box.maxPoint(), AcGePoint3d(6, 2, 0));
}

} // namespace
