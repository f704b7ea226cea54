// What entities come apart into, by values.
#include "database_fixture.h"
#include "db/opaque.h"
#include "db/point.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "ge/matrix3d.h"

#include <cmath>
#include <functional>
#include <memory>
#include <sstream>

namespace {

using Parts = std::vector<std::unique_ptr<AcDbEntity>>;

std::string shown(double number) {
    std::ostringstream out;
    out << std::round(number * 1e4) / 1e4 + 0.0;
    return out.str();
}

std::string shown(const AcGePoint3d& p) { return shown(p.x) + "," + shown(p.y) + "," + shown(p.z); }

std::string shown(const AcDbEntity& entity) {
    std::string text = entity.dxfName();
    const auto add = [&](const std::string& more) { text += " " + more; };
    if (const auto* line = AcDbLine::cast(&entity)) {
        add(shown(line->startPoint()));
        add(shown(line->endPoint()));
    } else if (const auto* circle = AcDbCircle::cast(&entity)) {
        add(shown(circle->center()));
        add(shown(circle->radius()));
    } else if (const auto* arc = AcDbArc::cast(&entity)) {
        add(shown(arc->center()) + " " + shown(arc->radius()));
        add(shown(arc->startAngle() * 180 / kAcGePi) + ".." + shown(arc->endAngle() * 180 / kAcGePi));
    } else if (const auto* point = AcDbPoint::cast(&entity)) {
        add(shown(point->position()));
    } else if (const auto* text = AcDbText::cast(&entity)) {
        add(text->textValue() + " " + shown(text->position()) + " " + shown(text->height()));
    } else if (const auto* reference = AcDbBlockReference::cast(&entity)) {
        add(shown(reference->position()));
        add(shown(reference->scaleFactors().sx) + "/" + shown(reference->scaleFactors().sy));
    } else if (const auto* face = AcDbFace::cast(&entity)) {
        for (const AcGePoint3d& corner : face->data().corners)
            add(shown(corner));
        add(std::to_string(face->data().invisibleEdges));
    }
    return text;
}

std::string shown(const Parts& parts) {
    std::string text;
    for (const auto& part : parts)
        text += (text.empty() ? "" : "; ") + shown(*part);
    return text;
}

class ExplodeTest : public DatabaseTest {
protected:
    Acad::ErrorStatus explode(const AcDbEntity& entity, Parts& parts) {
        std::vector<AcDbEntity*> raw;
        const Acad::ErrorStatus status = entity.explode(raw);
        parts = Parts(raw.begin(), raw.end());
        return status;
    }
    std::string exploded(const AcDbEntity& entity) {
        Parts parts;
        const Acad::ErrorStatus status = explode(entity, parts);
        return status == Acad::eOk ? shown(parts) : acadErrorStatusText(status);
    }
    std::string exploded(AcDbObjectId id) { return exploded(*AcDbObjectPointer<AcDbEntity>(id)); }

    /// Appends a polyline with its vertices, which become its own.
    AcDbObjectId appendWithVertices(AcDbVertexOwner* owner, const std::vector<AcDbEntity*>& vertices,
                                    AcDbObjectId block = {}) {
        const AcDbObjectId id = append(owner, block);
        const AcDbObjectPointer<AcDbVertexOwner> opened(id, AcDb::kForWrite);
        for (AcDbEntity* const vertex : vertices) {
            EXPECT_EQ(opened->appendVertex(vertex), Acad::eOk);
            vertex->close();
        }
        return id;
    }
    std::string contents(AcDbObjectId block) {
        std::string text;
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
        for (const AcDbObjectId id : record->entities())
            if (const AcDbObjectPointer<AcDbEntity> entity(id); entity)
                text += (text.empty() ? "" : "; ") + shown(*entity);
        return text;
    }
    Acad::ErrorStatus explodeInPlace(AcDbObjectId id) {
        const AcDbObjectPointer<AcDbBlockReference> reference(id);
        return reference->explodeToOwnerSpace();
    }
};

TEST_F(ExplodeTest, PolylinesComeInLinesAndArcs) {
    AcDbPolyline polyline;
    polyline.addVertexAt(0, {0, 0});
    polyline.addVertexAt(1, {2, 0}, 1, 3, 3);
    polyline.addVertexAt(2, {4, 0}, -std::tan(kAcGePi / 8));
    polyline.addVertexAt(3, {5, 1});
    polyline.addVertexAt(4, {5, 1});
    EXPECT_EQ(exploded(polyline), "LINE 0,0,0 2,0,0; ARC 3,0,0 1 180..0; ARC 5,0,0 1 90..180");
    polyline.setClosed(true);
    polyline.setElevation(7);
    polyline.setNormal(-AcGeVector3d::kZAxis); // seen from below: x runs the other way
    EXPECT_EQ(exploded(polyline),
              "LINE 0,0,-7 -2,0,-7; ARC -3,0,-7 1 180..0; ARC -5,0,-7 1 90..180; LINE -5,1,-7 0,0,-7");

    auto* const old = new AcDb2dPolyline;
    old->setFileData({.flag = 1 | 4, .thickness = 2, .elevation = 3});
    auto* const frame = new AcDb2dVertex({9, 9, 0});
    frame->setFileData({16, {9, 9, 0}});
    const AcDbObjectId oldId = appendWithVertices(
        old, {frame, new AcDb2dVertex({0, 0, 0}, 1), new AcDb2dVertex({2, 0, 0}), new AcDb2dVertex({2, 5, 0})});
    EXPECT_EQ(exploded(oldId), "ARC 1,0,3 1 180..0; LINE 2,0,3 2,5,3; LINE 2,5,3 0,0,3");

    auto* const spatial = new AcDb3dPolyline;
    const AcDbObjectId spatialId =
        appendWithVertices(spatial, {new AcDb3dPolylineVertex({0, 0, 0}), new AcDb3dPolylineVertex({1, 2, 3}),
                                     new AcDb3dPolylineVertex({1, 2, 3}), new AcDb3dPolylineVertex({4, 5, 6})});
    EXPECT_EQ(exploded(spatialId), "LINE 0,0,0 1,2,3; LINE 1,2,3 4,5,6");
}

TEST_F(ExplodeTest, MeshesComeInFaces) {
    auto* const mesh = new AcDbPolygonMesh;
    mesh->setFileData({.flag = 1, .mSize = 3, .nSize = 2});
    std::vector<AcDbEntity*> vertices;
    for (const int m : {0, 1, 2})
        for (const int n : {0, 1})
            vertices.push_back(new AcDbPolygonMeshVertex({double(m), double(n), 0}));
    const AcDbObjectId meshId = appendWithVertices(mesh, vertices);
    EXPECT_EQ(exploded(meshId), "3DFACE 0,0,0 1,0,0 1,1,0 0,1,0 0; 3DFACE 1,0,0 2,0,0 2,1,0 1,1,0 0; "
                                "3DFACE 2,0,0 0,0,0 0,1,0 2,1,0 0");

    const auto face = [](std::initializer_list<short> numbers) {
        auto* const record = new AcDbFaceRecord;
        unsigned short i = 0;
        for (const short number : numbers)
            record->setVertexAt(i++, number);
        return record;
    };
    const auto corner = [](double x, double y) { return new AcDbPolyFaceMeshVertex({x, y, 0}); };
    const AcDbObjectId faces = appendWithVertices(
        new AcDbPolyFaceMesh, {corner(0, 0), corner(1, 0), corner(1, 1), corner(0, 1), face({1, -2, 3, 4}),
                               face({1, 2, -3}), face({4, 1}), face({2}), face({1, 2, 9})});
    EXPECT_EQ(exploded(faces), "3DFACE 0,0,0 1,0,0 1,1,0 0,1,0 2; 3DFACE 0,0,0 1,0,0 1,1,0 1,1,0 4; "
                               "LINE 0,1,0 0,0,0; POINT 1,0,0")
        << "a face with a corner that isn't there is left out";
}

TEST_F(ExplodeTest, ParagraphsComeInLinesWhereTheBreaksAreKnown) {
    AcDbMText text;
    text.setContents("one\\Ptwo \\\\ 2");
    text.setTextHeight(3);
    text.setLocation({10, 20, 0});
    EXPECT_EQ(exploded(text), "TEXT one 10,17,0 3; TEXT two \\ 2 10,12,0 3");
    text.setAttachment(7);
    EXPECT_EQ(exploded(text), "TEXT one 10,25,0 3; TEXT two \\ 2 10,20,0 3");
    text.setWidth(4);
    EXPECT_EQ(exploded(text), acadErrorStatusText(Acad::eNotApplicable)) << "lines may be broken anywhere";
    text.setWidth(0);
    text.setContents("{\\fArial;one}");
    EXPECT_EQ(exploded(text), acadErrorStatusText(Acad::eNotApplicable));
}

TEST_F(ExplodeTest, OthersAreNoWholes) {
    EXPECT_EQ(exploded(AcDbLine()), acadErrorStatusText(Acad::eNotApplicable));
    EXPECT_EQ(exploded(AcDbText()), acadErrorStatusText(Acad::eNotApplicable));
    const AcDbObjectId block = addBlock("B");
    append(new AcDbLine({0, 0, 0}, {1, 0, 0}), block);
    AcDbMInsertBlock array;
    array.setBlockTableRecord(block);
    EXPECT_EQ(exploded(array), acadErrorStatusText(Acad::eNotApplicable));
    EXPECT_EQ(exploded(AcDbBlockReference()), acadErrorStatusText(Acad::eNullObjectId));
}

TEST_F(ExplodeTest, PiecesLookLikeTheWhole) {
    AcDbPolyline polyline;
    polyline.addVertexAt(0, {0, 0});
    polyline.addVertexAt(1, {2, 0});
    polyline.setThickness(4);
    polyline.setColorIndex(3);
    polyline.setLineWeight(AcDb::kLnWt000);
    Parts parts;
    ASSERT_EQ(explode(polyline, parts), Acad::eOk);
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(AcDbLine::cast(parts[0].get())->thickness(), 4);
    EXPECT_EQ(parts[0]->colorIndex(), 3);
    EXPECT_EQ(parts[0]->lineWeight(), AcDb::kLnWt000);
}

/// Each entity stands in a block whose reference is scaled unevenly: points of the parts lie where the transform takes
/// those of the original.
TEST_F(ExplodeTest, UnevenScalingTakesEveryPointAlong) {
    const AcDbObjectId block = addBlock("B");
    append(new AcDbCircle({1, 2, 0}, AcGeVector3d::kZAxis, 3), block);
    append(new AcDbArc({1, 2, 0}, 3, 0.3, 2.5), block);
    append(new AcDbEllipse({1, 2, 0}, AcGeVector3d::kZAxis, {3, 1, 0}, 0.4, 0.5, 2.5), block);
    append(new AcDbCircle({1, 2, 0}, AcGeVector3d(1, 2, 3), 3), block);
    for (const AcGeScale3d& scale : {AcGeScale3d(2, 1, 1), AcGeScale3d(1, -3, 2), AcGeScale3d(0.5, 4, -1)}) {
        AcDbBlockReference reference({10, 20, 5}, block);
        reference.setScaleFactors(scale);
        reference.setRotation(0.7);
        const AcGeMatrix3d matrix = reference.blockTransform(), back = matrix.inverse();
        Parts parts;
        ASSERT_EQ(explode(reference, parts), Acad::eOk);
        ASSERT_EQ(parts.size(), 4U);
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
        for (size_t i = 0; i < parts.size(); ++i) {
            const auto* const ellipse = AcDbEllipse::cast(parts[i].get());
            ASSERT_NE(ellipse, nullptr) << i;
            for (const double part : {0.0, 0.3, 0.8, 1.0}) {
                const double u = ellipse->startParam() + part * (ellipse->endParam() - ellipse->startParam());
                const AcGePoint3d seen = back * (ellipse->center() + ellipse->majorAxis() * std::cos(u) +
                                                 ellipse->minorAxis() * std::sin(u));
                const AcDbObjectPointer<AcDbEntity> original(record->entities()[i]);
                if (i != 2) {
                    EXPECT_NEAR(seen.distanceTo({1, 2, 0}), 3, 1e-9) << i;
                }
                if (i == 1) {
                    const double angle = std::atan2(seen.y - 2, seen.x - 1);
                    EXPECT_TRUE(angle > 0.3 - 1e-9 && angle < 2.5 + 1e-9) << angle;
                }
            }
        }
        // The ends of the elliptical arc, in either order.
        const auto* const whole = AcDbEllipse::cast(parts[2].get());
        const AcDbObjectPointer<AcDbEllipse> former(record->entities()[2]);
        AcGePoint3d start, end, movedStart, movedEnd;
        former->getStartPoint(start);
        former->getEndPoint(end);
        whole->getStartPoint(movedStart);
        whole->getEndPoint(movedEnd);
        EXPECT_LT(movedStart.distanceTo(matrix * start), 1e-9);
        EXPECT_LT(movedEnd.distanceTo(matrix * end), 1e-9);
    }
}

TEST_F(ExplodeTest, UnevenScalingSlantsTextAndScalesWhatIsNested) {
    const AcDbObjectId inner = addBlock("INNER"), outer = addBlock("OUTER");
    append(new AcDbLine({0, 0, 0}, {1, 0, 0}), inner);
    append(new AcDbText({1, 1, 0}, "abc", {}, 2, 0), outer);
    append(new AcDbText({1, 1, 0}, "abc", {}, 2, kAcGePi / 4), outer);
    auto* const bent = new AcDbPolyline;
    bent->addVertexAt(0, {0, 0}, 1);
    bent->addVertexAt(1, {2, 0});
    bent->addVertexAt(2, {2, 2});
    append(bent, outer);
    append(new AcDbBlockReference({1, 1, 0}, inner), outer);
    AcDbBlockReference reference({0, 0, 0}, outer);
    reference.setScaleFactors({3, 1, 1});
    Parts parts;
    ASSERT_EQ(explode(reference, parts), Acad::eOk);
    EXPECT_EQ(shown(parts), "TEXT abc 3,1,0 2; TEXT abc 3,1,0 2.6833; ELLIPSE; LINE 6,0,0 6,2,0; INSERT 3,1,0 3/1");
    const auto* const flat = AcDbText::cast(parts[0].get());
    EXPECT_NEAR(flat->widthFactor(), 3, 1e-9);
    EXPECT_NEAR(flat->oblique(), 0, 1e-9);
    // The direction (1,1) has become (3,1), the upright one (-1,1) has become (-3,1).
    const auto* const slanted = AcDbText::cast(parts[1].get());
    EXPECT_NEAR(slanted->rotation(), std::atan2(1, 3), 1e-9);
    EXPECT_NEAR(std::tan(slanted->oblique()), -8.0 / 6, 1e-9);

    {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(outer);
        const AcDbObjectPointer<AcDbBlockReference> nested(record->entities().back(), AcDb::kForWrite);
        nested->setRotation(0.5);
    }
    EXPECT_EQ(exploded(reference), acadErrorStatusText(Acad::eCannotScaleNonUniformly)) << "it would be skewed";
}

TEST_F(ExplodeTest, InPlaceAReferenceGivesAllThatItsBlockOwns) {
    const AcDbObjectId inner = addBlock("INNER"), outer = addBlock("OUTER");
    append(new AcDbLine({0, 0, 0}, {1, 0, 0}), inner);
    { AcDbObjectPointer<AcDbBlockTableRecord>(outer, AcDb::kForWrite)->setOrigin({1, 0, 0}); }
    appendWithVertices(new AcDb3dPolyline, {new AcDb3dPolylineVertex({1, 0, 0}), new AcDb3dPolylineVertex({2, 0, 0})},
                       outer);
    const AcDbObjectId nested = append(new AcDbBlockReference({1, 0, 0}, inner), outer);
    {
        auto* const attribute = new AcDbAttribute({1, 0, 0}, "value", "TAG");
        AcDbObjectPointer<AcDbBlockReference>(nested, AcDb::kForWrite)->appendAttribute(attribute);
        attribute->close();
    }
    append(new AcDbAttributeDefinition({1, 0, 0}, "default", "TAG", ""), outer);
    const AcDbObjectId id = append(new AcDbBlockReference({10, 0, 0}, outer));
    database.undo().beginGroup("EXPLODE");
    ASSERT_EQ(explodeInPlace(id), Acad::eOk);
    database.undo().endGroup();
    EXPECT_EQ(contents(database.modelSpaceId()),
              "INSERT 10,0,0 1/1; POLYLINE; INSERT 10,0,0 1/1; ATTDEF default 10,0,0 0.2");
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
    const AcDbObjectPointer<AcDb3dPolyline> polyline(space->entities()[1]);
    ASSERT_EQ(polyline->vertices().size(), 2U);
    EXPECT_EQ(AcDbObjectPointer<AcDbVertex>(polyline->vertices()[1])->position(), AcGePoint3d(11, 0, 0));
    const AcDbObjectPointer<AcDbBlockReference> reference(space->entities()[2]);
    ASSERT_EQ(reference->attributes().size(), 1U);
    EXPECT_EQ(AcDbObjectPointer<AcDbAttribute>(reference->attributes()[0])->position(), AcGePoint3d(10, 0, 0));
    EXPECT_EQ(contents(outer), "POLYLINE; INSERT 1,0,0 1/1; ATTDEF default 1,0,0 0.2") << "the block stays as it is";
}

TEST_F(ExplodeTest, InPlaceItIsAllOrNothing) {
    const AcDbObjectId block = addBlock("B");
    append(new AcDbLine({0, 0, 0}, {1, 0, 0}), block);
    const AcDbObjectId paragraph = append(new AcDbMText, block);
    auto* const reference = new AcDbBlockReference({0, 0, 0}, block);
    reference->setScaleFactors({1, 2, 1});
    const AcDbObjectId id = append(reference);
    EXPECT_EQ(explodeInPlace(id), Acad::eCannotScaleNonUniformly);
    EXPECT_EQ(count(), 1U);
    { AcDbObjectPointer<AcDbEntity>(paragraph, AcDb::kForWrite)->erase(); }
    append(new AcDbOpaqueEntity, block);
    EXPECT_EQ(explodeInPlace(id), Acad::eNotApplicable);
    EXPECT_EQ(count(), 1U);
    EXPECT_EQ(AcDbBlockReference({0, 0, 0}, block).explodeToOwnerSpace(), Acad::eNotInDatabase);
}

TEST_F(ExplodeTest, PartsKeepTheLookThatTheReferenceGaveThem) {
    const AcDbObjectId layer = addRecord<AcDbLayerTable>(database.layerTableId(), new AcDbLayerTableRecord, "WALLS");
    const AcDbObjectId block = addBlock("B");
    const AcDbObjectId lineId = append(new AcDbLine({0, 0, 0}, {1, 0, 0}), block);
    const AcDbObjectId circleId = append(new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1), block);
    {
        const AcDbObjectPointer<AcDbEntity> line(lineId, AcDb::kForWrite), circle(circleId, AcDb::kForWrite);
        line->setColorIndex(kAcDbColorByBlock);
        line->setLinetype(database.byBlockLinetypeId());
        line->setLineWeight(AcDb::kLnWtByBlock);
        circle->setColorIndex(2);
        circle->setLayer(layer);
    }
    for (const double stretch : {1.0, 2.0}) { // copied, and replaced by an ellipse
        auto* const reference = new AcDbBlockReference({0, 0, 0}, block);
        reference->setScaleFactors({stretch, 1, 1});
        const AcDbObjectId id = append(reference);
        {
            const AcDbObjectPointer<AcDbEntity> opened(id, AcDb::kForWrite);
            opened->setColorIndex(5);
            opened->setLayer(layer);
            opened->setLinetype(database.continuousLinetypeId());
            opened->setLineWeight(static_cast<AcDb::LineWeight>(50));
        }
        ASSERT_EQ(explodeInPlace(id), Acad::eOk);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
        const size_t last = space->entities().size() - 1;
        const AcDbObjectPointer<AcDbEntity> line(space->entities()[last - 1]), round(space->entities()[last]);
        EXPECT_EQ(line->colorIndex(), 5);
        EXPECT_EQ(line->layerId(), layer);
        EXPECT_EQ(line->linetypeId(), database.continuousLinetypeId());
        EXPECT_EQ(line->lineWeight(), 50);
        EXPECT_EQ(round->colorIndex(), 2);
        EXPECT_EQ(round->linetypeId(), database.byLayerLinetypeId());
    }
}

} // namespace
