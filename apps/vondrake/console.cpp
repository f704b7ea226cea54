#include "console.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

namespace vndk::app {

namespace {

int g_lostBy = 0; // errno of the first write that failed

void noteLoss() {
    if (g_lostBy == 0)
        g_lostBy = errno != 0 ? errno : EIO;
}

} // namespace

bool writeOut(std::string_view utf8) {
    errno = 0;
    if (g_lostBy == 0 && std::fwrite(utf8.data(), 1, utf8.size(), stdout) != utf8.size())
        noteLoss();
    return g_lostBy == 0;
}

bool finishOut() {
    errno = 0;
    if (std::fflush(stdout) != 0)
        noteLoss();
    if (g_lostBy == 0)
        return true;
    const std::string reason = std::strerror(g_lostBy);
    std::fprintf(stderr, "vondrake: The output could not be written: %s.\n", reason.c_str());
    return false;
}

void complain(std::string_view utf8) {
    std::fflush(stdout);
    // What is quoted from a script may hold bytes that would end the message or play with the terminal.
    std::string line = "vondrake: ";
    for (const char c : utf8)
        line += (c >= 0 && c < ' ' && c != '\n') || c == '\x7F' ? '?' : c;
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace vndk::app
