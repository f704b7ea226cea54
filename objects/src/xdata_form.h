// The form in which the library's objects put their data into xdata. It begins with a version number, so that it can
// grow: a version that a library doesn't know is refused, and the object stays ordinary with its xdata untouched.
//
// A text is its number of pieces followed by them, each as long as an xdata text may be. Points that move with the
// entity have code 11, which programs that don't know the class transform along; other points have code 10.
#pragma once

#include "db/database.h"
#include "db/xdata.h"
#include "ge/vector.h"
#include "objects/cond_formula.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace vndk::objects {

class FormWriter {
public:
    FormWriter(AcDbXDataWriter& out, short version) : out_(out) { out_.int16(version); }
    void number(int value) { out_.int32(value); }
    void real(double value) { out_.real(40, value); }
    void text(std::string_view value);
    void fixedPoint(const AcGePoint3d& point) { out_.point(10, point.x, point.y, point.z); }
    void movingPoint(const AcGePoint3d& point) { out_.point(11, point.x, point.y, point.z); }
    /// Null for an erased object, which isn't in the file.
    void reference(const AcDbObjectId& id) { out_.handle(id.isErased() ? AcDbHandle() : id.handle()); }
    /// Leaves out erased objects.
    template <class Id>
    void references(const std::vector<Id>& ids) {
        const auto isErased = [](const Id& id) { return id.isErased(); };
        number(static_cast<int>(std::count_if(ids.begin(), ids.end(), std::not_fn(isErased))));
        for (const Id& id : ids)
            if (!isErased(id))
                reference(id);
    }

private:
    AcDbXDataWriter& out_;
};

/// Once something isn't of the form, ok() is false and all further values are zero.
class FormReader {
public:
    /// `version` must come first.
    FormReader(AcDbXDataReader& in, AcDbDatabase& database, short version);
    bool ok() const { return ok_; }
    /// Everything was read and was of the form.
    bool finished();

    int number(int least, int most);
    double real();
    std::string text(size_t maxLength);
    AcGePoint3d fixedPoint() { return point(10); }
    AcGePoint3d movingPoint() { return point(11); }
    /// Null for an object that is gone.
    AcDbObjectId reference();
    /// Leaves out objects that are gone: another program may have erased them.
    template <class Id>
    std::vector<Id> references(size_t most) {
        std::vector<Id> ids;
        for (int left = number(0, static_cast<int>(most)); left > 0 && ok_; --left) {
            const AcDbObjectId id = reference();
            if (!id.isNull())
                ids.push_back(Id(id));
        }
        return ids;
    }

private:
    AcGePoint3d point(int code);
    bool take(int code, AcDbXDataItem& item);

    AcDbXDataReader& in_;
    AcDbDatabase& database_;
    bool ok_ = true;
};

void writeFormulas(FormWriter& form, const CCondFormulaList& formulas);
/// Adds the formulas to an empty list. False: one of them isn't a formula, or there are too many.
bool readFormulas(FormReader& form, CCondFormulaList& formulas);

} // namespace vndk::objects
