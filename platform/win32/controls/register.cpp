#include "controls/register.h"

#include "controls/button.h"
#include "controls/list_box.h"
#include "controls/scroll_bar.h"
#include "controls/static.h"

namespace vndk::win32 {

void registerControls() {
    registerButton();
    registerListBox();
    registerScrollBar();
    registerStatic();
}

} // namespace vndk::win32
