// The table of system variables. Rows without functions lead by name to the header of the drawing, or to a value kept
// for the profile or the session.
#include "ed/host.h"

#include "ap/drawing_views.h"
#include "db/database.h"
#include "db/symbol_table.h"
#include "ed/coordinates.h"
#include "ed/display.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ctime>

namespace vndk::host {

namespace {

using V = VariableValue;
constexpr double kAny = 1, kNone = 0; // low > high: no limit
constexpr double kLeast = 1e-99, kMost = 1e99;

double julian(const dwg::JulianTime& time) { return time.day + time.milliseconds / 86400000.0; }

/// The local calendar date and time as Julian date.
double now(bool calendar) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    localtime_r(&seconds, &local);
    const double fraction = (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / 86400.0;
    if (calendar)
        return (local.tm_year + 1900) * 10000.0 + (local.tm_mon + 1) * 100 + local.tm_mday +
               (local.tm_hour * 10000 + local.tm_min * 100 + local.tm_sec) / 1e6;
    // Days since the epoch of a midnight in local time.
    const std::time_t midnight = timegm(&local) - (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec);
    return 2440587.5 + 0.5 + static_cast<double>(midnight) / 86400 + fraction;
}

const AcDbDatabase& db(AcApDocument* document) { return *document->database(); }

std::string folderOf(const std::string& path) {
    const size_t cut = path.find_last_of("\\/");
    return cut == std::string::npos ? std::string() : path.substr(0, cut + 1);
}

std::string recordName(const AcDbDatabase& database, uint64_t handle) {
    const AcDbObjectPointer<AcDbSymbolTableRecord> record(database.idOf(handle));
    return record ? record->name() : std::string();
}

/// Sets a handle in the header to the record of that name in one of the tables.
bool setRecord(AcApDocument& document, AcDbObjectId tableId, const char* variable,
               uint64_t dwg::HeaderVariables::*member, const V& value) {
    AcDbObjectId record;
    {
        const AcDbObjectPointer<AcDbSymbolTable> table(tableId);
        if (!table || table->getAt(std::get<std::string>(value).c_str(), record) != Acad::eOk)
            return false;
    }
    document.database()->changeHeader(variable, [&](auto& header) { header.*member = record.handle().value(); });
    return true;
}

std::string colorName(short color) {
    return color == kAcDbColorByLayer ? "BYLAYER" : color == kAcDbColorByBlock ? "BYBLOCK" : std::to_string(color);
}

bool setColor(Host&, AcApDocument& document, const V& value) {
    static constexpr const char* names[] = {"RED", "YELLOW", "GREEN", "CYAN", "BLUE", "MAGENTA", "WHITE"};
    const std::string text = acdbFoldName(std::get<std::string>(value));
    int color = -1;
    if (text == "BYLAYER")
        color = kAcDbColorByLayer;
    else if (text == "BYBLOCK")
        color = kAcDbColorByBlock;
    for (int i = 0; i < 7; ++i)
        if (text == names[i])
            color = i + 1;
    if (color < 0) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), color);
        if (error != std::errc() || end != text.data() + text.size() || color < 1 || color > 255)
            return false;
    }
    document.database()->changeHeader("CECOLOR", [color](auto& h) { h.CECOLOR = static_cast<int16_t>(color); });
    return true;
}

/// Both spaces have their own coordinate system.
template <auto Model, auto Paper>
V spacePoint(Host&, AcApDocument* document) {
    const dwg::HeaderVariables& h = db(document).header();
    const dwg::Point3& p = h.TILEMODE ? h.*Model : h.*Paper;
    return AcGePoint3d(p.x, p.y, p.z);
}

/// Both spaces have a base point, which the user sees in the coordinate system in force.
bool setBasePoint(AcApDocument& document, const AcGePoint3d& point) {
    const AcGePoint3d world = ucsToWorld(*document.database()) * point;
    const bool model = document.database()->header().TILEMODE;
    document.database()->changeHeader("INSBASE", [&](dwg::HeaderVariables& header) {
        (model ? header.INSBASE : header.PINSBASE) = {world.x, world.y, world.z};
    });
    return true;
}

template <short Value>
V constant(Host&, AcApDocument*) {
    return Value;
}

using HV = dwg::HeaderVariables;

#define VNDK_HANDLE_VARIABLE(NAME, TABLE)                                                                              \
    {                                                                                                                  \
#NAME, VariableType::Text, VariableAccess::ReadWrite, VariablePlace::Header, kAny, kNone, "",                     \
     [](Host&, AcApDocument* d) -> V { return recordName(db(d), db(d).header().NAME); },                               \
     [](Host&, AcApDocument& d, const V& v) { return setRecord(d, d.database()->TABLE(), #NAME, &HV::NAME, v); }    \
    }
#define VNDK_HEADER(NAME, TYPE, LOW, HIGH)                                                                             \
    { #NAME, VariableType::TYPE, VariableAccess::ReadWrite, VariablePlace::Header, LOW, HIGH, "", nullptr, nullptr }
#define VNDK_KEPT(NAME, TYPE, PLACE, LOW, HIGH, STANDARD)                                                              \
    {                                                                                                                  \
#NAME, VariableType::TYPE, VariableAccess::ReadWrite, VariablePlace::PLACE, LOW, HIGH, STANDARD, nullptr,      \
            nullptr                                                                                                    \
    }
#define VNDK_READ(NAME, TYPE, PLACE, ...)                                                                              \
    { #NAME, VariableType::TYPE, VariableAccess::ReadOnly, VariablePlace::PLACE, kAny, kNone, "", __VA_ARGS__, nullptr }

// By name.
const VariableRow kRows[] = {
    VNDK_READ(ACADVER, Text, Session, [](Host&, AcApDocument*) -> V { return std::string("15.0"); }),
    VNDK_HEADER(ANGBASE, Real, kAny, kNone),
    VNDK_HEADER(ANGDIR, Short, 0, 1),
    VNDK_KEPT(APERTURE, Short, Profile, 1, 50, "10"),
    {"ATTDIA", VariableType::Short, VariableAccess::ReadWrite, VariablePlace::Profile, 0, 1, "0",
     [](Host&, AcApDocument* d) -> V { return static_cast<short>(db(d).attdia()); },
     [](Host&, AcApDocument& d, const V& v) { return d.database()->setAttdia(std::get<short>(v) != 0), true; }},
    VNDK_HEADER(ATTMODE, Short, 0, 2),
    {"ATTREQ", VariableType::Short, VariableAccess::ReadWrite, VariablePlace::Profile, 0, 1, "1",
     [](Host&, AcApDocument* d) -> V { return db(d).attreq(); },
     [](Host&, AcApDocument& d, const V& v) { return d.database()->setAttreq(std::get<short>(v)), true; }},
    VNDK_HEADER(AUNITS, Short, 0, 4),
    VNDK_HEADER(AUPREC, Short, 0, 8),
    VNDK_READ(CDATE, Real, Session, [](Host&, AcApDocument*) -> V { return now(true); }),
    {"CECOLOR", VariableType::Text, VariableAccess::ReadWrite, VariablePlace::Header, kAny, kNone, "",
     [](Host&, AcApDocument* d) -> V { return colorName(db(d).header().CECOLOR); }, setColor},
    VNDK_HEADER(CELTSCALE, Real, kLeast, kMost),
    VNDK_HANDLE_VARIABLE(CELTYPE, linetypeTableId),
    VNDK_HEADER(CHAMFERA, Real, 0, kMost),
    VNDK_HEADER(CHAMFERB, Real, 0, kMost),
    VNDK_HANDLE_VARIABLE(CLAYER, layerTableId),
    VNDK_READ(CMDACTIVE, Short, Session,
              [](Host& h, AcApDocument*) -> V { return static_cast<short>(h.commandLine().commandActive()); }),
    VNDK_KEPT(CMDDIA, Short, Profile, 0, 1, "1"),
    VNDK_KEPT(CMDECHO, Short, Session, 0, 1, "1"),
    VNDK_READ(CMDNAMES, Text, Session, [](Host& h, AcApDocument*) -> V { return h.commandLine().commandNames(); }),
    VNDK_KEPT(CURSORSIZE, Short, Profile, 1, 100, "5"),
    VNDK_READ(DATE, Real, Session, [](Host&, AcApDocument*) -> V { return now(false); }),
    VNDK_READ(DBMOD, Short, Drawing, [](Host&, AcApDocument* d) -> V { return static_cast<short>(db(d).isDirty()); }),
    VNDK_HEADER(DIMASZ, Real, 0, kMost),
    VNDK_HEADER(DIMSCALE, Real, 0, kMost),
    VNDK_HANDLE_VARIABLE(DIMSTYLE, dimStyleTableId),
    VNDK_HEADER(DIMTXT, Real, kLeast, kMost),
    VNDK_HEADER(DIMZIN, Short, 0, 15),
    VNDK_READ(DWGNAME, Text, Drawing,
              [](Host&, AcApDocument* d) -> V {
                  const std::string path = d->fileName();
                  return path.substr(folderOf(path).size());
              }),
    VNDK_READ(DWGPREFIX, Text, Drawing, [](Host&, AcApDocument* d) -> V { return folderOf(d->fileName()); }),
    VNDK_READ(DWGTITLED, Short, Drawing, [](Host&, AcApDocument* d) -> V { return static_cast<short>(d->hasFile()); }),
    VNDK_HEADER(ELEVATION, Real, kAny, kNone),
    VNDK_KEPT(ERRNO, Short, Session, kAny, kNone, "0"),
    VNDK_KEPT(EXPERT, Short, Session, 0, 5, "0"),
    VNDK_READ(EXTMAX, Point3, Header, spacePoint<&HV::EXTMAX, &HV::PEXTMAX>),
    VNDK_READ(EXTMIN, Point3, Header, spacePoint<&HV::EXTMIN, &HV::PEXTMIN>),
    VNDK_KEPT(FILEDIA, Short, Profile, 0, 1, "1"),
    VNDK_HEADER(FILLETRAD, Real, 0, kMost),
    VNDK_HEADER(FILLMODE, Short, 0, 1),
    VNDK_READ(HANDLES, Short, Drawing, constant<1>),
    VNDK_KEPT(HIGHLIGHT, Short, Session, 0, 1, "1"),
    {"INSBASE", VariableType::Point3, VariableAccess::ReadWrite, VariablePlace::Header, kAny, kNone, "",
     [](Host& h, AcApDocument* d) -> V {
         const V world = spacePoint<&HV::INSBASE, &HV::PINSBASE>(h, d);
         return ucsToWorld(db(d)).inverse() * std::get<AcGePoint3d>(world);
     },
     [](Host&, AcApDocument& d, const V& v) { return setBasePoint(d, std::get<AcGePoint3d>(v)); }},
    VNDK_KEPT(INSNAME, Text, Session, kAny, kNone, ""),
    VNDK_HEADER(INSUNITS, Short, 0, 20),
    {"LASTPOINT", VariableType::Point3, VariableAccess::ReadWrite, VariablePlace::Drawing, kAny, kNone, "",
     [](Host&, AcApDocument* d) -> V { return d->lastPoint; },
     [](Host&, AcApDocument& d, const V& v) { return d.lastPoint = std::get<AcGePoint3d>(v), true; }},
    VNDK_HEADER(LIMCHECK, Short, 0, 1),
    VNDK_HEADER(LIMMAX, Point2, kAny, kNone),
    VNDK_HEADER(LIMMIN, Point2, kAny, kNone),
    VNDK_READ(LOCALE, Text, Session, [](Host&, AcApDocument*) -> V { return std::string("ENU"); }),
    VNDK_HEADER(LTSCALE, Real, kLeast, kMost),
    VNDK_HEADER(LUNITS, Short, 1, 5),
    VNDK_HEADER(LUPREC, Short, 0, 8),
    VNDK_HEADER(MIRRTEXT, Short, 0, 1),
    VNDK_HEADER(ORTHOMODE, Short, 0, 1),
    VNDK_KEPT(OSMODE, Short, Profile, 0, 32767, "4133"),
    VNDK_HEADER(PDMODE, Short, 0, 100),
    VNDK_HEADER(PDSIZE, Real, kAny, kNone),
    VNDK_KEPT(PICKADD, Short, Profile, 0, 1, "1"),
    VNDK_KEPT(PICKBOX, Short, Profile, 0, 50, "3"),
    VNDK_KEPT(PICKFIRST, Short, Profile, 0, 1, "1"),
    VNDK_HEADER(PLINEGEN, Short, 0, 1),
    VNDK_HEADER(PLINEWID, Real, 0, kMost),
    VNDK_READ(PRODUCT, Text, Session, [](Host&, AcApDocument*) -> V { return std::string("Vondrake"); }),
    VNDK_HEADER(PSLTSCALE, Short, 0, 1),
    VNDK_HEADER(QTEXTMODE, Short, 0, 1),
    VNDK_HEADER(REGENMODE, Short, 0, 1),
    VNDK_READ(SAVENAME, Text, Drawing,
              [](Host&, AcApDocument* d) -> V { return std::string(d->hasFile() ? d->fileName() : ""); }),
    // Without a window drawings are looked at as if on a screen of this many pixels.
    {"SCREENSIZE", VariableType::Point2, VariableAccess::ReadOnly, VariablePlace::Session, kAny, kNone, "800,600",
     [](Host& h, AcApDocument*) -> V {
         return h.display() ? AcGePoint3d(h.display()->width(), h.display()->height(), 0) : AcGePoint3d(800, 600, 0);
     },
     nullptr},
    VNDK_READ(TDCREATE, Real, Header, [](Host&, AcApDocument* d) -> V { return julian(db(d).header().TDCREATE); }),
    VNDK_READ(TDINDWG, Real, Header, [](Host&, AcApDocument* d) -> V { return julian(db(d).header().TDINDWG); }),
    VNDK_READ(TDUPDATE, Real, Header, [](Host&, AcApDocument* d) -> V { return julian(db(d).header().TDUPDATE); }),
    VNDK_KEPT(TEXTEVAL, Short, Session, 0, 1, "0"),
    VNDK_HEADER(TEXTSIZE, Real, kLeast, kMost),
    VNDK_HANDLE_VARIABLE(TEXTSTYLE, textStyleTableId),
    VNDK_HEADER(THICKNESS, Real, kAny, kNone),
    VNDK_HEADER(TILEMODE, Short, 0, 1),
    VNDK_READ(UCSNAME, Text, Header,
              [](Host&, AcApDocument* d) -> V { return recordName(db(d), db(d).header().UCSNAME); }),
    VNDK_READ(UCSORG, Point3, Header, spacePoint<&HV::UCSORG, &HV::PUCSORG>),
    VNDK_READ(UCSXDIR, Point3, Header, spacePoint<&HV::UCSXDIR, &HV::PUCSXDIR>),
    VNDK_READ(UCSYDIR, Point3, Header, spacePoint<&HV::UCSYDIR, &HV::PUCSYDIR>),
    VNDK_HEADER(UNITMODE, Short, 0, 1),
    VNDK_HEADER(USERI1, Short, kAny, kNone),
    VNDK_HEADER(USERI2, Short, kAny, kNone),
    VNDK_HEADER(USERI3, Short, kAny, kNone),
    VNDK_HEADER(USERI4, Short, kAny, kNone),
    VNDK_HEADER(USERI5, Short, kAny, kNone),
    VNDK_HEADER(USERR1, Real, kAny, kNone),
    VNDK_HEADER(USERR2, Real, kAny, kNone),
    VNDK_HEADER(USERR3, Real, kAny, kNone),
    VNDK_HEADER(USERR4, Real, kAny, kNone),
    VNDK_HEADER(USERR5, Real, kAny, kNone),
    VNDK_KEPT(USERS1, Text, Session, kAny, kNone, ""),
    VNDK_KEPT(USERS2, Text, Session, kAny, kNone, ""),
    VNDK_KEPT(USERS3, Text, Session, kAny, kNone, ""),
    VNDK_KEPT(USERS4, Text, Session, kAny, kNone, ""),
    VNDK_KEPT(USERS5, Text, Session, kAny, kNone, ""),
    VNDK_READ(VIEWCTR, Point3, Drawing,
              [](Host&, AcApDocument* d) -> V { return ucsToWorld(db(d)).inverse() * d->views().current().center; }),
    VNDK_READ(VIEWDIR, Point3, Drawing,
              [](Host&, AcApDocument* d) -> V {
                  const AcGeVector3d toViewer = ucsToWorld(db(d)).inverse() * d->views().current().direction;
                  return AcGePoint3d(toViewer.x, toViewer.y, toViewer.z);
              }),
    VNDK_READ(VIEWSIZE, Real, Drawing, [](Host&, AcApDocument* d) -> V { return d->views().current().height; }),
    VNDK_HEADER(VISRETAIN, Short, 0, 1),
    VNDK_READ(
        WORLDUCS, Short, Header,
        [](Host&, AcApDocument* d) -> V { return static_cast<short>(ucsToWorld(db(d)).isEqualTo(AcGeMatrix3d())); }),
};

} // namespace

std::span<const VariableRow> SystemVariables::rows() { return kRows; }

const VariableRow* SystemVariables::find(std::string_view name) {
    const std::string folded = acdbFoldName(name);
    const auto row = std::lower_bound(std::begin(kRows), std::end(kRows), folded,
                                      [](const VariableRow& r, const std::string& n) { return n > r.name; });
    return row != std::end(kRows) && folded == row->name ? row : nullptr;
}

} // namespace vndk::host
