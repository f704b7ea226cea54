#pragma once
/// Keeps two programs from writing the same drawing.
///
/// Saving replaces the drawing's file, so the lock is on a file of its own beside it (".plan.dwg.lock"), which holds
/// a line about the owner for the message of the other program. It goes with the lock, also when the program dies:
/// a file that was left over doesn't lock anything.

#include <memory>
#include <string>

#include "dwg/error.h"

namespace vndk::dwg {

class DrawingLock {
public:
    /// Locks the drawing, which need not exist yet. Fails with Locked while another lock of it is held, in this
    /// program or another, and with CannotWrite when the folder takes no lock file (the drawing can only be read).
    static Result<std::unique_ptr<DrawingLock>> acquire(const std::string& drawingPath);

    /// Fails with Locked while a lock of the drawing is held, in this program or another. Leaves no lock file.
    static Result<void> check(const std::string& drawingPath);

    ~DrawingLock();
    DrawingLock(const DrawingLock&) = delete;
    DrawingLock& operator=(const DrawingLock&) = delete;

private:
    DrawingLock(std::string lockPath, int file) : lockPath_(std::move(lockPath)), file_(file) {}

    std::string lockPath_;
    int file_;
};

} // namespace vndk::dwg
