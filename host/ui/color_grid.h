// A palette: rows and columns of colours, of which one can be picked with the mouse or the arrow keys. It takes over an
// owner-drawn button, and notifies as one: BN_CLICKED for a pick, BN_DOUBLECLICKED for one that is final.
#pragma once

#include "mfc/controls.h"

namespace vndk::host {

class ColorGrid : public CButton {
    DECLARE_DYNAMIC(ColorGrid)

public:
    /// The colour of a cell, counted from 0.
    using ColorAt = int (*)(int row, int column);
    static constexpr int kNone = -1;

    ColorGrid(int rows, int columns, ColorAt colorAt) : rows_(rows), columns_(columns), colorAt_(colorAt) {}

    /// Marks a colour; one that the palette hasn't takes the mark away.
    void select(int color);
    /// The colour that is marked; kNone.
    [[nodiscard]] int selected() const { return selected_; }
    /// In client coordinates.
    [[nodiscard]] CRect cell(int row, int column) const;

    void DrawItem(LPDRAWITEMSTRUCT draw) override;

protected:
    void OnLButtonDown(UINT flags, CPoint point);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    UINT OnGetDlgCode();

    DECLARE_MESSAGE_MAP()

private:
    struct Place {
        int row = -1;
        int column = -1;
    };
    [[nodiscard]] Place placeOf(int color) const;
    void pick(Place place);

    int rows_;
    int columns_;
    ColorAt colorAt_;
    int selected_ = kNone;
};

} // namespace vndk::host
