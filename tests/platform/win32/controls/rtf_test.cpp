// The reader of rich text: what damaged, nested and odd input comes to.
#include "controls/rtf_reader.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace vndk::win32 {
namespace {

std::string textOf(std::string_view rtf) {
    RichDocument document;
    return readRtf(rtf, document) ? std::string(document.text()) : "not rich text";
}

TEST(Rtf, ReadsTextsOfAllSpellings) {
    const struct {
        const char* rtf;
        const char* text;
    } rows[] = {
        {"{\\rtf1 abcdefghijkl}", "abcdefghijkl"},
        {"{\\rtf1 a\\par b\\par}", "a\rb"},
        {"{\\rtf1 a\\par\\par}", "a\r"},
        {"{\\rtf1 a\r\nb}", "ab"},
        {"{\\rtf1 \\{\\}\\\\\\~\\_}", "{}\\\xA0-"},
        {"{\\rtf1 Gr\\'f6\\'dfe}", "Gr\xF6\xDF"
                                   "e"},
        {"{\\rtf1\\uc1 \\u246?x}", "\xF6x"},
        {"{\\rtf1\\uc2 \\u8364ABx}", "\x80x"},
        {"{\\rtf1 \\u1234?x}", "?x"},
        {"{\\rtf1 \\u-10179?x}", "?x"},
        {"{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red1;}{\\stylesheet{\\s0 Normal;}}x}", "x"},
        {"{\\rtf1{\\*\\unknown hidden}x}", "x"},
        {"{\\rtf1{\\pict\\bin4 }}}}}x}", "x"},
        {"{\\rtf1 a\\tab b\\line c}", "a\tb\vc"},
        {"{\\rtf1 a{\\b b}c", "abc"},
        {"{\\rtf1 a}b}", "a"},
        {"{\\rtf1 \\'}", ""},
        {"{\\rtf1 a\\'00\\'0db\\'0ac}", "a\rb\rc"},
        {"{\\rtf1 x\\", "x"},
        {"{\\rtf1\\fs99999999999 x}", "x"},
        {"{\\rtf1\\bin99999999 x}", ""},
        {"{\\rtf1}", ""},
        {"plain", "not rich text"},
        {"", "not rich text"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(textOf(row.rtf), row.text) << row.rtf;
}

TEST(Rtf, GivesGroupsTheirOwnStyles) {
    RichDocument document;
    ASSERT_TRUE(readRtf("{\\rtf1{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}{\\colortbl ;\\red0\\green0\\blue255;}"
                        "\\f0\\fs20 a{\\b\\f1\\cf1 b}c\\par\\pard\\qc d}",
                        document));
    const CharStyle& a = document.style(document.styleAt(0));
    const CharStyle& b = document.style(document.styleAt(1));
    EXPECT_EQ(a.face, "Arial");
    EXPECT_EQ(a.height, 200);
    EXPECT_TRUE(a.autoColor);
    EXPECT_TRUE(b.bold);
    EXPECT_EQ(b.face, "Courier New");
    EXPECT_EQ(b.color, RGB(0, 0, 255));
    EXPECT_EQ(document.styleAt(2), document.styleAt(0)) << "the group's end brings its style back";
    EXPECT_EQ(document.paragraph(0).alignment, Alignment::left);
    EXPECT_EQ(document.paragraph(1).alignment, Alignment::center);
}

TEST(Rtf, WritesWhatItReads) {
    RichDocument document;
    ASSERT_TRUE(readRtf(
        "{\\rtf1{\\fonttbl{\\f0 Arial;}}\\f0\\fs28\\b Head\\par\\pard\\li300\\plain\\fs20 \\{x\\} \\'e4}", document));
    RichDocument again;
    ASSERT_TRUE(readRtf(writeRtf(document, 0, document.length()), again));
    EXPECT_EQ(again.text(), document.text());
    for (const int position : {0, 5, 9})
        EXPECT_EQ(again.style(again.styleAt(position)), document.style(document.styleAt(position))) << position;
    EXPECT_EQ(again.paragraph(1), document.paragraph(1));
}

TEST(Rtf, SurvivesAnyDamage) {
    const std::string whole =
        "{\\rtf1\\ansi{\\fonttbl{\\f0\\fswiss Arial;}{\\f1 Times New Roman;}}{\\colortbl ;\\red0\\green0"
        "\\blue128;}\\pard\\sa120\\cf1\\b\\f0\\fs28 Head\\par\\pard\\tx400\\tx800 a\\tab b \\u8364? "
        "\\'e4{\\*\\x{y}}{\\i z}\\par}";
    for (std::size_t length = 0; length <= whole.size(); ++length)
        textOf(std::string_view(whole).substr(0, length));
    std::mt19937 random(20001);
    for (int round = 0; round < 3000; ++round) {
        std::string damaged = whole;
        for (int changes = 1 + static_cast<int>(random() % 4); changes > 0; --changes)
            damaged[5 + random() % (damaged.size() - 5)] = static_cast<char>(random());
        RichDocument document;
        readRtf(damaged, document);
        ASSERT_LE(document.text().size(), damaged.size()) << damaged;
    }
    EXPECT_EQ(textOf("{\\rtf1 a" + std::string(100000, '{') + "b" + std::string(100000, '}') + "c}"), "ac")
        << "depth is bounded";
}

} // namespace
} // namespace vndk::win32
