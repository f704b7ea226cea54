#include "db/stand_in.h"

#include "rx/class.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<AcDbStandInClass>& standIns() {
    static std::vector<AcDbStandInClass> classes;
    return classes;
}

} // namespace

void acdbRegisterStandIn(const AcDbStandInClass& standIn) {
    acdbUnregisterStandIn(standIn.cls);
    standIns().push_back(standIn);
}

void acdbUnregisterStandIn(AcRxClass* cls) {
    std::erase_if(standIns(), [cls](const AcDbStandInClass& entry) { return entry.cls == cls; });
}

const AcDbStandInClass* acdbFindStandIn(std::string_view applicationName, std::string_view className) {
    const auto& classes = standIns();
    const auto it = std::find_if(classes.begin(), classes.end(), [&](const AcDbStandInClass& entry) {
        return applicationName == entry.applicationName && className == entry.cls->name();
    });
    return it == classes.end() ? nullptr : &*it;
}

const AcDbStandInClass* acdbStandInOf(const AcRxClass* cls) {
    const auto& classes = standIns();
    const auto it =
        std::find_if(classes.begin(), classes.end(), [cls](const AcDbStandInClass& entry) { return entry.cls == cls; });
    return it == classes.end() ? nullptr : &*it;
}
