// Takes any bytes as the formula of an attribute and works it out.
#include "objects/cond_formula.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CCondFormula formula;
    if (formula.setText({reinterpret_cast<const char*>(data), size}) != Acad::eOk)
        return 0;
    CCondValue result;
    (void)formula.evaluate(
        [](std::string_view tag, std::string& text) {
            text = tag.empty() ? "900" : tag;
            return true;
        },
        result);
    return 0;
}
