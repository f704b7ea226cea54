#include "dialogs/file_dialog.h"

#include "user/dialog.h"
#include "user/dialog_template.h"
#include "win32/button.h"
#include "win32/combobox.h"
#include "win32/edit.h"
#include "win32/error.h"
#include "win32/input.h"
#include "win32/messagebox.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/static.h"

#include <algorithm>
#include <array>

namespace vndk::win32 {

namespace {

constexpr UINT lookInLabel = 1091;
constexpr UINT nameLabel = 1090;
constexpr UINT kindLabel = 1089;
constexpr int columnSize = 1;
constexpr int columnChanged = 2;

DialogControl makeControl(const char* className, const char* text, DWORD style, UINT id, RECT units) {
    DialogControl made;
    made.className = className;
    made.text.kind = TemplateName::Kind::text;
    made.text.text = text;
    made.style = style | WS_CHILD | WS_VISIBLE;
    made.id = id;
    made.units = units;
    return made;
}

// Places in dialog units: left, top, width, height.
DialogTemplate describe(const FileDialogRequest& request) {
    DialogTemplate dialog;
    dialog.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT | DS_CENTER;
    dialog.units = {0, 0, 286, 182};
    dialog.caption = request.title;
    dialog.font = DialogFont{.points = 8, .face = "MS Sans Serif"};
    const DWORD list =
        WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_EDITLABELS | LVS_SHAREIMAGELISTS;
    const DWORD drop = CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP;
    dialog.controls = {
        makeControl("Static", request.save ? "Save &in:" : "Look &in:", WS_GROUP, lookInLabel, {7, 9, 40, 9}),
        makeControl("ComboBox", "", drop, cmb2, {50, 7, 130, 130}),
        makeControl("Button", "&Up", WS_TABSTOP, psh1, {184, 7, 36, 13}),
        makeControl("Button", "New &Folder", WS_TABSTOP, psh2, {224, 7, 55, 13}),
        makeControl("SysListView32", "", list, lst1, {7, 24, 272, 112}),
        makeControl("Static", "File &name:", WS_GROUP, nameLabel, {7, 144, 44, 9}),
        makeControl("Edit", "", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, edt1, {54, 142, 165, 12}),
        makeControl("Static", request.save ? "Save as &type:" : "Files of &type:", WS_GROUP, kindLabel,
                    {7, 162, 46, 9}),
        makeControl("ComboBox", "", drop, cmb1, {54, 160, 165, 80}),
        makeControl("Button", request.save ? "&Save" : "&Open", BS_DEFPUSHBUTTON | WS_TABSTOP, IDOK,
                    {229, 141, 50, 14}),
        makeControl("Button", "Cancel", WS_TABSTOP, IDCANCEL, {229, 160, 50, 14}),
    };
    return dialog;
}

std::string trimmed(std::string text) {
    std::erase(text, '"');
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

} // namespace

INT_PTR FileDialog::run() {
    DialogCreation creation;
    creation.owner = request_.owner;
    creation.procedure = &procedure;
    creation.parameter = reinterpret_cast<LPARAM>(this);
    return runDialog(describe(request_), creation);
}

INT_PTR CALLBACK FileDialog::procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrA(dialog, DWL_USER, lParam);
        auto* const self = reinterpret_cast<FileDialog*>(lParam);
        self->dialog_ = dialog;
        self->initialize();
        return FALSE; // the name has the focus
    }
    auto* const self = reinterpret_cast<FileDialog*>(GetWindowLongPtrA(dialog, DWL_USER));
    return self != nullptr ? self->handle(message, wParam, lParam) : FALSE;
}

INT_PTR FileDialog::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND)
        return command(LOWORD(wParam), HIWORD(wParam));
    if (message == WM_NOTIFY)
        return notify(*reinterpret_cast<const NMHDR*>(lParam));
    return FALSE;
}

void FileDialog::initialize() {
    const HWND list = item(lst1);
    RECT client{};
    GetClientRect(list, &client);
    const int scroll = GetSystemMetrics(SM_CXVSCROLL);
    const int sizeWidth = 70;
    const int changedWidth = 110;
    const int nameWidth = std::max<int>(client.right - scroll - sizeWidth - changedWidth, 100);
    const auto addColumn = [list](int index, const char* text, int width, int format) {
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.pszText = const_cast<LPSTR>(text);
        column.cx = width;
        column.fmt = format;
        SendMessageA(list, LVM_INSERTCOLUMN, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
    };
    addColumn(0, "Name", nameWidth, LVCFMT_LEFT);
    addColumn(columnSize, "Size", sizeWidth, LVCFMT_RIGHT);
    addColumn(columnChanged, "Modified", changedWidth, LVCFMT_LEFT);
    for (const FileKind& kind : request_.kinds)
        SendMessageA(item(cmb1), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(kind.text.c_str()));
    SendMessageA(item(cmb1), CB_SETCURSEL, request_.kind, 0);
    SetDlgItemTextA(dialog_, edt1, request_.name.c_str());
    if (!enter(request_.folder))
        enter("C:\\");
    SetFocus(item(edt1));
    SendMessageA(item(edt1), EM_SETSEL, 0, -1);
}

// Folders.

/// False when the folder can't be read; the dialog stays where it was.
bool FileDialog::enter(const std::string& folder) {
    const std::string& masks = mask_.empty() ? request_.kinds[request_.kind].masks : mask_;
    auto entries = listFolder(folder, masks);
    if (!entries)
        return false;
    request_.folder = folder;
    showPlaces();
    showEntries(*entries);
    return true;
}

void FileDialog::showPlaces() {
    places_ = placesAround(request_.folder);
    const HWND combo = item(cmb2);
    SendMessageA(combo, CB_RESETCONTENT, 0, 0);
    std::size_t current = 0;
    for (std::size_t i = 0; i < places_.size(); ++i) {
        const std::string shown = std::string(static_cast<std::size_t>(places_[i].depth) * 2, ' ') + places_[i].shown;
        SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(shown.c_str()));
        if (places_[i].path == request_.folder)
            current = i;
    }
    SendMessageA(combo, CB_SETCURSEL, current, 0);
    EnableWindow(item(psh1), folderAbove(request_.folder) != request_.folder ? TRUE : FALSE);
}

void FileDialog::showEntries(const std::vector<FolderEntry>& entries) {
    const HWND list = item(lst1);
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    SendMessageA(list, LVM_DELETEALLITEMS, 0, 0);
    entries_ = entries;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        std::string name = entries_[i].name;
        LVITEMA row{};
        row.mask = LVIF_TEXT;
        row.iItem = static_cast<int>(i);
        row.pszText = name.data();
        SendMessageA(list, LVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&row));
        for (const auto& [column, text] : {std::pair(columnSize, entries_[i].folder ? "Folder" : entries_[i].size),
                                           std::pair(columnChanged, entries_[i].changed)}) {
            row.iSubItem = column;
            row.pszText = const_cast<LPSTR>(text.c_str());
            SendMessageA(list, LVM_SETITEMTEXT, i, reinterpret_cast<LPARAM>(&row));
        }
    }
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
}

const FolderEntry* FileDialog::chosen() const {
    const auto row = static_cast<int>(
        SendMessageA(item(lst1), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), MAKELPARAM(LVNI_SELECTED, 0)));
    return row >= 0 && static_cast<std::size_t>(row) < entries_.size() ? &entries_[static_cast<std::size_t>(row)]
                                                                       : nullptr;
}

/// A file that is chosen is the name to open; a folder leaves the name as it is.
void FileDialog::showChoice() {
    const FolderEntry* const entry = chosen();
    if (entry != nullptr && !entry->folder)
        SetDlgItemTextA(dialog_, edt1, entry->name.c_str());
}

void FileDialog::openChosen() {
    const FolderEntry* const entry = chosen();
    if (entry == nullptr)
        return;
    const FolderEntry opened = *entry;
    if (!opened.folder) {
        accept();
        return;
    }
    if (!enter(joined(request_.folder, opened.name)))
        tell(opened.name + "\nThe folder can't be read.", MB_OK | MB_ICONEXCLAMATION);
}

void FileDialog::makeFolder() {
    const std::string name = makeNewFolder(request_.folder);
    if (name.empty()) {
        tell("A folder can't be made in " + request_.folder + ".", MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    enter(request_.folder);
    const auto made =
        std::find_if(entries_.begin(), entries_.end(), [&](const FolderEntry& entry) { return entry.name == name; });
    const HWND list = item(lst1);
    SetFocus(list);
    const auto row = static_cast<WPARAM>(made - entries_.begin());
    SendMessageA(list, LVM_ENSUREVISIBLE, row, FALSE);
    SendMessageA(list, LVM_EDITLABEL, row, 0);
}

/// A new folder's own name.
INT_PTR FileDialog::endLabelEdit(const NMLVDISPINFOA& edited) {
    const auto row = static_cast<std::size_t>(edited.item.iItem);
    if (edited.item.pszText == nullptr || row >= entries_.size())
        return FALSE;
    const std::string name = trimmed(edited.item.pszText);
    const bool plain = !name.empty() && name.find_first_of("\\/:*?<>|") == std::string::npos;
    if (!plain || MoveFileA(joined(request_.folder, entries_[row].name).c_str(),
                            joined(request_.folder, name).c_str()) == FALSE) {
        tell("\"" + name + "\" can't be the folder's name.", MB_OK | MB_ICONEXCLAMATION);
        return FALSE;
    }
    entries_[row].name = name;
    SetWindowLongPtrA(dialog_, DWL_MSGRESULT, TRUE);
    return TRUE;
}

// What the user does.

INT_PTR FileDialog::command(int id, int code) {
    switch (id) {
    case IDOK:
        // Enter in the list opens what is chosen there.
        if (GetFocus() == item(lst1))
            openChosen();
        else
            accept();
        return TRUE;
    case IDCANCEL:
        EndDialog(dialog_, IDCANCEL);
        return TRUE;
    case psh1:
        enter(folderAbove(request_.folder));
        return TRUE;
    case psh2:
        makeFolder();
        return TRUE;
    case cmb1:
        if (code == CBN_SELCHANGE) {
            request_.kind = static_cast<std::size_t>(SendMessageA(item(cmb1), CB_GETCURSEL, 0, 0));
            mask_.clear();
            enter(request_.folder);
        }
        return TRUE;
    case cmb2:
        if (code == CBN_SELCHANGE) {
            const auto place = static_cast<std::size_t>(SendMessageA(item(cmb2), CB_GETCURSEL, 0, 0));
            if (place < places_.size() && !enter(std::string(places_[place].path)))
                showPlaces();
        }
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR FileDialog::notify(const NMHDR& header) {
    if (header.idFrom != static_cast<UINT_PTR>(lst1))
        return FALSE;
    switch (header.code) {
    case LVN_ITEMCHANGED:
        showChoice();
        return TRUE;
    case NM_DBLCLK:
        openChosen();
        return TRUE;
    case LVN_KEYDOWN:
        if (reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey == VK_BACK)
            enter(folderAbove(request_.folder));
        return TRUE;
    case LVN_BEGINLABELEDIT: {
        // Only folders get another name here: a drawing may be open.
        const auto row = static_cast<std::size_t>(reinterpret_cast<const NMLVDISPINFOA&>(header).item.iItem);
        SetWindowLongPtrA(dialog_, DWL_MSGRESULT, row < entries_.size() && entries_[row].folder ? FALSE : TRUE);
        return TRUE;
    }
    case LVN_ENDLABELEDIT:
        return endLabelEdit(reinterpret_cast<const NMLVDISPINFOA&>(header));
    default:
        return FALSE;
    }
}

// The answer.

std::string FileDialog::typedName() const {
    std::array<char, MAX_PATH> text{};
    GetDlgItemTextA(dialog_, edt1, text.data(), static_cast<int>(text.size()));
    return trimmed(text.data());
}

int FileDialog::tell(const std::string& text, UINT kind) const {
    return MessageBoxA(dialog_, text.c_str(), request_.title.c_str(), kind);
}

void FileDialog::accept() {
    const std::string typed = typedName();
    if (typed.empty())
        return;
    if (typed.find_first_of("*?") != std::string::npos) {
        mask_ = typed;
        enter(request_.folder);
        return;
    }
    const auto path = fullPath(request_.folder, typed);
    if (path && isFolder(*path)) {
        if (enter(*path)) {
            SetDlgItemTextA(dialog_, edt1, "");
            SetFocus(item(edt1));
        } else
            tell(typed + "\nThe folder can't be read.", MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    if (acceptFile(typed))
        EndDialog(dialog_, IDOK);
}

std::string FileDialog::withExtension(const std::string& path) const {
    const std::size_t name = path.find_last_of('\\') + 1;
    const bool has = path.find('.', name) != std::string::npos;
    return request_.extension.empty() || has ? path : path + "." + request_.extension;
}

/// False, after a word to the user, when the name won't do.
bool FileDialog::acceptFile(const std::string& typed) {
    const auto path = fullPath(request_.folder, typed);
    if (!path) {
        tell(typed + "\nThis can't be the name of a file: its folder or drive isn't there, or it has characters that "
                     "file names can't have.",
             MB_OK | MB_ICONEXCLAMATION);
        return false;
    }
    const std::string whole = isFile(*path) ? *path : withExtension(*path);
    const bool folderMust = (request_.flags & (OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST)) != 0;
    if (folderMust && !isFolder(folderAbove(whole))) {
        tell(whole + "\nThere is no such folder. Check the name.", MB_OK | MB_ICONEXCLAMATION);
        return false;
    }
    if ((request_.flags & OFN_FILEMUSTEXIST) != 0 && !isFile(whole)) {
        tell(whole + "\nThere is no such file. Check the name.", MB_OK | MB_ICONEXCLAMATION);
        return false;
    }
    if (request_.save && (request_.flags & OFN_OVERWRITEPROMPT) != 0 && isFile(whole) &&
        tell(whole + " already exists.\nDo you want to replace it?", MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2) !=
            IDYES)
        return false;
    path_ = whole;
    return true;
}

} // namespace vndk::win32
