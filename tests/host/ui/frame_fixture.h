// The main window before a user, on a screen in memory.
//
//     class TabsTest : public vndk::test::FrameFixture {};
//     TEST_F(TabsTest, ...) {
//         user().type("LINE 0,0 5,5\n\n");
//         play();                              // runs the program until the user has done all that
//         EXPECT_EQ(entityCount(), 1U);
//     }
#pragma once

#include "ed/host.h"
#include "mfc/afx.h"
#include "platform/temp_folder.h"
#include "support/desktop_fixture.h"
#include "ui/main_frame.h"
#include "win32/user_script.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace vndk::test {

/// A profile for the time of a test.
class MemoryProfile : public host::ProfileStore {
public:
    std::optional<std::string> read(std::string_view section, std::string_view key) override;
    void write(std::string_view section, std::string_view key, std::string_view value) override;

private:
    std::map<std::string, std::string> values_;
};

class FrameFixture : public DesktopFixture {
protected:
    FrameFixture();
    ~FrameFixture() override;

    /// The user's next steps; each play() begins with none.
    win32::UserScript& user();
    /// Runs the program's own loop until the user is done. A step that can't be done fails the test.
    void play();

    AcApDocument& document() { return *host_.documents().curDocument(); }
    /// Entities of model space that aren't erased.
    std::size_t entityCount();
    /// What the host has said, lines ended by '\n'.
    std::string history() const;
    std::string lineText() const;
    std::string title() const;
    /// Middle of a part of the frame, on the screen.
    static POINT middleOf(HWND window);
    /// A drawing of one circle, saved in the test's folder; its name in the system's form.
    std::string savedDrawing(const std::string& name);

    MemoryProfile profile_;
    CWinApp app_;
    host::Host host_;
    host::MainFrame frame_{host_};
    TempFolder folder_;

private:
    static void CALLBACK look(HWND window, UINT message, UINT_PTR timer, DWORD time);

    std::unique_ptr<win32::UserScript> user_;
};

} // namespace vndk::test
