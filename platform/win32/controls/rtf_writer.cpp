// Writes a document as rich text: the fonts and colours that it uses, then paragraphs with their words.
#include "controls/rtf_reader.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vndk::win32 {
namespace {

void writeCharacter(std::string& rtf, char c) {
    static constexpr char digits[] = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(c);
    if (c == '\\' || c == '{' || c == '}')
        rtf.append("\\").push_back(c);
    else if (c == '\r')
        rtf += "\\par\r\n";
    else if (c == '\t')
        rtf += "\\tab ";
    else if (c == '\v')
        rtf += "\\line ";
    else if (code < 0x80)
        rtf.push_back(c);
    else
        rtf.append("\\'").append(1, digits[code >> 4]).push_back(digits[code & 15]);
}

template <typename T>
std::size_t placeIn(std::vector<T>& list, const T& value) {
    const auto found = std::find(list.begin(), list.end(), value);
    if (found != list.end())
        return static_cast<std::size_t>(found - list.begin());
    list.push_back(value);
    return list.size() - 1;
}

std::string styleWords(const CharStyle& style, std::size_t font, std::size_t color) {
    std::string words = "\\plain\\f" + std::to_string(font) + "\\fs" + std::to_string(style.height / 10);
    words += style.bold ? "\\b" : "";
    words += style.italic ? "\\i" : "";
    words += style.underline ? "\\ul" : "";
    words += style.strikeOut ? "\\strike" : "";
    if (!style.autoColor)
        words += "\\cf" + std::to_string(color + 1);
    return words + " ";
}

std::string paragraphWords(const ParagraphStyle& paragraph) {
    std::string words = "\\pard";
    if (paragraph.alignment != Alignment::left)
        words += paragraph.alignment == Alignment::right ? "\\qr" : "\\qc";
    const auto add = [&words](const char* name, int value) {
        if (value != 0)
            words += name + std::to_string(value);
    };
    add("\\li", paragraph.leftIndent);
    add("\\fi", paragraph.firstIndent);
    add("\\ri", paragraph.rightIndent);
    add("\\sb", paragraph.spaceBefore);
    add("\\sa", paragraph.spaceAfter);
    for (const int tab : paragraph.tabs)
        add("\\tx", tab);
    return words;
}

} // namespace

std::string writeRtf(const RichDocument& document, int begin, int end) {
    std::vector<std::string> fonts;
    std::vector<COLORREF> colors;
    std::string body;
    int current = -1; // the style in force; none at a paragraph's begin
    int paragraph = document.paragraphAt(begin);
    body += paragraphWords(document.paragraph(paragraph));
    for (int i = begin; i < end; ++i) {
        if (const StyleIndex index = document.styleAt(i); current != static_cast<int>(index)) {
            const CharStyle& style = document.style(index);
            body += styleWords(style, placeIn(fonts, style.face), style.autoColor ? 0 : placeIn(colors, style.color));
            current = index;
        }
        writeCharacter(body, document.at(i));
        if (document.at(i) == '\r') {
            body += paragraphWords(document.paragraph(++paragraph));
            current = -1;
        }
    }
    std::string head = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl";
    for (std::size_t i = 0; i < fonts.size(); ++i) {
        head += "{\\f" + std::to_string(i) + "\\fnil ";
        for (const char c : fonts[i])
            writeCharacter(head, c);
        head += ";}";
    }
    head += "}\r\n{\\colortbl ;";
    for (const COLORREF color : colors)
        head += "\\red" + std::to_string(GetRValue(color)) + "\\green" + std::to_string(GetGValue(color)) + "\\blue" +
                std::to_string(GetBValue(color)) + ";";
    return head + "}\r\n" + body + "\\par\r\n}\r\n";
}

} // namespace vndk::win32
