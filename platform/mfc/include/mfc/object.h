// CObject: the root of the framework's classes, with run-time class information.
//
//     class CRow : public CObject { DECLARE_DYNAMIC(CRow) ... };     // in the header
//     IMPLEMENT_DYNAMIC(CRow, CObject)                               // in one source file
//     if (object->IsKindOf(RUNTIME_CLASS(CRow))) ...
//
// A class has one CRuntimeClass object, in the library that implements it.
#pragma once

#include "win32/types.h"

struct CRuntimeClass {
    LPCSTR m_lpszClassName;
    int m_nObjectSize;                 ///< bytes
    const CRuntimeClass* m_pBaseClass; ///< null for CObject

    [[nodiscard]] BOOL IsDerivedFrom(const CRuntimeClass* base) const;
};

class CObject {
public:
    virtual ~CObject();

    [[nodiscard]] virtual const CRuntimeClass* GetRuntimeClass() const;
    [[nodiscard]] BOOL IsKindOf(const CRuntimeClass* wanted) const;

    static const CRuntimeClass classCObject;

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

#define DECLARE_DYNAMIC(class_name)                                                                                    \
public:                                                                                                                \
    static const CRuntimeClass class##class_name;                                                                      \
    [[nodiscard]] const CRuntimeClass* GetRuntimeClass() const override;                                               \
                                                                                                                       \
private:

#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                                 \
    const CRuntimeClass class_name::class##class_name = {#class_name, sizeof(class_name),                              \
                                                         RUNTIME_CLASS(base_class_name)};                              \
    const CRuntimeClass* class_name::GetRuntimeClass() const { return RUNTIME_CLASS(class_name); }

/// The object as a `class_name`, or null when it is none (or null already).
#define DYNAMIC_DOWNCAST(class_name, object)                                                                           \
    static_cast<class_name*>(AfxDynamicDownCast(RUNTIME_CLASS(class_name), object))

[[nodiscard]] CObject* AfxDynamicDownCast(const CRuntimeClass* wanted, CObject* object);
