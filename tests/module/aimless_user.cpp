#include "module/aimless_user.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace {

constexpr size_t kPatience = 40; // answers that a command gets
constexpr const char* kCancel = "\x1B";

const std::vector<std::string> kCommands = {
    "INSERT", "INSERT",    "INSERT",     "DDINSERT", "-INSERT",  "MINSERT",  "BLOCK", "BLOCK",  "-BLOCK",
    "WBLOCK", "PURGE",     "EXPLODE",    "EXPLODE",  "COPY",     "COPY",     "MOVE",  "ROTATE", "SCALE",
    "MIRROR", "CHPROP",    "ERASE",      "LINE",     "CIRCLE",   "ARC",      "PLINE", "TEXT",   "ATTDEF",
    "LAYER",  "DIMLINEAR", "DIMALIGNED", "DDATTE",   "EATTEDIT", "EATTEDIT", "LIST",  "UCS"};
const std::vector<std::string> kBlocks = {"DESK", "CHAIR", "LAMP", "BLOCK2", "desk", "ROOM"};
const std::vector<std::string> kLayers = {"0", "WALLS", "FURNITURE", "W*", "*", "DEFPOINTS", "A,B"};
const std::vector<std::string> kVariables = {"ATTREQ 0",   "ATTREQ 1",   "ATTREQ 1",   "ATTDIA 0",   "ATTDIA 0",
                                             "ATTDIA 1",   "TILEMODE 0", "TILEMODE 1", "TILEMODE 1", "MIRRTEXT 0",
                                             "MIRRTEXT 1", "EXPERT 2",   "EXPERT 0",   "LTSCALE 2",  "INSBASE 1,1"};

bool asksFor(std::string_view prompt, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return prompt.find(word) != std::string_view::npos; });
}

/// "Specify base point or [Multiple/Undo]: " offers two.
std::vector<std::string> keywordsOf(std::string_view prompt) {
    std::vector<std::string> words;
    const size_t open = prompt.rfind('['), close = prompt.rfind(']');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open)
        return words;
    std::string word;
    for (const char c : prompt.substr(open + 1, close - open)) {
        if (c != '/' && c != ']') {
            word += c;
            continue;
        }
        words.push_back(word.substr(0, word.find(' ')));
        word.clear();
    }
    return words;
}

} // namespace

AimlessUser::AimlessUser(uint32_t seed, std::vector<std::string> files, std::string folder)
    : random_(seed), files_(std::move(files)), folder_(std::move(folder)) {}

void AimlessUser::note(const std::string& line) {
    typed_ += line + "\n";
    if (aloud_)
        std::cout << line << std::endl;
}

std::string AimlessUser::command() {
    answers_ = 0;
    const size_t kind = below(10);
    const std::string line = kind == 0 ? anyOf(kVariables) : kind == 1 ? insertion() : anyOf(kCommands);
    note(line);
    return line;
}

/// As the palette sends it, with what is running cancelled.
std::string AimlessUser::insertion() {
    const std::string where = " (list " + number() + " " + number() + " 0.0)) ";
    if (oneIn(2))
        return "\x1B\x1B(c:_bInsert \"" + anyOf(kBlocks) + "\"" + where;
    return "\x1B\x1B(c:_bInsertFile \"" + anyOf(files_) + "\"" + where;
}

/// Few places, so that what is drawn meets; often the one before.
std::string AimlessUser::point() {
    if (oneIn(4))
        return lastPoint_;
    if (oneIn(8))
        return "@" + std::to_string(below(5)) + "," + std::to_string(below(5));
    lastPoint_ = std::to_string(below(11)) + "," + std::to_string(below(11));
    if (oneIn(10))
        lastPoint_ += "," + std::to_string(below(3));
    return lastPoint_;
}

std::string AimlessUser::number() { return anyOf({"1", "2", "3", "0.5", "-1", "1.5", "45", "90", "30", "0"}); }

std::string AimlessUser::selection() {
    switch (below(9)) {
    case 0:
    case 1:
        return anyOf({"W", "C", "C", "BOX", "F", "WP", "CP", "M", "SI"});
    case 8:
        return "ALL";
    case 2:
        return "P";
    case 3:
        return anyOf({"R", "A", "U"});
    case 4:
        return "(entlast)";
    case 5:
        return "L";
    default:
        return point();
    }
}

std::string AimlessUser::blockName() {
    switch (below(8)) {
    case 0:
        return anyOf(files_);
    case 1:
        return anyOf(kBlocks) + "=" + anyOf(files_);
    case 2:
        return "*" + anyOf(kBlocks);
    case 3:
        return "*" + anyOf(files_);
    default:
        return anyOf(kBlocks);
    }
}

std::string AimlessUser::guess(std::string_view prompt) {
    if (asksFor(prompt, {"Select objects", "Remove objects"}))
        return selection();
    if (asksFor(prompt, {"Select a block", "Select block", "reference"}) && oneIn(2))
        return "(entlast)";
    if (asksFor(prompt, {"name of existing block"}))
        return anyOf({"", "", "*", "=", "DESK", "CHAIR", "LAMP"});
    if (asksFor(prompt, {"block name"}))
        return blockName();
    if (asksFor(prompt, {"output file"}))
        return folder_ + anyOf({"/out1", "/out2.dwg", "/desk"});
    if (asksFor(prompt, {"layer"}))
        return anyOf(kLayers);
    if (asksFor(prompt, {"color"}))
        return anyOf({"1", "red", "BYLAYER", "BYBLOCK", "250", "none"});
    if (asksFor(prompt, {"linetype name"}))
        return anyOf({"Continuous", "BYLAYER", "nothing"});
    if (asksFor(prompt, {"number of rows", "number of columns"}))
        return anyOf({"1", "2", "3"});
    if (asksFor(prompt, {"point", "corner", "center", "displacement", "Select"}) && !oneIn(12))
        return point();
    if (asksFor(prompt, {"angle", "factor", "length", "distance", "radius", "scale", "thickness", "height", "width"}))
        return number();
    return anyOf({"one", "two", "3", "y", "n", "a longer text", ""});
}

std::string AimlessUser::answer(std::string_view prompt) {
    if (++answers_ > kPatience || oneIn(40))
        return kCancel;
    const std::vector<std::string> keywords = keywordsOf(prompt);
    const bool selects = asksFor(prompt, {"Select objects", "Remove objects"});
    if (!keywords.empty() && oneIn(asksFor(prompt, {"point", "angle", "factor"}) ? 6 : 2))
        return anyOf(keywords);
    // At first something is chosen.
    const size_t reluctance = selects ? (answers_ == 1 ? 20 : 2)
                              : prompt.find('<') != std::string_view::npos || !keywords.empty() ? 2
                                                                                                : 12;
    if (oneIn(reluctance))
        return {};
    return guess(prompt);
}

bool AimlessUser::wait(vndk::host::InputQueue& queue, const vndk::host::PromptRequest& request) {
    if (request.kind == vndk::host::PromptRequest::Kind::Command)
        return false;
    const std::string text = answer(request.text);
    note(text);
    queue.feed(text + "\n");
    return true;
}
