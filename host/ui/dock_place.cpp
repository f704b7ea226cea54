#include "ui/dock_place.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace vndk::host {

namespace {

constexpr const char* kSection = "DockBars";
constexpr int kLargest = 32767; // no screen is larger

struct SideName {
    UINT id;
    const char* name;
};

constexpr std::array<SideName, 5> kSides = {{{AFX_IDW_DOCKBAR_TOP, "top"},
                                             {AFX_IDW_DOCKBAR_LEFT, "left"},
                                             {AFX_IDW_DOCKBAR_RIGHT, "right"},
                                             {AFX_IDW_DOCKBAR_BOTTOM, "bottom"},
                                             {AFX_IDW_DOCKBAR_FLOAT, "floating"}}};

bool sensible(const CRect& rect) {
    for (const LONG each : {rect.left, rect.top, rect.right, rect.bottom})
        if (each < -kLargest || each > kLargest)
            return false;
    return rect.Width() >= 0 && rect.Height() >= 0;
}

} // namespace

std::optional<DockPlace> readDockPlace(const CString& toolId) {
    const CWinApp* const app = AfxGetApp();
    if (!app || toolId.IsEmpty())
        return std::nullopt;
    const CString text = app->GetProfileString(kSection, toolId);
    DockPlace place;
    char side[16] = "";
    int mayDock = 1;
    CRect& rect = place.floating;
    const int read = std::sscanf(text, "%15s %5d %5d %6d %6d %6d %6d %1d", side, &place.docked.cx, &place.docked.cy,
                                 &rect.left, &rect.top, &rect.right, &rect.bottom, &mayDock);
    const auto known =
        std::find_if(kSides.begin(), kSides.end(), [&](const SideName& each) { return CString(each.name) == side; });
    if (read != 8 || known == kSides.end() || place.docked.cx <= 0 || place.docked.cy <= 0 || !sensible(rect))
        return std::nullopt;
    place.dockBarId = known->id;
    place.mayDock = mayDock != 0;
    return place;
}

void writeDockPlace(const CString& toolId, const DockPlace& place) {
    CWinApp* const app = AfxGetApp();
    const auto known =
        std::find_if(kSides.begin(), kSides.end(), [&](const SideName& each) { return each.id == place.dockBarId; });
    if (!app || toolId.IsEmpty() || known == kSides.end())
        return;
    CString text;
    text.Format("%s %d %d %d %d %d %d %d", known->name, place.docked.cx, place.docked.cy, place.floating.left,
                place.floating.top, place.floating.right, place.floating.bottom, place.mayDock ? 1 : 0);
    app->WriteProfileString(kSection, toolId, text);
}

CRect withinReach(CRect window) {
    constexpr int reach = 40;
    const int width = ::GetSystemMetrics(SM_CXSCREEN);
    const int height = ::GetSystemMetrics(SM_CYSCREEN);
    const int left = std::clamp<int>(window.left, std::min(reach - window.Width(), 0), std::max(width - reach, 0));
    const int top = std::clamp<int>(window.top, 0, std::max(height - reach, 0));
    return {CPoint(left, top), window.Size()};
}

} // namespace vndk::host
