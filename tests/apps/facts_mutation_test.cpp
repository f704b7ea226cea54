// Damaged drawings through everything that --facts does: reading, decoding all objects, writing the facts. The
// mutations come from a fixed seed, so that each run is the same. VONDRAKE_MUTATIONS sets their number.

#include "db/database.h"
#include "dwg/crc.h"
#include "dwg/file_image.h"
#include "ed/host.h"
#include "support/drawings.h"
#include "vondrake/convert_command.h"
#include "vondrake/facts.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

namespace vndk::app {
namespace {

using Bytes = std::vector<uint8_t>;

constexpr int kUsualMutations = 1000;
constexpr double kMostSeconds = 2;
constexpr long kMostKilobytes = 1024 * 1024;

// Blocks with definitions of all kinds, Intelligent and ordinary objects, several spaces, texts beyond ASCII.
constexpr const char* kScript = R"(ATTDEF

SIZE
Size of it
1000
10,20
2.5
0
ATTDEF

KIND
Kind of it
oak
10,10
2.5
0
VNDKATTDEF
L
1,0
2,0
stretch = value > 900

PLINE 0,0 10,0 10,10 C
CIRCLE 5,5 2
ARC 0,0 1,1 2,0
BLOCK DESK 0,0 ALL

TEXT 3,3 2.5 0
Fenetre

(repeat 20 (c:_bInsert "DESK" (list 1.0 2.0 3.0)))
(setvar "TILEMODE" 0)
(c:_bInsert "DESK" (list 4.0 5.0 6.0))
)";

Bytes readAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

void writeAll(const std::string& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

class Folder {
public:
    Folder() {
        char name[] = "/tmp/vondrake-mutations-XXXXXX";
        path_ = mkdtemp(name);
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    std::string file(const char* name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

/// Damages a drawing in one of several ways.
class Mutator {
public:
    explicit Mutator(uint32_t seed) : chance_(seed) {}

    Bytes damaged(const Bytes& whole, const dwg::FileImage& image) {
        Bytes bytes = whole;
        const size_t rounds = 1 + below(4);
        for (size_t i = 0; i < rounds; ++i) {
            switch (below(6)) {
            case 0:
            case 1:
                damageObject(bytes, image);
                break;
            case 2:
                bytes[below(bytes.size())] ^= static_cast<uint8_t>(1u << below(8));
                break;
            case 3:
                overwrite(bytes, below(bytes.size()));
                break;
            case 4: // the sections' places and sizes, the header, the map
                overwrite(bytes, below(2) ? below(100) : bytes.size() - 1 - below(bytes.size() / 8));
                break;
            default:
                if (i == 0 && below(2))
                    bytes.resize(1 + below(bytes.size()));
                else
                    std::swap_ranges(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(below(bytes.size() / 2)),
                                     bytes.begin() + static_cast<ptrdiff_t>(bytes.size() / 2));
            }
        }
        return bytes;
    }

private:
    size_t below(size_t end) { return end == 0 ? 0 : chance_() % end; }

    /// Changes bits of an object and makes its checksum right again, so that the decoder meets them.
    void damageObject(Bytes& bytes, const dwg::FileImage& image) {
        const dwg::ObjectRecord& record = image.objects()[below(image.objects().size())];
        if (record.size < 8 || record.offset + record.size > bytes.size())
            return;
        for (size_t i = 0, changes = 1 + below(6); i < changes; ++i) {
            const size_t at = record.offset + 2 + below(record.size - 4);
            bytes[at] = below(2) ? static_cast<uint8_t>(chance_()) : bytes[at] ^ static_cast<uint8_t>(1u << below(8));
        }
        const size_t crcAt = record.offset + record.size - 2;
        const uint16_t crc = dwg::crc16(0xC0C1, bytes.data() + record.offset, record.size - 2);
        bytes[crcAt] = static_cast<uint8_t>(crc);
        bytes[crcAt + 1] = static_cast<uint8_t>(crc >> 8);
    }

    void overwrite(Bytes& bytes, size_t at) {
        static constexpr uint32_t kExtremes[] = {0, 1, 0x7F, 0xFF, 0x7FFF, 0xFFFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        const uint32_t value = below(2) ? kExtremes[below(std::size(kExtremes))] : static_cast<uint32_t>(chance_());
        for (size_t i = 0, length = size_t{1} << below(3); i < length && at + i < bytes.size(); ++i)
            bytes[at + i] = static_cast<uint8_t>(value >> 8 * i);
    }

    std::mt19937 chance_;
};

class FactsOfDamagedDrawings : public testing::Test {
protected:
    FactsOfDamagedDrawings() {
        EXPECT_TRUE(host_.linker().loadModule(OBJECTS_FILE, false)) << host_.linker().lastError();
    }

    /// A drawing by our own commands and our own writer.
    std::string makeDrawing() {
        const std::string path = folder_.file("own.dwg");
        host_.documents().appContextNewDocument(nullptr);
        EXPECT_TRUE(host_.linker().loadModule(MODULE_FILE, false)) << host_.linker().lastError();
        addConvertCommand(host_);
        const auto problem = host_.runText(std::string(kScript) + "SAVEAS 2000 " + path + "\n");
        EXPECT_FALSE(problem) << problem->message << " in line " << problem->line;
        host_.documents().closeAll();
        return path;
    }

    /// True if it was taken as a drawing.
    bool showFacts(const std::string& path) {
        AcDbDatabase database(false, true);
        if (database.readDwgFile(path.c_str(), 0x40) != Acad::eOk) {
            EXPECT_GT(database.lastFileError().size(), 20u);
            return false;
        }
        size_t bytes = 0;
        JsonWriter json([&bytes](std::string_view piece) { bytes += piece.size(); });
        writeFacts(database, readFileStart(path), json);
        EXPECT_GT(bytes, 100u);
        return true;
    }

    void mutate(const std::vector<std::string>& drawings, int count);

    Folder folder_;
    host::Host host_;
};

void FactsOfDamagedDrawings::mutate(const std::vector<std::string>& drawings, int count) {
    using Clock = std::chrono::steady_clock;
    Mutator mutator(20'000'715);
    const std::string path = folder_.file("damaged.dwg");
    int taken = 0, done = 0;
    double slowest = 0;
    for (size_t d = 0; d < drawings.size(); ++d) {
        const Bytes whole = readAll(drawings[d]);
        const auto image = dwg::FileImage::parse(whole, drawings[d]);
        ASSERT_TRUE(image) << image.error().message;
        const int share = count * static_cast<int>(d + 1) / static_cast<int>(drawings.size()) - done;
        for (int i = 0; i < share; ++i, ++done) {
            writeAll(path, mutator.damaged(whole, **image));
            const auto start = Clock::now();
            taken += showFacts(path);
            const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
            ASSERT_LT(seconds, kMostSeconds) << "mutation " << i << " of " << drawings[d];
            slowest = std::max(slowest, seconds);
        }
    }
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("facts of %d damaged drawings (%zu originals): %d taken as drawings, %d refused; slowest %.3f s, "
                "peak memory %ld MiB\n",
                done, drawings.size(), taken, done - taken, slowest, usage.ru_maxrss / 1024);
    EXPECT_LT(usage.ru_maxrss, kMostKilobytes);
    // Else the mutations would only ever meet the first check.
    EXPECT_GT(taken, done / 5);
}

TEST_F(FactsOfDamagedDrawings, NeitherCrashNorHang) {
    const char* const wanted = std::getenv("VONDRAKE_MUTATIONS");
    std::vector<std::string> drawings{makeDrawing()};
    for (std::string& path : test::realDrawings("r2000"))
        drawings.push_back(std::move(path));
    mutate(drawings, wanted ? std::max(1, std::atoi(wanted)) : kUsualMutations);
}

} // namespace
} // namespace vndk::app
