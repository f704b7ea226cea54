// What the mouse does in the window of the drawing: answers the prompt that waits, or chooses entities ahead of a
// command when none does.
//
// A point prompt takes the place under the cross-hair, moved by object snap or else by ORTHOMODE; an entity prompt what
// the pick box touches; a selection either of them, or the corner of a rectangle. Answers go into the host's input.
#pragma once

#include "ed/input.h"
#include "ed/object_snap.h"
#include "ui/drawing_picture.h"
#include "ui/overlay.h"

#include <functional>
#include <list>

namespace vndk::host {

class Host;

class PointerTool {
public:
    PointerTool(Host& host, DrawingPicture& picture) : host_(host), picture_(picture) {}

    /// Told when the input has got something.
    std::function<void()> onAnswer;

    /// A prompt begins to wait, within the ones that wait already; it ends first.
    void begin(const PromptRequest& request);
    void end();

    // Client coordinates of the drawing's window.
    void moveTo(CPoint at);
    void leave() { inside_ = false; }
    void press(CPoint at, bool shift);
    void release(CPoint at, bool shift);
    /// Nothing is chosen, and no rectangle begun.
    void cancel();
    /// The drawing under the mouse has changed or moved.
    void pictureChanged() { findPlace(); }
    /// The entity under the mouse while nothing is asked; null if there is none.
    AcDbObjectId entityToOpen(CPoint at) const;
    /// Another drawing is on show.
    void drawingChanged();

    void draw(Overlay& overlay);
    /// The entities that stand out now.
    std::vector<AcDbObjectId> marked() const;
    /// What commands have chosen.
    void highlight(std::vector<AcDbObjectId> entities) { highlighted_ = std::move(entities); }
    /// Whether the mouse is over the drawing.
    bool isInside() const { return inside_; }
    /// The point that a click would give, world coordinates.
    AcGePoint3d place() const { return place_; }

private:
    struct Prompt {
        PromptRequest::Kind kind = PromptRequest::Kind::Command;
        std::optional<AcGePoint3d> base; // world coordinates
        bool dashed = false;
        PromptRequest::Rectangle rectangle = PromptRequest::Rectangle::Plain;
        int snap = 0;
        Outline dragged; // world coordinates, the grip at the origin
        bool hasDragged = false;
    };

    const Prompt& prompt() const;
    bool asksPoint() const;
    bool asksEntity() const;
    bool choosesAhead() const;
    double variable(const char* name) const;

    AcGePoint3d planePoint(CPoint at) const;
    void findPlace();
    std::optional<Snap> snapAt() const;
    AcGePoint3d straightened(const AcGePoint3d& point, const AcGePoint3d& base) const;
    AcDbObjectId entityUnder(CPoint at) const;
    std::vector<AcDbObjectId> entitiesIn(CPoint a, CPoint b, bool touching) const;
    CPoint pixelOf(const AcGePoint3d& world) const;

    void answer(lisp::Value value);
    void answerPoint(const AcGePoint3d& world);
    void answerEntity(AcDbObjectId id, const AcGePoint3d& world, bool remove);
    void chooseAhead(CPoint at, bool shift);
    void closeRectangle(CPoint at, bool shift);

    void drawCross(Overlay& overlay) const;
    void drawBand(Overlay& overlay) const;
    void drawRectangle(Overlay& overlay, const AcGePoint3d& corner, bool dashed) const;
    void drawFrame(Overlay& overlay, const AcGePoint3d& corner, bool dashed) const;
    void drawSnap(Overlay& overlay) const;
    void drawDragged(Overlay& overlay) const;
    COLORREF ink() const;

    Host& host_;
    DrawingPicture& picture_;
    std::list<Prompt> prompts_; // the last one waits
    Prompt idle_;
    std::vector<AcDbObjectId> highlighted_;
    AcDbObjectId hovered_;
    std::optional<AcGePoint3d> ahead_; // first corner of a rectangle that chooses ahead of a command
    std::optional<Snap> snap_;
    AcGePoint3d place_;
    CPoint at_, pressedAt_;
    bool inside_ = false;
    bool pressed_ = false;
};

} // namespace vndk::host
