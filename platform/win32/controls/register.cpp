#include "controls/register.h"

namespace vndk::win32 {

void registerControls() {}

} // namespace vndk::win32
