#include "dwg/object_map.h"

#include <algorithm>
#include <cassert>

#include "dwg/crc.h"
#include "dwg/file_format.h"

namespace vndk::dwg {

namespace {

constexpr size_t kMostWrongChecksums = 20;
/// Pages are closed before they reach this size, the page's own size field counted.
constexpr size_t kMapPageLimit = 2032;

/// Steps over one object's frame: its size field, which tells the rest. 0 when it doesn't lie inside the file.
size_t frameSize(std::span<const uint8_t> file, uint64_t offset) {
    const size_t left = file.size() - offset;
    if (left < 4)
        return 0;
    const uint8_t* at = file.data() + offset;
    size_t size = littleRS(at);
    size_t total = 2 + size + 2;
    if (size & 0x8000) {
        size = (size & 0x7FFF) | static_cast<size_t>(littleRS(at + 2)) << 15;
        total = 4 + size + 2;
    }
    return total <= left ? total : 0;
}

/// Walks the entries of the map's pages.
class MapReader {
public:
    MapReader(std::span<const uint8_t> file, std::vector<ObjectRecord>& objects, MapNotes& notes)
        : file_(file), objects_(objects), notes_(notes) {}

    MapFault read(size_t address, size_t size) {
        const size_t end = address + size;
        for (size_t at = address;;) {
            if (end - at < 4)
                return {ErrorKind::Damaged, at, "the object map has no last page"};
            const size_t pageSize = bigRS(file_.data() + at);
            if (pageSize < 2 || pageSize + 2 > end - at)
                return {ErrorKind::Damaged, at, "a page of the object map has an impossible size"};
            if (crc16(kCrcSeed, file_.data() + at, pageSize) != bigRS(file_.data() + at + pageSize))
                return {ErrorKind::Damaged, at, "the checksum of a page of the object map is wrong"};
            if (pageSize == 2)
                return {};
            if (MapFault fault = readPage(at + 2, at + pageSize); fault.what)
                return fault;
            at += pageSize + 2;
        }
    }

private:
    MapFault readPage(size_t begin, size_t end) {
        const uint8_t* at = file_.data() + begin;
        const uint8_t* pageEnd = file_.data() + end;
        uint64_t handle = 0;
        uint64_t offset = 0;
        while (at < pageEnd) {
            const auto place = static_cast<uint64_t>(at - file_.data());
            if (!addUnsigned(at, pageEnd, handle) || !addSigned(at, pageEnd, offset))
                return {ErrorKind::Damaged, place, "an entry of the object map is cut off"};
            if (MapFault fault = addObject(handle, offset, place); fault.what)
                return fault;
        }
        return {};
    }

    MapFault addObject(uint64_t handle, uint64_t offset, uint64_t place) {
        if (offset >= file_.size())
            return {ErrorKind::Truncated, place, "the object map names an object behind the end of the file"};
        const size_t size = frameSize(file_, offset);
        if (size == 0)
            return {ErrorKind::Truncated, offset, "an object reaches beyond the end of the file"};
        // Objects that overlap could make a small file cost any amount of time.
        covered_ += size;
        if (covered_ > file_.size())
            return {ErrorKind::Damaged, place, "the object map names the same bytes more than once"};
        const ObjectRecord record{handle, static_cast<uint32_t>(offset), static_cast<uint32_t>(size)};
        const uint8_t* data = file_.data() + offset;
        if (crc16(kCrcSeed, data, size - 2) != littleRS(data + size - 2)) {
            if (++notes_.wrongChecksumCount <= kMostWrongChecksums)
                notes_.wrongChecksums.push_back(record);
        }
        if (!objects_.empty() && objects_.back().handle >= handle)
            notes_.unordered = true;
        objects_.push_back(record);
        return {};
    }

    static bool addUnsigned(const uint8_t*& at, const uint8_t* end, uint64_t& sum) {
        uint64_t value = 0;
        for (unsigned shift = 0; at < end && shift < 63; shift += 7) {
            const uint8_t byte = *at++;
            value |= static_cast<uint64_t>(byte & 0x7F) << shift;
            if (!(byte & 0x80)) {
                sum += value;
                return true;
            }
        }
        return false;
    }

    static bool addSigned(const uint8_t*& at, const uint8_t* end, uint64_t& sum) {
        uint64_t value = 0;
        for (unsigned shift = 0; at < end && shift < 63; shift += 7) {
            const uint8_t byte = *at++;
            if (!(byte & 0x80)) {
                value |= static_cast<uint64_t>(byte & 0x3F) << shift;
                sum += (byte & 0x40) ? 0 - value : value;
                return true;
            }
            value |= static_cast<uint64_t>(byte & 0x7F) << shift;
        }
        return false;
    }

    std::span<const uint8_t> file_;
    std::vector<ObjectRecord>& objects_;
    MapNotes& notes_;
    uint64_t covered_ = 0;
};

void putUnsigned(std::vector<uint8_t>& out, uint64_t value) {
    for (; value > 0x7F; value >>= 7)
        out.push_back(static_cast<uint8_t>(value | 0x80));
    out.push_back(static_cast<uint8_t>(value));
}

void putSigned(std::vector<uint8_t>& out, int64_t value) {
    uint64_t rest = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    for (; rest > 0x3F; rest >>= 7)
        out.push_back(static_cast<uint8_t>(rest | 0x80));
    out.push_back(static_cast<uint8_t>(rest | (value < 0 ? 0x40 : 0)));
}

void closePage(std::vector<uint8_t>& out, size_t pageBegin) {
    const size_t size = out.size() - pageBegin;
    out[pageBegin] = static_cast<uint8_t>(size >> 8);
    out[pageBegin + 1] = static_cast<uint8_t>(size);
    const uint16_t crc = crc16(kCrcSeed, out.data() + pageBegin, size);
    out.push_back(static_cast<uint8_t>(crc >> 8));
    out.push_back(static_cast<uint8_t>(crc));
}

} // namespace

MapFault readObjectMap(std::span<const uint8_t> file, size_t address, size_t size, std::vector<ObjectRecord>& objects,
                       MapNotes& notes) {
    assert(address <= file.size() && size <= file.size() - address && "the map's section lies outside of the file");
    objects.reserve(size / 3);
    MapFault fault = MapReader(file, objects, notes).read(address, size);
    if (fault.what || !notes.unordered)
        return fault;
    const auto byHandle = [](const ObjectRecord& a, const ObjectRecord& b) { return a.handle < b.handle; };
    std::stable_sort(objects.begin(), objects.end(), byHandle);
    const auto sameHandle = [](const ObjectRecord& a, const ObjectRecord& b) { return a.handle == b.handle; };
    const auto end = std::unique(objects.begin(), objects.end(), sameHandle);
    notes.duplicateCount = static_cast<size_t>(objects.end() - end);
    objects.erase(end, objects.end());
    return fault;
}

void appendObjectMap(std::vector<uint8_t>& out, std::span<const ObjectRecord> objects) {
    // A handle and an address take at most ten bytes each.
    constexpr size_t kLongestEntry = 20;
    size_t pageBegin = out.size();
    out.resize(out.size() + 2);
    uint64_t handle = 0;
    int64_t offset = 0;
    for (const ObjectRecord& object : objects) {
        if (out.size() - pageBegin + kLongestEntry > kMapPageLimit) {
            closePage(out, pageBegin);
            pageBegin = out.size();
            out.resize(out.size() + 2);
            handle = 0;
            offset = 0;
        }
        assert(object.handle > handle && "the objects of a map don't ascend by handle");
        putUnsigned(out, object.handle - handle);
        putSigned(out, static_cast<int64_t>(object.offset) - offset);
        handle = object.handle;
        offset = object.offset;
    }
    if (out.size() - pageBegin > 2) {
        closePage(out, pageBegin);
        pageBegin = out.size();
        out.resize(out.size() + 2);
    }
    closePage(out, pageBegin);
}

} // namespace vndk::dwg
