// The store behind a list box against a plain vector.
#include "controls/list_box_store.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

using namespace vndk::win32;

namespace {

std::string textOf(unsigned number) { return std::to_string(number % 1000); }

void compare(const ListBoxStore& store, const std::vector<ListBoxItem>& plain) {
    ASSERT_EQ(store.count(), static_cast<int>(plain.size()));
    std::int64_t height = 0;
    int selected = 0;
    int next = store.nextSelected(0);
    for (int i = 0; i < store.count(); ++i) {
        const ListBoxItem& expected = plain[static_cast<std::size_t>(i)];
        ASSERT_EQ(store[i].text, expected.text) << i;
        ASSERT_EQ(store[i].data, expected.data) << i;
        ASSERT_EQ(store[i].selected, expected.selected) << i;
        if (i % 97 == 0)
            ASSERT_EQ(store.heightBefore(i), height) << i;
        height += expected.height;
        if (expected.selected) {
            ++selected;
            ASSERT_EQ(next, i);
            next = store.nextSelected(i + 1);
        }
    }
    EXPECT_EQ(next, -1);
    EXPECT_EQ(store.heightBefore(store.count()), height);
    EXPECT_EQ(store.selectedCount(), selected);
}

TEST(ListBoxStoreTest, doesWhatAVectorDoes) {
    std::mt19937 random(7);
    ListBoxStore store;
    std::vector<ListBoxItem> plain;
    for (int step = 0; step < 20'000; ++step) {
        const auto size = static_cast<unsigned>(plain.size());
        const unsigned place = size == 0 ? 0 : random() % size;
        const unsigned action = step < 5000 ? random() % 5 : random() % 9;
        if (size == 0 || action < 4) {
            const ListBoxItem item{textOf(random()), random(), static_cast<int>(random() % 200), false};
            store.insert(static_cast<int>(place), item);
            plain.insert(plain.begin() + place, item);
        } else if (action < 6) {
            const bool on = action == 4;
            EXPECT_EQ(store.select(static_cast<int>(place), on), plain[place].selected != on);
            plain[place].selected = on;
        } else if (action == 6) {
            store.setHeight(static_cast<int>(place), 33);
            plain[place].height = 33;
        } else {
            store.erase(static_cast<int>(place));
            plain.erase(plain.begin() + place);
        }
    }
    compare(store, plain);
    while (!plain.empty()) {
        store.erase(static_cast<int>(plain.size()) - 1);
        plain.pop_back();
    }
    compare(store, plain);
}

TEST(ListBoxStoreTest, findsPlacesBehindEqualTexts) {
    ListBoxStore store;
    for (unsigned i = 0; i < 3000; ++i) {
        const std::string text = textOf(i * 7919);
        const int place = store.placeOf(text);
        store.insert(place, {text, i, 1, false});
    }
    for (int i = 1; i < store.count(); ++i) {
        const int order = compareListTexts(store[i - 1].text, store[i].text);
        ASSERT_LE(order, 0) << i;
        if (order == 0)
            ASSERT_LT(store[i - 1].data, store[i].data) << "later ones go behind";
    }
}

} // namespace
