#include "dwg/class_section.h"

namespace vndk::dwg {

namespace {

/// Type numbers are 16-bit and signed for some programs; more classes than that can't be meant.
constexpr size_t kMostClasses = 0x7FFF - kFirstClassNumber;

} // namespace

bool readClasses(BitReader& reader, std::vector<ClassRecord>& classes) {
    while (reader.remaining() > 8) {
        ClassRecord record;
        record.number = reader.BS();
        record.proxyFlags = reader.BS();
        record.appName = reader.TV();
        record.cppName = reader.TV();
        record.dxfName = reader.TV();
        record.wasZombie = reader.B();
        record.itemClassId = reader.BS();
        if (reader.failed() || classes.size() == kMostClasses)
            return false;
        classes.push_back(std::move(record));
    }
    return true;
}

void writeClasses(BitWriter& writer, const std::vector<ClassRecord>& classes) {
    for (const ClassRecord& record : classes) {
        writer.BS(record.number);
        writer.BS(record.proxyFlags);
        writer.TV(record.appName);
        writer.TV(record.cppName);
        writer.TV(record.dxfName);
        writer.B(record.wasZombie);
        writer.BS(record.itemClassId);
    }
    writer.alignByte();
}

} // namespace vndk::dwg
