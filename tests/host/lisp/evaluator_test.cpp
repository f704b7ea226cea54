#include "lisp_fixture.h"

namespace vndk::lisp {

TEST_F(LispTest, ControlForms) {
    check({
        {"(if nil 1)", "nil"},
        {"(if T 1 2)", "1"},
        {"(cond ((= 1 2) 'a) (5) (T 'b))", "5"},
        {"(cond (nil 1))", "nil"},
        {"(setq i 0 s 0) (while (< i 5) (setq i (1+ i) s (+ s i)))", "15"},
        {"(setq n 0) (repeat 3 (setq n (+ n 2)))", "6"},
        {"(repeat -1 1)", "nil"},
        {"(setq x 'keep) (foreach x '(1 2 3) (setq last_seen x)) (list x last_seen)", "(KEEP 3)"},
        {"(progn)", "nil"},
        {"(and 1 2)", "T"},
        {"(and 1 nil (car 5))", "nil"},
        {"(or nil 2)", "T"},
        {"(set 'y 7) Y", "7"},
        {"(eval (list '+ 1 2))", "3"},
        {"(read \"(a . b) rest\")", "(A . B)"},
        {"((lambda (a b) (- a b)) 5 3)", "2"},
        {"(defun f (a / b) (setq b (* a 2)) b)", "F"},
        {"(setq b 'outer) (list (f 4) b)", "(8 OUTER)"},
        {"nil", "nil"},
        {"; only a comment", "nil"},
        {"(list 1 ;| a block\n comment |; 2)", "(1 2)"},
    });
}

TEST_F(LispTest, VariablesAreBoundDynamically) {
    check({
        {"(defun inner () (setq seen x)) (defun outer (x) (inner)) (setq x 1) (outer 2) (list x seen)", "(1 2)"},
        {"(defun fact (n) (if (< n 2) 1 (* n (fact (1- n))))) (fact 10)", "3628800"},
        {"(defun again () (defun again () 2) 1) (list (again) (again))", "(1 2)"},
    });
}

TEST_F(LispTest, ErrorsSayWhatIsWrong) {
    check({
        {"(+ nil 1)", "; error: bad argument type: numberp: nil"},
        {"(itoa 1.5)", "; error: bad argument type: fixnump: 1.5"},
        {"(strcat 1)", "; error: bad argument type: stringp 1"},
        {"(car 1)", "; error: bad argument type: listp 1"},
        {"(distance 1 2)", "; error: bad argument type: 2D/3D point: 1"},
        {"(entget 1)", "; error: bad argument type: lentityp 1"},
        {"(< 1 \"a\")", "; error: bad argument type: numberp: \"a\""},
        {"(foo 1)", "; error: no function definition: FOO"},
        {"(1 2)", "; error: bad function: 1"},
        {"(mapcar 'nofun '(1))", "; error: no function definition: NOFUN"},
        {"(car)", "; error: too few arguments"},
        {"(car 1 2)", "; error: too many arguments"},
        {"(if)", "; error: too few arguments"},
        {"(quote a b)", "; error: too many arguments"},
        {"(setq a)", "; error: too few arguments"},
        {"(setq 1 2)", "; error: syntax error"},
        {"(setq T 1)", "; error: cannot assign to the constant T"},
        {"(defun f (1) 2)", "; error: bad formal argument list: (1)"},
        {"((lambda (x) x))", "; error: too few arguments"},
        {"((lambda))", "; error: too few arguments"},
        {"((lambda (x) x) 1 2)", "; error: too many arguments"},
        {"(/ 1 0)", "; error: divide by zero"},
        {"(rem 1.0 0)", "; error: divide by zero"},
        {"(sqrt -1)", "; error: function undefined for argument: -1"},
        {"(log 0)", "; error: function undefined for argument: 0"},
        {"(length '(1 . 2))", "; error: bad list: (1 . 2)"},
        {"(assoc 1 '(1))", "; error: bad association list: (1)"},
        {"(cond 1)", "; error: bad cond clause: 1"},
        {"(read \"(a\")", "; error: malformed list on input"},
        {"(quit)", "; error: quit / exit abort"},
        {"(getpoint)", "; error: Function cancelled"},
        {"(alert \"x\")", "; error: alert is not available here"},
        {"(getreal 5)", "; error: bad argument type: stringp 5"},
        {"(repeat 1.5)", "; error: bad argument type: fixnump: 1.5"},
    });
}

TEST_F(LispTest, AnErrorUndoesTheBindingsOfTheFailedProgram) {
    check({
        {"(setq v 'before) (defun bad (v / w) (car v)) (bad 5)", "; error: bad argument type: listp 5"},
        {"(list v (foreach v '(1) v))", "(BEFORE 1)"},
        {"(foreach v '(1) (car v))", "; error: bad argument type: listp 1"},
        {"v", "BEFORE"},
    });
}

TEST_F(LispTest, AnErrorFunctionRunsWhileTheBindingsStand) {
    run("(defun c:job (x / *error*)"
        "  (defun *error* (message) (princ (list message x)))"
        "  (car x))");
    EXPECT_EQ(run("(c:job 7)"), "");
    EXPECT_EQ(host.output, "(bad argument type: listp 7 7)");
    EXPECT_EQ(run("*error*"), "nil") << "the local handler has gone";
    EXPECT_EQ(run("(defun *error* (m) (car 1)) (quit)"), "; error: bad argument type: listp 1");
    EXPECT_EQ(run("(type *error*)"), "USUBR") << "a failing handler stays defined";
}

TEST_F(LispTest, CaughtErrorsAreValues) {
    check({
        {"(setq r (vl-catch-all-apply '/ '(1 0))) (vl-catch-all-error-p r)", "T"},
        {"(vl-catch-all-error-message r)", "\"divide by zero\""},
        {"(vl-catch-all-error-message (vl-catch-all-apply 'exit nil))", "\"quit / exit abort\""},
        {"(vl-catch-all-apply '+ '(1 2))", "3"},
        {"(defun g (q) (car q)) (setq q 1) (vl-catch-all-apply 'g '(2)) q", "1"},
        {"(vl-catch-all-error-message 1)", "; error: bad argument type: %catch-all-apply-error%-p 1"},
    });
}

TEST_F(LispTest, TheHostIsAskedForItsThings) {
    host.variables["CLAYER"] = Value::string("0");
    check({
        {"(getvar \"CLAYER\")", "\"0\""},
        {"(getvar 'clayer)", "\"0\""},
        {"(setvar \"CLAYER\" \"WALLS\") (getvar \"CLAYER\")", "\"WALLS\""},
        {"(setvar \"NOPE\" 1)", "; error: unknown variable NOPE"},
        {"(command \"LINE\" '(0 0) pause (entlast) \"\")", "nil"},
        {"(command)", "nil"},
        {"(entnext)", "<Entity name: 10>"},
        {"(entnext (entlast))", "<Entity name: 30>"},
        {"(getstring T \"Name: \")", "\"with blanks\""},
        {"(getstring \"Name: \")", "\"word\""},
        {"(getstring)", "\"word\""},
    });
    EXPECT_EQ(host.commands, (std::vector<std::string>{"(\"LINE\" (0 0) \"\\\\\" <Entity name: 2f> \"\")", "nil"}));
    EXPECT_EQ(host.output, "Name: Name: ");
}

TEST_F(LispTest, LoadNamesFileAndLineOfAnError) {
    host.files = {{"good", "(setq a 1)\n(+ a 1)"},
                  {"bad", "(setq a 5)\n\n(defun f (x)\n (car x))\n(f\n  a)"},
                  {"open", "(setq a 6)\n(list 1"},
                  {"outer", "\n(load \"bad\")"}};
    check({
        {"(load \"good\")", "2"},
        {"(load \"bad\")", "; error: bad argument type: listp 5 (bad, line 5)"},
        {"(load \"outer\")", "; error: bad argument type: listp 5 (bad, line 5)"},
        {"(load \"open\")", "; error: malformed list on input (open, line 2)"},
        {"a", "6"},
        {"(load \"missing\")", "; error: LOAD failed: \"missing\""},
        {"(load \"missing\" 'no)", "NO"},
    });
}

TEST_F(LispTest, ExternalFunctionsAreCommandsUntilUndefined) {
    std::string seen;
    lisp.defineExternal("c:_bInsert", [&](std::span<const Value> args) -> Outcome<Value> {
        seen = toText(Value::list(args), PrintStyle::Readable);
        if (args.empty())
            return Failure{FailureKind::Error, "no block name"};
        return Value();
    });
    EXPECT_EQ(run("(c:_bInsert \"DESK\" (list 1.0 2.0 0.0))"), "nil");
    EXPECT_EQ(seen, "(\"DESK\" (1.0 2.0 0.0))");
    EXPECT_EQ(run("(C:_BINSERT)"), "; error: no block name");
    EXPECT_TRUE(lisp.findCommand("_binsert"));
    EXPECT_FALSE(lisp.findCommand("_other"));
    run("(setq kept c:_binsert)");
    EXPECT_TRUE(lisp.undefineExternal("C:_binsert"));
    EXPECT_FALSE(lisp.undefineExternal("C:_binsert"));
    EXPECT_EQ(run("(c:_binsert)"), "; error: no function definition: C:_BINSERT");
    EXPECT_EQ(run("(kept)"), "; error: no function definition: C:_BINSERT");
}

TEST_F(LispTest, AnExternalFunctionMayUndefineItselfAndEvaluate) {
    auto guard = std::make_shared<int>(5);
    lisp.defineExternal("once", [this, guard](std::span<const Value>) -> Outcome<Value> {
        lisp.undefineExternal("once");
        const Outcome<Value> failed = lisp.evaluateText("((lambda (x) (car x)) 1)");
        EXPECT_FALSE(failed);
        return Value::integer(*guard);
    });
    EXPECT_EQ(run("(defun f (x) (list x (once) x)) (f 'a)"), "(A 5 A)");
    EXPECT_EQ(guard.use_count(), 1) << "the function has gone once it returned";
}

TEST_F(LispTest, TwoInterpretersShareNoSymbol) {
    Interpreter other(host);
    run("(setq a 1)");
    EXPECT_TRUE(other.variable("A").isNil());
    EXPECT_EQ(toText(lisp.variable("a"), PrintStyle::Readable), "1");
    EXPECT_FALSE(other.setVariable("T", Value()));
}

TEST_F(LispTest, ABreakEndsAnEndlessLoopEvenInsideACatch) {
    lisp.defineExternal("breaknow", [this](std::span<const Value>) -> Outcome<Value> {
        lisp.requestBreak();
        return Value();
    });
    EXPECT_EQ(run("(while T (vl-catch-all-apply 'breaknow nil))"), "; error: Function cancelled");
    EXPECT_EQ(run("(+ 1 1)"), "2");
}

} // namespace vndk::lisp
