// Where the characters of a document stand: lines of a width, with fonts of their own.
//
// Coordinates are pixels from the top left of the whole text; nothing here knows of scrolling or windows.
#pragma once

#include "controls/rich_document.h"

#include "win32/gdi.h"

#include <map>
#include <vector>

namespace vndk::win32 {

class RichLayout {
public:
    RichLayout();
    ~RichLayout();
    RichLayout(const RichLayout&) = delete;
    RichLayout& operator=(const RichLayout&) = delete;

    struct Line {
        int begin = 0; // characters; `end` lies behind a paragraph's end or a line break that closes the line
        int end = 0;
        int left = 0;
        int top = 0;
        int height = 0;
        int ascent = 0;
        bool firstOfParagraph = false;
    };

    /// Breaks the text into lines no wider than `width`; 0 doesn't break.
    void build(const RichDocument& document, int width);

    [[nodiscard]] int lineCount() const { return static_cast<int>(lines_.size()); }
    [[nodiscard]] const Line& line(int index) const { return lines_[static_cast<std::size_t>(index)]; }
    /// The line that holds a character; of the end of the text the last one.
    [[nodiscard]] int lineOf(int position) const;
    /// The line at a height; clipped to the first and the last.
    [[nodiscard]] int lineAtHeight(int y) const;
    [[nodiscard]] int height() const;
    [[nodiscard]] int widest() const { return widest_; }
    /// A line's characters without the paragraph's end that closes it.
    [[nodiscard]] int visibleEnd(const RichDocument& document, int line) const;

    [[nodiscard]] POINT placeOf(const RichDocument& document, int position) const;
    [[nodiscard]] int positionAt(const RichDocument& document, POINT point) const;

    struct Colors {
        COLORREF text = 0;
        COLORREF selectedText = 0;
        COLORREF selectedBackground = 0;
    };
    /// Paints the lines that touch `area`, moved by `shift`; the characters from `selBegin` to `selEnd` as selected.
    void paint(HDC dc, const RichDocument& document, POINT shift, const RECT& area, int selBegin, int selEnd,
               const Colors& colors) const;

private:
    struct Font {
        HFONT handle = nullptr;
        int ascent = 0;
        int height = 0;
    };

    const Font& font(const RichDocument& document, StyleIndex style) const;
    /// Pixels that the characters take from `x` on; tabs go to the next stop.
    [[nodiscard]] int advance(const RichDocument& document, int begin, int end, int x) const;
    [[nodiscard]] int tabStop(const ParagraphStyle& paragraph, int x) const;
    /// The first position from `begin` on that doesn't fit into `room` pixels any more.
    [[nodiscard]] int fitting(const RichDocument& document, int begin, int end, int x, int room) const;
    void buildParagraph(const RichDocument& document, int begin, int end, const ParagraphStyle& paragraph, int width);
    void addLine(const RichDocument& document, Line line, const ParagraphStyle& paragraph, int width, bool last);
    [[nodiscard]] static int runEnd(const RichDocument& document, int begin, int end);

    HDC dc_; // for measuring
    mutable std::map<StyleIndex, Font> fonts_;
    std::vector<Line> lines_;
    int widest_ = 0;
};

} // namespace vndk::win32
