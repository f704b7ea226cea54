#include "src/entity_points.h"

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/open.h"
#include "db/point.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "db/text.h"

namespace vndk::objects {

namespace {

using Points = std::vector<AcGePoint3d>;

void addEnds(const AcDbCurve& curve, Points& points) {
    AcGePoint3d point;
    if (curve.getStartPoint(point) == Acad::eOk)
        points.push_back(point);
    if (curve.getEndPoint(point) == Acad::eOk)
        points.push_back(point);
}

void addVertices(const AcDbPolyline& polyline, Points& points) {
    AcGePoint3d point;
    for (unsigned i = 0; i < polyline.numVerts(); ++i)
        if (polyline.getPointAt(i, point) == Acad::eOk)
            points.push_back(point);
}

void addVertices(const AcDbVertexOwner& owner, Points& points) {
    const AcDb2dPolyline* const flat = AcDb2dPolyline::cast(&owner);
    for (const AcDbObjectId& id : owner.vertices()) {
        const AcDbObjectPointer<AcDbVertex> vertex(id, AcDb::kForRead);
        if (!vertex)
            continue;
        const AcDb2dVertex* const flatVertex = AcDb2dVertex::cast(vertex.object());
        points.push_back(flat && flatVertex ? flat->vertexPosition(*flatVertex) : vertex->position());
    }
}

void addCurve(const AcDbCurve& curve, Points& points) {
    if (const auto* polyline = AcDbPolyline::cast(&curve))
        return addVertices(*polyline, points);
    if (const auto* owner = AcDbVertexOwner::cast(&curve))
        return addVertices(*owner, points);
    addEnds(curve, points);
    if (const auto* circle = AcDbCircle::cast(&curve))
        points.push_back(circle->center());
    else if (const auto* arc = AcDbArc::cast(&curve))
        points.push_back(arc->center());
    else if (const auto* ellipse = AcDbEllipse::cast(&curve))
        points.push_back(ellipse->center());
    else if (const auto* xline = AcDbXline::cast(&curve))
        points.push_back(xline->basePoint());
}

void addText(const AcDbText& text, Points& points) {
    points.push_back(text.position());
    if (!text.isDefaultAlignment())
        points.push_back(text.alignmentPoint());
}

template <class Area, class Get>
void addCorners(const Area& area, Get get, Points& points) {
    AcGePoint3d point;
    for (unsigned short i = 0; i < 4; ++i)
        if ((area.*get)(i, point) == Acad::eOk)
            points.push_back(point);
}

} // namespace

Points definingPoints(const AcDbEntity& entity) {
    Points points;
    if (const auto* curve = AcDbCurve::cast(&entity))
        addCurve(*curve, points);
    else if (const auto* text = AcDbText::cast(&entity))
        addText(*text, points);
    else if (const auto* paragraph = AcDbMText::cast(&entity))
        points.push_back(paragraph->location());
    else if (const auto* reference = AcDbBlockReference::cast(&entity))
        points.push_back(reference->position());
    else if (const auto* point = AcDbPoint::cast(&entity))
        points.push_back(point->position());
    else if (const auto* area = AcDbFilledArea::cast(&entity))
        addCorners(*area, &AcDbFilledArea::getPointAt, points);
    else if (const auto* face = AcDbFace::cast(&entity))
        addCorners(*face, &AcDbFace::getVertexAt, points);
    return points;
}

} // namespace vndk::objects
