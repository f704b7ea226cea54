// The program's output: standard output for results, standard error for complaints.
#pragma once

#include <string_view>

namespace vndk::app {

/// Writes UTF-8 to standard output. False once something couldn't be written.
bool writeOut(std::string_view utf8);
/// Sends what is held back. False, after a complaint, when any of the output was lost.
bool finishOut();
/// "vondrake: ..." on a line of standard error, after what standard output holds back.
void complain(std::string_view utf8);

} // namespace vndk::app
