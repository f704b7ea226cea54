// The list of a combo box, class "ComboLBox": a list box whose owner is the combo box, wherever it stands. Of the
// styles that drop down it is a child of the desktop, and while it shows it has the mouse captured: the item under the
// pointer is highlighted, and a press elsewhere closes it.
#pragma once

#include "controls/list_box.h"

namespace vndk::win32 {

class ComboBox;

class ComboList : public ListBox {
public:
    using ListBox::ListBox;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// Height of as many whole items as fit into `room`, of one at least.
    [[nodiscard]] int heightOfItems(int room) const;
    [[nodiscard]] int currentItem() const { return current(); }

protected:
    [[nodiscard]] HWND owner() const override { return combo_; }
    [[nodiscard]] bool showsFocus() const override;
    void takeFocus() override;
    Handled handleMouse(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    [[nodiscard]] std::shared_ptr<ComboBox> comboBox() const;
    [[nodiscard]] bool dropsDown() const { return GetAncestor(window(), GA_PARENT) != combo_; }
    void pressed(POINT point);
    void hovered(POINT point);
    void released(POINT point);
    void pressedOnFrame(LRESULT hitTest, POINT point);

    HWND combo_ = nullptr;
    bool scrolling_ = false; // the user holds its scroll bar
};

} // namespace vndk::win32
