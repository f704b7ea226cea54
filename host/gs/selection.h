// Entities by where they are seen: what they draw decides, not the boxes around them.
#pragma once

#include "gs/list_painter.h"

namespace vndk::gs {

class Selection {
public:
    /// Of what a block shows by itself, its coordinates brought to pixels by `toDevice`.
    Selection(DisplayLists& lists, Styles& styles, const Painting& painting, AcDbObjectId record,
              const AcGeMatrix3d& toDevice)
        : lists_(lists), styles_(styles), painting_(painting), record_(record), toDevice_(toDevice) {}

    /// The entity drawn last among those that touch a rectangle of pixels; null: none does.
    AcDbObjectId topAt(const PixelRect& place);
    /// Appends those that touch it, or those that lie wholly inside, in the order in which they are drawn.
    void find(const PixelRect& place, bool touching, std::vector<AcDbObjectId>& found);

private:
    bool isIn(const PixelRect& place, bool touching, uint32_t part);
    const std::vector<uint32_t>& candidates(const PixelRect& place);

    DisplayLists& lists_;
    Styles& styles_;
    Painting painting_;
    AcDbObjectId record_;
    AcGeMatrix3d toDevice_;
};

} // namespace vndk::gs
