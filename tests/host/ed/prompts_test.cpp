#include "host/host_fixture.h"

#include "ge/tolerance.h"

#include <cmath>

using namespace vndk::host;

namespace {

class PromptsTest : public HostTest {
protected:
    void type(std::string_view text) { host.commandLine().input().feed(text); }
    /// The point that the text answers; the test fails when it is none.
    AcGePoint3d point(std::string_view text) {
        AcGePoint3d result(1e9, 1e9, 1e9);
        type(std::string(text) + "\n");
        EXPECT_EQ(host.prompts().getPoint("", result), PromptStatus::Normal) << text;
        return result;
    }
    void setUcs(vndk::dwg::Point3 origin, vndk::dwg::Point3 x, vndk::dwg::Point3 y) {
        database().changeHeader("UCSORG", [&](auto& h) {
            h.UCSORG = origin;
            h.UCSXDIR = x;
            h.UCSYDIR = y;
        });
    }
};

} // namespace

#define EXPECT_POINT(P, X, Y, Z)                                                                                       \
    do {                                                                                                               \
        const AcGePoint3d p_ = (P);                                                                                    \
        EXPECT_LT(p_.distanceTo(AcGePoint3d(X, Y, Z)), 1e-9) << p_.x << ',' << p_.y << ',' << p_.z;                    \
    } while (false)

TEST_F(PromptsTest, takesPointsInAllForms) {
    EXPECT_POINT(point("1,2"), 1, 2, 0);
    EXPECT_POINT(point("@3,4"), 4, 6, 0);
    EXPECT_POINT(point("@2<90"), 4, 8, 0);
    EXPECT_POINT(point("@"), 4, 8, 0);
    EXPECT_POINT(point("1.5e1,-2,3"), 15, -2, 3);
    EXPECT_POINT(point("5<180"), -5, 0, 0);
    EXPECT_POINT(point("@0,0,7"), -5, 0, 7);
    EXPECT_POINT(point("(list 1 2.5)"), 1, 2.5, 0);
    document().lisp();
    lisp("(setq p '(7 8 9))");
    EXPECT_POINT(point("!p"), 7, 8, 9);
}

TEST_F(PromptsTest, typedPointsAreInTheUserCoordinateSystem) {
    setUcs({10, 0, 0}, {0, 1, 0}, {-1, 0, 0});
    EXPECT_POINT(point("1,2"), 1, 2, 0);
    EXPECT_POINT(host.prompts().ucsToWorld() * AcGePoint3d(1, 2, 0), 8, 1, 0);
    EXPECT_POINT(point("*8,1"), 1, 2, 0);
    EXPECT_POINT(point("@*1,0"), 1, 1, 0);
}

TEST_F(PromptsTest, refusesWhatIsNoPointAndAsksAgain) {
    type("1 1,2,3,4 1,x @1<y , 1,1e999 (quote (1)) \"a\" 3,4\n");
    AcGePoint3d result;
    EXPECT_EQ(host.prompts().getPoint("", result), PromptStatus::Normal);
    EXPECT_POINT(result, 3, 4, 0);
}

TEST_F(PromptsTest, failsAtOnceWhereNobodyCanBeAskedAgain) {
    host.commandLine().setInvalidAnswers(InvalidAnswers::FailCommand);
    type("foo 3,4\n");
    AcGePoint3d result;
    EXPECT_EQ(host.prompts().getPoint("", result), PromptStatus::Error);
    EXPECT_NE(output.find("Invalid point."), std::string::npos);
}

TEST_F(PromptsTest, theRulesOfInitGetHoldForOnePrompt) {
    Prompts& prompts = host.prompts();
    int number = 0;
    type("\n0 -3 5\n\n");
    prompts.initGet(kNoEmpty | kNoZero | kNoNegative);
    EXPECT_EQ(prompts.getInt("", number), PromptStatus::Normal);
    EXPECT_EQ(number, 5);
    EXPECT_EQ(prompts.getInt("", number), PromptStatus::None);

    type("cl undone u\n");
    prompts.initGet(0, "Undo Close");
    AcGePoint3d point;
    EXPECT_EQ(prompts.getPoint("", point), PromptStatus::Keyword);
    EXPECT_EQ(prompts.keyword(), "Close");
    prompts.initGet(kAnyText, "Undo");
    EXPECT_EQ(prompts.getPoint("", point), PromptStatus::Keyword);
    EXPECT_EQ(prompts.keyword(), "undone");
    prompts.initGet(kNoEmpty, "Undo");
    EXPECT_EQ(prompts.getKeyword(""), PromptStatus::Normal);
    EXPECT_EQ(prompts.keyword(), "Undo");
}

TEST_F(PromptsTest, integersHaveTheirRange) {
    int number = 7;
    type("1.5 2147483648 -2147483649 -2147483648\n");
    EXPECT_EQ(host.prompts().getInt("", number), PromptStatus::Normal);
    EXPECT_EQ(number, INT32_MIN);
}

TEST_F(PromptsTest, distancesComeFromNumbersAndPoints) {
    double distance = 0;
    const AcGePoint3d base(1, 1, 0);
    type("2.5 4,5 0,0 3,4\n");
    EXPECT_EQ(host.prompts().getDist("", distance), PromptStatus::Normal);
    EXPECT_DOUBLE_EQ(distance, 2.5);
    EXPECT_EQ(host.prompts().getDist("", distance, &base), PromptStatus::Normal);
    EXPECT_DOUBLE_EQ(distance, 5);
    EXPECT_EQ(host.prompts().getDist("", distance), PromptStatus::Normal);
    EXPECT_DOUBLE_EQ(distance, 5);
}

TEST_F(PromptsTest, anglesFollowTheDrawingsBaseAndDirection) {
    double radians = 0;
    type("90 90 30 0,2\n");
    EXPECT_EQ(host.prompts().getOrient("", radians), PromptStatus::Normal);
    EXPECT_NEAR(radians, kAcGePi / 2, 1e-12);
    database().changeHeader("ANGBASE", [](auto& h) { h.ANGBASE = kAcGePi / 2; });
    EXPECT_EQ(host.prompts().getOrient("", radians), PromptStatus::Normal);
    EXPECT_NEAR(radians, kAcGePi, 1e-12);
    database().changeHeader("ANGDIR", [](auto& h) { h.ANGDIR = true; });
    EXPECT_EQ(host.prompts().getAngle("", radians), PromptStatus::Normal);
    EXPECT_NEAR(radians, -kAcGePi / 6, 1e-12);
    const AcGePoint3d base;
    EXPECT_EQ(host.prompts().getAngle("", radians, &base), PromptStatus::Normal);
    EXPECT_NEAR(radians, kAcGePi / 2, 1e-12);
}

TEST_F(PromptsTest, textsKeepWhatTheirFormKeeps) {
    std::string text;
    type("one two three\n (see note) \n\"C:\\my dwg\\a.dwg\"\n(strcat \"a\" \"b\")\n");
    EXPECT_EQ(host.prompts().getString("", TextForm::Word, text), PromptStatus::Normal);
    EXPECT_EQ(text, "one");
    EXPECT_EQ(host.prompts().getString("", TextForm::Line, text), PromptStatus::Normal);
    EXPECT_EQ(text, "two three");
    EXPECT_EQ(host.prompts().getString("", TextForm::Line, text), PromptStatus::Normal);
    EXPECT_EQ(text, " (see note) ");
    EXPECT_EQ(host.prompts().getString("", TextForm::FileName, text), PromptStatus::Normal);
    EXPECT_EQ(text, "C:\\my dwg\\a.dwg");
}

TEST_F(PromptsTest, cancelAndTheEndOfInputCancel) {
    AcGePoint3d point;
    type("\x1B"
         "1,2\n");
    EXPECT_EQ(host.prompts().getPoint("", point), PromptStatus::Cancelled);
    EXPECT_EQ(host.prompts().getPoint("", point), PromptStatus::Normal);
    EXPECT_EQ(host.prompts().getPoint("", point), PromptStatus::Cancelled);
}
