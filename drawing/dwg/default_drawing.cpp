// The empty drawing: the objects without which no program accepts a file, at the handles that small drawings have.
#include "dwg/default_drawing.h"

#include "db/database.h"
#include "db/opaque.h"
#include "db/stub.h"
#include "dwg/bit_writer.h"
#include "dwg/class_table.h"
#include "dwg/dates.h"

#include <memory>
#include <random>

namespace vndk::dwg {

namespace {

constexpr uint16_t kMlineStyleType = 73;
constexpr uint16_t kViewportType = 65;

using Reference = AcDbOpaqueFields::Reference;

Reference reference(unsigned char code, AcDbObjectId id = {}) {
    Reference r;
    r.code = code;
    r.id = id;
    return r;
}

AcDbOpaqueFields opaqueFields(const char* typeName, uint16_t fixedType, const BitWriter& writer,
                              std::vector<Reference> references = {}) {
    AcDbOpaqueFields fields;
    fields.typeName = typeName;
    fields.fixedType = fixedType;
    fields.bits.assign(reinterpret_cast<const char*>(writer.data().data()), writer.data().size());
    fields.bitCount = static_cast<uint32_t>(writer.position());
    fields.references = std::move(references);
    return fields;
}

std::shared_ptr<const ClassRecord> fileClass(uint16_t number, const char* cppName, const char* dxfName) {
    ClassRecord record;
    record.number = number;
    record.appName = "ObjectDBX Classes";
    record.cppName = cppName;
    record.dxfName = dxfName;
    return std::make_shared<const ClassRecord>(record);
}

void p3(BitWriter& w, double x, double y, double z) {
    w.BD(x);
    w.BD(y);
    w.BD(z);
}

void worldAxes(BitWriter& w) {
    p3(w, 0, 0, 0);
    p3(w, 1, 0, 0);
    p3(w, 0, 1, 0);
    w.BD(0); // elevation
    w.BS(0); // no orthographic view
}

BitWriter viewportFields() {
    constexpr double kHeight = 9;
    constexpr double kAspect = 4.0 / 3;
    BitWriter w;
    w.BD(kHeight);
    w.BD(kHeight * kAspect);
    w.RD(6);
    w.RD(4.5);
    p3(w, 0, 0, 0);                              // target
    p3(w, 0, 0, 1);                              // direction
    for (const double v : {0.0, 50.0, 0.0, 0.0}) // twist, lens length, clipping planes
        w.BD(v);
    w.BITS4(0);
    w.RC(0); // render mode: wireframe
    for (const double v : {0.0, 0.0, 1.0, 1.0})
        w.RD(v); // corners on the screen
    w.B(false);
    w.BS(1000); // circle zoom
    w.B(true);
    w.BB(3); // coordinate system icon on, at the origin
    w.B(false);
    w.RD(0.5);
    w.RD(0.5); // grid
    w.B(false);
    w.B(false);
    w.BS(0);
    w.BD(0);
    for (const double v : {0.0, 0.0, 0.5, 0.5})
        w.RD(v); // snap base and spacing
    w.B(false);
    w.B(true);
    worldAxes(w);
    return w;
}

BitWriter layoutFields(const char* name, int tabOrder) {
    BitWriter w;
    w.TV("");
    w.TV("none_device");
    w.BS(688); // plot flags of a layout that was never plotted
    for (int i = 0; i < 6; ++i)
        w.BD(0); // margins and paper size
    w.TV("");
    w.BD(0);
    w.BD(0);
    w.BS(0);
    w.BS(0);
    w.BS(5); // plots the layout
    for (int i = 0; i < 4; ++i)
        w.BD(0);
    w.TV("");
    w.BD(1);
    w.BD(1);
    w.TV("");
    w.BS(0);
    w.BD(1);
    w.BD(0);
    w.BD(0);
    w.TV(name);
    w.BS(static_cast<uint16_t>(tabOrder));
    w.BS(1);
    p3(w, 0, 0, 0);
    for (const double v : {0.0, 0.0, 12.0, 9.0})
        w.RD(v); // limits
    worldAxes(w);
    p3(w, 0, 0, 0);
    p3(w, 0, 0, 0);
    return w;
}

BitWriter mlineStyleFields() {
    BitWriter w;
    w.TV("STANDARD");
    w.TV("");
    w.BS(0);
    w.BS(kAcDbColorByLayer);
    w.BD(kAcGePi / 2);
    w.BD(kAcGePi / 2);
    w.RC(2);
    for (const double offset : {0.5, -0.5}) {
        w.BD(offset);
        w.BS(kAcDbColorByLayer);
        w.BS(32767); // linetype ByLayer
    }
    return w;
}

/// "{8-4-4-4-12}" of random digits.
std::string newGuid() {
    std::random_device random;
    std::string guid = "{";
    for (const int length : {8, 4, 4, 4, 12}) {
        for (int i = 0; i < length; ++i)
            guid.push_back("0123456789ABCDEF"[random() % 16]);
        guid.push_back('-');
    }
    guid.back() = '}';
    return guid;
}

class Builder {
public:
    explicit Builder(AcDbDatabase& database) : database_(database) {}
    void build();

private:
    /// Makes an object resident under a handle, closed.
    template <class T>
    T* add(uint64_t handle, T* object, AcDbObjectId owner) {
        AcDbObjectId id;
        database_.reserveHandles(AcDbHandle(handle));
        database_.addAcDbObject(id, object, owner);
        object->close();
        return object;
    }
    template <class Table>
    Table* addTable(uint64_t handle) {
        return add(handle, new Table, {});
    }
    template <class Record>
    AcDbObjectId addRecord(uint64_t handle, AcDbSymbolTable* table, Record* record, const char* name) {
        AcDbSymbolTableRecord::FileFlags flags;
        record->setFromFile(name, false, flags);
        add(handle, record, table->objectId());
        table->addFromFile(record->objectId());
        return record->objectId();
    }
    AcDbDictionary* addDictionary(uint64_t handle, AcDbDictionary* parent, const char* name);
    void put(AcDbDictionary* dictionary, const char* name, const AcDbObject* object);
    void addTables();
    void addNamedObjects();
    void addLinetypes();
    void addSpace(uint64_t handle, const char* name, const char* layoutName, int tabOrder);
    void addRecords();
    void finishHeader();

    AcDbDatabase& database_;
    AcDbBlockTable* blocks_ = nullptr;
    AcDbLayerTable* layers_ = nullptr;
    AcDbTextStyleTable* styles_ = nullptr;
    AcDbLinetypeTable* linetypes_ = nullptr;
    AcDbViewportTable* viewports_ = nullptr;
    AcDbRegAppTable* applications_ = nullptr;
    AcDbDimStyleTable* dimStyles_ = nullptr;
    AcDbDictionary* layouts_ = nullptr;
    AcDbObjectId layerZero_, standardStyle_, normalPlotStyle_;
    HeaderVariables header_;
};

AcDbDictionary* Builder::addDictionary(uint64_t handle, AcDbDictionary* parent, const char* name) {
    auto* const dictionary = add(handle, new AcDbDictionary, parent ? parent->objectId() : AcDbObjectId());
    if (parent)
        put(parent, name, dictionary);
    return dictionary;
}

void Builder::put(AcDbDictionary* dictionary, const char* name, const AcDbObject* object) {
    AcDbDictionary::FileData data = dictionary->fileData();
    data.entries.push_back({name, object->objectId()});
    dictionary->setFileData(std::move(data));
    // Members of a dictionary name it as their one reactor.
    const AcDbObjectPointer<AcDbObject> member(object->objectId(), AcDb::kForWrite);
    member->addPersistentReactor(dictionary->objectId());
}

void Builder::addTables() {
    AcDbDatabase::Tables ids;
    ids.block = (blocks_ = addTable<AcDbBlockTable>(0x1))->objectId();
    ids.layer = (layers_ = addTable<AcDbLayerTable>(0x2))->objectId();
    ids.style = (styles_ = addTable<AcDbTextStyleTable>(0x3))->objectId();
    ids.linetype = (linetypes_ = addTable<AcDbLinetypeTable>(0x5))->objectId();
    ids.view = addTable<AcDbViewTable>(0x6)->objectId();
    ids.ucs = addTable<AcDbUCSTable>(0x7)->objectId();
    ids.viewport = (viewports_ = addTable<AcDbViewportTable>(0x8))->objectId();
    ids.regApp = (applications_ = addTable<AcDbRegAppTable>(0x9))->objectId();
    ids.dimStyle = (dimStyles_ = addTable<AcDbDimStyleTable>(0xA))->objectId();
    ids.vx = addTable<AcDbVXTable>(0xB)->objectId();
    database_.setTables(ids);
    header_.BLOCK_CONTROL = ids.block.handle().value();
    header_.LAYER_CONTROL = ids.layer.handle().value();
    header_.STYLE_CONTROL = ids.style.handle().value();
    header_.LTYPE_CONTROL = ids.linetype.handle().value();
    header_.VIEW_CONTROL = ids.view.handle().value();
    header_.UCS_CONTROL = ids.ucs.handle().value();
    header_.VPORT_CONTROL = ids.viewport.handle().value();
    header_.APPID_CONTROL = ids.regApp.handle().value();
    header_.DIMSTYLE_CONTROL = ids.dimStyle.handle().value();
    header_.VX_CONTROL = ids.vx.handle().value();
}

/// The dictionaries, and between them, where their handles lie, the first records.
void Builder::addNamedObjects() {
    AcDbDictionary* const root = addDictionary(0xC, nullptr, "");
    database_.setNamedObjectsDictionary(root->objectId());
    header_.DICTIONARY_GROUP = addDictionary(0xD, root, "ACAD_GROUP")->objectId().handle().value();
    AcDbDictionary* const plotStyles = addDictionary(0xE, root, "ACAD_PLOTSTYLENAME");
    auto* const normal = add(0xF, new AcDbOpaqueObject, plotStyles->objectId());
    AcDbOpaqueFields fields = opaqueFields("ACDBPLACEHOLDER", 0, BitWriter());
    fields.fileClass = fileClass(501, "AcDbPlaceHolder", "ACDBPLACEHOLDER");
    normal->setFields(std::move(fields));
    put(plotStyles, "Normal", normal);
    AcDbDictionary::FileData withDefault = plotStyles->fileData();
    withDefault.withDefault = true;
    withDefault.defaultId = normalPlotStyle_ = normal->objectId();
    plotStyles->setFileData(std::move(withDefault));
    header_.DICTIONARY_PLOTSTYLENAME = plotStyles->objectId().handle().value();

    auto* const layer = new AcDbLayerTableRecord;
    layerZero_ = addRecord(0x10, layers_, layer, "0");
    auto* const style = new AcDbTextStyleTableRecord;
    AcDbTextStyleTableRecord::Data styleData;
    styleData.fileName = "txt";
    style->setFileData(styleData);
    standardStyle_ = addRecord(0x11, styles_, style, "Standard");
    addRecord(0x12, applications_, new AcDbRegAppTableRecord, "ACAD");
    addLinetypes();
    AcDbLayerTableRecord::FileData layerData;
    layerData.linetype = database_.continuousLinetypeId();
    layerData.plotStyle = normalPlotStyle_;
    layer->setFileData(layerData);

    AcDbDictionary* const mlineStyles = addDictionary(0x17, root, "ACAD_MLINESTYLE");
    auto* const mlineStyle = add(0x18, new AcDbOpaqueObject, mlineStyles->objectId());
    mlineStyle->setFields(opaqueFields("MLINESTYLE", kMlineStyleType, mlineStyleFields()));
    put(mlineStyles, "Standard", mlineStyle);
    header_.CMLSTYLE = mlineStyle->objectId().handle().value();
    header_.DICTIONARY_MLINESTYLE = mlineStyles->objectId().handle().value();
    header_.DICTIONARY_PLOTSETTINGS = addDictionary(0x19, root, "ACAD_PLOTSETTINGS")->objectId().handle().value();
    layouts_ = addDictionary(0x1A, root, "ACAD_LAYOUT");
    header_.DICTIONARY_LAYOUT = layouts_->objectId().handle().value();
    header_.DICTIONARY_NAMED_OBJECTS = root->objectId().handle().value();
}

void Builder::addLinetypes() {
    const AcDbObjectId byBlock = addRecord(0x14, linetypes_, new AcDbLinetypeTableRecord, "ByBlock");
    const AcDbObjectId byLayer = addRecord(0x15, linetypes_, new AcDbLinetypeTableRecord, "ByLayer");
    auto* const solid = new AcDbLinetypeTableRecord;
    AcDbLinetypeTableRecord::Data data;
    data.description = "Solid line";
    solid->setFileData(data);
    const AcDbObjectId continuous = addRecord(0x16, linetypes_, solid, "Continuous");
    database_.setLinetypes(byLayer, byBlock, continuous);
    header_.LTYPE_BYBLOCK = byBlock.handle().value();
    header_.LTYPE_BYLAYER = header_.CELTYPE = byLayer.handle().value();
    header_.LTYPE_CONTINUOUS = continuous.handle().value();
}

/// A space, the two entities around its contents, which come with it, and its layout, at four handles from `handle`.
void Builder::addSpace(uint64_t handle, const char* name, const char* layoutName, int tabOrder) {
    auto* const space = new AcDbBlockTableRecord;
    const AcDbObjectId spaceId = addRecord(handle, blocks_, space, name);
    auto* const layout = add(handle + 3, new AcDbOpaqueObject, layouts_->objectId());
    AcDbOpaqueFields fields = opaqueFields("LAYOUT", 0, layoutFields(layoutName, tabOrder),
                                           {reference(4, spaceId), reference(4), reference(5), reference(5)});
    fields.fileClass = fileClass(502, "AcDbLayout", "LAYOUT");
    layout->setFields(std::move(fields));
    put(layouts_, layoutName, layout);
    AcDbBlockTableRecord::Data data = space->data();
    data.layout = layout->objectId();
    space->setFileData(data);
}

void Builder::addRecords() {
    addSpace(0x1B, ACDB_PAPER_SPACE, "Layout1", 1);
    addSpace(0x1F, ACDB_MODEL_SPACE, "Model", 0);
    const AcDbObjectId paper = database_.idOf(0x1B);
    const AcDbObjectId model = database_.idOf(0x1F);
    database_.setSpaces(model, paper);
    header_.PAPER_SPACE = paper.handle().value();
    header_.MODEL_SPACE = model.handle().value();

    auto* const dimStyle = new AcDbDimStyleTableRecord;
    AcDbDimStyleTableRecord::Data style;
    style.dimtxsty = standardStyle_;
    dimStyle->setFileData(std::move(style));
    header_.DIMSTYLE = addRecord(0x27, dimStyles_, dimStyle, "Standard").handle().value();
    auto* const viewport = new AcDbOpaqueTableRecord;
    viewport->setFields(opaqueFields("VPORT", kViewportType, viewportFields(), {reference(5), reference(5)}));
    addRecord(0x28, viewports_, viewport, "*Active");
}

void Builder::finishHeader() {
    header_.CLAYER = layerZero_.handle().value();
    header_.TEXTSTYLE = header_.DIMTXSTY = standardStyle_.handle().value();
    header_.TDCREATE = header_.TDUPDATE = currentTime();
    header_.FINGERPRINTGUID = newGuid();
    header_.VERSIONGUID = newGuid();
    database_.setHeader(header_, database_.handseed());
}

void Builder::build() {
    addTables();
    addNamedObjects();
    addRecords();
    finishHeader();
}

} // namespace

void buildDefaultDrawing(AcDbDatabase& database) { Builder(database).build(); }

} // namespace vndk::dwg
