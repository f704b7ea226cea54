#include "attributes/attribute_access.h"

#include "ads/ads.h"
#include "frame/module.h"
#include "objects/block_reference.h"
#include "resources/resource.h"

CString TakeText(char* pszText) {
    CString strText(pszText);
    acutDelString(pszText);
    return strText;
}

AcDbBlockReference* PickBlockReference(ads_name name) {
    ads_point point;
    for (int nResult = RTERROR; nResult != RTNORM;) {
        nResult = acedEntSel(LoadResString(IDS_SELECT_BLOCK), name, point);
        if (nResult == RTCAN)
            return nullptr;
    }
    AcDbObjectId id;
    acdbGetObjectId(id, name);
    AcDbEntity* pEntity = OpenChecked<AcDbEntity>(id, AcDb::kForRead);
    if (!pEntity)
        return nullptr;
    if (pEntity->isA() == VNDKBlockReference::desc() || pEntity->isA() == AcDbBlockReference::desc())
        return static_cast<AcDbBlockReference*>(pEntity);
    acutPrintf("%s", static_cast<LPCSTR>(LoadResString(IDS_NOT_A_BLOCK)));
    pEntity->close();
    return nullptr;
}
