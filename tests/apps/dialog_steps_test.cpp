#include "vondrake/dialog_steps.h"
#include "win32/input.h"

#include <gtest/gtest.h>

#include <random>

namespace vndk::app {
namespace {

std::string shown(const win32::UserKeys& keys) {
    return std::string(keys.control ? "^" : "") + (keys.shift ? "+" : "") + (keys.alt ? "%" : "");
}

std::string shown(const ControlName& name) {
    if (const int* const id = std::get_if<int>(&name))
        return "#" + std::to_string(*id);
    return "<" + std::get<std::string>(name) + ">";
}

std::string shown(POINT point) { return " " + std::to_string(point.x) + "," + std::to_string(point.y); }

std::string shown(const ItemName& item) {
    std::string text = item.texts.empty() ? " row " + std::to_string(item.row) : " row";
    for (const std::string& each : item.texts)
        text += " <" + each + ">";
    return text + " column " + std::to_string(item.column);
}

/// A step in another way than it was written; complaints begin with an exclamation mark.
std::string parsed(std::string_view line) {
    const auto result = parseDialogStep(line);
    if (const auto* const complaint = std::get_if<std::string>(&result))
        return "!" + *complaint;
    const auto& step = std::get<DialogStep>(result);
    std::string text;
    switch (step.kind) {
    case DialogStep::Kind::Click:
        text = step.click.twice ? "double " : step.click.right ? "right " : "click ";
        text += shown(step.control) + (step.point ? shown(*step.point) : "") + (step.item ? shown(*step.item) : "");
        return text + (shown(step.click.keys).empty() ? "" : " with " + shown(step.click.keys));
    case DialogStep::Kind::Drag:
        return "drag " + shown(step.control) + shown(*step.point) + shown(step.to) + shown(step.click.keys);
    case DialogStep::Kind::Wheel:
        return "wheel " + shown(step.control) + " " + std::to_string(step.count);
    case DialogStep::Kind::Type:
        return "type <" + step.text + ">";
    case DialogStep::Kind::Press:
        text = "press";
        for (const KeyPress& press : step.keys)
            text +=
                " " + shown(press.with) + (press.typed ? "'" + std::string(1, press.typed) : std::to_string(press.key));
        return text;
    case DialogStep::Kind::Pick:
        text = "pick";
        for (const std::string& each : step.texts)
            text += " <" + each + ">";
        return text;
    case DialogStep::Kind::Show:
        return "show";
    case DialogStep::Kind::Picture:
        return "picture <" + step.text + "> " + std::to_string(step.count);
    }
    return {};
}

TEST(DialogSteps, AreReadFromLines) {
    struct Case {
        const char* line;
        const char* step;
    };
    const Case cases[] = {
        {"CLICK \"OK\"", "click <OK>"},
        {"  click\tOK ; and gone", "click <OK>"},
        {"CLICK 223", "click #223"},
        {"CLICK -1", "click #-1"},
        {"CLICK \"223\"", "click <223>"},
        {"CLICK \"Say \"\"yes\"\"; twice\"", "click <Say \"yes\"; twice>"},
        {"CLICK 5 10,-3", "click #5 10,-3"},
        {"CLICK 5 10,20 WITH ctrl+Shift", "click #5 10,20 with ^+"},
        {"CLICK 5 WITH Alt", "click #5 with %"},
        {"DOUBLECLICK 5 ITEM 3", "double #5 row 3 column 1"},
        {"RIGHTCLICK \"Folders\" item \"C:\" \"Dwg\"", "right <Folders> row <C:> <Dwg> column 1"},
        {"ITEM 220 3 2", "click #220 row 3 column 2"},
        {"ITEM 220 0 2", "click #220 row 0 column 2"},
        {"ITEM 220 \"Room\" 2 WITH Ctrl", "click #220 row <Room> column 2 with ^"},
        {"DRAG 7 1,2 30,40", "drag #7 1,2 30,40"},
        {"WHEEL 7 -3", "wheel #7 -3"},
        {"WHEEL 7 +3", "wheel #7 3"},
        {"TYPE  two words; \"and\" no comment ", "type < two words; \"and\" no comment >"},
        {"SHOW", "show"},
        {"SHOW;", "show"},
        {"PICTURE shot.png", "picture <shot.png> 1"},
        {"PICTURE \"C:\\my pictures\\shot.png\" 2", "picture <C:\\my pictures\\shot.png> 2"},
        {"PICK \"File\" \"Save as...\"", "pick <File> <Save as...>"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(parsed(each.line), each.step) << each.line;
}

TEST(DialogSteps, NameKeysAsTheyStandOnTheKeyboard) {
    const auto key = [](int code) { return std::to_string(code); };
    EXPECT_EQ(parsed("PRESS Enter Shift+Tab pgdn F12"),
              "press " + key(VK_RETURN) + " +" + key(VK_TAB) + " " + key(VK_NEXT) + " " + key(VK_F12));
    EXPECT_EQ(parsed("PRESS Ctrl+a Ctrl+Shift+7 Alt+O"), "press ^65 ^+55 %79");
    // What types by itself is typed, so that mnemonics without Alt work.
    EXPECT_EQ(parsed("PRESS y Shift+y + 5"), "press 'y 'Y '+ '5");
    EXPECT_EQ(parsed("PRESS Shift+Up"), "press +" + key(VK_UP));
    for (const char* const wrong : {"Hyper", "Ctrl+", "Ctrl+Ctrl+A", "F13", "F0", "Ctrl+%", "A+B", "++"})
        EXPECT_EQ(parsed(std::string("PRESS ") + wrong).substr(0, 9), "!PRESS: \"") << wrong;
}

TEST(DialogSteps, AreRefusedWithASentence) {
    struct Case {
        const char* line;
        const char* complaint;
    };
    const Case cases[] = {
        {"CLIK \"OK\"", "!\"CLIK\" is no step for a dialog."},
        {"QSAVE", "!\"QSAVE\" is no step for a dialog."},
        {"CLICK", "!CLICK needs a control: its caption in quotes, or its id."},
        {"CLICK \"\"", "!CLICK needs a control: its caption in quotes, or its id."},
        {"CLICK \"OK", "!A quotation mark is missing."},
        {"CLICK Do not show", "!CLICK: \"not\" is too much."},
        {"CLICK 5 10", "!CLICK: \"10\" is too much."},
        {"CLICK 5 10,x", "!CLICK: \"10,x\" is too much."},
        {"CLICK 5 WITH Enter", "!CLICK: behind WITH stand Ctrl, Shift or Alt, joined by a plus sign."},
        {"ITEM 220", "!ITEM needs an item: its row, counted from 1, or its text in quotes."},
        {"ITEM 220 -1", "!ITEM needs an item: its row, counted from 1, or its text in quotes."},
        {"ITEM 220 1 0", "!ITEM: \"0\" is no column; they count from 1."},
        {"ITEM 220 99999999999999999999", "!ITEM needs an item: its row, counted from 1, or its text in quotes."},
        {"DRAG 5 1,1", "!DRAG needs two points, as x,y in pixels of the control."},
        {"WHEEL 5", "!WHEEL needs a number of notches, positive away from the user."},
        {"TYPE", "!TYPE needs a text, which goes on to the line's end."},
        {"TYPE ", "!TYPE needs a text, which goes on to the line's end."},
        {"PRESS", "!PRESS needs a key, such as Enter or Ctrl+A."},
        {"PICK", "!PICK needs the texts of menu items in quotes, from menu to item."},
        {"SHOW me", "!SHOW: \"me\" is too much."},
        {"PICTURE", "!PICTURE needs a file's name."},
        {"PICTURE a.png 5", "!PICTURE: the scale is a number from 1 to 4."},
    };
    for (const Case& each : cases)
        EXPECT_EQ(parsed(each.line), each.complaint) << each.line;
}

TEST(DialogSteps, BlankLinesAndCommentsHoldNone) {
    for (const char* const line : {"", "  \t", "; CLICK \"OK\"", "  ;"})
        EXPECT_TRUE(holdsNoStep(line)) << line;
    for (const char* const line : {"SHOW", " x", "\""})
        EXPECT_FALSE(holdsNoStep(line)) << line;
}

TEST(DialogSteps, TakeWhateverStandsInALine) {
    const char* const pieces[] = {"CLICK", "ITEM", "DRAG", "WHEEL", "PRESS", "PICK", "TYPE", "PICTURE",
                                  " ",     " ",    "\"",   "\"\"",  ";",     "1,2",  ",",    "-",
                                  "+",     "Ctrl", "WITH", "\xFC",  "7",     "\t"};
    std::mt19937 chance(20);
    for (int round = 0; round < 20000; ++round) {
        std::string line;
        for (unsigned count = chance() % 9; count > 0; --count)
            line += pieces[chance() % std::size(pieces)];
        const std::string text = parsed(line);
        EXPECT_FALSE(text.empty()) << line;
    }
}

} // namespace
} // namespace vndk::app
