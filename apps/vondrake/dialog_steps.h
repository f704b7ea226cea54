// Steps with which a script works in a dialog, a message box or a menu: one a line, a keyword first.
//
//     ITEM 220 3 2             ; row 3, column 2
//     TYPE 1200 x 600
//     PRESS Enter
//     CLICK "OK"
//
// Keywords and names of keys are taken without regard to case. Captions stand in double quotes, within which a quote is
// written twice; where nothing else is possible a word without blanks needs none. A semicolon begins a comment, but not
// in what TYPE types. Text is of code page 1252.
#pragma once

#include "win32/types.h"
#include "win32/user_script.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vndk::app {

/// A control's id, 0 for the dialog itself; or its caption, without mnemonic marks.
using ControlName = std::variant<int, std::string>;

/// An item of a list, a combo box, a tree or a tab control.
struct ItemName {
    int row = 0;                    ///< from 1, of a list 0: its header; means nothing when there are texts
    std::vector<std::string> texts; ///< the item's text; in a tree those of its parents before it
    int column = 1;                 ///< from 1
};

/// A key that is pressed: its virtual code, or what it types when it is pressed alone or with Shift.
struct KeyPress {
    int key = 0;
    char typed = 0;
    win32::UserKeys with;
};

struct DialogStep {
    enum class Kind { Click, Drag, Wheel, Type, Press, Pick, Show, Picture };

    Kind kind = Kind::Show;
    ControlName control;            ///< Click, Drag, Wheel
    win32::UserClick click;         ///< Click; of Drag the keys
    std::optional<POINT> point;     ///< Click, Drag: in client pixels of the control; without it the middle
    std::optional<ItemName> item;   ///< Click: in place of a point
    POINT to{0, 0};                 ///< Drag
    int count = 0;                  ///< Wheel: notches, positive away from the user; Picture: scale
    std::string text;               ///< Type; of Picture the file's name
    std::vector<std::string> texts; ///< Pick
    std::vector<KeyPress> keys;     ///< Press
};

/// True for lines that hold no step: blank ones and comments.
bool holdsNoStep(std::string_view line);

/// One line, without its end. In place of a step a sentence that says what is wrong with it.
std::variant<DialogStep, std::string> parseDialogStep(std::string_view line);

/// True for the keyword of a step.
bool isDialogStepKeyword(std::string_view word);
/// All keywords, for messages.
std::string dialogStepKeywords();

} // namespace vndk::app
