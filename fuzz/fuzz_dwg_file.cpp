// Any bytes as a drawing file: parsed, every object framed, every chain link set, and written again.

#include <cstdlib>

#include "dwg/file_writer.h"
#include "dwg/object_frame.h"

using namespace vndk::dwg;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto image = FileImage::parse(std::vector<uint8_t>(data, data + size), "input", kEveryVersion);
    if (!image)
        return 0;
    const FrameContext context((*image)->version(), (*image)->classes());
    for (const ObjectRecord& record : (*image)->objects()) {
        const auto raw = (*image)->bytesOf(record);
        ObjectFrame frame;
        CommonHandles handles;
        if (!parseFrame(raw, context, frame) || !readCommonHandles(raw, frame, handles) || !frame.isEntity)
            continue;
        // Whoever reads a record must find what was put into it.
        const auto patched = patchLinks(raw, context, handles.next, handles.previous);
        CommonHandles now;
        if (!patched || !parseFrame(*patched, context, frame) || !readCommonHandles(*patched, frame, now) ||
            now.previous != handles.next || now.next != handles.previous)
            std::abort();
    }
    // Older versions and maps with the handle 0 can't be written.
    const auto written = writeFile(partsOf(**image));
    if (written && !FileImage::parse(*written, "written"))
        std::abort();
    return 0;
}
