// Keyboard input of the list view, and the focus.
#include "controls/list_view.h"

#include "win32/input.h"
#include "win32/queue.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

bool isDown(int key) { return GetKeyState(key) < 0; }

} // namespace

LRESULT ListView::handleKeys(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_KEYDOWN: {
        NMLVKEYDOWN told{};
        told.wVKey = static_cast<WORD>(wParam);
        notify(LVN_KEYDOWN, told);
        if (alive())
            onKeyDown(static_cast<int>(wParam));
        return 0;
    }
    case WM_CHAR:
        onChar(static_cast<char>(wParam));
        return 0;
    default:
        return defaultHandling(message, wParam, lParam);
    }
}

void ListView::onKeyDown(int key) {
    cancelEditTimer();
    switch (key) {
    case VK_RETURN:
        notify(NM_RETURN);
        if (alive() && isItem(focus_))
            activate(focus_, {});
        return;
    case VK_SPACE:
        onSpace();
        return;
    case VK_LEFT:
    case VK_RIGHT:
        if (isReport()) {
            scrollTo({scroll_.x + (key == VK_LEFT ? -1 : 1) * measure_.lineHeight(), scroll_.y});
            return;
        }
        break;
    case VK_UP:
    case VK_DOWN:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
        break;
    case VK_ADD:
        if (isDown(VK_CONTROL) && isReport())
            adjustAllColumns();
        return;
    default:
        return;
    }
    typeAhead_.clear();
    if (const int target = targetOf(key); alive() && isItem(target))
        moveFocusTo(target);
}

int ListView::targetOf(int key) {
    const int last = count() - 1;
    if (key == VK_END)
        return last;
    if (key == VK_HOME || !isItem(focus_))
        return last >= 0 ? 0 : -1;
    const auto toward = [this](UINT direction) {
        const int found = neighbour(focus_, direction);
        return found >= 0 ? found : focus_;
    };
    switch (key) {
    case VK_LEFT:
        return toward(LVNI_TOLEFT);
    case VK_RIGHT:
        return toward(LVNI_TORIGHT);
    case VK_UP:
        return toward(LVNI_ABOVE);
    case VK_DOWN:
        return toward(LVNI_BELOW);
    default:
        return pageTarget(key == VK_NEXT);
    }
}

/// Report view goes to the edge of the page first; the others go by as much as fits into the window.
int ListView::pageTarget(bool down) {
    const int last = count() - 1;
    if (isReport()) {
        const int page = rowsPerPage();
        const int edge = down ? std::min(scroll_.y + page - 1, last) : scroll_.y;
        if (down ? focus_ < edge : focus_ > edge)
            return edge;
        return std::clamp(down ? focus_ + page - 1 : focus_ - page + 1, 0, last);
    }
    int page = rowsPerPage() * columnsPerPage();
    if (isIconic()) {
        const RECT client = clientRect();
        const SIZE cell = cellSize();
        const int lines =
            fillsDownwards() ? client.right / std::max<int>(cell.cx, 1) : client.bottom / std::max<int>(cell.cy, 1);
        page = std::max(lines, 1) * iconsPerLine();
    }
    const int target = down ? focus_ + page : focus_ - page;
    return std::clamp(target, 0, last);
}

void ListView::moveFocusTo(int index) {
    const bool multiple = !hasStyle(LVS_SINGLESEL);
    if (multiple && isDown(VK_SHIFT)) {
        if (!isItem(mark_))
            mark_ = std::max(focus_, 0);
        selectRange(mark_, index, isDown(VK_CONTROL));
        if (alive() && isItem(index))
            setState(index, LVIS_FOCUSED, LVIS_FOCUSED);
    } else if (isDown(VK_CONTROL)) {
        setState(index, LVIS_FOCUSED, LVIS_FOCUSED);
    } else {
        selectOnly(index);
        return;
    }
    if (alive())
        onEnsureVisible(index, false);
}

void ListView::selectOnly(int index) {
    deselectAll(index);
    if (!alive() || !isItem(index))
        return;
    setState(index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    if (!alive() || !isItem(index))
        return;
    mark_ = index;
    onEnsureVisible(index, false);
}

void ListView::onSpace() {
    if (typeAhead_.isRunning(GetTickCount()) || !isItem(focus_))
        return; // a blank of the text that is typed
    if (hasExtended(LVS_EX_CHECKBOXES)) {
        toggleCheck(focus_);
        return;
    }
    const bool toggles = isDown(VK_CONTROL) && isSelected(focus_);
    mark_ = focus_;
    setState(focus_, toggles ? 0 : LVIS_SELECTED, LVIS_SELECTED);
}

void ListView::onChar(char character) {
    const DWORD now = GetTickCount();
    const bool control = static_cast<unsigned char>(character) < ' ';
    if (control || (character == ' ' && !typeAhead_.isRunning(now)) || count() == 0)
        return;
    typeAhead_.add(character, now);
    // One character, also repeated, goes on to the next match; more of them may fit where we are.
    const bool steps = typeAhead_.repeatsOneCharacter();
    const std::string text = steps ? std::string(1, character) : typeAhead_.text();
    LVFINDINFOA wanted{};
    wanted.flags = LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP;
    wanted.psz = text.c_str();
    const int start = steps ? focus_ : std::max(focus_ - 1, -1);
    const auto found = static_cast<int>(onFindItem(start, &wanted));
    if (!alive())
        return;
    if (isItem(found))
        selectOnly(found);
    else
        MessageBeep(0);
}

void ListView::adjustAllColumns() {
    for (int index = 0; alive() && index < columnCount(); ++index)
        onSetColumnWidth(index, LVSCW_AUTOSIZE);
}

// ---- Focus ---------------------------------------------------------------------------------------------------------

void ListView::onSetFocus() {
    notify(NM_SETFOCUS);
    if (alive() && (selectedCount() > 0 || focus_ >= 0))
        invalidateList();
}

void ListView::onKillFocus() {
    typeAhead_.clear();
    cancelEditTimer();
    notify(NM_KILLFOCUS);
    if (alive() && (selectedCount() > 0 || focus_ >= 0))
        invalidateList();
}

} // namespace vndk::win32
