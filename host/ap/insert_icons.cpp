#include "ap/insert_icons.h"

#include "commands/block_tools.h"
#include "db/block_table.h"
#include "db/database.h"
#include "db/open.h"

namespace vndk::host {

InsertIcons::InsertIcons() { acrxEventReactors().add(this); }

InsertIcons::~InsertIcons() { acrxEventReactors().remove(this); }

void InsertIcons::beginInsert(AcDbDatabase* /*to*/, const char* blockName, AcDbDatabase* /*from*/) {
    names_.emplace_back(blockName);
}

void InsertIcons::abortInsert(AcDbDatabase* /*to*/) {
    if (!names_.empty())
        names_.pop_back();
}

void InsertIcons::endInsert(AcDbDatabase* to) {
    if (names_.empty())
        return;
    const std::string name = std::move(names_.back());
    names_.pop_back();
    AcDbObjectId block;
    if (const AcDbObjectPointer<AcDbBlockTable> table(to->blockTableId()); table)
        table->getAt(name.c_str(), block);
    if (!block.isNull())
        giveIcon(block); // an empty block has none
}

} // namespace vndk::host
