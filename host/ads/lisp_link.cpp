#include "ads/lisp_link.h"

#include "ads/entity_data.h"
#include "ads/values.h"
#include "commands/file_questions.h"
#include "db/stub.h"
#include "ed/host.h"
#include "ed/pick.h"
#include "win32/codepage.h"
#include "win32/drive_map.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>

namespace vndk::host {

using lisp::Failure;
using lisp::Outcome;
using lisp::Value;

namespace {

Failure error(std::string message) { return {lisp::FailureKind::Error, std::move(message)}; }

Value pointValue(const AcGePoint3d& p) { return Value::list({Value::real(p.x), Value::real(p.y), Value::real(p.z)}); }

Value toValue(const VariableValue& value, VariableType type) {
    if (const short* whole = std::get_if<short>(&value))
        return Value::integer(*whole);
    if (const double* number = std::get_if<double>(&value))
        return Value::real(*number);
    if (const std::string* text = std::get_if<std::string>(&value))
        return Value::string(*text);
    const AcGePoint3d& p = std::get<AcGePoint3d>(value);
    return type == VariableType::Point2 ? Value::list({Value::real(p.x), Value::real(p.y)}) : pointValue(p);
}

/// Nothing for a value that no variable can hold.
std::optional<VariableValue> fromValue(const Value& value) {
    if (value.isString())
        return std::string(value.text());
    resbuf buffer;
    if (!setResbuf(buffer, value))
        return std::nullopt;
    switch (buffer.restype) {
    case RTSHORT:
        return buffer.resval.rint;
    case RTLONG:
        return static_cast<double>(buffer.resval.rlong);
    case RTREAL:
        return buffer.resval.rreal;
    case RTPOINT:
    case RT3DPOINT:
        return AcGePoint3d(buffer.resval.rpoint[0], buffer.resval.rpoint[1], buffer.resval.rpoint[2]);
    default:
        return std::nullopt;
    }
}

/// The base point of a prompt, if one was given.
struct Base {
    AcGePoint3d point;
    const AcGePoint3d* pointer = nullptr;

    explicit Base(const Value& value) {
        resbuf buffer;
        if (!value.isCons() || !setResbuf(buffer, value))
            return;
        point = {buffer.resval.rpoint[0], buffer.resval.rpoint[1], buffer.resval.rpoint[2]};
        pointer = &point;
    }
};

/// What a prompt gives to LISP.
Outcome<Value> answer(PromptStatus status, const Prompts& prompts, Value value) {
    switch (status) {
    case PromptStatus::Normal:
        return value;
    case PromptStatus::None:
        return Value();
    case PromptStatus::Keyword:
        return Value::string(prompts.keyword());
    case PromptStatus::Cancelled:
        return Failure{lisp::FailureKind::Cancelled, "Function cancelled"};
    case PromptStatus::Error:
        break;
    }
    return error("the answer was refused: " + prompts.keyword());
}

AcDbObjectId idOf(std::uint64_t ename) {
    AcDbObjectId id;
    id.setFromOldId(static_cast<intptr_t>(ename));
    return id;
}

Value nameOf(AcDbObjectId id) { return id.isNull() ? Value() : Value::ename(static_cast<std::uint64_t>(id.asOldId())); }

} // namespace

void LispLink::print(std::string_view text) { host_.print(text); }

Outcome<Value> LispLink::getVariable(std::string_view name) {
    const VariableRow* const row = SystemVariables::find(name);
    VariableValue value;
    if (!row || host_.variables().get(name, value) != VariableError::None)
        return Value();
    return toValue(value, row->type);
}

Outcome<Value> LispLink::setVariable(std::string_view name, const Value& value) {
    const auto given = fromValue(value);
    const VariableError result = !SystemVariables::find(name) ? VariableError::Unknown
                                 : given                      ? host_.variables().set(name, *given)
                                                              : VariableError::WrongType;
    if (result != VariableError::None)
        return error(SystemVariables::explain(name, result));
    return getVariable(name);
}

Outcome<Value> LispLink::command(std::span<const Value> args) {
    host_.commandLine().command(args);
    return Value();
}

Outcome<Value> LispLink::alert(std::string_view message) {
    host_.alert(message);
    return Value();
}

Outcome<std::string> LispLink::loadFile(std::string_view name) {
    namespace fs = std::filesystem;
    std::string file(name);
    if (file.find('.', file.find_last_of("\\/") + 1) == std::string::npos)
        file += ".lsp";
    std::vector<std::string> places{file};
    const std::string drawing = document_.fileName();
    if (document_.hasFile())
        places.push_back(drawing.substr(0, drawing.find_last_of("\\/") + 1) + file);
    for (const std::string& place : places) {
        const auto path = win32::DriveMap::current().toHost(place);
        std::error_code ignored;
        if (!path || !fs::is_regular_file(*path, ignored))
            continue;
        std::ifstream in(*path, std::ios::binary);
        std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        if (in.bad())
            break;
        return win32::fromUtf8(text).value_or(text); // files of either encoding
    }
    return error("LOAD failed: \"" + std::string(name) + "\" can't be found or read");
}

Outcome<Value> LispLink::entget(std::uint64_t ename) {
    resbuf* const data = entityData(idOf(ename));
    Value list = toAssociations(data);
    acutRelRb(data);
    return list;
}

Outcome<Value> LispLink::entlast() { return nameOf(lastEntity(*document_.database())); }

Outcome<Value> LispLink::entnext(std::optional<std::uint64_t> ename) {
    return nameOf(nextEntity(*document_.database(), ename ? idOf(*ename) : AcDbObjectId()));
}

Outcome<Value> LispLink::entdel(std::uint64_t ename) {
    host_.commandLine().openExpressionGroup("ENTDEL");
    if (!toggleErased(idOf(ename)))
        return Value();
    return Value::ename(ename);
}

Outcome<Value> LispLink::getPoint(const Value& base, std::string_view prompt) {
    AcGePoint3d point;
    const Base from(base);
    const PromptStatus status = host_.prompts().getPoint(prompt, point, from.pointer);
    return answer(status, host_.prompts(), pointValue(point));
}

Outcome<Value> LispLink::getDist(const Value& base, std::string_view prompt) {
    double distance = 0;
    const Base from(base);
    const PromptStatus status = host_.prompts().getDist(prompt, distance, from.pointer);
    return answer(status, host_.prompts(), Value::real(distance));
}

Outcome<Value> LispLink::getAngle(const Value& base, std::string_view prompt) {
    double radians = 0;
    const Base from(base);
    const PromptStatus status = host_.prompts().getAngle(prompt, radians, from.pointer);
    return answer(status, host_.prompts(), Value::real(radians));
}

Outcome<Value> LispLink::getReal(std::string_view prompt) {
    double number = 0;
    const PromptStatus status = host_.prompts().getReal(prompt, number);
    return answer(status, host_.prompts(), Value::real(number));
}

Outcome<Value> LispLink::getInt(std::string_view prompt) {
    int number = 0;
    const PromptStatus status = host_.prompts().getInt(prompt, number);
    return answer(status, host_.prompts(), Value::integer(number));
}

Outcome<Value> LispLink::getKeyword(std::string_view prompt) {
    const PromptStatus status = host_.prompts().getKeyword(prompt);
    return answer(status, host_.prompts(), Value::string(host_.prompts().keyword()));
}

Outcome<Value> LispLink::getString(Blanks blanks, std::string_view prompt) {
    std::string text;
    const TextForm form = blanks == Blanks::Allowed ? TextForm::Line : TextForm::Word;
    const PromptStatus status = host_.prompts().getString(prompt, form, text);
    return answer(status, host_.prompts(), Value::string(text));
}

Outcome<Value> LispLink::getFileName(std::string_view title, std::string_view name, std::string_view extension,
                                     int flags) {
    const std::string shownTitle(title), kind(extension);
    const auto chosen = askFileName(host_, {.save = (flags & kNewFile) != 0,
                                            .title = shownTitle.c_str(),
                                            .start = std::string(name),
                                            .extension = kind.c_str()});
    return chosen ? Value::string(*chosen) : Value();
}

Outcome<Value> LispLink::initGet(int bits, std::string_view keywords) {
    host_.prompts().initGet(bits, keywords);
    return Value();
}

} // namespace vndk::host
