// The preview window, run modally while a user works in it.
#include "previews/preview_dlg.h"

#include "db/block_table.h"
#include "db/curves.h"
#include "module/palette/palette_fixture.h"
#include "resources/resource.h"
#include "win32/user_script.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::IsEmpty;
using vndk::win32::UserScript;

namespace {

constexpr const char* kTitle = "Preview";
constexpr int kControl = 1100;

class PreviewDlgTest : public PaletteTest {
protected:
    PreviewDlgTest() {
        host.setAlert([this](std::string_view text) { alerts.emplace_back(text); });
        host.runText("LINE 0,0 40,30\n\n-BLOCK DOOR 0,0 ALL\n\n");
    }

    static HWND window() { return ::FindWindowA(nullptr, kTitle); }
    static HWND item(int id) { return ::GetDlgItem(window(), id); }
    static std::string textOf(int id) {
        char text[64] = "";
        ::GetWindowTextA(item(id), text, sizeof text);
        return text;
    }
    static CGsPreviewCtrl& control() {
        return *dynamic_cast<CGsPreviewCtrl*>(CWnd::FromHandlePermanent(item(kControl)));
    }
    /// In client coordinates of the dialog.
    static CRect placeOf(int id) {
        CRect rect;
        ::GetWindowRect(item(id), rect);
        ::MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }

    int run(const std::function<void(UserScript&)>& steps, const char* name = "DOOR", const char* path = "") {
        CPreviewDlg dialog(&parent);
        if (*path)
            dialog.SetDrawing(name, path);
        else
            dialog.SetBlock(name);
        UserScript user(screen);
        user.in(kTitle);
        steps(user);
        const INT_PTR result = dialog.DoModal();
        EXPECT_TRUE(user.finish()) << user.failure();
        return static_cast<int>(result);
    }
    int modeFor(int stored) {
        application.WriteProfileInt("Vondrake", "nInterfaceMode", stored);
        int mode = 0;
        run([&](UserScript& user) { user.waitForWindow().call([&] { mode = control().mMode; }).click(IDCANCEL); });
        return mode;
    }
    void saveDrawing(const char* name) {
        AcDbDatabase& database = *host.documents().curDocument()->database();
        host.runText("LINE 0,0 40,30\n\n");
        ASSERT_EQ(database.saveAs((folder / (std::string("t/") + name)).c_str()), Acad::eOk);
    }

    std::vector<std::string> alerts;
};

TEST_F(PreviewDlgTest, ShowABlockAndWhereEverythingStands) {
    run([](UserScript& user) {
        user.waitForWindow()
            .call([] {
                CRect client;
                ::GetClientRect(window(), client);
                const int w = client.Width();
                const int h = client.Height();
                EXPECT_EQ(placeOf(IDC_TABS), CRect(2, 4, w - 80, h - 4));
                EXPECT_EQ(placeOf(kControl), CRect(5, 7, w - 83, h - 27));
                EXPECT_EQ(placeOf(IDC_OPEN), CRect(w - 73, 5, w - 4, 29));
                EXPECT_EQ(placeOf(IDCANCEL), CRect(w - 73, 35, w - 4, 59));
                EXPECT_EQ(placeOf(IDC_ZOOM), CRect(w - 73, 64, w - 51, 86));
                EXPECT_EQ(placeOf(IDC_PAN), CRect(w - 50, 64, w - 28, 86));
                EXPECT_EQ(placeOf(IDC_ORBIT), CRect(w - 27, 64, w - 5, 86));
                EXPECT_FALSE(::IsWindowVisible(item(IDC_HIDDEN)));
                EXPECT_EQ(textOf(IDC_OPEN), "Insert");
                EXPECT_EQ(::SendMessageA(item(IDC_TABS), TCM_GETITEMCOUNT, 0, 0), 1);
                EXPECT_STREQ(control().ShownName(), "DOOR");
                EXPECT_NE(::SendMessageA(window(), WM_GETICON, ICON_SMALL, 0), 0);
            })
            .click(IDCANCEL)
            .waitUntilGone();
    });
    EXPECT_TRUE(::IsWindowEnabled(parent));
}

TEST_F(PreviewDlgTest, KeepTheModeForTheNextTime) {
    int first = 0;
    run([&](UserScript& user) {
        user.waitForWindow().call([&] { first = control().mMode; }).click(IDC_ORBIT);
        user.expect("the mode is written at once", [&] { return profileInt("nInterfaceMode") == 1; });
        user.call([] { EXPECT_EQ(control().mMode, CGsPreviewCtrl::kOrbit); }).click(IDC_PAN).click(IDCANCEL);
    });
    EXPECT_EQ(first, CGsPreviewCtrl::kZoom) << "without a stored one";
    EXPECT_EQ(profileInt("nInterfaceMode"), 2);
    EXPECT_EQ(modeFor(2), CGsPreviewCtrl::kPan);
    EXPECT_EQ(modeFor(3), CGsPreviewCtrl::kZoom);
    for (const int stored : {0, 1, 4, -1})
        EXPECT_EQ(modeFor(stored), CGsPreviewCtrl::kOrbit) << stored;
}

TEST_F(PreviewDlgTest, KeepItsPlaceWhenItIsResized) {
    run([](UserScript& user) {
        user.waitForWindow().call([] { ::SetWindowPos(window(), nullptr, 210, 220, 500, 300, SWP_NOZORDER); });
        user.call([] { ::SetWindowPos(window(), nullptr, 230, 220, 0, 0, SWP_NOZORDER | SWP_NOSIZE); });
        user.click(IDCANCEL);
    });
    EXPECT_EQ(profileInt("sizeWidth3"), 500);
    EXPECT_EQ(profileInt("sizeHeight3"), 300);
    EXPECT_EQ(profileInt("nTopLeftX3"), 210) << "a mere move writes nothing";
    CRect again;
    run([&](UserScript& user) {
        user.waitForWindow().call([&] { ::GetWindowRect(window(), again); }).click(IDCANCEL);
    });
    EXPECT_EQ(again, CRect(210, 220, 710, 520));

    // Opening writes what it made of a size that is too large: the least one.
    application.WriteProfileInt("Vondrake", "sizeWidth3", 1100);
    run([](UserScript& user) { user.waitForWindow().click(IDCANCEL); });
    EXPECT_EQ(profileInt("sizeWidth3"), 200);
    EXPECT_EQ(profileInt("sizeHeight3"), 300);
}

TEST_F(PreviewDlgTest, ShowEverythingAfterTheCornerWasDragged) {
    const auto picture = [this] {
        settle();
        CRect client;
        ::GetClientRect(window(), client);
        std::vector<std::uint32_t> pixels;
        for (int y = 0; y < client.bottom; ++y)
            for (int x = 0; x < client.right; ++x)
                pixels.push_back(pixel(onScreen(window(), x, y).x, onScreen(window(), x, y).y));
        return pixels;
    };
    for (const POINT way : {POINT{90, 60}, POINT{-120, -70}, POINT{25, 0}}) {
        std::vector<std::uint32_t> resized;
        std::vector<std::uint32_t> painted;
        run([&](UserScript& user) {
            user.waitForWindow().call([&, way] {
                CRect place;
                ::GetWindowRect(window(), place);
                ::SetWindowPos(window(), nullptr, 0, 0, place.Width() + way.x, place.Height() + way.y,
                               SWP_NOMOVE | SWP_NOZORDER);
            });
            user.call([&] { resized = picture(); }).call([&] {
                ::RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
                painted = picture();
            });
            user.click(IDCANCEL);
        });
        std::size_t wrong = 0;
        for (std::size_t i = 0; i < painted.size(); ++i)
            wrong += resized[i] != painted[i] ? 1 : 0;
        EXPECT_EQ(wrong, 0U) << "pixels, larger by " << way.x << ", " << way.y;
    }
}

TEST_F(PreviewDlgTest, TurnTheWheelOverThePictureWhateverHasTheFocus) {
    const auto lit = [this] {
        settle();
        int found = 0;
        for (int x = 0; x < placeOf(kControl).Width() - 4; ++x) // within its edge
            for (int y = 0; y < placeOf(kControl).Height() - 4; ++y)
                found += pixel(onScreen(item(kControl), x, y).x, onScreen(item(kControl), x, y).y) == 0xFFFFFF ? 1 : 0;
        return found;
    };
    int before = 0;
    int after = 0;
    run([&](UserScript& user) {
        user.click(IDC_PAN).call([&] { before = lit(); });
        user.wheel(kControl, -3).call([&] { after = lit(); }).wheel(IDC_OPEN, -3);
        user.call([&] { EXPECT_EQ(lit(), after) << "not elsewhere"; }).click(IDCANCEL);
    });
    EXPECT_GT(before, 100);
    EXPECT_NEAR(after, 0.9 * before, 0.03 * before) << "one step, whatever the turn";
}

TEST_F(PreviewDlgTest, InsertTheBlockAtAPointAndStay) {
    host.commandLine().input().feed("1.5,2\n");
    run([](UserScript& user) {
        user.click(IDC_OPEN)
            .expect("the dialog is back", [] { return ::IsWindowVisible(window()) != FALSE; })
            .click(IDCANCEL);
    });
    EXPECT_THAT(output, HasSubstr("Specify insertion point: "));
    output.clear();
    host.pump();
    EXPECT_THAT(output, HasSubstr("_BINSERT")) << "the function of the module, which isn't loaded";
    EXPECT_THAT(alerts, IsEmpty());

    // Escape at the prompt: nothing is sent.
    host.commandLine().input().feed("\x1b\n");
    run([](UserScript& user) {
        user.click(IDC_OPEN)
            .expect("the dialog is back", [] { return ::IsWindowVisible(window()) != FALSE; })
            .click(IDCANCEL);
    });
    output.clear();
    host.pump();
    EXPECT_THAT(output, IsEmpty());
}

TEST_F(PreviewDlgTest, OpenADrawing) {
    saveDrawing("plan.dwg");
    const int result = run(
        [](UserScript& user) {
            user.waitForWindow()
                .call([] {
                    EXPECT_EQ(textOf(IDC_OPEN), "Open");
                    EXPECT_STREQ(control().DrawingPath(), "T:\\plan.dwg");
                })
                .click(IDC_OPEN)
                .waitUntilGone();
        },
        "plan.dwg", "T:\\plan.dwg");
    EXPECT_EQ(result, IDOK);
    EXPECT_STREQ(host.documents().curDocument()->fileName(), "T:\\plan.dwg");
}

TEST_F(PreviewDlgTest, TellOfADrawingThatHasGoneMeanwhile) {
    saveDrawing("plan.dwg");
    const int result = run(
        [this](UserScript& user) {
            user.waitForWindow().call([this] { std::filesystem::remove(folder / "t/plan.dwg"); }).click(IDC_OPEN);
            user.in("palette-test").click(IDOK).in(kTitle).waitUntilGone();
        },
        "plan.dwg", "T:\\plan.dwg");
    EXPECT_EQ(result, IDOK);
}

TEST_F(PreviewDlgTest, ComeUpEmptyForWhatIsNoDrawing) {
    std::filesystem::create_directory(folder / "t/folder");
    run(
        [](UserScript& user) {
            user.waitForWindow().call([] { EXPECT_STREQ(control().ShownName(), ""); }).click(IDC_OPEN).click(IDCANCEL);
        },
        "folder", "T:\\folder");
    ASSERT_FALSE(alerts.empty());
    EXPECT_EQ(alerts.back(), "There is nothing to insert: the preview could not be loaded.");
}

} // namespace
