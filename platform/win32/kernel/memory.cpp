#include "win32/memory.h"

#include "win32/error.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <unordered_map>

namespace {

constexpr SIZE_T largestBlock = SIZE_T{1} << 31;
constexpr UINT mostLocks = 0xFF;

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
using Memory = std::unique_ptr<void, FreeMemory>;

struct Block {
    Memory memory; // null for a discarded one
    SIZE_T size = 0;
    UINT locks = 0;
    bool moveable = false;
    bool discardable = false;
};

// Fixed blocks stand under their address, moveable ones under a number that no address has: odd ones.
class Blocks {
public:
    HGLOBAL add(Block block) {
        const HGLOBAL handle = block.moveable ? nextHandle() : block.memory.get();
        blocks_.emplace(handle, std::move(block));
        return handle;
    }

    Block* find(HGLOBAL handle) {
        const auto found = blocks_.find(handle);
        if (found == blocks_.end()) {
            SetLastError(ERROR_INVALID_HANDLE);
            return nullptr;
        }
        return &found->second;
    }

    void remove(HGLOBAL handle) { blocks_.erase(handle); }

    HGLOBAL handleOf(LPCVOID pointer) {
        for (const auto& [handle, block] : blocks_)
            if (pointer != nullptr && block.memory.get() == pointer)
                return handle;
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }

private:
    HGLOBAL nextHandle() {
        next_ += 4;
        return reinterpret_cast<HGLOBAL>(next_);
    }

    std::unordered_map<HGLOBAL, Block> blocks_;
    UINT_PTR next_ = 0x10001;
};

Blocks& blocks() {
    thread_local Blocks all;
    return all;
}

// Null, with ERROR_NOT_ENOUGH_MEMORY, when there isn't so much. One byte at least, so that each has an address.
Memory allocate(SIZE_T bytes, bool zero) {
    Memory memory;
    if (bytes <= largestBlock)
        memory.reset(zero ? std::calloc(1, std::max<SIZE_T>(bytes, 1)) : std::malloc(std::max<SIZE_T>(bytes, 1)));
    if (memory == nullptr)
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return memory;
}

HGLOBAL modify(HGLOBAL handle, Block& block, UINT flags) {
    if (block.moveable)
        block.discardable = (flags & GMEM_DISCARDABLE) != 0;
    return handle;
}

HGLOBAL discard(HGLOBAL handle, Block& block) {
    if (block.locks != 0) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    block.memory.reset();
    block.size = 0;
    return handle;
}

// A fixed block keeps its place unless GMEM_MOVEABLE allows another; then it gets a new handle.
HGLOBAL resize(HGLOBAL handle, Block& block, SIZE_T bytes, UINT flags) {
    Memory memory = allocate(bytes, (flags & GMEM_ZEROINIT) != 0);
    if (memory == nullptr)
        return nullptr;
    if (block.memory != nullptr)
        std::memcpy(memory.get(), block.memory.get(), std::min(bytes, block.size));
    if (block.moveable) {
        block.memory = std::move(memory);
        block.size = bytes;
        return handle;
    }
    Block moved;
    moved.memory = std::move(memory);
    moved.size = bytes;
    blocks().remove(handle);
    return blocks().add(std::move(moved));
}

} // namespace

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) {
    Block block;
    block.moveable = (flags & GMEM_MOVEABLE) != 0;
    block.discardable = block.moveable && (flags & GMEM_DISCARDABLE) != 0;
    block.size = bytes;
    if (bytes != 0 || !block.moveable) {
        block.memory = allocate(bytes, (flags & GMEM_ZEROINIT) != 0);
        if (block.memory == nullptr)
            return nullptr;
    }
    return blocks().add(std::move(block));
}

HGLOBAL GlobalReAlloc(HGLOBAL handle, SIZE_T bytes, UINT flags) {
    Block* block = blocks().find(handle);
    if (block == nullptr)
        return nullptr;
    if ((flags & GMEM_MODIFY) != 0)
        return modify(handle, *block, flags);
    if (bytes == 0 && block->moveable)
        return discard(handle, *block);
    const bool mayMove = block->moveable ? block->locks == 0 || (flags & GMEM_MOVEABLE) != 0
                                         : (flags & GMEM_MOVEABLE) != 0 || bytes <= block->size;
    if (!mayMove) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    if (!block->moveable && (flags & GMEM_MOVEABLE) == 0) {
        block->size = bytes;
        return handle;
    }
    return resize(handle, *block, bytes, flags);
}

HGLOBAL GlobalFree(HGLOBAL handle) {
    if (handle == nullptr)
        return nullptr;
    if (blocks().find(handle) == nullptr)
        return handle;
    blocks().remove(handle);
    return nullptr;
}

LPVOID GlobalLock(HGLOBAL handle) {
    Block* block = blocks().find(handle);
    if (block == nullptr)
        return nullptr;
    if (block->memory == nullptr) {
        SetLastError(ERROR_DISCARDED);
        return nullptr;
    }
    if (block->moveable && block->locks < mostLocks)
        ++block->locks;
    return block->memory.get();
}

BOOL GlobalUnlock(HGLOBAL handle) {
    Block* block = blocks().find(handle);
    if (block == nullptr)
        return FALSE;
    if (!block->moveable)
        return TRUE;
    if (block->locks == 0) {
        SetLastError(ERROR_NOT_LOCKED);
        return FALSE;
    }
    if (--block->locks > 0)
        return TRUE;
    SetLastError(ERROR_SUCCESS);
    return FALSE;
}

SIZE_T GlobalSize(HGLOBAL handle) {
    const Block* block = blocks().find(handle);
    return block != nullptr ? block->size : 0;
}

UINT GlobalFlags(HGLOBAL handle) {
    const Block* block = blocks().find(handle);
    if (block == nullptr)
        return GMEM_INVALID_HANDLE;
    return block->locks | (block->discardable ? GMEM_DISCARDABLE : 0U) |
           (block->memory == nullptr ? GMEM_DISCARDED : 0U);
}

HGLOBAL GlobalHandle(LPCVOID pointer) { return blocks().handleOf(pointer); }

HLOCAL LocalAlloc(UINT flags, SIZE_T bytes) { return GlobalAlloc(flags, bytes); }
HLOCAL LocalReAlloc(HLOCAL block, SIZE_T bytes, UINT flags) { return GlobalReAlloc(block, bytes, flags); }
HLOCAL LocalFree(HLOCAL block) { return GlobalFree(block); }
LPVOID LocalLock(HLOCAL block) { return GlobalLock(block); }
BOOL LocalUnlock(HLOCAL block) { return GlobalUnlock(block); }
SIZE_T LocalSize(HLOCAL block) { return GlobalSize(block); }
UINT LocalFlags(HLOCAL block) { return GlobalFlags(block); }
HLOCAL LocalHandle(LPCVOID pointer) { return GlobalHandle(pointer); }
