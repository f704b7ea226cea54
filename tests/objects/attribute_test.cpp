// What formulas do to an attribute.
#include "objects/support.h"

namespace {

using AttributeTest = DatabaseTest;

TEST_F(AttributeTest, FormulasMoveAndResizeTheText) {
    const struct {
        const char* value;
        std::initializer_list<const char*> formulas;
        Acad::ErrorStatus status;
        AcGePoint3d position;
        double width, height;
    } cases[] = {
        {"900", {}, Acad::eOk, {1, 2, 0}, 1, 2.5},
        {"900", {"stretch = value > 800"}, Acad::eOk, {20, 10, 0}, 1, 2.5},
        {"700", {"stretch = value > 800"}, Acad::eOk, {10, 0, 0}, 1, 2.5},
        {"700", {"stretch = (value-600)/400"}, Acad::eOk, {12.5, 2.5, 0}, 1, 2.5},
        {"-50", {"stretch = value"}, Acad::eOk, {10, 0, 0}, 1, 2.5},
        {"50", {"stretch = value"}, Acad::eOk, {20, 10, 0}, 1, 2.5},
        {"4", {"width = 2/value", "height = value*3"}, Acad::eOk, {1, 2, 0}, 0.5, 12},
        // A failure is told, and doesn't keep the others from their work.
        {"abc", {"stretch = value", "height = 5"}, Acad::eInvalidInput, {1, 2, 0}, 1, 5},
        {"0", {"width = value", "height = -1", "stretch = 1"}, Acad::eInvalidInput, {20, 10, 0}, 1, 2.5},
        {"0", {"height = 1/value"}, Acad::eOutOfRange, {1, 2, 0}, 1, 2.5},
        {"1", {"height = [NOSUCH]"}, Acad::eKeyNotFound, {1, 2, 0}, 1, 2.5},
    };
    for (const auto& row : cases) {
        const std::string name = std::string(row.value) + (row.formulas.size() ? *row.formulas.begin() : "");
        VNDKAttribute* const attribute = newAttribute("SIZE", row.value, row.formulas);
        attribute->setPosition({1, 2, 0});
        const AcDbObjectId id = append(attribute);
        const AcDbObjectPointer<VNDKAttribute> open(id, AcDb::kForWrite);
        EXPECT_EQ(open->CheckFormulaForStretch(), row.status) << name;
        EXPECT_EQ(open->position(), row.position) << name;
        EXPECT_EQ(open->widthFactor(), row.width) << name;
        EXPECT_EQ(open->height(), row.height) << name;
    }
}

TEST_F(AttributeTest, AJustifiedTextGoesByItsAlignmentPoint) {
    VNDKAttribute* const attribute = newAttribute("A", "1", {"stretch = value"});
    attribute->setHorizontalMode(AcDb::kTextCenter);
    attribute->setPosition({2, 3, 0});
    attribute->setAlignmentPoint({5, 3, 0});
    const AcDbObjectPointer<VNDKAttribute> open(append(attribute), AcDb::kForWrite);
    EXPECT_EQ(open->CheckFormulaForStretch(), Acad::eOk);
    EXPECT_EQ(open->alignmentPoint(), AcGePoint3d(20, 10, 0));
    EXPECT_EQ(open->position(), AcGePoint3d(17, 10, 0));
}

TEST_F(AttributeTest, ATextFormulaWorksOnTheValueHoweverOftenItRuns) {
    const AcDbObjectPointer<VNDKAttribute> open(append(newAttribute("A", "7", {"text = value & \" mm\""})),
                                                AcDb::kForWrite);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(open->CheckFormulaForStretch(), Acad::eOk);
        EXPECT_EQ(open->textValue(), "7 mm");
        EXPECT_EQ(open->value(), "7");
        EXPECT_EQ(open->defaultText(), "7") << "the default value is the user's";
    }
    open->setTextString("8");
    EXPECT_EQ(open->value(), "8");
    EXPECT_EQ(open->CheckFormulaForStretch(), Acad::eOk);
    EXPECT_EQ(open->textValue(), "8 mm");
}

TEST_F(AttributeTest, ATextThatFormulasMakeEmptyKeepsItsValue) {
    const AcDbObjectPointer<VNDKAttribute> open(
        append(newAttribute("A", "0", {"text = if(value = 0, \"\", value)", "height = value + 1"})), AcDb::kForWrite);
    EXPECT_EQ(open->CheckFormulaForStretch(), Acad::eOk);
    EXPECT_EQ(open->CheckFormulaForStretch(), Acad::eOk);
    EXPECT_EQ(open->textValue(), "");
    EXPECT_EQ(open->value(), "0");
    EXPECT_EQ(open->height(), 1);
}

TEST_F(AttributeTest, ATextThatWouldBeTooLongForAFileIsRefused) {
    const std::string most(VNDKAttribute::kMaxValueLength, 'x');
    const AcDbObjectPointer<VNDKAttribute> open(append(newAttribute("A", most.c_str(), {"text = value & value"})),
                                                AcDb::kForWrite);
    EXPECT_EQ(open->CheckFormulaForStretch(), Acad::eOutOfRange);
    EXPECT_EQ(open->textValue(), most);
    EXPECT_EQ(open->setDefaultValue((most + "x").c_str()), Acad::eOutOfRange);
    EXPECT_EQ(open->defaultText(), most);
}

TEST_F(AttributeTest, FormulasSeeTheOtherAttributesOfTheirReferenceAlone) {
    // Two references with their attributes behind each other, as insertion leaves them.
    append(new VNDKBlockReference);
    append(newAttribute("WIDTH", "100"));
    const AcDbObjectId first = append(newAttribute("AREA", "", {"text = [width] * [DEPTH]"}));
    append(newAttribute("DEPTH", "3"));
    append(new VNDKBlockReference);
    append(newAttribute("WIDTH", "200"));
    const AcDbObjectId second = append(newAttribute("AREA", "", {"text = [WIDTH] * 2", "height = [DEPTH]"}));

    const AcDbObjectPointer<VNDKAttribute> one(first, AcDb::kForWrite);
    EXPECT_EQ(one->CheckFormulaForStretch(), Acad::eOk);
    EXPECT_EQ(one->textValue(), "300");
    const AcDbObjectPointer<VNDKAttribute> two(second, AcDb::kForWrite);
    EXPECT_EQ(two->CheckFormulaForStretch(), Acad::eKeyNotFound) << "DEPTH is the first reference's";
    EXPECT_EQ(two->textValue(), "400");
}

TEST_F(AttributeTest, FormulasWorkWhileTheSpaceAndTheReferenceAreOpenForWrite) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    auto* const reference = new VNDKBlockReference;
    ASSERT_EQ(space->appendAcDbEntity(reference), Acad::eOk);
    VNDKAttribute* const width = newAttribute("WIDTH", "100");
    ASSERT_EQ(space->appendAcDbEntity(width), Acad::eOk);
    width->close();
    VNDKAttribute* const twice = newAttribute("TWICE", "", {"text = 2*[WIDTH]"});
    ASSERT_EQ(space->appendAcDbEntity(twice), Acad::eOk);
    EXPECT_EQ(twice->CheckFormulaForStretch(), Acad::eOk);
    EXPECT_EQ(twice->textValue(), "200");
    twice->close();
    reference->close();
}

TEST_F(AttributeTest, AnErasedSiblingHasNoValue) {
    append(new VNDKBlockReference);
    const AcDbObjectId gone = append(newAttribute("WIDTH", "100"));
    const AcDbObjectId id = append(newAttribute("A", "", {"text = [WIDTH]"}));
    { AcDbObjectPointer<VNDKAttribute>(gone, AcDb::kForWrite)->erase(); }
    const AcDbObjectPointer<VNDKAttribute> open(id, AcDb::kForWrite);
    EXPECT_EQ(open->CheckFormulaForStretch(), Acad::eKeyNotFound);
}

TEST_F(AttributeTest, OpenForReadNothingChanges) {
    const AcDbObjectId id = append(newAttribute("A", "1", {"stretch = 1"}));
    const AcDbObjectPointer<VNDKAttribute> open(id, AcDb::kForRead);
    EXPECT_EQ(open->CheckFormulaForStretch(), Acad::eNotOpenForWrite);
    EXPECT_EQ(open->setTag("B"), Acad::eNotOpenForWrite);
    EXPECT_EQ(open->AddFormula(newFormula("text = 1")), Acad::eNotOpenForWrite);
    EXPECT_EQ(open->setConditionalPoint1({1, 1, 1}), Acad::eNotOpenForWrite);
    EXPECT_EQ(open->tagValue(), "A");
    EXPECT_EQ(open->conditionalPoint1(), AcGePoint3d(10, 0, 0));
}

TEST_F(AttributeTest, UndoBringsBackTextPointsAndFormulas) {
    const AcDbObjectId id = append(newAttribute("A", "1", {"text = value & value"}));
    database.undo().beginGroup("CHANGE");
    {
        const AcDbObjectPointer<VNDKAttribute> open(id, AcDb::kForWrite);
        open->AddFormula(newFormula("height = 9"));
        open->setConditionalPoint1({-1, -1, -1});
        open->CheckFormulaForStretch();
        EXPECT_EQ(open->height(), 9);
    }
    database.undo().endGroup();
    ASSERT_TRUE(database.undo().undo());
    {
        const AcDbObjectPointer<VNDKAttribute> open(id, AcDb::kForRead);
        EXPECT_EQ(open->height(), 2.5);
        EXPECT_EQ(open->textValue(), "1");
        EXPECT_EQ(open->conditionalPoint1(), AcGePoint3d(10, 0, 0));
        ASSERT_NE(open->formulas(), nullptr);
        EXPECT_EQ(open->formulas()->next, nullptr);
    }
    ASSERT_TRUE(database.undo().redo());
    const AcDbObjectPointer<VNDKAttribute> open(id, AcDb::kForRead);
    EXPECT_EQ(open->textValue(), "11");
    EXPECT_EQ(open->value(), "1");
}

TEST_F(AttributeTest, InvisibleIsHiddenAndOnlyThisModeBringsItBack) {
    const AcDbObjectPointer<VNDKAttribute> open(append(newAttribute("A", "1")), AcDb::kForWrite);
    open->setInvisible(1);
    open->setInvisible(1);
    EXPECT_EQ(open->visibility(), AcDb::kInvisible);
    open->setInvisible(0);
    EXPECT_EQ(open->visibility(), AcDb::kVisible);
    open->setVisibility(AcDb::kInvisible);
    open->setInvisible(0);
    EXPECT_EQ(open->visibility(), AcDb::kInvisible) << "it was hidden for another reason";
}

TEST_F(AttributeTest, MovingTakesTheConditionalPointsAlong) {
    const AcDbObjectPointer<VNDKAttribute> open(append(newAttribute("A", "1", {"stretch = value"})), AcDb::kForWrite);
    ASSERT_EQ(open->transformBy(AcGeMatrix3d::translation({100, 0, 0})), Acad::eOk);
    EXPECT_EQ(open->CheckFormulaForStretch(), Acad::eOk);
    EXPECT_EQ(open->position(), AcGePoint3d(120, 10, 0));
}

} // namespace
