// Paragraphs: broken into lines of the frame's width, without their formats.
#include "gi/entity_drawing_parts.h"
#include "gi/text_codes.h"

namespace vndk::gi {

namespace {

constexpr double kLineAdvance = 5.0 / 3; // of the height, from one base line to the next

/// Breaks paragraphs at blanks where a line would become wider than the frame. A word that is wider stays whole.
class LineBreaker {
public:
    LineBreaker(AcGiText pattern, double width, AcGiGeometry& geometry)
        : pattern_(std::move(pattern)), width_(width), geometry_(geometry) {}

    std::vector<std::string> lines(const std::string& paragraphs) {
        std::vector<std::string> result;
        size_t begin = 0;
        while (begin <= paragraphs.size()) {
            const size_t end = std::min(paragraphs.find('\n', begin), paragraphs.size());
            addParagraph(paragraphs.substr(begin, end - begin), result);
            begin = end + 1;
        }
        return result;
    }

private:
    bool fits(const std::string& line) {
        if (!(width_ > 0))
            return true;
        pattern_.text = line;
        return geometry_.textWidth(pattern_) <= width_;
    }

    void addParagraph(const std::string& paragraph, std::vector<std::string>& result) {
        std::string line;
        size_t begin = 0;
        while (begin < paragraph.size()) {
            const size_t end = std::min(paragraph.find(' ', begin), paragraph.size());
            const std::string word = paragraph.substr(begin, end - begin);
            const std::string longer = begin == 0 ? word : line + " " + word;
            if (begin != 0 && !fits(longer)) {
                result.push_back(std::move(line));
                line = word;
            } else {
                line = longer;
            }
            begin = end + 1;
        }
        result.push_back(std::move(line));
    }

    AcGiText pattern_;
    double width_;
    AcGiGeometry& geometry_;
};

} // namespace

void drawMText(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const AcDbMText::Data& data = static_cast<const AcDbMText&>(entity).data();
    AcGiText text;
    text.style = data.style;
    text.height = data.height;
    text.direction = data.direction.normal();
    text.up = data.normal.crossProduct(data.direction).normal();
    const int place = data.attachment >= 1 && data.attachment <= 9 ? data.attachment - 1 : 0;
    text.along = static_cast<AcGiText::Along>(place % 3);
    const std::vector<std::string> lines = LineBreaker(text, data.width, geometry).lines(plainParagraph(data.contents));
    const double advance = kLineAdvance * data.height * data.lineSpacingFactor;
    const double whole = data.height + advance * static_cast<double>(lines.size() - 1);
    text.position = data.location + text.up * (whole * (place / 3) / 2 - data.height);
    for (const std::string& line : lines) {
        text.text = line;
        if (!line.empty())
            geometry.text(text);
        text.position += text.up * -advance;
    }
}

} // namespace vndk::gi
