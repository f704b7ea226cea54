#include "dwg/file_writer.h"

#include <algorithm>
#include <bit>
#include <cassert>

#include "dwg/class_section.h"
#include "dwg/crc.h"
#include "dwg/file_format.h"
#include "dwg/header_section.h"
#include "dwg/object_map.h"

namespace vndk::dwg {

namespace {

constexpr uint64_t kLargestFile = 0x7FFFFFFF;
/// Where the first section behind the file header and its six locators begins.
constexpr size_t kAuxHeaderAt = kLocatorsAt + kSectionCount * kLocatorSize + 2 + 16;

/// Builds the file from front to back in one buffer; addresses are filled in at the end.
class FileWriter {
public:
    explicit FileWriter(const FileParts& parts) : parts_(parts) {
        // Sections of other versions are laid out differently, so nothing of their bytes can be kept.
        if (parts.source && parts.source->version() == Version::R15)
            source_ = parts.source;
    }

    Result<std::vector<uint8_t>> run() {
        if (const Result<void> possible = prepare(); !possible)
            return possible.error();
        out_.resize(kAuxHeaderAt);
        writeAuxHeader();
        writePreview();
        writeHeader();
        writeClassTable();
        writeObjects();
        writeMap();
        writeFreeSpace();
        writeSecondHeader();
        writeTemplate();
        writeFileHeader();
        return std::move(out_);
    }

private:
    struct Locator {
        uint32_t address = 0;
        uint32_t size = 0;
    };

    Result<void> prepare() {
        uint64_t total = 0x10000;
        for (const ObjectBytes& object : parts_.objects)
            total += object.bytes.size() + 8;
        for (const PreviewRecord& record : parts_.preview)
            total += record.data.size();
        if (total > kLargestFile)
            return Error{ErrorKind::CannotWrite,
                         "The drawing is too large for a file of this format (2 GB). Save parts of it with WBLOCK.", 0};
        out_.reserve(total);
        return {};
    }

    const FileImage* source() const { return source_; }

    void putRS(uint16_t value) {
        out_.push_back(static_cast<uint8_t>(value));
        out_.push_back(static_cast<uint8_t>(value >> 8));
    }
    void putRL(uint32_t value) {
        putRS(static_cast<uint16_t>(value));
        putRS(static_cast<uint16_t>(value >> 16));
    }
    void put(std::span<const uint8_t> data) { out_.insert(out_.end(), data.begin(), data.end()); }
    void putTime(const JulianTime& time) {
        putRL(time.day);
        putRL(time.milliseconds);
    }
    void setRL(size_t at, uint32_t value) {
        for (unsigned i = 0; i < 4; ++i)
            out_[at + i] = static_cast<uint8_t>(value >> (8 * i));
    }
    void setTime(size_t at, const JulianTime& time) {
        setRL(at, time.day);
        setRL(at + 4, time.milliseconds);
    }

    void begin(Section section) { locators_[section].address = static_cast<uint32_t>(out_.size()); }
    void end(Section section) {
        locators_[section].size = static_cast<uint32_t>(out_.size()) - locators_[section].address;
    }

    bool headerIsSame() const { return source() && parts_.header == source()->header(); }

    void writeAuxHeader() {
        begin(kAuxHeaderSection);
        const size_t at = out_.size();
        const bool kept = source() && !source()->auxHeader().empty();
        if (kept)
            put(source()->auxHeader());
        else
            putNewAuxHeader();
        assert(out_.size() == at + kAuxHeaderSize && "the auxiliary header has a fixed size");
        end(kAuxHeaderSection);
        if (kept && headerIsSame())
            return;
        setTime(at + 63, parts_.header.TDCREATE);
        setTime(at + 71, parts_.header.TDUPDATE);
        setRL(at + 79,
              parts_.header.HANDSEED >= 0x7FFFFFFF ? 0xFFFFFFFF : static_cast<uint32_t>(parts_.header.HANDSEED));
    }

    /// The auxiliary header of a first save. Fields whose meaning isn't known have the values that files show.
    void putNewAuxHeader() {
        const uint16_t format = parts_.identity.formatNumber;
        const uint16_t maintenance = parts_.identity.formatMaintenance;
        for (const uint8_t byte : {0xFF, 0x77, 0x01})
            out_.push_back(byte);
        for (const uint16_t value : {format, maintenance})
            putRS(value);
        constexpr uint32_t kSaves = 1;
        putRL(kSaves);
        putRL(0xFFFFFFFF);
        putRS(kSaves);
        putRS(0);
        putRL(0);
        for (const uint16_t value : {format, maintenance, format, maintenance})
            putRS(value);
        for (const uint16_t value : {5, 0x893, 5, 0x893, 0, 1})
            putRS(value);
        out_.resize(out_.size() + 5 * 4 + 2 * 8 + 4 + 4);
        putRS(0);
        putRS(kSaves);
        out_.resize(out_.size() + 3 * 4);
        putRL(kSaves);
        out_.resize(out_.size() + 4 * 4);
    }

    void writePreview() {
        previewAddress_ = static_cast<uint32_t>(out_.size());
        const size_t count = std::min<size_t>(parts_.preview.size(), 255);
        const std::span<const PreviewRecord> records(parts_.preview.data(), count);
        put(kPreviewBegin);
        size_t total = 1 + count * kLocatorSize;
        size_t address = out_.size() + 4 + total;
        for (const PreviewRecord& record : records)
            total += record.data.size();
        putRL(static_cast<uint32_t>(total));
        out_.push_back(static_cast<uint8_t>(count));
        for (const PreviewRecord& record : records) {
            out_.push_back(record.type);
            putRL(static_cast<uint32_t>(address));
            putRL(static_cast<uint32_t>(record.data.size()));
            address += record.data.size();
        }
        for (const PreviewRecord& record : records)
            put(record.data);
        put(complementOf(kPreviewBegin));
    }

    void writeEnclosed(Section section, const Sentinel& sentinel, std::span<const uint8_t> data) {
        begin(section);
        put(sentinel);
        const size_t sizeAt = out_.size();
        putRL(static_cast<uint32_t>(data.size()));
        put(data);
        putRS(crc16(kCrcSeed, out_.data() + sizeAt, out_.size() - sizeAt));
        put(complementOf(sentinel));
        end(section);
    }

    void writeHeader() {
        if (headerIsSame()) {
            writeEnclosed(kHeaderSection, kHeaderBegin, source()->rawHeader());
            return;
        }
        BitWriter writer;
        writeHeaderVariables(writer, Version::R15, parts_.header);
        writeEnclosed(kHeaderSection, kHeaderBegin, writer.data());
    }

    void writeClassTable() {
        if (source() && parts_.classes == source()->classes()) {
            writeEnclosed(kClassesSection, kClassesBegin, source()->rawClasses());
        } else {
            BitWriter writer;
            writeClasses(writer, parts_.classes);
            writeEnclosed(kClassesSection, kClassesBegin, writer.data());
        }
        putRL(source() ? source()->wordBehindClasses() : kWordBehindClasses);
    }

    void writeObjects() {
        objects_.reserve(parts_.objects.size());
        for (const ObjectBytes& object : parts_.objects) {
            objects_.push_back(
                {object.handle, static_cast<uint32_t>(out_.size()), static_cast<uint32_t>(object.bytes.size())});
            put(object.bytes);
        }
    }

    void writeMap() {
        const auto byHandle = [](const ObjectRecord& a, const ObjectRecord& b) { return a.handle < b.handle; };
        if (!std::is_sorted(objects_.begin(), objects_.end(), byHandle))
            std::sort(objects_.begin(), objects_.end(), byHandle);
        begin(kMapSection);
        appendObjectMap(out_, objects_);
        end(kMapSection);
    }

    /// Only files that had it get it again: newer programs leave it out.
    void writeFreeSpace() {
        if (!source() || source()->objFreeSpace().empty())
            return;
        begin(kFreeSpaceSection);
        const size_t at = out_.size();
        put(source()->objFreeSpace());
        end(kFreeSpaceSection);
        if (objects_.size() != source()->objects().size())
            setRL(at + 4, static_cast<uint32_t>(objects_.size()));
        setTime(at + 8, parts_.header.TDUPDATE);
        const auto byOffset = [](const ObjectRecord& a, const ObjectRecord& b) { return a.offset < b.offset; };
        const auto first = std::min_element(objects_.begin(), objects_.end(), byOffset);
        setRL(at + 16, first == objects_.end() ? 0 : first->offset);
    }

    void writeSecondHeader() {
        const auto address = static_cast<uint32_t>(out_.size());
        BitWriter writer;
        writer.RL(0);
        writer.BL(address);
        putIdentity(writer);
        writer.BS(kSectionCount);
        for (unsigned i = 0; i < kSectionCount; ++i) {
            writer.RC(static_cast<uint8_t>(i));
            // The template is written behind this header, so its place isn't known here.
            const Locator& locator = i == kTemplateSection ? Locator{} : locators_[i];
            writer.BL(locator.address);
            writer.BL(locator.size);
        }
        putImportantHandles(writer);
        writer.alignByte();
        writer.patchRL(0, static_cast<uint32_t>(writer.data().size() + 2 + kSecondHeaderTailSize));
        put(kSecondHeaderBegin);
        put(writer.data());
        putRS(crc16(kCrcSeed, writer.data().data(), writer.data().size()));
        if (source() && !source()->secondHeaderTail().empty())
            put(source()->secondHeaderTail());
        else
            out_.resize(out_.size() + kSecondHeaderTailSize);
        put(complementOf(kSecondHeaderBegin));
    }

    void putIdentity(BitWriter& writer) const {
        const FileIdentity& identity = parts_.identity;
        writer.bytes(magicOf(Version::R15).data(), 6);
        for (int i = 0; i < 5; ++i)
            writer.RC(0);
        writer.RC(identity.maintenance);
        writer.RC(identity.marker);
        writer.BS(static_cast<uint16_t>(identity.formatNumber | identity.formatMaintenance << 8));
        writer.RS(identity.codePage);
    }

    void putImportantHandles(BitWriter& writer) const {
        const HeaderVariables& header = parts_.header;
        const uint64_t handles[] = {
            header.HANDSEED,
            header.BLOCK_CONTROL,
            header.LAYER_CONTROL,
            header.STYLE_CONTROL,
            header.LTYPE_CONTROL,
            header.VIEW_CONTROL,
            header.UCS_CONTROL,
            header.VPORT_CONTROL,
            header.APPID_CONTROL,
            header.DIMSTYLE_CONTROL,
            header.VX_CONTROL,
            header.DICTIONARY_NAMED_OBJECTS,
            header.DICTIONARY_MLINESTYLE,
            header.DICTIONARY_GROUP,
        };
        writer.BS(std::size(handles));
        for (size_t i = 0; i < std::size(handles); ++i) {
            const unsigned length = (static_cast<unsigned>(std::bit_width(handles[i])) + 7) / 8;
            writer.RC(static_cast<uint8_t>(length));
            writer.RC(static_cast<uint8_t>(i));
            for (unsigned shift = length * 8; shift > 0; shift -= 8)
                writer.RC(static_cast<uint8_t>(handles[i] >> (shift - 8)));
        }
    }

    void writeTemplate() {
        begin(kTemplateSection);
        const std::span<const uint8_t> text = source() ? source()->templateText() : std::span<const uint8_t>();
        putRS(static_cast<uint16_t>(text.size()));
        put(text);
        putRS(parts_.measurement);
        end(kTemplateSection);
    }

    void writeFileHeader() {
        const FileIdentity& identity = parts_.identity;
        const std::string_view magic = magicOf(Version::R15);
        std::copy(magic.begin(), magic.end(), out_.begin());
        out_[kMaintenanceAt] = identity.maintenance;
        out_[kMarkerAt] = identity.marker;
        setRL(kPreviewAddressAt, previewAddress_);
        out_[kFormatNumberAt] = identity.formatNumber;
        out_[kFormatMaintenanceAt] = identity.formatMaintenance;
        out_[kCodePageAt] = static_cast<uint8_t>(identity.codePage);
        out_[kCodePageAt + 1] = static_cast<uint8_t>(identity.codePage >> 8);
        setRL(kLocatorCountAt, kSectionCount);
        size_t at = kLocatorsAt;
        for (unsigned i = 0; i < kSectionCount; ++i, at += kLocatorSize) {
            out_[at] = static_cast<uint8_t>(i);
            setRL(at + 1, locators_[i].address);
            setRL(at + 5, locators_[i].size);
        }
        const uint16_t crc = crc16(kCrcSeed, out_.data(), at);
        out_[at] = static_cast<uint8_t>(crc);
        out_[at + 1] = static_cast<uint8_t>(crc >> 8);
        std::copy(kLocatorsEnd.begin(), kLocatorsEnd.end(), out_.begin() + static_cast<ptrdiff_t>(at + 2));
    }

    const FileParts& parts_;
    const FileImage* source_ = nullptr;
    std::vector<uint8_t> out_;
    std::vector<ObjectRecord> objects_;
    Locator locators_[kSectionCount];
    uint32_t previewAddress_ = 0;
};

/// The map can hold each handle only once, and none for 0.
bool eachHandleOnce(const std::vector<ObjectBytes>& objects) {
    std::vector<uint64_t> handles;
    handles.reserve(objects.size());
    for (const ObjectBytes& object : objects)
        handles.push_back(object.handle);
    if (!std::is_sorted(handles.begin(), handles.end()))
        std::sort(handles.begin(), handles.end());
    return (handles.empty() || handles.front() != 0) &&
           std::adjacent_find(handles.begin(), handles.end()) == handles.end();
}

} // namespace

FileParts partsOf(const FileImage& image) {
    FileParts parts;
    parts.identity = image.identity();
    parts.header = image.header();
    parts.classes = image.classes();
    parts.preview = image.preview();
    parts.measurement = image.measurement();
    parts.source = &image;
    std::vector<ObjectRecord> records = image.objects();
    const auto byOffset = [](const ObjectRecord& a, const ObjectRecord& b) { return a.offset < b.offset; };
    if (!std::is_sorted(records.begin(), records.end(), byOffset))
        std::sort(records.begin(), records.end(), byOffset);
    parts.objects.reserve(records.size());
    for (const ObjectRecord& record : records)
        parts.objects.push_back({record.handle, image.bytesOf(record)});
    return parts;
}

Result<std::vector<uint8_t>> writeFile(const FileParts& parts) {
    if (parts.identity.version != Version::R15)
        return Error{ErrorKind::CannotWrite,
                     "Drawings can't be written as " + std::string(nameOf(parts.identity.version)) +
                         ". Save in the 2000 format.",
                     0};
    if (!eachHandleOnce(parts.objects))
        return Error{ErrorKind::CannotWrite, "Two objects of the drawing have the same handle, or one has none.", 0};
    return FileWriter(parts).run();
}

} // namespace vndk::dwg
