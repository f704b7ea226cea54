// Rich text: whatever the bytes are, the reader stays inside them, and what it wrote reads back as the same text.
#include "controls/rtf_reader.h"

#include <cstdlib>

using namespace vndk::win32;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    RichDocument document;
    if (!readRtf({reinterpret_cast<const char*>(data), size}, document))
        return 0;
    if (document.text().size() > size)
        std::abort(); // A document can't hold more than was read.
    RichDocument again;
    const std::string written = writeRtf(document, 0, document.length());
    if (!readRtf(written, again) || again.text() != document.text())
        std::abort();
    return 0;
}
