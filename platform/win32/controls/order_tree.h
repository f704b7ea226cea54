// A sequence of items that finds the n-th item, an item's number, and the item at a distance in O(log n), also while
// items are put in and taken out anywhere. Lists and trees of 100,000 rows scroll and grow at this price.
//
//     struct Row { OrderHook<Row> hook; ... };
//     OrderTree<Row, &Row::hook> rows;
//     rows.insert(3, row);              // becomes number 3
//     rows.indexOf(row);                // 3
//     rows.next(row);                   // number 4, or null
//
// The items are the caller's and hold their links in a hook; an item is in one sequence of each hook at most. Each
// item has a weight (its height in rows, say; 1 at first): `weightBefore` and `atWeight` count in it. Beside that each
// has an extent (its width), of which the tree knows the largest.
//
// Inside it is a treap: a search tree by place, and a heap by random priority, which keeps it flat.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <vector>

namespace vndk::win32 {

template <typename T>
struct OrderHook {
    T* parent = nullptr;
    T* left = nullptr;
    T* right = nullptr;
    std::uint32_t priority = 0;
    int size = 0; // of the subtree; 0: in no sequence
    int weight = 1;
    int totalWeight = 0;
    int extent = 0;
    int maxExtent = 0;
};

/// Random numbers that are the same in each run.
inline std::uint32_t nextOrderPriority() {
    static std::uint64_t state = 0x9E3779B97F4A7C15U;
    state ^= state << 13U;
    state ^= state >> 7U;
    state ^= state << 17U;
    return static_cast<std::uint32_t>(state >> 32U);
}

template <typename T, OrderHook<T> T::*hook>
class OrderTree {
public:
    [[nodiscard]] int size() const { return sizeOf(root_); }
    [[nodiscard]] bool empty() const { return root_ == nullptr; }
    [[nodiscard]] int totalWeight() const { return weightOf(root_); }
    [[nodiscard]] int maxExtent() const { return root_ != nullptr ? (root_->*hook).maxExtent : 0; }
    [[nodiscard]] static bool contains(const T& item) { return (item.*hook).size != 0; }

    [[nodiscard]] T* first() const { return root_ != nullptr ? leftmost(root_) : nullptr; }
    [[nodiscard]] T* last() const { return root_ != nullptr ? rightmost(root_) : nullptr; }
    [[nodiscard]] static T* next(const T* item) { return neighbour<&OrderHook<T>::right, &OrderHook<T>::left>(item); }
    [[nodiscard]] static T* previous(const T* item) {
        return neighbour<&OrderHook<T>::left, &OrderHook<T>::right>(item);
    }

    /// Null when the number is out of range.
    [[nodiscard]] T* at(int index) const {
        if (index < 0 || index >= size())
            return nullptr;
        T* node = root_;
        for (;;) {
            const int before = sizeOf((node->*hook).left);
            if (index == before)
                return node;
            if (index < before) {
                node = (node->*hook).left;
            } else {
                index -= before + 1;
                node = (node->*hook).right;
            }
        }
    }

    [[nodiscard]] static int indexOf(const T* item) {
        int index = sizeOf((item->*hook).left);
        for (const T *node = item, *up = (item->*hook).parent; up != nullptr; node = up, up = (up->*hook).parent)
            if ((up->*hook).right == node)
                index += sizeOf((up->*hook).left) + 1;
        return index;
    }

    /// Weight of all items before this one.
    [[nodiscard]] static int weightBefore(const T* item) {
        int weight = weightOf((item->*hook).left);
        for (const T *node = item, *up = (item->*hook).parent; up != nullptr; node = up, up = (up->*hook).parent)
            if ((up->*hook).right == node)
                weight += weightOf((up->*hook).left) + (up->*hook).weight;
        return weight;
    }

    /// The item that covers a distance from the start; null when it is out of range.
    [[nodiscard]] T* atWeight(int distance) const {
        if (distance < 0 || distance >= totalWeight())
            return nullptr;
        T* node = root_;
        for (;;) {
            const int before = weightOf((node->*hook).left);
            if (distance < before) {
                node = (node->*hook).left;
                continue;
            }
            distance -= before;
            if (distance < (node->*hook).weight)
                return node;
            distance -= (node->*hook).weight;
            node = (node->*hook).right;
        }
    }

    /// The first item for which `isBefore(item)` is false, in a sequence that is sorted accordingly; null: none.
    template <typename IsBefore>
    [[nodiscard]] T* lowerBound(IsBefore isBefore) const {
        T* found = nullptr;
        for (T* node = root_; node != nullptr;) {
            if (isBefore(*node)) {
                node = (node->*hook).right;
            } else {
                found = node;
                node = (node->*hook).left;
            }
        }
        return found;
    }

    /// REQUIRES: 0 <= index <= size().
    void insert(int index, T* item) {
        assert(index >= 0 && index <= size() && "an item is put in between others or at an end");
        insertAfter(index == 0 ? nullptr : at(index - 1), item);
    }

    /// Null: becomes the first.
    void insertAfter(T* before, T* item) {
        assert(!contains(*item) && "an item is in one place of a sequence");
        OrderHook<T>& added = item->*hook;
        added.parent = added.left = added.right = nullptr;
        added.priority = nextOrderPriority();
        if (root_ == nullptr) {
            root_ = item;
        } else if (before == nullptr) {
            attach(leftmost(root_), &OrderHook<T>::left, item);
        } else if ((before->*hook).right == nullptr) {
            attach(before, &OrderHook<T>::right, item);
        } else {
            attach(leftmost((before->*hook).right), &OrderHook<T>::left, item);
        }
        refreshUp(item);
        while (added.parent != nullptr && (added.parent->*hook).priority < added.priority)
            rotateUp(item);
    }

    void remove(T* item) {
        assert(contains(*item) && "an item that is taken out was in");
        OrderHook<T>& links = item->*hook;
        while (links.left != nullptr && links.right != nullptr)
            rotateUp((links.left->*hook).priority > (links.right->*hook).priority ? links.left : links.right);
        T* child = links.left != nullptr ? links.left : links.right;
        T* parent = links.parent;
        if (child != nullptr)
            (child->*hook).parent = parent;
        replaceChild(parent, item, child);
        links.parent = links.left = links.right = nullptr;
        links.size = 0;
        if (parent != nullptr)
            refreshUp(parent);
    }

    void setWeight(T* item, int weight) {
        (item->*hook).weight = weight;
        if (contains(*item))
            refreshUp(item);
    }

    void setExtent(T* item, int extent) {
        if ((item->*hook).extent == extent)
            return;
        (item->*hook).extent = extent;
        if (contains(*item))
            refreshUp(item);
    }

    /// Takes all out.
    void clear() {
        T* node = root_;
        while (node != nullptr) {
            OrderHook<T>& links = node->*hook;
            T* down = links.left != nullptr ? links.left : links.right;
            if (down != nullptr) {
                (links.left != nullptr ? links.left : links.right) = nullptr;
                node = down;
                continue;
            }
            T* up = links.parent;
            links.parent = nullptr;
            links.size = 0;
            node = up;
        }
        root_ = nullptr;
    }

    [[nodiscard]] std::vector<T*> items() const {
        std::vector<T*> all;
        all.reserve(static_cast<std::size_t>(size()));
        for (T* item = first(); item != nullptr; item = next(item))
            all.push_back(item);
        return all;
    }

    /// Takes all out and puts these in, in O(n).
    void assign(const std::vector<T*>& items) {
        clear();
        std::vector<T*> spine; // the right edge of what is built so far, from the root down
        for (T* item : items) {
            OrderHook<T>& links = item->*hook;
            links.parent = links.left = links.right = nullptr;
            links.priority = nextOrderPriority();
            T* lower = nullptr;
            while (!spine.empty() && (spine.back()->*hook).priority < links.priority) {
                lower = spine.back();
                refresh(lower);
                spine.pop_back();
            }
            links.left = lower;
            if (lower != nullptr)
                (lower->*hook).parent = item;
            if (!spine.empty()) {
                (spine.back()->*hook).right = item;
                links.parent = spine.back();
            }
            spine.push_back(item);
        }
        root_ = spine.empty() ? nullptr : spine.front();
        for (auto node = spine.rbegin(); node != spine.rend(); ++node)
            refresh(*node);
    }

    /// Links, sizes and weights agree. For checks in debug builds; O(n).
    [[nodiscard]] bool verify() const {
        return root_ == nullptr || ((root_->*hook).parent == nullptr && verifyBelow(root_));
    }

private:
    using Link = T* OrderHook<T>::*;

    [[nodiscard]] static int sizeOf(const T* node) { return node != nullptr ? (node->*hook).size : 0; }
    [[nodiscard]] static int weightOf(const T* node) { return node != nullptr ? (node->*hook).totalWeight : 0; }
    [[nodiscard]] static int extentOf(const T* node) { return node != nullptr ? (node->*hook).maxExtent : 0; }
    [[nodiscard]] static T* leftmost(T* node) {
        while ((node->*hook).left != nullptr)
            node = (node->*hook).left;
        return node;
    }
    [[nodiscard]] static T* rightmost(T* node) {
        while ((node->*hook).right != nullptr)
            node = (node->*hook).right;
        return node;
    }

    template <Link toward, Link away>
    [[nodiscard]] static T* neighbour(const T* item) {
        if (T* node = (item->*hook).*toward; node != nullptr) {
            while ((node->*hook).*away != nullptr)
                node = (node->*hook).*away;
            return node;
        }
        const T* node = item;
        T* up = (item->*hook).parent;
        while (up != nullptr && (up->*hook).*toward == node) {
            node = up;
            up = (up->*hook).parent;
        }
        return up;
    }

    static void refresh(T* node) {
        OrderHook<T>& links = node->*hook;
        links.size = sizeOf(links.left) + sizeOf(links.right) + 1;
        links.totalWeight = weightOf(links.left) + weightOf(links.right) + links.weight;
        links.maxExtent = std::max({extentOf(links.left), extentOf(links.right), links.extent});
    }
    static void refreshUp(T* node) {
        for (; node != nullptr; node = (node->*hook).parent)
            refresh(node);
    }

    static void attach(T* parent, Link link, T* item) {
        (parent->*hook).*link = item;
        (item->*hook).parent = parent;
    }

    void replaceChild(T* parent, T* former, T* child) {
        if (parent == nullptr)
            root_ = child;
        else if ((parent->*hook).left == former)
            (parent->*hook).left = child;
        else
            (parent->*hook).right = child;
    }

    void rotateUp(T* node) {
        T* parent = (node->*hook).parent;
        T* grand = (parent->*hook).parent;
        const bool isLeft = (parent->*hook).left == node;
        T*& inner = isLeft ? (node->*hook).right : (node->*hook).left;
        (isLeft ? (parent->*hook).left : (parent->*hook).right) = inner;
        if (inner != nullptr)
            (inner->*hook).parent = parent;
        inner = parent;
        (parent->*hook).parent = node;
        (node->*hook).parent = grand;
        replaceChild(grand, parent, node);
        refresh(parent);
        refresh(node);
    }

    [[nodiscard]] static bool verifyBelow(const T* node) {
        const OrderHook<T>& links = node->*hook;
        for (const T* child : {links.left, links.right})
            if (child != nullptr &&
                ((child->*hook).parent != node || (child->*hook).priority > links.priority || !verifyBelow(child)))
                return false;
        return links.size == sizeOf(links.left) + sizeOf(links.right) + 1 &&
               links.totalWeight == weightOf(links.left) + weightOf(links.right) + links.weight &&
               links.maxExtent == std::max({extentOf(links.left), extentOf(links.right), links.extent});
    }

    T* root_ = nullptr;
};

} // namespace vndk::win32
