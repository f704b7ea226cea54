#include "src/siblings.h"

#include "db/database.h"
#include "objects/attribute.h"

#include <algorithm>

namespace vndk::objects {

namespace {

/// The object of an id whether it is open or not: whoever sets a value may hold the record and the reference open for
/// write, so they couldn't be opened here, and nothing is changed.
const AcDbObject* look(AcDbObjectId id) { return id.database()->objectOf(*id.stub()); }

/// Goes from `at` in steps of `step` over one run of attributes. True when `value` was found.
bool searchRun(const std::vector<AcDbObjectId>& entities, size_t at, int step, const std::string& foldedTag,
               std::string& value) {
    for (at += static_cast<size_t>(step); at < entities.size(); at += static_cast<size_t>(step)) {
        const VNDKAttribute* const sibling = VNDKAttribute::cast(look(entities[at]));
        if (!sibling)
            return false;
        if (!sibling->isErased() && acdbFoldName(sibling->tagValue()) == foldedTag) {
            value = sibling->value();
            return true;
        }
    }
    return false;
}

} // namespace

bool findSiblingValue(const VNDKAttribute& attribute, std::string_view tag, std::string& value) {
    if (!attribute.isResident() || attribute.ownerId().isNull())
        return false;
    const AcDbBlockTableRecord* const record = AcDbBlockTableRecord::cast(look(attribute.ownerId()));
    if (!record)
        return false;
    const std::vector<AcDbObjectId>& entities = record->entities();
    // From the end: what gets its value is new more often than not.
    const auto found = std::find(entities.rbegin(), entities.rend(), attribute.objectId());
    if (found == entities.rend())
        return false;
    const auto at = static_cast<size_t>(entities.rend() - found) - 1;
    const std::string folded = acdbFoldName(tag);
    return searchRun(entities, at, -1, folded, value) || searchRun(entities, at, 1, folded, value);
}

} // namespace vndk::objects
