// The platform's calls as module code sees them: one include for all of them.
#pragma once

#include "win32/error.h"
#include "win32/files.h"
#include "win32/module_record.h"
#include "win32/profile.h"
#include "win32/resources.h"
#include "win32/types.h"
