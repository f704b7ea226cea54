// Calls at random, with handles that are alive, dead or made up and numbers that are far out, while handlers do the
// same in the middle of any message. Nothing may crash, and the windows have to be in order afterwards.
#include "support/desktop_fixture.h"
#include "user/window_position.h"
#include "win32/gdi.h"

#include <array>
#include <climits>
#include <functional>
#include <random>
#include <vector>

namespace {

using namespace vndk::test;

class Monkey;
Monkey* monkey = nullptr;

class Monkey {
public:
    Monkey(unsigned seed, vndk::screen::MemoryScreen& screen) : screen_(screen), generator_(seed) { monkey = this; }
    ~Monkey() { monkey = nullptr; }
    Monkey(const Monkey&) = delete;
    Monkey& operator=(const Monkey&) = delete;

    int random(int least, int most) { return std::uniform_int_distribution<int>(least, most)(generator_); }
    int number() {
        static constexpr std::array extremes{INT_MIN, INT_MIN + 1, -100000, -40, -1, 0, 1, 7, 100, 70000, INT_MAX};
        return random(0, 3) == 0 ? extremes[static_cast<std::size_t>(random(0, extremes.size() - 1))]
                                 : random(-50, 250);
    }
    RECT rect() { return {number(), number(), number(), number()}; }
    HWND window() {
        const int kind = random(0, 19);
        if (kind == 0 || seen_.empty())
            return nullptr;
        if (kind == 1)
            return reinterpret_cast<HWND>(static_cast<UINT_PTR>(random(0, INT_MAX)));
        if (kind == 2)
            return GetDesktopWindow();
        return seen_[static_cast<std::size_t>(random(0, static_cast<int>(seen_.size()) - 1))];
    }

    void create() {
        const HWND parent = window();
        const DWORD style = random(0, 1) != 0 && parent != nullptr ? WS_CHILD : WS_POPUP;
        const DWORD extra = (random(0, 3) != 0 ? WS_VISIBLE : 0) | (random(0, 1) != 0 ? WS_CLIPCHILDREN : 0) |
                            (random(0, 1) != 0 ? WS_CLIPSIBLINGS : 0) | (random(0, 3) == 0 ? WS_CAPTION : 0);
        seen_.push_back(CreateWindow(random(0, 3) == 0 ? "MonkeyOwn" : "Monkey", "", style | extra, number(), number(),
                                     random(0, 200), random(0, 200), parent, nullptr, nullptr, nullptr));
    }

    void act() {
        static const std::array<void (Monkey::*)(), 5> kinds{&Monkey::changeWindow, &Monkey::paint, &Monkey::scroll,
                                                             &Monkey::input, &Monkey::queue};
        (this->*kinds[static_cast<std::size_t>(random(0, kinds.size() - 1))])();
    }

    /// What a handler does now and then.
    void meddle() {
        if (depth_ >= 3 || random(0, 11) != 0)
            return;
        ++depth_;
        act();
        --depth_;
    }

    /// Dragging lasts until the user ends it, with timers for ever.
    void endDrag() {
        vndk::screen::Event event;
        event.kind = vndk::screen::Event::Kind::mouseUp;
        screen_.post(event);
        event.kind = vndk::screen::Event::Kind::keyDown;
        event.key = VK_ESCAPE;
        screen_.post(event);
    }

private:
    void changeWindow() {
        const HWND one = window();
        switch (random(0, 9)) {
        case 0:
            create();
            break;
        case 1:
            DestroyWindow(one);
            break;
        case 2:
            ShowWindow(one, random(0, 9));
            break;
        case 3:
            SetWindowRgn(one, random(0, 1) != 0 ? CreateRectRgn(number(), number(), number(), number()) : nullptr,
                         random(0, 1));
            break;
        case 4:
            SetParent(one, window());
            break;
        case 5:
            EnableWindow(one, random(0, 2));
            break;
        case 6:
            SendMessage(one, WM_SETREDRAW, static_cast<WPARAM>(random(0, 1)), 0);
            break;
        default:
            SetWindowPos(one, random(0, 2) == 0 ? window() : HWND_TOP, number(), number(), number(), number(),
                         static_cast<UINT>(random(0, 0x7FF)));
        }
    }
    void paint() {
        const HWND one = window();
        const RECT area = rect();
        switch (random(0, 6)) {
        case 0:
            RedrawWindow(one, random(0, 2) == 0 ? nullptr : &area, nullptr, static_cast<UINT>(random(0, 0xFFF)));
            break;
        case 1:
            keepContext(
                GetDCEx(one, CreateRectRgnIndirect(&area), static_cast<DWORD>(random(0, 0xFF)) | DCX_INTERSECTRGN));
            break;
        case 2:
            keepContext(random(0, 1) != 0 ? GetDC(one) : GetWindowDC(one));
            break;
        case 3: {
            PAINTSTRUCT began{};
            BeginPaint(one, &began);
            FillRect(began.hdc, &area, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
            meddle();
            EndPaint(one, &began);
            break;
        }
        case 4:
            LockWindowUpdate(random(0, 1) != 0 ? one : nullptr);
            break;
        case 5: {
            RECT box{};
            GetUpdateRect(one, &box, random(0, 1));
            break;
        }
        default:
            for (const HDC each : contexts_) {
                FillRect(each, &area, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
                ReleaseDC(one, each);
            }
            contexts_.clear();
        }
    }
    void scroll() {
        const RECT area = rect();
        const RECT clip = rect();
        const RECT* const areas[] = {nullptr, &area};
        const RECT* const clips[] = {nullptr, &clip};
        RECT box{};
        const HRGN region = CreateRectRgn(0, 0, 0, 0);
        ScrollWindowEx(window(), number(), number(), areas[random(0, 1)], clips[random(0, 1)],
                       random(0, 1) != 0 ? region : nullptr, &box, static_cast<UINT>(random(0, 7)));
        if (!contexts_.empty())
            ScrollDC(contexts_.back(), number(), number(), areas[random(0, 1)], clips[random(0, 1)], region, &box);
        DeleteObject(region);
    }
    void input() {
        const HWND one = window();
        vndk::screen::Event event;
        event.kind = static_cast<vndk::screen::Event::Kind>(random(0, 11));
        event.x = number();
        event.y = number();
        event.button = static_cast<vndk::screen::MouseButton>(random(0, 2));
        event.key = static_cast<vndk::screen::KeyCode>(random(0, 300));
        event.character = static_cast<char32_t>(random(0, 0x110000));
        event.delta = number();
        switch (random(0, 7)) {
        case 0:
            SetCapture(one);
            break;
        case 1:
            SetFocus(one);
            break;
        case 2: {
            TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), static_cast<DWORD>(random(0, 3)), one, 20};
            TrackMouseEvent(&track);
            break;
        }
        case 3:
            CreateCaret(one, nullptr, number(), number());
            ShowCaret(one);
            SetCaretPos(number(), number());
            break;
        default:
            if (event.kind != vndk::screen::Event::Kind::closeAsked)
                screen_.post(event);
        }
    }
    void queue() {
        const HWND one = window();
        switch (random(0, 4)) {
        case 0:
            PostMessage(one, static_cast<UINT>(random(0, 0x400)), 0, 0);
            break;
        case 1:
            SetTimer(one, static_cast<UINT_PTR>(random(0, 3)), 10, nullptr);
            break;
        case 2:
            KillTimer(one, static_cast<UINT_PTR>(random(0, 3)));
            break;
        case 3:
            screen_.advance(15);
            break;
        default: {
            MSG message{};
            if (PeekMessage(&message, one, 0, 0, static_cast<UINT>(random(0, 1))) != FALSE) {
                TranslateMessage(&message);
                DispatchMessage(&message);
            }
        }
        }
    }
    void keepContext(HDC dc) {
        if (dc != nullptr && contexts_.size() < 20)
            contexts_.push_back(dc);
        else
            ReleaseDC(nullptr, dc);
    }

    vndk::screen::MemoryScreen& screen_;
    std::mt19937 generator_;
    std::vector<HWND> seen_;
    std::vector<HDC> contexts_;
    int depth_ = 0;
};

LRESULT CALLBACK monkeyProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // Posted numbers can be those of messages whose lParam would have to be a pointer.
    const bool madeUp = lParam == 0 && wParam == 0;
    if (monkey != nullptr)
        monkey->meddle();
    if (monkey != nullptr && message == WM_ENTERSIZEMOVE)
        monkey->endDrag();
    if (madeUp && (message == WM_NCCREATE || message == WM_CREATE || message == WM_CLOSE))
        return 0;
    return DefWindowProc(window, message, wParam, lParam);
}

class MonkeyTest : public DesktopFixture, public testing::WithParamInterface<unsigned> {};

TEST_P(MonkeyTest, NothingBreaks) {
    WNDCLASS windows{};
    windows.lpfnWndProc = &monkeyProcedure;
    windows.style = CS_DBLCLKS | CS_HREDRAW;
    windows.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    windows.lpszClassName = "Monkey";
    RegisterClass(&windows);
    windows.style = CS_OWNDC;
    windows.lpszClassName = "MonkeyOwn";
    RegisterClass(&windows);
    {
        Monkey player(GetParam(), screen);
        for (int i = 0; i < 8; ++i)
            player.create();
        for (int step = 0; step < 250; ++step) {
            player.act();
            if (step % 5 == 0)
                desktop->settle(50);
            ASSERT_EQ(vndk::win32::verifyWindows(), "") << "seed " << GetParam() << ", step " << step;
        }
    }
    LockWindowUpdate(nullptr);
    settle();
    desktop.reset();
}

INSTANTIATE_TEST_SUITE_P(Seeds, MonkeyTest, testing::Range(1U, 21U));

} // namespace
