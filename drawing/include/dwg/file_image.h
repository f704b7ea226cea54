#pragma once
/// A drawing file in memory: its bytes, and where everything in them is. Objects are found, framed and checked but
/// not decoded; the sections around them (header variables, classes, preview, template) are.
///
///     auto image = FileImage::read("/home/me/plan.dwg");
///     if (image)
///         for (const ObjectRecord& record : (*image)->objects())
///             decode(record.handle, (*image)->bytesOf(record));

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "dwg/class_table.h"
#include "dwg/error.h"
#include "dwg/header_variables.h"
#include "dwg/version.h"

namespace vndk::dwg {

/// What the first bytes of a file tell about it and its writer.
struct FileIdentity {
    Version version = Version::R15;
    uint8_t maintenance = 6;       ///< Maintenance release of the format.
    uint8_t marker = 1;            ///< 0, 1 or 3; without known meaning.
    uint8_t formatNumber = 0x17;   ///< Format number of the program that wrote the file.
    uint8_t formatMaintenance = 6; ///< Its maintenance number.
    uint16_t codePage = 30;        ///< The format's number of a code page; 30 is 1252. See codepage.h.
    bool operator==(const FileIdentity&) const = default;
};

/// One entry of the object map.
struct ObjectRecord {
    uint64_t handle;
    uint32_t offset; ///< Of the record's size field, from the start of the file.
    uint32_t size;   ///< Of the whole record: size field, data and checksum.
};

/// One block of the preview section. Types: 1 header (zeros), 2 bitmap without file header, 3 metafile.
struct PreviewRecord {
    uint8_t type = 0;
    std::span<const uint8_t> data;
};

class FileImage {
public:
    /// Reads the file and parses it. Only versions in `accepted` are taken; the others give UnsupportedVersion.
    static Result<std::shared_ptr<FileImage>> read(const std::string& path, VersionMask accepted = kOnly15);
    /// Parses the bytes of a file; `name` is for messages.
    static Result<std::shared_ptr<FileImage>> parse(std::vector<uint8_t> bytes, const std::string& name,
                                                    VersionMask accepted = kOnly15);

    FileImage(const FileImage&) = delete;
    FileImage& operator=(const FileImage&) = delete;

    std::span<const uint8_t> bytes() const { return bytes_; }
    const FileIdentity& identity() const { return identity_; }
    Version version() const { return identity_.version; }

    const HeaderVariables& header() const { return header_; }
    /// The data of the header section as stored. Spans stay valid as long as the image.
    std::span<const uint8_t> rawHeader() const { return rawHeader_; }
    const std::vector<ClassRecord>& classes() const { return classes_; }
    std::span<const uint8_t> rawClasses() const { return rawClasses_; }
    /// The four bytes behind the classes section.
    uint32_t wordBehindClasses() const { return wordBehindClasses_; }

    /// Ascending by handle, each handle once. Their frames lie inside the file; a wrong checksum is a warning.
    /// The handle is the map's: whether the record agrees is seen when it is decoded.
    const std::vector<ObjectRecord>& objects() const { return objects_; }
    std::span<const uint8_t> bytesOf(const ObjectRecord& record) const {
        return std::span<const uint8_t>(bytes_).subspan(record.offset, record.size);
    }
    /// The record with that handle; null when the file has none.
    const ObjectRecord* find(uint64_t handle) const;

    const std::vector<PreviewRecord>& preview() const { return preview_; }
    /// 0 inches, 1 metric.
    uint16_t measurement() const { return measurement_; }
    std::span<const uint8_t> templateText() const { return templateText_; }
    /// Empty when the file has none.
    std::span<const uint8_t> auxHeader() const { return auxHeader_; }
    std::span<const uint8_t> objFreeSpace() const { return objFreeSpace_; }
    /// The eight bytes behind the second header's checksum, whose meaning isn't known; empty when not found.
    std::span<const uint8_t> secondHeaderTail() const { return secondHeaderTail_; }

    /// What was wrong without keeping the drawing from being read, in sentences.
    const std::vector<std::string>& warnings() const { return warnings_; }

private:
    friend class FileParser;
    FileImage() = default;

    std::vector<uint8_t> bytes_;
    FileIdentity identity_;
    HeaderVariables header_;
    std::span<const uint8_t> rawHeader_;
    std::vector<ClassRecord> classes_;
    std::span<const uint8_t> rawClasses_;
    uint32_t wordBehindClasses_ = 0;
    std::vector<ObjectRecord> objects_;
    std::vector<PreviewRecord> preview_;
    uint16_t measurement_ = 0;
    std::span<const uint8_t> templateText_;
    std::span<const uint8_t> auxHeader_;
    std::span<const uint8_t> objFreeSpace_;
    std::span<const uint8_t> secondHeaderTail_;
    std::vector<std::string> warnings_;
};

} // namespace vndk::dwg
