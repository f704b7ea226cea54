#include "insertion/insert_block.h"

#include "ads/ads.h"
#include "frame/module.h"
#include "insertion/reference_builder.h"
#include "objects/attribute.h"
#include "resources/resource.h"

namespace {

/// Plain definitions only; nothing is asked.
class CBlockRoad : public CAttributeRoad {
public:
    bool Takes(AcDbAttributeDefinition* pDefinition) override {
        return pDefinition->isA() == AcDbAttributeDefinition::desc();
    }
};

void Tell(UINT id, const CString& name) {
    CString text;
    text.Format(LoadResString(id), static_cast<LPCSTR>(name));
    acutPrintf("%s", static_cast<LPCSTR>(text));
}

} // namespace

void InsertBlockByName(CString name, AcGePoint3d position, AcGeScale3d scale, double rotation) {
    CReferenceBuilder builder;
    const COpened<AcDbBlockTableRecord> block(OpenBlockForRead(name));
    if (!block)
        return Tell(IDS_NO_SUCH_BLOCK, name);
    CBlockRoad road;
    if (const UINT failure = builder.Build(block->objectId(), name, {position, scale, rotation}, block->origin()))
        Tell(failure, name);
    else
        builder.AddAttributes(road);
    builder.CloseDefinition();
}

int InsertBlockFunction() {
    CString name;
    AcGePoint3d position;
    if (!ReadInsertionArguments(name, position))
        return 0;
    InsertBlockByName(name, position, AcGeScale3d(1.0, 1.0, 1.0), 0.0);
    acedRetVoid();
    return 0;
}
