#include "database_fixture.h"

#include "db/id_mapping.h"

namespace {

class Clone : public DatabaseTest {};

/// A drawing with a line on a layer of its own, and a block "PART" used twice.
struct Source {
    Source() {
        part = add<AcDbBlockTable>(database.blockTableId(), new AcDbBlockTableRecord, "PART");
        layer = add<AcDbLayerTable>(database.layerTableId(), new AcDbLayerTableRecord, "Steel");
        append(new AcDbCircle({0, 0, 0}, {0, 0, 1}, 2), part, layer);
        append(new AcDbLine({0, 0, 0}, {5, 5, 0}), database.modelSpaceId(), layer);
        append(new AcDbBlockReference({1, 1, 0}, part), database.modelSpaceId(), layer);
        database.setInsbase({1, 0, 0});
    }
    template <class Table>
    static AcDbObjectId add(AcDbObjectId tableId, typename Table::Record* record, const char* name) {
        AcDbObjectPointer<Table> table(tableId, AcDb::kForWrite);
        AcDbObjectId id;
        record->setName(name);
        table->add(id, record);
        record->close();
        return id;
    }
    AcDbObjectId append(AcDbEntity* entity, AcDbObjectId block, AcDbObjectId layerId) {
        AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
        AcDbObjectId id;
        record->appendAcDbEntity(id, entity);
        entity->setLayer(layerId);
        entity->close();
        return id;
    }
    AcDbDatabase database;
    AcDbObjectId part, layer;
};

TEST_F(Clone, ADrawingBecomesABlockWithAllThatItNeeds) {
    Source source;
    AcDbObjectId block;
    ASSERT_EQ(database.insert(block, "DETAIL", &source.database), Acad::eOk);
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
    EXPECT_EQ(record->origin(), AcGePoint3d(1, 0, 0));
    EXPECT_EQ(count(block), 2u);
    const AcDbObjectPointer<AcDbBlockTable> blocks(database.blockTableId());
    AcDbObjectId part;
    ASSERT_EQ(blocks->getAt("PART", part), Acad::eOk);
    EXPECT_EQ(count(part), 1u);
    AcDbObjectId layer;
    ASSERT_EQ(AcDbObjectPointer<AcDbLayerTable>(database.layerTableId())->getAt("Steel", layer), Acad::eOk);
    for (const AcDbObjectId id : record->entities()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        EXPECT_EQ(entity->layerId(), layer);
        EXPECT_EQ(entity->linetypeId().database(), &database);
        if (const auto* const reference = AcDbBlockReference::cast(&*entity))
            EXPECT_EQ(reference->blockTableRecord(), part);
    }
    expectAllClosed(source.database);
}

TEST_F(Clone, NamesThatTheDrawingHasStand) {
    Source source;
    const AcDbObjectId own = addBlock("part");
    AcDbObjectId block;
    ASSERT_EQ(database.insert(block, "DETAIL", &source.database), Acad::eOk);
    EXPECT_EQ(count(own), 0u) << "the drawing's own block stands as it was";
    std::vector<AcDbObjectId> references;
    AcDbObjectPointer<AcDbBlockTableRecord>(own)->getBlockReferenceIds(references);
    EXPECT_EQ(references.size(), 1u);
}

TEST_F(Clone, ARefusedInsertionLeavesTheDrawingAsItWas) {
    Source source;
    AcDbObjectId block;
    const auto live = [this] {
        size_t n = 0;
        for (const AcDbStub& stub : database.stubs())
            n += !stub.has(kStubErased);
        return n;
    };
    const size_t before = live();
    EXPECT_EQ(database.insert(block, "PART", &source.database), Acad::eSelfReference);
    EXPECT_EQ(database.insert(block, "a/b", &source.database), Acad::eInvalidSymbolTableName);
    EXPECT_EQ(database.insert(block, "X", &database), Acad::eSelfReference);
    AcDbDatabase nothing(false);
    EXPECT_EQ(database.insert(block, "X", &nothing), Acad::eNoDatabase);
    EXPECT_TRUE(block.isNull());
    EXPECT_EQ(live(), before);
    addBlock("TAKEN");
    EXPECT_EQ(database.insert(block, "taken", &source.database), Acad::eDuplicateRecordName);
}

TEST_F(Clone, AnInsertionIsUndoneAsOneStep) {
    Source source;
    database.undo().beginGroup("INSERT");
    AcDbObjectId block;
    ASSERT_EQ(database.insert(block, "DETAIL", &source.database), Acad::eOk);
    database.undo().endGroup();
    ASSERT_TRUE(database.undo().undo());
    {
        const AcDbObjectPointer<AcDbBlockTable> blocks(database.blockTableId());
        EXPECT_FALSE(blocks->has("DETAIL"));
        EXPECT_FALSE(blocks->has("PART"));
    }
    ASSERT_TRUE(database.undo().redo());
    EXPECT_EQ(count(block), 2u);
}

TEST_F(Clone, CopiesWithinADrawingShareNothingWithTheOriginal) {
    const AcDbObjectId block = addBlock("B");
    const AcDbObjectId reference = append(new AcDbBlockReference({1, 2, 3}, block));
    {
        const AcDbObjectPointer<AcDbBlockReference> open(reference, AcDb::kForWrite);
        auto* const attribute = new AcDbAttribute;
        attribute->setTag("TAG");
        ASSERT_EQ(open->appendAttribute(attribute), Acad::eOk);
        attribute->setTextString("first");
        attribute->close();
    }
    AcDbIdMapping mapping(&database, &database);
    ASSERT_EQ(database.deepCloneObjects({reference}, database.modelSpaceId(), mapping), Acad::eOk);
    const AcDbObjectId copy = mapping.lookUp(reference);
    ASSERT_FALSE(copy.isNull());
    const AcDbObjectPointer<AcDbBlockReference> open(copy);
    EXPECT_EQ(open->blockTableRecord(), block);
    ASSERT_EQ(open->attributes().size(), 1u);
    AcDbObjectPointer<AcDbAttribute> attribute(open->attributes()[0], AcDb::kForWrite);
    EXPECT_EQ(attribute->ownerId(), copy);
    attribute->setTextString("second");
    const AcDbObjectPointer<AcDbBlockReference> original(reference);
    EXPECT_EQ(AcDbObjectPointer<AcDbAttribute>(original->attributes()[0])->textValue(), "first");
}

} // namespace
