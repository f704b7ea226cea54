#include "ui/drawing_picture.h"

#include "ap/document.h"
#include "db/open.h"
#include "ed/pick.h"
#include "ui/sheet_paper.h"

#include <algorithm>

namespace vndk::host {

namespace {

constexpr double kMargin = 1.04; // the field is that much larger than what is seen
constexpr COLORREF kModelBackground = RGB(0, 0, 0);
constexpr COLORREF kPaperBackground = RGB(192, 192, 192);

} // namespace

DrawingPicture::DrawingPicture()
    : device_(acgsGetGsManager()->createAutoCADOffScreenDevice()), model_(acgsGetGsManager()->createAutoCADModel()),
      view_(acgsGetGsManager()->getGSClassFactory()->createView()), paper_(std::make_unique<SheetPaper>()) {
    device_->add(view_);
}

DrawingPicture::~DrawingPicture() {
    view_->eraseAll();
    acgsGetGsManager()->getGSClassFactory()->deleteView(view_);
    acgsGetGsManager()->destroyAutoCADDevice(device_);
    acgsGetGsManager()->destroyAutoCADModel(model_);
}

void DrawingPicture::resize(int width, int height) {
    if (width == device_->width() && height == device_->height())
        return;
    device_->onSize(width, height);
    invalidate();
}

void DrawingPicture::show(AcApDocument* document) {
    const AcDbObjectId space = document ? currentSpace(*document->database()) : AcDbObjectId();
    if (document == document_ && space == space_)
        return;
    document_ = document;
    space_ = space;
    view_->eraseAll();
    marks_.clear();
    forgetOutlines();
    const bool paper = document && !document->database()->tilemode();
    device_->setBackgroundColor(paper ? kPaperBackground : kModelBackground);
    if (paper && paper_->read(*document->database()))
        view_->add(paper_.get(), model_);
    if (const AcDbObjectPointer<AcDbBlockTableRecord> record(space); record)
        view_->add(record.object(), model_);
    invalidate();
    if (document && !document->views().isKnown())
        zoomExtents();
}

void DrawingPicture::invalidate() { stale_ = true; }

void DrawingPicture::forgetOutlines() { outlines_.clear(); }

const Outline& DrawingPicture::outlineOf(AcDbObjectId entity) {
    const auto [place, isNew] = outlines_.try_emplace(entity);
    if (isNew)
        place->second = host::outlineOf(entity);
    return place->second;
}

bool DrawingPicture::mark(std::vector<AcDbObjectId> entities) {
    if (entities == marks_)
        return false;
    marks_ = std::move(entities);
    return unmarked_ = true;
}

bool DrawingPicture::canBeRead() const { return document_ && AcDbObjectPointer<AcDbBlockTableRecord>(space_); }

bool DrawingPicture::refresh() {
    if ((!stale_ && !unmarked_) || !canBeRead())
        return false;
    if (stale_) {
        const DrawingViews::View& wanted = document_->views().current();
        // The field's width never counts beside its height.
        view_->setView(eyeOf(wanted), wanted.center, wanted.up, wanted.height * 1e-9, wanted.height,
                       wanted.eye > 0 ? AcGsView::kPerspective : AcGsView::kParallel);
        view_->invalidate();
    }
    view_->highlight(marks_);
    device_->update();
    stale_ = unmarked_ = false;
    return true;
}

double DrawingPicture::pixelSize() const { return document_ ? document_->views().current().height / height() : 1; }

AcGeMatrix3d DrawingPicture::worldToDevice() const {
    if (!document_)
        return {};
    const double scale = 1 / pixelSize();
    AcGeMatrix3d toDevice;
    toDevice.entry[0][0] = scale;
    toDevice.entry[1][1] = -scale;
    toDevice.entry[2][2] = scale;
    toDevice.entry[0][3] = width() / 2.0;
    toDevice.entry[1][3] = height() / 2.0;
    return toDevice * worldToView(document_->views().current());
}

AcGePoint3d DrawingPicture::seenAt(const AcGePoint3d& world) const {
    constexpr double kLargest = 1000; // what lies before the eye isn't seen, but has to be somewhere
    AcGePoint3d at = worldToDevice() * world;
    if (const double eye = document_ ? document_->views().current().eye / pixelSize() : 0; eye > 0) {
        const double scale = eye / std::max(eye - at.z, eye / kLargest);
        at.x = width() / 2.0 + (at.x - width() / 2.0) * scale;
        at.y = height() / 2.0 + (at.y - height() / 2.0) * scale;
    }
    return at;
}

DrawingViews::View DrawingPicture::viewOf(const AcDbExtents& box) const {
    return fittingView(document_->views().current(), box, aspect(), kMargin);
}

bool DrawingPicture::zoomExtents() {
    AcDbExtents extents;
    if (!document_)
        return false;
    if (!model_->visibleExtents(space_, extents))
        extents = limitsOf(*document_->database());
    if (extents.isEmpty())
        return false;
    document_->views().goTo(viewOf(extents));
    return true;
}

} // namespace vndk::host
