// The host as plain functions: LISP functions of modules, prompts, variables, text, conversions.
//
// Results are RTNORM on success, RTERROR for wrong arguments or where nothing is current, RTCAN when the user
// cancelled, RTNONE for an empty answer, RTKWORD for a keyword (acedGetInput has it). Points are in the current user
// coordinate system, angles in radians. Text is 8-bit in code page 1252.
#pragma once

#include "db/open.h"
#include "db/resbuf.h"
#include "win32/types.h"

#include <cstdarg>

class CFrameWnd;
class CWinApp;
class CWnd;

// LISP functions of modules. Called from within a message to acrxEntryPoint, they work for that application and the
// current document.

/// Defines the LISP function `name` (without regard to case) for this application's function code `code`, 0 or more.
/// RTNORM, or 0 when the name is empty, the code negative, or no application and document are current.
int acedDefun(const char* name, int code);
/// Takes the function away again. RTNORM or RTERROR.
int acedUndef(const char* name, int code);
/// Calls `handler` directly for that code, in place of kInvkSubrMsg; null goes back to the message. The handler's
/// result is RTERROR for a LISP error, anything else is fine. RTNORM or 0.
int acedRegFunc(int (*handler)(), int code);
/// Function code of the call that runs; RTERROR outside of one.
int acedGetFunCode();
/// The arguments of the call that runs as a new list: RTSTR, RTSHORT, RTLONG (integers beyond a short), RTREAL,
/// RTPOINT and RT3DPOINT (lists of two and three numbers), RTLB ... RTLE (other lists, RTDOTE before the end of a
/// dotted pair), RTENAME, RTPICKS, RTNIL, RTT. Null without arguments, and when one can't be told (a function).
/// The caller may release it; the host releases what is left when the call ends.
resbuf* acedGetArgs();

// The value that the call gives to LISP; the last one wins. RTERROR outside of a call.
int acedRetVoid(); ///< a value that isn't printed
int acedRetNil();
int acedRetT();
int acedRetInt(int value);
int acedRetReal(ads_real value);
int acedRetStr(const char* value);
int acedRetPoint(const ads_point value);
int acedRetName(const ads_name value, int type);
int acedRetVal(const resbuf* value);
int acedRetList(const resbuf* list);

// Text.
/// Prints to the command line as printf does.
int acutPrintf(const char* format, ...) __attribute__((format(printf, 1, 2)));
int acedPrompt(const char* text);
/// Shows the message until the user has read it. The script that runs has failed at this line.
int acedAlert(const char* message);
/// An application's complaint about itself, on a line of its own.
int acdbFail(const char* message);

// Prompts; `prompt` may be null. See ed/prompts.h for what a user may type.
int acedInitGet(int bits, const char* keywords);
int acedGetPoint(const ads_point base, const char* prompt, ads_point result);
int acedGetCorner(const ads_point base, const char* prompt, ads_point result);
int acedGetDist(const ads_point base, const char* prompt, ads_real* result);
int acedGetAngle(const ads_point base, const char* prompt, ads_real* result);
int acedGetOrient(const ads_point base, const char* prompt, ads_real* result);
int acedGetReal(const char* prompt, ads_real* result);
int acedGetInt(const char* prompt, int* result);
/// `result` takes up to 132 characters and the closing zero.
int acedGetKword(const char* prompt, char* result);
/// With `blanks` the text may hold blanks. `result` takes up to 255 characters and the closing zero; a longer answer is
/// refused with a message and asked for again.
int acedGetString(int blanks, const char* prompt, char* result);
/// Asks for a file in a dialog. `name` is one to begin with, `extension` without a dot (null: any), flag 1 means that
/// the file is to be written. The name, in full, comes as RTSTR (free it with acutDelString). RTCAN when the user gave
/// up.
int acedGetFileD(const char* title, const char* name, const char* extension, int flags, resbuf* result);
/// The keyword after RTKWORD. `result` takes up to 132 characters and the closing zero; RTERROR for a longer text.
int acedGetInput(char* result);
/// RTERROR when nothing is picked.
int acedEntSel(const char* prompt, ads_name entity, ads_point point);
/// True after the user pressed the cancel key.
int acedUsrBrk();

// Variables. RTSHORT, RTREAL, RTSTR (the text is the caller's to free), RTPOINT, RT3DPOINT.
int acedGetVar(const char* name, resbuf* result);
int acedSetVar(const char* name, const resbuf* value);

// Commands.
/// Type and value in turns, ended by RTNONE (0 works too): RTSTR const char*, RTREAL ads_real, RTSHORT int, RTPOINT and
/// RT3DPOINT ads_point, RTENAME ads_name. An empty text is Enter, "\\" (PAUSE) asks the user.
int acedCommand(int type, ...);
int acedCmd(const resbuf* list);
/// Undefines (1) or brings back (0) a command of the host's own. RTERROR: it has none of that name.
int acedCmdUndefine(const char* name, int undefine);

// Display. Without a window there is nothing to draw.
/// Prepares the current drawing anew and shows it.
int ads_regen();
/// Shows what has changed.
int acedUpdateDisplay();

// Entities by name. acdbEntGet gives a list by DXF group codes, owned by the caller.
int acdbEntLast(ads_name result);
/// The first entity of the current space with a null `entity`, else the one behind it.
int acdbEntNext(const ads_name entity, ads_name result);
resbuf* acdbEntGet(const ads_name entity);
int acdbEntDel(const ads_name entity);

// Conversions between numbers and text. `unit`: linear 1 scientific, 2 decimal, 3 engineering, 4 architectural,
// 5 fractional; angular 0 degrees, 1 degrees/minutes/seconds, 2 grads, 3 radians, 4 surveyor's; -1 takes LUNITS or
// AUNITS. `precision` -1 takes LUPREC or AUPREC. DIMZIN tells which zeros lengths show, UNITMODE 1 leaves blanks out.
// Buffers take the text whole: 128 characters are enough. Text is read in every unit's form; `unit` is that of a bare
// angle. RTERROR: no such unit, or the text is none; `value` is left alone.
int acdbRToS(ads_real value, int unit, int precision, char* text);
int acdbAngToS(ads_real radians, int unit, int precision, char* text);
int acdbDisToF(const char* text, int unit, ads_real* value);
int acdbAngToF(const char* text, int unit, ads_real* radians);

// Files.
/// The full name, in the DOS form, of a file that lies in the working folder, the current drawing's or among the
/// support files, or where `name` says. `result` takes 511 characters and the closing zero. RTERROR: there is none, or
/// its name can't be told.
int acedFindFile(const char* name, char* result);

/// The colours of the drawing windows.
struct AcColorSettings {
    DWORD dwGfxModelBkColor; ///< background of model space
};
/// FALSE for a null pointer.
BOOL acedGetCurrentColors(AcColorSettings* colors);

// Windows. Null as long as the host runs without one.
HWND adsw_acadMainWnd();
CFrameWnd* acedGetAcadFrame();
/// The command line docked in the frame, to which the focus goes before the user is asked.
CWnd* acedGetAcadDockCmdLine();
/// The program; its automation object (CCmdTarget::GetIDispatch) has the open drawings as property 32, whose method
/// 0x60020005 opens the drawing of a path.
CWinApp* acedGetAcadWinApp();
/// Sets up the user-interface libraries that dialogs of modules are built on.
void InitAcUiDLL();
