#include "ed/fiber.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using vndk::host::Fiber;

TEST(Fiber, runsInTurnsWithItsResumer) {
    std::string order;
    Fiber* self = nullptr;
    Fiber fiber([&] {
        for (char c = 'a'; c < 'd'; ++c) {
            order += c;
            self->yield();
        }
    });
    self = &fiber;
    while (!fiber.finished()) {
        fiber.resume();
        order += '.';
    }
    EXPECT_EQ(order, "a.b.c..");
}

TEST(Fiber, keepsItsStackWhileOthersRun) {
    std::vector<std::unique_ptr<Fiber>> fibers;
    std::vector<int> sums(5);
    for (size_t i = 0; i < sums.size(); ++i)
        fibers.push_back(std::make_unique<Fiber>([&, i] {
            std::vector<int> local(1000, static_cast<int>(i));
            for (const int number : local) {
                sums[i] += number;
                fibers[i]->yield();
            }
        }));
    while (!fibers.back()->finished())
        for (auto& fiber : fibers)
            fiber->resume();
    EXPECT_EQ(sums, (std::vector<int>{0, 1000, 2000, 3000, 4000}));
}

TEST(Fiber, thatNeverBeganCanBeDropped) {
    bool ran = false;
    {
        Fiber fiber([&] { ran = true; });
    }
    EXPECT_FALSE(ran);
}
