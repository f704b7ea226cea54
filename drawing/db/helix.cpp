#include "db/helix.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbHelix, AcDbSpline, "HELIX", "ObjectDBX Classes")

Acad::ErrorStatus AcDbHelix::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = AcDbSpline::transformBy(matrix); status != Acad::eOk)
        return status;
    helix_.axisBase = matrix * helix_.axisBase;
    helix_.start = matrix * helix_.start;
    helix_.axis = (matrix * helix_.axis).normal();
    helix_.radius *= matrix.scale();
    helix_.turnHeight *= matrix.scale();
    helix_.counterClockwise = helix_.counterClockwise != (matrix.det() < 0);
    setProxyGraphics({}); // shows it where it was
    return Acad::eOk;
}
