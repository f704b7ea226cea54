#include "dwg/active_view.h"

#include "db/database.h"
#include "db/symbol_tables.h"
#include "db/viewport.h"
#include "dwg/bit_reader.h"
#include "dwg/bit_writer.h"
#include "ge/matrix3d.h"

#include <cmath>

namespace vndk::dwg {

namespace {

/// A view as records hold it: the centre is in the plane of the screen.
struct View {
    double height = 0, width = 0, twist = 0;
    AcGePoint2d center;
    AcGePoint3d target;
    AcGeVector3d direction; // as long as the eye is away
    bool perspective = false;
};

/// From the plane of the screen, whose origin is the target, to world directions.
AcGeMatrix3d screenAxes(const View& view) {
    return AcGeMatrix3d::planeToWorld(view.direction.normal()) *
           AcGeMatrix3d::rotation(-view.twist, AcGeVector3d::kZAxis);
}

std::optional<ActiveView> toWorld(const View& view) {
    if (!std::isfinite(view.height) || !(view.height > 0) || view.direction.isZeroLength())
        return std::nullopt;
    const AcGeMatrix3d screen = screenAxes(view);
    const AcGePoint3d center = view.target + screen * AcGeVector3d(view.center.x, view.center.y, 0);
    if (!std::isfinite(center.x + center.y + center.z))
        return std::nullopt;
    return ActiveView{center, view.height, view.direction.normal(), screen.yAxis(),
                      view.perspective ? view.direction.length() : 0};
}

/// Target, direction and twist stay where they lead to the same picture.
void fromWorld(const ActiveView& from, View& view) {
    const std::optional<ActiveView> former = toWorld(view);
    if (!former || !former->direction.isEqualTo(from.direction) || !former->up.isEqualTo(from.up) ||
        former->eye != from.eye) {
        view.target = from.center;
        view.direction = from.eye > 0 ? from.direction * from.eye : from.direction;
        const AcGeVector3d up = AcGeMatrix3d::worldToPlane(from.direction) * from.up;
        view.twist = std::atan2(up.x, up.y);
    }
    const AcGeVector3d aside = screenAxes(view).inverse() * (from.center - view.target);
    view.center = {aside.x, aside.y};
    view.height = from.height;
}

constexpr unsigned kPerspectiveBit = 8; // of a record's mode: the first of its bits
constexpr uint32_t kPerspectiveStatus = 1;

AcDbObjectId activeRecord(const AcDbDatabase& database) {
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbViewportTable> table(database.viewportTableId());
    if (table)
        (void)static_cast<const AcDbSymbolTable&>(*table).getAt("*Active", id);
    return id;
}

/// Reads the fields up to the twist; `bits` stands behind them then.
std::optional<View> readRecord(BitReader& bits) {
    View view;
    view.height = bits.BD();
    view.width = bits.BD();
    view.center.x = bits.RD();
    view.center.y = bits.RD();
    for (double* number : {&view.target.x, &view.target.y, &view.target.z, &view.direction.x, &view.direction.y,
                           &view.direction.z, &view.twist})
        *number = bits.BD();
    BitReader more = bits;
    for (int i = 0; i < 3; ++i)
        more.BD(); // the lens and the planes that cut off
    view.perspective = (more.BITS4() & kPerspectiveBit) != 0;
    return bits.failed() || more.failed() ? std::nullopt : std::optional(view);
}

BitReader readerOf(const AcDbOpaqueFields& fields) {
    return {reinterpret_cast<const uint8_t*>(fields.bits.data()), 0, fields.bitCount};
}

std::optional<View> modelView(const AcDbDatabase& database) {
    const AcDbObjectPointer<AcDbOpaqueTableRecord> record(activeRecord(database));
    if (!record)
        return std::nullopt;
    BitReader bits = readerOf(record->fields());
    return readRecord(bits);
}

bool setModelView(const AcDbDatabase& database, const ActiveView& wanted, double aspect) {
    const AcDbObjectPointer<AcDbOpaqueTableRecord> record(activeRecord(database), AcDb::kForWrite);
    if (!record)
        return false;
    AcDbOpaqueFields fields = record->fields();
    BitReader bits = readerOf(fields);
    std::optional<View> view = readRecord(bits);
    if (!view)
        return false;
    fromWorld(wanted, *view);
    BitWriter written;
    written.BD(view->height);
    written.BD(view->height * aspect);
    written.RD(view->center.x);
    written.RD(view->center.y);
    for (const double number : {view->target.x, view->target.y, view->target.z, view->direction.x, view->direction.y,
                                view->direction.z, view->twist})
        written.BD(number);
    written.copyBits(reinterpret_cast<const uint8_t*>(fields.bits.data()), bits.position(), fields.bitCount);
    fields.bitCount = static_cast<uint32_t>(written.position());
    fields.bits.assign(reinterpret_cast<const char*>(written.data().data()), written.data().size());
    record->assertWriteEnabled();
    record->setFields(std::move(fields));
    return true;
}

/// The viewport of the sheet itself.
AcDbObjectId sheetOf(const AcDbDatabase& database) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.paperSpaceId());
    if (space)
        for (const AcDbObjectId id : space->entities())
            if (AcDbObjectPointer<AcDbViewport>(id))
                return id;
    return {};
}

View viewOf(const AcDbViewport::Data& data) {
    const double width = data.height > 0 ? data.viewHeight * data.width / data.height : 0;
    return {data.viewHeight,
            width,
            data.twist,
            data.viewCenter,
            data.target,
            data.direction,
            (data.status & kPerspectiveStatus) != 0};
}

std::optional<View> paperView(const AcDbDatabase& database) {
    const AcDbObjectPointer<AcDbViewport> sheet(sheetOf(database));
    return sheet ? std::optional(viewOf(sheet->data())) : std::nullopt;
}

bool setPaperView(const AcDbDatabase& database, const ActiveView& wanted) {
    const AcDbObjectPointer<AcDbViewport> sheet(sheetOf(database), AcDb::kForWrite);
    if (!sheet)
        return false;
    AcDbViewport::Data data = sheet->data();
    View view = viewOf(data);
    fromWorld(wanted, view);
    data.viewHeight = view.height;
    data.twist = view.twist;
    data.viewCenter = view.center;
    data.target = view.target;
    data.direction = view.direction;
    sheet->assertWriteEnabled();
    sheet->setFileData(std::move(data));
    return true;
}

} // namespace

std::optional<ActiveView> activeView(const AcDbDatabase& database, bool modelSpace) {
    const auto view = modelSpace ? modelView(database) : paperView(database);
    return view ? toWorld(*view) : std::nullopt;
}

double activeViewAspect(const AcDbDatabase& database, bool modelSpace) {
    const auto view = modelSpace ? modelView(database) : paperView(database);
    const double aspect = view ? view->width / view->height : 0;
    return aspect > 0 && std::isfinite(aspect) ? aspect : 0;
}

std::optional<ActiveView> activeView(const AcDbDatabase& database) { return activeView(database, database.tilemode()); }

bool setActiveView(AcDbDatabase& database, bool modelSpace, const ActiveView& view, double aspect) {
    return modelSpace ? setModelView(database, view, aspect) : setPaperView(database, view);
}

} // namespace vndk::dwg
