#include "mfc/dispatch.h"

#include "win32/codepage.h"

#include <cstdarg>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

IMPLEMENT_DYNAMIC(COleException, CException)
IMPLEMENT_DYNAMIC(COleDispatchException, CException)

namespace {

BOOL copySentence(const CString& text, LPSTR buffer, UINT size) {
    if (buffer == nullptr || size == 0)
        return FALSE;
    const std::string_view shown = text.View().substr(0, size - 1);
    std::memcpy(buffer, shown.data(), shown.size());
    buffer[shown.size()] = '\0';
    return TRUE;
}

BSTR wideText(LPCSTR text) {
    std::u16string wide;
    for (const char each : std::string_view(text != nullptr ? text : ""))
        wide += static_cast<char16_t>(vndk::win32::characterFromByte(each));
    return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

CString narrowText(BSTR text) {
    CString narrow;
    for (UINT i = 0; i < SysStringLen(text); ++i)
        narrow += vndk::win32::byteFromCharacter(text[i]).value_or('?');
    return narrow;
}

struct FreeText {
    void operator()(OLECHAR* text) const { SysFreeString(text); }
};

[[noreturn]] void throwProblem(HRESULT status, EXCEPINFO& problem) {
    if (status != DISP_E_EXCEPTION)
        throw new COleException(status);
    const CString description = narrowText(problem.bstrDescription);
    SysFreeString(problem.bstrDescription);
    SysFreeString(problem.bstrSource);
    throw new COleDispatchException(description, problem.scode);
}

/// FALSE for a result of another type than the one that was asked for.
BOOL storeResult(const VARIANT& answer, VARTYPE type, void* result) {
    if (answer.vt != type)
        return FALSE;
    if (type == VT_DISPATCH)
        *static_cast<LPDISPATCH*>(result) = answer.pdispVal;
    else if (type == VT_I4)
        *static_cast<LONG*>(result) = answer.lVal;
    else
        return FALSE;
    return TRUE;
}

} // namespace

BOOL COleException::GetErrorMessage(LPSTR buffer, UINT size, UINT*) const {
    CString text;
    text.Format("A call of another program's object failed (error %08X).", static_cast<unsigned>(m_sc));
    return copySentence(text, buffer, size);
}

BOOL COleDispatchException::GetErrorMessage(LPSTR buffer, UINT size, UINT*) const {
    return copySentence(m_strDescription, buffer, size);
}

void COleDispatchDriver::ReleaseDispatch() {
    if (m_lpDispatch != nullptr && m_bAutoRelease != FALSE)
        m_lpDispatch->Release();
    m_lpDispatch = nullptr;
}

void COleDispatchDriver::InvokeHelper(DISPID member, WORD flags, VARTYPE resultType, void* result, const BYTE* types,
                                      ...) {
    if (m_lpDispatch == nullptr)
        throw new COleException(E_INVALIDARG);
    const std::size_t count = types != nullptr ? std::strlen(reinterpret_cast<const char*>(types)) : 0;
    std::vector<VARIANT> arguments(count); // the last one first
    std::vector<std::unique_ptr<OLECHAR, FreeText>> texts;
    va_list values;
    va_start(values, types);
    for (std::size_t i = 0; i < count; ++i) {
        VARIANT& argument = arguments[count - 1 - i];
        if (types[i] == VTS_VARIANT[0]) {
            argument = *va_arg(values, const VARIANT*);
        } else if (types[i] == VTS_BSTR[0]) {
            texts.emplace_back(wideText(va_arg(values, LPCSTR)));
            argument.vt = VT_BSTR;
            argument.bstrVal = texts.back().get();
        } else {
            argument.vt = VT_I4;
            argument.lVal = va_arg(values, LONG);
        }
    }
    va_end(values);
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(count), 0};
    VARIANT answer;
    VariantInit(&answer);
    EXCEPINFO problem{};
    const HRESULT status = m_lpDispatch->Invoke(member, 0, flags, &parameters, &answer, &problem, nullptr);
    if (FAILED(status))
        throwProblem(status, problem);
    if (resultType != VT_EMPTY && storeResult(answer, resultType, result) != FALSE)
        return;
    VariantClear(&answer);
    if (resultType != VT_EMPTY)
        throw new COleException(DISP_E_TYPEMISMATCH);
}
