// Objects looked at for a moment, where opening and closing each of very many would take longer than the look.
#pragma once

#include "db/database.h"
#include "db/stub.h"

/// The object as opening it for read would give it, though nobody is told and nothing keeps it from being changed:
/// for who is done with it before anything else happens. Null where it couldn't be opened for read, and for an object
/// of another class.
template <class T>
const T* acdbPeek(AcDbObjectId id) {
    AcDbStub* const stub = id.stub();
    if (!stub || stub->has(kStubErased) || stub->has(kStubWriter) || stub->has(kStubNotifier))
        return nullptr;
    const AcDbObject* const object = stub->object ? stub->object : stub->database->objectOf(*stub);
    return object && stub->cls->isDerivedFrom(T::desc()) ? static_cast<const T*>(object) : nullptr;
}
