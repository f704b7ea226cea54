#pragma once
/// The frame of an object record: what can be read, and changed, of any object without knowing its type.
///
///     FrameContext context(image->version(), image->classes());
///     ObjectFrame frame;
///     CommonHandles links;
///     if (parseFrame(raw, context, frame) && readCommonHandles(raw, frame, links))
///         for (;;) { ... links.next ... }
///
/// A record is the bytes from the size field up to and including the checksum. All positions are bits counted from
/// the record's first byte, so that BitReader(raw.data(), position, end) reads there. Nothing here allocates.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "dwg/bit_reader.h"
#include "dwg/bit_writer.h"
#include "dwg/class_table.h"
#include "dwg/version.h"

namespace vndk::dwg {

/// What has to be known about a file to frame its objects.
class FrameContext {
public:
    FrameContext(Version version, std::span<const ClassRecord> classes);

    Version version() const { return version_; }
    /// Whether objects of that type number are entities. Types of no known class count as objects.
    bool isEntity(uint16_t type) const;

private:
    Version version_;
    std::vector<bool> entityClasses_; ///< By type number, from kFirstClassNumber.
};

/// Where an entity's owner is told.
enum class EntityMode : uint8_t { OwnerStored = 0, PaperSpace = 1, ModelSpace = 2, Unused = 3 };

/// The common entity data that stand before the fields of the type.
struct CommonEntity {
    EntityMode mode = EntityMode::OwnerStored;
    bool linetypeByLayer = true; ///< 13 and 14 only.
    bool nolinks = false;        ///< The neighbours are own handle - 1 and + 1 and aren't stored.
    uint16_t color = 256;
    double linetypeScale = 1.0;
    uint8_t linetypeFlags = 0;  ///< 15 only: 0 ByLayer, 1 ByBlock, 2 Continuous, 3 a handle is stored.
    uint8_t plotStyleFlags = 0; ///< 15 only: 0 ByLayer, 1 ByBlock, 3 a handle is stored.
    uint16_t invisible = 0;     ///< Bit 0: the entity isn't shown.
    uint8_t lineWeight = 29;    ///< 15 only: the format's code; 29 is ByLayer.
};

struct ObjectFrame {
    Version version = Version::R15;
    bool isEntity = false;
    uint16_t type = 0;
    uint64_t handle = 0;
    uint32_t reactorCount = 0;
    CommonEntity entity; ///< Meaningless for objects that aren't entities.

    size_t dataBit = 0;    ///< The type: where the bit size counts from.
    size_t bitSizeBit = 0; ///< The RL with the bit size.
    size_t eedBit = 0;     ///< The first group of extended data, or their end mark.
    size_t eedEndBit = 0;  ///< Behind the end mark.
    size_t graphicBit = 0; ///< The bytes of an entity's graphic; graphicSize is 0 when it has none.
    size_t graphicSize = 0;
    size_t commonBit = 0;  ///< The common entity data, or the number of reactors.
    size_t nolinksBit = 0; ///< Entities: the bit that says so.
    size_t fieldsBit = 0;  ///< The fields of the type.
    size_t handlesBit = 0; ///< The handle references: where the fields end.
    size_t endBit = 0;     ///< Behind the last byte of data: where the checksum begins.
};

/// Reads the frame of one record. False when the record contradicts itself; `frame` is then of no use.
/// A wrong checksum is not looked at here: FileImage has done so.
[[nodiscard]] bool parseFrame(std::span<const uint8_t> record, const FrameContext& context, ObjectFrame& frame);

/// The handles that every object has, as absolute values; 0 is none.
struct CommonHandles {
    uint64_t owner = 0; ///< 0 for entities of model and paper space: see EntityMode.
    uint64_t xdictionary = 0;
    uint64_t previous = 0; ///< Entities only, from here on. With nolinks the neighbours that are meant.
    uint64_t next = 0;
    uint64_t layer = 0;
    uint64_t linetype = 0;  ///< 0 unless a handle is stored.
    uint64_t plotStyle = 0; ///< 0 unless a handle is stored.

    size_t reactorsBit = 0; ///< The first reactor; there are frame.reactorCount of them.
    size_t linksBit = 0;    ///< Entities: where previous and next are stored, or would be.
    size_t linksEndBit = 0;
    size_t typeBit = 0; ///< The first handle of the type.
};

/// Reads the common handles. False when the record ends before them.
[[nodiscard]] bool readCommonHandles(std::span<const uint8_t> record, const ObjectFrame& frame, CommonHandles& handles);

/// What the chain of a block's entities is made of, as absolute handles.
struct Neighbours {
    EntityMode mode = EntityMode::OwnerStored;
    uint64_t owner = 0; ///< 0 for entities of model and paper space.
    uint64_t previous = 0;
    uint64_t next = 0;
};

/// The same of a record alone, reading no more of it than it has to: chains are followed before anything is decoded.
/// False when the record contradicts itself or isn't an entity's.
[[nodiscard]] bool readNeighbours(std::span<const uint8_t> record, const FrameContext& context, Neighbours& neighbours);

/// The record with other neighbours in its chain. Every bit of the data stays, except that nolinks becomes 0 where
/// needed; of the handles only previous and next are replaced or put in; size and checksum are made to fit.
/// When the neighbours are those that it has, the record comes back as it was.
/// Nothing when the record isn't a readable entity.
std::optional<std::vector<uint8_t>> patchLinks(std::span<const uint8_t> record, const FrameContext& context,
                                               uint64_t previous, uint64_t next);

/// Appends a whole record to `out`: size field, data, handle references, padding, checksum.
/// `data` holds the bits from the type to the last field, with room for the bit size at `bitSizeBit` (counted from the
/// type); `handles` holds the references. The bit size is filled in; `data` is used up.
void sealObject(BitWriter& data, size_t bitSizeBit, const BitWriter& handles, std::vector<uint8_t>& out);

} // namespace vndk::dwg
