// The class of an object that isn't opened: what a whole space is asked for by those who look for one class in it.
#include "db/is_a.h"
#include "db/opaque.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_writer.h"
#include "objects/library.h"
#include "objects/support.h"

#include <map>

namespace {

class IsATest : public DatabaseTest {
protected:
    void SetUp() override {
        ASSERT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, nullptr), AcRx::kRetOK);
        const AcDbObjectId block = addBlock("DESK");
        line = appendLine().handle().value();
        damaged = appendLine().handle().value();
        text = append(new AcDbText({0, 0, 0}, "text")).handle().value();
        point = append(new AcDbPoint({1, 1, 1})).handle().value();
        append(new VNDKGripPoint);
        const AcDbObjectId plain = append(new AcDbBlockReference({1, 2, 3}, block));
        addXData(append(new AcDbBlockReference({1, 2, 3}, block)), "ELSEWHERE", "VNDKBlockReference");
        addXData(append(new AcDbBlockReference({1, 2, 3}, block)), kVndkApplicationName, "VNDKBlockReference");
        addXData(AcDbObjectId(database.findStub(AcDbHandle(text))), "ELSEWHERE", "VNDKAttribute");
        const AcDbObjectId tied = append(newAttribute("WIDTH", "900"));
        attribute = tied.handle().value();
        auto* const reference = new VNDKBlockReference;
        reference->setBlockTableRecordId(block);
        reference->appendAttribute(AcDbHardOwnershipId(tied));
        append(reference);
        insert = plain.handle().value();
        auto written = vndk::dwg::writeDrawing(database);
        ASSERT_TRUE(written) << written.error().message;
        file = std::move(*written);
    }

    /// Extended data that begins as those of a stand-in do, of a form that no class knows.
    void addXData(AcDbObjectId id, const char* application, const char* name) {
        const AcDbObjectId record = database.registerApplication(application);
        const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
        AcDbXDataGroup& group = object->packedXDataForWrite()->groups.emplace_back();
        group.application = record;
        AcDbXDataWriter writer(group.items);
        writer.text(name);
        writer.int16(99);
    }

    /// The drawing as it is in the file, but for one line whose fields end too late.
    std::unique_ptr<AcDbDatabase> reread() {
        auto read = std::make_unique<AcDbDatabase>(false);
        EXPECT_TRUE(vndk::dwg::readDrawing(*read, file, "drawing"));
        AcDbStub& stub = *read->findStub(AcDbHandle(damaged));
        record.assign(stub.bytes, stub.bytes + stub.byteCount);
        record[3] ^= 0x40;
        stub.bytes = record.data();
        return read;
    }

    static bool isDecoded(const AcDbDatabase& read, uint64_t handle) {
        return read.findStub(AcDbHandle(handle))->object != nullptr;
    }

    uint64_t line = 0, damaged = 0, text = 0, point = 0, insert = 0, attribute = 0;
    std::vector<uint8_t> file, record;
};

TEST_F(IsATest, TheAnswerIsTheObjectsOwn) {
    std::map<std::string, int> counts;
    for (const AcRxClass* cls : {AcDbBlockReference::desc(), VNDKBlockReference::desc(), AcDbText::desc(),
                                 VNDKAttribute::desc(), AcDbPoint::desc(), VNDKGripPoint::desc(), AcDbLine::desc(),
                                 AcDbOpaqueEntity::desc(), AcDbBlockTableRecord::desc(), AcDbEntity::desc()}) {
        const auto read = reread();
        for (AcDbStub& stub : read->stubs()) {
            const bool answer = acdbIsA(AcDbObjectId(&stub), cls);
            const AcDbObject* const object = read->objectOf(stub);
            EXPECT_EQ(answer, object && object->isA() == cls) << cls->name() << " " << stub.handle.value();
            EXPECT_EQ(answer, acdbIsA(AcDbObjectId(&stub), cls)) << "now that it is decoded";
            counts[cls->name()] += answer;
        }
    }
    EXPECT_EQ(counts["AcDbBlockReference"], 3);
    EXPECT_EQ(counts["VNDKBlockReference"], 1);
    EXPECT_EQ(counts["AcDbText"], 1);
    EXPECT_EQ(counts["VNDKAttribute"], 1);
    EXPECT_EQ(counts["AcDbPoint"], 1);
    EXPECT_EQ(counts["VNDKGripPoint"], 1);
    EXPECT_EQ(counts["AcDbLine"], 1);
    EXPECT_EQ(counts["AcDbOpaqueEntity"], 1);
    EXPECT_EQ(counts["AcDbEntity"], 0) << "exactly that class";
    EXPECT_FALSE(acdbIsA(AcDbObjectId(), AcDbLine::desc()));
}

TEST_F(IsATest, OnlyWhatCanBeOfTheClassIsDecoded) {
    const auto read = reread();
    for (AcDbStub& stub : read->stubs())
        acdbIsA(AcDbObjectId(&stub), AcDbBlockReference::desc());
    EXPECT_TRUE(isDecoded(*read, insert));
    for (const uint64_t handle : {line, damaged, text, point, attribute})
        EXPECT_FALSE(isDecoded(*read, handle)) << handle;
    for (AcDbStub& stub : read->stubs())
        acdbIsA(AcDbObjectId(&stub), VNDKGripPoint::desc());
    for (const uint64_t handle : {line, damaged, text, point, attribute})
        EXPECT_FALSE(isDecoded(*read, handle)) << handle;
    EXPECT_TRUE(read->warnings().empty()) << read->warnings().front();
}

TEST_F(IsATest, ErasedAndUndoneObjectsKeepTheirClass) {
    database.undo().beginGroup("DRAW");
    const AcDbObjectId id = appendLine();
    AcDbObjectPointer<AcDbLine>(id, AcDb::kForWrite)->erase();
    EXPECT_TRUE(acdbIsA(id, AcDbLine::desc()));
    database.undo().endGroup();
    ASSERT_TRUE(database.undo().undo());
    EXPECT_TRUE(acdbIsA(id, AcDbLine::desc()));
    ASSERT_TRUE(database.undo().redo());
    EXPECT_TRUE(acdbIsA(id, AcDbLine::desc()));
}

} // namespace
