// LISP functions of modules: definition, arguments, results.
#include "ads/ads.h"

#include "ads/external_functions.h"
#include "ads/values.h"
#include "ed/host.h"

using vndk::host::ExternalFunctions;
using vndk::host::Host;
using vndk::lisp::Value;

namespace {

ExternalFunctions* functions() {
    Host* const host = Host::current();
    return host ? &host->externals() : nullptr;
}

ExternalFunctions::Call* runningCall() {
    ExternalFunctions* const all = functions();
    return all ? all->call() : nullptr;
}

int giveBack(Value value) {
    ExternalFunctions::Call* const call = runningCall();
    if (!call)
        return RTERROR;
    call->result = std::move(value);
    call->hasResult = true;
    return RTNORM;
}

} // namespace

int acedDefun(const char* name, int code) { return functions() && functions()->define(name, code) ? RTNORM : 0; }

int acedUndef(const char* name, int code) {
    return functions() && functions()->undefine(name, code) ? RTNORM : RTERROR;
}

int acedRegFunc(int (*handler)(), int code) {
    return functions() && functions()->registerHandler(handler, code) ? RTNORM : 0;
}

int acedGetFunCode() {
    const ExternalFunctions::Call* const call = runningCall();
    return call ? call->code : RTERROR;
}

resbuf* acedGetArgs() { return functions() ? functions()->lendArguments() : nullptr; }

int acedRetVoid() { return giveBack(Value::quiet()); }

int acedRetNil() { return giveBack(Value()); }

int acedRetT() { return giveBack(Value::t()); }

int acedRetInt(int value) { return giveBack(Value::integer(value)); }

int acedRetReal(ads_real value) { return giveBack(Value::real(value)); }

int acedRetStr(const char* value) { return value ? giveBack(Value::string(value)) : RTERROR; }

int acedRetPoint(const ads_point value) {
    return value ? giveBack(Value::list({Value::real(value[0]), Value::real(value[1]), Value::real(value[2])}))
                 : RTERROR;
}

int acedRetName(const ads_name value, int type) {
    if (!value || (type != RTENAME && type != RTPICKS))
        return RTERROR;
    const auto id = static_cast<uint64_t>(value[0]);
    return giveBack(type == RTENAME ? Value::ename(id) : Value::pickSet(id));
}

int acedRetVal(const resbuf* value) { return value ? giveBack(vndk::host::toValue(*value)) : RTERROR; }

int acedRetList(const resbuf* list) {
    auto value = vndk::host::toList(list);
    return value ? giveBack(std::move(*value)) : RTERROR;
}
