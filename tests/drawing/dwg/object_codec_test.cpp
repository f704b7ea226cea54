// Every object of the real drawings, decoded and encoded again.
#include <gtest/gtest.h>

#include <map>

#include "db/opaque.h"
#include "drawing/dwg/round_trip.h"
#include "dwg/drawing_reader.h"
#include "support/drawings.h"

namespace vndk::test {

namespace {

struct Tally {
    int equal = 0;
    int all = 0;
    std::string firstDifference;
};

std::string hex(AcDbHandle handle) {
    char text[17];
    handle.getIntoAsciiBuffer(text);
    return text;
}

void tallyDrawing(const std::string& path, std::map<std::string, Tally>& tallies) {
    AcDbDatabase database(false);
    const auto read = dwg::readDrawing(database, path);
    ASSERT_TRUE(read) << read.error().message;
    for (AcDbStub& stub : database.stubs()) {
        const AcDbObject* const object = database.objectOf(stub);
        const std::string difference = roundTripDifference(database, stub);
        const std::string cls = object->isA()->name();
        Tally& tally = tallies[cls.starts_with("AcDbOpaque") ? cls : std::string(object->dxfName()) + " " + cls];
        ++tally.all;
        tally.equal += difference.empty();
        if (!difference.empty() && tally.firstDifference.empty())
            tally.firstDifference = path + " " + hex(stub.handle) + ": " + difference;
        EXPECT_FALSE(stub.has(kStubDecodeFailed)) << path << " " << hex(stub.handle) << " " << object->dxfName();
    }
}

TEST(ObjectCodec, GivesTheSameBitsForEveryObjectOfRealDrawings) {
    SKIP_WITHOUT_DRAWINGS();
    std::map<std::string, Tally> tallies;
    for (const std::string& path : realDrawings("r2000"))
        tallyDrawing(path, tallies);
    ASSERT_FALSE(tallies.empty());
    for (const auto& [type, tally] : tallies) {
        std::cout << type << ": " << tally.equal << " of " << tally.all << "\n";
        EXPECT_EQ(tally.equal, tally.all) << type << " " << tally.firstDifference;
    }
}

} // namespace

} // namespace vndk::test
