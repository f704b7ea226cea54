// Dialog and menu templates: whatever the bytes are, the readers stay inside of them, and what is made of them can be
// painted, used by keys and thrown away again.
#include "screen/memory.h"
#include "win32/desktop.h"
#include "win32/dialog.h"
#include "win32/dialog_init.h"
#include "win32/input.h"
#include "win32/menu.h"
#include "win32/queue.h"
#include "win32/resources.h"

#include <cstdlib>
#include <vector>

using namespace vndk;

namespace {

// The bytes as the one resource of an instance, so that they end where they end.
std::vector<std::uint8_t> compiled(std::uint16_t type, const std::uint8_t* data, std::size_t size) {
    std::vector<std::uint8_t> out;
    const auto word = [&out](std::size_t value) {
        out.push_back(static_cast<std::uint8_t>(value));
        out.push_back(static_cast<std::uint8_t>(value >> 8));
    };
    for (const std::size_t value : {size & 0xFFFF, size >> 16, std::size_t{32}, std::size_t{0}, std::size_t{0xFFFF},
                                    std::size_t{type}, std::size_t{0xFFFF}, std::size_t{1}})
        word(value);
    out.resize(32);
    out.insert(out.end(), data, data + size);
    return out;
}

INT_PTR CALLBACK procedure(HWND, UINT message, WPARAM, LPARAM) { return message == WM_INITDIALOG; }

void useDialog(HINSTANCE instance, win32::Desktop& desktop) {
    const HWND dialog = CreateDialogParam(instance, MAKEINTRESOURCE(1), nullptr, &procedure, 0);
    if (dialog == nullptr)
        return;
    ShowWindow(dialog, SW_SHOW);
    desktop.settle(1000);
    for (const WPARAM key : {VK_TAB, VK_DOWN, VK_ESCAPE}) {
        MSG message{GetFocus() != nullptr ? GetFocus() : dialog, WM_KEYDOWN, key, 1, 0, {0, 0}};
        IsDialogMessage(dialog, &message);
    }
    desktop.settle(1000);
    DestroyWindow(dialog);
}

void useMenu(HINSTANCE instance, win32::Desktop& desktop) {
    const HMENU menu = LoadMenu(instance, MAKEINTRESOURCE(1));
    if (menu == nullptr)
        return;
    WNDCLASSA plain{};
    plain.lpfnWndProc = &DefWindowProc;
    plain.lpszClassName = "Owner";
    RegisterClass(&plain);
    const HWND owner =
        CreateWindow("Owner", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200, 100, nullptr, menu, nullptr, nullptr);
    desktop.settle(1000);
    for (int i = 0; i < GetMenuItemCount(menu); ++i)
        GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
    DestroyWindow(owner);
    if (IsMenu(menu) != FALSE)
        std::abort(); // A window's bar goes with it.
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t largest = 4096; // more only makes more of the same controls
    if (size < 2 || size > largest)
        return 0;
    const bool isMenu = (data[0] & 1) != 0;
    const auto bytes = compiled(isMenu ? 4 : 5, data + 1, size - 1);
    HINSTANCE instance = nullptr;
    if (!win32::registerInstance(bytes, instance).ok())
        std::abort(); // What we compiled ourselves is whole.
    {
        screen::MemoryScreen screen(320, 200);
        win32::Desktop desktop(screen);
        if (isMenu)
            useMenu(instance, desktop);
        else
            useDialog(instance, desktop);
    }
    win32::unregisterInstance(instance);
    win32::forEachInitRow({data, size},
                          [](const win32::DialogInitRow& row) { return row.text.size() <= row.data.size(); });
    return 0;
}
