#pragma once
/// A drawing after an insertion beside the file that it is saved to.

#include <gtest/gtest.h>

#include "drawing/dwg/file_audit.h"
#include "dwg/drawing_writer.h"
#include "support/drawing_digest.h"

namespace vndk::test {

/// Saves, looks at the bytes and reads them again: the same drawing. `audited` came from the file that was inserted
/// into, whose own oddities stay.
inline void expectSavesWhole(AcDbDatabase& database, AcDbDatabase* original = nullptr) {
    const auto bytes = dwg::writeDrawing(database);
    ASSERT_TRUE(bytes) << bytes.error().message;
    const auto image = dwg::FileImage::parse(*bytes, "saved");
    ASSERT_TRUE(image) << image.error().message;
    const auto odd = original ? danglingReferences(*dwg::sourceOf(*original).image()) : std::set<std::string>();
    for (const std::string& reference : danglingReferences(**image))
        EXPECT_TRUE(odd.count(reference)) << reference;
    AcDbDatabase again(false);
    ASSERT_TRUE(dwg::readDrawing(again, *bytes, "saved"));
    EXPECT_EQ(digestDifference(digestOf(database), digestOf(again)), "");
    const std::vector<std::string> former = original ? disagreements(*original) : std::vector<std::string>();
    const std::vector<std::string> now = disagreements(again);
    EXPECT_LE(now.size(), former.size()) << now.front();
}

} // namespace vndk::test
