// The calls that take a handle and come back by themselves, for tests that go through them all.
#pragma once

// clang-format off
#define VNDK_HANDLE_CALLS(CALL) \
    CALL(AppendMenuA) CALL(Arc) CALL(BeginPaint) CALL(BitBlt) CALL(BringWindowToTop) CALL(CallNextHookEx) \
    CALL(CallWindowProcA) CALL(CheckDlgButton) CALL(CheckMenuItem) CALL(CheckMenuRadioItem) \
    CALL(CheckRadioButton) CALL(ChildWindowFromPoint) CALL(ChildWindowFromPointEx) CALL(Chord) \
    CALL(ClientToScreen) CALL(CloseWindow) CALL(CombineRgn) CALL(CopyAcceleratorTableA) CALL(CopyIcon) \
    CALL(CreateCaret) CALL(CreateCompatibleBitmap) CALL(CreateCompatibleDC) CALL(CreateCursor) \
    CALL(CreateDIBSection) CALL(CreateDIBitmap) CALL(CreateDialogIndirectParamA) CALL(CreateDialogParamA) \
    CALL(CreateIcon) CALL(CreatePatternBrush) CALL(CreateWindowExA) CALL(DPtoLP) CALL(DefDlgProcA) \
    CALL(DefWindowProcA) CALL(DeferWindowPos) CALL(DeleteDC) CALL(DeleteMenu) CALL(DeleteObject) \
    CALL(DestroyAcceleratorTable) CALL(DestroyCursor) CALL(DestroyIcon) CALL(DestroyMenu) CALL(DestroyWindow) \
    CALL(DragDetect) CALL(DrawEdge) CALL(DrawFocusRect) CALL(DrawFrameControl) CALL(DrawIcon) CALL(DrawIconEx) \
    CALL(DrawMenuBar) CALL(DrawStateA) CALL(DrawTextA) CALL(DrawTextExA) CALL(Ellipse) CALL(EnableMenuItem) \
    CALL(EnableScrollBar) CALL(EnableWindow) CALL(EndDeferWindowPos) CALL(EndDialog) CALL(EndPaint) \
    CALL(EnumChildWindows) CALL(EqualRgn) CALL(ExcludeClipRect) CALL(ExcludeUpdateRgn) CALL(ExtFloodFill) \
    CALL(ExtSelectClipRgn) CALL(ExtTextOutA) CALL(FillRect) CALL(FillRgn) CALL(FindClose) CALL(FindNextFileA) \
    CALL(FindResourceA) CALL(FindWindowExA) CALL(FloodFill) CALL(FrameRect) CALL(FrameRgn) CALL(GetAncestor) \
    CALL(GetArcDirection) CALL(GetBitmapBits) CALL(GetBkColor) CALL(GetBkMode) CALL(GetBrushOrgEx) \
    CALL(GetCharWidth32A) CALL(GetCharWidthA) CALL(GetClassInfoA) CALL(GetClassLongPtrA) CALL(GetClassNameA) \
    CALL(GetClientRect) CALL(GetClipBox) CALL(GetClipRgn) CALL(GetComboBoxInfo) CALL(GetCurrentObject) \
    CALL(GetCurrentPositionEx) CALL(GetDC) CALL(GetDCBrushColor) CALL(GetDCEx) CALL(GetDCOrgEx) \
    CALL(GetDCPenColor) CALL(GetDIBColorTable) CALL(GetDIBits) CALL(GetDeviceCaps) CALL(GetDlgCtrlID) \
    CALL(GetDlgItem) CALL(GetDlgItemInt) CALL(GetDlgItemTextA) CALL(GetIconInfo) CALL(GetLastActivePopup) \
    CALL(GetMapMode) CALL(GetMenu) CALL(GetMenuContextHelpId) CALL(GetMenuDefaultItem) CALL(GetMenuItemCount) \
    CALL(GetMenuItemID) CALL(GetMenuItemInfoA) CALL(GetMenuItemRect) CALL(GetMenuState) CALL(GetMenuStringA) \
    CALL(GetMessageA) CALL(GetNearestColor) CALL(GetNextDlgGroupItem) CALL(GetNextDlgTabItem) CALL(GetObjectA) \
    CALL(GetObjectType) CALL(GetParent) CALL(GetPixel) CALL(GetPolyFillMode) CALL(GetPropA) CALL(GetROP2) \
    CALL(GetRegionData) CALL(GetRgnBox) CALL(GetScrollBarInfo) CALL(GetScrollInfo) CALL(GetScrollPos) \
    CALL(GetScrollRange) CALL(GetStretchBltMode) CALL(GetSubMenu) CALL(GetSystemMenu) CALL(GetTabbedTextExtentA) \
    CALL(GetTextAlign) CALL(GetTextColor) CALL(GetTextExtentExPointA) CALL(GetTextExtentPoint32A) \
    CALL(GetTextExtentPointA) CALL(GetTextFaceA) CALL(GetTextMetricsA) CALL(GetTopWindow) CALL(GetUpdateRect) \
    CALL(GetUpdateRgn) CALL(GetViewportOrgEx) CALL(GetWindow) CALL(GetWindowDC) CALL(GetWindowLongA) \
    CALL(GetWindowLongPtrA) CALL(GetWindowOrgEx) CALL(GetWindowPlacement) CALL(GetWindowRect) CALL(GetWindowRgn) \
    CALL(GetWindowTextA) CALL(GetWindowTextLengthA) CALL(GlobalFlags) CALL(GlobalFree) CALL(GlobalLock) \
    CALL(GlobalReAlloc) CALL(GlobalSize) CALL(GlobalUnlock) CALL(HideCaret) CALL(HiliteMenuItem) \
    CALL(ImageList_Add) CALL(ImageList_AddMasked) CALL(ImageList_Copy) CALL(ImageList_Destroy) \
    CALL(ImageList_Draw) CALL(ImageList_DrawEx) CALL(ImageList_Duplicate) CALL(ImageList_GetBkColor) \
    CALL(ImageList_GetIcon) CALL(ImageList_GetIconSize) CALL(ImageList_GetImageCount) \
    CALL(ImageList_GetImageInfo) CALL(ImageList_LoadImageA) CALL(ImageList_Remove) CALL(ImageList_Replace) \
    CALL(ImageList_ReplaceIcon) CALL(ImageList_SetBkColor) CALL(ImageList_SetIconSize) \
    CALL(ImageList_SetImageCount) CALL(ImageList_SetOverlayImage) CALL(InsertMenuA) CALL(InsertMenuItemA) \
    CALL(IntersectClipRect) CALL(InvalidateRect) CALL(InvalidateRgn) CALL(InvertRect) CALL(InvertRgn) \
    CALL(IsChild) CALL(IsDialogMessageA) CALL(IsDlgButtonChecked) CALL(IsIconic) CALL(IsMenu) CALL(IsWindow) \
    CALL(IsWindowEnabled) CALL(IsWindowVisible) CALL(IsZoomed) CALL(KillTimer) CALL(LPtoDP) CALL(LineTo) \
    CALL(LoadAcceleratorsA) CALL(LoadBitmapA) CALL(LoadCursorA) CALL(LoadIconA) CALL(LoadImageA) CALL(LoadMenuA) \
    CALL(LoadResource) CALL(LoadStringA) CALL(LocalFlags) CALL(LocalFree) CALL(LocalLock) CALL(LocalReAlloc) \
    CALL(LocalSize) CALL(LocalUnlock) CALL(LockResource) CALL(LockWindowUpdate) CALL(MapDialogRect) \
    CALL(MapWindowPoints) CALL(MaskBlt) CALL(MenuItemFromPoint) CALL(MessageBoxA) CALL(ModifyMenuA) \
    CALL(MoveToEx) CALL(MoveWindow) CALL(OffsetClipRgn) CALL(OffsetRgn) CALL(OffsetViewportOrgEx) \
    CALL(OffsetWindowOrgEx) CALL(OpenClipboard) CALL(OpenIcon) CALL(PaintRgn) CALL(PatBlt) CALL(PeekMessageA) \
    CALL(Pie) CALL(PolyPolygon) CALL(PolyPolyline) CALL(Polygon) CALL(Polyline) CALL(PolylineTo) \
    CALL(PostMessageA) CALL(PtInRegion) CALL(PtVisible) CALL(RealChildWindowFromPoint) CALL(RectInRegion) \
    CALL(RectVisible) CALL(Rectangle) CALL(RedrawWindow) CALL(ReleaseDC) CALL(RemoveMenu) CALL(RemovePropA) \
    CALL(RestoreDC) CALL(RoundRect) CALL(SaveDC) CALL(ScreenToClient) CALL(ScrollDC) CALL(ScrollWindow) \
    CALL(ScrollWindowEx) CALL(SelectClipRgn) CALL(SelectObject) CALL(SendDlgItemMessageA) CALL(SendMessageA) \
    CALL(SetActiveWindow) CALL(SetArcDirection) CALL(SetBitmapBits) CALL(SetBkColor) CALL(SetBkMode) \
    CALL(SetBrushOrgEx) CALL(SetCapture) CALL(SetClassLongPtrA) CALL(SetClipboardData) CALL(SetCursor) \
    CALL(SetDCBrushColor) CALL(SetDCPenColor) CALL(SetDIBColorTable) CALL(SetDIBits) CALL(SetDIBitsToDevice) \
    CALL(SetDlgItemInt) CALL(SetDlgItemTextA) CALL(SetFocus) CALL(SetForegroundWindow) CALL(SetMapMode) \
    CALL(SetMenu) CALL(SetMenuContextHelpId) CALL(SetMenuDefaultItem) CALL(SetMenuItemBitmaps) \
    CALL(SetMenuItemInfoA) CALL(SetParent) CALL(SetPixel) CALL(SetPixelV) CALL(SetPolyFillMode) CALL(SetPropA) \
    CALL(SetROP2) CALL(SetRectRgn) CALL(SetScrollInfo) CALL(SetScrollPos) CALL(SetScrollRange) \
    CALL(SetStretchBltMode) CALL(SetTextAlign) CALL(SetTextColor) CALL(SetTimer) CALL(SetViewportOrgEx) \
    CALL(SetWindowLongA) CALL(SetWindowLongPtrA) CALL(SetWindowOrgEx) CALL(SetWindowPlacement) \
    CALL(SetWindowPos) CALL(SetWindowRgn) CALL(SetWindowTextA) CALL(SetWindowsHookExA) CALL(ShowCaret) \
    CALL(ShowOwnedPopups) CALL(ShowScrollBar) CALL(ShowWindow) CALL(SizeofResource) CALL(StretchBlt) \
    CALL(StretchDIBits) CALL(TabbedTextOutA) CALL(TextOutA) CALL(TrackPopupMenu) CALL(TrackPopupMenuEx) \
    CALL(TranslateAcceleratorA) CALL(UnhookWindowsHookEx) CALL(UnrealizeObject) CALL(UnregisterClassA) \
    CALL(UpdateWindow) CALL(ValidateRect) CALL(ValidateRgn) CALL(WindowFromDC)
// clang-format on
