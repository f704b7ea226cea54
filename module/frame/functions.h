// The module's LISP functions.
#pragma once

/// Defines the functions for the current document. 0, or RTERROR at the first one that can't be defined.
int RegisterFunctions();
/// Calls the function whose code the host has received. Its result, or RTERROR for a code that no function has.
int DispatchFunction();
