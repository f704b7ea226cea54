#include "objects/attribute.h"

#include "src/siblings.h"
#include "src/xdata_form.h"

#include <algorithm>

using vndk::objects::FormReader;
using vndk::objects::FormWriter;

ACDB_DXF_DEFINE_MEMBERS(VNDKAttribute, AcDbText, "VNDKATTRIBUTE", "VNDKObjectsDbx")

namespace {

constexpr short kFormVersion = 1;
constexpr size_t kMaxTagLength = 255;

Acad::ErrorStatus setBoundedText(AcDbObject& object, std::string& member, const char* text, size_t most) {
    const std::string_view value = text ? text : "";
    if (value.size() > most)
        return Acad::eOutOfRange;
    return acdbSetMember(object, member, value);
}

} // namespace

VNDKAttribute::ConditionsPointer::ConditionsPointer(const ConditionsPointer& other)
    : held_(other.held_ ? std::make_unique<Conditions>(*other.held_) : nullptr) {}

VNDKAttribute::ConditionsPointer& VNDKAttribute::ConditionsPointer::operator=(const ConditionsPointer& other) {
    if (this != &other)
        held_ = other.held_ ? std::make_unique<Conditions>(*other.held_) : nullptr;
    return *this;
}

VNDKAttribute::Conditions& VNDKAttribute::ConditionsPointer::make() {
    if (!held_)
        held_ = std::make_unique<Conditions>();
    return *held_;
}

char* VNDKAttribute::tag() const { return acutNewString(tag_); }

Acad::ErrorStatus VNDKAttribute::setTag(const char* tag) { return setBoundedText(*this, tag_, tag, kMaxTagLength); }

char* VNDKAttribute::defaultValue() const { return acutNewString(defaultValue_); }

Acad::ErrorStatus VNDKAttribute::setDefaultValue(const char* value) {
    return setBoundedText(*this, defaultValue_, value, kMaxValueLength);
}

Acad::ErrorStatus VNDKAttribute::setInvisible(int on) {
    const bool wasOn = isInvisible() != 0;
    const Acad::ErrorStatus status = setMode(kInvisibleMode, on);
    // An entity that was hidden for another reason stays so when the mode is set off again.
    if (status == Acad::eOk && wasOn != (on != 0))
        setVisibility(on ? AcDb::kInvisible : AcDb::kVisible);
    return status;
}

Acad::ErrorStatus VNDKAttribute::setMode(Mode which, int on) {
    return acdbSetMember(*this, modes_, static_cast<unsigned char>(on ? modes_ | which : modes_ & ~which));
}

Acad::ErrorStatus VNDKAttribute::setFieldLength(double length) { return acdbSetMember(*this, fieldLength_, length); }

Acad::ErrorStatus VNDKAttribute::setDefinitionId(AcDbSoftPointerId definition) {
    return acdbSetMember(*this, definition_, definition);
}

Acad::ErrorStatus VNDKAttribute::setConditionalPoint1(AcGePoint3d point) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        conditions_.make().point1 = point;
    return status;
}

Acad::ErrorStatus VNDKAttribute::setConditionalPoint2(AcGePoint3d point) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        conditions_.make().point2 = point;
    return status;
}

Acad::ErrorStatus VNDKAttribute::AddFormula(CCondFormula* formula) {
    std::unique_ptr<CCondFormula> held(formula);
    const Acad::ErrorStatus status = assertWriteEnabled();
    return status == Acad::eOk ? conditions_.make().formulas.append(held.release()) : status;
}

const std::string& VNDKAttribute::value() const {
    // A text that somebody has set since the formula ran is a new value.
    const bool replaced = conditions_ && conditions_->replaced && conditions_->shown == textValue();
    return replaced ? conditions_->entered : textValue();
}

Acad::ErrorStatus VNDKAttribute::CheckFormulaForStretch() {
    if (!formulas())
        return Acad::eOk;
    Acad::ErrorStatus result = assertWriteEnabled();
    if (result != Acad::eOk)
        return result;
    const std::string entered = value();
    const CCondFormula::Lookup lookup = [&](std::string_view tag, std::string& text) {
        if (!tag.empty() && acdbFoldName(tag) != acdbFoldName(tag_))
            return vndk::objects::findSiblingValue(*this, tag, text);
        text = entered;
        return true;
    };
    for (const CCondFormulaList::Node* node = formulas(); node; node = node->next) {
        CCondValue outcome;
        Acad::ErrorStatus status = node->formula->evaluate(lookup, outcome);
        if (status == Acad::eOk)
            status = apply(*node->formula, outcome, entered);
        if (result == Acad::eOk)
            result = status;
    }
    return result;
}

Acad::ErrorStatus VNDKAttribute::apply(const CCondFormula& formula, const CCondValue& result,
                                       const std::string& value) {
    if (formula.target() == CCondFormula::kText)
        return showInstead(result.text, value);
    if (!result.isNumber)
        return Acad::eInvalidInput;
    switch (formula.target()) {
    case CCondFormula::kStretch:
        return stretchTo(std::clamp(result.number, 0.0, 1.0));
    case CCondFormula::kWidth:
        return setWidthFactor(result.number);
    default:
        return setHeight(result.number);
    }
}

/// `part` of the way from conditional point 1 to 2. The point that rules where the text stands goes there, the other
/// one keeps its distance from it.
Acad::ErrorStatus VNDKAttribute::stretchTo(double part) {
    const AcGePoint3d from = isDefaultAlignment() ? position() : alignmentPoint();
    const AcGePoint3d to = conditions_->point1 + (conditions_->point2 - conditions_->point1) * part;
    const AcGeVector3d way = to - from;
    const Acad::ErrorStatus status = setPosition(position() + way);
    return status == Acad::eOk ? setAlignmentPoint(alignmentPoint() + way) : status;
}

Acad::ErrorStatus VNDKAttribute::showInstead(const std::string& text, const std::string& value) {
    if (text.size() > kMaxValueLength || value.size() > kMaxValueLength)
        return Acad::eOutOfRange;
    const Acad::ErrorStatus status = setTextString(text.c_str());
    if (status != Acad::eOk)
        return status;
    conditions_->entered = value;
    conditions_->shown = text;
    conditions_->replaced = true;
    return Acad::eOk;
}

Acad::ErrorStatus VNDKAttribute::transformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus status = AcDbText::transformBy(matrix);
    if (status == Acad::eOk && conditions_) {
        conditions_->point1.transformBy(matrix);
        conditions_->point2.transformBy(matrix);
    }
    return status;
}

void VNDKAttribute::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbText::visitReferences(visitor);
    visitor.visit(definition_, AcDb::kSoftPointer);
}

void VNDKAttribute::writeStandIn(AcDbXDataWriter& writer) const {
    FormWriter form(writer, kFormVersion);
    form.text(tag_);
    form.text(defaultValue_);
    form.number(modes_);
    form.real(fieldLength_);
    form.reference(definition_);
    form.number(conditions_ ? 1 : 0);
    if (!conditions_)
        return;
    form.movingPoint(conditions_->point1);
    form.movingPoint(conditions_->point2);
    vndk::objects::writeFormulas(form, conditions_->formulas);
    form.number(conditions_->replaced ? 1 : 0);
    form.text(conditions_->entered);
    form.text(conditions_->shown);
}

bool VNDKAttribute::readStandIn(AcDbXDataReader& reader, AcDbDatabase& database) {
    FormReader form(reader, database, kFormVersion);
    tag_ = form.text(kMaxTagLength);
    defaultValue_ = form.text(kMaxValueLength);
    modes_ = static_cast<unsigned char>(form.number(0, kInvisibleMode | kConstantMode | kVerifyMode | kPresetMode));
    fieldLength_ = form.real();
    definition_ = form.reference();
    if (form.number(0, 1) == 0)
        return form.finished();
    Conditions& conditions = conditions_.make();
    conditions.point1 = form.movingPoint();
    conditions.point2 = form.movingPoint();
    const bool formulasRead = vndk::objects::readFormulas(form, conditions.formulas);
    conditions.replaced = form.number(0, 1) == 1;
    conditions.entered = form.text(kMaxValueLength);
    conditions.shown = form.text(kMaxValueLength);
    return formulasRead && form.finished();
}
