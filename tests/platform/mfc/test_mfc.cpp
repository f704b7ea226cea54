// Texts, class information, the extension libraries' resource chain, and the application's profile.
#include "mfc/afx.h"
#include "platform/temp_folder.h"
#include "win32/loader.h"

#include <gtest/gtest.h>

using namespace vndk::win32;

namespace {

class ModuleState : public testing::Test {
protected:
    void SetUp() override { AfxSetModuleState(&state); }
    void TearDown() override { AfxSetModuleState(nullptr); }
    AFX_MODULE_STATE state;
};

class CRow : public CObject {
    DECLARE_DYNAMIC(CRow)
};
class CWideRow : public CRow {
    DECLARE_DYNAMIC(CWideRow)
};
IMPLEMENT_DYNAMIC(CRow, CObject)
IMPLEMENT_DYNAMIC(CWideRow, CRow)

} // namespace

TEST(String, PartsAreClippedToTheText) {
    const CString text("plan.dwg");
    const struct {
        CString got;
        const char* wanted;
    } cases[] = {{text.Left(4), "plan"},
                 {text.Left(-1), ""},
                 {text.Left(99), "plan.dwg"},
                 {text.Right(3), "dwg"},
                 {text.Right(99), "plan.dwg"},
                 {text.Mid(5), "dwg"},
                 {text.Mid(99), ""},
                 {text.Mid(-3, 2), "pl"},
                 {text.Mid(2, -1), ""},
                 {text.Mid(6, 99), "wg"},
                 {text.SpanExcluding("."), "plan"}};
    for (const auto& row : cases)
        EXPECT_STREQ(row.got, row.wanted);
    EXPECT_EQ(text.Find("dwg", 6), -1);
    EXPECT_EQ(text.ReverseFind('.'), 4);
    EXPECT_EQ(text.Find('x'), -1);
    EXPECT_EQ(CString(static_cast<LPCSTR>(nullptr)).GetLength(), 0);
}

TEST(String, CaseFollowsTheCodePage) {
    CString text("\xE4"
                 "b\xDF\x9A");
    text.MakeUpper();
    EXPECT_STREQ(text, "\xC4"
                       "B\xDF\x8A");
    EXPECT_EQ(text.CompareNoCase("\xE4"
                                 "B\xDF\x9A"),
              0);
    EXPECT_GT(CString("b").CompareNoCase("A"), 0);
    EXPECT_LT(CString("a").CompareNoCase("AB"), 0);
}

TEST(String, ChangesThatReadTheTextItself) {
    CString text("a-b-c");
    EXPECT_EQ(text.Replace("-", "--"), 2);
    EXPECT_STREQ(text, "a--b--c");
    EXPECT_EQ(text.Replace("", "x"), 0);
    EXPECT_EQ(text.Replace("--", nullptr), 2);
    text.Format("%s%s %d", static_cast<LPCSTR>(text), "!", 7);
    EXPECT_STREQ(text, "abc! 7");
    text += text;
    EXPECT_STREQ(text, "abc! 7abc! 7");
    text.Format("%s", std::string(5000, 'x').c_str());
    EXPECT_EQ(text.GetLength(), 5000);
}

TEST(String, BuffersAreTakenOverToTheirEnd) {
    CString text("old");
    char* buffer = text.GetBuffer(20);
    EXPECT_STREQ(buffer, "old");
    std::snprintf(buffer, 21, "%s", "twelve chars");
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 12);
    text.GetBuffer(5);
    text.ReleaseBuffer(6);
    EXPECT_STREQ(text, "twelve");
}

TEST(String, TrimsBothEnds) {
    CString text(" \t a b \r\n");
    text.TrimLeft();
    text.TrimRight();
    EXPECT_STREQ(text, "a b");
    CString blank("  ");
    blank.TrimLeft();
    EXPECT_TRUE(blank.IsEmpty());
    CString zeros("1.500");
    zeros.TrimRight('0');
    EXPECT_STREQ(zeros, "1.5");
}

TEST(StringArray, GrowsAndTakesItsOwnElements) {
    CStringArray array;
    array.Add("first");
    array.SetAtGrow(2, array[0]);
    array.InsertAt(0, array[2], 2);
    array.Append(array);
    EXPECT_EQ(array.GetSize(), 10);
    EXPECT_STREQ(array[9], "first");
    EXPECT_STREQ(array[8], "");
    array.RemoveAt(0, 9);
    EXPECT_STREQ(array[array.GetUpperBound()], "first");
}

TEST(RuntimeClass, KnowsItsBasesOnly) {
    CRow row;
    CWideRow wide;
    EXPECT_TRUE(wide.IsKindOf(RUNTIME_CLASS(CRow)));
    EXPECT_FALSE(row.IsKindOf(RUNTIME_CLASS(CWideRow)));
    EXPECT_EQ(DYNAMIC_DOWNCAST(CWideRow, &row), nullptr);
    EXPECT_EQ(DYNAMIC_DOWNCAST(CRow, &wide), &wide);
}

TEST_F(ModuleState, ExtensionLibrariesHangInTheChainUntilTheyEnd) {
    const LoadResult probe = loadLibrary(PROBE_FILE);
    ASSERT_TRUE(probe.status.ok()) << probe.status.message();
    CString text("old");
    EXPECT_FALSE(text.LoadString(101));
    EXPECT_TRUE(text.IsEmpty());

    AFX_EXTENSION_MODULE record{};
    EXPECT_FALSE(AfxInitExtensionModule(record, nullptr));
    ASSERT_TRUE(AfxInitExtensionModule(record, probe.instance));
    new CDynLinkLibrary(record, FALSE); // Deleted by AfxTermExtensionModule.
    EXPECT_TRUE(text.LoadString(101));
    EXPECT_STREQ(text, "Vondrake");
    EXPECT_EQ(AfxFindResourceHandle("TIPS", RT_RCDATA), probe.instance);
    EXPECT_EQ(AfxFindResourceHandle("none", RT_RCDATA), nullptr);

    AFX_EXTENSION_MODULE other{TRUE, nullptr, nullptr};
    AfxTermExtensionModule(other);
    EXPECT_NE(state.m_pFirstLibrary, nullptr) << "another library's end took this one's link";
    AfxTermExtensionModule(record);
    EXPECT_EQ(state.m_pFirstLibrary, nullptr);
    EXPECT_EQ(record.bInitialized, FALSE);
    EXPECT_FALSE(text.LoadString(101));
    EXPECT_TRUE(freeLibrary(probe.instance));
}

TEST_F(ModuleState, TheProfileLivesInAFileThatIsMadeWhenNeeded) {
    const TempFolder folder;
    CWinApp app;
    EXPECT_EQ(AfxGetApp(), &app);
    app.SetProfileFile((folder / "new/deep/v.ini").c_str());
    EXPECT_EQ(app.GetProfileInt("Vondrake", "DoNotShow", 0), 0u);
    EXPECT_TRUE(app.WriteProfileInt("Vondrake", "DoNotShow", -1));
    EXPECT_EQ(static_cast<int>(app.GetProfileInt("vondrake", "donotshow", 0)), -1);
    EXPECT_TRUE(app.WriteProfileString("Vondrake", "Path", "C:\\a b"));
    EXPECT_STREQ(app.GetProfileString("Vondrake", "Path"), "C:\\a b");
    EXPECT_STREQ(app.GetProfileString("Vondrake", "None", "fallback"), "fallback");
    EXPECT_FALSE(app.WriteProfileString("Vondrake", "Path", "two\nlines"));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    app.SetProfileFile("/proc/none/v.ini");
    EXPECT_FALSE(app.WriteProfileInt("Vondrake", "DoNotShow", 1));
}
