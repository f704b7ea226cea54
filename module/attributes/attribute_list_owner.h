// The dialog around a list of attributes, as the list sees it. The list works with or without one.
#pragma once

class CAttributeListOwner {
public:
    /// The editor opens on that row.
    virtual void ShowRow(int nRow) = 0;
    /// There is something to apply: a cell was written, or an item of the list changed.
    virtual void EnableApply() = 0;

protected:
    ~CAttributeListOwner() = default;
};
