#include "commands/insert_placement.h"

#include "db/database.h"
#include "ed/host.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace vndk::host {

/// What can be set ahead of the point. Those of the preview serve pictures that are dragged: they are asked for and
/// leave the questions behind the point as they are.
struct InsertPlacement::Preset {
    const char* keyword;
    const char* prompt;
    enum class Sets { Nothing, Factors, X, Y, Z, Rotation } sets;
};

const InsertPlacement::Preset InsertPlacement::kPresets[] = {
    {"Scale", "\nSpecify scale factor for XYZ axes: ", Preset::Sets::Factors},
    {"X", "\nSpecify X scale factor: ", Preset::Sets::X},
    {"Y", "\nSpecify Y scale factor: ", Preset::Sets::Y},
    {"Z", "\nSpecify Z scale factor: ", Preset::Sets::Z},
    {"Rotate", "\nSpecify rotation angle: ", Preset::Sets::Rotation},
    {"PScale", "\nSpecify preview scale factor for XYZ axes: ", Preset::Sets::Nothing},
    {"PX", "\nSpecify preview X scale factor: ", Preset::Sets::Nothing},
    {"PY", "\nSpecify preview Y scale factor: ", Preset::Sets::Nothing},
    {"PZ", "\nSpecify preview Z scale factor: ", Preset::Sets::Nothing},
    {"PRotate", "\nSpecify preview rotation angle: ", Preset::Sets::Nothing},
};

/// Shows at the cursor what will be inserted, as far as it is known.
void InsertPlacement::dragContents() const {
    if (contents_.isNull())
        return;
    const AcGeMatrix3d toWorld = ctx_.prompts().ucsToWorld();
    ctx_.prompts().setDragged(
        {{},
         contents_,
         toWorld * AcGeMatrix3d::rotation(rotation_, AcGeVector3d::kZAxis) * AcGeMatrix3d::scaling(scale_) *
             AcGeMatrix3d::translation(AcGePoint3d::kOrigin - origin_),
         toWorld * AcGePoint3d::kOrigin});
}

PromptStatus InsertPlacement::ask() {
    const char* prompt = "\nSpecify insertion point or [Scale/X/Y/Z/Rotate/PScale/PX/PY/PZ/PRotate]: ";
    for (;;) {
        ctx_.prompts().initGet(kNoEmpty, "Scale X Y Z Rotate PScale PX PY PZ PRotate");
        dragContents();
        PromptStatus status = ctx_.prompts().getPoint(prompt, point_);
        if (status == PromptStatus::Normal)
            break;
        if (status == PromptStatus::Keyword)
            status = askPreset();
        if (status != PromptStatus::Normal)
            return status;
        prompt = "\nSpecify insertion point: ";
    }
    if (!scaleSet_)
        if (const PromptStatus status = askScale(); status != PromptStatus::Normal)
            return status;
    return rotationSet_ ? PromptStatus::Normal : askRotation();
}

PromptStatus InsertPlacement::askForContents() {
    ctx_.prompts().initGet(kNoEmpty);
    dragContents();
    PromptStatus status = ctx_.prompts().getPoint("\nSpecify insertion point for block: ", point_);
    double factor = 1;
    if (status == PromptStatus::Normal)
        status = askFactor("\nSpecify scale factor for XYZ axes <1>: ", 1, factor);
    scale_ = {factor, factor, std::fabs(factor)};
    return status == PromptStatus::Normal ? askRotation() : status;
}

PromptStatus InsertPlacement::askPreset() {
    const std::string keyword = ctx_.prompts().keyword();
    const auto* const preset =
        std::find_if(std::begin(kPresets), std::end(kPresets), [&](const Preset& p) { return keyword == p.keyword; });
    double value = 0;
    const bool isAngle = keyword.ends_with("otate");
    ctx_.prompts().initGet(kNoEmpty | (isAngle ? 0 : kNoZero));
    const PromptStatus status =
        isAngle ? ctx_.prompts().getAngle(preset->prompt, value) : ctx_.prompts().getDist(preset->prompt, value);
    if (status != PromptStatus::Normal)
        return status;
    using Sets = Preset::Sets;
    if (preset->sets == Sets::Rotation) {
        rotation_ = value;
        rotationSet_ = true;
    } else if (preset->sets != Sets::Nothing) {
        scaleSet_ = true;
        if (preset->sets == Sets::Factors)
            scale_ = {value, value, std::fabs(value)};
        else
            (preset->sets == Sets::X ? scale_.sx : preset->sets == Sets::Y ? scale_.sy : scale_.sz) = value;
    }
    return status;
}

/// The factors of X and Y from the other corner of a rectangle that begins at the insertion point.
bool InsertPlacement::takeCorner(const AcGePoint3d& corner) {
    const double x = corner.x - point_.x, y = corner.y - point_.y;
    if (x == 0 || y == 0)
        return false;
    scale_ = {x, y, std::fabs(x)};
    return true;
}

PromptStatus InsertPlacement::askCorner() {
    for (;;) {
        AcGePoint3d corner;
        ctx_.prompts().initGet(kNoEmpty);
        const PromptStatus status = ctx_.prompts().getCorner("\nSpecify opposite corner: ", corner, point_);
        if (status != PromptStatus::Normal || takeCorner(corner))
            return status;
        if (!refuseCorner())
            return PromptStatus::Error;
    }
}

bool InsertPlacement::refuseCorner() {
    return ctx_.host().commandLine().complain("The corner must be off the insertion point along X and along Y.",
                                              "The corner");
}

PromptStatus InsertPlacement::askFactor(const char* prompt, double standard, double& factor) {
    ctx_.prompts().initGet(kNoZero);
    const PromptStatus status = ctx_.prompts().getReal(prompt, factor);
    if (status != PromptStatus::None)
        return status;
    factor = standard;
    return PromptStatus::Normal;
}

PromptStatus InsertPlacement::askScale() {
    double x = 1;
    for (;;) {
        std::optional<AcGePoint3d> corner;
        ctx_.prompts().initGet(kNoZero, "Corner XYZ");
        const PromptStatus status = ctx_.prompts().getRealOrPoint(
            "\nEnter X scale factor, specify opposite corner, or [Corner/XYZ] <1>: ", x, corner);
        if (status == PromptStatus::Keyword)
            return ctx_.prompts().keyword() == "XYZ" ? askScaleXyz() : askCorner();
        if (status != PromptStatus::Normal && status != PromptStatus::None)
            return status;
        if (!corner)
            break;
        if (takeCorner(*corner))
            return PromptStatus::Normal;
        if (!refuseCorner())
            return PromptStatus::Error;
    }
    scale_ = {x, x, std::fabs(x)};
    return askFactor("\nEnter Y scale factor <use X scale factor>: ", x, scale_.sy);
}

PromptStatus InsertPlacement::askScaleXyz() {
    ctx_.prompts().initGet(kNoZero, "Corner");
    double x = 1;
    PromptStatus status = ctx_.prompts().getReal("\nSpecify X scale factor or [Corner] <1>: ", x);
    if (status == PromptStatus::Keyword) {
        status = askCorner();
    } else if (status == PromptStatus::Normal || status == PromptStatus::None) {
        scale_ = {x, x, std::fabs(x)};
        status = askFactor("\nEnter Y scale factor <use X scale factor>: ", x, scale_.sy);
    }
    if (status != PromptStatus::Normal)
        return status;
    return askFactor("\nSpecify Z scale factor or <use X scale factor>: ", scale_.sz, scale_.sz);
}

PromptStatus InsertPlacement::askRotation() {
    // An angle of 0 never turns a block, whatever ANGBASE says.
    const std::string none = shownAngle(ctx_, ctx_.database().header().ANGBASE);
    const PromptStatus status =
        ctx_.prompts().getAngle("\nSpecify rotation angle <" + none + ">: ", rotation_, &point_);
    return status == PromptStatus::None ? PromptStatus::Normal : status;
}

} // namespace vndk::host
