// The pictures that entities of unknown classes bring along.
#include "db/opaque.h"
#include "drawing/gi/recorder.h"
#include "gi/entity_drawing.h"

#include <gtest/gtest.h>

#include <bit>
#include <initializer_list>

namespace vndk::test {

namespace {

/// Makes a picture, record by record.
class Picture {
public:
    template <class... Values>
    Picture& add(uint32_t kind, const Values&... values) {
        std::string data;
        (put(data, values), ...);
        put(records_, static_cast<uint32_t>(data.size() + 8));
        put(records_, kind);
        records_ += data;
        ++count_;
        return *this;
    }
    std::string bytes() const {
        std::string all;
        put(all, static_cast<uint32_t>(records_.size() + 8));
        put(all, count_);
        return all + records_;
    }

private:
    static void put(std::string& to, uint32_t value) {
        for (unsigned shift = 0; shift < 32; shift += 8)
            to += static_cast<char>(value >> shift);
    }
    static void put(std::string& to, double value) {
        const auto raw = std::bit_cast<uint64_t>(value);
        put(to, static_cast<uint32_t>(raw));
        put(to, static_cast<uint32_t>(raw >> 32));
    }
    static void put(std::string& to, const AcGePoint3d& p) {
        for (const double value : {p.x, p.y, p.z})
            put(to, value);
    }
    static void put(std::string& to, const std::string& text) {
        to += text;
        to.append(4 - text.size() % 4, '\0');
    }

    std::string records_;
    uint32_t count_ = 0;
};

Recorder drawn(const std::string& bytes) {
    AcDbOpaqueEntity entity;
    entity.setProxyGraphics(bytes);
    Recorder recorder;
    EXPECT_TRUE(acgiDrawEntity(entity, recorder));
    return recorder;
}

const AcGePoint3d kX(1, 0, 0), kZ(0, 0, 1);

Picture richPicture() {
    Picture picture;
    picture.add(14, 3U)
        .add(6, 2U, AcGePoint3d(0, 0, 0), AcGePoint3d(5, 0, 0))
        .add(77, 1.5, 2.5) // of an unknown kind
        .add(20, 1U)
        .add(7, 3U, AcGePoint3d(0, 0, 0), AcGePoint3d(4, 0, 0), AcGePoint3d(0, 4, 0))
        .add(20, 2U)
        .add(9, 4U, AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), AcGePoint3d(1, 1, 0), AcGePoint3d(0, 1, 0), 5U, 4U, 0U,
             1U, 2U, 3U)
        .add(29, 2.0, 0.0, 0.0, 10.0, 0.0, 2.0, 0.0, 0.0, 0.0, 0.0, 2.0, 0.0, 0.0, 0.0, 0.0, 1.0)
        .add(4, AcGePoint3d(0, 0, 0), 3.0, kZ, kX, 1.5, 0U)
        .add(11, AcGePoint3d(1, 2, 0), kZ, kX, std::string("word"), 4U, 0U, 2.5, 0.8, 0.0, 1.0, 0U, 0U, 0U, 1U, 0U,
             std::string("txt.shx"), std::string())
        .add(31)
        .add(5, AcGePoint3d(1, 0, 0), AcGePoint3d(0, 1, 0), AcGePoint3d(-1, 0, 0), 0U)
        .add(8, 2U, 2U, AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0), AcGePoint3d(0, 1, 0), AcGePoint3d(1, 1, 0))
        .add(10, AcGePoint3d(0, 0, 0), kZ, kX, 1.0, 1.0, 0.0, std::string("plain"))
        .add(2, AcGePoint3d(7, 7, 0), 2.0, kZ);
    return picture;
}

} // namespace

TEST(ProxyDrawing, EveryKindOfRecordIsDrawn) {
    const Recorder recorder = drawn(richPicture().bytes());
    ASSERT_EQ(recorder.lines.size(), 1U + 1 + 4);
    EXPECT_TRUE(recorder.lines[0][1].isEqualTo({5, 0, 0}));
    EXPECT_EQ(recorder.lines[1].size(), 5U) << "a face that isn't filled";
    ASSERT_EQ(recorder.areas.size(), 1U);
    ASSERT_EQ(recorder.arcs.size(), 3U);
    EXPECT_TRUE(recorder.arcs[0].center.isEqualTo({10, 0, 0}));
    EXPECT_NEAR(recorder.arcs[0].major.length(), 6, 1e-9);
    EXPECT_NEAR(recorder.arcs[0].sweep, 1.5, 1e-9);
    EXPECT_TRUE(recorder.arcs[1].center.isEqualTo({0, 0, 0}));
    EXPECT_NEAR(recorder.arcs[1].sweep, kAcGePi, 1e-9);
    EXPECT_NEAR(recorder.arcs[2].sweep, 2 * kAcGePi, 1e-9);
    ASSERT_EQ(recorder.texts.size(), 2U);
    EXPECT_EQ(recorder.texts[0].text, "word");
    EXPECT_TRUE(recorder.texts[0].position.isEqualTo({12, 4, 0}));
    EXPECT_NEAR(recorder.texts[0].height, 5, 1e-9);
    EXPECT_TRUE(recorder.texts[0].underlined);
    EXPECT_EQ(recorder.texts[1].text, "plain");
    EXPECT_EQ(recorder.colors.back(), AcCmEntityColor::index(3));
}

TEST(ProxyDrawing, DamageStaysWithinTheRecord) {
    const std::string whole = richPicture().bytes();
    for (size_t size = 8; size < whole.size(); size += 3)
        drawn(whole.substr(0, size));
    for (size_t i = 8; i < whole.size(); ++i)
        for (const char value : {'\0', '\x7F', '\xFF'}) {
            std::string changed = whole;
            changed[i] = value;
            drawn(changed);
        }
    AcDbOpaqueEntity none;
    Recorder recorder;
    EXPECT_FALSE(acgiDrawEntity(none, recorder));
}

} // namespace vndk::test
