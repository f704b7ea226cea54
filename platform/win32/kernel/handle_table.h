// Handles that outlive their objects safely: a handle is a kind, a generation and an index, never an address, so that a
// dead or a made-up one is recognised and answers null.
//
//     HandleTable<Menu, HMENU> menus{HandleKind::menu};
//     HMENU handle = menus.add(std::make_unique<Menu>());
//     Menu* menu = menus.find(handle);       // null once it has been removed
#pragma once

#include "win32/types.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace vndk::win32 {

/// The upper four bits of a handle's 32: a handle of one kind is never taken for one of another.
enum class HandleKind : std::uint32_t {
    window = 1,
    dc,
    gdiObject,
    icon,
    menu,
    imageList,
    accelerators,
    positions,
    treeItem
};

template <typename T, typename Handle>
class HandleTable {
public:
    explicit HandleTable(HandleKind kind) : kind_(kind) {}

    Handle add(std::unique_ptr<T> object) {
        std::size_t index = slots_.size();
        if (!free_.empty()) {
            index = free_.back();
            free_.pop_back();
        } else {
            slots_.emplace_back();
        }
        slots_[index].object = std::move(object);
        return handleOf(index);
    }

    /// Null for a handle that is dead, foreign or null.
    [[nodiscard]] T* find(Handle handle) const {
        const auto value = reinterpret_cast<std::uintptr_t>(handle);
        const std::size_t index = value & indexMask;
        if (index >= slots_.size() || slots_[index].object == nullptr || handleOf(index) != handle)
            return nullptr;
        return slots_[index].object.get();
    }

    /// Takes the object out; the handle is dead from now on.
    std::unique_ptr<T> remove(Handle handle) {
        if (find(handle) == nullptr)
            return nullptr;
        const std::size_t index = reinterpret_cast<std::uintptr_t>(handle) & indexMask;
        slots_[index].generation = (slots_[index].generation + 1) & generationMask;
        free_.push_back(index);
        return std::move(slots_[index].object);
    }

    [[nodiscard]] std::size_t size() const { return slots_.size() - free_.size(); }

    /// Calls `visit(handle, object)` for all that live; `visit` must not add or remove.
    template <typename Visit>
    void forEach(Visit visit) const {
        for (std::size_t index = 0; index < slots_.size(); ++index)
            if (slots_[index].object != nullptr)
                visit(handleOf(index), *slots_[index].object);
    }

private:
    // 31 bits in all: a handle kept in 32 bits by module code and widened again stays the same.
    static constexpr std::uintptr_t indexMask = 0xFFFFF;  // 20 bits
    static constexpr std::uint32_t generationMask = 0x7F; // 7 bits
    static constexpr unsigned generationShift = 20;
    static constexpr unsigned kindShift = 27;

    struct Slot {
        std::unique_ptr<T> object;
        std::uint32_t generation = 1;
    };

    [[nodiscard]] Handle handleOf(std::size_t index) const {
        const std::uintptr_t value = index | (std::uintptr_t{slots_[index].generation} << generationShift) |
                                     (static_cast<std::uintptr_t>(kind_) << kindShift);
        return reinterpret_cast<Handle>(value);
    }

    HandleKind kind_;
    std::vector<Slot> slots_;
    std::vector<std::size_t> free_;
};

} // namespace vndk::win32
