// The platform's calls as module code sees them: one include for all of them. The controls' messages stand in headers
// of their own, as on the platform the common controls' do.
#pragma once

#include "win32/dialog.h"
#include "win32/draw.h"
#include "win32/error.h"
#include "win32/files.h"
#include "win32/fonts.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/memory.h"
#include "win32/menu.h"
#include "win32/messagebox.h"
#include "win32/metrics.h"
#include "win32/module_record.h"
#include "win32/paint.h"
#include "win32/profile.h"
#include "win32/queue.h"
#include "win32/resources.h"
#include "win32/shell.h"
#include "win32/types.h"
#include "win32/window.h"
