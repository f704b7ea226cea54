#include "mfc/object.h"

const CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject), nullptr};

CObject::~CObject() = default;

const CRuntimeClass* CObject::GetRuntimeClass() const { return RUNTIME_CLASS(CObject); }

BOOL CObject::IsKindOf(const CRuntimeClass* wanted) const { return GetRuntimeClass()->IsDerivedFrom(wanted); }

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
    for (const CRuntimeClass* current = this; current != nullptr; current = current->m_pBaseClass)
        if (current == base)
            return TRUE;
    return FALSE;
}

CObject* AfxDynamicDownCast(const CRuntimeClass* wanted, CObject* object) {
    return object != nullptr && object->IsKindOf(wanted) ? object : nullptr;
}
