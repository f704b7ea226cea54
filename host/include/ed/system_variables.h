// System variables: one typed table, read and set by SETVAR, LISP, modules and the host's own code alike.
//
// Where a value lives: in the header of the current drawing (undone with the command, saved in the file), in the
// drawing while it is open, in the user's profile, or in the session. Angles are radians inside and in acedGetVar;
// texts are in code page 1252. Names don't differ by case.
#pragma once

#include "db/resbuf.h"
#include "ge/vector.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

class AcApDocument;

namespace vndk::host {

class Host;

/// A short, a real, a text, or a point.
using VariableValue = std::variant<short, double, std::string, AcGePoint3d>;

enum class VariableType { Short, Real, Text, Point2, Point3 };
enum class VariableAccess { ReadWrite, ReadOnly };
enum class VariablePlace { Header, Drawing, Profile, Session };

struct VariableRow {
    const char* name;
    VariableType type;
    VariableAccess access;
    VariablePlace place;
    /// Inclusive range of shorts and reals; a range that is empty (low > high) doesn't limit.
    double low, high;
    /// The value at start of a profile or session variable, as SETVAR would be given it.
    const char* standard;
    /// Null where the name alone leads to the value (header member, profile or session value).
    VariableValue (*get)(Host&, AcApDocument*);
    /// False refuses the value, for example a layer that isn't there.
    bool (*set)(Host&, AcApDocument&, const VariableValue&);
};

enum class VariableError { None, Unknown, ReadOnly, WrongType, OutOfRange, Refused, NoDocument };

class SystemVariables {
public:
    explicit SystemVariables(Host& host);

    /// All rows, by name.
    static std::span<const VariableRow> rows();
    static const VariableRow* find(std::string_view name);

    /// Nothing is changed on an error. `value` is what acedGetVar gives. NoDocument for a drawing's variable while no
    /// document is open.
    VariableError get(std::string_view name, VariableValue& value) const;
    /// Shorts are taken for reals. Reactors get sysVarWillChange and sysVarChanged.
    VariableError set(std::string_view name, const VariableValue& value);
    /// Sets a read-only variable, for the host's own code.
    void force(std::string_view name, VariableValue value);

    /// Reads the profile's values; afterwards changes are written there, those made while a command runs when it has
    /// ended: what it sets for its own time only must not outlast a program that is killed meanwhile.
    void loadProfile();
    /// Writes the changes that wait for the end of a command.
    void saveProfile();
    /// Gives a new document's database the profile's values that it holds (ATTREQ, ATTDIA).
    void applyTo(AcApDocument& document) const;

    /// Sentence for the user: why that value of that variable was refused.
    static std::string explain(std::string_view name, VariableError error);
    /// The value as SETVAR shows it.
    static std::string text(const VariableValue& value);

    // Short forms for the host's own code; 0 or empty when there is no such variable or it is of another type.
    short getShort(std::string_view name) const;
    double getReal(std::string_view name) const;
    std::string getText(std::string_view name) const;

private:
    VariableError check(const VariableRow& row, VariableValue& value) const;
    VariableError store(const VariableRow& row, const VariableValue& value);

    Host& host_;
    std::vector<VariableValue> kept_; // profile and session values, by row
    std::vector<size_t> unsaved_;     // rows of the profile that wait for the end of a command
};

} // namespace vndk::host
