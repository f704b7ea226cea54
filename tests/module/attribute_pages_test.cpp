// The editor's faces "Text Options" and "Properties", by events, to the saved file.
#include "module/enhanced_attribute_fixture.h"

#include "gs/manager.h"

#include <algorithm>

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180;

/// Runs each case on a plain and on an Intelligent reference.
class AttributePages : public EnhancedAttributeTest, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        EnhancedAttributeTest::SetUp();
        define("FIRST", "one", [](AcDbAttributeDefinition& definition) { definition.setPosition({10, 20, 0}); });
        define("SECOND", "two", [](AcDbAttributeDefinition& definition) { definition.setPosition({30, 40, 0}); });
        reference = GetParam() ? addIntelligent() : addFromBlock();
    }

    /// Opens the editor on the first row and turns to a face.
    std::string on(Face face, const std::function<void(UserScript&)>& steps) {
        return edit("EATTEDIT (entnext)", [&](UserScript& user) {
            openValue(user, 0);
            show(user, face);
            steps(user);
            click(user, IDCANCEL);
        });
    }
    AcDbObjectPointer<AcDbText> first() { return AcDbObjectPointer<AcDbText>(attributeOf(reference, 0)); }
    AcDbObjectId layer(const std::string& name) {
        const AcDbObjectPointer<AcDbLayerTable> table(database().layerTableId(), AcDb::kForWrite);
        auto* const record = new AcDbLayerTableRecord;
        EXPECT_EQ(record->setName(name.c_str()), Acad::eOk);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        return id;
    }
    AcDbObjectId linetype(const std::string& name) {
        const AcDbObjectPointer<AcDbLinetypeTable> table(database().linetypeTableId(), AcDb::kForWrite);
        auto* const record = new AcDbLinetypeTableRecord;
        EXPECT_EQ(record->setName(name.c_str()), Acad::eOk);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        return id;
    }
    /// The first attribute in the saved file.
    void inFile(const std::function<void(const AcDbText&)>& look) {
        reread([&](AcDbDatabase& drawing) {
            const AcDbObjectPointer<AcDbText> text(attributeOf(referenceIn(drawing), 0));
            ASSERT_TRUE(text);
            look(*text);
        });
    }
    static std::string nameOf(AcDbObjectId record) { return AcDbObjectPointer<AcDbSymbolTableRecord>(record)->name(); }

    AcDbObjectId reference;
};

INSTANTIATE_TEST_SUITE_P(Kinds, AttributePages, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "Intelligent" : "Plain"; });

TEST_P(AttributePages, NumbersAreWrittenWhenTheirBoxIsLeft) {
    on(kTextOptions, [&](UserScript& user) {
        user.expect("shown in the drawing's units", [] {
            return text(kHeight) == "2.5000" && text(kRotation) == "0" && text(kWidthFactor) == "1.0000" &&
                   text(kOblique) == "0";
        });
        write(user, kHeight, "3.75");
        user.expect("at once, and Apply is enabled", [&] { return first()->height() == 3.75 && isEnabled(kApply); });
        write(user, kRotation, "30");
        write(user, kWidthFactor, ".8");
        write(user, kOblique, "15");
        click(user, kBackwards);
        click(user, kUpsideDown);
    });
    inFile([](const AcDbText& text) {
        EXPECT_EQ(text.height(), 3.75);
        EXPECT_NEAR(text.rotation(), 30 * kDegree, 1e-12);
        EXPECT_EQ(text.widthFactor(), 0.8);
        EXPECT_NEAR(text.oblique(), 15 * kDegree, 1e-12);
        EXPECT_TRUE(text.isMirroredInX());
        EXPECT_TRUE(text.isMirroredInY());
    });
    on(kTextOptions, [&](UserScript& user) {
        user.expect("and shown again", [] {
            return text(kHeight) == "3.7500" && text(kRotation) == "30" && text(kWidthFactor) == "0.8000" &&
                   text(kOblique) == "15" && isChecked(kBackwards) && isChecked(kUpsideDown);
        });
        click(user, kBackwards);
    });
    EXPECT_FALSE(first()->isMirroredInX());
    EXPECT_EQ(AcDbObjectPointer<AcDbText>(attributeOf(reference, 1))->height(), 2.5) << "the other row";
}

TEST_P(AttributePages, WhatIsNoNumberLeavesTheAttributeAndComesBackAsItsValue) {
    on(kTextOptions, [&](UserScript& user) {
        write(user, kHeight, "tall");
        user.expect("nothing to apply", [] { return text(kHeight) == "2.5000" && !isEnabled(kApply); });
        for (const char* wrong : {"1 2 3", "\b", "0", "-2.5", "1e999", "1e308'", "5x"}) {
            write(user, kHeight, wrong);
            user.expect(std::string("the present height instead of \"") + wrong + "\"",
                        [] { return text(kHeight) == "2.5000"; });
        }
        write(user, kRotation, "steep");
        user.expect("the present angle", [] { return text(kRotation) == "0"; });
        write(user, kWidthFactor, "0");
        user.expect("the present factor", [] { return text(kWidthFactor) == "1.0000"; });
    });
    EXPECT_EQ(first()->height(), 2.5);
    EXPECT_EQ(first()->rotation(), 0);
    EXPECT_EQ(first()->widthFactor(), 1);
}

TEST_P(AttributePages, LeavingAnUntouchedBoxWritesItsRoundedText) {
    { AcDbObjectPointer<AcDbText>(attributeOf(reference, 0), AcDb::kForWrite)->setHeight(2.123456); }
    on(kTextOptions, [&](UserScript& user) {
        click(user, kHeight);
        user.press(VK_TAB);
    });
    EXPECT_EQ(first()->height(), 2.1235);
}

TEST_P(AttributePages, AnotherTabLeavesTheBoxEnterAndEscapeDoNothing) {
    on(kTextOptions, [&](UserScript& user) {
        click(user, kHeight);
        user.call([] { ::SendMessageA(control(kHeight), EM_SETSEL, 0, -1); });
        user.type("4").press(VK_RETURN).press(VK_ESCAPE);
        user.expect("nothing happened", [] { return editor() && text(kHeight) == "4" && !isEnabled(kApply); });
        show(user, kProperties);
        user.expect("the box was left", [] { return isEnabled(kApply); });
        click(user, kLayer);
        user.press(VK_ESCAPE).press(VK_ESCAPE).press(VK_RETURN);
        user.expect("and nothing here", [] { return editor() != nullptr; });
    });
    EXPECT_EQ(first()->height(), 4);
}

TEST_P(AttributePages, TabLeavesThePageForTheButtons) {
    on(kTextOptions, [&](UserScript& user) {
        click(user, kOblique);
        user.press(VK_TAB).expect("the page is left", [] {
            const HWND focus = ::GetFocus();
            return focus && ::GetParent(focus) == editor();
        });
    });
}

TEST_P(AttributePages, NumbersStandInAllUnitsAndAreReadInAllForms) {
    struct Row {
        int linear, angular;
        const char *height, *rotation, *typedHeight, *typedRotation;
        double writtenHeight, writtenRotation;
    };
    const Row rows[] = {{1, 0, "1.7500E+01", "45.00", "2.5E+00", "90", 2.5, 90},
                        {2, 1, "17.50", "45d0'", "2.5", "30d30'", 2.5, 30.5},
                        {3, 2, "1'-5.50\"", "50.00g", "1'6.5\"", "100g", 18.5, 90},
                        {4, 3, "1'-5 1/2\"", "0.79r", "1'6-1/2\"", "0.5r", 18.5, 0.5 / kDegree},
                        {5, 4, "17 1/2", "N 45d0' E", "18 1/2", "S 30d W", 18.5, 240}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.height);
        {
            const AcDbObjectPointer<AcDbText> text(attributeOf(reference, 0), AcDb::kForWrite);
            text->setHeight(17.5);
            text->setRotation(45 * kDegree);
        }
        run("(setvar \"LUNITS\" " + std::to_string(row.linear) + ") (setvar \"AUNITS\" " + std::to_string(row.angular) +
            ") (setvar \"LUPREC\" " + (row.linear == 1 ? "4" : "2") + ") (setvar \"AUPREC\" 2)");
        on(kTextOptions, [&](UserScript& user) {
            user.expect("as the units want",
                        [&] { return text(kHeight) == row.height && text(kRotation) == row.rotation; });
            write(user, kHeight, row.typedHeight);
            write(user, kRotation, row.typedRotation);
        });
        EXPECT_NEAR(first()->height(), row.writtenHeight, 1e-12);
        EXPECT_NEAR(first()->rotation(), row.writtenRotation * kDegree, 1e-12);
    }
}

struct Mode {
    const char* name;
    AcDb::TextHorzMode horizontal;
    AcDb::TextVertMode vertical;
};
constexpr Mode kModes[] = {
    {"Left", AcDb::kTextLeft, AcDb::kTextBase},
    {"Align", AcDb::kTextAlign, AcDb::kTextBase},
    {"Fit", AcDb::kTextFit, AcDb::kTextBase},
    {"Center", AcDb::kTextCenter, AcDb::kTextBase},
    {"Middle", AcDb::kTextMid, AcDb::kTextBase},
    {"Right", AcDb::kTextRight, AcDb::kTextBase},
    {"Top Left", AcDb::kTextLeft, AcDb::kTextTop},
    {"Top Center", AcDb::kTextCenter, AcDb::kTextTop},
    {"Top Right", AcDb::kTextRight, AcDb::kTextTop},
    {"Middle Left", AcDb::kTextLeft, AcDb::kTextVertMid},
    {"Middle Center", AcDb::kTextCenter, AcDb::kTextVertMid},
    {"Middle Right", AcDb::kTextRight, AcDb::kTextVertMid},
    {"Bottom Left", AcDb::kTextLeft, AcDb::kTextBottom},
    {"Bottom Center", AcDb::kTextCenter, AcDb::kTextBottom},
    {"Bottom Right", AcDb::kTextRight, AcDb::kTextBottom},
};

TEST_P(AttributePages, FifteenJustificationsThereAndBack) {
    for (int row = 14; row >= 0; --row) {
        const Mode& mode = kModes[row];
        SCOPED_TRACE(mode.name);
        on(kTextOptions, [&](UserScript& user) {
            user.expect("the row of the one before",
                        [row] { return item(kJustify) == (row == 14 ? "Left" : kModes[row + 1].name); });
            choose(user, kJustify, mode.name);
        });
        inFile([&](const AcDbText& text) {
            EXPECT_EQ(text.horizontalMode(), mode.horizontal);
            EXPECT_EQ(text.verticalMode(), mode.vertical);
        });
        on(kTextOptions,
           [&](UserScript& user) { user.expect("shown again", [&] { return item(kJustify) == mode.name; }); });
    }
    EXPECT_THAT(first()->textValue(), "one");
}

TEST_P(AttributePages, AFewJustificationsSetAPoint) {
    const auto chosen = [&](const char* name) {
        on(kTextOptions, [&](UserScript& user) { choose(user, kJustify, name); });
        return first();
    };
    const AcGePoint3d at = first()->position();
    ASSERT_EQ(at, AcGePoint3d(10, 20, 0));
    EXPECT_EQ(chosen("Fit")->alignmentPoint(), at) << "the present position";
    EXPECT_EQ(first()->position(), at);
    EXPECT_EQ(chosen("Right")->alignmentPoint(), at);
    const AcGePoint3d moved = first()->position();
    EXPECT_LT(moved.x, at.x) << "moved so that it ends there";
    EXPECT_EQ(chosen("Top Right")->alignmentPoint(), at) << "the point stands as it was";
    EXPECT_LT(first()->position().y, at.y);
    const AcGePoint3d last = first()->position();
    EXPECT_EQ(chosen("Center")->alignmentPoint(), last) << "the position, not the alignment point";
    const AcGePoint3d left = first()->position();
    EXPECT_EQ(chosen("Left")->position(), left);
}

TEST_P(AttributePages, StrangeModesShowTheRowOfTheHorizontalOne) {
    {
        const AcDbObjectPointer<AcDbText> text(attributeOf(reference, 0), AcDb::kForWrite);
        text->setHorizontalMode(AcDb::kTextFit);
        text->setVerticalMode(AcDb::kTextTop);
    }
    on(kTextOptions, [&](UserScript& user) { user.expect("fitted", [] { return item(kJustify) == "Fit"; }); });
    {
        const AcDbObjectPointer<AcDbText> text(attributeOf(reference, 0), AcDb::kForWrite);
        AcDbText::Data data = text->data();
        data.horizontal = AcDb::kTextRight;
        data.vertical = 9; // from a damaged file
        text->AcDbText::setFileData(data);
    }
    on(kTextOptions, [&](UserScript& user) { user.expect("right", [] { return item(kJustify) == "Right"; }); });
}

TEST_P(AttributePages, TextStylesAreListedInOrderAndWritten) {
    for (const char* name : {"Roman", "ARIAL", "Italic"})
        addStyle(name);
    {
        const AcDbObjectPointer<AcDbTextStyleTable> table(database().textStyleTableId(), AcDb::kForWrite);
        auto* const shapes = new AcDbTextStyleTableRecord;
        shapes->setData({.isShapeFile = true, .fileName = "ltypeshp.shx", .bigFontFileName = {}});
        table->add(shapes);
        shapes->close();
    }
    on(kTextOptions, [&](UserScript& user) {
        user.expect("sorted, without the shape file's, and the present one selected", [] {
            return items(kStyle) == std::vector<std::string>{"ARIAL", "Italic", "Roman", "Standard"} &&
                   item(kStyle) == "Standard";
        });
        choose(user, kStyle, "Italic");
    });
    inFile([](const AcDbText& text) { EXPECT_EQ(nameOf(text.textStyle()), "Italic"); });
}

TEST_P(AttributePages, PropertiesAreWrittenAtOnce) {
    layer("WALLS");
    linetype("DASHED");
    on(kProperties, [&](UserScript& user) {
        user.expect("as the attribute has them", [] {
            return item(kLayer) == "0" && item(kLinetype) == "ByLayer" && item(kColor) == "ByLayer" &&
                   item(kLineWeight) == "ByLayer" && !isEnabled(kPlotStyle) && selected(kPlotStyle) == -1 &&
                   !isEnabled(kApply);
        });
        choose(user, kLayer, "WALLS");
        user.expect("Apply is enabled", [] { return isEnabled(kApply); });
        choose(user, kLinetype, "DASHED");
        choose(user, kColor, "Magenta");
        choose(user, kLineWeight, "0.53 mm");
    });
    inFile([](const AcDbText& text) {
        EXPECT_EQ(nameOf(text.layerId()), "WALLS");
        EXPECT_EQ(nameOf(text.linetypeId()), "DASHED");
        EXPECT_EQ(text.colorIndex(), 6);
        EXPECT_EQ(text.lineWeight(), 53);
    });
    on(kProperties, [&](UserScript& user) {
        user.expect("and shown again", [] {
            return item(kLayer) == "WALLS" && item(kLinetype) == "DASHED" && item(kColor) == "Magenta" &&
                   item(kLineWeight) == "0.53 mm";
        });
    });
}

TEST_P(AttributePages, LayersAndLinetypesByTheHundred) {
    std::vector<std::string> types = {"ByBlock", "ByLayer", "Continuous"};
    for (int i = 0; i < 300; ++i) {
        const std::string number = std::to_string((i * 7919) % 1000); // in no order
        layer("L" + number);
        linetype("T" + number);
        types.push_back("T" + number);
    }
    on(kProperties, [&](UserScript& user) {
        user.expect("layers are sorted and the current one is selected, linetypes are not", [&] {
            const std::vector<std::string> names = items(kLayer);
            return names.size() == 301 && item(kLayer) == "0" && std::is_sorted(names.begin(), names.end()) &&
                   items(kLinetype) == types && item(kLinetype) == "ByLayer";
        });
        choose(user, kLayer, "L919");
        choose(user, kLinetype, "T919");
        show(user, kAttributes);
        user.press(VK_DOWN).press(VK_UP);
        show(user, kProperties);
        user.expect("still selected after other rows",
                    [] { return item(kLayer) == "L919" && item(kLinetype) == "T919"; });
    });
    EXPECT_EQ(nameOf(first()->layerId()), "L919");
    EXPECT_EQ(nameOf(first()->linetypeId()), "T919");
}

TEST_P(AttributePages, AColourThatIsNotListedIsAddedAndOthersComeFromTheDialog) {
    { AcDbObjectPointer<AcDbText>(attributeOf(reference, 0), AcDb::kForWrite)->setColorIndex(30); }
    on(kProperties, [&](UserScript& user) {
        user.expect("among the colours", [] { return item(kColor) == "30"; });
        choose(user, kColor, "Select Color...");
        user.in("Select Color").click(20102).click(IDCANCEL).in(kEditor);
        user.expect("back where it was", [] { return item(kColor) == "30" && !isEnabled(kApply); });
        choose(user, kColor, "Select Color...");
        user.in("Select Color").doubleClick(20106).type("171").click(IDOK).in(kEditor);
        user.expect("the one chosen", [] { return item(kColor) == "171" && isEnabled(kApply); });
    });
    inFile([](const AcDbText& text) { EXPECT_EQ(text.colorIndex(), 171); });
}

TEST_P(AttributePages, LoadingARowWritesNothingAndNoRowTakesNothing) {
    { AcDbObjectPointer<AcDbText>(attributeOf(reference, 0), AcDb::kForWrite)->setHeight(2.123456); }
    database().setDirty(false);
    edit("EATTEDIT (entnext)", [&](UserScript& user) {
        show(user, kTextOptions);
        user.expect("empty boxes", [] { return text(kHeight).empty() && items(kStyle).empty(); });
        write(user, kHeight, "9");
        show(user, kProperties);
        choose(user, kColor, "Red");
        show(user, kAttributes);
        user.press(VK_DOWN).press(VK_DOWN).press(VK_UP);
        click(user, IDCANCEL);
    });
    EXPECT_FALSE(database().isDirty());
    EXPECT_EQ(first()->height(), 2.123456);
}

TEST_P(AttributePages, ChangesOnAPageOutliveACancelAndShowInAView) {
    AcGsManager& manager = *acgsGetGsManager();
    AcGsDevice* const device = manager.createAutoCADOffScreenDevice();
    AcGsModel* const model = manager.createAutoCADModel();
    AcGsView* const view = manager.getGSClassFactory()->createView();
    device->onSize(100, 100);
    device->add(view);
    view->setView({20, 30, 1}, {20, 30, 0}, AcGeVector3d::kYAxis, 50, 50);
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
        view->add(space.object(), model);
    }
    const auto redPixels = [&] {
        view->update();
        int found = 0;
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 100; ++x)
                found += (device->picture().at(x, y) & 0xFFFF) == 0 && device->picture().at(x, y) != 0xFF000000;
        return found;
    };
    EXPECT_EQ(redPixels(), 0);
    int small = 0;
    on(kProperties, [&](UserScript& user) {
        choose(user, kColor, "Red");
        user.expect("red at once", [&] { return (small = redPixels()) > 0; });
        show(user, kTextOptions);
        write(user, kHeight, "10");
        user.expect("and larger", [&] { return redPixels() > small; });
    });
    EXPECT_GT(redPixels(), small);
    manager.getGSClassFactory()->deleteView(view);
    manager.destroyAutoCADModel(model);
    manager.destroyAutoCADDevice(device);
}

} // namespace
