#include "ui/pointer_tool.h"

#include "ap/document.h"
#include "db/open.h"
#include "ed/coordinates.h"
#include "ed/host.h"
#include "ed/pick.h"

#include <algorithm>
#include <cmath>

namespace vndk::host {

namespace {

using Kind = PromptRequest::Kind;
using Rectangle = PromptRequest::Rectangle;

constexpr int kDragStart = 4;         // pixels; a shorter way between press and release is a click
constexpr size_t kMostDragged = 4000; // pieces; a larger picture follows the cursor in part

lisp::Value pointValue(const AcGePoint3d& p) {
    return lisp::Value::list({lisp::Value::real(p.x), lisp::Value::real(p.y), lisp::Value::real(p.z)});
}

bool isChoosable(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    return entity && !isSheet(*entity);
}

} // namespace

// The prompt that waits.

void PointerTool::begin(const PromptRequest& request) {
    Prompt prompt;
    prompt.kind = request.kind;
    prompt.dashed = request.dashed;
    prompt.rectangle = request.rectangle;
    prompt.snap = request.snap;
    if (const AcApDocument* const document = host_.documents().curDocument(); document && request.base)
        prompt.base = ucsToWorld(*document->database()) * *request.base;
    if (request.dragged) {
        const AcGeMatrix3d toGrip =
            AcGeMatrix3d::translation(AcGePoint3d::kOrigin - request.dragged->grip) * request.dragged->transform;
        for (const AcDbObjectId id : request.dragged->entities)
            if (const AcDbObjectPointer<AcDbEntity> entity(id); entity)
                addOutline(*entity, toGrip, prompt.dragged);
        if (!request.dragged->block.isNull())
            addBlockOutline(request.dragged->block, toGrip, prompt.dragged);
        prompt.hasDragged = true;
    }
    prompts_.push_back(std::move(prompt));
    ahead_.reset();
    findPlace();
}

void PointerTool::end() {
    prompts_.pop_back();
    hovered_ = {};
    findPlace();
}

const PointerTool::Prompt& PointerTool::prompt() const { return prompts_.empty() ? idle_ : prompts_.back(); }

bool PointerTool::asksPoint() const {
    const Kind kind = prompt().kind;
    return kind == Kind::Point || kind == Kind::Corner || kind == Kind::Distance || kind == Kind::Angle;
}

bool PointerTool::asksEntity() const { return prompt().kind == Kind::Entity || prompt().kind == Kind::Objects; }

/// No command runs, and the user may choose what the next one works on.
bool PointerTool::choosesAhead() const { return prompt().kind == Kind::Command && variable("PICKFIRST") != 0; }

double PointerTool::variable(const char* name) const { return host_.variables().getShort(name); }

void PointerTool::drawingChanged() {
    highlighted_.clear();
    hovered_ = {};
    cancel();
    findPlace();
}

void PointerTool::cancel() {
    ahead_.reset();
    if (AcApDocument* const document = host_.documents().curDocument())
        document->pickedFirst.clear();
}

std::vector<AcDbObjectId> PointerTool::marked() const {
    std::vector<AcDbObjectId> marked;
    if (variable("HIGHLIGHT") == 0)
        return marked;
    marked = highlighted_;
    if (const AcApDocument* const document = host_.documents().curDocument())
        marked.insert(marked.end(), document->pickedFirst.begin(), document->pickedFirst.end());
    if (!hovered_.isNull())
        marked.push_back(hovered_);
    return marked;
}

// Where the mouse points.

CPoint PointerTool::pixelOf(const AcGePoint3d& world) const {
    const AcGePoint3d at = picture_.seenAt(world);
    const auto whole = [](double v) { return static_cast<int>(std::clamp(std::floor(v), -1e6, 1e6)); };
    return {whole(at.x), whole(at.y)};
}

/// Where the line of sight through a pixel's middle meets the plane of the UCS at the elevation; where they don't meet,
/// the plane of the screen.
AcGePoint3d PointerTool::planePoint(CPoint at) const {
    const AcApDocument* const document = picture_.document();
    if (!document)
        return {};
    const AcDbDatabase& database = *document->database();
    const DrawingViews::View& view = document->views().current();
    const AcGeMatrix3d toWorld = picture_.worldToDevice().inverse();
    const double depth = (picture_.worldToDevice() * view.center).z;
    const AcGePoint3d seen = toWorld * AcGePoint3d(at.x + 0.5, at.y + 0.5, depth);
    const AcGeMatrix3d toUcs = ucsToWorld(database).inverse();
    AcGePoint3d inUcs = toUcs * seen;
    const AcGeVector3d sight = toUcs * (view.eye > 0 ? eyeOf(view) - seen : view.direction);
    if (std::fabs(sight.z) > 1e-6)
        inUcs = inUcs + sight * ((database.header().ELEVATION - inUcs.z) / sight.z);
    return ucsToWorld(database) * inUcs;
}

/// On the axis of the UCS that lies nearer.
AcGePoint3d PointerTool::straightened(const AcGePoint3d& point, const AcGePoint3d& base) const {
    const AcGeMatrix3d toWorld = ucsToWorld(*picture_.document()->database());
    AcGeVector3d way = toWorld.inverse() * (point - base);
    (std::fabs(way.x) >= std::fabs(way.y) ? way.y : way.x) = 0;
    return base + toWorld * way;
}

std::optional<Snap> PointerTool::snapAt() const {
    AcApDocument* const document = picture_.document();
    const int modes = prompt().snap != 0 ? prompt().snap : static_cast<int>(variable("OSMODE"));
    if (!document || modes == 0 || (modes & kSnapOff) != 0)
        return std::nullopt;
    SnapQuery query{picture_.worldToDevice(), {at_.x + 0.5, at_.y + 0.5}, variable("APERTURE"), modes, prompt().base};
    const int reach = static_cast<int>(query.aperture);
    const CSize corner(reach, reach);
    std::vector<const Outline*> outlines;
    for (const AcDbObjectId id : entitiesIn(at_ - corner, at_ + corner, true))
        outlines.push_back(&picture_.outlineOf(id));
    return findSnap(outlines, query);
}

AcDbObjectId PointerTool::entityUnder(CPoint at) const {
    if (!picture_.canBeRead())
        return {};
    const AcDbObjectId id = picture_.view()->entityAt({static_cast<int>(at.x), static_cast<int>(at.y)},
                                                      static_cast<int>(variable("PICKBOX")));
    return isChoosable(id) ? id : AcDbObjectId();
}

std::vector<AcDbObjectId> PointerTool::entitiesIn(CPoint a, CPoint b, bool touching) const {
    std::vector<AcDbObjectId> found;
    if (!picture_.canBeRead())
        return found;
    const auto low = [](LONG v, LONG w) { return static_cast<int>(std::min(v, w)); };
    const auto high = [](LONG v, LONG w) { return static_cast<int>(std::max(v, w)); };
    picture_.view()->entitiesIn({{low(a.x, b.x), low(a.y, b.y)}, {high(a.x, b.x), high(a.y, b.y)}}, touching, found);
    std::erase_if(found, [](AcDbObjectId id) { return !isChoosable(id); });
    return found;
}

AcDbObjectId PointerTool::entityToOpen(CPoint at) const {
    return prompt().kind == Kind::Command ? entityUnder(at) : AcDbObjectId();
}

void PointerTool::findPlace() {
    snap_.reset();
    hovered_ = {};
    if (!inside_ || !picture_.document())
        return;
    place_ = planePoint(at_);
    if (asksPoint()) {
        snap_ = snapAt();
        if (snap_)
            place_ = snap_->point;
        else if (prompt().base && prompt().kind != Kind::Corner && variable("ORTHOMODE") != 0)
            place_ = straightened(place_, *prompt().base);
    } else if (asksEntity()) {
        hovered_ = entityUnder(at_);
    }
}

void PointerTool::moveTo(CPoint at) {
    inside_ = true;
    at_ = at;
    findPlace();
}

// Answers.

void PointerTool::answer(lisp::Value value) {
    host_.commandLine().input().pick(std::move(value));
    if (onAnswer)
        onAnswer();
}

void PointerTool::answerPoint(const AcGePoint3d& world) {
    answer(pointValue(ucsToWorld(*picture_.document()->database()).inverse() * world));
}

void PointerTool::answerEntity(AcDbObjectId id, const AcGePoint3d& world, bool remove) {
    const AcGePoint3d point = ucsToWorld(*picture_.document()->database()).inverse() * world;
    const lisp::Value name = lisp::Value::ename(static_cast<std::uint64_t>(id.asOldId()));
    answer(remove ? lisp::Value::list({name, pointValue(point), lisp::Value::string("Remove")})
                  : lisp::Value::list({name, pointValue(point)}));
}

void PointerTool::press(CPoint at, bool shift) {
    moveTo(at);
    if (!picture_.document())
        return;
    pressed_ = true;
    pressedAt_ = at;
    if (asksPoint()) {
        if (prompt().snap != 0 && prompt().snap != kSnapOff && !snap_) {
            host_.freshLine();
            host_.print("No " + std::string(snapName(prompt().snap)) + " found for specified point.\n");
            return;
        }
        return answerPoint(place_);
    }
    if (asksEntity()) {
        if (!hovered_.isNull())
            return answerEntity(hovered_, place_, shift && prompt().kind == Kind::Objects);
        return answerPoint(place_);
    }
    if (choosesAhead())
        chooseAhead(at, shift);
}

/// The end of a way with the button held is the other corner of a rectangle that the press began.
void PointerTool::release(CPoint at, bool shift) {
    const bool dragged =
        pressed_ && (std::abs(at.x - pressedAt_.x) > kDragStart || std::abs(at.y - pressedAt_.y) > kDragStart);
    pressed_ = false;
    moveTo(at);
    if (!dragged || !picture_.document())
        return;
    if (ahead_)
        closeRectangle(at, shift);
    else if (prompt().kind == Kind::Corner && prompt().base && pixelOf(*prompt().base) == pressedAt_)
        answerPoint(place_);
}

void PointerTool::chooseAhead(CPoint at, bool shift) {
    if (ahead_)
        return closeRectangle(at, shift);
    std::vector<AcDbObjectId>& chosen = picture_.document()->pickedFirst;
    const AcDbObjectId id = entityUnder(at);
    if (id.isNull()) {
        ahead_ = place_;
        return;
    }
    const size_t removed = shift ? std::erase(chosen, id) : 0;
    if (!shift && removed == 0 && std::find(chosen.begin(), chosen.end(), id) == chosen.end())
        chosen.push_back(id);
}

void PointerTool::closeRectangle(CPoint at, bool shift) {
    const CPoint first = pixelOf(*ahead_);
    ahead_.reset();
    std::vector<AcDbObjectId>& chosen = picture_.document()->pickedFirst;
    // To the left it takes what it touches, too.
    for (const AcDbObjectId id : entitiesIn(first, at, at.x < first.x)) {
        if (shift)
            std::erase(chosen, id);
        else if (std::find(chosen.begin(), chosen.end(), id) == chosen.end())
            chosen.push_back(id);
    }
}

// What is drawn above the drawing.

COLORREF PointerTool::ink() const { return picture_.background() == RGB(0, 0, 0) ? RGB(255, 255, 255) : RGB(0, 0, 0); }

void PointerTool::draw(Overlay& overlay) {
    if (!inside_ || !picture_.document())
        return;
    drawCross(overlay);
    if (asksPoint()) {
        drawBand(overlay);
        drawDragged(overlay);
        drawSnap(overlay);
    }
    if (ahead_)
        drawFrame(overlay, *ahead_, at_.x < pixelOf(*ahead_).x);
}

void PointerTool::drawCross(Overlay& overlay) const {
    const int box = static_cast<int>(variable("PICKBOX"));
    const bool withBox = asksEntity() || (choosesAhead() && !ahead_);
    if (withBox)
        overlay.frame({at_.x - box, at_.y - box, at_.x + box, at_.y + box}, ink());
    if (asksEntity())
        return;
    const int share = static_cast<int>(std::clamp(variable("CURSORSIZE"), 1.0, 100.0));
    const int reach = share == 100 ? std::max(picture_.width(), picture_.height())
                                   : std::max(picture_.width(), picture_.height()) * share / 200;
    const int hole = withBox ? box : 0;
    const CPoint ways[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
    for (const CPoint& way : ways)
        overlay.line({at_.x + way.x * hole, at_.y + way.y * hole}, {at_.x + way.x * reach, at_.y + way.y * reach},
                     ink());
}

void PointerTool::drawBand(Overlay& overlay) const {
    if (!prompt().base)
        return;
    if (prompt().kind == Kind::Corner) {
        const bool leftward = at_.x < pixelOf(*prompt().base).x;
        const bool dashed = prompt().rectangle == Rectangle::Crossing ||
                            (prompt().rectangle == Rectangle::ByDirection && leftward) || prompt().dashed;
        return prompt().rectangle == Rectangle::Plain ? drawRectangle(overlay, *prompt().base, dashed)
                                                      : drawFrame(overlay, *prompt().base, dashed);
    }
    overlay.line(pixelOf(*prompt().base), pixelOf(place_), ink(),
                 prompt().dashed ? Overlay::Look::Dashed : Overlay::Look::Solid);
}

/// Parallel to the axes of the UCS.
void PointerTool::drawRectangle(Overlay& overlay, const AcGePoint3d& corner, bool dashed) const {
    const AcGeMatrix3d toWorld = ucsToWorld(*picture_.document()->database());
    const AcGeVector3d way = toWorld.inverse() * (place_ - corner);
    const AcGePoint3d corners[] = {corner, corner + toWorld.xAxis() * way.x, place_, corner + toWorld.yAxis() * way.y};
    for (int i = 0; i < 4; ++i)
        overlay.line(pixelOf(corners[i]), pixelOf(corners[(i + 1) % 4]), ink(),
                     dashed ? Overlay::Look::Dashed : Overlay::Look::Solid);
}

/// Parallel to the sides of the screen: what lies in it is chosen.
void PointerTool::drawFrame(Overlay& overlay, const AcGePoint3d& corner, bool dashed) const {
    const CPoint a = pixelOf(corner), c = pixelOf(place_);
    const CPoint corners[] = {a, {c.x, a.y}, c, {a.x, c.y}};
    for (int i = 0; i < 4; ++i)
        overlay.line(corners[i], corners[(i + 1) % 4], ink(), dashed ? Overlay::Look::Dashed : Overlay::Look::Solid);
}

void PointerTool::drawDragged(Overlay& overlay) const {
    if (!prompt().hasDragged)
        return;
    const AcGeMatrix3d toDevice = picture_.worldToDevice() * AcGeMatrix3d::translation(place_.asVector());
    size_t left = kMostDragged;
    overlay.beginGroup();
    forEachPiece(prompt().dragged, toDevice, [&](const AcGePoint3d& a, const AcGePoint3d& b) {
        const auto pixel = [](const AcGePoint3d& p) {
            const auto whole = [](double v) { return static_cast<int>(std::clamp(std::floor(v), -1e6, 1e6)); };
            return CPoint(whole(p.x), whole(p.y));
        };
        if (left > 0) {
            overlay.line(pixel(a), pixel(b), ink());
            --left;
        }
    });
    overlay.endGroup();
}

/// The marker of the kind of place, and its name beside it.
void PointerTool::drawSnap(Overlay& overlay) const {
    if (!snap_)
        return;
    constexpr COLORREF kColor = RGB(255, 255, 0);
    constexpr int r = 6;
    const COLORREF color = ink() == RGB(0, 0, 0) ? RGB(160, 96, 0) : kColor;
    const CPoint c = pixelOf(snap_->point);
    const auto chain = [&](std::initializer_list<CPoint> corners) {
        const CPoint* former = corners.end() - 1;
        for (const CPoint* next = corners.begin(); next != corners.end(); former = next++)
            overlay.line({c.x + former->x, c.y + former->y}, {c.x + next->x, c.y + next->y}, color);
    };
    switch (snap_->mode) {
    case kSnapMid:
        chain({{0, -r}, {r, r}, {-r, r}});
        break;
    case kSnapCenter:
    case kSnapTangent:
    case kSnapNode:
        chain({{r, 0}, {4, 4}, {0, r}, {-4, 4}, {-r, 0}, {-4, -4}, {0, -r}, {4, -4}});
        break;
    case kSnapQuadrant:
        chain({{0, -r}, {r, 0}, {0, r}, {-r, 0}});
        break;
    case kSnapIntersection:
        chain({{-r, -r}, {r, r}});
        chain({{-r, r}, {r, -r}});
        break;
    case kSnapInsertion:
        chain({{-r, -r}, {2, -r}, {2, -2}, {r, -2}, {r, r}, {-2, r}, {-2, 2}, {-r, 2}});
        break;
    case kSnapPerpendicular:
        chain({{-r, -r}, {-r, r}, {r, r}, {-r, r}});
        chain({{-r, 0}, {0, 0}, {0, r}, {0, 0}});
        break;
    case kSnapNearest:
        chain({{-r, -r}, {r, -r}, {-r, r}, {r, r}});
        break;
    default:
        chain({{-r, -r}, {r, -r}, {r, r}, {-r, r}});
        break;
    }
    overlay.label({c.x + 14, c.y + 14}, snapName(snap_->mode), {0, 0, picture_.width(), picture_.height()});
}

} // namespace vndk::host
