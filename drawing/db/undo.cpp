#include "db/undo.h"

#include "db/database.h"
#include "db/stub.h"

#include <algorithm>
#include <utility>

/// One former state: of an object's data, of its erased mark, or of the header.
struct AcDbUndoController::Record {
    enum class Kind { Modified, Appended, Erased, Header };

    Kind kind = Kind::Modified;
    AcDbStub* stub = nullptr;
    bool wasErased = false;
    std::unique_ptr<AcDbObject> former;
    std::unique_ptr<vndk::dwg::HeaderVariables> header;
};

struct AcDbUndoController::Group {
    std::string name;
    std::vector<Record> records;
    bool marked = false; // a mark stands before this group
};

AcDbUndoController::AcDbUndoController(AcDbDatabase& database) : database_(database) {}

AcDbUndoController::~AcDbUndoController() = default;

void AcDbUndoController::beginGroup(std::string name) {
    if (depth_++ > 0)
        return;
    closeOpenGroup();
    open_ = std::make_unique<Group>();
    open_->name = std::move(name);
    ++serial_;
}

void AcDbUndoController::endGroup() {
    if (depth_ > 0 && --depth_ == 0)
        closeOpenGroup();
}

void AcDbUndoController::closeOpenGroup() {
    if (open_ && !open_->records.empty()) {
        undone_.clear();
        open_->marked = std::exchange(markPending_, false);
        done_.push_back(std::move(open_));
    }
    open_.reset();
}

AcDbUndoController::Group& AcDbUndoController::current() {
    if (!open_) {
        open_ = std::make_unique<Group>();
        ++serial_;
    }
    return *open_;
}

size_t AcDbUndoController::undoCount() const { return done_.size() + (open_ && !open_->records.empty() ? 1 : 0); }

size_t AcDbUndoController::redoCount() const { return undone_.size(); }

std::string AcDbUndoController::undoName() const {
    if (open_ && !open_->records.empty())
        return open_->name;
    return done_.empty() ? std::string() : done_.back()->name;
}

std::string AcDbUndoController::redoName() const { return undone_.empty() ? std::string() : undone_.back()->name; }

bool AcDbUndoController::undo() {
    if (depth_ > 0)
        return false;
    closeOpenGroup();
    return move(done_, undone_);
}

bool AcDbUndoController::redo() {
    if (depth_ > 0)
        return false;
    closeOpenGroup();
    return move(undone_, done_);
}

void AcDbUndoController::clear() {
    open_.reset();
    done_.clear();
    undone_.clear();
    depth_ = 0;
    markPending_ = false;
    ++serial_;
}

void AcDbUndoController::setMark() {
    if (depth_ == 0)
        closeOpenGroup();
    markPending_ = true;
}

bool AcDbUndoController::undoToMark() {
    if (depth_ > 0)
        return false;
    closeOpenGroup();
    if (std::exchange(markPending_, false))
        return true; // nothing was done since the mark
    const bool marked = std::any_of(done_.begin(), done_.end(), [](const auto& group) { return group->marked; });
    if (!marked)
        return false;
    for (bool reached = false; !reached;) {
        reached = done_.back()->marked;
        move(done_, undone_);
    }
    return true;
}

size_t AcDbUndoController::mark() {
    ++serial_;
    return open_ ? open_->records.size() : 0;
}

void AcDbUndoController::rollBackTo(size_t mark) {
    applying_ = true;
    for (size_t i = open_ ? open_->records.size() : 0; i-- > mark;)
        applyRecord(open_->records[i]);
    applying_ = false;
    forgetBehind(mark);
}

void AcDbUndoController::forgetBehind(size_t mark) {
    ++serial_; // whoever was recorded behind the mark isn't any more
    if (!open_)
        return;
    open_->records.erase(open_->records.begin() + static_cast<ptrdiff_t>(std::min(mark, open_->records.size())),
                         open_->records.end());
    if (open_->records.empty() && depth_ == 0)
        open_.reset();
}

void AcDbUndoController::recordModified(AcDbStub& stub) {
    if (!recording())
        return;
    Group& group = current();
    if (stub.undoGroup == serial_)
        return;
    stub.undoGroup = serial_;
    Record record;
    record.kind = Record::Kind::Modified;
    record.stub = &stub;
    record.former.reset(stub.object->copyData());
    group.records.push_back(std::move(record));
}

void AcDbUndoController::recordAppended(AcDbStub& stub) {
    if (!recording())
        return;
    Group& group = current();
    stub.undoGroup = serial_;
    group.records.emplace_back();
    group.records.back().kind = Record::Kind::Appended;
    group.records.back().stub = &stub;
}

void AcDbUndoController::recordErased(AcDbStub& stub) {
    if (!recording())
        return;
    Record& record = current().records.emplace_back();
    record.kind = Record::Kind::Erased;
    record.stub = &stub;
    record.wasErased = stub.has(kStubErased);
}

void AcDbUndoController::recordHeader(const vndk::dwg::HeaderVariables& former) {
    if (!recording())
        return;
    Record& record = current().records.emplace_back();
    record.kind = Record::Kind::Header;
    record.header = std::make_unique<vndk::dwg::HeaderVariables>(former);
}

bool AcDbUndoController::move(Groups& from, Groups& to) {
    if (from.empty())
        return false;
    std::unique_ptr<Group> group = std::move(from.back());
    from.pop_back();
    auto opposite = std::make_unique<Group>();
    opposite->name = group->name;
    opposite->marked = group->marked;
    opposite->records.reserve(group->records.size());
    applying_ = true;
    for (auto record = group->records.rbegin(); record != group->records.rend(); ++record)
        opposite->records.push_back(applyRecord(*record));
    applying_ = false;
    database_.setDirty(true);
    to.push_back(std::move(opposite));
    return true;
}

/// Brings the former state back and gives the record that takes this back in turn.
AcDbUndoController::Record AcDbUndoController::applyRecord(Record& record) {
    Record opposite;
    opposite.kind = record.kind;
    opposite.stub = record.stub;
    AcDbStub* const stub = record.stub;
    AcDbObject* const object = stub ? stub->object : nullptr;
    auto& reactors = database_.reactors();
    const auto setErased = [&](bool erased) {
        opposite.wasErased = stub->has(kStubErased);
        erased ? stub->set(kStubErased) : stub->clear(kStubErased);
        if (AcDbStub* const owner = object->ownerId().stub())
            owner->set(kStubLinksChanged);
    };
    switch (record.kind) {
    case Record::Kind::Modified:
        opposite.former.reset(object->copyData());
        object->assignData(*record.former);
        object->dataRestored();
        stub->set(kStubModified);
        reactors.tell([&](AcDbDatabaseReactor& r) { r.objectModified(&database_, object); });
        break;
    case Record::Kind::Appended:
        setErased(!stub->has(kStubErased));
        reactors.tell([&](AcDbDatabaseReactor& r) {
            stub->has(kStubErased) ? r.objectUnAppended(&database_, object) : r.objectReAppended(&database_, object);
        });
        break;
    case Record::Kind::Erased:
        setErased(record.wasErased);
        reactors.tell([&](AcDbDatabaseReactor& r) { r.objectErased(&database_, object, record.wasErased); });
        break;
    case Record::Kind::Header:
        database_.restoreHeader(*record.header);
        opposite.header = std::move(record.header);
        break;
    }
    return opposite;
}
