#pragma once
// The Enhanced Attribute Editor on a desktop in memory, and the steps of a user in it.

#include "module/edit_attribute_fixture.h"

class EnhancedAttributeTest : public EditAttributeTest {
protected:
    using UserScript = vndk::win32::UserScript;

    static constexpr const char* kEditor = "Enhanced Attribute Editor";
    enum Face { kAttributes, kTextOptions, kProperties };
    // Controls.
    static constexpr int kHelp = 9, kApply = 3, kSelect = 251, kBlock = 222, kTag = 223, kTabs = 200, kRows = 253;
    static constexpr int kStyle = 254, kJustify = 255, kHeight = 256, kRotation = 257, kBackwards = 266,
                         kUpsideDown = 259, kWidthFactor = 268, kOblique = 261;
    static constexpr int kLayer = 268, kLinetype = 267, kColor = 262, kPlotStyle = 263, kLineWeight = 264;
    static constexpr std::uint32_t kSlowly = 600;    // milliseconds; two clicks are no double click
    static constexpr int kFirst = 17, kRowSize = 17; // pixels: where the rows stand

    static HWND editor() { return ::FindWindowA(nullptr, kEditor); }
    /// The control of that number that can be seen: pages share numbers.
    static HWND control(int id) { return visibleBelow(editor(), id); }
    static HWND rowList() { return ::GetDlgItem(editor(), kRows); }
    static bool isEnabled(int id) { return ::IsWindowEnabled(control(id)) != FALSE; }
    static std::string text(int id) {
        char buffer[300] = "";
        ::GetWindowTextA(control(id), buffer, sizeof buffer);
        return buffer;
    }
    static int selected(int id) { return static_cast<int>(::SendMessageA(control(id), CB_GETCURSEL, 0, 0)); }
    static bool isChecked(int id) { return ::SendMessageA(control(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    /// The rows of a combo box, in order.
    static std::vector<std::string> items(int id) {
        std::vector<std::string> found;
        const HWND combo = control(id);
        for (LRESULT row = 0; row < ::SendMessageA(combo, CB_GETCOUNT, 0, 0); ++row) {
            char buffer[300] = "";
            ::SendMessageA(combo, CB_GETLBTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(buffer));
            found.push_back(buffer);
        }
        return found;
    }
    static std::string item(int id) {
        const int row = selected(id);
        return row < 0 ? "" : items(id)[static_cast<size_t>(row)];
    }
    /// What stands in the list, a row in each line: "prompt=value".
    static std::vector<std::string> listed() {
        std::vector<std::string> found;
        for (int row = 0; row < ListView_GetItemCount(rowList()); ++row) {
            char prompt[300] = "", value[300] = "";
            ListView_GetItemText(rowList(), row, 0, prompt, sizeof prompt);
            ListView_GetItemText(rowList(), row, 1, value, sizeof value);
            found.push_back(std::string(prompt) + "=" + value);
        }
        return found;
    }
    /// The edit box over a cell; null while it is hidden.
    static HWND box() { return visibleBelow(rowList(), 110); }

    static void click(UserScript& user, int id) {
        user.pause(kSlowly);
        user.clickPlace("control " + std::to_string(id), [id] { return middleOf(control(id)); });
    }
    static void openValue(UserScript& user, int row) {
        user.clickAt(kRows, {150, kFirst + kRowSize * row + kRowSize / 2});
        user.expect("the box stands on row " + std::to_string(row), [row] {
            RECT rect{};
            ::GetWindowRect(box(), &rect);
            POINT middle{rect.left, (rect.top + rect.bottom) / 2};
            ::ScreenToClient(rowList(), &middle);
            return box() && (middle.y - kFirst) / kRowSize == row;
        });
    }
    static void show(UserScript& user, Face face) {
        user.clickPlace("tab " + std::to_string(face), [face] {
            const HWND tabs = ::GetDlgItem(editor(), kTabs);
            RECT rect{};
            ::SendMessageA(tabs, TCM_GETITEMRECT, face, reinterpret_cast<LPARAM>(&rect));
            return vndk::win32::UserPlace{tabs, {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2}};
        });
    }
    /// Drops the list of a combo box and clicks the row of that text.
    static void choose(UserScript& user, int id, const std::string& name) {
        click(user, id);
        user.clickPlace("\"" + name + "\" of " + std::to_string(id), [id, name] {
            COMBOBOXINFO info{};
            info.cbSize = sizeof info;
            ::GetComboBoxInfo(control(id), &info);
            const LRESULT row = ::SendMessageA(info.hwndList, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                               reinterpret_cast<LPARAM>(name.c_str()));
            if (row < 0)
                return vndk::win32::UserPlace{nullptr, {}, "there is no such row"};
            ::SendMessageA(info.hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(row), 0);
            RECT rect{};
            ::SendMessageA(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect));
            return vndk::win32::UserPlace{info.hwndList, {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2}};
        });
    }
    /// Writes a number into an edit box and leaves it by Tab.
    static void write(UserScript& user, int id, const std::string& number) {
        click(user, id);
        user.call([id] { ::SendMessageA(control(id), EM_SETSEL, 0, -1); });
        user.type(number).press(VK_TAB);
    }

    /// Runs lines while a user takes steps in the editor; gives what the lines printed.
    std::string edit(const std::string& lines, const std::function<void(UserScript&)>& steps) {
        UserScript user(screen);
        user.in(kEditor).waitForWindow();
        steps(user);
        user.waitUntilGone();
        run(lines);
        EXPECT_TRUE(user.finish()) << user.failure();
        expectAllClosed();
        return output;
    }

    /// Saves the drawing and opens it anew, beside this one.
    void reread(const std::function<void(AcDbDatabase&)>& look) {
        const std::string file = folder / "edited.dwg";
        ASSERT_EQ(database().saveAs(file.c_str()), Acad::eOk) << database().lastFileError();
        AcDbDatabase drawing(false);
        ASSERT_EQ(drawing.readDwgFile(file.c_str()), Acad::eOk) << drawing.lastFileError();
        look(drawing);
    }
    /// The only reference in a drawing's model space.
    static AcDbObjectId referenceIn(AcDbDatabase& drawing) {
        for (const AcDbObjectId id : entities(drawing.modelSpaceId()))
            if (AcDbObjectPointer<AcDbBlockReference>(id))
                return id;
        ADD_FAILURE() << "no reference";
        return {};
    }

private:
    static HWND visibleBelow(HWND parent, int id) {
        for (HWND child = ::GetWindow(parent, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
            if (::GetDlgCtrlID(child) == id && ::IsWindowVisible(child) != FALSE)
                return child;
            if (const HWND found = visibleBelow(child, id))
                return found;
        }
        return nullptr;
    }
    static vndk::win32::UserPlace middleOf(HWND window) {
        if (!window)
            return {nullptr, {}, "it isn't on the screen"};
        RECT rect{};
        ::GetClientRect(window, &rect);
        return {window, {rect.right / 2, rect.bottom / 2}};
    }
};
