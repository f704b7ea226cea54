// Selecting objects by prompts: what ERASE, BLOCK and LIST work on.
//
// At "Select objects:" a user may give
//   a point           the object there; where none is, the first corner of a rectangle: drawn to the right it takes
//                     what lies inside (window), to the left what it touches too (crossing)
//   an entity name    from LISP, alone or as entsel gives it
//   Window, Crossing  a rectangle of that kind; BOX: by the direction in which it is drawn
//   WPolygon, CPolygon, Fence   by points: what lies in the polygon, what touches it, what the fence crosses
//   Last, ALL, Previous
//   Remove, Add       what follows is taken out, or added again; Undo takes back the last answer
//   SIngle            ends after the first find
//   Multiple          points up to an Enter are looked up together, without rectangles
//   Enter             done
// In the window the mouse gives names and points; a pick with Shift held takes out. What was chosen there ahead of the
// command is the selection, and nothing is asked.
// Objects on layers that are off or frozen are found by Last and ALL at most (frozen ones never). Objects that don't
// stand in the current space are left out and counted.
#pragma once

#include "commands/command_tools.h"

#include <functional>
#include <optional>
#include <unordered_set>

namespace vndk::host {

struct Answer;

class SelectionPrompt {
public:
    explicit SelectionPrompt(CommandContext& ctx) : ctx_(ctx) {}

    /// Normal: the objects in the order in which they were chosen, also none. They become the previous selection.
    PromptStatus ask(std::vector<AcDbObjectId>& objects);

private:
    /// Stopped: by a prompt, whose status tells why.
    enum class Taken { Yes, No, Invalid, Stopped, Cancelled, Refused };

    bool takePickedFirst(std::vector<AcDbObjectId>& objects);
    Taken take(const Answer& answer);
    Taken takeKeyword(const std::string& keyword);
    Taken takePoint(const AcGePoint3d& point);
    Taken takeRectangle(const AcGePoint3d& first, int side);
    Taken takeAskedRectangle(int side);
    Taken takeEntity(AcDbObjectId id);
    Taken takePath(const std::string& kind);
    Taken takeMultiple();
    std::vector<AcDbObjectId> everything() const;
    std::vector<AcDbObjectId> shownWhere(const std::function<bool(const AcDbEntity&)>& lies) const;
    std::optional<AcGePoint3d> pointOf(const Answer& answer) const;
    void apply(std::vector<AcDbObjectId> found);
    void show() const;
    void report(size_t found, size_t changed, size_t duplicates) const;
    /// Complains of an answer; false: the prompt shouldn't ask again.
    bool complain(const Answer& answer) const;

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
