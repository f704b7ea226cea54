#include "ap/automation.h"

#include "ed/host.h"
#include "win32/codepage.h"

namespace vndk::host {

namespace {

std::u16string wide(std::string_view text) {
    std::u16string result;
    for (const char each : text)
        result += static_cast<char16_t>(win32::characterFromByte(each));
    return result;
}

/// A character that the code page lacks becomes one that no file's name has.
std::string narrow(BSTR text) {
    std::string result;
    for (UINT i = 0; i < SysStringLen(text); ++i)
        result += win32::byteFromCharacter(text[i]).value_or('?');
    return result;
}

HRESULT refuse(EXCEPINFO* problem, std::string_view sentence) {
    const std::u16string text = wide(sentence);
    if (problem)
        *problem = {nullptr, SysAllocStringLen(text.data(), static_cast<UINT>(text.size())), E_INVALIDARG};
    return DISP_E_EXCEPTION;
}

void give(VARIANT* result, IDispatch* object) {
    if (!result) {
        object->Release();
        return;
    }
    result->vt = VT_DISPATCH;
    result->pdispVal = object;
}

/// An object that lives as long as the program.
class Lasting : public IDispatch {
public:
    ULONG AddRef() override { return 1; }
    ULONG Release() override { return 1; }

protected:
    ~Lasting() = default;
};

/// Stands for an open drawing; it has neither properties nor methods yet that anybody asks for.
class DocumentObject final : public IDispatch {
public:
    ULONG AddRef() override { return ++references_; }
    ULONG Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }
    HRESULT Invoke(DISPID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }

private:
    ~DocumentObject() = default;
    ULONG references_ = 1;
};

class DocumentsObject final : public Lasting {
public:
    HRESULT Invoke(DISPID member, LCID /*locale*/, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                   EXCEPINFO* problem, UINT* badArgument) override {
        if (member != kOpenMethod || (flags & DISPATCH_METHOD) == 0)
            return DISP_E_MEMBERNOTFOUND;
        const UINT count = parameters ? parameters->cArgs : 0;
        if (count < 1 || count > 2)
            return DISP_E_BADPARAMCOUNT;
        const VARIANT& path = parameters->rgvarg[count - 1];
        const bool readOnly = count == 2 && parameters->rgvarg[0].vt == VT_BOOL && parameters->rgvarg[0].boolVal;
        if (path.vt != VT_BSTR) {
            if (badArgument)
                *badArgument = count - 1;
            return DISP_E_TYPEMISMATCH;
        }
        return open(narrow(path.bstrVal), readOnly, result, problem);
    }

private:
    static HRESULT open(const std::string& path, bool readOnly, VARIANT* result, EXCEPINFO* problem) {
        Host* const host = Host::current();
        if (!host)
            return refuse(problem, "There is no program to open a drawing in.");
        if (readOnly)
            return refuse(problem, "Drawings can't be opened for reading only. Open it for writing.");
        if (host->documents().appContextOpenDocument(path.c_str()) != Acad::eOk)
            return refuse(problem, host->documents().lastError());
        give(result, new DocumentObject);
        return S_OK;
    }
};

class ApplicationObject final : public Lasting {
public:
    HRESULT Invoke(DISPID member, LCID /*locale*/, WORD flags, DISPPARAMS* /*parameters*/, VARIANT* result,
                   EXCEPINFO* /*problem*/, UINT* /*badArgument*/) override {
        if (member != kDocumentsProperty || (flags & DISPATCH_PROPERTYGET) == 0)
            return DISP_E_MEMBERNOTFOUND;
        static DocumentsObject documents;
        give(result, &documents);
        return S_OK;
    }
};

} // namespace

IDispatch* applicationObject() {
    static ApplicationObject application;
    return &application;
}

} // namespace vndk::host
