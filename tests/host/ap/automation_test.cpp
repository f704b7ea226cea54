// Drawings opened through the program's automation object.
#include "ads/ads.h"
#include "ap/automation.h"
#include "host/host_fixture.h"
#include "mfc/afx.h"
#include "platform/temp_folder.h"
#include "win32/drive_map.h"

using namespace vndk;

namespace {

class AutomationTest : public HostTest {
protected:
    AutomationTest() { EXPECT_TRUE(win32::DriveMap::current().map('T', folder.path()).ok()); }

    /// What the call says when it fails; empty when the drawing is opened.
    std::string open(const char* path) {
        COleDispatchDriver program(acedGetAcadWinApp()->GetIDispatch(TRUE), TRUE);
        LPDISPATCH documents = nullptr;
        program.InvokeHelper(32, DISPATCH_PROPERTYGET, VT_DISPATCH, &documents, nullptr);
        COleDispatchDriver driver(documents, TRUE);
        VARIANT readOnly{};
        readOnly.vt = VT_BOOL;
        static const BYTE types[] = VTS_BSTR VTS_VARIANT;
        LPDISPATCH opened = nullptr;
        try {
            driver.InvokeHelper(0x60020005, DISPATCH_METHOD, VT_DISPATCH, &opened, types, path, &readOnly);
        } catch (COleDispatchException* problem) {
            std::string words(problem->m_strDescription);
            problem->Delete();
            return words;
        }
        EXPECT_TRUE(opened);
        if (opened)
            opened->Release();
        return {};
    }

    CWinApp application{"automation-test"};
    TempFolder folder;
};

TEST_F(AutomationTest, OpensTheDrawingOfAPathAndSaysWhyItCannot) {
    run("LINE 0,0 1,1\n\nSAVEAS 2000 T:\\T\xFCr.dwg\nNEW\n\n");
    const int count = host.documents().documentCount();
    EXPECT_EQ(open("T:\\T\xFCr.dwg"), "");
    EXPECT_STREQ(document().fileName(), "T:\\T\xFCr.dwg");
    // Open already, it becomes current.
    EXPECT_EQ(host.documents().documentCount(), count);

    const AcApDocument* const before = &document();
    EXPECT_NE(open("T:\\gone.dwg").find("gone.dwg"), std::string::npos);
    folder.write("junk.dwg", "no drawing at all");
    EXPECT_NE(open("T:\\junk.dwg").find("junk.dwg"), std::string::npos);
    EXPECT_EQ(&document(), before);
}

TEST_F(AutomationTest, RefusesWhatItDoesNotKnow) {
    IDispatch* const program = acedGetAcadWinApp()->GetIDispatch(FALSE);
    DISPPARAMS none{};
    VARIANT result{};
    EXPECT_EQ(program->Invoke(33, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr), DISP_E_MEMBERNOTFOUND);
    ASSERT_EQ(program->Invoke(32, 0, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr), S_OK);
    IDispatch* const documents = result.pdispVal;
    EXPECT_EQ(documents->Invoke(0x60020005, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
              DISP_E_BADPARAMCOUNT);
    VARIANT number{};
    number.vt = VT_I4;
    DISPPARAMS wrong{&number, nullptr, 1, 0};
    UINT bad = 9;
    EXPECT_EQ(documents->Invoke(0x60020005, 0, DISPATCH_METHOD, &wrong, nullptr, nullptr, &bad), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(bad, 0U);
    documents->Release();
}

TEST_F(AutomationTest, GivesTheWindowsThatThereAre) {
    EXPECT_EQ(acedGetAcadFrame(), nullptr);
    EXPECT_EQ(acedGetAcadDockCmdLine(), nullptr);
    EXPECT_EQ(acedGetAcadWinApp(), &application);
}

} // namespace
