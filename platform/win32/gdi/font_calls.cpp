// The published calls around fonts: making them, measuring, and plain text output.
#include "gdi/text_out.h"

#include <algorithm>
#include <cstring>

using namespace vndk::win32;

namespace {

BOOL badParameter() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

/// The context's font; null, with the error set, for a dead context.
const Font* fontBehind(HDC dc) {
    const DeviceContext* context = requireContext(dc);
    return context == nullptr ? nullptr : &fontOf(*context);
}

std::size_t faceNameLength(const CHAR (&name)[LF_FACESIZE]) {
    return static_cast<std::size_t>(std::find(std::begin(name), std::end(name), '\0') - std::begin(name));
}

/// Where the upper left corner of the text's box lies from the point that the alignment speaks of.
POINT cornerFor(UINT align, int width, const TEXTMETRICA& metrics) {
    POINT corner{0, 0};
    if ((align & TA_CENTER) == TA_CENTER)
        corner.x = -(width / 2);
    else if ((align & TA_RIGHT) != 0)
        corner.x = -width;
    if ((align & TA_BASELINE) == TA_BASELINE)
        corner.y = -metrics.tmAscent;
    else if ((align & TA_BOTTOM) != 0)
        corner.y = -metrics.tmHeight;
    return corner;
}

/// With TA_UPDATECP: behind the text, or for text aligned to the right, in front of it. Centred text moves nothing.
void movePosition(DeviceContext& context, UINT align, int width, const Font& font) {
    int x = (align & TA_CENTER) == TA_CENTER ? 0 : (align & TA_RIGHT) != 0 ? -width : width;
    int y = 0;
    font.turn().turnCorner(x, y);
    POINT& position = context.state.position;
    position = {limited(std::int64_t{position.x} + x), limited(std::int64_t{position.y} + y)};
}

} // namespace

HFONT CreateFontIndirectA(const LOGFONTA* description) {
    if (description == nullptr) {
        badParameter();
        return nullptr;
    }
    FontObject font;
    font.description = *description;
    font.description.lfFaceName[LF_FACESIZE - 1] = '\0';
    return static_cast<HFONT>(newObject({font}));
}

HFONT CreateFontA(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline,
                  DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                  DWORD pitchAndFamily, LPCSTR faceName) {
    LOGFONTA description{};
    description.lfHeight = height;
    description.lfWidth = width;
    description.lfEscapement = escapement;
    description.lfOrientation = orientation;
    description.lfWeight = weight;
    description.lfItalic = italic != 0 ? 1 : 0;
    description.lfUnderline = underline != 0 ? 1 : 0;
    description.lfStrikeOut = strikeOut != 0 ? 1 : 0;
    description.lfCharSet = static_cast<BYTE>(charSet);
    description.lfOutPrecision = static_cast<BYTE>(outPrecision);
    description.lfClipPrecision = static_cast<BYTE>(clipPrecision);
    description.lfQuality = static_cast<BYTE>(quality);
    description.lfPitchAndFamily = static_cast<BYTE>(pitchAndFamily);
    if (faceName != nullptr)
        std::memcpy(description.lfFaceName, faceName, std::min<std::size_t>(std::strlen(faceName), LF_FACESIZE - 1));
    return CreateFontIndirectA(&description);
}

BOOL GetTextMetricsA(HDC dc, TEXTMETRICA* metrics) {
    if (metrics == nullptr)
        return badParameter();
    const Font* font = fontBehind(dc);
    if (font == nullptr)
        return FALSE;
    *metrics = font->metrics();
    return TRUE;
}

int GetTextFaceA(HDC dc, int size, LPSTR buffer) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return 0;
    const LOGFONTA& description = context->state.font.get<FontObject>()->description;
    const std::string_view asked(description.lfFaceName, faceNameLength(description.lfFaceName));
    const std::string_view name = asked.empty() ? std::string_view("Arial") : asked;
    if (buffer == nullptr)
        return static_cast<int>(name.size()) + 1;
    if (size <= 0)
        return badParameter();
    const std::size_t length = std::min(name.size(), static_cast<std::size_t>(size - 1));
    std::memcpy(buffer, name.data(), length);
    buffer[length] = '\0';
    return static_cast<int>(length) + 1;
}

BOOL GetTextExtentPoint32A(HDC dc, LPCSTR text, int count, SIZE* size) {
    return GetTextExtentExPointA(dc, text, count, 0, nullptr, nullptr, size);
}

BOOL GetTextExtentPointA(HDC dc, LPCSTR text, int count, SIZE* size) {
    return GetTextExtentPoint32A(dc, text, count, size);
}

BOOL GetTextExtentExPointA(HDC dc, LPCSTR text, int count, int maxExtent, INT* fit, INT* extents, SIZE* size) {
    if (size == nullptr || count < 0 || (text == nullptr && count > 0))
        return badParameter();
    const Font* font = fontBehind(dc);
    if (font == nullptr)
        return FALSE;
    std::int64_t width = 0;
    int fitting = 0;
    for (int index = 0; index < count; ++index) {
        width += font->advance(text[index]);
        if (fit != nullptr && width > maxExtent) {
            width += font->width({text + index + 1, static_cast<std::size_t>(count - index - 1)});
            break;
        }
        fitting = index + 1;
        if (extents != nullptr)
            extents[index] = limited(width);
    }
    if (fit != nullptr)
        *fit = fitting;
    *size = {limited(width), font->metrics().tmHeight};
    return TRUE;
}

BOOL GetCharWidth32A(HDC dc, UINT first, UINT last, INT* widths) {
    if (widths == nullptr || first > last || last > 0xFF)
        return badParameter();
    const Font* font = fontBehind(dc);
    if (font == nullptr)
        return FALSE;
    for (UINT character = first; character <= last; ++character)
        widths[character - first] = font->advance(static_cast<char>(character));
    return TRUE;
}

BOOL GetCharWidthA(HDC dc, UINT first, UINT last, INT* widths) { return GetCharWidth32A(dc, first, last, widths); }

BOOL TextOutA(HDC dc, int x, int y, LPCSTR text, int count) {
    if (count < 0)
        return badParameter();
    return ExtTextOutA(dc, x, y, 0, nullptr, text, static_cast<UINT>(count), nullptr);
}

BOOL ExtTextOutA(HDC dc, int x, int y, UINT flags, const RECT* rect, LPCSTR text, UINT count, const INT* advances) {
    const bool needsRect = (flags & (ETO_OPAQUE | ETO_CLIPPED)) != 0;
    if ((needsRect && rect == nullptr) || (text == nullptr && count > 0))
        return badParameter();
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    RECT area{};
    if (needsRect)
        area = normalized(context->toSurface(*rect));
    if ((flags & ETO_OPAQUE) != 0)
        paintRect(*context, area, context->pixelOf(context->state.backgroundColor));
    if (count == 0)
        return TRUE;

    const UINT align = context->state.textAlign;
    const bool fromPosition = (align & TA_UPDATECP) != 0;
    const POINT pen = context->toSurface(fromPosition ? context->state.position : POINT{x, y});
    const Font& font = fontOf(*context);
    const TextRun run{{text, count}, advances};
    const int width = run.width(font);
    const POINT corner = cornerFor(align, width, font.metrics());
    paintRunFromPen(*context, pen, corner.x, corner.y, run, (flags & ETO_CLIPPED) != 0 ? &area : nullptr);
    if (fromPosition)
        movePosition(*context, align, width, font);
    return TRUE;
}

int MulDiv(int number, int numerator, int denominator) {
    if (denominator == 0)
        return -1;
    const std::int64_t product = std::int64_t{number} * numerator;
    const std::int64_t half = std::abs(std::int64_t{denominator}) / 2;
    const std::int64_t result = (product + (product < 0 ? -half : half)) / denominator;
    return result == static_cast<int>(result) ? static_cast<int>(result) : -1;
}
