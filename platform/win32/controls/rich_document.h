// The text of a rich edit control: characters with formats, in paragraphs with formats.
//
// Positions count characters from 0; a paragraph's end is the one character '\r'. The last paragraph has no end.
#pragma once

#include "win32/types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::win32 {

struct CharStyle {
    std::string face = "MS Sans Serif";
    int height = 165; // twentieths of a point
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    bool autoColor = true; // the window text's colour
    COLORREF color = 0;

    bool operator==(const CharStyle&) const = default;
};

enum class Alignment : std::uint8_t { left, right, center };

/// Lengths in twentieths of a point.
struct ParagraphStyle {
    Alignment alignment = Alignment::left;
    int leftIndent = 0;
    int firstIndent = 0; // relative to leftIndent
    int rightIndent = 0;
    int spaceBefore = 0;
    int spaceAfter = 0;
    bool bullet = false;
    std::vector<int> tabs;

    bool operator==(const ParagraphStyle&) const = default;
};

using StyleIndex = std::uint16_t;

/// A piece of text with the style of each of its characters.
struct RichText {
    std::string text;
    std::vector<StyleIndex> styles;
    std::vector<ParagraphStyle> paragraphs; // of each paragraph that the text begins; may be empty
};

class RichDocument {
public:
    RichDocument();

    [[nodiscard]] int length() const { return static_cast<int>(text_.size()); }
    [[nodiscard]] std::string_view text() const { return text_; }
    [[nodiscard]] char at(int position) const { return text_[static_cast<std::size_t>(position)]; }
    [[nodiscard]] const CharStyle& style(StyleIndex index) const { return styles_[index]; }
    /// Of the character at a position, or of the last one before the end.
    [[nodiscard]] StyleIndex styleAt(int position) const;
    [[nodiscard]] StyleIndex defaultStyle() const { return defaultStyle_; }
    /// An equal style gets an equal index. When there is no room for another one, the default's.
    StyleIndex intern(const CharStyle& style);
    /// New characters of an empty document get it; with `all` those that are there too.
    void setDefaultStyle(const CharStyle& style, bool all);

    [[nodiscard]] int paragraphCount() const { return static_cast<int>(paragraphs_.size()); }
    [[nodiscard]] const ParagraphStyle& paragraph(int index) const {
        return paragraphs_[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] int paragraphAt(int position) const;
    void setParagraph(int index, const ParagraphStyle& style) { paragraphs_[static_cast<std::size_t>(index)] = style; }

    void clear();
    /// Positions outside are clipped.
    void insert(int position, const RichText& piece);
    void erase(int begin, int end);
    void setStyle(int begin, int end, StyleIndex style);
    [[nodiscard]] RichText cut(int begin, int end) const;
    /// Plain text with any line ends, in one style.
    [[nodiscard]] static RichText plain(std::string_view text, StyleIndex style);
    /// With CR LF for each paragraph's end.
    [[nodiscard]] std::string plainText(int begin, int end) const;

private:
    std::string text_;
    std::vector<StyleIndex> charStyles_; // one for each character
    std::vector<CharStyle> styles_;
    StyleIndex defaultStyle_ = 0;
    std::vector<ParagraphStyle> paragraphs_; // one more than there are paragraph ends
};

} // namespace vndk::win32
