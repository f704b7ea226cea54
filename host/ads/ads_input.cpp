// Prompts, variables, text and commands for modules.
#include "ads/ads.h"

#include "ads/values.h"
#include "commands/file_questions.h"
#include "ed/display.h"
#include "ed/host.h"
#include "ge/unit_text.h"

#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

using namespace vndk::host;
using vndk::lisp::Value;

namespace {

constexpr size_t kKeywordLimit = 132;
constexpr size_t kTextLimit = 255;

std::string_view textOf(const char* prompt) { return prompt ? prompt : std::string_view(); }

/// False for a text that a caller's buffer may not take: it is never cut.
bool copyText(std::string_view text, size_t limit, char* result) {
    if (text.size() > limit)
        return false;
    std::memcpy(result, text.data(), text.size());
    result[text.size()] = 0;
    return true;
}

std::string_view withoutLineEnds(std::string_view text) {
    const size_t first = text.find_first_not_of("\r\n");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of("\r\n") + 1 - first);
}

void copyPoint(const AcGePoint3d& point, ads_point result) {
    result[0] = point.x;
    result[1] = point.y;
    result[2] = point.z;
}

/// The base point of a prompt, if one is given.
class Base {
public:
    explicit Base(const ads_real* base) : given_(base) {
        if (base)
            point_ = {base[0], base[1], base[2]};
    }
    const AcGePoint3d* get() const { return given_ ? &point_ : nullptr; }

private:
    bool given_;
    AcGePoint3d point_;
};

/// A host with a drawing, in which prompts make sense.
Host* prompting() {
    Host* const host = Host::current();
    return host && host->documents().curDocument() ? host : nullptr;
}

int code(PromptStatus status) { return static_cast<int>(status); }

} // namespace

int acutPrintf(const char* format, ...) {
    Host* const host = Host::current();
    if (!host || !format)
        return RTERROR;
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(length > 0 ? static_cast<size_t>(length) : 0, '\0');
    if (length > 0)
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    host->print(text);
    return length < 0 ? RTERROR : RTNORM;
}

int acedPrompt(const char* text) {
    Host* const host = Host::current();
    if (!host || !text)
        return RTERROR;
    host->print(text);
    return RTNORM;
}

int acedAlert(const char* message) {
    Host* const host = Host::current();
    if (!host || !message)
        return RTERROR;
    host->alert(message);
    // Nobody sees an alert of a script, and what follows may count on what it says has failed.
    host->commandLine().report(Problem::Kind::CommandFailed, std::string(withoutLineEnds(message)));
    return RTNORM;
}

int acdbFail(const char* message) {
    Host* const host = Host::current();
    if (!host || !message)
        return RTERROR;
    host->freshLine();
    host->print(std::string(message) + "\n");
    return RTNORM;
}

int acedInitGet(int bits, const char* keywords) {
    Host* const host = Host::current();
    if (!host)
        return RTERROR;
    host->prompts().initGet(bits, textOf(keywords));
    return RTNORM;
}

int acedGetPoint(const ads_point base, const char* prompt, ads_point result) {
    Host* const host = prompting();
    if (!host || !result)
        return RTERROR;
    AcGePoint3d point;
    const PromptStatus status = host->prompts().getPoint(textOf(prompt), point, Base(base).get());
    if (status == PromptStatus::Normal)
        copyPoint(point, result);
    return code(status);
}

int acedGetCorner(const ads_point base, const char* prompt, ads_point result) {
    return base ? acedGetPoint(base, prompt, result) : RTERROR;
}

int acedGetDist(const ads_point base, const char* prompt, ads_real* result) {
    Host* const host = prompting();
    return host && result ? code(host->prompts().getDist(textOf(prompt), *result, Base(base).get())) : RTERROR;
}

int acedGetAngle(const ads_point base, const char* prompt, ads_real* result) {
    Host* const host = prompting();
    return host && result ? code(host->prompts().getAngle(textOf(prompt), *result, Base(base).get())) : RTERROR;
}

int acedGetOrient(const ads_point base, const char* prompt, ads_real* result) {
    Host* const host = prompting();
    return host && result ? code(host->prompts().getOrient(textOf(prompt), *result, Base(base).get())) : RTERROR;
}

int acedGetReal(const char* prompt, ads_real* result) {
    Host* const host = prompting();
    return host && result ? code(host->prompts().getReal(textOf(prompt), *result)) : RTERROR;
}

int acedGetInt(const char* prompt, int* result) {
    Host* const host = prompting();
    return host && result ? code(host->prompts().getInt(textOf(prompt), *result)) : RTERROR;
}

int acedGetKword(const char* prompt, char* result) {
    Host* const host = prompting();
    if (!host || !result)
        return RTERROR;
    const PromptStatus status = host->prompts().getKeyword(textOf(prompt));
    if (status == PromptStatus::Normal && !copyText(host->prompts().keyword(), kKeywordLimit, result))
        return RTERROR;
    return code(status);
}

int acedGetString(int blanks, const char* prompt, char* result) {
    Host* const host = prompting();
    if (!host || !result)
        return RTERROR;
    std::string text;
    const TextForm form = blanks ? TextForm::Line : TextForm::Word;
    const PromptStatus status = host->prompts().getString(textOf(prompt), form, text, kTextLimit);
    if (status == PromptStatus::Normal)
        copyText(text, kTextLimit, result);
    return code(status);
}

int acedGetInput(char* result) {
    Host* const host = Host::current();
    if (!host || !result || host->prompts().keyword().empty())
        return RTERROR;
    return copyText(host->prompts().keyword(), kKeywordLimit, result) ? RTNORM : RTERROR;
}

int acedEntSel(const char* prompt, ads_name entity, ads_point point) {
    Host* const host = prompting();
    if (!host || !entity || !point)
        return RTERROR;
    AcDbObjectId id;
    AcGePoint3d picked;
    const std::string_view text = prompt ? std::string_view(prompt) : "\nSelect object: ";
    const PromptStatus status = host->prompts().entSel(text, id, picked);
    if (status != PromptStatus::Normal)
        return status == PromptStatus::None ? RTERROR : code(status);
    entity[0] = id.asOldId();
    entity[1] = 0;
    copyPoint(picked, point);
    return RTNORM;
}

int acedUsrBrk() {
    Host* const host = Host::current();
    return host && host->prompts().lastStatus() == PromptStatus::Cancelled;
}

int acedGetFileD(const char* title, const char* name, const char* extension, int flags, resbuf* result) {
    Host* const host = Host::current();
    if (!host || !result)
        return RTERROR;
    const auto chosen = askFileName(*host, {.save = (flags & kNewFile) != 0,
                                            .title = title ? title : "",
                                            .start = name ? name : "",
                                            .extension = extension ? extension : ""});
    if (!chosen)
        return RTCAN;
    result->restype = RTSTR;
    result->resval.rstring = acutNewString(chosen->c_str());
    return RTNORM;
}

int acedGetVar(const char* name, resbuf* result) {
    Host* const host = Host::current();
    const VariableRow* const row = host && name && result ? SystemVariables::find(name) : nullptr;
    VariableValue value;
    if (!row || host->variables().get(name, value) != VariableError::None)
        return RTERROR;
    if (const short* whole = std::get_if<short>(&value)) {
        result->restype = RTSHORT;
        result->resval.rint = *whole;
    } else if (const double* number = std::get_if<double>(&value)) {
        result->restype = RTREAL;
        result->resval.rreal = *number;
    } else if (const std::string* text = std::get_if<std::string>(&value)) {
        result->restype = RTSTR;
        result->resval.rstring = acutNewString(text->c_str());
    } else {
        result->restype = row->type == VariableType::Point2 ? RTPOINT : RT3DPOINT;
        copyPoint(std::get<AcGePoint3d>(value), result->resval.rpoint);
    }
    return RTNORM;
}

int acedSetVar(const char* name, const resbuf* value) {
    Host* const host = Host::current();
    if (!host || !name || !value)
        return RTERROR;
    VariableValue given;
    switch (value->restype) {
    case RTSHORT:
        given = value->resval.rint;
        break;
    case RTREAL:
    case RTANG:
        given = value->resval.rreal;
        break;
    case RTSTR:
        given = std::string(textOf(value->resval.rstring));
        break;
    case RTPOINT:
    case RT3DPOINT:
        given = AcGePoint3d(value->resval.rpoint[0], value->resval.rpoint[1],
                            value->restype == RTPOINT ? 0 : value->resval.rpoint[2]);
        break;
    default:
        return RTERROR;
    }
    return host->variables().set(name, given) == VariableError::None ? RTNORM : RTERROR;
}

int acedCmd(const resbuf* list) {
    Host* const host = prompting();
    if (!host)
        return RTERROR;
    std::vector<Value> values;
    for (; list; list = list->rbnext)
        values.push_back(toValue(*list));
    return host->commandLine().command(values, CommandLine::Caller::Module) ? RTNORM : RTERROR;
}

int acedCommand(int type, ...) {
    std::vector<Value> values;
    va_list arguments;
    va_start(arguments, type);
    bool known = true;
    for (int next = type; known && next != RTNONE && next != 0; next = va_arg(arguments, int)) {
        resbuf buffer;
        buffer.restype = static_cast<short>(next);
        switch (next) {
        case RTSTR:
            buffer.resval.rstring = const_cast<char*>(va_arg(arguments, const char*));
            break;
        case RTREAL:
        case RTANG:
            buffer.resval.rreal = va_arg(arguments, double);
            break;
        case RTSHORT:
            buffer.resval.rint = static_cast<short>(va_arg(arguments, int));
            break;
        case RTLONG:
            buffer.resval.rlong = va_arg(arguments, int);
            break;
        case RTPOINT:
        case RT3DPOINT: {
            const ads_real* const point = va_arg(arguments, const ads_real*);
            std::memcpy(buffer.resval.rpoint, point, sizeof(ads_real) * (next == RTPOINT ? 2 : 3));
            break;
        }
        case RTENAME: {
            const intptr_t* const name = va_arg(arguments, const intptr_t*);
            std::memcpy(buffer.resval.rlname, name, sizeof(ads_name));
            break;
        }
        default:
            known = false;
            continue;
        }
        values.push_back(toValue(buffer));
    }
    va_end(arguments);
    Host* const host = prompting();
    return host && known && host->commandLine().command(values, CommandLine::Caller::Module) ? RTNORM : RTERROR;
}

int acedCmdUndefine(const char* name, int undefine) {
    Host* const host = Host::current();
    return host && name && host->commands().setUndefined(name, undefine != 0) ? RTNORM : RTERROR;
}

int ads_regen() {
    Host* const host = Host::current();
    if (host && host->display())
        host->display()->regenerate();
    return host ? RTNORM : RTERROR;
}

int acedUpdateDisplay() {
    Host* const host = Host::current();
    if (host && host->display())
        host->display()->update();
    return host ? RTNORM : RTERROR;
}
