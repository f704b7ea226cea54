#pragma once
/// What one drawing went through: its state after each step that can be undone, and whether undoing finds it again.

#include "ed/host.h"
#include "support/drawing_digest.h"

#include <set>
#include <string>
#include <vector>

class WorkingDay {
public:
    explicit WorkingDay(AcApDocument& document);

    AcApDocument& document() { return document_; }
    AcDbDatabase& database() { return *document_.database(); }

    /// Whether a line at the command prompt takes steps back or forth, or groups them.
    static bool isAboutSteps(const std::string& line);

    // To be called behind each line that was typed; empty, or what isn't as it should be.
    std::string afterCommand();
    std::string afterSteps(const std::string& line);
    /// While another drawing was worked on.
    std::string whileAway();

    /// What the drawing's file would tell in other programs, and how it differs when it is read again.
    std::string saved();

    size_t stepCount() const { return states_.size(); }

private:
    std::string differenceFrom(const vndk::test::DrawingDigest& state, const char* when);
    size_t expectedCount(const std::string& line);

    AcApDocument& document_;
    std::vector<vndk::test::DrawingDigest> states_; // by the count of what can be undone
    std::vector<size_t> undone_;                    // how many steps each undoing took
    size_t count_ = 0;
    bool grouped_ = false;
    size_t groupStart_ = 0;
    size_t formerFaults_ = 0; // of the file that the drawing came from
    std::set<std::string> formerlyDangling_;
};
