// The DXF groups of each class: what (entget) shows.
#pragma once

#include "db/object.h"
#include "db/resbuf.h"
#include "ge/vector.h"

#include <string_view>
#include <utility>

namespace vndk::host {

/// A list of buffers that grows.
class DxfList {
public:
    DxfList() = default;
    ~DxfList() { acutRelRb(head_); }
    DxfList(const DxfList&) = delete;
    DxfList& operator=(const DxfList&) = delete;

    void text(short code, std::string_view value);
    void real(short code, double value);
    void integer(short code, int value);
    void name(short code, AcDbObjectId id);
    void point(short code, const AcGePoint3d& value);
    void point(short code, const AcGePoint2d& value);
    void vector(short code, const AcGeVector3d& value) { point(code, AcGePoint3d(value.x, value.y, value.z)); }
    /// The handle of an object as text.
    void handle(short code, AcDbHandle value);
    /// The mark with which the groups of a class begin.
    void subclass(std::string_view name) { text(100, name); }
    /// Takes over buffers made elsewhere.
    void append(resbuf* list);

    resbuf* release() {
        tail_ = &head_;
        return std::exchange(head_, nullptr);
    }

private:
    resbuf& add(short code);
    resbuf* head_ = nullptr;
    resbuf** tail_ = &head_;
};

/// Adds all groups of an object that is open for read.
void writeDxfList(const AcDbObject& object, DxfList& list);

} // namespace vndk::host
