#include "ui/menu_commands.h"

#include "ed/host.h"
#include "ui/resource.h"

#include <algorithm>
#include <set>

namespace vndk::host {

namespace {

// The underscore and the dot are those of macros: global names, whatever language or module gives others.
constexpr MenuCommand kRows[] = {
    {ID_FILE_NEW_DRAWING, "_NEW\n.\n", "NEW"},
    {ID_FILE_OPEN_DRAWING, "_OPEN\n", "OPEN"},
    {ID_FILE_CLOSE_DRAWING, "_CLOSE\n", "CLOSE"},
    {ID_FILE_SAVE_DRAWING, "_QSAVE\n", "QSAVE"},
    {ID_FILE_SAVE_DRAWING_AS, "_SAVEAS\n", "SAVEAS"},
    {ID_FILE_QUIT, "_QUIT\n", "QUIT"},
    {ID_EDIT_UNDO_COMMAND, "_U\n", "U"},
    {ID_EDIT_REDO_COMMAND, "_REDO\n", "REDO"},
    {ID_EDIT_ERASE, "_ERASE\n", "ERASE"},
    {ID_VIEW_ZOOM_ALL, "_ZOOM\n_All\n", "ZOOM"},
    {ID_VIEW_ZOOM_EXTENTS, "_ZOOM\n_Extents\n", "ZOOM"},
    {ID_VIEW_ZOOM_WINDOW, "_ZOOM\n_Window\n", "ZOOM"},
    {ID_VIEW_ZOOM_PREVIOUS, "_ZOOM\n_Previous\n", "ZOOM"},
    {ID_VIEW_ZOOM_IN, "_ZOOM\n2x\n", "ZOOM"},
    {ID_VIEW_ZOOM_OUT, "_ZOOM\n0.5x\n", "ZOOM"},
    {ID_VIEW_PAN, "_PAN\n", "PAN"},
    {ID_VIEW_REGEN, "_REGEN\n", "REGEN"},
    {ID_VIEW_PLAN, "_PLAN\n\n", "PLAN"},
    {ID_VIEW_FRONT, "_VPOINT\n0,-1,0\n", "VPOINT"},
    {ID_VIEW_RIGHT, "_VPOINT\n1,0,0\n", "VPOINT"},
    {ID_VIEW_SOUTHWEST, "_VPOINT\n-1,-1,1\n", "VPOINT"},
    {ID_VIEW_SOUTHEAST, "_VPOINT\n1,-1,1\n", "VPOINT"},
    {ID_INSERT_BLOCK, "_INSERT\n", "INSERT"},
    {ID_INSERT_PALETTE, "BLOCKS\n", "BLOCKS"},
    {ID_DRAW_LINE, "_LINE\n", "LINE"},
    {ID_DRAW_POLYLINE, "_PLINE\n", "PLINE"},
    {ID_DRAW_ARC, "_ARC\n", "ARC"},
    {ID_DRAW_CIRCLE, "_CIRCLE\n", "CIRCLE"},
    {ID_DRAW_TEXT, "_TEXT\n", "TEXT"},
    {ID_DRAW_BLOCK, "_BLOCK\n", "BLOCK"},
    {ID_DRAW_ATTRIBUTE, "_ATTDEF\n", "ATTDEF"},
    {ID_MODIFY_ATTRIBUTES, "EATTEDIT\n", "EATTEDIT"},
    {ID_MODIFY_COPY, "_COPY\n", "COPY"},
    {ID_MODIFY_MIRROR, "_MIRROR\n", "MIRROR"},
    {ID_MODIFY_MOVE, "_MOVE\n", "MOVE"},
    {ID_MODIFY_ROTATE, "_ROTATE\n", "ROTATE"},
    {ID_MODIFY_SCALE, "_SCALE\n", "SCALE"},
    {ID_MODIFY_EXPLODE, "_EXPLODE\n", "EXPLODE"},
    {ID_MODIFY_LAYER, "_LAYER\n", "LAYER"},
    {ID_MODIFY_PURGE, "_PURGE\n", "PURGE"},
};

constexpr const char* kKeys = "\nKeys:\n"
                              "  Enter, Space   end an answer; at the command prompt they repeat the last command\n"
                              "  Escape         cancels\n"
                              "  Up, Down       bring earlier lines back\n"
                              "  Tab            completes a command's name\n"
                              "  F1 this list   F2 text window   F3 object snaps   F8 ortho\n"
                              "  Ctrl+N new   Ctrl+O open   Ctrl+S save   Ctrl+Shift+S save as   Ctrl+F4 close\n"
                              "  Ctrl+Z undo   Ctrl+Y redo   Ctrl+C, Ctrl+V, Ctrl+X in texts   Del erases\n"
                              "  Ctrl+Tab, Ctrl+Shift+Tab   next and previous drawing\n"
                              "\nMouse:\n"
                              "  wheel zooms at the cursor, middle button pans, its double click shows all\n"
                              "  right button   Enter\n";

constexpr std::size_t kColumn = 14;
constexpr std::size_t kColumns = 6;

} // namespace

const MenuCommand* findMenuCommand(UINT id) {
    const auto* const row =
        std::find_if(std::begin(kRows), std::end(kRows), [id](const MenuCommand& item) { return item.id == id; });
    return row != std::end(kRows) ? row : nullptr;
}

bool canAct(const MenuCommand& row, Host& host) {
    const AcEdCommand* const command = host.commands().lookupTyped(std::string("_") + row.command);
    if (!command)
        return false;
    const AcApDocument* const document = host.documents().curDocument();
    if (!document)
        return command->builtIn() && command->builtIn()->worksWithoutDrawing;
    // A command that waits is cancelled, so that there is something to take back then.
    const AcDbUndoController& undo = document->database()->undo();
    const bool idle = !host.commandLine().isStepping();
    if (row.id == ID_EDIT_UNDO_COMMAND)
        return !idle || undo.undoCount() > 0;
    if (row.id == ID_EDIT_REDO_COMMAND)
        return idle && undo.redoCount() > 0;
    return true;
}

std::string commandsAndKeys(Host& host) {
    std::set<std::string> names;
    for (const AcEdCommand* const command : host.commands().commands())
        if (std::string(command->globalName()).find('-') != 0)
            names.insert(command->globalName());
    std::string text = "\nCommands:";
    std::size_t place = 0;
    for (const std::string& name : names) {
        text += place++ % kColumns == 0 ? "\n  " : "";
        text += name;
        text.append(name.size() < kColumn ? kColumn - name.size() : 1, ' ');
    }
    return text + "\n" + kKeys;
}

} // namespace vndk::host
