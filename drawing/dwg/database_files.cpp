// The calls of AcDbDatabase that read and write files.
#include "db/database.h"
#include "db/reactors.h"
#include "dwg/atomic_save.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_source.h"
#include "dwg/drawing_writer.h"

#include <filesystem>

namespace {

using vndk::dwg::Error;
using vndk::dwg::ErrorKind;
using vndk::dwg::Result;

Acad::ErrorStatus statusOf(ErrorKind kind, const char* fileName) {
    switch (kind) {
    case ErrorKind::CannotOpen: {
        std::error_code ignored;
        return std::filesystem::exists(fileName, ignored) ? Acad::eFileAccessErr : Acad::eFileNotFound;
    }
    case ErrorKind::NotADrawing:
        return Acad::eNotADwgFile;
    case ErrorKind::UnsupportedVersion:
        return Acad::eDwgVersionUnsupported;
    case ErrorKind::Damaged:
    case ErrorKind::Truncated:
        return Acad::eBadDwgFile;
    case ErrorKind::CannotWrite:
        return Acad::eFileAccessErr;
    case ErrorKind::Locked:
        return Acad::eFileSharingViolation;
    }
    return Acad::eFileInternalErr;
}

constexpr int kDenyWrite = 0x20;

/// Reads a drawing that nobody has open for writing.
Result<void> readUnlocked(AcDbDatabase& database, const std::string& path) {
    const Result<void> free = vndk::dwg::DrawingLock::check(path);
    return free ? vndk::dwg::readDrawing(database, path) : free;
}

/// Encodes and saves under the file's lock, which the database keeps if it has it.
Result<void> save(AcDbDatabase& database, const std::string& path) {
    std::unique_ptr<vndk::dwg::DrawingLock> lock;
    if (!vndk::dwg::sourceOf(database).hasLock(path)) {
        Result<std::unique_ptr<vndk::dwg::DrawingLock>> acquired = vndk::dwg::DrawingLock::acquire(path);
        if (!acquired)
            return acquired.error();
        lock = std::move(*acquired);
    }
    Result<std::vector<uint8_t>> bytes = vndk::dwg::writeDrawing(database);
    if (!bytes)
        return bytes.error();
    return vndk::dwg::saveAtomically(path, *bytes, vndk::dwg::backupPathFor(path));
}

} // namespace

Acad::ErrorStatus AcDbDatabase::readDwgFile(const char* fileName, int shareMode, bool /*allowCPConversion*/) {
    if (!fileName || !*fileName)
        return Acad::eInvalidInput;
    if (!stubs_.empty()) {
        lastFileError_ = "A drawing can only be read into an empty database.";
        return Acad::eNotApplicable;
    }
    std::string path;
    // A file that isn't found is told by the attempt to read it.
    (void)acdbHostApplicationServices()->findFile(path, fileName);
    const Result<void> read = shareMode == kDenyWrite ? readUnlocked(*this, path) : vndk::dwg::readDrawing(*this, path);
    if (!read) {
        lastFileError_ = read.error().message;
        return statusOf(read.error().kind, path.c_str());
    }
    fileName_ = path;
    acrxEventReactors().tell([&](AcRxEventReactor& r) { r.dwgFileOpened(this, path.data()); });
    undo_.clear();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::saveAs(const char* fileName) {
    if (!fileName || !*fileName)
        return Acad::eInvalidInput;
    if (stubs_.empty()) {
        lastFileError_ = "An empty database can't be saved.";
        return Acad::eNotApplicable;
    }
    acrxEventReactors().tell([&](AcRxEventReactor& r) { r.beginSave(this, fileName); });
    const Result<void> saved = save(*this, fileName);
    if (!saved) {
        lastFileError_ = saved.error().message;
        acrxEventReactors().tell([this](AcRxEventReactor& r) { r.abortSave(this); });
        return statusOf(saved.error().kind, fileName);
    }
    dirty_ = false;
    acrxEventReactors().tell([&](AcRxEventReactor& r) { r.saveComplete(this, fileName); });
    return Acad::eOk;
}
