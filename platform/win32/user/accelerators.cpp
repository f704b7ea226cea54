#include "win32/accelerators.h"

#include "user/desktop_state.h"
#include "user/menu.h"
#include "user/template_reader.h"
#include "win32/error.h"
#include "win32/input.h"
#include "win32/resources.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr int mostEntries = 32767;
constexpr BYTE modifierBits = FSHIFT | FCONTROL | FALT;
constexpr BYTE knownBits = FVIRTKEY | FNOINVERT | modifierBits;
constexpr BYTE lastEntry = 0x80; // in resources
constexpr std::size_t entrySize = 8;
constexpr LPARAM altHeld = 0x20000000; // in a key message's lParam
inline const LPCSTR RT_ACCELERATOR = MAKEINTRESOURCE(9);

const AcceleratorTable* findTable(HACCEL handle) {
    MenuState* state = menuState();
    const AcceleratorTable* table = state != nullptr ? state->accelerators.find(handle) : nullptr;
    if (table == nullptr)
        SetLastError(ERROR_INVALID_HANDLE);
    return table;
}

bool sameEntries(const std::vector<ACCEL>& a, const std::vector<ACCEL>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const ACCEL& x, const ACCEL& y) {
        return x.fVirt == y.fVirt && x.key == y.key && x.cmd == y.cmd;
    });
}

HACCEL addTable(std::vector<ACCEL> entries) {
    MenuState* state = menuState();
    if (state == nullptr)
        return nullptr;
    auto table = std::make_unique<AcceleratorTable>();
    table->entries = std::move(entries);
    return state->accelerators.add(std::move(table));
}

// A table that is loaded again is the same one.
HACCEL loadedTable(std::vector<ACCEL> entries) {
    MenuState* state = menuState();
    HACCEL found = nullptr;
    if (state != nullptr)
        state->accelerators.forEach([&](HACCEL handle, const AcceleratorTable& table) {
            if (table.loaded && sameEntries(table.entries, entries))
                found = handle;
        });
    if (found != nullptr)
        return found;
    found = addTable(std::move(entries));
    if (found != nullptr)
        state->accelerators.find(found)->loaded = true;
    return found;
}

// Each entry: flags, key, command (16 bits) and 16 bits that pad it.
std::vector<ACCEL> readTable(std::span<const std::uint8_t> bytes) {
    TemplateReader reader(bytes);
    std::vector<ACCEL> entries;
    bool last = bytes.size() < entrySize;
    while (!last && bytes.size() - reader.at() >= entrySize) {
        const WORD flags = reader.word();
        const WORD key = reader.word();
        const WORD command = reader.word();
        reader.word();
        entries.push_back({static_cast<BYTE>(flags & knownBits), key, command});
        last = (flags & lastEntry) != 0;
    }
    // A table that goes on beyond its end is damaged.
    if (!last)
        entries.clear();
    return entries;
}

BYTE heldModifiers() {
    const auto bit = [](int key, BYTE flag) { return GetKeyState(key) < 0 ? flag : BYTE{0}; };
    return static_cast<BYTE>(bit(VK_SHIFT, FSHIFT) | bit(VK_CONTROL, FCONTROL) | bit(VK_MENU, FALT));
}

bool matches(const ACCEL& entry, const MSG& message) {
    const auto key = static_cast<WORD>(message.wParam);
    const bool isKey = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    if ((entry.fVirt & FVIRTKEY) != 0)
        return isKey && entry.key == key && (entry.fVirt & modifierBits) == heldModifiers();
    const bool alt = (message.lParam & altHeld) != 0;
    return !isKey && entry.key == key && ((entry.fVirt & FALT) != 0) == alt;
}

// What the command's menu item says about it; the owner is told before it is asked, so that it can enable the item.
enum class Target : std::uint8_t { none, command, systemCommand };

Target askMenu(HWND window, HMENU menu, WORD command, bool system) {
    const MenuPlace place = findCommand(*findMenu(menu), command);
    const HMENU sub = place.menu->handle;
    send(window, WM_INITMENU, reinterpret_cast<WPARAM>(menu));
    if (sub != menu || system) {
        int position = 0;
        for (int i = 0; i < GetMenuItemCount(menu); ++i)
            if (GetSubMenu(menu, i) == sub)
                position = i;
        send(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(sub), MAKELPARAM(position, system ? TRUE : FALSE));
    }
    const UINT state = IsMenu(sub) != FALSE ? GetMenuState(sub, command, MF_BYCOMMAND) : 0;
    if (state != 0xFFFFFFFF && (state & MFS_GRAYED) != 0)
        return Target::none;
    return system ? Target::systemCommand : Target::command;
}

bool holds(HMENU menu, WORD command) {
    MenuState* state = menuState();
    Menu* found = state != nullptr ? state->menus.find(menu) : nullptr;
    return found != nullptr && findCommand(*found, command);
}

Target findTarget(HWND handle, WORD command) {
    const Window* window = findWindow(handle);
    const bool usable = IsWindowEnabled(handle) != FALSE && GetCapture() == nullptr;
    if (window == nullptr || !usable || menuState()->tracker != nullptr)
        return Target::none;
    const bool isChildWindow = (window->style & WS_CHILD) != 0;
    if (holds(window->systemMenu, command))
        return askMenu(handle, window->systemMenu, command, true);
    if (!isChildWindow && holds(window->menu, command))
        return IsIconic(handle) != FALSE ? Target::none : askMenu(handle, window->menu, command, false);
    return Target::command;
}

void run(HWND window, WORD command) {
    constexpr int fromAccelerator = 1;
    switch (findTarget(window, command)) {
    case Target::command:
        send(window, WM_COMMAND, MAKEWPARAM(command, fromAccelerator));
        break;
    case Target::systemCommand:
        send(window, WM_SYSCOMMAND, command, MAKELPARAM(0, fromAccelerator));
        break;
    case Target::none:
        break;
    }
}

} // namespace

} // namespace vndk::win32

using namespace vndk::win32;

HACCEL LoadAcceleratorsA(HINSTANCE instance, LPCSTR name) {
    const HRSRC resource = FindResourceA(instance, name, RT_ACCELERATOR);
    if (resource == nullptr)
        return nullptr;
    const auto* bytes = static_cast<const std::uint8_t*>(LockResource(LoadResource(instance, resource)));
    auto entries = readTable({bytes, SizeofResource(instance, resource)});
    if (entries.empty()) {
        SetLastError(ERROR_INVALID_DATA);
        return nullptr;
    }
    return loadedTable(std::move(entries));
}

HACCEL CreateAcceleratorTableA(const ACCEL* entries, int count) {
    if (entries == nullptr || count < 1 || count > mostEntries) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return addTable({entries, entries + count});
}

BOOL DestroyAcceleratorTable(HACCEL handle) {
    const AcceleratorTable* table = findTable(handle);
    if (table == nullptr)
        return FALSE;
    // A loaded table may have been given out several times.
    if (!table->loaded)
        menuState()->accelerators.remove(handle);
    return TRUE;
}

int CopyAcceleratorTableA(HACCEL handle, ACCEL* entries, int count) {
    const AcceleratorTable* table = findTable(handle);
    if (table == nullptr)
        return 0;
    const auto available = static_cast<int>(table->entries.size());
    if (entries == nullptr)
        return available;
    const int copied = std::clamp(count, 0, available);
    std::copy_n(table->entries.begin(), copied, entries);
    return copied;
}

int TranslateAcceleratorA(HWND window, HACCEL handle, MSG* message) {
    const AcceleratorTable* table = message != nullptr ? findTable(handle) : nullptr;
    if (table == nullptr || findWindow(window) == nullptr)
        return 0;
    if (message->message != WM_KEYDOWN && message->message != WM_SYSKEYDOWN && message->message != WM_CHAR &&
        message->message != WM_SYSCHAR)
        return 0;
    const auto entry = std::find_if(table->entries.begin(), table->entries.end(),
                                    [message](const ACCEL& candidate) { return matches(candidate, *message); });
    if (entry == table->entries.end())
        return 0;
    run(window, entry->cmd);
    return 1;
}
