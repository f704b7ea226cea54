#include "db/clone_run.h"

#include "db/block_ends.h"
#include "db/block_reference.h"
#include "db/polylines.h"
#include "db/stub.h"

#include <functional>

/// Turns the references of one copy.
class AcDbTranslator : public AcDbReferenceVisitor {
public:
    explicit AcDbTranslator(AcDbCloneRun& run) : run_(run) {}
    void visit(AcDbObjectId& id, AcDb::ReferenceKind) override {
        if (id.isNull())
            return;
        if (const AcDbObjectId copy = run_.mapping_.lookUp(id); !copy.isNull())
            id = copy;
        else if (id.database() != &run_.to_)
            id = run_.counterpart(id);
    }

private:
    AcDbCloneRun& run_;
};

namespace {

/// Collects what an object owns.
class OwnedCollector : public AcDbReferenceVisitor {
public:
    void visit(AcDbObjectId& id, AcDb::ReferenceKind kind) override {
        if ((kind == AcDb::kHardOwner || kind == AcDb::kSoftOwner) && !id.isNull() && !id.isErased())
            owned.push_back(id);
    }
    std::vector<AcDbObjectId> owned;
};

AcDbObject* residentObject(AcDbObjectId id) {
    return id.isNull() ? nullptr : id.database()->objectOf(*id.stub());
}

AcDbSubentities* subentitiesOf(AcDbObject& object) {
    if (auto* const reference = AcDbBlockReference::cast(&object))
        return &reference->subentities();
    if (auto* const polyline = AcDbVertexOwner::cast(&object))
        return &polyline->subentities();
    return nullptr;
}

/// Made anew with their owner, never copied.
bool comesWithOwner(const AcDbObject& object) {
    return object.isKindOf(AcDbSequenceEnd::desc()) || object.isKindOf(AcDbBlockBegin::desc()) ||
           object.isKindOf(AcDbBlockEnd::desc());
}

} // namespace

void AcDbCloneRun::remember(AcDbObject& source, AcDbObject& copy) {
    mapping_.assign(source.objectId(), copy.objectId());
    untranslated_.push_back(copy.objectId());
    created_.push_back(copy.objectId());
}

Acad::ErrorStatus AcDbCloneRun::cloneEntities(const std::vector<AcDbObjectId>& entities,
                                              AcDbBlockTableRecord& target) {
    for (const AcDbObjectId id : entities) {
        if (id.isErased() || !mapping_.lookUp(id).isNull())
            continue;
        if (const Acad::ErrorStatus status = cloneEntity(id, target); status != Acad::eOk)
            return status;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCloneRun::cloneEntity(AcDbObjectId source, AcDbBlockTableRecord& target) {
    AcDbObject* const original = residentObject(source);
    if (!original || !original->isKindOf(AcDbEntity::desc()))
        return Acad::eNotThatKindOfClass;
    auto* const copy = static_cast<AcDbEntity*>(original->copyData());
    AcDbObjectId id;
    if (const Acad::ErrorStatus status = target.appendAcDbEntity(id, copy); status != Acad::eOk) {
        delete copy;
        return status;
    }
    remember(*original, *copy);
    const Acad::ErrorStatus status = cloneOwned(*original, *copy, &target);
    copy->close();
    return status;
}

/// What `source` owns follows it: parts of its own under the copy, entities beside it into the same block.
Acad::ErrorStatus AcDbCloneRun::cloneOwned(AcDbObject& source, AcDbObject& copy, AcDbBlockTableRecord* target) {
    OwnedCollector collector;
    source.visitReferences(collector);
    for (const AcDbObjectId id : collector.owned) {
        AcDbObject* const child = residentObject(id);
        if (!child || comesWithOwner(*child) || !mapping_.lookUp(id).isNull())
            continue;
        Acad::ErrorStatus status = Acad::eOk;
        if (child->ownerId() == source.objectId())
            status = cloneChild(id, copy);
        else if (target && child->ownerId() == source.ownerId())
            status = cloneEntity(id, *target);
        if (status != Acad::eOk)
            return status;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCloneRun::cloneChild(AcDbObjectId child, AcDbObject& copy) {
    AcDbObject* const original = residentObject(child);
    AcDbObject* const childCopy = original->copyData();
    AcDbSubentities* const parts = subentitiesOf(copy);
    AcDbObjectId id;
    const bool isPart = parts && original->isKindOf(AcDbEntity::desc());
    const Acad::ErrorStatus status = isPart ? parts->append(copy, id, static_cast<AcDbEntity*>(childCopy))
                                            : to_.addAcDbObject(id, childCopy, copy.objectId());
    if (status != Acad::eOk) {
        delete childCopy;
        return status;
    }
    remember(*original, *childCopy);
    const Acad::ErrorStatus owned = cloneOwned(*original, *childCopy, nullptr);
    childCopy->close();
    return owned;
}

Acad::ErrorStatus AcDbCloneRun::cloneBlockContents(AcDbObjectId source, AcDbObjectId copy) {
    const auto* const original = AcDbBlockTableRecord::cast(residentObject(source));
    const AcDbObjectPointer<AcDbBlockTableRecord> target(copy, AcDb::kForWrite);
    if (!original || !target)
        return Acad::eNotThatKindOfClass;
    return cloneEntities(original->entities(), *target);
}

Acad::ErrorStatus AcDbCloneRun::translate() {
    AcDbTranslator translator(*this);
    while (failure_ == Acad::eOk && (!untranslated_.empty() || !blocks_.empty())) {
        if (untranslated_.empty()) {
            const auto [source, copy] = blocks_.front();
            blocks_.pop_front();
            failure_ = cloneBlockContents(source, copy);
            continue;
        }
        AcDbObject* const copy = residentObject(untranslated_.front());
        untranslated_.pop_front();
        // The owner was set when the copy became resident: it names the destination's already.
        copy->visitReferences(translator);
        if (auto* const reference = AcDbBlockReference::cast(copy); reference && &from_ != &to_)
            reference->tellBlock();
    }
    return failure_;
}

AcDbObjectId AcDbCloneRun::counterpart(AcDbObjectId foreign) {
    if (foreign.database() != &from_ || foreign.isErased())
        return {};
    if (foreign == forbidden_) {
        failure_ = Acad::eSelfReference;
        return {};
    }
    AcDbObject* const object = residentObject(foreign);
    if (auto* const record = AcDbSymbolTableRecord::cast(object))
        return counterpartRecord(*record);
    if (auto* const dictionary = AcDbDictionary::cast(residentObject(object ? object->ownerId() : AcDbObjectId())))
        return counterpartInDictionary(*object, *dictionary);
    return counterpartTable(foreign);
}

AcDbObjectId AcDbCloneRun::counterpartTable(AcDbObjectId table) const {
    const std::pair<AcDbObjectId, AcDbObjectId> tables[] = {
        {from_.blockTableId(), to_.blockTableId()},         {from_.layerTableId(), to_.layerTableId()},
        {from_.textStyleTableId(), to_.textStyleTableId()}, {from_.linetypeTableId(), to_.linetypeTableId()},
        {from_.viewTableId(), to_.viewTableId()},           {from_.UCSTableId(), to_.UCSTableId()},
        {from_.viewportTableId(), to_.viewportTableId()},   {from_.regAppTableId(), to_.regAppTableId()},
        {from_.dimStyleTableId(), to_.dimStyleTableId()},   {from_.namedObjectsDictionaryId(),
                                                             to_.namedObjectsDictionaryId()}};
    for (const auto& [source, destination] : tables)
        if (source == table)
            return destination;
    return {};
}

std::string AcDbCloneRun::freeAnonymousName(const std::string& name, const AcDbSymbolTable& table) const {
    const std::string stem = name.substr(0, name.find_last_not_of("0123456789") + 1);
    for (size_t number = table.records().size();; ++number) {
        std::string candidate = stem + std::to_string(number);
        if (!table.has(candidate.c_str()))
            return candidate;
    }
}

AcDbObjectId AcDbCloneRun::counterpartRecord(AcDbSymbolTableRecord& record) {
    const AcDbObjectPointer<AcDbSymbolTable> table(counterpartTable(record.ownerId()), AcDb::kForWrite);
    const auto* const block = AcDbBlockTableRecord::cast(&record);
    if (!table || (block && block->isLayout()))
        return {};
    const bool anonymous = block && record.name().starts_with('*');
    AcDbObjectId id;
    if (!anonymous && table->getAt(record.name().c_str(), id) == Acad::eOk) {
        mapping_.assign(record.objectId(), id);
        return id;
    }
    auto* const copy = static_cast<AcDbSymbolTableRecord*>(record.copyData());
    if (anonymous)
        copy->setFromFile(freeAnonymousName(record.name(), *table), false, record.fileFlags());
    if (auto* const blockCopy = AcDbBlockTableRecord::cast(copy))
        blockCopy->dropFileParts();
    failure_ = table->add(id, copy);
    if (failure_ != Acad::eOk) {
        delete copy;
        return {};
    }
    copy->close();
    remember(record, *copy);
    if (block)
        blocks_.emplace_back(record.objectId(), id);
    return id;
}

AcDbObjectId AcDbCloneRun::counterpartInDictionary(AcDbObject& object, AcDbDictionary& dictionary) {
    // Only members of dictionaries that the named objects dictionary holds have a name in another drawing.
    const auto nameIn = [](AcDbObjectId holder, AcDbObjectId member) -> std::string {
        const auto* const entries = AcDbDictionary::cast(residentObject(holder));
        if (entries)
            for (const AcDbDictionary::Entry& entry : entries->entries())
                if (entry.id == member)
                    return entry.name;
        return {};
    };
    const std::string folder = nameIn(from_.namedObjectsDictionaryId(), dictionary.objectId());
    const std::string key = nameIn(dictionary.objectId(), object.objectId());
    const auto* const root = AcDbDictionary::cast(residentObject(to_.namedObjectsDictionaryId()));
    AcDbObjectId folderId;
    if (folder.empty() || key.empty() || !root || root->getAt(folder.c_str(), folderId) != Acad::eOk)
        return {};
    const AcDbObjectPointer<AcDbDictionary> target(folderId, AcDb::kForWrite);
    if (!target)
        return {};
    AcDbObjectId id;
    if (target->getAt(key.c_str(), id) == Acad::eOk) {
        mapping_.assign(object.objectId(), id);
        return id;
    }
    AcDbObject* const copy = object.copyData();
    failure_ = target->setAt(key.c_str(), copy, id);
    if (failure_ != Acad::eOk) {
        delete copy;
        return {};
    }
    remember(object, *copy);
    copy->close();
    return id;
}

void AcDbCloneRun::rollBack() {
    for (auto id = created_.rbegin(); id != created_.rend(); ++id)
        if (const AcDbObjectPointer<AcDbObject> copy(*id, AcDb::kForWrite); copy)
            copy->erase();
}
