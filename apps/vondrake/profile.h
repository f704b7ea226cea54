// The user's settings, in the file that the framework's application object knows.
#pragma once

#include "ed/host.h"
#include "mfc/winapp.h"

namespace vndk::app {

class Profile final : public host::ProfileStore {
public:
    /// `application` must outlive this.
    explicit Profile(CWinApp& application) : application_(application) {}

    std::optional<std::string> read(std::string_view section, std::string_view key) override;
    /// A setting that can't be kept lasts for the run; the first one is complained of.
    void write(std::string_view section, std::string_view key, std::string_view value) override;

private:
    CWinApp& application_;
    bool complained_ = false;
};

} // namespace vndk::app
