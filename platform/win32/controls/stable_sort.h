// A merge sort that stays within its bounds whatever the comparison answers. Comparisons by module code may contradict
// themselves, which std::sort takes as leave to run past the ends.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace vndk::win32 {

/// `compare(a, b)` is below, at or above zero as `strcmp`; equal elements keep their order.
template <typename T, typename Compare>
void stableSort(std::vector<T>& elements, Compare compare) {
    const std::size_t count = elements.size();
    std::vector<T> merged(count);
    for (std::size_t run = 1; run < count; run *= 2) {
        for (std::size_t begin = 0; begin < count; begin += 2 * run) {
            const std::size_t middle = begin + run < count ? begin + run : count;
            const std::size_t end = middle + run < count ? middle + run : count;
            std::size_t left = begin;
            std::size_t right = middle;
            for (std::size_t place = begin; place < end; ++place) {
                const bool takeLeft = left < middle && (right == end || compare(elements[left], elements[right]) <= 0);
                merged[place] = elements[takeLeft ? left++ : right++];
            }
        }
        std::swap(elements, merged);
    }
}

} // namespace vndk::win32
