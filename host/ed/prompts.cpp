#include "ed/prompts.h"

#include "db/database.h"
#include "ed/coordinates.h"
#include "ed/host.h"
#include "ed/object_snap.h"
#include "ed/pick.h"
#include "ge/unit_text.h"
#include "lisp/printer.h"

#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace vndk::host {

namespace {

using Kind = Answer::Kind;
using Wanted = PromptRequest::Kind;

std::optional<AcGePoint3d> optionalOf(const AcGePoint3d* point) { return point ? std::optional(*point) : std::nullopt; }

/// A LISP list of two or three numbers; two lie at the elevation.
std::optional<AcGePoint3d> pointOf(const lisp::Value& value, double elevation = 0) {
    double xyz[3] = {0, 0, elevation};
    int count = 0;
    const lisp::Value* rest = &value;
    for (; rest->isCons(); rest = &rest->cdr()) {
        if (count == 3 || !rest->car().isNumber())
            return std::nullopt;
        xyz[count++] = rest->car().number();
    }
    if (count < 2 || !rest->isNil())
        return std::nullopt;
    return AcGePoint3d(xyz[0], xyz[1], xyz[2]);
}

std::optional<double> numberOf(const Answer& answer) {
    if (answer.kind == Kind::Value)
        return answer.value.isNumber() ? std::optional(answer.value.number()) : std::nullopt;
    const auto number = ge::lengthFromText(answer.text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

bool within(double number, int bits) {
    return !((bits & kNoZero) && number == 0) && !((bits & kNoNegative) && number < 0);
}

AcDbDatabase* currentDatabase(Host& host) {
    AcApDocument* const document = host.documents().curDocument();
    return document ? document->database() : nullptr;
}

/// Sets a number back at the end of a scope.
class RestoreAtEnd {
public:
    RestoreAtEnd(int& place, int value) : place_(place), value_(value) {}
    ~RestoreAtEnd() { place_ = value_; }
    RestoreAtEnd(const RestoreAtEnd&) = delete;
    RestoreAtEnd& operator=(const RestoreAtEnd&) = delete;

private:
    int& place_;
    int value_;
};

} // namespace

void Prompts::initGet(int bits, std::string_view keywords) {
    rules_.bits = bits;
    rules_.keywords = keywords;
}

bool Prompts::takeKeyword(std::string_view typed, const Rules& rules) {
    std::string keyword = matchKeyword(typed, rules.keywords);
    if (keyword.empty())
        return false;
    keyword_ = std::move(keyword);
    return true;
}

/// Asks until `take` accepts an answer. `take` gets an answer that is a text or a value, and the bits.
template <class Take>
PromptStatus Prompts::ask(PromptRequest request, TextForm form, std::string_view complaint, Take&& take) {
    // What runs within the prompt may ask and set rules of its own.
    const Rules rules = std::exchange(rules_, {});
    request.keywords = rules.keywords;
    request.dashed = (rules.bits & kDashedLine) != 0;
    request.rectangle = rules.rectangle;
    request.dragged = rules.dragged ? &*rules.dragged : nullptr;
    keyword_.clear();
    const int formerSnap = std::exchange(snap_, 0);
    const RestoreAtEnd restore(snap_, formerSnap);
    for (;;) {
        snap_ = request.snap;
        const Answer answer = host_.commandLine().ask(request, form);
        if (answer.kind == Kind::Cancel || answer.kind == Kind::End)
            return lastStatus_ = PromptStatus::Cancelled;
        if (answer.kind == Kind::Text && answer.text.empty() && form == TextForm::Word) {
            if (!(rules.bits & kNoEmpty))
                return lastStatus_ = PromptStatus::None;
        } else if (take(answer, rules.bits)) {
            return lastStatus_ = PromptStatus::Normal;
        } else if (answer.kind == Kind::Text && takeKeyword(answer.text, rules)) {
            return lastStatus_ = PromptStatus::Keyword;
        } else if (takeSnap(answer, request)) {
            continue;
        } else if (answer.kind == Kind::Text && (rules.bits & kAnyText)) {
            keyword_ = answer.text;
            return lastStatus_ = PromptStatus::Keyword;
        }
        const std::string shown =
            answer.kind == Kind::Text ? answer.text : lisp::toText(answer.value, lisp::PrintStyle::Readable, 200);
        if (!host_.commandLine().complain(complaint, shown))
            return lastStatus_ = PromptStatus::Error;
    }
}

bool Prompts::takePoint(const Answer& answer, AcGePoint3d& point) const {
    std::optional<AcGePoint3d> taken;
    AcApDocument* const document = host_.documents().curDocument();
    if (answer.kind == Kind::Value) {
        taken = pointOf(answer.value, document ? document->database()->header().ELEVATION : 0);
    } else if (document) {
        const AcDbDatabase& database = *document->database();
        taken = typedPoint(answer.text, {document->lastPoint, host::ucsToWorld(database).inverse(),
                                         angleUnits(database), database.header().ELEVATION});
    }
    if (!taken || !std::isfinite(taken->x) || !std::isfinite(taken->y) || !std::isfinite(taken->z))
        return false;
    // What was picked has been snapped by who showed it.
    if (answer.kind == Kind::Text && snap_ != 0 && !snapTyped(*taken))
        return false;
    point = *taken;
    return true;
}

/// The name of an object snap ahead of a point.
bool Prompts::takeSnap(const Answer& answer, PromptRequest& request) {
    const bool asksPoint = request.kind == Wanted::Point || request.kind == Wanted::Corner ||
                           request.kind == Wanted::Distance || request.kind == Wanted::Angle;
    const auto modes = asksPoint && answer.kind == Kind::Text ? snapModesOf(answer.text) : std::nullopt;
    if (!modes)
        return false;
    request.snap = *modes;
    request.text = *modes == kSnapTangent || *modes == kSnapPerpendicular || *modes == kSnapNearest ? " to " : " of ";
    return true;
}

/// Moves a point of the UCS to the place near it that the snap names. False: there is none.
bool Prompts::snapTyped(AcGePoint3d& point) const {
    AcApDocument* const document = host_.documents().curDocument();
    if (!document || (snap_ & kSnapOff) != 0)
        return document != nullptr;
    const AcGeMatrix3d toUcs = worldToUcs();
    const double aperture = pickAperture(host_, "APERTURE");
    const SnapQuery query{toUcs, {point.x, point.y}, aperture, snap_, optionalOf(&document->lastPoint)};
    std::vector<Outline> outlines;
    for (const AcDbObjectId id : entitiesNear(*document->database(), point, aperture))
        outlines.push_back(outlineOf(id));
    std::vector<const Outline*> looked;
    for (const Outline& outline : outlines)
        looked.push_back(&outline);
    const std::optional<Snap> found = findSnap(looked, query);
    if (!found)
        return false;
    point = toUcs * found->point;
    return true;
}

void Prompts::remember(const AcGePoint3d& point) const {
    if (AcApDocument* const document = host_.documents().curDocument())
        document->lastPoint = point;
}

PromptStatus Prompts::getPointOf(const PromptRequest& request, AcGePoint3d& point) {
    const PromptStatus status = ask(request, TextForm::Word, "Invalid point. Give it as x,y or x,y,z.",
                                    [&](const Answer& answer, int) { return takePoint(answer, point); });
    if (status == PromptStatus::Normal)
        remember(point);
    return status;
}

PromptStatus Prompts::getPoint(std::string_view prompt, AcGePoint3d& point, const AcGePoint3d* base) {
    return getPointOf({prompt, Wanted::Point, optionalOf(base)}, point);
}

PromptStatus Prompts::getCorner(std::string_view prompt, AcGePoint3d& point, const AcGePoint3d& base) {
    return getPointOf({prompt, Wanted::Corner, base}, point);
}

PromptStatus Prompts::getLength(std::string_view prompt, double& distance, const AcGePoint3d* base) {
    std::optional<AcGePoint3d> first = optionalOf(base);
    int flat = 0;
    const PromptStatus status =
        ask({prompt, Wanted::Distance, first}, TextForm::Word,
            "Requires numeric distance, two points, or option keyword.", [&](const Answer& answer, int bits) {
                flat = bits & kFlatDistance;
                if (const auto number = numberOf(answer)) {
                    distance = *number;
                    first.reset();
                    return within(distance, bits);
                }
                AcGePoint3d point;
                if (!takePoint(answer, point))
                    return false;
                remember(point);
                distance = std::numeric_limits<double>::quiet_NaN();
                if (first) {
                    AcGeVector3d span = point - *first;
                    span.z = flat ? 0 : span.z;
                    distance = span.length();
                    return within(distance, bits);
                }
                first = point;
                return true;
            });
    if (status != PromptStatus::Normal || !std::isnan(distance))
        return status;
    AcGePoint3d second;
    const PromptStatus next = getPoint("Specify second point: ", second, &*first);
    if (next == PromptStatus::Normal) {
        AcGeVector3d span = second - *first;
        span.z = flat ? 0 : span.z;
        distance = span.length();
    }
    return next;
}

PromptStatus Prompts::getDist(std::string_view prompt, double& distance, const AcGePoint3d* base) {
    double length = 0;
    const PromptStatus status = getLength(prompt, length, base);
    if (status == PromptStatus::Normal)
        distance = length;
    return status;
}

bool Prompts::takeAngle(const Answer& answer, double& radians, AngleFrom from) const {
    const AcDbDatabase* const database = currentDatabase(host_);
    const AngleUnits units = database ? angleUnits(*database) : AngleUnits{};
    if (answer.kind == Kind::Value) {
        // Numbers that (command ...) gives are in the units of AUNITS, as if typed.
        if (!answer.value.isNumber())
            return false;
        const double perUnit[] = {kAcGePi / 180, kAcGePi / 180, kAcGePi / 200, 1, kAcGePi / 180};
        const double angle = answer.value.number() * perUnit[units.mode >= 0 && units.mode < 5 ? units.mode : 0];
        radians = units.base + (units.clockwise ? -angle : angle);
    } else if (const auto angle = typedAngle(answer.text, units)) {
        radians = *angle;
    } else {
        return false;
    }
    if (from == AngleFrom::AngBase)
        radians -= units.base;
    return std::isfinite(radians);
}

PromptStatus Prompts::getAngleFrom(std::string_view prompt, double& radians, const AcGePoint3d* base, AngleFrom from) {
    std::optional<AcGePoint3d> first = optionalOf(base);
    bool needsSecond = false;
    double result = 0;
    const auto between = [](const AcGePoint3d& a, const AcGePoint3d& b) {
        const double angle = std::atan2(b.y - a.y, b.x - a.x);
        return angle < 0 ? angle + 2 * kAcGePi : angle;
    };
    PromptStatus status =
        ask({prompt, Wanted::Angle, first}, TextForm::Word,
            "Requires valid numeric angle, second point, or option keyword.", [&](const Answer& answer, int bits) {
                if (takeAngle(answer, result, from))
                    return within(result, bits & ~kNoNegative);
                AcGePoint3d point;
                if (!takePoint(answer, point))
                    return false;
                remember(point);
                needsSecond = !first;
                if (first)
                    result = between(*first, point);
                else
                    first = point;
                return true;
            });
    if (status == PromptStatus::Normal && needsSecond) {
        AcGePoint3d second;
        status = getPoint("Specify second point: ", second, &*first);
        result = between(*first, second);
    }
    if (status == PromptStatus::Normal)
        radians = result;
    return status;
}

PromptStatus Prompts::getAngle(std::string_view prompt, double& radians, const AcGePoint3d* base) {
    return getAngleFrom(prompt, radians, base, AngleFrom::AngBase);
}

PromptStatus Prompts::getOrient(std::string_view prompt, double& radians, const AcGePoint3d* base) {
    return getAngleFrom(prompt, radians, base, AngleFrom::XAxis);
}

PromptStatus Prompts::getReal(std::string_view prompt, double& number) {
    return ask({prompt}, TextForm::Word, "Requires numeric value.", [&](const Answer& answer, int bits) {
        const auto taken = numberOf(answer);
        if (!taken || !within(*taken, bits))
            return false;
        number = *taken;
        return true;
    });
}

PromptStatus Prompts::getRealOrPoint(std::string_view prompt, double& number, std::optional<AcGePoint3d>& point) {
    AcGePoint3d given;
    const PromptStatus status =
        ask({prompt, Wanted::Point}, TextForm::Word, "Requires a number other than zero, a point, or option keyword.",
            [&](const Answer& answer, int bits) {
                point.reset();
                if (const auto taken = numberOf(answer)) {
                    number = *taken;
                    return within(number, bits);
                }
                if (takePoint(answer, given))
                    point = given;
                return point.has_value();
            });
    if (status == PromptStatus::Normal && point)
        remember(*point);
    return status;
}

PromptStatus Prompts::getInt(std::string_view prompt, int& number) {
    return ask({prompt}, TextForm::Word, "Requires an integer value.", [&](const Answer& answer, int bits) {
        const auto taken = numberOf(answer);
        constexpr double limit = 2147483648.0;
        if (!taken || *taken != std::floor(*taken) || *taken >= limit || *taken < -limit || !within(*taken, bits))
            return false;
        number = static_cast<int>(*taken);
        return true;
    });
}

PromptStatus Prompts::getKeyword(std::string_view prompt) {
    const PromptStatus status =
        ask({prompt}, TextForm::Word, "Invalid option keyword.", [](const Answer&, int) { return false; });
    return lastStatus_ = status == PromptStatus::Keyword ? PromptStatus::Normal : status;
}

PromptStatus Prompts::getString(std::string_view prompt, TextForm form, std::string& text, size_t limit) {
    rules_.keywords.clear();
    rules_.bits &= ~kAnyText;
    std::string taken;
    const std::string complaint = "The text may have " + std::to_string(limit) + " characters at most.";
    const PromptStatus status = ask({prompt}, form, complaint, [&](const Answer& answer, int) {
        taken = answer.kind == Kind::Text ? answer.text : lisp::toText(answer.value, lisp::PrintStyle::Display);
        if (form == TextForm::FileName && taken.size() >= 2 && taken.front() == '"' && taken.back() == '"')
            taken = taken.substr(1, taken.size() - 2);
        if (form == TextForm::Name)
            std::erase(taken, '"');
        return taken.size() <= limit;
    });
    if (status == PromptStatus::Cancelled || status == PromptStatus::Error)
        return status;
    text = std::move(taken);
    return lastStatus_ = PromptStatus::Normal;
}

PromptStatus Prompts::entSel(std::string_view prompt, AcDbObjectId& entity, AcGePoint3d& pickPoint) {
    AcDbDatabase* const database = currentDatabase(host_);
    if (!database)
        return lastStatus_ = PromptStatus::Error;
    AcDbObjectId found;
    constexpr const char* kComplaint = "Invalid point. Give a point on an object, or L for the last one.";
    const PromptStatus status =
        ask({prompt, Wanted::Entity}, TextForm::Word, kComplaint, [&](const Answer& answer, int) {
            if (answer.kind == Kind::Value && answer.value.isEname()) {
                found.setFromOldId(static_cast<intptr_t>(answer.value.id()));
                return true;
            }
            if (answer.kind == Kind::Value && answer.value.isCons() && answer.value.car().isEname()) {
                // What entsel gives: the name and the point.
                found.setFromOldId(static_cast<intptr_t>(answer.value.car().id()));
                if (const lisp::Value& rest = answer.value.cdr(); rest.isCons())
                    if (const auto point = pointOf(rest.car()))
                        remember(pickPoint = *point);
                return true;
            }
            if (answer.kind == Kind::Text && !matchKeyword(answer.text, "Last").empty()) {
                found = lastEntity(*database);
                return true;
            }
            if (!takePoint(answer, pickPoint))
                return false;
            found = entityAt(*host_.documents().curDocument(), pickPoint, pickAperture(host_));
            if (found.isNull()) {
                host_.freshLine();
                host_.print("There is no object at that point.\n");
            }
            return true;
        });
    if (status != PromptStatus::Normal)
        return status;
    if (found.isNull() || found.isErased())
        return lastStatus_ = PromptStatus::Error;
    entity = found;
    return lastStatus_ = PromptStatus::Normal;
}

AcGeMatrix3d Prompts::ucsToWorld() const {
    const AcDbDatabase* const database = currentDatabase(host_);
    return database ? host::ucsToWorld(*database) : AcGeMatrix3d();
}

AcGeMatrix3d Prompts::worldToUcs() const { return ucsToWorld().inverse(); }

} // namespace vndk::host
