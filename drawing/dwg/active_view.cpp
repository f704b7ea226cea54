#include "dwg/active_view.h"

#include "db/database.h"
#include "db/symbol_tables.h"
#include "db/viewport.h"
#include "dwg/bit_reader.h"
#include "ge/matrix3d.h"

#include <cmath>

namespace vndk::dwg {

namespace {

/// A view as records hold it: the centre is in the plane of the screen.
struct View {
    double height = 0, twist = 0;
    AcGePoint2d center;
    AcGePoint3d target;
    AcGeVector3d direction;
};

std::optional<ActiveView> toWorld(const View& view) {
    if (!std::isfinite(view.height) || !(view.height > 0) || view.direction.isZeroLength())
        return std::nullopt;
    const AcGeMatrix3d screen =
        AcGeMatrix3d::planeToWorld(view.direction.normal()) * AcGeMatrix3d::rotation(-view.twist, AcGeVector3d::kZAxis);
    const AcGePoint3d center = view.target + screen * AcGeVector3d(view.center.x, view.center.y, 0);
    if (!std::isfinite(center.x + center.y + center.z))
        return std::nullopt;
    return ActiveView{center, view.height};
}

std::optional<View> modelView(const AcDbDatabase& database) {
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbViewportTable> table(database.viewportTableId());
    if (!table || static_cast<const AcDbSymbolTable&>(*table).getAt("*Active", id) != Acad::eOk)
        return std::nullopt;
    const AcDbObjectPointer<AcDbOpaqueTableRecord> record(id);
    if (!record)
        return std::nullopt;
    const AcDbOpaqueFields& fields = record->fields();
    BitReader bits(reinterpret_cast<const uint8_t*>(fields.bits.data()), 0, fields.bitCount);
    View view;
    view.height = bits.BD();
    bits.BD(); // the width
    view.center.x = bits.RD();
    view.center.y = bits.RD();
    for (double* number : {&view.target.x, &view.target.y, &view.target.z, &view.direction.x, &view.direction.y,
                           &view.direction.z, &view.twist})
        *number = bits.BD();
    return bits.failed() ? std::nullopt : std::optional(view);
}

std::optional<View> paperView(const AcDbDatabase& database) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.paperSpaceId());
    if (!space)
        return std::nullopt;
    for (const AcDbObjectId id : space->entities()) {
        const AcDbObjectPointer<AcDbViewport> viewport(id);
        if (!viewport)
            continue;
        const AcDbViewport::Data& data = viewport->data();
        return View{data.viewHeight, data.twist, data.viewCenter, data.target, data.direction};
    }
    return std::nullopt;
}

} // namespace

std::optional<ActiveView> activeView(const AcDbDatabase& database) {
    const auto view = database.tilemode() ? modelView(database) : paperView(database);
    return view ? toWorld(*view) : std::nullopt;
}

} // namespace vndk::dwg
