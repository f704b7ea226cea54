#pragma once
// A host with the module loaded, an empty drawing and a block to insert. What a test does goes over the command line.

#include "db/block_reference.h"
#include "db/database.h"
#include "db/stub.h"
#include "db/text.h"
#include "ed/host.h"
#include "objects/attribute.h"
#include "objects/attribute_definition.h"
#include "objects/block_reference.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

class ModuleTest : public testing::Test {
protected:
    ModuleTest() {
        host.setPrint([this](std::string_view text) { output += text; });
        host.linker().addSupportFolder(MODULE_FOLDER);
        host.documents().appContextNewDocument(nullptr);
    }

    void SetUp() override { loadModule(); }
    void TearDown() override { expectAllClosed(); }

    void loadModule() { ASSERT_TRUE(acrxLoadModule("VNDKKeldmoor.arx", false)) << host.linker().lastError(); }

    /// Runs whole lines and gives what they printed.
    std::string run(const std::string& lines) {
        output.clear();
        problem = host.runText(lines + "\n");
        return output;
    }

    AcDbDatabase& database() { return *host.documents().curDocument()->database(); }

    AcDbObjectId addBlock(const char* name, AcGePoint3d base = {}) {
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId(), AcDb::kForWrite);
        auto* const record = new AcDbBlockTableRecord;
        EXPECT_EQ(record->setName(name), Acad::eOk);
        record->setOrigin(base);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        return id;
    }

    AcDbObjectId addStyle(const char* name) {
        const AcDbObjectPointer<AcDbTextStyleTable> table(database().textStyleTableId(), AcDb::kForWrite);
        auto* const record = new AcDbTextStyleTableRecord;
        EXPECT_EQ(record->setName(name), Acad::eOk);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        return id;
    }

    static AcDbObjectId append(AcDbObjectId record, AcDbEntity* entity) {
        const AcDbObjectPointer<AcDbBlockTableRecord> open(record, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(open->appendAcDbEntity(id, entity), Acad::eOk);
        entity->close();
        return id;
    }

    /// Ids of a record's entities that aren't erased.
    static std::vector<AcDbObjectId> entities(AcDbObjectId record) {
        std::vector<AcDbObjectId> ids;
        const AcDbObjectPointer<AcDbBlockTableRecord> open(record);
        for (const AcDbObjectId id : open->entities())
            if (!id.isErased())
                ids.push_back(id);
        return ids;
    }
    std::vector<AcDbObjectId> modelSpace() { return entities(database().modelSpaceId()); }
    std::vector<AcDbObjectId> paperSpace() { return entities(database().paperSpaceId()); }

    /// Nobody holds an object of an open drawing.
    void expectAllClosed() {
        const std::unique_ptr<AcApDocumentIterator> it(host.documents().newAcApDocumentIterator());
        for (; !it->done(); it->step()) {
            for (const AcDbStub& stub : it->document()->database()->stubs()) {
                EXPECT_EQ(stub.readers, 0) << "handle " << std::hex << stub.handle.value();
                EXPECT_FALSE(stub.has(kStubWriter)) << "handle " << std::hex << stub.handle.value();
            }
        }
    }

    std::string output;
    std::optional<vndk::host::Problem> problem;
    vndk::host::Host host;
};
