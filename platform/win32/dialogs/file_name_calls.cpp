// GetOpenFileName and GetSaveFileName.
#include "dialogs/file_dialog.h"

#include <cstring>

namespace vndk::win32 {

namespace {

DWORD lastDialogError = 0;

std::vector<FileKind> kindsOf(LPCSTR filter) {
    std::vector<FileKind> kinds;
    while (filter != nullptr && *filter != '\0') {
        FileKind kind;
        kind.text = filter;
        filter += kind.text.size() + 1;
        kind.masks = filter;
        filter += kind.masks.size() + 1;
        kinds.push_back(std::move(kind));
    }
    if (kinds.empty())
        kinds.push_back({"All files (*.*)", "*.*"});
    return kinds;
}

FileDialogRequest requestOf(const OPENFILENAMEA& wanted, bool save) {
    FileDialogRequest request;
    request.owner = wanted.hwndOwner;
    request.save = save;
    request.title = wanted.lpstrTitle != nullptr ? wanted.lpstrTitle : save ? "Save As" : "Open";
    request.kinds = kindsOf(wanted.lpstrFilter);
    if (wanted.nFilterIndex >= 1 && wanted.nFilterIndex <= request.kinds.size())
        request.kind = wanted.nFilterIndex - 1;
    request.extension = wanted.lpstrDefExt != nullptr ? wanted.lpstrDefExt : "";
    request.flags = wanted.Flags;

    const std::string working = fullPath("", "./").value_or("C:\\");
    const std::string first = wanted.lpstrInitialDir != nullptr ? wanted.lpstrInitialDir : "";
    request.folder = (first.empty() ? std::nullopt : fullPath(working, first)).value_or(working);
    const std::string name = wanted.lpstrFile;
    const std::size_t behind = name.find_last_of("\\/:") + 1; // 0 without a folder
    request.name = name.substr(behind);
    if (behind > 0)
        if (const auto folder = fullPath(request.folder, name.substr(0, behind)); folder && isFolder(*folder))
            request.folder = *folder;
    return request;
}

BOOL fail(DWORD error) {
    lastDialogError = error;
    return FALSE;
}

BOOL answer(OPENFILENAMEA& wanted, const FileDialog& dialog) {
    const std::string& path = dialog.path();
    if (path.size() >= wanted.nMaxFile)
        return fail(FNERR_BUFFERTOOSMALL);
    std::memcpy(wanted.lpstrFile, path.c_str(), path.size() + 1);
    const std::size_t name = path.find_last_of('\\') + 1;
    const std::size_t dot = path.find_last_of('.');
    wanted.nFileOffset = static_cast<WORD>(name);
    wanted.nFileExtension = static_cast<WORD>(dot != std::string::npos && dot > name ? dot + 1 : 0);
    wanted.nFilterIndex = static_cast<DWORD>(dialog.kind() + 1);
    if (wanted.lpstrFileTitle != nullptr && path.size() - name < wanted.nMaxFileTitle)
        std::memcpy(wanted.lpstrFileTitle, path.c_str() + name, path.size() - name + 1);
    return TRUE;
}

BOOL ask(OPENFILENAMEA* wanted, bool save) {
    lastDialogError = 0;
    if (wanted == nullptr || wanted->lStructSize < sizeof *wanted)
        return fail(CDERR_STRUCTSIZE);
    if (wanted->lpstrFile == nullptr || wanted->nMaxFile == 0)
        return fail(FNERR_BUFFERTOOSMALL);
    FileDialog dialog(requestOf(*wanted, save));
    switch (dialog.run()) {
    case IDOK:
        return answer(*wanted, dialog);
    case -1:
        return fail(CDERR_INITIALIZATION);
    default:
        return FALSE;
    }
}

} // namespace

} // namespace vndk::win32

BOOL GetOpenFileNameA(OPENFILENAMEA* wanted) { return vndk::win32::ask(wanted, false); }
BOOL GetSaveFileNameA(OPENFILENAMEA* wanted) { return vndk::win32::ask(wanted, true); }
DWORD CommDlgExtendedError() { return vndk::win32::lastDialogError; }
