#include "ads/ads.h"
#include "ads/xref.h"
#include "palette/host_helpers.h"

void AttachXref(CString strPath, CString strFileName) {
    FocusCommandLine();
    ads_point point;
    if (acedGetPoint(nullptr, "\nInsertion point for Xref: ", point) != RTNORM)
        return;
    constexpr int kExtension = 4; // ".dwg"
    const CString strName = strFileName.Left(strFileName.GetLength() - kExtension);
    const AcGePoint3d position{point[0], point[1], point[2]};
    const AcGeScale3d scale(1, 1, 1);
    const double rotation = 0.0;
    acedXrefAttach(strPath, strName, nullptr, nullptr, &position, &scale, &rotation, false);
}
