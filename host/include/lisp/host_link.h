// What the interpreter asks of the host it runs in. One class, so that tests and tools can stand in for the host.
//
// Only print() must be there; every other call answers "not available" until overridden. The interpreter calls on the
// host's one thread and from within evaluate(); a call may evaluate LISP itself. A returned failure becomes a LISP
// error with the failure's message; FailureKind::Cancelled says that the user cancelled. Text is 8-bit in the host's
// code page. Points are lists of two or three reals in the current user coordinate system, lengths are in drawing
// units, angles in radians, counterclockwise from the x axis.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "lisp/value.h"

namespace vndk::lisp {

class HostLink {
public:
    virtual ~HostLink() = default;

    /// Writes to the command line's output; the text brings its own line ends.
    virtual void print(std::string_view text) = 0;

    /// A system variable; nil when there is none of that name.
    virtual Outcome<Value> getVariable(std::string_view name);
    /// Sets a system variable and returns its new value; unknown, read-only and out of range are failures.
    virtual Outcome<Value> setVariable(std::string_view name, const Value& value);
    /// Gives `args` to the command line as if typed: strings are words, numbers and points are answers, an entity
    /// name picks, the string "\\" (PAUSE) waits for the user. No argument at all cancels the running command.
    virtual Outcome<Value> command(std::span<const Value> args);
    /// The text of a LISP file, found as the host searches its files, ".lsp" added when there is no extension.
    virtual Outcome<std::string> loadFile(std::string_view name);
    virtual Outcome<Value> alert(std::string_view message);

    /// The entity's data as an association list by group code; nil when the entity is erased.
    virtual Outcome<Value> entget(std::uint64_t ename);
    /// The last entity that isn't erased; nil in an empty drawing.
    virtual Outcome<Value> entlast();
    /// The entity after `ename`, or the first one without it; nil after the last.
    virtual Outcome<Value> entnext(std::optional<std::uint64_t> ename);
    /// Erases the entity or brings it back; returns its name.
    virtual Outcome<Value> entdel(std::uint64_t ename);

    /// Prompts. An empty answer is nil, a keyword of the last initGet() is a string. `base` is nil or a point from
    /// which a rubber band is drawn. `prompt` may be empty.
    virtual Outcome<Value> getPoint(const Value& base, std::string_view prompt);
    virtual Outcome<Value> getDist(const Value& base, std::string_view prompt);
    virtual Outcome<Value> getAngle(const Value& base, std::string_view prompt);
    virtual Outcome<Value> getReal(std::string_view prompt);
    virtual Outcome<Value> getInt(std::string_view prompt);
    virtual Outcome<Value> getKeyword(std::string_view prompt);
    enum class Blanks { EndAnswer, Allowed };
    virtual Outcome<Value> getString(Blanks blanks, std::string_view prompt);
    /// The name of a file, asked for in a dialog that begins with `name`; nil when the user gave up.
    virtual Outcome<Value> getFileName(std::string_view title, std::string_view name, std::string_view extension,
                                       int flags);
    /// Rules for the next prompt: the bits 1 (no empty answer), 2 (no zero), 4 (not negative), ... and keywords
    /// separated by blanks.
    virtual Outcome<Value> initGet(int bits, std::string_view keywords);
};

} // namespace vndk::lisp
