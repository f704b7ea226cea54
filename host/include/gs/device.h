// A surface that views draw on: a window's, or one in memory.
#pragma once

#include "win32/picture.h"
#include "win32/types.h"

class AcGsView;

class AcGsDevice {
public:
    virtual ~AcGsDevice() = default;
    /// The size in pixels; sides below 1 become 1, and sides above 2^14 that. The picture is stale then.
    virtual void onSize(int width, int height) = 0;
    virtual int width() const = 0;
    virtual int height() const = 0;

    /// A view is on one device at a time. False: it is on one already, or null.
    virtual bool add(AcGsView* view) = 0;
    /// False: it isn't on this one.
    virtual bool erase(AcGsView* view) = 0;
    virtual void eraseAll() = 0;

    /// Black at first. Colour 7 is drawn white on dark and black on light.
    virtual void setBackgroundColor(COLORREF color) = 0;
    virtual COLORREF backgroundColor() const = 0;

    /// Marks the pictures of all views stale.
    virtual void invalidate() = 0;
    /// Draws the views that are stale and shows them.
    virtual void update() = 0;
    /// Shows what has been drawn last once more: for an owner whose window has to be painted.
    virtual void present() = 0;
    /// Puts a part of what has been drawn last onto the same place of a device context.
    virtual void paint(HDC dc, const RECT& part) const = 0;
    /// What has been drawn last; valid until something is drawn or the size changes.
    virtual const vndk::win32::Picture& picture() const = 0;
};
