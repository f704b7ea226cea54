// Menus from templates.
//
// MENU: version 0 and the number of bytes to the first item (16 bits each); items: flags, id unless it is a popup
// (16), text; a popup's items follow it; MF_END marks the last item of each menu.
// MENUEX: version 1, offset of the first item from the word behind it (16), help id (32); items from multiples of 4:
// type, state, id (32), popup and last bits (16), text, and for a popup help id (32), then its items.
#include "user/menu_change.h"
#include "user/template_reader.h"
#include "win32/error.h"
#include "win32/resources.h"

namespace vndk::win32 {

namespace {

constexpr WORD plainVersion = 0;
constexpr WORD extendedVersion = 1;
constexpr WORD extendedPopup = 0x01;
constexpr WORD extendedLast = 0x80;
constexpr int deepestMenu = 64;

class MenuBuilder {
public:
    explicit MenuBuilder(TemplateReader reader) : reader_(reader) {}

    bool readPlain(HMENU menu, int depth = 0) {
        UINT flags = 0;
        do {
            flags = reader_.word();
            MenuItem item;
            item.type = flags & (MFT_MENUBARBREAK | MFT_MENUBREAK | MFT_RIGHTJUSTIFY | MFT_OWNERDRAW);
            item.state = flags & (MF_GRAYED | MF_DISABLED | MF_CHECKED);
            const bool popup = (flags & MF_POPUP) != 0;
            if (!popup)
                item.id = reader_.word();
            item.text = reader_.text();
            if (item.text.empty() && !popup)
                item.type |= MFT_SEPARATOR;
            const HMENU sub = addItem(menu, std::move(item), popup, depth);
            if (reader_.failed() || (popup && (sub == nullptr || !readPlain(sub, depth + 1))))
                return false;
        } while ((flags & MF_END) == 0);
        return true;
    }

    bool readExtended(HMENU menu, int depth = 0) {
        WORD more = 0;
        do {
            reader_.alignTo(4);
            MenuItem item;
            item.type = reader_.dword();
            item.state = reader_.dword();
            item.id = reader_.dword();
            more = reader_.word();
            item.text = reader_.text();
            item.type &= MFT_MENUBARBREAK | MFT_MENUBREAK | MFT_RADIOCHECK | MFT_SEPARATOR | MFT_RIGHTJUSTIFY |
                         MFT_RIGHTORDER | MFT_OWNERDRAW;
            item.state &= MFS_GRAYED | MFS_CHECKED | MFS_HILITE | MFS_DEFAULT;
            const bool popup = (more & extendedPopup) != 0;
            if (popup) {
                reader_.alignTo(4);
                item.helpId = reader_.dword();
            } else if (item.text.empty()) {
                item.type |= MFT_SEPARATOR;
            }
            const HMENU sub = addItem(menu, std::move(item), popup, depth);
            if (reader_.failed() || (popup && (sub == nullptr || !readExtended(sub, depth + 1))))
                return false;
        } while ((more & extendedLast) == 0);
        return true;
    }

private:
    // The sub-menu of a popup; null for other items, or when it can't be made.
    HMENU addItem(HMENU menu, MenuItem item, bool popup, int depth) {
        if (reader_.failed() || (popup && depth >= deepestMenu))
            return nullptr;
        if (popup) {
            item.subMenu = addMenu(true);
            if (item.subMenu == nullptr)
                return nullptr;
            // A popup of an old template has no number of its own; it goes by that of its menu.
            if (item.id == 0)
                item.id = static_cast<UINT>(reinterpret_cast<UINT_PTR>(item.subMenu));
        }
        settleItem(item);
        const HMENU sub = item.subMenu;
        findMenu(menu)->items.push_back(std::move(item));
        return sub;
    }

    TemplateReader reader_;
};

bool readTemplate(std::span<const std::uint8_t> bytes, HMENU menu) {
    TemplateReader reader(bytes);
    const WORD version = reader.word();
    const WORD offset = reader.word();
    if (version > extendedVersion)
        return false;
    reader.take(offset);
    MenuBuilder builder(reader);
    return version == plainVersion ? builder.readPlain(menu) : builder.readExtended(menu);
}

HMENU loadTemplate(std::span<const std::uint8_t> bytes) {
    const HMENU menu = addMenu(false);
    if (menu == nullptr || readTemplate(bytes, menu))
        return menu;
    DestroyMenu(menu);
    SetLastError(ERROR_INVALID_DATA);
    return nullptr;
}

} // namespace

} // namespace vndk::win32

using namespace vndk::win32;

HMENU LoadMenuA(HINSTANCE instance, LPCSTR name) {
    const HRSRC resource = FindResourceA(instance, name, RT_MENU);
    if (resource == nullptr)
        return nullptr;
    const auto* bytes = static_cast<const std::uint8_t*>(LockResource(LoadResource(instance, resource)));
    return loadTemplate({bytes, SizeofResource(instance, resource)});
}

HMENU LoadMenuIndirectA(const void* menuTemplate) {
    if (menuTemplate == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return loadTemplate(templateBytes(menuTemplate));
}
