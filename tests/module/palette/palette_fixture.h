#pragma once
// The module's resources and profile, a folder as drive T:, and a parent that hands drawing back to its controls.

#include "ed/host.h"
#include "frame/module.h"
#include "mfc/afx.h"
#include "module/previews/thumbnail_file.h"
#include "platform/temp_folder.h"
#include "support/desktop_fixture.h"
#include "win32/drive_map.h"
#include "win32/resources.h"

#include <functional>

/// What the parent of the controls heard.
class PaletteParent : public CWnd {
public:
    std::vector<UINT> commands;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
};

class PaletteTest : public vndk::test::DesktopFixture {
protected:
    PaletteTest();
    ~PaletteTest() override;

    /// Delivers all that waits through the framework's filters.
    void deliver();
    int profileInt(const char* key) { return static_cast<int>(application.GetProfileInt("Vondrake", key, 1)); }
    std::string profileText(const char* key) { return std::string(application.GetProfileString("Vondrake", key)); }

    TempFolder folder;
    CWinApp application{"palette-test"};
    vndk::host::Host host;
    std::string output; ///< of the host
    PaletteParent parent;

private:
    std::vector<std::uint8_t> resources_;
    HINSTANCE instance_ = nullptr;
};
