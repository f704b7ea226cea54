// The library's own messages.
#include "dwg/drawing_writer.h"
#include "objects/library.h"
#include "objects/support.h"

namespace {

constexpr const char* kClasses[] = {"VNDKBlockReference", "VNDKAttribute", "VNDKAttributeDefinition", "VNDKGripPoint"};

void expectRegistered(bool registered) {
    for (const char* name : kClasses) {
        EXPECT_EQ(acdbFindStandIn(kVndkApplicationName, name) != nullptr, registered) << name;
        EXPECT_EQ(acrxFindClass(name) != nullptr, registered) << name;
    }
}

TEST(ObjectLibrary, RegistersItsClassesAndTakesThemBackEachTime) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, nullptr), AcRx::kRetOK);
        expectRegistered(true);
        EXPECT_EQ(acdbStandInOf(VNDKAttribute::desc())->ordinary, AcDbText::desc());
        EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr), AcRx::kRetOK);
        expectRegistered(false);
    }
}

TEST(ObjectLibrary, StaysWhileAnObjectLivesEvenInUndo) {
    acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
    {
        AcDbDatabase database;
        database.undo().setEnabled(true);
        database.undo().beginGroup("MAKE");
        {
            const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
            auto* const grip = new VNDKGripPoint;
            ASSERT_EQ(space->appendAcDbEntity(grip), Acad::eOk);
            grip->close();
        }
        database.undo().endGroup();
        ASSERT_TRUE(database.undo().undo());
        EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr), AcRx::kRetError);
        expectRegistered(true);
    }
    EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr), AcRx::kRetOK);
    expectRegistered(false);
}

/// Registered in a step of its own, it would stand in the table twice as soon as an undo brings a purged one back.
TEST(ObjectLibrary, TheApplicationComesAndGoesWithItsFirstObject) {
    acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
    {
        AcDbDatabase database;
        const auto isRegistered = [&] {
            return AcDbObjectPointer<AcDbRegAppTable>(database.regAppTableId())->has(kVndkApplicationName);
        };
        database.undo().setEnabled(true);
        database.undo().beginGroup("MAKE");
        {
            const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
            auto* const grip = new VNDKGripPoint;
            ASSERT_EQ(space->appendAcDbEntity(grip), Acad::eOk);
            grip->close();
        }
        database.undo().endGroup();
        EXPECT_TRUE(isRegistered());
        ASSERT_TRUE(database.undo().undo());
        EXPECT_FALSE(isRegistered());
        const size_t objects = database.stubs().size();
        EXPECT_TRUE(vndk::dwg::writeDrawing(database));
        EXPECT_EQ(database.stubs().size(), objects) << "saving registers nothing for what is undone";
        ASSERT_TRUE(database.undo().redo());
        EXPECT_TRUE(isRegistered());
    }
    EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr), AcRx::kRetOK);
}

} // namespace
