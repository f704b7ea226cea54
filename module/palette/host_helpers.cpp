#include "palette/host_helpers.h"

#include "ads/ads.h"
#include "ap/document.h"

namespace {

const char* const kCancelTwice = "\x1b\x1b";

// Numbers in the host's automation interface.
constexpr DISPID kDocuments = 32;
constexpr DISPID kOpen = 0x60020005;

} // namespace

CString CoordToText(double value) {
    constexpr int kDecimal = 2;
    constexpr int kPlaces = 8;
    char text[512]; // the largest number has 309 digits before its point
    return acdbRToS(value, kDecimal, kPlaces, text) == RTNORM ? CString(text) : CString("0.0");
}

CString IntToText(long value) {
    CString text;
    text.Format("%ld", value);
    return text;
}

void FocusCommandLine() {
    if (CWnd* pCommandLine = acedGetAcadDockCmdLine())
        pCommandLine->SetFocus();
}

void SendToCommandLine(const CString& text) {
    FocusCommandLine();
    AcApDocument* pDocument = acDocManagerPtr()->curDocument();
    FocusCommandLine();
    acDocManagerPtr()->sendStringToExecute(pDocument, text, false, true, false);
}

void SendInsertion(const char* pszFunction, const CString& strTarget, const double* pPoint) {
    SendToCommandLine(CString(kCancelTwice) + "(" + pszFunction + " \"" + strTarget + "\" (list " +
                      CoordToText(pPoint[0]) + " " + CoordToText(pPoint[1]) + " " + CoordToText(pPoint[2]) + ")) ");
}

LPDISPATCH OpenDrawing(const char* path) {
    CWinApp* pApp = acedGetAcadWinApp();
    if (!pApp)
        return nullptr;
    COleDispatchDriver application(pApp->GetIDispatch(TRUE), TRUE);
    LPDISPATCH pDocuments = nullptr;
    application.InvokeHelper(kDocuments, DISPATCH_PROPERTYGET, VT_DISPATCH, &pDocuments, nullptr);
    COleDispatchDriver documents(pDocuments, TRUE);
    VARIANT readOnly;
    VariantInit(&readOnly);
    readOnly.vt = VT_BOOL;
    readOnly.boolVal = VARIANT_FALSE;
    LPDISPATCH pResult = nullptr;
    static const BYTE kParameters[] = VTS_BSTR VTS_VARIANT;
    documents.InvokeHelper(kOpen, DISPATCH_METHOD, VT_DISPATCH, &pResult, kParameters, path, &readOnly);
    return pResult;
}
