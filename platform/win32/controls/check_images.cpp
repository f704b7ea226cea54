#include "controls/check_images.h"

#include "controls/paint_session.h"
#include "win32/draw.h"
#include "win32/imagelist.h"
#include "win32/metrics.h"

namespace vndk::win32 {

namespace {

constexpr int boxSize = 13;
constexpr COLORREF outside = RGB(255, 0, 255);

void drawBox(HDC dc, int left, int width, int height, bool checked) {
    RECT box{left + (width - boxSize) / 2, (height - boxSize) / 2, 0, 0};
    box.right = box.left + boxSize;
    box.bottom = box.top + boxSize;
    DrawFrameControl(dc, &box, DFC_BUTTON, DFCS_BUTTONCHECK | DFCS_FLAT | (checked ? DFCS_CHECKED : 0U));
}

} // namespace

HIMAGELIST createCheckImages(bool blankFirst) {
    const int width = GetSystemMetrics(SM_CXSMICON);
    const int height = GetSystemMetrics(SM_CYSMICON);
    const int count = blankFirst ? 3 : 2;
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    const HBITMAP strip = CreateCompatibleBitmap(screen, width * count, height);
    ReleaseDC(nullptr, screen);
    {
        const SelectedObject bitmap(dc, strip);
        const HBRUSH ground = CreateSolidBrush(outside);
        const RECT all{0, 0, width * count, height};
        FillRect(dc, &all, ground);
        DeleteObject(ground);
        drawBox(dc, width * (count - 2), width, height, false);
        drawBox(dc, width * (count - 1), width, height, true);
    }
    DeleteDC(dc);
    const HIMAGELIST images = ImageList_Create(width, height, ILC_COLOR24 | ILC_MASK, count, 1);
    ImageList_AddMasked(images, strip, outside);
    DeleteObject(strip);
    return images;
}

} // namespace vndk::win32
