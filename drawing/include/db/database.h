// AcDbDatabase: one drawing in memory.
//
// A database owns all its objects. Objects of a file are decoded when they are first opened. The working
// database of the host's services is the one that the current document shows; side databases are made for
// reading other files. Two databases share nothing.
#pragma once

#include "db/block_table.h"
#include "db/dictionary.h"
#include "db/reactors.h"
#include "db/symbol_tables.h"
#include "db/undo.h"
#include "dwg/header_variables.h"

#include <deque>
#include <memory>
#include <string>

class AcDbIdMapping;

/// Where the objects of a file come from: decodes one when it is first opened. Implemented by the codec.
class AcDbObjectSource {
public:
    virtual ~AcDbObjectSource() = default;
    /// Decodes a slot's bytes into a new object, owned by the caller, with owner and common data set. An object
    /// whose fields are damaged or not modelled comes back as an opaque one: never null.
    virtual AcDbObject* decode(AcDbStub& stub) = 0;
    /// False if the slot's bytes can't become an object of exactly that class; true also where only decoding tells.
    virtual bool canBe(AcDbStub& stub, const AcRxClass* cls) = 0;
    /// The ids of the chain of entities from `first` to `last` that `owner` holds. Their fields aren't decoded, or all
    /// are, for who needs them next: a record is then read once. A chain that is broken, runs in a circle or leads to
    /// another's entities ends there, with a warning in the database.
    virtual std::vector<AcDbObjectId> readChain(AcDbObjectId owner, AcDbObjectId first, AcDbObjectId last,
                                                bool decoding) = 0;
};

class AcDbDatabase : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcDbDatabase)
public:
    /// With `buildDefaultDrawing` an empty drawing (spaces, layer "0", the standard linetypes, style and
    /// dictionaries); without it nothing, to be filled by readDwgFile.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    ~AcDbDatabase() override;

    // Files.
    /// Reads a drawing into this database, which must be empty. The host's findFile tells where the file is. With
    /// `shareMode` 0x20 (deny write) a drawing that anybody has open for writing, this program too, is refused; 0x40
    /// (deny none) reads it as it was last saved: the file is read whole at once, and saves replace files whole, so no
    /// writer can disturb. `allowCPConversion` is accepted for the interface's sake: text is always converted to code
    /// page 1252. eFileNotFound, eFileAccessErr, eFileSharingViolation, eNotADwgFile, eDwgVersionUnsupported,
    /// eBadDwgFile; lastFileError() tells more.
    Acad::ErrorStatus readDwgFile(const char* fileName, int shareMode = 0x20, bool allowCPConversion = false);
    /// Writes the drawing in release-15 format; an existing file becomes fileName's .bak. The file is either the
    /// old one or the new one at each moment. eFileAccessErr, eFileSharingViolation; lastFileError() tells more.
    Acad::ErrorStatus saveAs(const char* fileName);
    /// A sentence for the user about the last failure of the calls above.
    const std::string& lastFileError() const { return lastFileError_; }
    void setLastFileError(std::string text) { lastFileError_ = std::move(text); }
    const std::string& fileName() const { return fileName_; }
    void setFileName(std::string name) { fileName_ = std::move(name); }
    /// What was odd in the file, sentence by sentence.
    const std::vector<std::string>& warnings() const { return warnings_; }
    void addWarning(std::string text);

    // Tables and dictionaries. Each getXxx opens; the caller closes.
    AcDbObjectId blockTableId() const { return tables_.block; }
    AcDbObjectId layerTableId() const { return tables_.layer; }
    AcDbObjectId textStyleTableId() const { return tables_.style; }
    AcDbObjectId linetypeTableId() const { return tables_.linetype; }
    AcDbObjectId viewTableId() const { return tables_.view; }
    AcDbObjectId UCSTableId() const { return tables_.ucs; }
    AcDbObjectId viewportTableId() const { return tables_.viewport; }
    AcDbObjectId regAppTableId() const { return tables_.regApp; }
    AcDbObjectId dimStyleTableId() const { return tables_.dimStyle; }
    AcDbObjectId vxTableId() const { return tables_.vx; }
    AcDbObjectId namedObjectsDictionaryId() const { return namedObjects_; }
    Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbRegAppTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode);
    /// Ids of the two spaces that every drawing has. Null in an empty database.
    AcDbObjectId modelSpaceId() const { return modelSpace_; }
    AcDbObjectId paperSpaceId() const { return paperSpace_; }
    AcDbObjectId continuousLinetypeId() const { return continuous_; }
    AcDbObjectId byLayerLinetypeId() const { return byLayer_; }
    AcDbObjectId byBlockLinetypeId() const { return byBlock_; }
    /// The record of a registered application, made if missing. Null if the name is no symbol name.
    AcDbObjectId registerApplication(const char* name);

    // Objects by handle.
    /// eUnknownHandle.
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, AcDbHandle handle) const;
    AcDbObjectId idOf(uint64_t handle) const { return AcDbObjectId(findStub(AcDbHandle(handle))); }
    /// The handle that the next new object gets.
    AcDbHandle handseed() const { return AcDbHandle(handleSeed_); }
    /// Leaves the handles below `next` free.
    void reserveHandles(AcDbHandle next) { handleSeed_ = std::max(handleSeed_, next.value()); }
    /// Makes a temporary object resident: it gets a handle and the owner, is told to reactors, recorded for undo
    /// and left open for write. Containers call it. eAlreadyInDb; eOutOfRange: no handle is left.
    Acad::ErrorStatus addAcDbObject(AcDbObjectId& id, AcDbObject* object, AcDbObjectId owner);

    // Header variables. Setters record undo and tell reactors.
    const vndk::dwg::HeaderVariables& header() const { return header_; }
    /// For the host's variables: remembers the former values for undo, changes, marks.
    template <class F>
    void changeHeader(const char* name, F&& change) {
        headerWillChange(name);
        change(header_);
        headerChanged(name);
    }
    bool tilemode() const { return header_.TILEMODE; }
    /// The box around model space as it was last told; a box of nothing has its corners the wrong way round.
    AcGePoint3d extmin() const { return {header_.EXTMIN.x, header_.EXTMIN.y, header_.EXTMIN.z}; }
    AcGePoint3d extmax() const { return {header_.EXTMAX.x, header_.EXTMAX.y, header_.EXTMAX.z}; }
    AcGePoint3d insbase() const;
    Acad::ErrorStatus setInsbase(const AcGePoint3d& base);
    AcDbObjectId clayer() const { return idOf(header_.CLAYER); }
    Acad::ErrorStatus setClayer(AcDbObjectId layer);
    AcDbObjectId textstyle() const { return idOf(header_.TEXTSTYLE); }
    AcDbObjectId celtype() const { return idOf(header_.CELTYPE); }
    /// Not kept in a release-15 file: true asks for attribute values in a dialog, false by prompts.
    bool attdia() const { return attdia_; }
    void setAttdia(bool on) { attdia_ = on; }
    /// Not kept in a release-15 file: whether the host asks for attribute values at all.
    short attreq() const { return attreq_; }
    void setAttreq(short value) { attreq_ = value; }

    // Reactors.
    void addReactor(AcDbDatabaseReactor* reactor) { reactors_.add(reactor); }
    void removeReactor(AcDbDatabaseReactor* reactor) { reactors_.remove(reactor); }
    AcDbReactorList<AcDbDatabaseReactor>& reactors() { return reactors_; }

    // Undo.
    AcDbUndoController& undo() { return undo_; }
    void disableUndoRecording(bool disable) { undo_.setEnabled(!disable); }
    bool undoRecording() const { return undo_.isEnabled(); }
    /// Counts changes since the last save or load: 0 means that nothing has to be saved.
    bool isDirty() const { return dirty_; }
    void setDirty(bool dirty) { dirty_ = dirty; }

    // Copying.
    /// Copies the objects and all that they own to `owner`, a record of this database; `mapping` tells the copies.
    /// Pointers among the copies are turned to the copies, others stay. eInvalidOwnerObject.
    Acad::ErrorStatus deepCloneObjects(const std::vector<AcDbObjectId>& objects, AcDbObjectId owner,
                                       AcDbIdMapping& mapping);
    /// Makes the model space of `source` a block of that name here, its base point the source's INSBASE: entities
    /// with what they own, and what they need of layers, styles, linetypes, blocks, applications and members of
    /// named dictionaries. Names that this drawing has stand; anonymous blocks get new numbers. Groups, layouts,
    /// viewports and the drawing order stay behind. References to what isn't taken become null; where an object of a
    /// type that isn't modelled loses one, a warning tells it. With `preserveSource` false the source may be used up.
    /// All or nothing: on failure this database is as it was, with its undo and what could be redone; only handles
    /// may have been used up. eDuplicateRecordName, eInvalidSymbolTableName, eNoDatabase (nothing was read),
    /// eSelfReference: a block would hold itself; eDwgNeedsRecovery: something that is needed can't be decoded
    /// (lastFileError() names it); eOutOfRange: no handles are left; an open status if a table is held open.
    Acad::ErrorStatus insert(AcDbObjectId& blockId, const char* blockName, AcDbDatabase* source,
                             bool preserveSource = true);

    // Writing out (db/wblock.cpp). A new drawing, the caller's; null on failure. This one stays as it is. Header
    // variables come along; its model space is current, in world coordinates.
    /// The objects, and what they need, as the new model space. `basePoint` in world coordinates becomes its origin,
    /// the axes of the current UCS become its axes. With an entity among them whose geometry isn't known all stays in
    /// place and the base point becomes INSBASE; eNotApplicable when the axes are turned too. eWrongDatabase,
    /// eNotThatKindOfClass: not all are entities of this drawing. eDwgNeedsRecovery: something that is needed can't be
    /// decoded (lastFileError() names it). Viewports stay behind.
    Acad::ErrorStatus wblock(AcDbDatabase*& output, const std::vector<AcDbObjectId>& objects,
                             const AcGePoint3d& basePoint);
    /// The contents of a block as the new model space; its origin becomes INSBASE.
    Acad::ErrorStatus wblock(AcDbDatabase*& output, AcDbObjectId blockId);
    /// The whole drawing without the named objects that nothing needs (db/usage.h). Handles stay. eFileInternalErr;
    /// lastFileError() tells more.
    Acad::ErrorStatus wblock(AcDbDatabase*& output);

    // For the codec and the database's own code.
    struct Tables {
        AcDbObjectId block, layer, style, linetype, view, ucs, viewport, regApp, dimStyle, vx;
    };
    AcDbStub* findStub(AcDbHandle handle) const;
    /// A slot for an object of a file. REQUIRES: handles come in ascending order.
    AcDbStub& addFileStub(AcDbHandle handle, const uint8_t* bytes, uint32_t byteCount);
    std::deque<AcDbStub>& stubs() { return stubs_; }
    const std::deque<AcDbStub>& stubs() const { return stubs_; }
    /// The object of a slot, decoded now if need be; not opened. Null for a slot that never got an object.
    AcDbObject* objectOf(AcDbStub& stub);
    void setSource(std::shared_ptr<AcDbObjectSource> source) { source_ = std::move(source); }
    AcDbObjectSource* source() const { return source_.get(); }
    void setTables(const Tables& tables) { tables_ = tables; }
    void setNamedObjectsDictionary(AcDbObjectId id) { namedObjects_ = id; }
    void setSpaces(AcDbObjectId model, AcDbObjectId paper);
    void setLinetypes(AcDbObjectId byLayer, AcDbObjectId byBlock, AcDbObjectId continuous);
    void setHeader(const vndk::dwg::HeaderVariables& header, AcDbHandle handleSeed);
    bool headerModified() const { return headerModified_; }
    /// For undo: swaps in the former values.
    void restoreHeader(vndk::dwg::HeaderVariables& values);
    void noteModified(AcDbStub& stub);

private:
    void headerWillChange(const char* name);
    void headerChanged(const char* name);
    AcDbStub& addStub(AcDbHandle handle);

    std::deque<AcDbStub> stubs_;      // ascending by handle
    std::vector<AcDbStub*> byHandle_; // most slots, at the place of their handle
    std::shared_ptr<AcDbObjectSource> source_;
    vndk::dwg::HeaderVariables header_;
    Tables tables_;
    AcDbObjectId namedObjects_, modelSpace_, paperSpace_, continuous_, byLayer_, byBlock_;
    AcDbReactorList<AcDbDatabaseReactor> reactors_;
    AcDbUndoController undo_;
    std::vector<std::string> warnings_;
    std::string lastFileError_;
    std::string fileName_;
    uint64_t handleSeed_ = 1;
    short attreq_ = 1;
    bool attdia_ = false;
    bool dirty_ = false;
    bool headerModified_ = false;
};

/// Services that the database asks of its host. What a host doesn't override works for a program without one.
class AcDbHostApplicationServices {
public:
    virtual ~AcDbHostApplicationServices() = default;

    /// The system's path of a file that a caller names: `fileName` itself here; a host knows other forms of names and
    /// places to look. `fullPath` is set in any case, for messages. eFileNotFound.
    virtual Acad::ErrorStatus findFile(std::string& fullPath, const char* fileName);

    AcDbDatabase* workingDatabase() const { return working_; }
    void setWorkingDatabase(AcDbDatabase* database) { working_ = database; }

private:
    AcDbDatabase* working_ = nullptr;
};

/// The services in use; never null.
AcDbHostApplicationServices* acdbHostApplicationServices();
/// Puts a host's services in place of those in use, not owned; null brings back the plain ones.
void acdbSetHostApplicationServices(AcDbHostApplicationServices* services);
