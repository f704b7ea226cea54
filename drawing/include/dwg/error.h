#pragma once
/// Trouble with a drawing file, told by return value.
///
///     Result<std::shared_ptr<FileImage>> image = FileImage::read(path);
///     if (!image)
///         return report(image.error().message);
///     use(*image);
///
/// A message names the file, the version or the place in the file, and what to do about it.

#include <cassert>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace vndk::dwg {

enum class ErrorKind {
    CannotOpen,         ///< The file is missing or not readable.
    NotADrawing,        ///< The file doesn't begin like a drawing.
    UnsupportedVersion, ///< A drawing of another release.
    Damaged,            ///< Contents contradict each other; `offset` says where.
    Truncated,          ///< The file ends before something that it promises; `offset` says where that is.
    CannotWrite,        ///< The disk is full, the folder is read-only, and the like. The old file is whole.
    Locked,             ///< Another program is working on the drawing.
};

struct Error {
    ErrorKind kind = ErrorKind::Damaged;
    std::string message;
    uint64_t offset = 0; ///< Byte offset in the file; 0 when no place is meant.
};

/// Either a value or an Error.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : state_(std::move(value)) {}
    Result(Error error) : state_(std::move(error)) {}

    explicit operator bool() const { return std::holds_alternative<T>(state_); }
    /// REQUIRES: the result holds a value.
    T& operator*() { return *get(); }
    const T& operator*() const { return *const_cast<Result*>(this)->get(); }
    T* operator->() { return get(); }
    /// REQUIRES: the result holds an error.
    const Error& error() const {
        const Error* found = std::get_if<Error>(&state_);
        assert(found && "error() was asked of a result that holds a value");
        return *found;
    }

private:
    T* get() {
        T* found = std::get_if<T>(&state_);
        assert(found && "the value was asked of a result that holds an error");
        return found;
    }
    std::variant<T, Error> state_;
};

template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : error_(std::move(error)) {}

    explicit operator bool() const { return !error_; }
    /// REQUIRES: the result holds an error.
    const Error& error() const {
        assert(error_ && "error() was asked of a result without an error");
        return *error_;
    }

private:
    std::optional<Error> error_;
};

} // namespace vndk::dwg
