// How a rich edit's text changes.
#include "controls/rich_edit.h"
#include "controls/rtf_reader.h"
#include "win32/input.h"
#include "win32/memory.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {
namespace {

constexpr std::size_t mostUndo = 100;
constexpr DWORD notRichText = 0xFFFFFFF0; // what dwError says of a stream that isn't rich text
constexpr LONG streamPiece = 4096;

} // namespace

RichEdit::Range RichEdit::selection() const { return {std::min(anchor_, caret_), std::max(anchor_, caret_)}; }

RichEdit::Range RichEdit::clipped(LONG begin, LONG end) const {
    const int length = document_.length();
    const int first = begin < 0 ? length : std::min(static_cast<int>(begin), length);
    const int last = end < 0 ? length : std::min(static_cast<int>(end), length);
    return {std::min(first, last), std::max(first, last)};
}

void RichEdit::select(int anchor, int caret, bool show) {
    anchor = std::clamp(anchor, 0, document_.length());
    caret = std::clamp(caret, 0, document_.length());
    const bool differs = anchor != anchor_ || caret != caret_;
    const bool visible = anchor_ != caret_ || anchor != caret;
    anchor_ = anchor;
    caret_ = caret;
    nextStyleSet_ = false;
    if (show)
        showCaret();
    if (!alive())
        return;
    placeCaret();
    if (differs && visible && redraw_)
        invalidate(nullptr, false);
    if (differs && (eventMask_ & ENM_SELCHANGE) != 0) {
        SELCHANGE data{};
        const Range range = selection();
        data.chrg = {range.begin, range.end};
        data.seltyp = range.empty() ? SEL_EMPTY : range.end - range.begin > 1 ? SEL_TEXT | SEL_MULTICHAR : SEL_TEXT;
        notify(EN_SELCHANGE, data);
    }
}

StyleIndex RichEdit::typingStyle() const {
    if (nextStyleSet_)
        return nextStyle_;
    const Range range = selection();
    if (document_.length() == 0)
        return document_.defaultStyle();
    return document_.styleAt(range.empty() ? std::max(range.begin - 1, 0) : range.begin);
}

void RichEdit::changed() {
    modified_ = true;
    relayout();
    if (alive() && (eventMask_ & ENM_UPDATE) != 0)
        notifyCommand(EN_UPDATE);
    if (alive() && (eventMask_ & ENM_CHANGE) != 0)
        notifyCommand(EN_CHANGE);
}

void RichEdit::replaceRange(Range range, const RichText& piece, bool undoable) {
    if (undoable) {
        if (undo_.size() >= mostUndo)
            undo_.erase(undo_.begin());
        undo_.push_back({range.begin, document_.cut(range.begin, range.end), piece, selection()});
    } else {
        undo_.clear();
    }
    document_.erase(range.begin, range.end);
    document_.insert(range.begin, piece);
}

void RichEdit::replaceSelection(const RichText& piece, bool undoable, bool byUser) {
    const Range range = selection();
    const auto rest = static_cast<DWORD>(document_.length() - (range.end - range.begin));
    if (byUser && rest + piece.text.size() > limit_) {
        notifyCommand(EN_MAXTEXT);
        if (alive())
            MessageBeep(0);
        return;
    }
    replaceRange(range, piece, undoable);
    anchor_ = caret_ = range.begin + static_cast<int>(piece.text.size());
    nextStyleSet_ = false;
    changed();
    if (alive())
        showCaret();
}

void RichEdit::undo() {
    if (undo_.empty())
        return;
    const Change change = std::move(undo_.back());
    undo_.pop_back();
    document_.erase(change.position, change.position + static_cast<int>(change.inserted.text.size()));
    document_.insert(change.position, change.removed);
    anchor_ = change.selectionBefore.begin;
    caret_ = change.selectionBefore.end;
    changed();
    if (alive())
        showCaret();
}

void RichEdit::setText(LPCSTR text) {
    const std::string_view whole = text != nullptr ? text : "";
    document_.clear();
    undo_.clear();
    if (!readRtf(whole, document_))
        document_.insert(0, RichDocument::plain(multiLine() ? whole : whole.substr(0, whole.find_first_of("\r\n")),
                                                document_.defaultStyle()));
    anchor_ = caret_ = 0;
    scroll_ = {};
    changed();
    modified_ = false;
}

/// Any use of a read-only control's keyboard for editing is answered by a beep.
bool RichEdit::refuses() const {
    if (readOnly())
        MessageBeep(0);
    return readOnly();
}

void RichEdit::typeCharacter(WPARAM c) {
    const bool lineEnd = c == VK_RETURN || c == '\n';
    if ((c < ' ' && !lineEnd && c != VK_TAB) || c == 0x7F)
        return; // shortcuts came as keys
    if (lineEnd && !multiLine())
        return;
    if (refuses())
        return;
    const char character = lineEnd ? '\r' : static_cast<char>(c);
    RichText piece;
    piece.text.assign(1, character);
    piece.styles.assign(1, typingStyle());
    replaceSelection(piece, true, true);
}

void RichEdit::eraseBeside(bool before, bool word) {
    if (refuses())
        return;
    if (selection().empty()) {
        const int target = before ? (word ? wordStart(caret_) : caret_ - 1) : (word ? wordEnd(caret_) : caret_ + 1);
        anchor_ = std::clamp(target, 0, document_.length());
    }
    if (!selection().empty())
        replaceSelection({}, true, true);
}

void RichEdit::copy() const {
    const Range range = selection();
    if (range.empty() || OpenClipboard(window()) == FALSE)
        return;
    const std::string text = document_.plainText(range.begin, range.end);
    EmptyClipboard();
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (void* bytes = GlobalLock(block); bytes != nullptr) {
        std::memcpy(bytes, text.c_str(), text.size() + 1);
        GlobalUnlock(block);
        SetClipboardData(CF_TEXT, block);
    }
    CloseClipboard();
}

void RichEdit::paste() {
    if (refuses() || OpenClipboard(window()) == FALSE)
        return;
    std::string text;
    if (const HANDLE block = GetClipboardData(CF_TEXT); block != nullptr) {
        if (const auto* bytes = static_cast<const char*>(GlobalLock(block)); bytes != nullptr) {
            text.assign(bytes, strnlen(bytes, GlobalSize(block)));
            GlobalUnlock(block);
        }
    }
    CloseClipboard();
    if (!multiLine())
        text = text.substr(0, text.find_first_of("\r\n"));
    if (!text.empty())
        replaceSelection(RichDocument::plain(text, typingStyle()), true, true);
}

// ---- Streams -------------------------------------------------------------------------------------------------------

LRESULT RichEdit::streamIn(WPARAM format, EDITSTREAM* stream) {
    if (stream == nullptr || stream->pfnCallback == nullptr)
        return 0;
    std::string bytes;
    stream->dwError = 0;
    for (;;) {
        BYTE piece[streamPiece];
        LONG got = 0;
        stream->dwError = stream->pfnCallback(stream->dwCookie, piece, streamPiece, &got);
        if (!alive() || stream->dwError != 0 || got <= 0)
            break;
        bytes.append(reinterpret_cast<const char*>(piece), static_cast<std::size_t>(std::min(got, streamPiece)));
    }
    if (!alive())
        return 0;
    const bool intoSelection = (format & SFF_SELECTION) != 0;
    RichDocument read;
    read.setDefaultStyle(document_.style(document_.defaultStyle()), false);
    bool understood = true;
    if ((format & SF_RTF) != 0)
        understood = readRtf(bytes, read);
    else
        read.insert(0, RichDocument::plain(bytes, read.defaultStyle()));
    if (!understood && stream->dwError == 0)
        stream->dwError = notRichText;
    // Styles are numbered by their document.
    RichText piece = read.cut(0, read.length());
    for (StyleIndex& index : piece.styles)
        index = document_.intern(read.style(index));
    if (intoSelection) {
        replaceSelection(piece, true, false);
    } else {
        document_.clear();
        document_.insert(0, piece);
        undo_.clear();
        anchor_ = caret_ = 0;
        scroll_ = {};
        changed();
        modified_ = false;
    }
    return static_cast<LRESULT>(piece.text.size());
}

LRESULT RichEdit::streamOut(WPARAM format, EDITSTREAM* stream) {
    if (stream == nullptr || stream->pfnCallback == nullptr)
        return 0;
    const Range range = (format & SFF_SELECTION) != 0 ? selection() : Range{0, document_.length()};
    std::string bytes = (format & SF_RTF) != 0 ? writeRtf(document_, range.begin, range.end)
                                               : document_.plainText(range.begin, range.end);
    stream->dwError = 0;
    std::size_t at = 0;
    while (at < bytes.size()) {
        LONG done = 0;
        const auto piece = static_cast<LONG>(std::min<std::size_t>(bytes.size() - at, streamPiece));
        stream->dwError =
            stream->pfnCallback(stream->dwCookie, reinterpret_cast<LPBYTE>(bytes.data() + at), piece, &done);
        if (stream->dwError != 0 || done <= 0 || done > piece)
            break;
        at += static_cast<std::size_t>(done);
    }
    return static_cast<LRESULT>(at);
}

} // namespace vndk::win32
