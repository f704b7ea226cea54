#include "screen/memory.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace vndk::screen {

namespace {

std::size_t pixelCount(int width, int height) {
    assert(width >= 1 && width <= 16384 && height >= 1 && height <= 16384 && "a screen has a sensible size");
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

} // namespace

MemoryScreen::MemoryScreen(int width, int height)
    : width_(width), height_(height), pixels_(pixelCount(width, height), 0xFF000000) {}

MemoryScreen::~MemoryScreen() = default;

void MemoryScreen::post(Event event) {
    if (event.time == 0)
        event.time = now_;
    events_.push_back(event);
}

void MemoryScreen::resize(int width, int height) {
    pixels_.assign(pixelCount(width, height), 0xFF000000);
    width_ = width;
    height_ = height;
    Event event;
    event.kind = Event::Kind::resized;
    post(event);
}

void MemoryScreen::advance(std::uint32_t milliseconds) { now_ += milliseconds; }

std::uint64_t MemoryScreen::takePresented() { return std::exchange(presented_, 0); }
const CursorImage* MemoryScreen::cursor() const { return cursorShown_ ? &cursor_ : nullptr; }
const std::string& MemoryScreen::title() const { return title_; }
int MemoryScreen::beeps() const { return beeps_; }

Surface MemoryScreen::surface() { return {pixels_.data(), width_, height_}; }

void MemoryScreen::present(std::span<const Rect> changed) {
    for (const Rect& rect : changed) {
        const int left = std::max(rect.x, 0);
        const int top = std::max(rect.y, 0);
        const int right = std::min(rect.x + rect.width, width_);
        const int bottom = std::min(rect.y + rect.height, height_);
        if (left < right && top < bottom)
            presented_ += static_cast<std::uint64_t>(right - left) * static_cast<std::uint64_t>(bottom - top);
    }
}

bool MemoryScreen::nextEvent(Event& event) {
    if (events_.empty())
        return false;
    event = events_.front();
    events_.pop_front();
    return true;
}

void MemoryScreen::wait(int milliseconds) {
    if (events_.empty() && milliseconds > 0)
        now_ += static_cast<std::uint32_t>(milliseconds);
}

void MemoryScreen::setCursor(const CursorImage* cursor) {
    cursorShown_ = cursor != nullptr;
    if (cursor != nullptr)
        cursor_ = *cursor;
}

void MemoryScreen::moveCursor(int x, int y) {
    Event event;
    event.kind = Event::Kind::mouseMove;
    event.x = x;
    event.y = y;
    post(event);
}

std::string MemoryScreen::clipboardText() { return clipboard_; }

bool MemoryScreen::setClipboardText(std::string_view text) {
    clipboard_ = text;
    return true;
}

std::uint32_t MemoryScreen::clock() { return now_; }
void MemoryScreen::setTitle(std::string_view title) { title_ = title; }
void MemoryScreen::beep() { ++beeps_; }

} // namespace vndk::screen
