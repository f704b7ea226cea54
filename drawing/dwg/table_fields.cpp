// Fields of the control objects, which list the records of the symbol tables, and of dictionaries.
#include "db/database.h"
#include "dwg/object_types.h"

namespace vndk::dwg {

namespace {

uint32_t readEntryCount(FieldReader& r) {
    const uint32_t count = r.bits.BL();
    return count <= r.handles.remaining() / 8 ? count : static_cast<uint32_t>(r.bits.fail());
}

std::vector<AcDbObjectId> readIds(FieldReader& r, uint32_t count) {
    std::vector<AcDbObjectId> ids(count);
    for (AcDbObjectId& id : ids)
        id = r.id();
    return ids;
}

/// Records that aren't erased, and the empty places of the file's list, without the table's special ones.
std::vector<AcDbObjectId> entriesOf(const AcDbSymbolTable& table, std::span<const AcDbObjectId> special) {
    std::vector<AcDbObjectId> entries;
    for (const AcDbObjectId id : table.records())
        if (!id.isErased() && std::find(special.begin(), special.end(), id) == special.end())
            entries.push_back(id);
    return entries;
}

void writeEntries(FieldWriter& w, const std::vector<AcDbObjectId>& entries) {
    w.bits.BL(static_cast<uint32_t>(entries.size()));
    for (const AcDbObjectId id : entries)
        w.id(2, id);
}

template <class Table>
AcDbObject* readTable(FieldReader& r) {
    auto* const table = new Table;
    for (const AcDbObjectId id : readIds(r, readEntryCount(r)))
        table->addFromFile(id);
    return table;
}

template <class Table>
void writeTable(FieldWriter& w, const AcDbObject& object) {
    writeEntries(w, entriesOf(static_cast<const Table&>(object), {}));
}

/// The two records that a table names apart from its entries.
struct SpecialRecords {
    AcDbObjectId ids[2];
};

SpecialRecords specialOf(const AcDbBlockTable& table) {
    const AcDbDatabase& database = *table.database();
    return {{database.modelSpaceId(), database.paperSpaceId()}};
}

SpecialRecords specialOf(const AcDbLinetypeTable& table) {
    const AcDbDatabase& database = *table.database();
    return {{database.byBlockLinetypeId(), database.byLayerLinetypeId()}};
}

template <class Table>
AcDbObject* readTableWithSpecials(FieldReader& r) {
    auto* const table = new Table;
    const std::vector<AcDbObjectId> entries = readIds(r, readEntryCount(r));
    for (const AcDbObjectId id : readIds(r, 2))
        table->addFromFile(id);
    for (const AcDbObjectId id : entries)
        table->addFromFile(id);
    return table;
}

template <class Table>
void writeTableWithSpecials(FieldWriter& w, const AcDbObject& object) {
    const auto& table = static_cast<const Table&>(object);
    const SpecialRecords special = specialOf(table);
    writeEntries(w, entriesOf(table, special.ids));
    for (const AcDbObjectId id : special.ids)
        w.id(3, id);
}

/// Release 15 names the dimension styles a second time.
AcDbObject* readDimStyles(FieldReader& r) {
    auto* const table = new AcDbDimStyleTable;
    const uint32_t count = readEntryCount(r);
    const unsigned again = r.bits.RC();
    for (const AcDbObjectId id : readIds(r, count))
        table->addFromFile(id);
    for (unsigned i = 0; i < again; ++i)
        r.handle();
    return table;
}

void writeDimStyles(FieldWriter& w, const AcDbObject& object) {
    constexpr size_t kMostAgain = 255;
    std::vector<AcDbObjectId> entries = entriesOf(static_cast<const AcDbDimStyleTable&>(object), {});
    writeEntries(w, entries);
    std::erase(entries, AcDbObjectId());
    entries.resize(std::min(entries.size(), kMostAgain));
    w.bits.RC(static_cast<uint8_t>(entries.size()));
    for (const AcDbObjectId id : entries)
        w.id(5, id);
}

template <class Table>
constexpr ObjectType tableType(uint16_t number, const char* dxfName) {
    return {number, dxfName, &Table::desc, &readTable<Table>, &writeTable<Table>, &assignBaseOf<Table>};
}

// Dictionaries

using DictionaryData = AcDbDictionary::FileData;

void readCloning(FieldReader& r, DictionaryData& d) { d.cloning = r.bits.BS(); }
void writeCloning(FieldWriter& w, const DictionaryData& d) { w.bits.BS(d.cloning); }
void readHardOwner(FieldReader& r, DictionaryData& d) { d.hardOwner = r.bits.RC(); }
void writeHardOwner(FieldWriter& w, const DictionaryData& d) { w.bits.RC(d.hardOwner); }

void readNumber(FieldReader& r, DictionaryData& d) { d.entries.resize(r.count(r.bits.BL(), 2)); }
void writeNumber(FieldWriter& w, const DictionaryData& d) { w.bits.BL(static_cast<uint32_t>(d.entries.size())); }

void readItems(FieldReader& r, DictionaryData& d) {
    for (AcDbDictionary::Entry& entry : d.entries) {
        entry.name = r.text();
        entry.id = r.id();
    }
}

void writeItems(FieldWriter& w, const DictionaryData& d) {
    for (const AcDbDictionary::Entry& entry : d.entries) {
        w.text(entry.name);
        w.id(2, entry.id);
    }
}

constexpr VersionMask kFrom14 = maskOf(Version::R14) | maskOf(Version::R15);

constexpr FieldRow kDictionaryRows[] = {
    customRow<DictionaryData, readNumber, writeNumber>("number"),
    customRow<DictionaryData, readCloning, writeCloning>("cloning", kOnly15),
    customRow<DictionaryData, readHardOwner, writeHardOwner>("hard owner", kFrom14),
    customRow<DictionaryData, readItems, writeItems>("items"),
};

constexpr FieldRow kWithDefaultRows[] = {
    customRow<DictionaryData, readNumber, writeNumber>("number"),
    customRow<DictionaryData, readCloning, writeCloning>("cloning"),
    customRow<DictionaryData, readHardOwner, writeHardOwner>("hard owner"),
    customRow<DictionaryData, readItems, writeItems>("items"),
    row<code::H<5>, &DictionaryData::defaultId>("default"),
};

template <const auto& Rows, bool WithDefault>
AcDbObject* readDictionary(FieldReader& r) {
    DictionaryData data;
    data.withDefault = WithDefault;
    readRows(Rows, r, &data);
    auto* const dictionary = new AcDbDictionary;
    dictionary->setFileData(std::move(data));
    return dictionary;
}

template <const auto& Rows>
void writeDictionary(FieldWriter& w, const AcDbObject& object) {
    DictionaryData data = static_cast<const AcDbDictionary&>(object).fileData();
    std::erase_if(data.entries, [](const AcDbDictionary::Entry& entry) {
        return entry.id.isErased() || (!entry.id.isNull() && writtenHandle(entry.id) == 0);
    });
    writeRows(Rows, w, &data);
}

constexpr ObjectType kTypes[] = {
    {42, "DICTIONARY", &AcDbDictionary::desc, &readDictionary<kDictionaryRows, false>,
     &writeDictionary<kDictionaryRows>, &assignBaseOf<AcDbDictionary>},
    {0, "ACDBDICTIONARYWDFLT", &AcDbDictionary::desc, &readDictionary<kWithDefaultRows, true>,
     &writeDictionary<kWithDefaultRows>, &assignBaseOf<AcDbDictionary>},
    {48, "BLOCK_CONTROL", &AcDbBlockTable::desc, &readTableWithSpecials<AcDbBlockTable>,
     &writeTableWithSpecials<AcDbBlockTable>, &assignBaseOf<AcDbBlockTable>},
    tableType<AcDbLayerTable>(50, "LAYER_CONTROL"),
    tableType<AcDbTextStyleTable>(52, "STYLE_CONTROL"),
    {56, "LTYPE_CONTROL", &AcDbLinetypeTable::desc, &readTableWithSpecials<AcDbLinetypeTable>,
     &writeTableWithSpecials<AcDbLinetypeTable>, &assignBaseOf<AcDbLinetypeTable>},
    tableType<AcDbViewTable>(60, "VIEW_CONTROL"),
    tableType<AcDbUCSTable>(62, "UCS_CONTROL"),
    tableType<AcDbViewportTable>(64, "VPORT_CONTROL"),
    tableType<AcDbRegAppTable>(66, "APPID_CONTROL"),
    {68, "DIMSTYLE_CONTROL", &AcDbDimStyleTable::desc, readDimStyles, writeDimStyles, &assignBaseOf<AcDbDimStyleTable>},
    tableType<AcDbVXTable>(70, "VX_CONTROL"),
};

} // namespace

std::span<const ObjectType> tableTypes() { return kTypes; }

} // namespace vndk::dwg
