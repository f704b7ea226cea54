// CHPROP: changes the properties that all objects have, and the thickness of those that have one.
#include "commands/commands.h"
#include "commands/object_changes.h"
#include "commands/property_text.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/point.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "db/text.h"
#include "ed/host.h"

#include <functional>
#include <optional>

namespace vndk::host {

namespace {

/// What the user wants changed; nothing is changed before the last Enter.
struct WantedProperties {
    std::optional<short> color;
    std::optional<AcDbObjectId> layer, linetype;
    std::optional<double> linetypeScale, thickness;
    std::optional<AcDb::LineWeight> lineWeight;
};

using Objects = std::vector<AcDbObjectId>;

/// Calls `use` with the entity as the class that has a thickness; other entities are passed over.
template <class Use>
void withThickness(AcDbEntity& entity, Use&& use) {
    const auto tryAs = [&](auto* object) {
        if (object)
            use(*object);
        return object != nullptr;
    };
    tryAs(AcDbLine::cast(&entity)) || tryAs(AcDbCircle::cast(&entity)) || tryAs(AcDbArc::cast(&entity)) ||
        tryAs(AcDbPolyline::cast(&entity)) || tryAs(AcDb2dPolyline::cast(&entity)) || tryAs(AcDbText::cast(&entity)) ||
        tryAs(AcDbFilledArea::cast(&entity)) || tryAs(AcDbPoint::cast(&entity));
}

Acad::ErrorStatus setThickness(AcDb2dPolyline& polyline, double thickness) {
    AcDb2dPolyline::Data data = polyline.data();
    data.thickness = thickness;
    return polyline.setData(data);
}

template <class Entity>
Acad::ErrorStatus setThickness(Entity& entity, double thickness) {
    return entity.setThickness(thickness);
}

/// What all objects agree in as `text` tells it, or "varies".
std::string shared(const Objects& objects, const std::function<std::string(AcDbEntity&)>& text) {
    std::optional<std::string> common;
    for (const AcDbObjectId id : objects) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity)
            continue;
        const std::string value = text(*entity);
        if (common && *common != value)
            return "varies";
        common = value;
    }
    return common.value_or("varies");
}

std::string propertyColorText(short color) {
    return color == kAcDbColorByLayer ? "BYLAYER" : color == kAcDbColorByBlock ? "BYBLOCK" : colorText(color);
}

std::string propertyLineWeightText(short weight) {
    return weight == AcDb::kLnWtByLayer ? "ByLayer" : weight == AcDb::kLnWtByBlock ? "ByBlock" : lineWeightText(weight);
}

class PropertyPrompts {
public:
    PropertyPrompts(CommandContext& ctx, const Objects& objects) : ctx_(ctx), objects_(objects) {}

    PromptStatus run(const std::string& option);
    const WantedProperties& wanted() const { return wanted_; }

private:
    using Take = std::function<bool(const std::string&)>;

    PromptStatus color();
    PromptStatus layer();
    PromptStatus linetype();
    PromptStatus linetypeScale();
    PromptStatus lineWeight();
    PromptStatus thickness();
    /// Asks for a word until `take` knows it; Enter changes nothing.
    PromptStatus askWord(const std::string& prompt, const char* complaint, const Take& take);
    std::string sharedText(const std::function<std::string(AcDbEntity&)>& text) const {
        return " <" + shared(objects_, text) + ">: ";
    }

    CommandContext& ctx_;
    const Objects& objects_;
    WantedProperties wanted_;
};

PromptStatus PropertyPrompts::askWord(const std::string& prompt, const char* complaint, const Take& take) {
    for (;;) {
        std::string text;
        const PromptStatus status = ctx_.prompts().getString(prompt, TextForm::Word, text);
        if (status != PromptStatus::Normal || text.empty() || take(text))
            return status;
        if (!ctx_.host().commandLine().complain(complaint, text))
            return PromptStatus::Error;
    }
}

PromptStatus PropertyPrompts::color() {
    const auto take = [this](const std::string& text) {
        const std::string special = matchKeyword(text, "BYLayer BYBlock");
        const short color = colorOf(text);
        if (special.empty() && color == 0)
            return false;
        wanted_.color = special == "BYLayer" ? kAcDbColorByLayer : special == "BYBlock" ? kAcDbColorByBlock : color;
        return true;
    };
    return askWord("\nEnter new color" +
                       sharedText([](AcDbEntity& entity) { return propertyColorText(entity.colorIndex()); }),
                   "A color number or standard color number is required.", take);
}

PromptStatus PropertyPrompts::layer() {
    const auto take = [this](const std::string& name) {
        const AcDbObjectId id = findRecord<AcDbLayerTable>(ctx_.database().layerTableId(), name);
        if (!id.isNull())
            wanted_.layer = id;
        return !id.isNull();
    };
    return askWord("\nEnter new layer name" +
                       sharedText([](AcDbEntity& entity) { return recordName(entity.layerId()); }),
                   "Cannot find that layer.  LAYER lists and makes layers.", take);
}

PromptStatus PropertyPrompts::linetype() {
    const auto take = [this](const std::string& name) {
        const AcDbObjectId id = findRecord<AcDbLinetypeTable>(ctx_.database().linetypeTableId(), name);
        if (!id.isNull())
            wanted_.linetype = id;
        return !id.isNull();
    };
    return askWord("\nEnter new linetype name" +
                       sharedText([](AcDbEntity& entity) { return recordName(entity.linetypeId()); }),
                   "That linetype isn't loaded.", take);
}

PromptStatus PropertyPrompts::linetypeScale() {
    double scale = 1;
    ctx_.prompts().initGet(kNoZero | kNoNegative);
    const PromptStatus status =
        ctx_.prompts().getReal("\nSpecify new linetype scale" + sharedText([this](AcDbEntity& entity) {
                                   return shownLength(ctx_, entity.linetypeScale());
                               }),
                               scale);
    if (status == PromptStatus::Normal)
        wanted_.linetypeScale = scale;
    return status == PromptStatus::None ? PromptStatus::Normal : status;
}

PromptStatus PropertyPrompts::lineWeight() {
    const auto take = [this](const std::string& text) {
        const std::string special = matchKeyword(text, "BYLayer BYBlock Default");
        if (special.empty())
            wanted_.lineWeight = widthOf(text);
        else
            wanted_.lineWeight = special == "BYLayer"   ? AcDb::kLnWtByLayer
                                 : special == "BYBlock" ? AcDb::kLnWtByBlock
                                                        : AcDb::kLnWtByLwDefault;
        return wanted_.lineWeight.has_value();
    };
    return askWord("\nEnter new lineweight" +
                       sharedText([](AcDbEntity& entity) { return propertyLineWeightText(entity.lineWeight()); }),
                   "A lineweight from 0.0 to 2.11 mm, ByLayer, ByBlock or Default is required.", take);
}

PromptStatus PropertyPrompts::thickness() {
    double thickness = 0;
    const auto text = [this](AcDbEntity& entity) {
        double value = 0;
        withThickness(entity, [&](const auto& object) { value = object.thickness(); });
        return shownLength(ctx_, value);
    };
    const PromptStatus status = ctx_.prompts().getDist("\nSpecify new thickness" + sharedText(text), thickness);
    if (status == PromptStatus::Normal)
        wanted_.thickness = thickness;
    return status == PromptStatus::None ? PromptStatus::Normal : status;
}

PromptStatus PropertyPrompts::run(const std::string& option) {
    static constexpr struct {
        const char* keyword;
        PromptStatus (PropertyPrompts::*ask)();
    } kOptions[] = {{"Color", &PropertyPrompts::color},        {"LAyer", &PropertyPrompts::layer},
                    {"LType", &PropertyPrompts::linetype},     {"ltScale", &PropertyPrompts::linetypeScale},
                    {"LWeight", &PropertyPrompts::lineWeight}, {"Thickness", &PropertyPrompts::thickness}};
    for (const auto& row : kOptions)
        if (option == row.keyword)
            return (this->*row.ask)();
    return PromptStatus::Normal;
}

void changeProperties(AcDbEntity& entity, const WantedProperties& wanted) {
    if (wanted.color)
        entity.setColorIndex(*wanted.color);
    if (wanted.layer)
        entity.setLayer(*wanted.layer);
    if (wanted.linetype)
        entity.setLinetype(*wanted.linetype);
    if (wanted.linetypeScale)
        entity.setLinetypeScale(*wanted.linetypeScale);
    if (wanted.lineWeight)
        entity.setLineWeight(*wanted.lineWeight);
    if (wanted.thickness)
        withThickness(entity, [&](auto& object) { setThickness(object, *wanted.thickness); });
}

/// False when the object can't be opened. A polyline's vertices get its properties, attributes keep theirs.
bool change(AcDbObjectId id, const WantedProperties& wanted) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (!entity)
        return false;
    changeProperties(*entity, wanted);
    if (const auto* const polyline = AcDbVertexOwner::cast(entity.object()))
        for (const AcDbObjectId part : polyline->vertices())
            if (!part.isErased())
                change(part, wanted);
    return true;
}

} // namespace

CommandResult chpropCommand(CommandContext& ctx) {
    Objects objects;
    if (const PromptStatus status = askForObjects(ctx, objects); status != PromptStatus::Normal)
        return stoppedBy(status);
    if (objects.empty())
        return CommandResult::Done;
    PropertyPrompts properties(ctx, objects);
    for (;;) {
        ctx.prompts().initGet(0, "Color LAyer LType ltScale LWeight Thickness");
        PromptStatus status =
            ctx.prompts().getKeyword("\nEnter property to change [Color/LAyer/LType/ltScale/LWeight/Thickness]: ");
        if (status == PromptStatus::None)
            break;
        if (status == PromptStatus::Normal)
            status = properties.run(std::string(ctx.prompts().keyword()));
        if (status != PromptStatus::Normal)
            return stoppedBy(status);
    }
    const auto refused = std::count_if(objects.begin(), objects.end(),
                                       [&](AcDbObjectId id) { return !change(id, properties.wanted()); });
    if (refused > 0)
        return ctx.fail(std::to_string(refused) + " objects can't be changed: something else has them open.");
    return CommandResult::Done;
}

} // namespace vndk::host
