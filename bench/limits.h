// Figures that must hold: told one by one, and together the program's exit status.
#pragma once

#include <cmath>
#include <cstdio>
#include <string>

namespace vndk::bench {

class Limits {
public:
    void atLeast(const std::string& what, double figure, double limit) { note(what, figure, limit, "at least"); }
    void atMost(const std::string& what, double figure, double limit) { note(what, figure, limit, "at most"); }
    int exitStatus() const { return missed_ == 0 ? 0 : 1; }

private:
    void note(const std::string& what, double figure, double limit, const std::string& side) {
        const bool measured = figure > 0 && std::isfinite(figure); // not so after a benchmark that gave up
        const bool held = measured && (side == "at least" ? figure >= limit : figure <= limit);
        missed_ += !held;
        std::printf("%-64s %12.2f  (%s %.2f)  %s\n", what.c_str(), figure, side.c_str(), limit, held ? "ok" : "MISSED");
    }

    int missed_ = 0;
};

} // namespace vndk::bench
