#pragma once
// A fresh drawing and short ways to put things into it.

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/open.h"
#include "db/stub.h"
#include "db/text.h"

#include <gtest/gtest.h>

class DatabaseTest : public ::testing::Test {
protected:
    DatabaseTest() { database.undo().setEnabled(true); }

    /// Appends to a space or block and closes.
    AcDbObjectId append(AcDbEntity* entity, AcDbObjectId block = {}) {
        AcDbObjectPointer<AcDbBlockTableRecord> record(block.isNull() ? database.modelSpaceId() : block,
                                                       AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        return id;
    }

    AcDbObjectId appendLine(double x = 1) { return append(new AcDbLine({0, 0, 0}, {x, 1, 0})); }

    template <class Table>
    static AcDbObjectId addRecord(AcDbObjectId tableId, typename Table::Record* record, const char* name) {
        AcDbObjectPointer<Table> table(tableId, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(record->setName(name), Acad::eOk) << name;
        EXPECT_EQ(table->add(id, record), Acad::eOk) << name;
        record->close();
        return id;
    }

    AcDbObjectId addBlock(const char* name) {
        return addRecord<AcDbBlockTable>(database.blockTableId(), new AcDbBlockTableRecord, name);
    }

    /// Live entities of a block, model space by default.
    size_t count(AcDbObjectId block = {}) {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block.isNull() ? database.modelSpaceId() : block);
        size_t live = 0;
        for (const AcDbObjectId id : record->entities())
            live += !id.isErased();
        return live;
    }

    /// Every object has been closed by whoever opened it.
    static void expectAllClosed(const AcDbDatabase& database) {
        for (const AcDbStub& stub : database.stubs()) {
            EXPECT_EQ(stub.readers, 0) << "handle " << stub.handle.value();
            EXPECT_FALSE(stub.has(kStubWriter)) << "handle " << stub.handle.value();
        }
    }

    void TearDown() override { expectAllClosed(database); }

    AcDbDatabase database;
};
