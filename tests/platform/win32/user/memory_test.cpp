// Memory blocks behind handles.
#include "win32/error.h"
#include "win32/memory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>

namespace {

TEST(GlobalMemory, FixedBlocksAreTheirAddressAndMoveableOnesAreNot) {
    const HGLOBAL fixed = GlobalAlloc(GPTR, 20);
    EXPECT_EQ(GlobalLock(fixed), fixed);
    EXPECT_TRUE(GlobalUnlock(fixed));
    EXPECT_EQ(GlobalFlags(fixed), 0u);
    EXPECT_EQ(GlobalHandle(fixed), fixed);
    EXPECT_EQ(static_cast<char*>(fixed)[19], 0) << "zeroed";

    const HGLOBAL moveable = GlobalAlloc(GHND | GMEM_SHARE, 20);
    void* bytes = GlobalLock(moveable);
    ASSERT_NE(bytes, nullptr);
    EXPECT_NE(bytes, moveable);
    EXPECT_EQ(GlobalHandle(bytes), moveable);
    EXPECT_EQ(GlobalSize(moveable), 20u);
    EXPECT_EQ(GlobalFree(moveable), nullptr);
    EXPECT_EQ(GlobalFree(fixed), nullptr);
}

TEST(GlobalMemory, LocksAreCounted) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 4);
    GlobalLock(block);
    GlobalLock(block);
    EXPECT_EQ(GlobalFlags(block) & GMEM_LOCKCOUNT, 2u);
    EXPECT_TRUE(GlobalUnlock(block));
    EXPECT_FALSE(GlobalUnlock(block));
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
    EXPECT_FALSE(GlobalUnlock(block));
    EXPECT_EQ(GetLastError(), ERROR_NOT_LOCKED);
    for (int i = 0; i < 300; ++i)
        GlobalLock(block);
    EXPECT_EQ(GlobalFlags(block), GMEM_LOCKCOUNT) << "the count stays within its byte";
    EXPECT_EQ(GlobalFree(block), nullptr) << "locked ones go, too";
}

TEST(GlobalMemory, ContentSurvivesAnotherSize) {
    for (const UINT kind : {GMEM_FIXED, GMEM_MOVEABLE}) {
        HGLOBAL block = GlobalAlloc(kind, 4);
        std::memcpy(GlobalLock(block), "abc", 4);
        GlobalUnlock(block);
        block = GlobalReAlloc(block, 100000, GMEM_MOVEABLE | GMEM_ZEROINIT);
        ASSERT_NE(block, nullptr) << kind;
        const auto* bytes = static_cast<const char*>(GlobalLock(block));
        EXPECT_STREQ(bytes, "abc") << kind;
        EXPECT_EQ(std::string(bytes + 4, 99996).find_first_not_of('\0'), std::string::npos) << kind;
        GlobalUnlock(block);
        block = GlobalReAlloc(block, 2, GMEM_MOVEABLE);
        EXPECT_EQ(GlobalSize(block), 2u) << kind;
        GlobalFree(block);
    }
    const HGLOBAL fixed = GlobalAlloc(GMEM_FIXED, 10);
    EXPECT_EQ(GlobalReAlloc(fixed, 20, 0), nullptr) << "it may not move";
    EXPECT_EQ(GlobalReAlloc(fixed, 5, 0), fixed);
    EXPECT_EQ(GlobalSize(fixed), 5u);
    GlobalFree(fixed);
}

TEST(GlobalMemory, DiscardedBlocksKeepTheirHandle) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_DISCARDABLE, 10);
    EXPECT_EQ(GlobalFlags(block), GMEM_DISCARDABLE);
    GlobalLock(block);
    EXPECT_EQ(GlobalDiscard(block), nullptr) << "locked";
    GlobalUnlock(block);
    EXPECT_EQ(GlobalDiscard(block), block);
    EXPECT_EQ(GlobalFlags(block), GMEM_DISCARDABLE | GMEM_DISCARDED);
    EXPECT_EQ(GlobalLock(block), nullptr);
    EXPECT_EQ(GlobalSize(block), 0u);
    EXPECT_EQ(GlobalReAlloc(block, 5, 0), block);
    EXPECT_NE(GlobalLock(block), nullptr);
    EXPECT_EQ(GlobalReAlloc(block, 0, GMEM_MODIFY), block);
    EXPECT_EQ(GlobalFlags(block), 1u) << "no longer discardable, and still locked";
    GlobalFree(block);
}

TEST(GlobalMemory, DeadHandlesAndHugeSizesAreRefused) {
    const HGLOBAL dead = GlobalAlloc(GHND, 10);
    GlobalFree(dead);
    int local = 0;
    for (const HGLOBAL wrong : {dead, static_cast<HGLOBAL>(&local), reinterpret_cast<HGLOBAL>(~UINT_PTR{0})}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GlobalLock(wrong), nullptr);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
        EXPECT_FALSE(GlobalUnlock(wrong));
        EXPECT_EQ(GlobalSize(wrong), 0u);
        EXPECT_EQ(GlobalFlags(wrong), GMEM_INVALID_HANDLE);
        EXPECT_EQ(GlobalReAlloc(wrong, 5, 0), nullptr);
        EXPECT_EQ(GlobalFree(wrong), wrong);
        EXPECT_EQ(GlobalHandle(wrong), nullptr);
    }
    EXPECT_EQ(GlobalFree(nullptr), nullptr);
    EXPECT_EQ(GlobalHandle(nullptr), nullptr);
    for (const SIZE_T size : {std::numeric_limits<SIZE_T>::max(), (SIZE_T{1} << 31) + 1}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GlobalAlloc(GHND, size), nullptr);
        EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);
    }
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 3);
    EXPECT_EQ(GlobalReAlloc(block, std::numeric_limits<SIZE_T>::max(), GMEM_MOVEABLE), nullptr);
    EXPECT_EQ(GlobalSize(block), 3u) << "it stays as it was";
    GlobalFree(block);
}

TEST(GlobalMemory, LocalCallsAreTheSame) {
    const HLOCAL block = LocalAlloc(LHND, 8);
    EXPECT_NE(LocalLock(block), nullptr);
    EXPECT_EQ(LocalFlags(block), 1u);
    EXPECT_EQ(LocalHandle(LocalLock(block)), block);
    EXPECT_TRUE(LocalUnlock(block));
    EXPECT_FALSE(LocalUnlock(block));
    EXPECT_EQ(LocalReAlloc(block, 16, LMEM_MOVEABLE), block);
    EXPECT_EQ(LocalSize(block), 16u);
    EXPECT_EQ(LocalFree(block), nullptr);
    const HGLOBAL empty = GlobalAlloc(GMEM_FIXED, 0);
    EXPECT_NE(empty, nullptr) << "no bytes, but an address of its own";
    GlobalFree(empty);
}

} // namespace
