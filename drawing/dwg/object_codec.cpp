#include "dwg/object_codec.h"

#include "db/line_weight.h"
#include "db/opaque.h"
#include "db/stand_in.h"
#include "db/stub.h"
#include "dwg/extended_data.h"
#include "dwg/opaque_codec.h"

#include <algorithm>

namespace vndk::dwg {

namespace {

constexpr uint16_t kApplicationType = 67;

/// Codes of linetype and plot style flags; the plot style has no use for 2.
enum CommonFlag : uint8_t { kByLayer = 0, kByBlock = 1, kContinuous = 2, kByHandle = 3 };

std::string hexText(AcDbHandle handle) {
    char text[17];
    handle.getIntoAsciiBuffer(text);
    return text;
}

const AcDbOpaqueFields* opaqueFieldsOf(const AcDbObject& object) {
    if (const auto* const entity = AcDbOpaqueEntity::cast(&object))
        return &entity->fields();
    const auto* const plain = AcDbOpaqueObject::cast(&object);
    return plain ? &plain->fields() : nullptr;
}

} // namespace

/// A record whose frame could be read.
struct ObjectCodec::Record {
    std::span<const uint8_t> bytes;
    ObjectFrame frame;
    CommonHandles handles;

    FieldReader fields(AcDbDatabase& database, const TextForm& form) const {
        return {BitReader(bytes.data(), frame.fieldsBit, frame.handlesBit),
                BitReader(bytes.data(), handles.typeBit, frame.endBit),
                frame.handle,
                database,
                form,
                frame.version};
    }
};

ChainLinks linksBetween(uint64_t own, uint64_t previous, uint64_t next) {
    return {previous, next, previous == own - 1 && next == own + 1 && previous != 0};
}

ObjectCodec::ObjectCodec(AcDbDatabase& database, Version version, const TextForm& form,
                         std::vector<ClassRecord> classes)
    : database_(database), form_(form), classes_(std::move(classes)), context_(version, classes_) {}

void ObjectCodec::warn(const AcDbStub& stub, const char* what) {
    database_.addWarning("Object " + hexText(stub.handle) + " " + what + "; it is kept as it is.");
}

const ClassRecord* ObjectCodec::classOf(uint16_t number) const {
    const auto it = std::find_if(classes_.begin(), classes_.end(),
                                 [number](const ClassRecord& record) { return record.number == number; });
    return it == classes_.end() ? nullptr : &*it;
}

const ObjectType* ObjectCodec::typeOf(uint16_t number) const {
    if (number < kFirstClassNumber)
        return findType(number);
    const ClassRecord* const record = classOf(number);
    return record ? findTypeByName(record->dxfName) : nullptr;
}

// Decoding

AcDbObject* ObjectCodec::decode(AcDbStub& stub) {
    Record record;
    record.bytes = {stub.bytes, stub.byteCount};
    if (!parseFrame(record.bytes, context_, record.frame) || record.frame.handle != stub.handle.value() ||
        !readCommonHandles(record.bytes, record.frame, record.handles)) {
        warn(stub, "is damaged");
        stub.set(kStubDecodeFailed);
        return new AcDbOpaqueObject;
    }
    AcDbObject* object = decodeFields(stub, record);
    if (!object)
        object = decodeOpaque(stub, record);
    setCommon(*object, record);
    object = toStandInClass(object); // which may decode others
    lastEntity_ = record.frame.isEntity ? &stub : nullptr;
    lastNeighbours_ = {record.frame.entity.mode, record.handles.owner, record.handles.previous, record.handles.next};
    return object;
}

bool ObjectCodec::justDecoded(const AcDbStub& stub, Neighbours& neighbours) const {
    if (&stub != lastEntity_)
        return false;
    neighbours = lastNeighbours_;
    return true;
}

bool ObjectCodec::canBe(AcDbStub& stub, const AcRxClass* cls) const {
    if (!stub.cls)
        stub.cls = classOfType(peekType(stub));
    // What is damaged comes out as an opaque object, whatever its type.
    if (stub.cls == cls || cls == AcDbOpaqueEntity::desc() || cls == AcDbOpaqueObject::desc())
        return true;
    const AcDbStandInClass* const standIn = acdbStandInOf(cls);
    return standIn && stub.cls == standIn->ordinary && hasExtendedData(stub);
}

AcRxClass* ObjectCodec::classOfType(uint16_t number) const {
    if (const ObjectType* const type = typeOf(number))
        return type->desc();
    return context_.isEntity(number) ? AcDbOpaqueEntity::desc() : AcDbOpaqueObject::desc();
}

bool ObjectCodec::hasExtendedData(const AcDbStub& stub) const {
    ObjectFrame frame;
    return parseFrame({stub.bytes, stub.byteCount}, context_, frame) &&
           BitReader(stub.bytes, frame.eedBit, frame.eedEndBit).BS() != 0;
}

AcDbObject* ObjectCodec::decodeFields(AcDbStub& stub, const Record& record) {
    const ObjectType* const type = typeOf(record.frame.type);
    if (!type || type->desc()->isDerivedFrom(AcDbEntity::desc()) != record.frame.isEntity)
        return nullptr;
    FieldReader reader = record.fields(database_, form_);
    std::unique_ptr<AcDbObject> object(type->read(reader));
    const bool exact = !reader.bits.failed() && reader.bits.remaining() == 0 && !reader.handles.failed() &&
                       reader.handles.remaining() < 8;
    if (exact)
        return object.release();
    warn(stub, "has fields that aren't those of its type");
    stub.set(kStubDecodeFailed);
    return nullptr;
}

AcDbObject* ObjectCodec::decodeOpaque(AcDbStub& stub, const Record& record) {
    AcDbOpaqueFields fields;
    const uint16_t number = record.frame.type;
    if (number < kFirstClassNumber) {
        fields.fixedType = number;
        fields.typeName = nameOfFixedType(number);
    } else if (const ClassRecord* const found = classOf(number)) {
        fields.fileClass = std::make_shared<const ClassRecord>(*found);
        fields.typeName = found->dxfName;
    } else {
        warn(stub, "is of a class that the drawing doesn't name");
        stub.set(kStubDecodeFailed);
    }
    FieldReader reader = record.fields(database_, form_);
    readOpaqueFields(reader, fields);
    if (record.frame.isEntity) {
        auto* const entity = new AcDbOpaqueEntity;
        entity->setFields(std::move(fields));
        return entity;
    }
    auto* const object = new AcDbOpaqueObject;
    object->setFields(std::move(fields));
    return object;
}

void ObjectCodec::setCommon(AcDbObject& object, const Record& record) {
    const ObjectFrame& frame = record.frame;
    object.setOwnerRaw(database_.idOf(record.handles.owner));
    BitReader eed(record.bytes.data(), frame.eedBit, frame.eedEndBit);
    if (frame.eedEndBit - frame.eedBit > 2) // a lone end mark takes two bits
        readExtendedData(eed, frame.handle, database_, *object.packedXDataForWrite());
    BitReader reactors(record.bytes.data(), record.handles.reactorsBit, frame.endBit);
    for (uint32_t i = 0; i < frame.reactorCount; ++i)
        if (const AcDbObjectId id = database_.idOf(reactors.H().absolute(frame.handle)); !id.isNull())
            object.addPersistentReactor(id);
    if (const AcDbObjectId dictionary = database_.idOf(record.handles.xdictionary); !dictionary.isNull())
        object.setExtensionDictionary(dictionary);
    if (auto* const entity = AcDbEntity::cast(&object))
        setEntityCommon(*entity, record);
}

void ObjectCodec::setEntityCommon(AcDbEntity& entity, const Record& record) {
    const CommonEntity& common = record.frame.entity;
    if (common.mode == EntityMode::ModelSpace)
        entity.setOwnerRaw(database_.modelSpaceId());
    else if (common.mode == EntityMode::PaperSpace)
        entity.setOwnerRaw(database_.paperSpaceId());
    AcDbEntity::CommonData data;
    data.layer = database_.idOf(record.handles.layer);
    const AcDbObjectId linetypes[] = {database_.byLayerLinetypeId(), database_.byBlockLinetypeId(),
                                      database_.continuousLinetypeId(), database_.idOf(record.handles.linetype)};
    data.linetype = linetypes[common.linetypeByLayer ? common.linetypeFlags : unsigned{kByHandle}];
    data.linetypeScale = std::isfinite(common.linetypeScale) ? common.linetypeScale : 1;
    data.color = static_cast<short>(common.color);
    data.lineWeight = acdbLineWeightOfCode(common.lineWeight);
    data.visibility = common.invisible & 1 ? AcDb::kInvisible : AcDb::kVisible;
    data.plotStyleType = common.plotStyleFlags;
    data.plotStyle = database_.idOf(record.handles.plotStyle);
    entity.setCommonData(data);
    if (record.frame.graphicSize == 0)
        return;
    std::string graphic(record.frame.graphicSize, '\0');
    BitReader reader(record.bytes.data(), record.frame.graphicBit, record.frame.endBit);
    reader.bytes(graphic.data(), graphic.size());
    entity.setProxyGraphics(std::move(graphic));
}

/// The class whose stand-in the object is, told by the application's name and the first text under it.
const AcDbStandInClass* ObjectCodec::standInOf(const AcDbXData& data, AcDbObjectId& application) const {
    for (const AcDbXDataGroup& group : data.groups) {
        AcDbStub* const stub = group.application.stub();
        if (!stub || (!stub->object && peekType(*stub) != kApplicationType))
            continue;
        const auto* const record = AcDbRegAppTableRecord::cast(database_.objectOf(*stub));
        AcDbXDataReader reader(group.items);
        AcDbXDataItem item;
        if (!record || !reader.next(item) || item.code != 0)
            continue;
        application = group.application;
        if (const AcDbStandInClass* const found = acdbFindStandIn(record->name(), item.text))
            return found;
    }
    return nullptr;
}

AcDbObject* ObjectCodec::toStandInClass(AcDbObject* ordinary) {
    const AcDbXData* const data = ordinary->packedXData();
    AcDbObjectId application;
    const AcDbStandInClass* const standIn = data ? standInOf(*data, application) : nullptr;
    if (!standIn || standIn->ordinary != ordinary->isA())
        return ordinary;
    const ObjectType* const type = findTypeOf(standIn->ordinary, nullptr);
    std::unique_ptr<AcRxObject> made(standIn->cls->create());
    auto* const object = dynamic_cast<AcDbObject*>(made.get());
    auto* const filer = dynamic_cast<AcDbStandIn*>(made.get());
    if (!type || !object || !filer)
        return ordinary;
    type->assignBase(*object, *ordinary);
    object->setOwnerRaw(ordinary->ownerId());
    const std::string items = itemsOf(*data, application);
    AcDbXDataReader reader(items);
    AcDbXDataItem className;
    if (!reader.next(className) || !filer->readStandIn(reader, database_))
        return ordinary;
    std::erase_if(object->packedXDataForWrite()->groups,
                  [&](const AcDbXDataGroup& group) { return group.application == application; });
    delete ordinary;
    static_cast<void>(made.release()); // it is `object`
    return object;
}

// Encoding

bool ObjectCodec::encode(const AcDbObject& object, const ChainLinks& links, std::vector<uint8_t>& out) {
    const AcDbStandInClass* const standIn = acdbStandInOf(object.isA());
    const AcDbOpaqueFields* const fields = opaqueFieldsOf(object);
    const ObjectType* const type =
        fields ? nullptr : findTypeOf(standIn ? standIn->ordinary : object.isA(), standIn ? nullptr : object.dxfName());
    const uint16_t number = numberOf(object, type, fields);
    if (number == 0)
        return false;
    data_.clear();
    handles_.clear();
    data_.BS(number);
    const size_t bitSizeBit = data_.position();
    data_.RL(0);
    data_.H(0, object.objectId().handle().value());
    writeExtended(object);
    if (const auto* const entity = AcDbEntity::cast(&object))
        writeEntityCommon(*entity, links);
    else
        writeObjectCommon(object);
    FieldWriter writer{data_, handles_, form_, Version::R15};
    if (type)
        type->write(writer, object);
    else
        writeOpaqueFields(writer, *fields);
    sealObject(data_, bitSizeBit, handles_, out);
    return true;
}

uint16_t ObjectCodec::numberOf(const AcDbObject& object, const ObjectType* type, const AcDbOpaqueFields* fields) {
    if (type)
        return type->number != 0 ? type->number : classNumber(object);
    if (!fields)
        return 0;
    if (fields->fixedType != 0)
        return fields->fixedType;
    return fields->fileClass ? classNumber(fields->typeName, *fields->fileClass) : uint16_t{0};
}

/// Of a class that the file may not have yet.
uint16_t ObjectCodec::classNumber(const AcDbObject& object) {
    constexpr uint16_t kAllAllowed = 4095;
    ClassRecord model;
    model.appName = "ObjectDBX Classes";
    model.cppName = "AcDbDictionaryWithDefault"; // the only class that isn't one of ours
    if (object.isKindOf(AcDbEntity::desc())) {
        model.appName = object.isA()->appName();
        model.cppName = object.isA()->name();
        model.proxyFlags = kAllAllowed;
        model.itemClassId = kEntityClassId;
    }
    model.dxfName = object.dxfName();
    return classNumber(model.dxfName, model);
}

uint16_t ObjectCodec::classNumber(std::string_view dxfName, const ClassRecord& model) {
    uint16_t highest = kFirstClassNumber - 1;
    for (const ClassRecord& record : classes_) {
        if (record.dxfName == dxfName)
            return record.number;
        highest = std::max(highest, record.number);
    }
    ClassRecord added = model;
    added.number = static_cast<uint16_t>(highest + 1);
    classes_.push_back(added);
    return added.number;
}

void ObjectCodec::writeExtended(const AcDbObject& object) {
    static const AcDbXData none;
    const AcDbXData* const own = object.packedXData();
    const AcDbStandInClass* const standIn = acdbStandInOf(object.isA());
    if (!standIn) {
        writeExtendedData(data_, own ? *own : none);
        return;
    }
    AcDbXData all = own ? *own : none;
    AcDbXDataGroup& group = all.groups.emplace_back();
    group.application = database_.registerApplication(standIn->applicationName);
    AcDbXDataWriter writer(group.items);
    writer.text(standIn->cls->name());
    if (const auto* const filer = dynamic_cast<const AcDbStandIn*>(&object))
        filer->writeStandIn(writer);
    writeExtendedData(data_, all);
}

void ObjectCodec::writeReactors(const AcDbObject& object) {
    for (const AcDbObjectId id : object.persistentReactors())
        if (const uint64_t handle = writtenHandle(id))
            handles_.H(4, handle);
    handles_.H(3, writtenHandle(object.extensionDictionary()));
}

namespace {

uint32_t liveReactorCount(const AcDbObject& object) {
    const auto& reactors = object.persistentReactors();
    return static_cast<uint32_t>(
        std::count_if(reactors.begin(), reactors.end(), [](AcDbObjectId id) { return writtenHandle(id) != 0; }));
}

} // namespace

void ObjectCodec::writeObjectCommon(const AcDbObject& object) {
    data_.BL(liveReactorCount(object));
    handles_.H(4, writtenHandle(object.ownerId()));
    writeReactors(object);
}

/// An entity can't be without a layer: where its own isn't written it is on layer "0".
uint64_t ObjectCodec::writtenLayer(const AcDbEntity& entity) const {
    const uint64_t handle = writtenHandle(entity.layerId());
    if (handle != 0 || entity.layerId().isNull())
        return handle;
    AcDbObjectId zero;
    const AcDbObjectPointer<AcDbLayerTable> layers(database_.layerTableId());
    if (layers)
        layers->getAt("0", zero);
    return writtenHandle(zero);
}

void ObjectCodec::writeEntityCommon(const AcDbEntity& entity, const ChainLinks& links) {
    const AcDbObjectId owner = entity.ownerId();
    const bool inModel = owner == database_.modelSpaceId(), inPaper = owner == database_.paperSpaceId();
    const EntityMode mode = inModel   ? EntityMode::ModelSpace
                            : inPaper ? EntityMode::PaperSpace
                                      : EntityMode::OwnerStored;
    const AcDbObjectId linetype = entity.linetypeId();
    const uint8_t linetypeFlags = linetype.isNull() || linetype == database_.byLayerLinetypeId() ? kByLayer
                                  : linetype == database_.byBlockLinetypeId()                    ? kByBlock
                                  : linetype == database_.continuousLinetypeId()                 ? kContinuous
                                                                                                 : kByHandle;
    const std::string& graphic = entity.proxyGraphics();
    data_.B(!graphic.empty());
    if (!graphic.empty()) {
        data_.RL(static_cast<uint32_t>(graphic.size()));
        data_.bytes(graphic.data(), graphic.size());
    }
    data_.BB(static_cast<unsigned>(mode));
    data_.BL(liveReactorCount(entity));
    data_.B(links.nolinks);
    data_.BS(static_cast<uint16_t>(entity.colorIndex()));
    data_.BD(entity.linetypeScale());
    data_.BB(linetypeFlags);
    data_.BB(entity.plotStyleNameType());
    data_.BS(entity.visibility() == AcDb::kInvisible ? 1 : 0);
    data_.RC(static_cast<uint8_t>(acdbLineWeightCode(entity.lineWeight())));
    if (mode == EntityMode::OwnerStored)
        handles_.H(4, writtenHandle(owner));
    writeReactors(entity);
    if (!links.nolinks) {
        handles_.H(4, links.previous);
        handles_.H(4, links.next);
    }
    handles_.H(5, writtenLayer(entity));
    if (linetypeFlags == kByHandle)
        handles_.H(5, writtenHandle(linetype));
    if (entity.plotStyleNameType() == kByHandle)
        handles_.H(5, writtenHandle(entity.plotStyleNameId()));
}

void FieldWriter::text(const std::string& value) {
    // The length field holds 16 bits; a text that grows beyond them by notations of foreign characters is cut.
    constexpr size_t kLongest = 0xFFFE;
    std::string converted;
    const std::string* stored = &value;
    if (form.codePage != kCodePage1252)
        stored = &(converted = textToDrawing(value, form.codePage));
    if (!form.countsNul || stored->empty()) {
        bits.TV(std::string_view(*stored).substr(0, kLongest));
        return;
    }
    std::string ended = stored->substr(0, kLongest);
    ended.push_back('\0');
    bits.TV(ended);
}

} // namespace vndk::dwg
