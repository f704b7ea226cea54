#pragma once
/// The folder of real drawings that tests may use, and files in it.

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace vndk::test {

/// The drawings in a subfolder of VONDRAKE_DRAWINGS, by name; none when the variable isn't set.
inline std::vector<std::string> realDrawings(const std::string& subfolder) {
    std::vector<std::string> paths;
    const char* root = std::getenv("VONDRAKE_DRAWINGS");
    if (!root)
        return paths;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(root) / subfolder, error))
        if (entry.path().extension() == ".dwg")
            paths.push_back(entry.path().string());
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// "a/b.dwg" becomes "a/b" + ending.
inline std::string besideDrawing(const std::string& path, const std::string& ending) {
    return std::filesystem::path(path).replace_extension().string() + ending;
}

/// A folder for copies that goes with it. Tests that open drawings for writing take copies: others that run at the same
/// time are refused the drawing meanwhile.
class DrawingCopies {
public:
    DrawingCopies()
        : folder_(std::filesystem::temp_directory_path() / ("vondrake-copies-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(folder_);
    }
    ~DrawingCopies() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    DrawingCopies(const DrawingCopies&) = delete;
    DrawingCopies& operator=(const DrawingCopies&) = delete;

    std::string folder() const { return folder_.string(); }
    /// The copy's path; it has the name of the original.
    std::string copy(const std::filesystem::path& drawing) const {
        const std::filesystem::path made = folder_ / drawing.filename();
        std::filesystem::copy_file(drawing, made, std::filesystem::copy_options::overwrite_existing);
        return made.string();
    }

private:
    std::filesystem::path folder_;
};

#define SKIP_WITHOUT_DRAWINGS()                                                                                        \
    if (!std::getenv("VONDRAKE_DRAWINGS"))                                                                             \
    GTEST_SKIP() << "VONDRAKE_DRAWINGS names no folder of real drawings"

} // namespace vndk::test
