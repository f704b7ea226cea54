// Posted messages, filters, quitting, and the order in which messages come.
#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "user/input_queue.h"
#include "user/message_queue.h"
#include "win32/error.h"

#include <string>
#include <vector>

namespace {

using namespace vndk::test;

class QueueTest : public DesktopFixture {
protected:
    void SetUp() override {
        recorder.registerClass();
        window = CreateWindow(MessageRecorder::className, "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 300, 200,
                              nullptr, nullptr, nullptr, nullptr);
        child = CreateWindow(MessageRecorder::className, "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50, window, nullptr,
                             nullptr, nullptr);
        settle();
        recorder.clear();
    }

    static UINT peek(HWND filter = nullptr, UINT first = 0, UINT last = 0, UINT flags = PM_REMOVE) {
        MSG message{};
        return PeekMessage(&message, filter, first, last, flags) != FALSE ? message.message : 0;
    }
    /// All that comes, until the queue is empty.
    static std::vector<UINT> drain() {
        std::vector<UINT> messages;
        while (const UINT message = peek())
            messages.push_back(message);
        return messages;
    }

    MessageRecorder recorder;
    HWND window = nullptr;
    HWND child = nullptr;
};

TEST_F(QueueTest, PostedMessagesComeInTheirOrderAndWithWhatTheyCarry) {
    user.moveTo(123, 45);
    settle();
    PostMessage(window, WM_USER, 1, 2);
    screen.advance(5);
    PostMessage(window, WM_USER + 1, 3, 4);
    PostMessage(nullptr, WM_USER + 2, 5, 6);
    MSG message{};
    ASSERT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_NOREMOVE));
    ASSERT_TRUE(PeekMessage(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, WM_USER);
    EXPECT_EQ(message.hwnd, window);
    EXPECT_EQ(message.wParam, 1u);
    EXPECT_EQ(message.lParam, 2);
    EXPECT_EQ(message.pt.x, 123);
    EXPECT_EQ(GetMessagePos(), static_cast<DWORD>(MAKELPARAM(123, 45)));
    const LONG first = GetMessageTime();
    ASSERT_GT(GetMessage(&message, nullptr, 0, 0), 0);
    EXPECT_EQ(message.message, WM_USER + 1);
    EXPECT_EQ(GetMessageTime() - first, 5);
    ASSERT_GT(GetMessage(&message, nullptr, 0, 0), 0);
    EXPECT_EQ(message.hwnd, nullptr);
    EXPECT_EQ(DispatchMessage(&message), 0) << "a message of the thread goes nowhere";
}

TEST_F(QueueTest, FiltersTakeWhatFitsAndLeaveTheRestInOrder) {
    const auto fill = [&] {
        drain();
        PostMessage(window, WM_KEYDOWN, 'A', 0);
        PostMessage(child, WM_USER, 0, 0);
        PostMessage(nullptr, WM_USER + 1, 0, 0);
        PostMessage(window, WM_CHAR, 'a', 0);
        PostMessage(window, WM_KEYUP, 'A', 0);
    };
    const HWND threadOnly = reinterpret_cast<HWND>(~UINT_PTR{0});
    const struct {
        const char* name;
        HWND filter;
        UINT first, last;
        UINT taken;
    } cases[] = {{"one number", nullptr, WM_CHAR, WM_CHAR, WM_CHAR},
                 {"a range", nullptr, WM_KEYUP, WM_CHAR, WM_CHAR},
                 {"child", child, 0, 0, WM_USER},
                 {"parent and its child", window, WM_USER, WM_USER, WM_USER},
                 {"thread", threadOnly, 0, 0, WM_USER + 1},
                 {"none", child, WM_CHAR, WM_CHAR, 0}};
    for (const auto& row : cases) {
        fill();
        EXPECT_EQ(peek(row.filter, row.first, row.last, PM_NOREMOVE), row.taken) << row.name;
        EXPECT_EQ(peek(row.filter, row.first, row.last), row.taken) << row.name;
        std::vector<UINT> rest{WM_KEYDOWN, WM_USER, WM_USER + 1, WM_CHAR, WM_KEYUP};
        std::erase(rest, row.taken);
        EXPECT_EQ(drain(), rest) << row.name;
    }
}

TEST_F(QueueTest, KindsComeInTheirDocumentedOrder) {
    SetTimer(window, 1, 10, nullptr);
    screen.advance(20);
    InvalidateRect(window, nullptr, FALSE);
    SetFocus(window);
    user.keyDown(VK_LEFT);
    PostQuitMessage(7);
    PostMessage(window, WM_USER, 0, 0);
    std::vector<UINT> order;
    MSG message{};
    while (order.size() < 20 && PeekMessage(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        order.push_back(message.message);
        if (message.message == WM_PAINT)
            ValidateRect(window, nullptr);
        if (message.message == WM_QUIT) {
            EXPECT_EQ(message.wParam, 7u);
        }
    }
    EXPECT_EQ(order, (std::vector<UINT>{WM_USER, WM_QUIT, WM_KEYDOWN, WM_PAINT, WM_TIMER}));
}

TEST_F(QueueTest, QuittingWaitsUntilNothingPostedIsLeft) {
    PostQuitMessage(3);
    PostMessage(window, WM_USER, 0, 0);
    MSG message{};
    EXPECT_EQ(peek(nullptr, WM_USER + 5, WM_USER + 5), 0u);
    EXPECT_GT(GetMessage(&message, nullptr, 0, 0), 0);
    EXPECT_EQ(GetMessage(&message, nullptr, 0, 0), 0);
    EXPECT_EQ(message.wParam, 3u);
    EXPECT_EQ(peek(), 0u) << "it comes once";
    PostQuitMessage(4);
    EXPECT_EQ(settle(), 0);
    EXPECT_EQ(GetMessage(&message, nullptr, 0, 0), 0) << "settling leaves it to the program";
}

TEST_F(QueueTest, MessagesOfDeadWindowsDontCome) {
    PostMessage(child, WM_USER, 0, 0);
    PostMessage(window, WM_USER + 1, 0, 0);
    DestroyWindow(child);
    EXPECT_EQ(peek(nullptr, WM_USER, WM_USER), 0u);
    EXPECT_EQ(peek(nullptr, WM_USER, WM_USER + 1), WM_USER + 1);
    SetLastError(ERROR_SUCCESS);
    EXPECT_FALSE(PostMessage(child, WM_USER, 0, 0));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    MSG message{};
    EXPECT_EQ(GetMessage(&message, child, 0, 0), -1);
    EXPECT_FALSE(PeekMessage(&message, child, 0, 0, PM_REMOVE));
    EXPECT_EQ(GetMessage(nullptr, nullptr, 0, 0), -1);
    EXPECT_FALSE(PeekMessage(nullptr, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(DispatchMessage(nullptr), 0);
    EXPECT_FALSE(TranslateMessage(nullptr));
    message = {child, WM_USER, 0, 0, 0, {0, 0}};
    EXPECT_EQ(DispatchMessage(&message), 0);
}

TEST_F(QueueTest, AFullQueueRefusesPostsButNotInput) {
    for (std::size_t i = 0; i < vndk::win32::postedLimit; ++i)
        ASSERT_TRUE(PostMessage(window, WM_USER, i, 0));
    EXPECT_FALSE(PostMessage(window, WM_USER, 0, 0));
    EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_QUOTA);
    EXPECT_TRUE(vndk::win32::postInput(window, WM_MOUSELEAVE, 0, 0));
    EXPECT_EQ(drain().size(), vndk::win32::postedLimit + 1);
}

TEST_F(QueueTest, WaitingPresentsAndMovesToTheNextTimer) {
    SetTimer(window, 1, 250, nullptr);
    const DWORD before = GetTickCount();
    MSG message{};
    EXPECT_GT(GetMessage(&message, nullptr, WM_TIMER, WM_TIMER), 0);
    EXPECT_EQ(GetTickCount() - before, 250u) << "a screen in memory doesn't sleep";
    KillTimer(window, 1);
    EXPECT_EQ(GetMessage(&message, nullptr, 0, 0), 0) << "nothing can ever come: the loop is ended, not hung";
}

TEST_F(QueueTest, StatusTellsWhatIsThereAndWhatIsNew) {
    GetQueueStatus(QS_ALLINPUT);
    EXPECT_EQ(GetQueueStatus(QS_ALLINPUT), 0u);
    PostMessage(window, WM_USER, 0, 0);
    user.moveTo(50, 50);
    EXPECT_EQ(GetQueueStatus(QS_POSTMESSAGE), static_cast<DWORD>(MAKELONG(QS_POSTMESSAGE, QS_POSTMESSAGE)));
    EXPECT_EQ(GetQueueStatus(QS_ALLINPUT), static_cast<DWORD>(MAKELONG(QS_MOUSEMOVE, QS_POSTMESSAGE | QS_MOUSEMOVE)))
        << "the posted one is known by now";
    drain();
    user.keyDown(VK_F2);
    EXPECT_EQ(HIWORD(GetQueueStatus(QS_KEY)), QS_KEY);
    EXPECT_TRUE(WaitMessage());
    drain();
    InvalidateRect(window, nullptr, FALSE);
    EXPECT_EQ(HIWORD(GetQueueStatus(QS_PAINT)), QS_PAINT);
}

// The hooks have no place of their own for what they see.
std::vector<UINT> seenByHook;

LRESULT CALLBACK countAndChange(int code, WPARAM wParam, LPARAM lParam) {
    auto* message = reinterpret_cast<MSG*>(lParam);
    if (code == HC_ACTION && wParam == PM_REMOVE) {
        seenByHook.push_back(message->message);
        if (message->message == WM_USER)
            message->message = WM_NULL;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK eatKeys(int code, WPARAM, LPARAM lParam) {
    const auto* message = reinterpret_cast<const MSG*>(lParam);
    return code == MSGF_MENU && message->message == WM_USER + 1 ? 1 : 0;
}

TEST_F(QueueTest, HooksSeeMessagesAndMayChangeOrEatThem) {
    seenByHook.clear();
    const HHOOK getMessage = SetWindowsHookEx(WH_GETMESSAGE, &countAndChange, nullptr, GetCurrentThreadId());
    PostMessage(window, WM_USER, 0, 0);
    PostMessage(window, WM_USER + 1, 0, 0);
    EXPECT_EQ(drain().size(), 0u) << "the first one has become WM_NULL, which ends the loop";
    EXPECT_EQ(seenByHook, (std::vector<UINT>{WM_USER}));
    EXPECT_TRUE(UnhookWindowsHookEx(getMessage));

    const HHOOK filter = SetWindowsHookEx(WH_MSGFILTER, &eatKeys, nullptr, GetCurrentThreadId());
    PostMessage(window, WM_USER + 2, 0, 0);
    MSG message{};
    EXPECT_TRUE(vndk::win32::nextModalMessage(message, MSGF_MENU));
    EXPECT_EQ(message.message, WM_USER + 2) << "the one before was eaten";
    EXPECT_FALSE(CallMsgFilter(&message, MSGF_MENU));
    PostQuitMessage(5);
    EXPECT_FALSE(vndk::win32::nextModalMessage(message, MSGF_MENU));
    EXPECT_EQ(GetMessage(&message, nullptr, 0, 0), 0) << "the quit message is still there for the outer loop";
    EXPECT_EQ(message.wParam, 5u);
    UnhookWindowsHookEx(filter);
}

TEST_F(QueueTest, HandlersMayRunLoopsOfTheirOwn) {
    int depth = 0;
    recorder.onMessage(WM_USER, [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (++depth < 3)
            settle();
        return 0;
    });
    recorder.onMessage(WM_LBUTTONDOWN, [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        settle();
        return 0;
    });
    for (int i = 0; i < 5; ++i)
        PostMessage(window, WM_USER, 0, 0);
    user.click(60, 90);
    user.click(65, 95);
    settle();
    EXPECT_EQ(recorder.count(WM_USER), 5);
    EXPECT_EQ(recorder.count(WM_LBUTTONDOWN), 2);
    EXPECT_EQ(recorder.count(WM_LBUTTONUP), 2);
}

} // namespace
