#include "gi/entity_drawing.h"

#include "db/block_reference.h"
#include "db/block_table.h"
#include "db/database.h"
#include "db/dimensions.h"
#include "db/is_a.h"
#include "db/leader.h"
#include "db/opaque.h"
#include "db/open.h"
#include "db/point.h"
#include "db/shape.h"
#include "db/transformed_parts.h"
#include "db/viewport.h"
#include "gi/entity_drawing_parts.h"

#include <algorithm>

namespace {

void drawPoint(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const auto& point = static_cast<const AcDbPoint&>(entity);
    geometry.point(point.position(), point.ecsRotation());
}

/// Whether an attribute with that mark is seen as the drawing's ATTMODE wants it.
bool isShown(const AcDbEntity& attribute, bool markedInvisible) {
    enum { kNone = 0, kAll = 2 };
    const AcDbDatabase* const database = attribute.database();
    const int mode = database ? database->header().ATTMODE : 1;
    return attribute.visibility() == AcDb::kVisible && mode != kNone && (mode == kAll || !markedInvisible);
}

void drawAttributes(const AcDbBlockReference& reference, AcGiWorldDraw& context) {
    for (const AcDbObjectId id : reference.attributes(true)) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        const auto* const attribute = entity ? AcDbAttribute::cast(entity.object()) : nullptr;
        if (!attribute || !isShown(*attribute, attribute->isInvisible()))
            continue;
        context.subEntityTraits().setTraitsOf(*attribute);
        if (attribute->colorIndex() == kAcDbColorByBlock)
            context.subEntityTraits().setColor(reference.colorIndex());
        vndk::gi::drawTextLine(*attribute, attribute->textValue(), context.geometry());
    }
}

bool isMissing(const AcDbBlockTableRecord& record) {
    return (record.isFromExternalReference() || record.isFromOverlayReference()) && !record.xrefDatabase();
}

/// In the place of a drawing that isn't there stands its path.
void drawPath(const AcDbBlockReference& reference, const AcDbBlockTableRecord& record, AcGiWorldDraw& context) {
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(reference.normal());
    AcGiText text;
    text.text = "Xref " + record.pathName();
    text.position = reference.position();
    text.direction = toWorld.xAxis();
    text.up = toWorld.yAxis();
    if (const AcDbDatabase* const database = reference.database()) {
        text.style = database->textstyle();
        text.height = database->header().TEXTSIZE;
    }
    context.geometry().text(text);
}

void drawReference(const AcDbEntity& entity, AcGiWorldDraw& context) {
    const auto& reference = static_cast<const AcDbBlockReference&>(entity);
    const AcDbObjectPointer<AcDbBlockTableRecord> record(reference.blockTableRecord());
    if (record && isMissing(*record)) {
        drawPath(reference, *record, context);
    } else if (record) {
        const AcDbBlockTableRecord::Shown shown = record->shown();
        const AcGeMatrix3d place = reference.blockTransform();
        const AcGePoint3d origin = place * (AcGePoint3d::kOrigin - shown.base.asVector());
        const auto* const array = AcDbMInsertBlock::cast(&reference);
        const unsigned rows = array ? array->rows() : 1U, columns = array ? array->columns() : 1U;
        // Rows and columns lie along the axes of the reference, whatever its scale.
        const AcGeVector3d along = array ? place.xAxis().normal() * array->columnSpacing() : AcGeVector3d();
        const AcGeVector3d up = array ? place.yAxis().normal() * array->rowSpacing() : AcGeVector3d();
        for (unsigned row = 0; row < rows; ++row)
            for (unsigned column = 0; column < columns; ++column)
                context.geometry().block(shown.record,
                                         AcGeMatrix3d::coordSystem(origin + along * column + up * row, place.xAxis(),
                                                                   place.yAxis(), place.zAxis()));
    }
    drawAttributes(reference, context);
}

void drawParts(const std::vector<std::unique_ptr<AcDbEntity>>& parts, AcGiWorldDraw& context) {
    for (const std::unique_ptr<AcDbEntity>& part : parts)
        acgiDrawEntity(*part, context);
}

/// A dimension's picture is a block, which stands where it is seen. One without is drawn from its data.
void drawDimension(const AcDbEntity& entity, AcGiWorldDraw& context) {
    const auto& dimension = static_cast<const AcDbDimension&>(entity);
    const AcDbObjectId block = dimension.dimBlockId();
    if (acdbIsA(block, AcDbBlockTableRecord::desc()) && !block.isErased())
        return context.geometry().block(block, dimension.dimBlockTransform());
    const auto parts = vndk::db::shownBy(
        dimension, dimension.database() ? dimension.database() : dimension.dimensionStyle().database(),
        dimension.picture());
    drawParts(parts, context);
}

void drawDefinition(const AcDbEntity& entity, AcGiWorldDraw& context) {
    const auto& definition = static_cast<const AcDbAttributeDefinition&>(entity);
    vndk::gi::drawTextLine(definition, definition.tagValue(), context.geometry());
}

void drawLeader(const AcDbEntity& entity, AcGiWorldDraw& context) {
    drawParts(static_cast<const AcDbLeader&>(entity).picture(), context);
}

void drawTolerance(const AcDbEntity& entity, AcGiWorldDraw& context) {
    drawParts(static_cast<const AcDbFcf&>(entity).picture(), context);
}

void drawMultiline(const AcDbEntity& entity, AcGiWorldDraw& context) {
    vndk::gi::drawMline(static_cast<const AcDbMline&>(entity), context);
}

/// One of the two: many need nothing but the geometry.
struct Row {
    AcRxClass* cls;
    void (*draw)(const AcDbEntity&, AcGiGeometry&);
    void (*drawWith)(const AcDbEntity&, AcGiWorldDraw&) = nullptr;
};

/// The functions of the nearest class that an object is of: those of other libraries look like their bases.
const Row* rowOf(const AcRxClass* cls) {
    using namespace vndk::gi;
    static const Row rows[] = {
        {AcDbLine::desc(), drawLine},
        {AcDbBlockReference::desc(), nullptr, drawReference},
        {AcDbText::desc(), drawText},
        {AcDbPolyline::desc(), drawPolyline},
        {AcDbCircle::desc(), drawCircle},
        {AcDbArc::desc(), drawArc},
        {AcDbEllipse::desc(), drawEllipse},
        {AcDbRay::desc(), drawRay},
        {AcDbXline::desc(), drawXline},
        {AcDbSpline::desc(), drawSpline},
        {AcDb2dPolyline::desc(), draw2dPolyline},
        {AcDb3dPolyline::desc(), draw3dPolyline},
        {AcDbPolygonMesh::desc(), drawPolygonMesh},
        {AcDbPolyFaceMesh::desc(), drawPolyFaceMesh},
        {AcDbFilledArea::desc(), drawFilledArea},
        {AcDbFace::desc(), drawFace},
        {AcDbPoint::desc(), drawPoint},
        {AcDbShape::desc(), drawShape},
        {AcDbViewport::desc(), drawViewport},
        {AcDbAttributeDefinition::desc(), nullptr, drawDefinition},
        {AcDbMText::desc(), drawMText},
        {AcDbHatch::desc(), drawHatch},
        {AcDbDimension::desc(), nullptr, drawDimension},
        {AcDbLeader::desc(), nullptr, drawLeader},
        {AcDbFcf::desc(), nullptr, drawTolerance},
        {AcDbMline::desc(), nullptr, drawMultiline},
        {AcDbModelerGeometry::desc(), drawSolidBody},
        {AcDbRasterImage::desc(), drawImage},
    };
    for (; cls; cls = cls->myParent())
        for (const Row& row : rows)
            if (row.cls == cls)
                return &row;
    return nullptr;
}

} // namespace

bool acgiDrawEntity(const AcDbEntity& entity, AcGiWorldDraw& context) {
    if (entity.visibility() == AcDb::kInvisible)
        return true;
    context.subEntityTraits().setTraitsOf(entity);
    if (const Row* const row = rowOf(entity.isA())) {
        if (row->draw)
            row->draw(entity, context.geometry());
        else
            row->drawWith(entity, context);
        return true;
    }
    const auto* const opaque = AcDbOpaqueEntity::cast(&entity);
    return opaque && vndk::gi::drawProxyGraphics(*opaque, context);
}

void acgiDrawInBlock(const AcDbEntity& entity, bool definitions, AcGiWorldDraw& context) {
    const auto* const definition = definitions ? nullptr : AcDbAttributeDefinition::cast(&entity);
    if (!definition) {
        acgiDrawEntity(entity, context);
    } else if (definition->attributeData().flags & 2 && isShown(*definition, definition->isInvisible())) {
        context.subEntityTraits().setTraitsOf(*definition);
        vndk::gi::drawTextLine(*definition, definition->textValue(), context.geometry());
    }
}
