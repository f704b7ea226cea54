// The pictures that entities of unknown classes bring along: records of drawing calls, each with its size and kind.
#include "gi/entity_drawing_parts.h"

#include <array>
#include <bit>
#include <cstring>
#include <optional>

namespace vndk::gi {

namespace {

enum Kind : uint32_t {
    kCircle = 2,
    kCircle3 = 3,
    kArc = 4,
    kArc3 = 5,
    kPolyline = 6,
    kPolygon = 7,
    kMesh = 8,
    kShell = 9,
    kText = 10,
    kText2 = 11,
    kXline = 12,
    kRay = 13,
    kColor = 14,
    kLinetype = 18,
    kFill = 20,
    kTrueColor = 22,
    kLineWeight = 23,
    kLinetypeScale = 24,
    kPushMatrix = 29,
    kPushMatrix2 = 30,
    kPopMatrix = 31,
    kPolylineNormal = 32,
    kUnicodeText = 36,
    kUnicodeText2 = 38,
};

constexpr size_t kHeader = 8; // size and kind of a record
constexpr uint32_t kFillAlways = 1;
constexpr size_t kDeepest = 64; // of transforms within each other
constexpr double kTurn = 2 * kAcGePi;

/// The bytes of one record. What is missing reads as 0 and is told.
class RecordReader {
public:
    explicit RecordReader(std::string_view bytes) : bytes_(bytes) {}

    uint32_t number() {
        uint32_t value = 0;
        for (unsigned i = 0; i < 4; ++i)
            value |= uint32_t{byte()} << 8 * i;
        return value;
    }
    double real() {
        const uint64_t low = number();
        const double value = std::bit_cast<double>(low | uint64_t{number()} << 32);
        good_ = good_ && std::isfinite(value);
        return good_ ? value : 0;
    }
    AcGePoint3d point() {
        const double x = real(), y = real(), z = real();
        return {x, y, z};
    }
    AcGeVector3d vector() { return point().asVector(); }
    AcGePoint3d place(const AcGeMatrix3d& matrix) { return matrix * point(); }
    std::vector<AcGePoint3d> points(uint32_t count, const AcGeMatrix3d& matrix) {
        constexpr size_t kPointBytes = 24;
        std::vector<AcGePoint3d> all;
        good_ = good_ && count <= bytes_.size() / kPointBytes;
        for (uint32_t i = 0; good_ && i < count; ++i)
            all.push_back(place(matrix));
        return all;
    }
    /// Up to its end mark, which fills the record up to whole numbers.
    std::string text() {
        const size_t end = bytes_.find('\0');
        good_ = good_ && end != std::string_view::npos;
        if (!good_)
            return {};
        std::string found(bytes_.substr(0, end));
        bytes_.remove_prefix(std::min(bytes_.size(), (end / 4 + 1) * 4));
        return found;
    }
    /// The same in 16-bit characters; those that a drawing of this release can't hold become question marks.
    std::string wideText() {
        std::string found;
        size_t read = 0;
        while (good_) {
            const unsigned low = byte(), high = byte();
            read += 2;
            if (low == 0 && high == 0)
                break;
            found += high == 0 ? static_cast<char>(low) : '?';
        }
        if (read % 4 != 0) {
            byte();
            byte();
        }
        return found;
    }
    bool good() const { return good_; }

private:
    uint8_t byte() {
        if (bytes_.empty()) {
            good_ = false;
            return 0;
        }
        const auto value = static_cast<uint8_t>(bytes_[0]);
        bytes_.remove_prefix(1);
        return value;
    }

    std::string_view bytes_;
    bool good_ = true;
};

class ProxyDrawer {
public:
    ProxyDrawer(const AcDbEntity& entity, AcGiWorldDraw& context)
        : entity_(entity), geometry_(context.geometry()), traits_(context.subEntityTraits()) {}

    void draw(uint32_t kind, RecordReader r);

private:
    const AcGeMatrix3d& matrix() const { return matrices_.back(); }
    void drawLines(RecordReader& r, bool closed);
    void drawCircle(RecordReader& r);
    void drawArc(RecordReader& r);
    void drawThroughThree(RecordReader& r, bool whole);
    void drawMesh(RecordReader& r);
    void drawShell(RecordReader& r);
    void drawText(RecordReader& r, bool detailed, bool wide);
    void drawRound(const AcGePoint3d& center, const AcGeVector3d& a, const AcGeVector3d& b, double sweep);
    void pushMatrix(RecordReader& r);
    void setColor(uint32_t color);

    const AcDbEntity& entity_;
    AcGiGeometry& geometry_;
    AcGiSubEntityTraits& traits_;
    std::vector<AcGeMatrix3d> matrices_{AcGeMatrix3d()};
    bool filled_ = false;
};

void ProxyDrawer::drawLines(RecordReader& r, bool closed) {
    const uint32_t count = r.number();
    std::vector<AcGePoint3d> points = r.points(count, matrix());
    if (points.empty())
        return;
    if (closed && filled_)
        return geometry_.polygon(points);
    if (closed)
        points.push_back(points.front());
    geometry_.polyline(points);
}

void ProxyDrawer::drawRound(const AcGePoint3d& center, const AcGeVector3d& a, const AcGeVector3d& b, double sweep) {
    geometry_.ellipArc(matrix() * center, matrix() * a, matrix() * b, 0, sweep);
}

void ProxyDrawer::drawCircle(RecordReader& r) {
    const AcGePoint3d center = r.point();
    const double radius = r.real();
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(r.vector().normal());
    if (r.good())
        drawRound(center, plane.xAxis() * radius, plane.yAxis() * radius, kTurn);
}

void ProxyDrawer::drawArc(RecordReader& r) {
    const AcGePoint3d center = r.point();
    const double radius = r.real();
    const AcGeVector3d normal = r.vector().normal(), start = r.vector().normal();
    const double sweep = r.real();
    if (r.good())
        drawRound(center, start * radius, normal.crossProduct(start) * radius, sweep);
}

void ProxyDrawer::drawThroughThree(RecordReader& r, bool whole) {
    const AcGePoint3d a = r.point(), b = r.point(), c = r.point();
    const AcGeVector3d ab = b - a, ac = c - a, normal = ab.crossProduct(ac);
    if (!r.good())
        return;
    if (normal.lengthSqrd() == 0)
        return geometry_.polyline(std::array{matrix() * a, matrix() * c});
    const AcGeVector3d toCenter =
        (normal.crossProduct(ab) * ac.lengthSqrd() + ac.crossProduct(normal) * ab.lengthSqrd()) *
        (0.5 / normal.lengthSqrd());
    const AcGeVector3d arm = -toCenter, across = normal.normal().crossProduct(arm);
    drawRound(a + toCenter, arm, across, whole ? kTurn : arm.angleTo(c - (a + toCenter), normal));
}

/// Rows and columns of points. Flags of its pieces aren't looked at.
void ProxyDrawer::drawMesh(RecordReader& r) {
    const uint32_t rows = r.number(), columns = r.number();
    if (!r.good() || rows == 0 || columns == 0 || rows > UINT32_MAX / columns)
        return;
    const std::vector<AcGePoint3d> points = r.points(rows * columns, matrix());
    if (points.size() != size_t{rows} * columns)
        return;
    for (uint32_t row = 0; row < rows; ++row)
        geometry_.polyline(std::span(points).subspan(size_t{row} * columns, columns));
    for (uint32_t column = 0; column < columns; ++column) {
        std::vector<AcGePoint3d> line;
        for (uint32_t row = 0; row < rows; ++row)
            line.push_back(points[size_t{row} * columns + column]);
        geometry_.polyline(line);
    }
}

/// Points, and faces as lists of their numbers: how many, negative for a hole, and these.
void ProxyDrawer::drawShell(RecordReader& r) {
    const uint32_t count = r.number();
    const std::vector<AcGePoint3d> points = r.points(count, matrix());
    uint32_t left = r.number();
    while (r.good() && left > 0) {
        const auto size = static_cast<int32_t>(r.number());
        const uint32_t corners = size < 0 ? 0U - static_cast<uint32_t>(size) : static_cast<uint32_t>(size);
        if (corners >= left)
            return;
        left -= corners + 1;
        std::vector<AcGePoint3d> face;
        for (uint32_t i = 0; i < corners && r.good(); ++i)
            if (const uint32_t number = r.number(); number < points.size())
                face.push_back(points[number]);
        if (face.empty() || !r.good())
            continue;
        if (filled_ && size > 0) {
            geometry_.polygon(face);
            continue;
        }
        face.push_back(face.front());
        geometry_.polyline(face);
    }
}

void ProxyDrawer::drawText(RecordReader& r, bool detailed, bool wide) {
    AcGiText text;
    text.position = r.place(matrix());
    const AcGeVector3d normal = r.vector().normal(), along = r.vector().normal();
    if (detailed) {
        text.text = wide ? r.wideText() : r.text();
        const uint32_t length = r.number();
        if (length < text.text.size())
            text.text.resize(length);
        r.number(); // whether codes are left as they are
    }
    text.height = r.real();
    text.widthFactor = r.real();
    text.oblique = r.real();
    if (detailed) {
        r.real(); // tracking
        text.backward = r.number() & 1;
        text.upsideDown = r.number() & 1;
        r.number(); // vertical
        text.underlined = r.number() & 1;
        text.overlined = r.number() & 1;
    } else {
        text.text = wide ? r.wideText() : r.text();
    }
    const AcGeVector3d x = matrix() * along, y = matrix() * normal.crossProduct(along);
    if (!r.good() || x.isZeroLength() || y.isZeroLength())
        return;
    text.direction = x.normal();
    text.up = y.normal();
    text.height *= y.length();
    geometry_.text(text);
}

void ProxyDrawer::pushMatrix(RecordReader& r) {
    AcGeMatrix3d pushed;
    for (auto& row : pushed.entry)
        for (double& value : row)
            value = r.real();
    if (matrices_.size() < kDeepest)
        matrices_.push_back(r.good() ? matrix() * pushed : matrix());
}

void ProxyDrawer::setColor(uint32_t color) {
    constexpr uint32_t kHighest = 255;
    traits_.setColor(color == 0 || color > kHighest ? entity_.colorIndex() : static_cast<int>(color));
}

void ProxyDrawer::draw(uint32_t kind, RecordReader r) {
    switch (kind) {
    case kCircle:
        return drawCircle(r);
    case kCircle3:
        return drawThroughThree(r, true);
    case kArc:
        return drawArc(r);
    case kArc3:
        return drawThroughThree(r, false);
    case kPolyline:
    case kPolylineNormal:
        return drawLines(r, false);
    case kPolygon:
        return drawLines(r, true);
    case kMesh:
        return drawMesh(r);
    case kShell:
        return drawShell(r);
    case kText:
    case kUnicodeText:
        return drawText(r, false, kind == kUnicodeText);
    case kText2:
    case kUnicodeText2:
        return drawText(r, true, kind == kUnicodeText2);
    case kXline:
    case kRay: {
        const AcGePoint3d a = r.place(matrix()), b = r.place(matrix());
        if (r.good())
            kind == kRay ? geometry_.ray(a, b - a) : geometry_.xline(a, b - a);
        return;
    }
    case kColor:
        return setColor(r.number());
    case kTrueColor: {
        const AcCmEntityColor color(r.number());
        const bool own =
            color.colorMethod() == AcCmEntityColor::kByLayer || color.colorMethod() == AcCmEntityColor::kByBlock;
        return own ? traits_.setColor(entity_.colorIndex()) : traits_.setTrueColor(color);
    }
    case kLinetype: // by a number that other drawings don't share: all but the own one are drawn unbroken
        return traits_.setLineType(entity_.linetypeId());
    case kFill:
        filled_ = r.number() == kFillAlways;
        return;
    case kLineWeight:
        return traits_.setLineWeight(static_cast<AcDb::LineWeight>(static_cast<int32_t>(r.number())));
    case kLinetypeScale:
        if (const double scale = r.real(); scale > 0)
            traits_.setLineTypeScale(scale);
        return;
    case kPushMatrix:
    case kPushMatrix2:
        return pushMatrix(r);
    case kPopMatrix:
        if (matrices_.size() > 1)
            matrices_.pop_back();
        return;
    default:
        return; // of a kind that shows nothing, or isn't known
    }
}

} // namespace

bool drawProxyGraphics(const AcDbEntity& entity, AcGiWorldDraw& context) {
    std::string_view left = entity.proxyGraphics();
    if (left.size() < kHeader)
        return false;
    left.remove_prefix(kHeader); // the size of all, and the number of records
    ProxyDrawer drawer(entity, context);
    while (left.size() >= kHeader) {
        RecordReader header(left);
        const uint32_t size = header.number(), kind = header.number();
        if (size < kHeader || size > left.size())
            break;
        drawer.draw(kind, RecordReader(left.substr(kHeader, size - kHeader)));
        left.remove_prefix(size);
    }
    return true;
}

} // namespace vndk::gi
