// Paragraphs: runs of letters with their formats, broken into lines of the frame's width.
#include "db/open.h"
#include "db/symbol_tables.h"
#include "gi/entity_drawing_parts.h"
#include "gi/paragraph_runs.h"

#include <algorithm>
#include <array>

namespace vndk::gi {

namespace {

constexpr double kLineAdvance = 5.0 / 3; // of the height, from one base line to the next
constexpr double kStackedHeight = 0.7;   // of the height
constexpr double kStackMiddle = 0.5;     // of the height: where the bar lies
constexpr double kStackGap = 0.15;       // of the height, to the bar

/// Letters in a line.
struct Piece {
    const TextRun* run = nullptr;
    std::string text;
    double width = 0;
};

struct Line {
    std::vector<Piece> pieces;
    double width = 0;  // without blanks at its end
    double height = 0; // of its highest letters
};

AcGiText textOf(const AcGiText& pattern, const TextFormat& format, std::string letters) {
    AcGiText text = pattern;
    text.text = std::move(letters);
    text.height = format.height;
    text.widthFactor = format.widthFactor;
    text.oblique = format.oblique;
    text.color = format.color;
    text.face = format.face;
    text.bold = format.bold;
    text.italic = format.italic;
    text.underlined = format.underlined;
    text.overlined = format.overlined;
    return text;
}

TextFormat smaller(TextFormat format) {
    format.height *= kStackedHeight;
    return format;
}

/// Breaks paragraphs at blanks where a line would become wider than the frame. A word that is wider stays whole.
class LineBreaker {
public:
    LineBreaker(const AcGiText& pattern, double width, AcGiGeometry& geometry)
        : pattern_(pattern), width_(width), geometry_(geometry) {}

    void addParagraph(const std::vector<TextRun>& runs, double height, std::vector<Line>& lines) {
        line_ = Line();
        line_.height = 0;
        for (const TextRun& run : runs) {
            if (run.stacking != TextRun::kNone) {
                addToWord(run, run.text);
                continue;
            }
            for (size_t begin = 0; begin < run.text.size();) {
                const bool blank = run.text[begin] == ' ';
                const size_t end = std::min(blank ? run.text.find_first_not_of(' ', begin) : run.text.find(' ', begin),
                                            run.text.size());
                if (blank)
                    finishWord(lines);
                (blank ? blanks_ : word_).push_back(piece(run, run.text.substr(begin, end - begin)));
                begin = end;
            }
        }
        finishWord(lines);
        blanks_.clear();
        finishLine(height, lines);
    }

private:
    Piece piece(const TextRun& run, const std::string& text) {
        if (run.stacking == TextRun::kNone)
            return {&run, text, geometry_.textWidth(textOf(pattern_, run.format, text))};
        const TextFormat format = smaller(run.format);
        return {&run, text,
                std::max(geometry_.textWidth(textOf(pattern_, format, text)),
                         geometry_.textWidth(textOf(pattern_, format, run.below)))};
    }
    void addToWord(const TextRun& run, const std::string& text) { word_.push_back(piece(run, text)); }

    static double widthOf(const std::vector<Piece>& pieces) {
        double width = 0;
        for (const Piece& piece : pieces)
            width += piece.width;
        return width;
    }

    /// Blanks count only between words of a line.
    void finishWord(std::vector<Line>& lines) {
        if (word_.empty())
            return;
        if (width_ > 0 && !line_.pieces.empty() && line_.width + widthOf(blanks_) + widthOf(word_) > width_) {
            blanks_.clear();
            finishLine(0, lines);
        }
        for (std::vector<Piece>* const pieces : {&blanks_, &word_}) {
            for (Piece& piece : *pieces)
                append(std::move(piece));
            pieces->clear();
        }
    }

    /// Letters of one run are one piece.
    void append(Piece piece) {
        line_.width += piece.width;
        line_.height = std::max(line_.height, piece.run->format.height);
        if (!line_.pieces.empty() && line_.pieces.back().run == piece.run && piece.run->stacking == TextRun::kNone) {
            line_.pieces.back().text += piece.text;
            line_.pieces.back().width += piece.width;
        } else {
            line_.pieces.push_back(std::move(piece));
        }
    }

    /// An empty line is as high as the text is by itself.
    void finishLine(double height, std::vector<Line>& lines) {
        if (line_.pieces.empty())
            line_.height = height;
        lines.push_back(std::move(line_));
        line_ = Line();
    }

    const AcGiText& pattern_;
    double width_;
    AcGiGeometry& geometry_;
    Line line_;
    std::vector<Piece> blanks_, word_; // behind the line
};

/// Two numbers, one above the other.
void drawStack(const AcGiText& pattern, const Piece& piece, AcGiGeometry& geometry) {
    const TextFormat format = smaller(piece.run->format);
    const double height = piece.run->format.height;
    const AcGePoint3d middle = pattern.position + pattern.up * (kStackMiddle * height);
    AcGiText text = textOf(pattern, format, piece.text);
    text.along = AcGiText::kCenter;
    text.position = middle + pattern.direction * (piece.width / 2) + pattern.up * (kStackGap * height);
    geometry.text(text);
    text.text = piece.run->below;
    text.position += pattern.up * (-2 * kStackGap * height - format.height);
    geometry.text(text);
    if (piece.run->stacking == TextRun::kOverLine)
        geometry.polyline(std::array{middle, middle + pattern.direction * piece.width});
}

void drawLineOfText(AcGiText pattern, const Line& line, AcGiGeometry& geometry) {
    constexpr double kAlong[] = {0, 0.5, 1};
    pattern.position += pattern.direction * (-kAlong[pattern.along] * line.width);
    pattern.along = AcGiText::kLeft;
    for (const Piece& piece : line.pieces) {
        if (piece.run->stacking != TextRun::kNone)
            drawStack(pattern, piece, geometry);
        else
            geometry.text(textOf(pattern, piece.run->format, piece.text));
        pattern.position += pattern.direction * piece.width;
    }
}

/// As the paragraph begins: by its own height and its style.
TextFormat formatOf(const AcDbMText::Data& data) {
    TextFormat format;
    format.height = data.height;
    if (const AcDbObjectPointer<AcDbTextStyleTableRecord> style(data.style); style && style->data().xScale > 0) {
        format.widthFactor = style->data().xScale;
        format.oblique = style->data().oblique;
    }
    return format;
}

} // namespace

void drawMText(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const AcDbMText::Data& data = static_cast<const AcDbMText&>(entity).data();
    AcGiText text;
    text.style = data.style;
    text.direction = data.direction.normal();
    text.up = data.normal.crossProduct(data.direction).normal();
    const int place = data.attachment >= 1 && data.attachment <= 9 ? data.attachment - 1 : 0;
    text.along = static_cast<AcGiText::Along>(place % 3);
    const std::vector<std::vector<TextRun>> paragraphs = paragraphRuns(data.contents, formatOf(data));
    LineBreaker breaker(text, data.width, geometry);
    std::vector<Line> lines;
    for (const std::vector<TextRun>& paragraph : paragraphs)
        breaker.addParagraph(paragraph, data.height, lines);
    // Each line stands as far below the one before as its own height wants.
    const double advance = kLineAdvance * data.lineSpacingFactor;
    double whole = lines[0].height;
    for (size_t i = 1; i < lines.size(); ++i)
        whole += advance * lines[i].height;
    text.position = data.location + text.up * (whole * (place / 3) / 2 - lines[0].height);
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i > 0)
            text.position += text.up * (-advance * lines[i].height);
        drawLineOfText(text, lines[i], geometry);
    }
}

} // namespace vndk::gi
