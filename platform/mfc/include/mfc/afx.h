// The framework as module code sees it: one include for all of it.
#pragma once

#include "mfc/collections.h"
#include "mfc/common_controls.h"
#include "mfc/controls.h"
#include "mfc/dc.h"
#include "mfc/dialog.h"
#include "mfc/dispatch.h"
#include "mfc/file.h"
#include "mfc/frame.h"
#include "mfc/image_list.h"
#include "mfc/menu.h"
#include "mfc/message_map.h"
#include "mfc/module_state.h"
#include "mfc/string_array.h"
#include "mfc/winapp.h"
#include "win32/windows.h"
