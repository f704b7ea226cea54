#pragma once
/// Fixed numbers of the file's layout, shared by parser and writer.

#include <array>
#include <cstddef>
#include <cstdint>

namespace vndk::dwg {

using Sentinel = std::array<uint8_t, 16>;

constexpr Sentinel complementOf(const Sentinel& begin) {
    Sentinel end{};
    for (size_t i = 0; i < end.size(); ++i)
        end[i] = static_cast<uint8_t>(~begin[i]);
    return end;
}

constexpr Sentinel kLocatorsEnd = {0x95, 0xA0, 0x4E, 0x28, 0x99, 0x82, 0x1A, 0xE5,
                                   0x5E, 0x41, 0xE0, 0x5F, 0x9D, 0x3A, 0x4D, 0x00};
constexpr Sentinel kHeaderBegin = {0xCF, 0x7B, 0x1F, 0x23, 0xFD, 0xDE, 0x38, 0xA9,
                                   0x5F, 0x7C, 0x68, 0xB8, 0x4E, 0x6D, 0x33, 0x5F};
constexpr Sentinel kClassesBegin = {0x8D, 0xA1, 0xC4, 0xB8, 0xC4, 0xA9, 0xF8, 0xC5,
                                    0xC0, 0xDC, 0xF4, 0x5F, 0xE7, 0xCF, 0xB6, 0x8A};
constexpr Sentinel kSecondHeaderBegin = {0xD4, 0x7B, 0x21, 0xCE, 0x28, 0x93, 0x9F, 0xBF,
                                         0x53, 0x24, 0x40, 0x09, 0x12, 0x3C, 0xAA, 0x01};
constexpr Sentinel kPreviewBegin = {0x1F, 0x25, 0x6D, 0x07, 0xD4, 0x36, 0x28, 0x28,
                                    0x9D, 0x57, 0xCA, 0x3F, 0x9D, 0x44, 0x10, 0x2B};

/// Positions in the file header.
constexpr size_t kMaintenanceAt = 0x0B;
constexpr size_t kMarkerAt = 0x0C;
constexpr size_t kPreviewAddressAt = 0x0D;
constexpr size_t kFormatNumberAt = 0x11;
constexpr size_t kFormatMaintenanceAt = 0x12;
constexpr size_t kCodePageAt = 0x13;
constexpr size_t kLocatorCountAt = 0x15;
constexpr size_t kLocatorsAt = 0x19;
constexpr size_t kLocatorSize = 9;

/// Numbers of the locator records.
enum Section : unsigned {
    kHeaderSection,
    kClassesSection,
    kMapSection,
    kFreeSpaceSection,
    kTemplateSection,
    kAuxHeaderSection,
    kSectionCount,
};

constexpr size_t kAuxHeaderSize = 123;
constexpr size_t kFreeSpaceSize = 53;
constexpr size_t kSecondHeaderTailSize = 8;
/// The four bytes that follow the classes section.
constexpr uint32_t kWordBehindClasses = 0x0DCA;

inline uint16_t littleRS(const uint8_t* p) { return static_cast<uint16_t>(p[0] | p[1] << 8); }
inline uint16_t bigRS(const uint8_t* p) { return static_cast<uint16_t>(p[0] << 8 | p[1]); }
inline uint32_t littleRL(const uint8_t* p) { return littleRS(p) | static_cast<uint32_t>(littleRS(p + 2)) << 16; }

} // namespace vndk::dwg
