// Multilines: up to 16 parallel lines along the same vertices.
//
// Coordinates are world coordinates. Each vertex says where the lines run on behind it: `direction` is theirs, `miter`
// the line on which the corners of all of them lie. How the lines look stands in a style of the drawing's dictionary.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

class AcDbMline : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbMline)
public:
    enum Flag : uint16_t { kHasVertices = 1, kClosed = 2, kNoStartCaps = 4, kNoEndCaps = 8 };

    /// One line from a vertex to the next one. The first parameter is its place on the miter; from there along the
    /// line it begins at the second, is broken off at the third, begins again at the fourth and so on.
    struct Segment {
        std::vector<double> line, fill;
    };
    struct Vertex {
        AcGePoint3d point;
        AcGeVector3d direction, miter;
        std::vector<Segment> segments; // one for each line
    };

    AcDbObjectId style() const { return data_.style; }
    int numVertices() const { return static_cast<int>(data_.vertices.size()); }
    bool closedMline() const { return data_.flags & kClosed; }
    /// Negative where the lines lie on the other sides than their style says.
    double scale() const { return data_.scale; }
    /// 0 the first vertices lie on the top line, 1 on the middle, 2 on the bottom line.
    int justification() const { return data_.justification; }
    AcGeVector3d normal() const { return data_.normal; }

    /// eCannotScaleNonUniformly.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    /// Its lines, and the arcs of its ends; a filled style loses its fill.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;

    struct Data {
        double scale = 1;
        unsigned char justification = 0;
        AcGePoint3d base;
        AcGeVector3d normal{0, 0, 1};
        uint16_t flags = kHasVertices;
        unsigned char lines = 0; // of the style
        std::vector<Vertex> vertices;
        AcDbObjectId style;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Data data_;
};
