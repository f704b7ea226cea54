// The commands that can be typed: the host's own and those of loaded modules, in groups.
//
// A command has a global name, the same in every language, and a local one. Names don't differ by case. What a user
// types is looked up so:
//   NAME    the local name; the group registered last wins, the host's own commands come last
//   _NAME   the same by global name (a command that is registered with the underscore in its name comes first)
//   .NAME   the host's own command alone, also when it has been undefined
//   _.NAME and ._NAME both of it;  'NAME as a transparent command (see typedCommandName)
#pragma once

#include "rx/class.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

using AcRxFunctionPtr = void (*)();

namespace vndk::host {
struct BuiltInCommand;
}

/// Flags of a command; add them up.
inline constexpr int ACRX_CMD_MODAL = 0;
inline constexpr int ACRX_CMD_TRANSPARENT = 1; // may run while another command asks, typed as 'NAME
inline constexpr int ACRX_CMD_USEPICKSET = 2;  // the pick set stands when the command begins
inline constexpr int ACRX_CMD_REDRAW = 4;      // the pick set stands again when it ends

/// One command. Owned by the command stack; gone with removeCmd or removeGroup.
class AcEdCommand : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEdCommand)
public:
    const char* globalName() const { return globalName_.c_str(); }
    const char* localName() const { return localName_.c_str(); }
    const char* groupName() const { return groupName_.c_str(); }
    int commandFlags() const { return flags_; }
    AcRxFunctionPtr functionAddr() const { return function_; }
    void* UIContext() const { return uiContext_; }
    int functionCode() const { return functionCode_; }
    void* resourceHandle() const { return resourceHandle_; }
    /// The host's own command behind this row; null for a module's.
    const vndk::host::BuiltInCommand* builtIn() const { return builtIn_; }
    /// Only a host's own command can be undefined: then just .NAME reaches it.
    bool isUndefined() const { return undefined_; }

private:
    friend class AcEdCommandStack;
    std::string globalName_, localName_, groupName_;
    AcRxFunctionPtr function_ = nullptr;
    const vndk::host::BuiltInCommand* builtIn_ = nullptr;
    void* uiContext_ = nullptr;
    void* resourceHandle_ = nullptr;
    int flags_ = 0;
    int functionCode_ = -1;
    bool undefined_ = false;
};

/// Registered in acrxSysRegistry() as "ACAD_REGISTERED_COMMANDS".
class AcEdCommandStack : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcEdCommandStack)
public:
    /// Group of the host's own commands; modules can't register in it.
    static constexpr const char* kBuiltInGroup = "ACAD_COMMANDS";

    AcEdCommandStack();
    ~AcEdCommandStack() override;

    /// Registers a module's command. `function` runs without arguments when the command is typed. The last three
    /// arguments are kept and handed back by AcEdCommand. `result` gets the new row.
    /// eInvalidInput: an empty name or group, no function; eDuplicateKey: the group has a command with that global or
    /// local name.
    Acad::ErrorStatus addCommand(const char* group, const char* globalName, const char* localName, int flags,
                                 AcRxFunctionPtr function, void* uiContext = nullptr, int functionCode = -1,
                                 void* resourceHandle = nullptr, AcEdCommand** result = nullptr);
    /// eKeyNotFound. A command that is running goes on to its end.
    Acad::ErrorStatus removeCmd(const char* group, const char* globalName);
    Acad::ErrorStatus removeGroup(const char* group);

    /// What a user gets for that global name (or local name, with the next); null if none or undefined.
    AcEdCommand* lookupGlobalCmd(const char* name) const;
    AcEdCommand* lookupLocalCmd(const char* name) const;
    /// The command with that global name within a group.
    AcEdCommand* lookupCmd(const char* globalName, const char* group) const;
    /// Local names that begin so, whatever their case, in order and each once. Undefined ones aren't among them.
    std::vector<std::string> namesBeginning(std::string_view begin) const;
    /// What a user gets who types `name`, prefixes and all but the apostrophe.
    AcEdCommand* lookupTyped(std::string_view name) const;
    /// Lets the commands of a group win from now on, as if they had been registered last. eKeyNotFound.
    Acad::ErrorStatus popGroupToTop(const char* group);

    /// All commands of all groups, in the order of registration.
    std::vector<const AcEdCommand*> commands() const;

    /// Registers a host's own command; `row` must outlive the stack.
    void addBuiltIn(const vndk::host::BuiltInCommand& row);
    /// Undefines a host's own command or brings it back. Prefixes of the name (`_`, `.`, `-` kept) don't count.
    /// False: the host has no such command. Commands of modules are never touched.
    bool setUndefined(std::string_view name, bool undefined);

private:
    struct Group;
    using Index = std::unordered_map<std::string, std::vector<AcEdCommand*>>; // folded name; the last one wins

    AcEdCommand* insert(Group& group, std::unique_ptr<AcEdCommand> command);
    Group* findGroup(std::string_view name) const;
    void rebuildIndex();
    static AcEdCommand* top(const Index& index, std::string_view name);

    std::vector<std::unique_ptr<Group>> groups_; // the host's own first, the winning one last
    Index byGlobal_, byLocal_;
};
