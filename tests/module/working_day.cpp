#include "module/working_day.h"

#include "drawing/dwg/file_audit.h"
#include "dwg/drawing_writer.h"

#include <gtest/gtest.h>

#include <algorithm>

using vndk::test::danglingReferences;
using vndk::test::digestDifference;
using vndk::test::digestOf;
using vndk::test::DrawingDigest;

namespace dwg = vndk::dwg;

namespace {

std::string joined(const std::vector<std::string>& texts) {
    std::string text;
    for (const std::string& each : texts)
        text += each + "\n";
    return text;
}

std::string counted(const char* what, size_t is, size_t expected) {
    return std::string(what) + " is " + std::to_string(is) + " in place of " + std::to_string(expected);
}

} // namespace

WorkingDay::WorkingDay(AcApDocument& document) : document_(document), states_{digestOf(*document.database())} {
    database().undo().clear();
    AcDbDatabase before(false);
    const auto bytes = dwg::writeDrawing(database());
    EXPECT_TRUE(bytes && dwg::readDrawing(before, *bytes, "before"));
    formerFaults_ = vndk::test::disagreements(before).size();
    if (const auto image = dwg::FileImage::parse(*bytes, "before"))
        formerlyDangling_ = danglingReferences(**image);
}

bool WorkingDay::isAboutSteps(const std::string& line) {
    return line == "U" || line.starts_with("UNDO") || line == "REDO";
}

std::string WorkingDay::differenceFrom(const DrawingDigest& state, const char* when) {
    const std::string difference = digestDifference(state, digestOf(database()));
    return difference.empty() ? difference : std::string(when) + ": " + difference;
}

std::string WorkingDay::whileAway() {
    if (database().undo().undoCount() != count_)
        return counted("another drawing's undo count", database().undo().undoCount(), count_);
    return differenceFrom(states_[count_], "another drawing was changed");
}

std::string WorkingDay::afterCommand() {
    const size_t count = database().undo().undoCount();
    const size_t former = std::exchange(count_, count);
    if (count == former && !(grouped_ && count > groupStart_))
        return differenceFrom(states_[count], "changed, and nothing can be undone");
    if (count != former && count != former + 1)
        return counted("the undo count after one command", count, former + 1);
    states_.resize(count + 1);
    states_[count] = digestOf(database());
    if (!grouped_ && database().undo().redoCount() > 0)
        return "what was undone can still be redone behind a change";
    undone_.clear();
    return {};
}

/// How many steps there should be to undo behind a line of undoing or redoing.
size_t WorkingDay::expectedCount(const std::string& line) {
    if (grouped_)
        return count_;
    if (line == "REDO") {
        const size_t redone = undone_.empty() ? 0 : undone_.back();
        if (!undone_.empty())
            undone_.pop_back();
        return count_ + redone;
    }
    const size_t wanted = line == "U" ? 1 : std::stoul("0" + line.substr(std::min(line.size(), size_t{5})));
    const size_t taken = std::min(wanted, count_);
    if (taken > 0)
        undone_.push_back(taken);
    return count_ - taken;
}

std::string WorkingDay::afterSteps(const std::string& line) {
    const size_t count = database().undo().undoCount();
    if (line == "UNDO B") { // to a mark, to the beginning, or not at all
        if (count > count_)
            return counted("the undo count", count, count_);
        if (count < count_)
            undone_.push_back(count_ - count);
    } else if (line == "UNDO BE") {
        grouped_ = true;
        groupStart_ = count;
    } else if (line == "UNDO E") {
        grouped_ = false;
    } else if (line != "UNDO M") {
        if (const size_t expected = expectedCount(line); count != expected)
            return counted("the undo count", count, expected);
    }
    count_ = count;
    if (count >= states_.size())
        return counted("the number of known states", states_.size(), count + 1);
    return differenceFrom(states_[count], "not the state that was there");
}

std::string WorkingDay::saved() {
    const auto bytes = dwg::writeDrawing(database());
    if (!bytes)
        return "can't be saved: " + bytes.error().message;
    const auto image = dwg::FileImage::parse(*bytes, "saved");
    if (!image)
        return "what was saved can't be parsed";
    for (const std::string& reference : danglingReferences(**image))
        if (!formerlyDangling_.contains(reference))
            return "dangling in the file: " + reference;
    AcDbDatabase again(false);
    if (!dwg::readDrawing(again, *bytes, "saved"))
        return "what was saved can't be read";
    const std::string difference = digestDifference(digestOf(database()), digestOf(again));
    if (!difference.empty())
        return "the file differs from the drawing: " + difference;
    const std::vector<std::string> faults = vndk::test::disagreements(again);
    if (faults.size() > formerFaults_)
        return "faults of the file: " + joined(faults);
    return differenceFrom(states_[count_], "changed by saving");
}
