#include "frame/unavailable.h"

#include "ads/ads.h"
#include "frame/module.h"
#include "resources/resource.h"

namespace {

void Tell(UINT id) { acutPrintf("%s", static_cast<LPCSTR>(LoadResString(id))); }

} // namespace

void TellNoPalette() { Tell(IDS_NO_PALETTE_YET); }
