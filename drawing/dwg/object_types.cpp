#include "dwg/object_types.h"

#include <array>

namespace vndk::dwg {

namespace {

/// Types that aren't modelled but have a fixed number.
struct TypeName {
    uint16_t number;
    std::string_view name;
};

constexpr TypeName kOtherTypes[] = {
    {43, "OLEFRAME"},
    {72, "GROUP"},
    {73, "MLINESTYLE"},
    {74, "OLE2FRAME"},
    {75, "DUMMY"},
    {76, "LONG_TRANSACTION"},
    {79, "XRECORD"},
    {80, "ACDBPLACEHOLDER"},
    {81, "VBA_PROJECT"},
    {82, "LAYOUT"},
    {498, "ACAD_PROXY_ENTITY"},
    {499, "ACAD_PROXY_OBJECT"},
};

constexpr size_t kFixedNumbers = 83;

std::array<std::span<const ObjectType>, 12> allTypes() {
    return {curveTypes(), textTypes(),  complexTypes(), planarTypes(), hatchTypes(),     mlineTypes(),
            solidTypes(), imageTypes(), tableTypes(),   recordTypes(), dimensionTypes(), annotationTypes()};
}

std::array<const ObjectType*, kFixedNumbers> indexByNumber() {
    std::array<const ObjectType*, kFixedNumbers> index{};
    for (const auto& types : allTypes())
        for (const ObjectType& type : types)
            if (type.number != 0)
                index[type.number] = &type;
    return index;
}

} // namespace

const ObjectType* findType(uint16_t number) {
    static const auto index = indexByNumber();
    return number < kFixedNumbers ? index[number] : nullptr;
}

const ObjectType* findTypeByName(std::string_view dxfName) {
    for (const auto& types : allTypes())
        for (const ObjectType& type : types)
            if (dxfName == type.dxfName)
                return &type;
    return nullptr;
}

const ObjectType* findTypeOf(const AcRxClass* cls, const char* dxfName) {
    for (const auto& types : allTypes())
        for (const ObjectType& type : types)
            if (type.desc() == cls && (!dxfName || std::string_view(dxfName) == type.dxfName))
                return &type;
    return nullptr;
}

std::string_view nameOfFixedType(uint16_t number) {
    if (const ObjectType* const type = findType(number))
        return type->dxfName;
    for (const TypeName& other : kOtherTypes)
        if (other.number == number)
            return other.name;
    return {};
}

} // namespace vndk::dwg
