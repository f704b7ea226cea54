#pragma once
/// The classes section: which class stands behind an object type number of 500 and above.

#include <cstdint>
#include <string>

namespace vndk::dwg {

constexpr uint16_t kFirstClassNumber = 500;
constexpr uint16_t kEntityClassId = 0x1F2;
constexpr uint16_t kObjectClassId = 0x1F3;

/// Texts stand in the drawing's code page.
struct ClassRecord {
    uint16_t number = 0;     ///< The type number of its objects: 500, 501, ...
    uint16_t proxyFlags = 0; ///< What may be done with an object while its class isn't loaded.
    std::string appName;     ///< The application that brings the class.
    std::string cppName;     ///< For example "AcDbLayout".
    std::string dxfName;     ///< For example "LAYOUT".
    bool wasZombie = false;
    uint16_t itemClassId = kObjectClassId; ///< kEntityClassId or kObjectClassId.

    bool isEntity() const { return itemClassId == kEntityClassId; }
    bool operator==(const ClassRecord&) const = default;
};

} // namespace vndk::dwg
