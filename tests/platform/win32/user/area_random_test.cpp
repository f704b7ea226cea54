// Random windows are moved, sized, ordered, shown and hidden; each time the picture has to be the one that painting
// everything from back to front gives.
#include "support/desktop_fixture.h"
#include "win32/gdi.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace vndk::test;

constexpr int tile = 5;

// What a window shows follows from its number and the place in the client area, in tiles of few pixels.
std::uint32_t patternAt(UINT_PTR number, int x, int y) {
    const auto column = static_cast<UINT_PTR>(x / tile);
    const auto row = static_cast<UINT_PTR>(y / tile);
    return static_cast<std::uint32_t>((number * 0x3D0941 + column * 7 + row * 769) & 0xFFFFFF);
}

void paintTile(HDC dc, UINT_PTR number, int x, int y) {
    const std::uint32_t value = patternAt(number, x, y);
    const HBRUSH brush = CreateSolidBrush(RGB((value >> 16) & 0xFF, (value >> 8) & 0xFF, value & 0xFF));
    const RECT rect{x, y, x + tile, y + tile};
    FillRect(dc, &rect, brush);
    DeleteObject(brush);
}

LRESULT CALLBACK patternProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ERASEBKGND)
        return 1;
    if (message != WM_PAINT)
        return DefWindowProc(window, message, wParam, lParam);
    PAINTSTRUCT paint{};
    const HDC dc = BeginPaint(window, &paint);
    const auto number = static_cast<UINT_PTR>(GetWindowLongPtr(window, GWLP_USERDATA));
    for (int y = paint.rcPaint.top / tile * tile; y < paint.rcPaint.bottom; y += tile)
        for (int x = paint.rcPaint.left / tile * tile; x < paint.rcPaint.right; x += tile)
            paintTile(dc, number, x, y);
    EndPaint(window, &paint);
    return 0;
}

class AreaRandomTest : public DesktopFixture, public testing::WithParamInterface<unsigned> {
protected:
    static constexpr int width = 120;
    static constexpr int height = 90;

    void SetUp() override {
        screen.resize(width, height);
        settle();
        WNDCLASS windows{};
        windows.lpfnWndProc = &patternProcedure;
        windows.lpszClassName = "Pattern";
        RegisterClass(&windows);
    }

    int random(int least, int most) { return std::uniform_int_distribution<int>(least, most)(generator); }

    void create() {
        std::vector<HWND> parents{nullptr};
        for (const HWND each : all)
            if (GetParent(each) == nullptr)
                parents.push_back(each);
        const HWND parent = parents[static_cast<std::size_t>(random(0, static_cast<int>(parents.size()) - 1))];
        // Children that may overlap have to keep out of each other's and their parent's way; the others would paint
        // over each other in an order that nobody promises.
        const DWORD style = (parent != nullptr ? WS_CHILD : WS_POPUP) | WS_CLIPSIBLINGS | WS_CLIPCHILDREN |
                            (random(0, 3) != 0 ? WS_VISIBLE : 0);
        const HWND made = CreateWindow("Pattern", "", style, random(-20, width), random(-20, height), random(0, 90),
                                       random(0, 70), parent, nullptr, nullptr, nullptr);
        SetWindowLongPtr(made, GWLP_USERDATA, ++numbers);
        all.push_back(made);
    }

    void change() {
        constexpr UINT quietly = SWP_NOACTIVATE;
        const HWND window = all[static_cast<std::size_t>(random(0, static_cast<int>(all.size()) - 1))];
        const HWND other = all[static_cast<std::size_t>(random(0, static_cast<int>(all.size()) - 1))];
        switch (random(0, 9)) {
        case 0:
        case 1:
        case 2:
            SetWindowPos(window, nullptr, random(-40, width), random(-40, height), 0, 0,
                         quietly | SWP_NOSIZE | SWP_NOZORDER);
            break;
        case 3:
            SetWindowPos(window, nullptr, 0, 0, random(0, 90), random(0, 70), quietly | SWP_NOMOVE | SWP_NOZORDER);
            break;
        case 4:
            SetWindowPos(window, random(0, 1) != 0 ? HWND_TOP : HWND_BOTTOM, random(-40, width), random(-40, height),
                         random(0, 90), random(0, 70), quietly);
            break;
        case 5:
            if (other != window && GetParent(other) == GetParent(window))
                SetWindowPos(window, other, 0, 0, 0, 0, quietly | SWP_NOMOVE | SWP_NOSIZE);
            break;
        case 6:
        case 7:
            ShowWindow(window, IsWindowVisible(window) != FALSE ? SW_HIDE : SW_SHOWNA);
            break;
        case 8:
            SetWindowRgn(window, random(0, 1) != 0 ? CreateEllipticRgn(0, 0, random(1, 90), random(1, 70)) : nullptr,
                         TRUE);
            break;
        default:
            SetWindowPos(window, nullptr, random(-40, width), random(-40, height), random(0, 90), random(0, 70),
                         quietly | SWP_NOCOPYBITS | SWP_NOZORDER);
            break;
        }
        std::erase_if(all, [](HWND each) { return IsWindow(each) == FALSE; });
    }

    using Mask = std::vector<bool>; // one entry for each pixel of the screen

    /// The pixels that belong to a window's outline.
    static Mask outlineOf(HWND window) {
        const RECT rect = windowRect(window);
        const HRGN shape = CreateRectRgn(0, 0, 0, 0);
        if (GetWindowRgn(window, shape) == ERROR)
            SetRectRgn(shape, 0, 0, rect.right - rect.left, rect.bottom - rect.top);
        Mask mask(width * height);
        for (int y = std::max<int>(rect.top, 0); y < std::min<int>(rect.bottom, height); ++y)
            for (int x = std::max<int>(rect.left, 0); x < std::min<int>(rect.right, width); ++x)
                mask[static_cast<std::size_t>(y * width + x)] = PtInRegion(shape, x - rect.left, y - rect.top) != FALSE;
        DeleteObject(shape);
        return mask;
    }
    /// Paints the children of a window from back to front, where `allowed` lets them.
    void paintChildren(HWND parent, const Mask& allowed) {
        for (HWND child = GetWindow(GetWindow(parent, GW_CHILD), GW_HWNDLAST); child != nullptr;
             child = GetWindow(child, GW_HWNDPREV)) {
            if (IsWindowVisible(child) == FALSE)
                continue;
            Mask mask = outlineOf(child);
            const RECT rect = windowRect(child);
            const auto number = static_cast<UINT_PTR>(GetWindowLongPtr(child, GWLP_USERDATA));
            for (std::size_t i = 0; i < mask.size(); ++i) {
                mask[i] = mask[i] && allowed[i];
                if (mask[i])
                    wanted[i] = patternAt(number, static_cast<int>(i % width) - rect.left,
                                          static_cast<int>(i / width) - rect.top);
            }
            paintChildren(child, mask);
        }
    }
    /// The first pixel that is wrong, as text.
    std::string compare() {
        wanted.assign(width * height, ground);
        paintChildren(GetDesktopWindow(), Mask(width * height, true));
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            const int x = static_cast<int>(i % width);
            const int y = static_cast<int>(i / width);
            if (pixel(x, y) != wanted[i])
                return std::to_string(x) + ',' + std::to_string(y);
        }
        return "";
    }

    std::vector<std::uint32_t> wanted;
    std::mt19937 generator{GetParam()};
    std::vector<HWND> all;
    LONG_PTR numbers = 0;
    std::uint32_t ground = 0;
};

TEST_P(AreaRandomTest, ThePictureIsAlwaysTheWindowsFromBackToFront) {
    ground = pixel(0, 0);
    for (int i = 0; i < 6; ++i)
        create();
    for (int step = 0; step < 40; ++step) {
        const int changes = random(1, 3);
        for (int i = 0; i < changes && !all.empty(); ++i)
            change();
        settle();
        ASSERT_EQ(compare(), "") << "seed " << GetParam() << ", step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, AreaRandomTest, testing::Range(1U, 9U));

} // namespace
