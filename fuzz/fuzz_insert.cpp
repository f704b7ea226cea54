// A drawing with an object of most kinds, bits of it changed, inserted into an empty drawing: whole or not at all. The
// input's bytes go in threes: which object, where in it, what is changed there.

#include <cstdlib>

#include "../tests/drawing/db/insertion_checks.h"
#include "../tests/drawing/db/rich_drawing.h"
#include "dwg/crc.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_writer.h"
#include "dwg/file_writer.h"

using namespace vndk;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static test::RichDrawing rich;
    static const auto image = *dwg::FileImage::parse(*dwg::writeDrawing(rich.database), "whole");
    std::vector<uint8_t> bytes(image->bytes().begin(), image->bytes().end());
    for (; size >= 3; data += 3, size -= 3) {
        const auto raw = image->bytesOf(image->objects()[data[0] % image->objects().size()]);
        uint8_t* const victim = bytes.data() + (raw.data() - image->bytes().data());
        victim[2 + data[1] % (raw.size() - 4)] ^= data[2];
        const uint16_t crc = dwg::crc16(dwg::kCrcSeed, victim, raw.size() - 2);
        victim[raw.size() - 2] = static_cast<uint8_t>(crc);
        victim[raw.size() - 1] = static_cast<uint8_t>(crc >> 8);
    }
    AcDbDatabase source(false), database, again(false);
    if (!dwg::readDrawing(source, bytes, "damaged"))
        return 0;
    const test::DrawingState before(database);
    AcDbObjectId block;
    if (database.insert(block, "DETAIL", &source) != Acad::eOk)
        return before.difference(test::DrawingState(database)).empty() ? 0 : (std::abort(), 0);
    const auto saved = dwg::writeDrawing(database);
    if (!test::strayReferences(database).empty() || !saved || !dwg::readDrawing(again, *saved, "saved"))
        std::abort();
    return 0;
}
