#include "db/curves.h"
#include "db/hatch_contours.h"
#include "db/point.h"
#include "db/transformed_parts.h"

Acad::ErrorStatus AcDbHatch::explode(std::vector<AcDbEntity*>& parts) const {
    constexpr size_t kMost = 100'000;
    if (data_.solid)
        return Acad::eNotApplicable;
    const vndk::db::PatternDashes pattern = vndk::db::patternDashes(data_, kMost);
    if (!pattern.complete || pattern.dashes.empty())
        return Acad::eNotApplicable;
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data_.normal);
    const auto world = [&](const AcGePoint2d& p) { return toWorld * AcGePoint3d(p.x, p.y, data_.elevation); };
    vndk::db::Parts pieces;
    for (const vndk::db::Dash& dash : pattern.dashes) {
        if (dash.start == dash.end)
            pieces.push_back(std::make_unique<AcDbPoint>(world(dash.start)));
        else
            pieces.push_back(std::make_unique<AcDbLine>(world(dash.start), world(dash.end)));
        pieces.back()->setPropertiesFrom(this);
    }
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}
