#include "module/palette/palette_fixture.h"

#include <fstream>
#include <iterator>

namespace {

HINSTANCE g_instance;

} // namespace

// What the module answers when it is loaded.
HINSTANCE ModuleInstance() { return g_instance; }

CString LoadResString(UINT id) {
    char text[1000];
    return ::LoadStringA(g_instance, id, text, sizeof text) > 0 ? CString(text) : CString();
}

BOOL PaletteParent::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (lParam == 0)
        commands.push_back(LOWORD(wParam));
    return CWnd::OnCommand(wParam, lParam);
}

PaletteTest::PaletteTest() {
    std::ifstream file(COMPILED_RESOURCES, std::ios::binary);
    resources_.assign(std::istreambuf_iterator<char>(file), {});
    EXPECT_TRUE(vndk::win32::registerInstance(resources_, instance_).ok()) << COMPILED_RESOURCES;
    g_instance = instance_;
    AfxSetResourceHandle(instance_);
    application.SetProfileFile((folder / "profile/settings.ini").c_str());
    std::filesystem::create_directory(folder / "t");
    EXPECT_TRUE(vndk::win32::DriveMap::current().map('T', folder / "t").ok());
    host.setPrint([this](std::string_view text) { output += text; });
    host.documents().appContextNewDocument(nullptr);
    EXPECT_TRUE(parent.CreateEx(0, AfxRegisterWndClass(CS_DBLCLKS), "parent", WS_POPUP | WS_VISIBLE, 0, 0, 400, 500,
                                nullptr, nullptr));
}

PaletteTest::~PaletteTest() {
    parent.DestroyWindow();
    AfxSetResourceHandle(nullptr);
    vndk::win32::unregisterInstance(instance_);
}

void PaletteTest::deliver() {
    MSG message{};
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE)
        AfxPumpMessage();
    settle();
}
