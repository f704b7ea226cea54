#include "ads/external_functions.h"

#include "ads/values.h"
#include "db/resbuf.h"
#include "db/symbol_table.h"
#include "ed/display.h"
#include "ed/host.h"
#include "lisp/interpreter.h"

#include <algorithm>
#include <utility>

namespace vndk::host {

using lisp::Outcome;
using lisp::Value;

ExternalFunctions::ExternalFunctions(Host& host) : host_(host) { acdbSetReleaseObserver(noteReleased); }

ExternalFunctions::~ExternalFunctions() { acdbSetReleaseObserver(nullptr); }

ExternalFunctions::ApplicationScope::ApplicationScope(ExternalFunctions& functions, LoadedApplication& application)
    : functions_(functions), former_(std::exchange(functions.application_, &application)) {}

ExternalFunctions::ApplicationScope::~ApplicationScope() { functions_.application_ = former_; }

bool ExternalFunctions::define(const char* name, int code) {
    AcApDocument* const document = host_.documents().curDocument();
    if (!name || !*name || code < 0 || !application_ || !document)
        return false;
    Handler& handler = handlers_[{application_, code}]; // its place stays when others come
    auto function = std::make_shared<Function>(Function{acdbFoldName(name), application_, code, &handler});
    setBody(*document, name, [this, function](std::span<const Value> args) { return run(*function, args); });
    return true;
}

bool ExternalFunctions::define(const char* name, AcRxLispFunctions::Function action) {
    AcApDocument* const document = host_.documents().curDocument();
    if (!name || !*name || !action || !application_ || !document)
        return false;
    setBody(*document, name, [action](std::span<const Value>) -> Outcome<Value> {
        action();
        return Value::quiet();
    });
    return true;
}

void ExternalFunctions::setBody(AcApDocument& document, const std::string& name, Body body) {
    const std::string folded = acdbFoldName(name);
    std::erase_if(defined_, [&](const Defined& item) { return item.document == &document && item.name == folded; });
    defined_.push_back({&document, folded, application_});
    document.lisp().defineExternal(name, std::move(body));
}

bool ExternalFunctions::undefine(const char* name, int /*code*/) {
    AcApDocument* const document = host_.documents().curDocument();
    if (!name || !application_ || !document)
        return false;
    const std::string folded = acdbFoldName(name);
    const auto removed = std::erase_if(defined_, [&](const Defined& item) {
        return item.document == document && item.name == folded && item.application == application_;
    });
    return removed > 0 && document->lisp().undefineExternal(name);
}

bool ExternalFunctions::registerHandler(Handler handler, int code) {
    if (code < 0 || !application_)
        return false;
    handlers_[{application_, code}] = handler;
    return true;
}

void ExternalFunctions::forgetApplication(const LoadedApplication& application) {
    for (const Defined& item : defined_)
        if (item.application == &application)
            item.document->lisp().undefineExternal(item.name);
    std::erase_if(defined_, [&](const Defined& item) { return item.application == &application; });
    std::erase_if(handlers_, [&](const auto& entry) { return entry.first.first == &application; });
}

void ExternalFunctions::forgetDocument(const AcApDocument& document) {
    std::erase_if(defined_, [&](const Defined& item) { return item.document == &document; });
}

Outcome<Value> ExternalFunctions::run(const Function& function, std::span<const Value> args) {
    host_.commandLine().openExpressionGroup(function.name.c_str());
    const ApplicationScope scope(*this, *function.application);
    Call call{call_, function.code, args, Value(), false, lent_.size(), false};
    call_ = &call;
    int status = RTNORM;
    if (const Handler handler = *function.handler)
        status = handler();
    else
        function.application->entry(AcRx::kInvkSubrMsg, function.application);
    releaseLent(call.lentFrom);
    call_ = call.outer;
    if (call.inputEnded)
        host_.commandLine().report(Problem::Kind::CommandCancelled,
                                   function.name + " was still asking when the input ended.");
    if (status == RTERROR && !call.hasResult)
        return lisp::Failure{lisp::FailureKind::Error, "application request error: " + function.name};
    return std::move(call.result);
}

resbuf* ExternalFunctions::lendArguments() {
    resbuf* const list = call_ ? toResbufs(call_->args) : nullptr;
    if (list)
        lent_.push_back(list);
    return list;
}

void ExternalFunctions::releaseLent(size_t from) {
    while (lent_.size() > from) {
        resbuf* const list = lent_.back();
        lent_.pop_back();
        acutRelRb(list);
    }
}

void ExternalFunctions::noteReleased(const resbuf* list) {
    Host* const host = Host::current();
    if (!host)
        return;
    auto& lent = host->externals().lent_;
    const auto place = std::find(lent.rbegin(), lent.rend(), list);
    if (place != lent.rend())
        lent.erase(std::next(place).base());
}

bool LibraryFunctions::define(const char* name, Function function) { return host_.externals().define(name, function); }

void LibraryFunctions::updateDisplay() {
    if (Display* const display = host_.display())
        display->update();
}

} // namespace vndk::host
