#include "facts.h"

#include "db/block_reference.h"
#include "db/database.h"
#include "db/stub.h"
#include "db/text.h"
#include "dwg/codepage.h"
#include "objects/attribute.h"
#include "objects/block_reference.h"
#include "type_names.h"

#include <fstream>
#include <map>
#include <unordered_map>
#include <unordered_set>

namespace vndk::app {

namespace {

class FactsWriter {
public:
    FactsWriter(AcDbDatabase& database, JsonWriter& json) : database_(database), json_(json) {}

    void write(const FileStart& start);

private:
    void survey();
    void writeCounts();
    void writeLayers();
    void writeLinetypes();
    void writeStyles();
    void writeBlocks();
    void writeBlock(const AcDbBlockTableRecord& block);
    void writeDefinition(const AcDbAttributeDefinition& definition);
    void writeReferences();
    void writeReference(const AcDbBlockReference& reference);
    void writeAttributes(const AcDbBlockReference& reference);
    void writeAttribute(const AcDbAttribute& attribute);
    void writeIntelligent(const VNDKAttribute& attribute);
    void writeTexts();
    void writeText(const AcDbText& text);
    void writeMTexts();
    void writeWarnings();

    // Values of the open object or array.
    void member(const char* name, const std::string& text1252) { json_.key(name).text(dwg::utf8FromText(text1252)); }
    void member(const char* name, double number) { json_.key(name).number(number); }
    void flag(const char* name, bool value) { json_.key(name).boolean(value); }
    void identity(const AcDbObject& object);
    void point(const char* name, const AcGePoint3d& point) { triple(name, point.x, point.y, point.z); }
    void triple(const char* name, double x, double y, double z);

    /// Calls `use` with each object of the class, in the order of handles.
    template <class T, class F>
    void forEach(const std::vector<AcDbObjectId>& ids, F&& use) {
        for (const AcDbObjectId id : ids) {
            const AcDbObjectPointer<T> object(id);
            if (object)
                use(*object);
        }
    }
    /// The record's name; that of a block as it stands among `blocks`. Empty if there is none.
    const std::string& nameOf(AcDbObjectId record);

    AcDbDatabase& database_;
    JsonWriter& json_;
    std::map<std::string, int64_t> counts_;
    std::vector<AcDbObjectId> layers_, linetypes_, styles_, blocks_, references_, texts_, mtexts_;
    std::unordered_map<AcDbObjectId, std::string> names_;
    std::unordered_set<AcDbObjectId> tied_; // texts that were told with their Intelligent reference
};

std::string handleText(const AcDbObject& object) {
    char text[17];
    object.objectId().handle().getIntoAsciiBuffer(text);
    return text;
}

/// The name that the file holds: the numbers of anonymous blocks ("*D3", "*Paper_Space0") are given at reading.
std::string storedName(const AcDbSymbolTableRecord& block) {
    std::string name = block.name();
    if (name.starts_with('*'))
        while (name.back() >= '0' && name.back() <= '9')
            name.pop_back();
    return name;
}

void FactsWriter::survey() {
    std::unordered_map<std::string, int> uses;
    for (AcDbStub& stub : database_.stubs()) {
        const AcDbObjectId id(&stub);
        const AcDbObjectPointer<AcDbObject> object(id);
        if (!object)
            continue;
        ++counts_[typeNameOf(*object)];
        if (const auto* const record = AcDbSymbolTableRecord::cast(object.object())) {
            names_[id] = record->name();
            if (object->isA() == AcDbBlockTableRecord::desc()) {
                blocks_.push_back(id);
                ++uses[names_[id] = storedName(*record)];
            } else if (object->isA() == AcDbLayerTableRecord::desc()) {
                layers_.push_back(id);
            } else if (object->isA() == AcDbLinetypeTableRecord::desc()) {
                linetypes_.push_back(id);
            } else if (object->isA() == AcDbTextStyleTableRecord::desc()) {
                styles_.push_back(id);
            }
        } else if (AcDbBlockReference::cast(object.object())) {
            references_.push_back(id);
        } else if (AcDbMText::cast(object.object())) {
            mtexts_.push_back(id);
        } else if (AcDbText::cast(object.object()) && !AcDbAttribute::cast(object.object()) &&
                   !AcDbAttributeDefinition::cast(object.object())) {
            texts_.push_back(id);
        }
    }
    // A drawing has many blocks named "*Paper_Space" or "*D": the handle tells them apart.
    forEach<AcDbBlockTableRecord>(blocks_, [&](const AcDbBlockTableRecord& block) {
        std::string& name = names_[block.objectId()];
        if (uses[name] > 1)
            name += "#" + handleText(block);
    });
}

const std::string& FactsWriter::nameOf(AcDbObjectId record) {
    static const std::string none;
    const auto found = names_.find(record);
    return found == names_.end() ? none : found->second;
}

void FactsWriter::identity(const AcDbObject& object) {
    json_.key("handle").text(handleText(object));
    json_.key("class").text(object.isA()->name());
}

void FactsWriter::triple(const char* name, double x, double y, double z) {
    json_.key(name).beginArray();
    for (const double value : {x, y, z})
        json_.item().number(value);
    json_.end();
}

void FactsWriter::writeCounts() {
    json_.key("counts").beginObject();
    for (const auto& [name, count] : counts_)
        json_.key(dwg::utf8FromText(name)).number(count);
    json_.end();
}

void FactsWriter::writeLayers() {
    json_.key("layers").beginArray();
    forEach<AcDbLayerTableRecord>(layers_, [&](const AcDbLayerTableRecord& layer) {
        json_.item().beginObject();
        member("name", layer.name());
        json_.key("color").number(int64_t{layer.color()});
        member("linetype", nameOf(layer.linetypeObjectId()));
        flag("off", layer.isOff());
        flag("frozen", layer.isFrozen());
        flag("locked", layer.isLocked());
        json_.end();
    });
    json_.end();
}

void FactsWriter::writeLinetypes() {
    json_.key("linetypes").beginArray();
    for (const AcDbObjectId id : linetypes_)
        json_.item().text(dwg::utf8FromText(nameOf(id)));
    json_.end();
}

void FactsWriter::writeStyles() {
    json_.key("styles").beginArray();
    forEach<AcDbTextStyleTableRecord>(styles_, [&](const AcDbTextStyleTableRecord& style) {
        json_.item().beginObject();
        member("name", style.name());
        member("font", style.data().fileName);
        json_.end();
    });
    json_.end();
}

void FactsWriter::writeBlocks() {
    json_.key("blocks").beginArray();
    forEach<AcDbBlockTableRecord>(blocks_, [&](const AcDbBlockTableRecord& block) { writeBlock(block); });
    json_.end();
}

void FactsWriter::writeBlock(const AcDbBlockTableRecord& block) {
    json_.item().beginObject();
    member("name", nameOf(block.objectId()));
    json_.key("handle").text(handleText(block));
    point("base", block.origin());
    json_.key("attdefs").beginArray();
    forEach<AcDbAttributeDefinition>(block.entities(), [&](const AcDbAttributeDefinition& definition) {
        if (definition.ownerId() == block.objectId())
            writeDefinition(definition);
    });
    json_.end();
    json_.end();
}

void FactsWriter::writeDefinition(const AcDbAttributeDefinition& definition) {
    json_.item().beginObject();
    identity(definition);
    member("tag", definition.tagValue());
    member("prompt", definition.promptValue());
    member("default", definition.textValue());
    flag("constant", definition.isConstant());
    flag("invisible", definition.isInvisible());
    flag("verify", definition.isVerifiable());
    flag("preset", definition.isPreset());
    point("position", definition.position());
    member("height", definition.height());
    json_.end();
}

void FactsWriter::writeReferences() {
    json_.key("references").beginArray();
    forEach<AcDbBlockReference>(references_, [&](const AcDbBlockReference& reference) { writeReference(reference); });
    json_.end();
}

void FactsWriter::writeReference(const AcDbBlockReference& reference) {
    json_.item().beginObject();
    identity(reference);
    member("space", nameOf(reference.ownerId()));
    member("block", nameOf(reference.blockTableRecord()));
    point("position", reference.position());
    const AcGeScale3d scale = reference.scaleFactors();
    triple("scale", scale.sx, scale.sy, scale.sz);
    member("rotation", reference.rotation());
    const AcGeVector3d normal = reference.normal();
    triple("normal", normal.x, normal.y, normal.z);
    member("layer", nameOf(reference.layerId()));
    if (auto* const intelligent = VNDKBlockReference::cast(&reference)) {
        member("original_name", intelligent->originalBlockName());
        point("ins_base", intelligent->insBase());
    }
    writeAttributes(reference);
    json_.end();
}

void FactsWriter::writeAttributes(const AcDbBlockReference& reference) {
    json_.key("attributes").beginArray();
    forEach<AcDbAttribute>(reference.attributes(), [&](const AcDbAttribute& attribute) {
        if (attribute.ownerId() == reference.objectId())
            writeAttribute(attribute);
    });
    if (const auto* const intelligent = VNDKBlockReference::cast(&reference)) {
        for (int i = 0; i < intelligent->attributeCount(); ++i) {
            const AcDbObjectPointer<VNDKAttribute> attribute(intelligent->getAttribute(i));
            if (!attribute)
                continue;
            writeIntelligent(*attribute);
            tied_.insert(attribute->objectId());
        }
    }
    json_.end();
}

void FactsWriter::writeAttribute(const AcDbAttribute& attribute) {
    json_.item().beginObject();
    identity(attribute);
    member("tag", attribute.tagValue());
    member("text", attribute.textValue());
    json_.key("default").null();
    point("position", attribute.position());
    member("height", attribute.height());
    flag("constant", attribute.isConstant());
    flag("invisible", attribute.isInvisible());
    flag("verify", attribute.isVerifiable());
    flag("preset", attribute.isPreset());
    json_.end();
}

void FactsWriter::writeIntelligent(const VNDKAttribute& attribute) {
    json_.item().beginObject();
    identity(attribute);
    member("space", nameOf(attribute.ownerId()));
    member("layer", nameOf(attribute.layerId()));
    member("tag", attribute.tagValue());
    member("text", attribute.textValue());
    member("default", attribute.defaultText());
    point("position", attribute.position());
    member("height", attribute.height());
    flag("constant", attribute.isConstant());
    flag("invisible", attribute.isInvisible());
    flag("verify", attribute.isVerifiable());
    flag("preset", attribute.isPreset());
    json_.end();
}

void FactsWriter::writeTexts() {
    json_.key("texts").beginArray();
    forEach<AcDbText>(texts_, [&](const AcDbText& text) {
        if (!tied_.contains(text.objectId()))
            writeText(text);
    });
    json_.end();
}

void FactsWriter::writeText(const AcDbText& text) {
    json_.item().beginObject();
    identity(text);
    member("space", nameOf(text.ownerId()));
    member("layer", nameOf(text.layerId()));
    member("text", text.textValue());
    point("position", text.position());
    member("height", text.height());
    member("rotation", text.rotation());
    member("style", nameOf(text.textStyle()));
    json_.end();
}

void FactsWriter::writeMTexts() {
    json_.key("mtexts").beginArray();
    forEach<AcDbMText>(mtexts_, [&](const AcDbMText& text) {
        json_.item().beginObject();
        identity(text);
        member("space", nameOf(text.ownerId()));
        member("layer", nameOf(text.layerId()));
        member("text", text.contentsValue());
        point("position", text.location());
        member("height", text.textHeight());
        json_.end();
    });
    json_.end();
}

void FactsWriter::writeWarnings() {
    json_.key("warnings").beginArray();
    for (const std::string& warning : database_.warnings())
        json_.item().text(warning);
    json_.end();
}

void FactsWriter::write(const FileStart& start) {
    survey();
    json_.beginObject();
    json_.key("version").text(start.version);
    json_.key("codepage").text(start.codePage);
    writeCounts();
    writeLayers();
    writeLinetypes();
    writeStyles();
    writeBlocks();
    writeReferences();
    writeTexts();
    writeMTexts();
    writeWarnings();
    json_.end();
    json_.flush();
}

} // namespace

FileStart readFileStart(const std::string& path) {
    constexpr size_t kVersionLength = 6;
    constexpr size_t kCodePageAt = 19;
    unsigned char bytes[kCodePageAt + 2] = {};
    std::ifstream(path, std::ios::binary).read(reinterpret_cast<char*>(bytes), sizeof bytes);
    const auto codePage = static_cast<uint16_t>(bytes[kCodePageAt] | bytes[kCodePageAt + 1] << 8);
    FileStart start;
    start.version.assign(reinterpret_cast<const char*>(bytes), kVersionLength);
    start.codePage = dwg::codePageName(codePage);
    if (start.codePage.empty())
        start.codePage = "unknown (" + std::to_string(codePage) + ")";
    return start;
}

void writeFacts(AcDbDatabase& database, const FileStart& start, JsonWriter& json) {
    FactsWriter(database, json).write(start);
}

} // namespace vndk::app
