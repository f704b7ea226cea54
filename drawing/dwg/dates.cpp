#include "dwg/dates.h"

#include <chrono>

namespace vndk::dwg {

JulianTime currentTime() {
    using namespace std::chrono;
    constexpr uint32_t kJulianDayOf1970 = 2440588;
    const auto now = system_clock::now().time_since_epoch();
    const auto days = floor<std::chrono::days>(now);
    return {kJulianDayOf1970 + static_cast<uint32_t>(days.count()),
            static_cast<uint32_t>(duration_cast<milliseconds>(now - days).count())};
}

} // namespace vndk::dwg
