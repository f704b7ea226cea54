// What a call of this layer's own interface (namespace vndk::win32) answers when it can fail: a code of win32/error.h
// and a sentence for the user that names the thing and says what to do.
#pragma once

#include "win32/error.h"

#include <string>
#include <utility>

namespace vndk::win32 {

class [[nodiscard]] Status {
public:
    Status() = default;
    Status(DWORD code, std::string message) : code_(code), message_(std::move(message)) {}

    [[nodiscard]] bool ok() const { return code_ == ERROR_SUCCESS; }
    [[nodiscard]] DWORD code() const { return code_; }
    [[nodiscard]] const std::string& message() const { return message_; }

private:
    DWORD code_ = ERROR_SUCCESS;
    std::string message_;
};

} // namespace vndk::win32
