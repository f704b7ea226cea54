// The dialog behind GetOpenFileName and GetSaveFileName.
#pragma once

#include "dialogs/folder_listing.h"
#include "win32/commdlg.h"
#include "win32/dialog.h"
#include "win32/listview.h"

#include <string>
#include <vector>

namespace vndk::win32 {

struct FileKind {
    std::string text;
    std::string masks;
};

struct FileDialogRequest {
    HWND owner = nullptr;
    bool save = false;
    std::string title;
    std::string folder;
    std::string name;
    std::vector<FileKind> kinds; // at least one
    std::size_t kind = 0;
    std::string extension; // without a dot; may be empty
    DWORD flags = 0;
};

class FileDialog {
public:
    explicit FileDialog(FileDialogRequest request) : request_(std::move(request)) {}

    /// IDOK, IDCANCEL; -1 when the dialog can't be made.
    INT_PTR run();
    /// In full; valid after IDOK.
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::size_t kind() const { return request_.kind; }

private:
    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR handle(UINT message, WPARAM wParam, LPARAM lParam);
    void initialize();
    INT_PTR command(int id, int code);
    INT_PTR notify(const NMHDR& header);
    INT_PTR endLabelEdit(const NMLVDISPINFOA& edited);

    bool enter(const std::string& folder);
    void showPlaces();
    void showEntries(const std::vector<FolderEntry>& entries);
    void showChoice();
    void openChosen();
    void makeFolder();
    void accept();
    bool acceptFile(const std::string& typed);
    std::string withExtension(const std::string& path) const;
    [[nodiscard]] const FolderEntry* chosen() const;
    [[nodiscard]] HWND item(int id) const { return GetDlgItem(dialog_, id); }
    [[nodiscard]] std::string typedName() const;
    int tell(const std::string& text, UINT kind) const;

    FileDialogRequest request_;
    HWND dialog_ = nullptr;
    std::string path_;
    std::string mask_; // typed by the user in place of the kind's; empty: none
    std::vector<FolderEntry> entries_;
    std::vector<FolderPlace> places_;
};

} // namespace vndk::win32
