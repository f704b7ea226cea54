// Feature control frames: rows of cells with texts and symbols.
#include "db/curves.h"
#include "db/database.h"
#include "db/dimension_picture.h"
#include "db/leader.h"
#include "db/plane_math.h"
#include "db/text.h"
#include "db/tolerance_symbols.h"

#include <algorithm>

using vndk::db::DimensionPicture;
using vndk::db::Parts;

ACDB_DXF_DEFINE_MEMBERS(AcDbFcf, AcDbEntity, "TOLERANCE", "")

AcDbFcf::AcDbFcf(const char* text, const AcGePoint3d& location, const AcGeVector3d& normal,
                 const AcGeVector3d& direction) {
    data_.text = text ? text : "";
    data_.location = location;
    data_.normal = normal.normal();
    data_.direction = direction.normal();
}

char* AcDbFcf::text() const { return acutNewString(data_.text); }

Acad::ErrorStatus AcDbFcf::setText(const char* text) {
    constexpr size_t kLongest = 65000;
    if (!text || std::string_view(text).size() > kLongest)
        return Acad::eInvalidInput;
    return acdbSetMember(*this, data_.text, text);
}

namespace {

/// Runs of characters: a text, or letters that name symbols.
struct Run {
    std::string text;
    bool symbols = false;
};
using Cell = std::vector<Run>;
using Row = std::vector<Cell>;

constexpr double kSymbolSize = 1.25; // of the text's height
constexpr double kRowHeight = 2;

std::vector<std::string> split(const std::string& text, std::initializer_list<std::string_view> marks) {
    std::vector<std::string> pieces(1);
    for (size_t i = 0; i < text.size();) {
        const auto mark = std::find_if(marks.begin(), marks.end(),
                                       [&](std::string_view m) { return text.compare(i, m.size(), m) == 0; });
        if (mark == marks.end()) {
            pieces.back() += text[i++];
        } else {
            pieces.emplace_back();
            i += mark->size();
        }
    }
    return pieces;
}

/// Letters stand for symbols from a change to the font gdt up to the end of its braces.
Cell cellOf(const std::string& text) {
    Cell cell;
    bool symbols = false;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == 'F' || text[i + 1] == 'f')) {
            const size_t end = std::min(text.find(';', i), text.size());
            symbols = acdbFoldName(text.substr(i + 2, end - i - 2)).starts_with("GDT");
            i = end;
        } else if (text[i] == '}') {
            symbols = false;
        } else if (text[i] != '{') {
            if (cell.empty() || cell.back().symbols != symbols)
                cell.push_back({{}, symbols});
            cell.back().text += text[i];
        }
    }
    return cell;
}

std::vector<Row> rowsOf(const std::string& text) {
    std::vector<Row> rows;
    for (const std::string& line : split(text, {"\n", "\\P", "^J"})) {
        Row row;
        for (const std::string& piece : split(line, {"%%v", "%%V"}))
            row.push_back(cellOf(piece));
        while (!row.empty() && row.back().empty())
            row.pop_back();
        std::erase_if(row, [](const Cell& cell) { return cell.empty(); });
        rows.push_back(std::move(row));
    }
    return rows;
}

/// Draws from the left of the first row on; x and y are drawing units along the frame.
class FramePen : public vndk::db::SymbolPen {
public:
    FramePen(DimensionPicture& picture, const AcGePoint2d& origin, double angle, double height)
        : picture_(picture), origin_(origin), angle_(angle), along_(vndk::db::directionOf(angle)), height_(height) {}

    void drawRow(const Row& row, double middle) {
        double x = 0;
        const double half = kRowHeight * height_ / 2;
        for (const Cell& cell : row) {
            const double begin = x;
            x += height_ / 2;
            for (const Run& run : cell)
                x = run.symbols ? symbolsAt(run.text, x, middle) : textAt(run.text, x, middle);
            x += height_ / 2;
            frame(begin, x, middle - half, middle + half);
        }
    }

    void line(double x1, double y1, double x2, double y2) override {
        picture_.line(at(x_ + x1 * size_, y_ + y1 * size_), at(x_ + x2 * size_, y_ + y2 * size_));
    }
    void arc(double x, double y, double radius, double start, double end) override {
        constexpr double kDegree = kAcGePi / 180;
        const AcGePoint2d center = at(x_ + x * size_, y_ + y * size_);
        // A whole circle as two arcs: one arc can't be told from none.
        const double middle = (start + end) / 2;
        picture_.arc(center, radius * size_, angle_ + start * kDegree, angle_ + middle * kDegree);
        picture_.arc(center, radius * size_, angle_ + middle * kDegree, angle_ + end * kDegree);
    }
    void letter(char c) override { addText(std::string(1, c), at(x_, y_), AcDb::kTextMid, height_ * 0.8); }

private:
    AcGePoint2d at(double x, double y) const { return origin_ + along_ * x + vndk::db::leftOf(along_) * y; }

    void frame(double left, double right, double bottom, double top) {
        const AcGePoint2d corners[] = {at(left, bottom), at(right, bottom), at(right, top), at(left, top)};
        for (size_t i = 0; i < 4; ++i)
            picture_.line(corners[i], corners[(i + 1) % 4]);
    }

    double symbolsAt(const std::string& letters, double x, double y) {
        size_ = kSymbolSize * height_;
        for (const char letter : letters) {
            x_ = x + size_ / 2;
            y_ = y;
            if (vndk::db::drawToleranceSymbol(letter, *this))
                x += size_ * 1.1;
        }
        return x;
    }

    double textAt(const std::string& text, double x, double y) {
        addText(text, at(x, y), AcDb::kTextLeft, height_);
        return x + vndk::db::estimatedWidth(text) * height_;
    }

    void addText(const std::string& value, const AcGePoint2d& place, AcDb::TextHorzMode mode, double height) {
        auto text = std::make_unique<AcDbText>(AcGePoint3d(), value.c_str(), picture_.variables().dimtxsty, height);
        text->setNormal(picture_.normal());
        text->setRotation(angle_);
        text->setHorizontalMode(mode);
        if (mode == AcDb::kTextLeft)
            text->setVerticalMode(AcDb::kTextVertMid);
        text->setPosition(picture_.toWorld(place));
        text->setAlignmentPoint(picture_.toWorld(place));
        text->adjustAlignment();
        picture_.add(std::move(text), picture_.variables().dimclrt);
    }

    DimensionPicture& picture_;
    AcGePoint2d origin_;
    double angle_;
    AcGeVector2d along_;
    double height_;
    double x_ = 0, y_ = 0, size_ = 1;
};

} // namespace

Parts AcDbFcf::picture() const {
    AcDbDatabase* const owner = database() ? database() : data_.style.database();
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(data_.normal);
    const AcGePoint3d place = toPlane * data_.location;
    const AcGeVector3d direction = toPlane * data_.direction;
    DimensionPicture picture(owner, data_.normal, place.z, acdbDimVariables(*this, data_.style));
    const double height = data_.height > 0 ? data_.height : picture.textHeight();
    FramePen pen(picture, {place.x, place.y}, std::atan2(direction.y, direction.x), height);
    double middle = 0;
    for (const Row& row : rowsOf(data_.text)) {
        if (!row.empty())
            pen.drawRow(row, middle);
        middle -= row.empty() ? 0 : kRowHeight * height;
    }
    return vndk::db::shownBy(*this, owner, picture.take());
}

Acad::ErrorStatus AcDbFcf::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    Data moved = data_;
    moved.location = matrix * data_.location;
    moved.direction = (matrix * data_.direction).normal();
    moved.normal = (matrix * data_.normal).normal();
    moved.height *= matrix.scale();
    moved.gap *= matrix.scale();
    // What was read from the front is still read from there.
    if (matrix.det() < 0) {
        const double angle = (AcGeMatrix3d::worldToPlane(moved.normal) * moved.direction).angleTo(AcGeVector3d::kXAxis);
        if (angle > kAcGePi / 2)
            moved.direction = -moved.direction;
    }
    const Acad::ErrorStatus status = acdbSetMember(*this, data_, moved);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbFcf::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    extents.addPoint(data_.location);
    for (const std::unique_ptr<AcDbEntity>& part : picture()) {
        AcDbExtents box;
        if (part->getGeomExtents(box) == Acad::eOk)
            extents.addExt(box);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFcf::explode(std::vector<AcDbEntity*>& parts) const {
    Parts pieces = picture();
    if (pieces.empty())
        return Acad::eNotApplicable;
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}

void AcDbFcf::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    visitor.visit(data_.style, AcDb::kHardPointer);
}

void AcDbFcf::madeResident() {
    if (data_.style.isNull())
        data_.style = database()->idOf(database()->header().DIMSTYLE);
}
