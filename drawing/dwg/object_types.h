#pragma once
/// The object types that are decoded into classes of their own: one row each.

#include "dwg/fields.h"

namespace vndk::dwg {

struct ObjectType {
    uint16_t number; ///< Fixed type number, or 0 for a type that only the classes section numbers.
    const char* dxfName;
    AcRxClass* (*desc)();
    /// A new object with its fields. The caller asks the reader whether all went well.
    AcDbObject* (*read)(FieldReader& reader);
    void (*write)(FieldWriter& writer, const AcDbObject& object);
    /// Takes the data of an object of this class over into one of a derived class.
    void (*assignBase)(AcDbObject& derived, const AcDbObject& base);
};

/// The row of a type by its number, or by its DXF name for numbers of the classes section; null if there is none.
const ObjectType* findType(uint16_t number);
const ObjectType* findTypeByName(std::string_view dxfName);
/// The row that objects of exactly that class are written by. Some classes have several, told apart by the DXF name;
/// with null the first one is taken.
const ObjectType* findTypeOf(const AcRxClass* cls, const char* dxfName);

/// The DXF name of a fixed type number, also of types that aren't modelled; empty for unknown numbers.
std::string_view nameOfFixedType(uint16_t number);

/// Rows by topic.
std::span<const ObjectType> curveTypes();
std::span<const ObjectType> textTypes();
std::span<const ObjectType> complexTypes();
std::span<const ObjectType> planarTypes();
std::span<const ObjectType> hatchTypes();
std::span<const ObjectType> mlineTypes();
std::span<const ObjectType> solidTypes();
std::span<const ObjectType> imageTypes();
std::span<const ObjectType> tableTypes();
std::span<const ObjectType> recordTypes();
std::span<const ObjectType> dimensionTypes();
std::span<const ObjectType> annotationTypes();

template <class T>
void assignBaseOf(AcDbObject& derived, const AcDbObject& base) {
    static_cast<T&>(derived).T::assignData(base);
}

/// For a class whose fields are all in its data().
template <class T, const auto& Rows>
AcDbObject* readData(FieldReader& reader) {
    typename T::Data data;
    readRows(Rows, reader, &data);
    auto* const object = new T;
    object->setFileData(std::move(data));
    return object;
}

template <class T, const auto& Rows>
void writeData(FieldWriter& writer, const AcDbObject& object) {
    writeRows(Rows, writer, &static_cast<const T&>(object).data());
}

template <class T, const auto& Rows>
constexpr ObjectType dataType(uint16_t number, const char* dxfName) {
    return {number, dxfName, &T::desc, &readData<T, Rows>, &writeData<T, Rows>, &assignBaseOf<T>};
}

/// For a class without fields.
template <class T>
constexpr ObjectType emptyType(uint16_t number, const char* dxfName) {
    return {number,
            dxfName,
            &T::desc,
            [](FieldReader&) -> AcDbObject* { return new T; },
            [](FieldWriter&, const AcDbObject&) {},
            &assignBaseOf<T>};
}

} // namespace vndk::dwg
