// A member that belongs to an object's identity and not to its data: copies of the object begin with a fresh
// value, and taking over another object's data leaves it alone.
#pragma once

template <class T>
struct NotCopied : T {
    NotCopied() = default;
    NotCopied(const NotCopied&) : T() {}
    NotCopied& operator=(const NotCopied&) { return *this; }
};
