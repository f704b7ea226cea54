// Writing out: making a drawing of a part of another.
#include "db/clone_run.h"
#include "db/opaque.h"
#include "db/stub.h"
#include "db/tied_entities.h"
#include "db/usage.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_writer.h"

#include <algorithm>
#include <memory>
#include <variant>

namespace {

using vndk::dwg::HeaderRow;
using vndk::dwg::HeaderVariables;

AcGeVector3d vectorOf(const vndk::dwg::Point3& p) { return {p.x, p.y, p.z}; }

AcDbObjectId memberOf(AcDbDatabase& database, const char* folder, const char* name) {
    AcDbObjectId id;
    if (const AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId()); root)
        root->getAt(folder, id);
    const AcDbObjectPointer<AcDbDictionary> members(id);
    id.setNull();
    if (members)
        members->getAt(name, id);
    return id;
}

/// Fills a new drawing with copies out of another.
class WblockRun {
public:
    WblockRun(AcDbDatabase& from, AcDbDatabase& to)
        : from_(from), to_(to), mapping_(&from, &to), savepoint_(to), run_(from, to, mapping_, savepoint_) {}

    /// `begin` tells reactors what is written out; `place` puts the copies where they belong.
    template <class Begin, class Place>
    Acad::ErrorStatus copy(const std::vector<AcDbObjectId>& objects, Begin&& begin, Place&& place);

    /// Moves the copies of the model space; see AcDbDatabase::wblock.
    Acad::ErrorStatus move(const AcGePoint3d& basePoint);

private:
    Acad::ErrorStatus adoptStandards();
    Acad::ErrorStatus adoptRecords(AcDbObjectId fromTable, AcDbObjectId toTable);
    Acad::ErrorStatus copyObjects(const std::vector<AcDbObjectId>& objects);
    std::vector<AcDbObjectId> copies() const;
    void copyHeader();

    AcDbDatabase& from_;
    AcDbDatabase& to_;
    AcDbIdMapping mapping_;
    AcDbSavepoint savepoint_; // for the run alone: a drawing that fails is thrown away
    AcDbCloneRun run_;
};

/// What every drawing has is in the new one as it is in the old one, and not as a new drawing begins.
Acad::ErrorStatus WblockRun::adoptStandards() {
    for (const auto table : {&AcDbDatabase::layerTableId, &AcDbDatabase::linetypeTableId,
                             &AcDbDatabase::textStyleTableId, &AcDbDatabase::dimStyleTableId})
        if (const Acad::ErrorStatus status = adoptRecords((from_.*table)(), (to_.*table)()); status != Acad::eOk)
            return status;
    const AcDbObjectId style = memberOf(from_, "ACAD_MLINESTYLE", "Standard");
    return style.isNull() ? Acad::eOk : run_.adopt(style, memberOf(to_, "ACAD_MLINESTYLE", "Standard"));
}

Acad::ErrorStatus WblockRun::adoptRecords(AcDbObjectId fromTable, AcDbObjectId toTable) {
    std::vector<AcDbObjectId> records;
    if (const AcDbObjectPointer<AcDbSymbolTable> table(toTable); table)
        records = table->records();
    const AcDbObjectPointer<AcDbSymbolTable> table(fromTable);
    for (const AcDbObjectId record : records) {
        std::string name;
        if (const AcDbObjectPointer<AcDbSymbolTableRecord> own(record); own)
            name = own->name();
        AcDbObjectId namesake;
        if (!table || table->getAt(name.c_str(), namesake) != Acad::eOk)
            continue;
        if (const Acad::ErrorStatus status = run_.adopt(namesake, record); status != Acad::eOk)
            return status;
    }
    return Acad::eOk;
}

Acad::ErrorStatus WblockRun::copyObjects(const std::vector<AcDbObjectId>& objects) {
    Acad::ErrorStatus status = adoptStandards();
    if (const AcDbObjectPointer<AcDbBlockTableRecord> space(to_.modelSpaceId(), AcDb::kForWrite); status == Acad::eOk)
        status = run_.cloneEntities(objects, *space);
    return status == Acad::eOk ? run_.cloneNeeded() : status;
}

template <class Begin, class Place>
Acad::ErrorStatus WblockRun::copy(const std::vector<AcDbObjectId>& objects, Begin&& begin, Place&& place) {
    auto& events = acrxEventReactors();
    events.tell([&](AcRxEventReactor& r) { r.wblockNotice(&from_); });
    events.tell([&](AcRxEventReactor& r) { begin(r); });
    events.tell([&](AcRxEventReactor& r) { r.beginDeepClone(&to_, mapping_); });
    Acad::ErrorStatus status = copyObjects(objects);
    if (status == Acad::eOk) {
        events.tell([&](AcRxEventReactor& r) { r.beginDeepCloneXlation(mapping_); });
        run_.translate();
        copyHeader();
        status = place();
    }
    if (status != Acad::eOk) {
        from_.setLastFileError(run_.failureText());
        events.tell([&](AcRxEventReactor& r) { r.abortDeepClone(mapping_); });
        events.tell([&](AcRxEventReactor& r) { r.abortWblock(&to_); });
        return status;
    }
    for (const std::string& warning : run_.warnings())
        to_.addWarning(warning);
    events.tell([&](AcRxEventReactor& r) { r.otherWblock(&to_, mapping_, &from_); });
    events.tell([&](AcRxEventReactor& r) { r.endDeepClone(mapping_); });
    events.tell([&](AcRxEventReactor& r) { r.endWblock(&to_); });
    return Acad::eOk;
}

std::vector<AcDbObjectId> WblockRun::copies() const {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(to_.modelSpaceId());
    return space->entities();
}

Acad::ErrorStatus WblockRun::move(const AcGePoint3d& basePoint) {
    const HeaderVariables& header = from_.header();
    const AcGeVector3d x = vectorOf(header.TILEMODE ? header.UCSXDIR : header.PUCSXDIR);
    const AcGeVector3d y = vectorOf(header.TILEMODE ? header.UCSYDIR : header.PUCSYDIR);
    const AcGeMatrix3d fromAxes = AcGeMatrix3d::coordSystem(AcGePoint3d::kOrigin, x, y, x.crossProduct(y));
    const AcGeMatrix3d toOrigin = fromAxes.inverse() * AcGeMatrix3d::translation(AcGePoint3d::kOrigin - basePoint);
    if (toOrigin.isEqualTo(AcGeMatrix3d::kIdentity, {0, 0}))
        return Acad::eOk;
    const std::vector<AcDbObjectId> entities = copies();
    if (std::any_of(entities.begin(), entities.end(), [](AcDbObjectId id) {
            return AcDbOpaqueEntity::cast(AcDbObjectPointer<AcDbEntity>(id).object()) != nullptr;
        })) {
        if (!fromAxes.isEqualTo(AcGeMatrix3d::kIdentity, {0, 0}))
            return Acad::eNotApplicable;
        return to_.setInsbase(basePoint);
    }
    for (const AcDbObjectId id : acdbWithoutTied(entities)) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (const Acad::ErrorStatus status = entity ? entity->transformBy(toOrigin) : entity.openStatus();
            status != Acad::eOk)
            return status;
    }
    return Acad::eOk;
}

/// The settings come along; where they name objects, only if those came along too.
void WblockRun::copyHeader() {
    const HeaderVariables& fresh = to_.header();
    HeaderVariables header = from_.header();
    for (const HeaderRow& row : vndk::dwg::headerRows()) {
        const auto* const handle = std::get_if<uint64_t HeaderVariables::*>(&row.member);
        if (!handle)
            continue;
        const AcDbObjectId copy = mapping_.lookUp(from_.idOf(header.**handle));
        header.** handle = copy.isNull() ? fresh.**handle : copy.handle().value();
    }
    // What tells one drawing from another, and where things lie in the old one.
    header.FINGERPRINTGUID = fresh.FINGERPRINTGUID;
    header.VERSIONGUID = fresh.VERSIONGUID;
    header.TDCREATE = fresh.TDCREATE;
    header.TDUPDATE = fresh.TDUPDATE;
    header.TDINDWG = fresh.TDINDWG;
    header.TDUSRTIMER = fresh.TDUSRTIMER;
    header.TILEMODE = true;
    header.INSBASE = header.PINSBASE = {};
    header.ELEVATION = header.PELEVATION = 0;
    for (const auto place :
         {&HeaderVariables::EXTMIN, &HeaderVariables::EXTMAX, &HeaderVariables::PEXTMIN, &HeaderVariables::PEXTMAX,
          &HeaderVariables::UCSORG, &HeaderVariables::UCSXDIR, &HeaderVariables::UCSYDIR, &HeaderVariables::PUCSORG,
          &HeaderVariables::PUCSXDIR, &HeaderVariables::PUCSYDIR})
        header.*place = fresh.*place;
    header.UCSORTHOVIEW = header.PUCSORTHOVIEW = 0;
    header.CEPSNTYPE = fresh.CEPSNTYPE;
    to_.setHeader(header, to_.handseed());
    to_.setAttdia(from_.attdia());
    to_.setAttreq(from_.attreq());
}

bool isEntityOf(AcDbObjectId id, const AcDbDatabase& database, Acad::ErrorStatus& status) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    status = !entity ? entity.openStatus() : id.database() != &database ? Acad::eWrongDatabase : Acad::eOk;
    return status == Acad::eOk;
}

/// Erases named objects until all that are left are needed.
void eraseUnused(AcDbDatabase& database) {
    constexpr AcDbUsage::Kind kKinds[] = {AcDbUsage::kBlocks,      AcDbUsage::kDimStyles, AcDbUsage::kLayers,
                                          AcDbUsage::kMlineStyles, AcDbUsage::kLinetypes, AcDbUsage::kTextStyles,
                                          AcDbUsage::kShapeFiles,  AcDbUsage::kRegApps};
    AcDbUsage usage(database);
    for (bool again = true; again;) {
        again = false;
        for (const AcDbUsage::Kind kind : kKinds)
            for (const AcDbUsage::Named& named : usage.unused(kind)) {
                const AcDbObjectPointer<AcDbObject> object(named.id, AcDb::kForWrite);
                if (!object || object->erase() != Acad::eOk)
                    continue;
                usage.forget(named.id);
                again = true;
            }
    }
}

/// Encodes a drawing and reads it into another, so that all of it comes along, modelled or not.
Acad::ErrorStatus copyWhole(AcDbDatabase& from, AcDbDatabase& to) {
    const bool wasDirty = from.isDirty();
    vndk::dwg::Result<std::vector<uint8_t>> bytes = vndk::dwg::writeDrawing(from);
    from.setDirty(wasDirty); // what only files need may have been added
    if (!bytes) {
        from.setLastFileError(bytes.error().message);
        return Acad::eFileInternalErr;
    }
    if (const auto read = vndk::dwg::readDrawing(to, std::move(*bytes), from.fileName()); !read) {
        from.setLastFileError(read.error().message);
        return Acad::eFileInternalErr;
    }
    to.setAttdia(from.attdia());
    to.setAttreq(from.attreq());
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& output, const std::vector<AcDbObjectId>& objects,
                                       const AcGePoint3d& basePoint) {
    output = nullptr;
    Acad::ErrorStatus status = modelSpace_.isNull() ? Acad::eNoDatabase : Acad::eOk;
    for (const AcDbObjectId id : objects)
        if (status != Acad::eOk || !isEntityOf(id, *this, status))
            return status;
    auto made = std::make_unique<AcDbDatabase>();
    WblockRun run(*this, *made);
    status = run.copy(
        objects, [&](AcRxEventReactor& r) { r.beginWblock(made.get(), this, basePoint); },
        [&] { return run.move(basePoint); });
    if (status == Acad::eOk)
        output = made.release();
    return status;
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& output, AcDbObjectId blockId) {
    output = nullptr;
    if (blockId.database() != this)
        return blockId.isNull() ? Acad::eNullObjectId : Acad::eWrongDatabase;
    const AcDbObjectPointer<AcDbBlockTableRecord> block(blockId);
    if (!block)
        return block.openStatus();
    const std::vector<AcDbObjectId> contents = block->entities();
    auto made = std::make_unique<AcDbDatabase>();
    const Acad::ErrorStatus status =
        WblockRun(*this, *made)
            .copy(
                contents, [&](AcRxEventReactor& r) { r.beginWblock(made.get(), this, blockId); },
                [&] { return made->setInsbase(block->origin()); });
    if (status == Acad::eOk)
        output = made.release();
    return status;
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& output) {
    output = nullptr;
    if (modelSpace_.isNull())
        return Acad::eNoDatabase;
    auto made = std::make_unique<AcDbDatabase>(false);
    AcDbIdMapping mapping(this, made.get());
    auto& events = acrxEventReactors();
    events.tell([&](AcRxEventReactor& r) { r.wblockNotice(this); });
    events.tell([&](AcRxEventReactor& r) { r.beginWblock(made.get(), this); });
    events.tell([&](AcRxEventReactor& r) { r.beginDeepClone(made.get(), mapping); });
    if (const Acad::ErrorStatus status = copyWhole(*this, *made); status != Acad::eOk) {
        events.tell([&](AcRxEventReactor& r) { r.abortDeepClone(mapping); });
        events.tell([&](AcRxEventReactor& r) { r.abortWblock(made.get()); });
        return status;
    }
    eraseUnused(*made);
    for (AcDbStub& stub : made->stubs())
        if (!stub.has(kStubErased))
            mapping.assign(idOf(stub.handle.value()), AcDbObjectId(&stub));
    events.tell([&](AcRxEventReactor& r) { r.beginDeepCloneXlation(mapping); });
    events.tell([&](AcRxEventReactor& r) { r.otherWblock(made.get(), mapping, this); });
    events.tell([&](AcRxEventReactor& r) { r.endDeepClone(mapping); });
    events.tell([&](AcRxEventReactor& r) { r.endWblock(made.get()); });
    output = made.release();
    return Acad::eOk;
}
