#include "win32/messagebox.h"

#include "user/dialog.h"
#include "user/dialog_template.h"
#include "user/frame_geometry.h"
#include "win32/button.h"
#include "win32/draw.h"
#include "win32/error.h"
#include "win32/fonts.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/memory.h"
#include "win32/menu.h"
#include "win32/metrics.h"
#include "win32/static.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace vndk::win32 {

namespace {

// Pixels.
constexpr int margin = 11;
constexpr int buttonWidth = 75;
constexpr int buttonHeight = 23;
constexpr int buttonGap = 6;
constexpr int iconGap = 10;

constexpr int iconId = 20;
constexpr int textId = 0xFFFF;

struct ButtonText {
    int id;
    const char* text;
};

// By the low bits of the kind; id 0 ends a row.
constexpr std::array<std::array<ButtonText, 3>, 6> buttonRows = {{
    {{{IDOK, "OK"}, {0, nullptr}, {0, nullptr}}},
    {{{IDOK, "OK"}, {IDCANCEL, "Cancel"}, {0, nullptr}}},
    {{{IDABORT, "&Abort"}, {IDRETRY, "&Retry"}, {IDIGNORE, "&Ignore"}}},
    {{{IDYES, "&Yes"}, {IDNO, "&No"}, {IDCANCEL, "Cancel"}}},
    {{{IDYES, "&Yes"}, {IDNO, "&No"}, {0, nullptr}}},
    {{{IDRETRY, "&Retry"}, {IDCANCEL, "Cancel"}, {0, nullptr}}},
}};

std::vector<ButtonText> buttonsOf(UINT kind) {
    std::vector<ButtonText> buttons;
    for (const ButtonText& button : buttonRows[kind & MB_TYPEMASK])
        if (button.id != 0)
            buttons.push_back(button);
    if ((kind & MB_HELP) != 0)
        buttons.push_back({IDHELP, "Help"});
    return buttons;
}

LPCSTR iconOf(UINT kind) {
    switch (kind & MB_ICONMASK) {
    case MB_ICONHAND:
        return IDI_HAND;
    case MB_ICONQUESTION:
        return IDI_QUESTION;
    case MB_ICONEXCLAMATION:
        return IDI_EXCLAMATION;
    case MB_ICONASTERISK:
        return IDI_ASTERISK;
    default:
        return nullptr;
    }
}

class MessageBoxDialog {
public:
    MessageBoxDialog(HWND owner, std::string text, std::string title, UINT kind)
        : owner_(owner), text_(std::move(text)), title_(std::move(title)), kind_(kind), buttons_(buttonsOf(kind)) {}

    int run() {
        DialogTemplate described;
        described.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT;
        described.exStyle = (kind_ & MB_TOPMOST) != 0 ? WS_EX_TOPMOST : 0;
        described.caption = title_;
        described.font = DialogFont{.points = messageBoxFontSize, .face = {}};
        DialogCreation creation;
        creation.owner = owner_;
        creation.procedure = &procedure;
        creation.parameter = reinterpret_cast<LPARAM>(this);
        const INT_PTR result = runDialog(described, creation);
        return result > 0 ? static_cast<int>(result) : 0;
    }

private:
    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG) {
            SetWindowLongPtrA(dialog, DWL_USER, lParam);
            reinterpret_cast<MessageBoxDialog*>(lParam)->initialize(dialog);
            return FALSE; // the focus is where it should be
        }
        const auto* box = reinterpret_cast<const MessageBoxDialog*>(GetWindowLongPtrA(dialog, DWL_USER));
        if (box == nullptr)
            return FALSE;
        if (message == WM_COMMAND)
            return box->command(dialog, LOWORD(wParam));
        if (message == WM_COPY)
            return box->copy(dialog);
        return FALSE;
    }

    [[nodiscard]] bool has(int id) const {
        return std::any_of(buttons_.begin(), buttons_.end(),
                           [id](const ButtonText& button) { return button.id == id; });
    }

    INT_PTR command(HWND dialog, int id) const {
        // Escape and the caption's button mean Cancel, or OK where there is nothing else to choose.
        if (id == IDCANCEL && !has(IDCANCEL) && (kind_ & MB_TYPEMASK) == MB_OK)
            id = IDOK;
        if (!has(id))
            return TRUE;
        if (id == IDHELP)
            askForHelp(dialog);
        else
            EndDialog(dialog, id);
        return TRUE;
    }

    void askForHelp(HWND dialog) const {
        HELPINFO help{};
        help.cbSize = sizeof help;
        help.iContextType = HELPINFO_WINDOW;
        help.iCtrlId = IDHELP;
        help.hItemHandle = dialog;
        GetCursorPos(&help.MousePos);
        if (owner_ != nullptr)
            send(owner_, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
    }

    INT_PTR copy(HWND dialog) const {
        const std::string line = "---------------------------\r\n";
        std::string all = line + title_ + "\r\n" + line + text_ + "\r\n" + line;
        for (const ButtonText& button : buttons_) {
            std::string label = button.text;
            std::erase(label, '&');
            all += label + "   ";
        }
        all += "\r\n" + line;
        if (OpenClipboard(dialog) == FALSE)
            return TRUE;
        EmptyClipboard();
        const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, all.size() + 1);
        if (void* bytes = GlobalLock(block)) {
            std::memcpy(bytes, all.c_str(), all.size() + 1);
            GlobalUnlock(block);
            SetClipboardData(CF_TEXT, block);
        }
        CloseClipboard();
        return TRUE;
    }

    [[nodiscard]] SIZE measureText(HFONT font) const {
        RECT area{};
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
        RECT rect{0, 0, widthOf(area) * 5 / 8, 0};
        const HDC dc = CreateCompatibleDC(nullptr);
        const HGDIOBJ former = SelectObject(dc, font);
        DrawTextA(dc, text_.c_str(), -1, &rect, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
        SelectObject(dc, former);
        DeleteDC(dc);
        return {rect.right, rect.bottom};
    }

    HWND addControl(HWND dialog, LPCSTR className, LPCSTR text, DWORD style, const RECT& rect, int id,
                    HFONT font) const {
        const HWND control = CreateWindowExA(WS_EX_NOPARENTNOTIFY, className, text, style | WS_CHILD | WS_VISIBLE,
                                             rect.left, rect.top, widthOf(rect), heightOf(rect), dialog,
                                             reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
        send(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
        return control;
    }

    // The height of what stands above the buttons.
    int addTextAndIcon(HWND dialog, HFONT font, SIZE text, SIZE icon) const {
        const int height = static_cast<int>(std::max(text.cy, icon.cy));
        if (icon.cx > 0) {
            const HWND picture = addControl(dialog, "Static", "", SS_ICON,
                                            {margin, margin, margin + icon.cx, margin + icon.cy}, iconId, font);
            send(picture, STM_SETICON, reinterpret_cast<WPARAM>(LoadIconA(nullptr, iconOf(kind_))));
        }
        const int left = margin + (icon.cx > 0 ? static_cast<int>(icon.cx) + iconGap : 0);
        const int top = margin + (height - static_cast<int>(text.cy)) / 2;
        const DWORD align = (kind_ & MB_RIGHT) != 0 ? SS_RIGHT : SS_LEFT;
        addControl(dialog, "Static", text_.c_str(), align | SS_NOPREFIX, {left, top, left + text.cx, top + text.cy},
                   textId, font);
        return height;
    }

    void addButtons(HWND dialog, HFONT font, int left, int top) const {
        const std::size_t wanted = ((kind_ & MB_DEFMASK) >> 8);
        const std::size_t chosen = wanted < buttons_.size() ? wanted : 0;
        HWND focus = nullptr;
        for (std::size_t i = 0; i < buttons_.size(); ++i) {
            const DWORD kind = i == chosen ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
            const HWND button =
                addControl(dialog, "Button", buttons_[i].text, kind | WS_TABSTOP | (i == 0 ? WS_GROUP : 0U),
                           {left, top, left + buttonWidth, top + buttonHeight}, buttons_[i].id, font);
            if (i == chosen)
                focus = button;
            left += buttonWidth + buttonGap;
        }
        setDefaultId(dialog, buttons_[chosen].id);
        SetFocus(focus);
    }

    void place(HWND dialog, SIZE client) const {
        RECT rect{0, 0, client.cx, client.cy};
        const auto style = static_cast<DWORD>(GetWindowLongA(dialog, GWL_STYLE));
        AdjustWindowRectEx(&rect, style, FALSE, static_cast<DWORD>(GetWindowLongA(dialog, GWL_EXSTYLE)));
        RECT around{};
        const HWND top = owner_ != nullptr ? GetAncestor(owner_, GA_ROOT) : nullptr;
        if (top != nullptr && IsWindowVisible(top) != FALSE && IsIconic(top) == FALSE)
            GetWindowRect(top, &around);
        else
            SystemParametersInfoA(SPI_GETWORKAREA, 0, &around, 0);
        const int width = widthOf(rect);
        const int height = heightOf(rect);
        const int left = (around.left + around.right - width) / 2;
        const int upper = (around.top + around.bottom - height) / 2;
        const RECT inside = insideWorkArea({left, upper, left + width, upper + height});
        SetWindowPos(dialog, nullptr, inside.left, inside.top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    }

    [[nodiscard]] int captionWidth() const {
        NONCLIENTMETRICSA metrics{};
        metrics.cbSize = sizeof metrics;
        SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0);
        const HFONT font = CreateFontIndirectA(&metrics.lfCaptionFont);
        const HDC dc = CreateCompatibleDC(nullptr);
        const HGDIOBJ former = SelectObject(dc, font);
        SIZE size{};
        GetTextExtentPoint32A(dc, title_.c_str(), static_cast<int>(title_.size()), &size);
        SelectObject(dc, former);
        DeleteDC(dc);
        DeleteObject(font);
        return size.cx + GetSystemMetrics(SM_CXSIZE);
    }

    void initialize(HWND dialog) const {
        const auto font = reinterpret_cast<HFONT>(send(dialog, WM_GETFONT));
        const SIZE text = measureText(font);
        const SIZE icon =
            iconOf(kind_) != nullptr ? SIZE{GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON)} : SIZE{0, 0};
        const auto count = static_cast<int>(buttons_.size());
        const int buttonsWidth = count * buttonWidth + (count - 1) * buttonGap;
        const int textWidth = static_cast<int>(text.cx + icon.cx) + (icon.cx > 0 ? iconGap : 0);
        const int limit = GetSystemMetrics(SM_CXSCREEN) / 2;
        const int inner = std::max({buttonsWidth, textWidth, std::min(captionWidth(), limit)});
        const int above = addTextAndIcon(dialog, font, text, icon);
        const int top = margin + above + margin;
        addButtons(dialog, font, margin + (inner - buttonsWidth) / 2, top);
        if (!has(IDCANCEL) && (kind_ & MB_TYPEMASK) != MB_OK)
            EnableMenuItem(GetSystemMenu(dialog, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
        place(dialog, {inner + 2 * margin, top + buttonHeight + margin});
        MessageBeep(kind_ & MB_ICONMASK);
    }

    HWND owner_;
    std::string text_;
    std::string title_;
    UINT kind_;
    std::vector<ButtonText> buttons_;
};

} // namespace

} // namespace vndk::win32

int MessageBoxA(HWND owner, LPCSTR text, LPCSTR title, UINT kind) {
    using namespace vndk::win32;
    if (owner != nullptr && findWindow(owner) == nullptr)
        return 0;
    if ((kind & MB_TYPEMASK) >= buttonRows.size()) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    return MessageBoxDialog(owner, text != nullptr ? text : "", title != nullptr ? title : "Error", kind).run();
}
