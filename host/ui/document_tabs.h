// A tab for each open drawing, with a mark when it has changes that aren't saved, and a button that closes the current
// one. Nothing is kept about documents but their addresses, which are compared only.
#pragma once

#include "mfc/afx.h"

#include <functional>
#include <string>
#include <vector>

class AcApDocument;

namespace vndk::host {

class Host;

class DocumentTabs : public CWnd {
public:
    static constexpr int kHeight = 24; // pixels

    explicit DocumentTabs(Host& host) : host_(host) {}

    bool create(CWnd& parent, UINT id);
    /// Shows the documents as they are now.
    void refresh();
    /// The document `step` tabs further on, around the end; null when there is no other.
    AcApDocument* neighbour(int step) const;
    CTabCtrl& tabs() { return tabs_; }

    /// Told of the tab that the user chose, and of the wish to close the current drawing.
    std::function<void(AcApDocument*)> onChoose;
    std::function<void()> onClose;

protected:
    int OnCreate(LPCREATESTRUCT create);
    void OnSize(UINT type, int width, int height);
    BOOL OnEraseBkgnd(CDC* dc);
    void OnSelChange(NMHDR* header, LRESULT* result);
    void OnCloseButton();
    void OnDrawItem(int id, LPDRAWITEMSTRUCT item);

    LRESULT OnSizeParent(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

private:
    struct Tab {
        AcApDocument* document;
        std::string text;
        bool operator==(const Tab&) const = default;
    };
    std::vector<Tab> currentTabs() const;

    Host& host_;
    std::vector<Tab> shown_;
    CTabCtrl tabs_;
    CButton close_;
    CFont font_;
};

/// "plan.dwg": the name without its folder.
std::string shortName(const AcApDocument& document);

} // namespace vndk::host
