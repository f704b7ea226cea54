// Loading and unloading of real libraries: those that can't be loaded, those that can't go.
#include "ed/dynamic_linker.h"

#include "host/host_fixture.h"
#include "platform/modules/journal.h"

#include <unistd.h>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

class DynamicLinkerTest : public HostTest {
protected:
    DynamicLinkerTest() : folder(fs::temp_directory_path() / ("vondrake-linker-" + std::to_string(getpid()))) {
        fs::create_directories(folder);
        journal().clear();
    }
    ~DynamicLinkerTest() override { fs::remove_all(folder); }

    bool load(const std::string& path) {
        output.clear();
        return host.linker().loadModule(path.c_str(), true);
    }
    bool unload(const std::string& name) { return host.linker().unloadModule(name.c_str()); }
    size_t loaded() { return host.linker().applications().size(); }
    /// Lets the application go that is loaded alone.
    void unlock() {
        ASSERT_EQ(loaded(), 1U);
        ASSERT_TRUE(host.linker().unlockApplication(
            const_cast<vndk::host::LoadedApplication*>(host.linker().applications()[0])));
    }

    fs::path folder;
};

} // namespace

TEST_F(DynamicLinkerTest, whatIsNoApplicationIsRefusedWithItsReason) {
    std::ofstream(folder / "text.arx") << "not a library";
    std::ofstream(folder / "empty.arx");
    fs::create_directory(folder / "folder.arx");
    fs::copy_file(PLAIN_FILE, folder / "plain.arx");
    const struct {
        std::string path;
        const char* reason;
    } cases[] = {
        {folder / "text.arx", "Cannot load"},
        {folder / "empty.arx", "Cannot load"},
        {folder / "folder.arx", "isn't in the program's folder"},
        {folder / "plain.arx", "none made for this program"},
        {folder / "missing.arx", "isn't in the program's folder"},
        {WITHOUT_ENTRY_FILE, "it has no acrxEntryPoint"},
        {"", "Give the name"},
    };
    for (const auto& c : cases) {
        EXPECT_FALSE(load(c.path)) << c.path;
        EXPECT_NE(output.find(c.reason), std::string::npos) << c.path << ": " << output;
        EXPECT_EQ(host.linker().lastError() + "\n", output);
        EXPECT_EQ(loaded(), 0U) << c.path;
    }
    ASSERT_FALSE(journal().empty());
    EXPECT_EQ(journal().back(), "sibling: statics destroyed") << "a library without an entry is unmapped again";
    run("ARX L " + (folder / "text.arx").string() + "\n");
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, vndk::host::Problem::Kind::CommandFailed);
}

TEST_F(DynamicLinkerTest, aLockedApplicationStays) {
    ASSERT_TRUE(load(LOCKED_FILE)) << output;
    EXPECT_TRUE(host.linker().isApplicationLocked("vndktestlocked.ARX"));
    EXPECT_FALSE(unload("VNDKTestLocked.arx"));
    EXPECT_NE(host.linker().lastError().find("is locked"), std::string::npos) << host.linker().lastError();
    EXPECT_EQ(journal(), (std::vector<std::string>{"locked: message 1", "locked: message 3"}));
    EXPECT_FALSE(host.linker().unlockApplication(this)) << "no packet of an application";
    run("ARX U " LOCKED_FILE "\n");
    EXPECT_TRUE(problem);
    EXPECT_EQ(loaded(), 1U);
    unlock();
    EXPECT_TRUE(unload("VNDKTestLocked")) << host.linker().lastError();
    EXPECT_EQ(loaded(), 0U);
    EXPECT_EQ(journal(), (std::vector<std::string>{"locked: message 1", "locked: message 3", "locked: message 4",
                                                   "locked: message 2"}));
    EXPECT_FALSE(unload("VNDKTestLocked")) << "it isn't there any more";
}

TEST_F(DynamicLinkerTest, loadedTwiceItGoesWithTheSecondUnload) {
    ASSERT_TRUE(load(LOCKED_FILE)) << output;
    ASSERT_TRUE(load(LOCKED_FILE));
    EXPECT_EQ(loaded(), 1U);
    unlock();
    EXPECT_TRUE(unload("VNDKTestLocked.arx"));
    EXPECT_EQ(loaded(), 1U);
    EXPECT_EQ(journal(), (std::vector<std::string>{"locked: message 1", "locked: message 3"}));
    EXPECT_TRUE(unload("VNDKTestLocked.arx"));
    EXPECT_EQ(loaded(), 0U);
    // It begins anew, locked.
    ASSERT_TRUE(load(LOCKED_FILE));
    EXPECT_TRUE(host.linker().isApplicationLocked("VNDKTestLocked.arx"));
}

TEST_F(DynamicLinkerTest, eachDocumentBringsItsMessages) {
    host.documents().appContextNewDocument(nullptr);
    ASSERT_TRUE(load(LOCKED_FILE)) << output;
    host.documents().appContextNewDocument(nullptr);
    host.documents().closeDocument(host.documents().curDocument());
    EXPECT_EQ(journal(), (std::vector<std::string>{"locked: message 1", "locked: message 3", "locked: message 3",
                                                   "locked: message 3", "locked: message 4"}));
}
