#pragma once
/// A drawing that holds whatever an insertion has to take along, to turn or to leave behind.

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/hatch.h"
#include "db/mline.h"
#include "db/opaque.h"
#include "db/polylines.h"
#include "db/stub.h"
#include "db/text.h"
#include "db/viewport.h"
#include "db/xdata.h"
#include "dwg/bit_writer.h"
#include "dwg/class_table.h"

namespace vndk::test {

class RichDrawing {
public:
    RichDrawing() {
        makeTables();
        makeBlocks();
        line = append(new AcDbLine({0, 0, 0}, {5, 5, 0}));
        circle = append(new AcDbCircle({1, 2, 0}, {0, 0, 1}, 3));
        paper = append(new AcDbLine({0, 0, 0}, {1, 0, 0}), database.paperSpaceId());
        append(new AcDbViewport);
        reference = append(new AcDbBlockReference({9, 9, 0}, outer));
        addAttribute("ONE");
        addAttribute("TWO");
        append(new AcDbBlockReference({0, 0, 0}, anonymous));
        append(new AcDbMText);
        append(new AcDbText({1, 1, 0}, "text", style, 2, 0));
        append(new AcDbAttributeDefinition({7, 8, 0}, "value", "TAG", "prompt"));
        appendPolyline();
        appendOpaque();
        dressLine();
        database.setInsbase({5, 6, 7});
    }

    AcDbObjectId append(AcDbEntity* entity, AcDbObjectId block = {}) {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block.isNull() ? database.modelSpaceId() : block,
                                                             AcDb::kForWrite);
        AcDbObjectId id;
        record->appendAcDbEntity(id, entity);
        if (!layer.isNull())
            entity->setLayer(layer);
        entity->close();
        return id;
    }

    template <class Table>
    static AcDbObjectId add(AcDbObjectId tableId, typename Table::Record* record, const char* name) {
        const AcDbObjectPointer<Table> table(tableId, AcDb::kForWrite);
        AcDbObjectId id;
        if (*name)
            record->setName(name);
        table->add(id, record);
        record->close();
        return id;
    }

    AcDbObjectId addBlock(const char* name) {
        return add<AcDbBlockTable>(database.blockTableId(), new AcDbBlockTableRecord, name);
    }

    AcDbObjectId setIn(AcDbObjectId dictionary, const char* key, AcDbObject* object) {
        const AcDbObjectPointer<AcDbDictionary> open(dictionary, AcDb::kForWrite);
        AcDbObjectId id;
        open->setAt(key, object, id);
        object->close();
        return id;
    }

    AcDbObjectId folder(const char* key) {
        AcDbObjectId id;
        {
            const AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId());
            if (root->getAt(key, id) == Acad::eOk)
                return id;
        }
        return setIn(database.namedObjectsDictionaryId(), key, new AcDbDictionary);
    }

    static AcDbOpaqueFields fields(const char* type, uint16_t number, std::vector<AcDbOpaqueFields::Reference> refs) {
        AcDbOpaqueFields fields;
        fields.typeName = type;
        fields.fixedType = number;
        fields.bits = std::string(4, '\x5A');
        fields.bitCount = 30;
        fields.references = std::move(refs);
        if (number != 0)
            return fields;
        auto record = std::make_shared<dwg::ClassRecord>();
        record->number = 500;
        record->dxfName = type;
        record->cppName = std::string("AcDb") + type;
        record->appName = "ObjectDBX Classes";
        record->itemClassId = std::string_view(type) == "PHOTO" ? dwg::kEntityClassId : dwg::kObjectClassId;
        fields.fileClass = record;
        return fields;
    }

    static AcDbOpaqueObject* opaqueObject(AcDbOpaqueFields fields) {
        auto* const object = new AcDbOpaqueObject;
        object->setFields(std::move(fields));
        return object;
    }

    /// An extension record of handles under group codes.
    static AcDbOpaqueFields xrecord(const std::vector<std::pair<uint16_t, uint64_t>>& handles) {
        dwg::BitWriter writer;
        writer.BL(static_cast<uint32_t>(handles.size() * 10 + 6));
        for (const auto& [code, handle] : handles) {
            writer.RS(code);
            writer.RLL(handle);
        }
        writer.RS(90);
        writer.RL(0x12345678);
        writer.BS(1);
        AcDbOpaqueFields fields;
        fields.typeName = "XRECORD";
        fields.fixedType = 79;
        fields.bitCount = static_cast<uint32_t>(writer.position());
        fields.bits.assign(writer.data().begin(), writer.data().end());
        return fields;
    }

    AcDbDatabase database;
    AcDbObjectId layer, linetype, style, shapes, application; // records
    AcDbObjectId part, outer, anonymous, unused;              // blocks
    AcDbObjectId line, circle, paper, reference, group;

private:
    void makeTables() {
        auto* const shapeStyle = new AcDbTextStyleTableRecord;
        AcDbTextStyleTableRecord::Data data;
        data.isShapeFile = true;
        data.fileName = "parts.shx";
        shapeStyle->setData(data);
        shapes = add<AcDbTextStyleTable>(database.textStyleTableId(), shapeStyle, "");
        style = add<AcDbTextStyleTable>(database.textStyleTableId(), new AcDbTextStyleTableRecord, "Roman");
        auto* const dashed = new AcDbLinetypeTableRecord;
        AcDbLinetypeTableRecord::Data pattern;
        pattern.dashes.resize(2);
        pattern.dashes[0].length = 1;
        pattern.dashes[1].length = -1;
        pattern.dashes[1].flags = 4;
        pattern.dashes[1].style = shapes;
        dashed->setData(pattern);
        linetype = add<AcDbLinetypeTable>(database.linetypeTableId(), dashed, "Fence");
        auto* const steel = new AcDbLayerTableRecord;
        steel->setLinetypeObjectId(linetype);
        layer = add<AcDbLayerTable>(database.layerTableId(), steel, "Steel");
        application = add<AcDbRegAppTable>(database.regAppTableId(), new AcDbRegAppTableRecord, "MAKER");
    }

    void makeBlocks() {
        part = addBlock("PART");
        append(new AcDbCircle({0, 0, 0}, {0, 0, 1}, 2), part);
        append(new AcDbAttributeDefinition({3, 4, 0}, "value", "INNER", "prompt"), part);
        outer = addBlock("OUTER");
        append(new AcDbBlockReference({1, 1, 0}, part), outer);
        anonymous = addBlock("*U1");
        append(new AcDbLine({0, 0, 0}, {2, 0, 0}), anonymous);
        unused = addBlock("UNUSED");
        append(new AcDbBlockReference({1, 1, 0}, unused), unused); // holds itself, which is nobody's trouble
    }

    void addAttribute(const char* tag) {
        const AcDbObjectPointer<AcDbBlockReference> open(reference, AcDb::kForWrite);
        auto* const attribute = new AcDbAttribute({1, 2, 0}, "value", tag);
        open->appendAttribute(attribute);
        attribute->setLayer(layer);
        attribute->close();
    }

    void appendPolyline() {
        const AcDbObjectId id = append(new AcDb3dPolyline);
        const AcDbObjectPointer<AcDb3dPolyline> polyline(id, AcDb::kForWrite);
        for (const double x : {0.0, 1.0, 2.0}) {
            auto* const vertex = new AcDb3dPolylineVertex(AcGePoint3d(x, x * x, 1));
            polyline->appendVertex(vertex);
            vertex->setLayer(layer);
            vertex->close();
        }
    }

    void appendOpaque() {
        const AcDbObjectId mlineStyle =
            setIn(folder("ACAD_MLINESTYLE"), "Wall", opaqueObject(fields("MLINESTYLE", 73, {})));
        const AcDbObjectId image = setIn(folder("ACAD_IMAGE_DICT"), "photo", opaqueObject(fields("IMAGEDEF", 0, {})));
        for (const auto& [type, number, target] :
             {std::tuple("OLE2FRAME", 74, mlineStyle), std::tuple("PHOTO", 0, image)}) {
            auto* const entity = new AcDbOpaqueEntity;
            entity->setFields(fields(type, static_cast<uint16_t>(number), {{5, target, 0}, {4, circle, 0}}));
            append(entity);
        }
        AcDbMline::Data wall;
        wall.style = mlineStyle;
        auto* const mline = new AcDbMline;
        mline->setFileData(wall);
        append(mline);
        AcDbHatch::Data area;
        area.solid = area.associative = true;
        area.loops.resize(1);
        area.loops[0].boundary = {circle, paper};
        auto* const hatch = new AcDbHatch;
        hatch->setFileData(area);
        append(hatch);
        group = setIn(folder("ACAD_GROUP"), "Pair", opaqueObject(fields("GROUP", 72, {{5, line, 0}, {5, circle, 0}})));
    }

    void dressLine() {
        const AcDbObjectPointer<AcDbLine> open(line, AcDb::kForWrite);
        open->addPersistentReactor(circle);
        open->addPersistentReactor(group);
        AcDbXDataGroup& data = open->packedXDataForWrite()->groups.emplace_back();
        data.application = application;
        AcDbXDataWriter writer(data.items);
        writer.text("made here");
        for (const AcDbObjectId id : {circle, paper})
            writer.handle(id.handle());
        writer.layer(layer.handle());
        open->createExtensionDictionary();
        auto* const values = opaqueObject(
            xrecord({{330, circle.handle().value()}, {340, paper.handle().value()}, {320, circle.handle().value()}}));
        setIn(open->extensionDictionary(), "VALUES", values);
    }
};

} // namespace vndk::test
