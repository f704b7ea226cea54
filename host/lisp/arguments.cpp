#include "arguments.h"

#include "error.h"
#include "lisp/printer.h"

namespace vndk::lisp {

namespace {

// An error message quotes the offending value; a huge one is cut.
constexpr std::size_t quotedLength = 200;

} // namespace

void throwError(std::string message) { throw LispError{{FailureKind::Error, std::move(message)}}; }

void throwBadArgument(std::string_view expected, const Value& value) {
    throwError("bad argument type: " + std::string(expected) + " " + toText(value, PrintStyle::Readable, quotedLength));
}

void throwTooFew() { throwError("too few arguments"); }

void throwTooMany() { throwError("too many arguments"); }

std::int32_t asInt(const Value& value) {
    if (!value.isInt())
        throwBadArgument("fixnump:", value);
    return value.integer();
}

double asNumber(const Value& value) {
    if (!value.isNumber())
        throwBadArgument("numberp:", value);
    return value.number();
}

std::string_view asString(const Value& value) {
    if (!value.isString())
        throwBadArgument("stringp", value);
    return value.text();
}

Symbol& asSymbol(const Value& value) {
    if (!value.isSymbol())
        throwBadArgument("symbolp", value);
    return value.symbol();
}

const Value& asList(const Value& value) {
    if (!value.isCons() && !value.isNil())
        throwBadArgument("listp", value);
    return value;
}

std::uint64_t asEname(const Value& value) {
    if (!value.isEname())
        throwBadArgument("lentityp", value);
    return value.id();
}

Point asPoint(const Value& value) {
    double coordinates[3] = {};
    int count = 0;
    const Value* rest = &value;
    for (; rest->isCons() && count < 3 && rest->car().isNumber(); rest = &rest->cdr())
        coordinates[count++] = rest->car().number();
    if (!rest->isNil() || count < 2)
        throwBadArgument("2D/3D point:", value);
    return {coordinates[0], coordinates[1], coordinates[2], count == 2};
}

Value pointValue(const Point& point) {
    if (point.flat)
        return Value::list({Value::real(point.x), Value::real(point.y)});
    return Value::list({Value::real(point.x), Value::real(point.y), Value::real(point.z)});
}

} // namespace vndk::lisp
