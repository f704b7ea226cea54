// COleDispatchDriver: calls of an automation object, and what they throw.
//
//     COleDispatchDriver application(dispatch);           // releases it at its end
//     LPDISPATCH documents = nullptr;
//     application.InvokeHelper(32, DISPATCH_PROPERTYGET, VT_DISPATCH, &documents, nullptr);
#pragma once

#include "mfc/exception.h"
#include "win32/automation.h"

// The types of arguments as bytes of a text.
#define VTS_I4 "\x03"      // LONG
#define VTS_VARIANT "\x0C" // const VARIANT*
#define VTS_BSTR "\x0E"    // LPCSTR, which goes over as a BSTR

/// A call that failed by its number.
class COleException : public CException {
    DECLARE_DYNAMIC(COleException)

public:
    explicit COleException(SCODE sc) : m_sc(sc) {}
    BOOL GetErrorMessage(LPSTR buffer, UINT size, UINT* helpContext = nullptr) const override;

    SCODE m_sc;
};

/// A call that the object refused in words.
class COleDispatchException : public CException {
    DECLARE_DYNAMIC(COleDispatchException)

public:
    COleDispatchException(const CString& description, SCODE sc) : m_strDescription(description), m_scError(sc) {}
    BOOL GetErrorMessage(LPSTR buffer, UINT size, UINT* helpContext = nullptr) const override;

    CString m_strDescription;
    SCODE m_scError;
};

class COleDispatchDriver {
public:
    COleDispatchDriver() = default;
    /// Takes the reference over; with `autoRelease` it is given back at the end.
    explicit COleDispatchDriver(LPDISPATCH dispatch, BOOL autoRelease = TRUE)
        : m_lpDispatch(dispatch), m_bAutoRelease(autoRelease) {}
    ~COleDispatchDriver() { ReleaseDispatch(); }
    COleDispatchDriver(const COleDispatchDriver&) = delete;
    COleDispatchDriver& operator=(const COleDispatchDriver&) = delete;

    /// Forgets the object; releases it if it was taken over so.
    void ReleaseDispatch();
    /// `types`: the VTS_ bytes of the arguments that follow, or null. `result` gets a LONG for VT_I4, for VT_DISPATCH
    /// an LPDISPATCH, which is the caller's to release; nothing for VT_EMPTY. Throws COleDispatchException or
    /// COleException.
    void InvokeHelper(DISPID member, WORD flags, VARTYPE resultType, void* result, const BYTE* types, ...);

    LPDISPATCH m_lpDispatch = nullptr;
    BOOL m_bAutoRelease = TRUE;
};
