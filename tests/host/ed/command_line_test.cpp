#include "ads/ads.h"
#include "host/host_fixture.h"

#include <algorithm>
#include <deque>

using namespace vndk::host;

namespace {

std::deque<std::string> g_seen;

/// Asks for points until Enter; keeps what it got. "Keep" is a keyword, "Fail" makes it fail.
CommandResult collect(CommandContext& ctx) {
    for (;;) {
        AcGePoint3d point;
        ctx.prompts().initGet(0, "Keep Fail");
        switch (ctx.prompts().getPoint("\nPoint: ", point)) {
        case PromptStatus::Normal:
            g_seen.push_back(std::to_string(static_cast<int>(point.x)) + "," +
                             std::to_string(static_cast<int>(point.y)));
            ctx.host().variables().set("LTSCALE", point.x + 1);
            break;
        case PromptStatus::None:
            return CommandResult::Done;
        case PromptStatus::Keyword:
            g_seen.push_back(ctx.prompts().keyword());
            if (ctx.prompts().keyword() == "Fail")
                return ctx.fail("It was told to fail.");
            break;
        default:
            return ctx.stopped();
        }
    }
}

CommandResult peek(CommandContext& ctx) {
    g_seen.push_back("peek in " + ctx.host().commandLine().commandNames());
    return CommandResult::Done;
}

CommandResult sendsText(CommandContext& ctx) {
    ctx.host().documents().sendStringToExecute(&ctx.document(), "\x1B\x1B(setq sent 1) ", false, true, false);
    AcGePoint3d point;
    return ctx.prompts().getPoint("", point) == PromptStatus::Normal ? CommandResult::Done : ctx.stopped();
}

const BuiltInCommand kRows[] = {
    {"TCOLLECT", ACRX_CMD_MODAL, collect},
    {"TPEEK", ACRX_CMD_TRANSPARENT, peek},
    {"TSEND", ACRX_CMD_MODAL, sendsText},
};

void moduleCommand() { g_seen.push_back("module"); }

class CommandLineTest : public HostTest {
protected:
    CommandLineTest() {
        g_seen.clear();
        for (const BuiltInCommand& row : kRows)
            host.commands().addBuiltIn(row);
    }
    using Seen = std::deque<std::string>;
    using Events = std::vector<std::string>;
};

} // namespace

TEST_F(CommandLineTest, runsCommandsWithTheirAnswersAndTellsOfThem) {
    run("tcollect 1,2 @1,1 k\n\n");
    EXPECT_EQ(g_seen, (Seen{"1,2", "2,3", "Keep"}));
    EXPECT_EQ(events.front(), "start TCOLLECT");
    EXPECT_EQ(events.back(), "end TCOLLECT");
    EXPECT_FALSE(problem);
    EXPECT_FALSE(host.commandLine().commandActive());
}

TEST_F(CommandLineTest, enterRepeatsTheLastCommand) {
    run("tpeek\n\n(+ 1 2)\n\n");
    EXPECT_EQ(g_seen, (Seen{"peek in TPEEK", "peek in TPEEK", "peek in TPEEK"}));
}

TEST_F(CommandLineTest, unknownNamesAreTold) {
    const std::string text = run("foo 'bar\n");
    EXPECT_NE(text.find("Unknown command \"FOO\".  Press F1 for help.\n"), std::string::npos) << text;
    EXPECT_EQ(events, (Events{"unknown FOO", "unknown BAR"}));
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, Problem::Kind::UnknownCommand);
}

TEST_F(CommandLineTest, code27CancelsWhatRunsAndNothingElse) {
    run("\x1B\x1BTCOLLECT 1,2 \x1B\x1B(setq a 5) TPEEK\n");
    EXPECT_EQ(events.back(), "end TPEEK");
    EXPECT_NE(std::find(events.begin(), events.end(), "cancel TCOLLECT"), events.end());
    EXPECT_EQ(lisp("a"), "5");
    EXPECT_FALSE(problem) << "a cancel that was typed is no failure";
}

TEST_F(CommandLineTest, aScriptThatEndsWithinACommandIsAProblem) {
    run("\nTCOLLECT 1,2\n");
    EXPECT_EQ(events.back(), "cancel TCOLLECT");
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, Problem::Kind::CommandCancelled);
    EXPECT_EQ(problem->line, 2u);
}

TEST_F(CommandLineTest, failuresNameTheirLineAndKeepTheirMessage) {
    host.commandLine().setInvalidAnswers(InvalidAnswers::FailCommand);
    run("TPEEK\n\nTCOLLECT f 1,1\nTPEEK\nTCOLLECT nonsense 1,1\nTPEEK\n");
    EXPECT_EQ(g_seen, (Seen{"peek in TPEEK", "peek in TPEEK", "Fail", "peek in TPEEK", "peek in TPEEK"}));
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, Problem::Kind::CommandFailed);
    EXPECT_EQ(problem->message, "It was told to fail.");
    EXPECT_EQ(problem->line, 3u);
    EXPECT_EQ(std::count(events.begin(), events.end(), "fail TCOLLECT"), 2);
}

TEST_F(CommandLineTest, transparentCommandsRunWithinAPrompt) {
    run("TCOLLECT 1,1 'TPEEK 2,2 'TCOLLECT 3,3\n\n");
    EXPECT_EQ(g_seen, (Seen{"1,1", "peek in TCOLLECT'TPEEK", "2,2", "3,3"}));
}

TEST_F(CommandLineTest, eachCommandIsOneUndoGroup) {
    run("TCOLLECT 1,1 2,2\n\nTCOLLECT 5,5\n\n");
    EXPECT_EQ(database().undo().undoCount(), 2u);
    EXPECT_EQ(database().undo().undoName(), "TCOLLECT");
    database().undo().undo();
    EXPECT_EQ(database().header().LTSCALE, 3.0);
    database().undo().undo();
    EXPECT_EQ(database().header().LTSCALE, 1.0);
}

TEST_F(CommandLineTest, expressionsPrintTheirValueAndErrors) {
    EXPECT_NE(run("(+ 1 2)\n").find("\n3\n"), std::string::npos) << output;
    run("(princ)\n");
    EXPECT_EQ(output, "Command: (princ)\n");
    run("!nothing\n");
    EXPECT_EQ(output, "Command: !nothing\nnil\n");
    EXPECT_NE(run("\n(car 1)\n").find("; error: bad argument type"), std::string::npos) << output;
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, Problem::Kind::LispError);
    EXPECT_EQ(events.back(), "lisp cancelled");
}

TEST_F(CommandLineTest, lispFunctionsNamedCRunAsCommands) {
    run("(defun c:hello () (setq said (getstring)))\nHello world\n");
    EXPECT_EQ(lisp("said"), "\"world\"");
    EXPECT_NE(std::find(events.begin(), events.end(), "lisp (C:HELLO)"), events.end());
}

TEST_F(CommandLineTest, moduleCommandsRunWithTheirGlobalName) {
    host.commands().addCommand("G", "TMODULE", "TMODUL", 0, moduleCommand);
    run("tmodul _tmodule\n");
    EXPECT_EQ(g_seen, (Seen{"module", "module"}));
    EXPECT_EQ(events, (Events{"start TMODULE", "end TMODULE", "start TMODULE", "end TMODULE"}));
}

TEST_F(CommandLineTest, aModuleCommandThatAsksUntilItIsAnsweredEndsAllTheSame) {
    host.commands().addCommand("G", "TASKS", "TASKS", 0, [] {
        ads_name entity;
        ads_point point;
        for (int result = RTERROR; result != RTNORM && result != RTCAN;)
            result = acedEntSel(nullptr, entity, point);
        g_seen.push_back("asked");
    });
    run("TASKS\n7,7\n\n");
    EXPECT_EQ(problem->kind, Problem::Kind::CommandCancelled) << "at the input's end";
    host.commandLine().setInvalidAnswers(InvalidAnswers::FailCommand);
    run("TASKS\nnonsense\nTPEEK\n");
    EXPECT_EQ(problem->kind, Problem::Kind::InvalidAnswer) << "at an answer that nobody corrects";
    EXPECT_EQ(g_seen, (Seen{"asked", "asked", "peek in TPEEK"})) << "what follows is no answer";
    host.documents().closeDocument(host.documents().curDocument());
    run("TASKS\n");
    EXPECT_EQ(problem->message, "TASKS needs a drawing, and none is open.");
    EXPECT_EQ(g_seen.size(), 3u);
}

TEST_F(CommandLineTest, aCommandThatRemovesItselfEndsWell) {
    static Host* current;
    current = &host;
    host.commands().addCommand("G", "TGONE", "TGONE", 0, [] { current->commands().removeGroup("G"); });
    run("TGONE\nTGONE\n");
    EXPECT_EQ(events, (Events{"start TGONE", "end TGONE", "unknown TGONE"}));
}

// (command ...)

TEST_F(CommandLineTest, commandTakesItsAnswersFromTheCall) {
    run("(command \"TCOLLECT\" '(1 2) \"3,4\" (list 5.0 6.0 0.0) \"\")\n");
    EXPECT_EQ(g_seen, (Seen{"1,2", "3,4", "5,6"}));
    EXPECT_EQ(events.back(), "lisp ended");
    EXPECT_FALSE(problem);
}

TEST_F(CommandLineTest, commandWaitsBetweenCalls) {
    run("(progn (command \"TCOLLECT\" \"1,1\") (foreach p '((2 2) (3 3)) (command p) (setq names (getvar "
        "\"CMDNAMES\"))) (command \"\") (setq after (getvar \"CMDNAMES\")))\n");
    EXPECT_EQ(g_seen, (Seen{"1,1", "2,2", "3,3"}));
    EXPECT_EQ(lisp("names"), "\"TCOLLECT\"");
    EXPECT_EQ(lisp("after"), "\"\"");
}

TEST_F(CommandLineTest, oneCallRunsSeveralCommands) {
    run("(command \"TCOLLECT\" \"1,1\" \"\" \"TPEEK\" \"TCOLLECT\" \"2,2\" \"\")\n");
    EXPECT_EQ(g_seen, (Seen{"1,1", "peek in TPEEK", "2,2"}));
    EXPECT_EQ(database().undo().undoCount(), 2u);
}

TEST_F(CommandLineTest, pauseAsksTheUser) {
    run("(command \"TCOLLECT\" pause \"2,2\" pause \"\") 1,1 (list 3 3)\n");
    EXPECT_EQ(g_seen, (Seen{"1,1", "2,2", "3,3"}));
}

TEST_F(CommandLineTest, whatTheCallLeavesOpenTheUserGoesOnWith) {
    run("(command \"TCOLLECT\" \"1,1\")\n2,2 (command \"3,3\") k\n\nTPEEK\n");
    EXPECT_EQ(g_seen, (Seen{"1,1", "2,2", "3,3", "Keep", "peek in TPEEK"}));
}

TEST_F(CommandLineTest, valuesThatACommandLeavesBeginTheNextOne) {
    run("(command \"TCOLLECT\" \"1,1\")\n(command \"2,2\" \"\" \"TCOLLECT\" \"3,3\")\n4,4\n\nTPEEK\n");
    EXPECT_EQ(g_seen, (Seen{"1,1", "2,2", "3,3", "4,4", "peek in TPEEK"}));
}

TEST_F(CommandLineTest, expressionsAtAPauseMayFeedAndCancel) {
    run("(command \"TCOLLECT\" pause \"3,3\" pause) (command \"1,1\" \"2,2\") (command) TPEEK\n");
    EXPECT_EQ(g_seen.front(), "1,1");
    EXPECT_EQ(g_seen.back(), "peek in TPEEK");
    EXPECT_FALSE(host.commandLine().commandActive());
}

TEST_F(CommandLineTest, anEmptyCallAtAPromptCancelsIt) {
    run("TCOLLECT 1,1 (command) TPEEK\n");
    EXPECT_EQ(g_seen, (Seen{"1,1", "peek in TPEEK"}));
    EXPECT_NE(std::find(events.begin(), events.end(), "cancel TCOLLECT"), events.end());
}

TEST_F(CommandLineTest, anEmptyCallCancels) {
    run("(progn (command \"TCOLLECT\" \"1,1\") (command) (command))\n");
    EXPECT_NE(std::find(events.begin(), events.end(), "cancel TCOLLECT"), events.end());
    EXPECT_FALSE(host.commandLine().commandActive());
}

TEST_F(CommandLineTest, anErrorInLispCancelsItsCommand) {
    run("(progn (command \"TCOLLECT\" \"1,1\") (car 1))\nTPEEK\n");
    EXPECT_NE(std::find(events.begin(), events.end(), "cancel TCOLLECT"), events.end());
    EXPECT_EQ(g_seen.back(), "peek in TPEEK");
}

TEST_F(CommandLineTest, anExpressionTypedAtAPromptAnswersIt) {
    run("TCOLLECT (command \"1,1\" \"2,2\") (car '((3 3) 4)) (setq x nil) 4,4\n\n");
    EXPECT_EQ(g_seen, (Seen{"1,1", "2,2", "3,3", "4,4"}));
}

TEST_F(CommandLineTest, unknownNamesInACallAreTold) {
    run("(command \"NOSUCH\" \"1,1\")\n");
    EXPECT_NE(output.find("Unknown command \"NOSUCH\""), std::string::npos);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, Problem::Kind::UnknownCommand);
}

// Text that is sent

TEST_F(CommandLineTest, aStepThatIsGivenUpAsksNobody) {
    host.commands().addCommand(
        "TESTS", "GIVEUP", "GIVEUP", 0,
        [] {
            Host& current = *Host::current();
            current.commandLine().abandonStep();
            current.commandLine().runCommand("CIRCLE");
        },
        nullptr, -1, nullptr, nullptr);
    host.commandLine().setInvalidAnswers(InvalidAnswers::FailCommand);
    run("GIVEUP 1,1\nCIRCLE 2,2 3\n");
    EXPECT_FALSE(problem);
    EXPECT_NE(output.find("*Cancel*"), std::string::npos) << output;
    EXPECT_EQ(entityCount(), 1U) << "what stands behind it on its line goes, the next line runs";
}

TEST_F(CommandLineTest, sentTextRunsLaterAndCancelsTheCommandThatAsks) {
    run("TSEND 1,1 TPEEK\n");
    EXPECT_EQ(lisp("sent"), "1");
    EXPECT_NE(std::find(events.begin(), events.end(), "cancel TSEND"), events.end());

    host.documents().sendStringToExecute(&document(), "(setq later 2) ", false, true, false);
    EXPECT_EQ(lisp("later"), "nil");
    host.pump();
    EXPECT_EQ(lisp("later"), "2");
}

TEST_F(CommandLineTest, textForAnotherDocumentWaitsUntilItIsCurrent) {
    AcApDocument* const first = &document();
    host.documents().appContextNewDocument(nullptr);
    host.documents().sendStringToExecute(first, "(setq here 1) ", false, true, false);
    host.pump();
    EXPECT_EQ(lisp("here"), "nil");
    host.documents().activateDocument(first);
    host.pump();
    EXPECT_EQ(lisp("here"), "1");
    EXPECT_EQ(host.documents().sendStringToExecute(nullptr, "x"), Acad::eNoDocument);
}
