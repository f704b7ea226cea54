// The window that shows the current document's current space, and takes points and entities by mouse.
//
// Pixels are those of the client area, y downward. The wheel zooms at the cursor, the middle button pans, its double
// click shows all; the left button answers prompts or chooses (ui/pointer_tool.h), the right one is Enter. Mouse moves
// paint what stands above the drawing anew, never the drawing.
#pragma once

#include "ed/display.h"
#include "mfc/afx.h"
#include "ui/drawing_watcher.h"
#include "ui/pointer_tool.h"

#include <functional>
#include <memory>
#include <optional>

namespace vndk::host {

class Host;

class Canvas : public CWnd, private Display {
public:
    explicit Canvas(Host& host) : host_(host) {}
    ~Canvas() override { detach(); }

    /// Becomes the host's display.
    bool create(CWnd& parent, UINT id);
    /// Shows what the current document is like now.
    void follow();
    /// Gives back the graphics objects. Nothing is shown from then on.
    void detach();

    /// Null while no drawing is shown.
    AcGsView* view() { return picture_ && picture_->document() ? picture_->view() : nullptr; }
    void zoomExtents();
    /// Where the line of sight through a pixel meets the plane through the view's centre; world coordinates.
    AcGePoint3d worldAt(CPoint pixel) const;

    /// A prompt waits from here to endPrompt(), within those that wait already.
    void beginPrompt(const PromptRequest& request);
    void endPrompt();
    /// Escape: what was chosen ahead of a command is chosen no more.
    void cancelSelection();

    /// Told when the mouse has answered a prompt.
    std::function<void()> onAnswer;
    /// The right button: as if Enter had been pressed.
    std::function<void()> onEnter;
    /// Told where the cursor is as it moves over the drawing; world coordinates.
    std::function<void(const AcGePoint3d&)> onCursor;
    /// A double click on an entity while nothing is asked.
    std::function<void(AcDbObjectId)> onOpenEntity;

protected:
    void OnPaint();
    BOOL OnEraseBkgnd(CDC* dc);
    void OnSize(UINT type, int width, int height);
    BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message);
    BOOL OnMouseWheel(UINT flags, short delta, CPoint screen);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);
    void OnRButtonDown(UINT flags, CPoint point);
    void OnMButtonDown(UINT flags, CPoint point);
    void OnMButtonUp(UINT flags, CPoint point);
    void OnMButtonDblClk(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    LRESULT OnMouseLeave(WPARAM, LPARAM);
    void OnCaptureChanged(CWnd* window);
    void OnDestroy();

    DECLARE_MESSAGE_MAP()

private:
    int width() const override { return picture_ ? picture_->width() : 1; }
    int height() const override { return picture_ ? picture_->height() : 1; }
    AcGsModel& model() override { return picture_->model(); }
    void viewChanged() override;
    void update() override;
    void regenerate() override;
    void highlight(std::vector<AcDbObjectId> entities) override;

    void drawingChanged();
    void moveView(const AcGeVector3d& offset);
    void refreshMarks();
    void refreshOverlay();
    void drawAxes(Overlay& overlay) const;

    Host& host_;
    std::unique_ptr<DrawingPicture> picture_;
    std::unique_ptr<PointerTool> tool_;
    std::unique_ptr<DrawingWatcher> watcher_;
    Overlay overlay_;
    bool panning_ = false;
    bool wheeling_ = false; // the last change of the view was the wheel's
    CPoint lastPoint_;
};

} // namespace vndk::host
