// The text form of solids: records that name each other by number.
//
//     400 27 1 0
//     16 Autodesk ... 1 9.99e-07 1e-10
//     body $-1 $1 $-1 $2 #
//     lump $-1 $-1 $3 $0 #
//
// Views into the text stay valid as long as the text that was parsed.
#pragma once

#include "ge/matrix3d.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::acis {

struct SatRecord {
    std::string_view name;
    std::vector<std::string_view> tokens; // behind the name

    /// The record number of a pointer token; nothing for a null pointer and for a token that is none.
    std::optional<size_t> pointer(size_t token) const;
    /// A number that can be computed with; nothing for others.
    std::optional<double> number(size_t token) const;
    bool isPointer(size_t token) const { return token < tokens.size() && tokens[token].starts_with('$'); }
};

struct SatText {
    int version = 0;
    std::string_view countToken; // of the header: how many records there are; 0 if it isn't said
    std::vector<SatRecord> records;

    /// Nothing for what isn't such a text.
    static std::optional<SatText> parse(std::string_view text);
    /// Where a record's own data begin, behind what all records have.
    size_t firstToken() const;
    const SatRecord* at(std::optional<size_t> number) const {
        return number && *number < records.size() ? &records[*number] : nullptr;
    }
    /// The first record of that name behind the record's first token that it names; null if there is none. A name that
    /// begins with a hyphen is the end of a name.
    const SatRecord* find(const SatRecord& from, std::string_view name) const;
    /// The transform of a body; the identity if it has none or it can't be read.
    AcGeMatrix3d transformOf(const SatRecord& body) const;
};

/// The text with `matrix` behind the transforms of all bodies. Nothing if it isn't understood. REQUIRES: the matrix
/// scales uniformly.
std::optional<std::string> transformed(std::string_view text, const AcGeMatrix3d& matrix);

/// Between the stored bytes, which nobody should read by chance, and the text: the same both ways.
std::string scrambled(std::string_view text);

} // namespace vndk::acis
