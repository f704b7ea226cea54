// The module's compiled resources, read through the platform's calls.
#include "support/desktop_fixture.h"
#include "user/dialog_template.h"
#include "win32/dialog_init.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/menu.h"
#include "win32/resources.h"

#include <gmock/gmock.h>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using namespace vndk::win32;

std::vector<std::uint8_t> compiledResources() {
    std::ifstream file(COMPILED_RESOURCES, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class ModuleResourcesTest : public vndk::test::DesktopFixture {
protected:
    void SetUp() override {
        DesktopFixture::SetUp();
        bytes_ = compiledResources();
        ASSERT_FALSE(bytes_.empty()) << COMPILED_RESOURCES;
        ASSERT_TRUE(registerInstance(bytes_, instance_).ok());
    }
    void TearDown() override {
        unregisterInstance(instance_);
        DesktopFixture::TearDown();
    }

    std::span<const std::uint8_t> bytesOf(LPCSTR type, UINT number) const {
        HRSRC found = FindResourceA(instance_, MAKEINTRESOURCE(number), type);
        if (!found)
            return {};
        const auto* start = static_cast<const std::uint8_t*>(LockResource(LoadResource(instance_, found)));
        return {start, SizeofResource(instance_, found)};
    }

    std::vector<std::uint8_t> bytes_;
    HINSTANCE instance_ = nullptr;
};

struct ControlRow {
    UINT id;
    const char* className;
    const char* text;
    int x, y, width, height;
    DWORD style;
};

struct DialogRow {
    UINT number;
    int width, height;
    DWORD style;
    const char* caption;
    std::vector<ControlRow> controls;
};

constexpr UINT noId = 0xFFFFFFFF;
constexpr DWORD modal = 0x80C800C0;
constexpr DWORD page = 0x40000440;
constexpr DWORD defaultButton = 0x50010001;
constexpr DWORD button = 0x50010000;
constexpr DWORD hiddenButton = 0x40010000;
constexpr DWORD checkBox = 0x50010003;
constexpr DWORD leftText = 0x50020000;
constexpr DWORD rightText = 0x50020002;
constexpr DWORD dropDownList = 0x50210003;
constexpr DWORD sortedList = 0x50210103;
constexpr DWORD drawnList = 0x50210313;
constexpr DWORD numberEdit = 0x50810080;
constexpr const char* listView = "SysListView32";
constexpr const char* tabs = "SysTabControl32";

const std::vector<DialogRow>& dialogRows() {
    static const std::vector<DialogRow> rows = {
        {262,
         293,
         150,
         modal,
         "Enhanced Attribute Editor",
         {{1, "BUTTON", "OK", 83, 129, 50, 14, defaultButton},
          {2, "BUTTON", "Cancel", 159, 129, 50, 14, button},
          {9, "BUTTON", "HELP", 235, 129, 50, 14, button},
          {3, "BUTTON", "APPLY", 7, 129, 50, 14, 0x58010000},
          {222, "STATIC", "name", 45, 7, 174, 9, leftText},
          {251, "BUTTON", "", 269, 7, 17, 15, button},
          {noId, "STATIC", "Select &block", 223, 7, 43, 13, rightText},
          {223, "STATIC", "Tag:", 45, 17, 175, 11, leftText},
          {noId, "STATIC", "Block:", 7, 7, 31, 9, rightText},
          {noId, "STATIC", "Tag:", 7, 17, 31, 11, rightText},
          {253, listView, "", 15, 47, 263, 69, 0x5001808D},
          {200, tabs, "", 7, 29, 279, 95, 0x50010000}}},
        {266,
         313,
         226,
         modal,
         "Getting Started Tips",
         {{1, "BUTTON", "OK", 258, 208, 50, 14, defaultButton},
          {269, "RICHEDIT", "", 4, 3, 304, 201, 0x50A11804},
          {270, "BUTTON", "Do not show again", 4, 208, 93, 14, checkBox}}},
        {400,
         341,
         217,
         page,
         "",
         {{201, "COMBOBOX", "", 6, 19, 92, 103, 0x50210023},
          {202, "LISTBOX", "", 5, 35, 91, 102, 0x50A10161},
          {203, listView, "", 220, 17, 88, 125, 0x40010104},
          {204, listView, "", 108, 35, 96, 104, 0x40010104},
          {200, tabs, "", 0, 0, 143, 210, 0x50000000},
          {207, "BUTTON", "", 187, 19, 15, 13, button},
          {208, "BUTTON", "", 171, 19, 15, 13, button}}},
        {402,
         340,
         206,
         0x80CF0040,
         "Preview",
         {{2, "BUTTON", "Close", 284, 24, 50, 14, button},
          {208, "BUTTON", "", 284, 49, 15, 14, button},
          {209, "BUTTON", "", 299, 50, 13, 13, button},
          {210, "BUTTON", "", 312, 49, 16, 14, button},
          {212, "BUTTON", "", 239, 194, 13, 11, hiddenButton},
          {213, "BUTTON", "", 252, 194, 13, 11, hiddenButton},
          {214, "BUTTON", "", 265, 194, 13, 11, hiddenButton},
          {215, "BUTTON", "", 278, 194, 13, 11, hiddenButton},
          {216, "BUTTON", "", 291, 194, 13, 11, hiddenButton},
          {217, "BUTTON", "", 304, 194, 13, 11, hiddenButton},
          {218, "BUTTON", "", 317, 194, 13, 11, hiddenButton},
          {200, tabs, "Tab1", 7, 7, 273, 196, 0x50000002},
          {337, "BUTTON", "Open", 285, 7, 49, 12, defaultButton}}},
        {404,
         272,
         207,
         modal,
         "Edit Attribute",
         {{222, "STATIC", "Block Name:", 7, 7, 258, 10, leftText},
          {220, listView, "", 7, 18, 258, 166, 0x5081000D},
          {223, "BUTTON", "OK", 83, 189, 50, 14, button},
          {2, "BUTTON", "Cancel", 137, 189, 50, 14, button}}},
        {15222,
         274,
         78,
         page,
         "",
         {{noId, "STATIC", "Text &Style:", 6, 3, 63, 12, rightText},
          {noId, "STATIC", "&Justification:", 7, 22, 62, 12, rightText},
          {noId, "STATIC", "&Height:", 9, 39, 60, 12, rightText},
          {noId, "STATIC", "&Rotation:", 16, 57, 53, 12, rightText},
          {254, "COMBOBOX", "", 72, 3, 196, 76, sortedList},
          {255, "COMBOBOX", "", 72, 21, 68, 121, dropDownList},
          {256, "EDIT", "", 71, 39, 68, 12, numberEdit},
          {257, "EDIT", "", 71, 57, 68, 12, numberEdit},
          {266, "BUTTON", "&Backwards", 146, 21, 50, 12, checkBox},
          {259, "BUTTON", "&Upside Down", 211, 21, 57, 12, checkBox},
          {noId, "STATIC", "&Width Factor:", 153, 39, 45, 12, rightText},
          {noId, "STATIC", "&Oblique Angle:", 153, 57, 45, 12, rightText},
          {268, "EDIT", "", 200, 39, 68, 12, numberEdit},
          {261, "EDIT", "", 200, 57, 68, 12, numberEdit}}},
        {15223,
         274,
         78,
         page,
         "",
         {{noId, "STATIC", "&Layer:", 1, 3, 76, 12, rightText},
          {noId, "STATIC", "Line&type:", 1, 22, 76, 12, rightText},
          {noId, "STATIC", "&Color:", 1, 39, 76, 12, rightText},
          {noId, "STATIC", "&Plot style:", 1, 57, 76, 12, rightText},
          {268, "COMBOBOX", "", 79, 3, 189, 76, sortedList},
          {267, "COMBOBOX", "", 79, 21, 189, 121, dropDownList},
          {262, "COMBOBOX", "", 79, 39, 50, 120, drawnList},
          {263, "COMBOBOX", "", 79, 57, 189, 150, drawnList},
          {noId, "STATIC", "Line&weight:", 136, 39, 40, 12, rightText},
          {264, "COMBOBOX", "", 179, 39, 89, 120, drawnList}}},
    };
    return rows;
}

std::string sayClass(std::string name) {
    for (char& c : name)
        c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    return name;
}

void expectControl(const DialogControl& control, const ControlRow& row) {
    EXPECT_EQ(control.id, row.id);
    EXPECT_EQ(sayClass(control.className), sayClass(row.className));
    EXPECT_EQ(control.text.text, row.text);
    EXPECT_EQ(control.units.left, row.x);
    EXPECT_EQ(control.units.top, row.y);
    EXPECT_EQ(control.units.right, row.width);
    EXPECT_EQ(control.units.bottom, row.height);
    EXPECT_EQ(control.style, row.style);
    EXPECT_EQ(control.exStyle, 0U);
}

TEST_F(ModuleResourcesTest, DialogsHoldTheirControlsInOrder) {
    for (const DialogRow& row : dialogRows()) {
        SCOPED_TRACE("dialog " + std::to_string(row.number));
        const auto dialog = parseDialogTemplate(bytesOf(RT_DIALOG, row.number));
        ASSERT_TRUE(dialog);
        EXPECT_TRUE(dialog->extended);
        EXPECT_EQ(dialog->units.right, row.width);
        EXPECT_EQ(dialog->units.bottom, row.height);
        EXPECT_EQ(dialog->style, row.style);
        EXPECT_EQ(dialog->caption, row.caption);
        ASSERT_TRUE(dialog->font);
        EXPECT_EQ(dialog->font->face, "MS Sans Serif");
        EXPECT_EQ(dialog->font->points, 8);
        ASSERT_EQ(dialog->controls.size(), row.controls.size());
        for (std::size_t i = 0; i < row.controls.size(); ++i) {
            SCOPED_TRACE("control at " + std::to_string(i));
            expectControl(dialog->controls[i], row.controls[i]);
        }
    }
}

TEST_F(ModuleResourcesTest, JustificationComesWithFifteenRows) {
    std::vector<std::string> texts;
    const auto bytes = bytesOf(MAKEINTRESOURCE(RT_DLGINIT_NUMBER), 15222);
    ASSERT_FALSE(bytes.empty());
    EXPECT_TRUE(forEachInitRow(bytes, [&](const DialogInitRow& row) {
        EXPECT_EQ(row.control, 255);
        EXPECT_EQ(row.message, DIALOG_INIT_CB_ADDSTRING);
        EXPECT_EQ(row.data.size(), row.text.size() + 1) << row.text;
        texts.push_back(row.text);
        return true;
    }));
    EXPECT_THAT(texts, testing::ElementsAre("Left", "Align", "Fit", "Center", "Middle", "Right", "Top Left",
                                            "Top Center", "Top Right", "Middle Left", "Middle Center", "Middle Right",
                                            "Bottom Left", "Bottom Center", "Bottom Right"));
}

TEST_F(ModuleResourcesTest, StringsStandUnderTheirNumbers) {
    const std::pair<UINT, const char*> rows[] = {
        {101, "Vondrake"},
        {102, "Attributes"},
        {103, "Text Options"},
        {104, "Properties"},
        {105, "Description"},
        {106, "Data"},
        {107, "\nSelect a block: "},
        {108, "\nA block insert was not selected."},
        {109, "Block Name:\t"},
        {427, "Specify insertion point: "},
        {430, "\nCould not load drawing selected. Perhaps it is open by another user."},
        {432, "Insert"},
    };
    for (const auto& [number, text] : rows) {
        char buffer[200] = {};
        LoadStringA(instance_, number, buffer, sizeof buffer);
        EXPECT_STREQ(buffer, text) << "string " << number;
    }
}

TEST_F(ModuleResourcesTest, MenuHasTwoPopupsThatDifferInTheLastItem) {
    HMENU menu = LoadMenuA(instance_, MAKEINTRESOURCE(250));
    ASSERT_TRUE(menu);
    ASSERT_EQ(GetMenuItemCount(menu), 2);
    const char* names[] = {"DWGLIST", "HIDEPREVIEWS"};
    for (int popup = 0; popup < 2; ++popup) {
        SCOPED_TRACE(names[popup]);
        const std::pair<UINT, const char*> items[] = {
            {32911, "Show In Preview Window"},
            {0, ""},
            {32908, "Open Drawing"},
            {32909, "Insert as Intelligent Block"},
            {32910, "Insert as Xref"},
            {0, ""},
            {popup == 0 ? 32768U : 32769U, popup == 0 ? "Show Drawing Previews" : "Hide Drawing Previews"},
        };
        char text[100] = {};
        GetMenuStringA(menu, static_cast<UINT>(popup), text, sizeof text, MF_BYPOSITION);
        EXPECT_STREQ(text, names[popup]);
        HMENU inner = GetSubMenu(menu, popup);
        ASSERT_EQ(GetMenuItemCount(inner), static_cast<int>(std::size(items)));
        for (UINT i = 0; i < std::size(items); ++i) {
            EXPECT_EQ(GetMenuItemID(inner, static_cast<int>(i)), items[i].first) << "item " << i;
            text[0] = 0;
            GetMenuStringA(inner, i, text, sizeof text, MF_BYPOSITION);
            EXPECT_STREQ(text, items[i].second) << "item " << i;
        }
    }
    DestroyMenu(menu);
}

struct PictureRow {
    UINT kind;
    UINT number;
    int width, height;
    DWORD hotX, hotY;
};

TEST_F(ModuleResourcesTest, IconsAndCursorsHaveTheirSizesAndHotSpots) {
    std::vector<PictureRow> rows = {{IMAGE_CURSOR, 221, 32, 32, 8, 7},
                                    {IMAGE_CURSOR, 222, 32, 32, 15, 14},
                                    {IMAGE_CURSOR, 223, 32, 32, 9, 11},
                                    {IMAGE_ICON, 246, 32, 32, 16, 16}};
    for (const UINT number : {221U, 222U, 223U, 224U, 225U, 226U, 227U, 229U, 230U, 231U, 232U, 243U, 263U})
        rows.push_back({IMAGE_ICON, number, 16, 16, 8, 8});
    for (const PictureRow& row : rows) {
        SCOPED_TRACE((row.kind == IMAGE_ICON ? "icon " : "cursor ") + std::to_string(row.number));
        auto picture = static_cast<HICON>(LoadImageA(instance_, MAKEINTRESOURCE(row.number), row.kind, 0, 0, 0));
        ASSERT_TRUE(picture);
        ICONINFO info{};
        ASSERT_TRUE(GetIconInfo(picture, &info));
        BITMAP mask{};
        GetObjectA(info.hbmMask, sizeof mask, &mask);
        EXPECT_EQ(info.fIcon, row.kind == IMAGE_ICON);
        EXPECT_EQ(info.xHotspot, row.hotX);
        EXPECT_EQ(info.yHotspot, row.hotY);
        EXPECT_EQ(mask.bmWidth, row.width);
        EXPECT_EQ(mask.bmHeight, info.hbmColor ? row.height : 2 * row.height);
        DeleteObject(info.hbmMask);
        if (info.hbmColor)
            DeleteObject(info.hbmColor);
        DestroyIcon(picture);
    }
}

TEST_F(ModuleResourcesTest, BitmapsHaveTheirSizesAndDepths) {
    const struct {
        UINT number;
        int width, height, bits;
    } rows[] = {{129, 161, 18, 24}, {252, 16, 16, 8}, {255, 16, 16, 8}};
    for (const auto& row : rows) {
        SCOPED_TRACE("bitmap " + std::to_string(row.number));
        auto bitmap = static_cast<HBITMAP>(
            LoadImageA(instance_, MAKEINTRESOURCE(row.number), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
        ASSERT_TRUE(bitmap);
        BITMAP facts{};
        GetObjectA(bitmap, sizeof facts, &facts);
        EXPECT_EQ(facts.bmWidth, row.width);
        EXPECT_EQ(facts.bmHeight, row.height);
        EXPECT_EQ(facts.bmBitsPixel, row.bits);
        DeleteObject(bitmap);
    }
}

} // namespace
