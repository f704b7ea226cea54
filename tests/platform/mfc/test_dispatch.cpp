// Calls of automation objects, and what becomes of what they throw.
#include "mfc/afx.h"
#include "mfc/dispatch.h"
#include "support/desktop_fixture.h"
#include "win32/user_script.h"

#include <string>

namespace {

constexpr DISPID kEcho = 0x60020005;
constexpr DISPID kSelf = 32;
constexpr UINT kCommand = 100;

/// Notes the last call; answers with itself or a number, or refuses in words.
class Target final : public IDispatch {
public:
    ULONG AddRef() override { return static_cast<ULONG>(++references); }
    ULONG Release() override { return static_cast<ULONG>(--references); }
    HRESULT Invoke(DISPID member, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* problem,
                   UINT*) override {
        seen.clear();
        for (UINT i = parameters->cArgs; i-- > 0;) { // the last one comes first
            const VARIANT& value = parameters->rgvarg[i];
            seen += std::to_string(value.vt) + ":";
            if (value.vt == VT_BSTR)
                for (UINT at = 0; at < SysStringLen(value.bstrVal); ++at)
                    seen += std::to_string(unsigned{value.bstrVal[at]}) + ",";
            else
                seen += std::to_string(value.vt == VT_BOOL ? value.boolVal : value.lVal);
            seen += " ";
        }
        if (member == kSelf && flags == DISPATCH_PROPERTYGET) {
            AddRef();
            result->vt = VT_DISPATCH;
            result->pdispVal = this;
            return S_OK;
        }
        if (member == kEcho) {
            result->vt = VT_I4;
            result->lVal = 7;
            return S_OK;
        }
        const std::u16string words = u"Nothing \u201Edoing\u201C.";
        *problem = {nullptr, SysAllocStringLen(words.data(), static_cast<UINT>(words.size())), E_INVALIDARG};
        return member == 1 ? DISP_E_EXCEPTION : (SysFreeString(problem->bstrDescription), DISP_E_MEMBERNOTFOUND);
    }

    int references = 1;
    std::string seen;
};

TEST(Dispatch, HandsOverArgumentsAndResultsByTheirTypes) {
    Target target;
    target.AddRef();
    {
        COleDispatchDriver driver(&target, TRUE);
        VARIANT flag{};
        flag.vt = VT_BOOL;
        flag.boolVal = VARIANT_TRUE;
        LONG number = 0;
        static const BYTE types[] = VTS_BSTR VTS_VARIANT VTS_I4;
        driver.InvokeHelper(kEcho, DISPATCH_METHOD, VT_I4, &number, types, "a\x80\xE4", &flag, LONG{-5});
        EXPECT_EQ(number, 7);
        EXPECT_EQ(target.seen, "8:97,8364,228, 11:-1 3:-5 ");

        LPDISPATCH self = nullptr;
        driver.InvokeHelper(kSelf, DISPATCH_PROPERTYGET, VT_DISPATCH, &self, nullptr);
        EXPECT_EQ(self, &target);
        EXPECT_EQ(target.references, 3);
        COleDispatchDriver(self, TRUE).ReleaseDispatch();
        driver.InvokeHelper(kSelf, DISPATCH_PROPERTYGET, VT_EMPTY, nullptr, nullptr);
        EXPECT_EQ(target.references, 2) << "a result that nobody wants is released";
    }
    EXPECT_EQ(target.references, 1);
}

TEST(Dispatch, ThrowsWhatTheObjectSaysOfItsRefusal) {
    Target target;
    COleDispatchDriver driver(&target, FALSE);
    try {
        driver.InvokeHelper(1, DISPATCH_METHOD, VT_EMPTY, nullptr, nullptr);
        FAIL();
    } catch (COleDispatchException* problem) {
        EXPECT_STREQ(problem->m_strDescription, "Nothing \x84"
                                                "doing\x93.");
        problem->Delete();
    }
    const auto failing = [&](DISPID member, VARTYPE type, void* result) {
        try {
            driver.InvokeHelper(member, DISPATCH_METHOD, type, result, nullptr);
        } catch (COleException* problem) {
            const SCODE code = problem->m_sc;
            problem->Delete();
            return code;
        }
        return S_OK;
    };
    EXPECT_EQ(failing(2, VT_EMPTY, nullptr), DISP_E_MEMBERNOTFOUND);
    LPDISPATCH object = nullptr;
    EXPECT_EQ(failing(kEcho, VT_DISPATCH, &object), DISP_E_TYPEMISMATCH) << "a number is no object";
    EXPECT_EQ(object, nullptr);
}

class Thrower : public CWnd {
protected:
    void OnThrow() { throw new COleDispatchException("The drawing is not there.", E_INVALIDARG); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Thrower, CWnd)
ON_COMMAND(kCommand, &Thrower::OnThrow)
END_MESSAGE_MAP()

class UncaughtTest : public vndk::test::DesktopFixture {};

TEST_F(UncaughtTest, TellsTheUserWhatAHandlerThrew) {
    CWinApp application("uncaught-test");
    Thrower window;
    ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                nullptr, nullptr));
    std::string told;
    vndk::win32::UserScript user(screen);
    user.in("uncaught-test").waitForWindow();
    user.call([&] {
        const HWND box = ::FindWindowA(nullptr, "uncaught-test");
        for (HWND child = ::GetWindow(box, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
            char text[200] = "";
            ::GetWindowTextA(child, text, sizeof text);
            told += text;
        }
    });
    user.press(VK_RETURN).waitUntilGone();
    window.SendMessage(WM_COMMAND, kCommand);
    EXPECT_TRUE(user.finish()) << user.failure();
    EXPECT_NE(told.find("The drawing is not there."), std::string::npos) << told;
    window.DestroyWindow();
}

} // namespace
