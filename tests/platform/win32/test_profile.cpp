// Profile files: what a change keeps, what is refused, and that a failed write loses nothing.
#include "platform/temp_folder.h"
#include "win32/profile_file.h"
#include "win32/windows.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using vndk::win32::ProfileFile;

TEST(Profile, AChangeTouchesItsLineOnly) {
    const TempFolder folder;
    const std::string path = folder.write(
        "a.ini", "; mine\r\n[Other]\r\nx=1\r\n\r\n[Vondrake]\r\nFirst = 1\r\n;c\r\nodd line\r\n\r\n[Z]\r\n");
    EXPECT_TRUE(WritePrivateProfileStringA("VONDRAKE", "first", "2", path.c_str()));
    EXPECT_TRUE(WritePrivateProfileStringA("Vondrake", "New", " blanks ", path.c_str()));
    EXPECT_EQ(
        folder.read("a.ini"),
        "; mine\r\n[Other]\r\nx=1\r\n\r\n[Vondrake]\r\nfirst=2\r\n;c\r\nodd line\r\nNew=\" blanks \"\r\n\r\n[Z]\r\n");
    EXPECT_TRUE(WritePrivateProfileStringA("vondrake", "NEW", nullptr, path.c_str()));
    EXPECT_TRUE(WritePrivateProfileStringA("other", nullptr, nullptr, path.c_str()));
    EXPECT_EQ(folder.read("a.ini"), "; mine\r\n[Vondrake]\r\nfirst=2\r\n;c\r\nodd line\r\n\r\n[Z]\r\n");
}

TEST(Profile, ValuesComeBackAsTheyWere) {
    for (const char* value :
         {"plain", "", " a", "a ", "\"q\"", "'q'", "a=b;c", "[x]", "\"", "\xFC\x80", "C:\\dwg\\a b.dwg"}) {
        ProfileFile profile;
        ASSERT_TRUE(profile.set("S", "k", value).ok()) << value;
        EXPECT_EQ(ProfileFile::parse(profile.text()).value("s", "K"), value);
    }
}

TEST(Profile, ValuesLoseOuterBlanksAndOnePairOfQuotes) {
    const TempFolder folder;
    const std::string path = folder.write(
        "a.ini",
        "[S]\na =  two words \t\nb=\"quoted\"\nc= ' q ' \nd=\"\"twice\"\"\ne=\"open\nf=\"\ng=in \"the\" middle\n");
    const struct {
        const char *key, *value;
    } cases[] = {{"a", "two words"}, {"b", "quoted"},           {"c", " q "}, {"d", "\"twice\""}, {"e", "\"open"},
                 {"f", "\""},        {"g", "in \"the\" middle"}};
    for (const auto& row : cases) {
        char buffer[40];
        GetPrivateProfileStringA("S", row.key, "none", buffer, sizeof buffer, path.c_str());
        EXPECT_STREQ(buffer, row.value) << row.key;
    }
}

TEST(Profile, TextThatWouldBreakTheFileIsRefused) {
    ProfileFile profile;
    const struct {
        const char *section, *key, *value;
    } cases[] = {{"S", "k", "1\n[T]\nx=2"}, {"S", "k=x", "1"}, {"S", ";k", "1"},  {"S", "[k", "1"},  {"S", "", "1"},
                 {"S]", "k", "1"},          {"", "k", "1"},    {"S", "k\r", "1"}, {"S\n", "k", "1"}, {"S", " k", "1"}};
    for (const auto& row : cases)
        EXPECT_FALSE(profile.set(row.section, row.key, row.value).ok()) << row.section << '/' << row.key;
    EXPECT_EQ(profile.text(), "");
}

TEST(Profile, NumbersReadAsThePlatformReadsThem) {
    const TempFolder folder;
    const std::string path = folder.write("a.ini", "[S]\na=12\nb=-3\nc= 7 mm\nd=x\ne=4294967297\nf=\n");
    const struct {
        const char* key;
        UINT number;
    } cases[] = {{"a", 12}, {"b", static_cast<UINT>(-3)}, {"c", 7}, {"d", 0}, {"e", 1}, {"f", 0}, {"none", 99}};
    for (const auto& row : cases)
        EXPECT_EQ(GetPrivateProfileIntA("s", row.key, 99, path.c_str()), row.number) << row.key;
}

TEST(Profile, ShortBuffersAreCutAndClosed) {
    const TempFolder folder;
    const std::string path = folder.write("a.ini", "[One]\nkey=abcdef\nk2=1\n[Two]\n");
    char buffer[16];
    EXPECT_EQ(GetPrivateProfileStringA("One", "key", "", buffer, 4, path.c_str()), 3u);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(GetPrivateProfileStringA("One", "none", "fall", buffer, 16, path.c_str()), 4u);
    EXPECT_EQ(GetPrivateProfileStringA(nullptr, nullptr, "", buffer, 16, path.c_str()), 8u);
    EXPECT_EQ(std::string(buffer, 9), std::string("One\0Two\0\0", 9));
    EXPECT_EQ(GetPrivateProfileStringA("One", nullptr, "", buffer, 6, path.c_str()), 4u);
    EXPECT_EQ(std::string(buffer, 6), std::string("key\0\0\0", 6));
    EXPECT_EQ(GetPrivateProfileStringA("One", "key", "", buffer, 1, path.c_str()), 0u);
}

TEST(Profile, ListsLeaveOutWhatIsNoKey) {
    const TempFolder folder;
    const std::string path = folder.write("a.ini", "[s]\nname1=\nname2= x \n;c=1\nname4=\nno sign\n[t]\nq=1\n");
    char buffer[64];
    EXPECT_EQ(GetPrivateProfileStringA("s", nullptr, "", buffer, sizeof buffer, path.c_str()), 18u);
    EXPECT_EQ(std::string(buffer, 19), std::string("name1\0name2\0name4\0\0", 19));
    EXPECT_EQ(GetPrivateProfileSectionA("S", buffer, sizeof buffer, path.c_str()), 22u);
    EXPECT_EQ(std::string(buffer, 23), std::string("name1=\0name2=x\0name4=\0\0", 23));
    EXPECT_EQ(GetPrivateProfileSectionA("none", buffer, sizeof buffer, path.c_str()), 0u);
    EXPECT_EQ(GetPrivateProfileSectionNamesA(buffer, sizeof buffer, path.c_str()), 4u);
    EXPECT_TRUE(WritePrivateProfileSectionA("s", "b=2\0c=3\0", path.c_str()));
    EXPECT_EQ(folder.read("a.ini"), "[s]\n;c=1\nno sign\nb=2\nc=3\n[t]\nq=1\n");
    EXPECT_TRUE(WritePrivateProfileSectionA("s", nullptr, path.c_str()));
    EXPECT_EQ(folder.read("a.ini"), "[t]\nq=1\n");
}

TEST(Profile, MissingFilesAndOddDefaultsGiveTheDefault) {
    char buffer[16] = "kept?";
    EXPECT_EQ(GetPrivateProfileStringA("s", "k", "", buffer, sizeof buffer, "/nowhere/at/all.ini"), 0u);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(GetPrivateProfileStringA("s", "k", " two  ", buffer, sizeof buffer, "/nowhere/at/all.ini"), 4u);
    EXPECT_STREQ(buffer, " two") << "blanks at the end of a default are taken off";
    EXPECT_EQ(GetPrivateProfileStringA("s", "k", nullptr, buffer, sizeof buffer, nullptr), 0u);
}

TEST(Profile, HostileFilesReadAsText) {
    for (const std::string& text :
         {std::string("[[[]]=\n=\n;=\n[\n]\n"), std::string(100000, '['), std::string("\0[S]\0k=\0v\n", 10),
          std::string("[S]\nk="), std::string("\r\r\n\n=[")}) {
        const ProfileFile profile = ProfileFile::parse(text);
        EXPECT_LE(profile.sections().size(), 3u);
        EXPECT_EQ(profile.value("S", "none"), std::nullopt);
    }
}

TEST(Profile, AFailedWriteKeepsTheOldFileAndLeavesNothingBeside) {
    const TempFolder folder;
    EXPECT_FALSE(WritePrivateProfileStringA("S", "k", "1", (folder / "none/a.ini").c_str()));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    std::filesystem::create_directory(folder / "d.ini");
    EXPECT_FALSE(WritePrivateProfileStringA("S", "k", "1", (folder / "d.ini").c_str()));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);

    const std::string path = folder.write("a.ini", "[S]\n");
    chmod(path.c_str(), 0600);
    EXPECT_TRUE(WritePrivateProfileStringA("S", "k", "1", path.c_str()));
    struct stat facts {};
    stat(path.c_str(), &facts);
    EXPECT_EQ(facts.st_mode & 0777, 0600u);
}
