// Turns text into LISP data, a form at a time, and tells when a form goes on in the next line.
//
//     Reader reader(interpreter.symbols());
//     reader.feed(line);
//     Value form;
//     while (reader.next(form) == Reader::Status::Form)
//         ...
//     if (reader.isInsideForm())  // ask for one more line under the prompt reader.continuationPrompt()
//
// Reading never recurses, so neither depth nor length of the text can exhaust the stack.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "lisp/symbol_table.h"
#include "lisp/value.h"

namespace vndk::lisp {

class Reader {
public:
    enum class Status {
        Form,     ///< A form was read.
        NeedMore, ///< All text is used up; isInsideForm() tells whether a form is open.
        Error,    ///< The text is wrong; see error(). The rest of it is given up.
    };

    static constexpr std::size_t defaultDepthLimit = 100'000;

    explicit Reader(SymbolTable& symbols, std::size_t depthLimit = defaultDepthLimit);

    /// Adds text: whole lines, because a name or number ends where the text ends; only strings, comments and lists
    /// go on. The text is not copied: it must stay valid until next() has said NeedMore or Error.
    /// REQUIRES: next() has used up what was fed before.
    void feed(std::string_view text);
    Status next(Value& form);
    /// Says that no more text will come: an open form then is an error, told by error() after Status::Error.
    Status finish();
    /// Forgets open forms, the error and text not yet read, as Escape at the prompt does.
    void reset();

    bool isInsideForm() const { return !frames_.empty() || inString_ || inComment_; }
    /// "(_> " with one parenthesis for each open list.
    std::string continuationPrompt() const;
    /// Text not yet read.
    std::string_view rest() const { return text_.substr(position_); }
    /// The message without "; error: ".
    const std::string& error() const { return error_; }
    /// Lines counted from 1 over all text fed since reset(): where reading stands, and where the last form began.
    std::size_t line() const { return line_; }
    std::size_t formLine() const { return formLine_; }

private:
    enum class FrameKind { List, Quote };
    enum class DotState { None, Expected, Taken };
    struct Frame {
        FrameKind kind;
        DotState dot = DotState::None;
        ListBuilder items = {};
        Value tail = {};
    };
    enum class Step { Continue, Form, Error };

    Step readOne(char first, Value& form);
    Step open(FrameKind kind);
    Step close(Value& form);
    Step readString(Value& form);
    Step readAtom(Value& form);
    Step dot();
    Step deliver(Value datum, Value& form);
    Step fail(std::string message);
    void skipComment();
    void readEscape();

    SymbolTable& symbols_;
    Symbol& quote_;
    std::size_t depthLimit_;
    std::string_view text_;
    std::size_t position_ = 0;
    std::vector<Frame> frames_;
    std::string string_;
    std::string error_;
    std::size_t line_ = 1;
    std::size_t formLine_ = 1;
    bool inString_ = false;
    bool inComment_ = false;
};

} // namespace vndk::lisp
