#include "options.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace vndk::app {

namespace {

using Task = Options::Task;

struct OptionRow {
    std::string_view name;
    enum class Value { None, Needed } value;
    void (*apply)(Options& options, const std::string& value);
    std::optional<Task> task; // of those options that say what to do
};

constexpr auto kNone = OptionRow::Value::None;
constexpr auto kNeeded = OptionRow::Value::Needed;

constexpr int kNoScale = 0;

/// kNoScale when the text isn't a number from 1 to 4.
int scaleOf(const std::string& text) {
    return text.size() == 1 && text[0] >= '1' && text[0] <= '4' ? text[0] - '0' : kNoScale;
}

constexpr int kMostPictureSide = 16384;

/// "WxH". Width and height become -1 when the text isn't of that form, or a side isn't from 1 to the largest.
void takeSize(Options& options, const std::string& text) {
    const char* const end = text.data() + text.size();
    int width = 0, height = 0;
    const auto first = std::from_chars(text.data(), end, width);
    const bool hasBoth = first.ec == std::errc() && first.ptr != end && (*first.ptr == 'x' || *first.ptr == 'X');
    const auto second = hasBoth ? std::from_chars(first.ptr + 1, end, height) : first;
    const bool good = hasBoth && second.ec == std::errc() && second.ptr == end && width >= 1 && height >= 1 &&
                      width <= kMostPictureSide && height <= kMostPictureSide;
    options.pictureWidth = good ? width : -1;
    options.pictureHeight = good ? height : -1;
}

/// Empty when there is no view of that name.
std::string viewOf(const std::string& name) {
    for (const std::string_view known : {"own", "top", "bottom", "front", "back", "left", "right", "iso"})
        if (name == known)
            return name;
    return {};
}

constexpr OptionRow kRows[] = {
    {"--batch", kNeeded, [](Options& o, const std::string& v) { o.script = v; }, Task::Batch},
    {"--facts", kNeeded, [](Options& o, const std::string& v) { o.drawing = v; }, Task::Facts},
    {"--png", kNeeded, [](Options& o, const std::string& v) { o.picture = v; }, Task::Picture},
    {"--window-png", kNeeded, [](Options& o, const std::string& v) { o.picture = v; }, Task::WindowPicture},
    {"--size", kNeeded, [](Options& o, const std::string& v) { takeSize(o, v); }, {}},
    {"--view", kNeeded, [](Options& o, const std::string& v) { o.view = viewOf(v); }, {}},
    {"--shade", kNone, [](Options& o, const std::string&) { o.shaded = true; }, {}},
    {"--help", kNone, [](Options&, const std::string&) {}, Task::Help},
    {"--version", kNone, [](Options&, const std::string&) {}, Task::Version},
    {"--scale", kNeeded, [](Options& o, const std::string& v) { o.scale = scaleOf(v); }, {}},
    {"--keep-going", kNone, [](Options& o, const std::string&) { o.keepGoing = true; }, {}},
    {"--drive", kNeeded, [](Options& o, const std::string& v) { o.drives.push_back(v); }, {}},
    {"--profile", kNeeded, [](Options& o, const std::string& v) { o.profile = v; }, {}},
};

const OptionRow* findRow(std::string_view name) {
    for (const OptionRow& row : kRows)
        if (row.name == name)
            return &row;
    return nullptr;
}

class Parser {
public:
    explicit Parser(std::span<const char* const> arguments) : rest_(arguments) {}

    std::variant<Options, std::string> parse() {
        while (complaint_.empty() && !rest_.empty()) {
            const std::string_view argument = next();
            if (argument == "--" && !onlyNames_)
                onlyNames_ = true;
            else if (!onlyNames_ && argument.size() > 1 && argument[0] == '-')
                takeOption(argument);
            else
                names_.emplace_back(argument);
        }
        if (complaint_.empty())
            finish();
        if (!complaint_.empty())
            return complaint_;
        return options_;
    }

private:
    std::string_view next() {
        const std::string_view argument = rest_.front();
        rest_ = rest_.subspan(1);
        return argument;
    }

    void takeOption(std::string_view argument) {
        const size_t equals = argument.find('=');
        const std::string_view name = argument.substr(0, equals);
        const OptionRow* const row = findRow(name);
        if (!row)
            return complain("There is no option " + std::string(name) + ".");
        std::string value;
        if (equals != std::string_view::npos) {
            if (row->value == kNone)
                return complain("The option " + std::string(name) + " takes no value.");
            value = argument.substr(equals + 1);
        } else if (row->value == kNeeded) {
            if (rest_.empty())
                return complain("The option " + std::string(name) + " needs a value.");
            value = next();
        }
        if (row->value == kNeeded && value.empty())
            return complain("The value of the option " + std::string(name) + " is empty.");
        if (row->task && task_)
            return complain(
                "Only one of --batch, --facts, --png, --window-png, --help and --version can be given, and once.");
        if (row->task)
            task_ = row->task;
        row->apply(options_, value);
    }

    void finish() {
        options_.task = task_.value_or(Task::Window);
        const bool window = options_.task == Task::Window || options_.task == Task::WindowPicture;
        const bool takesDrawing = options_.task == Task::Batch || options_.task == Task::Picture;
        const size_t most = window ? names_.size() : takesDrawing ? 1 : 0;
        if (names_.size() > most)
            return complain("\"" + names_[most] + "\" is one argument too many.");
        if (options_.task == Task::Picture && names_.empty())
            return complain("The option --png needs a drawing.");
        if (options_.pictureWidth < 0)
            return complain("The value of --size is a width and a height of 1 to 16384 pixels, as in 800x600.");
        const bool takesSize = options_.task == Task::Picture || options_.task == Task::WindowPicture;
        if (options_.pictureWidth > 0 && !takesSize)
            return complain("The option --size goes with --png and --window-png.");
        if (options_.view.empty())
            return complain("The value of --view is own, top, bottom, front, back, left, right or iso.");
        if ((options_.view != Options().view || options_.shaded) && options_.task != Task::Picture)
            return complain("The options --view and --shade go with --png.");
        if (options_.scale == kNoScale)
            return complain("The value of --scale is a number from 1 to 4.");
        if (options_.scale != Options().scale && options_.task != Task::Window)
            return complain("The option --scale is for the window. In a script PICTURE takes a scale.");
        if (options_.keepGoing && options_.task != Task::Batch)
            return complain("The option --keep-going goes with --batch.");
        if (std::find(names_.begin(), names_.end(), "") != names_.end())
            return complain("The drawing's name is empty.");
        if (!names_.empty())
            options_.drawing = names_[0];
        if (window)
            options_.drawings = names_;
    }

    void complain(std::string text) { complaint_ = std::move(text); }

    std::span<const char* const> rest_;
    Options options_;
    std::optional<Task> task_;
    std::vector<std::string> names_;
    std::string complaint_;
    bool onlyNames_ = false;
};

} // namespace

std::variant<Options, std::string> parseOptions(std::span<const char* const> arguments) {
    return Parser(arguments).parse();
}

std::string_view helpText() {
    return "Usage: vondrake [DRAWING]... [--scale N] [OPTION]...\n"
           "       vondrake --batch SCRIPT [DRAWING] [--keep-going] [OPTION]...\n"
           "       vondrake --facts DRAWING [OPTION]...\n"
           "       vondrake --png FILE [--size WxH] [--view NAME] [--shade] DRAWING [OPTION]...\n"
           "       vondrake --window-png FILE [--size WxH] [DRAWING]... [OPTION]...\n"
           "Puts Intelligent Blocks into drawings (.dwg, AC1015).\n"
           "\n"
           "  [DRAWING]...              open a window on the drawings or else on a new drawing\n"
           "  --scale N                 show each pixel of the window as N x N, for large screens (1 to 4)\n"
           "  --batch SCRIPT [DRAWING]  run the lines of SCRIPT (- for standard input) at the command line,\n"
           "                            on DRAWING or else on a new drawing\n"
           "  --keep-going              go on after a line that failed; the exit status tells of it\n"
           "  --facts DRAWING           write what is in DRAWING to standard output, as JSON\n"
           "  --png FILE DRAWING        draw DRAWING into a PNG file, as it was seen when it was saved\n"
           "  --window-png FILE         draw the window as it opens on the drawings, without a screen\n"
           "  --size WxH                pixels of the picture (drawings 800x600, window 1280x800)\n"
           "  --view NAME               all of model space, from the top, bottom, front, back, left, right or iso\n"
           "  --shade                   surfaces shaded, what lies behind them hidden\n"
           "  --drive LETTER=FOLDER     map a drive letter; may be given more than once\n"
           "                            (without it: C: is your home folder, Z: the root)\n"
           "  --profile FILE            keep settings in FILE\n"
           "  --help                    show this text\n"
           "  --version                 show the version\n"
           "\n"
           "Exit status: 0 all went well; 1 a command or expression failed; 2 wrong arguments;\n"
           "3 a drawing or picture could not be read or written.\n";
}

} // namespace vndk::app
