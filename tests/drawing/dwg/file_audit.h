#pragma once
/// Looks at the bytes of a saved drawing for what other programs would call errors.

#include <map>
#include <set>

#include "db/block_reference.h"
#include "drawing/dwg/round_trip.h"
#include "dwg/drawing_reader.h"

namespace vndk::test {

inline std::string hexOf(uint64_t handle) {
    char text[17];
    AcDbHandle(handle).getIntoAsciiBuffer(text);
    return text;
}

/// References to objects that the file doesn't have, of every type, modelled or not: "from -> to".
inline std::set<std::string> danglingReferences(const dwg::FileImage& image) {
    std::set<std::string> dangling;
    const dwg::FrameContext context(image.version(), image.classes());
    for (const dwg::ObjectRecord& record : image.objects()) {
        const auto raw = image.bytesOf(record);
        dwg::ObjectFrame frame;
        if (!dwg::parseFrame(raw, context, frame)) {
            dangling.insert(hexOf(record.handle) + " has no frame");
            continue;
        }
        dwg::BitReader handles(raw.data(), frame.handlesBit, frame.endBit);
        while (handles.remaining() >= 8) {
            const uint64_t handle = handles.H().absolute(frame.handle);
            if (handle != 0 && !image.find(handle))
                dangling.insert(hexOf(record.handle) + " -> " + hexOf(handle));
        }
    }
    return dangling;
}

/// Whether lists agree with what they list: chains with owners, tables with records, blocks with references.
inline std::vector<std::string> disagreements(AcDbDatabase& database) {
    std::vector<std::string> found = database.warnings();
    std::map<AcDbObjectId, std::multiset<AcDbObjectId>> chained, referenced, listed, owned;
    const std::set<AcDbObjectId> tables = {database.blockTableId(), database.layerTableId(),
                                           database.textStyleTableId(), database.linetypeTableId(),
                                           database.regAppTableId()};
    for (size_t i = 0; i < database.stubs().size(); ++i) {
        const AcDbObject* const object = database.objectOf(database.stubs()[i]);
        const AcDbObjectId id = object->objectId();
        if (id.handle().value() >= database.header().HANDSEED)
            found.push_back(hexOf(id.handle().value()) + " isn't below HANDSEED");
        if (const auto* const record = AcDbBlockTableRecord::cast(object)) {
            chained[id].insert(record->entities().begin(), record->entities().end());
            listed[id].insert(record->references().begin(), record->references().end());
            chained[id].insert(record->data().blockBegin);
            chained[id].insert(record->data().blockEnd);
        } else if (const auto* const table = AcDbSymbolTable::cast(object)) {
            chained[id].insert(table->records().begin(), table->records().end());
            chained[id].erase(AcDbObjectId());
        } else if (const auto* const reference = AcDbBlockReference::cast(object)) {
            referenced[reference->blockTableRecord()].insert(id);
            chained[id].insert(reference->attributes().begin(), reference->attributes().end());
            if (!reference->subentities().sequenceEnd().isNull())
                chained[id].insert(reference->subentities().sequenceEnd());
        }
        owned[object->ownerId()].insert(id);
    }
    for (const auto& [owner, members] : chained)
        if ((AcDbEntity::cast(owner.stub()->object) || AcDbBlockTableRecord::cast(owner.stub()->object) ||
             tables.count(owner)) &&
            members != owned[owner])
            found.push_back(hexOf(owner.handle().value()) + " lists " + std::to_string(members.size()) + " and owns " +
                            std::to_string(owned[owner].size()));
    for (const auto& [block, references] : referenced)
        if (listed[block] != references)
            found.push_back(hexOf(block.handle().value()) + " lists other references than it has");
    return found;
}

} // namespace vndk::test
