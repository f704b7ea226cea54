#include "ads/dxf_lists.h"

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/point.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "db/text.h"

#include <span>

namespace vndk::host {

resbuf& DxfList::add(short code) {
    *tail_ = acutNewRb(code);
    resbuf& added = **tail_;
    tail_ = &added.rbnext;
    return added;
}

void DxfList::text(short code, std::string_view value) { add(code).resval.rstring = acutNewString(value); }

void DxfList::real(short code, double value) { add(code).resval.rreal = value; }

void DxfList::integer(short code, int value) {
    resbuf& added = add(code);
    if (acdbGroupCodeToType(code) == RTLONG)
        added.resval.rlong = value;
    else
        added.resval.rint = static_cast<short>(value);
}

void DxfList::name(short code, AcDbObjectId id) {
    resbuf& added = add(code);
    added.resval.rlname[0] = id.asOldId();
    added.resval.rlname[1] = 0;
}

void DxfList::point(short code, const AcGePoint3d& value) {
    resbuf& added = add(code);
    added.resval.rpoint[0] = value.x;
    added.resval.rpoint[1] = value.y;
    added.resval.rpoint[2] = value.z;
}

void DxfList::point(short code, const AcGePoint2d& value) { point(code, AcGePoint3d(value.x, value.y, 0)); }

void DxfList::handle(short code, AcDbHandle value) {
    char buffer[17];
    value.getIntoAsciiBuffer(buffer);
    text(code, buffer);
}

void DxfList::append(resbuf* list) {
    *tail_ = list;
    while (*tail_)
        tail_ = &(*tail_)->rbnext;
}

namespace {

std::string nameOf(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbSymbolTableRecord> record(id);
    return record ? record->name() : std::string();
}

/// Thickness and normal, where they aren't the usual ones.
void extrusion(DxfList& list, double thickness, const AcGeVector3d& normal) {
    if (thickness != 0)
        list.real(39, thickness);
    list.vector(210, normal);
}

void line(const AcDbLine& entity, DxfList& list) {
    const auto& data = entity.data();
    list.subclass("AcDbLine");
    list.point(10, data.start);
    list.point(11, data.end);
    extrusion(list, data.thickness, data.normal);
}

/// What circles and arcs have in common.
template <class Data>
void circleGroups(const Data& data, DxfList& list) {
    list.subclass("AcDbCircle");
    list.point(10, data.center);
    list.real(40, data.radius);
    extrusion(list, data.thickness, data.normal);
}

void circle(const AcDbCircle& entity, DxfList& list) { circleGroups(entity.data(), list); }

void arc(const AcDbArc& entity, DxfList& list) {
    circleGroups(entity.data(), list);
    list.subclass("AcDbArc");
    list.real(50, entity.data().startAngle);
    list.real(51, entity.data().endAngle);
}

void ellipse(const AcDbEllipse& entity, DxfList& list) {
    const auto& data = entity.data();
    list.subclass("AcDbEllipse");
    list.point(10, data.center);
    list.vector(11, data.majorAxis);
    list.vector(210, data.normal);
    list.real(40, data.ratio);
    list.real(41, data.startParam);
    list.real(42, data.endParam);
}

/// Rays and construction lines.
template <class Class>
void straight(const Class& entity, DxfList& list) {
    list.subclass(Class::desc()->name());
    list.point(10, entity.data().base);
    list.vector(11, entity.data().direction);
}

void spline(const AcDbSpline& entity, DxfList& list) {
    const auto& data = entity.data();
    list.subclass("AcDbSpline");
    list.integer(70, data.closed + 2 * data.periodic + 4 * data.rational);
    list.integer(71, data.degree);
    list.integer(72, static_cast<int>(data.knots.size()));
    list.integer(73, static_cast<int>(data.controlPoints.size()));
    list.integer(74, static_cast<int>(data.fitPoints.size()));
    for (const double knot : data.knots)
        list.real(40, knot);
    for (size_t i = 0; i < data.controlPoints.size(); ++i) {
        list.point(10, data.controlPoints[i]);
        if (i < data.weights.size())
            list.real(41, data.weights[i]);
    }
    for (const AcGePoint3d& point : data.fitPoints)
        list.point(11, point);
}

void point(const AcDbPoint& entity, DxfList& list) {
    list.subclass("AcDbPoint");
    list.point(10, entity.position());
}

void textGroups(const AcDbText& text, DxfList& list) {
    const AcDbText::Data& data = text.data();
    list.subclass("AcDbText");
    list.point(10, AcGePoint3d(data.position.x, data.position.y, data.elevation));
    list.real(40, data.height);
    list.text(1, data.text);
    list.real(50, data.rotation);
    list.real(41, data.widthFactor);
    list.real(51, data.oblique);
    list.text(7, nameOf(data.style));
    list.integer(71, data.generation);
    list.integer(72, data.horizontal);
    list.point(11, AcGePoint3d(data.alignment.x, data.alignment.y, data.elevation));
    extrusion(list, data.thickness, data.normal);
}

void text(const AcDbText& entity, DxfList& list) {
    textGroups(entity, list);
    list.subclass("AcDbText");
    list.integer(73, entity.data().vertical);
}

void attributeGroups(const AcDbText& text, const AcDbAttributeData& data, DxfList& list) {
    list.text(2, data.tag);
    list.integer(70, data.flags);
    list.integer(73, data.fieldLength);
    list.integer(74, text.data().vertical);
}

void attribute(const AcDbAttribute& entity, DxfList& list) {
    textGroups(entity, list);
    list.subclass("AcDbAttribute");
    attributeGroups(entity, entity.attributeData(), list);
}

void attributeDefinition(const AcDbAttributeDefinition& entity, DxfList& list) {
    textGroups(entity, list);
    list.subclass("AcDbAttributeDefinition");
    list.text(3, entity.promptValue());
    attributeGroups(entity, entity.attributeData(), list);
}

void mtext(const AcDbMText& entity, DxfList& list) {
    const auto& data = entity.data();
    list.subclass("AcDbMText");
    list.point(10, data.location);
    list.real(40, data.height);
    list.real(41, data.width);
    list.integer(71, data.attachment);
    list.integer(72, data.flowDirection);
    // Contents go in pieces of 250 characters, of which the last has code 1.
    std::string_view rest = data.contents;
    for (; rest.size() > 250; rest.remove_prefix(250))
        list.text(3, rest.substr(0, 250));
    list.text(1, rest);
    list.text(7, nameOf(data.style));
    list.vector(210, data.normal);
    list.vector(11, data.direction);
}

void insert(const AcDbBlockReference& entity, DxfList& list) {
    const auto& data = entity.data();
    list.subclass("AcDbBlockReference");
    if (!entity.attributes().empty())
        list.integer(66, 1);
    list.text(2, nameOf(data.block));
    list.point(10, data.position);
    list.real(41, data.scale.sx);
    list.real(42, data.scale.sy);
    list.real(43, data.scale.sz);
    list.real(50, data.rotation);
    list.vector(210, data.normal);
}

void lightPolyline(const AcDbPolyline& entity, DxfList& list) {
    const auto& data = entity.data();
    list.subclass("AcDbPolyline");
    list.integer(90, static_cast<int>(data.vertices.size()));
    list.integer(70, data.closed + 128 * data.plinegen);
    list.real(43, data.constantWidth);
    list.real(38, data.elevation);
    list.real(39, data.thickness);
    for (const AcDbPolyline::Vertex& vertex : data.vertices) {
        list.point(10, vertex.point);
        list.real(40, vertex.startWidth);
        list.real(41, vertex.endWidth);
        list.real(42, vertex.bulge);
    }
    list.vector(210, data.normal);
}

void polyline2d(const AcDb2dPolyline& entity, DxfList& list) {
    const auto& data = entity.data();
    list.subclass("AcDb2dPolyline");
    list.integer(66, 1);
    list.point(10, AcGePoint3d(0, 0, data.elevation));
    list.integer(70, data.flag);
    list.real(40, data.startWidth);
    list.real(41, data.endWidth);
    list.integer(75, data.curveType);
    extrusion(list, data.thickness, data.normal);
}

void polyline3d(const AcDb3dPolyline& entity, DxfList& list) {
    const auto& data = entity.data();
    list.subclass("AcDb3dPolyline");
    list.integer(66, 1);
    list.integer(70, 8 | data.flag);
    list.integer(75, data.curveType);
}

void vertex(const AcDbVertex& entity, DxfList& list) {
    list.subclass("AcDbVertex");
    list.point(10, entity.data().position);
    list.integer(70, entity.data().flag);
    if (const auto* flat = AcDb2dVertex::cast(&entity)) {
        list.real(40, flat->curveData().startWidth);
        list.real(41, flat->curveData().endWidth);
        list.real(42, flat->curveData().bulge);
        list.real(50, flat->curveData().tangent);
    }
}

void filledArea(const AcDbFilledArea& entity, DxfList& list) {
    const auto& data = entity.data();
    list.subclass("AcDbTrace");
    for (short i = 0; i < 4; ++i)
        list.point(static_cast<short>(10 + i), AcGePoint3d(data.corners[i].x, data.corners[i].y, data.elevation));
    extrusion(list, data.thickness, data.normal);
}

void face(const AcDbFace& entity, DxfList& list) {
    const auto& data = entity.data();
    list.subclass("AcDbFace");
    for (short i = 0; i < 4; ++i)
        list.point(static_cast<short>(10 + i), data.corners[i]);
    list.integer(70, data.invisibleEdges);
}

/// The groups of a class. An object takes the first row whose class it is a kind of, so derived classes come first.
struct ClassRow {
    AcRxClass* (*desc)();
    void (*write)(const AcDbObject&, DxfList&);
};

template <class Class, void (*Write)(const Class&, DxfList&)>
constexpr ClassRow row() {
    return {Class::desc,
            [](const AcDbObject& object, DxfList& list) { Write(static_cast<const Class&>(object), list); }};
}

constexpr ClassRow kClasses[] = {
    row<AcDbLine, line>(),
    row<AcDbCircle, circle>(),
    row<AcDbArc, arc>(),
    row<AcDbBlockReference, insert>(),
    row<AcDbAttribute, attribute>(),
    row<AcDbAttributeDefinition, attributeDefinition>(),
    row<AcDbText, text>(),
    row<AcDbMText, mtext>(),
    row<AcDbPoint, point>(),
    row<AcDbPolyline, lightPolyline>(),
    row<AcDb2dPolyline, polyline2d>(),
    row<AcDb3dPolyline, polyline3d>(),
    row<AcDbVertex, vertex>(),
    row<AcDbEllipse, ellipse>(),
    row<AcDbSpline, spline>(),
    row<AcDbRay, straight<AcDbRay>>(),
    row<AcDbXline, straight<AcDbXline>>(),
    row<AcDbFilledArea, filledArea>(),
    row<AcDbFace, face>(),
};

void entityGroups(const AcDbEntity& entity, DxfList& list) {
    const AcDbDatabase* const database = entity.database();
    list.subclass("AcDbEntity");
    if (database && entity.blockId() == database->paperSpaceId())
        list.integer(67, 1);
    list.text(8, nameOf(entity.layerId()));
    if (database && !entity.linetypeId().isNull() && entity.linetypeId() != database->byLayerLinetypeId())
        list.text(6, nameOf(entity.linetypeId()));
    if (entity.colorIndex() != kAcDbColorByLayer)
        list.integer(62, entity.colorIndex());
    if (entity.linetypeScale() != 1)
        list.real(48, entity.linetypeScale());
    if (entity.visibility() == AcDb::kInvisible)
        list.integer(60, 1);
    if (entity.lineWeight() != AcDb::kLnWtByLayer)
        list.integer(370, entity.lineWeight());
}

} // namespace

void writeDxfList(const AcDbObject& object, DxfList& list) {
    list.name(-1, object.objectId());
    list.text(0, object.dxfName() ? object.dxfName() : object.isA()->name());
    list.handle(5, object.objectId().handle());
    list.name(330, object.ownerId());
    if (const auto* entity = AcDbEntity::cast(&object))
        entityGroups(*entity, list);
    for (const ClassRow& row : kClasses)
        if (object.isKindOf(row.desc())) {
            row.write(object, list);
            return;
        }
    if (const auto* record = AcDbSymbolTableRecord::cast(&object)) {
        list.subclass("AcDbSymbolTableRecord");
        list.text(2, record->name());
    }
}

} // namespace vndk::host
