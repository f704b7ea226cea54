#include "objects/library.h"

#include "objects/attribute.h"
#include "objects/attribute_definition.h"
#include "objects/block_reference.h"
#include "objects/grip_point.h"
#include "rx/lisp_functions.h"
#include "rx/registry.h"

int m_TabIndex = -1;

long vndk::objects::LiveObject::count_ = 0;

namespace {

/// The level of the interface that the loader asks for: release 15 in the upper 16 bits.
constexpr int kApiLevel = 0xF0000;

template <class Class, class Ordinary>
void registerClass() {
    Class::rxInit();
    acdbRegisterStandIn({Class::desc(), Ordinary::desc(), kVndkApplicationName});
}

template <class Class>
void unregisterClass() {
    acdbUnregisterStandIn(Class::desc());
    deleteAcRxClass(Class::desc());
}

AcRx::AppRetCode initApp() {
    registerClass<VNDKBlockReference, AcDbBlockReference>();
    registerClass<VNDKAttribute, AcDbText>();
    registerClass<VNDKAttributeDefinition, AcDbAttributeDefinition>();
    registerClass<VNDKGripPoint, AcDbPoint>();
    return AcRx::kRetOK;
}

AcRx::AppRetCode unloadApp() {
    if (vndk::objects::LiveObject::count() > 0)
        return AcRx::kRetError;
    unregisterClass<VNDKGripPoint>();
    unregisterClass<VNDKAttributeDefinition>();
    unregisterClass<VNDKAttribute>();
    unregisterClass<VNDKBlockReference>();
    return AcRx::kRetOK;
}

AcRxLispFunctions* lispFunctions() { return AcRxLispFunctions::cast(acrxSysRegistry()->at(kRxLispFunctions)); }

/// Grips are made by code, not by the user: there is nothing to do for the kind that he has chosen.
void grip() {}

void refresh() {
    if (AcRxLispFunctions* const functions = lispFunctions())
        functions->updateDisplay();
}

/// Those that the palette sends to the command line. Their use is the drawing's, so they are here and not there.
void defineFunctions() {
    AcRxLispFunctions* const functions = lispFunctions();
    if (!functions)
        return;
    functions->define("c:_grip", grip);
    functions->define("_refresh", refresh);
}

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* /*packet*/) {
    switch (message) {
    case AcRx::kInitAppMsg:
        return initApp();
    case AcRx::kUnloadAppMsg:
        return unloadApp();
    case AcRx::kLoadDwgMsg:
        defineFunctions();
        return AcRx::kRetOK;
    default:
        return AcRx::kRetOK;
    }
}

extern "C" int acrxGetApiVersion() { return kApiLevel; }
