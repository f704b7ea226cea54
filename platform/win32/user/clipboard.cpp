#include "user/clipboard.h"

#include "user/desktop_state.h"
#include "user/window.h"
#include "win32/codepage.h"
#include "win32/error.h"
#include "win32/gdi.h"
#include "win32/memory.h"

#include <cstring>
#include <optional>

namespace vndk::win32 {

std::shared_ptr<ClipboardState> makeClipboardState() { return std::make_shared<ClipboardState>(); }

namespace {

constexpr UINT firstRegisteredFormat = 0xC000;
constexpr UINT lastRegisteredFormat = 0xFFFF;

bool isText(UINT format) { return format == CF_TEXT || format == CF_OEMTEXT || format == CF_UNICODETEXT; }

void release(UINT format, HANDLE data) {
    if (format == CF_BITMAP)
        DeleteObject(data);
    else
        GlobalFree(data);
}

void clear(ClipboardState& clipboard) {
    for (const auto& [format, data] : clipboard.data)
        release(format, data);
    clipboard.data.clear();
}

// The text up to its end mark, or all of a block that has none.
std::optional<std::string> textOf(HANDLE data) {
    const auto* bytes = static_cast<const char*>(GlobalLock(data));
    if (bytes == nullptr)
        return std::nullopt;
    std::string text(bytes, strnlen(bytes, GlobalSize(data)));
    GlobalUnlock(data);
    return text;
}

HANDLE blockOf(const std::string& text) {
    const HANDLE data = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (void* bytes = GlobalLock(data)) {
        std::memcpy(bytes, text.c_str(), text.size() + 1);
        GlobalUnlock(data);
    }
    return data;
}

// Lines end with CR LF inside, with LF outside.
std::string withPlainLineEnds(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n')
            plain += text[i];
    return plain;
}

std::string withFullLineEnds(const std::string& text) {
    std::string full;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r'))
            full += '\r';
        full += text[i];
    }
    return full;
}

// Another program's copy replaces all of ours.
void takeOverForeignText(DesktopState& state) {
    ClipboardState& clipboard = *state.clipboard;
    const std::string text = state.screen.clipboardText();
    if (text == clipboard.ownText)
        return;
    clear(clipboard);
    clipboard.owner = nullptr;
    clipboard.ownText = text;
    if (!text.empty())
        clipboard.data[CF_TEXT] = blockOf(withFullLineEnds(fromUtf8Lossy(text)));
}

// The state while the clipboard is open; null with an error otherwise.
ClipboardState* openClipboard() {
    DesktopState* state = currentState();
    if (state == nullptr)
        return nullptr;
    if (!state->clipboard->open) {
        SetLastError(ERROR_CLIPBOARD_NOT_OPEN);
        return nullptr;
    }
    return state->clipboard.get();
}

// Text given as OEM or Unicode is kept as CF_TEXT; other forms are made when they are asked for.
HANDLE wideFromText(const std::string& text) {
    const HANDLE data = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, (text.size() + 1) * sizeof(WCHAR));
    auto* wide = static_cast<WCHAR*>(GlobalLock(data));
    for (std::size_t i = 0; wide != nullptr && i < text.size(); ++i)
        wide[i] = static_cast<WCHAR>(characterFromByte(text[i]));
    GlobalUnlock(data);
    return data;
}

void shareText(ClipboardState& clipboard, HANDLE data) {
    const std::optional<std::string> text = textOf(data);
    if (!text)
        return;
    const std::string utf8 = toUtf8(withPlainLineEnds(*text));
    if (currentState()->screen.setClipboardText(utf8))
        clipboard.ownText = utf8;
}

} // namespace

ClipboardState::~ClipboardState() { clear(*this); }

void forgetClipboard(HWND window) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return;
    ClipboardState& clipboard = *state->clipboard;
    if (clipboard.opener == window) {
        clipboard.open = false;
        clipboard.opener = nullptr;
    }
    if (clipboard.owner == window)
        clipboard.owner = nullptr;
}

} // namespace vndk::win32

using namespace vndk::win32;

BOOL OpenClipboard(HWND window) {
    DesktopState* state = currentState();
    if (state == nullptr || (window != nullptr && findWindow(window) == nullptr))
        return FALSE;
    ClipboardState& clipboard = *state->clipboard;
    if (clipboard.open && clipboard.opener != window) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    clipboard.open = true;
    clipboard.opener = window;
    takeOverForeignText(*state);
    return TRUE;
}

BOOL CloseClipboard() {
    ClipboardState* clipboard = openClipboard();
    if (clipboard == nullptr)
        return FALSE;
    clipboard->open = false;
    clipboard->opener = nullptr;
    return TRUE;
}

BOOL EmptyClipboard() {
    ClipboardState* clipboard = openClipboard();
    if (clipboard == nullptr)
        return FALSE;
    clear(*clipboard);
    clipboard->owner = clipboard->opener;
    if (currentState()->screen.setClipboardText({}))
        clipboard->ownText.clear();
    return TRUE;
}

HANDLE SetClipboardData(UINT format, HANDLE data) {
    ClipboardState* clipboard = openClipboard();
    if (clipboard == nullptr)
        return nullptr;
    if (format == 0 || data == nullptr || (format != CF_BITMAP && GlobalSize(data) == 0)) {
        SetLastError(data == nullptr || format == 0 ? ERROR_INVALID_PARAMETER : ERROR_INVALID_HANDLE);
        return nullptr;
    }
    HANDLE& place = clipboard->data[format];
    if (place != nullptr && place != data)
        release(format, place);
    place = data;
    if (format == CF_TEXT)
        shareText(*clipboard, data);
    return data;
}

HANDLE GetClipboardData(UINT format) {
    ClipboardState* clipboard = openClipboard();
    if (clipboard == nullptr)
        return nullptr;
    if (const auto found = clipboard->data.find(format); found != clipboard->data.end())
        return found->second;
    const auto text = clipboard->data.find(CF_TEXT);
    if (!isText(format) || text == clipboard->data.end())
        return nullptr;
    const std::string content = textOf(text->second).value_or(std::string());
    return clipboard->data[format] = format == CF_UNICODETEXT ? wideFromText(content) : blockOf(content);
}

BOOL IsClipboardFormatAvailable(UINT format) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    takeOverForeignText(*state);
    const std::map<UINT, HANDLE>& data = state->clipboard->data;
    return data.contains(format) || (isText(format) && data.contains(CF_TEXT)) ? TRUE : FALSE;
}

UINT RegisterClipboardFormatA(LPCSTR name) {
    DesktopState* state = currentState();
    if (state == nullptr || name == nullptr || *name == '\0') {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    std::string key(name);
    for (char& letter : key)
        letter = lower1252(letter);
    std::map<std::string, UINT>& formats = state->clipboard->formats;
    if (const auto found = formats.find(key); found != formats.end())
        return found->second;
    const UINT next = firstRegisteredFormat + static_cast<UINT>(formats.size());
    if (next > lastRegisteredFormat) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    return formats[key] = next;
}
