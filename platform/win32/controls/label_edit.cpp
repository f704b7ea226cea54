#include "controls/label_edit.h"

#include "controls/text_measure.h"
#include "win32/draw.h"
#include "win32/edit.h"
#include "win32/input.h"
#include "win32/metrics.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vndk::win32 {

namespace {

constexpr LPCSTR formerProcedure = "VndkLabelEditProcedure";
constexpr int editId = 1;

void finish(HWND edit, bool accept) {
    const std::shared_ptr<Control> control = anyControlOf(GetParent(edit));
    if (auto* host = dynamic_cast<LabelEditHost*>(control.get()); host != nullptr)
        host->endLabelEdit(accept);
}

LRESULT CALLBACK labelEditProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto former = reinterpret_cast<WNDPROC>(GetPropA(edit, formerProcedure));
    const bool endsEditing = wParam == VK_RETURN || wParam == VK_ESCAPE;
    switch (message) {
    case WM_GETDLGCODE:
        return DLGC_WANTALLKEYS | CallWindowProcA(former, edit, message, wParam, lParam);
    case WM_KEYDOWN:
        if (endsEditing) {
            finish(edit, wParam == VK_RETURN);
            return 0;
        }
        break;
    case WM_CHAR:
        if (endsEditing)
            return 0;
        break;
    case WM_NCDESTROY:
        RemovePropA(edit, formerProcedure);
        SetWindowLongPtrA(edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(former));
        break;
    default:
        break;
    }
    return CallWindowProcA(former, edit, message, wParam, lParam);
}

} // namespace

HWND LabelEdit::open(HWND host, const std::string& text, HFONT font, const Place& place) {
    close();
    place_ = place;
    font_ = font;
    DWORD style = WS_CHILD | WS_BORDER | WS_CLIPSIBLINGS | ES_AUTOHSCROLL;
    if (place.wraps)
        style = WS_CHILD | WS_BORDER | WS_CLIPSIBLINGS | ES_CENTER | ES_MULTILINE | ES_AUTOVSCROLL;
    window_ = CreateWindowExA(0, "EDIT", text.c_str(), style, place.label.left, place.label.top, 0, 0, host,
                              reinterpret_cast<HMENU>(UINT_PTR{editId}), nullptr, nullptr);
    if (window_ == nullptr)
        return nullptr;
    const LONG_PTR former = SetWindowLongPtrA(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&labelEditProcedure));
    SetPropA(window_, formerProcedure, reinterpret_cast<HANDLE>(former));
    SendMessageA(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    SendMessageA(window_, EM_SETLIMITTEXT, MAX_PATH - 1, 0);
    fit();
    SendMessageA(window_, EM_SETSEL, 0, -1);
    return window_;
}

void LabelEdit::show() const {
    SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW | SWP_NOACTIVATE);
    SetFocus(window_);
}

std::string LabelEdit::text() const {
    std::vector<char> buffer(static_cast<std::size_t>(GetWindowTextLengthA(window_)) + 1);
    const int length = GetWindowTextA(window_, buffer.data(), static_cast<int>(buffer.size()));
    return {buffer.data(), static_cast<std::size_t>(length)};
}

RECT LabelEdit::boxFor(const std::string& text) const {
    TextMeasure measure;
    measure.setFont(font_);
    const int border = GetSystemMetrics(SM_CXBORDER);
    RECT box = place_.label;
    if (place_.wraps) {
        const int width = box.right - box.left;
        const SIZE size = measure.wrapped(text, width, DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL);
        const int middle = (box.left + box.right) / 2;
        const int half = (std::max<int>(size.cx, 2 * measure.lineHeight()) + 4) / 2 + border;
        box.left = std::max<LONG>(middle - half, place_.label.left);
        box.right = std::min<LONG>(middle + half, place_.label.right);
        box.bottom = box.top + std::max<int>(size.cy, measure.lineHeight()) + 2 * border;
        return box;
    }
    // Room for one more wide character, so that the text doesn't scroll before the box grows.
    box.right = box.left + measure.width(text) + measure.width("W") + 2 * border + 4;
    box.right = std::max<LONG>(std::min<LONG>(box.right, place_.rightLimit), box.left + measure.width("W"));
    InflateRect(&box, 0, border);
    return box;
}

bool LabelEdit::takeCommand(LabelEditHost& host, WPARAM wParam, LPARAM lParam) const {
    if (!isOpen() || reinterpret_cast<HWND>(lParam) != window_)
        return false;
    if (HIWORD(wParam) == EN_KILLFOCUS)
        host.endLabelEdit(true);
    else if (HIWORD(wParam) == EN_UPDATE)
        fit();
    return true;
}

void LabelEdit::fit() const {
    const RECT box = boxFor(text());
    SetWindowPos(window_, nullptr, box.left, box.top, box.right - box.left, box.bottom - box.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void LabelEdit::move(const RECT& label) {
    place_.label = label;
    if (isOpen())
        fit();
}

void LabelEdit::close() {
    if (const HWND window = std::exchange(window_, nullptr); window != nullptr)
        DestroyWindow(window);
}

} // namespace vndk::win32
