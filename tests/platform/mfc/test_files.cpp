// The framework's files and collections.
#include "mfc/collections.h"
#include "mfc/file.h"
#include "platform/temp_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace {

/// The cause of what a call throws; -1 when it throws nothing.
template <typename Call>
int causeOf(Call call) {
    try {
        call();
    } catch (CFileException* problem) {
        const int cause = problem->m_cause;
        char sentence[200];
        EXPECT_TRUE(problem->GetErrorMessage(sentence, sizeof sentence));
        problem->Delete();
        return cause;
    }
    return -1;
}

TEST(File, WritesReadsAndSeeks) {
    const TempFolder folder;
    const std::string path = folder / "made.bin";
    {
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
        file.Write("0123456789", 10);
        EXPECT_EQ(file.GetLength(), 10);
        file.Close();
    }
    CFile file(path.c_str(), CFile::modeRead);
    char buffer[20] = "";
    EXPECT_EQ(file.Seek(-4, CFile::end), 6);
    EXPECT_EQ(file.Read(buffer, sizeof buffer), 4U);
    EXPECT_STREQ(buffer, "6789");
    EXPECT_EQ(file.Read(buffer, sizeof buffer), 0U);
    EXPECT_EQ(std::string(file.GetFileName()), "made.bin");
    EXPECT_EQ(std::string(file.GetFileTitle()), "made");
    CFile again(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    EXPECT_EQ(again.GetLength(), 0) << "an earlier file is emptied";
}

TEST(File, DoesNotWaitForAPipe) {
    const TempFolder folder;
    const std::string path = folder / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(causeOf([&] { CFile(path.c_str(), CFile::modeRead); }), CFileException::accessDenied);
}

// What others may have put into a folder that is everybody's, and what of it may be overwritten.
TEST(File, MakesNoFileThroughATrapInASharedFolder) {
    const TempFolder folder;
    std::filesystem::create_directory(folder / "shared");
    const std::string path = folder / "shared/made";
    const std::string victim = folder / "victim";
    const auto create = [&] {
        return causeOf([&] { CFile(path.c_str(), CFile::modeCreate | CFile::modeWrite).Write("new", 3); });
    };
    const auto giveAway = [&] { return lchown(path.c_str(), 65534, 65534) == 0; };
    const struct {
        const char* name;
        std::function<bool()> prepare; // false: this user can't make it
        int inShared;
    } cases[] = {
        {"nothing", [] { return true; }, -1},
        {"an earlier file", [&] { return !folder.write("shared/made", "old, and longer").empty(); }, -1},
        {"a link of one's own", [&] { return symlink(victim.c_str(), path.c_str()) == 0; }, -1},
        {"somebody else's link", [&] { return symlink(victim.c_str(), path.c_str()) == 0 && giveAway(); },
         CFileException::accessDenied},
        {"somebody else's file", [&] { return !folder.write("shared/made", "old").empty() && giveAway(); },
         CFileException::accessDenied},
        {"a second name of a file", [&] { return link(victim.c_str(), path.c_str()) == 0; },
         CFileException::accessDenied},
        {"a pipe", [&] { return mkfifo(path.c_str(), 0666) == 0; }, CFileException::accessDenied},
    };
    for (const auto& row : cases)
        for (const bool shared : {true, false}) {
            chmod((folder / "shared").c_str(), shared ? 01777 : 0755);
            folder.write("victim", "keep");
            if ((std::string_view(row.name) == "a pipe" && !shared) || !row.prepare())
                continue;
            const int expected = shared ? row.inShared : -1;
            EXPECT_EQ(create(), expected) << row.name << (shared ? ", shared" : "");
            if (expected == -1)
                EXPECT_EQ(folder.read("shared/made"), "new") << row.name;
            else
                EXPECT_EQ(folder.read("victim"), "keep") << row.name;
            std::filesystem::remove(path);
        }
}

TEST(File, TellsWhatWentWrong) {
    const TempFolder folder;
    const std::string path = folder.write("there", "x");
    EXPECT_EQ(causeOf([&] { CFile((folder / "missing").c_str(), CFile::modeRead); }), CFileException::fileNotFound);
    EXPECT_EQ(causeOf([&] { CFile((folder / "no/such").c_str(), CFile::modeCreate | CFile::modeWrite); }),
              CFileException::fileNotFound);
    EXPECT_EQ(causeOf([&] { CFile(folder.path().c_str(), CFile::modeRead); }), CFileException::accessDenied);
    EXPECT_EQ(causeOf([] { CFile("Q:\\nowhere", CFile::modeRead); }), CFileException::badPath);
    EXPECT_EQ(causeOf([&] {
                  CFile file(path.c_str(), CFile::modeRead);
                  file.Seek(-5, CFile::begin);
              }),
              CFileException::badSeek);
    EXPECT_EQ(causeOf([] { CFile("/dev/full", CFile::modeWrite).Write("x", 1); }), CFileException::diskFull);
    EXPECT_EQ(causeOf([] { static_cast<void>(CFile().GetLength()); }), CFileException::invalidFile);
    CFile file;
    CFileException problem;
    EXPECT_FALSE(file.Open((folder / "missing").c_str(), CFile::modeRead, &problem));
    EXPECT_EQ(problem.m_cause, CFileException::fileNotFound);
    EXPECT_FALSE(file.Open(nullptr, CFile::modeRead, &problem)) << "no name is no file";
}

TEST(Collections, ListsKeepPositionsWhileOthersComeAndGo) {
    CStringList list;
    const POSITION middle = list.AddTail("b");
    list.AddHead("a");
    list.AddTail("d");
    list.InsertAfter(middle, "c");
    list.RemoveHead();
    EXPECT_EQ(std::string(list.GetAt(middle)), "b");
    std::string walked;
    for (POSITION at = list.GetHeadPosition(); at != nullptr;)
        walked += list.GetNext(at);
    EXPECT_EQ(walked, "bcd");
    EXPECT_EQ(list.Find("d"), list.GetTailPosition());
    EXPECT_EQ(list.Find("a"), nullptr);
    EXPECT_EQ(list.FindIndex(7), nullptr);
    list.RemoveAt(middle);
    EXPECT_EQ(list.GetCount(), 2);
}

TEST(Collections, MapsAreWalkedOnce) {
    CMapStringToString map;
    for (int i = 0; i < 100; ++i) {
        CString key;
        key.Format("key %d", i);
        map.SetAt(key, key);
    }
    std::vector<bool> seen(100);
    for (POSITION at = map.GetStartPosition(); at != nullptr;) {
        CString key, value;
        map.GetNextAssoc(at, key, value);
        EXPECT_EQ(key, value);
        const int index = std::stoi(std::string(key.Mid(4)));
        EXPECT_FALSE(seen[static_cast<std::size_t>(index)]);
        seen[static_cast<std::size_t>(index)] = true;
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), true), 100);
    CString value;
    EXPECT_FALSE(map.Lookup("none", value));
    EXPECT_TRUE(map.RemoveKey("key 7"));
    EXPECT_FALSE(map.RemoveKey("key 7"));
}

} // namespace
