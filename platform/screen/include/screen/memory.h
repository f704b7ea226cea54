// A screen in memory, for tests, pictures and batch: events are put in by hand, the clock moves only when told.
#pragma once

#include "screen/screen.h"

#include <deque>

namespace vndk::screen {

class MemoryScreen : public Screen {
public:
    /// REQUIRES: both sizes from 1 to 16384.
    MemoryScreen(int width, int height);
    ~MemoryScreen() override;

    /// Queues what a user did. The time is set to the clock when it is 0.
    void post(Event event);
    /// Gives the surface a new size and queues `resized`.
    void resize(int width, int height);
    /// Moves the clock on.
    void advance(std::uint32_t milliseconds);

    /// Pixels presented since the last call of takePresented; what counts is their number, each rectangle for itself.
    [[nodiscard]] std::uint64_t takePresented();
    [[nodiscard]] const CursorImage* cursor() const;
    [[nodiscard]] const std::string& title() const;
    [[nodiscard]] int beeps() const;

    [[nodiscard]] Surface surface() override;
    void present(std::span<const Rect> changed) override;
    bool nextEvent(Event& event) override;
    void wait(int milliseconds) override;
    void setCursor(const CursorImage* cursor) override;
    void moveCursor(int x, int y) override;
    [[nodiscard]] std::string clipboardText() override;
    bool setClipboardText(std::string_view text) override;
    [[nodiscard]] std::uint32_t clock() override;
    void setTitle(std::string_view title) override;
    void beep() override;

private:
    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
    std::deque<Event> events_;
    std::uint32_t now_ = 1000;
    std::uint64_t presented_ = 0;
    bool cursorShown_ = false;
    CursorImage cursor_;
    std::string clipboard_;
    std::string title_;
    int beeps_ = 0;
};

} // namespace vndk::screen
