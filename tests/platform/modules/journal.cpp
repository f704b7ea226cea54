#include "platform/modules/journal.h"

std::vector<std::string>& journal() {
    static std::vector<std::string> lines;
    return lines;
}
