#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "dwg/class_section.h"
#include "dwg/crc.h"
#include "dwg/file_format.h"
#include "dwg/file_image.h"
#include "dwg/header_section.h"
#include "dwg/object_map.h"

namespace vndk::dwg {

namespace {

struct ForeignVersion {
    std::string_view magic;
    std::string_view name;
};

/// Drawings of releases that the codec has no rows for, so that the message can name them.
constexpr ForeignVersion kForeignVersions[] = {
    {"AC1002", "release 2.5"},      {"AC1003", "release 2.6"},  {"AC1004", "release 9"},    {"AC1006", "release 10"},
    {"AC1009", "release 11 or 12"}, {"AC1018", "release 2004"}, {"AC1021", "release 2007"}, {"AC1024", "release 2010"},
    {"AC1027", "release 2013"},     {"AC1032", "release 2018"},
};

std::string hex(uint64_t value) {
    char text[16];
    const auto end = std::to_chars(std::begin(text), std::end(text), value, 16).ptr;
    std::transform(text, end, text, [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    return std::string(text, end);
}

} // namespace

/// Fills a FileImage step by step. Each step returns false after having set error_.
class FileParser {
public:
    FileParser(std::vector<uint8_t> bytes, const std::string& name) : image_(new FileImage), name_(name) {
        image_->bytes_ = std::move(bytes);
        file_ = image_->bytes_;
    }

    Result<std::shared_ptr<FileImage>> run(VersionMask accepted) {
        const bool good = readIdentity(accepted) && readLocators() && readHeader() && readClassTable() && readMap();
        if (!good)
            return std::move(error_);
        readPreview();
        readTemplate();
        readOptionalSections();
        readSecondHeader();
        return std::move(image_);
    }

private:
    struct Locator {
        uint32_t address = 0;
        uint32_t size = 0;
    };

    bool fail(ErrorKind kind, uint64_t offset, const std::string& what) {
        const char* state = kind == ErrorKind::Truncated ? " is incomplete (at byte " : " is damaged (at byte ";
        error_ = {kind,
                  name_ + state + std::to_string(offset) + "): " + what +
                      ". Open its .bak copy, or have the program that saved it repair it.",
                  offset};
        return false;
    }

    void warn(std::string what) { image_->warnings_.push_back(name_ + ": " + std::move(what)); }

    bool contains(uint64_t offset, uint64_t size) const {
        return offset <= file_.size() && size <= file_.size() - offset;
    }

    bool readIdentity(VersionMask accepted) {
        if (file_.size() < 6 || std::memcmp(file_.data(), "AC", 2) != 0) {
            error_ = {ErrorKind::NotADrawing,
                      name_ + " isn't a drawing: it doesn't begin with a version. Choose a .dwg file.", 0};
            return false;
        }
        const std::string magic(reinterpret_cast<const char*>(file_.data()), 6);
        const auto version = versionOfMagic(magic);
        if (!version || !(accepted & maskOf(*version)))
            return failVersion(magic, version);
        if (file_.size() < kLocatorsAt)
            return fail(ErrorKind::Truncated, file_.size(), "it ends inside the file header");
        FileIdentity& identity = image_->identity_;
        identity.version = *version;
        identity.maintenance = file_[kMaintenanceAt];
        identity.marker = file_[kMarkerAt];
        identity.formatNumber = file_[kFormatNumberAt];
        identity.formatMaintenance = file_[kFormatMaintenanceAt];
        identity.codePage = littleRS(&file_[kCodePageAt]);
        return true;
    }

    bool failVersion(const std::string& magic, std::optional<Version> version) {
        std::string_view release;
        if (version)
            release = nameOf(*version);
        for (const ForeignVersion& each : kForeignVersions)
            if (each.magic == magic)
                release = each.name;
        std::string printable;
        for (const char c : magic)
            printable += c >= ' ' && c <= '~' ? c : '?';
        const std::string who =
            release.empty() ? "has the unknown version " : "was saved by " + std::string(release) + ", version ";
        error_ = {ErrorKind::UnsupportedVersion,
                  name_ + " " + who + printable +
                      ", which can't be opened. Open it in the program that saved it and save it in the 2000 format (" +
                      std::string(magicOf(Version::R15)) + ").",
                  0};
        return false;
    }

    bool readLocators() {
        const uint32_t count = littleRL(&file_[kLocatorCountAt]);
        if (count < 3 || count > 64)
            return fail(ErrorKind::Damaged, kLocatorCountAt, "the number of sections is impossible");
        const size_t crcAt = kLocatorsAt + count * kLocatorSize;
        if (!contains(crcAt, 2 + kLocatorsEnd.size()))
            return fail(ErrorKind::Truncated, file_.size(), "it ends inside the file header");
        for (uint32_t i = 0; i < count; ++i) {
            const uint8_t* record = &file_[kLocatorsAt + i * kLocatorSize];
            if (record[0] < kSectionCount)
                locators_[record[0]] = {littleRL(record + 1), littleRL(record + 5)};
        }
        if (!std::equal(kLocatorsEnd.begin(), kLocatorsEnd.end(), &file_[crcAt + 2]))
            return fail(ErrorKind::Damaged, crcAt + 2, "the end of the section table isn't where it should be");
        if (crc16(kCrcSeed, file_.data(), crcAt) != littleRS(&file_[crcAt]))
            warn("the checksum of the file header is wrong.");
        return true;
    }

    /// Finds the data of a section that is enclosed by sentinels and has a size field and a checksum.
    bool readEnclosed(Section section, const Sentinel& begin, const char* what, std::span<const uint8_t>& data) {
        const uint64_t at = locators_[section].address;
        constexpr size_t kAround = 16 + 4 + 2 + 16;
        if (!contains(at, kAround))
            return fail(ErrorKind::Truncated, at, std::string("it ends before its ") + what);
        if (!std::equal(begin.begin(), begin.end(), &file_[at]))
            return fail(ErrorKind::Damaged, at, std::string("its ") + what + " don't begin where the file header says");
        const uint64_t size = littleRL(&file_[at + 16]);
        if (!contains(at + kAround, size))
            return fail(ErrorKind::Truncated, at + 16,
                        std::string("its ") + what + " reach beyond the end of the file");
        data = file_.subspan(at + 20, size);
        const Sentinel end = complementOf(begin);
        if (!std::equal(end.begin(), end.end(), &file_[at + 22 + size]))
            return fail(ErrorKind::Damaged, at + 22 + size,
                        std::string("its ") + what + " don't end where they should");
        if (crc16(kCrcSeed, &file_[at + 16], 4 + size) != littleRS(&file_[at + 20 + size]))
            warn(std::string("the checksum of the ") + what + " is wrong.");
        return true;
    }

    bool readHeader() {
        if (!readEnclosed(kHeaderSection, kHeaderBegin, "header variables", image_->rawHeader_))
            return false;
        BitReader reader(image_->rawHeader_.data(), 0, image_->rawHeader_.size() * 8);
        if (!readHeaderVariables(reader, image_->version(), image_->header_))
            return fail(ErrorKind::Damaged, locators_[kHeaderSection].address, "its header variables can't be read");
        return true;
    }

    bool readClassTable() {
        if (!readEnclosed(kClassesSection, kClassesBegin, "classes", image_->rawClasses_))
            return false;
        BitReader reader(image_->rawClasses_.data(), 0, image_->rawClasses_.size() * 8);
        if (!readClasses(reader, image_->classes_))
            return fail(ErrorKind::Damaged, locators_[kClassesSection].address, "its table of classes can't be read");
        const size_t behind =
            static_cast<size_t>(image_->rawClasses_.data() - file_.data()) + image_->rawClasses_.size() + 18;
        if (contains(behind, 4))
            image_->wordBehindClasses_ = littleRL(&file_[behind]);
        return true;
    }

    bool readMap() {
        const Locator map = locators_[kMapSection];
        if (!contains(map.address, map.size))
            return fail(ErrorKind::Truncated, map.address, "the object map reaches beyond the end of the file");
        MapNotes notes;
        const MapFault fault = readObjectMap(file_, map.address, map.size, image_->objects_, notes);
        if (fault.what)
            return fail(fault.kind, fault.offset, fault.what);
        for (const ObjectRecord& record : notes.wrongChecksums)
            warn("the checksum of object " + hex(record.handle) + " at byte " + std::to_string(record.offset) +
                 " is wrong.");
        if (notes.wrongChecksumCount > notes.wrongChecksums.size())
            warn("so are those of " + std::to_string(notes.wrongChecksumCount - notes.wrongChecksums.size()) +
                 " more objects.");
        if (notes.duplicateCount > 0)
            warn(std::to_string(notes.duplicateCount) +
                 " handles stand twice in the object map; the first object of each is taken.");
        return true;
    }

    /// A drawing without a usable preview is a good drawing.
    void readPreview() {
        const uint64_t at = littleRL(&file_[kPreviewAddressAt]);
        if (at == 0 || !contains(at, 21) || !std::equal(kPreviewBegin.begin(), kPreviewBegin.end(), &file_[at]))
            return;
        const unsigned count = file_[at + 20];
        if (!contains(at + 21, count * kLocatorSize))
            return;
        for (unsigned i = 0; i < count; ++i) {
            const uint8_t* record = &file_[at + 21 + i * kLocatorSize];
            const uint32_t address = littleRL(record + 1);
            const uint32_t size = littleRL(record + 5);
            if (!contains(address, size)) {
                warn("a part of the preview picture lies behind the end of the file; it is left out.");
                continue;
            }
            image_->preview_.push_back({record[0], file_.subspan(address, size)});
        }
    }

    void readTemplate() {
        const Locator at = locators_[kTemplateSection];
        if (at.address == 0 || !contains(at.address, 4))
            return;
        const size_t length = littleRS(&file_[at.address]);
        if (!contains(at.address + 2, length + 2))
            return;
        image_->templateText_ = file_.subspan(at.address + 2, length);
        image_->measurement_ = littleRS(&file_[at.address + 2 + length]);
    }

    void readOptionalSections() {
        const Locator aux = locators_[kAuxHeaderSection];
        if (aux.size == kAuxHeaderSize && contains(aux.address, aux.size))
            image_->auxHeader_ = file_.subspan(aux.address, aux.size);
        const Locator free = locators_[kFreeSpaceSection];
        if (free.size == kFreeSpaceSize && contains(free.address, free.size))
            image_->objFreeSpace_ = file_.subspan(free.address, free.size);
    }

    /// The second header only repeats the first; no locator names it, it follows the map and the free space.
    void readSecondHeader() {
        if (image_->version() == Version::R13)
            return;
        uint64_t at = uint64_t{locators_[kMapSection].address} + locators_[kMapSection].size;
        if (!image_->objFreeSpace_.empty())
            at = uint64_t{locators_[kFreeSpaceSection].address} + locators_[kFreeSpaceSection].size;
        if (!contains(at, 20) || !std::equal(kSecondHeaderBegin.begin(), kSecondHeaderBegin.end(), &file_[at]))
            return;
        const uint64_t size = littleRL(&file_[at + 16]);
        if (size >= kSecondHeaderTailSize && contains(at + 16, size))
            image_->secondHeaderTail_ = file_.subspan(at + 16 + size - kSecondHeaderTailSize, kSecondHeaderTailSize);
    }

    std::shared_ptr<FileImage> image_;
    std::span<const uint8_t> file_;
    std::string name_;
    std::array<Locator, kSectionCount> locators_{};
    Error error_;
};

Result<std::shared_ptr<FileImage>> FileImage::parse(std::vector<uint8_t> bytes, const std::string& name,
                                                    VersionMask accepted) {
    return FileParser(std::move(bytes), name).run(accepted);
}

} // namespace vndk::dwg
