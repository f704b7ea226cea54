#include "ed/builtin_commands.h"

#include <gtest/gtest.h>

using namespace vndk::host;

namespace {

CommandResult nothing(CommandContext&) { return CommandResult::Done; }
void moduleFunction() {}

const BuiltInCommand kEdit{"EATTEDIT", ACRX_CMD_MODAL, nothing};
const BuiltInCommand kLine{"LINE", ACRX_CMD_MODAL, nothing};

class CommandStackTest : public testing::Test {
protected:
    CommandStackTest() {
        stack.addBuiltIn(kEdit);
        stack.addBuiltIn(kLine);
    }
    Acad::ErrorStatus add(const char* group, const char* global, const char* local) {
        return stack.addCommand(group, global, local, 0, moduleFunction);
    }
    /// Group of what the typed name runs; empty for nothing.
    std::string groupOf(const char* typed) {
        const AcEdCommand* const command = stack.lookupTyped(typed);
        return command ? command->groupName() : "";
    }
    const std::string builtIn = AcEdCommandStack::kBuiltInGroup;
    AcEdCommandStack stack;
};

} // namespace

TEST_F(CommandStackTest, findsTypedNamesWithTheirPrefixes) {
    add("MINE", "DRAW", "ZEICHNE");
    add("MINE", "_EATTEDIT", "_EATTEDIT");
    struct Case {
        const char* typed;
        std::string group;
    };
    const Case cases[] = {
        {"line", builtIn},
        {"_Line", builtIn},
        {".LINE", builtIn},
        {"_.line", builtIn},
        {"._line", builtIn},
        {"zeichne", "MINE"},
        {"DRAW", ""},
        {"_DRAW", "MINE"},
        {".ZEICHNE", ""},
        {"_ZEICHNE", ""},
        {"_eattedit", "MINE"},
        {"EATTEDIT", builtIn},
        {"_.EATTEDIT", builtIn},
        {"", ""},
        {"_", ""},
        {".", ""},
        {"-LINE", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(groupOf(c.typed), c.group) << c.typed;
}

TEST_F(CommandStackTest, undefiningReachesBuiltInsAlone) {
    for (const char* name : {"EATTEDIT", "-EATTEDIT", "_EATTEDIT", "EA"})
        ASSERT_EQ(add("VNDKCOMMANDS", name, name), Acad::eOk);
    const struct {
        const char* name;
        bool hit;
    } calls[] = {{"EATTEDIT", true},  {"c:EATTEDIT", false}, {"_EATTEDIT", true},
                 {".EATTEDIT", true}, {"-EATTEDIT", false},  {"_.EATTEDIT", true}};
    for (const auto& call : calls)
        EXPECT_EQ(stack.setUndefined(call.name, true), call.hit) << call.name;
    for (const char* name : {"EATTEDIT", "-EATTEDIT", "_EATTEDIT", "EA"})
        EXPECT_EQ(groupOf(name), "VNDKCOMMANDS") << name;
    EXPECT_EQ(groupOf(".EATTEDIT"), builtIn);

    EXPECT_EQ(stack.removeGroup("vndkcommands"), Acad::eOk);
    EXPECT_EQ(groupOf("EATTEDIT"), "");
    EXPECT_EQ(groupOf(".EATTEDIT"), builtIn);
    EXPECT_TRUE(stack.setUndefined("EATTEDIT", false));
    EXPECT_EQ(groupOf("EATTEDIT"), builtIn);
}

TEST_F(CommandStackTest, theGroupRegisteredLastWins) {
    add("A", "LINE", "LINE");
    add("B", "LINE", "LINE");
    EXPECT_EQ(groupOf("LINE"), "B");
    EXPECT_EQ(stack.popGroupToTop("A"), Acad::eOk);
    EXPECT_EQ(groupOf("LINE"), "A");
    // A command that joins an older group doesn't pass the newer one.
    add("B", "CIRCLE", "CIRCLE");
    add("A", "CIRCLE", "CIRCLE");
    add("B", "ARC", "ARC");
    EXPECT_EQ(groupOf("CIRCLE"), "A");
    EXPECT_EQ(stack.removeCmd("A", "line"), Acad::eOk);
    EXPECT_EQ(groupOf("LINE"), "B");
    EXPECT_EQ(groupOf(".LINE"), builtIn);
}

TEST_F(CommandStackTest, refusesWhatItCannotKeep) {
    EXPECT_EQ(add("A", "X", "X"), Acad::eOk);
    EXPECT_EQ(add("a", "x", "Y"), Acad::eDuplicateKey);
    EXPECT_EQ(add("A", "Y", "x"), Acad::eDuplicateKey);
    EXPECT_EQ(add("A", "", "x"), Acad::eInvalidInput);
    EXPECT_EQ(add(nullptr, "Z", "Z"), Acad::eInvalidInput);
    EXPECT_EQ(add(AcEdCommandStack::kBuiltInGroup, "Z", "Z"), Acad::eInvalidInput);
    EXPECT_EQ(stack.addCommand("A", "Z", "Z", 0, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(stack.removeGroup(AcEdCommandStack::kBuiltInGroup), Acad::eKeyNotFound);
    EXPECT_EQ(stack.removeCmd(AcEdCommandStack::kBuiltInGroup, "LINE"), Acad::eKeyNotFound);
    EXPECT_EQ(stack.removeCmd("A", "nothing"), Acad::eKeyNotFound);
}
