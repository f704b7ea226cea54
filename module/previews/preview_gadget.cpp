#include "previews/preview_gadget.h"

namespace {

constexpr uint8_t kGreen = 200;

} // namespace

AcRxClass* CPreviewGadget::isA() const { return acrxFindClass("AcGiDrawable"); }

uint32_t CPreviewGadget::setAttributes(AcGiDrawableTraits* pTraits) {
    pTraits->setTrueColor(AcCmEntityColor::trueColor(0, kGreen, 0));
    return 0;
}

bool CPreviewGadget::worldDraw(AcGiWorldDraw* /*pContext*/) { return false; }

void CPreviewGadget::viewportDraw(AcGiViewportDraw* /*pContext*/) {}

bool CPreviewGadget::isPersistent() const { return false; }

AcDbObjectId CPreviewGadget::id() const { return {}; }

void CPreviewGadget::setGsNode(AcGsNode* pNode) { mpNode = pNode; }

AcGsNode* CPreviewGadget::gsNode() const { return mpNode; }

bool CPreviewGadget::bounds(AcDbExtents& /*extents*/) const { return false; }
