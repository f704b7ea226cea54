#include "ed/prompts.h"

#include <gtest/gtest.h>

using vndk::host::matchKeyword;

TEST(Keywords, areFoundByTheirCapitalsAndLongerForms) {
    struct Case {
        const char* typed;
        const char* keywords;
        const char* found;
    };
    const Case cases[] = {
        {"u", "Undo Close", "Undo"},
        {"UNDO", "Undo Close", "Undo"},
        {"und", "Undo Close", "Undo"},
        {"_U", "Undo Close", "Undo"},
        {"undone", "Undo Close", ""},
        {"x", "Undo Close", ""},
        {"", "Undo Close", ""},
        {"_", "Undo Close", ""},
        // More than one capital is needed to tell these apart.
        {"l", "LType LWeight", ""},
        {"lt", "LType LWeight", "LType"},
        {"lw", "LType LWeight", "LWeight"},
        // A capital inside the word stands for the word.
        {"x", "eXit Edit", "eXit"},
        {"exit", "eXit Edit", "eXit"},
        {"e", "eXit Edit", "Edit"},
        {"3p", "3P 2P Ttr", "3P"},
        {"on", "ON OFF", "ON"},
        {"o", "ON OFF", ""},
        {"begin", "Begin BEginning", "Begin"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(matchKeyword(c.typed, c.keywords), c.found) << c.typed << " of " << c.keywords;
}
