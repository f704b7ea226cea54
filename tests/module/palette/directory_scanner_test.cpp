// What the scanner finds in real folders, and what it makes of paths.
#include "palette/directory_scanner.h"
#include "platform/temp_folder.h"
#include "win32/drive_map.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DirectoryScannerTest : public testing::Test {
protected:
    DirectoryScannerTest() { EXPECT_TRUE(vndk::win32::DriveMap::current().map('T', folder.path()).ok()); }

    std::vector<std::string> folders() const { return {scanner.m_folders.begin(), scanner.m_folders.end()}; }
    std::vector<std::string> files() const {
        std::vector<std::string> paths;
        for (const CDirectoryEntry& entry : scanner.m_files)
            paths.emplace_back(entry.m_strPath);
        return paths;
    }

    TempFolder folder;
    CDirectoryScanner scanner;
};

TEST_F(DirectoryScannerTest, CutsSeparatorsOffTheEnd) {
    const struct {
        const char *path, *trimmed;
    } rows[] = {
        {"C:\\dwg\\", "C:\\dwg"},    {"C:\\dwg\\\\", "C:\\dwg"}, {"C:\\", "C:"}, {"C:\\a/", "C:\\a/"}, {"a/b//", "a/b"},
        {"C:\\dwg\\ \t", "C:\\dwg"}, {"C:\\dwg ", "C:\\dwg "},   {"\\", ""},     {"//", ""},           {"", ""},
        {"plain", "plain"},
    };
    for (const auto& row : rows) {
        CString path(row.path);
        CDirectoryScanner::TrimTrailingSeparators(path);
        EXPECT_STREQ(path, row.trimmed) << row.path;
    }
}

TEST_F(DirectoryScannerTest, ListsSubfoldersAndLastTheFolderItself) {
    for (const char* name : {"dwg", "Gr\u00fcn 1", "with.dot", ".git", "deep/er"})
        std::filesystem::create_directories(folder / name);
    folder.write("file", "");
    ASSERT_TRUE(scanner.ScanFolders("T:\\", true));
    EXPECT_THAT(folders(), ElementsAre("T:\\deep", "T:\\dwg", "T:\\Gr\xFCn 1", "T:"));
    ASSERT_TRUE(scanner.ScanFolders("T:\\deep\\", false));
    EXPECT_EQ(scanner.m_folders.size(), 5U) << "a scan adds";
    EXPECT_STREQ(scanner.m_folders.back(), "T:\\deep");
    EXPECT_TRUE(scanner.ClearFolders());
    EXPECT_THAT(folders(), IsEmpty());
    EXPECT_FALSE(scanner.ScanFolders("\\", true));
    EXPECT_THAT(folders(), IsEmpty());
}

TEST_F(DirectoryScannerTest, FindsWhatFitsTheMask) {
    folder.write("a/one.dwg", "12345");
    folder.write("a/T\u00fcr 2.DWG", "");
    folder.write("a/three.dwg.bak", "");
    std::filesystem::create_directories(folder / "a/old.dwg");
    ASSERT_TRUE(scanner.ScanFolders("T:\\a\\", false));
    ASSERT_TRUE(scanner.ScanFiles("*.dwg", true, false));
    EXPECT_THAT(files(), ElementsAre("T:\\a\\one.dwg", "T:\\a\\T\xFCr 2.DWG"));
    EXPECT_EQ(scanner.m_files[0].m_nSize, 5U);
    EXPECT_EQ(scanner.m_files[0].m_bDirectory, false);
    EXPECT_EQ(scanner.m_files[0].m_dwAttributes, FILE_ATTRIBUTE_ARCHIVE);
    EXPECT_NE(scanner.m_files[0].m_ftLastWrite.dwHighDateTime, 0U);
    EXPECT_TRUE(scanner.ClearFiles());
    ASSERT_TRUE(scanner.ScanFiles("*.dwg", false, true));
    EXPECT_THAT(files(), ElementsAre("T:\\a\\old.dwg"));
    EXPECT_EQ(scanner.m_files[0].m_bDirectory, true);
    scanner.ClearFiles();
    ASSERT_TRUE(scanner.ScanFiles("*.*", true, true));
    EXPECT_EQ(scanner.m_files.size(), 4U) << "neither \".\" nor \"..\"";
}

TEST_F(DirectoryScannerTest, FindsNothingWhereNothingCanBeRead) {
    std::filesystem::create_directories(folder / "closed/inside");
    std::filesystem::create_directory_symlink(folder / "ring", folder / "ring");
    std::filesystem::create_directory_symlink(folder.path(), folder / "closed/up");
    ASSERT_EQ(mkfifo((folder / "closed/pipe.dwg").c_str(), 0600), 0);
    ASSERT_TRUE(scanner.ScanFolders("T:\\closed", true));
    ASSERT_TRUE(scanner.ScanFiles("*.dwg", true, false));
    EXPECT_THAT(folders(), ElementsAre("T:\\closed\\inside", "T:\\closed\\up", "T:\\closed"));
    EXPECT_THAT(files(), IsEmpty()) << "a pipe is no drawing";
    for (const char* path : {"T:\\gone", "Q:\\", "T:\\ring", "Desktop", "\\\\server\\share", "T:\\a?b"}) {
        scanner.ClearFolders();
        EXPECT_TRUE(scanner.ScanFolders(path, true)) << path;
        EXPECT_TRUE(scanner.ScanFiles("*.dwg", true, false)) << path;
        EXPECT_EQ(scanner.m_folders.size(), 1U) << path;
        EXPECT_THAT(files(), IsEmpty()) << path;
    }
}

} // namespace
