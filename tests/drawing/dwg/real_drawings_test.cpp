// Real drawings of many programs, beside what an independent reader found in them.

#include <gtest/gtest.h>

#include <map>
#include <tuple>

#include "dwg/file_writer.h"
#include "dwg/object_frame.h"
#include "support/drawings.h"
#include "support/json.h"

using namespace vndk::dwg;
using vndk::test::besideDrawing;
using vndk::test::Json;
using vndk::test::realDrawings;

namespace {

std::shared_ptr<FileImage> mustRead(const std::string& path, VersionMask accepted = kEveryVersion) {
    auto image = FileImage::read(path, accepted);
    EXPECT_TRUE(image) << image.error().message;
    return image ? *image : nullptr;
}

/// Names under which the facts list some variables.
std::string variableName(std::string name) {
    static const std::map<std::string, std::string> names = {
        {"MENU", "MENUNAME"},
        {"TDUCREATE", "TDCREATE"},
        {"TDUUPDATE", "TDUPDATE"},
        {"VX_TABLE_RECORD", "VX_RECORD"},
        {"DICTIONARY_ACAD_GROUP", "DICTIONARY_GROUP"},
        {"DICTIONARY_ACAD_MLINESTYLE", "DICTIONARY_MLINESTYLE"},
        {"DICTIONARY_NAMED_OBJECT", "DICTIONARY_NAMED_OBJECTS"},
        {"BLOCK_RECORD_PSPACE", "PAPER_SPACE"},
        {"BLOCK_RECORD_MSPACE", "MODEL_SPACE"},
        {"DIMBLK_T", "DIMBLKNAME"},
        {"DIMBLK1_T", "DIMBLK1NAME"},
        {"DIMBLK2_T", "DIMBLK2NAME"},
        {"unknown_8", "UNKNOWN1"},
        {"unknown_9", "UNKNOWN2"},
        {"unknown_10", "UNKNOWN3"},
        {"unknown_54", "UNKNOWN4"},
        {"unknown_55", "UNKNOWN5"},
        {"unknown_56", "UNKNOWN6"},
        {"unknown_57", "UNKNOWN7"},
    };
    if (const auto found = names.find(name); found != names.end())
        return found->second;
    if (name.starts_with("unit"))
        name.erase(name.find('_'), 1);
    if (name.ends_with("_CONTROL_OBJECT"))
        name.resize(name.size() - 7);
    return name;
}

void expectNear(double actual, double expected, const std::string& what) {
    EXPECT_NEAR(actual, expected, std::abs(expected) * 1e-13 + 1e-13) << what;
}

struct ExpectEqual {
    const HeaderVariables& header;
    const Json& fact;
    const std::string& what;

    void operator()(bool HeaderVariables::*member) const { EXPECT_EQ(header.*member, fact.number() != 0) << what; }
    void operator()(int16_t HeaderVariables::*member) const {
        EXPECT_EQ(header.*member, static_cast<int16_t>(static_cast<int32_t>(fact.number()))) << what;
    }
    void operator()(uint32_t HeaderVariables::*member) const {
        EXPECT_EQ(header.*member, static_cast<uint32_t>(fact.number())) << what;
    }
    void operator()(double HeaderVariables::*member) const { expectNear(header.*member, fact.number(), what); }
    void operator()(Point2 HeaderVariables::*member) const {
        expectNear((header.*member).x, fact[0].number(), what);
        expectNear((header.*member).y, fact[1].number(), what);
    }
    void operator()(Point3 HeaderVariables::*member) const {
        expectNear((header.*member).x, fact[0].number(), what);
        expectNear((header.*member).y, fact[1].number(), what);
        expectNear((header.*member).z, fact[2].number(), what);
    }
    void operator()(std::string HeaderVariables::*member) const { EXPECT_EQ(header.*member, fact.text()) << what; }
    void operator()(JulianTime HeaderVariables::*member) const {
        EXPECT_EQ((header.*member).day, fact[0].number()) << what;
        EXPECT_EQ((header.*member).milliseconds, fact[1].number()) << what;
    }
    void operator()(uint64_t HeaderVariables::*member) const {
        ASSERT_GE(fact.size(), 3u) << what;
        EXPECT_EQ(header.*member, static_cast<uint64_t>(fact[fact.size() - 1].number())) << what;
    }
};

std::vector<std::string> readableDrawings() {
    std::vector<std::string> paths = realDrawings("r2000");
    for (const std::string& path : realDrawings("r14"))
        paths.push_back(path);
    return paths;
}

std::vector<std::string> writableDrawings() {
    std::vector<std::string> paths = realDrawings("r2000");
    for (const std::string& path : realDrawings("big"))
        paths.push_back(path);
    return paths;
}

} // namespace

TEST(RealDrawings, HeaderVariablesAreThoseOfTheFacts) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& path : readableDrawings()) {
        const auto image = mustRead(path);
        ASSERT_TRUE(image);
        const Json facts = Json::read(besideDrawing(path, ".objects.json"))["HEADER"];
        ASSERT_GT(facts.size(), 150u) << path;
        for (const auto& [name, fact] : facts.members()) {
            const std::string what = path + " " + name;
            const HeaderRow* row = findHeaderRow(variableName(name));
            ASSERT_TRUE(row) << what;
            std::visit(ExpectEqual{image->header(), fact, what}, row->member);
        }
    }
}

TEST(RealDrawings, ClassesAreThoseOfTheFacts) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& path : readableDrawings()) {
        const auto image = mustRead(path);
        ASSERT_TRUE(image);
        const Json file = Json::read(besideDrawing(path, ".objects.json"));
        const Json& facts = file["CLASSES"];
        ASSERT_EQ(image->classes().size(), facts.size()) << path;
        for (size_t i = 0; i < facts.size(); ++i) {
            const ClassRecord& record = image->classes()[i];
            EXPECT_EQ(record.number, facts[i]["number"].number()) << path;
            EXPECT_EQ(record.proxyFlags, facts[i]["proxyflag"].number()) << path;
            EXPECT_EQ(record.dxfName, facts[i]["dxfname"].text()) << path;
            EXPECT_EQ(record.cppName, facts[i]["cppname"].text()) << path;
            EXPECT_EQ(record.itemClassId, facts[i]["item_class_id"].number()) << path;
        }
        EXPECT_EQ(image->measurement(), file["Template"]["MEASUREMENT"].number()) << path;
        EXPECT_TRUE(image->warnings().empty()) << image->warnings().front();
    }
}

TEST(RealDrawings, FramesOfAllObjectsAreThoseOfTheFacts) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& path : readableDrawings()) {
        const auto image = mustRead(path);
        ASSERT_TRUE(image);
        const FrameContext context(image->version(), image->classes());
        const Json file = Json::read(besideDrawing(path, ".objects.json"));
        for (const Json& fact : file["OBJECTS"].items()) {
            const auto handle = static_cast<uint64_t>(fact["handle"][2].number());
            const std::string what = path + " handle " + std::to_string(handle);
            const ObjectRecord* record = image->find(handle);
            ASSERT_TRUE(record) << what;
            ObjectFrame frame;
            CommonHandles handles;
            ASSERT_TRUE(parseFrame(image->bytesOf(*record), context, frame)) << what;
            ASSERT_TRUE(readCommonHandles(image->bytesOf(*record), frame, handles)) << what;
            EXPECT_EQ(frame.handle, handle) << what;
            EXPECT_EQ(frame.type, fact["type"].number()) << what;
            EXPECT_EQ(frame.handlesBit - frame.dataBit, fact["bitsize"].number()) << what;
            EXPECT_EQ(frame.isEntity, fact.has("entity")) << what;
            EXPECT_EQ(frame.reactorCount, fact["reactors"].size()) << what;
            if (fact.has("ownerhandle")) {
                EXPECT_EQ(handles.owner, fact["ownerhandle"][3].number()) << what;
            }
            if (fact.has("xdicobjhandle")) {
                EXPECT_EQ(handles.xdictionary, fact["xdicobjhandle"][3].number()) << what;
            }
            if (!frame.isEntity)
                continue;
            EXPECT_EQ(static_cast<double>(frame.entity.mode), fact["entmode"].number()) << what;
            EXPECT_EQ(frame.entity.nolinks, fact["nolinks"].number() != 0) << what;
            EXPECT_EQ(frame.entity.color, fact["color"].number()) << what;
            EXPECT_EQ(frame.entity.linetypeScale, fact["ltype_scale"].number()) << what;
            EXPECT_EQ(handles.layer, fact["layer"][3].number()) << what;
            if (fact.has("prev_entity")) {
                EXPECT_EQ(handles.previous, fact["prev_entity"][3].number()) << what;
            }
            if (fact.has("next_entity")) {
                EXPECT_EQ(handles.next, fact["next_entity"][3].number()) << what;
            }
            if (image->version() == Version::R15) {
                EXPECT_EQ(frame.entity.lineWeight, fact["linewt"].number()) << what;
            }
        }
        EXPECT_EQ(image->objects().size(), file["OBJECTS"].size()) << path;
    }
}

TEST(RealDrawings, ComeBackIdenticalWhenRewritten) {
    SKIP_WITHOUT_DRAWINGS();
    size_t same = 0;
    size_t all = 0;
    for (const std::string& path : writableDrawings()) {
        const auto image = mustRead(path);
        ASSERT_TRUE(image);
        FileParts parts = partsOf(*image);
        ++parts.header.HANDSEED;
        auto bytes = writeFile(parts);
        ASSERT_TRUE(bytes) << bytes.error().message;
        auto again = FileImage::parse(std::move(*bytes), path + " rewritten");
        ASSERT_TRUE(again) << again.error().message;
        const FileImage& copy = **again;
        EXPECT_TRUE(copy.warnings().empty()) << copy.warnings().front();
        EXPECT_EQ(copy.header(), parts.header) << path;
        EXPECT_EQ(copy.classes(), image->classes()) << path;
        EXPECT_EQ(copy.identity(), image->identity()) << path;
        EXPECT_EQ(copy.measurement(), image->measurement()) << path;
        ASSERT_EQ(copy.preview().size(), image->preview().size()) << path;
        for (size_t i = 0; i < copy.preview().size(); ++i)
            EXPECT_TRUE(std::ranges::equal(copy.preview()[i].data, image->preview()[i].data)) << path;
        ASSERT_EQ(copy.objects().size(), image->objects().size()) << path;
        for (size_t i = 0; i < copy.objects().size(); ++i) {
            const ObjectRecord& before = image->objects()[i];
            const ObjectRecord& after = copy.objects()[i];
            ++all;
            if (before.handle == after.handle && std::ranges::equal(image->bytesOf(before), copy.bytesOf(after)))
                ++same;
        }
    }
    EXPECT_GT(all, 0u);
    EXPECT_EQ(same, all);
}

TEST(RealDrawings, AreByteForByteTheSameWhenNothingChanged) {
    SKIP_WITHOUT_DRAWINGS();
    // The programs behind these files lay them out as we do; others leave gaps or cut map pages elsewhere.
    for (const std::string& path : realDrawings("r2000")) {
        if (path.find("entities-2d") != path.npos || path.find("example_2000") != path.npos)
            continue;
        const auto image = mustRead(path);
        ASSERT_TRUE(image);
        const auto bytes = writeFile(partsOf(*image));
        ASSERT_TRUE(bytes);
        EXPECT_TRUE(std::ranges::equal(*bytes, image->bytes())) << path;
    }
}

TEST(RealDrawings, KeepEverythingButTheLinksOfAPatchedEntity) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& path : readableDrawings()) {
        const auto image = mustRead(path);
        ASSERT_TRUE(image);
        const FrameContext context(image->version(), image->classes());
        for (const ObjectRecord& record : image->objects()) {
            const auto raw = image->bytesOf(record);
            ObjectFrame before, after;
            CommonHandles old, now;
            ASSERT_TRUE(parseFrame(raw, context, before) && readCommonHandles(raw, before, old));
            const auto patched = patchLinks(raw, context, 0x123456, 0);
            ASSERT_EQ(patched.has_value(), before.isEntity) << path << " handle " << record.handle;
            if (!patched)
                continue;
            ASSERT_TRUE(parseFrame(*patched, context, after) && readCommonHandles(*patched, after, now)) << path;
            EXPECT_EQ(now.previous, 0x123456u);
            EXPECT_EQ(now.next, 0u);
            EXPECT_FALSE(after.entity.nolinks);
            EXPECT_EQ(std::tie(now.owner, now.xdictionary, now.layer, now.linetype, now.plotStyle),
                      std::tie(old.owner, old.xdictionary, old.layer, old.linetype, old.plotStyle));
            EXPECT_EQ(after.handlesBit - after.dataBit, before.handlesBit - before.dataBit);
            // Set back, an entity with stored absolute links is what it was.
            const auto back = patchLinks(*patched, context, old.previous, old.next);
            ASSERT_TRUE(back);
            ASSERT_TRUE(parseFrame(*back, context, after) && readCommonHandles(*back, after, now));
            BitReader expected(raw.data(), old.typeBit, before.endBit);
            BitReader actual(back->data(), now.typeBit, after.endBit);
            ASSERT_EQ(actual.remaining(), expected.remaining());
            while (expected.remaining() > 0)
                ASSERT_EQ(actual.B(), expected.B()) << path << " handle " << record.handle;
        }
    }
}

TEST(RealDrawings, OfOtherReleasesAreRefusedByName) {
    SKIP_WITHOUT_DRAWINGS();
    for (const char* folder : {"r14", "thumbs"})
        for (const std::string& path : realDrawings(folder)) {
            const auto image = FileImage::read(path);
            ASSERT_FALSE(image) << path;
            EXPECT_EQ(image.error().kind, ErrorKind::UnsupportedVersion);
            EXPECT_NE(image.error().message.find("release"), std::string::npos) << image.error().message;
            EXPECT_NE(image.error().message.find("2000 format"), std::string::npos) << image.error().message;
        }
}
