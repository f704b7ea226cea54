// The drawable that stands in the view beside the drawing. It draws nothing: the circle that the user sees is painted
// onto the window.
#pragma once

#include "gi/drawable.h"

class AcGsView;

class CPreviewGadget : public AcGiDrawable {
public:
    /// That of the host's drawables.
    AcRxClass* isA() const override;

    uint32_t setAttributes(AcGiDrawableTraits* pTraits) override;
    bool worldDraw(AcGiWorldDraw* pContext) override;
    void viewportDraw(AcGiViewportDraw* pContext) override;
    bool isPersistent() const override;
    AcDbObjectId id() const override;
    void setGsNode(AcGsNode* pNode) override;
    AcGsNode* gsNode() const override;
    bool bounds(AcDbExtents& extents) const override;

    void SetView(AcGsView* pView) { mpView = pView; }

private:
    AcGsNode* mpNode = nullptr;
    AcGsView* mpView = nullptr; ///< not owned
};
