// What the object library does as a whole.
//
// The loader's kInitAppMsg registers the classes and their stand-ins, so that objects of a drawing that is read from
// then on come back as what they were; kUnloadAppMsg takes that back. While objects of the classes live, in a drawing
// or in its undo history, kUnloadAppMsg is answered with kRetError and nothing is taken back: their code must stay.
//
// kLoadDwgMsg defines two LISP functions in the document, where the program has a command line: (_refresh) brings the
// screen up to date, (c:_grip KIND) does nothing.
#pragma once

#include "rx/app_codes.h"

/// The registered application under whose name the data of these classes stand in a drawing's xdata.
inline constexpr const char* kVndkApplicationName = "VNDKOBJECTS";

/// Index of the palette's current tab: written by the palette at each tab change, -1 before the first.
extern int m_TabIndex;

namespace vndk::objects {

/// Member of each object of the library; counts those that live.
class LiveObject {
public:
    LiveObject() { ++count_; }
    LiveObject(const LiveObject&) { ++count_; }
    LiveObject& operator=(const LiveObject&) = default;
    ~LiveObject() { --count_; }

    static long count() { return count_; }

private:
    static long count_;
};

} // namespace vndk::objects
