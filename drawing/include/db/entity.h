// AcDbEntity: the base of everything that is drawn.
//
// Colours are ACI indices: 0 ByBlock, 1 to 255, 256 ByLayer. Lineweights are hundredths of a millimetre or
// one of the special values below. Coordinates are world coordinates unless a class says otherwise; planar
// entities (circle, text, insert ...) have a normal, and what their headers call OCS is the object coordinate
// system of that normal.
#pragma once

#include "db/object.h"
#include "ge/extents.h"

namespace AcDb {

enum LineWeight : short { kLnWtByLayer = -1, kLnWtByBlock = -2, kLnWtByLwDefault = -3, kLnWt000 = 0 };
enum Visibility : unsigned char { kVisible = 0, kInvisible = 1 };

} // namespace AcDb

inline constexpr short kAcDbColorByBlock = 0;
inline constexpr short kAcDbColorByLayer = 256;

class AcDbEntity : public AcDbObject {
    ACRX_DECLARE_MEMBERS(AcDbEntity)
public:
    /// The block table record (or the complex entity) that holds this entity.
    AcDbObjectId blockId() const { return ownerId(); }

    short colorIndex() const { return color_; }
    /// eInvalidInput: not 0 to 256.
    Acad::ErrorStatus setColorIndex(short color);
    AcDbObjectId layerId() const { return layer_; }
    Acad::ErrorStatus setLayer(AcDbObjectId layer);
    /// eKeyNotFound: no such layer in the entity's (or the working) database.
    Acad::ErrorStatus setLayer(const char* name);
    AcDbObjectId linetypeId() const { return linetype_; }
    Acad::ErrorStatus setLinetype(AcDbObjectId linetype);
    double linetypeScale() const { return linetypeScale_; }
    Acad::ErrorStatus setLinetypeScale(double scale);
    AcDb::LineWeight lineWeight() const { return lineWeight_; }
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);
    AcDb::Visibility visibility() const { return visibility_; }
    Acad::ErrorStatus setVisibility(AcDb::Visibility visibility);
    AcDbObjectId plotStyleNameId() const { return plotStyle_; }
    /// How the plot style is given: 0 ByLayer, 1 ByBlock, 2 default, 3 by plotStyleNameId.
    unsigned char plotStyleNameType() const { return plotStyleType_; }
    Acad::ErrorStatus setPlotStyleName(unsigned char type, AcDbObjectId id);

    /// Takes colour, layer, linetype and its scale, lineweight, plot style and visibility from `other`.
    Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* other, bool doSubents = true);
    /// Layer, colour, linetype, linetype scale and lineweight that new entities of that database get.
    void setDatabaseDefaults(AcDbDatabase* database);
    /// The same for what nobody has set yet.
    void fillDatabaseDefaults(AcDbDatabase* database);

    /// Moves, turns, scales. eCannotScaleNonUniformly: this kind of entity can't be scaled unevenly.
    virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);
    /// The box around the entity in world coordinates. eNullExtents: it has none (an endless line, an empty block).
    virtual Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;
    /// Replaces the entity by simpler ones, owned by the caller. eNotApplicable: it can't be exploded.
    virtual Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const;
    /// Tells the display that the entity looks different now.
    void recordGraphicsModified(bool modified = true);

    void visitReferences(AcDbReferenceVisitor& visitor) override;

    /// The common data as a file keeps them, set while decoding.
    struct CommonData {
        AcDbObjectId layer, linetype, plotStyle;
        double linetypeScale = 1;
        short color = kAcDbColorByLayer;
        AcDb::LineWeight lineWeight = AcDb::kLnWtByLayer;
        AcDb::Visibility visibility = AcDb::kVisible;
        unsigned char plotStyleType = 0;
    };
    void setCommonData(const CommonData& data);
    /// The picture that a file holds for programs that don't know the class; empty for most. Kept as it is.
    const std::string& proxyGraphics() const;
    void setProxyGraphics(std::string bytes);

protected:
    AcDbEntity() = default;
    AcDbEntity(const AcDbEntity&);
    AcDbEntity& operator=(const AcDbEntity&);

private:
    AcDbObjectId layer_;
    AcDbObjectId linetype_;
    AcDbObjectId plotStyle_;
    double linetypeScale_ = 1;
    std::unique_ptr<std::string> proxyGraphics_;
    short color_ = kAcDbColorByLayer;
    AcDb::LineWeight lineWeight_ = AcDb::kLnWtByLayer;
    AcDb::Visibility visibility_ = AcDb::kVisible;
    unsigned char plotStyleType_ = 0;
};
