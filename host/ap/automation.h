// The program as other programs drive it: the application, its documents, a document.
#pragma once

#include "win32/automation.h"

namespace vndk::host {

constexpr DISPID kDocumentsProperty = 32;
constexpr DISPID kOpenMethod = 0x60020005; // of the documents: path, and whether it is opened for reading only

/// The application's object. There is one, which works on the current host; it never ends.
IDispatch* applicationObject();

} // namespace vndk::host
