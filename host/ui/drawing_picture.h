// The picture of the current document's current space, as the document's view says: drawn by the graphics system into
// memory, kept until something changes, with marks over the entities that stand out.
#pragma once

#include "ap/drawing_views.h"
#include "ed/outline.h"
#include "gs/manager.h"

#include <memory>
#include <unordered_map>

class AcApDocument;

namespace vndk::host {

class SheetPaper;

class DrawingPicture {
public:
    DrawingPicture();
    ~DrawingPicture();
    DrawingPicture(const DrawingPicture&) = delete;
    DrawingPicture& operator=(const DrawingPicture&) = delete;

    void resize(int width, int height);
    int width() const { return device_->width(); }
    int height() const { return device_->height(); }
    double aspect() const { return static_cast<double>(width()) / height(); }

    /// Null shows nothing. A document whose space has no view yet is shown whole.
    void show(AcApDocument* document);
    AcApDocument* document() const { return document_; }
    AcDbObjectId space() const { return space_; }
    AcGsModel& model() { return *model_; }
    AcGsView* view() { return view_; }
    /// False while somebody holds the space open for writing: nothing can be looked up then.
    bool canBeRead() const;

    /// The drawing, or how it is looked at, has changed.
    void invalidate();
    /// The entities have changed: what is known of their outlines is wrong.
    void forgetOutlines();
    /// Brings the picture up to date. False: nothing was to be done. While somebody holds the space open for writing
    /// the picture stays as it is.
    bool refresh();
    void paint(HDC dc, const RECT& part) const { device_->paint(dc, part); }
    COLORREF background() const { return device_->backgroundColor(); }

    /// Entities that stand out. False: they do already.
    bool mark(std::vector<AcDbObjectId> entities);
    const Outline& outlineOf(AcDbObjectId entity);

    /// By the document's view, whether it has been drawn or not; in perspective at the depth of the view's centre.
    AcGeMatrix3d worldToDevice() const;
    /// Where a point is seen, in pixels.
    AcGePoint3d seenAt(const AcGePoint3d& world) const;
    /// Drawing units.
    double pixelSize() const;
    /// The view that shows the box, world coordinates, in the direction of now.
    DrawingViews::View viewOf(const AcDbExtents& box) const;
    /// Of an empty space the limits. False: there is neither.
    bool zoomExtents();

private:
    AcGsDevice* device_;
    AcGsModel* model_;
    AcGsView* view_;
    std::unique_ptr<SheetPaper> paper_;
    AcApDocument* document_ = nullptr;
    AcDbObjectId space_;
    bool stale_ = true, unmarked_ = true;
    std::vector<AcDbObjectId> marks_;
    std::unordered_map<AcDbObjectId, Outline> outlines_;
};

} // namespace vndk::host
