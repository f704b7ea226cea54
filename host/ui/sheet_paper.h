// The sheet on which paper space is drawn: white, with a shadow, as large as the space's limits.
#pragma once

#include "ge/vector.h"
#include "gi/drawable.h"

class AcDbDatabase;

namespace vndk::host {

class SheetPaper : public AcGiDrawable {
public:
    /// Takes the sheet's size. False: the limits make none.
    bool read(const AcDbDatabase& database);

    uint32_t setAttributes(AcGiDrawableTraits*) override { return 0; }
    bool worldDraw(AcGiWorldDraw* context) override;
    void viewportDraw(AcGiViewportDraw*) override {}
    bool isPersistent() const override { return false; }
    AcDbObjectId id() const override { return {}; }
    void setGsNode(AcGsNode* node) override { node_ = node; }
    AcGsNode* gsNode() const override { return node_; }

private:
    AcGePoint2d low_, high_;
    AcGsNode* node_ = nullptr;
};

} // namespace vndk::host
