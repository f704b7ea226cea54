#pragma once
/// The drawing file formats that the codec knows by name.
/// Tables of fields carry a mask of versions, so that an older format is added by rows and not by branches.

#include <cstdint>
#include <optional>
#include <string_view>

namespace vndk::dwg {

enum class Version : uint8_t {
    R13, ///< "AC1012"
    R14, ///< "AC1014"
    R15, ///< "AC1015": 2000, 2000i, 2002
};

/// A set of versions, as stored in table rows.
using VersionMask = uint8_t;
constexpr VersionMask maskOf(Version version) { return static_cast<VersionMask>(1u << static_cast<unsigned>(version)); }
constexpr VersionMask kOnly15 = maskOf(Version::R15);
constexpr VersionMask kOnly1314 = maskOf(Version::R13) | maskOf(Version::R14);
constexpr VersionMask kEveryVersion = kOnly15 | kOnly1314;

/// The six characters at the start of a file, for example "AC1015".
std::string_view magicOf(Version version);
/// The name that people use, for example "release 14".
std::string_view nameOf(Version version);
std::optional<Version> versionOfMagic(std::string_view magic);

} // namespace vndk::dwg
