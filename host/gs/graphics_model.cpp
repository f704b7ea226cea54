#include "gs/graphics_model.h"

#include "gs/styles.h"

namespace vndk::gs {

bool GraphicsModel::visibleExtents(AcDbObjectId record, AcDbExtents& extents) {
    extents = AcDbExtents();
    AcDbDatabase* const database = record.database();
    if (!database)
        return false;
    const DisplayList& list = lists_.of(record, true);
    Styles styles(*database, 0);
    std::vector<Style> resolved;
    for (const Look& look : list.looks)
        resolved.push_back(styles.resolve(look, styles.outermost()));
    for (size_t i = 0; i < list.looks.size(); ++i)
        if (resolved[i].visible)
            extents.addExt(list.boxes[i]);
    // What a reference shows counts as a whole: its hidden parts are part of the symbol.
    for (const Item& item : list.items) {
        if (item.kind != Item::Kind::Block || resolved[item.look].frozen)
            continue;
        const BlockShape& block = list.blocks[item.first];
        AcDbExtents box = lists_.boxOf(block.record);
        if (box.isEmpty())
            continue;
        box.transformBy(block.transform);
        extents.addExt(box);
    }
    return !extents.isEmpty();
}

} // namespace vndk::gs
