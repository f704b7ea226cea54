// Drive letters, both forms of paths, code page 1252 at the seam, and searches.
#include "platform/temp_folder.h"
#include "win32/codepage.h"
#include "win32/drive_map.h"
#include "win32/shell.h"
#include "win32/windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

using namespace vndk::win32;
using testing::ElementsAre;

namespace {

class Files : public testing::Test {
protected:
    void SetUp() override {
        saved_ = DriveMap::current();
        ASSERT_TRUE(DriveMap::current().map('c', folder.path()).ok());
    }
    void TearDown() override { DriveMap::current() = saved_; }

    static std::vector<std::string> found(const std::string& pattern) {
        std::vector<std::string> names;
        WIN32_FIND_DATAA data;
        const HANDLE search = FindFirstFileA(pattern.c_str(), &data);
        if (search == INVALID_HANDLE_VALUE)
            return names;
        do
            names.emplace_back(data.cFileName);
        while (FindNextFileA(search, &data) != FALSE);
        EXPECT_EQ(GetLastError(), ERROR_NO_MORE_FILES);
        EXPECT_TRUE(FindClose(search));
        EXPECT_FALSE(FindClose(search)) << "a closed search is no handle any more";
        return names;
    }

    TempFolder folder;

private:
    DriveMap saved_;
};

} // namespace

TEST_F(Files, PathsOfBothFormsReachTheNameOnTheDisk) {
    folder.write("Dwg/Gr\u00fc\u00dfe.dwg", "");
    folder.write("Dwg/two.dwg", "");
    folder.write("Dwg/TWO.dwg", "");
    const std::string umlauts = folder / "Dwg/Gr\u00fc\u00dfe.dwg";
    const struct {
        std::string path, host;
    } cases[] = {
        {"C:\\Dwg\\Gr\xFC\xDF"
         "e.dwg",
         umlauts},
        {"c:/DWG\\GR\xDC\xDF"
         "E.DWG",
         umlauts},
        {folder.path() + "/dwg/gr\xFC\xDF"
                         "e.dwg",
         umlauts},
        {"C:\\dwg\\two.dwg", folder / "Dwg/two.dwg"},
        {"C:\\dwg\\TWO.dwg", folder / "Dwg/TWO.dwg"},
        {"C:\\dwg\\Two.dwg", folder / "Dwg/TWO.dwg"},
        {"C:\\dwg\\New\\Plan.dwg", folder / "Dwg/New/Plan.dwg"},
        {"C:\\..\\..\\dwg\\.\\x\\..\\two.dwg", folder / "Dwg/two.dwg"},
        {"C:two.dwg", folder / "two.dwg"},
        {"C:", folder.path()},
        {"Z:\\", "/"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(DriveMap::current().toHost(row.path), row.host) << row.path;
}

TEST_F(Files, PathsThatCannotBeAreRefusedByKind) {
    const struct {
        std::string path;
        DWORD code;
    } cases[] = {
        {"", ERROR_INVALID_NAME},
        {"Q:\\a.dwg", ERROR_INVALID_DRIVE},
        {"C:\\a\"b", ERROR_INVALID_NAME},
        {"C:\\a*.dwg", ERROR_INVALID_NAME},
        {"C:\\a\nb", ERROR_INVALID_NAME},
        {std::string("C:\\a\0b", 6), ERROR_INVALID_NAME},
        {"\\\\server\\share", ERROR_BAD_NETPATH},
    };
    for (const auto& row : cases) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(DriveMap::current().toHost(row.path), std::nullopt) << row.path;
        EXPECT_EQ(GetLastError(), row.code) << row.path;
    }
}

TEST_F(Files, SystemPathsGetTheDeepestDrive) {
    EXPECT_EQ(DriveMap::current().toDos(folder / "Dwg/\u00e4\u20ac.dwg"), "C:\\Dwg\\\xE4\x80.dwg");
    EXPECT_EQ(DriveMap::current().toDos(folder.path()), "C:\\");
    EXPECT_EQ(
        DriveMap::current().toDos(folder.path() + "er/a"), "Z:" + [&] {
            std::string path = folder.path() + "er/a";
            for (char& c : path)
                c = c == '/' ? '\\' : c;
            return path;
        }());
    EXPECT_EQ(DriveMap::current().toDos(folder / "\u4e2d.dwg"), std::nullopt);
}

TEST_F(Files, DriveOptionsAreChecked) {
    DriveMap drives;
    EXPECT_TRUE(drives.mapOption("d=" + folder.path()).ok());
    EXPECT_TRUE(drives.mapOption("E:=" + folder.path()).ok());
    EXPECT_NE(drives.folder('D'), nullptr);
    for (const char* text : {"", "D", "D=", "=/", "DE=/", "1=/", "D=/nowhere/at/all", "D=/etc/passwd"})
        EXPECT_FALSE(drives.mapOption(text).ok()) << text;
}

TEST_F(Files, SearchesHideWhatThePlatformCouldNotHold) {
    for (const char* name : {"b.dwg", "A.DWG", "c.dwgx", "plan", "\u00dcb.dwg", "q\"x.dwg", "a:b.dwg", "a\\b.dwg",
                             "t\tx.dwg", "\u4e2d.dwg", "a<b.dwg", "dot..dwg.", "blank.dwg ", "\xFF.dwg"})
        folder.write(name, "x");
    folder.write("sub.dwg/inner", "");
    EXPECT_THAT(found("C:\\*.dwg"), ElementsAre("A.DWG", "b.dwg", "sub.dwg",
                                                "\xDC"
                                                "b.dwg"));
    EXPECT_THAT(found(folder.path() + "/*."), ElementsAre(std::string("plan")));
    EXPECT_THAT(found("C:\\SUB.dwg\\*"), ElementsAre(".", "..", "inner"));
    EXPECT_THAT(found("C:\\none*"), ElementsAre());
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_THAT(found("C:\\nowhere\\*"), ElementsAre());
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
}

TEST_F(Files, SearchesTellAttributesTimesAndSizes) {
    const std::string path = folder.write(".a.dwg", "12345");
    chmod(path.c_str(), 0444);
    const timespec times[2] = {{0, 0}, {1'000'000'000, 500}}; // 9 September 2001, 01:46:40
    utimensat(AT_FDCWD, path.c_str(), times, 0);
    WIN32_FIND_DATAA data;
    const HANDLE search = FindFirstFileA("C:\\.a.dwg", &data);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_EQ(data.dwFileAttributes, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(data.nFileSizeLow, 5u);
    const ULONGLONG written =
        (ULONGLONG{data.ftLastWriteTime.dwHighDateTime} << 32) | data.ftLastWriteTime.dwLowDateTime;
    EXPECT_EQ(written, 126'444'736'000'000'005u);
    EXPECT_TRUE(FindClose(search));
    EXPECT_EQ(GetFileAttributesA("C:\\"), FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(GetFileAttributesA("C:\\gone"), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Files, ADrivesRootHasNoDots) {
    folder.write("a.txt", "");
    folder.write("plain", "");
    folder.write("sub/b.txt", "");
    EXPECT_THAT(found("C:\\*.*"), ElementsAre("a.txt", "plain", "sub"));
    EXPECT_THAT(found("C:\\sub\\*.*"), ElementsAre(".", "..", "b.txt"));
    WIN32_FIND_DATAA data;
    const HANDLE search = FindFirstFileA("\\*", &data);
    ASSERT_NE(search, INVALID_HANDLE_VALUE) << "the root of the working drive";
    EXPECT_STRNE(data.cFileName, ".");
    FindClose(search);
}

TEST_F(Files, MissingFilesAndMissingFoldersAreToldApart) {
    const struct {
        const char* path;
        DWORD error;
    } cases[] = {{"C:\\none.txt", ERROR_FILE_NOT_FOUND},
                 {"C:\\none\\a.txt", ERROR_PATH_NOT_FOUND},
                 {"Q:\\a.txt", ERROR_INVALID_DRIVE},
                 {"", ERROR_INVALID_NAME}};
    WIN32_FILE_ATTRIBUTE_DATA data;
    for (const auto& row : cases) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GetFileAttributesA(row.path), 0xFFFFFFFFU) << row.path;
        EXPECT_EQ(GetLastError(), row.error) << row.path;
        EXPECT_FALSE(GetFileAttributesExA(row.path, GetFileExInfoStandard, &data)) << row.path;
        EXPECT_FALSE(DeleteFileA(row.path)) << row.path;
        EXPECT_FALSE(MoveFileA(row.path, "C:\\x")) << row.path;
        EXPECT_FALSE(CopyFileA(row.path, "C:\\x", FALSE)) << row.path;
        EXPECT_EQ(GetLastError(), row.error) << row.path;
    }
    EXPECT_EQ(GetFileAttributesA(nullptr), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Files, FoldersAreMadeAndRemoved) {
    EXPECT_TRUE(CreateDirectoryA("C:\\New", nullptr));
    EXPECT_FALSE(CreateDirectoryA("C:\\NEW", nullptr));
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    EXPECT_FALSE(CreateDirectoryA("C:\\a\\b", nullptr));
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    folder.write("New/file", "x");
    EXPECT_FALSE(RemoveDirectoryA("C:\\New"));
    EXPECT_EQ(GetLastError(), ERROR_DIR_NOT_EMPTY);
    EXPECT_FALSE(DeleteFileA("C:\\New")) << "a folder is no file";
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(DeleteFileA("C:\\New\\file"));
    EXPECT_TRUE(RemoveDirectoryA("C:\\New"));
}

TEST_F(Files, CopiesAndMovesNeverLoseWhatWasThere) {
    folder.write("a.txt", "new");
    folder.write("b.txt", "old");
    EXPECT_FALSE(CopyFileA("C:\\a.txt", "C:\\b.txt", TRUE));
    EXPECT_EQ(GetLastError(), ERROR_FILE_EXISTS);
    EXPECT_FALSE(MoveFileA("C:\\a.txt", "C:\\b.txt"));
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(folder.read("b.txt"), "old");
    EXPECT_TRUE(SetFileAttributesA("C:\\b.txt", FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(CopyFileA("C:\\a.txt", "C:\\b.txt", FALSE));
    EXPECT_FALSE(DeleteFileA("C:\\b.txt"));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(SetFileAttributesA("C:\\b.txt", 0));
    EXPECT_TRUE(CopyFileA("C:\\a.txt", "C:\\b.txt", FALSE));
    EXPECT_EQ(folder.read("b.txt"), "new");
    EXPECT_FALSE(CopyFileA("C:\\a.txt", "C:\\A.TXT", FALSE)) << "onto itself";
    EXPECT_EQ(folder.read("a.txt"), "new");
    EXPECT_TRUE(MoveFileA("C:\\a.txt", "C:\\A.txt"));
    EXPECT_THAT(found("C:\\*"), ElementsAre("A.txt", "b.txt")) << "and nothing left over";
}

TEST_F(Files, TemporaryNamesAreFreeAndTheFileIsMade) {
    char name[MAX_PATH];
    char other[MAX_PATH];
    EXPECT_NE(GetTempFileNameA("C:\\", "abcdef", 0, name), 0u);
    EXPECT_NE(GetTempFileNameA("C:\\", "abcdef", 0, other), 0u);
    EXPECT_STRNE(name, other);
    EXPECT_EQ(std::string(name).substr(0, 6), "C:\\abc");
    EXPECT_TRUE(std::string(name).ends_with(".tmp"));
    EXPECT_NE(GetFileAttributesA(name), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetTempFileNameA("C:", "x", 0x12AB, name), 0x12ABu);
    EXPECT_STREQ(name, "C:\\x12AB.tmp");
    EXPECT_EQ(GetFileAttributesA(name), INVALID_FILE_ATTRIBUTES) << "a number given makes no file";
    EXPECT_EQ(GetTempFileNameA("C:\\none", "x", 0, name), 0u);
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(GetTempFileNameA(("C:\\" + std::string(300, 'a')).c_str(), "x", 1, name), 0u);
    EXPECT_EQ(GetTempFileNameA(nullptr, "x", 1, name), 0u);
}

TEST_F(Files, FullPathsNameTheirLastPart) {
    char buffer[MAX_PATH];
    char* part = nullptr;
    EXPECT_EQ(GetFullPathNameA("C:\\a\\..\\b\\c.txt", MAX_PATH, buffer, &part), 10u);
    EXPECT_STREQ(buffer, "C:\\b\\c.txt");
    EXPECT_EQ(part, buffer + 5);
    EXPECT_EQ(GetFullPathNameA("C:\\b\\", MAX_PATH, buffer, &part), 5u);
    EXPECT_EQ(part, nullptr);
    EXPECT_EQ(GetFullPathNameA("C:\\b\\c.txt", 5, buffer, &part), 11u) << "the size it needs";
    EXPECT_EQ(GetFullPathNameA("Q:\\b", MAX_PATH, buffer, &part), 0u);
}

TEST_F(Files, DrivesHaveNamesAndKinds) {
    char roots[200];
    const DWORD length = GetLogicalDriveStringsA(sizeof roots, roots);
    EXPECT_EQ(std::string(roots, length + 1), std::string("C:\\\0Z:\\\0\0", 9));
    EXPECT_EQ(GetLogicalDriveStringsA(4, roots), 9u);
    EXPECT_EQ(GetDriveTypeA("Q:\\"), DRIVE_NO_ROOT_DIR);
    EXPECT_EQ(GetDriveTypeA("C:\\sub"), DRIVE_NO_ROOT_DIR);
    EXPECT_GE(GetDriveTypeA("C:\\"), DRIVE_REMOVABLE);
    EXPECT_EQ(GetDriveTypeA("c:"), GetDriveTypeA("C:\\"));

    SHFILEINFOA info{};
    EXPECT_NE(SHGetFileInfoA("C:\\", 0, &info, sizeof info, SHGFI_DISPLAYNAME), 0u);
    EXPECT_EQ(info.szDisplayName, folder.path().substr(folder.path().rfind('/') + 1) + " (C:)");
    EXPECT_NE(SHGetFileInfoA("Z:\\", 0, &info, sizeof info, SHGFI_DISPLAYNAME), 0u);
    EXPECT_STREQ(info.szDisplayName, "File system (Z:)");
    folder.write("Sub/Plan.dwg", "");
    EXPECT_NE(SHGetFileInfoA("C:\\SUB\\plan.DWG", 0, &info, sizeof info, SHGFI_DISPLAYNAME | SHGFI_TYPENAME), 0u);
    EXPECT_STREQ(info.szDisplayName, "Plan.dwg");
    EXPECT_STREQ(info.szTypeName, "DWG File");
    EXPECT_NE(SHGetFileInfoA("C:\\sub", 0, &info, sizeof info, SHGFI_ATTRIBUTES), 0u);
    EXPECT_EQ(info.dwAttributes, SFGAO_FILESYSTEM | SFGAO_FOLDER);
    EXPECT_EQ(SHGetFileInfoA("C:\\none", 0, &info, sizeof info, SHGFI_DISPLAYNAME), 0u);
    EXPECT_EQ(SHGetFileInfoA("Q:\\", 0, &info, sizeof info, SHGFI_DISPLAYNAME), 0u);
    EXPECT_EQ(SHGetFileInfoA("C:\\", 0, &info, 4, SHGFI_DISPLAYNAME), 0u);
}

TEST(Masks, FitAsOnThePlatform) {
    const struct {
        const char* name;
        const char* mask;
        bool fits;
    } cases[] = {
        {"plan.dwg", "*.DWG", true},  {"plan", "*.*", true},
        {"plan", "*.", true},         {"plan.dwg", "*.", false},
        {"plan.dwg", "*", true},      {"plan.dwg", "p???.dwg", true},
        {"pl.dwg", "p???.dwg", true}, {"plans.dwg", "p???.dwg", false},
        {"a.b.dwg", "*.dwg", true},   {"a.dwg.b", "*.dwg", false},
        {"plan", "plan.*", true},     {"plan", "plan.d*", false},
        {"\xC4.dwg", "\xE4.*", true}, {"", "*", true},
        {"aab", "*ab", true},         {"plan.dwg", "", false},
    };
    for (const auto& row : cases)
        EXPECT_EQ(matchesMask(row.name, row.mask), row.fits) << row.name << " / " << row.mask;
    EXPECT_FALSE(matchesMask(std::string(20000, 'a'), "*a*a*a*b")) << "must not take for ever";
}

TEST(CodePage, EveryByteSurvivesTheWayOutAndBack) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(fromUtf8(toUtf8(text)), text) << byte;
        EXPECT_EQ(upper1252(lower1252(upper1252(text[0]))), upper1252(text[0])) << byte;
    }
    for (const char* wrong :
         {"\x80", "\xC3", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF8\x88\x80\x80\x80", "\u0394"})
        EXPECT_EQ(fromUtf8(wrong), std::nullopt) << testing::PrintToString(wrong);
    EXPECT_EQ(fromUtf8Lossy("a\u0394b\x80"), "a?b?");
}
