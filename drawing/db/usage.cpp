#include "db/usage.h"

#include "db/database.h"
#include "db/opaque.h"
#include "db/stand_in.h"
#include "db/stub.h"
#include "db/xdata.h"
#include "dwg/mline_style.h"
#include "dwg/xrecord_handles.h"

#include <algorithm>
#include <memory>
#include <variant>

/// Walks all objects and notes which named objects they need.
class AcDbUsageCollector : public AcDbReferenceVisitor {
public:
    AcDbUsageCollector(AcDbUsage& usage, AcDbDatabase& database) : usage_(usage), database_(database) {}
    void collect();
    void visit(AcDbObjectId& id, AcDb::ReferenceKind) override { note(id); }

private:
    void collectHeader();
    void collectObject(AcDbStub& stub, AcDbObject& object);
    void collectExtendedData(const AcDbObject& object);
    void collectFields(const AcDbOpaqueFields& fields);
    void note(AcDbObjectId used) {
        if (!used.isNull() && used != user_)
            usage_.addUse(user_, used);
    }
    void noteHandle(AcDbHandle handle) { note(database_.idOf(handle.value())); }
    AcDbObjectId holderOf(AcDbObjectId id);

    AcDbUsage& usage_;
    AcDbDatabase& database_;
    std::unordered_map<AcDbObjectId, AcDbObjectId> holders_; // of the owners that were met
    AcDbObjectId user_;
};

void AcDbUsageCollector::collect() {
    collectHeader();
    // Looking at an object may decode its owner, but adds no slots.
    for (AcDbStub& stub : database_.stubs()) {
        if (stub.has(kStubErased))
            continue;
        if (stub.object) {
            collectObject(stub, *stub.object);
            continue;
        }
        if (!stub.bytes || !database_.source())
            continue;
        // Just looked at: a drawing of a million objects doesn't have to hold them all for this.
        std::unique_ptr<AcDbObject> passing(database_.source()->decode(stub));
        passing->bindStub(&stub);
        collectObject(stub, *passing);
        if (stub.has(kStubDecodeFailed) && !stub.object)
            stub.setObject(passing.release()); // the warning about it has been given
    }
}

void AcDbUsageCollector::collectHeader() {
    const vndk::dwg::HeaderVariables& header = database_.header();
    user_.setNull();
    for (const vndk::dwg::HeaderRow& row : vndk::dwg::headerRows())
        if (const auto* const handle = std::get_if<uint64_t vndk::dwg::HeaderVariables::*>(&row.member))
            noteHandle(AcDbHandle(header.**handle));
    // Older releases name the blocks of arrow heads.
    const AcDbObjectPointer<AcDbBlockTable> blocks(database_.blockTableId());
    for (const std::string* name : {&header.DIMBLKNAME, &header.DIMBLK1NAME, &header.DIMBLK2NAME}) {
        AcDbObjectId id;
        if (blocks && !name->empty() && blocks->getAt(name->c_str(), id) == Acad::eOk)
            note(id);
    }
}

/// The named object that goes with all that it owns when it is purged: the object itself, or the nearest of its owners.
/// Null for what belongs to the drawing.
AcDbObjectId AcDbUsageCollector::holderOf(AcDbObjectId id) {
    std::vector<AcDbObjectId> chain;
    AcDbObjectId holder;
    while (!id.isNull()) {
        if (const auto known = holders_.find(id); known != holders_.end()) {
            holder = known->second;
            break;
        }
        holders_[id] = AcDbObjectId(); // ends a chain of owners that runs in a circle
        chain.push_back(id);
        if (usage_.candidates_.contains(id)) {
            holder = id;
            break;
        }
        const AcDbObject* const object = database_.objectOf(*id.stub());
        id = object ? object->ownerId() : AcDbObjectId();
    }
    for (const AcDbObjectId link : chain)
        holders_[link] = holder;
    return holder;
}

void AcDbUsageCollector::collectObject(AcDbStub& stub, AcDbObject& object) {
    const AcDbObjectId id(&stub);
    // A table lists its records without needing them, and so do the dictionaries of styles.
    if (usage_.lists_.contains(id))
        return;
    user_ = usage_.candidates_.contains(id) ? id : holderOf(object.ownerId());
    object.visitReferences(*this);
    collectExtendedData(object);
    if (const auto* const opaque = AcDbOpaqueObject::cast(&object))
        collectFields(opaque->fields());
}

void AcDbUsageCollector::collectExtendedData(const AcDbObject& object) {
    if (const AcDbStandInClass* const standIn = acdbStandInOf(object.isA())) {
        AcDbObjectId application;
        const AcDbObjectPointer<AcDbRegAppTable> table(database_.regAppTableId());
        if (table && table->getAt(standIn->applicationName, application) == Acad::eOk)
            note(application);
    }
    const AcDbXData* const data = object.packedXData();
    if (!data)
        return;
    for (const AcDbXDataGroup& group : data->groups) {
        AcDbXDataReader reader(group.items);
        for (AcDbXDataItem item; reader.next(item);)
            noteHandle(item.handle);
    }
}

void AcDbUsageCollector::collectFields(const AcDbOpaqueFields& fields) {
    if (vndk::dwg::isXrecord(fields)) {
        AcDbOpaqueFields looked = fields;
        (void)vndk::dwg::turnXrecordHandles(looked, [this](uint64_t handle) {
            noteHandle(AcDbHandle(handle));
            return handle;
        });
    } else if (vndk::dwg::isMlineStyle(fields)) {
        // Linetypes stand in multiline styles by their place, so those in front of one have to stay too.
        const AcDbObjectPointer<AcDbLinetypeTable> table(database_.linetypeTableId());
        const size_t places = vndk::dwg::linetypePlaces(fields);
        for (size_t i = 0; table && i < std::min(places, table->records().size()); ++i)
            note(table->records()[i]);
    }
}

AcDbUsage::AcDbUsage(AcDbDatabase& database) {
    addCandidates(database);
    AcDbUsageCollector(*this, database).collect();
}

void AcDbUsage::addCandidates(AcDbDatabase& database) {
    addTable(database.blockTableId(), kBlocks, {});
    addTable(database.layerTableId(), kLayers, {"0"});
    addTable(database.linetypeTableId(), kLinetypes, {"ByLayer", "ByBlock", "Continuous"});
    addTable(database.textStyleTableId(), kTextStyles, {"Standard"});
    addMlineStyles(database);
    addTable(database.dimStyleTableId(), kDimStyles, {"Standard"});
    addTable(database.regAppTableId(), kRegApps, {"ACAD"});
}

namespace {

/// External references have a command of their own.
bool isPurgeable(const AcDbSymbolTableRecord& record) {
    const auto* const block = AcDbBlockTableRecord::cast(&record);
    if (block && (block->isLayout() || block->isFromExternalReference() || block->isFromOverlayReference()))
        return false;
    return !record.isDependent() && record.name().find('|') == std::string::npos;
}

} // namespace

void AcDbUsage::addTable(AcDbObjectId tableId, Kind kind, std::initializer_list<const char*> kept) {
    lists_.insert(tableId);
    const AcDbObjectPointer<AcDbSymbolTable> table(tableId);
    if (!table)
        return;
    for (const AcDbObjectId id : table->records()) {
        const AcDbObjectPointer<AcDbSymbolTableRecord> record(id);
        if (!record || !isPurgeable(*record))
            continue;
        const auto* const style = AcDbTextStyleTableRecord::cast(record.object());
        // Shape files have no names but those of their files.
        const std::string& name = style && record->name().empty() ? style->data().fileName : record->name();
        addCandidate(id, style && style->data().isShapeFile ? kShapeFiles : kind, name, kept);
    }
}

void AcDbUsage::addMlineStyles(AcDbDatabase& database) {
    AcDbObjectId id;
    if (const AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId()); root)
        root->getAt("ACAD_MLINESTYLE", id);
    const AcDbObjectPointer<AcDbDictionary> styles(id);
    if (!styles)
        return;
    lists_.insert(id);
    for (const AcDbDictionary::Entry& entry : styles->entries())
        if (!entry.id.isNull() && !entry.id.isErased())
            addCandidate(entry.id, kMlineStyles, entry.name, {"Standard"});
}

void AcDbUsage::addCandidate(AcDbObjectId id, Kind kind, std::string name, std::initializer_list<const char*> kept) {
    const std::string folded = acdbFoldName(name);
    const bool keep =
        std::any_of(kept.begin(), kept.end(), [&](const char* one) { return acdbFoldName(one) == folded; });
    if (!candidates_.try_emplace(id, Candidate{kind, std::move(name)}).second)
        return;
    order_.push_back(id);
    if (keep)
        addUse({}, id);
}

void AcDbUsage::addUse(AcDbObjectId user, AcDbObjectId used) {
    const auto candidate = candidates_.find(used);
    if (candidate != candidates_.end() && needs_[user].insert(used).second)
        ++candidate->second.users;
}

std::vector<AcDbUsage::Named> AcDbUsage::unused(Kind kind) const {
    std::vector<Named> found;
    for (const AcDbObjectId id : order_)
        if (const auto it = candidates_.find(id);
            it != candidates_.end() && it->second.kind == kind && it->second.users == 0)
            found.push_back({id, it->second.name});
    return found;
}

void AcDbUsage::forget(AcDbObjectId id) {
    candidates_.erase(id);
    const auto needs = needs_.find(id);
    if (needs == needs_.end())
        return;
    for (const AcDbObjectId used : needs->second)
        if (const auto candidate = candidates_.find(used); candidate != candidates_.end())
            --candidate->second.users;
    needs_.erase(needs);
}
