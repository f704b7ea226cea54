// The attribute dialog on a reference that is handed in open, as an insertion does; the dialog's sources are built into
// this program, and the loaded library lends its resources.
#include "attributes/edit_attribute_dlg.h"
#include "frame/module.h"
#include "module/edit_attribute_fixture.h"

using testing::ElementsAre;
using vndk::win32::UserScript;

HINSTANCE ModuleInstance() { return ::GetModuleHandleA("VNDKKeldmoor.arx"); }

CString LoadResString(UINT id) {
    char text[1000];
    return ::LoadStringA(ModuleInstance(), id, text, sizeof text) > 0 ? CString(text) : CString();
}

namespace {

class EditAttributeGiven : public EditAttributeTest {
protected:
    /// Opens the reference and hands it to a dialog, which a user then sees if there is a row.
    int give(AcDbObjectId id, AcDb::OpenMode mode, const std::function<void(UserScript&)>& steps) {
        VNDKBlockReference* reference = nullptr;
        EXPECT_EQ(acdbOpenObject(reference, id, mode), Acad::eOk);
        CEditAttributeDlg dlg(&frame);
        const bool rows = dlg.SelectBlock(reference);
        expectAllClosed();
        if (!rows)
            return 0;
        UserScript user(screen);
        user.in(kTitle).waitForWindow();
        steps(user);
        user.waitUntilGone();
        const auto result = static_cast<int>(dlg.DoModal());
        EXPECT_EQ(::GetActiveWindow(), frame.m_hWnd) << "the keyboard goes back to the window before";
        EXPECT_TRUE(user.finish()) << user.failure();
        return result;
    }
};

TEST_F(EditAttributeGiven, IsReadClosedAndWrittenLater) {
    define("A", "1");
    const AcDbObjectId reference = addIntelligent();
    for (const AcDb::OpenMode mode : {AcDb::kForRead, AcDb::kForWrite}) {
        EXPECT_EQ(give(reference, mode,
                       [](UserScript& user) {
                           clickValue(user, 0);
                           user.type("x").click(kOk);
                       }),
                  IDOK);
        EXPECT_THAT(texts(reference), ElementsAre("x"));
    }
    EXPECT_EQ(give(reference, AcDb::kForRead,
                   [](UserScript& user) {
                       clickValue(user, 0);
                       user.type("y").press(VK_ESCAPE);
                   }),
              IDCANCEL);
    EXPECT_THAT(defaults(reference), ElementsAre("x"));
}

TEST_F(EditAttributeGiven, IsClosedAlsoWhenThereIsNothingToEdit) {
    const AcDbObjectId reference = addIntelligent();
    EXPECT_EQ(give(reference, AcDb::kForWrite, {}), 0) << "no row";
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> writer(block, AcDb::kForWrite);
        VNDKBlockReference* open = nullptr;
        ASSERT_EQ(acdbOpenObject(open, reference, AcDb::kForWrite), Acad::eOk);
        CEditAttributeDlg dlg(&frame);
        EXPECT_FALSE(dlg.SelectBlock(open)) << "the block can't be read";
    }
    expectAllClosed();
    auto* const without = new VNDKBlockReference;
    const AcDbObjectId lost = append(database().modelSpaceId(), without);
    EXPECT_EQ(give(lost, AcDb::kForRead, {}), 0) << "there is no block";
}

TEST_F(EditAttributeGiven, MayGoWhileTheDialogIsUp) {
    define("A", "1");
    const AcDbObjectId reference = addIntelligent();
    give(reference, AcDb::kForRead, [&](UserScript& user) {
        user.call([&] { AcDbObjectPointer<AcDbEntity>(reference, AcDb::kForWrite)->erase(); });
        clickValue(user, 0);
        user.type("x").click(kOk);
    });
    EXPECT_EQ(host.documents().curDocument()->lockMode(), AcAp::kNotLocked);
}

} // namespace
