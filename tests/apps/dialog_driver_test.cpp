// Dialogs whose user is a script, each opened by a command of a host.
#include "ads/ads.h"
#include "ed/host.h"
#include "platform/temp_folder.h"
#include "platform/win32/user/template_builder.h"
#include "vondrake/dialog_driver.h"
#include "win32/button.h"
#include "win32/combobox.h"
#include "win32/desktop.h"
#include "win32/draw.h"
#include "win32/edit.h"
#include "win32/input.h"
#include "win32/listbox.h"
#include "win32/listview.h"
#include "win32/menu.h"
#include "win32/messagebox.h"
#include "win32/paint.h"
#include "win32/picture.h"
#include "win32/queue.h"
#include "win32/tab.h"
#include "win32/treeview.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace vndk::app {
namespace {

using test::DialogBuilder;
using testing::HasSubstr;
using testing::StartsWith;

using Answer = std::function<INT_PTR(HWND, UINT, WPARAM, LPARAM)>;

INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG)
        SetWindowLongPtr(dialog, DWL_USER, lParam);
    const auto* answer = reinterpret_cast<const Answer*>(GetWindowLongPtr(dialog, DWL_USER));
    return answer ? (*answer)(dialog, message, wParam, lParam) : FALSE;
}

INT_PTR runModal(const DialogBuilder& builder, HWND owner, const Answer& answer) {
    const auto bytes = builder.bytes();
    return DialogBoxIndirectParam(nullptr, reinterpret_cast<const DLGTEMPLATE*>(bytes.data()), owner, &procedure,
                                  reinterpret_cast<LPARAM>(&answer));
}

bool isClose(UINT message, WPARAM wParam) {
    return message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL);
}

std::string controlText(HWND dialog, int id) {
    char text[200] = "";
    GetDlgItemText(dialog, id, text, sizeof text);
    return text;
}

class DialogDriverTest : public testing::Test {
protected:
    DialogDriverTest() {
        host.setPrint([this](std::string_view text) { output += text; });
        host.documents().appContextNewDocument(nullptr);
        host.commandLine().setInvalidAnswers(host::InvalidAnswers::FailCommand);
        WNDCLASSA plain{};
        plain.lpfnWndProc = &DefWindowProc;
        plain.lpszClassName = "Frame";
        RegisterClass(&plain);
        main =
            CreateWindow("Frame", "frame", WS_POPUP | WS_VISIBLE, 0, 0, 1280, 800, nullptr, nullptr, nullptr, nullptr);
        driver.setMainWindow(main);
        host.setMainWindow(main);
        desktop.settle();
    }
    ~DialogDriverTest() override { command = nullptr; }

    /// Runs a script in which the command TRY does `action`; the messages of its failures, with their lines.
    std::string run(std::string_view script, std::function<void()> action) {
        command = std::move(action);
        host.commands().addCommand(
            "TESTS", "TRY", "TRY", 0, [] { command(); }, nullptr, -1, nullptr, nullptr);
        output.clear();
        const size_t before = host.commandLine().input().line() - 1;
        host.commandLine().input().feed(script);
        std::string failures;
        for (;;) {
            auto result = host.commandLine().step();
            desktop.settle();
            if (auto failure = driver.takeFailure())
                result.problem = std::move(failure);
            if (result.problem)
                failures += std::to_string(result.problem->line - before) + ": " + result.problem->message + "\n";
            if (!result.ran)
                return failures;
        }
    }

    static DialogBuilder form(const char* caption) {
        return DialogBuilder(WS_POPUP | WS_CAPTION | WS_SYSMENU).caption(caption).size(200, 150);
    }
    static DialogBuilder small(const char* caption) {
        return form(caption)
            .add({"Edit", "", WS_VISIBLE | WS_TABSTOP | WS_BORDER, 100, {90, 12}, {5, 5}, 0, {}})
            .add({"Button", "OK", WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK, {50, 14}, {5, 20}, 0, {}})
            .add({"Button", "&Off", WS_VISIBLE | WS_TABSTOP | WS_DISABLED, 30, {50, 14}, {5, 40}, 0, {}});
    }

    static inline std::function<void()> command;
    std::string output;
    host::Host host;
    DialogDriver driver{host};
    win32::Desktop desktop{driver};
    HWND main = nullptr;
};

// A dialog with a control of each kind, and what a user leaves in it.
class EveryControl {
public:
    explicit EveryControl(HWND owner) {
        DialogBuilder builder(WS_POPUP | WS_CAPTION | WS_SYSMENU);
        builder.caption("Every control")
            .size(300, 300)
            .add({"Static", "&Name:", WS_VISIBLE, 0xFFFF, {40, 10}, {5, 5}, 0, {}})
            .add({"Edit", "", WS_VISIBLE | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, 100, {90, 12}, {50, 5}, 0, {}})
            .add({"Button", "&Visible", WS_VISIBLE | WS_TABSTOP | BS_AUTOCHECKBOX, 101, {60, 12}, {5, 20}, 0, {}})
            .add({"ComboBox",
                  "",
                  WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST,
                  102,
                  {80, 60},
                  {5, 40},
                  0,
                  {}})
            .add({"ListBox",
                  "",
                  WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | WS_BORDER | LBS_NOTIFY,
                  103,
                  {80, 60},
                  {5, 60},
                  0,
                  {}})
            .add({"SysListView32",
                  "",
                  WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT,
                  104,
                  {150, 60},
                  {100, 30},
                  0,
                  {}})
            .add({"SysTreeView32",
                  "",
                  WS_VISIBLE | WS_TABSTOP | WS_BORDER | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT,
                  105,
                  {100, 60},
                  {100, 100},
                  0,
                  {}})
            .add({"SysTabControl32", "", WS_VISIBLE | WS_TABSTOP, 106, {90, 30}, {5, 130}, 0, {}})
            .add({"Button", "OK", WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK, {50, 14}, {5, 200}, 0, {}});
        runModal(builder, owner, [this](HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
            return answer(dialog, message, wParam, lParam);
        });
    }

    std::string left;

private:
    INT_PTR answer(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG)
            fill(dialog);
        if (message == WM_CONTEXTMENU)
            popUp(dialog);
        const auto* note = reinterpret_cast<const NMHDR*>(lParam);
        if (message == WM_NOTIFY && note->code == NM_DBLCLK && note->idFrom == 104)
            left += "double ";
        if (message == WM_NOTIFY && note->code == LVN_COLUMNCLICK)
            left += "header ";
        if (isClose(message, wParam)) {
            tell(dialog);
            EndDialog(dialog, LOWORD(wParam));
        }
        return message == WM_INITDIALOG;
    }

    static void fill(HWND dialog) {
        for (int i = 1; i <= 30; ++i) {
            const std::string text = "Entry " + std::to_string(i);
            const auto pointer = reinterpret_cast<LPARAM>(text.c_str());
            SendDlgItemMessage(dialog, 102, CB_ADDSTRING, 0, pointer);
            SendDlgItemMessage(dialog, 103, LB_ADDSTRING, 0, pointer);
        }
        fillList(GetDlgItem(dialog, 104));
        fillTree(GetDlgItem(dialog, 105));
        for (int i = 0; i < 3; ++i) {
            char text[] = "Page A";
            text[5] = static_cast<char>('A' + i);
            TCITEM item{};
            item.mask = TCIF_TEXT;
            item.pszText = text;
            SendDlgItemMessage(dialog, 106, TCM_INSERTITEM, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        }
    }

    static void fillList(HWND list) {
        for (int column = 0; column < 3; ++column) {
            char title[] = "Column 1";
            title[7] = static_cast<char>('1' + column);
            LVCOLUMN wanted{};
            wanted.mask = LVCF_TEXT | LVCF_WIDTH;
            wanted.cx = 150;
            wanted.pszText = title;
            SendMessage(list, LVM_INSERTCOLUMN, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&wanted));
        }
        for (int row = 0; row < 40; ++row) {
            std::string text = "Row " + std::to_string(row + 1);
            LVITEM item{};
            item.mask = LVIF_TEXT;
            item.iItem = row;
            item.pszText = text.data();
            SendMessage(list, LVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&item));
        }
        SendMessage(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    }

    static HTREEITEM insert(HWND tree, HTREEITEM parent, std::string text) {
        TVINSERTSTRUCT wanted{};
        wanted.hParent = parent;
        wanted.hInsertAfter = TVI_LAST;
        wanted.item.mask = TVIF_TEXT;
        wanted.item.pszText = text.data();
        return reinterpret_cast<HTREEITEM>(SendMessage(tree, TVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&wanted)));
    }
    static void fillTree(HWND tree) {
        for (const char* const house : {"House 1", "House 2"}) {
            const HTREEITEM root = insert(tree, TVI_ROOT, house);
            for (const char* const room : {"Kitchen", "Bath"})
                insert(tree, root, room);
        }
    }

    void popUp(HWND dialog) {
        const HMENU menu = CreatePopupMenu();
        const HMENU sub = CreatePopupMenu();
        AppendMenu(sub, MF_STRING | MF_CHECKED, 7, "&Large\tF7");
        AppendMenu(menu, MF_STRING | MF_GRAYED, 6, "Off");
        AppendMenu(menu, MF_SEPARATOR, 0, nullptr);
        AppendMenu(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "&Size");
        left += "menu " + std::to_string(TrackPopupMenu(menu, TPM_RETURNCMD, 300, 300, 0, dialog, nullptr)) + " ";
        DestroyMenu(menu);
    }

    void tell(HWND dialog) {
        const HWND tree = GetDlgItem(dialog, 105);
        char branch[50] = "";
        TVITEM item{};
        item.mask = TVIF_TEXT;
        item.hItem = TreeView_GetSelection(tree);
        item.pszText = branch;
        item.cchTextMax = sizeof branch;
        TreeView_GetItem(tree, &item);
        const auto number = [dialog](int id, UINT message) {
            return " " + std::to_string(SendDlgItemMessage(dialog, id, message, 0, 0));
        };
        left += controlText(dialog, 100) + number(101, BM_GETCHECK) + number(102, CB_GETCURSEL) +
                number(103, LB_GETCURSEL) + " ";
        for (int row = 0; row < 40; ++row)
            if (ListView_GetItemState(GetDlgItem(dialog, 104), row, LVIS_SELECTED) != 0)
                left += std::to_string(row) + "+";
        left += std::string(" ") + branch + number(106, TCM_GETCURSEL);
    }
};

TEST_F(DialogDriverTest, EveryKindOfControlIsReached) {
    std::string left;
    EXPECT_EQ(run("TRY\n"
                  "CLICK \"Name:\" ; the label's control\n"
                  "TYPE T\xFCr (7)\n"
                  "CLICK \"visible\"\n"
                  "ITEM 102 \"Entry 25\"\n"
                  "ITEM 103 28\n"
                  "ITEM 104 0 2\n"
                  "ITEM 104 35 3\n"
                  "ITEM 104 \"row 2\" 1 WITH Ctrl\n"
                  "ITEM 105 \"House 2\" \"Bath\"\n"
                  "ITEM 106 3\n"
                  "DOUBLECLICK 104 ITEM 35\n"
                  "CLICK 104 ITEM 34\nCLICK 104 ITEM 34\n"
                  "RIGHTCLICK 0 3,3\n"
                  "PICK \"Size\" \"Large\"\n"
                  "CLICK OK\n",
                  [&] { left = EveryControl(main).left; }),
              "");
    EXPECT_EQ(left, "header double menu 7 T\xFCr (7) 1 24 27 33+ Bath 2");
}

TEST_F(DialogDriverTest, ShowTellsWhatAUserSees) {
    EXPECT_EQ(run("TRY\nTYPE abc\nITEM 105 1\nPRESS Right\nITEM 105 4\nITEM 104 2 2\nSHOW\nRIGHTCLICK 0 3,3\nSHOW\n"
                  "PRESS Escape Escape\n",
                  [&] { EveryControl{main}; }),
              "");
    for (const char* const line :
         {"Every control: SHOW\nDialog \"Every control\"\n   -1  label \"Name:\"\n  100  text box \"abc\"\n",
          "\n  101  check box \"Visible\", not checked\n", "\n  102  combo box \"\", 30 rows\n            1 Entry 1\n",
          "\n  104  list, 40 rows, focus\n              Column 1 | Column 2 | Column 3\n            1 Row 1 |  | \n"
          "        *   2 Row 2 |  | \n",
          "\n  105  tree\n            1 House 1 (open)\n            2   Kitchen\n"
          "            3   Bath\n        *   4 House 2 (closed)\n",
          "\n  106  tabs\n        *   1 Page A\n", "\n    1  button \"OK\", default\n",
          "Menu\n  \"Off\", disabled\n  --\n  \"Size\", opens\nDialog "})
        EXPECT_THAT(output, HasSubstr(line));
}

TEST_F(DialogDriverTest, PicturesHoldTheDialogAndWhatStandsBeforeIt) {
    TempFolder folder;
    const std::string plain = (folder / "plain.png");
    const std::string large = (folder / "large.png");
    EXPECT_EQ(run("TRY\nPICTURE " + plain + "\nCLICK 102\nPICTURE " + large + " 2\nPRESS Escape Escape\n",
                  [&] { EveryControl{main}; }),
              "");
    const win32::PictureRead first = win32::readPng(plain);
    const win32::PictureRead second = win32::readPng(large);
    ASSERT_TRUE(first.status.ok() && second.status.ok());
    EXPECT_EQ(second.picture.width, first.picture.width * 2);
    EXPECT_EQ(second.picture.height, first.picture.height * 2);
    const auto small = [&](int x, int y) { return first.picture.at(x, y) & 0xFFFFFF; };
    EXPECT_EQ(small(1, first.picture.height - 2), GetRValue(GetSysColor(COLOR_BTNSHADOW)) * 0x10101U) << "its border";
    size_t different = 0;
    for (int y = 0; y < first.picture.height; ++y)
        for (int x = 0; x < first.picture.width; ++x)
            different += small(x, y) != (second.picture.at(x * 2, y * 2) & 0xFFFFFF);
    EXPECT_GT(different, 1000U) << "the list of the combo box";
}

TEST_F(DialogDriverTest, StepsAndAnswersOfPromptsTakeTurns) {
    std::string typed;
    EXPECT_EQ(run("TRY CLICK 100\n"
                  "\n"
                  "; a comment, and a blank line that is no Enter\n"
                  "TYPE x\n"
                  "CLICK OK\n"
                  "two words\n"
                  "CLICK 100\nTYPE y\nPRESS Enter\n"
                  "(princ \"behind\")\n",
                  [&] {
                      for (int i = 0; i < 2; ++i) {
                          runModal(small("Ask"), main, [&](HWND dialog, UINT message, WPARAM wParam, LPARAM) {
                              if (isClose(message, wParam)) {
                                  typed += controlText(dialog, 100) + "|";
                                  EndDialog(dialog, IDOK);
                              }
                              return INT_PTR{message == WM_INITDIALOG};
                          });
                          char answer[133] = "";
                          if (i == 0 && acedGetString(1, "\nName: ", answer) == RTNORM)
                              typed += std::string(answer) + "|";
                      }
                  }),
              "");
    EXPECT_EQ(typed, "x|two words|y|");
    EXPECT_THAT(output, HasSubstr("behind"));
}

TEST_F(DialogDriverTest, StepThatCannotBeDoneClosesAllAndCancelsTheCommand) {
    struct Case {
        const char* step;
        const char* complaint;
    };
    const Case cases[] = {
        {"CLIK OK", "\"CLIK\" is no step for a dialog. "},
        {"CLICK \"Missing\"", "click on \"Missing\": there is no such control. "},
        {"CLICK \"Off\"", "click on \"Off\": \"Off\" is disabled. "},
        {"CLICK OK 500,500", "click on \"OK\": \"OK\" is covered, or the point lies outside of it. "},
        {"ITEM 100 1", "click on 100: it has no items. "},
        {"PICK \"File\"", "pick \"File\": no menu that is open has such an item. "},
        {"PICTURE /no/such/folder/a.png", "The picture /no/such/folder/a.png can't be written. "},
    };
    for (const Case& each : cases) {
        std::string seen;
        // The box stands before the dialog; both go, the prompt behind them is cancelled, the next command runs.
        const std::string failures = run(std::string("TRY\nCLICK 100\n") + each.step + "\n(princ \"next\")\n", [&] {
            runModal(small("Ask"), main, [&](HWND dialog, UINT message, WPARAM wParam, LPARAM) {
                if (message == WM_COMMAND && HIWORD(wParam) == EN_SETFOCUS)
                    PostMessage(dialog, WM_APP, 0, 0);
                if (message == WM_APP && seen.empty()) {
                    seen = "box";
                    seen += std::to_string(runModal(small("Inner"), dialog, [](HWND inner, UINT msg, WPARAM w, LPARAM) {
                        if (isClose(msg, w))
                            EndDialog(inner, LOWORD(w));
                        return INT_PTR{msg == WM_INITDIALOG};
                    }));
                }
                if (isClose(message, wParam)) {
                    seen += " dialog" + std::to_string(LOWORD(wParam));
                    EndDialog(dialog, LOWORD(wParam));
                }
                return INT_PTR{message == WM_INITDIALOG};
            });
            char answer[133] = "";
            seen += " prompt" + std::to_string(acedGetString(1, "\nName: ", answer) == RTCAN);
        });
        EXPECT_THAT(failures, StartsWith("3: " + std::string(each.complaint))) << each.step;
        EXPECT_THAT(failures, HasSubstr("The dialog \"Inner\" is open (100 text box, 1 button \"OK\", 30 button "
                                        "\"Off\"). Steps are CLICK, "));
        EXPECT_EQ(seen, "box2 dialog2 prompt1") << each.step;
        EXPECT_THAT(output, HasSubstr("next"));
        EXPECT_EQ(GetActiveWindow(), main);
    }
}

TEST_F(DialogDriverTest, EndOfTheScriptClosesWhatIsOpen) {
    EXPECT_THAT(run("(princ)\nTRY\nCLICK 100\n", [&] { MessageBox(main, "Really?", "Question", MB_YESNO); }),
                StartsWith("3: click on 100: there is no such control. "));
    int answered = 0;
    EXPECT_THAT(run("TRY\n", [&] { answered = MessageBox(main, "Really?", "Question", MB_YESNO); }),
                HasSubstr("The script ended while the dialog \"Question\" was open. Add the steps that close it. The "
                          "dialog \"Question\" is open (6 button \"Yes\", 7 button \"No\"). Steps are CLICK, "));
    EXPECT_EQ(answered, IDNO) << "what does least";
    run("TRY\nPRESS y\n", [&] { answered = MessageBox(main, "Really?", "Question", MB_YESNO); });
    EXPECT_EQ(answered, IDYES);
    run("TRY\n", [&] {
        const HMENU menu = CreatePopupMenu();
        AppendMenu(menu, MF_STRING, 1, "One");
        answered = TrackPopupMenu(menu, TPM_RETURNCMD, 10, 10, 0, main, nullptr);
        DestroyMenu(menu);
    });
    EXPECT_EQ(answered, 0);
}

TEST_F(DialogDriverTest, DialogThatRefusesToCloseIsLeft) {
    int asked = 0;
    const std::string failures = run("TRY\nCLICK 99\n(princ \"next\")\nTRY\nCLICK OK\n", [&] {
        runModal(small("Stubborn"), main, [&](HWND dialog, UINT message, WPARAM wParam, LPARAM) {
            asked += isClose(message, wParam);
            if (asked > 3 && message == WM_COMMAND && LOWORD(wParam) == IDOK)
                EndDialog(dialog, IDOK);
            return INT_PTR{message == WM_INITDIALOG};
        });
    });
    EXPECT_THAT(failures, HasSubstr(" It didn't close on Cancel and was left."));
    EXPECT_EQ(std::count(failures.begin(), failures.end(), '\n'), 1) << "the next dialog is a fresh one: " << failures;
    EXPECT_EQ(asked, 4);
    EXPECT_THAT(output, HasSubstr("next"));
}

TEST_F(DialogDriverTest, LoopThatTakesNoInputIsLeft) {
    // It sees only the mouse, of which the step gives it nothing.
    EXPECT_THAT(run("TRY\nPRESS Enter\n",
                    [] {
                        MSG message{};
                        while (GetMessage(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST) > 0)
                            DispatchMessage(&message);
                    }),
                HasSubstr("the step isn't done: the program takes no input"));
}

TEST_F(DialogDriverTest, DialogThatNeverComesToRestIsLeft) {
    for (const bool closes : {true, false}) {
        const std::string failures = run("TRY\nCLICK OK\n(princ \"next\")", [&] {
            runModal(small("Busy"), main, [closes](HWND dialog, UINT message, WPARAM wParam, LPARAM) {
                if (message == WM_INITDIALOG || message == WM_APP)
                    PostMessage(dialog, WM_APP, 0, 0);
                if (closes && isClose(message, wParam))
                    EndDialog(dialog, IDCANCEL);
                return INT_PTR{message == WM_INITDIALOG};
            });
        });
        EXPECT_THAT(failures, HasSubstr("the dialog \"Busy\" never comes to rest"));
        EXPECT_EQ(failures.find("was left") == std::string::npos, closes) << failures;
        EXPECT_THAT(output, HasSubstr("next"));
        EXPECT_EQ(GetActiveWindow(), main);
    }
}

TEST_F(DialogDriverTest, LoopThatHeedsNothingEndsTheProgram) {
    EXPECT_EXIT(run("TRY\nCLICK 99\n",
                    [&] {
                        MSG message{};
                        for (;;)
                            if (GetMessage(&message, nullptr, 0, 0) > 0)
                                DispatchMessage(&message);
                    }),
                testing::ExitedWithCode(1), "there is no such control.*\n.*can't be closed");
}

} // namespace
} // namespace vndk::app
