// Solids, regions and bodies: what the modeler's text form describes (see the private acis/sat_text.h).
//
// The text is kept as it came; moving the thing writes a transform into it. What follows the text in a file is a
// picture for programs without a modeler; it goes when the thing moves.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

class AcDbModelerGeometry : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbModelerGeometry)
public:
    /// Uneven scaling: eCannotScaleNonUniformly. A text that isn't understood: eNotApplicable.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    /// The box around edges and faces.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    bool isNull() const { return data_.text.empty(); }

    struct Data {
        bool empty = true;
        bool unknownBit = true;
        uint16_t version = 1;         // of the stored form: 1 is text
        std::vector<uint32_t> blocks; // the sizes in which the text is stored
        std::string text;             // readable
        std::string rest;             // the bits behind it, filled to whole bytes
        uint32_t restBits = 0;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

protected:
    AcDbModelerGeometry() = default;

private:
    Data data_;
};

/// A flat area with edges.
class AcDbRegion : public AcDbModelerGeometry {
    ACDB_DECLARE_MEMBERS(AcDbRegion)
public:
    /// Its edges as lines, arcs, circles and ellipses. eNotApplicable: some are of another kind.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;
};

class AcDb3dSolid : public AcDbModelerGeometry {
    ACDB_DECLARE_MEMBERS(AcDb3dSolid)
};

class AcDbBody : public AcDbModelerGeometry {
    ACDB_DECLARE_MEMBERS(AcDbBody)
};
