#include "controls/text_measure.h"

#include "controls/paint_session.h"
#include "win32/draw.h"
#include "win32/fonts.h"

#include <algorithm>

namespace vndk::win32 {

TextMeasure::~TextMeasure() {
    if (dc_ != nullptr)
        DeleteDC(dc_);
}

void TextMeasure::setFont(HFONT font) {
    font_ = font;
    lineHeight_ = 0;
}

HFONT TextMeasure::font() const {
    return font_ != nullptr ? font_ : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

HDC TextMeasure::context() const {
    if (dc_ == nullptr)
        dc_ = CreateCompatibleDC(nullptr);
    return dc_;
}

int TextMeasure::width(std::string_view text) const {
    if (text.empty())
        return 0;
    const SelectedObject font(context(), this->font());
    SIZE size{};
    GetTextExtentPoint32A(dc_, text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

int TextMeasure::lineHeight() const {
    if (lineHeight_ == 0) {
        const SelectedObject font(context(), this->font());
        TEXTMETRICA metrics{};
        GetTextMetricsA(dc_, &metrics);
        lineHeight_ = std::max<int>(metrics.tmHeight, 1);
    }
    return lineHeight_;
}

SIZE TextMeasure::wrapped(std::string_view text, int width, UINT drawTextFlags) const {
    if (text.empty())
        return {0, 0};
    const SelectedObject font(context(), this->font());
    RECT rect{0, 0, width, 0};
    DrawTextA(dc_, text.data(), static_cast<int>(text.size()), &rect, drawTextFlags | DT_CALCRECT);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

} // namespace vndk::win32
