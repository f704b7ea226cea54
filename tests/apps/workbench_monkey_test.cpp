// A user who presses and types whatever comes along, over the whole program with the module loaded. Nothing may crash
// or hang, and every drawing on the disk can be read at any time.
//
// VONDRAKE_MONKEY_SECONDS in the environment sets how long, VONDRAKE_MONKEY_SEED with which numbers it begins.
#include "db/database.h"
#include "ed/host.h"
#include "platform/temp_folder.h"
#include "screen/memory.h"
#include "vondrake/desktop_mode.h"
#include "vondrake/profile.h"
#include "win32/drive_map.h"
#include "win32/input.h"
#include "win32/queue.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>

namespace vndk::app {
namespace {

namespace fs = std::filesystem;
using screen::Event;
using Clock = std::chrono::steady_clock;

int numberFromEnvironment(const char* name, int standard) {
    const char* const text = std::getenv(name);
    return text ? std::atoi(text) : standard;
}

// Words that lead somewhere. No slashes: what the monkey writes stays in its own folder.
constexpr std::array kWords = {"LINE",   "CIRCLE",  "ARC",     "PLINE",  "TEXT",       "INSERT", "-INSERT", "BLOCK",
                               "COPY",   "MOVE",    "ROTATE",  "SCALE",  "MIRROR",     "ERASE",  "EXPLODE", "U",
                               "REDO",   "UNDO",    "NEW",     "OPEN",   "QSAVE",      "SAVEAS", "CLOSE",   "LAYER",
                               "PURGE",  "WBLOCK",  "ZOOM",    "PAN",    "REGEN",      "BLOCKS", "DDATTE",  "EATTEDIT",
                               "CHPROP", "LIST",    "UCS",     "SETVAR", "ALL",        "L",      "DESK",    "CHAIR",
                               "0,0",    "5,5",     "@3,4",    "@5<30",  "2",          "1.5",    "Y",       "N",
                               "E",      "W",       "?",       "*",      ".",          "plan",   "other",   "TILEMODE",
                               "ATTDIA", "FILEDIA", "(+ 1 2)", "(car",   "'ZOOM",      "!x",     "\"",      "",
                               "QUIT",   "ATTDEF",  "MINSERT", "end",    "CURSORSIZE", "VPOINT", "PLAN",    "-1,-1,1"};

constexpr std::array kKeys = {VK_RETURN, VK_RETURN, VK_RETURN, VK_ESCAPE, VK_ESCAPE, VK_SPACE,  VK_TAB,  VK_UP,
                              VK_DOWN,   VK_LEFT,   VK_RIGHT,  VK_HOME,   VK_END,    VK_PRIOR,  VK_NEXT, VK_DELETE,
                              VK_BACK,   VK_F1,     VK_F2,     VK_F1 + 2, VK_F4,     VK_F1 + 7, VK_F10,  VK_MENU};
constexpr std::array<int, 10> kControlKeys = {'Z', 'Y', 'S', 'O', 'N', 'C', 'V', 'X', VK_TAB, VK_F4};

class MonkeyScreen : public screen::MemoryScreen {
public:
    MonkeyScreen(unsigned seed, Clock::time_point end) : MemoryScreen(900, 650), random_(seed), end_(end) {}

    /// Comes before whatever comes along.
    void begin(const char* command) {
        type(command);
        press(VK_RETURN, false);
    }

    void wait(int milliseconds) override {
        if (Clock::now() >= end_)
            ::PostQuitMessage(0);
        else
            act();
        MemoryScreen::wait(milliseconds);
    }

    [[nodiscard]] long actions() const { return actions_; }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

    void act() {
        ++actions_;
        const int kind = below(100);
        if (kind < 25)
            click();
        else if (kind < 35)
            drag();
        else if (kind < 40)
            wheel();
        else if (kind < 65)
            typeWord();
        else if (kind < 90)
            press(kKeys[static_cast<std::size_t>(below(static_cast<int>(kKeys.size())))], false);
        else if (kind < 97)
            press(kControlKeys[static_cast<std::size_t>(below(static_cast<int>(kControlKeys.size())))], true);
        else if (kind < 98)
            resize(400 + below(900), 300 + below(600));
        else
            advance(static_cast<std::uint32_t>(below(1000)));
    }

    void postAt(Event::Kind kind, screen::MouseButton button) {
        Event event;
        event.kind = kind;
        event.x = x_;
        event.y = y_;
        event.button = button;
        event.held = held_;
        post(event);
    }

    void moveAnywhere() {
        const screen::Surface area = surface();
        x_ = below(area.width);
        y_ = below(area.height);
        postAt(Event::Kind::mouseMove, screen::MouseButton::left);
    }

    void hold(screen::MouseButton button, bool down) {
        (button == screen::MouseButton::left    ? held_.left
         : button == screen::MouseButton::right ? held_.right
                                                : held_.middle) = down;
        postAt(down ? Event::Kind::mouseDown : Event::Kind::mouseUp, button);
    }

    screen::MouseButton anyButton() {
        const int which = below(10);
        return which < 7   ? screen::MouseButton::left
               : which < 9 ? screen::MouseButton::right
                           : screen::MouseButton::middle;
    }

    void click() {
        const screen::MouseButton button = anyButton();
        moveAnywhere();
        for (int times = 1 + (below(4) == 0 ? 1 : 0); times > 0; --times) {
            hold(button, true);
            hold(button, false);
        }
    }

    void drag() {
        const screen::MouseButton button = anyButton();
        moveAnywhere();
        hold(button, true);
        moveAnywhere();
        moveAnywhere();
        hold(button, false);
    }

    void wheel() {
        moveAnywhere();
        Event event;
        event.kind = Event::Kind::wheel;
        event.x = x_;
        event.y = y_;
        event.delta = below(2) == 0 ? 120 : -120;
        post(event);
    }

    void press(int key, bool control) {
        held_.control = control;
        held_.shift = control && below(4) == 0;
        for (const Event::Kind kind : {Event::Kind::keyDown, Event::Kind::keyUp}) {
            Event event;
            event.kind = kind;
            event.key = static_cast<screen::KeyCode>(key);
            event.x = x_;
            event.y = y_;
            event.held = held_;
            post(event);
        }
        held_.control = held_.shift = false;
    }

    void type(const char* text) {
        for (const char* c = text; *c != 0; ++c) {
            Event event;
            event.kind = Event::Kind::character;
            event.character = static_cast<unsigned char>(*c);
            event.x = x_;
            event.y = y_;
            post(event);
        }
    }

    void typeWord() {
        type(kWords[static_cast<std::size_t>(below(static_cast<int>(kWords.size())))]);
        if (below(3) != 0)
            press(VK_RETURN, false);
    }

    std::mt19937 random_;
    Clock::time_point end_;
    screen::Held held_;
    int x_ = 0, y_ = 0;
    long actions_ = 0;
};

class MonkeyTest : public testing::Test {
protected:
    MonkeyTest() {
        setenv("HOME", folder_.path().c_str(), 1);
        win32::DriveMap own;
        EXPECT_TRUE(own.map('C', folder_.path()).ok());
        former_ = std::exchange(win32::DriveMap::current(), own);
        fs::current_path(folder_.path());
        fs::copy_file(PLAN_FILE, folder_ / "plan.dwg");
        fs::copy_file(PLAN_FILE, folder_ / "other.dwg");
        folder_.write("settings.ini", "[Vondrake]\nDoNotShow=1\n");
    }
    ~MonkeyTest() override {
        fs::current_path("/");
        win32::DriveMap::current() = former_;
    }

    /// All drawings in the folder and those below it, read whole.
    std::string unreadable() {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder_.path())) {
            if (entry.path().extension() != ".dwg" || !entry.is_regular_file())
                continue;
            AcDbDatabase database(false, true);
            constexpr int shareWithAll = 0x40;
            if (database.readDwgFile(entry.path().c_str(), shareWithAll) != Acad::eOk)
                return entry.path().string() + ": " + database.lastFileError();
        }
        return {};
    }

    TempFolder folder_;
    win32::DriveMap former_ = win32::DriveMap::standard();
};

TEST_F(MonkeyTest, NothingCrashesAndNoDrawingIsLost) {
    const auto seed = static_cast<unsigned>(numberFromEnvironment("VONDRAKE_MONKEY_SEED", 1));
    const auto limit = std::chrono::seconds(numberFromEnvironment("VONDRAKE_MONKEY_SECONDS", 10));
    const auto begin = Clock::now();
    long actions = 0;
    unsigned round = 0;
    for (; Clock::now() - begin < limit; ++round) {
        // QUIT ends a round; the next one begins with what is on the disk then.
        SCOPED_TRACE("VONDRAKE_MONKEY_SEED=" + std::to_string(seed + round));
        MonkeyScreen screen(seed + round, std::min(begin + limit, Clock::now() + std::chrono::seconds(20)));
        // In each second round the palette is there from the start.
        if (round % 2 != 0)
            screen.begin("BLOCKS");
        CWinApp application;
        application.SetProfileFile((folder_ / "settings.ini").c_str());
        host::Host host;
        Profile profile(application);
        host.setProfile(&profile);
        host.linker().addSupportFolder(MODULE_FOLDER);
        Options options;
        options.drawings = {folder_ / "plan.dwg", folder_ / "other.dwg"};
        runDesktop(application, host, options, screen);
        actions += screen.actions();
        host.documents().closeAll();
        ASSERT_EQ(unreadable(), "");
    }
    EXPECT_GT(actions, 100);
    RecordProperty("actions", std::to_string(actions));
    std::printf("%ld actions in %u rounds\n", actions, round);
}

} // namespace
} // namespace vndk::app
