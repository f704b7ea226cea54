// A paragraph as single lines.
#include "db/text.h"
#include "db/transformed_parts.h"

#include <cmath>
#include <optional>

namespace {

constexpr double kLineAdvance = 5.0 / 3; // of the height, from one base line to the next

/// The paragraphs of contents that have no format codes but breaks and quoted signs; nothing for others.
std::optional<std::vector<std::string>> plainLines(const std::string& contents) {
    std::vector<std::string> lines(1);
    for (size_t i = 0; i < contents.size(); ++i) {
        const char c = contents[i];
        if (c == '{' || c == '}')
            return std::nullopt;
        if (c != '\\') {
            lines.back() += c;
            continue;
        }
        const char next = ++i < contents.size() ? contents[i] : '\0';
        if (next == 'P')
            lines.emplace_back();
        else if (next == '\\' || next == '{' || next == '}')
            lines.back() += next;
        else
            return std::nullopt;
    }
    return lines;
}

} // namespace

Acad::ErrorStatus AcDbMText::explode(std::vector<AcDbEntity*>& parts) const {
    const auto lines = plainLines(data_.contents);
    const double advance = kLineAdvance * data_.height * data_.lineSpacingFactor;
    if (!lines || !(advance > 0))
        return Acad::eNotApplicable;
    // The measured height tells whether the frame's width has broken lines.
    const double measured = 1 + (data_.extentsHeight - data_.height) / advance;
    if (data_.width > 0 && std::lround(measured) != static_cast<long>(lines->size()))
        return Acad::eNotApplicable;
    const int column = (data_.attachment - 1) % 3, row = (data_.attachment - 1) / 3;
    const double whole = data_.height + advance * static_cast<double>(lines->size() - 1);
    const AcGeVector3d up = data_.normal.crossProduct(data_.direction).normal();
    AcGePoint3d base = data_.location + up * (whole * row / 2 - data_.height);
    vndk::db::Parts pieces;
    for (const std::string& line : *lines) {
        if (!line.empty()) {
            auto text = std::make_unique<AcDbText>(AcGePoint3d(), line.c_str(), data_.style, data_.height);
            text->setNormal(data_.normal);
            text->setRotation(rotation());
            text->setHorizontalMode(static_cast<AcDb::TextHorzMode>(column));
            text->setPosition(base);
            text->setAlignmentPoint(base);
            text->adjustAlignment();
            text->setPropertiesFrom(this);
            pieces.push_back(std::move(text));
        }
        base = base + up * -advance;
    }
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}
