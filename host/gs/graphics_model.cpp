#include "gs/graphics_model.h"

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
    for (size_t i = 0; i < list.parts.size(); ++i)
        addVisible(list, i, resolved, extents);
    return !extents.isEmpty();
}

/// What a reference shows counts as a whole: its hidden parts are part of the symbol.
void GraphicsModel::addVisible(const DisplayList& list, size_t part, const std::vector<Style>& styles,
                               AcDbExtents& extents) {
    bool visible = false;
    for (uint32_t i = 0; i < list.parts[part].count; ++i) {
        const Item& item = list.items[list.parts[part].first + i];
        visible = visible || styles[item.look].visible;
        if (item.kind != Item::Kind::Block || styles[item.look].frozen)
            continue;
        const BlockShape& block = list.blocks[item.first];
        AcDbExtents box = lists_.wholeOf(block.record).box;
        box.transformBy(block.transform);
        extents.addExt(box);
    }
    if (visible)
        extents.addExt(list.boxes[part]);
}

} // namespace vndk::gs
