#include "profile.h"

#include "console.h"

namespace vndk::app {

std::optional<std::string> Profile::read(std::string_view section, std::string_view key) {
    const std::string sectionName(section), keyName(key);
    // The framework answers with the fallback for a key that isn't there; no value can hold this one.
    constexpr const char* kMissing = "\n";
    const CString value = application_.GetProfileString(sectionName.c_str(), keyName.c_str(), kMissing);
    if (value == kMissing)
        return std::nullopt;
    return std::string(value.View());
}

void Profile::write(std::string_view section, std::string_view key, std::string_view value) {
    const bool kept = application_.WriteProfileString(std::string(section).c_str(), std::string(key).c_str(),
                                                      std::string(value).c_str());
    if (!kept && !complained_)
        complain("The setting " + std::string(key) + " can't be kept in \"" +
                 std::string(application_.GetProfileFile().View()) + "\"; settings last for this run only.");
    complained_ = complained_ || !kept;
}

} // namespace vndk::app
