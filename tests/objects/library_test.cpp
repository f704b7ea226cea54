// The library's own messages.
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

} // namespace
