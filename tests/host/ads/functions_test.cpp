#include "ads/ads.h"
#include "ads/external_functions.h"
#include "host/host_fixture.h"
#include "rx/registry.h"

#include <cmath>

using namespace vndk::host;

namespace {

std::vector<std::string> g_calls;

AcRx::AppRetCode entry(AcRx::AppMsgCode message, void*) {
    g_calls.push_back("message " + std::to_string(message) + " code " + std::to_string(acedGetFunCode()));
    // The road of an application that dispatches itself: it releases its own list, its handler doesn't.
    resbuf* const list = acedGetArgs();
    resbuf* const again = acedGetArgs();
    EXPECT_TRUE(!list || list != again);
    acedRetInt(acedGetFunCode());
    acutRelRb(list);
    return AcRx::kRetOK;
}

int twice() {
    const resbuf* const list = acedGetArgs(); // never released here
    if (!list || list->restype != RTREAL)
        return RTERROR;
    acedRetNil();
    return acedRetReal(list->resval.rreal * 2);
}

int quiet() {
    acedRetVoid();
    acedRetVoid();
    return 0;
}

int asks() {
    acedInitGet(128, "Yes No"); // these rules are no text's
    char text[256] = "untouched";
    const int result = acedGetString(1, "\nText: ", text);
    return acedRetStr((std::to_string(result) + text).c_str());
}

int changes() {
    resbuf value;
    value.restype = RTREAL;
    value.resval.rreal = 9;
    acedSetVar("LTSCALE", &value);
    acedCommand(RTSTR, "SETVAR", RTSTR, "CELTSCALE", RTREAL, 4.0, RTNONE);
    return acedRetT();
}

class FunctionsTest : public HostTest {
protected:
    FunctionsTest() {
        g_calls.clear();
        application.name = "test.arx";
        application.entry = entry;
    }
    /// Defines functions as the application does when it is told of a document.
    void define(const char* name, int code, int (*handler)() = nullptr) {
        const ExternalFunctions::ApplicationScope scope(host.externals(), application);
        EXPECT_EQ(acedDefun(name, code), RTNORM);
        if (handler) {
            EXPECT_EQ(acedRegFunc(handler, code), RTNORM);
        }
    }
    LoadedApplication application;
};

} // namespace

TEST_F(FunctionsTest, areCalledByMessageOrDirectly) {
    define("c:_mixed", 1);
    define("TWICE", 0, twice);
    EXPECT_EQ(lisp("(C:_MIXED \"a\" 1)"), "1");
    EXPECT_EQ(lisp("(c:_Mixed)"), "1");
    EXPECT_EQ(g_calls, (std::vector<std::string>{"message 5 code 1", "message 5 code 1"}));
    EXPECT_EQ(lisp("(twice (twice 1.5))"), "6.0");
    EXPECT_EQ(acedGetFunCode(), RTERROR);
    EXPECT_EQ(acedGetArgs(), nullptr);
    EXPECT_EQ(acedRetVoid(), RTERROR);
}

TEST_F(FunctionsTest, anErrorResultIsALispError) {
    define("TWICE", 0, twice);
    EXPECT_EQ(lisp("(twice \"a\")").rfind("; error: ", 0), 0u);
    EXPECT_EQ(lisp("(twice)").rfind("; error: ", 0), 0u);
}

TEST_F(FunctionsTest, aVoidResultIsNotPrinted) {
    define("QUIET", 3, quiet);
    EXPECT_EQ(run("(quiet)\n"), "Command: (quiet)\n");
}

TEST_F(FunctionsTest, namedAsCommandsCanBeTyped) {
    define("c:_typed", 2);
    run("_TYPED\n");
    EXPECT_EQ(g_calls.size(), 1u);
    EXPECT_FALSE(problem);
}

TEST_F(FunctionsTest, whatOneExpressionChangesIsOneUndoGroup) {
    define("CHANGES", 0, changes);
    run("(progn (changes) (changes))\n");
    EXPECT_EQ(database().header().LTSCALE, 9.0);
    EXPECT_EQ(database().header().CELTSCALE, 4.0);
    EXPECT_EQ(database().undo().undoCount(), 1u);
    EXPECT_TRUE(database().undo().undo());
    EXPECT_EQ(database().header().LTSCALE, 1.0);
    EXPECT_EQ(database().header().CELTSCALE, 1.0);
}

TEST_F(FunctionsTest, belongToTheirDocument) {
    define("MINE", 0, quiet);
    AcApDocument* const first = &document();
    host.documents().appContextNewDocument(nullptr);
    EXPECT_EQ(lisp("(mine)"), "; error: no function definition: MINE");
    define("MINE", 0, quiet);
    host.documents().closeDocument(first);
    host.externals().forgetApplication(application);
    EXPECT_EQ(lisp("(mine)").rfind("; error: ", 0), 0u) << "the code may be unmapped now";
}

TEST_F(FunctionsTest, wrongDefinitionsAreRefused) {
    EXPECT_EQ(acedDefun("NOBODY", 0), 0) << "no application runs";
    const ExternalFunctions::ApplicationScope scope(host.externals(), application);
    EXPECT_EQ(acedDefun("", 0), 0);
    EXPECT_EQ(acedDefun(nullptr, 0), 0);
    EXPECT_EQ(acedDefun("NEGATIVE", -1), 0);
    EXPECT_EQ(acedRegFunc(quiet, -1), 0);
    EXPECT_EQ(acedUndef("NOTHING", 0), RTERROR);
}

TEST_F(FunctionsTest, variablesTravelInBuffersOfTheirType) {
    resbuf value;
    EXPECT_EQ(acedGetVar("ATTREQ", &value), RTNORM);
    EXPECT_EQ(value.restype, RTSHORT);
    value.resval.rint = 0;
    EXPECT_EQ(acedSetVar("attreq", &value), RTNORM);
    EXPECT_EQ(database().attreq(), 0);
    value.resval.rint = 7;
    EXPECT_EQ(acedSetVar("ATTREQ", &value), RTERROR);
    EXPECT_EQ(acedGetVar("CLAYER", &value), RTNORM);
    EXPECT_STREQ(value.resval.rstring, "0");
    acutDelString(value.resval.rstring);
    EXPECT_EQ(acedGetVar("LIMMAX", &value), RTNORM);
    EXPECT_EQ(value.restype, RTPOINT);
    EXPECT_EQ(acedGetVar("NOSUCH", &value), RTERROR);
}

TEST_F(FunctionsTest, coordinatesBecomeTextAsThePaletteSendsThem) {
    char buffer[128];
    EXPECT_EQ(acdbRToS(12.5, 2, 8, buffer), RTNORM);
    EXPECT_STREQ(buffer, "12.50000000");
    EXPECT_EQ(acdbRToS(-1e98, 2, 8, buffer), RTNORM);
    EXPECT_EQ(acdbRToS(std::nan(""), 2, 8, buffer), RTERROR);
    EXPECT_EQ(acdbRToS(1, 9, 8, buffer), RTERROR);
    ads_real number = 0;
    EXPECT_EQ(acdbDisToF("2'6\"", 4, &number), RTNORM);
    EXPECT_DOUBLE_EQ(number, 30);
    EXPECT_EQ(acdbDisToF("x", 2, &number), RTERROR);
}

TEST_F(FunctionsTest, printingFormatsTextOfAnyLength) {
    const std::string text(5000, 'x');
    output.clear();
    acutPrintf("\n%s %d", text.c_str(), 5);
    EXPECT_EQ(output, "\n" + text + " 5");
}

TEST_F(FunctionsTest, servicesAreFoundByName) {
    EXPECT_EQ(AcEditor::cast(acrxSysRegistry()->at("AcEditor")), &host.editor());
    EXPECT_EQ(AcEdCommandStack::cast(acrxSysRegistry()->at("ACAD_REGISTERED_COMMANDS")), &host.commands());
    EXPECT_EQ(AcRxDynamicLinker::cast(acrxSysRegistry()->at("DynamicLinker")), &host.linker());
    EXPECT_EQ(AcEditor::cast(&host.commands()), nullptr);
}

TEST_F(FunctionsTest, unknownModulesGiveAMessageAndLoadNothing) {
    output.clear();
    EXPECT_FALSE(acrxLoadModule("nosuch.arx", true));
    EXPECT_NE(output.find("nosuch.arx"), std::string::npos);
    EXPECT_FALSE(acrxLoadModule("", false));
    EXPECT_FALSE(acrxLoadModule(nullptr, false));
    EXPECT_FALSE(acrxUnloadModule("nosuch.arx"));
    EXPECT_EQ(acrxLoadedApps(), nullptr);
}

TEST_F(FunctionsTest, textsComeWholeOrNotAtAll) {
    define("ASKS", 0, asks);
    const std::string longest(255, 'x');
    EXPECT_NE(run("(asks)\n" + longest + "\n").find("\"5100" + longest + '"'), std::string::npos);
    const std::string again = run("(asks)\n" + longest + "y\nshort one\n");
    EXPECT_NE(again.find("The text may have 255 characters at most.\nText: short one"), std::string::npos) << again;
    EXPECT_NE(again.find("\"5100short one\""), std::string::npos);
    EXPECT_FALSE(problem);
    host.commandLine().setInvalidAnswers(InvalidAnswers::FailCommand);
    EXPECT_NE(run("(asks)\n" + longest + "y\n").find("\"-5001untouched\""), std::string::npos);
    EXPECT_TRUE(problem && problem->kind == Problem::Kind::InvalidAnswer);
    // A cancel is no failure, but the end of the input is.
    EXPECT_NE(run("(asks)\n\x1B").find("\"-5002untouched\""), std::string::npos);
    EXPECT_FALSE(problem);
    EXPECT_NE(run("(asks)\n").find("\"-5002untouched\""), std::string::npos);
    EXPECT_TRUE(problem && problem->message == "ASKS was still asking when the input ended.");
}
