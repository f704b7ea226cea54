#include "ed/fiber.h"

#include <sys/mman.h>

#include <cassert>
#include <cstdint>
#include <new>
#include <utility>

#if defined(__SANITIZE_ADDRESS__)
#define VNDK_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VNDK_ADDRESS_SANITIZER 1
#endif
#endif
#ifdef VNDK_ADDRESS_SANITIZER
#include <sanitizer/common_interface_defs.h>
#endif

namespace vndk::host {

namespace {

void startSwitch([[maybe_unused]] void** fake, [[maybe_unused]] const void* bottom, [[maybe_unused]] size_t size) {
#ifdef VNDK_ADDRESS_SANITIZER
    __sanitizer_start_switch_fiber(fake, bottom, size);
#endif
}

void finishSwitch([[maybe_unused]] void* fake, [[maybe_unused]] const void** bottom, [[maybe_unused]] size_t* size) {
#ifdef VNDK_ADDRESS_SANITIZER
    __sanitizer_finish_switch_fiber(fake, bottom, size);
#endif
}

} // namespace

Fiber::Fiber(std::function<void()> body) : body_(std::move(body)) {
    stack_ = mmap(nullptr, kStackBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (stack_ == MAP_FAILED)
        throw std::bad_alloc();
    mprotect(stack_, 4096, PROT_NONE); // running over the end stops the program instead of damaging it
    getcontext(&own_);
    own_.uc_stack.ss_sp = stack_;
    own_.uc_stack.ss_size = kStackBytes;
    own_.uc_link = nullptr;
    // makecontext hands on ints only.
    const auto address = reinterpret_cast<uintptr_t>(this);
    makecontext(&own_, reinterpret_cast<void (*)()>(enter), 2, static_cast<unsigned>(address >> 32),
                static_cast<unsigned>(address));
}

Fiber::~Fiber() {
    assert((finished_ || !begun_) && "a fiber ends before it is deleted");
    munmap(stack_, kStackBytes);
}

void Fiber::enter(unsigned high, unsigned low) {
    const uintptr_t address = (static_cast<uintptr_t>(high) << 32) | low;
    reinterpret_cast<Fiber*>(address)->run();
}

void Fiber::run() {
    finishSwitch(nullptr, &outerBottom_, &outerSize_);
    body_();
    finished_ = true;
    inside_ = false;
    startSwitch(nullptr, outerBottom_, outerSize_); // null: this stack isn't used again
    setcontext(&outer_);
}

void Fiber::resume() {
    assert(!finished_ && !inside_ && "only a waiting fiber is resumed, from outside");
    begun_ = true;
    inside_ = true;
    startSwitch(&outerFake_, stack_, kStackBytes);
    swapcontext(&outer_, &own_);
    finishSwitch(outerFake_, nullptr, nullptr);
}

void Fiber::yield() {
    assert(inside_ && "a fiber yields from within");
    inside_ = false;
    startSwitch(&ownFake_, outerBottom_, outerSize_);
    swapcontext(&own_, &outer_);
    finishSwitch(ownFake_, &outerBottom_, &outerSize_);
}

} // namespace vndk::host
