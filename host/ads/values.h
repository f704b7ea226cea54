// Between LISP values and result buffers.
#pragma once

#include "db/resbuf.h"
#include "lisp/value.h"

#include <optional>
#include <span>

namespace vndk::host {

/// The values as a list, owned by the caller. Null when there are none or one of them has no form as a buffer.
resbuf* toResbufs(std::span<const lisp::Value> values);

/// A list of buffers as a LISP list; RTLB ... RTLE nest. Nothing when the nesting is wrong.
std::optional<lisp::Value> toList(const resbuf* list);

/// One buffer that is no bracket; nil for a type without a value.
lisp::Value toValue(const resbuf& buffer);

/// Entity data: a list of (code . value) pairs, points as (code x y z).
lisp::Value toAssociations(const resbuf* list);

/// Sets the buffer's type and value from a LISP value; false for a list that is no point, and for a function.
bool setResbuf(resbuf& buffer, const lisp::Value& value);

} // namespace vndk::host
