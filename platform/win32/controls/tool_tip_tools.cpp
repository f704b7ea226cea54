// A tip's tools and their texts.
#include "controls/tool_tip.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {
namespace {

constexpr UINT shortInfoSize = offsetof(TOOLINFO, lParam); // the structure's older form ends here

/// Copies a text with its NUL into a buffer of `size` characters.
void copyText(const std::string& text, LPSTR buffer, std::size_t size) {
    if (buffer == nullptr || size == 0)
        return;
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

std::string loadText(HINSTANCE instance, UINT id) {
    char text[256];
    return LoadStringA(instance, id, text, sizeof text) > 0 ? std::string(text) : std::string();
}

} // namespace

bool ToolTip::wellFormed(const TOOLINFO* info) { return info != nullptr && info->cbSize >= shortInfoSize; }

ToolTip::Index ToolTip::find(const TOOLINFO* info) const {
    if (!wellFormed(info))
        return std::nullopt;
    for (std::size_t i = 0; i < tools_.size(); ++i)
        if (tools_[i].window == info->hwnd && tools_[i].id == info->uId)
            return i;
    return std::nullopt;
}

ToolTip::Index ToolTip::toolAt(HWND source, POINT screen) const {
    for (std::size_t i = 0; i < tools_.size(); ++i) {
        const Tool& tool = tools_[i];
        if (tool.source() != source)
            continue;
        if ((tool.flags & TTF_IDISHWND) != 0)
            return i;
        POINT client = screen;
        ScreenToClient(tool.window, &client);
        if (client.x >= tool.rect.left && client.x < tool.rect.right && client.y >= tool.rect.top &&
            client.y < tool.rect.bottom)
            return i;
    }
    return std::nullopt;
}

void ToolTip::setText(Tool& tool, LPSTR text, HINSTANCE instance) {
    tool.text.clear();
    tool.instance = instance;
    if (text == LPSTR_TEXTCALLBACK) {
        tool.kind = TextKind::callback;
    } else if (text != nullptr && IS_INTRESOURCE(text)) {
        tool.kind = TextKind::resource;
        tool.stringId = LOWORD(reinterpret_cast<DWORD_PTR>(text));
    } else {
        tool.kind = TextKind::text;
        if (text != nullptr)
            tool.text = text;
    }
}

void ToolTip::takeOver(Tool& tool, const TOOLINFO& info) {
    tool.flags = info.uFlags;
    tool.window = info.hwnd;
    tool.id = info.uId;
    tool.rect = info.rect;
    setText(tool, info.lpszText, info.hinst);
    if (info.cbSize > shortInfoSize)
        tool.parameter = info.lParam;
}

void ToolTip::give(const Tool& tool, TOOLINFO& info) const {
    info.uFlags = tool.flags;
    info.hwnd = tool.window;
    info.uId = tool.id;
    info.rect = tool.rect;
    info.hinst = tool.instance;
    if (tool.kind == TextKind::callback)
        info.lpszText = LPSTR_TEXTCALLBACK;
    else if (tool.kind == TextKind::resource)
        info.lpszText = const_cast<LPSTR>(MAKEINTRESOURCE(tool.stringId));
    else if (info.lpszText != nullptr && info.lpszText != LPSTR_TEXTCALLBACK && !IS_INTRESOURCE(info.lpszText))
        copyText(tool.text, info.lpszText, tool.text.size() + 1); // the caller's buffer has to be large enough
    if (info.cbSize > shortInfoSize)
        info.lParam = tool.parameter;
}

bool ToolTip::addTool(const TOOLINFO* info) {
    if (!wellFormed(info))
        return false;
    Tool tool;
    takeOver(tool, *info);
    tools_.push_back(std::move(tool));
    if ((info->uFlags & TTF_SUBCLASS) != 0)
        relayMessagesOf(tools_.back().source(), window());
    return true;
}

void ToolTip::deleteTool(const TOOLINFO* info) {
    const Index index = find(info);
    if (!index)
        return;
    if (current_ == index)
        rest();
    else if (current_ && *current_ > *index)
        --*current_;
    const HWND source = tools_[*index].source();
    tools_.erase(tools_.begin() + static_cast<std::ptrdiff_t>(*index));
    const bool stillNeeded = std::any_of(tools_.begin(), tools_.end(), [source](const Tool& tool) {
        return tool.source() == source && (tool.flags & TTF_SUBCLASS) != 0;
    });
    if (!stillNeeded)
        stopRelayingTo(source, window());
}

bool ToolTip::giveText(WPARAM size, TOOLINFO* info) {
    constexpr std::size_t usualSize = 80; // what callers of the older interface have room for
    const Index index = find(info);
    if (!index || info->lpszText == nullptr || info->lpszText == LPSTR_TEXTCALLBACK)
        return false;
    const std::string text = textOf(*index);
    copyText(text, info->lpszText, size != 0 ? size : usualSize);
    return !text.empty();
}

std::string ToolTip::textOf(std::size_t index) {
    const Tool& tool = tools_[index];
    switch (tool.kind) {
    case TextKind::text:
        return tool.text;
    case TextKind::resource:
        return loadText(tool.instance, tool.stringId);
    case TextKind::callback:
        return askForText(index);
    }
    return {};
}

std::string ToolTip::askForText(std::size_t index) {
    const Tool tool = tools_[index];
    NMTTDISPINFO request{};
    request.hdr.hwndFrom = window();
    request.hdr.idFrom = tool.id;
    request.hdr.code = TTN_GETDISPINFO;
    request.lpszText = request.szText;
    request.uFlags = tool.flags;
    request.lParam = tool.parameter;
    SendMessageA(tool.window, WM_NOTIFY, tool.id, reinterpret_cast<LPARAM>(&request));
    std::string text;
    if (request.lpszText == nullptr || request.lpszText == LPSTR_TEXTCALLBACK)
        return text;
    if (IS_INTRESOURCE(request.lpszText)) {
        text = loadText(request.hinst, LOWORD(reinterpret_cast<DWORD_PTR>(request.lpszText)));
    } else {
        const bool own = request.lpszText == request.szText;
        text.assign(request.lpszText,
                    own ? strnlen(request.szText, sizeof request.szText) : std::strlen(request.lpszText));
    }
    if ((request.uFlags & TTF_DI_SETITEM) != 0 && alive() && index < tools_.size() && tools_[index].id == tool.id) {
        tools_[index].kind = TextKind::text;
        tools_[index].text = text;
    }
    return text;
}

bool ToolTip::hitTest(TTHITTESTINFO* info) {
    if (info == nullptr)
        return false;
    POINT screen = info->pt;
    ClientToScreen(info->hwnd, &screen);
    const Index index = toolAt(info->hwnd, screen);
    if (!index)
        return false;
    info->ti.cbSize = sizeof info->ti;
    info->ti.lpszText = nullptr;
    give(tools_[*index], info->ti);
    return true;
}

bool ToolTip::handleToolMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    auto* info = reinterpret_cast<TOOLINFO*>(lParam);
    result = 0;
    switch (message) {
    case TTM_ADDTOOL:
        result = addTool(info);
        return true;
    case TTM_DELTOOL:
        deleteTool(info);
        return true;
    case TTM_NEWTOOLRECT:
        if (const Index index = find(info))
            tools_[*index].rect = info->rect;
        return true;
    case TTM_GETTOOLINFO:
        if (const Index index = find(info)) {
            give(tools_[*index], *info);
            result = TRUE;
        }
        return true;
    case TTM_SETTOOLINFO:
        if (const Index index = find(info)) {
            takeOver(tools_[*index], *info);
            textChanged(*index);
        }
        return true;
    case TTM_UPDATETIPTEXT:
        if (const Index index = find(info)) {
            setText(tools_[*index], info->lpszText, info->hinst);
            textChanged(*index);
        }
        return true;
    case TTM_GETTEXT:
        result = giveText(wParam, info);
        return true;
    case TTM_GETTOOLCOUNT:
        result = static_cast<LRESULT>(tools_.size());
        return true;
    case TTM_ENUMTOOLS:
        if (wellFormed(info) && wParam < tools_.size()) {
            give(tools_[wParam], *info);
            result = TRUE;
        }
        return true;
    case TTM_GETCURRENTTOOL:
        result = current_.has_value();
        if (current_ && wellFormed(info))
            give(tools_[*current_], *info);
        return true;
    case TTM_HITTEST:
        result = hitTest(reinterpret_cast<TTHITTESTINFO*>(lParam));
        return true;
    default:
        return false;
    }
}

} // namespace vndk::win32
