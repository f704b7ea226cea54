// What drawings ask of the host.
#pragma once

#include "ap/insert_icons.h"
#include "db/database.h"

namespace vndk::host {

class Host;

class HostServices : public AcDbHostApplicationServices {
public:
    explicit HostServices(Host& host) : host_(host) {}

    /// Names in either form, and the system's own paths. A name without drive or leading separator is looked for in the
    /// working folder, then in that of the current drawing, then among the support files.
    Acad::ErrorStatus findFile(std::string& fullPath, const char* fileName) override;

private:
    bool findRelative(std::string& fullPath, const std::string& name) const;

    Host& host_;
    InsertIcons insertIcons_;
};

} // namespace vndk::host
