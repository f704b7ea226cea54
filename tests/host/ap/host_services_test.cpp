// Where the host finds a file that a caller names.
#include "db/database.h"
#include "host/host_fixture.h"
#include "platform/temp_folder.h"
#include "win32/drive_map.h"

#include <filesystem>

namespace {

class HostServicesTest : public HostTest {
protected:
    HostServicesTest() : former(std::filesystem::current_path()) {
        EXPECT_TRUE(drives.map('T', folder.path()).ok());
        std::filesystem::create_directory(folder / "here");
        std::filesystem::current_path(folder / "here");
    }
    ~HostServicesTest() override {
        std::filesystem::current_path(former);
        drives = before;
    }

    /// The path below the test's folder; "-" in front when no file is there.
    std::string find(const std::string& name) {
        std::string path;
        const Acad::ErrorStatus status = acdbHostApplicationServices()->findFile(path, name.c_str());
        EXPECT_TRUE(status == Acad::eOk || status == Acad::eFileNotFound);
        if (path.starts_with(folder.path() + "/"))
            path = path.substr(folder.path().size() + 1);
        return (status == Acad::eOk ? "" : "-") + path;
    }

    TempFolder folder;
    std::filesystem::path former;
    vndk::win32::DriveMap& drives = vndk::win32::DriveMap::current();
    vndk::win32::DriveMap before = drives;
};

} // namespace

TEST_F(HostServicesTest, takesBothFormsOfNamesAndTheSystemsOwn) {
    folder.write("lib/Door.dwg", "");
    folder.write("T\xC3\xBCr.dwg", "");
    EXPECT_EQ(find("T:\\lib\\Door.dwg"), "lib/Door.dwg");
    EXPECT_EQ(find("t:/LIB/door.DWG"), "lib/Door.dwg");
    EXPECT_EQ(find(folder / "lib/Door.dwg"), "lib/Door.dwg");
    EXPECT_EQ(find("T:\\T\xFCr.dwg"), "T\xC3\xBCr.dwg");
    EXPECT_EQ(find(folder / "T\xFCr.dwg"), "T\xC3\xBCr.dwg");
    EXPECT_EQ(find(folder / "T\xC3\xBCr.dwg"), "T\xC3\xBCr.dwg");
}

TEST_F(HostServicesTest, looksForRelativeNamesInTheirOrder) {
    folder.write("support/a.dwg", "");
    folder.write("support/sub/b.dwg", "");
    host.linker().addSupportFolder(folder / "support");
    EXPECT_EQ(find("a.dwg"), "support/a.dwg");
    EXPECT_EQ(find("sub\\b.dwg"), "support/sub/b.dwg");
    ASSERT_EQ(database().saveAs((folder / "drawings/own.dwg").c_str()), Acad::eFileAccessErr);
    std::filesystem::create_directory(folder / "drawings");
    ASSERT_EQ(database().saveAs((folder / "drawings/own.dwg").c_str()), Acad::eOk);
    ASSERT_EQ(host.documents().appContextOpenDocument("T:\\drawings\\own.dwg"), Acad::eOk);
    folder.write("drawings/a.dwg", "");
    EXPECT_EQ(find("a.dwg"), "drawings/a.dwg") << "beside the drawing";
    folder.write("here/a.dwg", "");
    EXPECT_EQ(find("a.dwg"), "a.dwg") << "in the working folder";
    EXPECT_EQ(find("T:a.dwg"), "-a.dwg") << "a drive is no place to look around";
}

TEST_F(HostServicesTest, namesAMissingFileAsTheSystemWould) {
    EXPECT_EQ(find("T:\\no\\T\xFCr.dwg"), "-no/T\xC3\xBCr.dwg");
    EXPECT_EQ(find(folder / "no/T\xC3\xBCr.dwg"), "-no/T\xC3\xBCr.dwg");
    EXPECT_EQ(find("Q:\\x.dwg"), "-Q:\\x.dwg");
    AcDbDatabase drawing(false, true);
    EXPECT_EQ(drawing.readDwgFile("T:\\no\\T\xFCr.dwg"), Acad::eFileNotFound);
    EXPECT_NE(drawing.lastFileError().find("/no/T\xC3\xBCr.dwg"), std::string::npos) << drawing.lastFileError();
}

TEST_F(HostServicesTest, reachTheDatabasesOfTheCurrentHostOnly) {
    {
        const vndk::host::Host inner;
        EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
        folder.write("a.dwg", "");
        EXPECT_EQ(find("T:/a.dwg"), "a.dwg");
    }
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), &database());
}
