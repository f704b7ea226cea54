// Polylines of all kinds, meshes, their vertices and the end of a sequence of subentities.
//
// AcDbPolyline keeps its vertices itself; the older kinds own vertex entities. Bulge is the tangent of a quarter of
// the arc's angle from a vertex to the next, positive counter-clockwise; 0 is straight.
#pragma once

#include "db/curves.h"
#include "db/subentities.h"

/// A plane polyline: the points are object coordinates of the normal, at the elevation.
class AcDbPolyline : public AcDbCurve {
    ACDB_DECLARE_MEMBERS(AcDbPolyline)
public:
    struct Vertex {
        AcGePoint2d point;
        double bulge = 0;
        double startWidth = 0, endWidth = 0;
    };

    unsigned int numVerts() const { return static_cast<unsigned>(data_.vertices.size()); }
    /// Inserts before the vertex with that index. eInvalidIndex.
    Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& point, double bulge = 0,
                                  double startWidth = -1, double endWidth = -1);
    Acad::ErrorStatus removeVertexAt(unsigned int index);
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& point) const;
    /// In world coordinates.
    Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& point) const;
    Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& point);
    Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
    Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
    Acad::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
    Acad::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
    Acad::ErrorStatus setConstantWidth(double width);
    Acad::ErrorStatus setClosed(bool closed) { return acdbSetMember(*this, data_.closed, closed); }
    double elevation() const { return data_.elevation; }
    Acad::ErrorStatus setElevation(double elevation) { return acdbSetMember(*this, data_.elevation, elevation); }
    double thickness() const { return data_.thickness; }
    Acad::ErrorStatus setThickness(double thickness) { return acdbSetMember(*this, data_.thickness, thickness); }
    AcGeVector3d normal() const { return data_.normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    bool hasPlinegen() const { return data_.plinegen; }
    Acad::ErrorStatus setPlinegen(bool on) { return acdbSetMember(*this, data_.plinegen, on); }

    bool isClosed() const override { return data_.closed; }
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    /// Lines and arcs; widths are lost, pieces without length left out.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;

    struct Data {
        std::vector<Vertex> vertices;
        double constantWidth = 0;
        double elevation = 0, thickness = 0;
        AcGeVector3d normal{0, 0, 1};
        bool closed = false, plinegen = false;
        uint16_t fileFlags = 0; // the parts that the file named, so that rewriting names the same ones
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Data data_;
};

/// Ends the subentities of a reference or a polyline in a file.
class AcDbSequenceEnd : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbSequenceEnd)
public:
    AcDbSequenceEnd() = default;
};

/// What all vertices have. Coordinates as their polyline says.
class AcDbVertex : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbVertex)
public:
    AcGePoint3d position() const { return data_.position; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& point) { return acdbSetMember(*this, data_.position, point); }
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;

    struct Data {
        unsigned char flag = 0; // DXF group 70
        AcGePoint3d position;
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

protected:
    AcDbVertex() = default;
    Data data_;
};

/// Object coordinates of the polyline's normal.
class AcDb2dVertex : public AcDbVertex {
    ACDB_DECLARE_MEMBERS(AcDb2dVertex)
public:
    struct CurveData {
        double startWidth = 0, endWidth = 0, bulge = 0, tangent = 0;
    };
    AcDb2dVertex() = default;
    AcDb2dVertex(const AcGePoint3d& point, double bulge = 0, double startWidth = 0, double endWidth = 0);
    double bulge() const { return curve_.bulge; }
    Acad::ErrorStatus setBulge(double bulge) { return acdbSetMember(*this, curve_.bulge, bulge); }
    double startWidth() const { return curve_.startWidth; }
    double endWidth() const { return curve_.endWidth; }
    Acad::ErrorStatus setWidths(double start, double end);
    const CurveData& curveData() const { return curve_; }
    void setFileCurveData(const CurveData& data) { curve_ = data; }
    /// The polyline does it, since it knows the plane.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;

private:
    CurveData curve_;
};

class AcDb3dPolylineVertex : public AcDbVertex {
    ACDB_DECLARE_MEMBERS(AcDb3dPolylineVertex)
public:
    AcDb3dPolylineVertex() = default;
    explicit AcDb3dPolylineVertex(const AcGePoint3d& point) { data_ = {32, point}; }
};

class AcDbPolygonMeshVertex : public AcDbVertex {
    ACDB_DECLARE_MEMBERS(AcDbPolygonMeshVertex)
public:
    AcDbPolygonMeshVertex() = default;
    explicit AcDbPolygonMeshVertex(const AcGePoint3d& point) { data_ = {64, point}; }
};

class AcDbPolyFaceMeshVertex : public AcDbVertex {
    ACDB_DECLARE_MEMBERS(AcDbPolyFaceMeshVertex)
public:
    AcDbPolyFaceMeshVertex() = default;
    explicit AcDbPolyFaceMeshVertex(const AcGePoint3d& point) { data_ = {192, point}; }
};

/// A face of a polyface mesh: vertex numbers from 1, negative before an invisible edge, 0 for none.
class AcDbFaceRecord : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbFaceRecord)
public:
    struct Data {
        int16_t vertices[4] = {0, 0, 0, 0};
    };
    AcDbFaceRecord() = default;
    /// eInvalidIndex: not 0 to 3.
    Acad::ErrorStatus getVertexAt(unsigned short index, short& vertex) const;
    Acad::ErrorStatus setVertexAt(unsigned short index, short vertex);
    Acad::ErrorStatus transformBy(const AcGeMatrix3d&) override { return Acad::eOk; }
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};

/// What polylines with vertex entities have in common.
class AcDbVertexOwner : public AcDbCurve {
    ACRX_DECLARE_MEMBERS(AcDbVertexOwner)
public:
    /// Makes a temporary vertex resident; it stays open for write. Needs this open for write and resident.
    Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDbEntity* vertex);
    Acad::ErrorStatus appendVertex(AcDbEntity* vertex);
    /// A new iterator over the vertices, owned by the caller.
    AcDbObjectIterator* vertexIterator() const { return new AcDbObjectIterator(vertices()); }
    /// All vertices in order, erased ones included; with `decoding` read along, for who opens all of them.
    const std::vector<AcDbObjectId>& vertices(bool decoding = false) const { return subentities_.ids(*this, decoding); }
    Acad::ErrorStatus subErase(bool erasing) override { return subentities_.eraseWithOwner(*this, erasing); }
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    AcDbSubentities& subentities() { return subentities_; }
    const AcDbSubentities& subentities() const { return subentities_; }

protected:
    AcDbVertexOwner() = default;
    AcDbSubentities subentities_;
};

class AcDb2dPolyline : public AcDbVertexOwner {
    ACDB_DECLARE_MEMBERS(AcDb2dPolyline)
public:
    bool isClosed() const override { return data_.flag & 1; }
    double elevation() const { return data_.elevation; }
    AcGeVector3d normal() const { return data_.normal; }
    double thickness() const { return data_.thickness; }
    /// The vertex's place in world coordinates.
    AcGePoint3d vertexPosition(const AcDb2dVertex& vertex) const;
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    /// As for the plane polyline above; points that only frame a curve are left out.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;

    struct Data {
        uint16_t flag = 0;      // DXF group 70: 1 closed, 2 fit curve, 4 spline, 128 linetype generation
        uint16_t curveType = 0; // 0, 5 quadratic, 6 cubic, 8 Bezier
        double startWidth = 0, endWidth = 0, thickness = 0, elevation = 0;
        AcGeVector3d normal{0, 0, 1};
    };
    const Data& data() const { return data_; }
    Acad::ErrorStatus setData(const Data& data) { return acdbSetMember(*this, data_, data); }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};

class AcDb3dPolyline : public AcDbVertexOwner {
    ACDB_DECLARE_MEMBERS(AcDb3dPolyline)
public:
    bool isClosed() const override { return data_.flag & 1; }
    /// Lines.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;

    struct Data {
        unsigned char curveType = 0;
        unsigned char flag = 0; // 1 closed
    };
    const Data& data() const { return data_; }
    Acad::ErrorStatus setData(const Data& data) { return acdbSetMember(*this, data_, data); }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};

class AcDbPolygonMesh : public AcDbVertexOwner {
    ACDB_DECLARE_MEMBERS(AcDbPolygonMesh)
public:
    /// Faces.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;

    struct Data {
        uint16_t flag = 0; // 1 closed in M, 32 closed in N
        uint16_t curveType = 0;
        uint16_t mSize = 0, nSize = 0;
        uint16_t mDensity = 0, nDensity = 0;
    };
    const Data& data() const { return data_; }
    Acad::ErrorStatus setData(const Data& data) { return acdbSetMember(*this, data_, data); }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};

class AcDbPolyFaceMesh : public AcDbVertexOwner {
    ACDB_DECLARE_MEMBERS(AcDbPolyFaceMesh)
public:
    /// Faces; lines and points where a face has but two corners or one.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;

    struct Data {
        uint16_t numVertices = 0, numFaces = 0;
    };
    const Data& data() const { return data_; }
    Acad::ErrorStatus setData(const Data& data) { return acdbSetMember(*this, data_, data); }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};
