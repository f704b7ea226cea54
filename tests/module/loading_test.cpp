// The module as the host loads and unloads it.
#include "ed/display.h"
#include "module/module_fixture.h"
#include "rx/lisp_functions.h"
#include "rx/registry.h"
#include "win32/loader.h"

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class CountingDisplay : public vndk::host::Display {
public:
    int width() const override { return 100; }
    int height() const override { return 100; }
    AcGsModel& model() override { std::abort(); } // nobody draws here
    void viewChanged() override {}
    void update() override { ++updates; }
    void regenerate() override {}
    void highlight(std::vector<AcDbObjectId> /*entities*/) override {}

    int updates = 0;
};

class LoadingTest : public ModuleTest {
protected:
    void SetUp() override {}

    bool knows(const char* function) {
        return run(std::string("(type ") + function + ")").find("nil") == std::string::npos;
    }

    static size_t reactorCount(AcDbDatabase& database) {
        size_t count = 0;
        database.reactors().tell([&](AcDbDatabaseReactor&) { ++count; });
        return count;
    }

    HINSTANCE instanceOf(const char* name) {
        for (const vndk::host::LoadedApplication* application : host.linker().applications())
            if (application->name == name)
                return application->instance;
        return nullptr;
    }
};

TEST_F(LoadingTest, SaysThatItIsThere) {
    loadModule();
    EXPECT_THAT(output, HasSubstr("\nVondrake Free version loaded.\nType BLOCKS to activate the dockable dialog box."));
}

TEST_F(LoadingTest, AnswersTheApiLevelAndNeverAFailure) {
    loadModule();
    const HINSTANCE module = instanceOf("VNDKKeldmoor.arx");
    const auto version = reinterpret_cast<int (*)()>(vndk::win32::getProcAddress(module, "acrxGetApiVersion"));
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(version(), 0xF0000);
    const auto entry = reinterpret_cast<AcRxEntryPoint>(vndk::win32::getProcAddress(module, "acrxEntryPoint"));
    // A dispatch outside of any call has no function code.
    output.clear();
    EXPECT_EQ(entry(AcRx::kInvkSubrMsg, nullptr), AcRx::kRetOK);
    EXPECT_THAT(output, HasSubstr("Received nonexistent function code."));
    for (int message : {0, 3, 4, 6, 7, 8, 9, 10, 11, 15})
        EXPECT_EQ(entry(static_cast<AcRx::AppMsgCode>(message), nullptr), AcRx::kRetOK) << message;
}

TEST_F(LoadingTest, RegistersItsCommandsWithTheirFlags) {
    loadModule();
    const struct {
        const char* name;
        int flags;
    } rows[] = {{"BLOCKS", 6},    {"DDATTE2", 2},   {"DDATTE", 2}, {"EATTEDIT", 7},
                {"-EATTEDIT", 7}, {"_EATTEDIT", 7}, {"EA", 7}};
    for (const auto& row : rows) {
        const AcEdCommand* const command = host.commands().lookupCmd(row.name, "VNDKCOMMANDS");
        ASSERT_NE(command, nullptr) << row.name;
        EXPECT_EQ(command->commandFlags(), row.flags) << row.name;
        EXPECT_STREQ(command->localName(), row.name);
        EXPECT_EQ(command->functionCode(), -1) << row.name;
        EXPECT_EQ(command->UIContext(), nullptr) << row.name;
    }
}

TEST_F(LoadingTest, TakesThePlaceOfTheHostsAttributeEditorAndLeavesItUndefined) {
    const AcEdCommand* const hostsOwn = host.commands().lookupGlobalCmd("EATTEDIT");
    ASSERT_NE(hostsOwn, nullptr);
    loadModule();
    const AcDbObjectId block = addBlock("DESK");
    append(block, new AcDbAttributeDefinition({}, "1", "A", "A?"));
    const AcDbObjectId id = append(database().modelSpaceId(), new AcDbBlockReference({}, block));
    auto* const attribute = new AcDbAttribute({}, "1", "A");
    { AcDbObjectPointer<AcDbBlockReference>(id, AcDb::kForWrite)->appendAttribute(attribute); }
    attribute->close();
    for (const char* name : {"EATTEDIT", "-EATTEDIT", "_EATTEDIT", "EA", "eattedit"}) {
        // Without a screen there is no dialog; the host's own would go on and ask for a value.
        EXPECT_THAT(run(std::string(name) + " L"),
                    AllOf(HasSubstr("\nSelect a block: "), Not(HasSubstr("Enter value"))))
            << name;
        EXPECT_FALSE(problem) << name;
    }
    EXPECT_TRUE(hostsOwn->isUndefined());
    ASSERT_TRUE(acrxUnloadModule("VNDKKeldmoor.arx"));
    EXPECT_TRUE(hostsOwn->isUndefined());
    EXPECT_THAT(run("EATTEDIT"), HasSubstr("Unknown command \"EATTEDIT\""));
}

TEST_F(LoadingTest, ThePaletteNeedsAWindow) {
    loadModule();
    EXPECT_THAT(run("BLOCKS"), HasSubstr("A dock bar needs the program's window, and there is none."));
    EXPECT_THAT(run("BLOCKS"), Not(HasSubstr("rror"))) << "the bar that there is has no window";
}

TEST_F(LoadingTest, DefinesItsFunctionsInEachDocument) {
    loadModule();
    const char* const functions[] = {"c:_binsertfile", "c:_bInsert", "C:DDATTE"};
    for (const char* name : functions)
        EXPECT_TRUE(knows(name)) << name;
    ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    for (const char* name : functions)
        EXPECT_TRUE(knows(name)) << name;
    ASSERT_TRUE(acrxUnloadModule("VNDKKeldmoor.arx"));
    for (const char* name : functions)
        EXPECT_FALSE(knows(name)) << name;
}

TEST_F(LoadingTest, WhatThePaletteSendsIsKnownInEachDocument) {
    CountingDisplay display;
    loadModule();
    host.setDisplay(&display);
    for (int documents = 1; documents <= 2; ++documents) {
        for (const char* text : {"(_refresh)", "(c:_grip 12)", "(c:_grip -1)"}) {
            output.clear();
            const std::string sent = std::string(text) + " "; // as the palette ends its lines
            host.documents().sendStringToExecute(host.documents().curDocument(), sent.c_str(), false, true, false);
            host.pump();
            EXPECT_THAT(output, EndsWith("Command: " + std::string(text) + "\n")) << "and nothing is said to it";
            EXPECT_EQ(database().undo().undoCount(), 0U) << text;
        }
        EXPECT_EQ(display.updates, documents) << "once, by the refresh";
        ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    }
    host.setDisplay(nullptr);
    EXPECT_TRUE(knows("_refresh"));
    ASSERT_TRUE(acrxUnloadModule("VNDKKeldmoor.arx"));
    EXPECT_FALSE(knows("_refresh"));
    EXPECT_FALSE(knows("c:_grip"));
}

TEST_F(LoadingTest, OnlyALibraryThatRunsDefinesFunctions) {
    auto* const functions = AcRxLispFunctions::cast(acrxSysRegistry()->at(kRxLispFunctions));
    ASSERT_NE(functions, nullptr);
    EXPECT_FALSE(functions->define("NOBODY", [] {}));
    EXPECT_FALSE(knows("NOBODY"));
}

TEST_F(LoadingTest, OnlyTheDocumentThatIsCurrentAtLoadAndAtUnloadIsWatchedAndLetGo) {
    AcApDocument* const first = host.documents().curDocument();
    loadModule();
    EXPECT_EQ(reactorCount(*first->database()), 1U);
    ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    EXPECT_EQ(reactorCount(database()), 0U) << "later documents come with the palette";
    // The second document is current now: unloading must leave nothing of the module with the first one.
    ASSERT_TRUE(acrxUnloadModule("VNDKKeldmoor.arx"));
    EXPECT_EQ(reactorCount(*first->database()), 0U);
}

TEST_F(LoadingTest, AWatchedDocumentMayClose) {
    AcApDocument* const first = host.documents().curDocument();
    loadModule();
    ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    EXPECT_EQ(host.documents().closeDocument(first), Acad::eOk);
    EXPECT_EQ(host.documents().documentCount(), 1);
}

TEST_F(LoadingTest, LoadsWithoutAnyDocument) {
    host.documents().closeDocument(host.documents().curDocument());
    loadModule();
    ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    addBlock("DESK");
    run("(c:_bInsert \"DESK\" (list 0 0 0))");
    EXPECT_EQ(modelSpace().size(), 1U);
}

TEST_F(LoadingTest, UnloadedWhileItsObjectsLiveTheObjectLibraryStays) {
    loadModule();
    addBlock("DESK");
    run("(c:_bInsert \"DESK\" (list 0 0 0))");
    ASSERT_TRUE(acrxUnloadModule("VNDKKeldmoor.arx"));
    EXPECT_EQ(instanceOf("VNDKKeldmoor.arx"), nullptr);
    EXPECT_NE(instanceOf("VNDKObjectsDbx.dbx"), nullptr);
    EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(modelSpace()[0])->isA(), VNDKBlockReference::desc());
    // It comes back to them.
    loadModule();
    run("(c:_bInsert \"DESK\" (list 1 0 0))");
    EXPECT_EQ(modelSpace().size(), 2U);
}

TEST_F(LoadingTest, UnloadedWithoutObjectsItTakesTheObjectLibraryAlong) {
    for (int round = 0; round < 3; ++round) {
        loadModule();
        EXPECT_NE(instanceOf("VNDKObjectsDbx.dbx"), nullptr);
        ASSERT_TRUE(acrxUnloadModule("VNDKKeldmoor.arx"));
        EXPECT_THAT(host.linker().applications(), IsEmpty());
        EXPECT_EQ(host.commands().lookupCmd("BLOCKS", "VNDKCOMMANDS"), nullptr);
    }
}

} // namespace
