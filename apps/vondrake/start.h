// The steps in which the program starts, with or without a window. Each complains when it fails.
#pragma once

#include "ed/host.h"

#include <string>

namespace vndk::app {

/// The classes of Intelligent objects; needed before a drawing that holds some is read.
bool loadObjectLibrary(host::Host& host);
/// The module; it finds its first drawing open when it starts, as it would in a running host.
bool loadModule(host::Host& host);
/// A drawing's name as it was typed (UTF-8), in either form; empty: a new drawing. Gives the complaint in code page
/// 1252, empty when all went well.
std::string openDrawing(host::Host& host, const std::string& drawing);

} // namespace vndk::app
