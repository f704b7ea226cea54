#include "ed/host.h"

#include "ads/external_functions.h"
#include "ap/host_services.h"
#include "ed/program_resources.h"
#include "rx/registry.h"

#include <cassert>

namespace vndk::host {

namespace {

Host* g_current = nullptr;

} // namespace

Host::Host()
    : former_(g_current), resources_(std::make_unique<ProgramResources>()),
      services_(std::make_unique<HostServices>(*this)), formerServices_(acdbHostApplicationServices()), linker_(*this),
      variables_(*this), prompts_(*this), commandLine_(*this), externals_(std::make_unique<ExternalFunctions>(*this)),
      documents_(std::make_unique<AcApDocManager>(*this)) {
    g_current = this;
    acdbSetHostApplicationServices(services_.get());
    for (const BuiltInCommand& row : builtInCommands())
        commands_.addBuiltIn(row);
    registerServices();
}

Host::~Host() {
    assert(g_current == this && "hosts end in the reverse order in which they began");
    documents_->closeAll();
    linker_.unloadAll();
    removeServices();
    documents_.reset();
    externals_.reset();
    acdbSetHostApplicationServices(formerServices_);
    g_current = former_;
}

Host* Host::current() { return g_current; }

void Host::registerServices() {
    AcRxDictionary& registry = *acrxSysRegistry();
    formerEntries_["DynamicLinker"] = registry.atPut("DynamicLinker", &linker_);
    formerEntries_["AcEditor"] = registry.atPut("AcEditor", &editor_);
    formerEntries_["ACAD_REGISTERED_COMMANDS"] = registry.atPut("ACAD_REGISTERED_COMMANDS", &commands_);
    formerEntries_[kRxLispFunctions] = registry.atPut(kRxLispFunctions, &externals_->libraryFunctions());
}

void Host::removeServices() {
    for (const auto& [name, former] : formerEntries_) {
        if (former)
            acrxSysRegistry()->atPut(name.c_str(), former);
        else
            acrxSysRegistry()->remove(name.c_str());
    }
}

void Host::print(std::string_view text) {
    if (text.empty())
        return;
    atLineStart_ = text.back() == '\n';
    if (print_)
        print_(text);
}

void Host::freshLine() {
    if (!atLineStart_)
        print("\n");
}

void Host::alert(std::string_view message) {
    if (alert_)
        return alert_(message);
    freshLine();
    print(message);
    print("\n");
}

std::optional<Problem> Host::runText(std::string_view typed) {
    commandLine_.input().feed(typed);
    return commandLine_.run();
}

void Host::pump() {
    if (commandLine_.isStepping())
        return;
    documents_->deliverSentText();
    while (commandLine_.input().hasSent() && commandLine_.step().ran)
        documents_->deliverSentText();
}

} // namespace vndk::host
