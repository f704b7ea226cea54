// Damaged objects: whatever a file says, it is read, walked and written without harm, and damage costs one object.
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "db/block_reference.h"
#include "db/opaque.h"
#include "db/polylines.h"
#include "db/text.h"
#include "drawing/dwg/round_trip.h"
#include "dwg/crc.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_writer.h"

namespace vndk::test {

namespace {

AcDbObjectId appendTo(AcDbObjectId block, AcDbEntity* entity) {
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
    EXPECT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    return id;
}

/// A small drawing with one of most kinds of objects.
std::vector<uint8_t> smallDrawing() {
    AcDbDatabase database;
    AcDbObjectId block;
    {
        const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
        auto* const record = new AcDbBlockTableRecord;
        record->setName("B");
        table->add(block, record);
        record->close();
    }
    appendTo(block, new AcDbAttributeDefinition({1, 1, 0}, "text", "TAG", "prompt"));
    const AcDbObjectId insert = appendTo(database.modelSpaceId(), new AcDbBlockReference({1, 2, 3}, block));
    {
        const AcDbObjectPointer<AcDbBlockReference> open(insert, AcDb::kForWrite);
        for (const char* const tag : {"A", "B", "C"}) {
            auto* const attribute = new AcDbAttribute({1, 2, 0}, "value", tag);
            open->appendAttribute(attribute);
            attribute->close();
        }
    }
    auto* const polyline = new AcDbPolyline;
    for (unsigned i = 0; i < 5; ++i)
        polyline->addVertexAt(i, {i * 1.5, i * 0.25}, 0.5, i, 2);
    appendTo(database.modelSpaceId(), polyline);
    appendTo(database.modelSpaceId(), new AcDbText({0, 0, 1}, "a text"));
    auto* const spline = new AcDbSpline;
    AcDbSpline::Data curve;
    curve.scenario = 2;
    curve.fitPoints = {{0, 0, 0}, {1, 2, 3}, {4, 5, 6}};
    spline->setFileData(curve);
    appendTo(database.modelSpaceId(), spline);
    auto bytes = dwg::writeDrawing(database);
    EXPECT_TRUE(bytes);
    return *bytes;
}

/// Opens everything that a program would, and saves.
void useDrawing(AcDbDatabase& database) {
    for (AcDbStub& stub : database.stubs()) {
        AcDbObject* const object = database.objectOf(stub);
        ASSERT_NE(object, nullptr);
        AcDbExtents box;
        if (const auto* const entity = AcDbEntity::cast(object))
            entity->getGeomExtents(box);
        if (const auto* const record = AcDbBlockTableRecord::cast(object))
            record->entities();
        stub.set(kStubModified); // so that all is encoded
    }
    const auto bytes = dwg::writeDrawing(database);
    if (!bytes)
        EXPECT_FALSE(bytes.error().message.empty());
}

TEST(ObjectDamage, FlippedBytesNeverHarm) {
    const std::vector<uint8_t> whole = smallDrawing();
    AcDbDatabase good(false);
    ASSERT_TRUE(dwg::readDrawing(good, whole, "whole"));
    const size_t first = static_cast<size_t>(good.stubs().front().bytes - dwg::sourceOf(good).image()->bytes().data());
    std::mt19937 random(20020503);
    constexpr int kRounds = 400;
    int readable = 0;
    for (int round = 0; round < kRounds; ++round) {
        std::vector<uint8_t> bytes = whole;
        for (unsigned flips = 1 + random() % 4; flips > 0; --flips)
            bytes[first + random() % (bytes.size() - first)] ^= static_cast<uint8_t>(1u << random() % 8);
        AcDbDatabase database(false);
        const auto read = dwg::readDrawing(database, std::move(bytes), "mutated");
        readable += static_cast<bool>(read);
        if (read)
            useDrawing(database);
        else
            EXPECT_FALSE(read.error().message.empty());
    }
    EXPECT_GT(readable, kRounds / 4) << "the damage has to reach the objects";
}

/// Replaces the bytes of one object, so that its neighbours in the file stay.
std::vector<uint8_t> withObject(const std::vector<uint8_t>& file, uint64_t handle,
                                const std::function<void(std::span<uint8_t>)>& damage) {
    AcDbDatabase database(false);
    EXPECT_TRUE(dwg::readDrawing(database, file, "whole"));
    const AcDbStub& stub = *database.findStub(AcDbHandle(handle));
    const size_t offset = static_cast<size_t>(stub.bytes - dwg::sourceOf(database).image()->bytes().data());
    std::vector<uint8_t> bytes = file;
    const std::span<uint8_t> record = std::span(bytes).subspan(offset, stub.byteCount);
    damage(record);
    const uint16_t crc = dwg::crc16(dwg::kCrcSeed, record.data(), record.size() - 2);
    record[record.size() - 2] = static_cast<uint8_t>(crc);
    record[record.size() - 1] = static_cast<uint8_t>(crc >> 8);
    return bytes;
}

TEST(ObjectDamage, AnObjectWithABitTooManyIsKeptOpaqueAndWrittenAsItIs) {
    AcDbDatabase fresh;
    const AcDbObjectId line = appendTo(fresh.modelSpaceId(), new AcDbLine({1, 2, 3}, {4, 5, 6}));
    auto file = dwg::writeDrawing(fresh);
    ASSERT_TRUE(file);
    const uint64_t handle = line.handle().value();
    // The bit size stands behind the two bits and eight of the type, low byte first: one bit less is needed.
    const auto bytes = withObject(*file, handle, [](std::span<uint8_t> record) { record[3] ^= 0x40; });
    AcDbDatabase database(false), again(false);
    ASSERT_TRUE(dwg::readDrawing(database, bytes, "damaged"));
    AcDbStub& stub = *database.findStub(AcDbHandle(handle));
    EXPECT_NE(AcDbOpaqueEntity::cast(database.objectOf(stub)), nullptr);
    EXPECT_TRUE(stub.has(kStubDecodeFailed));
    ASSERT_FALSE(database.warnings().empty());
    EXPECT_NE(database.warnings().front().find("kept as it is"), std::string::npos);
    auto saved = dwg::writeDrawing(database);
    ASSERT_TRUE(saved);
    ASSERT_TRUE(dwg::readDrawing(again, *saved, "saved"));
    const AcDbStub& kept = *again.findStub(AcDbHandle(handle));
    EXPECT_TRUE(std::equal(stub.bytes, stub.bytes + stub.byteCount, kept.bytes, kept.bytes + kept.byteCount));
}

TEST(ObjectDamage, ADrawingWithoutItsTablesTellsWhatIsMissing) {
    const std::vector<uint8_t> whole = smallDrawing();
    AcDbDatabase good(false);
    ASSERT_TRUE(dwg::readDrawing(good, whole, "whole"));
    const uint64_t handle = good.layerTableId().handle().value();
    const auto bytes = withObject(whole, handle, [](std::span<uint8_t> record) { record[2] ^= 0x3F; });
    AcDbDatabase database(false);
    const auto read = dwg::readDrawing(database, bytes, "plan.dwg");
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().kind, dwg::ErrorKind::Damaged);
    EXPECT_NE(read.error().message.find("plan.dwg"), std::string::npos);
    EXPECT_NE(read.error().message.find("layers"), std::string::npos);
}

} // namespace

} // namespace vndk::test
