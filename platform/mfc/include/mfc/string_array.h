// CStringArray: a growing array of texts, counted from 0.
#pragma once

#include "mfc/object.h"
#include "mfc/string.h"

#include <vector>

class CStringArray : public CObject {
    DECLARE_DYNAMIC(CStringArray)

public:
    CStringArray() = default;
    CStringArray(const CStringArray&) = delete;
    CStringArray& operator=(const CStringArray&) = delete;

    [[nodiscard]] int GetSize() const { return static_cast<int>(m_texts.size()); }
    /// The last index; -1 when empty.
    [[nodiscard]] int GetUpperBound() const { return GetSize() - 1; }
    void SetSize(int size) { m_texts.resize(static_cast<std::size_t>(size)); }
    void RemoveAll() { m_texts.clear(); }

    /// REQUIRES: 0 <= index < GetSize(), also for the others that take an index of an element.
    [[nodiscard]] const CString& GetAt(int index) const;
    [[nodiscard]] CString& ElementAt(int index);
    void SetAt(int index, const CString& text) { ElementAt(index) = text; }
    const CString& operator[](int index) const { return GetAt(index); }
    CString& operator[](int index) { return ElementAt(index); }

    /// Returns the index of the new element.
    int Add(const CString& text);
    /// Returns the index of the first element that was added.
    int Append(const CStringArray& other);
    void Copy(const CStringArray& other) { m_texts = other.m_texts; }
    /// Both grow the array by empty texts when `index` lies past its end.
    void SetAtGrow(int index, const CString& text);
    void InsertAt(int index, const CString& text, int count = 1);
    void RemoveAt(int index, int count = 1);

private:
    std::vector<CString> m_texts;
};
