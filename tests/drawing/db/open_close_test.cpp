#include "database_fixture.h"

namespace {

class OpenClose : public DatabaseTest {};

TEST_F(OpenClose, ManyReadersOrOneWriter) {
    const AcDbObjectId id = appendLine();
    AcDbObject* first = nullptr;
    AcDbObject* second = nullptr;
    ASSERT_EQ(acdbOpenAcDbObject(first, id, AcDb::kForRead), Acad::eOk);
    ASSERT_EQ(acdbOpenAcDbObject(second, id, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(first, second) << "readers share the object";
    AcDbObject* refused = first;
    EXPECT_EQ(acdbOpenAcDbObject(refused, id, AcDb::kForWrite), Acad::eWasOpenForRead);
    EXPECT_EQ(refused, nullptr);
    EXPECT_EQ(first->upgradeOpen(), Acad::eHadMultipleReaders);
    EXPECT_EQ(second->close(), Acad::eOk);
    EXPECT_EQ(first->upgradeOpen(), Acad::eOk);
    EXPECT_EQ(acdbOpenAcDbObject(refused, id, AcDb::kForRead), Acad::eWasOpenForWrite);
    EXPECT_EQ(acdbOpenAcDbObject(refused, id, AcDb::kForWrite), Acad::eWasOpenForWrite);
    EXPECT_EQ(first->downgradeOpen(), Acad::eOk);
    EXPECT_EQ(acdbOpenAcDbObject(second, id, AcDb::kForRead), Acad::eOk);
    second->close();
    EXPECT_EQ(first->close(), Acad::eOk);
    EXPECT_EQ(first->close(), Acad::eInvalidOpenState) << "closed already";
}

TEST_F(OpenClose, TheReaderBeyondTheLastIsRefused) {
    const AcDbObjectId id = appendLine();
    AcDbObject* object = nullptr;
    for (int i = 0; i < 256; ++i)
        ASSERT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eOk) << i;
    AcDbObject* one = object;
    EXPECT_EQ(acdbOpenAcDbObject(object, id, AcDb::kForRead), Acad::eAtMaxReaders);
    for (int i = 0; i < 256; ++i)
        one->close();
}

TEST_F(OpenClose, SettersRefuseReaders) {
    const AcDbObjectId id = appendLine(5);
    const AcDbObjectPointer<AcDbLine> line(id);
    EXPECT_EQ(line->setEndPoint({9, 9, 9}), Acad::eNotOpenForWrite);
    EXPECT_EQ(line->setColorIndex(3), Acad::eNotOpenForWrite);
    EXPECT_EQ(line->erase(), Acad::eNotOpenForWrite);
    EXPECT_EQ(line->endPoint(), AcGePoint3d(5, 1, 0));
    EXPECT_EQ(line->colorIndex(), kAcDbColorByLayer);
}

TEST_F(OpenClose, ErasedObjectsOpenOnlyWhenAskedFor) {
    const AcDbObjectId id = appendLine();
    {
        const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
        EXPECT_EQ(line->erase(false), Acad::eWasNotErased);
        EXPECT_EQ(line->erase(), Acad::eOk);
        EXPECT_EQ(line->erase(), Acad::eWasErased);
    }
    AcDbLine* line = nullptr;
    EXPECT_EQ(acdbOpenObject(line, id), Acad::eWasErased);
    ASSERT_EQ(acdbOpenObject(line, id, AcDb::kForWrite, true), Acad::eOk);
    EXPECT_EQ(line->erase(false), Acad::eOk);
    line->close();
    EXPECT_EQ(count(), 1u);
}

TEST_F(OpenClose, CheckedOpenClosesAnObjectOfAnotherClass) {
    const AcDbObjectId id = appendLine();
    AcDbCircle* circle = nullptr;
    EXPECT_EQ(acdbOpenObject(circle, id), Acad::eNotThatKindOfClass);
    EXPECT_EQ(circle, nullptr);
    EXPECT_EQ(acdbOpenObject(circle, AcDbObjectId()), Acad::eNullObjectId);
}

TEST_F(OpenClose, IteratorsKeepTheirPromises) {
    AcDbObjectId ids[4];
    for (auto& id : ids)
        id = appendLine();
    for (const int erased : {0, 3})
        AcDbObjectPointer<AcDbLine>(ids[erased], AcDb::kForWrite)->erase();
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
    AcDbBlockTableRecordIterator* made = nullptr;
    ASSERT_EQ(space->newIterator(made, false, true), Acad::eOk);
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(made);
    AcDbObjectId id;
    ASSERT_EQ(iterator->getEntityId(id), Acad::eOk);
    EXPECT_EQ(id, ids[2]) << "the last one that isn't erased";
    iterator->step(true, true);
    EXPECT_TRUE(iterator->done()) << "nothing behind the last";
    iterator->start(true, true);
    iterator->getEntityId(id);
    EXPECT_EQ(id, ids[1]);
    iterator->step(false, false);
    iterator->getEntityId(id);
    EXPECT_EQ(id, ids[0]) << "erased ones are met when asked for";
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(iterator->getEntity(entity, AcDb::kForRead), Acad::eWasErased);
    EXPECT_EQ(entity, nullptr);
}

/// Writes down what it is told.
class Recorder : public AcDbDatabaseReactor {
public:
    void objectAppended(const AcDbDatabase*, const AcDbObject*) override { log += "appended "; }
    void objectUnAppended(const AcDbDatabase*, const AcDbObject*) override { log += "unappended "; }
    void objectReAppended(const AcDbDatabase*, const AcDbObject*) override { log += "reappended "; }
    void objectOpenedForModify(const AcDbDatabase*, const AcDbObject*) override { log += "opened "; }
    void objectModified(const AcDbDatabase*, const AcDbObject* object) override {
        if (object->isKindOf(AcDbEntity::desc()))
            log += "modified ";
    }
    void objectErased(const AcDbDatabase*, const AcDbObject*, bool erased) override {
        log += erased ? "erased " : "unerased ";
    }
    std::string log;
};

TEST_F(OpenClose, ReactorsAreToldInOrder) {
    Recorder recorder;
    database.addReactor(&recorder);
    database.undo().beginGroup("LINE");
    const AcDbObjectId id = appendLine();
    database.undo().endGroup();
    EXPECT_EQ(recorder.log, "appended ");
    recorder.log.clear();
    {
        const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
        EXPECT_EQ(recorder.log, "") << "opening for write is no change";
        line->setEndPoint({2, 2, 2});
        line->setColorIndex(2);
        EXPECT_EQ(recorder.log, "opened ");
    }
    EXPECT_EQ(recorder.log, "opened modified ");
    recorder.log.clear();
    AcDbObjectPointer<AcDbLine>(id, AcDb::kForWrite)->erase();
    EXPECT_EQ(recorder.log, "erased ");
    recorder.log.clear();
    while (database.undo().undo()) {
    }
    while (database.undo().redo()) {
    }
    EXPECT_EQ(recorder.log, "unerased modified unappended reappended modified erased ");
    database.removeReactor(&recorder);
}

/// Takes itself off the list, and another, while being told.
class Leaving : public AcDbDatabaseReactor {
public:
    void objectAppended(const AcDbDatabase* database, const AcDbObject*) override {
        ++told;
        auto* const watched = const_cast<AcDbDatabase*>(database);
        watched->removeReactor(this);
        if (other)
            watched->removeReactor(other);
    }
    AcDbDatabaseReactor* other = nullptr;
    int told = 0;
};

TEST_F(OpenClose, ReactorsMayLeaveWhileTheyAreTold) {
    Leaving first;
    Leaving second;
    first.other = &second;
    database.addReactor(&first);
    database.addReactor(&second);
    appendLine();
    appendLine();
    EXPECT_EQ(first.told, 1);
    EXPECT_EQ(second.told, 0);
}

} // namespace
