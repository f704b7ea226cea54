// Single-line text, attributes, attribute definitions and paragraph text.
//
// A text's points are world coordinates in this interface; data() holds them as files do, in object coordinates
// (x and y) with the elevation. Angles are radians. Strings are code page 1252; `char*` results are copies that the
// caller releases with acutDelString, the const std::string& ones are valid while the object is open and unchanged.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

namespace AcDb {

// Files can hold other numbers.
enum TextHorzMode : int { kTextLeft = 0, kTextCenter = 1, kTextRight = 2, kTextAlign = 3, kTextMid = 4, kTextFit = 5 };
enum TextVertMode : int { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };

} // namespace AcDb

/// With left and base mode the text stands at its position; otherwise the alignment point rules.
class AcDbText : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbText)
public:
    AcDbText() = default;
    /// A null style becomes the drawing's current style when the text is appended.
    AcDbText(const AcGePoint3d& position, const char* text, AcDbObjectId style = AcDbObjectId::kNull, double height = 0,
             double rotation = 0);

    AcGePoint3d position() const;
    Acad::ErrorStatus setPosition(const AcGePoint3d& point);
    AcGePoint3d alignmentPoint() const;
    Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
    /// True if the position rules and the alignment point is of no use.
    bool isDefaultAlignment() const { return data_.horizontal == 0 && data_.vertical == 0; }

    char* textString() const;
    const std::string& textValue() const { return data_.text; }
    /// eInvalidInput: null or more than 32,000 bytes.
    Acad::ErrorStatus setTextString(const char* text);
    AcDbObjectId textStyle() const { return data_.style; }
    Acad::ErrorStatus setTextStyle(AcDbObjectId style) { return acdbSetMember(*this, data_.style, style); }
    double height() const { return data_.height; }
    /// eInvalidInput: not positive.
    Acad::ErrorStatus setHeight(double height);
    double rotation() const { return data_.rotation; }
    Acad::ErrorStatus setRotation(double angle) { return acdbSetMember(*this, data_.rotation, angle); }
    double oblique() const { return data_.oblique; }
    Acad::ErrorStatus setOblique(double angle) { return acdbSetMember(*this, data_.oblique, angle); }
    double widthFactor() const { return data_.widthFactor; }
    /// eInvalidInput: not positive.
    Acad::ErrorStatus setWidthFactor(double factor);
    double thickness() const { return data_.thickness; }
    Acad::ErrorStatus setThickness(double thickness) { return acdbSetMember(*this, data_.thickness, thickness); }
    AcGeVector3d normal() const { return data_.normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    /// Backwards.
    bool isMirroredInX() const { return data_.generation & 2; }
    Acad::ErrorStatus mirrorInX(bool mirrored) { return setGeneration(2, mirrored); }
    /// Upside down.
    bool isMirroredInY() const { return data_.generation & 4; }
    Acad::ErrorStatus mirrorInY(bool mirrored) { return setGeneration(4, mirrored); }
    AcDb::TextHorzMode horizontalMode() const { return static_cast<AcDb::TextHorzMode>(data_.horizontal); }
    Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
    AcDb::TextVertMode verticalMode() const { return static_cast<AcDb::TextVertMode>(data_.vertical); }
    Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
    /// Computes the position from the alignment point, with an estimate of the text's width.
    Acad::ErrorStatus adjustAlignment(const AcDbDatabase* database = nullptr);

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    /// The box of the text's frame; its width is estimated from the number of characters.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    /// A text without style gets the drawing's current one.
    void madeResident() override;

    struct Data {
        AcGePoint2d position, alignment; // object coordinates
        double elevation = 0;
        AcGeVector3d normal{0, 0, 1};
        double thickness = 0, oblique = 0, rotation = 0, height = 0.2, widthFactor = 1;
        std::string text;
        AcDbObjectId style;
        unsigned char generation = 0; // 2 backwards, 4 upside down
        unsigned char horizontal = 0, vertical = 0;
        unsigned char fileStored = 0; // bits of the fields that the file stored though they have the usual value
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Acad::ErrorStatus setGeneration(unsigned char bit, bool on);
    Data data_;
};

/// What attributes and their definitions have beyond a text.
struct AcDbAttributeData {
    std::string tag;
    uint16_t fieldLength = 0;
    unsigned char flags = 0; // 1 invisible, 2 constant, 4 verify, 8 preset
};

/// A value of a block reference, owned by it.
class AcDbAttribute : public AcDbText {
    ACDB_DECLARE_MEMBERS(AcDbAttribute)
public:
    AcDbAttribute() = default;
    AcDbAttribute(const AcGePoint3d& position, const char* text, const char* tag,
                  AcDbObjectId style = AcDbObjectId::kNull);

    char* tag() const;
    const std::string& tagValue() const { return attribute_.tag; }
    /// eInvalidInput: null, empty or with a blank.
    Acad::ErrorStatus setTag(const char* tag);
    uint16_t fieldLength() const { return attribute_.fieldLength; }
    Acad::ErrorStatus setFieldLength(uint16_t length) { return acdbSetMember(*this, attribute_.fieldLength, length); }
    bool isInvisible() const { return attribute_.flags & 1; }
    Acad::ErrorStatus setInvisible(bool on) { return setFlag(1, on); }
    bool isConstant() const { return attribute_.flags & 2; }
    bool isVerifiable() const { return attribute_.flags & 4; }
    bool isPreset() const { return attribute_.flags & 8; }
    /// Takes text, style, size, modes and flags from the definition and its points through the block's transform; where
    /// that scales unevenly, height, width factor and oblique angle follow. The caller puts the block's base point into
    /// the transform. eInvalidInput: the transform is singular.
    Acad::ErrorStatus setAttributeFromBlock(const class AcDbAttributeDefinition* definition,
                                            const AcGeMatrix3d& blockTransform);

    const AcDbAttributeData& attributeData() const { return attribute_; }
    void setFileAttributeData(AcDbAttributeData data) { attribute_ = std::move(data); }

private:
    Acad::ErrorStatus setFlag(unsigned char bit, bool on);
    AcDbAttributeData attribute_;
};

/// The pattern for a block's attributes; its text is their default value.
class AcDbAttributeDefinition : public AcDbText {
    ACDB_DECLARE_MEMBERS(AcDbAttributeDefinition)
public:
    AcDbAttributeDefinition() = default;
    AcDbAttributeDefinition(const AcGePoint3d& position, const char* text, const char* tag, const char* prompt,
                            AcDbObjectId style = AcDbObjectId::kNull);

    char* tag() const;
    const std::string& tagValue() const { return attribute_.tag; }
    /// eInvalidInput: null, empty or with a blank.
    Acad::ErrorStatus setTag(const char* tag);
    char* prompt() const;
    const std::string& promptValue() const { return prompt_; }
    Acad::ErrorStatus setPrompt(const char* prompt);
    uint16_t fieldLength() const { return attribute_.fieldLength; }
    Acad::ErrorStatus setFieldLength(uint16_t length) { return acdbSetMember(*this, attribute_.fieldLength, length); }
    bool isInvisible() const { return attribute_.flags & 1; }
    Acad::ErrorStatus setInvisible(bool on) { return setFlag(1, on); }
    bool isConstant() const { return attribute_.flags & 2; }
    Acad::ErrorStatus setConstant(bool on) { return setFlag(2, on); }
    bool isVerifiable() const { return attribute_.flags & 4; }
    Acad::ErrorStatus setVerifiable(bool on) { return setFlag(4, on); }
    bool isPreset() const { return attribute_.flags & 8; }
    Acad::ErrorStatus setPreset(bool on) { return setFlag(8, on); }

    const AcDbAttributeData& attributeData() const { return attribute_; }
    void setFileAttributeData(AcDbAttributeData data, std::string prompt) {
        attribute_ = std::move(data);
        prompt_ = std::move(prompt);
    }

private:
    Acad::ErrorStatus setFlag(unsigned char bit, bool on);
    AcDbAttributeData attribute_;
    std::string prompt_;
};

/// A paragraph; contents() has the format codes.
class AcDbMText : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbMText)
public:
    /// World coordinates: the point of the frame that attachment() names.
    AcGePoint3d location() const { return data_.location; }
    Acad::ErrorStatus setLocation(const AcGePoint3d& point) { return acdbSetMember(*this, data_.location, point); }
    AcGeVector3d normal() const { return data_.normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    AcGeVector3d direction() const { return data_.direction; }
    Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
    /// The angle of the direction in the object coordinate system.
    double rotation() const;
    Acad::ErrorStatus setRotation(double angle);
    /// Where lines are broken; 0 never.
    double width() const { return data_.width; }
    Acad::ErrorStatus setWidth(double width) { return acdbSetMember(*this, data_.width, width); }
    double textHeight() const { return data_.height; }
    /// eInvalidInput: not positive.
    Acad::ErrorStatus setTextHeight(double height);
    /// 1 top left, 2 top centre, 3 top right, 4 to 6 middle, 7 to 9 bottom.
    int attachment() const { return data_.attachment; }
    /// eInvalidInput: not 1 to 9.
    Acad::ErrorStatus setAttachment(int attachment);
    AcDbObjectId textStyle() const { return data_.style; }
    Acad::ErrorStatus setTextStyle(AcDbObjectId style) { return acdbSetMember(*this, data_.style, style); }
    char* contents() const;
    const std::string& contentsValue() const { return data_.contents; }
    Acad::ErrorStatus setContents(const char* text);
    /// The size of the text as its last program measured it.
    double actualHeight() const { return data_.extentsHeight; }
    double actualWidth() const { return data_.extentsWidth; }

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    /// A text for each line. eNotApplicable: the contents are formatted, or lines are broken where only a program that
    /// has the font can tell.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    /// A text without style gets the drawing's current one.
    void madeResident() override;

    struct Data {
        AcGePoint3d location;
        AcGeVector3d normal{0, 0, 1};
        AcGeVector3d direction{1, 0, 0};
        double width = 0, height = 0.2;
        uint16_t attachment = 1, flowDirection = 1;
        double extentsHeight = 0, extentsWidth = 0;
        std::string contents;
        uint16_t lineSpacingStyle = 1;
        double lineSpacingFactor = 1;
        bool unknownBit = false;
        AcDbObjectId style;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Data data_;
};
