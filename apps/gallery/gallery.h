// Every control in all its states, in one window: for looking.
#pragma once

#include "attributes/distance_edit.h"
#include "mfc/afx.h"

namespace vndk::gallery {

/// A window that fills the screen and holds the controls. Pages of controls stand side by side in group boxes.
class Gallery : public CFrameWnd {
public:
    bool open();
    /// The box for distances, which has a tool tip.
    [[nodiscard]] HWND distanceBox() const { return distance_.m_hWnd; }

protected:
    BOOL OnEraseBkgnd(CDC* dc);
    void OnDrawItem(int id, DRAWITEMSTRUCT* item);
    void OnMeasureItem(int id, MEASUREITEMSTRUCT* item);
    void OnClose();

    DECLARE_MESSAGE_MAP()

private:
    HWND add(LPCSTR className, LPCSTR text, DWORD style, int x, int y, int width, int height, DWORD exStyle = 0);
    void group(LPCSTR title, int x, int y, int width, int height);
    void addButtons();
    void addStatics();
    void addEdits();
    void addLists();
    void addCombos();
    void addScrollBars();
    void addIconList();
    void addReport();
    void addTree();
    void addTabs();
    void addRichText();
    void addToolTip();
    void addDistanceEdit();
    void makeImages();

    CFont font_;
    CImageList small_;
    CImageList large_;
    CDistanceEdit distance_;
    UINT nextId_ = 2000;
};

} // namespace vndk::gallery
