// Resources of loaded libraries: the platform's calls over ResourceTable.
//
// An HINSTANCE names a range of compiled resources: libraries get theirs from the loader; a program or a test can
// register a range of its own. Null names the program, which has none. Resource memory belongs to the library and
// stays valid until it is freed.
#pragma once

#include "win32/resource_table.h"
#include "win32/types.h"

/// A resource number in the place of a name.
inline LPCSTR MAKEINTRESOURCE(UINT number) { return reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(number & 0xFFFF)); }

/// True when the pointer is a number made by MAKEINTRESOURCE.
inline bool IS_INTRESOURCE(LPCSTR name) { return (reinterpret_cast<ULONG_PTR>(name) >> 16) == 0; }

inline const LPCSTR RT_CURSOR = MAKEINTRESOURCE(1);
inline const LPCSTR RT_BITMAP = MAKEINTRESOURCE(2);
inline const LPCSTR RT_ICON = MAKEINTRESOURCE(3);
inline const LPCSTR RT_MENU = MAKEINTRESOURCE(4);
inline const LPCSTR RT_DIALOG = MAKEINTRESOURCE(5);
inline const LPCSTR RT_STRING = MAKEINTRESOURCE(6);
inline const LPCSTR RT_RCDATA = MAKEINTRESOURCE(10);

/// Finds a resource. Name and type: a number by MAKEINTRESOURCE, "#123", or text (case doesn't count). Null with
/// ERROR_INVALID_HANDLE, ERROR_RESOURCE_TYPE_NOT_FOUND or ERROR_RESOURCE_NAME_NOT_FOUND.
HRSRC FindResourceA(HINSTANCE instance, LPCSTR name, LPCSTR type);
/// The resource's memory as a handle for LockResource; nothing is to be freed.
HGLOBAL LoadResource(HINSTANCE instance, HRSRC resource);
LPVOID LockResource(HGLOBAL data);
/// Size in bytes; 0 when the resource isn't one of that instance.
DWORD SizeofResource(HINSTANCE instance, HRSRC resource);

/// Copies a string of the string table, cut to `size - 1` characters, and closes it with NUL. The upper half of `id`
/// doesn't count. Returns the number of characters copied; 0 (and an empty buffer, if it has room) when the string is
/// missing or empty.
int LoadStringA(HINSTANCE instance, UINT id, LPSTR buffer, int size);

namespace vndk::win32 {

/// Makes an instance for a range of compiled resources, which must stay until it is unregistered.
Status registerInstance(std::span<const std::uint8_t> compiledResources, HINSTANCE& instance);
void unregisterInstance(HINSTANCE instance);

/// The resources of an instance; null when it isn't registered.
[[nodiscard]] const ResourceTable* resourcesOf(HINSTANCE instance);

/// The bytes of the resource, of whatever instance, that begins at this address; empty when there is none.
[[nodiscard]] std::span<const std::uint8_t> resourceAt(const void* start);

} // namespace vndk::win32
