#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "dwg/bit_reader.h"
#include "dwg/bit_writer.h"
#include "dwg/crc.h"

using namespace vndk::dwg;

namespace {

BitReader readerOf(const BitWriter& writer) { return BitReader(writer.data().data(), 0, writer.position()); }

/// All values next to a power of two, both signs folded into the unsigned range of T.
template <class T>
std::vector<T> valuesAroundPowersOfTwo() {
    std::vector<T> values;
    for (int bit = 0; bit < std::numeric_limits<T>::digits; ++bit)
        for (int delta = -1; delta <= 1; ++delta)
            values.push_back(static_cast<T>((static_cast<T>(1) << bit) + static_cast<T>(delta)));
    values.push_back(std::numeric_limits<T>::max());
    return values;
}

} // namespace

TEST(BitCodes, ComeBackAroundPowersOfTwoAtEveryBitPosition) {
    for (unsigned lead = 0; lead < 8; ++lead) {
        BitWriter writer;
        writer.put(0, lead);
        for (auto value : valuesAroundPowersOfTwo<uint16_t>()) {
            writer.RS(value);
            writer.BS(value);
        }
        for (auto value : valuesAroundPowersOfTwo<uint32_t>()) {
            writer.RL(value);
            writer.BL(value);
            writer.MS(value & 0x3FFFFFFF);
        }
        for (auto value : valuesAroundPowersOfTwo<uint64_t>()) {
            writer.RLL(value);
            writer.H(4, value);
            writer.UMC(value >> 1);
            writer.MC(static_cast<int64_t>(value >> 10));
            writer.MC(-static_cast<int64_t>(value >> 10));
        }
        BitReader reader = readerOf(writer);
        reader.skip(lead);
        for (auto value : valuesAroundPowersOfTwo<uint16_t>()) {
            ASSERT_EQ(reader.RS(), value);
            ASSERT_EQ(reader.BS(), value);
        }
        for (auto value : valuesAroundPowersOfTwo<uint32_t>()) {
            ASSERT_EQ(reader.RL(), value);
            ASSERT_EQ(reader.BL(), value);
            ASSERT_EQ(reader.MS(), value & 0x3FFFFFFF);
        }
        for (auto value : valuesAroundPowersOfTwo<uint64_t>()) {
            ASSERT_EQ(reader.RLL(), value);
            ASSERT_EQ(reader.H().value, value);
            ASSERT_EQ(reader.UMC(), value >> 1);
            ASSERT_EQ(reader.MC(), static_cast<int64_t>(value >> 10));
            ASSERT_EQ(reader.MC(), -static_cast<int64_t>(value >> 10));
        }
        EXPECT_EQ(reader.remaining(), 0u);
        EXPECT_FALSE(reader.failed());
    }
}

TEST(BitCodes, TakeTheirShortestForm) {
    const struct {
        void (*write)(BitWriter&);
        size_t bits;
    } cases[] = {
        {[](BitWriter& w) { w.BS(0); }, 2},        {[](BitWriter& w) { w.BS(255); }, 10},
        {[](BitWriter& w) { w.BS(256); }, 2},      {[](BitWriter& w) { w.BS(257); }, 18},
        {[](BitWriter& w) { w.BL(0); }, 2},        {[](BitWriter& w) { w.BL(256); }, 34},
        {[](BitWriter& w) { w.BD(0.0); }, 2},      {[](BitWriter& w) { w.BD(1.0); }, 2},
        {[](BitWriter& w) { w.BD(-0.0); }, 66},    {[](BitWriter& w) { w.H(5, 0); }, 8},
        {[](BitWriter& w) { w.H(5, 0x100); }, 24}, {[](BitWriter& w) { w.TV(""); }, 2},
    };
    for (const auto& each : cases) {
        BitWriter writer;
        each.write(writer);
        EXPECT_EQ(writer.position(), each.bits) << "case " << &each - cases;
    }
}

TEST(BitCodes, DoublesWithDefaultStoreOnlyTheBytesThatDiffer) {
    const auto from = [](uint64_t raw) { return std::bit_cast<double>(raw); };
    const double standard = from(0x4008123456789ABC);
    const struct {
        double value;
        size_t bits;
    } cases[] = {
        {standard, 2},
        {from(0x40081234567800BC), 34},
        {from(0x4008123400000000), 34},
        {from(0x4008FFFF56789ABC), 50},
        {from(0x4008000000000000), 50},
        {from(0x4108123456789ABC), 66},
        {-standard, 66},
    };
    for (const auto& each : cases) {
        BitWriter writer;
        writer.DD(each.value, standard);
        EXPECT_EQ(writer.position(), each.bits) << each.value;
        BitReader reader = readerOf(writer);
        EXPECT_EQ(reader.DD(standard), each.value);
        EXPECT_EQ(reader.remaining(), 0u);
    }
    // 1: the low four bytes; 2: bytes 4 and 5 stand before the low four.
    const uint8_t low[] = {0x40 | 0xC4 >> 2, 0, 0, 0, 0};
    EXPECT_EQ(BitReader(low, 0, 34).DD(standard), from(0x4008123400000000 | 0xC4 | 0x00));
    const uint8_t middle[] = {0x84, 0x8D, 0x15, 0x9E, 0x26, 0xAF, 0x00};
    EXPECT_EQ(BitReader(middle, 0, 50).DD(standard), from(0x40083412BC9A7856));
}

TEST(BitCodes, ReadPublishedBytes) {
    const uint8_t signedChar[] = {0xE9, 0x97, 0xE6, 0x35, 0x85, 0x4B};
    BitReader reader(signedChar, 0, 48);
    EXPECT_EQ(reader.MC(), 0x69 | 0x17 << 7 | 0x66 << 14 | 0x35 << 21);
    EXPECT_EQ(reader.MC(), -(5 + (11 << 7)));
    const uint8_t mapStart[] = {0x01, 0xD1, 0x96, 0x01, 0x01, 0xAB, 0x01};
    BitReader map(mapStart, 0, 56);
    EXPECT_EQ(map.UMC(), 1u);
    EXPECT_EQ(map.MC(), 19281);
    EXPECT_EQ(map.UMC(), 1u);
    EXPECT_EQ(map.MC(), 171);
}

TEST(HandleRefs, CountFromTheHolder) {
    EXPECT_EQ((HandleRef{6, 0}.absolute(0x41)), 0x42u);
    EXPECT_EQ((HandleRef{8, 0}.absolute(0x41)), 0x40u);
    EXPECT_EQ((HandleRef{10, 3}.absolute(0x41)), 0x44u);
    EXPECT_EQ((HandleRef{12, 6}.absolute(0x41)), 0x3Bu);
    EXPECT_EQ((HandleRef{4, 0x10}.absolute(0x41)), 0x10u);
    EXPECT_EQ((HandleRef{5, 0}.absolute(0x41)), 0u);
}

TEST(BitReader, StopsAtTheEndForEveryCodeAndLength) {
    using Read = void (*)(BitReader&);
    const Read reads[] = {
        [](BitReader& r) { r.B(); },   [](BitReader& r) { r.BB(); },  [](BitReader& r) { r.RC(); },
        [](BitReader& r) { r.RS(); },  [](BitReader& r) { r.RL(); },  [](BitReader& r) { r.RLL(); },
        [](BitReader& r) { r.BS(); },  [](BitReader& r) { r.BL(); },  [](BitReader& r) { r.BD(); },
        [](BitReader& r) { r.DD(3); }, [](BitReader& r) { r.TV(); },  [](BitReader& r) { r.H(); },
        [](BitReader& r) { r.MC(); },  [](BitReader& r) { r.UMC(); }, [](BitReader& r) { r.MS(); },
    };
    std::mt19937 random(7);
    for (size_t size = 0; size < 20; ++size)
        for (int round = 0; round < 200; ++round) {
            // Memory of the exact size lets the address sanitizer see one byte too many.
            std::vector<uint8_t> data(size);
            for (auto& byte : data)
                byte = round % 2 ? 0xFF : static_cast<uint8_t>(random());
            BitReader reader(data.data(), 0, size * 8);
            for (int step = 0; step < 40; ++step) {
                reads[random() % std::size(reads)](reader);
                ASSERT_LE(reader.position(), size * 8);
            }
            ASSERT_TRUE(reader.failed());
            EXPECT_EQ(reader.RL(), 0u);
        }
}

TEST(BitReader, RefusesInvalidCodes) {
    const uint8_t ones[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    using Read = void (*)(BitReader&);
    const Read reads[] = {[](BitReader& r) { r.BL(); }, [](BitReader& r) { r.BD(); },  [](BitReader& r) { r.H(); },
                          [](BitReader& r) { r.MC(); }, [](BitReader& r) { r.UMC(); }, [](BitReader& r) { r.MS(); }};
    for (const auto& read : reads) {
        BitReader reader(ones, 0, sizeof ones * 8);
        read(reader);
        EXPECT_TRUE(reader.failed()) << "case " << &read - reads;
    }
}

TEST(BitReader, DropsOneCountedNulOfAText) {
    BitWriter writer;
    writer.TV("abc");
    writer.TV(std::string_view("abc\0", 4));
    writer.TV(std::string_view("a\0\0", 3));
    writer.TV("");
    BitReader reader = readerOf(writer);
    EXPECT_EQ(reader.TV(), "abc");
    EXPECT_EQ(reader.TV(), "abc");
    EXPECT_EQ(reader.TV(), std::string("a\0", 2));
    EXPECT_EQ(reader.TV(), "");
    EXPECT_FALSE(reader.failed());
}

TEST(BitWriter, CopiesAnyRangeOfBitsToAnyPosition) {
    std::mt19937 random(11);
    std::vector<uint8_t> source(40);
    for (auto& byte : source)
        byte = static_cast<uint8_t>(random());
    for (size_t first = 0; first < 9; ++first)
        for (size_t end = first; end <= source.size() * 8; end += 7)
            for (unsigned lead = 0; lead < 8; ++lead) {
                BitWriter writer;
                writer.put(0, lead);
                writer.copyBits(source.data(), first, end);
                ASSERT_EQ(writer.position(), lead + end - first);
                BitReader expected(source.data(), first, end);
                BitReader actual(writer.data().data(), lead, writer.position());
                while (expected.remaining() > 0)
                    ASSERT_EQ(actual.B(), expected.B()) << first << ".." << end << " at " << lead;
            }
}

TEST(BitWriter, PatchesAnRlWithoutTouchingItsNeighbours) {
    for (unsigned lead = 0; lead < 8; ++lead) {
        BitWriter writer;
        writer.put((1u << lead) - 1, lead);
        writer.RL(0xFFFFFFFF);
        writer.put(0x7F, 7);
        writer.patchRL(lead, 0x12345678);
        BitReader reader = readerOf(writer);
        EXPECT_EQ(lead ? reader.take(lead) : 0, (1u << lead) - 1);
        EXPECT_EQ(reader.RL(), 0x12345678u);
        EXPECT_EQ(reader.take(7), 0x7Fu);
    }
}

TEST(Crc, EqualsItsDefinitionForEveryLengthAndSeed) {
    std::mt19937 random(3);
    std::vector<uint8_t> data(67);
    for (auto& byte : data)
        byte = static_cast<uint8_t>(random());
    for (unsigned seed : {0u, 0xC0C1u, 0xFFFFu})
        for (size_t size = 0; size <= data.size(); ++size) {
            unsigned expected = seed;
            for (size_t i = 0; i < size; ++i) {
                expected ^= data[i];
                for (int bit = 0; bit < 8; ++bit)
                    expected = (expected & 1) ? (expected >> 1) ^ 0xA001u : expected >> 1;
            }
            ASSERT_EQ(crc16(static_cast<uint16_t>(seed), data.data(), size), expected) << size;
        }
    const uint8_t digits[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(crc16(0, digits, 9), 0xBB3D);
}
