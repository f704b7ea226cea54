// The module's singletons, and its string table.
#pragma once

#include "mfc/afx.h"

class CPaletteEditorReactor;

/// The library's own handle, known from process attach on.
HINSTANCE ModuleInstance();
/// Where the module's resources are; null when it couldn't become an extension of the framework.
HINSTANCE ModuleResourceHandle();

/// The one editor reactor; it lives from process attach to process detach.
CPaletteEditorReactor* EditorReactor();

/// String `id` of the module's own string table, cut to 999 characters. Empty if there is none.
CString LoadResString(UINT id);
