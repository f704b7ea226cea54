#include "host/host_fixture.h"

#include "ads/ads.h"
#include "db/block_reference.h"
#include "db/curves.h"
#include "db/polylines.h"
#include "db/text.h"

namespace {

class EntityDataTest : public HostTest {
protected:
    /// Appends to model space and closes.
    AcDbObjectId append(AcDbEntity* entity) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        return id;
    }
    /// (cdr (assoc code (entget (entlast))))
    std::string group(int code) { return lisp("(cdr (assoc " + std::to_string(code) + " (entget (entlast))))"); }
};

} // namespace

TEST_F(EntityDataTest, entgetGivesTheGroupsOfEachClass) {
    append(new AcDbLine({1, 2, 3}, {4, 5, 6}));
    EXPECT_EQ(group(0), "\"LINE\"");
    EXPECT_EQ(group(8), "\"0\"");
    EXPECT_EQ(group(10), "(1.0 2.0 3.0)");
    EXPECT_EQ(group(11), "(4.0 5.0 6.0)");
    EXPECT_EQ(group(62), "nil") << "ByLayer is left out";
    EXPECT_EQ(lisp("(equal (cdr (assoc -1 (entget (entlast)))) (entlast))"), "T");

    append(new AcDbCircle({1, 1, 0}, AcGeVector3d::kZAxis, 2.5));
    EXPECT_EQ(group(0), "\"CIRCLE\"");
    EXPECT_EQ(group(40), "2.5");

    auto* const definition = new AcDbAttributeDefinition({0, 0, 0}, "oak", "MATERIAL", "Which wood?");
    definition->setInvisible(true);
    append(definition);
    EXPECT_EQ(group(0), "\"ATTDEF\"");
    EXPECT_EQ(group(1), "\"oak\"");
    EXPECT_EQ(group(2), "\"MATERIAL\"");
    EXPECT_EQ(group(3), "\"Which wood?\"");
    EXPECT_EQ(group(70), "1");

    auto* const polyline = new AcDbPolyline;
    polyline->addVertexAt(0, {0, 0}, 1);
    polyline->addVertexAt(1, {5, 0});
    append(polyline);
    EXPECT_EQ(group(0), "\"LWPOLYLINE\"");
    EXPECT_EQ(group(90), "2");
    EXPECT_EQ(group(42), "1.0");
}

TEST_F(EntityDataTest, theWalkPassesErasedOnesAndGoesIntoSubentities) {
    EXPECT_EQ(lisp("(entlast)"), "nil");
    EXPECT_EQ(lisp("(entnext)"), "nil");
    const AcDbObjectId first = append(new AcDbLine({0, 0, 0}, {1, 0, 0}));
    const AcDbObjectId insertId = append(new AcDbBlockReference({0, 0, 0}, database().paperSpaceId()));
    {
        const AcDbObjectPointer<AcDbBlockReference> insert(insertId, AcDb::kForWrite);
        auto* const attribute = new AcDbAttribute({0, 0, 0}, "7", "ROOM");
        ASSERT_EQ(insert->appendAttribute(attribute), Acad::eOk);
        attribute->close();
    }
    append(new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 1));
    const char* const walk = "(progn (setq e nil types nil) (while (setq e (if e (entnext e) (entnext))) (setq types "
                             "(append types (list (cdr (assoc 0 (entget e))))))) types)";
    EXPECT_EQ(lisp(walk), "(\"LINE\" \"INSERT\" \"ATTRIB\" \"CIRCLE\")");
    {
        const AcDbObjectPointer<AcDbEntity> line(first, AcDb::kForWrite);
        line->erase();
    }
    EXPECT_EQ(lisp(walk), "(\"INSERT\" \"ATTRIB\" \"CIRCLE\")");
}

TEST_F(EntityDataTest, entdelErasesAndBringsBack) {
    append(new AcDbLine({0, 0, 0}, {1, 0, 0}));
    lisp("(setq e (entlast))");
    EXPECT_EQ(lisp("(equal (entdel e) e)"), "T");
    EXPECT_EQ(lisp("(entget e)"), "nil");
    EXPECT_EQ(lisp("(entlast)"), "nil");
    lisp("(entdel e)");
    EXPECT_EQ(group(0), "\"LINE\"");
}

TEST_F(EntityDataTest, entitiesArePickedAtAPointByNameAndAsTheLastOne) {
    const AcDbObjectId line = append(new AcDbLine({0, 0, 0}, {10, 10, 0}));
    const AcDbObjectId circle = append(new AcDbCircle({20, 20, 0}, AcGeVector3d::kZAxis, 5));
    const struct {
        const char* answer;
        AcDbObjectId found;
    } cases[] = {
        {"5,5\n", line}, {"25,20\n", circle}, {"L\n", circle}, {"!e\n", line}, {"20,20\n", {}}, {"5,6\n", {}},
    };
    lisp("(setq e (entnext))");
    for (const auto& c : cases) {
        ads_name name{};
        ads_point point{};
        host.commandLine().input().feed(c.answer);
        const int result = acedEntSel(nullptr, name, point);
        EXPECT_EQ(result, c.found.isNull() ? RTERROR : RTNORM) << c.answer;
        EXPECT_EQ(name[0], c.found.asOldId()) << c.answer;
    }
}
