// Opening objects by id.
#pragma once

#include "db/object.h"

/// Opens the object of an id. On success `object` is set and has to be closed; on failure it is null.
/// eNullObjectId, eWasErased (unless `openErased`), ePermanentlyErased, and the open statuses of db/object.h.
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);

/// Opens and casts: an object of another class is closed again and answered with eNotThatKindOfClass.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead,
                                 bool openErased = false) {
    AcDbObject* plain = nullptr;
    object = nullptr;
    const Acad::ErrorStatus status = acdbOpenAcDbObject(plain, id, mode, openErased);
    if (status != Acad::eOk)
        return status;
    object = T::cast(plain);
    if (object)
        return Acad::eOk;
    plain->close();
    return Acad::eNotThatKindOfClass;
}

/// Opens in its constructor, closes at the end of its scope. Null pointer if the open failed.
template <class T>
class AcDbObjectPointer {
public:
    explicit AcDbObjectPointer(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false)
        : status_(acdbOpenObject(object_, id, mode, openErased)) {}
    AcDbObjectPointer(const AcDbObjectPointer&) = delete;
    AcDbObjectPointer& operator=(const AcDbObjectPointer&) = delete;
    ~AcDbObjectPointer() { close(); }

    Acad::ErrorStatus openStatus() const { return status_; }
    T* object() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }
    void close() {
        if (object_)
            object_->close();
        object_ = nullptr;
    }

private:
    T* object_ = nullptr;
    Acad::ErrorStatus status_;
};

/// Between ids and entity names outside the database. eInvalidInput: the name holds no object.
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);
