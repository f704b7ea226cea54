#include "gi/entity_drawing_parts.h"
#include "gi/text_codes.h"

namespace vndk::gi {

namespace {

AcGiText::Across acrossOf(const AcDbText::Data& data) {
    if (data.horizontal == AcDb::kTextMid)
        return AcGiText::kMiddle;
    return data.vertical <= AcDb::kTextTop ? static_cast<AcGiText::Across>(data.vertical) : AcGiText::kBaseLine;
}

AcGiText::Along alongOf(const AcDbText::Data& data) {
    switch (data.horizontal) {
    case AcDb::kTextCenter:
    case AcDb::kTextMid:
        return AcGiText::kCenter;
    case AcDb::kTextRight:
        return AcGiText::kRight;
    default:
        return AcGiText::kLeft;
    }
}

} // namespace

void drawTextLine(const AcDbText& entity, const std::string& shown, AcGiGeometry& geometry) {
    const AcDbText::Data& data = entity.data();
    const bool fitted = data.horizontal == AcDb::kTextAlign || data.horizontal == AcDb::kTextFit;
    PlainText plain = withoutCodes(shown);
    AcGiText text;
    text.text = std::move(plain.text);
    text.underlined = plain.underlined;
    text.overlined = plain.overlined;
    text.style = data.style;
    text.height = data.height;
    text.widthFactor = data.widthFactor;
    text.oblique = data.oblique;
    text.backward = entity.isMirroredInX();
    text.upsideDown = entity.isMirroredInY();
    double angle = data.rotation;
    if (const AcGeVector2d span = data.alignment - data.position; fitted && span.length() > 0) {
        text.fitWidth = span.length();
        text.fitHeight = data.horizontal == AcDb::kTextAlign;
        angle = std::atan2(span.y, span.x);
    } else {
        text.along = alongOf(data);
        text.across = acrossOf(data);
    }
    text.position = entity.isDefaultAlignment() || fitted ? entity.position() : entity.alignmentPoint();
    text.direction = {std::cos(angle), std::sin(angle), 0};
    text.up = {-text.direction.y, text.direction.x, 0};
    if (data.normal != AcGeVector3d::kZAxis) {
        const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data.normal);
        text.direction = toWorld * text.direction;
        text.up = toWorld * text.up;
    }
    geometry.text(text);
}

void drawText(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const auto& text = static_cast<const AcDbText&>(entity);
    drawTextLine(text, text.textValue(), geometry);
}

} // namespace vndk::gi
