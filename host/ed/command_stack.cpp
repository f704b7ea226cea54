#include "ed/command_stack.h"

#include "db/symbol_table.h"
#include "ed/builtin_commands.h"

#include <algorithm>
#include <set>

ACRX_NO_CONS_DEFINE_MEMBERS(AcEdCommand, AcRxObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcEdCommandStack, AcRxObject)

struct AcEdCommandStack::Group {
    std::string name;
    std::vector<std::unique_ptr<AcEdCommand>> commands;
};

namespace {

/// What stands before a typed name.
struct TypedName {
    std::string_view name;
    bool global = false;
    bool builtInOnly = false;
};

TypedName parseTyped(std::string_view text) {
    TypedName typed{text};
    while (typed.name.size() > 1 && (typed.name[0] == '_' || typed.name[0] == '.')) {
        (typed.name[0] == '_' ? typed.global : typed.builtInOnly) = true;
        typed.name.remove_prefix(1);
    }
    return typed;
}

bool sameName(std::string_view a, std::string_view b) { return acdbFoldName(a) == acdbFoldName(b); }

} // namespace

AcEdCommandStack::AcEdCommandStack() {
    groups_.push_back(std::make_unique<Group>());
    groups_.front()->name = kBuiltInGroup;
}

AcEdCommandStack::~AcEdCommandStack() = default;

AcEdCommandStack::Group* AcEdCommandStack::findGroup(std::string_view name) const {
    for (const auto& group : groups_)
        if (sameName(group->name, name))
            return group.get();
    return nullptr;
}

Acad::ErrorStatus AcEdCommandStack::addCommand(const char* groupName, const char* globalName, const char* localName,
                                               int flags, AcRxFunctionPtr function, void* uiContext, int functionCode,
                                               void* resourceHandle, AcEdCommand** result) {
    if (result)
        *result = nullptr;
    if (!groupName || !*groupName || !globalName || !*globalName || !localName || !*localName || !function ||
        sameName(groupName, kBuiltInGroup))
        return Acad::eInvalidInput;
    Group* group = findGroup(groupName);
    if (group)
        for (const auto& command : group->commands)
            if (sameName(command->globalName_, globalName) || sameName(command->localName_, localName))
                return Acad::eDuplicateKey;
    if (!group) {
        groups_.push_back(std::make_unique<Group>());
        group = groups_.back().get();
        group->name = groupName;
    }
    auto command = std::make_unique<AcEdCommand>();
    command->globalName_ = globalName;
    command->localName_ = localName;
    command->flags_ = flags;
    command->function_ = function;
    command->uiContext_ = uiContext;
    command->functionCode_ = functionCode;
    command->resourceHandle_ = resourceHandle;
    AcEdCommand* const added = insert(*group, std::move(command));
    if (result)
        *result = added;
    return Acad::eOk;
}

void AcEdCommandStack::addBuiltIn(const vndk::host::BuiltInCommand& row) {
    auto command = std::make_unique<AcEdCommand>();
    command->globalName_ = row.name;
    command->localName_ = row.name;
    command->flags_ = row.flags;
    command->builtIn_ = &row;
    insert(*groups_.front(), std::move(command));
}

AcEdCommand* AcEdCommandStack::insert(Group& group, std::unique_ptr<AcEdCommand> command) {
    command->groupName_ = group.name;
    AcEdCommand* const added = command.get();
    group.commands.push_back(std::move(command));
    if (&group == groups_.back().get()) {
        byGlobal_[acdbFoldName(added->globalName_)].push_back(added);
        byLocal_[acdbFoldName(added->localName_)].push_back(added);
    } else {
        rebuildIndex(); // it stands below the commands of later groups
    }
    return added;
}

void AcEdCommandStack::rebuildIndex() {
    byGlobal_.clear();
    byLocal_.clear();
    for (const auto& group : groups_)
        for (const auto& command : group->commands) {
            byGlobal_[acdbFoldName(command->globalName_)].push_back(command.get());
            byLocal_[acdbFoldName(command->localName_)].push_back(command.get());
        }
}

Acad::ErrorStatus AcEdCommandStack::removeCmd(const char* groupName, const char* globalName) {
    Group* const group = groupName && globalName ? findGroup(groupName) : nullptr;
    if (!group || group == groups_.front().get())
        return Acad::eKeyNotFound;
    const auto removed =
        std::erase_if(group->commands, [&](const auto& command) { return sameName(command->globalName_, globalName); });
    if (removed == 0)
        return Acad::eKeyNotFound;
    rebuildIndex();
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const char* groupName) {
    Group* const group = groupName ? findGroup(groupName) : nullptr;
    if (!group || group == groups_.front().get())
        return Acad::eKeyNotFound;
    std::erase_if(groups_, [group](const auto& item) { return item.get() == group; });
    rebuildIndex();
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::popGroupToTop(const char* groupName) {
    Group* const group = groupName ? findGroup(groupName) : nullptr;
    if (!group || group == groups_.front().get())
        return Acad::eKeyNotFound;
    const auto place =
        std::find_if(groups_.begin(), groups_.end(), [group](const auto& item) { return item.get() == group; });
    std::rotate(place, place + 1, groups_.end());
    rebuildIndex();
    return Acad::eOk;
}

AcEdCommand* AcEdCommandStack::top(const Index& index, std::string_view name) {
    const auto entry = index.find(acdbFoldName(name));
    if (entry == index.end())
        return nullptr;
    for (auto it = entry->second.rbegin(); it != entry->second.rend(); ++it)
        if (!(*it)->undefined_)
            return *it;
    return nullptr;
}

AcEdCommand* AcEdCommandStack::lookupGlobalCmd(const char* name) const { return name ? top(byGlobal_, name) : nullptr; }

AcEdCommand* AcEdCommandStack::lookupLocalCmd(const char* name) const { return name ? top(byLocal_, name) : nullptr; }

AcEdCommand* AcEdCommandStack::lookupCmd(const char* globalName, const char* groupName) const {
    const Group* const group = globalName && groupName ? findGroup(groupName) : nullptr;
    if (!group)
        return nullptr;
    for (const auto& command : group->commands)
        if (sameName(command->globalName_, globalName))
            return command.get();
    return nullptr;
}

AcEdCommand* AcEdCommandStack::lookupTyped(std::string_view name) const {
    // A module may have registered a name with a prefix in it.
    if (AcEdCommand* const whole = top(byLocal_, name))
        return whole;
    const TypedName typed = parseTyped(name);
    if (typed.builtInOnly)
        return lookupCmd(std::string(typed.name).c_str(), kBuiltInGroup);
    return typed.global ? top(byGlobal_, typed.name) : nullptr;
}

std::vector<const AcEdCommand*> AcEdCommandStack::commands() const {
    std::vector<const AcEdCommand*> all;
    for (const auto& group : groups_)
        for (const auto& command : group->commands)
            all.push_back(command.get());
    return all;
}

std::vector<std::string> AcEdCommandStack::namesBeginning(std::string_view begin) const {
    const std::string folded = acdbFoldName(begin);
    std::set<std::string> names;
    for (const auto& [name, commands] : byLocal_)
        if (name.starts_with(folded) && top(byLocal_, name))
            names.insert(name);
    return {names.begin(), names.end()};
}

bool AcEdCommandStack::setUndefined(std::string_view name, bool undefined) {
    AcEdCommand* const command = lookupCmd(std::string(parseTyped(name).name).c_str(), kBuiltInGroup);
    if (!command)
        return false;
    command->undefined_ = undefined;
    return true;
}
