// Tool tips. The tools, the one that the pointer is over, and the timers that show and hide its text.
//
// Not done: balloons and titles, which are newer than this control's version; TTM_RELAYEVENT by hooks (TTF_SUBCLASS and
// relayed messages cover what tools need).
#pragma once

#include "controls/control.h"
#include "win32/tooltip.h"

#include <optional>
#include <vector>

namespace vndk::win32 {

class ToolTip : public Control {
public:
    using Control::Control;
    ~ToolTip() override;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// A message that was sent to `target`, which may be a tool's window.
    void relay(HWND target, UINT message, LPARAM lParam);

private:
    enum class TextKind : std::uint8_t { text, resource, callback };

    struct Tool {
        UINT flags = 0;
        HWND window = nullptr;
        UINT_PTR id = 0;
        RECT rect{};
        HINSTANCE instance = nullptr;
        TextKind kind = TextKind::text;
        std::string text;
        UINT stringId = 0;
        LPARAM parameter = 0;

        /// The window whose messages matter.
        [[nodiscard]] HWND source() const { return (flags & TTF_IDISHWND) != 0 ? reinterpret_cast<HWND>(id) : window; }
    };

    using Index = std::optional<std::size_t>;

    // Tools.
    [[nodiscard]] static bool wellFormed(const TOOLINFO* info);
    [[nodiscard]] Index find(const TOOLINFO* info) const;
    [[nodiscard]] Index toolAt(HWND source, POINT screen) const;
    [[nodiscard]] Index toolUnderPointer() const;
    static void setText(Tool& tool, LPSTR text, HINSTANCE instance);
    static void takeOver(Tool& tool, const TOOLINFO& info);
    void give(const Tool& tool, TOOLINFO& info) const;
    bool addTool(const TOOLINFO* info);
    void deleteTool(const TOOLINFO* info);
    bool giveText(WPARAM size, TOOLINFO* info);
    bool hitTest(TTHITTESTINFO* info);
    [[nodiscard]] std::string textOf(std::size_t index);
    std::string askForText(std::size_t index);

    // Showing and hiding.
    void pointerMoved(HWND source, POINT screen);
    void onTimer(UINT_PTR id);
    void show(std::size_t index);
    void hide();
    void rest();
    void stopWaiting();
    [[nodiscard]] bool ownerIsActive(const Tool& tool) const;
    [[nodiscard]] SIZE bubbleSize(const std::string& text) const;
    [[nodiscard]] POINT placeFor(const Tool& tool, SIZE size) const;
    void trackActivate(bool on, const TOOLINFO* info);
    void textChanged(std::size_t index);
    LRESULT tell(const Tool& tool, UINT code) const;
    void setDelay(WPARAM which, int milliseconds);
    [[nodiscard]] int delay(WPARAM which) const;

    // Messages.
    void onCreate();
    void paint(HDC given) const;
    [[nodiscard]] HFONT font() const;
    bool handleToolMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool handleStateMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

    std::vector<Tool> tools_;
    bool active_ = true;
    Index current_; // the tool that the pointer is over, or that is tracked
    bool shown_ = false;
    bool waiting_ = false; // the delay runs after which the tip shows
    bool tracked_ = false;
    POINT trackPoint_{};
    POINT lastPointer_{-0x7FFF, -0x7FFF};
    std::string shownText_;
    int initialDelay_ = -1; // milliseconds; -1: from the double click time
    int reshowDelay_ = -1;
    int autoPopDelay_ = -1;
    int maxWidth_ = -1; // pixels; -1: one line
    RECT margin_{};
    std::optional<COLORREF> background_;
    std::optional<COLORREF> textColor_;
    HFONT font_ = nullptr;
};

void registerToolTip();

/// Makes a window relay its mouse messages to a tip, until it is destroyed. Once for each window.
void relayMessagesOf(HWND source, HWND tip);
/// Lets go of all windows that relay to the tip.
void stopRelayingTo(HWND source, HWND tip);

} // namespace vndk::win32
