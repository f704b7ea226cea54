#include "controls/rich_document.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

constexpr std::size_t mostStyles = 0xFFFF;

} // namespace

RichDocument::RichDocument() : styles_(1), paragraphs_(1) {}

StyleIndex RichDocument::styleAt(int position) const {
    if (charStyles_.empty())
        return defaultStyle_;
    const int last = static_cast<int>(charStyles_.size()) - 1;
    return charStyles_[static_cast<std::size_t>(std::clamp(position, 0, last))];
}

StyleIndex RichDocument::intern(const CharStyle& style) {
    const auto found = std::find(styles_.begin(), styles_.end(), style);
    if (found != styles_.end())
        return static_cast<StyleIndex>(found - styles_.begin());
    if (styles_.size() >= mostStyles)
        return defaultStyle_;
    styles_.push_back(style);
    return static_cast<StyleIndex>(styles_.size() - 1);
}

void RichDocument::setDefaultStyle(const CharStyle& style, bool all) {
    defaultStyle_ = intern(style);
    if (all)
        std::fill(charStyles_.begin(), charStyles_.end(), defaultStyle_);
}

int RichDocument::paragraphAt(int position) const {
    const auto end = text_.begin() + std::clamp(position, 0, length());
    return static_cast<int>(std::count(text_.begin(), end, '\r'));
}

void RichDocument::clear() {
    text_.clear();
    charStyles_.clear();
    paragraphs_.assign(1, ParagraphStyle{});
}

void RichDocument::insert(int position, const RichText& piece) {
    position = std::clamp(position, 0, length());
    const int first = paragraphAt(position);
    const auto breaks = static_cast<std::size_t>(std::count(piece.text.begin(), piece.text.end(), '\r'));
    text_.insert(static_cast<std::size_t>(position), piece.text);
    charStyles_.insert(charStyles_.begin() + position, piece.styles.begin(), piece.styles.end());
    // What follows the insertion keeps the format of the paragraph that it was in.
    const ParagraphStyle around = paragraphs_[static_cast<std::size_t>(first)];
    paragraphs_.insert(paragraphs_.begin() + first, breaks, around);
    for (std::size_t i = 0; i < std::min(breaks + 1, piece.paragraphs.size()); ++i)
        paragraphs_[static_cast<std::size_t>(first) + i] = piece.paragraphs[i];
}

void RichDocument::erase(int begin, int end) {
    begin = std::clamp(begin, 0, length());
    end = std::clamp(end, begin, length());
    const int first = paragraphAt(begin);
    const int last = paragraphAt(end);
    paragraphs_.erase(paragraphs_.begin() + first + 1, paragraphs_.begin() + last + 1);
    text_.erase(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
    charStyles_.erase(charStyles_.begin() + begin, charStyles_.begin() + end);
}

void RichDocument::setStyle(int begin, int end, StyleIndex style) {
    begin = std::clamp(begin, 0, length());
    end = std::clamp(end, begin, length());
    std::fill(charStyles_.begin() + begin, charStyles_.begin() + end, style);
}

RichText RichDocument::cut(int begin, int end) const {
    begin = std::clamp(begin, 0, length());
    end = std::clamp(end, begin, length());
    RichText piece;
    piece.text = text_.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
    piece.styles.assign(charStyles_.begin() + begin, charStyles_.begin() + end);
    const int last = paragraphAt(end);
    for (int paragraph = paragraphAt(begin); paragraph <= last; ++paragraph)
        piece.paragraphs.push_back(paragraphs_[static_cast<std::size_t>(paragraph)]);
    return piece;
}

RichText RichDocument::plain(std::string_view text, StyleIndex style) {
    RichText piece;
    piece.text.reserve(text.size());
    for (std::size_t i = 0; i < text.size() && text[i] != '\0'; ++i) {
        if (text[i] == '\r' || text[i] == '\n') {
            if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
                ++i;
            piece.text.push_back('\r');
        } else {
            piece.text.push_back(text[i]);
        }
    }
    piece.styles.assign(piece.text.size(), style);
    return piece;
}

std::string RichDocument::plainText(int begin, int end) const {
    begin = std::clamp(begin, 0, length());
    end = std::clamp(end, begin, length());
    std::string plain;
    for (int i = begin; i < end; ++i) {
        plain.push_back(at(i));
        if (at(i) == '\r')
            plain.push_back('\n');
    }
    return plain;
}

} // namespace vndk::win32
