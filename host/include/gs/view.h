// A view: a camera on what has been added, drawn into a rectangle of a device.
//
// World coordinates and lengths are drawing units, angles radians. View coordinates have their origin at the target,
// x to the right, y up and z towards the viewer. Device coordinates are pixels, y downward from the device's upper left
// corner; a pixel reaches from its number to the next one. The projection is the parallel one.
#pragma once

#include "gi/drawable.h"

#include <span>
#include <vector>

class AcDbBlockTableRecord;
class AcGsModel;

struct AcGsDCPoint {
    int x = 0, y = 0;
    bool operator==(const AcGsDCPoint&) const = default;
};

/// Both corners lie inside.
struct AcGsDCRect {
    AcGsDCPoint m_min, m_max;
    bool operator==(const AcGsDCRect&) const = default;
};

class AcGsView {
public:
    enum Projection { kParallel = 0, kPerspective = 1 };
    enum RenderMode {
        k2DOptimized = 0,
        kWireframe = 1,
        kHiddenLine = 2,
        kFlatShaded = 3,
        kGouraudShaded = 4,
        kFlatShadedWithWireframe = 5,
        kGouraudShadedWithWireframe = 6,
        kLastRenderMode = 7
    };
    virtual ~AcGsView() = default;

    /// The field is what is seen around the target: all of it, and more in the direction in which the viewport is
    /// longer. Sizes that aren't positive, an up vector along the line of sight, an eye at the target and numbers that
    /// are none leave the camera as it is. In perspective the field's size is that at the target; what lies before the
    /// eye isn't seen.
    virtual void setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& upVector,
                         double fieldWidth, double fieldHeight, Projection projection = kParallel) = 0;
    virtual AcGePoint3d position() const = 0;
    virtual AcGePoint3d target() const = 0;
    virtual AcGeVector3d upVector() const = 0;
    virtual double fieldWidth() const = 0;
    virtual double fieldHeight() const = 0;

    /// The whole device unless setViewport said otherwise; one pixel while the view is on no device.
    virtual void getViewport(AcGsDCRect& rectangle) const = 0;
    virtual void setViewport(const AcGsDCRect& rectangle) = 0;
    /// From world to view coordinates.
    virtual AcGeMatrix3d viewingMatrix() const = 0;
    /// From world to device coordinates; the depth has the scale of the other two and grows towards the viewer.
    /// In perspective that holds at the depth of the target.
    virtual AcGeMatrix3d worldToDeviceMatrix() const = 0;

    /// Moves camera and target by a vector of view coordinates.
    virtual void dolly(const AcGeVector3d& vector) = 0;
    void dolly(double x, double y, double z) { dolly(AcGeVector3d(x, y, z)); }
    /// Turns the camera about its line of sight, so that the picture turns counter-clockwise.
    virtual void roll(double angle) = 0;
    /// Carries the camera about the target: to the right (about its up vector) by one angle, then upward by the other.
    virtual void orbit(double xOrbit, double yOrbit) = 0;
    /// Divides the field by the factor: above 1 the drawing comes closer. A factor that isn't positive does nothing.
    virtual void zoom(double factor) = 0;

    /// k2DOptimized, kWireframe and kLastRenderMode show edges, and what is drawn last lies on top. The others remove
    /// what is hidden: kHiddenLine shows surfaces in the background's colour, the shaded ones in their own, by a light
    /// over the viewer's left shoulder; edges of surfaces are seen in kHiddenLine and where the name says so.
    virtual void setMode(RenderMode mode) = 0;
    virtual RenderMode mode() const = 0;

    /// Shows a drawable, which has to live until it is erased. False: no model.
    virtual bool add(AcGiDrawable* drawable, AcGsModel* model) = 0;
    /// Shows the contents of a block or a space; the record may be closed then. False: no model, or not in a database.
    virtual bool add(const AcDbBlockTableRecord* record, AcGsModel* model) = 0;
    virtual bool erase(AcGiDrawable* drawable) = 0;
    virtual void eraseAll() = 0;

    /// The entity of the records shown that is drawn last within `reach` pixels of a pixel, sideways and up or down.
    /// Null: none is there.
    virtual AcDbObjectId entityAt(const AcGsDCPoint& at, int reach) = 0;
    /// Appends the entities that a rectangle touches, or those that lie wholly inside, in the order of drawing.
    virtual void entitiesIn(const AcGsDCRect& rectangle, bool touching, std::vector<AcDbObjectId>& found) = 0;
    /// Shows these entities dashed over the picture, in place of those highlighted before. The picture isn't stale by
    /// that: the device's next update shows it. An id that isn't in the records shown does nothing.
    virtual void highlight(std::span<const AcDbObjectId> entities) = 0;

    /// While the user drags, pictures come quickly and leave out a part of what is shown if all would take too long.
    /// Ending it marks such a picture stale.
    virtual void setInteractive(bool interactive) = 0;
    virtual bool isInteractive() const = 0;

    /// Marks the picture stale.
    virtual void invalidate() = 0;
    virtual bool isValid() const = 0;
    /// Draws anew and shows it. Does nothing while the view is on no device.
    virtual void update() = 0;
};
