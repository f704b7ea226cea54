// A window with a control in it, which writes down what the control tells its parent.
#pragma once

#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "win32/draw.h"

#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vndk::test {

class ControlFixture : public DesktopFixture {
protected:
    static constexpr int left = 50; // of the owner on the screen; it has no frame
    static constexpr int top = 40;
    static constexpr int controlId = 100;

    struct Scroll {
        int code = 0;
        int position = 0;
        bool operator==(const Scroll&) const = default;
        friend void PrintTo(const Scroll& scroll, std::ostream* out) { *out << scroll.code << '@' << scroll.position; }
    };

    void SetUp() override {
        recorder.registerClass();
        owner = CreateWindowEx(0, MessageRecorder::className, "", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, left, top,
                               400, 300, nullptr, nullptr, nullptr, nullptr);
        recorder.setParent(owner);
        SetClassLongPtr(owner, GCL_HBRBACKGROUND, COLOR_BTNFACE + 1);
        InvalidateRect(owner, nullptr, TRUE);
        recorder.onMessage(WM_COMMAND, [this](HWND, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            codes.push_back(HIWORD(wParam));
            if (onCode)
                onCode(HIWORD(wParam));
            return std::nullopt;
        });
        settle();
    }

    HWND make(LPCSTR className, DWORD style, int x, int y, int width, int height, LPCSTR text = "", DWORD exStyle = 0,
              int id = controlId) {
        const HWND made = CreateWindowEx(exStyle, className, text, style | WS_CHILD | WS_VISIBLE, x, y, width, height,
                                         owner, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
        settle();
        codes.clear();
        return made;
    }
    [[nodiscard]] std::string textOf(HWND window) const {
        std::string text(static_cast<std::size_t>(GetWindowTextLength(window)), '\0');
        GetWindowText(window, text.data(), static_cast<int>(text.size()) + 1);
        return text;
    }
    /// The notifications since the last call.
    std::vector<int> takeCodes() { return std::exchange(codes, {}); }

    MessageRecorder recorder;
    HWND owner = nullptr; // the control's parent
    std::vector<int> codes;
    std::function<void(int code)> onCode;
};

} // namespace vndk::test
