// The faces that text is drawn with: files of the Liberation family.
#pragma once

#include "win32/fonts.h"

#include <array>
#include <memory>
#include <string>

struct FT_FaceRec_;
struct FT_LibraryRec_;

namespace vndk::win32 {

enum class Family { sans, serif, mono };

struct FaceStyle {
    Family family = Family::sans;
    bool bold = false;
    bool italic = false;
    bool operator==(const FaceStyle&) const = default;
};

/// The face for a description: by name, else by pitch and family.
[[nodiscard]] FaceStyle faceStyleFor(const LOGFONTA& description);

/// One folder of font files. Faces are opened when they are first asked for.
class FontFiles {
public:
    explicit FontFiles(std::string folder);
    ~FontFiles();
    FontFiles(const FontFiles&) = delete;
    FontFiles& operator=(const FontFiles&) = delete;

    /// The folder that VONDRAKE_FONTS names, or else where the system keeps the family.
    [[nodiscard]] static FontFiles& standard();

    /// Null when the file is missing or damaged; says so on stderr, once for a folder. Valid as long as this object.
    FT_FaceRec_* face(const FaceStyle& style);

private:
    struct Slot {
        FT_FaceRec_* face = nullptr;
        bool tried = false;
    };

    FT_FaceRec_* open(const FaceStyle& style);
    void complain(const std::string& file);

    std::string folder_;
    FT_LibraryRec_* library_ = nullptr;
    std::array<Slot, 12> slots_;
    bool complained_ = false;
};

} // namespace vndk::win32
