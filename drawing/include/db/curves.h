// Lines, circles, arcs, ellipses, rays, construction lines and splines.
//
// Points are world coordinates and angles radians, counter-clockwise seen against the normal. Each class keeps its
// data in a plain struct: data() reads it, setFileData() takes it while a file is decoded, without undo.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

class AcDbCurve : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbCurve)
public:
    virtual bool isClosed() const { return false; }
    /// eNotApplicable: the curve has no such end.
    virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
    virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;

protected:
    AcDbCurve() = default;
};

class AcDbLine : public AcDbCurve {
    ACDB_DECLARE_MEMBERS(AcDbLine)
public:
    AcDbLine() = default;
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : data_{start, end} {}

    AcGePoint3d startPoint() const { return data_.start; }
    Acad::ErrorStatus setStartPoint(const AcGePoint3d& point) { return acdbSetMember(*this, data_.start, point); }
    AcGePoint3d endPoint() const { return data_.end; }
    Acad::ErrorStatus setEndPoint(const AcGePoint3d& point) { return acdbSetMember(*this, data_.end, point); }
    double thickness() const { return data_.thickness; }
    Acad::ErrorStatus setThickness(double thickness) { return acdbSetMember(*this, data_.thickness, thickness); }
    AcGeVector3d normal() const { return data_.normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;

    struct Data {
        AcGePoint3d start, end;
        double thickness = 0;
        AcGeVector3d normal{0, 0, 1};
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};

/// The centre stands in world coordinates in this interface, in object coordinates in data().
class AcDbCircle : public AcDbCurve {
    ACDB_DECLARE_MEMBERS(AcDbCircle)
public:
    AcDbCircle() = default;
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);

    AcGePoint3d center() const;
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    double radius() const { return data_.radius; }
    /// eInvalidInput: not positive.
    Acad::ErrorStatus setRadius(double radius);
    double thickness() const { return data_.thickness; }
    Acad::ErrorStatus setThickness(double thickness) { return acdbSetMember(*this, data_.thickness, thickness); }
    AcGeVector3d normal() const { return data_.normal; }
    /// Turns the circle about its centre.
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    bool isClosed() const override { return true; }
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;

    struct Data {
        AcGePoint3d center; // object coordinates
        double radius = 1;
        double thickness = 0;
        AcGeVector3d normal{0, 0, 1};
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};

/// Runs counter-clockwise from the start to the end angle, both in the object coordinate system.
class AcDbArc : public AcDbCurve {
    ACDB_DECLARE_MEMBERS(AcDbArc)
public:
    AcDbArc() = default;
    AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);

    AcGePoint3d center() const;
    Acad::ErrorStatus setCenter(const AcGePoint3d& center);
    double radius() const { return data_.radius; }
    /// eInvalidInput: not positive.
    Acad::ErrorStatus setRadius(double radius);
    double startAngle() const { return data_.startAngle; }
    Acad::ErrorStatus setStartAngle(double angle) { return acdbSetMember(*this, data_.startAngle, angle); }
    double endAngle() const { return data_.endAngle; }
    Acad::ErrorStatus setEndAngle(double angle) { return acdbSetMember(*this, data_.endAngle, angle); }
    double thickness() const { return data_.thickness; }
    Acad::ErrorStatus setThickness(double thickness) { return acdbSetMember(*this, data_.thickness, thickness); }
    AcGeVector3d normal() const { return data_.normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;

    struct Data {
        AcGePoint3d center; // object coordinates
        double radius = 1;
        double thickness = 0;
        AcGeVector3d normal{0, 0, 1};
        double startAngle = 0, endAngle = kAcGePi;
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};

/// The point at parameter u is center + majorAxis cos u + minorAxis sin u.
class AcDbEllipse : public AcDbCurve {
    ACDB_DECLARE_MEMBERS(AcDbEllipse)
public:
    AcDbEllipse() = default;
    AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                double radiusRatio, double startParam = 0, double endParam = 2 * kAcGePi);

    AcGePoint3d center() const { return data_.center; }
    Acad::ErrorStatus setCenter(const AcGePoint3d& center) { return acdbSetMember(*this, data_.center, center); }
    AcGeVector3d normal() const { return data_.normal; }
    AcGeVector3d majorAxis() const { return data_.majorAxis; }
    AcGeVector3d minorAxis() const;
    double radiusRatio() const { return data_.ratio; }
    /// eInvalidInput: not above 0 and at most 1.
    Acad::ErrorStatus setRadiusRatio(double ratio);
    double startParam() const { return data_.startParam; }
    double endParam() const { return data_.endParam; }
    /// Replaces all. eDegenerateGeometry: an axis of no length, or axes that aren't at right angles to the normal.
    Acad::ErrorStatus set(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                          double radiusRatio, double startParam = 0, double endParam = 2 * kAcGePi);

    bool isClosed() const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;

    struct Data {
        AcGePoint3d center;
        AcGeVector3d majorAxis{1, 0, 0};
        AcGeVector3d normal{0, 0, 1};
        double ratio = 1;
        double startParam = 0, endParam = 2 * kAcGePi;
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

private:
    AcGePoint3d pointAt(double parameter) const;
    Data data_;
};

/// A line that begins at the base point and has no end.
class AcDbRay : public AcDbCurve {
    ACDB_DECLARE_MEMBERS(AcDbRay)
public:
    AcGePoint3d basePoint() const { return data_.base; }
    Acad::ErrorStatus setBasePoint(const AcGePoint3d& point) { return acdbSetMember(*this, data_.base, point); }
    AcGeVector3d unitDir() const { return data_.direction; }
    Acad::ErrorStatus setUnitDir(const AcGeVector3d& direction);
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;

    struct Data {
        AcGePoint3d base;
        AcGeVector3d direction{1, 0, 0};
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};

/// A line without ends through the base point.
class AcDbXline : public AcDbCurve {
    ACDB_DECLARE_MEMBERS(AcDbXline)
public:
    AcGePoint3d basePoint() const { return data_.base; }
    Acad::ErrorStatus setBasePoint(const AcGePoint3d& point) { return acdbSetMember(*this, data_.base, point); }
    AcGeVector3d unitDir() const { return data_.direction; }
    Acad::ErrorStatus setUnitDir(const AcGeVector3d& direction);
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;

    using Data = AcDbRay::Data;
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};

/// Given by control points and knots, or only by the points that it passes.
class AcDbSpline : public AcDbCurve {
    ACDB_DECLARE_MEMBERS(AcDbSpline)
public:
    int degree() const { return data_.degree; }
    bool isRational() const { return data_.rational; }
    bool isPeriodic() const { return data_.periodic; }
    int numControlPoints() const { return static_cast<int>(data_.controlPoints.size()); }
    int numFitPoints() const { return static_cast<int>(data_.fitPoints.size()); }
    /// eInvalidIndex.
    Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;
    Acad::ErrorStatus getFitPointAt(int index, AcGePoint3d& point) const;
    /// 1 for a spline without weights.
    double weightAt(int index) const;

    bool isClosed() const override { return data_.closed; }
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    /// The box around the control points, or around the fit points if there are none.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;

    struct Data {
        int scenario = 1; // 1 control points, 2 fit points
        int degree = 3;
        bool rational = false, closed = false, periodic = false, weighted = false;
        double knotTolerance = 0, controlTolerance = 0, fitTolerance = 0;
        AcGeVector3d startTangent, endTangent; // zero: free
        std::vector<double> knots;
        std::vector<AcGePoint3d> controlPoints;
        std::vector<double> weights; // as many as control points if weighted
        std::vector<AcGePoint3d> fitPoints;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Data data_;
};
