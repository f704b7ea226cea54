#include "controls/rich_layout.h"

#include "controls/paint_session.h"
#include "win32/fonts.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {
namespace {

constexpr int twipsPerInch = 1440;
constexpr int pixelsPerInch = 96;
constexpr int usualTab = 720; // twentieths of a point between stops that nobody has set

int pixels(int twips) { return MulDiv(twips, pixelsPerInch, twipsPerInch); }

HFONT createFont(const CharStyle& style) {
    LOGFONTA font{};
    font.lfHeight = -std::max(pixels(style.height), 1);
    font.lfWeight = style.bold ? FW_BOLD : FW_NORMAL;
    font.lfItalic = style.italic;
    font.lfUnderline = style.underline;
    font.lfStrikeOut = style.strikeOut;
    font.lfCharSet = DEFAULT_CHARSET;
    std::strncpy(font.lfFaceName, style.face.c_str(), sizeof font.lfFaceName - 1);
    return CreateFontIndirectA(&font);
}

bool isBreak(char c) { return c == '\r' || c == '\v'; }

} // namespace

RichLayout::RichLayout() : dc_(CreateCompatibleDC(nullptr)) {}

RichLayout::~RichLayout() {
    DeleteDC(dc_);
    for (const auto& [style, font] : fonts_)
        DeleteObject(font.handle);
}

const RichLayout::Font& RichLayout::font(const RichDocument& document, StyleIndex style) const {
    Font& font = fonts_[style];
    if (font.handle == nullptr) {
        font.handle = createFont(document.style(style));
        const SelectedObject selected(dc_, font.handle);
        TEXTMETRIC metrics{};
        GetTextMetricsA(dc_, &metrics);
        font.ascent = metrics.tmAscent;
        font.height = std::max(static_cast<int>(metrics.tmHeight), 1);
    }
    return font;
}

/// Characters of one style up to the next tab.
int RichLayout::runEnd(const RichDocument& document, int begin, int end) {
    const StyleIndex style = document.styleAt(begin);
    int position = begin + 1;
    if (document.at(begin) == '\t')
        return position;
    while (position < end && document.styleAt(position) == style && document.at(position) != '\t')
        ++position;
    return position;
}

int RichLayout::tabStop(const ParagraphStyle& paragraph, int x) const {
    for (const int tab : paragraph.tabs)
        if (pixels(tab) > x)
            return pixels(tab);
    const int step = pixels(usualTab);
    return (x / step + 1) * step;
}

int RichLayout::advance(const RichDocument& document, int begin, int end, int x) const {
    const int start = x;
    while (begin < end) {
        const int stop = runEnd(document, begin, end);
        if (document.at(begin) == '\t') {
            x = tabStop(document.paragraph(document.paragraphAt(begin)), x);
        } else {
            const SelectedObject selected(dc_, font(document, document.styleAt(begin)).handle);
            SIZE size{};
            GetTextExtentPoint32A(dc_, document.text().data() + begin, stop - begin, &size);
            x += size.cx;
        }
        begin = stop;
    }
    return x - start;
}

int RichLayout::fitting(const RichDocument& document, int begin, int end, int x, int room) const {
    while (begin < end) {
        const int stop = runEnd(document, begin, end);
        const int width = advance(document, begin, stop, x);
        if (x + width > room) {
            if (document.at(begin) == '\t')
                return begin;
            const SelectedObject selected(dc_, font(document, document.styleAt(begin)).handle);
            int fits = 0;
            SIZE size{};
            GetTextExtentExPointA(dc_, document.text().data() + begin, stop - begin, room - x, &fits, nullptr, &size);
            return begin + fits;
        }
        x += width;
        begin = stop;
    }
    return end;
}

void RichLayout::addLine(const RichDocument& document, Line line, const ParagraphStyle& paragraph, int width,
                         bool last) {
    int descent = 0;
    const int end = std::max(line.end, line.begin + 1);
    for (int position = line.begin; position < end;) {
        const Font& used = font(document, document.styleAt(position));
        line.ascent = std::max(line.ascent, used.ascent);
        descent = std::max(descent, used.height - used.ascent);
        position = position < line.end ? runEnd(document, position, line.end) : end;
    }
    const int before = line.firstOfParagraph ? pixels(paragraph.spaceBefore) : 0;
    const int after = last ? pixels(paragraph.spaceAfter) : 0;
    line.top = lines_.empty() ? 0 : lines_.back().top + lines_.back().height;
    line.ascent += before;
    line.height = line.ascent + descent + after;
    const int indent = pixels(paragraph.leftIndent + (line.firstOfParagraph ? paragraph.firstIndent : 0));
    line.left = std::max(indent, 0);
    lines_.push_back(line);
    const int taken = advance(document, line.begin, visibleEnd(document, lineCount() - 1), line.left);
    const int spare = width - pixels(paragraph.rightIndent) - line.left - taken;
    if (width > 0 && spare > 0 && paragraph.alignment != Alignment::left)
        lines_.back().left += paragraph.alignment == Alignment::right ? spare : spare / 2;
    widest_ = std::max(widest_, lines_.back().left + taken);
}

void RichLayout::buildParagraph(const RichDocument& document, int begin, int end, const ParagraphStyle& paragraph,
                                int width) {
    int position = begin;
    bool first = true;
    do {
        Line line;
        line.begin = position;
        line.firstOfParagraph = first;
        // A line break closes the line within the paragraph.
        const auto view =
            document.text().substr(static_cast<std::size_t>(position), static_cast<std::size_t>(end - position));
        const std::size_t broken = view.find('\v');
        const int stop = broken == std::string_view::npos ? end : position + static_cast<int>(broken) + 1;
        line.end = stop;
        const int content = stop > position && isBreak(document.at(stop - 1)) ? stop - 1 : stop;
        if (width > 0) {
            const int indent = std::max(pixels(paragraph.leftIndent + (first ? paragraph.firstIndent : 0)), 0);
            const int room = std::max(width - pixels(paragraph.rightIndent), indent + 1);
            int fits = fitting(document, position, content, indent, room);
            if (fits < content) {
                // Back to the last blank; the blanks themselves may hang over the edge.
                int word = fits;
                while (word > position && document.at(word - 1) != ' ' && document.at(word) != ' ')
                    --word;
                while (word > position && word < content && document.at(word) == ' ')
                    ++word;
                line.end = word > position ? word : std::max(fits, position + 1);
            }
        }
        addLine(document, line, paragraph, width, line.end >= end);
        position = line.end;
        first = false;
    } while (position < end);
}

void RichLayout::build(const RichDocument& document, int width) {
    lines_.clear();
    widest_ = 0;
    int begin = 0;
    for (int index = 0; index < document.paragraphCount(); ++index) {
        const std::size_t close = document.text().find('\r', static_cast<std::size_t>(begin));
        const int end = close == std::string_view::npos ? document.length() : static_cast<int>(close) + 1;
        buildParagraph(document, begin, end, document.paragraph(index), width);
        begin = end;
    }
}

int RichLayout::lineOf(int position) const {
    const auto after = std::upper_bound(lines_.begin(), lines_.end(), position,
                                        [](int value, const Line& line) { return value < line.begin; });
    return std::max(static_cast<int>(after - lines_.begin()) - 1, 0);
}

int RichLayout::lineAtHeight(int y) const {
    const auto after =
        std::upper_bound(lines_.begin(), lines_.end(), y, [](int value, const Line& line) { return value < line.top; });
    return std::max(static_cast<int>(after - lines_.begin()) - 1, 0);
}

int RichLayout::height() const { return lines_.empty() ? 0 : lines_.back().top + lines_.back().height; }

int RichLayout::visibleEnd(const RichDocument& document, int index) const {
    const Line& at = line(index);
    return at.end > at.begin && isBreak(document.at(at.end - 1)) ? at.end - 1 : at.end;
}

POINT RichLayout::placeOf(const RichDocument& document, int position) const {
    position = std::clamp(position, 0, document.length());
    const Line& at = line(lineOf(position));
    return {at.left + advance(document, at.begin, position, at.left), at.top};
}

int RichLayout::positionAt(const RichDocument& document, POINT point) const {
    const int index = lineAtHeight(point.y);
    const Line& at = line(index);
    const int end = visibleEnd(document, index);
    const int fits = fitting(document, at.begin, end, at.left, point.x);
    if (fits >= end)
        return end;
    // The nearer edge of the character under the point counts.
    const int left = at.left + advance(document, at.begin, fits, at.left);
    const int width = advance(document, fits, fits + 1, left);
    return point.x - left > width / 2 ? fits + 1 : fits;
}

void RichLayout::paint(HDC dc, const RichDocument& document, POINT shift, const RECT& area, int selBegin, int selEnd,
                       const Colors& colors) const {
    const SavedContext saved(dc);
    for (int index = lineAtHeight(area.top - shift.y); index < lineCount(); ++index) {
        const Line& at = line(index);
        if (at.top + shift.y >= area.bottom)
            break;
        const int end = visibleEnd(document, index);
        int x = at.left;
        for (int position = at.begin; position < end;) {
            int stop = runEnd(document, position, end);
            const bool selected = position >= selBegin && position < selEnd;
            for (const int edge : {selBegin, selEnd})
                if (edge > position && edge < stop)
                    stop = edge;
            const int width = advance(document, position, stop, x);
            const Font& used = font(document, document.styleAt(position));
            const CharStyle& style = document.style(document.styleAt(position));
            const RECT cell{x + shift.x, at.top + shift.y, x + width + shift.x, at.top + at.height + shift.y};
            SelectObject(dc, used.handle);
            SetBkMode(dc, TRANSPARENT);
            if (selected) {
                SetBkColor(dc, colors.selectedBackground);
                ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &cell, nullptr, 0, nullptr);
            }
            SetTextColor(dc, selected ? colors.selectedText : style.autoColor ? colors.text : style.color);
            if (document.at(position) != '\t')
                TextOutA(dc, cell.left, cell.top + at.ascent - used.ascent, document.text().data() + position,
                         stop - position);
            x += width;
            position = stop;
        }
    }
}

} // namespace vndk::win32
