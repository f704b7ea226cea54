#include "ads/ads.h"
#include "palette/host_helpers.h"

void AttachXref(CString /*strPath*/, CString /*strFileName*/) {
    acutPrintf("\nAttaching external references isn't part of this version yet.");
}
