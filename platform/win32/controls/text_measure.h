// Sizes of texts in a control's font, without a window's context at hand.
#pragma once

#include "win32/gdi.h"

#include <string_view>

namespace vndk::win32 {

class TextMeasure {
public:
    TextMeasure() = default;
    ~TextMeasure();
    TextMeasure(const TextMeasure&) = delete;
    TextMeasure& operator=(const TextMeasure&) = delete;

    /// Null stands for the default font. The font stays the caller's.
    void setFont(HFONT font);
    /// Never null.
    [[nodiscard]] HFONT font() const;
    [[nodiscard]] int width(std::string_view text) const;
    [[nodiscard]] int lineHeight() const;
    /// Size that a text takes when it is broken between words to fit a width.
    [[nodiscard]] SIZE wrapped(std::string_view text, int width, UINT drawTextFlags) const;

private:
    [[nodiscard]] HDC context() const;

    mutable HDC dc_ = nullptr;
    HFONT font_ = nullptr;
    mutable int lineHeight_ = 0; // 0: not measured yet
};

} // namespace vndk::win32
