#include "db/tolerance_symbols.h"

namespace vndk::db {

namespace {

void circle(SymbolPen& pen, double radius) { pen.arc(0, 0, radius, 0, 360); }

/// An arrow to the upper right.
void runoutArrow(SymbolPen& pen, double shift) {
    pen.line(-0.25 + shift, -0.4, 0.25 + shift, 0.4);
    pen.line(0.25 + shift, 0.4, 0.03 + shift, 0.24);
    pen.line(0.25 + shift, 0.4, 0.21 + shift, 0.13);
}

void circled(SymbolPen& pen, char c) {
    circle(pen, 0.5);
    pen.letter(c);
}

} // namespace

bool drawToleranceSymbol(char letter, SymbolPen& pen) {
    switch (letter) {
    case 'a': // angularity
        pen.line(-0.5, -0.3, 0.5, -0.3);
        pen.line(-0.5, -0.3, 0.4, 0.35);
        return true;
    case 'b': // perpendicularity
        pen.line(-0.5, -0.4, 0.5, -0.4);
        pen.line(0, -0.4, 0, 0.5);
        return true;
    case 'c': // flatness
        pen.line(-0.5, -0.3, 0.25, -0.3);
        pen.line(0.25, -0.3, 0.5, 0.3);
        pen.line(0.5, 0.3, -0.25, 0.3);
        pen.line(-0.25, 0.3, -0.5, -0.3);
        return true;
    case 'd': // profile of a surface
        pen.arc(0, -0.25, 0.5, 0, 180);
        pen.line(-0.5, -0.25, 0.5, -0.25);
        return true;
    case 'e': // circularity
        circle(pen, 0.4);
        return true;
    case 'f': // parallelism
        pen.line(-0.4, -0.45, 0, 0.45);
        pen.line(0, -0.45, 0.4, 0.45);
        return true;
    case 'g': // cylindricity
        circle(pen, 0.25);
        pen.line(-0.5, -0.45, -0.1, 0.45);
        pen.line(0.1, -0.45, 0.5, 0.45);
        return true;
    case 'h': // circular runout
        runoutArrow(pen, 0);
        return true;
    case 'i': // symmetry
        pen.line(-0.5, 0, 0.5, 0);
        pen.line(-0.3, 0.25, 0.3, 0.25);
        pen.line(-0.3, -0.25, 0.3, -0.25);
        return true;
    case 'j': // position
        circle(pen, 0.3);
        pen.line(-0.5, 0, 0.5, 0);
        pen.line(0, -0.5, 0, 0.5);
        return true;
    case 'k': // profile of a line
        pen.arc(0, -0.25, 0.5, 0, 180);
        return true;
    case 'l': // least material
    case 'm': // maximum material
    case 'p': // projected zone
    case 's': // regardless of size
        circled(pen, static_cast<char>(letter - 'a' + 'A'));
        return true;
    case 'n': // diameter
        circle(pen, 0.35);
        pen.line(-0.3, -0.5, 0.3, 0.5);
        return true;
    case 'r': // concentricity
        circle(pen, 0.45);
        circle(pen, 0.22);
        return true;
    case 't': // total runout
        runoutArrow(pen, -0.2);
        runoutArrow(pen, 0.2);
        pen.line(-0.45, -0.4, -0.05, -0.4);
        return true;
    case 'u': // straightness
        pen.line(-0.5, 0, 0.5, 0);
        return true;
    default:
        return false;
    }
}

} // namespace vndk::db
