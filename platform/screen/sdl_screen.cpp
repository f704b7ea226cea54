// The window of openWindow. The desktop's pixels are kept in a buffer of our own and copied, enlarged by the scale,
// into the window's surface; uploading through a texture is many times slower on systems that draw in software.
#include "screen/sdl.h"

#include "sdl_keys.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>

#include <SDL.h>

namespace vndk::screen {

namespace {

constexpr int largestScale = 4;
constexpr int smallestWidth = 320; // desktop pixels; a smaller window shows a part of the desktop
constexpr int smallestHeight = 240;

MouseButton buttonOf(Uint8 button) {
    if (button == SDL_BUTTON_RIGHT)
        return MouseButton::right;
    return button == SDL_BUTTON_MIDDLE ? MouseButton::middle : MouseButton::left;
}

Held heldNow() {
    const SDL_Keymod keys = SDL_GetModState();
    const Uint32 buttons = SDL_GetMouseState(nullptr, nullptr);
    Held held;
    held.shift = (keys & KMOD_SHIFT) != 0;
    held.control = (keys & KMOD_CTRL) != 0;
    held.alt = (keys & KMOD_LALT) != 0;
    held.left = (buttons & SDL_BUTTON_LMASK) != 0;
    held.right = (buttons & SDL_BUTTON_RMASK) != 0;
    held.middle = (buttons & SDL_BUTTON_MMASK) != 0;
    return held;
}

/// Code points of UTF-8 that SDL made; a broken sequence ends the text.
std::vector<char32_t> decode(const char* utf8) {
    std::vector<char32_t> points;
    const auto* at = reinterpret_cast<const unsigned char*>(utf8);
    while (*at != 0) {
        const int extra = *at < 0x80 ? 0 : *at >= 0xF0 ? 3 : *at >= 0xE0 ? 2 : 1;
        char32_t point = extra == 0 ? *at : *at & (0x3F >> extra);
        ++at;
        for (int i = 0; i < extra; ++i, ++at) {
            if ((*at & 0xC0) != 0x80)
                return points;
            point = (point << 6) | (*at & 0x3F);
        }
        points.push_back(point);
    }
    return points;
}

class SdlScreen : public Screen {
public:
    SdlScreen(SDL_Window* window, int scale) : window_(window), scale_(scale) {
        resizeBuffer();
        SDL_StartTextInput();
    }

    ~SdlScreen() override {
        SDL_FreeCursor(cursor_);
        // Waiting for events wakes itself through a second connection: what is under way there must still find the
        // window, which hiding, as it waits for the server, makes sure of.
        SDL_HideWindow(window_);
        SDL_DestroyWindow(window_);
        SDL_Quit();
    }

    [[nodiscard]] Surface surface() override { return {pixels_.data(), width_, height_}; }
    void present(std::span<const Rect> changed) override;
    bool nextEvent(Event& event) override;
    void wait(int milliseconds) override;
    void setCursor(const CursorImage* cursor) override;
    void moveCursor(int x, int y) override { SDL_WarpMouseInWindow(window_, x * scale_, y * scale_); }

    [[nodiscard]] std::string clipboardText() override {
        char* text = SDL_GetClipboardText();
        std::string copy = text != nullptr ? text : "";
        SDL_free(text);
        return copy;
    }
    bool setClipboardText(std::string_view text) override {
        return SDL_SetClipboardText(std::string(text).c_str()) == 0;
    }
    [[nodiscard]] std::uint32_t clock() override { return SDL_GetTicks(); }
    void setTitle(std::string_view title) override { SDL_SetWindowTitle(window_, std::string(title).c_str()); }
    void beep() override {}

private:
    void resizeBuffer();
    void copyScaled(const Rect& rect, SDL_Surface& target) const;
    void translate(const SDL_Event& sdl);
    void translateWindow(const SDL_WindowEvent& sdl);
    void translateWheel(const SDL_MouseWheelEvent& sdl);
    Event& add(Event::Kind kind);
    [[nodiscard]] SDL_Surface* enlarged(const CursorImage& image) const;

    SDL_Window* window_;
    int scale_;
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> pixels_;
    std::deque<Event> events_;
    SDL_Cursor* cursor_ = nullptr;
    CursorImage shownCursor_;
};

void SdlScreen::resizeBuffer() {
    int width = 0;
    int height = 0;
    SDL_GetWindowSize(window_, &width, &height);
    width = std::clamp((width + scale_ - 1) / scale_, smallestWidth, 16384);
    height = std::clamp((height + scale_ - 1) / scale_, smallestHeight, 16384);
    if (width == width_ && height == height_)
        return;
    pixels_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0xFF000000);
    width_ = width;
    height_ = height;
    add(Event::Kind::resized);
}

void SdlScreen::copyScaled(const Rect& rect, SDL_Surface& target) const {
    const int columns = std::min(rect.width, target.w / scale_ - rect.x + 1);
    std::vector<std::uint32_t> line(static_cast<std::size_t>(std::max(columns, 0)) * static_cast<std::size_t>(scale_));
    const int usable = std::min(static_cast<int>(line.size()), target.w - rect.x * scale_);
    if (usable <= 0)
        return;
    for (int row = 0; row < rect.height; ++row) {
        const std::uint32_t* from = &pixels_[static_cast<std::size_t>(rect.y + row) * static_cast<std::size_t>(width_) +
                                             static_cast<std::size_t>(rect.x)];
        for (std::size_t i = 0; i < line.size(); ++i)
            line[i] = from[std::min(i / static_cast<std::size_t>(scale_), static_cast<std::size_t>(rect.width - 1))];
        for (int copy = 0; copy < scale_; ++copy) {
            const int y = (rect.y + row) * scale_ + copy;
            if (y >= target.h)
                return;
            auto* to = static_cast<unsigned char*>(target.pixels) + static_cast<std::ptrdiff_t>(y) * target.pitch;
            SDL_ConvertPixels(usable, 1, SDL_PIXELFORMAT_ARGB8888, line.data(), usable * 4, target.format->format,
                              to + static_cast<std::ptrdiff_t>(rect.x) * scale_ * target.format->BytesPerPixel,
                              target.pitch);
        }
    }
}

void SdlScreen::present(std::span<const Rect> changed) {
    SDL_Surface* target = SDL_GetWindowSurface(window_);
    if (target == nullptr)
        return;
    std::vector<SDL_Rect> shown;
    for (const Rect& rect : changed) {
        Rect inside;
        inside.x = std::max(rect.x, 0);
        inside.y = std::max(rect.y, 0);
        inside.width = std::min(rect.x + rect.width, width_) - inside.x;
        inside.height = std::min(rect.y + rect.height, height_) - inside.y;
        if (inside.width <= 0 || inside.height <= 0)
            continue;
        copyScaled(inside, *target);
        SDL_Rect enlargedRect{inside.x * scale_, inside.y * scale_, inside.width * scale_, inside.height * scale_};
        const SDL_Rect whole{0, 0, target->w, target->h};
        if (SDL_IntersectRect(&enlargedRect, &whole, &enlargedRect) == SDL_TRUE)
            shown.push_back(enlargedRect);
    }
    if (!shown.empty())
        SDL_UpdateWindowSurfaceRects(window_, shown.data(), static_cast<int>(shown.size()));
}

Event& SdlScreen::add(Event::Kind kind) {
    Event event;
    event.kind = kind;
    event.time = SDL_GetTicks();
    event.held = heldNow();
    events_.push_back(event);
    return events_.back();
}

void SdlScreen::translateWindow(const SDL_WindowEvent& sdl) {
    switch (sdl.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED:
        resizeBuffer();
        add(Event::Kind::exposed);
        break;
    case SDL_WINDOWEVENT_EXPOSED:
        add(Event::Kind::exposed);
        break;
    case SDL_WINDOWEVENT_LEAVE:
        add(Event::Kind::mouseLeave);
        break;
    case SDL_WINDOWEVENT_FOCUS_GAINED:
        add(Event::Kind::activated);
        break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        add(Event::Kind::deactivated);
        break;
    case SDL_WINDOWEVENT_CLOSE:
        add(Event::Kind::closeAsked);
        break;
    default:
        break;
    }
}

void SdlScreen::translateWheel(const SDL_MouseWheelEvent& sdl) {
    const float turns = sdl.direction == SDL_MOUSEWHEEL_FLIPPED ? -sdl.preciseY : sdl.preciseY;
    const int delta = static_cast<int>(turns * 120);
    if (delta == 0)
        return;
    Event& event = add(Event::Kind::wheel);
    event.x = sdl.mouseX / scale_;
    event.y = sdl.mouseY / scale_;
    event.delta = delta;
}

void SdlScreen::translate(const SDL_Event& sdl) {
    switch (sdl.type) {
    case SDL_MOUSEMOTION: {
        Event& event = add(Event::Kind::mouseMove);
        event.x = sdl.motion.x / scale_;
        event.y = sdl.motion.y / scale_;
        break;
    }
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
        if (sdl.button.button > SDL_BUTTON_RIGHT)
            break;
        const bool down = sdl.type == SDL_MOUSEBUTTONDOWN;
        // Dragging past the window's edge has to go on reporting.
        SDL_CaptureMouse(down ? SDL_TRUE : SDL_FALSE);
        Event& event = add(down ? Event::Kind::mouseDown : Event::Kind::mouseUp);
        event.x = sdl.button.x / scale_;
        event.y = sdl.button.y / scale_;
        event.button = buttonOf(sdl.button.button);
        break;
    }
    case SDL_MOUSEWHEEL:
        translateWheel(sdl.wheel);
        break;
    case SDL_KEYDOWN:
    case SDL_KEYUP: {
        Event& event = add(sdl.type == SDL_KEYDOWN ? Event::Kind::keyDown : Event::Kind::keyUp);
        event.key = keyCodeOf(sdl.key.keysym);
        event.repeat = sdl.key.repeat != 0;
        break;
    }
    case SDL_TEXTINPUT:
        for (const char32_t point : decode(sdl.text.text))
            add(Event::Kind::character).character = point;
        break;
    case SDL_WINDOWEVENT:
        translateWindow(sdl.window);
        break;
    case SDL_QUIT: // what SDL makes of SIGINT and SIGTERM
        add(Event::Kind::closeAsked);
        break;
    default:
        break;
    }
}

bool SdlScreen::nextEvent(Event& event) {
    SDL_Event sdl;
    while (SDL_PollEvent(&sdl) != 0)
        translate(sdl);
    if (events_.empty())
        return false;
    event = events_.front();
    events_.pop_front();
    return true;
}

void SdlScreen::wait(int milliseconds) {
    if (!events_.empty())
        return;
    SDL_Event sdl;
    if (milliseconds < 0 ? SDL_WaitEvent(&sdl) : SDL_WaitEventTimeout(&sdl, milliseconds))
        translate(sdl);
}

SDL_Surface* SdlScreen::enlarged(const CursorImage& image) const {
    SDL_Surface* surface =
        SDL_CreateRGBSurfaceWithFormat(0, image.width * scale_, image.height * scale_, 32, SDL_PIXELFORMAT_ARGB8888);
    if (surface == nullptr)
        return nullptr;
    for (int y = 0; y < surface->h; ++y) {
        auto* row = reinterpret_cast<std::uint32_t*>(static_cast<unsigned char*>(surface->pixels) +
                                                     static_cast<std::ptrdiff_t>(y) * surface->pitch);
        for (int x = 0; x < surface->w; ++x) {
            const auto index = static_cast<std::size_t>(y / scale_) * static_cast<std::size_t>(image.width) +
                               static_cast<std::size_t>(x / scale_);
            const bool inverts = index < image.inverted.size() && image.inverted[index];
            row[x] = inverts ? 0xFF000000 : image.pixels[index];
        }
    }
    return surface;
}

void SdlScreen::setCursor(const CursorImage* cursor) {
    if (cursor == nullptr) {
        SDL_ShowCursor(SDL_DISABLE);
        return;
    }
    SDL_ShowCursor(SDL_ENABLE);
    const bool same = cursor_ != nullptr && shownCursor_.width == cursor->width &&
                      shownCursor_.height == cursor->height && shownCursor_.hotX == cursor->hotX &&
                      shownCursor_.hotY == cursor->hotY && shownCursor_.pixels == cursor->pixels &&
                      shownCursor_.inverted == cursor->inverted;
    if (same || cursor->width <= 0 || cursor->height <= 0)
        return;
    SDL_Surface* picture = enlarged(*cursor);
    if (picture == nullptr)
        return;
    SDL_Cursor* made = SDL_CreateColorCursor(picture, cursor->hotX * scale_, cursor->hotY * scale_);
    SDL_FreeSurface(picture);
    if (made == nullptr)
        return;
    SDL_SetCursor(made);
    SDL_FreeCursor(cursor_);
    cursor_ = made;
    shownCursor_ = *cursor;
}

/// Without a display server SDL tries drivers that complain by themselves.
bool namesDisplay() { return std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr; }

/// SDL falls back on drivers that show nothing to anybody.
bool showsWindows() {
    const char* const driver = SDL_GetCurrentVideoDriver();
    return driver != nullptr && (std::strcmp(driver, "x11") == 0 || std::strcmp(driver, "wayland") == 0);
}

/// Xlib ends the program at any request that the server refuses, such as one for a window that has gone meanwhile.
/// None of them is worth a drawing that isn't saved. SDL puts the handler back that it finds at its start.
void passOverRefusedRequests() {
    using Handler = int (*)(void* display, void* error);
    void* const xlib = SDL_LoadObject("libX11.so.6"); // stays loaded; nothing to do where it isn't there
    if (xlib == nullptr)
        return;
    const auto setHandler = reinterpret_cast<Handler (*)(Handler)>(SDL_LoadFunction(xlib, "XSetErrorHandler"));
    if (setHandler != nullptr)
        setHandler([](void*, void*) { return 0; });
}

} // namespace

std::unique_ptr<Screen> openWindow(const WindowOptions& options, std::string& error) {
    passOverRefusedRequests();
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    SDL_SetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0"); // it has asked then
    if (!namesDisplay() || SDL_Init(SDL_INIT_VIDEO) != 0 || !showsWindows()) {
        error = "There is no display to open a window on. Start from a graphical session, or set DISPLAY.";
        SDL_Quit();
        return nullptr;
    }
    const int scale = std::clamp(options.scale, 1, largestScale);
    SDL_Window* window = SDL_CreateWindow(options.title.c_str(), SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                                          options.width * scale, options.height * scale, SDL_WINDOW_RESIZABLE);
    if (window == nullptr) {
        error = std::string("The window can't be opened: ") + SDL_GetError();
        SDL_Quit();
        return nullptr;
    }
    SDL_SetWindowMinimumSize(window, smallestWidth, smallestHeight);
    return std::make_unique<SdlScreen>(window, scale);
}

} // namespace vndk::screen
