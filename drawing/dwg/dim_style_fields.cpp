// Fields of dimension styles.
#include "dwg/record_start.h"

namespace vndk::dwg {

namespace {

using namespace code;
using StyleData = AcDbDimStyleTableRecord::Data;

// Releases 13 and 14 have one variable for the unit and the form of fractions, and one for fitting and moving.

enum OldUnit : short { kArchitecturalStacked = 4, kFractionalStacked = 5, kArchitectural = 6, kFractional = 7 };
constexpr short kNotStacked = 2;
constexpr short kLastFit = 3;

void readOldUnit(FieldReader& r, StyleData& style) {
    const auto unit = static_cast<short>(r.bits.BS());
    const bool flat = unit == kArchitectural || unit == kFractional;
    style.dimlunit = flat ? static_cast<short>(unit - 2) : unit;
    style.dimfrac = flat ? kNotStacked : short{0};
}

void writeOldUnit(FieldWriter& w, const StyleData& style) {
    const bool splits = style.dimlunit == kArchitecturalStacked || style.dimlunit == kFractionalStacked;
    w.bits.BS(static_cast<uint16_t>(splits && style.dimfrac == kNotStacked ? style.dimlunit + 2 : style.dimlunit));
}

void readOldFit(FieldReader& r, StyleData& style) {
    const auto fit = static_cast<short>(r.bits.RC());
    style.dimatfit = fit > kLastFit ? kLastFit : fit;
    style.dimtmove = fit > kLastFit ? static_cast<short>(fit - kLastFit) : short{0};
}

void writeOldFit(FieldWriter& w, const StyleData& style) {
    w.bits.RC(static_cast<uint8_t>(style.dimtmove > 0 ? kLastFit + style.dimtmove : style.dimatfit));
}

void readArrowNames(FieldReader& r, StyleData& style) {
    for (std::string& name : style.arrowNames)
        name = r.text();
}

void writeArrowNames(FieldWriter& w, const StyleData& style) {
    for (const std::string& name : style.arrowNames)
        w.text(name);
}

constexpr FieldRow kStyleRows14[] = {
    row<B, &StyleData::dimtol>("DIMTOL"),
    row<B, &StyleData::dimlim>("DIMLIM"),
    row<B, &StyleData::dimtih>("DIMTIH"),
    row<B, &StyleData::dimtoh>("DIMTOH"),
    row<B, &StyleData::dimse1>("DIMSE1"),
    row<B, &StyleData::dimse2>("DIMSE2"),
    row<B, &StyleData::dimalt>("DIMALT"),
    row<B, &StyleData::dimtofl>("DIMTOFL"),
    row<B, &StyleData::dimsah>("DIMSAH"),
    row<B, &StyleData::dimtix>("DIMTIX"),
    row<B, &StyleData::dimsoxd>("DIMSOXD"),
    row<RC, &StyleData::dimaltd>("DIMALTD"),
    row<RC, &StyleData::dimzin>("DIMZIN"),
    row<B, &StyleData::dimsd1>("DIMSD1"),
    row<B, &StyleData::dimsd2>("DIMSD2"),
    row<RC, &StyleData::dimtolj>("DIMTOLJ"),
    row<RC, &StyleData::dimjust>("DIMJUST"),
    customRow<StyleData, readOldFit, writeOldFit>("DIMFIT"),
    row<B, &StyleData::dimupt>("DIMUPT"),
    row<RC, &StyleData::dimtzin>("DIMTZIN"),
    row<RC, &StyleData::dimaltz>("DIMALTZ"),
    row<RC, &StyleData::dimalttz>("DIMALTTZ"),
    row<RC, &StyleData::dimtad>("DIMTAD"),
    customRow<StyleData, readOldUnit, writeOldUnit>("DIMUNIT"),
    row<BS, &StyleData::dimaunit>("DIMAUNIT"),
    row<BS, &StyleData::dimdec>("DIMDEC"),
    row<BS, &StyleData::dimtdec>("DIMTDEC"),
    row<BS, &StyleData::dimaltu>("DIMALTU"),
    row<BS, &StyleData::dimalttd>("DIMALTTD"),
    row<BD, &StyleData::dimscale>("DIMSCALE"),
    row<BD, &StyleData::dimasz>("DIMASZ"),
    row<BD, &StyleData::dimexo>("DIMEXO"),
    row<BD, &StyleData::dimdli>("DIMDLI"),
    row<BD, &StyleData::dimexe>("DIMEXE"),
    row<BD, &StyleData::dimrnd>("DIMRND"),
    row<BD, &StyleData::dimdle>("DIMDLE"),
    row<BD, &StyleData::dimtp>("DIMTP"),
    row<BD, &StyleData::dimtm>("DIMTM"),
    row<BD, &StyleData::dimtxt>("DIMTXT"),
    row<BD, &StyleData::dimcen>("DIMCEN"),
    row<BD, &StyleData::dimtsz>("DIMTSZ"),
    row<BD, &StyleData::dimaltf>("DIMALTF"),
    row<BD, &StyleData::dimlfac>("DIMLFAC"),
    row<BD, &StyleData::dimtvp>("DIMTVP"),
    row<BD, &StyleData::dimtfac>("DIMTFAC"),
    row<BD, &StyleData::dimgap>("DIMGAP"),
    row<TV, &StyleData::dimpost>("DIMPOST"),
    row<TV, &StyleData::dimapost>("DIMAPOST"),
    customRow<StyleData, readArrowNames, writeArrowNames>("DIMBLK, DIMBLK1, DIMBLK2"),
    row<BS, &StyleData::dimclrd>("DIMCLRD"),
    row<BS, &StyleData::dimclre>("DIMCLRE"),
    row<BS, &StyleData::dimclrt>("DIMCLRT"),
    row<B, &StyleData::fileFlag>("flag"),
    row<H<5>, &StyleData::dimtxsty>("DIMTXSTY"),
};

constexpr FieldRow kStyleRows15[] = {
    row<TV, &StyleData::dimpost>("DIMPOST"),     row<TV, &StyleData::dimapost>("DIMAPOST"),
    row<BD, &StyleData::dimscale>("DIMSCALE"),   row<BD, &StyleData::dimasz>("DIMASZ"),
    row<BD, &StyleData::dimexo>("DIMEXO"),       row<BD, &StyleData::dimdli>("DIMDLI"),
    row<BD, &StyleData::dimexe>("DIMEXE"),       row<BD, &StyleData::dimrnd>("DIMRND"),
    row<BD, &StyleData::dimdle>("DIMDLE"),       row<BD, &StyleData::dimtp>("DIMTP"),
    row<BD, &StyleData::dimtm>("DIMTM"),         row<B, &StyleData::dimtol>("DIMTOL"),
    row<B, &StyleData::dimlim>("DIMLIM"),        row<B, &StyleData::dimtih>("DIMTIH"),
    row<B, &StyleData::dimtoh>("DIMTOH"),        row<B, &StyleData::dimse1>("DIMSE1"),
    row<B, &StyleData::dimse2>("DIMSE2"),        row<BS, &StyleData::dimtad>("DIMTAD"),
    row<BS, &StyleData::dimzin>("DIMZIN"),       row<BS, &StyleData::dimazin>("DIMAZIN"),
    row<BD, &StyleData::dimtxt>("DIMTXT"),       row<BD, &StyleData::dimcen>("DIMCEN"),
    row<BD, &StyleData::dimtsz>("DIMTSZ"),       row<BD, &StyleData::dimaltf>("DIMALTF"),
    row<BD, &StyleData::dimlfac>("DIMLFAC"),     row<BD, &StyleData::dimtvp>("DIMTVP"),
    row<BD, &StyleData::dimtfac>("DIMTFAC"),     row<BD, &StyleData::dimgap>("DIMGAP"),
    row<BD, &StyleData::dimaltrnd>("DIMALTRND"), row<B, &StyleData::dimalt>("DIMALT"),
    row<BS, &StyleData::dimaltd>("DIMALTD"),     row<B, &StyleData::dimtofl>("DIMTOFL"),
    row<B, &StyleData::dimsah>("DIMSAH"),        row<B, &StyleData::dimtix>("DIMTIX"),
    row<B, &StyleData::dimsoxd>("DIMSOXD"),      row<BS, &StyleData::dimclrd>("DIMCLRD"),
    row<BS, &StyleData::dimclre>("DIMCLRE"),     row<BS, &StyleData::dimclrt>("DIMCLRT"),
    row<BS, &StyleData::dimadec>("DIMADEC"),     row<BS, &StyleData::dimdec>("DIMDEC"),
    row<BS, &StyleData::dimtdec>("DIMTDEC"),     row<BS, &StyleData::dimaltu>("DIMALTU"),
    row<BS, &StyleData::dimalttd>("DIMALTTD"),   row<BS, &StyleData::dimaunit>("DIMAUNIT"),
    row<BS, &StyleData::dimfrac>("DIMFRAC"),     row<BS, &StyleData::dimlunit>("DIMLUNIT"),
    row<BS, &StyleData::dimdsep>("DIMDSEP"),     row<BS, &StyleData::dimtmove>("DIMTMOVE"),
    row<BS, &StyleData::dimjust>("DIMJUST"),     row<B, &StyleData::dimsd1>("DIMSD1"),
    row<B, &StyleData::dimsd2>("DIMSD2"),        row<BS, &StyleData::dimtolj>("DIMTOLJ"),
    row<BS, &StyleData::dimtzin>("DIMTZIN"),     row<BS, &StyleData::dimaltz>("DIMALTZ"),
    row<BS, &StyleData::dimalttz>("DIMALTTZ"),   row<B, &StyleData::dimupt>("DIMUPT"),
    row<BS, &StyleData::dimatfit>("DIMATFIT"),   row<BS, &StyleData::dimlwd>("DIMLWD"),
    row<BS, &StyleData::dimlwe>("DIMLWE"),       row<B, &StyleData::fileFlag>("flag"),
    row<H<5>, &StyleData::dimtxsty>("DIMTXSTY"), row<H<5>, &StyleData::dimldrblk>("DIMLDRBLK"),
    row<H<5>, &StyleData::dimblk>("DIMBLK"),     row<H<5>, &StyleData::dimblk1>("DIMBLK1"),
    row<H<5>, &StyleData::dimblk2>("DIMBLK2"),
};

std::span<const FieldRow> rowsOf(Version version) {
    if (maskOf(version) & kOnly15)
        return kStyleRows15;
    return kStyleRows14;
}

} // namespace

AcDbObject* readDimStyle(FieldReader& reader) {
    auto* const record = new AcDbDimStyleTableRecord;
    StyleData data;
    readRecordStart(reader, *record);
    readRows(rowsOf(reader.version), reader, &data);
    record->setFileData(std::move(data));
    return record;
}

void writeDimStyle(FieldWriter& writer, const AcDbObject& object) {
    const auto& record = static_cast<const AcDbDimStyleTableRecord&>(object);
    writeRecordStart(writer, record, record.name());
    writeRows(rowsOf(writer.version), writer, &record.data());
}

} // namespace vndk::dwg
