// AcDbObject: the base of all that lives in a drawing's database.
//
// States. An object made with new is temporary: it is in no database, its owner may change it freely and
// deletes it. Appending it to a container of a database makes it resident: the database owns it from then
// on, it has an id and a handle, and it is reached by opening its id and given back with close().
//
// Open modes. Any number of readers up to 256, or one writer, or notification. A refused open tells why:
//   open for read  while written -> eWasOpenForWrite; over 256 readers -> eAtMaxReaders
//   open for write while read    -> eWasOpenForRead; while written -> eWasOpenForWrite
//   erased, not asked for        -> eWasErased
// Getters need the object open (any mode) or temporary, setters need it open for write or temporary: a
// setter on an object that is open for read returns eNotOpenForWrite and changes nothing (setters without a
// result assert). The former state is recorded for undo at the first change after opening for write.
#pragma once

#include "db/object_id.h"
#include "db/resbuf.h"
#include "rx/class.h"

#include <memory>
#include <vector>

class AcDbIdMapping;
class AcDbObjectReactor;
struct AcDbXData;

namespace AcDb {

enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };

/// How a reference from one object to another stands: see the typed ids of db/object_id.h.
enum ReferenceKind { kSoftPointer, kHardPointer, kSoftOwner, kHardOwner };

} // namespace AcDb

/// Sees every reference that an object holds to another, and may change it. Copying, auditing and writing use it.
class AcDbReferenceVisitor {
public:
    virtual ~AcDbReferenceVisitor() = default;
    virtual void visit(AcDbObjectId& id, AcDb::ReferenceKind kind) = 0;
};

/// What a class adds to AcDbObject's virtuals so that undo and copying work on all its data members: define
/// with ACDB_DXF_DEFINE_MEMBERS. Data members must be plain values with copy semantics.
#define ACDB_DECLARE_MEMBERS(CLASS)                                                                                    \
    ACRX_DECLARE_MEMBERS(CLASS)                                                                                        \
    AcDbObject* copyData() const override;                                                                             \
    void assignData(const AcDbObject& other) override;

#define ACDB_DEFINE_COPY(CLASS)                                                                                        \
    AcDbObject* CLASS::copyData() const { return new CLASS(*this); }                                                   \
    void CLASS::assignData(const AcDbObject& other) { *this = static_cast<const CLASS&>(other); }

#define ACDB_DXF_DEFINE_MEMBERS(CLASS, PARENT, DXFNAME, APPNAME)                                                       \
    ACRX_DXF_DEFINE_MEMBERS(CLASS, PARENT, DXFNAME, APPNAME)                                                           \
    ACDB_DEFINE_COPY(CLASS)

class AcDbObject : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcDbObject)
public:
    AcDbObject();
    ~AcDbObject() override;

    // Identity.
    AcDbObjectId objectId() const { return AcDbObjectId(stub_); }
    AcDbObjectId ownerId() const { return owner_; }
    /// Sets the owner without telling it. Containers do this when an object is appended.
    Acad::ErrorStatus setOwnerId(AcDbObjectId owner);
    void getAcDbHandle(AcDbHandle& handle) const;
    /// The database of a resident object; null for a temporary one.
    AcDbDatabase* database() const;
    /// The type name of the object as DXF writes it.
    virtual const char* dxfName() const { return isA()->dxfName(); }

    // Open and close.
    /// Gives the object back. A writer's changes are told to reactors here. eInvalidOpenState: it isn't open.
    Acad::ErrorStatus close();
    /// From the only reader to the writer. eHadMultipleReaders: somebody else reads it too.
    Acad::ErrorStatus upgradeOpen();
    Acad::ErrorStatus downgradeOpen();
    bool isReadEnabled() const;
    bool isWriteEnabled() const;
    bool isModified() const;
    bool isErased() const;
    bool isNewObject() const;
    bool isResident() const { return stub_ != nullptr; }
    /// Marks the object erased or, with false, brings it back. Needs write. eWasErased, eWasNotErased:
    /// nothing to do; a class can refuse by subErase.
    Acad::ErrorStatus erase(bool erasing = true);

    // Extended data.
    /// The xdata of one application, or of all with null: a list that begins with 1001 and the name for each.
    /// Owned by the caller; null if there is none.
    resbuf* xData(const char* appName = nullptr) const;
    /// Replaces the xdata of each application that the list names by its 1001 items; a 1001 with nothing behind
    /// it removes. The list stays the caller's. eRegappIdNotFound: the application isn't registered in the
    /// database; eXdataSizeExceeded: more than 16 KB; eInvalidResBuf: a group code that xdata can't hold.
    Acad::ErrorStatus setXData(const resbuf* xdata);
    /// Transforms what follows its entity: places (1011), displacements (1012), directions (1013), distances (1041)
    /// and scale factors (1042). Entities call it in their transformBy.
    Acad::ErrorStatus xDataTransformBy(const class AcGeMatrix3d& matrix);
    /// The packed form, for the codec. Null if there is none.
    const AcDbXData* packedXData() const;
    AcDbXData* packedXDataForWrite();

    // Extension dictionary and reactors.
    AcDbObjectId extensionDictionary() const;
    Acad::ErrorStatus setExtensionDictionary(AcDbObjectId dictionary);
    Acad::ErrorStatus createExtensionDictionary();
    const std::vector<AcDbObjectId>& persistentReactors() const;
    void addPersistentReactor(AcDbObjectId reactor);
    void removePersistentReactor(AcDbObjectId reactor);
    /// Transient reactors aren't owned and aren't saved. They may remove themselves while they are being told.
    void addReactor(AcDbObjectReactor* reactor) const;
    void removeReactor(AcDbObjectReactor* reactor) const;

    // Undo.
    /// Switches the recording of the whole database off or on.
    void disableUndoRecording(bool disable);

    // Copying (see db/id_mapping.h).
    /// Shows every reference of this object, owner and reactors included. Overrides call the base first.
    virtual void visitReferences(AcDbReferenceVisitor& visitor);

    // For implementers of classes.
    void assertReadEnabled() const;
    /// Every setter calls this before its change: records undo and marks the object changed.
    /// eNotOpenForWrite: the setter must not change anything.
    Acad::ErrorStatus assertWriteEnabled();
    /// A new object with the same data and no identity; owned by the caller. By ACDB_DXF_DEFINE_MEMBERS.
    virtual AcDbObject* copyData() const = 0;
    /// Takes over the data of an object of the same class and keeps the own identity. Undo uses it.
    virtual void assignData(const AcDbObject& other) = 0;
    /// Called after assignData restored a former state and after decoding, so that derived state follows.
    virtual void dataRestored() {}
    /// Called when a temporary object has become resident: it has its id, owner and database now.
    virtual void madeResident() {}
    /// Called by erase before the mark changes; another result than eOk refuses.
    virtual Acad::ErrorStatus subErase(bool /*erasing*/) { return Acad::eOk; }

    /// Gives a freshly decoded or appended object its slot. For the database's own code.
    void bindStub(AcDbStub* stub) { stub_ = stub; }
    void setOwnerRaw(AcDbObjectId owner) { owner_ = owner; }
    /// Takes out null reactors and the xdata of applications without a record, which copying may leave.
    void dropLostReferences();
    /// For containers: what the object holds changed (an entity came in, a record was erased), its data didn't.
    void noteContentChanged();

protected:
    AcDbObject(const AcDbObject& other);
    AcDbObject& operator=(const AcDbObject& other);

private:
    struct Extras;
    Extras& extras() const;

    AcDbStub* stub_ = nullptr;
    AcDbObjectId owner_;
    mutable std::unique_ptr<Extras> extras_; // xdata, dictionary, reactors: most objects have none
};
