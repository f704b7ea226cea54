#include "heap.h"

#include <cstring>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define VNDK_LISP_POOLED 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VNDK_LISP_POOLED 0
#endif
#endif
#ifndef VNDK_LISP_POOLED
#define VNDK_LISP_POOLED 1
#endif

namespace vndk::lisp {

namespace {

// A pool would hide a use after free from the address checker, so checked builds allocate each pair by itself.
constexpr bool pooled = VNDK_LISP_POOLED != 0;
constexpr std::size_t pairsPerChunk = 4096;

} // namespace

Heap& Heap::instance() {
    // Never destroyed: values with static storage may be freed after any static of ours.
    static Heap* const heap = new Heap;
    return *heap;
}

void Heap::addChunk() {
    chunks_.push_back(std::make_unique<std::byte[]>(pairsPerChunk * sizeof(ConsCell)));
    auto* cells = reinterpret_cast<ConsCell*>(chunks_.back().get());
    for (std::size_t i = pairsPerChunk; i-- > 0;) {
        cells[i].next = free_;
        free_ = &cells[i];
    }
}

ConsCell* Heap::makePair(Value&& car, Value&& cdr) {
    if (pairs_ >= maxPairs)
        throw std::bad_alloc();
    void* place = nullptr;
    if constexpr (pooled) {
        if (!free_)
            addChunk();
        place = free_;
        free_ = static_cast<ConsCell*>(free_->next);
    } else {
        place = ::operator new(sizeof(ConsCell));
    }
    ++pairs_;
    return new (place) ConsCell{{{1}}, std::move(car), std::move(cdr)};
}

void Heap::freePair(ConsCell* pair) noexcept {
    --pairs_;
    if constexpr (pooled) {
        pair->next = free_;
        free_ = pair;
    } else {
        ::operator delete(pair);
    }
}

Value Heap::adopt(Type type, Cell* cell) noexcept {
    Value value;
    value.type_ = type;
    value.payload_.cell = cell;
    return value;
}

Value Heap::makeString(Type type, std::string_view text) {
    if (text.size() > maxStringBytes - stringBytes_)
        throw std::bad_alloc();
    void* place = ::operator new(sizeof(StringCell) + text.size());
    auto* cell = new (place) StringCell{{{1}}, text.size()};
    if (!text.empty())
        std::memcpy(cell + 1, text.data(), text.size());
    stringBytes_ += text.size();
    return adopt(type, cell);
}

void Heap::freeString(StringCell* string) noexcept {
    stringBytes_ -= string->length;
    ::operator delete(string);
}

Value Heap::makeLambda(std::unique_ptr<LambdaCell> lambda) {
    lambda->references = 1;
    return adopt(Type::Lambda, lambda.release());
}

Value Heap::makeExternal(std::unique_ptr<ExternalCell> external) {
    external->references = 1;
    return adopt(Type::External, external.release());
}

/// Gives up one reference; a pair that nobody holds any more joins `pending` instead of being freed by recursion.
void Heap::drop(Value&& value, ConsCell*& pending) noexcept {
    Value current = std::move(value);
    while (current.counted()) {
        Cell* cell = current.payload_.cell;
        const Type type = current.type_;
        current.type_ = Type::Nil;
        if (--cell->references != 0)
            return;
        switch (type) {
        case Type::Cons:
            cell->next = pending;
            pending = static_cast<ConsCell*>(cell);
            return;
        case Type::Lambda: {
            auto* lambda = static_cast<LambdaCell*>(cell);
            current = std::move(lambda->body);
            delete lambda;
            break;
        }
        case Type::External:
            delete static_cast<ExternalCell*>(cell);
            return;
        default:
            freeString(static_cast<StringCell*>(cell));
            return;
        }
    }
}

void Heap::release(Type type, Cell* cell) noexcept {
    cell->references = 1;
    ConsCell* pending = nullptr;
    drop(adopt(type, cell), pending);
    while (pending) {
        ConsCell* pair = pending;
        pending = static_cast<ConsCell*>(pair->next);
        drop(std::move(pair->car), pending);
        drop(std::move(pair->cdr), pending);
        freePair(pair);
    }
}

void releaseCell(Type type, Cell* cell) noexcept { Heap::instance().release(type, cell); }

} // namespace vndk::lisp
