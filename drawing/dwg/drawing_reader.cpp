#include "dwg/drawing_reader.h"

#include "dwg/drawing_source.h"

namespace vndk::dwg {

namespace {

/// What a drawing can't be without: where the header names it, and the object type that must stand there.
struct Essential {
    uint64_t HeaderVariables::*handle;
    uint16_t type;
    const char* name;
};

constexpr Essential kEssentials[] = {
    {&HeaderVariables::BLOCK_CONTROL, 48, "table of blocks"},
    {&HeaderVariables::LAYER_CONTROL, 50, "table of layers"},
    {&HeaderVariables::STYLE_CONTROL, 52, "table of text styles"},
    {&HeaderVariables::LTYPE_CONTROL, 56, "table of linetypes"},
    {&HeaderVariables::APPID_CONTROL, 66, "table of applications"},
    {&HeaderVariables::DICTIONARY_NAMED_OBJECTS, 42, "dictionary of named objects"},
    {&HeaderVariables::MODEL_SPACE, 49, "model space"},
    {&HeaderVariables::PAPER_SPACE, 49, "paper space"},
};

Result<void> checkEssentials(const FileImage& image, const std::string& name) {
    const FrameContext context(image.version(), image.classes());
    for (const Essential& essential : kEssentials) {
        const ObjectRecord* const record = image.find(image.header().*essential.handle);
        ObjectFrame frame;
        if (record && parseFrame(image.bytesOf(*record), context, frame) && frame.type == essential.type)
            continue;
        return Error{ErrorKind::Damaged,
                     name + " is damaged: its " + essential.name +
                         " can't be found. Open its .bak copy, or have the program that saved it repair it.",
                     record ? record->offset : 0};
    }
    return {};
}

void setTables(AcDbDatabase& database, const HeaderVariables& header) {
    AcDbDatabase::Tables tables;
    tables.block = database.idOf(header.BLOCK_CONTROL);
    tables.layer = database.idOf(header.LAYER_CONTROL);
    tables.style = database.idOf(header.STYLE_CONTROL);
    tables.linetype = database.idOf(header.LTYPE_CONTROL);
    tables.view = database.idOf(header.VIEW_CONTROL);
    tables.ucs = database.idOf(header.UCS_CONTROL);
    tables.viewport = database.idOf(header.VPORT_CONTROL);
    tables.regApp = database.idOf(header.APPID_CONTROL);
    tables.dimStyle = database.idOf(header.DIMSTYLE_CONTROL);
    tables.vx = database.idOf(header.VX_CONTROL);
    database.setTables(tables);
    database.setNamedObjectsDictionary(database.idOf(header.DICTIONARY_NAMED_OBJECTS));
    database.setSpaces(database.idOf(header.MODEL_SPACE), database.idOf(header.PAPER_SPACE));
    database.setLinetypes(database.idOf(header.LTYPE_BYLAYER), database.idOf(header.LTYPE_BYBLOCK),
                          database.idOf(header.LTYPE_CONTINUOUS));
}

/// Opens the tables, so that a damaged one is told now and not when something is looked up.
template <class T>
bool isReadable(AcDbObjectId id) {
    return static_cast<bool>(AcDbObjectPointer<T>(id));
}

Result<void> checkTables(const AcDbDatabase& database, const std::string& name) {
    const bool good = isReadable<AcDbBlockTable>(database.blockTableId()) &&
                      isReadable<AcDbLayerTable>(database.layerTableId()) &&
                      isReadable<AcDbTextStyleTable>(database.textStyleTableId()) &&
                      isReadable<AcDbLinetypeTable>(database.linetypeTableId()) &&
                      isReadable<AcDbRegAppTable>(database.regAppTableId()) &&
                      isReadable<AcDbDictionary>(database.namedObjectsDictionaryId()) &&
                      isReadable<AcDbBlockTableRecord>(database.modelSpaceId()) &&
                      isReadable<AcDbBlockTableRecord>(database.paperSpaceId());
    if (good)
        return {};
    return Error{ErrorKind::Damaged,
                 name + " is damaged: one of its tables can't be read. Open its .bak copy, or have the program that "
                        "saved it repair it.",
                 0};
}

Result<void> fill(AcDbDatabase& database, std::shared_ptr<FileImage> image, const std::string& name) {
    assert(database.stubs().empty() && "a drawing is read into an empty database");
    if (Result<void> checked = checkEssentials(*image, name); !checked)
        return checked;
    const FileImage& file = *image;
    database.setSource(std::make_shared<DrawingSource>(database, std::move(image)));
    for (const ObjectRecord& record : file.objects())
        database.addFileStub(AcDbHandle(record.handle), file.bytesOf(record).data(), record.size);
    setTables(database, file.header());
    database.setHeader(file.header(), AcDbHandle(file.header().HANDSEED));
    for (const std::string& warning : file.warnings())
        database.addWarning(warning);
    database.setDirty(false);
    return checkTables(database, name);
}

} // namespace

Result<void> readDrawing(AcDbDatabase& database, const std::string& path) {
    Result<std::shared_ptr<FileImage>> image = FileImage::read(path);
    return image ? fill(database, *image, path) : Result<void>(image.error());
}

Result<void> readDrawing(AcDbDatabase& database, std::vector<uint8_t> bytes, const std::string& name) {
    Result<std::shared_ptr<FileImage>> image = FileImage::parse(std::move(bytes), name);
    return image ? fill(database, *image, name) : Result<void>(image.error());
}

Result<void> lockDrawing(AcDbDatabase& database, const std::string& path) {
    DrawingSource& source = sourceOf(database);
    if (source.hasLock(path))
        return {};
    Result<std::unique_ptr<DrawingLock>> lock = DrawingLock::acquire(path);
    if (!lock)
        return lock.error();
    source.setLock(std::move(*lock), path);
    return {};
}

} // namespace vndk::dwg
