// Saving over an old file with every step failing, and locks between writers.

#include <gtest/gtest.h>

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "dwg/atomic_save.h"
#include "dwg/drawing_lock.h"

using namespace vndk::dwg;
namespace fs = std::filesystem;

namespace {

class Saving : public testing::Test {
protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "saving-XXXXXX").string();
        ASSERT_TRUE(mkdtemp(name.data()));
        folder_ = name;
        path_ = folder_ / "plan.dwg";
        backup_ = folder_ / "plan.bak";
    }
    void TearDown() override { fs::remove_all(folder_); }

    static void put(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
    static std::string contents(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    Result<void> save(const std::string& text, const SaveFault& fault = {}) {
        return saveAtomically(path_, std::span(reinterpret_cast<const uint8_t*>(text.data()), text.size()), backup_,
                              fault);
    }
    size_t filesInFolder() const {
        return static_cast<size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }

    fs::path folder_, path_, backup_;
};

} // namespace

TEST_F(Saving, NewFileHasNoBackup) {
    ASSERT_TRUE(save("one"));
    EXPECT_EQ(contents(path_), "one");
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(Saving, OldFileBecomesTheBackupAndKeepsItsPermissionsForTheNewOne) {
    put(path_, "old");
    put(backup_, "older");
    fs::permissions(path_, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    ASSERT_TRUE(save("new"));
    EXPECT_EQ(contents(path_), "new");
    EXPECT_EQ(contents(backup_), "old");
    EXPECT_EQ(fs::status(path_).permissions(), fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(filesInFolder(), 2u);
}

TEST_F(Saving, EachFailureLeavesAWholeFileAndNoTrash) {
    for (const SaveStep step : {SaveStep::CreateTemporary, SaveStep::Write, SaveStep::SyncFile, SaveStep::Backup,
                                SaveStep::Replace, SaveStep::SyncFolder}) {
        SCOPED_TRACE(static_cast<int>(step));
        put(path_, "old");
        fs::remove(backup_);
        const auto result = save("new", [&](SaveStep at) {
            // At every moment one of the two is there, whole.
            const std::string now = contents(path_);
            EXPECT_TRUE(now == "old" || now == "new") << now;
            return at == step ? ENOSPC : 0;
        });
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().kind, ErrorKind::CannotWrite);
        EXPECT_NE(result.error().message.find(path_.string()), std::string::npos) << result.error().message;
        EXPECT_NE(result.error().message.find("No space"), std::string::npos) << result.error().message;
        EXPECT_EQ(contents(path_), step == SaveStep::SyncFolder ? "new" : "old");
        EXPECT_EQ(filesInFolder(), fs::exists(backup_) ? 2u : 1u);
        if (fs::exists(backup_)) {
            EXPECT_EQ(contents(backup_), "old");
        }
    }
}

TEST_F(Saving, SymbolicLinkStaysAndItsTargetIsReplaced) {
    const fs::path target = folder_ / "elsewhere.dwg";
    put(target, "old");
    fs::create_symlink(target, path_);
    ASSERT_TRUE(save("new"));
    EXPECT_TRUE(fs::is_symlink(path_));
    EXPECT_EQ(contents(target), "new");
    EXPECT_EQ(contents(backup_), "old");
}

TEST_F(Saving, MissingFolderIsAnError) {
    path_ = folder_ / "no" / "plan.dwg";
    const auto result = save("new");
    ASSERT_FALSE(result);
    EXPECT_NE(result.error().message.find("folder"), std::string::npos);
}

TEST_F(Saving, BackupsAreNamedAfterTheDrawing) {
    EXPECT_EQ(backupPathFor("/a/plan.dwg"), "/a/plan.bak");
    EXPECT_EQ(backupPathFor("/a/PLAN.DWG"), "/a/PLAN.bak");
    EXPECT_EQ(backupPathFor("/a/plan"), "/a/plan.bak");
    EXPECT_EQ(backupPathFor("/a/.dwg"), "/a/.dwg.bak");
    EXPECT_EQ(backupPathFor("dwg"), "dwg.bak");
}

TEST_F(Saving, OneDrawingHasOneWriter) {
    put(path_, "x");
    auto first = DrawingLock::acquire(path_);
    ASSERT_TRUE(first) << first.error().message;
    const auto second = DrawingLock::acquire(path_);
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().kind, ErrorKind::Locked);
    EXPECT_NE(second.error().message.find("process " + std::to_string(getpid())), std::string::npos)
        << second.error().message;
    // The drawing's file is a new one after a save; it stays locked.
    ASSERT_TRUE(save("y"));
    EXPECT_FALSE(DrawingLock::acquire(path_));
    // So is it under another name.
    fs::create_symlink(path_, folder_ / "alias.dwg");
    EXPECT_FALSE(DrawingLock::acquire(folder_ / "alias.dwg"));
    (*first).reset();
    EXPECT_TRUE(DrawingLock::acquire(path_));
    EXPECT_FALSE(fs::exists(folder_ / ".plan.dwg.lock"));
}

TEST_F(Saving, LeftOverLockFileLocksNothing) {
    put(folder_ / ".plan.dwg.lock", std::string("\x1b[31mgone\n", 10));
    EXPECT_TRUE(DrawingLock::acquire(path_));
}
