// What the program was asked to do, from its arguments.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vndk::app {

struct Options {
    enum class Task { Window, WindowPicture, Batch, Facts, Picture, Help, Version };
    Task task = Task::Window;
    std::string script;                      ///< Batch: its path, "-" for standard input
    std::string drawing;                     ///< as it was typed, in either form; empty for none
    std::vector<std::string> drawings;       ///< Window, WindowPicture: all of them
    std::string picture;                     ///< Picture, WindowPicture: path of the PNG file
    int pictureWidth = 0, pictureHeight = 0; ///< pixels; 0: the task's own size
    std::string view = "own";                ///< Picture: as PictureWish has it
    bool shaded = false;                     ///< Picture
    bool keepGoing = false;
    int scale = 1;                   ///< Window: each of its pixels shows as scale x scale, 1 to 4
    std::string profile;             ///< path of the system; empty for the usual one
    std::vector<std::string> drives; ///< "C=/home/me/cad", in the order given
};

/// The arguments without the program's name; or a sentence that says what is wrong with them.
std::variant<Options, std::string> parseOptions(std::span<const char* const> arguments);

/// What --help prints.
std::string_view helpText();

} // namespace vndk::app
