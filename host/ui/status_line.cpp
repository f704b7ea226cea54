#include "ui/status_line.h"

#include "ed/host.h"
#include "ge/unit_text.h"
#include "ui/edge_strip.h"

#include <utility>

namespace vndk::host {

namespace {

constexpr int kCoordinatesWidth = 236;
constexpr int kModeWidth = 56;
constexpr int kGap = 2;
constexpr int kInset = 6; // of a text in its pane
constexpr short kSnapsSuppressed = 16384;

constexpr const char* kIdleHint = "Type a command, or choose one from the menus. F1 lists them all.";

} // namespace

std::string hintFor(const PromptRequest& request) {
    using Kind = PromptRequest::Kind;
    switch (request.kind) {
    case Kind::Command:
        return kIdleHint;
    case Kind::Point:
        return "Click a point, or type x,y. Escape cancels.";
    case Kind::Corner:
        return "Click the other corner, or type x,y. Escape cancels.";
    case Kind::Distance:
        return "Type a number, or show it by points. Escape cancels.";
    case Kind::Angle:
        return "Type an angle, or show it by points. Escape cancels.";
    case Kind::Entity:
        return "Click an object. Escape cancels.";
    case Kind::Objects:
        return "Click objects, or the corners of a window around them; Enter ends. Escape cancels.";
    case Kind::Text:
        return "Type the answer, then Enter. Escape cancels.";
    }
    return {};
}

BEGIN_MESSAGE_MAP(StatusLine, CWnd)
ON_WM_CREATE()
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_LBUTTONDOWN()
ON_MESSAGE(WM_SIZEPARENT, &StatusLine::OnSizeParent)
END_MESSAGE_MAP()

LRESULT StatusLine::OnSizeParent(WPARAM, LPARAM layout) { return takeStrip(*this, layout, Edge::Bottom, kHeight); }

bool StatusLine::create(CWnd& parent, UINT id) {
    const LPCSTR className = AfxRegisterWndClass(0, ::LoadCursorA(nullptr, IDC_ARROW));
    return Create(className, "", WS_CHILD | WS_VISIBLE, CRect(), &parent, id) != FALSE;
}

int StatusLine::OnCreate(LPCREATESTRUCT create) {
    if (CWnd::OnCreate(create) == -1)
        return -1;
    font_.CreatePointFont(80, "MS Sans Serif");
    hint_ = kIdleHint;
    return 0;
}

void StatusLine::showCursor(const AcGePoint3d& world) {
    cursor_ = world;
    refresh();
}

void StatusLine::showHint(const std::string& hint) {
    hint_ = hint;
    refresh();
}

std::string StatusLine::coordinates() const {
    const AcApDocument* const document = host_.documents().curDocument();
    if (!document || !cursor_)
        return {};
    const AcGePoint3d at = host_.prompts().worldToUcs() * *cursor_;
    const SystemVariables& variables = host_.variables();
    const int mode = variables.getShort("LUNITS"), precision = variables.getShort("LUPREC");
    std::string text;
    for (const double value : {at.x, at.y, at.z})
        text += (text.empty() ? "" : ", ") + ge::lengthText(value, mode, precision, 0).value_or("");
    return text;
}

StatusLine::Look StatusLine::currentLook() const {
    Look look;
    look.hint = hint_;
    look.hasDrawing = host_.documents().curDocument() != nullptr;
    look.modes = {Mode{"ORTHO", false}, Mode{"OSNAP", false}, Mode{"MODEL", false}};
    if (!look.hasDrawing)
        return look;
    const SystemVariables& variables = host_.variables();
    const short snaps = variables.getShort("OSMODE");
    const bool model = variables.getShort("TILEMODE") != 0;
    look.coordinates = coordinates();
    look.modes = {Mode{"ORTHO", variables.getShort("ORTHOMODE") != 0},
                  Mode{"OSNAP", snaps != 0 && (snaps & kSnapsSuppressed) == 0}, Mode{model ? "MODEL" : "PAPER", true}};
    return look;
}

void StatusLine::refresh() {
    Look look = currentLook();
    if (!m_hWnd || look == look_)
        return;
    // Coordinates follow the mouse: only their pane is painted for them.
    Look sameButPlace = look;
    sameButPlace.coordinates = look_.coordinates;
    const bool onlyPlace = sameButPlace == look_;
    look_ = std::move(look);
    const CRect place(0, 0, kCoordinatesWidth, kHeight);
    InvalidateRect(onlyPlace ? &place : nullptr, FALSE);
}

CRect StatusLine::modeRect(int mode) const {
    CRect client;
    GetClientRect(client);
    const int left = client.right - (kModes - mode) * (kModeWidth + kGap);
    return {left, kGap, left + kModeWidth, client.bottom};
}

void StatusLine::toggle(int mode) {
    if (!host_.documents().curDocument())
        return;
    SystemVariables& variables = host_.variables();
    if (mode == 0) {
        const bool on = variables.getShort("ORTHOMODE") == 0;
        if (variables.set("ORTHOMODE", static_cast<short>(on)) == VariableError::None)
            host_.print(on ? "<Ortho on> " : "<Ortho off> ");
    } else {
        const short snaps = variables.getShort("OSMODE");
        const auto turned = static_cast<short>(snaps ^ kSnapsSuppressed);
        if (variables.set("OSMODE", turned) == VariableError::None)
            host_.print((turned & kSnapsSuppressed) == 0 ? "<Osnap on> " : "<Osnap off> ");
    }
    refresh();
}

void StatusLine::OnLButtonDown(UINT, CPoint point) {
    for (int mode = 0; mode < kModes; ++mode) {
        if (!modeRect(mode).PtInRect(point))
            continue;
        if (mode < 2)
            toggle(mode);
        else if (onSpace && look_.hasDrawing)
            onSpace(host_.variables().getShort("TILEMODE") == 0);
        return;
    }
}

BOOL StatusLine::OnEraseBkgnd(CDC*) { return TRUE; }

void StatusLine::drawPane(CDC& dc, CRect rect, const std::string& text, bool sunken, bool centred, bool enabled) const {
    dc.FillSolidRect(rect, ::GetSysColor(COLOR_3DFACE));
    dc.DrawEdge(rect, sunken ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
    rect.DeflateRect(centred ? 1 : kInset, 1);
    dc.SetTextColor(::GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    dc.SetBkMode(TRANSPARENT);
    const UINT place = centred ? DT_CENTER : DT_LEFT;
    ::DrawTextA(dc.m_hDC, text.c_str(), -1, rect, place | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void StatusLine::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    CFont* const former = dc.SelectObject(&font_);
    const CRect place(0, kGap, kCoordinatesWidth, client.bottom);
    const CRect hint(place.right + kGap, kGap, modeRect(0).left - kGap, client.bottom);
    dc.FillSolidRect(client, ::GetSysColor(COLOR_3DFACE));
    drawPane(dc, place, look_.coordinates, true, false, true);
    drawPane(dc, hint, look_.hint, true, false, true);
    for (int mode = 0; mode < kModes; ++mode) {
        const Mode& shown = look_.modes[static_cast<std::size_t>(mode)];
        drawPane(dc, modeRect(mode), shown.text, shown.on, true, look_.hasDrawing);
    }
    dc.SelectObject(former);
}

} // namespace vndk::host
