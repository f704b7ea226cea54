// MENUITEMINFO in and out of items.
#include "user/menu_change.h"
#include "win32/error.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace vndk::win32 {

namespace {

constexpr UINT allTypes = MFT_BITMAP | MFT_MENUBARBREAK | MFT_MENUBREAK | MFT_OWNERDRAW | MFT_RADIOCHECK |
                          MFT_SEPARATOR | MFT_RIGHTORDER | MFT_RIGHTJUSTIFY;
constexpr UINT allStates = MFS_GRAYED | MFS_CHECKED | MFS_HILITE | MFS_DEFAULT;
constexpr UINT allMasks = MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_CHECKMARKS | MIIM_TYPE | MIIM_DATA | MIIM_STRING |
                          MIIM_BITMAP | MIIM_FTYPE;
constexpr UINT shortSize = offsetof(MENUITEMINFOA, hbmpItem);

// Older programs know no bitmap beside the text.
bool hasBitmapField(const MENUITEMINFOA& info) { return info.cbSize >= sizeof info; }

bool checkInfo(const MENUITEMINFOA* info) {
    const bool good = info != nullptr && (info->cbSize == sizeof *info || info->cbSize == shortSize) &&
                      (info->fMask & ~allMasks) == 0 &&
                      // The old mask for text and type together doesn't mix with the newer, finer ones.
                      ((info->fMask & MIIM_TYPE) == 0 || (info->fMask & (MIIM_STRING | MIIM_BITMAP | MIIM_FTYPE)) == 0);
    if (!good)
        SetLastError(ERROR_INVALID_PARAMETER);
    return good;
}

void takeText(const MENUITEMINFOA& info, MenuItem& item) {
    if (info.dwTypeData != nullptr)
        item.text = info.dwTypeData;
    else
        item.text.clear();
}

void takeTypeAndContent(const MENUITEMINFOA& info, MenuItem& item) {
    item.type = info.fType & allTypes;
    item.bitmap = nullptr;
    if (item.ownerDrawn())
        item.typeData = reinterpret_cast<ULONG_PTR>(info.dwTypeData);
    else if ((item.type & MFT_BITMAP) != 0)
        item.bitmap = reinterpret_cast<HBITMAP>(info.dwTypeData);
    else if (!item.separator())
        takeText(info, item);
}

void giveText(MENUITEMINFOA& info, const MenuItem& item) {
    const auto length = static_cast<UINT>(item.text.size());
    if (info.dwTypeData != nullptr && info.cch > 0) {
        const UINT copied = std::min(length, info.cch - 1);
        std::memcpy(info.dwTypeData, item.text.data(), copied);
        info.dwTypeData[copied] = '\0';
        info.cch = copied;
    } else {
        info.cch = length;
    }
}

void giveTypeAndContent(MENUITEMINFOA& info, const MenuItem& item) {
    info.fType = item.type;
    if (item.ownerDrawn()) {
        info.dwTypeData = reinterpret_cast<LPSTR>(item.typeData);
        info.cch = 0;
    } else if ((item.type & MFT_BITMAP) != 0) {
        info.dwTypeData = reinterpret_cast<LPSTR>(item.bitmap);
        info.cch = 0;
    } else if (item.separator()) {
        info.dwTypeData = nullptr;
        info.cch = 0;
    } else {
        giveText(info, item);
    }
}

} // namespace

bool takeItemInfo(HMENU menu, const MENUITEMINFOA* info, MenuItem& item) {
    if (!checkInfo(info))
        return false;
    if ((info->fMask & MIIM_TYPE) != 0)
        takeTypeAndContent(*info, item);
    if ((info->fMask & MIIM_FTYPE) != 0)
        item.type = info->fType & allTypes;
    if ((info->fMask & MIIM_STRING) != 0)
        takeText(*info, item);
    if ((info->fMask & MIIM_BITMAP) != 0 && hasBitmapField(*info))
        item.bitmap = info->hbmpItem;
    if ((info->fMask & MIIM_STATE) != 0)
        item.state = info->fState & allStates;
    if ((info->fMask & MIIM_ID) != 0)
        item.id = info->wID;
    if ((info->fMask & MIIM_DATA) != 0)
        item.data = info->dwItemData;
    if ((info->fMask & MIIM_CHECKMARKS) != 0) {
        item.checked = info->hbmpChecked;
        item.unchecked = info->hbmpUnchecked;
    }
    if ((info->fMask & MIIM_SUBMENU) != 0 && !takeSubMenu(menu, info->hSubMenu, item))
        return false;
    settleItem(item);
    return true;
}

} // namespace vndk::win32

using namespace vndk::win32;

BOOL SetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOA* info) {
    const MenuPlace place = findItem(menu, item, byPosition != FALSE);
    if (!place)
        return FALSE;
    MenuItem changed = place.item();
    const bool wasLine = changed.separator();
    if (!takeItemInfo(place.menu->handle, info, changed))
        return FALSE;
    // A line that becomes an item can be picked again, unless a state was given as well.
    if (wasLine && !changed.separator() && (info->fMask & MIIM_STATE) == 0)
        changed.state &= ~MFS_GRAYED;
    place.item() = std::move(changed);
    menuChanged(*place.menu);
    return TRUE;
}

BOOL GetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, MENUITEMINFOA* info) {
    if (!checkInfo(info))
        return FALSE;
    const MenuPlace place = findItem(menu, item, byPosition != FALSE);
    if (!place)
        return FALSE;
    const MenuItem& found = place.item();
    if ((info->fMask & MIIM_TYPE) != 0)
        giveTypeAndContent(*info, found);
    if ((info->fMask & MIIM_FTYPE) != 0)
        info->fType = found.type;
    if ((info->fMask & MIIM_STRING) != 0)
        giveText(*info, found);
    if ((info->fMask & MIIM_BITMAP) != 0 && hasBitmapField(*info))
        info->hbmpItem = found.bitmap;
    if ((info->fMask & MIIM_STATE) != 0)
        info->fState = found.state;
    if ((info->fMask & MIIM_ID) != 0)
        info->wID = found.id;
    if ((info->fMask & MIIM_DATA) != 0)
        info->dwItemData = found.data;
    if ((info->fMask & MIIM_SUBMENU) != 0)
        info->hSubMenu = found.subMenu;
    if ((info->fMask & MIIM_CHECKMARKS) != 0) {
        info->hbmpChecked = found.checked;
        info->hbmpUnchecked = found.unchecked;
    }
    return TRUE;
}
