// Windows whose painting is watched.
#pragma once

#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "win32/gdi.h"

#include <cstring>
#include <string>
#include <vector>

namespace vndk::test {

class PaintFixture : public DesktopFixture {
protected:
    void SetUp() override {
        recorder.registerClass();
        // Erases with a brush of its own and paints nothing besides.
        recorder.onMessage(WM_ERASEBKGND, [](HWND window, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            RECT client{};
            GetClientRect(window, &client);
            FillRect(reinterpret_cast<HDC>(wParam), &client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
            return 1;
        });
    }

    HWND create(DWORD style, HWND parent, int x, int y, int width, int height, DWORD exStyle = 0) {
        return CreateWindowEx(exStyle, MessageRecorder::className, "", style, x, y, width, height, parent, nullptr,
                              nullptr, nullptr);
    }
    /// Shown, painted, and nothing recorded yet.
    HWND createFrame(DWORD extra = 0) {
        const HWND made = create(WS_OVERLAPPEDWINDOW | WS_VISIBLE | extra, nullptr, 40, 40, 300, 200);
        quiet();
        return made;
    }
    HWND createChild(HWND parent, DWORD extra = 0) {
        const HWND made = create(WS_CHILD | WS_VISIBLE | extra, parent, 10, 10, 50, 40);
        recorder.setParent(parent);
        quiet();
        return made;
    }
    void quiet() {
        settle();
        recorder.clear();
    }

    /// The update region as text: "empty", "0,0,100,50" or several of these.
    [[nodiscard]] static std::string invalid(HWND window) {
        const HRGN region = CreateRectRgn(0, 0, 0, 0);
        const int kind = GetUpdateRgn(window, region, FALSE);
        const std::string text = kind == NULLREGION ? "empty" : textOf(region);
        DeleteObject(region);
        return text;
    }
    [[nodiscard]] static std::string textOf(HRGN region) {
        const DWORD size = GetRegionData(region, 0, nullptr);
        std::vector<BYTE> bytes(size);
        auto* data = reinterpret_cast<RGNDATA*>(bytes.data());
        if (size == 0 || GetRegionData(region, size, data) == 0 || data->rdh.nCount == 0)
            return "empty";
        std::string text;
        for (DWORD i = 0; i < data->rdh.nCount; ++i) {
            RECT rect{};
            std::memcpy(&rect, data->Buffer + i * sizeof rect, sizeof rect);
            text += (text.empty() ? "" : " ") + textOf(rect);
        }
        return text;
    }
    [[nodiscard]] static std::string textOf(const RECT& rect) {
        return std::to_string(rect.left) + ',' + std::to_string(rect.top) + ',' + std::to_string(rect.right) + ',' +
               std::to_string(rect.bottom);
    }
    /// The whole client area as `invalid` shows it.
    [[nodiscard]] static std::string whole(HWND window) { return textOf(clientRect(window)); }

    static void redraw(HWND window, const RECT& rect, UINT flags) { RedrawWindow(window, &rect, nullptr, flags); }
    static void redraw(HWND window, UINT flags) { RedrawWindow(window, nullptr, nullptr, flags); }

    static constexpr UINT allInvalid = RDW_INVALIDATE | RDW_ERASE | RDW_FRAME;

    MessageRecorder recorder;
};

} // namespace vndk::test
