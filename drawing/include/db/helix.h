// A helix: a spline that knows what it winds around.
#pragma once

#include "db/curves.h"

class AcDbHelix : public AcDbSpline {
    ACDB_DECLARE_MEMBERS(AcDbHelix)
public:
    struct HelixData {
        uint32_t majorRelease = 0, maintenanceRelease = 0; // of the program that made it
        AcGePoint3d axisBase, start;
        AcGeVector3d axis{0, 0, 1};
        double radius = 1, turns = 3, turnHeight = 1;
        bool counterClockwise = true;
        unsigned char constraint = 1;
    };

    AcGePoint3d axisPoint() const { return helix_.axisBase; }
    AcGeVector3d axisVector() const { return helix_.axis; }
    double baseRadius() const { return helix_.radius; }
    double turns() const { return helix_.turns; }
    double turnHeight() const { return helix_.turnHeight; }

    /// eCannotScaleNonUniformly.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;

    const HelixData& helixData() const { return helix_; }
    void setFileHelixData(const HelixData& data) { helix_ = data; }

private:
    HelixData helix_;
};
