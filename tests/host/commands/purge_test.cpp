// PURGE: what goes, what stays, and what the file holds afterwards.
#include "commands_fixture.h"
#include "db/curves.h"
#include "db/opaque.h"
#include "db/stub.h"
#include "db/xdata.h"
#include "drawing/dwg/file_audit.h"
#include "dwg/bit_writer.h"
#include "dwg/drawing_writer.h"
#include "support/drawings.h"
#include "win32/drive_map.h"

#include <gmock/gmock.h>

namespace {

class PurgeTest : public CommandsTest {
protected:
    template <class Table>
    AcDbObjectId addRecord(AcDbObjectId tableId, const char* name, typename Table::Record* record = nullptr) {
        if (!record)
            record = new typename Table::Record;
        const AcDbObjectPointer<Table> table(tableId, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(record->setName(name), Acad::eOk);
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        return id;
    }
    AcDbObjectId addLayer(const char* name) { return addRecord<AcDbLayerTable>(database().layerTableId(), name); }
    AcDbObjectId addLinetype(const char* name) {
        return addRecord<AcDbLinetypeTable>(database().linetypeTableId(), name);
    }
    AcDbObjectId addStyle(const char* name, bool shapes = false) {
        auto* const record = new AcDbTextStyleTableRecord;
        AcDbTextStyleTableRecord::Data data;
        data.isShapeFile = shapes;
        record->setFileData(data);
        return addRecord<AcDbTextStyleTable>(database().textStyleTableId(), name, record);
    }
    AcDbObjectId addRegApp(const char* name) { return addRecord<AcDbRegAppTable>(database().regAppTableId(), name); }
    /// An object of a type that isn't modelled, in a dictionary of the drawing.
    AcDbObjectId addOpaque(const char* name, AcDbOpaqueFields fields, const char* folder = nullptr) {
        AcDbObjectId holder = database().namedObjectsDictionaryId(), id;
        if (folder)
            AcDbObjectPointer<AcDbDictionary>(holder)->getAt(folder, holder);
        auto* const object = new AcDbOpaqueObject;
        object->setFields(std::move(fields));
        const AcDbObjectPointer<AcDbDictionary> dictionary(holder, AcDb::kForWrite);
        EXPECT_EQ(dictionary->setAt(name, object, id), Acad::eOk);
        object->close();
        return id;
    }
    static AcDbOpaqueFields fields(const char* typeName, uint16_t type, const vndk::dwg::BitWriter& bits) {
        AcDbOpaqueFields made;
        made.typeName = typeName;
        made.fixedType = type;
        made.bits.assign(reinterpret_cast<const char*>(bits.data().data()), bits.data().size());
        made.bitCount = static_cast<uint32_t>(bits.position());
        return made;
    }
    /// Names of all records that aren't erased, of all tables that PURGE looks at but blocks, those of a new drawing
    /// aside.
    std::string named() {
        std::string text;
        for (const AcDbObjectId tableId :
             {database().layerTableId(), database().linetypeTableId(), database().textStyleTableId(),
              database().dimStyleTableId(), database().regAppTableId()}) {
            const AcDbObjectPointer<AcDbSymbolTable> table(tableId);
            for (const AcDbObjectId id : table->records()) {
                const AcDbObjectPointer<AcDbSymbolTableRecord> record(id);
                if (record && id.handle().value() > lastOfNewDrawing)
                    text += (text.empty() ? "" : " ") + record->name();
            }
        }
        return text;
    }
    /// What a file of the drawing has wrong: references to nothing, and which lists don't agree with what they list.
    std::set<std::string> faults() {
        const auto bytes = vndk::dwg::writeDrawing(database());
        if (!bytes)
            return {bytes.error().message};
        const auto image = vndk::dwg::FileImage::parse(*bytes, "purged");
        std::set<std::string> found = vndk::test::danglingReferences(**image);
        AcDbDatabase read(false);
        EXPECT_TRUE(vndk::dwg::readDrawing(read, *bytes, "purged"));
        for (const std::string& one : vndk::test::disagreements(read))
            found.insert(one.substr(0, one.find(" lists ")));
        return found;
    }
    void SetUp() override { lastOfNewDrawing = database().handseed().value() - 1; }
    uint64_t lastOfNewDrawing = 0;
};

} // namespace

TEST_F(PurgeTest, asksForEachNameAndTakesOutWhatIsConfirmed) {
    addLayer("Walls");
    addLayer("Doors");
    addLayer("Windows");
    run("PURGE LA w* Y Y N\n");
    EXPECT_TRUE(printed("Enter type of unused objects to purge\n"
                        "[Blocks/Dimstyles/LAyers/LTypes/SHapes/textSTyles/Mlinestyles/Regapps/All]: "))
        << output;
    EXPECT_TRUE(printed("Purge layer \"Walls\"? <N>: ")) << output;
    EXPECT_FALSE(printed("Doors")) << output;
    EXPECT_TRUE(printed("1 layer deleted.")) << output;
    EXPECT_EQ(named(), "Doors Windows");
    run("-PURGE LA\n\n\nN\n\nPURGE SH * N\n");
    EXPECT_EQ(named(), "Doors Windows") << "Enter is No";
    EXPECT_TRUE(printed("No unreferenced shape files found.")) << output;
    EXPECT_THAT(faults(), testing::IsEmpty());
}

TEST_F(PurgeTest, takesNestedOnesInOneRunAndOneUndoBringsThemBack) {
    run("LAYER M Steel\n\nCIRCLE 0,0 1\nLAYER S 0\n\nBLOCK BOLT 0,0 L\n\n");
    // An insertion of BOLT in a block that nothing inserts.
    const AcDbObjectId bolt = addRecord<AcDbBlockTable>(database().blockTableId(), "FRAME");
    {
        AcDbObjectId part;
        AcDbObjectPointer<AcDbBlockTable>(database().blockTableId())->getAt("BOLT", part);
        const AcDbObjectPointer<AcDbBlockTableRecord> frame(bolt, AcDb::kForWrite);
        auto* const reference = new AcDbBlockReference({1, 1, 0}, part);
        frame->appendAcDbEntity(reference);
        reference->close();
    }
    database().undo().clear();
    run("PURGE All * N\n");
    EXPECT_TRUE(printed("Deleting block \"FRAME\".")) << output;
    EXPECT_TRUE(printed("2 blocks deleted.")) << output;
    EXPECT_TRUE(printed("1 layer deleted.")) << output;
    EXPECT_EQ(blockContents("BOLT"), "no block");
    EXPECT_EQ(named(), "");
    EXPECT_THAT(faults(), testing::IsEmpty());
    run("U\n");
    EXPECT_EQ(blockContents("BOLT"), "CIRCLE 0,0 r 1");
    EXPECT_EQ(blockContents("FRAME"), "INSERT 1,1");
    EXPECT_EQ(named(), "Steel");
    EXPECT_THAT(faults(), testing::IsEmpty());
    run("REDO\n");
    EXPECT_EQ(blockContents("FRAME"), "no block");
    EXPECT_THAT(faults(), testing::IsEmpty());
}

TEST_F(PurgeTest, keepsWhateverAnythingRefersTo) {
    run("LINE 0,0 1,0\n\n");
    const AcDbObjectId line = AcDbObjectPointer<AcDbBlockTableRecord>(database().modelSpaceId())->entities()[0];
    AcDbObjectPointer<AcDbEntity>(line, AcDb::kForWrite)->setLayer(addLayer("DEFPOINTS"));
    AcDbObjectPointer<AcDbLayerTableRecord>(addLayer("Current"), AcDb::kForWrite)
        ->setLinetypeObjectId(addLinetype("OfLayer"));
    run("LAYER S Current\n\n");
    // Extended data: an application, a layer by its handle.
    const AcDbObjectId application = addRegApp("NOTES");
    {
        AcDbXDataGroup group;
        group.application = application;
        AcDbXDataWriter writer(group.items);
        writer.layer(addLayer("InXData").handle());
        const AcDbObjectPointer<AcDbObject> object(line, AcDb::kForWrite);
        object->packedXDataForWrite()->groups.push_back(group);
    }
    // A linetype's text stands in a style.
    AcDbLinetypeTableRecord::Data dashes;
    dashes.dashes.resize(1);
    dashes.dashes[0].style = addStyle("OfLinetype");
    const AcDbObjectId gas = addLinetype("Gas");
    AcDbObjectPointer<AcDbLinetypeTableRecord>(gas, AcDb::kForWrite)->setData(dashes);
    AcDbObjectPointer<AcDbEntity>(line, AcDb::kForWrite)->setLinetype(gas);
    // A reference behind the fields of an unmodelled object, and handles within an extension record.
    AcDbOpaqueFields group = fields("GROUP", 72, vndk::dwg::BitWriter());
    group.references.push_back({4, addLayer("InOpaque"), 0});
    addOpaque("G", group);
    vndk::dwg::BitWriter data;
    data.BL(21);
    data.RS(1);
    data.RS(2);
    data.RC(0);
    data.RC('h');
    data.RC('i');
    data.RS(70);
    data.RS(5);
    data.RS(340);
    data.RL(static_cast<uint32_t>(addStyle("InRecord", true).handle().value()));
    data.RL(0);
    data.BS(1);
    addOpaque("R", fields("XRECORD", 79, data));
    addLayer("Unused");
    addStyle("Unused");
    run("PURGE All * N\nPURGE Regapps * N\n");
    EXPECT_EQ(named(), "DEFPOINTS Current InXData InOpaque OfLayer Gas OfLinetype InRecord NOTES");
    EXPECT_THAT(faults(), testing::IsEmpty());
}

TEST_F(PurgeTest, keepsThePlacesByWhichMultilineStylesNameLinetypes) {
    addLinetype("First");
    addLinetype("Second");
    addLinetype("Third");
    vndk::dwg::BitWriter style;
    style.TV("ROAD");
    style.TV("");
    style.BS(0);
    style.BS(256);
    style.BD(1.5);
    style.BD(1.5);
    style.RC(1);
    style.BD(0.5);
    style.BS(256);
    style.BS(2); // behind Continuous and First
    addOpaque("Road", fields("MLINESTYLE", 73, style), "ACAD_MLINESTYLE");
    run("PURGE LT * N\n");
    EXPECT_EQ(named(), "First Second");
    run("PURGE Mlinestyles * N\n");
    EXPECT_TRUE(printed("Deleting multiline style \"Road\".")) << output;
    run("PURGE LT * N\n");
    EXPECT_EQ(named(), "");
    EXPECT_THAT(faults(), testing::IsEmpty());
}

TEST_F(PurgeTest, givingUpKeepsTheRestAndWhatIsOpenStays) {
    const AcDbObjectId held = addLayer("A");
    addLayer("B");
    addLayer("C");
    {
        const AcDbObjectPointer<AcDbLayerTableRecord> reader(held);
        run("PURGE LA * Y Y Y \x1B\n");
    }
    EXPECT_TRUE(printed("The layer \"A\" is in use just now.")) << output;
    EXPECT_EQ(named(), "A C");
    EXPECT_EQ(events.back(), "cancel PURGE");
    for (const char* script : {"PURGE \x1B\n", "PURGE LA \x1B\n", "PURGE LA * \x1B\n"})
        run(script);
    EXPECT_EQ(named(), "A C");
}

TEST_F(PurgeTest, realDrawingsStayWhole) {
    SKIP_WITHOUT_DRAWINGS();
    std::vector<std::string> paths = vndk::test::realDrawings("r2000");
    ASSERT_FALSE(paths.empty());
    const vndk::test::DrawingCopies copies;
    EXPECT_TRUE(vndk::win32::DriveMap::current().map('P', copies.folder()).ok());
    size_t purged = 0;
    for (const std::string& path : paths) {
        SCOPED_TRACE(path);
        run("CLOSE Y\nOPEN P:" + std::filesystem::path(copies.copy(path)).filename().string() + "\n");
        lastOfNewDrawing = 0;
        // Tables and spaces of these drawings own extension dictionaries, which they don't list.
        const std::string before = named();
        const std::set<std::string> faultsBefore = faults();
        run("PURGE All * N\nPURGE Regapps * N\n");
        EXPECT_FALSE(problem) << output;
        purged += named() != before;
        EXPECT_EQ(faults(), faultsBefore);
        run("U\nU\n");
        EXPECT_EQ(named(), before);
        run("REDO\nREDO\n");
    }
    EXPECT_GT(purged, 0u);
}
