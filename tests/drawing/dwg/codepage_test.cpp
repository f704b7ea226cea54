#include "dwg/codepage.h"

#include <gtest/gtest.h>

using namespace vndk::dwg;

TEST(CodePage, DrawingTextArrivesIn1252AndGoesBack) {
    const struct {
        const char* what;
        uint16_t codePage;
        std::string drawing;
        std::string inside;
    } cases[] = {
        {"ASCII", 28, "plain %%d \\P", "plain %%d \\P"},
        {"1252 stays as it is", 30, "\x80\x81\xE9\xFF", "\x80\x81\xE9\xFF"},
        {"an unknown code page is taken for 1252", 999, "\xE9\x9C", "\xE9\x9C"},
        {"the same letter at another place", 11, "\x82", "\xE9"},
        {"same letter, same place", 28, "\xE9", "\xE9"},
        {"letters that 1252 lacks", 29, "\xC4\xEE\xEC", "\\U+0414\\U+043E\\U+043C"},
        {"two bytes for one letter", 38, "\x93\xFA\x96{", "\\U+65E5\\U+672C"},
        {"a second byte that is a backslash", 38, "\x95\x5C.", "\\U+8868."},
        {"half-width kana of one byte", 38, "\xB1", "\\U+FF71"},
        {"euro", 28, "\x80", "\x80"},
        {"a byte without meaning", 32, "a\xAAz", "a\\U+F7AAz"},
        {"a lead byte at the end", 38, "a\x93", "a\\U+F793"},
        {"a combining mark", 44, "e\xEC", "e\\U+0301"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(textFromDrawing(each.drawing, each.codePage), each.inside) << each.what;
        EXPECT_EQ(textToDrawing(each.inside, each.codePage), each.drawing) << each.what;
    }
}

TEST(CodePage, EveryByteOfEverySingleByteCodePageComesBack) {
    for (const uint16_t codePage : {11, 12, 28, 29, 30, 32, 33, 34, 35, 36, 37, 44})
        for (unsigned byte = 1; byte < 256; ++byte) {
            const std::string text(1, static_cast<char>(byte));
            ASSERT_EQ(textToDrawing(textFromDrawing(text, codePage), codePage), text) << codePage << " " << byte;
        }
}

TEST(CodePage, WhatTheDrawingCannotHoldIsEscaped) {
    EXPECT_EQ(textToDrawing("caf\xE9", 29), "caf\\U+00E9");
    EXPECT_EQ(textToDrawing("\\U+0041 \\U+ \\U+12G4 \\U+12", 29), "\\U+0041 \\U+ \\U+12G4 \\U+12");
}

TEST(CodePage, Utf8IsForPeople) {
    const struct {
        std::string text;
        std::string utf8;
    } cases[] = {
        {"T\xFCr", "T\xC3\xBCr"},       {"\x80", "\xE2\x82\xAC"},
        {"\\U+65E5x", "\xE6\x97\xA5x"}, {"\\U+D83D\\U+DE00", "\xF0\x9F\x98\x80"},
        {"\\U+D83D!", "\\U+D83D!"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(utf8FromText(each.text), each.utf8);
        EXPECT_EQ(textFromUtf8(each.utf8), each.text);
    }
    for (const char* invalid : {"\x80", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82"})
        EXPECT_EQ(textFromUtf8(invalid).front(), '?') << invalid;
}
