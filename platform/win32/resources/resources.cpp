#include "win32/resources.h"

#include "gdi/icon.h"
#include "win32/error.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace vndk::win32 {

namespace {

// An HINSTANCE is the address of its table. Never destroyed: libraries may still be freed while the program ends.
std::vector<std::unique_ptr<ResourceTable>>& instances() {
    static auto& tables = *new std::vector<std::unique_ptr<ResourceTable>>;
    return tables;
}

HINSTANCE handleOf(ResourceTable* table) { return reinterpret_cast<HINSTANCE>(table); }

auto findInstance(HINSTANCE instance) {
    return std::find_if(instances().begin(), instances().end(),
                        [instance](const auto& table) { return handleOf(table.get()) == instance; });
}

std::optional<ResourceKey> keyOf(LPCSTR name) {
    if (IS_INTRESOURCE(name))
        return ResourceKey(static_cast<std::uint16_t>(reinterpret_cast<ULONG_PTR>(name)));
    if (*name != '#')
        return ResourceKey(std::string_view(name));
    std::uint16_t number = 0;
    const char* end = name + std::strlen(name);
    const auto [stop, problem] = std::from_chars(name + 1, end, number);
    return problem == std::errc() && stop == end ? std::optional(ResourceKey(number)) : std::nullopt;
}

const ResourceEntry* entryOf(HINSTANCE instance, HRSRC resource) {
    const ResourceTable* table = resourcesOf(instance);
    const auto* entry = reinterpret_cast<const ResourceEntry*>(resource);
    if (table == nullptr || !table->owns(entry)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    return entry;
}

} // namespace

Status registerInstance(std::span<const std::uint8_t> compiledResources, HINSTANCE& instance) {
    auto table = std::make_unique<ResourceTable>();
    Status status = ResourceTable::parse(compiledResources, *table);
    if (!status.ok())
        return status;
    instance = handleOf(table.get());
    instances().push_back(std::move(table));
    return status;
}

void unregisterInstance(HINSTANCE instance) {
    const auto at = findInstance(instance);
    if (at == instances().end())
        return;
    forgetSharedIcons(instance);
    instances().erase(at);
}

const ResourceTable* resourcesOf(HINSTANCE instance) {
    const auto at = findInstance(instance);
    return at != instances().end() ? at->get() : nullptr;
}

std::span<const std::uint8_t> resourceAt(const void* start) {
    for (const auto& table : instances())
        for (const ResourceEntry& entry : table->entries())
            if (entry.data.data() == start && !entry.data.empty())
                return entry.data;
    return {};
}

} // namespace vndk::win32

using namespace vndk::win32;

HRSRC FindResourceA(HINSTANCE instance, LPCSTR name, LPCSTR type) {
    const ResourceTable* table = resourcesOf(instance);
    if (table == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    const auto typeKey = keyOf(type);
    if (!typeKey || !table->hasType(*typeKey)) {
        SetLastError(ERROR_RESOURCE_TYPE_NOT_FOUND);
        return nullptr;
    }
    const auto nameKey = keyOf(name);
    const ResourceEntry* entry = nameKey ? table->find(*typeKey, *nameKey) : nullptr;
    if (entry == nullptr)
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return reinterpret_cast<HRSRC>(const_cast<ResourceEntry*>(entry));
}

HGLOBAL LoadResource(HINSTANCE instance, HRSRC resource) {
    const ResourceEntry* entry = entryOf(instance, resource);
    return entry != nullptr ? const_cast<std::uint8_t*>(entry->data.data()) : nullptr;
}

LPVOID LockResource(HGLOBAL data) { return data; }

DWORD SizeofResource(HINSTANCE instance, HRSRC resource) {
    const ResourceEntry* entry = entryOf(instance, resource);
    return entry != nullptr ? static_cast<DWORD>(entry->data.size()) : 0;
}

int LoadStringA(HINSTANCE instance, UINT id, LPSTR buffer, int size) {
    if (buffer == nullptr || size <= 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    buffer[0] = '\0';
    id &= 0xFFFF; // the upper half doesn't count
    // Sixteen strings share a block; blocks count from 1.
    const HRSRC block = FindResourceA(instance, MAKEINTRESOURCE(id / 16 + 1), RT_STRING);
    if (block == nullptr)
        return 0;
    const auto text = stringOfBlock(entryOf(instance, block)->data, id % 16);
    if (!text || text->empty()) {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return 0;
    }
    const std::size_t length = std::min(text->size(), static_cast<std::size_t>(size - 1));
    std::memcpy(buffer, text->data(), length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}
