#include "mfc/string_array.h"

#include <algorithm>
#include <cassert>

IMPLEMENT_DYNAMIC(CStringArray, CObject)

const CString& CStringArray::GetAt(int index) const {
    assert(index >= 0 && index < GetSize() && "CStringArray: index outside the array");
    return m_texts[static_cast<std::size_t>(index)];
}

CString& CStringArray::ElementAt(int index) {
    assert(index >= 0 && index < GetSize() && "CStringArray: index outside the array");
    return m_texts[static_cast<std::size_t>(index)];
}

int CStringArray::Add(const CString& text) {
    m_texts.push_back(text);
    return GetUpperBound();
}

int CStringArray::Append(const CStringArray& other) {
    const int first = GetSize();
    m_texts.reserve(m_texts.size() + other.m_texts.size());
    for (int i = 0, count = other.GetSize(); i < count; ++i) // By index: `other` may be this array.
        m_texts.push_back(other.m_texts[static_cast<std::size_t>(i)]);
    return first;
}

void CStringArray::SetAtGrow(int index, const CString& text) {
    const CString kept = text; // It may be an element, which growing would move.
    if (index >= GetSize())
        SetSize(index + 1);
    SetAt(index, kept);
}

void CStringArray::InsertAt(int index, const CString& text, int count) {
    assert(index >= 0 && count >= 0 && "CStringArray: a negative place or count");
    const CString kept = text;
    if (index > GetSize())
        SetSize(index);
    m_texts.insert(m_texts.begin() + index, static_cast<std::size_t>(count), kept);
}

void CStringArray::RemoveAt(int index, int count) {
    assert(index >= 0 && count >= 0 && index + count <= GetSize() && "CStringArray: a range outside the array");
    m_texts.erase(m_texts.begin() + index, m_texts.begin() + index + count);
}
