#include "ap/xrefs.h"

#include "db/database.h"
#include "db/xref.h"
#include "ed/host.h"
#include "win32/codepage.h"
#include "win32/drive_map.h"

#include <algorithm>
#include <filesystem>
#include <span>

namespace vndk::host {

namespace {

constexpr int kDenyNone = 0x40; // as it was last saved, whoever edits it

/// The drawings that are being read, the outermost first.
using Chain = std::vector<std::string>;

bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

std::string folderOf(const std::string& dosName) { return dosName.substr(0, dosName.find_last_of("\\/") + 1); }
std::string nameOf(const std::string& dosName) { return dosName.substr(dosName.find_last_of("\\/:") + 1); }

/// One spelling for each file.
std::string spelling(const std::string& hostPath) {
    std::error_code problem;
    const auto path = std::filesystem::canonical(hostPath, problem);
    return problem ? hostPath : path.string();
}

std::string dosNameOf(const std::string& hostPath) {
    return win32::DriveMap::current().toDos(hostPath).value_or(win32::fromUtf8Lossy(hostPath));
}

struct XrefFacts {
    std::string name, path;
    bool overlay = false;
};

XrefFacts factsOf(AcDbObjectId block) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
    return record ? XrefFacts{record->name(), record->pathName(), record->isFromOverlayReference()} : XrefFacts{};
}

bool isLoaded(AcDbObjectId block) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
    return record && record->xrefDatabase();
}

class XrefReader {
public:
    explicit XrefReader(Host& host) : host_(host) {}

    /// Empty, or why not.
    std::string load(AcDbObjectId block, const std::string& holder) {
        const XrefFacts facts = factsOf(block);
        const auto file = findXref(host_, facts.path, holder);
        const std::string subject = "External reference \"" + facts.name + "\": ";
        if (!file)
            return subject + facts.path + " was not found. Put the drawing back, or give its place with -XREF Path.";
        const std::string key = spelling(*file);
        if (std::find(chain_.begin(), chain_.end(), key) != chain_.end())
            return subject + facts.path + " refers to itself and isn't shown. Detach one of the references.";
        auto shown = std::make_shared<AcDbDatabase>(false);
        if (shown->readDwgFile(file->c_str(), kDenyNone) != Acad::eOk)
            return subject + win32::fromUtf8Lossy(shown->lastFileError());
        chain_.push_back(key);
        loadNested(*shown, dosNameOf(*file));
        chain_.pop_back();
        acdbSetXrefDatabase(block, std::move(shown));
        return {};
    }

    /// Of the drawing in which it all begins.
    void begin(const std::string& holder) {
        if (const auto path = win32::DriveMap::current().toHost(holder); path && !holder.empty())
            chain_.push_back(spelling(*path));
    }
    const std::vector<std::string>& problems() const { return problems_; }

private:
    /// An overlay shows in the drawing alone to which it is attached.
    void loadNested(AcDbDatabase& database, const std::string& holder) {
        for (const AcDbObjectId block : acdbXrefBlocks(database)) {
            if (factsOf(block).overlay)
                continue;
            if (std::string problem = load(block, holder); !problem.empty())
                problems_.push_back(std::move(problem));
        }
    }

    Host& host_;
    Chain chain_;
    std::vector<std::string> problems_; // of those within
};

void tell(Host& host, std::span<const std::string> problems) {
    for (const std::string& problem : problems) {
        host.freshLine();
        host.print(problem + "\n");
    }
}

} // namespace

std::optional<std::string> findXref(Host& host, const std::string& path, const std::string& holder) {
    const win32::DriveMap& drives = win32::DriveMap::current();
    const bool absolute = path.starts_with('\\') || path.starts_with('/') || path.find(':') != std::string::npos;
    std::vector<std::string> places;
    if (absolute)
        places.push_back(path);
    if (const std::string folder = folderOf(holder); !folder.empty()) {
        if (!absolute)
            places.push_back(folder + path);
        places.push_back(folder + nameOf(path));
    }
    for (const std::string& folder : host.linker().supportFolders())
        if (const auto dosName = drives.toDos(folder))
            places.push_back(*dosName + "\\" + nameOf(path));
    for (const std::string& place : places)
        if (auto file = drives.toHost(place); file && exists(*file))
            return file;
    return std::nullopt;
}

std::string loadXref(Host& host, AcDbObjectId block, const std::string& holder) {
    XrefReader reader(host);
    reader.begin(holder);
    std::string problem = reader.load(block, holder);
    tell(host, reader.problems());
    return problem;
}

void loadXrefs(Host& host, AcDbDatabase& database, const std::string& holder) {
    for (const AcDbObjectId block : acdbXrefBlocks(database))
        if (!isLoaded(block))
            if (const std::string problem = loadXref(host, block, holder); !problem.empty())
                tell(host, {&problem, 1});
}

std::string attachXref(Host& host, AcDbDatabase& database, const std::string& path, const std::string& name,
                       bool overlay, const std::string& holder, AcDbObjectId& block) {
    const auto file = findXref(host, path, holder);
    if (!file)
        return path + " was not found. Give the path of a drawing.";
    const std::string dosName = dosNameOf(*file);
    AcDbObjectId standing;
    if (const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId()); table)
        static_cast<const AcDbSymbolTable&>(*table).getAt(name.c_str(), standing);
    if (!standing.isNull()) {
        const auto known = findXref(host, factsOf(standing).path, holder);
        if (!known || factsOf(standing).path.empty() || spelling(*known) != spelling(*file))
            return "There is a block \"" + name + "\" already. Give the drawing another name and attach it again.";
        block = standing;
        return isLoaded(block) ? std::string() : loadXref(host, block, holder);
    }
    if (const Acad::ErrorStatus status = acdbMakeXref(block, database, name.c_str(), dosName.c_str(), overlay);
        status != Acad::eOk)
        return "\"" + name + "\" can't be attached: " + acadErrorStatusText(status) + '.';
    std::string problem = loadXref(host, block, holder);
    if (!problem.empty())
        acdbDetachXref(block);
    return problem;
}

} // namespace vndk::host
