// What the properties of a display list come to where it is drawn.
#pragma once

#include "gs/display_list.h"

#include <unordered_map>
#include <vector>

class AcDbDatabase;

namespace vndk::gs {

/// Dashes in drawing units: above 0 a line, below 0 a gap, 0 a dot.
struct LinePattern {
    std::vector<double> dashes; // empty: unbroken
    double length = 0;
};

/// What a reference gives to what it shows.
struct Surroundings {
    std::uint32_t color = 0;
    AcDbObjectId layer, linetype;
    AcDb::LineWeight weight = AcDb::kLnWtByLwDefault;
    bool nested = false; // behind a reference
};

struct Style {
    bool visible = true;
    bool frozen = false; // the layer; a reference on it shows nothing at all
    std::uint32_t color = 0;
    const LinePattern* pattern = nullptr; // null: unbroken
    double patternScale = 1;
    int width = 1;      // pixels
    bool thin = false;  // an unbroken line of one pixel that is drawn at once; set by who draws
    Surroundings inner; // for what a reference with this style shows
};

/// The properties of one drawing as they are now; made for each picture.
class Styles {
public:
    Styles(AcDbDatabase& database, std::uint32_t background);

    /// Layers that are frozen here beside those that are everywhere. Comes before anything is resolved.
    void freeze(std::vector<AcDbObjectId> layers) { frozenHere_ = std::move(layers); }
    /// Of all linetypes, beside the drawing's own scale.
    void scaleLinetypes(double factor) { scale_ *= factor; }
    /// Around what stands in a space itself.
    Surroundings outermost() const;
    Style resolve(const Look& look, const Surroundings& around);

private:
    struct Layer {
        bool off = false, frozen = false;
        bool zero = false; // layer "0", of whichever drawing
        short color = 7;
        AcDbObjectId linetype;
        AcDb::LineWeight weight = AcDb::kLnWtByLwDefault;
    };
    const Layer& layerOf(AcDbObjectId id);
    bool isByLayer(AcDbObjectId linetype) const;
    bool isByBlock(AcDbObjectId linetype) const;
    const LinePattern* patternOf(AcDbObjectId linetype);
    int widthOf(AcDb::LineWeight weight) const;

    AcDbDatabase& database_;
    std::uint32_t background_;
    AcDbObjectId layerZero_;
    std::vector<AcDbObjectId> frozenHere_;
    bool showsWeights_;
    double scale_; // of all linetypes
    std::unordered_map<AcDbObjectId, Layer> layers_;
    std::unordered_map<AcDbObjectId, LinePattern> patterns_;
};

} // namespace vndk::gs
