// What a dialog template says, DIALOG and DIALOGEX alike.
//
// Layout of DIALOG: style, extended style (32 bits each), number of controls, x, y, width, height (16), menu, class and
// caption, with DS_SETFONT point size (16) and face. Each control, from a multiple of 4: style, extended style, x, y,
// width, height, id (16), class, text, creation data with its size in front (16, itself included).
// DIALOGEX: version 1, 0xFFFF (16), help id, extended style, style (32), then as above, the font with weight (16),
// italic and character set (8). Controls: help id, extended style, style, x, y, width, height, id (32), class, text,
// number of bytes that follow (16).
#pragma once

#include "user/template_reader.h"
#include "win32/types.h"

#include <optional>
#include <vector>

namespace vndk::win32 {

/// In the place of a point size: the font of message boxes; no face follows.
constexpr WORD messageBoxFontSize = 0x7FFF;

struct DialogControl {
    DWORD style = 0;
    DWORD exStyle = 0;
    RECT units{}; // left, top, width (right) and height (bottom), in dialog units
    UINT id = 0;
    std::string className; // empty: a number that no class has
    TemplateName text;
    const std::uint8_t* creationData = nullptr; // at the size in front of it; null: none
};

struct DialogFont {
    int points = 0;
    int weight = 400;
    bool italic = false;
    BYTE charset = 1;
    std::string face;
};

struct DialogTemplate {
    bool extended = false;
    DWORD style = 0;
    DWORD exStyle = 0;
    RECT units{}; // as a control's
    TemplateName menu;
    TemplateName className;
    std::string caption;
    std::optional<DialogFont> font;
    std::vector<DialogControl> controls;
};

/// Nothing when the bytes end too early or make no sense. Creation data lies in the bytes.
[[nodiscard]] std::optional<DialogTemplate> parseDialogTemplate(std::span<const std::uint8_t> bytes);

} // namespace vndk::win32
