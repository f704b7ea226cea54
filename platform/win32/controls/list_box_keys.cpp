// Keyboard: moving, selecting, searching by what is typed.
#include "controls/list_box.h"

#include "win32/codepage.h"
#include "win32/input.h"
#include "win32/queue.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

// Answers to WM_VKEYTOITEM and WM_CHARTOITEM beside an item's index.
constexpr int ownerDidAll = -2;

constexpr int keySlash = 0xBF; // of the main block
constexpr int keyBackslash = 0xDC;
constexpr int keyF8 = VK_F1 + 7;

bool held(int key) { return GetKeyState(key) < 0; }

} // namespace

ListBox::Handled ListBox::handleKeys(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
    case WM_KEYDOWN:
        settleLayout();
        if (alive())
            keyDown(static_cast<int>(wParam));
        return 0;
    case WM_CHAR:
        typeCharacter(static_cast<char>(wParam));
        return 0;
    default:
        return std::nullopt;
    }
}

void ListBox::keyDown(int key) {
    int target = -1;
    if (hasBits(LBS_WANTKEYBOARDINPUT)) {
        const auto answer =
            static_cast<int>(askOwner(WM_VKEYTOITEM, MAKEWPARAM(key, caret_), reinterpret_cast<LPARAM>(window())));
        if (!alive() || answer == ownerDidAll)
            return;
        target = valid(answer) ? answer : -1;
    }
    if (target < 0 && shortcutKey(key))
        return;
    if (target < 0)
        target = keyTarget(key);
    if (valid(target) && alive())
        moveByKey(target);
}

/// The item that a key leads to; -1 when it leads nowhere.
int ListBox::keyTarget(int key) const {
    const int last = count() - 1;
    if (last < 0)
        return -1;
    // Without a selection the first arrow selects the focus item itself.
    const bool arrives = singleChoice() && current_ == -1;
    const int rows = multiColumn() ? rowsPerColumn() : 1;
    const auto stepped = [&](int step) { return arrives ? caret_ : std::clamp(caret_ + step, 0, last); };
    const int page = std::max(itemsPerPage() - (multiColumn() ? 0 : 1), 1);
    switch (key) {
    case VK_UP:
        return stepped(-1);
    case VK_DOWN:
        return stepped(1);
    case VK_LEFT:
        return multiColumn() && caret_ - rows < 0 ? -1 : stepped(-rows);
    case VK_RIGHT:
        return multiColumn() && caret_ + rows > last ? -1 : stepped(rows);
    case VK_PRIOR:
        return std::max(caret_ - page, 0);
    case VK_NEXT:
        return std::min(caret_ + page, last);
    case VK_HOME:
        return 0;
    case VK_END:
        return last;
    case VK_SPACE:
        return singleChoice() ? caret_ : -1;
    default:
        return -1;
    }
}

void ListBox::moveByKey(int index) {
    const int formerCurrent = current_;
    hideCaret();
    caretPlaced_ = true;
    if (alive())
        ensureVisible(index);
    if (!alive())
        return;
    if (singleChoice()) {
        selectSingle(index);
        anchor_ = index;
    } else if (hasBits(LBS_EXTENDEDSEL)) {
        if (held(VK_SHIFT) && valid(anchor_)) {
            selectOnly(std::min(anchor_, index), std::max(anchor_, index));
        } else if (!addMode_ && !held(VK_CONTROL)) {
            selectOnly(index, index);
            anchor_ = index;
        }
    }
    if (!alive())
        return;
    showCaretAt(index);
    const bool changed = !singleChoice() || current_ != formerCurrent;
    if (alive() && changed && !hasBits(LBS_NOSEL))
        notifyOwner(LBN_SELCHANGE);
}

void ListBox::toggleByKey() {
    if (!valid(caret_))
        return;
    const bool only = hasBits(LBS_EXTENDEDSEL) && !addMode_ && !held(VK_CONTROL);
    if (only && held(VK_SHIFT) && valid(anchor_)) {
        selectOnly(std::min(anchor_, caret_), std::max(anchor_, caret_));
    } else {
        anchor_ = caret_;
        if (only)
            selectOnly(caret_, caret_);
        else
            select(caret_, !items_[caret_].selected);
    }
    caretPlaced_ = true;
    if (alive())
        notifyOwner(LBN_SELCHANGE);
}

/// Keys that don't lead to an item. True when it was one.
bool ListBox::shortcutKey(int key) {
    const bool sideways = (key == VK_LEFT || key == VK_RIGHT) && !multiColumn() && horizontalExtent_ > 0;
    if (sideways && hasBits(WS_HSCROLL)) {
        scrollSideways(horizontalPosition_ + (key == VK_LEFT ? -averageWidth_ : averageWidth_));
        return true;
    }
    if (singleChoice())
        return false;
    if (key == VK_SPACE) {
        toggleByKey();
        return true;
    }
    if (!hasBits(LBS_EXTENDEDSEL))
        return false;
    if (key == keyF8 && held(VK_SHIFT)) {
        addMode_ = !addMode_;
        return true;
    }
    if (!held(VK_CONTROL) || (key != keySlash && key != keyBackslash))
        return false;
    if (key == keySlash)
        selectRange(0, count() - 1, true);
    else
        selectOnly(caret_, caret_);
    if (alive())
        notifyOwner(LBN_SELCHANGE);
    return true;
}

void ListBox::typeCharacter(char character) {
    int target = -1;
    if (hasBits(LBS_WANTKEYBOARDINPUT) && !hasStrings()) {
        const auto answer = static_cast<int>(askOwner(WM_CHARTOITEM, MAKEWPARAM(static_cast<BYTE>(character), caret_),
                                                      reinterpret_cast<LPARAM>(window())));
        if (!alive() || answer == ownerDidAll)
            return;
        target = valid(answer) ? answer : -1;
    }
    if (target < 0 && hasStrings())
        target = searchTyped(character);
    if (valid(target))
        moveByKey(target);
}

/// Characters in quick succession spell the begin of a text; the same one again and again goes from match to match.
int ListBox::searchTyped(char character) {
    const DWORD now = GetTickCount();
    const bool space = character == ' ';
    if (static_cast<BYTE>(character) < ' ' || (space && !typed_.isRunning(now)))
        return -1;
    typed_.add(lower1252(character), now);
    const bool repeated = typed_.repeatsOneCharacter();
    const std::string sought = repeated ? std::string(1, typed_.text().front()) : typed_.text();
    const bool placed = !singleChoice() || current_ != -1;
    const int after = placed && repeated ? caret_ : caret_ - 1;
    return static_cast<int>(findItem(after, reinterpret_cast<LPARAM>(sought.c_str()), false));
}

} // namespace vndk::win32
