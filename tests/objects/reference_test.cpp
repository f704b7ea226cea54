// The Intelligent reference and what hangs on it; making definitions conditional.
#include "db/id_mapping.h"
#include "db/tied_entities.h"
#include "ge/matrix3d.h"
#include "objects/support.h"

namespace {

using ReferenceTest = DatabaseTest;

struct Built {
    AcDbObjectId reference, first, second;
};

Built build(AcDbDatabase& database, AcDbObjectId block) {
    Built built;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    auto* const reference = new VNDKBlockReference;
    EXPECT_EQ(reference->setBlockTableRecordId(block), block);
    reference->setOriginalBlockName("DESK");
    EXPECT_EQ(space->appendAcDbEntity(built.reference, reference), Acad::eOk);
    for (AcDbObjectId* id : {&built.first, &built.second}) {
        VNDKAttribute* const attribute = newAttribute("A", "1");
        EXPECT_EQ(space->appendAcDbEntity(*id, attribute), Acad::eOk);
        EXPECT_EQ(reference->appendAttribute(*id), Acad::eOk);
        attribute->close();
    }
    reference->close();
    return built;
}

TEST_F(ReferenceTest, AttributesComeInTheOrderOfAppending) {
    const Built built = build(database, addBlock("DESK"));
    const AcDbObjectPointer<VNDKBlockReference> reference(built.reference, AcDb::kForWrite);
    ASSERT_EQ(reference->attributeCount(), 2);
    EXPECT_EQ(reference->getAttribute(0), built.first);
    EXPECT_EQ(reference->getAttribute(1), built.second);
    EXPECT_TRUE(reference->getAttribute(2).isNull());
    EXPECT_TRUE(reference->getAttribute(-1).isNull());
    EXPECT_EQ(reference->appendAttribute({}), Acad::eNullObjectId);
    EXPECT_EQ(reference->setOriginalBlockName(std::string(256, 'n').c_str()), Acad::eOutOfRange);
    EXPECT_STREQ(reference->originalBlockName(), "DESK");
}

TEST_F(ReferenceTest, ErasingTakesTheAttributesAlongAndBringsThemBack) {
    const Built built = build(database, addBlock("DESK"));
    database.undo().beginGroup("ERASE");
    EXPECT_EQ(AcDbObjectPointer<VNDKBlockReference>(built.reference, AcDb::kForWrite)->erase(), Acad::eOk);
    database.undo().endGroup();
    EXPECT_EQ(count(), 0U);
    ASSERT_TRUE(database.undo().undo());
    EXPECT_EQ(count(), 3U);
    ASSERT_TRUE(database.undo().redo());
    EXPECT_EQ(count(), 0U);
    EXPECT_EQ(AcDbObjectPointer<VNDKBlockReference>(built.reference, AcDb::kForWrite, true)->erase(false), Acad::eOk);
    EXPECT_EQ(count(), 3U);
}

TEST_F(ReferenceTest, AnAttributeThatIsInUseDoesNotKeepTheReference) {
    const Built built = build(database, addBlock("DESK"));
    const AcDbObjectPointer<VNDKAttribute> reader(built.first, AcDb::kForRead);
    EXPECT_EQ(AcDbObjectPointer<VNDKBlockReference>(built.reference, AcDb::kForWrite)->erase(), Acad::eOk);
    EXPECT_FALSE(built.first.isErased());
    EXPECT_TRUE(built.second.isErased());
}

TEST_F(ReferenceTest, ACopyHasAttributesOfItsOwn) {
    const Built built = build(database, addBlock("DESK"));
    AcDbIdMapping mapping(&database, &database);
    ASSERT_EQ(database.deepCloneObjects({built.reference}, database.modelSpaceId(), mapping), Acad::eOk);
    EXPECT_EQ(count(), 6U);
    const AcDbObjectId copyId = mapping.lookUp(built.reference);
    const AcDbObjectPointer<VNDKBlockReference> copy(copyId, AcDb::kForRead);
    ASSERT_TRUE(copy);
    ASSERT_EQ(copy->attributeCount(), 2);
    EXPECT_EQ(copy->getAttribute(0), mapping.lookUp(built.first));
    EXPECT_NE(copy->getAttribute(0), built.first);
    { AcDbObjectPointer<VNDKAttribute>(copy->getAttribute(0), AcDb::kForWrite)->setTextString("other"); }
    EXPECT_EQ(AcDbObjectPointer<VNDKAttribute>(built.first)->textValue(), "1");
}

TEST_F(ReferenceTest, ItsTransformsTakeTheAttributesInItsRecordAlong) {
    const Built built = build(database, addBlock("DESK"));
    const AcDbObjectId elsewhere = append(newAttribute("B", "2"), addBlock("OTHER"));
    AcDbObjectPointer<VNDKBlockReference>(built.reference, AcDb::kForWrite)->appendAttribute(elsewhere);
    AcDbObjectPointer<AcDbText> first(built.first);
    const auto placeOf = [](AcDbObjectId id) { return AcDbObjectPointer<VNDKAttribute>(id)->position(); };
    const auto move = [&](const AcGeVector3d& way) {
        return AcDbObjectPointer<VNDKBlockReference>(built.reference, AcDb::kForWrite)
            ->transformBy(AcGeMatrix3d::translation(way));
    };
    EXPECT_EQ(move({1, 2, 0}), Acad::eWasOpenForRead) << "an attribute is in use: nothing moves";
    EXPECT_EQ(placeOf(built.second), AcGePoint3d(0, 0, 0));
    EXPECT_EQ(AcDbObjectPointer<VNDKBlockReference>(built.reference)->position(), AcGePoint3d(0, 0, 0));
    first.close();
    database.undo().beginGroup("MOVE");
    EXPECT_EQ(move({1, 2, 0}), Acad::eOk);
    database.undo().endGroup();
    EXPECT_EQ(placeOf(built.first), AcGePoint3d(1, 2, 0));
    EXPECT_EQ(placeOf(built.second), AcGePoint3d(1, 2, 0));
    EXPECT_EQ(placeOf(elsewhere), AcGePoint3d(0, 0, 0));
    EXPECT_EQ(acdbWithoutTied({built.first, built.reference, elsewhere, built.second}),
              (std::vector<AcDbObjectId>{built.reference, elsewhere}));
    ASSERT_TRUE(database.undo().undo());
    EXPECT_EQ(placeOf(built.first), AcGePoint3d(0, 0, 0));
    EXPECT_EQ(AcDbObjectPointer<VNDKBlockReference>(built.reference)->position(), AcGePoint3d(0, 0, 0));

    // A copy that nobody has appended names its original's attributes.
    const AcDbObjectPointer<VNDKBlockReference> original(built.reference);
    const std::unique_ptr<AcDbObject> copy(original->copyData());
    EXPECT_EQ(VNDKBlockReference::cast(copy.get())->transformBy(AcGeMatrix3d::scaling(2)), Acad::eOk);
    EXPECT_EQ(AcDbObjectPointer<VNDKAttribute>(built.first)->height(), 2.5);
}

TEST_F(ReferenceTest, ADefinitionIsConvertedWithAllItHas) {
    const AcDbObjectId block = addBlock("DESK");
    auto* const plain = new AcDbAttributeDefinition({3, 4, 0}, "900", "WIDTH", "Width of the desk");
    plain->setHeight(5);
    plain->setRotation(0.5);
    plain->setPreset(true);
    plain->setHorizontalMode(AcDb::kTextRight);
    plain->setAlignmentPoint({9, 4, 0});
    const AcDbObjectId plainId = append(plain, block);
    AcDbObjectId madeId;
    {
        const AcDbObjectPointer<AcDbAttributeDefinition> open(plainId, AcDb::kForWrite);
        open->setColorIndex(3);
        VNDKAttributeDefinition* const made = vndkConvertDefinition(open.object());
        ASSERT_NE(made, nullptr);
        madeId = made->objectId();
        EXPECT_EQ(vndkConvertDefinition(made), nullptr) << "it is one already";
        made->close();
    }
    EXPECT_TRUE(plainId.isErased());
    EXPECT_EQ(count(block), 1U);
    const AcDbObjectPointer<VNDKAttributeDefinition> made(madeId);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->tagValue(), "WIDTH");
    EXPECT_EQ(made->promptValue(), "Width of the desk");
    EXPECT_EQ(made->textValue(), "900");
    EXPECT_TRUE(made->isPreset());
    EXPECT_EQ(made->colorIndex(), 3);
    EXPECT_EQ(made->rotation(), 0.5);
    EXPECT_EQ(made->alignmentPoint(), AcGePoint3d(9, 4, 0));
    EXPECT_EQ(made->conditionalPoint2(), AcGePoint3d(3, 4, 0));
}

TEST_F(ReferenceTest, ADefinitionInABlockThatIsOpenStaysAsItIs) {
    const AcDbObjectId block = addBlock("DESK");
    const AcDbObjectId plainId = append(new AcDbAttributeDefinition({0, 0, 0}, "1", "A", ""), block);
    const AcDbObjectPointer<AcDbBlockTableRecord> reader(block);
    const AcDbObjectPointer<AcDbAttributeDefinition> open(plainId, AcDb::kForWrite);
    EXPECT_EQ(vndkConvertDefinition(open.object()), nullptr);
    EXPECT_EQ(count(block), 1U);
    EXPECT_FALSE(plainId.isErased());
}

} // namespace
