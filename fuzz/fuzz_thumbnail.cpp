// Any bytes as a drawing's file whose thumbnail is read and painted; and any bytes as the picture in a sound file.
#include "previews/dwg_thumbnail.h"

#include "../tests/module/previews/thumbnail_file.h"
#include "../tests/platform/temp_folder.h"
#include "screen/memory.h"
#include "win32/desktop.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static vndk::screen::MemoryScreen screen(64, 64);
    static vndk::win32::Desktop desktop(screen);
    static const TempFolder folder;
    static const CString path(folder.path().c_str());
    static const HDC canvas = [] {
        const HDC dc = CreateCompatibleDC(nullptr);
        SelectObject(dc, CreateBitmap(64, 64, 1, 32, nullptr));
        return dc;
    }();
    if (size == 0)
        return 0;
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    folder.write("a.dwg", (data[0] & 1) != 0 ? thumbnailFile({{2, bytes}}) : bytes);
    CDwgThumbnail thumbnail(&path, "a.dwg");
    CDC dc;
    dc.Attach(canvas);
    thumbnail.Paint(dc, 1, 16, 40, 28);
    dc.Detach();
    return 0;
}
