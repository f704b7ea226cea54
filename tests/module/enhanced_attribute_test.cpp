// EATTEDIT and its other names from the command line through the editor to the drawing: the values.
#include "module/enhanced_attribute_fixture.h"

#include "db/curves.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

using EnhancedAttribute = EnhancedAttributeTest;

TEST_F(EnhancedAttribute, ShowsTheRowsAndWritesThemByOk) {
    define("WIDTH", "900");
    define("OWNER", "nobody");
    const AcDbObjectId reference = addPlain({{"OWNER", "Meier"}, {"WIDTH", "800"}});
    edit("EATTEDIT (entnext)", [&](UserScript& user) {
        user.expect("pairs go by place, not by tag", [] {
            return listed() == std::vector<std::string>{"WIDTH?=Meier", "OWNER?=800"} && text(kBlock) == "DESK";
        });
        user.expect("no row is on show", [] { return text(kTag).empty() && !box() && !isEnabled(kApply); });
        user.expect("the program's icon is in the caption",
                    [] { return ::SendMessageA(editor(), WM_GETICON, ICON_SMALL, 0) != 0; });
        openValue(user, 1);
        user.expect("the row's tag", [] { return text(kTag) == "OWNER"; });
        user.expect("opening alone changes nothing", [] { return !isEnabled(kApply); });
        user.type("1200").expect("a key does", [] { return isEnabled(kApply); });
        user.press(VK_UP).type("Schulze").press(VK_RETURN);
        user.press(VK_RETURN);
    });
    EXPECT_THAT(texts(reference), ElementsAre("Schulze", "1200"));
    EXPECT_TRUE(frame.IsWindowEnabled());
    EXPECT_FALSE(problem);
}

TEST_F(EnhancedAttribute, AnIntelligentBlockKeepsItsDefaultValueAndItsAlignment) {
    define("WIDTH", "900", [](AcDbAttributeDefinition& definition) {
        definition.setHorizontalMode(AcDb::kTextRight);
        definition.setAlignmentPoint({100, 0, 0});
    });
    const AcDbObjectId reference = addIntelligent();
    { AcDbObjectPointer<AcDbText>(attributeOf(reference, 0), AcDb::kForWrite)->setTextString("shown"); }
    const auto type = [&](const char* value) {
        edit("EATTEDIT (entnext)", [&](UserScript& user) {
            openValue(user, 0);
            user.type(value);
            click(user, IDOK);
        });
        return AcDbObjectPointer<AcDbText>(attributeOf(reference, 0))->position().x;
    };
    edit("EATTEDIT (entnext)", [&](UserScript& user) {
        user.expect("the text and not the default value",
                    [] { return listed() == std::vector<std::string>{"WIDTH?=shown"}; });
        click(user, IDCANCEL);
    });
    const double left = type("a");
    EXPECT_LT(type("a much longer text"), left - 10) << "the text stays aligned";
    EXPECT_THAT(texts(reference), ElementsAre("a much longer text"));
    EXPECT_THAT(defaults(reference), ElementsAre("900"));
}

TEST_F(EnhancedAttribute, EveryNameReachesItAndTheHostsOwnDoesNotComeBack) {
    define("A", "1");
    addIntelligent();
    for (const char* name : {"EATTEDIT", "-EATTEDIT", "_EATTEDIT", "EA", "eattedit", "ea"})
        edit(std::string(name) + " (entnext)", [&](UserScript& user) { click(user, IDCANCEL); });
    edit("(command \"EATTEDIT\" (entnext))", [&](UserScript& user) { click(user, IDCANCEL); });
    for (const char* name : {"EATTEDIT", "_EATTEDIT", "-EATTEDIT", "EA"}) {
        EXPECT_THAT(run(std::string(name) + " \x1B"), HasSubstr("\nSelect a block: ")) << name;
        EXPECT_THAT(output, Not(HasSubstr("Enter value for"))) << name;
    }
}

TEST_F(EnhancedAttribute, HiddenPresetAndVerifiedAreRowsConstantsAreNot) {
    define("CONSTANT", "1", [](auto& definition) { definition.setConstant(true); });
    define("HIDDEN", "2", [](auto& definition) { definition.setInvisible(true); });
    define("PRESET", "3", [](auto& definition) { definition.setPreset(true); });
    define("VERIFY", "4", [](auto& definition) { definition.setVerifiable(true); });
    const AcDbObjectId plain = addFromBlock();
    edit("EATTEDIT (entnext)", [&](UserScript& user) {
        user.expect("three rows", [] {
            return listed() == std::vector<std::string>{"HIDDEN?=2", "PRESET?=3", "VERIFY?=4"};
        });
        openValue(user, 0);
        for (const char* value : {"a", "b", "c"})
            user.type(value).press(VK_RETURN);
    });
    EXPECT_THAT(texts(plain), ElementsAre("1", "a", "b", "c"));
}

TEST_F(EnhancedAttribute, AConstantAttributeBeforeOthersTakesNoText) {
    define("A", "1");
    define("B", "2");
    const AcDbObjectId reference = addIntelligent();
    { AcDbObjectPointer<VNDKAttribute>(attributeOf(reference, 0), AcDb::kForWrite)->setConstant(1); }
    edit("EATTEDIT (entnext)", [&](UserScript& user) {
        user.expect("the first row has the second attribute", [] {
            return listed() == std::vector<std::string>{"A?=2", "B?="};
        });
        openValue(user, 0);
        user.type("x").press(VK_RETURN);
    });
    EXPECT_THAT(texts(reference), ElementsAre("1", "x"));
}

TEST_F(EnhancedAttribute, RowsWithoutAnAttributeAreGreyAndTakeNothing) {
    for (const char* tag : {"A", "B", "C"})
        define(tag, "default");
    const AcDbObjectId fewer = addPlain({{"A", "x"}, {"B", "y"}});
    edit("EATTEDIT (entnext)", [&](UserScript& user) {
        user.expect("without a value", [] { return listed() == std::vector<std::string>{"A?=x", "B?=y", "C?="}; });
        user.clickAt(kRows, {150, kFirst + 2 * kRowSize + kRowSize / 2});
        user.expect("its tag, and no box", [] { return text(kTag) == "C" && !box(); });
        show(user, kTextOptions);
        user.expect("an empty page that takes nothing", [] {
            return text(kHeight).empty() && !isEnabled(kHeight) && !isEnabled(kStyle) && items(kStyle).empty();
        });
        show(user, kProperties);
        user.expect("the other one, too",
                    [] { return selected(kColor) == -1 && !isEnabled(kLayer) && items(kLayer).empty(); });
        show(user, kAttributes);
        user.expect("still no box", [] { return !box(); });
        openValue(user, 0);
        user.press(VK_UP).expect("the arrows go around it", [] { return text(kTag) == "B" && box(); });
        show(user, kTextOptions);
        user.expect("the page is back", [] { return isEnabled(kHeight) && !text(kHeight).empty(); });
        show(user, kAttributes);
        user.type("z").press(VK_RETURN); // on the last row that can be edited: OK
    });
    EXPECT_THAT(texts(fewer), ElementsAre("x", "z"));
}

TEST_F(EnhancedAttribute, MoreAttributesThanDefinitions) {
    define("A", "default");
    const AcDbObjectId more = addPlain({{"A", "x"}, {"B", "y"}});
    edit("EATTEDIT (entnext)", [&](UserScript& user) {
        openValue(user, 0);
        user.type("1").press(VK_RETURN);
    });
    EXPECT_THAT(texts(more), ElementsAre("1", "y")) << "what has no row is left alone";
}

TEST_F(EnhancedAttribute, FieldLengthsAreThePlainAttributesOwnAndElseTheDefinitions) {
    define("A", "", [](auto& definition) { definition.setFieldLength(3); });
    const auto typed = [&] {
        edit("EATTEDIT (entnext)", [&](UserScript& user) {
            openValue(user, 0);
            user.type("123456789").press(VK_RETURN);
        });
    };
    const AcDbObjectId plain = addFromBlock();
    { AcDbObjectPointer<AcDbAttribute>(attributeOf(plain, 0), AcDb::kForWrite)->setFieldLength(5); }
    typed();
    EXPECT_THAT(texts(plain), ElementsAre("12345"));
    { AcDbObjectPointer<AcDbEntity>(plain, AcDb::kForWrite)->erase(); }
    const AcDbObjectId intelligent = addIntelligent();
    typed();
    EXPECT_THAT(texts(intelligent), ElementsAre("123"));
}

TEST_F(EnhancedAttribute, ApplyWritesAndStaysAndCancelTakesNothingBack) {
    define("A", "1");
    define("B", "2");
    for (const bool intelligent : {false, true}) {
        const AcDbObjectId reference = intelligent ? addIntelligent() : addFromBlock();
        edit("EATTEDIT (entnext)", [&](UserScript& user) {
            openValue(user, 0);
            user.type("applied");
            click(user, kApply);
            user.expect("written while the editor stands", [&] {
                return texts(reference) == std::vector<std::string>{"applied", "2"} && !isEnabled(kApply);
            });
            openValue(user, 1);
            user.type("dropped").expect("there is something to apply again", [] { return isEnabled(kApply); });
            user.press(VK_ESCAPE);
        });
        EXPECT_THAT(texts(reference), ElementsAre("applied", "2"));
        { AcDbObjectPointer<AcDbEntity>(reference, AcDb::kForWrite)->erase(); }
    }
}

TEST_F(EnhancedAttribute, CancelByAllWaysWritesNothing) {
    define("A", "1");
    const AcDbObjectId reference = addIntelligent();
    database().setDirty(false);
    const std::function<void(UserScript&)> ways[] = {
        [](UserScript& user) { user.press(VK_ESCAPE); },
        [](UserScript& user) { click(user, IDCANCEL); },
        [](UserScript& user) { user.call([] { ::PostMessageA(editor(), WM_CLOSE, 0, 0); }); },
    };
    for (const auto& way : ways) {
        edit("EATTEDIT (entnext)", [&](UserScript& user) {
            openValue(user, 0);
            user.type("typed");
            way(user);
        });
        EXPECT_THAT(texts(reference), ElementsAre("1"));
        EXPECT_FALSE(database().isDirty());
    }
}

TEST_F(EnhancedAttribute, HelpDoesNothingAndSelectingARowEnablesApply) {
    define("A", "1");
    define("B", "2");
    const AcDbObjectId reference = addIntelligent();
    edit("EATTEDIT (entnext)", [&](UserScript& user) {
        click(user, kHelp);
        user.expect("nothing", [] { return editor() && !isEnabled(kApply); });
        user.clickAt(kRows, {6, kFirst + kRowSize + kRowSize / 2});
        user.expect("a selection counts as a change, and opens no box", [] { return isEnabled(kApply) && !box(); });
        click(user, kApply);
        click(user, IDOK);
    });
    EXPECT_THAT(texts(reference), ElementsAre("1", "2"));
}

TEST_F(EnhancedAttribute, TheBoxComesBackWithTheFirstFace) {
    define("A", "1");
    define("B", "2");
    addIntelligent();
    edit("EATTEDIT (entnext)", [&](UserScript& user) {
        show(user, kProperties);
        user.expect("the page, empty before the first row",
                    [] { return control(kLayer) && !::IsWindowVisible(rowList()) && items(kLayer).empty(); });
        show(user, kAttributes);
        user.expect("on the first row", [] { return text(kTag) == "A" && box() == ::GetFocus(); });
        user.press(VK_DOWN).type("typed");
        show(user, kTextOptions);
        show(user, kAttributes);
        user.expect("on the row where it was, with what was typed", [] {
            char value[20] = "";
            ::GetWindowTextA(box(), value, sizeof value);
            return text(kTag) == "B" && std::string(value) == "typed";
        });
        click(user, IDCANCEL);
    });
}

TEST_F(EnhancedAttribute, GoesOnWithAnotherBlockAsOftenAsWanted) {
    define("A", "1");
    append(block, new AcDbLine({0, 0, 0}, {10, 0, 0}));
    const AcDbObjectId first = addPlain({{"A", "x"}});
    const AcDbObjectId second = addPlain({{"A", "y"}}, {100, 100, 0});
    UserScript user(screen);
    user.in(kEditor).waitForWindow();
    openValue(user, 0);
    user.type("dropped");
    click(user, kSelect);
    user.expect("a new dialog", [] { return listed() == std::vector<std::string>{"A?=y"} && text(kTag).empty(); });
    openValue(user, 0);
    user.type("z");
    click(user, kApply);
    click(user, kSelect);
    user.waitUntilGone();
    // An empty point repeats the prompt; Escape ends the command, and the dialog before doesn't come back.
    const std::string printed = run("EATTEDIT 5,0\n105,100\n300,300\n\x1B");
    EXPECT_TRUE(user.finish()) << user.failure();
    EXPECT_FALSE(editor());
    EXPECT_THAT(printed, HasSubstr("300,300\nThere is no object at that point.\nSelect a block: "));
    EXPECT_THAT(texts(first), ElementsAre("x"));
    EXPECT_THAT(texts(second), ElementsAre("z"));
    run("U");
    EXPECT_THAT(texts(second), ElementsAre("y"));
}

TEST_F(EnhancedAttribute, EndsWithoutADialogWhereNothingCanBeEdited) {
    append(database().modelSpaceId(), new AcDbLine({500, 500, 0}, {600, 500, 0}));
    addPlain({{"A", "x"}});
    EXPECT_THAT(run("EATTEDIT 550,500"), HasSubstr("\nA block insert was not selected."));
    EXPECT_FALSE(problem);
    EXPECT_THAT(run("EATTEDIT L"), Not(HasSubstr("was not selected"))) << "a block without definitions";
    define("CONSTANT", "1", [](auto& definition) { definition.setConstant(true); });
    run("EATTEDIT L");
    EXPECT_FALSE(problem);
    run("EATTEDIT");
    ASSERT_TRUE(problem) << "a script's end is no endless loop";
    define("A", "1");
    const AcDbObjectId id = append(database().modelSpaceId(), new AcDbMInsertBlock);
    { AcDbObjectPointer<AcDbMInsertBlock>(id, AcDb::kForWrite)->setBlockTableRecord(block); }
    EXPECT_THAT(run("EATTEDIT L"), HasSubstr("\nA block insert was not selected.")) << "a derived class";
    expectAllClosed();
}

TEST_F(EnhancedAttribute, AnAttributeThatDoesNotOpenIsPassedOver) {
    define("A", "1");
    define("B", "2");
    for (const bool intelligent : {false, true}) {
        const AcDbObjectId reference = intelligent ? addIntelligent() : addFromBlock();
        AcDbObject* reader = nullptr;
        const auto hold = [&] {
            EXPECT_EQ(acdbOpenAcDbObject(reader, attributeOf(reference, 0), AcDb::kForRead, false), Acad::eOk);
        };
        UserScript user(screen);
        user.in(kEditor).waitForWindow();
        openValue(user, 0);
        user.type("x").press(VK_DOWN).type("y").call(hold);
        click(user, IDOK);
        user.waitUntilGone();
        run("EATTEDIT (entnext)");
        EXPECT_TRUE(user.finish()) << user.failure();
        reader->close();
        EXPECT_THAT(texts(reference), ElementsAre("1", "y")) << "each text stays with its attribute";
        { AcDbObjectPointer<AcDbEntity>(reference, AcDb::kForWrite)->erase(); }
    }
}

TEST_F(EnhancedAttribute, WritesNothingWhileSomebodyHoldsTheReference) {
    define("A", "1");
    const AcDbObjectId reference = addIntelligent();
    AcDbObject* reader = nullptr;
    UserScript user(screen);
    user.in(kEditor).waitForWindow();
    openValue(user, 0);
    user.type("x").call([&] { acdbOpenAcDbObject(reader, reference, AcDb::kForRead, false); });
    click(user, kApply);
    user.call([&] { reader->close(); });
    user.expect("nothing was written, and the editor stands",
                [&] { return texts(reference) == std::vector<std::string>{"1"} && editor() != nullptr; });
    click(user, IDOK);
    user.waitUntilGone();
    run("EATTEDIT (entnext)");
    EXPECT_TRUE(user.finish()) << user.failure();
    EXPECT_THAT(texts(reference), ElementsAre("x"));
    EXPECT_EQ(host.documents().curDocument()->lockMode(), AcAp::kNotLocked);
}

TEST_F(EnhancedAttribute, OneUndoTakesBackTheWholeSession) {
    define("A", "1");
    define("B", "2");
    for (const bool intelligent : {false, true}) {
        const AcDbObjectId reference = intelligent ? addIntelligent() : addFromBlock();
        const double height = AcDbObjectPointer<AcDbText>(attributeOf(reference, 0))->height();
        edit("EATTEDIT (entnext)", [&](UserScript& user) {
            openValue(user, 0);
            user.type("a");
            click(user, kApply);
            show(user, kTextOptions);
            write(user, kHeight, "7");
            show(user, kProperties);
            choose(user, kColor, "Red");
            show(user, kAttributes);
            user.press(VK_DOWN).type("b").press(VK_RETURN);
        });
        const auto look = [&](const char* when, std::vector<std::string> values, double size, short color) {
            const AcDbObjectPointer<AcDbText> attribute(attributeOf(reference, 0));
            EXPECT_EQ(texts(reference), values) << when;
            EXPECT_EQ(attribute->height(), size) << when;
            EXPECT_EQ(attribute->colorIndex(), color) << when;
        };
        look("edited", {"a", "b"}, 7, 1);
        run("U");
        look("undone", {"1", "2"}, height, kAcDbColorByLayer);
        run("REDO");
        look("redone", {"a", "b"}, 7, 1);
        { AcDbObjectPointer<AcDbEntity>(reference, AcDb::kForWrite)->erase(); }
    }
}

TEST_F(EnhancedAttribute, UndoRecordingStandsAsItStoodBefore) {
    define("A", "1");
    const AcDbObjectId reference = addIntelligent();
    for (const bool on : {false, true}) {
        database().disableUndoRecording(!on);
        const size_t steps = database().undo().undoCount();
        edit("EATTEDIT (entnext)", [&](UserScript& user) {
            openValue(user, 0);
            show(user, kTextOptions);
            click(user, kBackwards);
            user.expect("after a page's change", [&] { return database().undoRecording() == on; });
            click(user, kApply);
            user.expect("after a commit", [&] { return database().undoRecording() == on; });
            click(user, IDCANCEL);
        });
        EXPECT_EQ(database().undoRecording(), on);
        EXPECT_EQ(database().undo().undoCount(), steps + (on ? 1 : 0));
    }
    EXPECT_FALSE(AcDbObjectPointer<AcDbText>(attributeOf(reference, 0))->isMirroredInX()) << "clicked twice";
}

TEST_F(EnhancedAttribute, ValuesAreInTheFileWithUmlautsAndSigns) {
    define("A", "1");
    define("B", "2");
    for (const bool intelligent : {false, true}) {
        const AcDbObjectId reference = intelligent ? addIntelligent() : addFromBlock();
        edit("EATTEDIT (entnext)", [&](UserScript& user) {
            openValue(user, 0);
            user.type("J\xFCrgen & \"Gro\xDF\"").press(VK_RETURN).type("\x80 5,-").press(VK_RETURN);
        });
        reread([](AcDbDatabase& drawing) {
            EXPECT_THAT(texts(referenceIn(drawing)), ElementsAre("J\xFCrgen & \"Gro\xDF\"", "\x80 5,-"));
        });
        { AcDbObjectPointer<AcDbEntity>(reference, AcDb::kForWrite)->erase(); }
    }
}

} // namespace
