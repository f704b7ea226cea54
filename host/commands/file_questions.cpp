#include "commands/file_questions.h"

#include "ed/host.h"
#include "mfc/afx.h"

namespace vndk::host {

bool wantsFileDialog(const CommandContext& ctx) {
    return ctx.host().commandLine().asksUser() && ctx.host().variables().getShort("FILEDIA") != 0;
}

std::optional<std::string> askFileName(Host& host, const FileQuestion& question) {
    const std::string extension = question.extension;
    const std::string masks = extension.empty() ? "*.*" : "*." + extension;
    const std::string kind = extension.empty() ? "All files" : extension == "dwg" ? "Drawings" : "Files";
    std::string filter = kind + " (" + masks + ")|" + masks + "|";
    if (!extension.empty())
        filter += "All files (*.*)|*.*|";
    const DWORD flags = question.save ? OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST
                                      : OFN_HIDEREADONLY | OFN_FILEMUSTEXIST;
    CFileDialog dialog(!question.save, extension.c_str(), question.start.c_str(), flags, (filter + "|").c_str(),
                       CWnd::FromHandle(host.mainWindow()));
    dialog.m_ofn.lpstrTitle = question.title;
    if (dialog.DoModal() != IDOK)
        return std::nullopt;
    return std::string(dialog.GetPathName().View());
}

Changes askAboutChanges(const CommandContext& ctx, const AcApDocument& document) {
    const std::string text = std::string("Save changes to ") + document.fileName() + "?";
    switch (::MessageBoxA(ctx.host().mainWindow(), text.c_str(), "vondrake", MB_YESNOCANCEL | MB_ICONEXCLAMATION)) {
    case IDYES:
        return Changes::Save;
    case IDNO:
        return Changes::Discard;
    default:
        return Changes::Keep;
    }
}

} // namespace vndk::host
