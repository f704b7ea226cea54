#include "lisp/host_link.h"

namespace vndk::lisp {

namespace {

Failure notAvailable(std::string_view what) {
    return {FailureKind::Error, std::string(what) + " is not available here"};
}

} // namespace

Outcome<Value> HostLink::getVariable(std::string_view) { return notAvailable("getvar"); }
Outcome<Value> HostLink::setVariable(std::string_view, const Value&) { return notAvailable("setvar"); }
Outcome<Value> HostLink::command(std::span<const Value>) { return notAvailable("command"); }
Outcome<std::string> HostLink::loadFile(std::string_view) { return notAvailable("load"); }
Outcome<Value> HostLink::alert(std::string_view) { return notAvailable("alert"); }
Outcome<Value> HostLink::entget(std::uint64_t) { return notAvailable("entget"); }
Outcome<Value> HostLink::entlast() { return notAvailable("entlast"); }
Outcome<Value> HostLink::entnext(std::optional<std::uint64_t>) { return notAvailable("entnext"); }
Outcome<Value> HostLink::entdel(std::uint64_t) { return notAvailable("entdel"); }
Outcome<Value> HostLink::getPoint(const Value&, std::string_view) { return notAvailable("getpoint"); }
Outcome<Value> HostLink::getDist(const Value&, std::string_view) { return notAvailable("getdist"); }
Outcome<Value> HostLink::getAngle(const Value&, std::string_view) { return notAvailable("getangle"); }
Outcome<Value> HostLink::getReal(std::string_view) { return notAvailable("getreal"); }
Outcome<Value> HostLink::getInt(std::string_view) { return notAvailable("getint"); }
Outcome<Value> HostLink::getKeyword(std::string_view) { return notAvailable("getkword"); }
Outcome<Value> HostLink::getFileName(std::string_view, std::string_view, std::string_view, int) {
    return notAvailable("getfiled");
}
Outcome<Value> HostLink::getString(Blanks, std::string_view) { return notAvailable("getstring"); }
Outcome<Value> HostLink::initGet(int, std::string_view) { return notAvailable("initget"); }

} // namespace vndk::lisp
