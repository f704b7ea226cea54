// Fields of texts, attributes, attribute definitions and paragraphs.
#include "db/text.h"
#include "dwg/object_types.h"

namespace vndk::dwg {

namespace {

using namespace code;
using TextData = AcDbText::Data;

/// Bits of the release 15 flags: a set bit leaves a field out, which then has its usual value.
enum TextFlag : unsigned {
    kNoElevation = 0x01,
    kNoAlignment = 0x02,
    kNoOblique = 0x04,
    kNoRotation = 0x08,
    kUsualWidth = 0x10,
    kNoGeneration = 0x20,
    kNoHorizontal = 0x40,
    kNoVertical = 0x80,
};

unsigned usualFields(const TextData& t) {
    const auto bit = [](bool usual, TextFlag flag) -> unsigned { return usual ? flag : 0u; };
    return bit(t.elevation == 0, kNoElevation) | bit(t.alignment == AcGePoint2d(), kNoAlignment) |
           bit(t.oblique == 0, kNoOblique) | bit(t.rotation == 0, kNoRotation) | bit(t.widthFactor == 1, kUsualWidth) |
           bit(t.generation == 0, kNoGeneration) | bit(t.horizontal == 0, kNoHorizontal) |
           bit(t.vertical == 0, kNoVertical);
}

void readText15(FieldReader& r, TextData& t) {
    const unsigned flags = r.bits.RC();
    const auto stored = [&](TextFlag flag) { return !(flags & flag); };
    const auto real = [&](TextFlag flag, double usual) { return stored(flag) ? r.number(r.bits.RD()) : usual; };
    t.elevation = real(kNoElevation, 0);
    t.position = RD2::read<AcGePoint2d>(r);
    if (stored(kNoAlignment)) {
        t.alignment.x = r.number(r.bits.DD(t.position.x));
        t.alignment.y = r.number(r.bits.DD(t.position.y));
    }
    t.normal = BE::read<AcGeVector3d>(r);
    t.thickness = BT::read<double>(r);
    t.oblique = real(kNoOblique, 0);
    t.rotation = real(kNoRotation, 0);
    t.height = r.number(r.bits.RD());
    t.widthFactor = real(kUsualWidth, 1);
    t.text = r.text();
    const auto small = [&](TextFlag flag) { return static_cast<unsigned char>(stored(flag) ? r.bits.BS() : 0); };
    t.generation = small(kNoGeneration);
    t.horizontal = small(kNoHorizontal);
    t.vertical = small(kNoVertical);
    t.fileStored = static_cast<unsigned char>(usualFields(t) & ~flags);
}

void writeText15(FieldWriter& w, const TextData& t) {
    const unsigned flags = usualFields(t) & ~unsigned{t.fileStored};
    const auto real = [&](TextFlag flag, double value) {
        if (!(flags & flag))
            w.bits.RD(value);
    };
    w.bits.RC(static_cast<uint8_t>(flags));
    real(kNoElevation, t.elevation);
    RD2::write(w, t.position);
    if (!(flags & kNoAlignment)) {
        w.bits.DD(t.alignment.x, t.position.x);
        w.bits.DD(t.alignment.y, t.position.y);
    }
    BE::write(w, t.normal);
    BT::write(w, t.thickness);
    real(kNoOblique, t.oblique);
    real(kNoRotation, t.rotation);
    w.bits.RD(t.height);
    real(kUsualWidth, t.widthFactor);
    w.text(t.text);
    const auto small = [&](TextFlag flag, unsigned char value) {
        if (!(flags & flag))
            w.bits.BS(value);
    };
    small(kNoGeneration, t.generation);
    small(kNoHorizontal, t.horizontal);
    small(kNoVertical, t.vertical);
}

constexpr FieldRow kTextRows[] = {
    row<BD, &TextData::elevation>("elevation", kOnly1314),
    row<RD2, &TextData::position>("insertion point", kOnly1314),
    row<RD2, &TextData::alignment>("alignment point", kOnly1314),
    row<P3, &TextData::normal>("normal", kOnly1314),
    row<BD, &TextData::thickness>("thickness", kOnly1314),
    row<BD, &TextData::oblique>("oblique angle", kOnly1314),
    row<BD, &TextData::rotation>("rotation", kOnly1314),
    row<BD, &TextData::height>("height", kOnly1314),
    row<BD, &TextData::widthFactor>("width factor", kOnly1314),
    row<TV, &TextData::text>("text", kOnly1314),
    row<BS, &TextData::generation>("generation", kOnly1314),
    row<BS, &TextData::horizontal>("horizontal mode", kOnly1314),
    row<BS, &TextData::vertical>("vertical mode", kOnly1314),
    customRow<TextData, readText15, writeText15>("text", kOnly15),
    row<H<5>, &TextData::style>("style"),
};

constexpr FieldRow kAttributeRows[] = {
    row<TV, &AcDbAttributeData::tag>("tag"),
    row<BS, &AcDbAttributeData::fieldLength>("field length"),
    row<RC, &AcDbAttributeData::flags>("flags"),
};

AcDbObject* readAttribute(FieldReader& r) {
    TextData text;
    AcDbAttributeData attribute;
    readRows(kTextRows, r, &text);
    readRows(kAttributeRows, r, &attribute);
    auto* const object = new AcDbAttribute;
    object->setFileData(std::move(text));
    object->setFileAttributeData(std::move(attribute));
    return object;
}

void writeAttribute(FieldWriter& w, const AcDbObject& object) {
    const auto& attribute = static_cast<const AcDbAttribute&>(object);
    writeRows(kTextRows, w, &attribute.data());
    writeRows(kAttributeRows, w, &attribute.attributeData());
}

AcDbObject* readDefinition(FieldReader& r) {
    TextData text;
    AcDbAttributeData attribute;
    readRows(kTextRows, r, &text);
    readRows(kAttributeRows, r, &attribute);
    std::string prompt = r.text();
    auto* const object = new AcDbAttributeDefinition;
    object->setFileData(std::move(text));
    object->setFileAttributeData(std::move(attribute), std::move(prompt));
    return object;
}

void writeDefinition(FieldWriter& w, const AcDbObject& object) {
    const auto& definition = static_cast<const AcDbAttributeDefinition&>(object);
    writeRows(kTextRows, w, &definition.data());
    writeRows(kAttributeRows, w, &definition.attributeData());
    w.text(definition.promptValue());
}

using MTextData = AcDbMText::Data;

constexpr FieldRow kMTextRows[] = {
    row<P3, &MTextData::location>("insertion point"),
    row<P3, &MTextData::normal>("normal"),
    row<P3, &MTextData::direction>("x axis direction"),
    row<BD, &MTextData::width>("width"),
    row<BD, &MTextData::height>("height"),
    row<BS, &MTextData::attachment>("attachment"),
    row<BS, &MTextData::flowDirection>("drawing direction"),
    row<BD, &MTextData::extentsHeight>("extents height"),
    row<BD, &MTextData::extentsWidth>("extents width"),
    row<TV, &MTextData::contents>("text"),
    row<BS, &MTextData::lineSpacingStyle>("line spacing style", kOnly15),
    row<BD, &MTextData::lineSpacingFactor>("line spacing factor", kOnly15),
    row<B, &MTextData::unknownBit>("unknown", kOnly15),
    row<H<5>, &MTextData::style>("style"),
};

constexpr ObjectType kTypes[] = {
    dataType<AcDbText, kTextRows>(1, "TEXT"),
    {2, "ATTRIB", &AcDbAttribute::desc, readAttribute, writeAttribute, &assignBaseOf<AcDbAttribute>},
    {3, "ATTDEF", &AcDbAttributeDefinition::desc, readDefinition, writeDefinition,
     &assignBaseOf<AcDbAttributeDefinition>},
    dataType<AcDbMText, kMTextRows>(44, "MTEXT"),
};

} // namespace

std::span<const ObjectType> textTypes() { return kTypes; }

} // namespace vndk::dwg
