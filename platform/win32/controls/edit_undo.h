// The one change that an edit control can take back. Taking it back leaves the change that does it again.
#pragma once

#include <string>
#include <string_view>

namespace vndk::win32 {

class EditUndo {
public:
    enum class Join { no, withFormer }; // typing and deleting next to what was typed or deleted before counts as one

    /// The `removed` text at a position has been replaced by `inserted` characters.
    void record(int position, std::string_view removed, int inserted, Join join) {
        if (join == Join::withFormer && this->join(position, removed, inserted))
            return;
        *this = {};
        position_ = position;
        removed_ = removed;
        inserted_ = inserted;
    }
    void clear() { *this = {}; }

    [[nodiscard]] bool isEmpty() const { return removed_.empty() && inserted_ == 0; }
    [[nodiscard]] int position() const { return position_; }
    /// What comes back...
    [[nodiscard]] const std::string& removed() const { return removed_; }
    /// ...in place of so many characters.
    [[nodiscard]] int inserted() const { return inserted_; }

private:
    bool join(int position, std::string_view removed, int inserted) {
        const int count = static_cast<int>(removed.size());
        const int end = position_ + inserted_;
        if (isEmpty())
            return false;
        if (removed.empty() && position == end && inserted_ > 0) {
            inserted_ += inserted;
            return true;
        }
        if (inserted > 0)
            return false;
        if (position + count == end && count <= inserted_) {
            inserted_ -= count;
            return true;
        }
        if (inserted_ == 0 && position + count == position_) {
            removed_.insert(0, removed);
            position_ = position;
            return true;
        }
        if (inserted_ == 0 && position == position_) {
            removed_ += removed;
            return true;
        }
        return false;
    }

    int position_ = 0;
    std::string removed_;
    int inserted_ = 0;
};

} // namespace vndk::win32
