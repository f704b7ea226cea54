// The drawing of single classes. Properties are set already. Private to this room.
#pragma once

#include "db/hatch.h"
#include "db/mline.h"
#include "db/modeler_geometry.h"
#include "db/polylines.h"
#include "db/raster_image.h"
#include "db/solids.h"
#include "db/text.h"
#include "gi/drawable.h"

namespace vndk::gi {

void drawLine(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawCircle(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawArc(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawEllipse(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawRay(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawXline(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawSpline(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawPolyline(const AcDbEntity& entity, AcGiGeometry& geometry);
void draw2dPolyline(const AcDbEntity& entity, AcGiGeometry& geometry);
void draw3dPolyline(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawPolygonMesh(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawPolyFaceMesh(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawFilledArea(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawFace(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawText(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawMText(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawShape(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawViewport(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawSolidBody(const AcDbEntity& entity, AcGiGeometry& geometry);
/// Its frame.
void drawImage(const AcDbEntity& entity, AcGiGeometry& geometry);
void drawHatch(const AcDbEntity& entity, AcGiGeometry& geometry);
/// Its lines have colours of their own.
void drawMline(const AcDbMline& mline, AcGiWorldDraw& context);

/// The picture that a file keeps with an entity of an unknown class. False: it has none.
bool drawProxyGraphics(const AcDbEntity& entity, AcGiWorldDraw& context);

/// A text entity's line with `shown` in place of its own value.
void drawTextLine(const AcDbText& text, const std::string& shown, AcGiGeometry& geometry);

/// The counter-clockwise sweep between two angles: above 0, a full turn for equal ones.
double sweepOf(double start, double end);
/// A piece of thickness along a normal: what is drawn stands at the foot and at the top.
inline AcGeVector3d extrusion(double thickness, const AcGeVector3d& normal) { return normal * thickness; }

} // namespace vndk::gi
