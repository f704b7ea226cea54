#include "commands/selection.h"

#include "ap/drawing_views.h"
#include "db/database.h"
#include "ed/coordinates.h"
#include "ed/display.h"
#include "ed/hit_test.h"
#include "ed/host.h"
#include "ed/pick.h"
#include "lisp/printer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vndk::host {

namespace {

constexpr const char* kKeywords =
    "Window Last Crossing BOX ALL Fence WPolygon CPolygon Add Remove Multiple Previous Undo AUto SIngle";
constexpr const char* kComplaint =
    "*Invalid selection*\nExpects a point or Window/Last/Crossing/BOX/ALL/Fence/WPolygon/CPolygon/Add/Remove/Multiple/"
    "Previous/Undo/AUto/SIngle";

enum Side { kWindow = -1, kByDirection = 0, kCrossing = 1 };

/// The entity that a value names; null when it names none.
AcDbObjectId entityOf(const lisp::Value& value) {
    const lisp::Value& name = value.isCons() ? value.car() : value;
    AcDbObjectId id;
    if (name.isEname())
        id.setFromOldId(static_cast<intptr_t>(name.id()));
    return id;
}

/// Of a pick while Shift is held: the entity is taken out.
bool takesOut(const lisp::Value& value) {
    const lisp::Value* rest = &value;
    for (int i = 0; i < 2 && rest->isCons(); ++i)
        rest = &rest->cdr();
    return rest->isCons() && rest->car().isString() && rest->car().text() == "Remove";
}

bool isThawed(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity)
        return false;
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId());
    return !layer || !layer->isFrozen();
}

} // namespace

bool isOnLockedLayer(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity)
        return false;
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId());
    return layer && layer->isLocked();
}

/// What was chosen ahead of the command, if that counts. It does so once.
bool SelectionPrompt::takePickedFirst(std::vector<AcDbObjectId>& objects) {
    std::vector<AcDbObjectId> picked = std::exchange(ctx_.document().pickedFirst, {});
    std::erase_if(picked, [&](AcDbObjectId id) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        return !entity || entity->ownerId() != ctx_.currentSpace();
    });
    if (picked.empty())
        return false;
    apply(std::move(picked));
    objects = chosen_;
    memoryOf(ctx_).previousSelection = objects;
    return true;
}

PromptStatus SelectionPrompt::ask(std::vector<AcDbObjectId>& objects) {
    CommandLine& line = ctx_.host().commandLine();
    if (takePickedFirst(objects))
        return PromptStatus::Normal;
    for (;;) {
        const Answer answer = line.ask(
            {removing_ ? "\nRemove objects: " : "\nSelect objects: ", PromptRequest::Kind::Objects}, TextForm::Word);
        if (answer.kind == Answer::Kind::Cancel || answer.kind == Answer::Kind::End)
            return PromptStatus::Cancelled;
        const bool done = answer.kind == Answer::Kind::Text && answer.text.empty();
        const Taken taken = done ? Taken::No : take(answer);
        if (taken == Taken::Stopped)
            return ctx_.prompts().lastStatus();
        if (taken == Taken::Cancelled || taken == Taken::Refused)
            return taken == Taken::Cancelled ? PromptStatus::Cancelled : PromptStatus::Error;
        if (done || (single_ && taken == Taken::Yes && !chosen_.empty())) {
            objects = chosen_;
            if (!objects.empty())
                memoryOf(ctx_).previousSelection = objects;
            return PromptStatus::Normal;
        }
        if (taken == Taken::Invalid && !complain(answer))
            return PromptStatus::Error;
    }
}

std::optional<AcGePoint3d> SelectionPrompt::pointOf(const Answer& answer) const {
    if (answer.kind == Answer::Kind::Text) {
        const AcDbDatabase& database = ctx_.database();
        return typedPoint(answer.text, {ctx_.document().lastPoint, ucsToWorld(database).inverse(), angleUnits(database),
                                        database.header().ELEVATION});
    }
    const bool named = answer.value.isCons() && answer.value.car().isEname() && answer.value.cdr().isCons();
    double xyz[3] = {0, 0, 0};
    int count = 0;
    for (const lisp::Value* rest = named ? &answer.value.cdr().car() : &answer.value; rest->isCons();
         rest = &rest->cdr()) {
        if (count == 3 || !rest->car().isNumber() || !std::isfinite(rest->car().number()))
            return std::nullopt;
        xyz[count++] = rest->car().number();
    }
    return count >= 2 ? std::optional(AcGePoint3d(xyz[0], xyz[1], xyz[2])) : std::nullopt;
}

bool SelectionPrompt::complain(const Answer& answer) const {
    const std::string shown =
        answer.kind == Answer::Kind::Text ? answer.text : lisp::toText(answer.value, lisp::PrintStyle::Readable, 200);
    return ctx_.host().commandLine().complain(kComplaint, shown);
}

SelectionPrompt::Taken SelectionPrompt::take(const Answer& answer) {
    if (answer.kind == Answer::Kind::Value)
        if (const AcDbObjectId id = entityOf(answer.value); !id.isNull()) {
            const bool former = removing_;
            removing_ = removing_ || takesOut(answer.value);
            const Taken taken = takeEntity(id);
            removing_ = former;
            return taken;
        }
    if (answer.kind == Answer::Kind::Text)
        if (const std::string keyword = matchKeyword(answer.text, kKeywords); !keyword.empty())
            return takeKeyword(keyword);
    const auto point = pointOf(answer);
    if (!point)
        return Taken::Invalid;
    ctx_.document().lastPoint = *point;
    return takePoint(*point);
}

SelectionPrompt::Taken SelectionPrompt::takeKeyword(const std::string& keyword) {
    if (keyword == "Window" || keyword == "Crossing" || keyword == "BOX")
        return takeAskedRectangle(keyword == "Window" ? kWindow : keyword == "BOX" ? kByDirection : kCrossing);
    if (keyword == "WPolygon" || keyword == "CPolygon" || keyword == "Fence")
        return takePath(keyword);
    if (keyword == "Multiple")
        return takeMultiple();
    if (keyword == "Last")
        return takeEntity(lastEntity(ctx_.database()));
    if (keyword == "Undo") {
        if (!former_.empty()) {
            chosen_ = former_.back();
            isChosen_ = {chosen_.begin(), chosen_.end()};
            former_.pop_back();
            show();
        }
        return Taken::No;
    }
    if (keyword == "Add" || keyword == "Remove") {
        removing_ = keyword == "Remove";
        return Taken::No;
    }
    if (keyword == "SIngle" || keyword == "AUto") {
        single_ = keyword == "SIngle";
        return Taken::No;
    }
    std::vector<AcDbObjectId> found = keyword == "ALL" ? everything() : memoryOf(ctx_).previousSelection;
    std::erase_if(found, [](AcDbObjectId id) { return id.isErased() || !isThawed(id); });
    if (keyword == "Previous" && found.empty())
        ctx_.print("\nNo previous selection set.");
    else
        apply(found);
    return Taken::Yes;
}

SelectionPrompt::Taken SelectionPrompt::takeEntity(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity) {
        apply({id});
        return Taken::Yes;
    }
    ctx_.print("\n0 found");
    return Taken::No;
}

SelectionPrompt::Taken SelectionPrompt::takePoint(const AcGePoint3d& point) {
    const AcDbObjectId found = entityAt(ctx_.document(), point, pickAperture(ctx_.host()));
    return found.isNull() ? takeRectangle(point, kByDirection) : takeEntity(found);
}

SelectionPrompt::Taken SelectionPrompt::takeAskedRectangle(int side) {
    AcGePoint3d first;
    ctx_.prompts().initGet(kNoEmpty);
    return ctx_.prompts().getPoint("\nSpecify first corner: ", first) == PromptStatus::Normal
               ? takeRectangle(first, side)
               : Taken::Stopped;
}

SelectionPrompt::Taken SelectionPrompt::takeRectangle(const AcGePoint3d& first, int side) {
    AcGePoint3d second;
    ctx_.prompts().initGet(kNoEmpty);
    using Look = PromptRequest::Rectangle;
    ctx_.prompts().setRectangle(side == kByDirection ? Look::ByDirection
                                : side == kCrossing  ? Look::Crossing
                                                     : Look::Window);
    if (ctx_.prompts().getCorner("\nSpecify opposite corner: ", second, first) != PromptStatus::Normal)
        return Taken::Stopped;
    // A rectangle of the screen, from whichever side that shows the drawing.
    const AcGeMatrix3d toScreen = ucsToScreen(ctx_.document());
    const AcGePoint3d from = toScreen * first, to = toScreen * second;
    const bool crossing = side == kCrossing || (side == kByDirection && to.x < from.x);
    const SelectionRectangle rectangle =
        SelectionRectangle::between(worldToView(ctx_.document().views().current()), from, to);
    apply(shownWhere([&](const AcDbEntity& entity) {
        return crossing ? touches(entity, rectangle) : liesInside(entity, rectangle);
    }));
    return Taken::Yes;
}

std::vector<AcDbObjectId> SelectionPrompt::everything() const {
    std::vector<AcDbObjectId> all;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(ctx_.currentSpace());
    if (space)
        std::copy_if(space->entities().begin(), space->entities().end(), std::back_inserter(all), [](AcDbObjectId id) {
            const AcDbObjectPointer<AcDbEntity> entity(id);
            return entity && !isSheet(*entity);
        });
    return all;
}

std::vector<AcDbObjectId> SelectionPrompt::shownWhere(const std::function<bool(const AcDbEntity&)>& lies) const {
    std::vector<AcDbObjectId> found = everything();
    std::erase_if(found, [&](AcDbObjectId id) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        return !entity || !isShown(*entity) || !lies(*entity);
    });
    return found;
}

SelectionPrompt::Taken SelectionPrompt::takePath(const std::string& kind) {
    Prompts& prompts = ctx_.prompts();
    std::vector<AcGePoint3d> points(1);
    prompts.initGet(kNoEmpty);
    PromptStatus status =
        prompts.getPoint(kind == "Fence" ? "\nFirst fence point: " : "\nFirst polygon point: ", points[0]);
    while (status == PromptStatus::Normal || status == PromptStatus::Keyword) {
        prompts.initGet(0, "Undo");
        AcGePoint3d next;
        status = prompts.getPoint("\nSpecify endpoint of line or [Undo]: ", next, &points.back());
        if (status == PromptStatus::Normal)
            points.push_back(next);
        else if (status == PromptStatus::Keyword && points.size() > 1)
            points.pop_back();
    }
    if (status != PromptStatus::None)
        return Taken::Stopped;
    SelectionPath path{worldToView(ctx_.document().views().current()), {}};
    for (const AcGePoint3d& point : points) {
        const AcGePoint3d seen = ucsToScreen(ctx_.document()) * point;
        path.points.push_back({seen.x, seen.y});
    }
    apply(shownWhere([&](const AcDbEntity& entity) {
        return kind == "Fence"      ? crosses(entity, path)
               : kind == "WPolygon" ? liesInside(entity, path)
                                    : touches(entity, path);
    }));
    return Taken::Yes;
}

SelectionPrompt::Taken SelectionPrompt::takeMultiple() {
    std::vector<AcDbObjectId> found;
    for (;;) {
        const Answer answer =
            ctx_.host().commandLine().ask({"\nSelect objects: ", PromptRequest::Kind::Objects}, TextForm::Word);
        if (answer.kind == Answer::Kind::Cancel || answer.kind == Answer::Kind::End)
            return Taken::Cancelled;
        if (answer.kind == Answer::Kind::Text && answer.text.empty())
            break;
        const auto point = pointOf(answer);
        if (!point && !complain(answer))
            return Taken::Refused;
        if (!point)
            continue;
        ctx_.document().lastPoint = *point;
        if (const AcDbObjectId named = answer.kind == Answer::Kind::Value ? entityOf(answer.value) : AcDbObjectId();
            !named.isNull())
            found.push_back(named);
        else if (const AcDbObjectId id = entityAt(ctx_.document(), *point, pickAperture(ctx_.host())); !id.isNull())
            found.push_back(id);
    }
    apply(std::move(found));
    return Taken::Yes;
}

void SelectionPrompt::apply(std::vector<AcDbObjectId> found) {
    former_.push_back(chosen_);
    const size_t offered = found.size();
    const size_t elsewhere = std::erase_if(found, [&](AcDbObjectId id) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        return entity && entity->ownerId() != ctx_.currentSpace();
    });
    size_t changed = 0;
    for (const AcDbObjectId id : found) {
        if (removing_) {
            changed += isChosen_.erase(id);
        } else if (isChosen_.insert(id).second) {
            chosen_.push_back(id);
            ++changed;
        }
    }
    if (removing_)
        std::erase_if(chosen_, [this](AcDbObjectId id) { return !isChosen_.contains(id); });
    show();
    report(offered, changed, found.size() - changed);
    if (elsewhere > 0)
        ctx_.print("\n" + std::to_string(elsewhere) + (elsewhere == 1 ? " was" : " were") + " not in current space.");
}

/// What is chosen stands out in the window until the command ends.
void SelectionPrompt::show() const {
    if (Display* const display = ctx_.host().display())
        display->highlight(chosen_);
}

void SelectionPrompt::report(size_t found, size_t changed, size_t duplicates) const {
    std::string text = "\n" + std::to_string(found) + " found";
    if (removing_)
        text += ", " + std::to_string(changed) + " removed";
    else if (duplicates > 0)
        text += " (" + std::to_string(duplicates) + " duplicate)";
    if (former_.size() > 1)
        text += ", " + std::to_string(chosen_.size()) + " total";
    ctx_.print(text);
}

} // namespace vndk::host
