// A dialog whose size the user can change within limits, and which remembers its place and size in the user's profile.
// Its lower right corner has a gripper.
//
// The class that derives from it names the section of the profile in its OnInitDialog, and says when to save. Until the
// section is named nothing is written.
#pragma once

#include "mfc/afx.h"

class CResizableDlg : public CDialog {
public:
    CResizableDlg(UINT nTemplateId, CWnd* pParent);

    BOOL OnInitDialog() override;

    /// Writes size and place of the window, pixels of the screen.
    void SavePlacement();
    /// The rectangle to begin with. What the profile holds is kept on the screen and within limits of its own.
    void GetSavedRect(LPRECT lpRect) const;

protected:
    void OnSizing(UINT nSide, LPRECT lpRect);
    void OnSize(UINT nType, int cx, int cy);
    void OnPaint();
    LRESULT OnNcHitTest(CPoint point);

    DECLARE_MESSAGE_MAP()

protected:
    int mMinWidth = 0; ///< limits of dragging, pixels
    int mMinHeight = 0;
    int mMaxWidth = 0;
    int mMaxHeight = 0;
    BYTE mShowGripper = 1;
    CString mProfileSection;
    int mGripperWidth = 0;
    int mGripperHeight = 0;
    CRect mGripperRect; ///< client coordinates

private:
    void UpdateGripper();
};
