#include "db/entity.h"

#include "db/database.h"
#include "db/line_weight.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbEntity, AcDbObject)

AcDbEntity::AcDbEntity(const AcDbEntity& other)
    : AcDbObject(other), layer_(other.layer_), linetype_(other.linetype_), plotStyle_(other.plotStyle_),
      linetypeScale_(other.linetypeScale_),
      proxyGraphics_(other.proxyGraphics_ ? std::make_unique<std::string>(*other.proxyGraphics_) : nullptr),
      color_(other.color_), lineWeight_(other.lineWeight_), visibility_(other.visibility_),
      plotStyleType_(other.plotStyleType_) {}

AcDbEntity& AcDbEntity::operator=(const AcDbEntity& other) {
    AcDbObject::operator=(other);
    layer_ = other.layer_;
    linetype_ = other.linetype_;
    plotStyle_ = other.plotStyle_;
    linetypeScale_ = other.linetypeScale_;
    proxyGraphics_ = other.proxyGraphics_ ? std::make_unique<std::string>(*other.proxyGraphics_) : nullptr;
    color_ = other.color_;
    lineWeight_ = other.lineWeight_;
    visibility_ = other.visibility_;
    plotStyleType_ = other.plotStyleType_;
    return *this;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(short color) {
    if (color < kAcDbColorByBlock || color > kAcDbColorByLayer)
        return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        color_ = color;
    return status;
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId layer) {
    if (layer.isNull())
        return Acad::eNullObjectId;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        layer_ = layer;
    return status;
}

Acad::ErrorStatus AcDbEntity::setLayer(const char* name) {
    AcDbDatabase* const owner = database() ? database() : acdbHostApplicationServices()->workingDatabase();
    if (!owner)
        return Acad::eNoDatabase;
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbLayerTable> table(owner->layerTableId());
    if (!table)
        return table.openStatus();
    const Acad::ErrorStatus status = table->getAt(name, id);
    return status == Acad::eOk ? setLayer(id) : status;
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId linetype) {
    if (linetype.isNull())
        return Acad::eNullObjectId;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        linetype_ = linetype;
    return status;
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double scale) {
    if (!(scale > 0))
        return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        linetypeScale_ = scale;
    return status;
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight weight) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        lineWeight_ = weight;
    return status;
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility visibility) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        visibility_ = visibility;
    return status;
}

Acad::ErrorStatus AcDbEntity::setPlotStyleName(unsigned char type, AcDbObjectId id) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) {
        plotStyleType_ = type;
        plotStyle_ = id;
    }
    return status;
}

Acad::ErrorStatus AcDbEntity::setPropertiesFrom(const AcDbEntity* other, bool /*doSubents*/) {
    if (!other)
        return Acad::eNullObjectPointer;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk)
        return status;
    color_ = other->color_;
    layer_ = other->layer_;
    linetype_ = other->linetype_;
    linetypeScale_ = other->linetypeScale_;
    lineWeight_ = other->lineWeight_;
    plotStyle_ = other->plotStyle_;
    plotStyleType_ = other->plotStyleType_;
    visibility_ = other->visibility_;
    return Acad::eOk;
}

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* database) {
    if (!database || assertWriteEnabled() != Acad::eOk)
        return;
    const auto& header = database->header();
    layer_ = database->clayer();
    color_ = static_cast<short>(header.CECOLOR);
    linetype_ = database->celtype();
    linetypeScale_ = header.CELTSCALE;
    lineWeight_ = acdbCurrentLineWeight(header);
}

void AcDbEntity::fillDatabaseDefaults(AcDbDatabase* database) {
    const CommonData untouched;
    const CommonData given{layer_, linetype_,   plotStyle_,  linetypeScale_,
                           color_, lineWeight_, visibility_, plotStyleType_};
    setDatabaseDefaults(database);
    if (!given.layer.isNull())
        layer_ = given.layer;
    if (!given.linetype.isNull())
        linetype_ = given.linetype;
    if (given.linetypeScale != untouched.linetypeScale)
        linetypeScale_ = given.linetypeScale;
    if (given.color != untouched.color)
        color_ = given.color;
    if (given.lineWeight != untouched.lineWeight)
        lineWeight_ = given.lineWeight;
}

void AcDbEntity::setCommonData(const CommonData& data) {
    layer_ = data.layer;
    linetype_ = data.linetype;
    plotStyle_ = data.plotStyle;
    linetypeScale_ = data.linetypeScale;
    color_ = data.color;
    lineWeight_ = data.lineWeight;
    visibility_ = data.visibility;
    plotStyleType_ = data.plotStyleType;
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents&) const { return Acad::eNullExtents; }

Acad::ErrorStatus AcDbEntity::explode(std::vector<AcDbEntity*>&) const { return Acad::eNotApplicable; }

void AcDbEntity::recordGraphicsModified(bool modified) {
    if (modified)
        assertWriteEnabled();
}

void AcDbEntity::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbObject::visitReferences(visitor);
    visitor.visit(layer_, AcDb::kHardPointer);
    visitor.visit(linetype_, AcDb::kHardPointer);
    visitor.visit(plotStyle_, AcDb::kHardPointer);
}

const std::string& AcDbEntity::proxyGraphics() const {
    static const std::string none;
    return proxyGraphics_ ? *proxyGraphics_ : none;
}

void AcDbEntity::setProxyGraphics(std::string bytes) {
    proxyGraphics_ = bytes.empty() ? nullptr : std::make_unique<std::string>(std::move(bytes));
}
