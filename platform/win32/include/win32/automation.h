// Automation: objects that are called by numbers, with arguments of types that are found at run time.
//
// What an object is asked for here is a property or a method by its number; its names, type libraries and other
// interfaces are not part of this, so neither is IUnknown::QueryInterface. Objects count their references and end with
// the last one. A BSTR is text of 16-bit units with its length before it, owned by whoever holds it.
#pragma once

#include "win32/types.h"

using LCID = DWORD;
using DISPID = LONG;
using VARTYPE = WORD;
using VARIANT_BOOL = SHORT; // 0 or -1
using SCODE = LONG;
using OLECHAR = WCHAR;
using BSTR = OLECHAR*;

struct IDispatch;
using LPDISPATCH = IDispatch*;

constexpr VARTYPE VT_EMPTY = 0;
constexpr VARTYPE VT_I4 = 3;
constexpr VARTYPE VT_BSTR = 8;
constexpr VARTYPE VT_DISPATCH = 9;
constexpr VARTYPE VT_BOOL = 11;

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

struct VARIANT {
    VARTYPE vt; // says which of the members counts
    WORD wReserved1;
    WORD wReserved2;
    WORD wReserved3;
    union {
        LONG lVal;
        VARIANT_BOOL boolVal;
        BSTR bstrVal;
        IDispatch* pdispVal;
    };
};
using VARIANTARG = VARIANT;

struct DISPPARAMS {
    VARIANTARG* rgvarg; // the last argument first
    DISPID* rgdispidNamedArgs;
    UINT cArgs;
    UINT cNamedArgs;
};

struct EXCEPINFO {
    BSTR bstrSource; // these two are the caller's to free
    BSTR bstrDescription;
    SCODE scode;
};

constexpr WORD DISPATCH_METHOD = 1;
constexpr WORD DISPATCH_PROPERTYGET = 2;

constexpr HRESULT S_OK = 0;
constexpr HRESULT DISP_E_MEMBERNOTFOUND = static_cast<HRESULT>(0x80020003);
constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005);
constexpr HRESULT DISP_E_EXCEPTION = static_cast<HRESULT>(0x80020009); // EXCEPINFO tells more
constexpr HRESULT DISP_E_BADPARAMCOUNT = static_cast<HRESULT>(0x8002000E);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
constexpr bool SUCCEEDED(HRESULT result) { return result >= 0; }
constexpr bool FAILED(HRESULT result) { return result < 0; }

struct IUnknown {
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};

struct IDispatch : IUnknown {
    /// A result is the caller's: to be cleared, or released. `result`, `problem` and `badArgument` may be null;
    /// `badArgument` gets the index of the argument of the wrong type.
    virtual HRESULT Invoke(DISPID member, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                           EXCEPINFO* problem, UINT* badArgument) = 0;

protected:
    ~IDispatch() = default;
};

/// A copy of `length` units; null units leave it zeroed. Null without memory.
BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
/// Null is fine.
void SysFreeString(BSTR text);
/// 0 for null.
UINT SysStringLen(BSTR text);

void VariantInit(VARIANT* variant);
/// Frees its text, releases its object, and makes it VT_EMPTY.
HRESULT VariantClear(VARIANT* variant);
