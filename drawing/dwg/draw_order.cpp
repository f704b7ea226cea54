#include "dwg/draw_order.h"

#include "db/block_table.h"
#include "db/dictionary.h"
#include "db/opaque.h"
#include "db/open.h"
#include "dwg/bit_reader.h"

#include <algorithm>
#include <unordered_map>

namespace vndk::dwg {

namespace {

using Order = std::unordered_map<AcDbObjectId, uint64_t>;

/// The fields are a count and as many handles to sort by; the entities that they belong to are the last references.
Order readTable(const AcDbOpaqueFields& fields) {
    BitReader bits(reinterpret_cast<const uint8_t*>(fields.bits.data()), 0, fields.bitCount);
    const uint32_t count = bits.BL();
    Order order;
    if (bits.failed() || count > fields.references.size())
        return order;
    const size_t first = fields.references.size() - count;
    for (size_t i = 0; i < count; ++i)
        order.emplace(fields.references[first + i].id, bits.H().value);
    return bits.failed() ? Order() : order;
}

Order orderOf(const AcDbBlockTableRecord& block) {
    AcDbObjectId table;
    const AcDbObjectPointer<AcDbDictionary> extension(block.extensionDictionary());
    if (!extension || static_cast<const AcDbDictionary&>(*extension).getAt("ACAD_SORTENTS", table) != Acad::eOk)
        return {};
    const AcDbObjectPointer<AcDbOpaqueObject> object(table);
    return object && object->fields().typeName == "SORTENTSTABLE" ? readTable(object->fields()) : Order();
}

} // namespace

std::vector<AcDbObjectId> drawOrder(const AcDbBlockTableRecord& block) {
    std::vector<AcDbObjectId> entities = block.entities();
    const Order order = orderOf(block);
    if (order.empty())
        return entities;
    const auto place = [&](AcDbObjectId id) {
        const auto found = order.find(id);
        return found == order.end() ? id.handle().value() : found->second;
    };
    std::stable_sort(entities.begin(), entities.end(),
                     [&](AcDbObjectId a, AcDbObjectId b) { return place(a) < place(b); });
    return entities;
}

} // namespace vndk::dwg
