// The edit control. Styles, messages and notifications: win32/edit.h.
//
// Not done: EM_SETHANDLE and EM_GETHANDLE (the text lives in the control and in no memory block), ES_OEMCONVERT (there
// is one code page), EM_SETIMESTATUS and EM_GETIMESTATUS (there are no input methods).
#pragma once

#include "controls/control.h"
#include "controls/edit_layout.h"
#include "controls/edit_undo.h"
#include "win32/edit.h"
#include "win32/memory.h"

#include <optional>
#include <string>
#include <string_view>

namespace vndk::win32 {

class Edit : public Control {
public:
    using Control::Control;
    ~Edit() override;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    using Handled = std::optional<LRESULT>;

    // Families of messages; each says whether it knew the message.
    Handled handleWindow(UINT message, WPARAM wParam, LPARAM lParam);    // edit.cpp
    Handled handleText(UINT message, WPARAM wParam, LPARAM lParam);      // edit_text.cpp
    Handled handleClipboard(UINT message, WPARAM wParam, LPARAM lParam); // edit_text.cpp
    Handled handleSelection(UINT message, WPARAM wParam, LPARAM lParam); // edit_messages.cpp
    Handled handleLines(UINT message, WPARAM wParam, LPARAM lParam);     // edit_messages.cpp
    Handled handleSettings(UINT message, WPARAM wParam, LPARAM lParam);  // edit_messages.cpp
    Handled handleScrolling(UINT message, WPARAM wParam, LPARAM lParam); // edit_scrolling.cpp
    Handled handleKey(UINT message, WPARAM wParam, LPARAM lParam);       // edit_input.cpp
    Handled handleMouse(UINT message, WPARAM wParam, LPARAM lParam);     // edit_input.cpp

    // ---- Window and painting (edit.cpp, edit_painting.cpp) ----
    void onCreate(const CREATESTRUCTA* create);
    void onFocus(bool gained);
    void onSize();
    void setFont(HFONT font, bool redraw);
    void setStyleBit(DWORD bit, bool on) const;
    [[nodiscard]] LRESULT dialogCode(const MSG* message);
    [[nodiscard]] bool isReadOnly() const { return hasStyle(ES_READONLY); }
    void onPaint(HDC given);
    void paint(HDC dc, const RECT& part);
    void paintLine(HDC dc, int index, int y) const;
    void paintRun(HDC dc, int index, int from, int to, int y, bool selected) const;
    [[nodiscard]] bool showsSelection() const { return hasFocus_ || hasStyle(ES_NOHIDESEL); }
    void redrawAll() const { invalidate(nullptr, true); }
    void redrawLines(int first, int last) const;

    // ---- Layout (edit.cpp) ----
    void measureFont();
    void placeFormat();
    void setFormat(const RECT* rect, bool relative, bool redraw);
    void setMargins(WPARAM which, int left, int right);
    [[nodiscard]] int fontMargin() const;
    bool setTabStops(std::size_t count, const int* stops);
    void relayout();
    [[nodiscard]] EditWrap wrap();
    [[nodiscard]] int formatWidth() const { return format_.right - format_.left; }
    [[nodiscard]] int visibleLines() const;
    [[nodiscard]] std::string_view lineText(int index) const;
    /// Left end of a line's text in client coordinates, scrolled.
    [[nodiscard]] int lineLeft(int index) const;
    [[nodiscard]] int lineTop(int index) const { return format_.top + (index - firstLine_) * measure_.lineHeight; }
    [[nodiscard]] int xOf(int line, int position) const;
    /// Where a position is in client coordinates; the caret's way of seeing it when it hangs at the end of a line.
    [[nodiscard]] POINT pointOf(int position) const;

    // ---- Changing the text (edit_text.cpp) ----
    enum class Origin { typed, program };
    [[nodiscard]] int length() const { return static_cast<int>(text_.size()); }
    [[nodiscard]] int selectionBegin() const { return anchor_ < caret_ ? anchor_ : caret_; }
    [[nodiscard]] int selectionEnd() const { return anchor_ < caret_ ? caret_ : anchor_; }
    bool setWholeText(const char* text);
    /// Replaces the selection; sends EN_MAXTEXT when the new text had to be cut, EN_UPDATE and EN_CHANGE.
    void replaceSelection(std::string text, Origin origin, bool canUndo);
    void deleteRange(int begin, int end);
    void change(int begin, int end, std::string_view text, bool canUndo, EditUndo::Join join);
    void announceChange();
    [[nodiscard]] bool cutToLimits(std::string& text, Origin origin);
    [[nodiscard]] bool tooManyLines(std::string_view text);
    void foldCase(std::string& text) const;
    bool undo();
    [[nodiscard]] std::string textForReading() const;
    [[nodiscard]] HLOCAL textBlock();
    void setTextBlock(HLOCAL block);
    void copy();
    void cut();
    void paste();

    // ---- Selection and caret (edit_caret.cpp) ----
    void select(int anchor, int caret);
    void moveCaret(int position, bool extend, bool afterWrap = false);
    void placeCaret() const;
    void moveByLines(int lines, bool extend);
    [[nodiscard]] int caretLine() const;
    [[nodiscard]] int stepLeft(int position) const;
    [[nodiscard]] int stepRight(int position) const;
    [[nodiscard]] int wordLeft(int position);
    [[nodiscard]] int wordRight(int position);
    [[nodiscard]] int breakWord(int position, int code);
    void selectWord(int position);

    // ---- Scrolling (edit_scrolling.cpp) ----
    void scrollToCaret();
    void scrollSidewaysTo(int x);
    bool scrollTo(int firstLine, int x);
    void updateScrollBars();
    LRESULT scrollByCode(int code);
    void onVerticalScroll(WPARAM wParam);
    void onHorizontalScroll(WPARAM wParam);
    void onWheel(WPARAM wParam);
    [[nodiscard]] int trackPosition(int bar, WPARAM wParam) const;
    [[nodiscard]] int highestLine() const;
    [[nodiscard]] int highestX() const;

    // ---- Input (edit_input.cpp) ----
    bool onKeyDown(WPARAM key);
    bool onMovementKey(WPARAM key, bool extend, bool control);
    bool onDialogKey(WPARAM key);
    void pressDefaultButton();
    void onDeleteKey(bool shift, bool control);
    void onCharacter(WPARAM character);
    void typeCharacter(char character);
    void onReturn(bool control);
    void onBackspace();
    void onButtonDown(POINT point, bool extend);
    void onDrag(POINT point);
    void endDrag();
    [[nodiscard]] int hitTest(POINT point, bool& afterWrap) const;
    [[nodiscard]] bool overClient(LPARAM place) const;
    void showMenu(LPARAM place);

    std::string text_;
    HLOCAL block_ = nullptr; // of EM_GETHANDLE, owned
    EditMetrics measure_;
    EditLayout layout_;
    EditUndo undo_;
    HFONT font_ = nullptr;
    RECT format_{};          // where text stands, client coordinates
    bool ownFormat_ = false; // set by EM_SETRECT
    int leftMargin_ = 0;     // pixels
    int rightMargin_ = 0;
    int anchor_ = 0; // the selection goes from here to the caret
    int caret_ = 0;
    bool afterWrap_ = false; // the caret hangs at the end of a wrapped line and not at the begin of the next
    int columnX_ = -1;       // where moving up and down aims at; -1: where the caret is
    int firstLine_ = 0;      // the top line
    int scrollX_ = 0;        // pixels that the text is moved to the left
    UINT limit_ = 30000;     // characters that can be typed
    bool modified_ = false;
    bool multiLine_ = false;
    bool scrollsAcross_ = false; // lines are as long as they are
    bool scrollsDown_ = false;   // as many lines as there are
    bool softBreaks_ = false;    // EM_FMTLINES
    bool hasFocus_ = false;
    bool dragging_ = false;
    bool inDialog_ = false; // a dialog manager has asked for the dialog code
    int wheel_ = 0;         // turned, but not enough for a line yet
    EDITWORDBREAKPROC breakWord_ = nullptr;
};

void registerEdit();

} // namespace vndk::win32
