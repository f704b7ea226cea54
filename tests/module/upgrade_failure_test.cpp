// Upgrades during which the space refuses an entity, as one that is full or held by somebody else would.
//
// The functions defined below stand before the library's own in every look-up of the process.
#include "module/watcher_fixture.h"

#include <dlfcn.h>

namespace {

constexpr int kNone = -1;

/// Counts down with each Intelligent entity that is appended; the one that meets 0 is refused.
int g_refused = kNone;

bool isRefused(const AcDbEntity* entity) {
    return (VNDKBlockReference::cast(entity) || VNDKAttribute::cast(entity)) && g_refused > kNone && g_refused-- == 0;
}

class UpgradeFailureTest : public WatcherTest {
protected:
    void SetUp() override {
        WatcherTest::SetUp();
        define("A", "one");
        define("B", "two");
        database().setAttreq(0);
    }
    void insertRefusing(int entity, const char* line) {
        g_refused = entity;
        run(line);
        EXPECT_EQ(g_refused, kNone) << "it came to the refusal";
        EXPECT_EQ(attreq(), 0);
        expectAllClosed();
    }
};

TEST_F(UpgradeFailureTest, AfterAFailedLastAttributeThePlainReferenceStaysBesideWhatWasBuilt) {
    insertRefusing(2, "INSERT 1,1");
    EXPECT_EQ(drawn(), "plain1 intelligent1 'one'");
    {
        const AcDbObjectPointer<VNDKBlockReference> made(modelSpace()[1]);
        EXPECT_EQ(made->attributeCount(), 1);
    }
    run("LINE 0,0 1,1\n");
    run("BLOCK X 0,0 L\n");
    EXPECT_EQ(drawn(), "intelligent1 'one' intelligent1 'one' 'two'") << "it doesn't count as replaced";
    for (int i = 0; i < 3; ++i)
        run("U");
    EXPECT_EQ(drawn(), "");
}

TEST_F(UpgradeFailureTest, AnAttributeBeforeTheLastMayBeMissing) {
    insertRefusing(1, "INSERT 1,1");
    EXPECT_EQ(drawn(), "intelligent1 'two'");
    const AcDbObjectPointer<VNDKBlockReference> made(modelSpace()[0]);
    ASSERT_EQ(made->attributeCount(), 1);
    EXPECT_EQ(made->getAttribute(0), modelSpace()[1]);
}

TEST_F(UpgradeFailureTest, TheLastAttributeDecidesAlsoWhereTheReferenceItselfFailed) {
    insertRefusing(0, "INSERT 1,1");
    EXPECT_EQ(drawn(), "'one' 'two'");
    // Nor does a dialog come up for a reference that isn't there.
    run("(setvar \"ATTDIA\" 1)");
    database().setAttreq(1);
    g_refused = 0;
    run("INSERT 2,2");
    EXPECT_EQ(drawn(), "'one' 'two' 'one' 'two'");
    EXPECT_EQ(attreq(), 1);
}

TEST_F(UpgradeFailureTest, WithoutAttributesTheReferenceDecides) {
    block = addBlock("BARE");
    insertRefusing(0, "INSERT 1,1");
    EXPECT_EQ(drawn(), "plain1");
    run("INSERT 2,2");
    EXPECT_EQ(drawn(), "plain1 intelligent2");
}

TEST_F(UpgradeFailureTest, ThePlainReferenceIsClosedOnceAndNoMore) {
    // Somebody reads it all the while: a close too many would be his.
    for (const int refused : {kNone, 0, 2}) {
        const AcDbObjectId plain = addPlain({1, 0, 0});
        const AcDbObjectPointer<AcDbEntity> reader(plain);
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandWillStart("PURGE"); });
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandCancelled("PURGE"); });
        g_refused = refused;
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandEnded("INSERT"); });
        EXPECT_EQ(plain.stub()->readers, 1) << refused;
        // And when it is the one that was replaced last, or remembered.
        host.editor().reactors().tell([](AcEditorReactor& r) { r.commandEnded("INSERT"); });
        EXPECT_EQ(plain.stub()->readers, 1) << refused;
    }
}

} // namespace

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
    using Function = Acad::ErrorStatus(AcDbBlockTableRecord*, AcDbObjectId&, AcDbEntity*);
    static auto* const hidden = reinterpret_cast<Function*>(
        dlsym(RTLD_NEXT, "_ZN20AcDbBlockTableRecord16appendAcDbEntityER12AcDbObjectIdP10AcDbEntity"));
    return isRefused(entity) ? Acad::eOutOfMemory : hidden(this, id, entity);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}
