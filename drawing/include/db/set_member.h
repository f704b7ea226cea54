// The one way in which setters change a data member.
#pragma once

#include "db/object.h"

#include <utility>

/// Records the former state, then changes. eNotOpenForWrite: nothing was changed.
template <class T, class V>
Acad::ErrorStatus acdbSetMember(AcDbObject& object, T& member, V&& value) {
    const Acad::ErrorStatus status = object.assertWriteEnabled();
    if (status == Acad::eOk)
        member = std::forward<V>(value);
    return status;
}
