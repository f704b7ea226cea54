// Text and programs made to break an interpreter: each must end in a value or an error.
#include <random>

#include "lisp/reader.h"
#include "lisp_fixture.h"

namespace vndk::lisp {

namespace {

std::string repeated(std::string_view part, std::size_t count) {
    std::string text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        text += part;
    return text;
}

} // namespace

TEST_F(LispTest, AMillionParenthesesAreAnErrorNotACrash) {
    EXPECT_EQ(run(repeated("(", 1'000'000)), "; error: lists are nested too deep on input");
    EXPECT_EQ(run(repeated("'", 1'000'000)), "; error: lists are nested too deep on input");
    EXPECT_EQ(run(repeated(")", 1'000'000)), "; error: extra right paren on input");
    EXPECT_EQ(run(repeated("(", 90'000) + repeated(")", 90'000)), "; error: stack overflow");
    EXPECT_EQ(run(repeated("(progn ", 90'000) + repeated(")", 90'000)), "; error: stack overflow");
}

TEST(Reader, WithoutALimitReadsAMillionLevels) {
    SymbolTable symbols;
    Reader reader(symbols, 2'000'000);
    const std::string text = repeated("(", 1'000'000) + "x" + repeated(")", 1'000'000);
    reader.feed(text);
    Value form;
    ASSERT_EQ(reader.next(form), Reader::Status::Form);
    EXPECT_EQ(toText(form, PrintStyle::Readable).size(), 2'000'001u);
}

TEST_F(LispTest, HugeDataIsHandledWithoutRecursion) {
    const std::string text = repeated("x", 10'000'000);
    EXPECT_EQ(run("(strlen \"" + text + "\")"), "10000000");
    EXPECT_EQ(run("(length '(" + repeated("1 ", 1'000'000) + "))"), "1000000");
    EXPECT_EQ(run("(length (list " + repeated("1 ", 1'000'000) + "))"), "1000000");
    EXPECT_EQ(run("(setq a nil b nil) (repeat 1000000 (setq a (list a) b (list b))) (equal a b)"), "T");
    EXPECT_EQ(run("(strlen (vl-prin1-to-string a))"), "2000003");
    EXPECT_EQ(run("(setq l nil) (repeat 300000 (setq l (cons 1 l))) (apply '+ l)"), "300000");
    EXPECT_EQ(run("(setq a nil b nil l nil)"), "nil");
}

TEST_F(LispTest, EndlessRecursionIsAnErrorAndLeavesNothingBound) {
    EXPECT_EQ(run("(setq n 'mine) (defun f (n) (+ 1 (f n))) (f 1)"), "; error: stack overflow");
    EXPECT_EQ(run("n"), "MINE");
    EXPECT_EQ(run("(defun g (x) (mapcar 'g (list x))) (g 1)"), "; error: stack overflow");
    EXPECT_EQ(run("(setq e '(eval e)) (eval e)"), "; error: stack overflow");
    host.files["self"] = "(load \"self\")";
    EXPECT_EQ(run("(load \"self\")").substr(0, 23), "; error: stack overflow");
    EXPECT_EQ(run("(setq *error* '(lambda (m) (f 1))) (f 1)"), "; error: stack overflow");
}

TEST_F(LispTest, MemoryHasALimit) {
    EXPECT_EQ(run("(setq s \"0123456789\") (while T (setq s (strcat s s)))"), "; error: string too long");
    EXPECT_EQ(run("(setq s nil l nil) (while T (setq l (cons 1 l)))"), "; error: out of memory");
    EXPECT_EQ(run("(setq l nil)"), "nil");
    EXPECT_EQ(run("(list 1)"), "(1)");
}

TEST(Hostile, AListThatSharesItsPartsEndsAtTheStepLimit) {
    RecordingHost host;
    Limits limits;
    limits.steps = 100'000;
    limits.stringLength = 1000;
    Interpreter lisp(host, limits);
    const auto kind = [&](const char* text) {
        const Outcome<Value> result = lisp.evaluateText(text);
        return result ? FailureKind::Error : result.failure().kind;
    };
    EXPECT_EQ(kind("(setq a 1 b 1) (repeat 100 (setq a (cons a a) b (cons b b))) (equal a b)"), FailureKind::Limit);
    const Outcome<Value> length = lisp.evaluateText("(strlen (vl-princ-to-string a))");
    ASSERT_TRUE(length);
    EXPECT_EQ(length.value().integer(), 1003);
    EXPECT_EQ(kind("(while T (vl-catch-all-apply '(lambda () (while T)) nil))"), FailureKind::Limit);
}

TEST_F(LispTest, SortingWithAContradictoryComparisonKeepsEveryElement) {
    EXPECT_EQ(run("(setq l nil i 0) (repeat 1000 (setq l (cons (setq i (1+ i)) l)))"
                  "(setq k 0) (apply '+ (vl-sort l '(lambda (a b) (= 0 (rem (setq k (1+ k)) 3)))))"),
              "500500");
}

// Mutations of a program that uses every kind of token; the seed is fixed, so a failure comes again.
TEST(Hostile, MutatedProgramsEndInAValueOrAnError) {
    const std::string program =
        "(defun c:f (a b / c) (setq c (list a . (b 1.5e3 -2))) (foreach x c (princ x)) 'q)\n"
        "(c:f \"te\\\"x\\101t\" '(1 . 2)) ;| block |; (while (< (setq i (1+ i)) 5) (cond ((= i 2) (car i)) (T nil)))"
        "(mapcar '(lambda (x / y) (rtos x 4 3)) '(1.0 2.5 -3)) (substr \"abc\" 2 1) (vl-sort '(3 1 2) '<)"
        "(angtos 1.0 4 6) (distof \"1'-5 1/2\\\"\") (nth 2 '(a b c)) (apply 'strcat (list \"a\" (chr 66)))";
    std::mt19937 random(20'231'105);
    for (int round = 0; round < 3000; ++round) {
        std::string text = program;
        for (int edits = 1 + static_cast<int>(random() % 6); edits-- > 0;) {
            const std::size_t at = random() % text.size();
            switch (random() % 4) {
            case 0:
                text[at] = static_cast<char>(random());
                break;
            case 1:
                text.erase(at, 1 + random() % 8);
                break;
            case 2:
                text.insert(at, text.substr(random() % text.size(), random() % 20));
                break;
            default:
                text[at] = "()'\".;|0"[random() % 8];
            }
            if (text.empty())
                text = "x";
        }
        RecordingHost host;
        Limits limits;
        limits.steps = 20'000;
        limits.arguments = 4096;
        Interpreter lisp(host, limits);
        const Outcome<Value> result = lisp.evaluateText(text);
        if (!result) {
            EXPECT_FALSE(result.failure().message.empty()) << text;
        }
    }
}

} // namespace vndk::lisp
