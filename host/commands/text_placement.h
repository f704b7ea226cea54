// Where a text stands: the prompts that TEXT and ATTDEF have in common.
#pragma once

#include "commands/command_tools.h"
#include "db/text.h"

namespace vndk::host {

class TextPlacement {
public:
    explicit TextPlacement(CommandContext& ctx);

    /// Prints the current style and asks for justification, style, points, height and rotation. What the user chooses
    /// becomes the default of the next time.
    PromptStatus ask();
    /// Gives a temporary text its style, plane, points, size and modes. Its string must stand already.
    void apply(AcDbText& text) const;
    /// The next text goes one line below.
    void nextLine();
    AcDbObjectId style() const { return style_; }

private:
    struct Justification;
    static const Justification kJustifications[];

    PromptStatus askStyle();
    PromptStatus askJustification();
    PromptStatus askPoints(const Justification& justification);
    PromptStatus askHeight();
    PromptStatus askRotation();
    bool takeBelow(AcDbObjectId former);
    void readStyle();
    bool spansTwoPoints() const { return horizontal_ == AcDb::kTextAlign || horizontal_ == AcDb::kTextFit; }

    CommandContext& ctx_;
    AcDbObjectId style_;
    AcDb::TextHorzMode horizontal_ = AcDb::kTextLeft;
    AcDb::TextVertMode vertical_ = AcDb::kTextBase;
    AcGePoint3d point_, second_; // UCS
    double height_ = 0, rotation_ = 0;
    double fixedHeight_ = 0, widthFactor_ = 1, oblique_ = 0; // of the style
    unsigned char generation_ = 0;
};

} // namespace vndk::host
