// Where a new block reference stands: the prompts that INSERT and MINSERT have in common.
#pragma once

#include "commands/command_tools.h"
#include "ge/matrix3d.h"

namespace vndk::host {

class InsertPlacement {
public:
    /// Nothing is seen at the cursor.
    explicit InsertPlacement(CommandContext& ctx) : ctx_(ctx) {}
    /// `contents` is the record that will be seen, its `origin` lying at the insertion point.
    InsertPlacement(CommandContext& ctx, AcDbObjectId contents, const AcGePoint3d& origin)
        : ctx_(ctx), contents_(contents), origin_(origin) {}

    /// Asks for the insertion point, the factors and the angle, with all that can be set ahead of the point.
    PromptStatus ask();
    /// The same for the contents of a block, which take one factor.
    PromptStatus askForContents();

    const AcGePoint3d& point() const { return point_; } ///< in the UCS
    const AcGeScale3d& scale() const { return scale_; }
    double rotation() const { return rotation_; } ///< from the x axis of the UCS

private:
    struct Preset;
    static const Preset kPresets[];

    void dragContents() const;
    PromptStatus askPreset();
    PromptStatus askScale();
    PromptStatus askScaleXyz();
    PromptStatus askCorner();
    PromptStatus askFactor(const char* prompt, double standard, double& factor);
    PromptStatus askRotation();
    bool takeCorner(const AcGePoint3d& corner);
    bool refuseCorner();

    CommandContext& ctx_;
    AcDbObjectId contents_;
    AcGePoint3d origin_;
    AcGePoint3d point_;
    AcGeScale3d scale_;
    double rotation_ = 0;
    bool scaleSet_ = false, rotationSet_ = false;
};

} // namespace vndk::host
