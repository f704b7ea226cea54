// Selecting objects by prompts: what ERASE, BLOCK and LIST work on.
//
// At "Select objects:" a user may give
//   a point           the object there; where none is, the first corner of a rectangle: drawn to the right it takes
//                     what lies inside (window), to the left what it touches too (crossing)
//   an entity name    from LISP, alone or as entsel gives it
//   Window, Crossing  a rectangle of that kind; BOX: by the direction in which it is drawn
//   Last, ALL, Previous
//   Remove, Add       what follows is taken out, or added again; Undo takes back the last answer
//   SIngle            ends after the first find
//   Enter             done
// Objects on layers that are off or frozen are found by Last and ALL at most (frozen ones never).
#pragma once

#include "commands/command_tools.h"

#include <unordered_set>

namespace vndk::host {

struct Answer;
struct SelectionRectangle;

class SelectionPrompt {
public:
    explicit SelectionPrompt(CommandContext& ctx) : ctx_(ctx) {}

    /// Normal: the objects in the order in which they were chosen, also none. They become the previous selection.
    PromptStatus ask(std::vector<AcDbObjectId>& objects);

private:
    enum class Taken { Yes, No, Invalid, Stopped };

    Taken take(const Answer& answer);
    Taken takeKeyword(const std::string& keyword);
    Taken takePoint(const AcGePoint3d& point);
    Taken takeRectangle(const AcGePoint3d& first, int side);
    Taken takeAskedRectangle(int side);
    Taken takeEntity(AcDbObjectId id);
    std::vector<AcDbObjectId> everything() const;
    std::vector<AcDbObjectId> within(const SelectionRectangle& rectangle, bool crossing) const;
    void apply(const std::vector<AcDbObjectId>& found);
    void report(size_t found, size_t changed) const;

    CommandContext& ctx_;
    std::vector<AcDbObjectId> chosen_;
    std::unordered_set<AcDbObjectId> isChosen_;
    std::vector<std::vector<AcDbObjectId>> former_; // for Undo
    bool removing_ = false;
    bool single_ = false;
};

/// True if the entity's layer is locked.
bool isOnLockedLayer(AcDbObjectId entity);

} // namespace vndk::host
