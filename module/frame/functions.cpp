#include "frame/functions.h"

#include "ads/ads.h"
#include "attributes/edit_attribute_dlg.h"
#include "insertion/insert_block.h"
#include "insertion/insert_file.h"

#include <iterator>

namespace {

struct FunctionRow {
    const char* name;
    int (*handler)();
};

/// The row's index is the function code that the host gives back.
const FunctionRow g_functionTable[] = {
    {"c:_binsertfile", InsertFileFunction},
    {"c:_binsert", InsertBlockFunction},
    {"c:ddatte", EditAttributesFunction},
};

constexpr int kFunctionCount = static_cast<int>(std::size(g_functionTable));

} // namespace

int RegisterFunctions() {
    for (int code = 0; code < kFunctionCount; ++code) {
        if (acedDefun(g_functionTable[code].name, code) == 0)
            return RTERROR;
        if (acedRegFunc(g_functionTable[code].handler, code) == 0)
            return RTERROR;
    }
    return 0;
}

int DispatchFunction() {
    const int code = acedGetFunCode();
    if (code < 0 || code >= kFunctionCount) {
        acdbFail("Received nonexistent function code.");
        return RTERROR;
    }
    resbuf* pArguments = acedGetArgs();
    const int result = g_functionTable[code].handler();
    if (pArguments)
        acutRelRb(pArguments);
    return result;
}
