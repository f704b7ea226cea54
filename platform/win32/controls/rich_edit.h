// Rich edit control. Text and formats live in a RichDocument, places in a RichLayout; this is what messages do to them.
//
// Not done: EM_FORMATRANGE, EM_DISPLAYBAND, EM_PASTESPECIAL (texts only are pasted), objects, drag and drop, EM_REDO,
// tables, right-to-left text.
#pragma once

#include "controls/control.h"
#include "controls/rich_document.h"
#include "controls/rich_layout.h"
#include "win32/richedit.h"

#include <vector>

namespace vndk::win32 {

class RichEdit : public Control {
public:
    explicit RichEdit(HWND window);
    ~RichEdit() override;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Range {
        int begin = 0;
        int end = 0;
        [[nodiscard]] bool empty() const { return begin == end; }
    };

    struct Change {
        int position = 0;
        RichText removed;
        RichText inserted;
        Range selectionBefore;
    };

    // State.
    [[nodiscard]] bool multiLine() const { return hasStyle(ES_MULTILINE); }
    [[nodiscard]] bool readOnly() const { return hasStyle(ES_READONLY); }
    [[nodiscard]] Range selection() const;
    [[nodiscard]] Range clipped(LONG begin, LONG end) const;
    [[nodiscard]] int wrapWidth() const;

    // Layout and scrolling (rich_edit_view.cpp).
    void relayout();
    void updateScrollBars();
    void scrollTo(int x, int y);
    void showCaret();
    void placeCaret();
    void paint(HDC given);
    [[nodiscard]] POINT clientPlace(int position) const;
    [[nodiscard]] int positionAt(POINT client) const;
    [[nodiscard]] int lineHeightAt(int y) const;
    void onScroll(bool vertical, int code);
    void scrollLines(int lines);

    // Editing (rich_edit_edit.cpp).
    void select(int anchor, int caret, bool show);
    void replaceSelection(const RichText& piece, bool undoable, bool byUser);
    void replaceRange(Range range, const RichText& piece, bool undoable);
    void undo();
    void setText(LPCSTR text);
    void typeCharacter(WPARAM c);
    void eraseBeside(bool before, bool word);
    void copy() const;
    void paste();
    void changed();
    [[nodiscard]] bool refuses() const;
    [[nodiscard]] StyleIndex typingStyle() const;
    LRESULT streamIn(WPARAM format, EDITSTREAM* stream);
    LRESULT streamOut(WPARAM format, EDITSTREAM* stream);

    // Input (rich_edit_input.cpp).
    bool onKey(WPARAM key);
    bool onShortcut(WPARAM key);
    void moveCaret(int position, bool extend);
    void moveVertically(int lines, bool extend);
    void scrollByKey(WPARAM key);
    [[nodiscard]] int wordStart(int position) const;
    [[nodiscard]] int wordEnd(int position) const;
    void onButtonDown(POINT point, bool extend);
    void onDoubleClick(POINT point);
    void onMouseMove(POINT point);
    void onWheel(int delta);
    void onFocus(bool gained);
    [[nodiscard]] LRESULT dialogCode(const MSG* message) const;
    bool handleInput(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

    // Messages (rich_edit_messages.cpp).
    bool handleTextMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool handleLineMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool handleSelectionMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool handleFormatMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool handleEditMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    LRESULT setCharFormat(WPARAM scope, const CHARFORMAT* format);
    LRESULT getCharFormat(bool ofSelection, CHARFORMAT* format) const;
    LRESULT setParaFormat(const PARAFORMAT* format);
    LRESULT getParaFormat(PARAFORMAT* format) const;
    LRESULT getLine(int line, LPSTR buffer) const;
    LRESULT findText(WPARAM flags, const FINDTEXTA* find) const;
    LRESULT positionFromChar(WPARAM wParam, LPARAM lParam) const;
    LRESULT charFromPosition(LPARAM lParam) const;

    RichDocument document_;
    RichLayout layout_;
    int anchor_ = 0; // where the selection began
    int caret_ = 0;
    POINT scroll_{};   // pixels of the text that lie left of and above the client area
    int wishedX_ = -1; // column that moving up and down keeps to
    bool hideSelection_ = false;
    bool selecting_ = false;
    bool modified_ = false;
    bool redraw_ = true;
    DWORD limit_ = 0x7FFF;
    DWORD eventMask_ = ENM_NONE;
    HFONT font_ = nullptr;
    COLORREF background_ = 0;
    bool systemBackground_ = true;
    std::vector<Change> undo_;
    StyleIndex nextStyle_ = 0; // of what is typed at an empty selection, when it was set
    bool nextStyleSet_ = false;
};

void registerRichEdit();

} // namespace vndk::win32
