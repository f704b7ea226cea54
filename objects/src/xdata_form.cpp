#include "src/xdata_form.h"

#include <cmath>
#include <memory>

namespace vndk::objects {

namespace {
constexpr size_t kPiece = 255;
}

void FormWriter::text(std::string_view value) {
    out_.int16(static_cast<short>((value.size() + kPiece - 1) / kPiece));
    for (size_t at = 0; at < value.size(); at += kPiece)
        out_.text(value.substr(at, kPiece));
}

FormReader::FormReader(AcDbXDataReader& in, AcDbDatabase& database, short version) : in_(in), database_(database) {
    AcDbXDataItem item;
    ok_ = take(70, item) && item.integer == version;
}

bool FormReader::finished() {
    AcDbXDataItem item;
    return ok_ && !in_.next(item) && !in_.damaged();
}

bool FormReader::take(int code, AcDbXDataItem& item) {
    if (ok_)
        ok_ = in_.next(item) && item.code == code;
    if (!ok_)
        item = {};
    return ok_;
}

int FormReader::number(int least, int most) {
    AcDbXDataItem item;
    take(71, item);
    ok_ = ok_ && item.integer >= least && item.integer <= most;
    return ok_ ? item.integer : 0;
}

double FormReader::real() {
    AcDbXDataItem item;
    take(40, item);
    ok_ = ok_ && std::isfinite(item.real[0]);
    return ok_ ? item.real[0] : 0;
}

std::string FormReader::text(size_t maxLength) {
    std::string whole;
    AcDbXDataItem item;
    take(70, item);
    ok_ = ok_ && item.integer >= 0;
    for (int left = item.integer; left > 0 && take(0, item); --left) {
        whole += item.text;
        ok_ = whole.size() <= maxLength;
    }
    return ok_ ? whole : std::string();
}

AcGePoint3d FormReader::point(int code) {
    AcDbXDataItem item;
    take(code, item);
    ok_ = ok_ && std::isfinite(item.real[0]) && std::isfinite(item.real[1]) && std::isfinite(item.real[2]);
    return ok_ ? AcGePoint3d(item.real[0], item.real[1], item.real[2]) : AcGePoint3d();
}

AcDbObjectId FormReader::reference() {
    AcDbXDataItem item;
    AcDbObjectId id;
    if (take(5, item) && !item.handle.isNull() && database_.getAcDbObjectId(id, item.handle) != Acad::eOk)
        id.setNull();
    return id;
}

void writeFormulas(FormWriter& form, const CCondFormulaList& formulas) {
    form.number(static_cast<int>(formulas.count()));
    for (const CCondFormulaList::Node* node = formulas.head(); node; node = node->next)
        form.text(node->formula->text());
}

bool readFormulas(FormReader& form, CCondFormulaList& formulas) {
    bool good = true;
    for (int left = form.number(0, CCondFormulaList::kMaxTotal); left > 0 && good && form.ok(); --left) {
        auto formula = std::make_unique<CCondFormula>();
        good = formula->setText(form.text(CCondFormula::kMaxLength)) == Acad::eOk &&
               formulas.append(formula.release()) == Acad::eOk;
    }
    return good && form.ok();
}

} // namespace vndk::objects
