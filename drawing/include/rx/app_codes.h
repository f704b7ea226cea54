// What the loader says to a loaded library through its entry point acrxEntryPoint.
#pragma once

namespace AcRx {

enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,
    kSaveMsg = 9,
    kDependencyMsg = 10,
    kNoDependencyMsg = 11,
};

enum AppRetCode { kRetOK = 0, kRetError = 3 };

} // namespace AcRx

/// The entry point that a library exports as "acrxEntryPoint".
using AcRxEntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode message, void* packet);

// What a library defines and exports, whatever the visibility of the rest of it.
extern "C" {
/// Called with each message; `packet` names the library to the loader.
__attribute__((visibility("default"))) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet);
/// The level of the interface that the library was made for: the release in the upper 16 bits.
__attribute__((visibility("default"))) int acrxGetApiVersion();
}
