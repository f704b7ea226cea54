// The framework as module code sees it: one include for all of it.
#pragma once

#include "mfc/module_state.h"
#include "mfc/object.h"
#include "mfc/string.h"
#include "mfc/string_array.h"
#include "mfc/winapp.h"
#include "win32/windows.h"

class CWnd;
