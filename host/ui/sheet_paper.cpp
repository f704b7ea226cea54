#include "ui/sheet_paper.h"

#include "db/database.h"

#include <array>

namespace vndk::host {

namespace {

constexpr double kShadow = 0.01; // of the sheet's height

void fill(AcGiGeometry& geometry, const AcGePoint2d& low, const AcGePoint2d& high) {
    geometry.polygon(std::array<AcGePoint3d, 4>{AcGePoint3d(low.x, low.y, 0), AcGePoint3d(high.x, low.y, 0),
                                                AcGePoint3d(high.x, high.y, 0), AcGePoint3d(low.x, high.y, 0)});
}

} // namespace

bool SheetPaper::read(const AcDbDatabase& database) {
    const dwg::HeaderVariables& header = database.header();
    low_ = {header.PLIMMIN.x, header.PLIMMIN.y};
    high_ = {header.PLIMMAX.x, header.PLIMMAX.y};
    return high_.x > low_.x && high_.y > low_.y;
}

bool SheetPaper::worldDraw(AcGiWorldDraw* context) {
    const double aside = (high_.y - low_.y) * kShadow;
    context->subEntityTraits().setTrueColor(AcCmEntityColor::trueColor(64, 64, 64));
    fill(context->geometry(), {low_.x + aside, low_.y - aside}, {high_.x + aside, high_.y - aside});
    context->subEntityTraits().setTrueColor(AcCmEntityColor::trueColor(255, 255, 255));
    fill(context->geometry(), low_, high_);
    return true;
}

} // namespace vndk::host
