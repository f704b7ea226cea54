// Intelligent Blocks in a file: they come back as what they were, and lose nothing where their classes aren't known.
#include "module/module_fixture.h"
#include "objects/grip_point.h"

#include <filesystem>

#include <unistd.h>

namespace {

class SavingTest : public ModuleTest {
protected:
    SavingTest() : folder(std::filesystem::temp_directory_path() / ("vndk_saving_" + std::to_string(getpid()))) {
        std::filesystem::create_directories(folder);
    }
    ~SavingTest() override { std::filesystem::remove_all(folder); }

    std::string path(const char* name) const { return (folder / name).string(); }

    static void readInto(AcDbDatabase& drawing, const std::string& file) {
        ASSERT_EQ(drawing.readDwgFile(file.c_str()), Acad::eOk) << drawing.lastFileError();
        EXPECT_TRUE(drawing.warnings().empty()) << drawing.warnings().front();
    }

    /// A block with a plain and a conditional definition, inserted once, and a grip point on it.
    void build() {
        const AcDbObjectId block = addBlock("DESK", {1, 2, 3});
        append(block, new AcDbAttributeDefinition({5, 5, 0}, "900", "WIDTH", "Width"));
        auto* const conditional = new VNDKAttributeDefinition;
        conditional->setTag("NOTE");
        conditional->setTextString("note");
        conditional->setConditionalPoint2({7, 8, 9});
        auto* const formula = new CCondFormula;
        ASSERT_EQ(formula->setText("stretch = value > 800"), Acad::eOk);
        conditional->AddFormula(formula);
        append(block, conditional);
        run("(c:_bInsert \"Desk\" (list 100.0 200.0 0.0))");
        auto* const grip = new VNDKGripPoint;
        grip->setPosition({105, 205, 0});
        grip->setInsBase({4, 5, 6});
        grip->setChildEntityIds({AcDbSoftPointerId(modelSpace()[1])});
        append(database().modelSpaceId(), grip);
    }

    static void expectIntelligent(AcDbDatabase& drawing) {
        const std::vector<AcDbObjectId> ids = entities(drawing.modelSpaceId());
        ASSERT_EQ(ids.size(), 3U);
        const AcDbObjectPointer<VNDKBlockReference> reference(ids[0]);
        ASSERT_TRUE(reference);
        EXPECT_STREQ(reference->originalBlockName(), "Desk");
        EXPECT_EQ(reference->insBase(), AcGePoint3d(1, 2, 3));
        EXPECT_EQ(reference->position(), AcGePoint3d(100, 200, 0));
        ASSERT_EQ(reference->attributeCount(), 1);
        EXPECT_EQ(reference->getAttribute(0), ids[1]);
        EXPECT_EQ(reference->xData(kVndkApplicationName), nullptr) << "the data are the object's again";
        const AcDbObjectPointer<VNDKAttribute> attribute(ids[1]);
        ASSERT_TRUE(attribute);
        EXPECT_EQ(attribute->tagValue(), "WIDTH");
        EXPECT_EQ(attribute->defaultText(), "900");
        EXPECT_EQ(attribute->position(), AcGePoint3d(105, 205, 0));
        const std::vector<AcDbObjectId> definitions = entities(reference->blockTableRecord());
        ASSERT_EQ(definitions.size(), 2U);
        EXPECT_EQ(attribute->definitionId(), definitions[0]);
        const AcDbObjectPointer<VNDKAttributeDefinition> conditional(definitions[1]);
        ASSERT_TRUE(conditional);
        EXPECT_EQ(conditional->tagValue(), "NOTE");
        EXPECT_EQ(conditional->conditionalPoint2(), AcGePoint3d(7, 8, 9));
        ASSERT_NE(conditional->formulaList.head(), nullptr);
        EXPECT_EQ(conditional->formulaList.head()->formula->text(), "stretch = value > 800");
        const AcDbObjectPointer<VNDKGripPoint> grip(ids[2]);
        ASSERT_TRUE(grip);
        EXPECT_EQ(grip->insBase(), AcGePoint3d(4, 5, 6));
        ASSERT_EQ(grip->childEntities().size(), 1U);
        EXPECT_EQ(grip->childEntities()[0], ids[1]);
    }

    static void expectOrdinary(AcDbDatabase& drawing) {
        const std::vector<AcDbObjectId> ids = entities(drawing.modelSpaceId());
        ASSERT_EQ(ids.size(), 3U);
        const AcDbObjectPointer<AcDbBlockReference> reference(ids[0]);
        ASSERT_TRUE(reference);
        EXPECT_EQ(reference->isA(), AcDbBlockReference::desc());
        EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(ids[1])->isA(), AcDbText::desc());
        EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(ids[2])->isA(), AcDbPoint::desc());
        const std::vector<AcDbObjectId> definitions = entities(reference->blockTableRecord());
        EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(definitions.at(1))->isA(), AcDbAttributeDefinition::desc());
    }

    void unloadAll() {
        while (host.documents().curDocument())
            host.documents().closeDocument(host.documents().curDocument());
        ASSERT_TRUE(acrxUnloadModule("VNDKKeldmoor.arx"));
        ASSERT_EQ(acdbFindStandIn(kVndkApplicationName, "VNDKAttribute"), nullptr);
    }

    std::filesystem::path folder;
};

TEST_F(SavingTest, ComeBackAsTheyWereInTheSameSession) {
    build();
    ASSERT_EQ(database().saveAs(path("a.dwg").c_str()), Acad::eOk) << database().lastFileError();
    AcDbDatabase drawing(false);
    readInto(drawing, path("a.dwg"));
    expectIntelligent(drawing);
}

TEST_F(SavingTest, ArePlainEntitiesWithoutTheLibraryAndComeBackWithIt) {
    build();
    ASSERT_EQ(database().saveAs(path("a.dwg").c_str()), Acad::eOk) << database().lastFileError();
    unloadAll();
    {
        AcDbDatabase drawing(false);
        readInto(drawing, path("a.dwg"));
        expectOrdinary(drawing);
        // Whoever edits the text there keeps what hangs on it.
        const AcDbObjectId text = entities(drawing.modelSpaceId())[1];
        { AcDbObjectPointer<AcDbText>(text, AcDb::kForWrite)->setTextString("1000"); }
        ASSERT_EQ(drawing.saveAs(path("b.dwg").c_str()), Acad::eOk) << drawing.lastFileError();
    }
    loadModule();
    AcDbDatabase drawing(false);
    readInto(drawing, path("b.dwg"));
    expectIntelligent(drawing);
    EXPECT_EQ(AcDbObjectPointer<AcDbText>(entities(drawing.modelSpaceId())[1])->textValue(), "1000");
}

TEST_F(SavingTest, WhatAnotherProgramErasedIsMissedWithoutHarm) {
    build();
    ASSERT_EQ(database().saveAs(path("a.dwg").c_str()), Acad::eOk);
    unloadAll();
    {
        AcDbDatabase drawing(false);
        readInto(drawing, path("a.dwg"));
        { AcDbObjectPointer<AcDbText>(entities(drawing.modelSpaceId())[1], AcDb::kForWrite)->erase(); }
        ASSERT_EQ(drawing.saveAs(path("b.dwg").c_str()), Acad::eOk);
    }
    loadModule();
    AcDbDatabase drawing(false);
    readInto(drawing, path("b.dwg"));
    const AcDbObjectPointer<VNDKBlockReference> reference(entities(drawing.modelSpaceId())[0]);
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->attributeCount(), 0);
}

} // namespace
