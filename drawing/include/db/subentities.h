// The subentities of a complex entity: attributes of a reference, vertices of a polyline, and the sequence end
// behind them. The list belongs to the owner's identity, not to its data: undo doesn't touch it, since erased
// subentities stay in it.
#pragma once

#include "db/not_copied.h"
#include "db/object.h"

class AcDbEntity;
class AcDbSequenceEnd;

class AcDbSubentities {
public:
    /// Ids in order, erased ones included. Loaded from the file at the first call; with `decoding` the subentities
    /// themselves as well, which is quicker for who opens all of them.
    const std::vector<AcDbObjectId>& ids(const AcDbObject& owner, bool decoding = false) const;
    AcDbObjectId sequenceEnd() const { return state_ ? state_->end : AcDbObjectId(); }
    bool loaded() const { return !state_ || state_->loaded; }
    /// First and last as the file names them, before the list is loaded.
    void setFileChain(AcDbObjectId first, AcDbObjectId last, AcDbObjectId end);
    /// True if the file's chain didn't lead to the last one. Known once the list is loaded.
    bool isChainBroken() const { return state_ && state_->broken; }
    AcDbObjectId fileFirst() const { return state_ ? state_->first : AcDbObjectId(); }
    AcDbObjectId fileLast() const { return state_ ? state_->last : AcDbObjectId(); }

    /// Makes a temporary entity resident behind the others, and the sequence end with the first one. The entity stays
    /// open for write. eNotInDatabase: the owner isn't resident; eNotOpenForWrite; eAlreadyInDb.
    Acad::ErrorStatus append(AcDbObject& owner, AcDbObjectId& id, AcDbEntity* entity);
    /// Erases all with their owner, and brings back those that went with it.
    Acad::ErrorStatus eraseWithOwner(const AcDbObject& owner, bool erasing);
    void visit(const AcDbObject& owner, AcDbReferenceVisitor& visitor);
    Acad::ErrorStatus transformBy(const AcDbObject& owner, const class AcGeMatrix3d& matrix);

private:
    struct State {
        std::vector<AcDbObjectId> ids;
        std::vector<AcDbObjectId> erasedWithOwner;
        AcDbObjectId first, last, end;
        bool loaded = true;
        bool broken = false;
    };
    State& state();
    mutable NotCopied<std::unique_ptr<State>> state_; // most owners have none
};

/// Walks the subentities, from either end, with those that are erased or without; objectId() opens nothing. Belongs to
/// the caller.
class AcDbObjectIterator {
public:
    explicit AcDbObjectIterator(const std::vector<AcDbObjectId>& ids) : ids_(ids) { start(); }
    void start(bool backwards = false, bool skipDeleted = true) {
        position_ = backwards ? ids_.size() - 1 : 0;
        skip(backwards, skipDeleted);
    }
    bool done() const { return position_ >= ids_.size(); }
    void step(bool backwards = false, bool skipDeleted = true) {
        move(backwards);
        skip(backwards, skipDeleted);
    }
    AcDbObjectId objectId() const { return done() ? AcDbObjectId() : ids_[position_]; }

private:
    /// Before the first one the position is beyond all: it wraps around.
    void move(bool backwards) { position_ += backwards ? size_t(-1) : size_t(1); }
    void skip(bool backwards, bool skipDeleted) {
        while (skipDeleted && !done() && ids_[position_].isErased())
            move(backwards);
    }
    const std::vector<AcDbObjectId>& ids_;
    size_t position_ = 0;
};
