// Things that can be drawn beside the objects of a database: gadgets and markers of applications.
#pragma once

#include "gi/geometry.h"
#include "gi/traits.h"
#include "rx/class.h"

/// What the graphics system keeps for a drawable; its own affair.
class AcGsNode;

/// One drawing of a drawable for all views.
class AcGiWorldDraw {
public:
    virtual ~AcGiWorldDraw() = default;
    virtual AcGiGeometry& geometry() = 0;
    virtual AcGiSubEntityTraits& subEntityTraits() = 0;
};

/// One drawing of a drawable for one view.
class AcGiViewportDraw {
public:
    virtual ~AcGiViewportDraw() = default;
    virtual AcGiGeometry& geometry() = 0;
    virtual AcGiSubEntityTraits& subEntityTraits() = 0;
    /// From world coordinates to those of the camera: x to the right, y up, z towards the viewer.
    virtual AcGeMatrix3d viewingMatrix() const = 0;
};

class AcGiDrawable : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcGiDrawable)
public:
    /// Sets the properties that drawing begins with.
    virtual uint32_t setAttributes(AcGiDrawableTraits* traits) = 0;
    /// False: viewportDraw is to be called for each view, too.
    virtual bool worldDraw(AcGiWorldDraw* context) = 0;
    virtual void viewportDraw(AcGiViewportDraw* context) = 0;
    virtual bool isPersistent() const = 0;
    virtual AcDbObjectId id() const = 0;
    virtual void setGsNode(AcGsNode* node) = 0;
    virtual AcGsNode* gsNode() const = 0;
    /// The box around what is drawn, in world coordinates. False: not known.
    virtual bool bounds(AcDbExtents& extents) const;

protected:
    AcGiDrawable() = default;
};
