// gallery: a developer's program that shows every control in all its states.
//
//     gallery [--scale N]             in a window
//     gallery --png FILE [--scale N]  as a picture of 960 x 780 pixels, times the scale, without a screen
#include "gallery.h"

#include "ed/host.h"
#include "screen/memory.h"
#ifdef VONDRAKE_HAS_WINDOW
#include "screen/sdl.h"
#endif
#include "win32/desktop.h"
#include "win32/picture.h"
#include "win32/queue.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace {

constexpr int kWidth = 960;
constexpr int kHeight = 800;

struct Arguments {
    std::string png;
    int scale = 1;
    bool wrong = false;
};

Arguments parse(int count, char** arguments) {
    Arguments parsed;
    for (int i = 1; i < count; ++i) {
        const std::string_view name = arguments[i];
        const bool hasValue = i + 1 < count;
        if (name == "--png" && hasValue)
            parsed.png = arguments[++i];
        else if (name == "--scale" && hasValue)
            parsed.scale = std::atoi(arguments[++i]);
        else
            parsed.wrong = true;
    }
    parsed.wrong = parsed.wrong || parsed.scale < 1 || parsed.scale > 4;
    return parsed;
}

/// A host whose drawing measures in feet and inches.
class Architect {
public:
    Architect() {
        host_.documents().appContextNewDocument(nullptr);
        constexpr short kArchitectural = 4;
        host_.variables().set("LUNITS", kArchitectural);
    }

private:
    vndk::host::Host host_;
};

/// Lets the mouse rest on the box for distances until its tool tip shows.
void restOnDistance(vndk::screen::MemoryScreen& screen, vndk::win32::Desktop& desktop, HWND box) {
    constexpr std::uint32_t kLong = 1000; // milliseconds
    POINT place{60, 10};
    ClientToScreen(box, &place);
    vndk::screen::Event move;
    move.kind = vndk::screen::Event::Kind::mouseMove;
    move.x = place.x;
    move.y = place.y;
    screen.post(move);
    MSG message{};
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE)
        AfxPumpMessage();
    screen.advance(kLong);
    desktop.settle();
}

int writePicture(const Arguments& arguments) {
    vndk::screen::MemoryScreen screen(kWidth, kHeight);
    vndk::win32::Desktop desktop(screen);
    const Architect architect;
    vndk::gallery::Gallery gallery;
    if (!gallery.open())
        return 1;
    desktop.settle();
    restOnDistance(screen, desktop, gallery.distanceBox());
    const vndk::screen::Surface surface = screen.surface();
    const vndk::win32::Picture shown =
        vndk::win32::copyPicture(surface.pixels, surface.width, {0, 0, surface.width, surface.height});
    const vndk::win32::Status status =
        vndk::win32::writePng(arguments.png, vndk::win32::enlargePicture(shown, arguments.scale));
    if (!status.ok()) {
        std::fprintf(stderr, "gallery: %s\n", status.message().c_str());
        return 1;
    }
    return 0;
}

int showWindow(const Arguments& arguments) {
#ifdef VONDRAKE_HAS_WINDOW
    std::string error;
    const auto screen = vndk::screen::openWindow(
        {.title = "Gallery of controls", .width = kWidth, .height = kHeight, .scale = arguments.scale}, error);
    if (screen == nullptr) {
        std::fprintf(stderr, "gallery: %s Use --png FILE for a picture.\n", error.c_str());
        return 2;
    }
    vndk::win32::Desktop desktop(*screen);
    CWinApp application("gallery");
    const Architect architect;
    vndk::gallery::Gallery gallery;
    if (!gallery.open())
        return 1;
    application.m_pMainWnd = &gallery;
    return application.Run();
#else
    std::fprintf(stderr, "gallery: built without SDL; use --png FILE for a picture.\n");
    return 2;
#endif
}

} // namespace

int main(int count, char** arguments) {
    const Arguments parsed = parse(count, arguments);
    if (parsed.wrong) {
        std::fprintf(stderr, "usage: gallery [--png FILE] [--scale 1..4]\n");
        return 2;
    }
    return parsed.png.empty() ? showWindow(parsed) : writePicture(parsed);
}
