// An application that writes down its messages and never unlocks itself.
#include "platform/modules/journal.h"
#include "rx/app_codes.h"

AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void*) {
    journal().push_back("locked: message " + std::to_string(message));
    return AcRx::kRetOK;
}
