// Takes any bytes as lines of steps for dialogs.
#include "vondrake/dialog_steps.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        if (!vndk::app::holdsNoStep(line))
            (void)vndk::app::parseDialogStep(line);
        text.remove_prefix(line.size() < text.size() ? line.size() + 1 : line.size());
    }
    return 0;
}
