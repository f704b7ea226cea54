// The properties that drawn things have: what a drawable sets before it draws.
#pragma once

#include "db/entity.h"

#include <cstdint>

/// A colour in four bytes: blue (or the ACI index), green, red, and how it is given.
struct AcCmEntityColor {
    enum ColorMethod : uint8_t { kByLayer = 192, kByBlock = 193, kByColor = 194, kByACI = 195 };
    uint32_t value = uint32_t{kByLayer} << 24;

    AcCmEntityColor() = default;
    explicit AcCmEntityColor(uint32_t fourBytes) : value(fourBytes) {}
    static AcCmEntityColor trueColor(uint8_t red, uint8_t green, uint8_t blue) {
        return AcCmEntityColor(uint32_t{kByColor} << 24 | uint32_t{red} << 16 | uint32_t{green} << 8 | blue);
    }
    /// 0 ByBlock, 1 to 255, 256 ByLayer; another index is ByLayer.
    static AcCmEntityColor index(int aci) {
        if (aci > 0 && aci < kAcDbColorByLayer)
            return AcCmEntityColor(uint32_t{kByACI} << 24 | static_cast<uint32_t>(aci));
        return AcCmEntityColor(uint32_t{aci == kAcDbColorByBlock ? kByBlock : kByLayer} << 24);
    }
    ColorMethod colorMethod() const { return static_cast<ColorMethod>(value >> 24); }
    /// Meaningful with kByACI.
    int colorIndex() const { return static_cast<int>(value & 0xFF); }
    /// 0xRRGGBB; meaningful with kByColor.
    uint32_t rgb() const { return value & 0xFFFFFF; }
    bool operator==(const AcCmEntityColor&) const = default;
};

/// What is drawn next has the properties set last.
class AcGiSubEntityTraits {
public:
    virtual ~AcGiSubEntityTraits() = default;
    void setColor(int aci) { setTrueColor(AcCmEntityColor::index(aci)); }
    virtual void setTrueColor(const AcCmEntityColor& color) = 0;
    virtual void setLayer(AcDbObjectId layer) = 0;
    virtual void setLineType(AcDbObjectId linetype) = 0;
    virtual void setLineTypeScale(double scale) = 0;
    virtual void setLineWeight(AcDb::LineWeight weight) = 0;
    /// All of them, as an entity has them.
    virtual void setTraitsOf(const AcDbEntity& entity) {
        setColor(entity.colorIndex());
        setLayer(entity.layerId());
        setLineType(entity.linetypeId());
        setLineTypeScale(entity.linetypeScale());
        setLineWeight(entity.lineWeight());
    }
};

/// The same, where a drawable gives the properties that it begins with.
class AcGiDrawableTraits : public AcGiSubEntityTraits {};
