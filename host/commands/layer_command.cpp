// LAYER by prompts: lists, makes and changes layers.
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "commands/property_text.h"
#include "commands/wildcard.h"
#include "db/database.h"

#include <functional>

namespace vndk::host {

namespace {

using Layer = AcDbLayerTableRecord;

/// The options of one run of the command.
class LayerOptions {
public:
    explicit LayerOptions(CommandContext& ctx) : ctx_(ctx), database_(ctx.database()) {}

    PromptStatus run(const std::string& option);

private:
    using Change = std::function<void(Layer&)>;

    PromptStatus list();
    PromptStatus make(bool create);
    PromptStatus addNew();
    PromptStatus turnOff();
    PromptStatus freeze();
    PromptStatus color();
    PromptStatus linetype();
    PromptStatus lineWeight();
    PromptStatus plot();
    PromptStatus change(const std::string& prompt, const Change& change);

    PromptStatus askName(const std::string& prompt, std::string& name) {
        return ctx_.prompts().getString(prompt, TextForm::Word, name);
    }
    std::string currentName() const { return recordName(database_.clayer()); }
    AcDbObjectId find(const std::string& name) const {
        return findRecord<AcDbLayerTable>(database_.layerTableId(), name);
    }
    AcDbObjectId add(const std::string& name);
    void printLinetypes() const;
    /// Layers that a list of names and patterns means, by name.
    std::vector<AcDbObjectId> matching(const std::string& names) const;

    CommandContext& ctx_;
    AcDbDatabase& database_;
};

std::vector<AcDbObjectId> LayerOptions::matching(const std::string& names) const {
    std::vector<AcDbObjectId> found;
    for (const AcDbObjectId id : sortedRecords(database_.layerTableId()))
        if (matchesWildcard(recordName(id), names))
            found.push_back(id);
    if (found.empty())
        ctx_.print("\nNo matching layer names found.");
    return found;
}

AcDbObjectId LayerOptions::add(const std::string& name) {
    if (const AcDbObjectId id = find(name); !id.isNull())
        return id;
    AcDbObjectId id;
    auto layer = std::make_unique<Layer>();
    const AcDbObjectPointer<AcDbLayerTable> table(database_.layerTableId(), AcDb::kForWrite);
    if (!acdbIsValidSymbolName(name.c_str()) || name.starts_with('*') || !table ||
        layer->setName(name.c_str()) != Acad::eOk ||
        layer->setLinetypeObjectId(database_.continuousLinetypeId()) != Acad::eOk ||
        table->add(id, layer.get()) != Acad::eOk) {
        ctx_.print("\nInvalid layer name \"" + name + "\".");
        return {};
    }
    layer.release()->close();
    return id;
}

PromptStatus LayerOptions::list() {
    std::string names;
    const PromptStatus status = askName("\nEnter layer name(s) to list <*>: ", names);
    if (status != PromptStatus::Normal)
        return status;
    ctx_.print("\n\nLayer name        State        Color          Linetype          Lineweight"
               "\n----------------  -----------  -------------  ----------------  ----------");
    const auto column = [](std::string text, size_t width) {
        text.append(text.size() < width ? width - text.size() : 0, ' ');
        return text + "  ";
    };
    for (const AcDbObjectId id : matching(names.empty() ? "*" : names)) {
        const AcDbObjectPointer<Layer> layer(id);
        if (!layer)
            continue;
        const std::string state = std::string(layer->isFrozen() ? "Frozen"
                                              : layer->isOff()  ? "Off"
                                                                : "On") +
                                  (layer->isLocked() ? " Locked" : "");
        ctx_.print(
            "\n" + column("\"" + layer->name() + "\"", 16) + column(state, 11) + column(colorText(layer->color()), 13) +
            column("\"" + recordName(layer->linetypeObjectId()) + "\"", 16) + lineWeightText(layer->lineWeight()));
    }
    ctx_.print("\nCurrent layer: \"" + currentName() + "\"");
    return status;
}

/// Make, and Set without `create`.
PromptStatus LayerOptions::make(bool create) {
    std::string name;
    const PromptStatus status = askName(
        (create ? "\nEnter name for new layer (becomes the current layer) <" : "\nEnter layer name to make current <") +
            currentName() + ">: ",
        name);
    if (status != PromptStatus::Normal || name.empty())
        return status;
    const AcDbObjectId id = create ? add(name) : find(name);
    if (id.isNull()) {
        if (!create)
            ctx_.print("\nCannot find layer \"" + name + "\".");
        return status;
    }
    const AcDbObjectPointer<Layer> layer(id);
    if (layer && layer->isFrozen()) {
        ctx_.print("\nCannot make a frozen layer current.");
        return status;
    }
    database_.setClayer(id);
    return status;
}

PromptStatus LayerOptions::addNew() {
    std::string names;
    const PromptStatus status = askName("\nEnter name list for new layer(s): ", names);
    while (status == PromptStatus::Normal && !names.empty()) {
        const size_t comma = std::min(names.find(','), names.size());
        const std::string name = names.substr(0, comma);
        names.erase(0, comma + 1);
        if (!name.empty())
            add(name);
    }
    return status;
}

PromptStatus LayerOptions::change(const std::string& prompt, const Change& change) {
    std::string names;
    const bool hasDefault = prompt.find('<') != std::string::npos;
    const PromptStatus status = askName(prompt, names);
    if (status != PromptStatus::Normal || (names.empty() && !hasDefault))
        return status;
    const std::vector<AcDbObjectId> layers =
        names.empty() ? std::vector<AcDbObjectId>{database_.clayer()} : matching(names);
    for (const AcDbObjectId id : layers) {
        const AcDbObjectPointer<Layer> layer(id, AcDb::kForWrite);
        if (layer)
            change(*layer);
    }
    return status;
}

PromptStatus LayerOptions::turnOff() {
    std::vector<AcDbObjectId> layers;
    std::string names;
    PromptStatus status = askName("\nEnter name list of layer(s) to turn off: ", names);
    if (status == PromptStatus::Normal && !names.empty())
        layers = matching(names);
    for (const AcDbObjectId id : layers) {
        if (id == database_.clayer() &&
            !askYesNo(ctx_, "\nReally want layer \"" + currentName() + "\" (the CURRENT layer) off? <N>: ", status)) {
            if (status != PromptStatus::Normal)
                return status;
            continue;
        }
        const AcDbObjectPointer<Layer> layer(id, AcDb::kForWrite);
        if (layer)
            layer->setIsOff(true);
    }
    return status;
}

PromptStatus LayerOptions::freeze() {
    return change("\nEnter name list of layer(s) to freeze: ", [this](Layer& layer) {
        if (layer.objectId() == database_.clayer())
            ctx_.print("\nCannot freeze layer \"" + layer.name() + "\".  It is the CURRENT layer.");
        else
            layer.setIsFrozen(true);
    });
}

PromptStatus LayerOptions::color() {
    for (;;) {
        std::string text;
        const PromptStatus status = askName("\nEnter color name or number (1-255): ", text);
        if (status != PromptStatus::Normal || text.empty())
            return status;
        // A number with a minus turns the layer off as well.
        const bool off = text[0] == '-';
        const short color = colorOf(off ? text.substr(1) : text);
        if (color == 0) {
            ctx_.print("\nA color number or standard color number is required.");
            continue;
        }
        return change("\nEnter name list of layer(s) for color " + colorText(color) + " <" + currentName() + ">: ",
                      [color, off](Layer& layer) {
                          layer.setColor(color);
                          if (off)
                              layer.setIsOff(true);
                      });
    }
}

void LayerOptions::printLinetypes() const {
    ctx_.print("\nLoaded linetypes:");
    for (const AcDbObjectId id : sortedRecords(database_.linetypeTableId())) {
        const AcDbObjectPointer<AcDbLinetypeTableRecord> record(id);
        if (record)
            ctx_.print("\n  \"" + record->name() + "\"  " + record->data().description);
    }
}

PromptStatus LayerOptions::linetype() {
    for (;;) {
        std::string name;
        const PromptStatus status = askName("\nEnter loaded linetype name or [?] <Continuous>: ", name);
        if (status != PromptStatus::Normal)
            return status;
        if (name == "?") {
            printLinetypes();
            continue;
        }
        const AcDbObjectId id =
            findRecord<AcDbLinetypeTable>(database_.linetypeTableId(), name.empty() ? "Continuous" : name);
        if (id.isNull() || id == database_.byLayerLinetypeId() || id == database_.byBlockLinetypeId()) {
            ctx_.print("\nLinetype \"" + name + "\" not found.  Use the [?] option to see what is loaded.");
            continue;
        }
        return change("\nEnter name list of layer(s) for linetype \"" + recordName(id) + "\" <" + currentName() + ">: ",
                      [id](Layer& layer) { layer.setLinetypeObjectId(id); });
    }
}

PromptStatus LayerOptions::lineWeight() {
    std::string text;
    PromptStatus status = askName("\nEnter lineweight (0.0mm - 2.11mm): ", text);
    if (status != PromptStatus::Normal || text.empty())
        return status;
    const auto weight = matchKeyword(text, "Default").empty() ? widthOf(text) : AcDb::kLnWtByLwDefault;
    if (!weight) {
        ctx_.print("\nA lineweight from 0.0 to 2.11 mm, or Default, is required.");
        return status;
    }
    return change("\nEnter name list of layer(s) for lineweight " + lineWeightText(*weight) + " <" + currentName() +
                      ">: ",
                  [weight](Layer& layer) { layer.setLineWeight(*weight); });
}

PromptStatus LayerOptions::plot() {
    ctx_.prompts().initGet(0, "Plot No");
    const PromptStatus status = ctx_.prompts().getKeyword("\nEnter a plotting preference [Plot/No plot] <Plot>: ");
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return status;
    const bool plots = ctx_.prompts().keyword() != "No";
    return change("\nEnter layer name(s) for this plot preference <" + currentName() + ">: ",
                  [plots](Layer& layer) { layer.setIsPlottable(plots); });
}

PromptStatus LayerOptions::run(const std::string& option) {
    using Option = PromptStatus (LayerOptions::*)();
    static constexpr struct {
        const char* keyword;
        Option option;
    } own[] = {{"?", &LayerOptions::list},      {"New", &LayerOptions::addNew},
               {"OFF", &LayerOptions::turnOff}, {"Freeze", &LayerOptions::freeze},
               {"Color", &LayerOptions::color}, {"Ltype", &LayerOptions::linetype},
               {"Plot", &LayerOptions::plot},   {"LWeight", &LayerOptions::lineWeight}};
    for (const auto& row : own)
        if (option == row.keyword)
            return (this->*row.option)();
    if (option == "Make" || option == "Set")
        return make(option == "Make");
    if (option == "ON")
        return change("\nEnter name list of layer(s) to turn on: ", [](Layer& layer) { layer.setIsOff(false); });
    if (option == "Thaw")
        return change("\nEnter name list of layer(s) to thaw: ", [](Layer& layer) { layer.setIsFrozen(false); });
    const bool lock = option == "LOck";
    return change(lock ? "\nEnter name list of layer(s) to lock: " : "\nEnter name list of layer(s) to unlock: ",
                  [lock](Layer& layer) { layer.setIsLocked(lock); });
}

} // namespace

CommandResult layerCommand(CommandContext& ctx) {
    LayerOptions options(ctx);
    ctx.print("\nCurrent layer:  \"" + recordName(ctx.database().clayer()) + "\"");
    for (;;) {
        ctx.prompts().initGet(0, "? Make Set New ON OFF Color Ltype LWeight Plot Freeze Thaw LOck Unlock");
        const PromptStatus status = ctx.prompts().getKeyword(
            "\nEnter an option [?/Make/Set/New/ON/OFF/Color/Ltype/LWeight/Plot/Freeze/Thaw/LOck/Unlock]: ");
        if (status == PromptStatus::None)
            return CommandResult::Done;
        if (status != PromptStatus::Normal)
            return ctx.stopped();
        const std::string option = ctx.prompts().keyword();
        if (options.run(option) != PromptStatus::Normal)
            return ctx.stopped();
    }
}

} // namespace vndk::host
