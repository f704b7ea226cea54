// Loading: order of events, counting of users, what a library shows, and what a failure says.
#include "platform/modules/journal.h"
#include "win32/loader.h"
#include "win32/windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <utility>

using namespace vndk::win32;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class Loader : public testing::Test {
protected:
    void SetUp() override { journal().clear(); }
    static HINSTANCE load(const char* path) {
        const LoadResult result = loadLibrary(path);
        EXPECT_TRUE(result.status.ok()) << result.status.message();
        return result.instance;
    }

    static std::vector<std::string> taken() { return std::exchange(journal(), {}); }
};

template <class Function>
Function functionOf(HINSTANCE instance, const char* name) {
    return reinterpret_cast<Function>(getProcAddress(instance, name));
}

std::string outputOf(const std::string& command) {
    std::string text;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 256> part{};
    while (pipe != nullptr && fgets(part.data(), part.size(), pipe) != nullptr)
        text += part.data();
    if (pipe != nullptr)
        pclose(pipe);
    return text;
}

} // namespace

TEST_F(Loader, AttachesAfterAllStaticsAndBuildsEverythingAnewOnASecondLoad) {
    for (int round = 0; round < 2; ++round) {
        const HINSTANCE probe = load(PROBE_FILE);
        EXPECT_THAT(taken(), ElementsAre("sibling: statics built", "probe: statics built", "sibling: attach",
                                         "probe: attach 1 Vondrake"));
        EXPECT_EQ(functionOf<int (*)()>(probe, "probeCounter")(), 1) << "an old image was still in memory";
        EXPECT_TRUE(freeLibrary(probe));
        EXPECT_THAT(taken(), ElementsAre("probe: detach", "sibling: detach", "probe: statics destroyed",
                                         "sibling: statics destroyed"));
        EXPECT_FALSE(freeLibrary(probe));
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
        EXPECT_EQ(getProcAddress(probe, "probeCounter"), nullptr);
    }
}

TEST_F(Loader, DetachesWithTheLastUserOnly) {
    const HINSTANCE first = load(PROBE_FILE);
    EXPECT_EQ(load(PROBE_FILE), first);
    taken();
    EXPECT_TRUE(freeLibrary(first));
    EXPECT_THAT(taken(), ElementsAre());
    EXPECT_TRUE(freeLibrary(first));
    EXPECT_EQ(taken().front(), "probe: detach");
}

TEST_F(Loader, KeepsALinkedLibraryAttachedUntilItsUserIsGone) {
    const HINSTANCE probe = load(PROBE_FILE);
    const HINSTANCE sibling = load(SIBLING_FILE);
    taken();
    EXPECT_TRUE(freeLibrary(sibling));
    EXPECT_THAT(taken(), ElementsAre()) << "the probe still stands on it";
    EXPECT_TRUE(freeLibrary(probe));
    EXPECT_THAT(taken(), ElementsAre("probe: detach", "sibling: detach", "probe: statics destroyed",
                                     "sibling: statics destroyed"));

    const HINSTANCE alone = load(SIBLING_FILE);
    EXPECT_THAT(taken(), ElementsAre("sibling: statics built", "sibling: attach"));
    const HINSTANCE user = load(PROBE_FILE);
    EXPECT_THAT(taken(), ElementsAre("probe: statics built", "probe: attach 1 Vondrake"));
    EXPECT_TRUE(freeLibrary(user));
    EXPECT_THAT(taken(), ElementsAre("probe: detach", "probe: statics destroyed"));
    EXPECT_TRUE(freeLibrary(alone));
    EXPECT_THAT(taken(), ElementsAre("sibling: detach", "sibling: statics destroyed"));
}

TEST_F(Loader, ClassesKeepTheirIdentityAcrossLibraries) {
    const HINSTANCE probe = load(PROBE_FILE);
    EXPECT_TRUE(functionOf<bool (*)()>(probe, "probeKnowsRound")());
    EXPECT_TRUE(freeLibrary(probe));
}

TEST_F(Loader, AnswersOnlyNamesThatTheLibraryItselfExports) {
    const HINSTANCE probe = load(PROBE_FILE);
    EXPECT_NE(getProcAddress(probe, "probeCounter"), nullptr);
    for (const char* name : {"probeHidden", "DllMain", "siblingName", "malloc", "missing"}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(getProcAddress(probe, name), nullptr) << name;
        EXPECT_EQ(GetLastError(), ERROR_PROC_NOT_FOUND) << name;
    }
    EXPECT_TRUE(freeLibrary(probe));
}

TEST_F(Loader, TheLibraryShowsNothingButItsExports) {
    const std::string names = outputOf("nm -D --defined-only --format=posix " PROBE_FILE " | cut -d' ' -f1 | sort");
    EXPECT_EQ(names, "probeCounter\nprobeKnowsRound\n");
}

TEST_F(Loader, ARefusingLibraryIsToldToDetachAndIsGone) {
    const LoadResult result = loadLibrary(REFUSING_FILE);
    EXPECT_EQ(result.status.code(), ERROR_DLL_INIT_FAILED);
    EXPECT_EQ(result.instance, nullptr);
    EXPECT_THAT(taken(), ElementsAre("refusing: 1", "refusing: 0"));
}

TEST_F(Loader, AFailureNamesTheFileAndTheReason) {
    const struct {
        std::string path;
        DWORD code;
        const char* says;
    } cases[] = {
        {"/nowhere/a.arx", ERROR_MOD_NOT_FOUND, "there is no such file"},
        {"missing.arx", ERROR_MOD_NOT_FOUND, "there is no such file"},
        {"/etc/passwd", ERROR_BAD_EXE_FORMAT, "/etc/passwd"},
        {JOURNAL_FILE, ERROR_BAD_EXE_FORMAT, "announces no entry"},
    };
    for (const auto& row : cases) {
        const LoadResult result = loadLibrary(row.path);
        EXPECT_EQ(result.status.code(), row.code) << row.path;
        EXPECT_THAT(result.status.message(), HasSubstr(row.path));
        EXPECT_THAT(result.status.message(), HasSubstr(row.says));
    }
}

TEST_F(Loader, FindsModulesByTheNameOfTheirFileAndTheProgramByTheNameItGaveItself) {
    EXPECT_EQ(GetModuleHandleA(nullptr), nullptr) << "no program has made itself known";
    const HINSTANCE probe = load(PROBE_FILE);
    std::string name = PROBE_FILE;
    name.erase(0, name.rfind('/') + 1);
    EXPECT_EQ(GetModuleHandleA(name.c_str()), probe);
    name[0] = 'v';
    EXPECT_EQ(GetModuleHandleA(name.c_str()), probe) << "case doesn't count";
    freeLibrary(probe);
    EXPECT_EQ(GetModuleHandleA(name.c_str()), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_MOD_NOT_FOUND);

    HINSTANCE first = nullptr, second = nullptr, library = nullptr;
    ASSERT_TRUE(registerProgram("Acad.exe", {}, first).ok());
    ASSERT_TRUE(registerProgram("Acad.exe", {}, second).ok());
    ASSERT_TRUE(registerProgram("shell.dll", {}, library).ok());
    EXPECT_EQ(GetModuleHandleA("acad.EXE"), second);
    EXPECT_EQ(GetModuleHandleA("acad"), nullptr) << "without extension a library is meant";
    EXPECT_EQ(GetModuleHandleA("SHELL"), library);
    unregisterProgram(library);
    unregisterProgram(second);
    EXPECT_EQ(GetModuleHandleA("Acad.exe"), first);
    EXPECT_EQ(GetModuleHandleA(nullptr), first);
    unregisterProgram(first);
    EXPECT_EQ(GetModuleHandleA("Acad.exe"), nullptr);
}
