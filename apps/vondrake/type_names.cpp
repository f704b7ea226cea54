#include "type_names.h"

#include "db/block_reference.h"
#include "db/dimensions.h"
#include "db/opaque.h"
#include "db/polylines.h"
#include "db/stand_in.h"

#include <string_view>

namespace vndk::app {

namespace {

struct ClassName {
    AcRxClass* (*cls)();
    const char* name;
};

constexpr ClassName kClassNames[] = {
    {&AcDbMInsertBlock::desc, "MINSERT"},
    {&AcDb2dVertex::desc, "VERTEX_2D"},
    {&AcDb3dPolylineVertex::desc, "VERTEX_3D"},
    {&AcDbPolygonMeshVertex::desc, "VERTEX_MESH"},
    {&AcDbPolyFaceMeshVertex::desc, "VERTEX_PFACE"},
    {&AcDbFaceRecord::desc, "VERTEX_PFACE_FACE"},
    {&AcDb2dPolyline::desc, "POLYLINE_2D"},
    {&AcDb3dPolyline::desc, "POLYLINE_3D"},
    {&AcDbPolygonMesh::desc, "POLYLINE_MESH"},
    {&AcDbPolyFaceMesh::desc, "POLYLINE_PFACE"},
    {&AcDbOrdinateDimension::desc, "DIMENSION_ORDINATE"},
    {&AcDbRotatedDimension::desc, "DIMENSION_LINEAR"},
    {&AcDbAlignedDimension::desc, "DIMENSION_ALIGNED"},
    {&AcDb3PointAngularDimension::desc, "DIMENSION_ANG3PT"},
    {&AcDb2LineAngularDimension::desc, "DIMENSION_ANG2LN"},
    {&AcDbRadialDimension::desc, "DIMENSION_RADIUS"},
    {&AcDbDiametricDimension::desc, "DIMENSION_DIAMETER"},
};

std::string withoutPrefix(std::string_view name) {
    for (const std::string_view prefix : {"ACDB", "ACAD_"})
        if (name.size() > prefix.size() && name.starts_with(prefix))
            return std::string(name.substr(prefix.size()));
    return std::string(name);
}

std::string nameOfOpaque(const AcDbOpaqueFields& fields) {
    return fields.typeName.empty() ? "UNKNOWN" : withoutPrefix(fields.typeName);
}

} // namespace

std::string typeNameOf(const AcDbObject& object) {
    if (const auto* const entity = AcDbOpaqueEntity::cast(&object))
        return nameOfOpaque(entity->fields());
    if (const auto* const opaque = AcDbOpaqueObject::cast(&object))
        return nameOfOpaque(opaque->fields());
    const AcRxClass* cls = object.isA();
    if (const AcDbStandInClass* const standIn = acdbStandInOf(cls))
        return withoutPrefix(standIn->ordinary->dxfName());
    for (const ClassName& row : kClassNames)
        if (cls == row.cls())
            return row.name;
    const char* const name = object.dxfName();
    return name ? withoutPrefix(name) : std::string("UNKNOWN");
}

} // namespace vndk::app
