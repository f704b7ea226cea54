#pragma once
/// Objects of the database from their records in a file, and records from objects.
///
/// Each database that reads or writes a file has a codec of its own. What the codec can't decode (a type that isn't
/// modelled, fields that don't fill their record exactly, impossible values) becomes an opaque object, which is
/// written as it was read.

#include <span>
#include <vector>

#include "dwg/class_table.h"
#include "dwg/fields.h"
#include "dwg/object_frame.h"
#include "dwg/object_types.h"

struct AcDbStandInClass;
struct AcDbStub;

namespace vndk::dwg {

/// An entity's neighbours in its chain; 0 is none.
struct ChainLinks {
    uint64_t previous = 0;
    uint64_t next = 0;
    bool nolinks = false; ///< They are the neighbours by number and aren't stored.
};

/// The links as a writer stores them: implied when that is possible.
ChainLinks linksBetween(uint64_t own, uint64_t previous, uint64_t next);

class ObjectCodec {
public:
    ObjectCodec(AcDbDatabase& database, Version version, const TextForm& form, std::vector<ClassRecord> classes);

    const FrameContext& context() const { return context_; }
    const TextForm& form() const { return form_; }
    void setForm(const TextForm& form) { form_ = form; }
    /// Those of the file, and behind them those that encoded objects needed.
    const std::vector<ClassRecord>& classes() const { return classes_; }

    /// A new object, owned by the caller; never null.
    AcDbObject* decode(AcDbStub& stub);
    /// The neighbours of an entity, if it was the last one that was decoded: its record needn't be read again for them.
    bool justDecoded(const AcDbStub& stub, Neighbours& neighbours) const;
    /// Whether decode could give an object of exactly that class. Notes the type's class in the slot.
    bool canBe(AcDbStub& stub, const AcRxClass* cls) const;
    /// Appends the object's record to `out`. False if it has none but its old bytes: its frame couldn't be read.
    bool encode(const AcDbObject& object, const ChainLinks& links, std::vector<uint8_t>& out);

private:
    struct Record;
    AcDbObject* decodeFields(AcDbStub& stub, const Record& record);
    AcDbObject* decodeOpaque(AcDbStub& stub, const Record& record);
    void setCommon(AcDbObject& object, const Record& record);
    void setEntityCommon(AcDbEntity& entity, const Record& record);
    AcDbObject* toStandInClass(AcDbObject* ordinary);
    const AcDbStandInClass* standInOf(const AcDbXData& data, AcDbObjectId& application) const;
    void warn(const AcDbStub& stub, const char* what);
    AcRxClass* classOfType(uint16_t number) const;
    bool hasExtendedData(const AcDbStub& stub) const;
    const ClassRecord* classOf(uint16_t number) const;
    const ObjectType* typeOf(uint16_t number) const;

    uint16_t numberOf(const AcDbObject& object, const ObjectType* type, const AcDbOpaqueFields* fields);
    uint16_t classNumber(const AcDbObject& object);
    uint16_t classNumber(std::string_view dxfName, const ClassRecord& model);
    void writeExtended(const AcDbObject& object);
    uint64_t writtenLayer(const AcDbEntity& entity) const;
    void writeEntityCommon(const AcDbEntity& entity, const ChainLinks& links);
    void writeObjectCommon(const AcDbObject& object);
    void writeReactors(const AcDbObject& object);

    AcDbDatabase& database_;
    TextForm form_;
    std::vector<ClassRecord> classes_;
    FrameContext context_;
    const AcDbStub* lastEntity_ = nullptr;
    Neighbours lastNeighbours_;
    BitWriter data_;
    BitWriter handles_;
};

} // namespace vndk::dwg
