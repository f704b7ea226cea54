#include "win32/dialog_init.h"

#include "user/template_reader.h"

#include <algorithm>

namespace vndk::win32 {

bool forEachInitRow(std::span<const std::uint8_t> bytes, const std::function<bool(const DialogInitRow&)>& visit) {
    if (bytes.empty())
        return true;
    TemplateReader reader(bytes);
    while (true) {
        DialogInitRow row;
        row.control = reader.word();
        if (row.control == 0)
            return !reader.failed();
        row.message = reader.word();
        row.data = reader.take(reader.dword());
        if (reader.failed())
            return false;
        row.text.assign(row.data.begin(), std::find(row.data.begin(), row.data.end(), std::uint8_t{0}));
        if (!visit(row))
            return true;
    }
}

} // namespace vndk::win32
