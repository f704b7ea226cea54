#include "commands/text_placement.h"

#include "db/database.h"
#include "ed/prompts.h"

#include <cmath>

namespace vndk::host {

/// `prompt` is null for the two that ask for both ends of the baseline.
struct TextPlacement::Justification {
    const char* keyword;
    AcDb::TextHorzMode horizontal;
    AcDb::TextVertMode vertical;
    const char* prompt;
};

const TextPlacement::Justification TextPlacement::kJustifications[] = {
    {"Align", AcDb::kTextAlign, AcDb::kTextBase, nullptr},
    {"Fit", AcDb::kTextFit, AcDb::kTextBase, nullptr},
    {"Center", AcDb::kTextCenter, AcDb::kTextBase, "\nSpecify center point of text: "},
    {"Middle", AcDb::kTextMid, AcDb::kTextBase, "\nSpecify middle point of text: "},
    {"Right", AcDb::kTextRight, AcDb::kTextBase, "\nSpecify right endpoint of text baseline: "},
    {"TL", AcDb::kTextLeft, AcDb::kTextTop, "\nSpecify top-left point of text: "},
    {"TC", AcDb::kTextCenter, AcDb::kTextTop, "\nSpecify top-center point of text: "},
    {"TR", AcDb::kTextRight, AcDb::kTextTop, "\nSpecify top-right point of text: "},
    {"ML", AcDb::kTextLeft, AcDb::kTextVertMid, "\nSpecify middle-left point of text: "},
    {"MC", AcDb::kTextCenter, AcDb::kTextVertMid, "\nSpecify middle point of text: "},
    {"MR", AcDb::kTextRight, AcDb::kTextVertMid, "\nSpecify middle-right point of text: "},
    {"BL", AcDb::kTextLeft, AcDb::kTextBottom, "\nSpecify bottom-left point of text: "},
    {"BC", AcDb::kTextCenter, AcDb::kTextBottom, "\nSpecify bottom-center point of text: "},
    {"BR", AcDb::kTextRight, AcDb::kTextBottom, "\nSpecify bottom-right point of text: "},
};

namespace {

/// From one baseline to the next, in heights.
constexpr double kLineSpacing = 5.0 / 3.0;

/// How long a text of height and width factor 1 is estimated to be.
double unitWidth(const AcDbText& text) {
    const AcDbText straight(AcGePoint3d::kOrigin, text.textValue().c_str(), {}, 1);
    AcDbExtents box;
    straight.getGeomExtents(box);
    return box.maxPoint().x - box.minPoint().x;
}

} // namespace

TextPlacement::TextPlacement(CommandContext& ctx)
    : ctx_(ctx), style_(ctx.database().textstyle()), rotation_(memoryOf(ctx).textRotation) {
    readStyle();
}

void TextPlacement::readStyle() {
    height_ = ctx_.database().header().TEXTSIZE;
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(style_);
    if (!style)
        return;
    fixedHeight_ = style->data().textSize;
    widthFactor_ = style->data().xScale;
    oblique_ = style->data().oblique;
    generation_ = style->data().generation;
    if (fixedHeight_ > 0)
        height_ = fixedHeight_;
}

PromptStatus TextPlacement::ask() {
    for (;;) {
        ctx_.print("\nCurrent text style:  \"" + recordName(style_) +
                   "\"  Text height:  " + shownLength(ctx_, height_));
        const AcDbObjectId former = memoryOf(ctx_).lastText;
        const bool hasFormer = !former.isNull() && !former.isErased();
        ctx_.prompts().initGet(hasFormer ? 0 : kNoEmpty,
                               "Justify Style Align Fit Center Middle Right TL TC TR ML MC MR BL BC BR");
        PromptStatus status = ctx_.prompts().getPoint("\nSpecify start point of text or [Justify/Style]: ", point_);
        if (status == PromptStatus::None && takeBelow(former))
            return PromptStatus::Normal;
        if (status == PromptStatus::Keyword && ctx_.prompts().keyword() == "Style") {
            status = askStyle();
            if (status == PromptStatus::Normal)
                continue;
        } else if (status == PromptStatus::Keyword) {
            status = askJustification();
        }
        if (status == PromptStatus::Normal && horizontal_ != AcDb::kTextAlign)
            status = askHeight();
        if (status == PromptStatus::Normal && !spansTwoPoints())
            status = askRotation();
        return status;
    }
}

PromptStatus TextPlacement::askStyle() {
    for (;;) {
        std::string name;
        const PromptStatus status =
            ctx_.prompts().getString("\nEnter style name or [?] <" + recordName(style_) + ">: ", TextForm::Word, name);
        if (status != PromptStatus::Normal || name.empty())
            return status;
        if (name == "?") {
            ctx_.print("\nText styles:");
            for (const AcDbObjectId id : sortedRecords(ctx_.database().textStyleTableId()))
                ctx_.print("\n  " + recordName(id));
            continue;
        }
        const AcDbObjectId found = findRecord<AcDbTextStyleTable>(ctx_.database().textStyleTableId(), name);
        if (found.isNull()) {
            ctx_.print("\nCannot find text style \"" + name + "\".");
            continue;
        }
        style_ = found;
        ctx_.database().changeHeader(
            "TEXTSTYLE", [found](dwg::HeaderVariables& header) { header.TEXTSTYLE = found.handle().value(); });
        readStyle();
        return PromptStatus::Normal;
    }
}

PromptStatus TextPlacement::askJustification() {
    std::string keyword = ctx_.prompts().keyword();
    if (keyword == "Justify") {
        ctx_.prompts().initGet(kNoEmpty, "Align Fit Center Middle Right TL TC TR ML MC MR BL BC BR");
        const PromptStatus status =
            ctx_.prompts().getKeyword("\nEnter an option [Align/Fit/Center/Middle/Right/TL/TC/TR/ML/MC/MR/BL/BC/BR]: ");
        if (status != PromptStatus::Normal)
            return status;
        keyword = ctx_.prompts().keyword();
    }
    for (const Justification& justification : kJustifications)
        if (keyword == justification.keyword)
            return askPoints(justification);
    return PromptStatus::Error;
}

PromptStatus TextPlacement::askPoints(const Justification& justification) {
    horizontal_ = justification.horizontal;
    vertical_ = justification.vertical;
    ctx_.prompts().initGet(kNoEmpty);
    if (justification.prompt)
        return ctx_.prompts().getPoint(justification.prompt, point_);
    PromptStatus status = ctx_.prompts().getPoint("\nSpecify first endpoint of text baseline: ", point_);
    while (status == PromptStatus::Normal) {
        ctx_.prompts().initGet(kNoEmpty);
        status = ctx_.prompts().getPoint("\nSpecify second endpoint of text baseline: ", second_, &point_);
        if (status != PromptStatus::Normal || std::hypot(second_.x - point_.x, second_.y - point_.y) > 0)
            break;
        ctx_.print("\nThe two endpoints are the same.");
    }
    rotation_ = std::atan2(second_.y - point_.y, second_.x - point_.x);
    return status;
}

PromptStatus TextPlacement::askHeight() {
    if (fixedHeight_ > 0)
        return PromptStatus::Normal;
    double height = 0;
    ctx_.prompts().initGet(kNoZero | kNoNegative);
    const PromptStatus status =
        ctx_.prompts().getDist("\nSpecify height <" + shownLength(ctx_, height_) + ">: ", height, &point_);
    if (status == PromptStatus::Normal) {
        height_ = height;
        ctx_.database().changeHeader("TEXTSIZE", [height](dwg::HeaderVariables& header) { header.TEXTSIZE = height; });
    }
    return status == PromptStatus::None ? PromptStatus::Normal : status;
}

PromptStatus TextPlacement::askRotation() {
    double rotation = 0;
    const PromptStatus status = ctx_.prompts().getOrient(
        "\nSpecify rotation angle of text <" + shownAngle(ctx_, rotation_) + ">: ", rotation, &point_);
    if (status == PromptStatus::Normal)
        rotation_ = memoryOf(ctx_).textRotation = rotation;
    return status == PromptStatus::None ? PromptStatus::Normal : status;
}

/// Takes everything from a text that is there and goes one line below it.
bool TextPlacement::takeBelow(AcDbObjectId former) {
    const AcDbObjectPointer<AcDbText> text(former);
    if (!text)
        return false;
    const AcGeMatrix3d toUcs = ctx_.prompts().worldToUcs();
    style_ = text->textStyle();
    readStyle();
    horizontal_ = text->horizontalMode();
    vertical_ = text->verticalMode();
    height_ = text->height();
    const AcGeVector3d along = toUcs * (AcGeMatrix3d::planeToWorld(text->normal()) *
                                        AcGeVector3d(std::cos(text->rotation()), std::sin(text->rotation()), 0));
    rotation_ = std::atan2(along.y, along.x);
    point_ = toUcs * (text->isDefaultAlignment() || spansTwoPoints() ? text->position() : text->alignmentPoint());
    second_ = toUcs * text->alignmentPoint();
    nextLine();
    return true;
}

void TextPlacement::nextLine() {
    const AcGeVector3d down(std::sin(rotation_) * height_ * kLineSpacing, -std::cos(rotation_) * height_ * kLineSpacing,
                            0);
    point_ = point_ + down;
    second_ = second_ + down;
}

void TextPlacement::apply(AcDbText& text) const {
    const DrawingPlane plane(ctx_);
    text.setNormal(plane.normal());
    text.setTextStyle(style_);
    text.setThickness(ctx_.database().header().THICKNESS);
    text.setOblique(oblique_);
    text.setWidthFactor(widthFactor_ > 0 ? widthFactor_ : 1);
    text.mirrorInX(generation_ & 2);
    text.mirrorInY(generation_ & 4);
    text.setRotation(plane.toObjectAngle(rotation_));
    text.setHorizontalMode(horizontal_);
    text.setVerticalMode(vertical_);
    text.setHeight(height_);
    text.setPosition(plane.toWorld(point_));
    if (spansTwoPoints()) {
        text.setAlignmentPoint(plane.toWorld(second_));
        const double width = unitWidth(text), length = std::hypot(second_.x - point_.x, second_.y - point_.y);
        if (width > 0 && horizontal_ == AcDb::kTextAlign)
            text.setHeight(length / (width * text.widthFactor()));
        else if (width > 0)
            text.setWidthFactor(length / (width * height_));
    } else if (!text.isDefaultAlignment()) {
        text.setAlignmentPoint(plane.toWorld(point_));
        text.adjustAlignment(&ctx_.database());
    }
}

} // namespace vndk::host
