#include "database_fixture.h"

#include "support/drawing_digest.h"

#include <random>

namespace {

using vndk::test::digestDifference;
using vndk::test::digestOf;

class Undo : public DatabaseTest {
protected:
    double endOf(AcDbObjectId id) { return AcDbObjectPointer<AcDbLine>(id)->endPoint().x; }
    void setEnd(AcDbObjectId id, double x) { AcDbObjectPointer<AcDbLine>(id, AcDb::kForWrite)->setEndPoint({x, 0, 0}); }
};

TEST_F(Undo, OneGroupIsOneStep) {
    AcDbUndoController& undo = database.undo();
    undo.beginGroup("LINE");
    const AcDbObjectId id = appendLine(1);
    undo.endGroup();
    undo.beginGroup("CHANGE");
    for (const double x : {2.0, 3.0, 4.0})
        setEnd(id, x);
    undo.endGroup();
    EXPECT_EQ(undo.undoName(), "CHANGE");
    ASSERT_TRUE(undo.undo());
    EXPECT_EQ(endOf(id), 1);
    ASSERT_TRUE(undo.undo());
    EXPECT_TRUE(id.isErased());
    EXPECT_FALSE(undo.undo());
    ASSERT_TRUE(undo.redo());
    ASSERT_TRUE(undo.redo());
    EXPECT_FALSE(undo.redo());
    EXPECT_EQ(endOf(id), 4);
}

TEST_F(Undo, NestedGroupsAreOneAndEmptyOnesNone) {
    AcDbUndoController& undo = database.undo();
    undo.beginGroup("OUTER");
    appendLine();
    undo.beginGroup("INNER");
    appendLine();
    undo.endGroup();
    EXPECT_FALSE(undo.undo()) << "a group is open";
    undo.endGroup();
    undo.beginGroup("EMPTY");
    undo.endGroup();
    EXPECT_EQ(undo.undoCount(), 1u);
    undo.undo();
    EXPECT_EQ(count(), 0u);
}

TEST_F(Undo, ANewChangeForgetsWhatCouldBeRedone) {
    AcDbUndoController& undo = database.undo();
    undo.beginGroup("A");
    appendLine();
    undo.endGroup();
    undo.undo();
    undo.beginGroup("B");
    appendLine();
    undo.endGroup();
    EXPECT_FALSE(undo.redo());
    EXPECT_EQ(count(), 1u);
}

TEST_F(Undo, MarksAreReachedWithWhatWasDoneBehindThem) {
    AcDbUndoController& undo = database.undo();
    EXPECT_FALSE(undo.undoToMark()) << "no mark";
    appendLine();
    undo.setMark();
    for (int i = 0; i < 3; ++i) {
        undo.beginGroup("LINE");
        appendLine();
        undo.endGroup();
    }
    ASSERT_TRUE(undo.undoToMark());
    EXPECT_EQ(count(), 1u);
}

TEST_F(Undo, HeaderVariablesComeBack) {
    AcDbUndoController& undo = database.undo();
    undo.beginGroup("SETVAR");
    database.setInsbase({1, 2, 3});
    undo.endGroup();
    undo.undo();
    EXPECT_EQ(database.insbase(), AcGePoint3d());
    undo.redo();
    EXPECT_EQ(database.insbase(), AcGePoint3d(1, 2, 3));
}

TEST_F(Undo, SwitchedOffNothingIsRecorded) {
    const AcDbObjectId id = appendLine(1);
    database.undo().clear();
    database.disableUndoRecording(true);
    setEnd(id, 7);
    database.disableUndoRecording(false);
    EXPECT_EQ(database.undo().undoCount(), 0u);
}

TEST_F(Undo, ALargeDictionaryFindsWhatItHolds) {
    const AcDbObjectId root = database.namedObjectsDictionaryId();
    const auto add = [&](int from, int to) {
        const AcDbObjectPointer<AcDbDictionary> open(root, AcDb::kForWrite);
        for (int i = from; i < to; ++i) {
            AcDbObjectId id;
            auto* const entry = new AcDbDictionary;
            ASSERT_EQ(open->setAt(("Entry" + std::to_string(i)).c_str(), entry, id), Acad::eOk);
            entry->close();
        }
    };
    const auto has = [&](const char* name) { return AcDbObjectPointer<AcDbDictionary>(root)->has(name); };
    add(0, 100);
    EXPECT_TRUE(has("ENTRY99"));
    database.undo().beginGroup("CHANGE");
    EXPECT_EQ(AcDbObjectPointer<AcDbDictionary>(root, AcDb::kForWrite)->remove("entry7"), Acad::eOk);
    add(100, 110);
    database.undo().endGroup();
    EXPECT_TRUE(!has("Entry7") && has("Entry8") && has("Entry109"));
    database.undo().undo();
    EXPECT_TRUE(has("Entry7") && has("Entry8") && !has("Entry100"));
    database.undo().redo();
    EXPECT_TRUE(!has("Entry7") && has("Entry8") && has("Entry109"));
}

TEST_F(Undo, ARandomHistoryRunsBackAndForthThroughTheSameStates) {
    constexpr unsigned kSeed = 20261122;
    std::mt19937 random(kSeed);
    std::vector<AcDbObjectId> lines;
    std::vector<vndk::test::DrawingDigest> states{digestOf(database)};
    for (int step = 0; step < 200; ++step) {
        database.undo().beginGroup("STEP");
        for (unsigned i = 0; i <= random() % 3; ++i) {
            const AcDbObjectId id = lines.empty() ? AcDbObjectId() : lines[random() % lines.size()];
            if (id.isNull() || random() % 3 == 0)
                lines.push_back(appendLine(static_cast<double>(step)));
            else if (const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite, true); random() % 3 == 0)
                line->erase(!line->isErased());
            else
                line->setColorIndex(static_cast<short>(random() % 256));
        }
        database.undo().endGroup();
        states.push_back(digestOf(database));
    }
    // Groups that changed nothing left no step: equal neighbours may collapse.
    size_t at = states.size() - 1;
    for (int round = 0; round < 2; ++round) {
        while (database.undo().undo()) {
            const vndk::test::DrawingDigest now = digestOf(database);
            while (at > 0 && states[at - 1] != now)
                --at;
            ASSERT_GT(at, 0u) << "a state that never was, seed " << kSeed;
            --at;
        }
        EXPECT_EQ(digestDifference(digestOf(database), states.front()), "");
        while (database.undo().redo()) {
        }
        EXPECT_EQ(digestDifference(digestOf(database), states.back()), "");
        at = states.size() - 1;
    }
}

} // namespace
