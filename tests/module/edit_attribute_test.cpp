// DDATTE and c:ddatte from the command line through the dialog to the drawing.
#include "module/edit_attribute_fixture.h"

#include "db/curves.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using vndk::win32::UserScript;

namespace {

using EditAttribute = EditAttributeTest;

TEST_F(EditAttribute, ShowsPromptsAndValuesOfAPlainReferenceAndWritesWhatIsTyped) {
    define("WIDTH", "900");
    define("OWNER", "nobody");
    const AcDbObjectId reference = addPlain({{"OWNER", "Meier"}, {"WIDTH", "800"}});
    edit("DDATTE (entnext)", [&](UserScript& user) {
        user.expect("pairs go by place, not by tag", [] {
            return rows() == std::vector<std::string>{"WIDTH?=Meier", "OWNER?=800"} && label() == "Block Name:\tDESK";
        });
        user.expect("the list has the focus", [] { return ::GetFocus() == listWindow(); });
        user.expect("the program's icon is in the caption",
                    [] { return ::SendMessageA(dialog(), WM_GETICON, ICON_SMALL, 0) != 0; });
        user.expect("the main window waits", [&] { return frame.IsWindowEnabled() == FALSE; });
        clickValue(user, 0);
        user.type("1200").click(kOk);
    });
    EXPECT_THAT(texts(reference), ElementsAre("1200", "800"));
    EXPECT_TRUE(frame.IsWindowEnabled());
    EXPECT_FALSE(problem);
}

TEST_F(EditAttribute, WritesTextAndDefaultValueOfAnIntelligentBlock) {
    define("WIDTH", "900");
    define("OWNER", "nobody");
    const AcDbObjectId reference = addIntelligent();
    { AcDbObjectPointer<AcDbText>(attributeOf(reference, 0), AcDb::kForWrite)->setTextString("shown"); }
    edit("DDATTE2 (entnext)", [&](UserScript& user) {
        user.expect("the default value is shown, not the text", [] {
            return rows() == std::vector<std::string>{"WIDTH?=900", "OWNER?=nobody"};
        });
        clickValue(user, 1);
        user.type("Schr\xF6"
                  "der & S\xF6hne")
            .click(kOk);
    });
    EXPECT_THAT(texts(reference), ElementsAre("900", "Schr\xF6"
                                                     "der & S\xF6hne"))
        << "rows that weren't touched, too";
    EXPECT_THAT(defaults(reference), ElementsAre("900", "Schr\xF6"
                                                        "der & S\xF6hne"));
}

TEST_F(EditAttribute, TheLabelNamesTheBlockAsItWasInserted) {
    define("A", "1");
    run("(c:_bInsert \"desk\" (list 0 0 0))");
    edit("DDATTE (entnext)", [&](UserScript& user) {
        user.expect("the original name", [] { return label() == "Block Name:\tdesk"; }).click(IDCANCEL);
    });
}

TEST_F(EditAttribute, RunsTheFormulasOfAllAttributesOnceTheTextIsIn) {
    define("WIDTH", "900");
    define("FIXED", "5");
    const AcDbObjectId reference = addIntelligent();
    const auto addFormula = [&](int index, const char* text) {
        const AcDbObjectPointer<VNDKAttribute> attribute(attributeOf(reference, index), AcDb::kForWrite);
        auto* const formula = new CCondFormula;
        ASSERT_EQ(formula->setText(text), Acad::eOk);
        attribute->AddFormula(formula);
        attribute->setConditionalPoint2({10, 0, 0});
    };
    addFormula(0, "stretch = value > 1000");
    addFormula(1, "stretch = 1");
    { AcDbObjectPointer<VNDKAttribute>(attributeOf(reference, 1), AcDb::kForWrite)->setConstant(1); }
    edit("DDATTE (entnext)", [&](UserScript& user) {
        clickValue(user, 0);
        user.type("1200").click(kOk);
    });
    EXPECT_EQ(AcDbObjectPointer<AcDbText>(attributeOf(reference, 0))->position(), AcGePoint3d(10, 0, 0));
    EXPECT_EQ(AcDbObjectPointer<AcDbText>(attributeOf(reference, 1))->position(), AcGePoint3d(10, 0, 0))
        << "a constant attribute's formulas run, too";
    EXPECT_THAT(texts(reference), ElementsAre("1200", "5"));
}

TEST_F(EditAttribute, MovesATextThatIsAlignedSoThatItStaysAligned) {
    define("A", "short", [](AcDbAttributeDefinition& definition) {
        definition.setHorizontalMode(AcDb::kTextRight);
        definition.setAlignmentPoint({100, 0, 0});
    });
    const AcDbObjectId reference = addIntelligent();
    const auto type = [&](const char* text) {
        edit("DDATTE (entnext)", [&](UserScript& user) {
            clickValue(user, 0);
            user.type(text).click(kOk);
        });
        return AcDbObjectPointer<AcDbText>(attributeOf(reference, 0))->position().x;
    };
    const double left = type("a");
    EXPECT_LT(type("a much longer text"), left - 10);
}

/// A class of another application.
class OtherDefinition : public AcDbAttributeDefinition {
    ACDB_DECLARE_MEMBERS(OtherDefinition)
};
ACDB_DXF_DEFINE_MEMBERS(OtherDefinition, AcDbAttributeDefinition, "OTHERDEFINITION", "test")

TEST_F(EditAttribute, ARowForEachDefinitionThatIsNotConstantAndOfTheTwoClasses) {
    append(block, new AcDbText({0, 0, 0}, "no definition"));
    define("CONSTANT", "1", [](auto& definition) { definition.setConstant(true); });
    define("HIDDEN", "2", [](auto& definition) { definition.setInvisible(true); });
    define("PRESET", "3", [](auto& definition) { definition.setPreset(true); });
    define("VERIFY", "4", [](auto& definition) { definition.setVerifiable(true); });
    const AcDbObjectId erased = define("ERASED", "5");
    { AcDbObjectPointer<AcDbEntity>(erased, AcDb::kForWrite)->erase(); }
    auto* const conditional = new VNDKAttributeDefinition;
    conditional->setTag("CONDITIONAL");
    conditional->setPrompt("CONDITIONAL?");
    conditional->setTextString("6");
    append(block, conditional);
    auto* const other = new OtherDefinition;
    other->setTag("OTHER");
    append(block, other);

    const AcDbObjectId plain = addFromBlock();
    ASSERT_THAT(texts(plain), ElementsAre("1", "2", "3", "4", "6", ""));
    edit("DDATTE (entnext)", [&](UserScript& user) {
        user.expect("four rows", [] {
            return rows() == std::vector<std::string>{"HIDDEN?=2", "PRESET?=3", "VERIFY?=4", "CONDITIONAL?=6"};
        });
        clickValue(user, 0);
        for (const char* text : {"a", "b", "c", "d"})
            user.type(text).press(VK_RETURN);
    });
    EXPECT_THAT(texts(plain), ElementsAre("1", "a", "b", "c", "d", ""))
        << "constants keep their value; what the other class defined has no row";

    { AcDbObjectPointer<AcDbEntity>(plain, AcDb::kForWrite)->erase(); }
    const AcDbObjectId intelligent = addIntelligent();
    edit("DDATTE (entnext)", [&](UserScript& user) {
        user.expect("a definition without attribute keeps its own text", [] {
            return rows() == std::vector<std::string>{"HIDDEN?=2", "PRESET?=3", "VERIFY?=4", "CONDITIONAL?=6"};
        });
        clickValue(user, 0);
        user.type("x").press(VK_UP).type("y").click(kOk);
    });
    EXPECT_THAT(texts(intelligent), ElementsAre("x", "3", "4")) << "the row without attribute writes nothing";
}

TEST_F(EditAttribute, DuplicateTagsHaveARowEach) {
    define("A", "1");
    define("A", "2");
    const AcDbObjectId reference = addPlain({{"A", "x"}, {"A", "y"}});
    edit("DDATTE (entnext)", [&](UserScript& user) {
        clickValue(user, 1);
        user.type("z").click(kOk);
    });
    EXPECT_THAT(texts(reference), ElementsAre("x", "z"));
}

TEST_F(EditAttribute, MoreAndFewerAttributesThanDefinitions) {
    define("A", "one");
    define("B", "two");
    const AcDbObjectId fewer = addPlain({{"A", "x"}});
    edit("DDATTE (entnext)", [&](UserScript& user) {
        user.expect("the definition's text", [] { return rows() == std::vector<std::string>{"A?=x", "B?=two"}; });
        clickValue(user, 0);
        user.type("1").press(VK_RETURN).type("2").press(VK_RETURN);
    });
    EXPECT_THAT(texts(fewer), ElementsAre("1"));

    { AcDbObjectPointer<AcDbEntity>(fewer, AcDb::kForWrite)->erase(); }
    const AcDbObjectId more = addPlain({{"A", "x"}, {"B", "y"}, {"C", "z"}});
    edit("DDATTE (entnext)", [&](UserScript& user) {
        clickValue(user, 0);
        user.type("1").press(VK_RETURN).type("2").press(VK_RETURN);
    });
    EXPECT_THAT(texts(more), ElementsAre("1", "2", "z")) << "what has no row is left alone";
}

TEST_F(EditAttribute, FieldLengthsLimitTheValues) {
    define("A", "", [](auto& definition) { definition.setFieldLength(3); });
    define("B", "");
    const AcDbObjectId reference = addFromBlock();
    edit("DDATTE (entnext)", [&](UserScript& user) {
        clickValue(user, 0);
        user.type("12345").press(VK_RETURN).type("12345").click(kOk);
    });
    EXPECT_THAT(texts(reference), ElementsAre("123", "12345"));
}

TEST_F(EditAttribute, CancelWritesNothing) {
    define("A", "1");
    const AcDbObjectId reference = addIntelligent();
    database().setDirty(false);
    const std::function<void(UserScript&)> ways[] = {
        [](UserScript& user) { user.press(VK_ESCAPE); },
        [](UserScript& user) { user.click(IDCANCEL); },
        [](UserScript& user) { user.call([] { ::PostMessageA(dialog(), WM_CLOSE, 0, 0); }); },
    };
    for (const auto& way : ways) {
        edit("DDATTE (entnext)", [&](UserScript& user) {
            clickValue(user, 0);
            user.type("typed");
            way(user);
        });
        EXPECT_THAT(texts(reference), ElementsAre("1"));
        EXPECT_FALSE(database().isDirty());
    }
}

TEST_F(EditAttribute, NeedsNoMouseOnceACellIsOpen) {
    define("A", "1");
    define("B", "2");
    const AcDbObjectId reference = addFromBlock();
    edit("DDATTE (entnext)", [&](UserScript& user) {
        clickValue(user, 0);
        user.type("first").press(VK_TAB);
        user.expect("Tab goes to OK", [] { return ::GetFocus() == ::GetDlgItem(dialog(), kOk); });
        user.press(VK_SPACE);
    });
    EXPECT_THAT(texts(reference), ElementsAre("first", "2"));
}

TEST_F(EditAttribute, AsksUntilABlockIsPickedAndEndsWithSomethingElse) {
    append(block, new AcDbLine({0, 0, 0}, {10, 0, 0}));
    define("A", "1");
    append(database().modelSpaceId(), new AcDbLine({500, 500, 0}, {600, 500, 0}));
    const AcDbObjectId reference = addPlain({{"A", "x"}}, {100, 100, 0});

    EXPECT_THAT(run("DDATTE 550,500"), HasSubstr("\nA block insert was not selected."));
    EXPECT_FALSE(problem);
    // A point where nothing lies, Enter and what is no point ask again.
    const std::string printed = edit("DDATTE\n300,300\n\nnonsense\n105,100", [&](UserScript& user) {
        clickValue(user, 0);
        user.type("picked").click(kOk);
    });
    size_t asked = 0;
    for (size_t at = printed.find("Select a block: "); at != std::string::npos;
         at = printed.find("Select a block: ", at + 1))
        ++asked;
    EXPECT_EQ(asked, 4U);
    EXPECT_THAT(printed, HasSubstr("300,300\nThere is no object at that point.\nSelect a block: "));
    EXPECT_THAT(printed, HasSubstr("nonsense\nInvalid point. Give a point on an object, or L for the last one.\n"));
    EXPECT_THAT(texts(reference), ElementsAre("picked"));
}

TEST_F(EditAttribute, ShowsNothingWhereThereIsNothingToEdit) {
    addPlain({{"A", "x"}});
    const std::string printed = run("DDATTE (entnext)");
    EXPECT_THAT(printed, Not(HasSubstr("was not selected"))) << "a block without definitions: no dialog, no words";
    define("CONSTANT", "1", [](auto& definition) { definition.setConstant(true); });
    run("DDATTE (entnext)");
    EXPECT_FALSE(problem);
    EXPECT_FALSE(host.runText("DDATTE \x1B"));
    EXPECT_FALSE(host.runText("(c:ddatte)\n\x1B"));
    EXPECT_THAT(output, Not(HasSubstr("nil")));
}

TEST_F(EditAttribute, AClassDerivedFromTheReferenceIsRefused) {
    define("A", "1");
    const AcDbObjectId id = append(database().modelSpaceId(), new AcDbMInsertBlock);
    { AcDbObjectPointer<AcDbMInsertBlock>(id, AcDb::kForWrite)->setBlockTableRecord(block); }
    EXPECT_THAT(run("DDATTE (entnext)"), HasSubstr("\nA block insert was not selected."));
}

TEST_F(EditAttribute, EndsWhenTheInputEndsOrNoDrawingIsOpen) {
    run("DDATTE");
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->message, "DDATTE was still asking when the input ended.");
    EXPECT_THAT(run("(c:ddatte)"), Not(HasSubstr("nil")));
    run("(command \"DDATTE\")");
    run("(command \"DDATTE\" \"300,300\" \"\")");
    host.commandLine().setInvalidAnswers(vndk::host::InvalidAnswers::FailCommand);
    run("DDATTE nonsense\n(setq seen (* 6 7))");
    ASSERT_TRUE(problem);
    EXPECT_THAT(output, HasSubstr("42")) << "what follows isn't taken for answers";
    host.documents().closeDocument(host.documents().curDocument());
    EXPECT_THAT(run("DDATTE"), HasSubstr("There is no drawing."));
    host.documents().appContextNewDocument(nullptr);
}

TEST_F(EditAttribute, TheLispFunctionDoesTheSameAndGivesNoValue) {
    define("A", "1");
    const AcDbObjectId reference = addIntelligent();
    const std::string printed = edit("(c:ddatte)\n(entnext)", [&](UserScript& user) {
        clickValue(user, 0);
        user.type("lisp").click(kOk);
    });
    EXPECT_THAT(texts(reference), ElementsAre("lisp"));
    EXPECT_THAT(printed, Not(HasSubstr("nil")));
    edit("(command \"DDATTE\" (entnext))", [&](UserScript& user) {
        clickValue(user, 0);
        user.type("fed").click(kOk);
    });
    EXPECT_THAT(texts(reference), ElementsAre("fed"));
}

TEST_F(EditAttribute, OneUndoTakesBackAllThatADialogWrote) {
    define("A", "1");
    define("B", "2");
    const AcDbObjectId plain = addFromBlock();
    for (const char* line : {"DDATTE (entnext)", "(c:ddatte)\n(entnext)"}) {
        edit(line, [&](UserScript& user) {
            clickValue(user, 0);
            user.type("a").press(VK_RETURN).type("b").press(VK_RETURN);
        });
        EXPECT_THAT(texts(plain), ElementsAre("a", "b")) << line;
        run("U");
        EXPECT_THAT(texts(plain), ElementsAre("1", "2")) << line;
        run("REDO");
        EXPECT_THAT(texts(plain), ElementsAre("a", "b")) << line;
        run("U");
    }
    { AcDbObjectPointer<AcDbEntity>(plain, AcDb::kForWrite)->erase(); }
    const AcDbObjectId intelligent = addIntelligent();
    edit("DDATTE (entnext)", [&](UserScript& user) {
        clickValue(user, 0);
        user.type("a").press(VK_RETURN).type("b").press(VK_RETURN);
    });
    run("U");
    EXPECT_THAT(texts(intelligent), ElementsAre("1", "2"));
    EXPECT_THAT(defaults(intelligent), ElementsAre("1", "2"));
}

/// Notes what happens to the lock, and what is changed while there is none.
class LockWatch : public AcApDocManagerReactor, public AcDbDatabaseReactor {
public:
    std::vector<std::string> seen;

    void documentLockModeChanged(AcApDocument*, AcAp::DocLockMode, AcAp::DocLockMode mine, AcAp::DocLockMode,
                                 const char* name) override {
        seen.push_back(std::to_string(mine) + name);
    }
    void objectModified(const AcDbDatabase*, const AcDbObject* object) override {
        seen.push_back(object->isA()->name());
    }
};

TEST_F(EditAttribute, WritesUnderALockOfTheDocument) {
    define("A", "1");
    addFromBlock();
    LockWatch watch;
    edit("DDATTE (entnext)", [&](UserScript& user) {
        user.call([&] {
            host.documents().addReactor(&watch);
            database().addReactor(&watch);
        });
        user.click(kOk);
    });
    host.documents().removeReactor(&watch);
    database().removeReactor(&watch);
    EXPECT_THAT(watch.seen, ElementsAre("4", "AcDbAttribute", "AcDbBlockReference", "2"));
}

TEST_F(EditAttribute, WhatSomebodyHoldsOpenIsLeftAsItIs) {
    define("A", "1");
    define("B", "2");
    define("C", "3");
    const AcDbObjectId plain = addFromBlock();
    const auto typeAll = [](UserScript& user) {
        clickValue(user, 0);
        for (const char* text : {"a", "b", "c"})
            user.type(text).press(VK_RETURN);
    };
    const auto editWhileHeld = [&](AcDbObjectId held) {
        std::unique_ptr<AcDbObjectPointer<AcDbEntity>> reader;
        edit("DDATTE (entnext)", [&](UserScript& user) {
            user.call([&, held] { reader = std::make_unique<AcDbObjectPointer<AcDbEntity>>(held); });
            typeAll(user);
        });
        reader.reset();
        EXPECT_EQ(host.documents().curDocument()->lockMode(), AcAp::kNotLocked);
    };
    editWhileHeld(plain);
    EXPECT_THAT(texts(plain), ElementsAre("1", "2", "3")) << "the reference itself";
    editWhileHeld(attributeOf(plain, 1));
    EXPECT_THAT(texts(plain), ElementsAre("a", "2", "b")) << "a plain attribute is passed over";
    { AcDbObjectPointer<AcDbEntity>(plain, AcDb::kForWrite)->erase(); }
    const AcDbObjectId intelligent = addIntelligent();
    editWhileHeld(attributeOf(intelligent, 1));
    EXPECT_THAT(texts(intelligent), ElementsAre("a", "2", "3")) << "with an Intelligent Block it ends there";

    edit("DDATTE (entnext)", [&](UserScript& user) {
        user.call([&] { host.documents().lockDocument(host.documents().curDocument(), AcAp::kXWrite); });
        typeAll(user);
    });
    EXPECT_EQ(host.documents().curDocument()->lockMode(), AcAp::kXWrite) << "another's lock stays";
    EXPECT_THAT(texts(intelligent), ElementsAre("a", "2", "3"));
    host.documents().unlockDocument(host.documents().curDocument());
}

TEST_F(EditAttribute, TheSavedFileHoldsTheValues) {
    define("NAME", "nobody");
    define("NOTE", "");
    const AcDbObjectId plain = addFromBlock();
    edit("DDATTE (entnext)", [&](UserScript& user) {
        clickValue(user, 0);
        user.type("J\xFCrgen Gro\xDF").press(VK_RETURN).type("\x80 5,\x2D").click(kOk);
    });
    run("(c:_bInsert \"DESK\" (list 50 0 0))");
    { AcDbObjectPointer<AcDbEntity>(plain, AcDb::kForWrite)->erase(); }
    edit("DDATTE (entnext)", [&](UserScript& user) {
        clickValue(user, 1);
        user.type("\xC4\xD6\xDC").click(kOk);
    });
    { AcDbObjectPointer<AcDbEntity>(plain, AcDb::kForWrite, true)->erase(false); }
    const std::string file = folder / "values.dwg";
    ASSERT_EQ(database().saveAs(file.c_str()), Acad::eOk) << database().lastFileError();
    AcDbDatabase drawing(false);
    ASSERT_EQ(drawing.readDwgFile(file.c_str()), Acad::eOk) << drawing.lastFileError();
    const std::vector<AcDbObjectId> ids = entities(drawing.modelSpaceId());
    ASSERT_EQ(ids.size(), 4U);
    EXPECT_THAT(texts(ids[0]), ElementsAre("J\xFCrgen Gro\xDF", "\x80 5,-"));
    EXPECT_THAT(texts(ids[1]), ElementsAre("nobody", "\xC4\xD6\xDC"));
    EXPECT_THAT(defaults(ids[1]), ElementsAre("nobody", "\xC4\xD6\xDC"));
}

} // namespace
