// Writes down the messages that windows get, and compares them with a sequence that is expected.
//
//     MessageRecorder recorder;
//     recorder.registerClass();                           // windows of this class are recorded from their birth
//     const HWND window = CreateWindow(MessageRecorder::className, ...);
//     recorder.watch(GetDlgItem(...));                    // so are windows of any other class, from now on
//     recorder.clear();
//     ShowWindow(window, SW_SHOW);
//     EXPECT_TRUE(recorder.saw({{WM_SHOWWINDOW, sent | wparam, 1},
//                               {WM_WINDOWPOSCHANGING, sent | wparam, SWP_SHOWWINDOW | SWP_NOSIZE | SWP_NOMOVE},
//                               {WM_ERASEBKGND, sent | optional}}));
//
// WM_WINDOWPOSCHANGING and WM_WINDOWPOSCHANGED, whose wParam means nothing, carry the position's flags there.
#pragma once

#include "win32/queue.h"
#include "win32/window.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vndk::test {

/// What an expected message says of itself. Without `sent` or `posted` both will do.
enum MessageFlags : unsigned {
    sent = 0x01,
    posted = 0x02,     // it came out of the queue
    wparam = 0x04,     // wParam has to be equal
    lparam = 0x08,     // lParam has to be equal
    parent = 0x10,     // the window that was named by setParent got it, and not the other ones
    optional = 0x20,   // it may be missing
    defwinproc = 0x40, // it was sent by the default handling of another message, or of the hook's owner
    hook = 0x80,       // not a message: a code of WH_CBT (HCBT_*)
    answer = 0x100,    // the result has to be equal
};

struct ExpectedMessage {
    UINT message = 0;
    unsigned flags = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    LRESULT result = 0;
};

struct RecordedMessage {
    HWND window = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    LRESULT result = 0;
    bool posted = false;
    bool byDefault = false;
    bool hook = false;
};

/// "WM_SIZE", or the number of a message that has no name here.
[[nodiscard]] std::string nameOfMessage(UINT message);

/// One at a time, on the desktop that is current when it is made.
class MessageRecorder {
public:
    static constexpr LPCSTR className = "RecordedWindow";

    MessageRecorder();
    ~MessageRecorder();
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;

    /// A class whose windows are recorded; what they don't answer goes to DefWindowProc.
    void registerClass(LPCSTR name = className, UINT style = 0);
    /// Records a window of another class, too, by taking the place of its procedure.
    void watch(HWND window);
    /// Records the codes of WH_CBT (wParam and lParam as the hook gets them).
    void watchHooks();
    /// Whose messages are the parent's in expectations.
    void setParent(HWND window) { parent_ = window; }

    /// Takes the place of a recorded window's own handling when it answers something; null takes it off.
    using Handler = std::function<std::optional<LRESULT>(HWND, UINT, WPARAM, LPARAM)>;
    void onMessage(UINT message, Handler handler);
    /// Messages that aren't written down: hit tests, questions about text and icons are left out from the start.
    void ignore(std::initializer_list<UINT> messages) { ignored_.insert(messages.begin(), messages.end()); }
    void notice(std::initializer_list<UINT> messages) {
        for (const UINT message : messages)
            ignored_.erase(message);
    }

    void clear() { messages_.clear(); }
    [[nodiscard]] const std::vector<RecordedMessage>& messages() const { return messages_; }
    /// How often a message came, to any of the windows or to one.
    [[nodiscard]] int count(UINT message, HWND window = nullptr) const;

    /// Compares with all that came since `clear`, and clears.
    [[nodiscard]] testing::AssertionResult saw(const std::vector<ExpectedMessage>& expected);

private:
    static LRESULT CALLBACK recordingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK onGetMessage(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK onCbt(int code, WPARAM wParam, LPARAM lParam);

    LRESULT handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT passOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] bool wasPosted(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] bool fits(const ExpectedMessage& expected, const RecordedMessage& recorded) const;
    [[nodiscard]] std::string listOf(const std::vector<ExpectedMessage>& expected, std::size_t mismatch) const;
    [[nodiscard]] std::string listOfRecorded(std::size_t mismatch) const;

    std::vector<RecordedMessage> messages_;
    std::map<HWND, WNDPROC> watched_;
    std::map<UINT, Handler> handlers_;
    std::set<UINT> ignored_;
    std::vector<MSG> taken_; // out of the queue, not yet dispatched
    HHOOK getMessageHook_ = nullptr;
    HHOOK cbtHook_ = nullptr;
    HWND parent_ = nullptr;
    int inDefault_ = 0;
};

} // namespace vndk::test
