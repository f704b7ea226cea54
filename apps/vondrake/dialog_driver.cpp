#include "dialog_driver.h"

#include "console.h"
#include "dialog_controls.h"
#include "dialog_items.h"
#include "dialog_text.h"
#include "ed/host.h"
#include "exit_status.h"
#include "win32/button.h"
#include "win32/codepage.h"
#include "win32/combobox.h"
#include "win32/dialog.h"
#include "win32/drive_map.h"
#include "win32/input.h"
#include "win32/menu.h"
#include "win32/picture.h"
#include "win32/queue.h"
#include "win32/window.h"

#include <algorithm>
#include <cstdlib>

namespace vndk::app {

namespace {

using Kind = DialogStep::Kind;

constexpr int kWidth = 1280;
constexpr int kHeight = 800;
constexpr std::uint32_t kRest = 600; // milliseconds between steps: longer than a double click takes
constexpr int kMostWaits = 20000;    // within one step; each is some milliseconds of the screen's clock
constexpr int kMostRounds = 1000000; // of a loop that never comes to rest
constexpr int kRoundsOfPush = 1000;  // until it is pushed again
constexpr int kPushTime = 10;        // milliseconds
constexpr int kPoliteOfOne = 3;      // how often one window is asked to close
constexpr int kPolite = 40;          // and how often all are
constexpr int kMostPushes = 80;      // those after the polite ones as if the program quit
constexpr size_t kMostNamed = 12;    // controls in a message

/// The button that leaves a dialog and does nothing.
int cancelIdOf(HWND dialog) {
    for (const int id : {IDCANCEL, IDNO, IDABORT})
        if (GetDlgItem(dialog, id))
            return id;
    return IDCANCEL;
}

POINT middleOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return {client.right / 2, client.bottom / 2};
}

std::string nameOfControl(HWND control) {
    std::string name = std::to_string(static_cast<SHORT>(GetWindowLongA(control, GWL_ID))) + " " + kindOf(control);
    const std::string caption = captionOf(control);
    if (controlKind(control) == ControlKind::Button && !caption.empty())
        name += " \"" + caption + "\"";
    return name;
}

/// The controls that a user can do something with.
std::string controlNames(HWND dialog) {
    std::string names;
    size_t count = 0;
    for (const HWND control : controlsOf(dialog)) {
        const ControlKind kind = controlKind(control);
        if (IsWindowVisible(control) == FALSE || kind == ControlKind::Label || kind == ControlKind::GroupBox ||
            kind == ControlKind::Header || kind == ControlKind::Dialog)
            continue;
        if (++count > kMostNamed)
            return names + ", ...";
        names += (names.empty() ? "" : ", ") + nameOfControl(control);
    }
    return names;
}

/// The window and all that stands before it: its menus, lists, tips.
RECT pictureRect(HWND dialog, int width, int height) {
    RECT around{};
    GetWindowRect(dialog, &around);
    for (HWND window = GetTopWindow(nullptr); window && window != dialog; window = GetWindow(window, GW_HWNDNEXT)) {
        RECT rect{};
        if (IsWindowVisible(window) == FALSE || GetWindowRect(window, &rect) == FALSE)
            continue;
        around = {std::min(around.left, rect.left), std::min(around.top, rect.top), std::max(around.right, rect.right),
                  std::max(around.bottom, rect.bottom)};
    }
    return {std::max(around.left, 0), std::max(around.top, 0), std::min(around.right, width),
            std::min(around.bottom, height)};
}

} // namespace

DialogDriver::DialogDriver(host::Host& host) : MemoryScreen(kWidth, kHeight), host_(host) {}

DialogDriver::~DialogDriver() = default;

std::optional<host::Problem> DialogDriver::takeFailure() {
    rounds_ = 0;
    pushes_ = 0;
    pushed_ = nullptr;
    // What was left may have taken the activation with it.
    if (std::exchange(left_, false) && !GetActiveWindow())
        SetActiveWindow(main_);
    MSG quit{};
    if (std::exchange(quitPosted_, false))
        PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    return std::exchange(failure_, std::nullopt);
}

// What waits.

/// The window that the user would work in: the active one, else the topmost dialog.
HWND DialogDriver::dialog() const {
    // A modal dialog that never came to rest isn't shown yet.
    const auto isOpen = [this](HWND window) {
        const HWND owner = window ? GetWindow(window, GW_OWNER) : nullptr;
        const bool modal = owner && IsWindowEnabled(owner) == FALSE;
        return window && window != main_ && IsWindowEnabled(window) != FALSE &&
               (modal || IsWindowVisible(window) != FALSE);
    };
    const HWND active = GetActiveWindow();
    if (isOpen(active))
        return active;
    for (HWND window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT))
        if (isOpen(window) && controlKind(window) == ControlKind::Dialog)
            return window;
    return main_;
}

std::string DialogDriver::dialogName() const {
    const HWND window = dialog();
    return window == main_ ? "the program" : "the dialog \"" + textOf(window) + "\"";
}

std::string DialogDriver::situation() const {
    const HWND window = dialog();
    if (window == main_)
        return "The program waits for input. Steps are " + dialogStepKeywords() + ".";
    const std::string names = controlNames(window);
    return "The dialog \"" + textOf(window) + "\" is open" + (names.empty() ? "" : " (" + names + ")") +
           ". Steps are " + dialogStepKeywords() + ".";
}

// The loop that waits comes by here.

void DialogDriver::wait(int milliseconds) {
    rounds_ = 0;
    if (failure_) {
        pushOut();
        letPass(kPushTime);
    } else if (stepRuns()) {
        letPass(milliseconds);
    } else if (const auto rest = static_cast<std::int32_t>(restUntil_ - clock()); rest > 0) {
        letPass(milliseconds < 0 ? rest : std::min(milliseconds, rest));
    } else if (!failure_) {
        takeStep();
    }
}

bool DialogDriver::nextEvent(screen::Event& event) {
    if (MemoryScreen::nextEvent(event))
        return true;
    if (++rounds_ > kMostRounds) {
        rounds_ = kMostRounds - kRoundsOfPush;
        fail(dialogName() + " never comes to rest: it always finds something to do", line_);
        pushOutBusy();
    }
    return false;
}

/// A timer that nobody takes from the queue must not make time stand still.
void DialogDriver::letPass(int milliseconds) { advance(static_cast<std::uint32_t>(std::max(milliseconds, 1))); }

bool DialogDriver::stepRuns() {
    if (!user_)
        return false;
    if (!user_->failure().empty()) {
        fail(user_->failure(), line_);
    } else if (user_->done()) {
        user_.reset();
        restUntil_ = clock() + kRest;
    } else if (++waits_ > kMostWaits) {
        fail("the step isn't done: " + dialogName() + " takes no input", line_);
    } else {
        return true;
    }
    return false;
}

void DialogDriver::takeStep() {
    for (;;) {
        const auto answer = scriptEnded_ ? std::nullopt : host_.commandLine().input().takeTypedLine();
        if (!answer)
            return fail("The script ended while " + dialogName() + " was open. Add the steps that close it",
                        host_.commandLine().beganLine());
        if (answer->kind == host::Answer::Kind::Text && holdsNoStep(answer->text))
            continue;
        line_ = answer->line;
        // The code that cancels at a prompt does so here.
        const auto step = parseDialogStep(answer->kind == host::Answer::Kind::Cancel ? "PRESS Escape" : answer->text);
        if (const auto* const complaint = std::get_if<std::string>(&step))
            return fail(*complaint, line_);
        host_.freshLine();
        host_.print((dialog() == main_ ? "" : textOf(dialog()) + ": ") + answer->text + "\n");
        return perform(std::get<DialogStep>(step));
    }
}

// Steps.

void DialogDriver::perform(const DialogStep& step) {
    user_ = std::make_unique<win32::UserScript>(*this);
    waits_ = 0;
    user_->inWindow(dialog());
    const std::string name = shownName(step.control);
    switch (step.kind) {
    case Kind::Click:
        return click(step);
    case Kind::Drag: {
        const POINT from = step.point.value_or(POINT{0, 0});
        user_->dragPlace(name, finder(step), {step.to.x - from.x, step.to.y - from.y}, step.click.keys);
        return;
    }
    case Kind::Wheel:
        user_->wheelPlace(name, finder(step), step.count);
        return;
    case Kind::Type:
        user_->type(step.text);
        return;
    case Kind::Press:
        for (const KeyPress& press : step.keys)
            press.typed != 0 ? user_->type(std::string(1, press.typed)) : user_->press(press.key, press.with);
        return;
    case Kind::Pick:
        for (const std::string& text : step.texts)
            user_->pick({text});
        return;
    case Kind::Show:
        user_->call([this] { show(); });
        return;
    case Kind::Picture:
        user_->call([this, file = step.text, scale = step.count] { savePicture(file, scale); });
        return;
    }
}

/// Finds the place each time it is asked: the step before may only now have led to it.
win32::UserPlaceFinder DialogDriver::finder(const DialogStep& step) {
    return [this, name = step.control, point = step.point, item = step.item]() -> win32::UserPlace {
        const HWND control = findControl(dialog(), name);
        if (!control)
            return {.trouble = "there is no such control"};
        // A hidden or disabled one is complained about as such.
        if (item && IsWindowVisible(control) != FALSE && IsWindowEnabled(control) != FALSE)
            return placeOfItem(control, *item);
        return {.window = control, .point = point.value_or(middleOf(control))};
    };
}

void DialogDriver::click(const DialogStep& step) {
    if (step.item)
        openList(step.control);
    user_->clickPlace(shownName(step.control), finder(step), step.click);
}

/// The items of a combo box are behind its arrow.
void DialogDriver::openList(const ControlName& name) {
    const HWND combo = findControl(dialog(), name);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (!combo || controlKind(combo) != ControlKind::ComboBox || GetComboBoxInfo(combo, &info) == FALSE ||
        IsWindowVisible(info.hwndList) != FALSE)
        return;
    const POINT arrow{(info.rcButton.left + info.rcButton.right) / 2, (info.rcButton.top + info.rcButton.bottom) / 2};
    user_->clickPlace(shownName(name), [combo, arrow] { return win32::UserPlace{.window = combo, .point = arrow}; });
}

void DialogDriver::show() {
    const HWND window = dialog();
    host_.freshLine();
    host_.print(openMenusText() + (window == main_ ? "" : dialogText(window)));
}

void DialogDriver::savePicture(const std::string& file, int scale) {
    const auto path = win32::DriveMap::current().toHost(file);
    if (!path)
        return fail("\"" + file + "\" can't name a picture", line_);
    const screen::Surface pixels = surface();
    const RECT rect = pictureRect(dialog(), pixels.width, pixels.height);
    const win32::Picture picture = win32::copyPicture(pixels.pixels, pixels.width, rect);
    const win32::Status status = win32::writePng(*path, win32::enlargePicture(picture, scale));
    if (!status.ok())
        fail(win32::fromUtf8Lossy(status.message()), line_);
}

// After a failure.

void DialogDriver::fail(std::string message, size_t line) {
    user_.reset();
    if (failure_)
        return;
    message += (message.ends_with('.') ? " " : ". ") + situation();
    failure_ = host::Problem{host::Problem::Kind::InvalidAnswer, std::move(message), line};
    host_.commandLine().abandonStep();
}

/// One push out of whatever loop the program waits in, the innermost first.
void DialogDriver::pushOut() {
    const HWND window = dialog();
    pushesOfOne_ = window == pushed_ ? pushesOfOne_ + 1 : 1;
    pushed_ = window;
    if (++pushes_ > kMostPushes)
        giveUp();
    if (quitPosted_ || pushes_ > kPolite || pushesOfOne_ > kPoliteOfOne) {
        leave();
        PostQuitMessage(0);
        quitPosted_ = true;
        return;
    }
    if (EndMenu() != FALSE)
        return;
    if (const HWND capture = GetCapture())
        SendMessageA(capture, WM_CANCELMODE, 0, 0);
    if (controlKind(window) == ControlKind::Dialog)
        PostMessageA(window, WM_COMMAND, MAKEWPARAM(cancelIdOf(window), BN_CLICKED), 0);
    else if (window != main_)
        PostMessageA(window, WM_CLOSE, 0, 0);
}

/// The same to a loop that never gets as far as what is posted.
void DialogDriver::pushOutBusy() {
    const HWND window = dialog();
    pushesOfOne_ = window == pushed_ ? pushesOfOne_ + 1 : 1;
    pushed_ = window;
    if (++pushes_ > kMostPushes)
        giveUp();
    if (window != main_ && pushesOfOne_ == 1) {
        SendMessageA(window, WM_COMMAND, MAKEWPARAM(cancelIdOf(window), BN_CLICKED), 0);
        return;
    }
    leave();
    if (window != main_)
        DestroyWindow(window);
    PostQuitMessage(0);
    quitPosted_ = true;
}

void DialogDriver::leave() {
    if (!std::exchange(left_, true))
        failure_->message += " It didn't close on Cancel and was left.";
}

void DialogDriver::giveUp() {
    complain(win32::toUtf8(failure_->message));
    complain("What is open can't be closed. The program ends; what wasn't saved is lost.");
    finishOut();
    std::_Exit(kCommandFailed);
}

} // namespace vndk::app
