// How a library that knows the database and nothing of a host gives the user LISP functions.
//
// A program with a command line keeps one object of this class in acrxSysRegistry() under kRxLispFunctions. Without one
// there is none, and a library needs none. A library defines its functions at each kLoadDwgMsg.
#pragma once

#include "rx/class.h"

inline constexpr const char* kRxLispFunctions = "LispFunctions";

class AcRxLispFunctions : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcRxLispFunctions)

public:
    using Function = void (*)();

    /// Defines a function in the current document, for as long as the library that runs stays loaded. It takes any
    /// arguments, has no value and prints nothing. False without a document, outside of a message to a library, and
    /// for an empty name.
    virtual bool define(const char* name, Function function) = 0;
    /// What has changed in the current document is on the screen when it returns.
    virtual void updateDisplay() = 0;
};
