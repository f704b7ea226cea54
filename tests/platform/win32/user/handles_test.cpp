// Every call that takes a handle, with handles that name nothing and with numbers that nobody means.
#include "handle_calls.h"
#include "support/desktop_fixture.h"
#include "user/window_position.h"

#include "win32/accelerators.h"
#include "win32/combobox.h"
#include "win32/imagelist.h"
#include "win32/scrollbar.h"
#include "win32/windows.h"

#include <array>
#include <climits>
#include <functional>
#include <type_traits>
#include <vector>

using namespace vndk::test;

namespace {

enum class Kind { none, window, context, menu, bitmap, brush, region, icon, imageList, untyped };

template <typename T>
constexpr Kind kindOf() {
    if constexpr (std::is_same_v<T, HWND>)
        return Kind::window;
    else if constexpr (std::is_same_v<T, HDC>)
        return Kind::context;
    else if constexpr (std::is_same_v<T, HMENU>)
        return Kind::menu;
    else if constexpr (std::is_same_v<T, HBITMAP>)
        return Kind::bitmap;
    else if constexpr (std::is_same_v<T, HBRUSH>)
        return Kind::brush;
    else if constexpr (std::is_same_v<T, HRGN>)
        return Kind::region;
    else if constexpr (std::is_same_v<T, HICON> || std::is_same_v<T, HCURSOR>)
        return Kind::icon;
    else if constexpr (std::is_same_v<T, HIMAGELIST>)
        return Kind::imageList;
    else if constexpr (std::is_same_v<T, HACCEL> || std::is_same_v<T, HINSTANCE> || std::is_same_v<T, HRSRC> ||
                       std::is_same_v<T, HHOOK> || std::is_same_v<T, HDWP> || std::is_same_v<T, HANDLE>)
        return Kind::untyped; // HANDLE and HGDIOBJ are pointers to anything
    else
        return Kind::none;
}
template <typename T>
constexpr bool isHandle = kindOf<T>() != Kind::none;

/// What stands for the parameters of each kind.
struct Arguments {
    std::function<UINT_PTR(Kind)> handle;
    void* memory = nullptr; // for pointers; null, or room for any structure, all zero
    int number = 0;
};

struct Call {
    const char* name;
    /// Answers whether the result tells of a failure: FALSE, null or -1; numbers of other kinds always do.
    std::function<bool(const Arguments&)> run;
    bool beginsWithHandle;
};

template <typename T>
T valueFor(const Arguments& given) {
    if constexpr (isHandle<T>)
        return reinterpret_cast<T>(given.handle(kindOf<T>()));
    else if constexpr (std::is_pointer_v<T> && std::is_function_v<std::remove_pointer_t<T>>)
        return nullptr;
    else if constexpr (std::is_pointer_v<T>)
        return reinterpret_cast<T>(given.memory);
    else if constexpr (std::is_arithmetic_v<T>)
        return static_cast<T>(given.number);
    else
        return T{};
}

template <typename R, typename... A>
Call makeCall(const char* name, R (*call)(A...)) {
    Call made{name, {}, isHandle<std::tuple_element_t<0, std::tuple<A...>>>};
    made.run = [call](const Arguments& given) {
        std::tuple<A...> values{valueFor<A>(given)...};
        const R result = std::apply(call, values);
        if constexpr (std::is_pointer_v<R>)
            return result == nullptr;
        else if constexpr (std::is_same_v<R, BOOL>)
            return result == FALSE || result == -1;
        else
            return true;
    };
    return made;
}

const std::vector<Call>& calls() {
#define VNDK_MAKE_CALL(name) makeCall(#name, &::name),
    static const std::vector<Call> all{VNDK_HANDLE_CALLS(VNDK_MAKE_CALL)};
#undef VNDK_MAKE_CALL
    return all;
}

class HandlesTest : public DesktopFixture {
protected:
    static bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
        return std::find(names.begin(), names.end(), name) != names.end();
    }
    static HWND makeWindow() {
        return CreateWindow("Static", "", WS_POPUP | WS_VISIBLE, 10, 10, 100, 80, nullptr, nullptr, nullptr, nullptr);
    }
    /// Handles of every kind whose objects are gone, numbers that never were one, and those of living objects, which
    /// are another kind's for most calls.
    static std::vector<UINT_PTR> handlesOfNothing() {
        const auto number = [](auto handle) { return reinterpret_cast<UINT_PTR>(handle); };
        const HWND window = makeWindow();
        const HMENU menu = CreateMenu();
        const HDC dc = CreateCompatibleDC(nullptr);
        const HBRUSH brush = CreateSolidBrush(0);
        const HRGN region = CreateRectRgn(0, 0, 1, 1);
        const HIMAGELIST list = ImageList_Create(2, 2, ILC_COLOR, 1, 1);
        const BYTE bits[2] = {};
        const HICON icon = CreateIcon(nullptr, 1, 1, 1, 1, bits, bits);
        std::vector<UINT_PTR> made{number(window), number(menu), number(dc),  number(brush),
                                   number(region), number(list), number(icon)};
        DestroyWindow(window);
        DestroyMenu(menu);
        DeleteDC(dc);
        DeleteObject(brush);
        DeleteObject(region);
        ImageList_Destroy(list);
        DestroyIcon(icon);
        made.insert(made.end(), {1, 0xFFFF, 0x12345, 0x10000001, 0x7FFFFFFF, ~UINT_PTR{0}, ~UINT_PTR{0} << 48});
        return made;
    }

    alignas(16) std::array<char, 8192> memory{};
};

TEST_F(HandlesTest, ThatNameNothingAreRefusedByEveryCall) {
    // These answer something else than a failure, whatever they are asked about; 0xFFFF means every window.
    const auto answersAnyway = [](std::string_view name) {
        return isOneOf(name, {"GlobalFree", "LocalFree", "LockResource", "CreateCompatibleDC", "SetCursor", "EndPaint",
                              "GetLastActivePopup", "PostMessageA"});
    };
    const std::vector<UINT_PTR> bad = handlesOfNothing();
    for (const Call& call : calls())
        for (const UINT_PTR handle : bad)
            for (void* const room : {static_cast<void*>(nullptr), static_cast<void*>(memory.data())}) {
                memory.fill(0);
                const bool failed = call.run({[handle](Kind) { return handle; }, room, 0});
                EXPECT_TRUE(failed || !call.beginsWithHandle || answersAnyway(call.name))
                    << call.name << " with 0x" << std::hex << handle;
            }
    settle();
}

/// A living object of each kind, for one call.
class LivingObjects {
public:
    LivingObjects() {
        const BYTE bits[8] = {};
        icon_ = CreateIcon(nullptr, 2, 2, 1, 1, bits, bits);
        ImageList_ReplaceIcon(list_, -1, icon_);
        AppendMenu(menu_, MF_STRING, 1, "item");
        SelectObject(dc_, canvas_);
    }
    ~LivingObjects() {
        ReleaseCapture();
        LockWindowUpdate(nullptr);
        CloseClipboard();
        DestroyWindow(window_);
        DestroyMenu(menu_);
        DeleteDC(dc_);
        for (const HGDIOBJ object : {HGDIOBJ{canvas_}, HGDIOBJ{bitmap_}, HGDIOBJ{brush_}, HGDIOBJ{region_}})
            DeleteObject(object);
        DestroyIcon(icon_);
        ImageList_Destroy(list_);
    }
    LivingObjects(const LivingObjects&) = delete;
    LivingObjects& operator=(const LivingObjects&) = delete;

    [[nodiscard]] UINT_PTR of(Kind kind) const {
        const auto number = [](auto handle) { return reinterpret_cast<UINT_PTR>(handle); };
        switch (kind) {
        case Kind::window:
            return number(window_);
        case Kind::context:
            return number(dc_);
        case Kind::menu:
            return number(menu_);
        case Kind::brush:
            return number(brush_);
        case Kind::bitmap:
            return number(bitmap_);
        case Kind::region:
            return number(region_);
        case Kind::icon:
            return number(icon_);
        case Kind::imageList:
            return number(list_);
        default: // may be the address of a buffer
            return 0;
        }
    }

private:
    HWND window_ = CreateWindow("Edit", "text", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 100, 80, nullptr, nullptr,
                                nullptr, nullptr);
    HMENU menu_ = CreatePopupMenu();
    HDC dc_ = CreateCompatibleDC(nullptr);
    HBITMAP canvas_ = CreateBitmap(20, 20, 1, 32, nullptr);
    HBITMAP bitmap_ = CreateBitmap(4, 4, 1, 1, nullptr);
    HBRUSH brush_ = CreateSolidBrush(RGB(1, 2, 3));
    HRGN region_ = CreateRectRgn(0, 0, 5, 5);
    HICON icon_ = nullptr;
    HIMAGELIST list_ = ImageList_Create(2, 2, ILC_COLOR24 | ILC_MASK, 1, 1);
};

TEST_F(HandlesTest, OfLivingObjectsStandNumbersThatNobodyMeans) {
    // These wait for a user, or take a number for the address of something.
    const auto isOther = [](std::string_view name) {
        return isOneOf(name, {"DragDetect", "MessageBoxA", "TrackPopupMenu", "TrackPopupMenuEx", "SendMessageA",
                              "PostMessageA", "DefWindowProcA", "DefDlgProcA", "CallWindowProcA", "SendDlgItemMessageA",
                              "DrawStateA", "CallNextHookEx"});
    };
    for (const Call& call : calls()) {
        if (isOther(call.name))
            continue;
        SCOPED_TRACE(call.name);
        for (const int number : {-1, INT_MIN, INT_MAX, 0x7FFF, -0x8000, 0x10000}) {
            const LivingObjects living;
            (void)call.run({[&](Kind kind) { return living.of(kind); }, nullptr, number});
            ASSERT_EQ(vndk::win32::verifyWindows(), "") << number;
            settle();
        }
    }
}

} // namespace
