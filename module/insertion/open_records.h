// Records of the working database, opened by name.
#pragma once

#include "db/database.h"
#include "mfc/afx.h"

#include <utility>

/// The block of that name, open for read; the caller closes it. Null without a working database, or if the block
/// table doesn't open or has no such name.
AcDbBlockTableRecord* OpenBlockForRead(CString name);

/// The record that new entities go into: "*Model_Space" while TILEMODE is on, else "*Paper_Space". Open for write; the
/// caller closes it. Null without a working database or when a step fails.
AcDbBlockTableRecord* OpenCurrentSpace();

/// Is there a block of that name? False without a working database, or if the block table doesn't open.
bool BlockExists(CString name);

/// Closes an object at the end of its scope, or deletes it if it never came into a drawing.
template <class T>
class COpened {
public:
    explicit COpened(T* pObject = nullptr) : m_pObject(pObject) {}
    COpened(const COpened&) = delete;
    COpened& operator=(const COpened&) = delete;
    ~COpened() { Attach(nullptr); }

    /// Lets go of what is held and holds this one.
    void Attach(T* pObject) {
        if (m_pObject && m_pObject->isResident())
            m_pObject->close();
        else
            delete m_pObject;
        m_pObject = pObject;
    }

    /// Lets go of what is held without closing it.
    T* Detach() { return std::exchange(m_pObject, nullptr); }

    T* get() const { return m_pObject; }
    T* operator->() const { return m_pObject; }
    explicit operator bool() const { return m_pObject != nullptr; }

private:
    T* m_pObject;
};
