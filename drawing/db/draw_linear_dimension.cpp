// The picture of linear dimensions: extension lines, the dimension line with its heads, the text on it or beside it.
#include "db/dimension_picture.h"

#include <algorithm>
#include <utility>

namespace vndk::db {

namespace {

enum Fit : short { kBothOut = 0, kArrowsOutFirst = 1, kTextOutFirst = 2 };
enum Justification : short { kAtFirst = 1, kAtSecond = 2 };

/// The dimension line from one extension line to the other, as distances from the first.
class LinearLayout {
public:
    LinearLayout(DimensionPicture& picture, const AcGePoint2d& begin, const AcGePoint2d& end)
        : picture_(picture), begin_(begin), length_(begin.distanceTo(end)), lineAngle_(angleOf(end - begin)),
          along_(directionOf(lineAngle_)), head_(picture.hasTicks() ? 0 : picture.arrowSize()) {
        chooseSides();
    }

    void draw() {
        placeText();
        drawHeads();
        drawLine();
    }
    void drawText() { picture_.text(middle_, textAngle_); }

private:
    AcGePoint2d at(double distance) const { return begin_ + along_ * distance; }

    /// What is between the extension lines, by the room and DIMATFIT.
    void chooseSides() {
        const DimVariables& v = picture_.variables();
        const double text = picture_.textExtent(picture_.textAngle(lineAngle_, false), lineAngle_);
        const double textRoom = picture_.hasText() ? text + 2 * picture_.gap() : 0;
        const bool textFits = length_ >= textRoom, headsFit = length_ >= 2 * head_;
        if (length_ < textRoom + 2 * head_) {
            const bool preferText = v.dimatfit != kTextOutFirst && v.dimatfit != kBothOut;
            const bool preferHeads = v.dimatfit != kArrowsOutFirst && v.dimatfit != kBothOut;
            textInside_ = !picture_.hasText() || (textFits && preferText);
            headsInside_ = (!textInside_ || !picture_.hasText()) && headsFit && preferHeads;
        }
        if (v.dimtix) {
            textInside_ = true;
            headsInside_ = headsFit;
        }
        textAngle_ = picture_.textAngle(lineAngle_, !textInside_);
        extent_ = picture_.textExtent(textAngle_, lineAngle_);
    }

    void placeText() {
        if (const auto& wanted = picture_.userTextMiddle()) {
            middle_ = *wanted;
            const AcGeVector2d arm = middle_ - begin_;
            textAt_ = arm.dotProduct(along_);
            const double off = std::fabs(arm.dotProduct(leftOf(along_)));
            breaks_ = picture_.hasText() && off < picture_.textBlockHeight() / 2;
            return;
        }
        const AcGeVector2d offset = picture_.textOffset(textAngle_, lineAngle_);
        const double half = extent_ / 2 + picture_.gap();
        const short justification = picture_.variables().dimjust;
        if (!textInside_)
            textAt_ = length_ + (headsInside_ ? 0 : 2 * head_) + half;
        else if (justification == kAtFirst || justification == kAtSecond)
            textAt_ = std::min(length_ / 2, (headsInside_ ? head_ : 0) + half);
        else
            textAt_ = length_ / 2;
        if (textInside_ && justification == kAtSecond)
            textAt_ = length_ - textAt_;
        middle_ = at(textAt_) + offset;
        breaks_ = picture_.hasText() && offset.length() < picture_.textBlockHeight() / 2;
    }

    void drawHeads() {
        const double side = headsInside_ ? 1 : -1;
        heads_.emplace_back(at(0), along_ * -side);
        heads_.emplace_back(at(length_), along_ * side);
    }

    /// A piece of the dimension line, without what the text stands on.
    void piece(double from, double to) {
        const double low = textAt_ - extent_ / 2 - picture_.gap(), high = textAt_ + extent_ / 2 + picture_.gap();
        if (!breaks_ || high <= from || low >= to)
            return picture_.dimensionLine(at(from), at(to));
        if (low > from)
            picture_.dimensionLine(at(from), at(low));
        if (high < to)
            picture_.dimensionLine(at(high), at(to));
    }

    void drawLine() {
        const DimVariables& v = picture_.variables();
        const double beyond = picture_.hasTicks() ? picture_.scaled(v.dimdle) : 0;
        const double from = headsInside_ ? head_ - beyond : -beyond, to = length_ - from;
        if (headsInside_ || v.dimtofl || (textInside_ && picture_.hasText() && !breaks_))
            piece(v.dimsd1 ? length_ / 2 : from, v.dimsd2 ? length_ / 2 : to);
        // Outside, the line goes on behind the heads, and up to a text or along below it.
        double last = length_;
        if (!headsInside_ && !v.dimsoxd) {
            if (!v.dimsd1)
                picture_.dimensionLine(at(-2 * head_), at(-head_));
            last += 2 * head_;
        }
        if (!picture_.userTextMiddle() && !textInside_ && picture_.hasText() && !v.dimsd2)
            last = breaks_ ? textAt_ - extent_ / 2 - picture_.gap() : textAt_ + extent_ / 2;
        if (!v.dimsd2)
            picture_.dimensionLine(at(length_ + (headsInside_ ? 0 : head_)), at(last));
        for (int which = 0; which < 2; ++which)
            if (headsInside_ || !v.dimsoxd)
                picture_.arrow(which, heads_[static_cast<size_t>(which)].first,
                               heads_[static_cast<size_t>(which)].second);
    }

    DimensionPicture& picture_;
    AcGePoint2d begin_;
    double length_, lineAngle_;
    AcGeVector2d along_;
    double head_;
    bool textInside_ = true, headsInside_ = true;
    double textAngle_ = 0, extent_ = 0;
    double textAt_ = 0;
    bool breaks_ = false;
    AcGePoint2d middle_;
    std::vector<std::pair<AcGePoint2d, AcGeVector2d>> heads_;
};

/// Where the extension line from a foot meets the dimension line.
AcGePoint2d meeting(const AcGePoint2d& foot, const LinearShape& shape) {
    const AcGeVector2d along = directionOf(shape.angle), extension = directionOf(shape.angle + shape.extensionAngle);
    const AcGeVector2d arm = shape.onLine - foot;
    const double across = leftOf(along).dotProduct(extension);
    return foot + extension * (leftOf(along).dotProduct(arm) / across);
}

void drawExtension(DimensionPicture& picture, int which, const AcGePoint2d& foot, const AcGePoint2d& end) {
    const auto direction = unitOf(end - foot);
    if (!direction)
        return;
    const DimVariables& v = picture.variables();
    picture.extensionLine(which, foot + *direction * picture.scaled(v.dimexo),
                          end + *direction * picture.scaled(v.dimexe));
}

} // namespace

void drawLinear(DimensionPicture& picture, const LinearShape& asked) {
    LinearShape shape = asked;
    // Extension lines along the dimension line would never meet it.
    if (std::fabs(std::sin(shape.extensionAngle)) < 1e-3)
        shape.extensionAngle = kAcGePi / 2;
    const AcGePoint2d begin = meeting(shape.first, shape), end = meeting(shape.second, shape);
    drawExtension(picture, 0, shape.first, begin);
    drawExtension(picture, 1, shape.second, end);
    LinearLayout layout(picture, begin, end);
    layout.draw();
    layout.drawText();
}

} // namespace vndk::db
