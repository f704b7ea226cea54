#include "ui/document_tabs.h"

#include "ed/host.h"
#include "ui/edge_strip.h"

#include <algorithm>
#include <memory>

namespace vndk::host {

namespace {

constexpr UINT kTabsId = 1001;
constexpr UINT kCloseId = 1002;
constexpr int kCloseSize = 16;
constexpr int kGap = 4;

} // namespace

std::string shortName(const AcApDocument& document) {
    const std::string name = document.fileName();
    return name.substr(name.find_last_of('\\') + 1);
}

BEGIN_MESSAGE_MAP(DocumentTabs, CWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_ERASEBKGND()
ON_WM_DRAWITEM()
ON_NOTIFY(TCN_SELCHANGE, kTabsId, &DocumentTabs::OnSelChange)
ON_BN_CLICKED(kCloseId, &DocumentTabs::OnCloseButton)
ON_MESSAGE(WM_SIZEPARENT, &DocumentTabs::OnSizeParent)
END_MESSAGE_MAP()

LRESULT DocumentTabs::OnSizeParent(WPARAM, LPARAM layout) { return takeStrip(*this, layout, Edge::Top, kHeight); }

bool DocumentTabs::create(CWnd& parent, UINT id) {
    const LPCSTR className = AfxRegisterWndClass(0, ::LoadCursorA(nullptr, IDC_ARROW));
    return Create(className, "", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, CRect(), &parent, id) != FALSE;
}

int DocumentTabs::OnCreate(LPCREATESTRUCT create) {
    if (CWnd::OnCreate(create) == -1)
        return -1;
    font_.CreatePointFont(80, "MS Sans Serif");
    const CRect none;
    if (!tabs_.Create(WS_CHILD | WS_VISIBLE | TCS_FOCUSNEVER, none, this, kTabsId) ||
        !close_.Create("Close", WS_CHILD | BS_OWNERDRAW, none, this, kCloseId))
        return -1;
    tabs_.SetFont(&font_);
    return 0;
}

std::vector<DocumentTabs::Tab> DocumentTabs::currentTabs() const {
    std::vector<Tab> tabs;
    const std::unique_ptr<AcApDocumentIterator> iterator(host_.documents().newAcApDocumentIterator());
    for (; !iterator->done(); iterator->step()) {
        AcApDocument* const document = iterator->document();
        tabs.push_back({document, shortName(*document) + (document->database()->isDirty() ? " *" : "")});
    }
    return tabs;
}

void DocumentTabs::refresh() {
    if (!m_hWnd)
        return;
    std::vector<Tab> tabs = currentTabs();
    const auto shownIsCurrent = [this](const Tab& tab) { return tab.document == host_.documents().curDocument(); };
    const auto current = static_cast<int>(std::find_if(tabs.begin(), tabs.end(), shownIsCurrent) - tabs.begin());
    if (tabs != shown_) {
        tabs_.SetRedraw(FALSE);
        tabs_.DeleteAllItems();
        for (std::size_t i = 0; i < tabs.size(); ++i)
            tabs_.InsertItem(static_cast<int>(i), tabs[i].text.c_str());
        tabs_.SetRedraw(TRUE);
        tabs_.Invalidate();
        close_.ShowWindow(tabs.empty() ? SW_HIDE : SW_SHOW);
        shown_ = std::move(tabs);
    }
    if (!shown_.empty() && tabs_.GetCurSel() != current)
        tabs_.SetCurSel(current);
}

AcApDocument* DocumentTabs::neighbour(int step) const {
    const std::vector<Tab> tabs = currentTabs();
    const auto count = static_cast<int>(tabs.size());
    for (int i = 0; i < count; ++i)
        if (count > 1 && tabs[static_cast<std::size_t>(i)].document == host_.documents().curDocument())
            return tabs[static_cast<std::size_t>((i + step + count) % count)].document;
    return nullptr;
}

void DocumentTabs::OnSelChange(NMHDR*, LRESULT* result) {
    *result = 0;
    const int chosen = tabs_.GetCurSel();
    if (chosen < 0 || static_cast<std::size_t>(chosen) >= shown_.size() || !onChoose)
        return;
    AcApDocument* const document = shown_[static_cast<std::size_t>(chosen)].document;
    // The tab comes forward when the drawing does.
    refresh();
    onChoose(document);
}

void DocumentTabs::OnCloseButton() {
    if (onClose)
        onClose();
}

void DocumentTabs::OnDrawItem(int, LPDRAWITEMSTRUCT item) {
    const UINT pressed = (item->itemState & ODS_SELECTED) != 0 ? DFCS_PUSHED : 0U;
    ::DrawFrameControl(item->hDC, &item->rcItem, DFC_CAPTION, DFCS_CAPTIONCLOSE | pressed);
}

void DocumentTabs::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    if (!close_.GetSafeHwnd())
        return;
    const int room = kCloseSize + 2 * kGap;
    // The control's own frame around pages lies below the strip, all of it.
    tabs_.MoveWindow(0, 3, std::max(width - room, 0), height + 4);
    close_.MoveWindow(width - kGap - kCloseSize, (height - kCloseSize) / 2, kCloseSize, kCloseSize - 2);
}

BOOL DocumentTabs::OnEraseBkgnd(CDC* dc) {
    CRect client;
    GetClientRect(client);
    dc->FillSolidRect(client, ::GetSysColor(COLOR_3DFACE));
    return TRUE;
}

} // namespace vndk::host
