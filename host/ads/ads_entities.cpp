// Entities by name, and conversions between numbers and text.
#include "ads/ads.h"

#include "ads/entity_data.h"
#include "ed/host.h"
#include "ed/pick.h"
#include "ge/unit_text.h"

#include <cmath>
#include <cstring>
#include <optional>

using vndk::host::Host;

namespace {

AcDbDatabase* database() {
    Host* const host = Host::current();
    AcApDocument* const document = host ? host->documents().curDocument() : nullptr;
    return document ? document->database() : nullptr;
}

AcDbObjectId idOf(const ads_name name) {
    AcDbObjectId id;
    if (name)
        id.setFromOldId(name[0]);
    return id;
}

int giveName(AcDbObjectId id, ads_name result) {
    if (id.isNull() || !result)
        return RTERROR;
    result[0] = id.asOldId();
    result[1] = 0;
    return RTNORM;
}

/// -1 takes the drawing's own setting.
int setting(int given, const char* variable) {
    return given != -1 ? given : Host::current() ? Host::current()->variables().getShort(variable) : 0;
}

vndk::ge::UnitForm unitForm() {
    return setting(-1, "UNITMODE") == 0 ? vndk::ge::UnitForm::Read : vndk::ge::UnitForm::Typed;
}

int giveText(const std::optional<std::string>& text, char* result) {
    if (!text || !result)
        return RTERROR;
    std::memcpy(result, text->c_str(), text->size() + 1);
    return RTNORM;
}

} // namespace

int acdbEntLast(ads_name result) {
    return database() ? giveName(vndk::host::lastEntity(*database()), result) : RTERROR;
}

int acdbEntNext(const ads_name entity, ads_name result) {
    return database() ? giveName(vndk::host::nextEntity(*database(), idOf(entity)), result) : RTERROR;
}

resbuf* acdbEntGet(const ads_name entity) { return vndk::host::entityData(idOf(entity)); }

int acdbEntDel(const ads_name entity) { return vndk::host::toggleErased(idOf(entity)) ? RTNORM : RTERROR; }

int acdbRToS(ads_real value, int unit, int precision, char* text) {
    // Numbers beyond this have more digits than the callers' buffers.
    if (!std::isfinite(value) || std::abs(value) >= 1e99)
        return RTERROR;
    return giveText(vndk::ge::lengthText(value, setting(unit, "LUNITS"), setting(precision, "LUPREC"),
                                         setting(-1, "DIMZIN"), unitForm()),
                    text);
}

int acdbAngToS(ads_real radians, int unit, int precision, char* text) {
    if (!std::isfinite(radians))
        return RTERROR;
    return giveText(vndk::ge::angleText(radians, setting(unit, "AUNITS"), setting(precision, "AUPREC"), unitForm()),
                    text);
}

int acdbDisToF(const char* text, int /*unit*/, ads_real* value) {
    const auto number = text && value ? vndk::ge::lengthFromText(text) : std::nullopt;
    if (!number)
        return RTERROR;
    *value = *number;
    return RTNORM;
}

int acdbAngToF(const char* text, int unit, ads_real* radians) {
    const auto angle = text && radians ? vndk::ge::angleFromText(text, setting(unit, "AUNITS")) : std::nullopt;
    if (!angle)
        return RTERROR;
    *radians = *angle;
    return RTNORM;
}
