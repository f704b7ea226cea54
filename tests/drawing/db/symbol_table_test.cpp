#include "database_fixture.h"

namespace {

class SymbolTables : public DatabaseTest {
protected:
    AcDbObjectId layer(const char* name) {
        return addRecord<AcDbLayerTable>(database.layerTableId(), new AcDbLayerTableRecord, name);
    }
    AcDbObjectId find(const char* name) {
        AcDbObjectId id;
        AcDbObjectPointer<AcDbLayerTable>(database.layerTableId())->getAt(name, id);
        return id;
    }
};

TEST_F(SymbolTables, NamesCompareWithoutRegardToCase) {
    const AcDbObjectId id = layer("T\xfcren");
    for (const char* name : {"t\xdcREN", "T\xfcren", "T\xdcREN"})
        EXPECT_EQ(find(name), id) << name;
    EXPECT_TRUE(find("Turen").isNull());
    AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForWrite);
    auto* const twin = new AcDbLayerTableRecord;
    ASSERT_EQ(twin->setName("T\xdcREN"), Acad::eOk);
    EXPECT_EQ(table->add(twin), Acad::eDuplicateRecordName);
    delete twin;
}

TEST_F(SymbolTables, OnlyNamesThatAFileCanHoldAreTaken) {
    const struct {
        std::string name;
        bool valid;
    } cases[] = {
        {"A", true},
        {"with blanks $-_.", true},
        {"*U1", true},
        {std::string(255, 'x'), true},
        {"", false},
        {"*", false},
        {std::string(256, 'x'), false},
        {"a/b", false},
        {"a\\b", false},
        {"a\"b", false},
        {"a:b", false},
        {"a;b", false},
        {"a?b", false},
        {"a*b", false},
        {"a|b", false},
        {"a,b", false},
        {"a=b", false},
        {"a`b", false},
        {"a<b", false},
        {"a>b", false},
        {"a\tb", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(acdbIsValidSymbolName(c.name.c_str()), c.valid) << c.name;
}

TEST_F(SymbolTables, ARenamedRecordIsFoundUnderItsNewNameAlone) {
    const AcDbObjectId id = layer("Old");
    layer("Taken");
    database.undo().beginGroup("RENAME");
    {
        const AcDbObjectPointer<AcDbLayerTableRecord> record(id, AcDb::kForWrite);
        EXPECT_EQ(record->setName("TAKEN"), Acad::eDuplicateRecordName);
        EXPECT_EQ(record->setName("OLD"), Acad::eOk) << "its own name in other letters";
        EXPECT_EQ(record->setName("New"), Acad::eOk);
    }
    database.undo().endGroup();
    EXPECT_EQ(find("new"), id);
    EXPECT_TRUE(find("old").isNull());
    ASSERT_TRUE(database.undo().undo());
    EXPECT_EQ(find("old"), id);
    EXPECT_TRUE(find("new").isNull());
    ASSERT_TRUE(database.undo().redo());
    EXPECT_EQ(find("new"), id);
}

TEST_F(SymbolTables, AnErasedRecordFreesItsName) {
    const AcDbObjectId first = layer("Walls");
    AcDbObjectPointer<AcDbLayerTableRecord>(first, AcDb::kForWrite)->erase();
    EXPECT_TRUE(find("Walls").isNull());
    const AcDbObjectId second = layer("WALLS");
    EXPECT_EQ(find("walls"), second);
    const AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId());
    AcDbSymbolTableIterator* made = nullptr;
    table->newIterator(made);
    const std::unique_ptr<AcDbSymbolTableIterator> iterator(made);
    std::vector<AcDbObjectId> seen;
    for (; !iterator->done(); iterator->step()) {
        seen.emplace_back();
        iterator->getRecordId(seen.back());
    }
    EXPECT_EQ(seen, (std::vector{find("0"), second}));
}

TEST_F(SymbolTables, AFailedAddLeavesTheRecordToTheCaller) {
    const AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId());
    AcDbLayerTableRecord nameless;
    EXPECT_EQ(table->add(&nameless), Acad::eNotOpenForWrite);
    EXPECT_FALSE(nameless.isResident());
}

TEST_F(SymbolTables, TheEmptyDrawingHasWhatEveryDrawingHas) {
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbBlockTable> blocks(database.blockTableId());
    EXPECT_EQ(blocks->getAt("*model_space", id), Acad::eOk);
    EXPECT_EQ(id, database.modelSpaceId());
    EXPECT_EQ(blocks->getAt("*PAPER_SPACE", id), Acad::eOk);
    EXPECT_EQ(id, database.paperSpaceId());
    EXPECT_EQ(find("0"), database.clayer());
    AcDbDictionary* root = nullptr;
    ASSERT_EQ(database.getNamedObjectsDictionary(root, AcDb::kForRead), Acad::eOk);
    for (const char* name : {"ACAD_GROUP", "ACAD_LAYOUT", "ACAD_MLINESTYLE", "ACAD_PLOTSETTINGS", "ACAD_PLOTSTYLENAME"})
        EXPECT_TRUE(root->has(name)) << name;
    root->close();
    EXPECT_FALSE(database.isDirty());
}

} // namespace
