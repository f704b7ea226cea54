// The rows of a dialog-init resource (type 240): strings for the list and combo boxes of the dialog of the same number.
//
//     forEachInitRow(bytes, [&](const DialogInitRow& row) { ...; return true; });
//
// A row is the control's id (16 bits), a message (16), the length (32) and that many bytes; id 0 ends the list. All are
// little endian and follow each other without padding.
#pragma once

#include "win32/types.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace vndk::win32 {

constexpr WORD RT_DLGINIT_NUMBER = 240;

// The messages that rows hold: numbers of their own, not those of the controls.
constexpr WORD DIALOG_INIT_LB_ADDSTRING = 0x0401;
constexpr WORD DIALOG_INIT_CB_ADDSTRING = 0x0403;

struct DialogInitRow {
    WORD control = 0;
    WORD message = 0;
    std::span<const std::uint8_t> data; // lies in the bytes that are read
    std::string text;                   // the data up to its first NUL
};

/// Calls `visit` for each row in order until it answers false. False when the bytes end within a row or without the
/// closing 0; rows before that have been visited. Empty bytes are an empty list.
bool forEachInitRow(std::span<const std::uint8_t> bytes, const std::function<bool(const DialogInitRow&)>& visit);

} // namespace vndk::win32
