// Memory blocks behind handles: the Global and Local calls, which are one and the same.
//
//     HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 100);
//     void* bytes = GlobalLock(block);
//     ...
//     GlobalUnlock(block);
//     GlobalFree(block);
//
// A fixed block's handle is its address; a moveable block has an address only while it is locked (blocks stay where
// they are all the same, but only a lock promises it). Whoever allocates frees, unless a call takes the block over.
// Null, 0 or FALSE with ERROR_INVALID_HANDLE for a handle that is dead, with ERROR_NOT_ENOUGH_MEMORY for a size that
// can't be had.
#pragma once

#include "win32/types.h"

#include <cstddef>

using SIZE_T = std::size_t;
using HLOCAL = HANDLE;

constexpr UINT GMEM_FIXED = 0x0000;
constexpr UINT GMEM_MOVEABLE = 0x0002;
constexpr UINT GMEM_NOCOMPACT = 0x0010;
constexpr UINT GMEM_NODISCARD = 0x0020;
constexpr UINT GMEM_ZEROINIT = 0x0040;
constexpr UINT GMEM_MODIFY = 0x0080;
constexpr UINT GMEM_DISCARDABLE = 0x0100;
constexpr UINT GMEM_SHARE = 0x2000;
constexpr UINT GMEM_DDESHARE = 0x2000;
constexpr UINT GMEM_DISCARDED = 0x4000;
constexpr UINT GMEM_INVALID_HANDLE = 0x8000;
constexpr UINT GMEM_LOCKCOUNT = 0x00FF; // of GlobalFlags' result
constexpr UINT GHND = GMEM_MOVEABLE | GMEM_ZEROINIT;
constexpr UINT GPTR = GMEM_FIXED | GMEM_ZEROINIT;

constexpr UINT LMEM_FIXED = GMEM_FIXED;
constexpr UINT LMEM_MOVEABLE = GMEM_MOVEABLE;
constexpr UINT LMEM_NOCOMPACT = GMEM_NOCOMPACT;
constexpr UINT LMEM_NODISCARD = GMEM_NODISCARD;
constexpr UINT LMEM_ZEROINIT = GMEM_ZEROINIT;
constexpr UINT LMEM_MODIFY = GMEM_MODIFY;
constexpr UINT LMEM_DISCARDABLE = 0x0F00;
constexpr UINT LMEM_DISCARDED = GMEM_DISCARDED;
constexpr UINT LMEM_INVALID_HANDLE = GMEM_INVALID_HANDLE;
constexpr UINT LMEM_LOCKCOUNT = GMEM_LOCKCOUNT;
constexpr UINT LHND = LMEM_MOVEABLE | LMEM_ZEROINIT;
constexpr UINT LPTR = LMEM_FIXED | LMEM_ZEROINIT;

/// A moveable block of no bytes is a discarded one: it has a handle but no memory until it is reallocated.
HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes);
/// Keeps the content up to the smaller size; new bytes are 0 with GMEM_ZEROINIT. With GMEM_MODIFY only the flags
/// change. A moveable block of size 0 is discarded. On failure the block stays as it was.
HGLOBAL GlobalReAlloc(HGLOBAL block, SIZE_T bytes, UINT flags);
/// Null on success, else the handle. Locked blocks go, too.
HGLOBAL GlobalFree(HGLOBAL block);
LPVOID GlobalLock(HGLOBAL block);
/// TRUE while locks are left. FALSE with ERROR_SUCCESS when the last one went, with ERROR_NOT_LOCKED when there was
/// none. A fixed block's locks aren't counted: TRUE.
BOOL GlobalUnlock(HGLOBAL block);
SIZE_T GlobalSize(HGLOBAL block);
/// Lock count in the low byte, GMEM_DISCARDABLE and GMEM_DISCARDED above; GMEM_INVALID_HANDLE on failure.
UINT GlobalFlags(HGLOBAL block);
/// The handle of the block that a pointer of GlobalLock (or a fixed block) leads to.
HGLOBAL GlobalHandle(LPCVOID pointer);
inline HGLOBAL GlobalDiscard(HGLOBAL block) { return GlobalReAlloc(block, 0, GMEM_MOVEABLE); }

HLOCAL LocalAlloc(UINT flags, SIZE_T bytes);
HLOCAL LocalReAlloc(HLOCAL block, SIZE_T bytes, UINT flags);
HLOCAL LocalFree(HLOCAL block);
LPVOID LocalLock(HLOCAL block);
BOOL LocalUnlock(HLOCAL block);
SIZE_T LocalSize(HLOCAL block);
UINT LocalFlags(HLOCAL block);
HLOCAL LocalHandle(LPCVOID pointer);
inline HLOCAL LocalDiscard(HLOCAL block) { return LocalReAlloc(block, 0, LMEM_MOVEABLE); }
