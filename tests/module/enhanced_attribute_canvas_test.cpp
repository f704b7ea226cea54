// The Enhanced Attribute Editor over the program's window: the drawing on the canvas follows each change.
#include "ap/drawing_views.h"
#include "module/enhanced_attribute_fixture.h"
#include "ui/main_frame.h"

namespace {

class AttributeCanvas : public EnhancedAttributeTest, public testing::WithParamInterface<bool> {
protected:
    static constexpr std::uint32_t kRed = 0xFF0000, kWhite = 0xFFFFFF;

    void SetUp() override {
        frame.ShowWindow(SW_HIDE);
        ASSERT_TRUE(window.open());
        host.setPrint([this](std::string_view text) { output += text; });
        EnhancedAttributeTest::SetUp();
        define("FIRST", "one", [](AcDbAttributeDefinition& definition) { definition.setPosition({10, 20, 0}); });
        reference = GetParam() ? addIntelligent() : addFromBlock();
        // The upper left corner of the canvas, which the editor leaves free, from 0,0 on.
        host.documents().curDocument()->views().show({{40, 0, 0}, 60});
        window.runInput();
        desktop.settle();
    }
    void TearDown() override {
        EnhancedAttributeTest::TearDown();
        window.leave();
    }

    struct Seen {
        int pixels = 0;
        int height = 0;
    };
    /// Pixels of a colour in the part of the canvas beside the editor, which the user sees.
    Seen seen(std::uint32_t color) {
        if (RECT covered{}; ::GetWindowRect(editor(), &covered) != FALSE)
            free_ = covered.top;
        RECT place{};
        ::GetWindowRect(::GetDlgItem(window.m_hWnd, 0xE900), &place);
        const vndk::screen::Surface surface = screen.surface();
        Seen found;
        for (int y = place.top + 4; y < std::min(place.bottom, free_); ++y) {
            int inRow = 0;
            for (int x = place.left; x < place.right / 2; ++x)
                inRow +=
                    (surface
                         .pixels[static_cast<size_t>(y) * static_cast<size_t>(surface.width) + static_cast<size_t>(x)] &
                     0xFFFFFF) == color;
            found.pixels += inRow;
            found.height += inRow > 0;
        }
        return found;
    }

    vndk::host::MainFrame window{host};
    AcDbObjectId reference;

private:
    LONG free_ = 0; // the editor's upper edge
};

INSTANTIATE_TEST_SUITE_P(Kinds, AttributeCanvas, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "Intelligent" : "Plain"; });

TEST_P(AttributeCanvas, FollowsThePagesAtOnceAndTheListWithApply) {
    Seen before;
    edit("EATTEDIT (entnext)", [&](UserScript& user) {
        user.expect("the attribute is beside the editor", [&] { return (before = seen(kWhite)).pixels > 10; });
        openValue(user, 0);
        user.type("one more one"); // no letter is higher than those before
        user.pause(kSlowly).expect("not yet", [&] { return seen(kWhite).pixels == before.pixels; });
        click(user, kApply);
        user.expect("the longer text", [&] { return seen(kWhite).pixels > 2 * before.pixels; });
        show(user, kProperties);
        choose(user, kColor, "Red");
        user.expect("in red", [&] { return seen(kRed).height == before.height && seen(kWhite).pixels == 0; });
        show(user, kTextOptions);
        write(user, kHeight, "5");
        user.expect("twice as high", [&] { return seen(kRed).height >= 2 * before.height - 2; });
        write(user, kHeight, "2.5");
        user.expect("and back", [&] { return seen(kRed).height == before.height; });
        click(user, IDCANCEL);
    });
    desktop.settle();
    const Seen after = seen(kRed);
    EXPECT_EQ(after.height, before.height);
    run("U");
    window.runInput();
    desktop.settle();
    EXPECT_EQ(seen(kRed).pixels, 0);
    EXPECT_EQ(seen(kWhite).pixels, before.pixels);
}

} // namespace
