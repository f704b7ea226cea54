// Turning what the copies refer to, once everything that is needed has been copied.
#include "db/block_reference.h"
#include "db/clone_run.h"
#include "db/leader.h"
#include "db/opaque.h"
#include "db/stub.h"
#include "db/xdata.h"
#include "dwg/xrecord_handles.h"

#include <algorithm>

/// Turns the references of one copy.
class AcDbTranslator : public AcDbReferenceVisitor {
public:
    explicit AcDbTranslator(AcDbCloneRun& run) : run_(run) {}
    void visit(AcDbObjectId& id, AcDb::ReferenceKind kind) override {
        if (id.isNull())
            return;
        if (const AcDbObjectId copy = run_.mapping_.lookUp(id); !copy.isNull()) {
            id = copy;
        } else if (id.database() != &run_.to_) {
            run_.lostReference_ = run_.lostReference_ || (kind != AcDb::kSoftPointer && !id.isErased());
            id.setNull();
        }
    }

private:
    AcDbCloneRun& run_;
};

namespace {

AcDbObjectId layerZero(const AcDbDatabase& database) {
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbLayerTable> layers(database.layerTableId());
    if (layers)
        layers->getAt("0", id);
    return id;
}

/// Copies that nobody has seen yet are changed without telling anybody.
void setLayerRaw(AcDbEntity& entity, AcDbObjectId layer) {
    AcDbEntity::CommonData data;
    data.layer = layer;
    data.linetype = entity.linetypeId();
    data.plotStyle = entity.plotStyleNameId();
    data.linetypeScale = entity.linetypeScale();
    data.color = entity.colorIndex();
    data.lineWeight = entity.lineWeight();
    data.visibility = entity.visibility();
    data.plotStyleType = entity.plotStyleNameType();
    entity.setCommonData(data);
}

AcDbObjectId annotationOf(const AcDbObject& object) {
    const auto* const leader = AcDbLeader::cast(&object);
    return leader ? leader->annotationObjId() : AcDbObjectId();
}

/// What a leader's original says stays with the original, unless it was copied too.
void dropAnnotation(AcDbObject& copy) {
    auto& leader = static_cast<AcDbLeader&>(copy);
    AcDbLeader::Data data = leader.data();
    data.annotation.setNull();
    data.annotationType = AcDbLeader::kNoAnno;
    leader.setFileData(std::move(data));
}

} // namespace

void AcDbCloneRun::translate() {
    AcDbTranslator translator(*this);
    for (const AcDbObjectId id : created_) {
        // The owner was set when the copy became resident: it names the destination's already.
        AcDbObject* const copy = id.stub()->object;
        lostReference_ = false;
        const AcDbObjectId annotation = annotationOf(*copy);
        copy->visitReferences(translator);
        if (!annotation.isNull() && (annotationOf(*copy).isNull() || annotationOf(*copy) == annotation))
            dropAnnotation(*copy);
        if (!betweenDrawings())
            continue;
        tidy(*copy);
        if (auto* const reference = AcDbBlockReference::cast(copy)) {
            savepoint_.touch(reference->blockTableRecord());
            reference->tellBlock();
        }
    }
}

/// What translation leaves in another drawing.
void AcDbCloneRun::tidy(AcDbObject& copy) {
    copy.dropLostReferences();
    translateXData(copy);
    translateOpaque(copy);
    if (auto* const entity = AcDbEntity::cast(&copy); entity && entity->layerId().isNull())
        setLayerRaw(*entity, layerZero(to_));
    if (auto* const dictionary = AcDbDictionary::cast(&copy)) {
        AcDbDictionary::FileData data = dictionary->fileData();
        std::erase_if(data.entries, [](const AcDbDictionary::Entry& entry) { return entry.id.isNull(); });
        dictionary->setFileData(std::move(data));
    }
}

uint64_t AcDbCloneRun::translatedHandle(uint64_t handle) const {
    return mapping_.lookUp(from_.idOf(handle)).handle().value();
}

void AcDbCloneRun::translateXData(AcDbObject& copy) {
    if (!copy.packedXData())
        return;
    for (AcDbXDataGroup& group : copy.packedXDataForWrite()->groups) {
        const std::string former = group.items;
        AcDbXDataReader reader(former);
        AcDbXDataItem item;
        while (reader.next(item)) {
            if (item.code != 3 && item.code != 5)
                continue;
            std::string turned;
            AcDbXDataWriter(turned).handle(AcDbHandle(translatedHandle(item.handle.value())));
            const size_t bytes = turned.size() - 1; // behind the code
            group.items.replace(reader.position() - bytes, bytes, turned, 1, bytes);
        }
    }
}

void AcDbCloneRun::translateOpaque(AcDbObject& copy) {
    const auto turn = [this](auto* opaque) {
        AcDbOpaqueFields fields = opaque->fields();
        translateFields(fields);
        opaque->setFields(std::move(fields));
    };
    if (auto* const object = AcDbOpaqueObject::cast(&copy))
        turn(object);
    else if (auto* const entity = AcDbOpaqueEntity::cast(&copy))
        turn(entity);
    else if (auto* const record = AcDbOpaqueTableRecord::cast(&copy))
        turn(record);
    else
        return;
    if (!lostReference_)
        return;
    char handle[17];
    copy.objectId().handle().getIntoAsciiBuffer(handle);
    warnings_.push_back(std::string("Object ") + handle + " (" + copy.dxfName() +
                        ") came in without something of the other drawing that it refers to.");
}

void AcDbCloneRun::translateFields(AcDbOpaqueFields& fields) {
    // Handles that named nothing in the other drawing would name something here.
    for (AcDbOpaqueFields::Reference& reference : fields.references)
        reference.danglingHandle = 0;
    if (vndk::dwg::isXrecord(fields))
        vndk::dwg::turnXrecordHandles(fields, [this](uint64_t handle) { return translatedHandle(handle); });
}
