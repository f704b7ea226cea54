#include "gdi/draw_text.h"

#include "gdi/text_out.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {

namespace {

constexpr int defaultTabLength = 8; // characters of average width

/// DT_TABSTOP alone puts the tab length where other flags are; with parameters these keep their meaning.
TextFormat formatFrom(UINT format, const DRAWTEXTPARAMS* params, const Font& font) {
    constexpr UINT tabLengthBits = 0x0000FF00;
    TextFormat result;
    result.flags = format;
    int tabLength = defaultTabLength;
    if ((format & DT_TABSTOP) != 0 && params != nullptr) {
        tabLength = params->iTabLength;
    } else if ((format & DT_TABSTOP) != 0) {
        tabLength = static_cast<int>((format & tabLengthBits) >> 8);
        result.flags &= ~tabLengthBits;
    }
    if (params != nullptr) {
        result.leftMargin = limited(params->iLeftMargin);
        result.rightMargin = limited(params->iRightMargin);
    }
    if ((format & DT_EXPANDTABS) != 0)
        result.tabWidth = std::max(limited(std::int64_t{tabLength} * font.metrics().tmAveCharWidth), 1);
    return result;
}

int linePitch(const Font& font, const TextFormat& format) {
    const TEXTMETRICA& metrics = font.metrics();
    return metrics.tmHeight + (format.has(DT_EXTERNALLEADING) ? metrics.tmExternalLeading : 0);
}

/// Paints a line, piece by piece where it has tabs.
class LinePainter {
public:
    LinePainter(DeviceContext& dc, const Font& font, const TextFormat& format, const RECT* clip)
        : dc_(dc), font_(font), format_(format), clip_(clip) {}

    void paint(const TextLine& line, POINT at) const {
        if (!format_.has(DT_PREFIXONLY))
            paintPieces(line.text, at);
        if (line.marked >= 0 && !format_.has(DT_HIDEPREFIX))
            underline(line, at);
    }

private:
    void paintPieces(std::string_view text, POINT at) const {
        std::size_t start = 0;
        while (start <= text.size()) {
            const std::size_t tab = format_.tabWidth > 0 ? text.find('\t', start) : std::string_view::npos;
            const std::size_t end = std::min(tab, text.size());
            const int x = widthWithTabs(font_, text.substr(0, start), format_.tabWidth);
            paintRun(dc_, {limited(std::int64_t{at.x} + x), at.y}, {text.substr(start, end - start)}, clip_);
            start = end + 1;
        }
    }

    void underline(const TextLine& line, POINT at) const {
        const auto marked = static_cast<std::size_t>(line.marked);
        const int x = limited(std::int64_t{at.x} +
                              widthWithTabs(font_, std::string_view(line.text).substr(0, marked), format_.tabWidth));
        const int y = at.y + font_.metrics().tmAscent + 1;
        RECT bar{x, y, x + font_.advance(line.text[marked]), y + 1};
        if (clip_ != nullptr)
            bar = intersected(bar, *clip_);
        paintRect(dc_, bar, dc_.pixelOf(dc_.state.textColor));
    }

    DeviceContext& dc_;
    const Font& font_;
    const TextFormat& format_;
    const RECT* clip_;
};

int alignedLeft(const RECT& room, int width, const TextFormat& format) {
    if (format.has(DT_CENTER))
        return room.left + (room.right - room.left - width) / 2;
    return format.has(DT_RIGHT) ? room.right - width : room.left;
}

int alignedTop(const RECT& room, int height, const TextFormat& format) {
    if (!format.has(DT_SINGLELINE))
        return room.top;
    if (format.has(DT_BOTTOM))
        return room.bottom - height;
    return format.has(DT_VCENTER) ? room.top + (room.bottom - room.top - height) / 2 : room.top;
}

int widest(const std::vector<TextLine>& lines) {
    int width = 0;
    for (const TextLine& line : lines)
        width = std::max(width, line.width);
    return width;
}

/// `room` is in surface points. The distance from its top to the bottom of the text.
int paintLines(DeviceContext& dc, const Font& font, const std::vector<TextLine>& lines, const RECT& room,
               const TextFormat& format, std::size_t& drawn) {
    const int pitch = linePitch(font, format);
    const RECT inner{room.left + format.leftMargin, room.top, room.right - format.rightMargin, room.bottom};
    const LinePainter painter(dc, font, format, format.has(DT_NOCLIP) ? nullptr : &room);
    int y = alignedTop(inner, pitch, format);
    for (const TextLine& line : lines) {
        const bool partly = y + font.metrics().tmHeight > room.bottom;
        if (partly && format.has(DT_EDITCONTROL) && !format.has(DT_SINGLELINE))
            break;
        painter.paint(line, {alignedLeft(inner, line.width, format), y});
        drawn = line.end;
        y = limited(std::int64_t{y} + pitch);
    }
    return y - room.top;
}

/// DT_CALCRECT: sets the rectangle's size. Answers the height.
int measureLines(const Font& font, const std::vector<TextLine>& lines, RECT& rect, const TextFormat& format) {
    const int height = limited(static_cast<std::int64_t>(lines.size()) * linePitch(font, format));
    rect.right = limited(std::int64_t{rect.left} + widest(lines) + format.leftMargin + format.rightMargin);
    rect.bottom = limited(std::int64_t{rect.top} + height);
    return height;
}

/// `buffer` is what the caller allows to be written to; null: nothing.
int drawText(DeviceContext& dc, std::string_view text, RECT& rect, UINT flags, DRAWTEXTPARAMS* params, LPSTR buffer) {
    const Font& font = fontOf(dc);
    const TextFormat format = formatFrom(flags, params, font);
    const RECT room = dc.toSurface(rect);
    const int width = room.right - room.left - format.leftMargin - format.rightMargin;
    const bool measures = format.has(DT_CALCRECT);
    const auto lines = layOutText(font, text, format, width, measures ? -1 : room.bottom - room.top);
    std::size_t drawn = text.size();
    const int result =
        measures ? measureLines(font, lines, rect, format) : paintLines(dc, font, lines, room, format, drawn);
    if (params != nullptr)
        params->uiLengthDrawn = static_cast<UINT>(drawn);
    if (buffer != nullptr && format.has(DT_MODIFYSTRING) && lines.size() == 1 && lines.front().shortened) {
        const std::string& shown = lines.front().text;
        std::memcpy(buffer, shown.c_str(), std::min(shown.size(), text.size() + 3) + 1);
    }
    return result;
}

int drawTextCall(HDC dc, LPCSTR text, int count, RECT* rect, UINT format, DRAWTEXTPARAMS* params, LPSTR buffer) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return 0;
    if (rect == nullptr || count < -1 || (text == nullptr && count != 0) ||
        (params != nullptr && params->cbSize != sizeof *params)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if (params != nullptr)
        params->uiLengthDrawn = 0;
    if (count == 0)
        return 0;
    const std::string_view whole(text, count < 0 ? std::strlen(text) : static_cast<std::size_t>(count));
    if (!whole.empty())
        return drawText(*context, whole, *rect, format, params, buffer);
    if ((format & DT_CALCRECT) != 0) {
        rect->right = rect->left;
        rect->bottom = rect->top;
    }
    return 1;
}

// ---- Columns -------------------------------------------------------------------------------------------------------

/// Tab stops as TabbedTextOut takes them.
class TabStops {
public:
    TabStops(const Font& font, int count, const INT* stops)
        : count_(stops == nullptr ? 0 : std::max(count, 0)), stops_(stops),
          spacing_(std::max(defaultTabLength * static_cast<int>(font.metrics().tmAveCharWidth), 1)) {
        if (count_ == 1) {
            spacing_ = static_cast<int>(std::clamp<std::int64_t>(std::abs(std::int64_t{stops_[0]}), 1, 1 << 27));
            toTheRight_ = stops_[0] < 0;
            count_ = 0;
        }
    }

    struct Stop {
        int x = 0;
        bool toTheRight = false; // text ends there
    };
    /// The first stop behind x.
    [[nodiscard]] Stop after(int x) const {
        for (int index = 0; index < count_; ++index) {
            const int place = limited(std::abs(std::int64_t{stops_[index]}));
            if (place > x)
                return {place, stops_[index] < 0};
        }
        const std::int64_t steps = x < 0 ? 0 : x / spacing_ + 1;
        return {limited(steps * spacing_), toTheRight_};
    }

private:
    int count_;
    const INT* stops_;
    int spacing_;
    bool toTheRight_ = false;
};

/// Calls `visit(piece, x)` for the pieces between the tabs. `x` counts from the text's left end, `origin` is where the
/// stops count from. The width of it all.
template <typename Visit>
int eachColumn(const Font& font, std::string_view text, const TabStops& stops, int origin, Visit visit) {
    int x = 0;
    for (std::size_t start = 0;;) {
        const std::size_t end = std::min(text.find('\t', start), text.size());
        const std::string_view piece = text.substr(start, end - start);
        const int width = font.width(piece);
        if (start > 0) {
            const TabStops::Stop stop = stops.after(x - origin);
            x = std::max(x, limited(std::int64_t{stop.x} + origin - (stop.toTheRight ? width : 0)));
        }
        visit(piece, x);
        x = limited(std::int64_t{x} + width);
        if (end == text.size())
            return x;
        start = end + 1;
    }
}

DWORD packedSize(int width, int height) {
    return static_cast<DWORD>(MAKELONG(static_cast<WORD>(std::min(width, 0xFFFF)), static_cast<WORD>(height)));
}

bool badText(LPCSTR text, int count) {
    if (count >= 0 && (text != nullptr || count == 0))
        return false;
    SetLastError(ERROR_INVALID_PARAMETER);
    return true;
}

} // namespace

} // namespace vndk::win32

using namespace vndk::win32;

int DrawTextA(HDC dc, LPCSTR text, int count, RECT* rect, UINT format) {
    // Only with DT_MODIFYSTRING does the caller promise a buffer that may be written to.
    return drawTextCall(dc, text, count, rect, format, nullptr,
                        (format & DT_MODIFYSTRING) != 0 ? const_cast<LPSTR>(text) : nullptr);
}

int DrawTextExA(HDC dc, LPSTR text, int count, RECT* rect, UINT format, DRAWTEXTPARAMS* params) {
    return drawTextCall(dc, text, count, rect, format, params, text);
}

LONG TabbedTextOutA(HDC dc, int x, int y, LPCSTR text, int count, int tabCount, const INT* tabs, int tabOrigin) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr || badText(text, count))
        return 0;
    const Font& font = fontOf(*context);
    const POINT at = context->toSurface(POINT{x, y});
    const int origin = limited(std::int64_t{tabOrigin} - x);
    const std::string_view whole(text, static_cast<std::size_t>(count));
    int painted = 0;
    const int width =
        eachColumn(font, whole, TabStops(font, tabCount, tabs), origin, [&](std::string_view piece, int column) {
            const int left = limited(std::int64_t{at.x} + column);
            if (context->state.backgroundMode == OPAQUE && column > painted)
                paintRect(*context, {at.x + painted, at.y, left, at.y + font.metrics().tmHeight},
                          context->pixelOf(context->state.backgroundColor));
            paintRun(*context, {left, at.y}, {piece});
            painted = limited(std::int64_t{column} + font.width(piece));
        });
    return static_cast<LONG>(packedSize(width, font.metrics().tmHeight));
}

DWORD GetTabbedTextExtentA(HDC dc, LPCSTR text, int count, int tabCount, const INT* tabs) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr || badText(text, count))
        return 0;
    const Font& font = fontOf(*context);
    const std::string_view whole(text, static_cast<std::size_t>(count));
    const int width =
        eachColumn(font, whole, TabStops(font, tabCount, tabs), 0, [](std::string_view /*piece*/, int /*column*/) {});
    return packedSize(width, font.metrics().tmHeight);
}
