#include "commands_fixture.h"

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/polylines.h"
#include "db/text.h"

#include <cmath>
#include <iomanip>
#include <sstream>

namespace {

/// Rounded to six places, without a negative zero.
double rounded(double number) { return std::round(number * 1e6) / 1e6 + 0.0; }

std::string point(const AcGePoint3d& p) {
    std::ostringstream out;
    out << std::setprecision(10) << rounded(p.x) << ',' << rounded(p.y);
    if (rounded(p.z) != 0)
        out << ',' << rounded(p.z);
    return out.str();
}

double degrees(double radians) { return rounded(radians * 180 / kAcGePi); }

void describe(std::ostream& out, const AcDbText& text) {
    out << " '" << text.textValue() << "' at " << point(text.position()) << " h " << rounded(text.height()) << " r "
        << degrees(text.rotation());
    if (!text.isDefaultAlignment())
        out << " just " << text.horizontalMode() << '/' << text.verticalMode() << ' ' << point(text.alignmentPoint());
}

void describe(std::ostream& out, const AcDbPolyline& polyline) {
    for (const AcDbPolyline::Vertex& vertex : polyline.data().vertices) {
        out << ' ' << point({vertex.point.x, vertex.point.y, 0});
        if (rounded(vertex.bulge) != 0)
            out << " b" << rounded(vertex.bulge);
        if (vertex.startWidth != 0 || vertex.endWidth != 0)
            out << " w" << vertex.startWidth << '-' << vertex.endWidth;
    }
    out << (polyline.isClosed() ? " closed" : "");
}

std::string describe(const AcDbEntity& entity) {
    std::ostringstream out;
    out << std::setprecision(10) << entity.dxfName();
    if (const auto* line = AcDbLine::cast(&entity))
        out << ' ' << point(line->startPoint()) << ' ' << point(line->endPoint());
    else if (const auto* circle = AcDbCircle::cast(&entity))
        out << ' ' << point(circle->center()) << " r " << rounded(circle->radius());
    else if (const auto* arc = AcDbArc::cast(&entity))
        out << ' ' << point(arc->center()) << " r " << rounded(arc->radius()) << ' ' << degrees(arc->startAngle())
            << ".." << degrees(arc->endAngle());
    else if (const auto* polyline = AcDbPolyline::cast(&entity))
        describe(out, *polyline);
    else if (const auto* text = AcDbText::cast(&entity))
        describe(out, *text);
    else if (const auto* reference = AcDbBlockReference::cast(&entity))
        out << ' ' << point(reference->position());
    if (const auto* definition = AcDbAttributeDefinition::cast(&entity))
        out << " tag " << definition->tagValue() << " prompt '" << definition->promptValue() << "' flags "
            << int(definition->attributeData().flags);
    return out.str();
}

std::string describe(const AcDbBlockTableRecord& record) {
    std::string text;
    for (const AcDbObjectId id : record.entities()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (entity)
            text += (text.empty() ? "" : "\n") + describe(*entity);
    }
    return text;
}

} // namespace

std::string CommandsTest::drawn() {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database().tilemode() ? database().modelSpaceId()
                                                                              : database().paperSpaceId());
    return describe(*space);
}

std::string CommandsTest::drawnIn(const AcDbDatabase& database) {
    return describe(*AcDbObjectPointer<AcDbBlockTableRecord>(database.modelSpaceId()));
}

std::string CommandsTest::blockContents(const char* name) {
    const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId());
    AcDbBlockTableRecord* record = nullptr;
    if (table->getAt(name, record, AcDb::kForRead) != Acad::eOk)
        return "no block";
    const std::string text = describe(*record);
    record->close();
    return text;
}

void CommandsTest::startAgain() {
    AcApDocument* const former = &document();
    host.documents().appContextNewDocument(nullptr);
    host.documents().closeDocument(former);
    host.runText("");
}
