// The symbols of geometric tolerances. Private to the drawing layer.
#pragma once

namespace vndk::db {

/// Draws in a square of size 1 around the origin.
class SymbolPen {
public:
    virtual ~SymbolPen() = default;
    virtual void line(double x1, double y1, double x2, double y2) = 0;
    /// Counter-clockwise; angles in degrees.
    virtual void arc(double x, double y, double radius, double start, double end) = 0;
    virtual void letter(char c) = 0;
};

/// Draws the symbol that the font gdt has under a letter. False: it has none.
bool drawToleranceSymbol(char letter, SymbolPen& pen);

} // namespace vndk::db
