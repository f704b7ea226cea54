#include "controls/register.h"

#include "controls/button.h"
#include "controls/combo_box.h"
#include "controls/edit.h"
#include "controls/header_control.h"
#include "controls/list_box.h"
#include "controls/list_view.h"
#include "controls/rich_edit.h"
#include "controls/scroll_bar.h"
#include "controls/static.h"
#include "controls/tab_control.h"
#include "controls/tool_tip.h"
#include "controls/tree_view.h"
#include "user/dialog.h"
#include "user/menu_popup.h"

namespace vndk::win32 {

void registerControls() {
    registerButton();
    registerComboBox();
    registerEdit();
    registerHeaderControl();
    registerListBox();
    registerListView();
    registerRichEdit();
    registerScrollBar();
    registerStatic();
    registerTabControl();
    registerToolTip();
    registerTreeView();
    registerDialogClass();
    registerMenuClass();
}

} // namespace vndk::win32
