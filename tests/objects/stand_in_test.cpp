// The form in which the objects stand in xdata: everything comes back, and nothing else is taken for it.
#include "objects/support.h"

#include <random>

namespace {

class StandInTest : public DatabaseTest {
protected:
    static std::string written(const AcDbStandIn& object) {
        std::string items;
        AcDbXDataWriter writer(items);
        object.writeStandIn(writer);
        return items;
    }
    template <class T>
    bool read(T& object, std::string_view items) {
        AcDbXDataReader reader(items);
        return object.readStandIn(reader, database);
    }

    /// One of each class, with as much in it as it can have.
    std::vector<std::string> samples() {
        const AcDbObjectId point = append(new AcDbPoint({1, 1, 1}));
        VNDKAttribute attribute;
        attribute.setTag("WIDTH");
        attribute.setTextString("900");
        attribute.setDefaultValue(std::string(600, 'd').c_str());
        attribute.setDefinitionId(AcDbSoftPointerId(point));
        attribute.setConditionalPoint1({1, 2, 3});
        attribute.AddFormula(newFormula("text = value & \" mm\""));
        attribute.CheckFormulaForStretch();
        VNDKAttributeDefinition definition;
        definition.setConditionalPoint2({4, 5, 6});
        definition.AddFormula(newFormula("stretch = value > 1"));
        VNDKBlockReference reference;
        reference.setOriginalBlockName("DESK");
        reference.appendAttribute(point);
        VNDKGripPoint grip;
        grip.setChildEntityIds({AcDbSoftPointerId(point)});
        return {written(attribute), written(definition), written(reference), written(grip)};
    }

    void tryAll(const std::string& items) {
        VNDKAttribute attribute;
        VNDKAttributeDefinition definition;
        VNDKBlockReference reference;
        VNDKGripPoint grip;
        read(attribute, items);
        read(definition, items);
        read(reference, items);
        read(grip, items);
    }
};

TEST_F(StandInTest, AnAttributeComesBackWhole) {
    const AcDbObjectId definition = append(new AcDbPoint({0, 0, 0}));
    VNDKAttribute before;
    const std::string text(255 * 3, 'x'); // whole pieces
    before.setTag("WIDTH");
    before.setDefaultValue(text.c_str());
    before.setPreset(1);
    before.setVerifiable(1);
    before.setFieldLength(12);
    before.setDefinitionId(AcDbSoftPointerId(definition));
    before.setConditionalPoint1({1, 2, 3});
    before.setConditionalPoint2({-4, 5e300, 6});
    before.AddFormula(newFormula("text = value & \" mm\""));
    before.AddFormula(newFormula("stretch = 1"));
    before.setTextString("9");
    ASSERT_EQ(before.CheckFormulaForStretch(), Acad::eOk);
    VNDKAttribute after;
    after.setTextString("9 mm"); // the text is the base class's
    ASSERT_TRUE(read(after, written(before)));
    EXPECT_EQ(after.tagValue(), "WIDTH");
    EXPECT_EQ(after.defaultText(), text);
    EXPECT_TRUE(after.isPreset() && after.isVerifiable());
    EXPECT_FALSE(after.isInvisible() || after.isConstant());
    EXPECT_EQ(after.fieldLength(), 12);
    EXPECT_EQ(after.definitionId(), definition);
    EXPECT_EQ(after.conditionalPoint2(), AcGePoint3d(-4, 5e300, 6));
    ASSERT_NE(after.formulas(), nullptr);
    EXPECT_EQ(after.formulas()->next->formula->text(), "stretch = 1");
    EXPECT_EQ(after.value(), "9") << "the value behind a text formula";
}

TEST_F(StandInTest, AReferenceLosesOnlyAttributesThatAreGone) {
    const AcDbObjectId kept = append(new AcDbPoint({0, 0, 0}));
    std::string items;
    AcDbXDataWriter writer(items);
    writer.int16(1);
    writer.int16(1);
    writer.text("DESK");
    writer.point(10, 1, 2, 3);
    writer.int32(3);
    writer.handle(AcDbHandle(0xFFFFFF));
    writer.handle(kept.handle());
    writer.handle(AcDbHandle(0));
    VNDKBlockReference reference;
    ASSERT_TRUE(read(reference, items));
    ASSERT_EQ(reference.attributeCount(), 1);
    EXPECT_EQ(reference.getAttribute(0), kept);
    EXPECT_EQ(reference.insBase(), AcGePoint3d(1, 2, 3));
}

TEST_F(StandInTest, NoErasedObjectIsNamed) {
    const AcDbObjectId kept = append(new AcDbPoint({0, 0, 0})), gone = append(new AcDbPoint({1, 0, 0}));
    VNDKAttribute attribute;
    attribute.setDefinitionId(AcDbSoftPointerId(gone));
    VNDKBlockReference reference;
    reference.appendAttribute(gone);
    reference.appendAttribute(kept);
    AcDbObjectPointer<AcDbPoint>(gone, AcDb::kForWrite)->erase();
    std::vector<uint64_t> named;
    for (const std::string& items : {written(attribute), written(reference)}) {
        AcDbXDataReader reader(items);
        for (AcDbXDataItem item; reader.next(item);)
            if (!item.handle.isNull())
                named.push_back(item.handle.value());
    }
    EXPECT_EQ(named, std::vector<uint64_t>{kept.handle().value()});
    VNDKBlockReference after;
    EXPECT_TRUE(read(after, written(reference)));
    EXPECT_EQ(after.attributeCount(), 1);
}

TEST_F(StandInTest, AnotherVersionOrAnythingBehindTheEndIsRefused) {
    for (std::string items : samples()) {
        std::string longer = items;
        AcDbXDataWriter(longer).int16(1);
        std::string newer = items;
        newer[1] = 2;
        for (const std::string& wrong : {longer, newer, std::string()}) {
            VNDKAttribute attribute;
            VNDKAttributeDefinition definition;
            VNDKBlockReference reference;
            VNDKGripPoint grip;
            EXPECT_FALSE(read(attribute, wrong) || read(definition, wrong) || read(reference, wrong) ||
                         read(grip, wrong));
        }
    }
}

TEST_F(StandInTest, EveryTruncationIsRefused) {
    for (const std::string& items : samples()) {
        for (size_t length = 0; length < items.size(); ++length) {
            const std::string cut = items.substr(0, length);
            VNDKAttribute attribute;
            VNDKAttributeDefinition definition;
            VNDKBlockReference reference;
            VNDKGripPoint grip;
            EXPECT_FALSE(read(attribute, cut) || read(definition, cut) || read(reference, cut) || read(grip, cut))
                << length;
        }
    }
}

TEST_F(StandInTest, ChangedBytesDoNoHarm) {
    std::mt19937 random(20260101);
    for (const std::string& items : samples()) {
        for (int round = 0; round < 4000; ++round) {
            std::string changed = items;
            for (int i = 0; i < 3; ++i)
                changed[random() % changed.size()] = static_cast<char>(random());
            tryAll(changed);
        }
    }
}

TEST_F(StandInTest, TheFullestObjectsFitIntoAFile) {
    constexpr size_t kRoom = 16383;
    const AcDbObjectId point = append(new AcDbPoint({0, 0, 0}));
    const std::string longest(VNDKAttribute::kMaxValueLength, 'x');
    VNDKAttribute attribute;
    attribute.setTag(std::string(255, 't').c_str());
    attribute.setDefaultValue(longest.c_str());
    attribute.setTextString(longest.c_str());
    attribute.AddFormula(newFormula(("text = \"" + std::string(900, 'a') + "\" & if(1, \"\", value)").c_str()));
    while (attribute.AddFormula(newFormula("text=value")) == Acad::eOk) {
    }
    ASSERT_EQ(attribute.CheckFormulaForStretch(), Acad::eOk);
    EXPECT_LT(written(attribute).size(), kRoom);
    VNDKBlockReference reference;
    reference.setOriginalBlockName(std::string(255, 'n').c_str());
    while (reference.appendAttribute(point) == Acad::eOk) {
    }
    EXPECT_LT(written(reference).size(), kRoom);
    VNDKGripPoint grip;
    const std::vector<AcDbSoftPointerId> most(VNDKGripPoint::kMaxChildren, AcDbSoftPointerId(point));
    grip.setChildEntityIds(most);
    grip.setFormulaChildEntityIds(most);
    EXPECT_LT(written(grip).size(), kRoom);
}

} // namespace
