// A function that can stop in its middle and go on later, on a stack of its own. All on one thread.
#pragma once

#include <ucontext.h>

#include <cstddef>
#include <functional>

namespace vndk::host {

class Fiber {
public:
    explicit Fiber(std::function<void()> body);
    /// REQUIRES: the body has ended, or was never begun.
    ~Fiber();
    Fiber(const Fiber&) = delete;
    Fiber& operator=(const Fiber&) = delete;

    /// Runs the body until it yields or ends. REQUIRES: called from outside, and the body hasn't ended.
    void resume();
    /// Goes back to who resumed. REQUIRES: called from within the body.
    void yield();
    bool finished() const { return finished_; }
    bool inside() const { return inside_; }

private:
    static void enter(unsigned high, unsigned low);
    void run();

    static constexpr size_t kStackBytes = 8u << 20; // reserved, not used, until it is touched
    std::function<void()> body_;
    void* stack_ = nullptr;
    ucontext_t own_{};
    ucontext_t outer_{};
    // What the address sanitizer has to know of the stacks.
    void* ownFake_ = nullptr;
    void* outerFake_ = nullptr;
    const void* outerBottom_ = nullptr;
    size_t outerSize_ = 0;
    bool begun_ = false;
    bool finished_ = false;
    bool inside_ = false;
};

} // namespace vndk::host
