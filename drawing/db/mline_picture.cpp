#include "db/mline_picture.h"

#include "db/database.h"
#include "db/opaque.h"
#include "dwg/mline_style.h"

#include <algorithm>

namespace vndk::db {

namespace {

using dwg::MlineStyle;
using Data = AcDbMline::Data;

MlineStyle styleOf(const AcDbMline& mline) {
    const AcDbObjectPointer<AcDbObject> object(mline.style());
    const auto* const opaque = object ? AcDbOpaqueObject::cast(object.object()) : nullptr;
    return opaque && dwg::isMlineStyle(opaque->fields()) ? dwg::mlineStyle(opaque->fields()).value_or(MlineStyle())
                                                         : MlineStyle();
}

AcDbObjectId linetypeAt(const AcDbMline& mline, const MlineStyle& style, size_t line) {
    const size_t place = line < style.lines.size() ? style.lines[line].linetypePlace : SIZE_MAX;
    const AcDbDatabase* const database = mline.style().database();
    if (place == SIZE_MAX || !database)
        return {};
    const AcDbObjectPointer<AcDbLinetypeTable> table(database->linetypeTableId());
    return table && place < table->records().size() ? table->records()[place] : AcDbObjectId();
}

double placeOnMiter(const AcDbMline::Vertex& vertex, size_t line) {
    return line < vertex.segments.size() && !vertex.segments[line].line.empty() ? vertex.segments[line].line[0] : 0;
}

AcGePoint3d cornerOf(const AcDbMline::Vertex& vertex, size_t line) {
    return vertex.point + vertex.miter * placeOnMiter(vertex, line);
}

/// The lines by their places on a vertex's miter.
std::vector<size_t> sortedLines(const AcDbMline::Vertex& vertex) {
    std::vector<size_t> order(vertex.segments.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(),
              [&](size_t a, size_t b) { return placeOnMiter(vertex, a) < placeOnMiter(vertex, b); });
    return order;
}

class MlineDrawer {
public:
    explicit MlineDrawer(const AcDbMline& mline) : data_(mline.data()), style_(styleOf(mline)) {
        picture_.fillColor = style_.fillColor;
        for (size_t line = 0; line < data_.lines; ++line)
            linetypes_.push_back(linetypeAt(mline, style_, line));
    }

    MlinePicture draw() {
        const size_t count = data_.vertices.size(), spans = count < 2 ? 0 : closed() ? count : count - 1;
        for (size_t i = 0; i < spans; ++i)
            drawSpan(data_.vertices[i], data_.vertices[(i + 1) % count]);
        if (style_.flags & MlineStyle::kJoints)
            for (size_t i = closed() ? 0 : 1; i + (closed() ? 0 : 1) < count; ++i)
                drawAcross(data_.vertices[i]);
        if (!closed() && count >= 2) {
            if (!(data_.flags & AcDbMline::kNoStartCaps))
                drawCap(data_.vertices[0], -data_.vertices[0].direction, MlineStyle::kStartSquare);
            if (!(data_.flags & AcDbMline::kNoEndCaps))
                drawCap(data_.vertices[count - 1], data_.vertices[count - 2].direction, MlineStyle::kEndSquare);
        }
        return std::move(picture_);
    }

private:
    bool closed() const { return data_.flags & AcDbMline::kClosed; }
    short colorOf(size_t line) const {
        return line < style_.lines.size() ? style_.lines[line].color : kAcDbColorByLayer;
    }

    void drawSpan(const AcDbMline::Vertex& from, const AcDbMline::Vertex& to) {
        for (size_t line = 0; line < from.segments.size(); ++line)
            drawLine(from, to, line);
        if (!(style_.flags & MlineStyle::kFill) || from.segments.size() < 2)
            return;
        const std::vector<size_t> order = sortedLines(from);
        picture_.fills.push_back({cornerOf(from, order.front()), cornerOf(to, order.front()),
                                  cornerOf(to, order.back()), cornerOf(from, order.back())});
    }

    void drawLine(const AcDbMline::Vertex& from, const AcDbMline::Vertex& to, size_t line) {
        const std::vector<double>& places = from.segments[line].line;
        const AcGePoint3d start = cornerOf(from, line), end = cornerOf(to, line);
        const double length = start.distanceTo(end);
        const auto add = [&](double begin, double stop) {
            if (stop > begin)
                picture_.strokes.push_back({start + from.direction * begin,
                                            stop >= length ? end : start + from.direction * stop, colorOf(line),
                                            linetypes_[std::min(line, linetypes_.size() - 1)], std::nullopt});
        };
        if (length == 0 || linetypes_.empty())
            return;
        if (places.size() < 2)
            return add(0, length);
        for (size_t i = 1; i < places.size(); i += 2)
            add(places[i], i + 1 < places.size() ? std::min(places[i + 1], length) : length);
    }

    void drawAcross(const AcDbMline::Vertex& vertex) {
        if (vertex.segments.size() < 2)
            return;
        const std::vector<size_t> order = sortedLines(vertex);
        picture_.strokes.push_back(
            {cornerOf(vertex, order.front()), cornerOf(vertex, order.back()), kAcDbColorByLayer, {}, std::nullopt});
    }

    void drawArc(const AcDbMline::Vertex& vertex, size_t a, size_t b, const AcGeVector3d& outward) {
        picture_.strokes.push_back({cornerOf(vertex, a), cornerOf(vertex, b), colorOf(b), {}, outward});
    }

    /// `square` is the flag of the straight end; those of the round ones stand beside it.
    void drawCap(const AcDbMline::Vertex& vertex, const AcGeVector3d& outward, unsigned square) {
        if (vertex.segments.size() < 2)
            return;
        const std::vector<size_t> order = sortedLines(vertex);
        if (style_.flags & square)
            drawAcross(vertex);
        if (style_.flags & square * 4)
            drawArc(vertex, order.front(), order.back(), outward);
        if (style_.flags & square * 2)
            for (size_t i = 1; 2 * i + 1 < order.size(); ++i)
                drawArc(vertex, order[i], order[order.size() - 1 - i], outward);
    }

    const Data& data_;
    MlineStyle style_;
    std::vector<AcDbObjectId> linetypes_;
    MlinePicture picture_;
};

} // namespace

MlinePicture mlinePicture(const AcDbMline& mline) { return MlineDrawer(mline).draw(); }

} // namespace vndk::db
