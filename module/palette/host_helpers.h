// The way from the palette to the host: text for its command line, the numbers in it, drawings opened and attached.
#pragma once

#include "mfc/afx.h"

/// Decimal, eight places, whatever the drawing's units; "0.0" when the host can't tell.
CString CoordToText(double value);
/// Decimal.
CString IntToText(long value);

/// The focus goes to the host's docked command line, if it has one. Before the user is asked for anything.
void FocusCommandLine();
/// Has the host run `text`, which ends in a blank, in the current drawing's command line when it gets to it.
void SendToCommandLine(const CString& text);

/// Cancels what runs and inserts by the function of that name: at the command line, (name "target" (list X Y Z)).
void SendInsertion(const char* pszFunction, const CString& strTarget, const double* pPoint);

/// Opens the drawing for writing, as a document of its own. The document's object, with a reference that is the
/// caller's; null without a program. Throws what COleDispatchDriver::InvokeHelper throws.
LPDISPATCH OpenDrawing(const char* path);

/// Asks for a point and attaches the drawing there, under its file's name without ".dwg".
void AttachXref(CString strPath, CString strFileName);
