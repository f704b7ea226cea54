#include "commands/wildcard.h"

#include <gtest/gtest.h>

#include <string>

using vndk::host::matchesWildcard;

TEST(Wildcard, fitsNamesByThePublishedSigns) {
    const struct {
        const char* name;
        const char* patterns;
        bool fits;
    } cases[] = {
        {"WALLS", "walls", true},
        {"WALLS", "WALL", false},
        {"WALLS", "*", true},
        {"", "*", true},
        {"", "", true},
        {"A", "", false},
        {"WALLS", "W*S", true},
        {"WALLS", "*ALL?", true},
        {"WALLS", "W*L", false},
        {"A1", "@#", true},
        {"11", "@#", false},
        {"A-1", "@.#", true},
        {"A1", "~A*", false},
        {"B1", "~A*", true},
        {"B2", "[ABC]#", true},
        {"D2", "[A-C]#", false},
        {"D2", "[~A-C]#", true},
        {"A*", "A`*", true},
        {"AB", "A`*", false},
        {"0", "A*,0", true},
        {"X", "A*,0", false},
        {"A,B", "A`,B", true},
        {"[", "[", true},
        {"-", "[A-]", true},
        {"\xE4rger", "\xC4RGER", true},
        {"\xC4", "@", true},
        {"A", "*****A*****", true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(matchesWildcard(c.name, c.patterns), c.fits) << c.name << " by " << c.patterns;
}

TEST(Wildcard, manyStarsDontTakeForever) {
    const std::string name(2000, 'a');
    std::string pattern;
    for (int i = 0; i < 500; ++i)
        pattern += "a*";
    EXPECT_FALSE(matchesWildcard(name, pattern + "b"));
}
