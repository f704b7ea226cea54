// Undo and redo of one database.
//
// Changes gather in groups, one for each command. The first change of an object within a group keeps its
// former state; an object that came in within the group is just taken out again. Undoing a group makes the
// group that redoes it. Changes made outside a group make one that ends where the next begins. Recording is off
// in a new database; the host switches it on for the drawing of a document.
#pragma once

#include "db/object_id.h"
#include "dwg/header_variables.h"

#include <memory>
#include <string>
#include <vector>

class AcDbObject;

class AcDbUndoController {
public:
    explicit AcDbUndoController(AcDbDatabase& database);
    ~AcDbUndoController();

    /// Opens a group; the groups that could be redone are gone. Groups don't nest: a group within a group is
    /// part of the outer one.
    void beginGroup(std::string name);
    /// Closes the group. An empty one is dropped.
    void endGroup();
    bool inGroup() const { return depth_ > 0; }

    size_t undoCount() const;
    size_t redoCount() const;
    /// The name of the group that undo() or redo() would take; empty if none.
    std::string undoName() const;
    std::string redoName() const;
    /// Takes back the last group. False: nothing to undo, or a group is open.
    bool undo();
    bool redo();
    /// Forgets everything, for example when a drawing is loaded.
    void clear();
    /// Marks for UNDO Mark and Back: undoes back to the last mark. False without one.
    void setMark();
    bool undoToMark();

    void setEnabled(bool enabled) { enabled_ = enabled; }
    bool isEnabled() const { return enabled_; }

    // Called by the database.
    /// The place that has been reached in what is being recorded: every object's next change is recorded behind it.
    size_t mark();
    /// Takes back what was recorded behind the place, and forgets it. What could be redone stays so.
    void rollBackTo(size_t mark);
    /// Forgets what was recorded behind the place and keeps the changes.
    void forgetBehind(size_t mark);
    void recordModified(AcDbStub& stub);
    void recordAppended(AcDbStub& stub);
    void recordErased(AcDbStub& stub);
    void recordHeader(const vndk::dwg::HeaderVariables& former);

private:
    struct Record;
    struct Group;
    using Groups = std::vector<std::unique_ptr<Group>>;
    Group& current();
    void closeOpenGroup();
    bool recording() const { return enabled_ && !applying_; }
    bool move(Groups& from, Groups& to);
    Record applyRecord(Record& record);

    AcDbDatabase& database_;
    Groups done_;
    Groups undone_;
    std::unique_ptr<Group> open_;
    uint32_t serial_ = 0;
    int depth_ = 0;
    bool enabled_ = false;
    bool applying_ = false;
    bool markPending_ = false;
};
