#include "convert_command.h"

#include "db/open.h"
#include "ed/host.h"
#include "objects/attribute_definition.h"

#include <memory>

namespace vndk::app {

namespace {

using host::Host;
using host::Problem;
using host::PromptStatus;

constexpr const char* kGroup = "VONDRAKE";
constexpr const char* kName = "VNDKATTDEF";

void fail(Host& host, const std::string& message) {
    host.freshLine();
    host.print(message + "\n");
    host.commandLine().report(Problem::Kind::CommandFailed, message);
}

/// Enter leaves `point` (world coordinates) as it is. False: the user gave up.
bool askPoint(Host& host, const char* prompt, AcGePoint3d& point) {
    AcGePoint3d answer;
    const PromptStatus status = host.prompts().getPoint(prompt, answer);
    if (status == PromptStatus::Normal)
        point = host.prompts().ucsToWorld() * answer;
    return status == PromptStatus::Normal || status == PromptStatus::None;
}

/// Formulas, one by one, up to an empty answer. False: the user gave up, or one is wrong.
bool askFormulas(Host& host, std::vector<std::unique_ptr<CCondFormula>>& formulas) {
    for (;;) {
        std::string text;
        if (host.prompts().getString("\nEnter formula <done>: ", host::TextForm::Line, text) != PromptStatus::Normal)
            return false;
        if (text.empty())
            return true;
        auto formula = std::make_unique<CCondFormula>();
        if (formula->setText(text) != Acad::eOk) {
            fail(host, "\"" + text + "\" isn't a formula. Write one as: stretch = value > 900");
            return false;
        }
        formulas.push_back(std::move(formula));
    }
}

void convertCommand() {
    Host& host = *Host::current();
    AcDbObjectId id;
    AcGePoint3d picked;
    const PromptStatus status = host.prompts().entSel("\nSelect attribute definition: ", id, picked);
    if (status != PromptStatus::Normal)
        return status == PromptStatus::Error ? fail(host, "There is no attribute definition at that place.") : void();
    AcDbObjectPointer<AcDbAttributeDefinition> plain(id);
    if (!plain)
        return fail(host, "That isn't an attribute definition.");
    AcGePoint3d points[2] = {plain->position(), plain->position()};
    plain.close();

    std::vector<std::unique_ptr<CCondFormula>> formulas;
    if (!askPoint(host, "\nSpecify first conditional point <at the definition>: ", points[0]) ||
        !askPoint(host, "\nSpecify second conditional point <at the definition>: ", points[1]) ||
        !askFormulas(host, formulas))
        return;

    AcDbObjectPointer<AcDbAttributeDefinition> definition(id, AcDb::kForWrite);
    VNDKAttributeDefinition* const converted = definition ? vndkConvertDefinition(definition.object()) : nullptr;
    if (!converted)
        return fail(host, "The definition can't be changed, or it is one with formulas already.");
    converted->setConditionalPoint1(points[0]);
    converted->setConditionalPoint2(points[1]);
    for (auto& formula : formulas)
        if (converted->AddFormula(formula.release()) != Acad::eOk)
            fail(host, "The definition can't hold that many formulas; the last ones were left out.");
    converted->close();
}

} // namespace

void addConvertCommand(Host& host) {
    [[maybe_unused]] const Acad::ErrorStatus status =
        host.commands().addCommand(kGroup, kName, kName, ACRX_CMD_MODAL, convertCommand);
    assert(status == Acad::eOk && "no other command of the program has that name");
}

} // namespace vndk::app
