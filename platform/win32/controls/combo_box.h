// The combo box, class "COMBOBOX": selection field, button, and a list of class "ComboLBox".
//
// Files: combo_box.cpp has creation and messages, combo_box_items.cpp items, selection and edit control,
// combo_box_dropping.cpp the list that drops down, combo_box_painting.cpp, combo_box_input.cpp; combo_list.cpp the
// list.
//
// Not done: CB_DIR (logged, CB_ERR), CBS_OEMCONVERT (there is one code page), right-to-left layout.
// Open in the documentation, and done so here: Escape gives back the selection from before the list dropped; a press
// elsewhere closes the list and then does what it would have done without it.
#pragma once

#include "controls/control.h"
#include "win32/combobox.h"
#include "win32/gdi.h"

#include <optional>
#include <string>

namespace vndk::win32 {

class ComboList;

void registerComboBox();

class ComboBox : public Control {
public:
    using Control::Control;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// For the list: a button went down outside of it (WM_LBUTTONDOWN..., on the screen), or somebody else took the
    /// mouse.
    void pressedElsewhere(UINT message, POINT point);
    void listLostMouse();

private:
    using Handled = std::optional<LRESULT>;
    enum class Close : std::uint8_t { choose, leave, giveBack };

    [[nodiscard]] bool dropsDown() const { return kind() != CBS_SIMPLE; }
    [[nodiscard]] bool hasEdit() const { return kind() != CBS_DROPDOWNLIST; }
    [[nodiscard]] DWORD kind() const { return style_ & CBS_DROPDOWNLIST; }
    [[nodiscard]] bool ownerDrawn() const { return (style_ & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)) != 0; }
    [[nodiscard]] bool hasStrings() const { return !ownerDrawn() || (style_ & CBS_HASSTRINGS) != 0; }

    Handled handleItems(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleSelection(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleDropping(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleText(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleChildren(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleWindow(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handlePainting(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleMouse(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleKeys(UINT message, WPARAM wParam, LPARAM lParam);

    // combo_box.cpp
    LRESULT create(const CREATESTRUCTA* data);
    void createEdit();
    void createList();
    void destroyed();
    void measureFont();
    void measureField();
    void setFont(HFONT font, bool repaint);
    void positionChanging(WINDOWPOS* position);
    void takeFieldHeight();
    void layOut();
    [[nodiscard]] RECT fieldRect() const;
    [[nodiscard]] RECT buttonRect() const;
    [[nodiscard]] int comboHeight() const;
    [[nodiscard]] int simpleHeight(int asked) const;
    LRESULT fillInfo(COMBOBOXINFO* info) const;
    LRESULT setFieldHeight(int height);
    void enableChildren(bool enable);
    LRESULT setRedraw(bool on);

    // combo_box_items.cpp
    LRESULT askList(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    LRESULT addItem(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT deleteItem(WPARAM wParam);
    LRESULT resetContent();
    LRESULT setCurrent(int index);
    [[nodiscard]] int current() const;
    [[nodiscard]] std::string itemText(int index) const;
    void fieldChanged() const;
    void showInEdit(int index);
    [[nodiscard]] std::string editText() const;
    void matchListToEdit(bool select);
    LRESULT setText(LPARAM lParam);
    LRESULT getText(int size, char* buffer) const;
    LRESULT setEditSelection(LPARAM lParam);
    Handled editNotified(WORD code);
    Handled listNotified(WORD code);
    void selectionMade();
    void announceSelection();
    LRESULT passToOwner(UINT message, LPARAM lParam) const;

    // combo_box_dropping.cpp
    void drop();
    void placeList();
    void close(Close how);
    void finish(Close how);
    void hideList();
    [[nodiscard]] int droppedWidth() const;
    LRESULT setDroppedWidth(int width);
    LRESULT getDroppedRect(RECT* rect) const;

    // combo_box_painting.cpp
    void paint(HDC dc);
    void paintField(HDC dc);
    void drawFieldByOwner(HDC dc, const RECT& field, UINT state) const;
    [[nodiscard]] HFONT usedFont() const;

    // combo_box_input.cpp
    void press(POINT point);
    void dragFromButton(POINT point);
    void releaseButton();
    bool keyDown(UINT message, WPARAM key, LPARAM lParam);
    bool closingKey(WPARAM key);
    void keyToList(UINT message, WPARAM wParam, LPARAM lParam);
    void toggle();
    void gainFocus();
    void loseFocus(HWND next);
    bool wheel(WPARAM wParam, LPARAM lParam);
    [[nodiscard]] LRESULT dialogCode(LPARAM lParam) const;
    static LRESULT CALLBACK editProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleEditMessage(UINT message, WPARAM wParam, LPARAM lParam);

    DWORD style_ = 0;
    HWND edit_ = nullptr;
    HWND list_ = nullptr;
    WNDPROC formerEditProcedure_ = nullptr;
    HFONT font_ = nullptr;
    int lineHeight_ = 16;
    int fieldHeight_ = 18;       // of the selection field's item
    int listHeight_ = 0;         // asked for; may be negative when the window was asked to be lower than its field
    int droppedWidth_ = 0;       // least width of the list
    int announced_ = -1;         // the selection that the parent knows of
    int beforeDrop_ = -1;        // what it was when the list dropped
    std::string textBeforeDrop_; // of the edit control
    bool dropping_ = false;      // CBN_DROPDOWN is on its way
    bool dropped_ = false;
    bool pressedButton_ = false; // the mouse was pressed on us and is captured
    bool buttonDown_ = false;    // as it looks
    bool extended_ = false;
    bool focused_ = false; // CBN_SETFOCUS was sent
    bool redraw_ = true;
    bool keyGoesToList_ = false;
    bool settingEdit_ = false;   // the text changes by program
    bool dropCharacter_ = false; // of the key that closed the list
    int wheelRest_ = 0;
};

} // namespace vndk::win32
