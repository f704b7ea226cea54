// Values of decoded objects against what an independent reader found in the same drawings.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>

#include "db/block_ends.h"
#include "db/block_reference.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/dimensions.h"
#include "db/hatch.h"
#include "db/helix.h"
#include "db/leader.h"
#include "db/line_weight.h"
#include "db/mline.h"
#include "db/point.h"
#include "db/polylines.h"
#include "db/raster_image.h"
#include "db/shape.h"
#include "db/solids.h"
#include "db/stub.h"
#include "db/text.h"
#include "db/viewport.h"
#include "dwg/codepage.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_source.h"
#include "support/drawings.h"
#include "support/json.h"

namespace vndk::test {

namespace {

using Numbers = std::vector<double>;

Numbers numbers(double v) { return {v}; }
Numbers numbers(const AcGePoint2d& p) { return {p.x, p.y}; }
Numbers numbers(const AcGePoint3d& p) { return {p.x, p.y, p.z}; }
Numbers numbers(const AcGeVector3d& v) { return {v.x, v.y, v.z}; }
Numbers numbers(const AcGeScale3d& s) { return {s.sx, s.sy, s.sz}; }

/// One field: its type and name in the facts, and how the decoded object tells it. A handle's fact is a list of four
/// numbers, of which the last is the handle.
struct Field {
    const char* type;
    const char* name;
    std::function<Numbers(const AcDbObject&)> value;
};

struct TextField {
    const char* type;
    const char* name;
    std::function<std::string(const AcDbObject&)> value;
};

template <class T, class Get>
auto of(Get get) {
    return [get](const AcDbObject& object) { return numbers(get(static_cast<const T&>(object).data())); };
}

template <class T, class Get>
auto handleOf(Get get) {
    return [get](const AcDbObject& object) {
        return numbers(static_cast<double>(get(static_cast<const T&>(object)).handle().value()));
    };
}

template <class T, class Get>
auto pointsOf(Get get) {
    return [get](const AcDbObject& object) { return numbers(get(static_cast<const T&>(object).points())); };
}

/// What the points tell, not what the file says of them.
Numbers measured(const AcDbObject& object) {
    double value = 0;
    EXPECT_EQ(static_cast<const AcDbDimension&>(object).measurement(value), Acad::eOk);
    return numbers(value);
}

#define DATA(member) [](const auto& data) { return data.member; }
#define CALL(call) [](const auto& object) { return object.call; }

const std::vector<Field> kFields = {
    {"LINE", "start", of<AcDbLine>(DATA(start))},
    {"LINE", "end", of<AcDbLine>(DATA(end))},
    {"LINE", "extrusion", of<AcDbLine>(DATA(normal))},
    {"LINE", "layer", handleOf<AcDbLine>(CALL(layerId()))},
    {"CIRCLE", "center", of<AcDbCircle>(DATA(center))},
    {"CIRCLE", "radius", of<AcDbCircle>(DATA(radius))},
    {"ARC", "center", of<AcDbArc>(DATA(center))},
    {"ARC", "start_angle", of<AcDbArc>(DATA(startAngle))},
    {"ARC", "end_angle", of<AcDbArc>(DATA(endAngle))},
    {"ELLIPSE", "sm_axis", of<AcDbEllipse>(DATA(majorAxis))},
    {"ELLIPSE", "axis_ratio", of<AcDbEllipse>(DATA(ratio))},
    {"RAY", "point", of<AcDbRay>(DATA(base))},
    {"RAY", "vector", of<AcDbRay>(DATA(direction))},
    {"XLINE", "vector", of<AcDbXline>(DATA(direction))},
    {"POINT", "x", of<AcDbPoint>(DATA(position.x))},
    {"POINT", "x_ang", of<AcDbPoint>(DATA(ecsRotation))},
    {"SPLINE", "degree", of<AcDbSpline>(DATA(degree))},
    {"SPLINE", "fit_tol", of<AcDbSpline>(DATA(fitTolerance))},
    {"SPLINE", "end_tan_vec", of<AcDbSpline>(DATA(endTangent))},
    {"TEXT", "ins_pt", of<AcDbText>(DATA(position))},
    {"TEXT", "alignment_pt", of<AcDbText>(DATA(alignment))},
    {"TEXT", "elevation", of<AcDbText>(DATA(elevation))},
    {"TEXT", "height", of<AcDbText>(DATA(height))},
    {"TEXT", "rotation", of<AcDbText>(DATA(rotation))},
    {"TEXT", "horiz_alignment", of<AcDbText>(DATA(horizontal))},
    {"TEXT", "style", handleOf<AcDbText>(CALL(textStyle()))},
    {"ATTRIB", "rotation", of<AcDbText>(DATA(rotation))},
    {"ATTRIB", "ownerhandle", handleOf<AcDbAttribute>(CALL(ownerId()))},
    {"ATTDEF", "height", of<AcDbText>(DATA(height))},
    {"MTEXT", "ins_pt", of<AcDbMText>(DATA(location))},
    {"MTEXT", "rect_width", of<AcDbMText>(DATA(width))},
    {"MTEXT", "attachment", of<AcDbMText>(DATA(attachment))},
    {"MTEXT", "extents_width", of<AcDbMText>(DATA(extentsWidth))},
    {"INSERT", "ins_pt", of<AcDbBlockReference>(DATA(position))},
    {"INSERT", "scale", of<AcDbBlockReference>(DATA(scale))},
    {"INSERT", "rotation", of<AcDbBlockReference>(DATA(rotation))},
    {"INSERT", "block_header", handleOf<AcDbBlockReference>(CALL(blockTableRecord()))},
    {"INSERT", "seqend", handleOf<AcDbBlockReference>(CALL(subentities().sequenceEnd()))},
    {"HATCH", "extrusion", of<AcDbHatch>(DATA(normal))},
    {"HATCH", "is_associative", of<AcDbHatch>(DATA(associative))},
    {"HATCH", "style", of<AcDbHatch>(DATA(style))},
    {"HATCH", "scale_spacing", of<AcDbHatch>(DATA(scale))},
    {"WIPEOUT", "pt0", of<AcDbWipeout>(DATA(origin))},
    {"WIPEOUT", "vvec", of<AcDbWipeout>(DATA(v))},
    {"WIPEOUT", "display_props", of<AcDbWipeout>(DATA(display))},
    {"WIPEOUT", "fade", of<AcDbWipeout>(DATA(fade))},
    {"HELIX", "radius", [](const AcDbObject& o) { return numbers(static_cast<const AcDbHelix&>(o).baseRadius()); }},
    {"HELIX", "axis_base_pt",
     [](const AcDbObject& o) { return numbers(static_cast<const AcDbHelix&>(o).axisPoint()); }},
    {"HELIX", "knot_tol", of<AcDbHelix>(DATA(knotTolerance))},
    {"MLINE", "scale", of<AcDbMline>(DATA(scale))},
    {"MLINE", "base_point", of<AcDbMline>(DATA(base))},
    {"MLINE", "flags", of<AcDbMline>(DATA(flags))},
    {"MLINE", "mlinestyle", handleOf<AcDbMline>(CALL(style()))},
    {"LWPOLYLINE", "elevation", of<AcDbPolyline>(DATA(elevation))},
    {"VERTEX_3D", "point", of<AcDb3dPolylineVertex>(DATA(position))},
    {"VERTEX_PFACE", "flag", of<AcDbPolyFaceMeshVertex>(DATA(flag))},
    {"POLYLINE_3D", "flag", of<AcDb3dPolyline>(DATA(flag))},
    {"POLYLINE_PFACE", "numfaces", of<AcDbPolyFaceMesh>(DATA(numFaces))},
    {"SOLID", "corner4", of<AcDbSolid>(DATA(corners[3]))},
    {"TRACE", "corner2", of<AcDbTrace>(DATA(corners[1]))},
    {"TRACE", "elevation", of<AcDbTrace>(DATA(elevation))},
    {"3DFACE", "corner4", of<AcDbFace>(DATA(corners[3]))},
    {"VIEWPORT", "width", of<AcDbViewport>(DATA(width))},
    {"VIEWPORT", "GRIDUNIT", of<AcDbViewport>(DATA(gridSpacing))},
    {"VIEWPORT", "status_flag", of<AcDbViewport>(DATA(status))},
    {"VIEWPORT", "UCSVP", of<AcDbViewport>(DATA(ucsPerViewport))},
    {"VIEWPORT", "vport_entity_header",
     of<AcDbViewport>([](const auto& data) { return static_cast<double>(data.vxRecord.handle().value()); })},
    {"DIMENSION_LINEAR", "xline1_pt", pointsOf<AcDbRotatedDimension>(DATA(xLine1))},
    {"DIMENSION_LINEAR", "dim_rotation", pointsOf<AcDbRotatedDimension>(DATA(rotation))},
    {"DIMENSION_LINEAR", "dimstyle", handleOf<AcDbDimension>(CALL(dimensionStyle()))},
    {"DIMENSION_LINEAR", "block", handleOf<AcDbDimension>(CALL(dimBlockId()))},
    {"DIMENSION_LINEAR", "attachment", of<AcDbDimension>(DATA(attachment))},
    {"DIMENSION_LINEAR", "act_measurement", measured},
    {"DIMENSION_ALIGNED", "def_pt", pointsOf<AcDbAlignedDimension>(DATA(dimLine))},
    {"DIMENSION_ALIGNED", "oblique_angle", pointsOf<AcDbAlignedDimension>(DATA(oblique))},
    {"DIMENSION_ALIGNED", "act_measurement", measured},
    {"DIMENSION_ANG2LN", "xline1end_pt", pointsOf<AcDb2LineAngularDimension>(DATA(xLine1End))},
    {"DIMENSION_ANG2LN", "xline2end_pt", pointsOf<AcDb2LineAngularDimension>(DATA(xLine2End))},
    {"DIMENSION_ANG2LN", "act_measurement", measured},
    {"DIMENSION_ORDINATE", "feature_location_pt", pointsOf<AcDbOrdinateDimension>(DATA(feature))},
    {"DIMENSION_ORDINATE", "flag2", pointsOf<AcDbOrdinateDimension>(DATA(flags))},
    {"DIMENSION_ORDINATE", "act_measurement", measured},
    {"DIMSTYLE", "DIMASZ", of<AcDbDimStyleTableRecord>(DATA(dimasz))},
    {"DIMSTYLE", "DIMGAP", of<AcDbDimStyleTableRecord>(DATA(dimgap))},
    {"DIMSTYLE", "DIMTAD", of<AcDbDimStyleTableRecord>(DATA(dimtad))},
    {"DIMSTYLE", "DIMTOFL", of<AcDbDimStyleTableRecord>(DATA(dimtofl))},
    {"DIMSTYLE", "DIMDSEP", of<AcDbDimStyleTableRecord>(DATA(dimdsep))},
    {"DIMSTYLE", "DIMLWE", of<AcDbDimStyleTableRecord>(DATA(dimlwe))},
    {"TOLERANCE", "x_direction", of<AcDbFcf>(DATA(direction))},
    {"SHAPE", "rotation", of<AcDbShape>(DATA(rotation))},
    {"SHAPE", "style_id", of<AcDbShape>(DATA(number))},
    {"LAYER", "color",
     [](const AcDbObject& o) { return numbers(static_cast<const AcDbLayerTableRecord&>(o).color()); }},
    {"LAYER", "linewt",
     [](const AcDbObject& o) {
         const short weight = static_cast<const AcDbLayerTableRecord&>(o).lineWeight();
         return numbers(acdbLineWeightCode(static_cast<AcDb::LineWeight>(weight)));
     }},
    {"LAYER", "ltype", handleOf<AcDbLayerTableRecord>(CALL(linetypeObjectId()))},
    {"STYLE", "last_height", of<AcDbTextStyleTableRecord>(DATA(priorSize))},
    {"LTYPE", "pattern_len", of<AcDbLinetypeTableRecord>(DATA(patternLength))},
    {"LTYPE", "numdashes",
     of<AcDbLinetypeTableRecord>([](const auto& data) { return static_cast<double>(data.dashes.size()); })},
    {"BLOCK_HEADER", "base_pt", of<AcDbBlockTableRecord>(DATA(origin))},
    {"BLOCK_HEADER", "anonymous", of<AcDbBlockTableRecord>(DATA(anonymous))},
    {"BLOCK_HEADER", "first_entity", handleOf<AcDbBlockTableRecord>(CALL(fileFirst()))},
    {"BLOCK_HEADER", "layout", handleOf<AcDbBlockTableRecord>(CALL(getLayoutId()))},
    {"DICTIONARY", "is_hardowner",
     [](const AcDbObject& o) { return numbers(static_cast<const AcDbDictionary&>(o).fileData().hardOwner); }},
};

#undef DATA
#undef CALL

const std::vector<TextField> kTextFields = {
    {"TEXT", "text_value", [](const AcDbObject& o) { return static_cast<const AcDbText&>(o).textValue(); }},
    {"ATTRIB", "text_value", [](const AcDbObject& o) { return static_cast<const AcDbText&>(o).textValue(); }},
    {"ATTRIB", "tag", [](const AcDbObject& o) { return static_cast<const AcDbAttribute&>(o).tagValue(); }},
    {"ATTDEF", "prompt",
     [](const AcDbObject& o) { return static_cast<const AcDbAttributeDefinition&>(o).promptValue(); }},
    {"MTEXT", "text", [](const AcDbObject& o) { return static_cast<const AcDbMText&>(o).contentsValue(); }},
    {"TOLERANCE", "text_value", [](const AcDbObject& o) { return static_cast<const AcDbFcf&>(o).textValue(); }},
    {"DIMENSION_ALIGNED", "user_text",
     [](const AcDbObject& o) { return static_cast<const AcDbDimension&>(o).dimensionTextValue(); }},
    {"HATCH", "name", [](const AcDbObject& o) { return static_cast<const AcDbHatch&>(o).patternName(); }},
    {"BLOCK", "name", [](const AcDbObject& o) { return static_cast<const AcDbBlockBegin&>(o).fileName(); }},
    {"LAYER", "name", [](const AcDbObject& o) { return static_cast<const AcDbLayerTableRecord&>(o).name(); }},
    {"LTYPE", "description",
     [](const AcDbObject& o) { return static_cast<const AcDbLinetypeTableRecord&>(o).data().description; }},
    {"STYLE", "font_file",
     [](const AcDbObject& o) { return static_cast<const AcDbTextStyleTableRecord&>(o).data().fileName; }},
    {"APPID", "name", [](const AcDbObject& o) { return static_cast<const AcDbRegAppTableRecord&>(o).name(); }},
};

Numbers factNumbers(const Json& fact) {
    Numbers values;
    if (fact.isNumber())
        values.push_back(fact.number());
    for (const Json& item : fact.items())
        values.push_back(item.number());
    return values;
}

bool agree(const Numbers& ours, Numbers fact) {
    if (ours.size() == 1 && fact.size() == 4)
        fact = {fact[3]}; // a handle
    if (ours.size() != fact.size())
        return false;
    for (size_t i = 0; i < ours.size(); ++i)
        if (std::fabs(ours[i] - fact[i]) > 1e-12 * std::max(1.0, std::fabs(fact[i])))
            return false;
    return true;
}

void compareObject(const Json& facts, const AcDbObject& object, std::map<std::string, int>& compared) {
    const std::string& type = facts.has("entity") ? facts["entity"].text() : facts["object"].text();
    const double handle = facts["handle"][2].number();
    for (const Field& field : kFields) {
        if (type != field.type || !facts.has(field.name))
            continue;
        ++compared[type + " " + field.name];
        EXPECT_TRUE(agree(field.value(object), factNumbers(facts[field.name])))
            << type << " " << handle << " " << field.name << ": " << testing::PrintToString(field.value(object))
            << " and " << testing::PrintToString(factNumbers(facts[field.name]));
    }
    for (const TextField& field : kTextFields) {
        if (type != field.type || !facts.has(field.name))
            continue;
        ++compared[type + " " + field.name];
        EXPECT_EQ(dwg::utf8FromText(field.value(object)), facts[field.name].text())
            << type << " " << handle << " " << field.name;
    }
}

TEST(ObjectValues, AreThoseThatAnIndependentReaderFound) {
    SKIP_WITHOUT_DRAWINGS();
    std::map<std::string, int> compared;
    for (const std::string& path : realDrawings("r2000")) {
        SCOPED_TRACE(path);
        AcDbDatabase database(false);
        ASSERT_TRUE(dwg::readDrawing(database, path));
        const Json facts = Json::read(besideDrawing(path, ".objects.json"));
        ASSERT_FALSE(facts["OBJECTS"].items().empty());
        for (const Json& fact : facts["OBJECTS"].items()) {
            AcDbStub* const stub = database.findStub(AcDbHandle(static_cast<uint64_t>(fact["handle"][2].number())));
            ASSERT_NE(stub, nullptr);
            compareObject(fact, *database.objectOf(*stub), compared);
        }
    }
    for (const Field& field : kFields)
        EXPECT_GT(compared[std::string(field.type) + " " + field.name], 0) << field.type << " " << field.name;
    for (const TextField& field : kTextFields)
        EXPECT_GT(compared[std::string(field.type) + " " + field.name], 0) << field.type << " " << field.name;
}

/// The objects of a file of any release. Only the newest can be opened as a drawing so far.
void readObjects(AcDbDatabase& database, const std::string& path) {
    auto image = dwg::FileImage::read(path, dwg::kEveryVersion);
    ASSERT_TRUE(image) << image.error().message;
    const dwg::FileImage& file = **image;
    database.setSource(std::make_shared<dwg::DrawingSource>(database, *image));
    for (const dwg::ObjectRecord& record : file.objects())
        database.addFileStub(AcDbHandle(record.handle), file.bytesOf(record).data(), record.size);
}

TEST(ObjectValues, AreThoseOfOlderReleasesToo) {
    SKIP_WITHOUT_DRAWINGS();
    // Measurements are computed, and what the release doesn't store isn't among its facts.
    const std::set<std::string> types = {
        "DIMENSION_LINEAR", "DIMENSION_ALIGNED", "DIMENSION_ANG2LN", "DIMENSION_ORDINATE",
        "DIMSTYLE",         "TOLERANCE",         "VIEWPORT"};
    std::map<std::string, int> compared;
    for (const std::string& path : realDrawings("r14")) {
        SCOPED_TRACE(path);
        AcDbDatabase database(false);
        readObjects(database, path);
        const Json facts = Json::read(besideDrawing(path, ".objects.json"));
        for (const Json& fact : facts["OBJECTS"].items()) {
            if (!types.contains(fact.has("entity") ? fact["entity"].text() : fact["object"].text()))
                continue;
            AcDbStub* const stub = database.findStub(AcDbHandle(static_cast<uint64_t>(fact["handle"][2].number())));
            ASSERT_NE(stub, nullptr);
            const AcDbObject& object = *database.objectOf(*stub);
            ASSERT_FALSE(stub->has(kStubDecodeFailed)) << object.dxfName();
            compareObject(fact, object, compared);
        }
    }
    for (const char* const field : {"DIMENSION_LINEAR xline1_pt", "DIMENSION_ALIGNED def_pt", "DIMSTYLE DIMTAD",
                                    "TOLERANCE text_value", "VIEWPORT width"})
        EXPECT_GT(compared[field], 0) << field;
}

} // namespace

} // namespace vndk::test
