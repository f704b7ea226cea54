// Compiled resources: whatever the bytes are, the reader stays inside them.
#include "win32/resource_table.h"

#include <cstdlib>

using namespace vndk::win32;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ResourceTable table;
    if (!ResourceTable::parse({data, size}, table).ok())
        return 0;
    for (const ResourceEntry& entry : table.entries()) {
        if (table.find(entry.type, entry.name) == nullptr)
            std::abort(); // The order of the entries is broken.
        for (unsigned i = 0; i < 16; ++i)
            static_cast<void>(stringOfBlock(entry.data, i));
    }
    return 0;
}
