#include "controls/edit_layout.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace vndk::win32 {
namespace {

constexpr std::string_view lineBreak = "\r\n";
constexpr int defaultTabCharacters = 8;
constexpr int farAway = 1 << 29;                          // pixels; texts of any length stay below
constexpr int anything = std::numeric_limits<int>::max(); // a reach that no one knows

/// The line that begins at `start`.
EditLine readLine(std::string_view text, const EditMetrics& measure, const EditWrap& wrap, int start) {
    const auto from = static_cast<std::size_t>(start);
    std::size_t found = wrap.multiLine ? text.find(lineBreak, from) : std::string_view::npos;
    const bool last = found == std::string_view::npos;
    if (last)
        found = text.size();
    const std::string_view whole = text.substr(from, found - from);
    EditLine line;
    line.start = start;
    line.length = static_cast<int>(whole.size());
    line.end = static_cast<int>(found + (last ? 0 : lineBreak.size()));
    line.reach = last ? line.end + 1 : line.end;
    if (!wrap.multiLine || wrap.width <= 0) {
        line.width = measure.extent(whole);
        return line;
    }
    const int fits = std::max(measure.fit(whole, wrap.width), 1);
    if (fits >= line.length) {
        line.width = measure.extent(whole);
        return line;
    }
    int cut = fits;
    if (wrap.findBreak != nullptr) {
        cut = std::clamp(wrap.findBreak(start + fits) - start, 0, fits);
    } else if (whole[static_cast<std::size_t>(cut)] != ' ') {
        const std::size_t blank = whole.rfind(' ', static_cast<std::size_t>(cut) - 1);
        cut = blank != std::string_view::npos ? static_cast<int>(blank) + 1 : 0;
    }
    if (cut == 0)
        cut = fits;
    // Blanks never begin a line: they hang over the edge of this one.
    while (cut < line.length && whole[static_cast<std::size_t>(cut)] == ' ')
        ++cut;
    if (cut < line.length) {
        line.length = cut;
        line.end = start + cut;
        line.soft = true;
        // The character that didn't fit counts, and one more: with it, it may be a break.
        line.reach = wrap.findBreak != nullptr ? anything : start + std::max(cut, fits) + 2;
    }
    line.width = measure.extent(whole.substr(0, static_cast<std::size_t>(line.length)));
    return line;
}

bool endsText(const EditLine& line) { return !line.soft && line.end == line.start + line.length; }

} // namespace

int EditMetrics::advance(char character, int x) const {
    if (password != '\0')
        return widths[static_cast<unsigned char>(password)];
    if (character != '\t')
        return widths[static_cast<unsigned char>(character)];
    if (tabs.size() > 1) {
        const auto next = std::upper_bound(tabs.begin(), tabs.end(), x);
        return next != tabs.end() ? *next - x : averageWidth;
    }
    const int distance = std::max(tabs.empty() ? defaultTabCharacters * averageWidth : tabs.front(), 1);
    return distance - x % distance;
}

int EditMetrics::extent(std::string_view text) const {
    int x = 0;
    for (const char character : text)
        x = std::min(x + advance(character, x), farAway);
    return x;
}

int EditMetrics::fit(std::string_view text, int width) const {
    int x = 0;
    int count = 0;
    for (const char character : text) {
        x = std::min(x + advance(character, x), farAway);
        if (x > width)
            return count;
        ++count;
    }
    return count;
}

int EditMetrics::nearest(std::string_view text, int x) const {
    int left = 0;
    int count = 0;
    for (const char character : text) {
        const int width = advance(character, left);
        if (x < left + width / 2)
            return count;
        left = std::min(left + width, farAway);
        ++count;
    }
    return count;
}

void EditLayout::rebuild(std::string_view text, const EditMetrics& measure, const EditWrap& wrap) {
    lines_.clear();
    lines_.push_back(readLine(text, measure, wrap, 0));
    while (!endsText(lines_.back()))
        lines_.push_back(readLine(text, measure, wrap, lines_.back().end));
}

void EditLayout::update(std::string_view text, const EditMetrics& measure, const EditWrap& wrap, int position,
                        int removed, int inserted) {
    assert(position >= 0 && removed >= 0 && inserted >= 0 && "a change can't be negative");
    // What follows a line may decide where it is wrapped.
    int first = lineOf(position);
    for (int index = first; index > 0 && line(index - 1).soft; --index)
        if (line(index - 1).reach > position)
            first = index - 1;
    const int delta = inserted - removed;
    const int untouched = position + inserted; // from here on the text is the old one
    std::vector<EditLine> fresh;
    auto old = static_cast<std::size_t>(first);
    int start = lines_[old].start;
    bool joined = false;
    while (!joined) {
        fresh.push_back(readLine(text, measure, wrap, start));
        if (endsText(fresh.back()))
            break;
        start = fresh.back().end;
        // Once a line begins where one did before, the rest is as it was. One character of distance: a CR and LF that
        // the change tore apart or joined must lie in front.
        while (old < lines_.size() && lines_[old].start + delta < start)
            ++old;
        joined = start > untouched && old < lines_.size() && lines_[old].start > position + removed &&
                 lines_[old].start + delta == start;
    }
    std::vector<EditLine> rest;
    if (joined)
        rest.assign(lines_.begin() + static_cast<std::ptrdiff_t>(old), lines_.end());
    for (EditLine& line : rest) {
        line.start += delta;
        line.end += delta;
        if (line.reach != anything)
            line.reach += delta;
    }
    lines_.resize(static_cast<std::size_t>(first));
    lines_.insert(lines_.end(), fresh.begin(), fresh.end());
    lines_.insert(lines_.end(), rest.begin(), rest.end());
}

int EditLayout::lineOf(int position) const {
    const auto behind = std::upper_bound(lines_.begin(), lines_.end(), position,
                                         [](int wanted, const EditLine& line) { return wanted < line.start; });
    return std::max(static_cast<int>(behind - lines_.begin()) - 1, 0);
}

int EditLayout::widest() const {
    int width = 0;
    for (const EditLine& line : lines_)
        width = std::max(width, line.width);
    return width;
}

} // namespace vndk::win32
