// Asking the user: every command, LISP function and module asks through Prompts.
//
// Where answers come from. Text typed or read from a script, values given by (command ...), and cancels stand in the
// host's InputQueue (ed/input.h), and are taken one answer at a time. What a user may type at a prompt:
//   - a line's end or a blank ends an answer; prompts for text keep their blanks and end at the line's end
//   - an empty answer is Enter
//   - `(...)` and `!name` answer with the value of the expression (not at prompts for text while TEXTEVAL is 0)
//   - `'NAME` runs a transparent command, then the prompt asks again
//   - code 27 cancels; when there is no more input the prompt is cancelled too
//
// Points: `x,y` or `x,y,z`; `@dx,dy` and `@dist<angle` from the last point; `dist<angle`; `*` in front (behind `@`, if
// any) for world coordinates; `@` alone is the last point. Numbers are decimal, with exponent or fractions of inches
// (`5'3-1/2"`) too. Points that go in and come out are in the current user coordinate system (as published for
// acedGetPoint); pass them through ucsToWorld for the database. Angles typed are degrees in the units of AUNITS
// relative to ANGBASE and ANGDIR; angles that come out are radians, counter-clockwise.
//
// Ahead of a point its object snap may be named: `end`, `mid`, `cen`, `ins`, `nod`, `qua`, `int`, `per`, `tan`, `nea`,
// `non`, several with commas between. The point given next is moved to the nearest such place within the aperture.
//
// initGet sets rules for the next prompt only. Keywords: words separated by blanks, whose capitals are the shortest
// abbreviation ("Undo", "LType"); `_Keyword` is taken too. The prompt then gives PromptStatus::Keyword and keyword()
// holds the whole keyword.
#pragma once

#include "db/object_id.h"
#include "db/resbuf.h"
#include "ed/input.h"
#include "ge/matrix3d.h"

#include <optional>
#include <string>
#include <string_view>

namespace vndk::host {

class Host;

/// Values are those of the published interface.
enum class PromptStatus : int {
    Normal = RTNORM,
    None = RTNONE,     ///< Enter
    Keyword = RTKWORD, ///< see keyword()
    Cancelled = RTCAN, ///< Escape, or no more input
    Error = RTERROR,   ///< the answer can't be taken and the run doesn't ask twice; for picks: nothing there
};

/// Bits of initGet.
enum PromptRule : int {
    kNoEmpty = 1, ///< Enter is no answer
    kNoZero = 2,
    kNoNegative = 4,
    kNoLimitsCheck = 8,
    kDashedLine = 32,
    kFlatDistance = 64, ///< distances ignore z
    kAnyText = 128,     ///< text that is no answer comes back as a keyword
};

enum class TextForm {
    Word,     ///< a blank ends it
    Name,     ///< a blank ends it, unless it stands between quotes; the quotes are taken off
    Line,     ///< blanks are part of it; no expressions unless TEXTEVAL is 1
    FileName, ///< blanks are part of it; quotes around it are taken off; expressions are evaluated
};

class Prompts {
public:
    explicit Prompts(Host& host) : host_(host) {}

    /// Rules for the next prompt: bits of PromptRule, and keywords.
    void initGet(int bits, std::string_view keywords = {});
    /// The next corner closes a rectangle that chooses what lies in it.
    void setRectangle(PromptRequest::Rectangle rectangle) { rules_.rectangle = rectangle; }
    /// Entities that follow the cursor at the next prompt.
    void setDragged(DraggedPicture picture) { rules_.dragged = std::move(picture); }
    /// The keyword, or with kAnyText the text, that the last prompt got; also the last answer as it was typed.
    const std::string& keyword() const { return keyword_; }

    PromptStatus getPoint(std::string_view prompt, AcGePoint3d& point) { return getPoint(prompt, point, nullptr); }
    /// With `base` a rubber band is drawn from it, and a distance alone has no meaning.
    PromptStatus getPoint(std::string_view prompt, AcGePoint3d& point, const AcGePoint3d* base);
    /// The other corner of a rectangle.
    PromptStatus getCorner(std::string_view prompt, AcGePoint3d& point, const AcGePoint3d& base);
    /// A number, or a point whose distance from `base` (or from a first point that is asked for too) counts.
    PromptStatus getDist(std::string_view prompt, double& distance, const AcGePoint3d* base = nullptr);
    /// An angle, or a point seen from `base`. Radians; measured from ANGBASE. getOrient measures from the x axis.
    PromptStatus getAngle(std::string_view prompt, double& radians, const AcGePoint3d* base = nullptr);
    PromptStatus getOrient(std::string_view prompt, double& radians, const AcGePoint3d* base = nullptr);
    PromptStatus getReal(std::string_view prompt, double& number);
    PromptStatus getInt(std::string_view prompt, int& number);
    /// A number, or a point that stands for something else; `point` is empty for a number.
    PromptStatus getRealOrPoint(std::string_view prompt, double& number, std::optional<AcGePoint3d>& point);
    /// Asks for one of the keywords of initGet; Normal with keyword() set, None for Enter.
    PromptStatus getKeyword(std::string_view prompt);
    /// Normal also for an empty text. A text of more than `limit` characters is no answer.
    PromptStatus getString(std::string_view prompt, TextForm form, std::string& text, size_t limit = std::string::npos);
    /// An entity: picked at a point (pick aperture of the current space), or given by name (from LISP), or `L` for the
    /// last one. Error when nothing lies there.
    PromptStatus entSel(std::string_view prompt, AcDbObjectId& entity, AcGePoint3d& pickPoint);

    /// Status of the last prompt.
    PromptStatus lastStatus() const { return lastStatus_; }

    /// The current user coordinate system of the current document.
    AcGeMatrix3d ucsToWorld() const;
    AcGeMatrix3d worldToUcs() const;

private:
    struct Rules {
        int bits = 0;
        std::string keywords;
        PromptRequest::Rectangle rectangle = PromptRequest::Rectangle::Plain;
        std::optional<DraggedPicture> dragged = {};
    };
    enum class AngleFrom { AngBase, XAxis };

    template <class Take>
    PromptStatus ask(PromptRequest request, TextForm form, std::string_view complaint, Take&& take);
    PromptStatus getPointOf(const PromptRequest& request, AcGePoint3d& point);
    PromptStatus getAngleFrom(std::string_view prompt, double& radians, const AcGePoint3d* base, AngleFrom from);
    PromptStatus getLength(std::string_view prompt, double& distance, const AcGePoint3d* base);
    bool takeKeyword(std::string_view typed, const Rules& rules);
    bool takePoint(const Answer& answer, AcGePoint3d& point) const;
    bool takeSnap(const Answer& answer, PromptRequest& request);
    bool snapTyped(AcGePoint3d& point) const;
    bool takeAngle(const Answer& answer, double& radians, AngleFrom from) const;
    void remember(const AcGePoint3d& point) const;

    Host& host_;
    Rules rules_;
    int snap_ = 0; // modes for the point that is asked for alone
    std::string keyword_;
    PromptStatus lastStatus_ = PromptStatus::Normal;
};

/// The keyword that `typed` stands for, by the rule of capitals; empty if none or if several would fit.
std::string matchKeyword(std::string_view typed, std::string_view keywords);

} // namespace vndk::host
