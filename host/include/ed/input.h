// The input of the command line: what has been typed and not yet been taken.
//
// Four kinds of input, the first that has something wins: values that (command ...) gives to the command it runs;
// text that sendStringToExecute has queued; what the user has picked with the mouse; text typed by the user or read
// from a script. A PromptSource is asked for more when all of it is used up.
#pragma once

#include "db/object_id.h"
#include "ge/matrix3d.h"
#include "lisp/value.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vndk::host {

class InputQueue;

/// How much an answer takes.
enum class AnswerForm {
    Word, ///< ends at a blank or the line's end; `(` begins an expression
    Name, ///< as Word, but blanks between quotes belong to it
    Line, ///< ends at the line's end; always text
    LineOrExpression,
};

/// What follows the cursor while a point is asked for.
struct DraggedPicture {
    std::vector<AcDbObjectId> entities;
    AcDbObjectId block;     ///< its contents, as references show them; null for none
    AcGeMatrix3d transform; ///< of both, into world coordinates
    AcGePoint3d grip;       ///< what then lies at the cursor; world coordinates
};

/// What a prompt asks for, so that a window can take the answer by mouse.
struct PromptRequest {
    enum class Kind {
        Command, ///< the command prompt itself
        Text,    ///< a text, a number, a keyword: typed
        Point,
        Corner,   ///< the other corner of a rectangle that begins at `base`
        Distance, ///< a number, or two points; one where there is a `base`
        Angle,    ///< the same
        Entity,   ///< one object
        Objects,  ///< one answer of a selection: an object, or the first corner of a rectangle
    };
    std::string_view text;
    Kind kind = Kind::Text;
    std::optional<AcGePoint3d> base = {}; ///< where a rubber band begins; current user coordinate system
    bool dashed = false;                  ///< the band is dashed
    std::string_view keywords = {};       ///< as initGet takes them
    AnswerForm form = AnswerForm::Word;   ///< what ends the answer, so that a window knows what a blank means
    /// How the rectangle of a corner prompt chooses what lies in it.
    enum class Rectangle { Plain, Window, Crossing, ByDirection };
    Rectangle rectangle = Rectangle::Plain;
    int snap = 0;                            ///< bits of OSMODE for this point alone; 0: those of OSMODE
    const DraggedPicture* dragged = nullptr; ///< follows the cursor; null for none
};

/// Where typed input comes from: a window, a terminal. A script is simply fed whole.
class PromptSource {
public:
    virtual ~PromptSource() = default;
    /// Called when a prompt needs input and the queue is empty. Feeds `queue`, waiting for the user if need be.
    /// False: there will be no more.
    virtual bool wait(InputQueue& queue, const PromptRequest& request) = 0;
};

/// One answer.
struct Answer {
    enum class Kind {
        Text,       ///< as typed
        Expression, ///< the text of a LISP expression, parentheses and all
        Value,      ///< a value given by (command ...) or picked with the mouse
        Cancel,     ///< code 27
        End,        ///< no more input
    };
    Kind kind = Kind::End;
    std::string text;
    lisp::Value value;
    size_t line = 0; ///< line of the typed text that it began in, from 1; 0 for other input
};

/// True when no list and no string is open at the end of the text.
bool isWholeExpression(const std::string& text);

class InputQueue {
public:
    static constexpr char kCancel = '\x1B';

    /// Adds typed text: whole lines.
    void feed(std::string_view text);
    /// Adds text that runs before the rest of the typed text.
    void send(std::string_view text);
    /// Adds an answer given by mouse: a point as a list of reals in the current user coordinate system, or an entity's
    /// name and such a point, as entsel gives them.
    void pick(lisp::Value value) { picked_.push_back(std::move(value)); }
    bool empty() const { return typed_.atEnd() && sent_.atEnd() && picked_.empty(); }
    bool hasSent() const { return !sent_.atEnd(); }

    /// Takes the next answer. An expression that isn't closed when the text ends is given as it is.
    Answer take(AnswerForm form);
    /// Takes the rest of the line of typed text, leaving what was sent. Nothing when all typed text is used up.
    std::optional<Answer> takeTypedLine();
    /// Gives up the rest of the current line of typed text, and all that was sent or picked: after a failure.
    void dropLine();
    /// Line of typed text that is being read, from 1.
    size_t line() const { return typed_.line; }

private:
    struct Text {
        std::string characters;
        size_t position = 0;
        size_t line = 1;
        bool lineStart = true;

        bool atEnd() const { return position >= characters.size(); }
        void append(std::string_view text);
    };

    static void skipComments(Text& text);
    static Answer takeWord(Text& text, bool quoted);
    static Answer takeLine(Text& text);
    static Answer takeExpression(Text& text);
    static void step(Text& text);

    Text typed_;
    Text sent_;
    std::deque<lisp::Value> picked_;
};

} // namespace vndk::host
