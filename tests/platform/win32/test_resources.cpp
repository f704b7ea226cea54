// Compiled resources: a real .res, and the same with every kind of damage.
#include "win32/resource_table.h"
#include "win32/windows.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <random>

using namespace vndk::win32;

namespace {

std::vector<std::uint8_t> compiled() {
    std::ifstream file(PROBE_RES, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Reads everything that a table offers, as the platform's calls would.
void readAll(const ResourceTable& table) {
    unsigned sum = 0;
    for (const ResourceEntry& entry : table.entries()) {
        EXPECT_NE(table.find(entry.type, entry.name), nullptr);
        for (const std::uint8_t byte : entry.data)
            sum += byte;
        for (unsigned i = 0; i < 16; ++i)
            sum += static_cast<unsigned>(stringOfBlock(entry.data, i).value_or("").size());
    }
    volatile unsigned kept = sum;
    static_cast<void>(kept);
}

class Resources : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(registerInstance(bytes, instance).ok()); }
    void TearDown() override { unregisterInstance(instance); }

    const std::vector<std::uint8_t> bytes = compiled();
    HINSTANCE instance = nullptr;
};

} // namespace

TEST_F(Resources, StringsComeInTheCodePage) {
    const struct {
        UINT id;
        int size;
        const char* text;
    } cases[] = {{101, 1000, "Vondrake"},
                 {102, 1000, "T\xFCr f\xFCr \x80 5"},
                 {103, 1000, "say \"so\""},
                 {4096, 1000, "another block"},
                 {101, 5, "Vond"},
                 {101, 1, ""},
                 {104, 1000, ""},
                 {5000, 1000, ""},
                 {0xFFFF0065, 1000, "Vondrake"}};
    for (const auto& row : cases) {
        char buffer[1000] = "old";
        EXPECT_EQ(LoadStringA(instance, row.id, buffer, row.size), static_cast<int>(std::strlen(row.text))) << row.id;
        EXPECT_STREQ(buffer, row.text) << row.id;
    }
}

TEST_F(Resources, AreFoundByNumberAndByTextOfAnyCase) {
    const HRSRC tips = FindResourceA(instance, "Tips", RT_RCDATA);
    ASSERT_NE(tips, nullptr);
    EXPECT_EQ(SizeofResource(instance, tips), 7u);
    EXPECT_EQ(std::memcmp(LockResource(LoadResource(instance, tips)), "five\0\7\0", 7), 0);
    EXPECT_NE(FindResourceA(instance, "#502", "#10"), nullptr);

    EXPECT_EQ(FindResourceA(instance, "none", RT_RCDATA), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_RESOURCE_NAME_NOT_FOUND);
    EXPECT_EQ(FindResourceA(instance, "#502x", RT_RCDATA), nullptr);
    EXPECT_EQ(FindResourceA(instance, "tips", RT_DIALOG), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_RESOURCE_TYPE_NOT_FOUND);
}

TEST_F(Resources, AnInstanceThatIsGoneAnswersNothing) {
    HINSTANCE other = nullptr;
    ASSERT_TRUE(registerInstance(bytes, other).ok());
    const HRSRC tips = FindResourceA(other, "tips", RT_RCDATA);
    EXPECT_EQ(SizeofResource(instance, tips), 0u) << "a resource of another library";
    unregisterInstance(other);
    EXPECT_EQ(LoadResource(other, tips), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(Resources, TruncatedFilesAreDamagedOrShorter) {
    std::size_t whole = 0;
    for (std::size_t size = 0; size <= bytes.size(); ++size) {
        const std::vector<std::uint8_t> part(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        ResourceTable table;
        const Status status = ResourceTable::parse(part, table);
        whole += status.ok() ? 1 : 0;
        EXPECT_TRUE(status.ok() || table.entries().empty()) << size;
        readAll(table);
    }
    EXPECT_LT(whole, bytes.size() / 8);
}

TEST_F(Resources, MutatedFilesNeverLeadOutside) {
    std::mt19937 random(20);
    for (int round = 0; round < 8000; ++round) {
        std::vector<std::uint8_t> damaged = bytes;
        for (int i = 0; i < 3; ++i)
            damaged[random() % damaged.size()] =
                static_cast<std::uint8_t>(round % 2 ? random() : 0xFF * (random() & 1));
        ResourceTable table;
        if (ResourceTable::parse(damaged, table).ok())
            readAll(table);
    }
}
