// The order in which the module calls the host when it is loaded and unloaded.
//
// The functions defined below stand before the host's own in every look-up of the process. Each notes its call and
// hands it on to the host's.
#include "ads/ads.h"
#include "ap/document.h"
#include "ed/host.h"
#include "mfc/module_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <cstdarg>
#include <cstring>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::string> g_calls;
int g_refusedCode = -1; // of the function that the host doesn't define

/// The function that this one hides, found by the name that the linker knows it by.
template <class Function>
Function* hidden(const char* symbol) {
    void* const address = dlsym(RTLD_NEXT, symbol);
    EXPECT_NE(address, nullptr) << symbol;
    return reinterpret_cast<Function*>(address);
}

} // namespace

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module) {
    g_calls.push_back("init extension module");
    return hidden<BOOL(AFX_EXTENSION_MODULE&, HMODULE)>(
        "_Z22AfxInitExtensionModuleR20AFX_EXTENSION_MODULEP11HINSTANCE__")(state, module);
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all) {
    g_calls.push_back("term extension module");
    hidden<void(AFX_EXTENSION_MODULE&, BOOL)>("_Z22AfxTermExtensionModuleR20AFX_EXTENSION_MODULEi")(state, all);
}

void InitAcUiDLL() {
    g_calls.push_back("init user interface");
    hidden<void()>("_Z11InitAcUiDLLv")();
}

bool acrxLoadModule(const char* name, bool print, bool asCommand) {
    g_calls.push_back(std::string("load ") + name);
    return hidden<bool(const char*, bool, bool)>("_Z14acrxLoadModulePKcbb")(name, print, asCommand);
}

bool acrxUnloadModule(const char* name, bool asCommand) {
    g_calls.push_back(std::string("unload ") + name);
    return hidden<bool(const char*, bool)>("_Z16acrxUnloadModulePKcb")(name, asCommand);
}

int acedCmdUndefine(const char* name, int undefine) {
    g_calls.push_back(std::string("undefine ") + name + ' ' + std::to_string(undefine));
    return hidden<int(const char*, int)>("_Z15acedCmdUndefinePKci")(name, undefine);
}

int acedDefun(const char* name, int code) {
    g_calls.push_back("defun " + std::to_string(code) + ' ' + name);
    return code == g_refusedCode ? 0 : hidden<int(const char*, int)>("_Z9acedDefunPKci")(name, code);
}

int acedRegFunc(int (*handler)(), int code) {
    g_calls.push_back("handler " + std::to_string(code));
    return hidden<int(int (*)(), int)>("_Z11acedRegFuncPFivEi")(handler, code);
}

int acutPrintf(const char* format, ...) {
    char text[300];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    g_calls.push_back(std::string("print ") + text);
    return RTNORM;
}

bool AcRxDynamicLinker::unlockApplication(void* packet) {
    g_calls.push_back("unlock");
    using Function = bool(AcRxDynamicLinker*, void*);
    return hidden<Function>("_ZN17AcRxDynamicLinker17unlockApplicationEPv")(this, packet);
}

bool AcRxDynamicLinker::registerAppMDIAware(void* packet) {
    g_calls.push_back("MDI aware");
    using Function = bool(AcRxDynamicLinker*, void*);
    return hidden<Function>("_ZN17AcRxDynamicLinker19registerAppMDIAwareEPv")(this, packet);
}

void AcEditor::addReactor(AcEditorReactor* reactor) {
    g_calls.push_back("add editor reactor");
    hidden<void(AcEditor*, AcEditorReactor*)>("_ZN8AcEditor10addReactorEP15AcEditorReactor")(this, reactor);
}

void AcEditor::removeReactor(AcEditorReactor* reactor) {
    g_calls.push_back("remove editor reactor");
    hidden<void(AcEditor*, AcEditorReactor*)>("_ZN8AcEditor13removeReactorEP15AcEditorReactor")(this, reactor);
}

void AcApDocManager::addReactor(AcApDocManagerReactor* reactor) {
    g_calls.push_back("add document reactor");
    using Function = void(AcApDocManager*, AcApDocManagerReactor*);
    hidden<Function>("_ZN14AcApDocManager10addReactorEP21AcApDocManagerReactor")(this, reactor);
}

void AcApDocManager::removeReactor(AcApDocManagerReactor* reactor) {
    g_calls.push_back("remove document reactor");
    using Function = void(AcApDocManager*, AcApDocManagerReactor*);
    hidden<Function>("_ZN14AcApDocManager13removeReactorEP21AcApDocManagerReactor")(this, reactor);
}

Acad::ErrorStatus AcEdCommandStack::addCommand(const char* group, const char* global, const char* local, int flags,
                                               AcRxFunctionPtr function, void* uiContext, int code, void* resources,
                                               AcEdCommand** result) {
    g_calls.push_back(std::string("command ") + group + ' ' + global + ' ' + local + ' ' + std::to_string(flags) + ' ' +
                      std::to_string(code) + (uiContext || resources || result ? " and more" : ""));
    using Function = Acad::ErrorStatus(AcEdCommandStack*, const char*, const char*, const char*, int, AcRxFunctionPtr,
                                       void*, int, void*, AcEdCommand**);
    return hidden<Function>("_ZN16AcEdCommandStack10addCommandEPKcS1_S1_iPFvvEPviS4_PP11AcEdCommand")(
        this, group, global, local, flags, function, uiContext, code, resources, result);
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const char* group) {
    g_calls.push_back(std::string("remove group ") + group);
    return hidden<Acad::ErrorStatus(AcEdCommandStack*, const char*)>("_ZN16AcEdCommandStack11removeGroupEPKc")(this,
                                                                                                               group);
}

namespace {

class OrderTest : public testing::Test {
protected:
    OrderTest() {
        host.linker().addSupportFolder(MODULE_FOLDER);
        host.documents().appContextNewDocument(nullptr);
        g_calls.clear();
    }
    static std::vector<std::string> taken() { return std::exchange(g_calls, {}); }

    vndk::host::Host host;
};

TEST_F(OrderTest, LoadAndUnloadCallTheHostInTheirOrderEachTime) {
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(host.linker().loadModule("VNDKKeldmoor.arx", false)) << host.linker().lastError();
        EXPECT_THAT(taken(),
                    ElementsAre("add document reactor", "init extension module", "init user interface",
                                "load VNDKObjectsDbx.dbx", "add editor reactor",
                                // kInitAppMsg
                                "unlock", "MDI aware", "command VNDKCOMMANDS BLOCKS BLOCKS 6 -1",
                                "command VNDKCOMMANDS DDATTE2 DDATTE2 2 -1", "command VNDKCOMMANDS DDATTE DDATTE 2 -1",
                                "command VNDKCOMMANDS EATTEDIT EATTEDIT 7 -1",
                                "command VNDKCOMMANDS -EATTEDIT -EATTEDIT 7 -1",
                                "command VNDKCOMMANDS _EATTEDIT _EATTEDIT 7 -1", "command VNDKCOMMANDS EA EA 7 -1",
                                "print \nVondrake Free version loaded.",
                                "print \nType BLOCKS to activate the dockable dialog box.", "undefine EATTEDIT 1",
                                "undefine c:EATTEDIT 1", "undefine _EATTEDIT 1", "undefine .EATTEDIT 1",
                                "undefine -EATTEDIT 1", "undefine _.EATTEDIT 1",
                                // kLoadDwgMsg
                                "defun 0 c:_binsertfile", "handler 0", "defun 1 c:_binsert", "handler 1",
                                "defun 2 c:ddatte", "handler 2"));

        ASSERT_TRUE(host.linker().unloadModule("VNDKKeldmoor.arx"));
        EXPECT_THAT(taken(), ElementsAre("remove group VNDKCOMMANDS", "term extension module", "remove editor reactor",
                                         "unload VNDKObjectsDbx.dbx", "remove document reactor"));
        EXPECT_EQ(dlopen(MODULE_FOLDER "/VNDKKeldmoor.arx", RTLD_NOLOAD | RTLD_NOW), nullptr) << "it is unmapped";
    }
}

TEST_F(OrderTest, AFunctionThatCannotBeDefinedEndsTheRow) {
    ASSERT_TRUE(host.linker().loadModule("VNDKKeldmoor.arx", false));
    taken();
    g_refusedCode = 1;
    ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    g_refusedCode = -1;
    EXPECT_THAT(taken(), ElementsAre("defun 0 c:_binsertfile", "handler 0", "defun 1 c:_binsert"));
}

TEST_F(OrderTest, ASecondDocumentGetsTheFunctionsAndNothingElse) {
    ASSERT_TRUE(host.linker().loadModule("VNDKKeldmoor.arx", false));
    taken();
    ASSERT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
    EXPECT_THAT(taken(), ElementsAre("defun 0 c:_binsertfile", "handler 0", "defun 1 c:_binsert", "handler 1",
                                     "defun 2 c:ddatte", "handler 2"));
    host.documents().closeDocument(host.documents().curDocument());
    EXPECT_THAT(taken(), IsEmpty()) << "the functions go with their document";
}

} // namespace
