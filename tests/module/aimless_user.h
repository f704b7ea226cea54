#pragma once
/// Someone who gives any command and answers any prompt with whatever it may take, or gives up. The same seed types the
/// same as long as the host asks the same.

#include "ed/input.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

class AimlessUser : public vndk::host::PromptSource {
public:
    /// `files`: drawings to insert, in the host's form. `folder`: where WBLOCK may write.
    AimlessUser(uint32_t seed, std::vector<std::string> files, std::string folder);

    /// A number from 0 to `count` - 1.
    size_t below(size_t count) { return random_() % count; }
    bool oneIn(size_t count) { return below(count) == 0; }

    /// The next line at the command prompt: a command that draws, changes, inserts, or sets a variable. The prompts
    /// that it leads to are answered by wait().
    std::string command();
    /// Puts a line that somebody else gives into typed().
    void note(const std::string& line);
    /// Whether all that is typed is printed at once.
    void setAloud(bool aloud) { aloud_ = aloud; }
    /// All that was typed so far, a script that does the same.
    const std::string& typed() const { return typed_; }

    bool wait(vndk::host::InputQueue& queue, const vndk::host::PromptRequest& request) override;

private:
    const std::string& anyOf(const std::vector<std::string>& texts) { return texts[below(texts.size())]; }
    std::string point();
    std::string number();
    std::string selection();
    std::string blockName();
    std::string insertion();
    std::string answer(std::string_view prompt);
    std::string guess(std::string_view prompt);

    std::mt19937 random_;
    std::vector<std::string> files_;
    std::string folder_;
    std::string typed_;
    std::string lastPoint_ = "5,5";
    size_t answers_ = 0; // to the running command
    bool aloud_ = false;
};
