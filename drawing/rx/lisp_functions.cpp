#include "rx/lisp_functions.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxLispFunctions, AcRxObject)
