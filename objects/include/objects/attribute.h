// VNDKAttribute: an attribute of an Intelligent Block.
//
// It is a text that stands beside its reference in the same space, not inside it, and is tied to it by the
// reference's hard-ownership id (objects/block_reference.h). Text, position, height and modes are those of
// AcDbText; the rest, and the formulas that the value drives, is here. Coordinates are world coordinates.
//
// Setters need the object open for write or temporary; they return eNotOpenForWrite otherwise.
#pragma once

#include "db/stand_in.h"
#include "db/text.h"
#include "objects/cond_formula.h"
#include "objects/library.h"

class VNDKAttribute : public AcDbText, public AcDbStandIn {
    ACDB_DECLARE_MEMBERS(VNDKAttribute)
public:
    /// Longest default value and longest text that formulas work on, in characters: what a file can hold of both.
    static constexpr size_t kMaxValueLength = 4000;

    VNDKAttribute() = default;

    /// A copy, released by the caller with acutDelString.
    char* tag() const;
    const std::string& tagValue() const { return tag_; }
    /// eOutOfRange: more than 255 characters.
    Acad::ErrorStatus setTag(const char* tag);
    /// A copy, released by the caller with acutDelString.
    char* defaultValue() const;
    const std::string& defaultText() const { return defaultValue_; }
    /// eOutOfRange: more than kMaxValueLength characters.
    Acad::ErrorStatus setDefaultValue(const char* value);

    // Modes; any number but 0 is on.
    int isInvisible() const { return mode(kInvisibleMode); }
    /// An invisible attribute is an invisible entity, so that no program shows it.
    Acad::ErrorStatus setInvisible(int on);
    int isConstant() const { return mode(kConstantMode); }
    Acad::ErrorStatus setConstant(int on) { return setMode(kConstantMode, on); }
    int isVerifiable() const { return mode(kVerifyMode); }
    Acad::ErrorStatus setVerifiable(int on) { return setMode(kVerifyMode, on); }
    int isPreset() const { return mode(kPresetMode); }
    Acad::ErrorStatus setPreset(int on) { return setMode(kPresetMode, on); }

    double fieldLength() const { return fieldLength_; }
    Acad::ErrorStatus setFieldLength(double length);
    /// The attribute definition that this attribute was made from.
    AcDbSoftPointerId definitionId() const { return definition_; }
    Acad::ErrorStatus setDefinitionId(AcDbSoftPointerId definition);

    // Stretching by formulas.
    AcGePoint3d conditionalPoint1() const { return conditions_ ? conditions_->point1 : AcGePoint3d(); }
    Acad::ErrorStatus setConditionalPoint1(AcGePoint3d point);
    AcGePoint3d conditionalPoint2() const { return conditions_ ? conditions_->point2 : AcGePoint3d(); }
    Acad::ErrorStatus setConditionalPoint2(AcGePoint3d point);
    /// Takes ownership, also when it fails. eNullObjectPointer; eOutOfRange: see CCondFormulaList::kMaxTotal.
    Acad::ErrorStatus AddFormula(CCondFormula* formula);
    const CCondFormulaList::Node* formulas() const { return conditions_ ? conditions_->formulas.head() : nullptr; }
    /// What `value` means in a formula: the text, or what the text was before a formula replaced it.
    const std::string& value() const;

    /// Evaluates the formulas in their order and applies each result: moves the attribute between its conditional
    /// points, sets width factor or height, replaces the text. To be called when the text has its value; calling it
    /// again without a new value changes nothing. Every formula gets its chance; the first failure is returned:
    /// eInvalidInput also for a width or height that isn't above zero, eOutOfRange for a text that is too long.
    Acad::ErrorStatus CheckFormulaForStretch();

    /// Takes the conditional points along.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    void writeStandIn(AcDbXDataWriter& writer) const override;
    bool readStandIn(AcDbXDataReader& reader, AcDbDatabase& database) override;

private:
    enum Mode : unsigned char { kInvisibleMode = 1, kConstantMode = 2, kVerifyMode = 4, kPresetMode = 8 };

    // Few attributes have these; the others pay one pointer.
    struct Conditions {
        AcGePoint3d point1, point2;
        CCondFormulaList formulas;
        std::string entered;   // the value, while the text is `shown`
        std::string shown;     // what a text formula made of it
        bool replaced = false; // `entered` and `shown` are in use
    };
    class ConditionsPointer {
    public:
        ConditionsPointer() = default;
        ConditionsPointer(const ConditionsPointer& other);
        ConditionsPointer& operator=(const ConditionsPointer& other);
        explicit operator bool() const { return held_ != nullptr; }
        Conditions* operator->() const { return held_.get(); }
        Conditions& make();

    private:
        std::unique_ptr<Conditions> held_;
    };

    int mode(Mode which) const { return (modes_ & which) != 0; }
    Acad::ErrorStatus setMode(Mode which, int on);
    Acad::ErrorStatus apply(const CCondFormula& formula, const CCondValue& result, const std::string& value);
    Acad::ErrorStatus stretchTo(double part);
    Acad::ErrorStatus showInstead(const std::string& text, const std::string& value);

    std::string tag_;
    std::string defaultValue_;
    AcDbObjectId definition_;
    double fieldLength_ = 0;
    ConditionsPointer conditions_;
    unsigned char modes_ = 0;
    [[no_unique_address]] vndk::objects::LiveObject live_;
};
