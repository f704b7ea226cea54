// Reads rich text (RTF) into a document, and writes it.
#pragma once

#include "controls/rich_document.h"

#include <string>
#include <string_view>

namespace vndk::win32 {

/// Appends what the bytes hold to `document`, which should be empty; one paragraph end that closes the text is left
/// out. Never fails on damaged groups or words: what is understood is kept. False, and nothing appended, when the bytes
/// don't begin as rich text.
bool readRtf(std::string_view bytes, RichDocument& document);

/// The part from `begin` to `end` as rich text.
[[nodiscard]] std::string writeRtf(const RichDocument& document, int begin, int end);

} // namespace vndk::win32
