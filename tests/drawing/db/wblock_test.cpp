// Drawings that are made of a part of another, and what their files hold.
#include "database_fixture.h"

#include "db/id_mapping.h"
#include "db/opaque.h"
#include "db/polylines.h"
#include "drawing/dwg/file_audit.h"
#include "dwg/drawing_writer.h"
#include "support/drawings.h"

#include <gmock/gmock.h>

#include <memory>

namespace {

using Records = std::vector<std::string>;

/// The names of a table's records that aren't erased, sorted.
Records names(AcDbObjectId tableId) {
    Records found;
    const AcDbObjectPointer<AcDbSymbolTable> table(tableId);
    for (const AcDbObjectId id : table->records())
        if (const AcDbObjectPointer<AcDbSymbolTableRecord> record(id); record)
            found.push_back(record->name());
    std::sort(found.begin(), found.end());
    return found;
}

class EventLog : public AcRxEventReactor {
public:
    EventLog() { acrxEventReactors().add(this); }
    ~EventLog() override { acrxEventReactors().remove(this); }

    void wblockNotice(AcDbDatabase*) override { text += "notice "; }
    void beginWblock(AcDbDatabase*, AcDbDatabase*, const AcGePoint3d& p) override {
        text += "begin(" + std::to_string(static_cast<int>(p.x)) + ") ";
    }
    void beginWblock(AcDbDatabase*, AcDbDatabase* from, AcDbObjectId block) override {
        text += block.database() == from ? "begin(block) " : "begin(?) ";
    }
    void beginWblock(AcDbDatabase* to, AcDbDatabase* from) override {
        text += to != from ? "begin(all) " : "begin(?) ";
    }
    void otherWblock(AcDbDatabase*, AcDbIdMapping& mapping, AcDbDatabase* from) override {
        text += mapping.origDb() == from && !mapping.pairs().empty() ? "other " : "other(?) ";
    }
    void abortWblock(AcDbDatabase*) override { text += "abort "; }
    void endWblock(AcDbDatabase*) override { text += "end "; }
    void beginDeepClone(AcDbDatabase*, AcDbIdMapping&) override { text += "clone "; }
    void beginDeepCloneXlation(AcDbIdMapping&) override { text += "translate "; }
    void abortDeepClone(AcDbIdMapping&) override { text += "abortClone "; }
    void endDeepClone(AcDbIdMapping&) override { text += "cloned "; }

    std::string text;
};

class Wblock : public DatabaseTest {
protected:
    Wblock() {
        steel = addRecord<AcDbLayerTable>(database.layerTableId(), new AcDbLayerTableRecord, "Steel");
        addRecord<AcDbLayerTable>(database.layerTableId(), new AcDbLayerTableRecord, "Unused");
        bolt = addBlock("BOLT");
        onSteel(append(new AcDbCircle({0, 0, 0}, {0, 0, 1}, 2), bolt));
        frame = addBlock("FRAME");
        append(new AcDbBlockReference({1, 0, 0}, bolt), frame);
        reference = append(new AcDbBlockReference({5, 5, 0}, frame));
        line = appendLine();
    }
    void onSteel(AcDbObjectId id) { AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite)->setLayer(steel); }

    AcDbObjectId addOpaque() {
        auto* const body = new AcDbOpaqueEntity;
        AcDbOpaqueFields fields;
        fields.typeName = "RAY";
        fields.fixedType = 40;
        body->setFields(fields);
        return append(body);
    }
    template <class... Source>
    std::unique_ptr<AcDbDatabase> written(const Source&... source) {
        AcDbDatabase* made = nullptr;
        status = database.wblock(made, source...);
        EXPECT_EQ(made != nullptr, status == Acad::eOk);
        return std::unique_ptr<AcDbDatabase>(made);
    }
    /// The drawing as its file has it; what the file has wrong, apart from what is known, fails the test.
    static std::unique_ptr<AcDbDatabase> throughFile(AcDbDatabase& drawing, const Records& known = {}) {
        auto bytes = vndk::dwg::writeDrawing(drawing);
        EXPECT_TRUE(bytes);
        const auto image = vndk::dwg::FileImage::parse(*bytes, "written");
        EXPECT_TRUE(image);
        EXPECT_EQ(vndk::test::danglingReferences(**image), std::set<std::string>());
        auto read = std::make_unique<AcDbDatabase>(false);
        EXPECT_TRUE(vndk::dwg::readDrawing(*read, *bytes, "written"));
        EXPECT_THAT(vndk::test::disagreements(*read), testing::UnorderedElementsAreArray(known));
        return read;
    }
    static std::vector<AcDbObjectId> space(const AcDbDatabase& drawing) {
        return AcDbObjectPointer<AcDbBlockTableRecord>(drawing.modelSpaceId())->entities();
    }

    AcDbObjectId steel, bolt, frame, reference, line;
    Acad::ErrorStatus status = Acad::eOk;
};

} // namespace

TEST_F(Wblock, ObjectsTakeAlongWhatTheyNeedAndStandAtTheirBasePoint) {
    const auto made = written(std::vector<AcDbObjectId>{reference, line}, AcGePoint3d(5, 4, 0));
    ASSERT_TRUE(made);
    const auto read = throughFile(*made);
    EXPECT_EQ(names(read->blockTableId()), (Records{"*Model_Space", "*Paper_Space", "BOLT", "FRAME"}));
    EXPECT_EQ(names(read->layerTableId()), (Records{"0", "Steel"}));
    EXPECT_EQ(read->insbase(), AcGePoint3d::kOrigin);
    const auto entities = space(*read);
    ASSERT_EQ(entities.size(), 2u);
    EXPECT_EQ(AcDbObjectPointer<AcDbBlockReference>(entities[0])->position(), AcGePoint3d(0, 1, 0));
    EXPECT_EQ(AcDbObjectPointer<AcDbLine>(entities[1])->startPoint(), AcGePoint3d(-5, -4, 0));
    EXPECT_EQ(count(), 2u) << "the drawing itself stays as it is";
    EXPECT_EQ(AcDbObjectPointer<AcDbLine>(line)->startPoint(), AcGePoint3d::kOrigin);
    expectAllClosed(*made);
}

TEST_F(Wblock, TheCurrentAxesBecomeTheNewWorld) {
    database.changeHeader("UCSXDIR", [](auto& header) {
        header.UCSORG = {100, 0, 0};
        header.UCSXDIR = {0, 1, 0};
        header.UCSYDIR = {-1, 0, 0};
    });
    const auto made = written(std::vector<AcDbObjectId>{line}, AcGePoint3d::kOrigin);
    ASSERT_TRUE(made);
    EXPECT_TRUE(AcDbObjectPointer<AcDbLine>(space(*made)[0])->endPoint().isEqualTo(AcGePoint3d(1, -1, 0)));
    EXPECT_EQ(made->header().UCSXDIR, (vndk::dwg::Point3{1, 0, 0}));
}

TEST_F(Wblock, ObjectsThatCantBeMovedStayAndTheBasePointIsTold) {
    const AcDbObjectId body = addOpaque();
    auto made = written(std::vector<AcDbObjectId>{line, body}, AcGePoint3d(3, 0, 0));
    ASSERT_TRUE(made);
    EXPECT_EQ(made->insbase(), AcGePoint3d(3, 0, 0));
    EXPECT_EQ(AcDbObjectPointer<AcDbLine>(space(*made)[0])->startPoint(), AcGePoint3d::kOrigin);
    database.changeHeader("UCSXDIR", [](auto& header) {
        header.UCSXDIR = {0, 1, 0};
        header.UCSYDIR = {-1, 0, 0};
    });
    EventLog log;
    made = written(std::vector<AcDbObjectId>{line, body}, AcGePoint3d(3, 0, 0));
    EXPECT_EQ(status, Acad::eNotApplicable);
    EXPECT_EQ(log.text, "notice begin(3) clone translate abortClone abort ");
}

TEST_F(Wblock, SettingsAndStandardRecordsAreThoseOfTheDrawing) {
    AcDbTextStyleTableRecord::Data style;
    style.fileName = "romans.shx";
    AcDbObjectPointer<AcDbTextStyleTableRecord>(database.textstyle(), AcDb::kForWrite)->setData(style);
    AcDbObjectPointer<AcDbLayerTableRecord>(database.clayer(), AcDb::kForWrite)->setColor(3);
    const AcDbObjectId dashed =
        addRecord<AcDbLinetypeTable>(database.linetypeTableId(), new AcDbLinetypeTableRecord, "Dashed");
    AcDbObjectPointer<AcDbLayerTableRecord>(database.clayer(), AcDb::kForWrite)->setLinetypeObjectId(dashed);
    database.setClayer(steel);
    const std::string identity = database.header().FINGERPRINTGUID;
    database.changeHeader("LTSCALE", [](auto& header) {
        header.LTSCALE = 7;
        header.TILEMODE = false;
        header.INSBASE = {9, 9, 9};
    });
    for (const bool withSteel : {false, true}) {
        const auto made = written(std::vector<AcDbObjectId>{withSteel ? reference : line}, AcGePoint3d::kOrigin);
        ASSERT_TRUE(made);
        const auto read = throughFile(*made);
        EXPECT_EQ(read->header().LTSCALE, 7);
        EXPECT_TRUE(read->header().TILEMODE);
        EXPECT_EQ(read->insbase(), AcGePoint3d::kOrigin);
        EXPECT_NE(read->header().FINGERPRINTGUID, identity);
        EXPECT_EQ(AcDbObjectPointer<AcDbTextStyleTableRecord>(read->textstyle())->data().fileName, "romans.shx");
        EXPECT_EQ(AcDbObjectPointer<AcDbLayerTableRecord>(read->clayer())->name(), withSteel ? "Steel" : "0");
        EXPECT_EQ(names(read->linetypeTableId()), (Records{"ByBlock", "ByLayer", "Continuous", "Dashed"}));
    }
}

TEST_F(Wblock, ABlockBecomesTheModelSpaceOfItsDrawing) {
    AcDbObjectPointer<AcDbBlockTableRecord>(frame, AcDb::kForWrite)->setOrigin({1, 2, 0});
    EventLog log;
    const auto made = written(frame);
    ASSERT_TRUE(made);
    EXPECT_EQ(log.text, "notice begin(block) clone translate other cloned end ");
    const auto read = throughFile(*made);
    EXPECT_EQ(read->insbase(), AcGePoint3d(1, 2, 0));
    EXPECT_EQ(names(read->blockTableId()), (Records{"*Model_Space", "*Paper_Space", "BOLT"}));
    const auto entities = space(*read);
    ASSERT_EQ(entities.size(), 1u);
    EXPECT_EQ(AcDbObjectPointer<AcDbBlockReference>(entities[0])->position(), AcGePoint3d(1, 0, 0));
}

TEST_F(Wblock, TheWholeDrawingLosesOnlyWhatNothingNeeds) {
    addRecord<AcDbRegAppTable>(database.regAppTableId(), new AcDbRegAppTableRecord, "NOBODY");
    const AcDbObjectId box = addBlock("BOX"), inner = addBlock("INNER");
    append(new AcDbBlockReference({0, 0, 0}, inner), box);
    EventLog log;
    const auto made = written();
    ASSERT_TRUE(made);
    EXPECT_EQ(log.text, "notice begin(all) clone translate other cloned end ");
    const auto read = throughFile(*made);
    EXPECT_EQ(names(read->blockTableId()), (Records{"*Model_Space", "*Paper_Space", "BOLT", "FRAME"}));
    EXPECT_EQ(names(read->layerTableId()), (Records{"0", "Steel"}));
    EXPECT_EQ(names(read->regAppTableId()), (Records{"ACAD"}));
    EXPECT_EQ(space(*read).size(), 2u);
    EXPECT_EQ(space(*read)[0].handle(), reference.handle());
    EXPECT_TRUE(AcDbObjectPointer<AcDbBlockTable>(database.blockTableId())->has("BOX"));
}

TEST_F(Wblock, WhatIsNoEntityOfTheDrawingIsRefused) {
    AcDbDatabase other, empty(false);
    AcDbDatabase* made = nullptr;
    written(std::vector<AcDbObjectId>{steel}, AcGePoint3d());
    EXPECT_EQ(status, Acad::eNotThatKindOfClass);
    EXPECT_EQ(other.wblock(made, {line}, AcGePoint3d()), Acad::eWrongDatabase);
    EXPECT_EQ(other.wblock(made, frame), Acad::eWrongDatabase);
    EXPECT_EQ(empty.wblock(made), Acad::eNoDatabase);
    EXPECT_EQ(made, nullptr);
    written(line);
    EXPECT_EQ(status, Acad::eNotThatKindOfClass);
}

TEST_F(Wblock, RealDrawingsComeOutInOnePieceInEachForm) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& path : vndk::test::realDrawings("r2000")) {
        SCOPED_TRACE(path);
        AcDbDatabase drawing(false);
        ASSERT_EQ(drawing.readDwgFile(path.c_str()), Acad::eOk);
        const auto expectWhole = [&](AcDbDatabase* made, const Records& known = {}) {
            const std::unique_ptr<AcDbDatabase> output(made);
            ASSERT_TRUE(output);
            throughFile(*output, known);
            expectAllClosed(drawing);
        };
        AcDbDatabase* made = nullptr;
        drawing.wblock(made);
        // Tables and spaces of these drawings own extension dictionaries, which they don't list.
        expectWhole(made, vndk::test::disagreements(drawing));
        const auto entities = AcDbObjectPointer<AcDbBlockTableRecord>(drawing.modelSpaceId())->entities();
        EXPECT_EQ(drawing.wblock(made, entities, AcGePoint3d(1, 2, 3)), Acad::eOk);
        expectWhole(made);
        for (const std::string& name : names(drawing.blockTableId())) {
            AcDbObjectId block;
            AcDbObjectPointer<AcDbBlockTable>(drawing.blockTableId())->getAt(name.c_str(), block);
            EXPECT_EQ(drawing.wblock(made, block), Acad::eOk) << name;
            expectWhole(made);
        }
    }
}
