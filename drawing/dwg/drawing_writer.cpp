#include "dwg/drawing_writer.h"

#include "db/block_ends.h"
#include "db/block_reference.h"
#include "db/polylines.h"
#include "db/space_extents.h"
#include "db/stand_in.h"
#include "db/stub.h"
#include "dwg/dates.h"
#include "dwg/drawing_source.h"
#include "dwg/file_writer.h"

#include <array>
#include <unordered_map>
#include <unordered_set>

namespace vndk::dwg {

namespace {

/// What becomes of an object's bytes.
enum class Action : uint8_t { Copy, PatchLinks, Encode, LeaveOut };

const AcDbSubentities* subentitiesOf(const AcDbObject& object) {
    if (const auto* const reference = AcDbBlockReference::cast(&object))
        return &reference->subentities();
    const auto* const owner = AcDbVertexOwner::cast(&object);
    return owner ? &owner->subentities() : nullptr;
}

/// Switches undo off while objects are added that only files have.
class NoUndoScope {
public:
    explicit NoUndoScope(AcDbDatabase& database) : database_(database), was_(database.undoRecording()) {
        database_.disableUndoRecording(true);
    }
    ~NoUndoScope() { database_.disableUndoRecording(!was_); }
    NoUndoScope(const NoUndoScope&) = delete;
    NoUndoScope& operator=(const NoUndoScope&) = delete;

private:
    AcDbDatabase& database_;
    bool was_;
};

class DrawingWriter {
public:
    explicit DrawingWriter(AcDbDatabase& database) : database_(database), source_(sourceOf(database)) {}

    Result<std::vector<uint8_t>> run() {
        addMissingObjects();
        actions_.resize(database_.stubs().size(), Action::Copy);
        for (AcDbStub& stub : database_.stubs())
            if (stub.flags & kChanged)
                sortOut(stub);
        for (AcDbStub* const container : containers_)
            linkContents(*container);
        markLeftOut();
        FileParts parts = source_.image() ? partsOf(*source_.image()) : FileParts();
        parts.header = headerToWrite();
        takeThumbnail(parts);
        takeObjects(parts);
        parts.classes = source_.codec().classes();
        for (AcDbStub& stub : database_.stubs())
            stub.clear(kStubLeftOut);
        return writeFile(parts);
    }

private:
    void takeThumbnail(FileParts& parts) const {
        constexpr uint8_t kHeaderRecord = 1, kBitmapRecord = 2;
        static constexpr std::array<uint8_t, 80> kEmptyHeader{};
        if (!source_.thumbnail().empty())
            parts.preview = {{kHeaderRecord, kEmptyHeader}, {kBitmapRecord, source_.thumbnail()}};
    }

    static constexpr unsigned kChanged = kStubErased | kStubModified | kStubLinksChanged | kStubNew;

    // What a file needs and a database doesn't

    void addMissingObjects() {
        const NoUndoScope scope(database_);
        addBlockEnds();
        // Registering adds objects, so the classes are collected before.
        std::unordered_set<AcRxClass*> classes;
        for (const AcDbStub& stub : database_.stubs())
            if ((stub.flags & kChanged) && stub.object && !stub.has(kStubErased))
                classes.insert(stub.object->isA());
        for (AcRxClass* const cls : classes)
            if (const AcDbStandInClass* const standIn = acdbStandInOf(cls))
                database_.registerApplication(standIn->applicationName);
    }

    void addBlockEnds() {
        AcDbStub* const stub = database_.blockTableId().stub();
        const auto* const table = stub ? AcDbBlockTable::cast(database_.objectOf(*stub)) : nullptr;
        if (!table)
            return;
        for (const AcDbObjectId id : table->records()) {
            auto* const record = id.isErased() || !id.stub() ? nullptr : AcDbBlockTableRecord::cast(id.stub()->object);
            if (record && record->data().blockBegin.isNull())
                addBlockEnds(*record);
        }
    }

    void addBlockEnds(AcDbBlockTableRecord& record) {
        AcDbBlockTableRecord::Data data = record.data();
        auto* const begin = new AcDbBlockBegin;
        begin->setFileName(record.name());
        data.blockBegin = addBlockEnd(begin, record);
        data.blockEnd = addBlockEnd(new AcDbBlockEnd, record);
        record.setFileData(std::move(data));
    }

    AcDbObjectId addBlockEnd(AcDbEntity* entity, const AcDbBlockTableRecord& record) {
        AcDbEntity::CommonData common;
        const AcDbObjectPointer<AcDbLayerTable> layers(database_.layerTableId());
        if (layers)
            layers->getAt("0", common.layer);
        common.linetype = database_.byLayerLinetypeId();
        entity->setCommonData(common);
        AcDbObjectId id;
        database_.addAcDbObject(id, entity, record.objectId());
        entity->close();
        return id;
    }

    // Which objects are written how

    Action& actionOf(const AcDbStub& stub) { return actions_[stub.index]; }

    void encodeLater(AcDbObjectId id) {
        AcDbStub* const stub = id.stub();
        if (stub && actionOf(*stub) == Action::Copy && database_.objectOf(*stub))
            actionOf(*stub) = Action::Encode;
    }

    void sortOut(AcDbStub& stub) {
        AcDbObject* const object = database_.objectOf(stub);
        if (!object) {
            actionOf(stub) = Action::LeaveOut;
            return;
        }
        if (stub.has(kStubErased)) {
            actionOf(stub) = Action::LeaveOut;
            leaveContentsOut(*object);
            encodeLater(object->ownerId());
            if (const auto* const reference = AcDbBlockReference::cast(object))
                encodeLater(reference->blockTableRecord());
            return;
        }
        if (actionOf(stub) == Action::LeaveOut)
            return;
        actionOf(stub) = Action::Encode;
        if (const auto* const reference = AcDbBlockReference::cast(object))
            tellBlock(*reference);
        if (auto* const record = AcDbBlockTableRecord::cast(object))
            renameBlockBegin(*record);
        if (AcDbBlockTableRecord::cast(object) || subentitiesOf(*object))
            containers_.push_back(&stub);
    }

    /// An erased container takes along what only it holds.
    void leaveContentsOut(AcDbObject& object) {
        if (auto* const record = AcDbBlockTableRecord::cast(&object)) {
            leaveOut(record->data().blockBegin);
            leaveOut(record->data().blockEnd);
            for (const AcDbObjectId id : record->entities())
                leaveOut(id);
        } else if (const auto* const dictionary = AcDbDictionary::cast(&object)) {
            for (const AcDbDictionary::Entry& entry : dictionary->entries())
                if (ownerOf(entry.id) == object.objectId())
                    leaveOut(entry.id);
        } else if (const AcDbSubentities* const list = subentitiesOf(object)) {
            for (const AcDbObjectId id : list->ids(object))
                leaveOut(id);
            leaveOut(list->sequenceEnd());
        }
        if (!object.extensionDictionary().isNull())
            leaveOut(object.extensionDictionary());
    }

    AcDbObjectId ownerOf(AcDbObjectId id) {
        AcDbObject* const object = id.stub() ? database_.objectOf(*id.stub()) : nullptr;
        return object ? object->ownerId() : AcDbObjectId();
    }

    void leaveOut(AcDbObjectId id) {
        AcDbStub* const stub = id.stub();
        if (!stub || actionOf(*stub) == Action::LeaveOut)
            return;
        actionOf(*stub) = Action::LeaveOut;
        if (AcDbObject* const object = database_.objectOf(*stub))
            leaveContentsOut(*object);
    }

    /// A block's record lists its references; copies of references and undo don't tell it of themselves.
    void tellBlock(const AcDbBlockReference& reference) {
        AcDbStub* const stub = reference.blockTableRecord().stub();
        auto* const record = stub ? AcDbBlockTableRecord::cast(database_.objectOf(*stub)) : nullptr;
        if (!record)
            return;
        auto [known, fresh] = knownReferences_.try_emplace(stub);
        if (fresh)
            known->second.insert(record->references().begin(), record->references().end());
        if (!known->second.insert(reference.objectId()).second)
            return;
        record->noteReference(reference.objectId());
        encodeLater(reference.blockTableRecord());
    }

    void renameBlockBegin(const AcDbBlockTableRecord& record) {
        AcDbStub* const stub = record.data().blockBegin.stub();
        auto* const begin = stub ? AcDbBlockBegin::cast(database_.objectOf(*stub)) : nullptr;
        if (!begin || begin->fileName() == record.name())
            return;
        begin->setFileName(record.name());
        encodeLater(record.data().blockBegin);
    }

    // References to what isn't written

    /// No reference may lead to an object that isn't in the file, whoever holds it.
    void markLeftOut() {
        bool any = false;
        for (AcDbStub& stub : database_.stubs())
            if (actionOf(stub) == Action::LeaveOut) {
                stub.set(kStubLeftOut);
                any = true;
            }
        if (!any)
            return;
        for (AcDbStub& stub : database_.stubs()) {
            Action& action = actionOf(stub);
            const bool keepsReferences = action == Action::Copy || action == Action::PatchLinks;
            if (keepsReferences && namesLeftOut(stub) && database_.objectOf(stub))
                action = Action::Encode;
        }
    }

    /// Whether one of the handles in the object's bytes, of whatever kind, leads there. The neighbours in a chain are
    /// cared for before.
    bool namesLeftOut(const AcDbStub& stub) const {
        const std::span<const uint8_t> record(stub.bytes, stub.byteCount);
        ObjectFrame frame;
        CommonHandles common;
        if (!stub.bytes || !parseFrame(record, source_.codec().context(), frame) ||
            !readCommonHandles(record, frame, common))
            return false;
        BitReader handles(record.data(), frame.handlesBit, frame.endBit);
        while (handles.remaining() >= 8) {
            const bool link =
                frame.isEntity && handles.position() >= common.linksBit && handles.position() < common.linksEndBit;
            const AcDbStub* const named = database_.findStub(AcDbHandle(handles.H().absolute(frame.handle)));
            if (!link && named && named->has(kStubLeftOut))
                return true;
        }
        return false;
    }

    // Neighbours

    void linkContents(AcDbStub& container) {
        if (actionOf(container) != Action::Encode)
            return;
        const bool contentChanged = container.flags & (kStubLinksChanged | kStubNew);
        if (const auto* const record = AcDbBlockTableRecord::cast(container.object)) {
            if (contentChanged || record->entitiesLoaded())
                linkChain(record->entities());
            return;
        }
        const AcDbSubentities& list = *subentitiesOf(*container.object);
        if (!contentChanged && !list.loaded())
            return;
        const auto& ids = list.ids(*container.object);
        linkChain(ids);
        const bool reference = AcDbBlockReference::cast(container.object) != nullptr;
        const bool empty = std::all_of(ids.begin(), ids.end(), [](AcDbObjectId id) { return id.isErased(); });
        if (reference && empty && !list.sequenceEnd().isNull())
            actionOf(*list.sequenceEnd().stub()) = Action::LeaveOut;
    }

    /// A member keeps the links of its bytes if it had the same neighbours there: both from the file, with nothing
    /// erased in between.
    void linkChain(const std::vector<AcDbObjectId>& ids) {
        constexpr size_t kNone = SIZE_MAX;
        const auto nextAlive = [&](size_t i) {
            while (i < ids.size() && ids[i].isErased())
                ++i;
            return i < ids.size() ? i : kNone;
        };
        size_t previous = kNone;
        for (size_t i = nextAlive(0); i != kNone;) {
            const size_t next = nextAlive(i + 1);
            const bool samePrevious =
                previous == kNone ? i == 0 : previous + 1 == i && ids[previous].stub()->bytes != nullptr;
            const bool sameNext =
                next == kNone ? i + 1 == ids.size() : next == i + 1 && ids[next].stub()->bytes != nullptr;
            AcDbStub& stub = *ids[i].stub();
            if (actionOf(stub) == Action::Encode || !samePrevious || !sameNext)
                relink(stub, previous == kNone ? 0 : ids[previous].handle().value(),
                       next == kNone ? 0 : ids[next].handle().value());
            previous = i;
            i = next;
        }
    }

    void relink(const AcDbStub& stub, uint64_t previous, uint64_t next) {
        if (actionOf(stub) == Action::Copy)
            actionOf(stub) = Action::PatchLinks;
        links_[stub.index] = linksBetween(stub.handle.value(), previous, next);
    }

    /// The links of a changed object whose chain wasn't looked at: those of its bytes.
    ChainLinks linksOf(const AcDbStub& stub) const {
        if (const auto it = links_.find(stub.index); it != links_.end())
            return it->second;
        const std::span<const uint8_t> record(stub.bytes, stub.byteCount);
        ObjectFrame frame;
        CommonHandles handles;
        if (stub.bytes && parseFrame(record, source_.codec().context(), frame) && frame.isEntity &&
            readCommonHandles(record, frame, handles))
            return {handles.previous, handles.next, frame.entity.nolinks};
        return {};
    }

    // Bytes

    HeaderVariables headerToWrite() {
        HeaderVariables header = database_.header();
        header.HANDSEED = database_.handseed().value();
        if (database_.isDirty())
            header.TDUPDATE = currentTime();
        growExtents(database_.modelSpaceId(), header.EXTMIN, header.EXTMAX);
        growExtents(database_.paperSpaceId(), header.PEXTMIN, header.PEXTMAX);
        return header;
    }

    void growExtents(AcDbObjectId space, Point3& least, Point3& most) {
        const AcDbExtents grown =
            acdbGrownExtents(database_, space, AcDbExtents({least.x, least.y, least.z}, {most.x, most.y, most.z}));
        if (grown.isEmpty())
            return;
        least = {grown.minPoint().x, grown.minPoint().y, grown.minPoint().z};
        most = {grown.maxPoint().x, grown.maxPoint().y, grown.maxPoint().z};
    }

    void takeObjects(FileParts& parts) {
        std::vector<ObjectBytes> former = std::move(parts.objects);
        parts.objects.clear();
        parts.objects.reserve(database_.stubs().size());
        for (const ObjectBytes& object : former)
            if (AcDbStub* const stub = database_.findStub(AcDbHandle(object.handle)))
                take(parts, *stub, object.bytes);
        for (const AcDbStub& stub : database_.stubs())
            if (!stub.bytes)
                take(parts, stub, {});
        for (const Written& written : written_)
            parts.objects[written.place].bytes = std::span(encoded_).subspan(written.offset, written.size);
    }

    void take(FileParts& parts, const AcDbStub& stub, std::span<const uint8_t> bytes) {
        const size_t offset = encoded_.size();
        switch (actionOf(stub)) {
        case Action::LeaveOut:
            return;
        case Action::Encode:
            if (source_.codec().encode(*stub.object, linksOf(stub), encoded_))
                break;
            [[fallthrough]]; // only its old bytes are known
        case Action::PatchLinks:
            patch(stub, bytes);
            break;
        case Action::Copy:
            break;
        }
        if (encoded_.size() > offset)
            written_.push_back({parts.objects.size(), offset, encoded_.size() - offset});
        else if (bytes.empty())
            return;
        parts.objects.push_back({stub.handle.value(), bytes});
    }

    void patch(const AcDbStub& stub, std::span<const uint8_t> bytes) {
        const ChainLinks links = linksOf(stub);
        if (const auto patched = patchLinks(bytes, source_.codec().context(), links.previous, links.next))
            encoded_.insert(encoded_.end(), patched->begin(), patched->end());
    }

    /// An object in encoded_. That buffer moves while it grows, so spans are made at the end.
    struct Written {
        size_t place;
        size_t offset;
        size_t size;
    };

    AcDbDatabase& database_;
    DrawingSource& source_;
    std::vector<Action> actions_; // by the slots' index
    std::vector<AcDbStub*> containers_;
    std::unordered_map<uint32_t, ChainLinks> links_; // by the slots' index
    std::unordered_map<const AcDbStub*, std::unordered_set<AcDbObjectId>> knownReferences_;
    std::vector<uint8_t> encoded_;
    std::vector<Written> written_;
};

} // namespace

Result<std::vector<uint8_t>> writeDrawing(AcDbDatabase& database) { return DrawingWriter(database).run(); }

void setThumbnailBitmap(AcDbDatabase& database, std::vector<uint8_t> bitmap) {
    sourceOf(database).setThumbnail(std::move(bitmap));
}

} // namespace vndk::dwg
