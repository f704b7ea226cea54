#include "acis/body.h"
#include "acis/face_mesh.h"
#include "db/database.h"
#include "gi/entity_drawing_parts.h"

#include <array>

namespace vndk::gi {

namespace {

void drawEdge(const acis::EdgeCurve& edge, const AcGeMatrix3d& matrix, AcGiGeometry& geometry) {
    if (edge.kind == acis::EdgeCurve::Kind::Oval)
        return geometry.ellipArc(matrix * edge.center, matrix * edge.major, matrix * edge.minor, edge.first,
                                 edge.sweep);
    std::vector<AcGePoint3d> points = edge.flattened();
    for (AcGePoint3d& p : points)
        p = matrix * p;
    geometry.polyline(points);
}

void drawShell(acis::Mesh mesh, const AcGeMatrix3d& matrix, AcGiGeometry& geometry) {
    const bool mirrored = matrix.det() < 0;
    for (AcGePoint3d& p : mesh.points)
        p = matrix * p;
    for (AcGeVector3d& normal : mesh.normals)
        normal = (matrix * normal).normal();
    std::vector<AcGiTriangle> faces;
    for (size_t i = 0; i + 2 < mesh.triangles.size(); i += 3) {
        const uint32_t* const corners = &mesh.triangles[i];
        faces.push_back({{corners[0], corners[mirrored ? 2 : 1], corners[mirrored ? 1 : 2]}, 0});
    }
    if (!faces.empty())
        geometry.shell(mesh.points, faces, mesh.normals);
}

} // namespace

void drawSolidBody(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const auto& solid = static_cast<const AcDbModelerGeometry&>(entity);
    constexpr int kUsualIsolines = 4;
    const int isolines = entity.database() ? entity.database()->header().ISOLINES : kUsualIsolines;
    for (const acis::Body& body : acis::Body::read(solid.data().text)) {
        for (const acis::EdgeCurve& edge : body.edges)
            drawEdge(edge, body.transform, geometry);
        acis::Mesh mesh;
        std::vector<std::vector<AcGePoint3d>> lines;
        for (const acis::Face& face : body.faces) {
            if (!face.surface)
                continue;
            const acis::FaceDomain domain(face);
            domain.addTo(mesh);
            domain.addIsolines(isolines, lines);
        }
        for (std::vector<AcGePoint3d>& line : lines) {
            for (AcGePoint3d& p : line)
                p = body.transform * p;
            geometry.polyline(line);
        }
        drawShell(std::move(mesh), body.transform, geometry);
    }
}

} // namespace vndk::gi
