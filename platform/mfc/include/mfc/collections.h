// Lists, arrays and maps.
//
//     CObList list;
//     list.AddTail(entry);
//     for (POSITION at = list.GetHeadPosition(); at != nullptr;) {
//         CEntry* next = static_cast<CEntry*>(list.GetNext(at));
//
// A POSITION stays valid until its own element is removed. Containers of pointers don't own what they hold.
#pragma once

#include "mfc/object.h"
#include "mfc/string.h"

#include <cassert>
#include <iterator>
#include <unordered_map>
#include <vector>

struct AFX_POSITION;
using POSITION = AFX_POSITION*;

/// A doubly linked list. REQUIRES of all members that take a POSITION: it is one of this list's.
template <typename T>
class CList : public CObject {
public:
    CList() = default;
    ~CList() override { RemoveAll(); }
    CList(const CList&) = delete;
    CList& operator=(const CList&) = delete;

    [[nodiscard]] int GetCount() const { return m_nCount; }
    [[nodiscard]] BOOL IsEmpty() const { return m_nCount == 0; }
    [[nodiscard]] T& GetHead() { return m_pHead->value; }
    [[nodiscard]] T& GetTail() { return m_pTail->value; }
    [[nodiscard]] POSITION GetHeadPosition() const { return positionOf(m_pHead); }
    [[nodiscard]] POSITION GetTailPosition() const { return positionOf(m_pTail); }
    /// Both answer the element and move on; null behind the last.
    T& GetNext(POSITION& position) const {
        Node* node = nodeOf(position);
        position = positionOf(node->next);
        return node->value;
    }
    T& GetPrev(POSITION& position) const {
        Node* node = nodeOf(position);
        position = positionOf(node->previous);
        return node->value;
    }
    [[nodiscard]] T& GetAt(POSITION position) const { return nodeOf(position)->value; }
    void SetAt(POSITION position, const T& value) { nodeOf(position)->value = value; }

    POSITION AddHead(const T& value) { return positionOf(link(nullptr, m_pHead, value)); }
    POSITION AddTail(const T& value) { return positionOf(link(m_pTail, nullptr, value)); }
    POSITION InsertBefore(POSITION position, const T& value) {
        Node* node = nodeOf(position);
        return positionOf(link(node->previous, node, value));
    }
    POSITION InsertAfter(POSITION position, const T& value) {
        Node* node = nodeOf(position);
        return positionOf(link(node, node->next, value));
    }
    T RemoveHead() { return unlink(m_pHead); }
    T RemoveTail() { return unlink(m_pTail); }
    void RemoveAt(POSITION position) { unlink(nodeOf(position)); }
    void RemoveAll() {
        while (m_pHead != nullptr)
            unlink(m_pHead);
    }
    /// Null when it isn't there. `after`: the search begins behind it.
    [[nodiscard]] POSITION Find(const T& value, POSITION after = nullptr) const {
        for (Node* node = after != nullptr ? nodeOf(after)->next : m_pHead; node != nullptr; node = node->next)
            if (node->value == value)
                return positionOf(node);
        return nullptr;
    }
    [[nodiscard]] POSITION FindIndex(int index) const {
        Node* node = index >= 0 ? m_pHead : nullptr;
        for (; node != nullptr && index > 0; --index)
            node = node->next;
        return positionOf(node);
    }

private:
    struct Node {
        T value;
        Node* previous;
        Node* next;
    };
    static Node* nodeOf(POSITION position) {
        assert(position != nullptr && "a position past the end has no element");
        return reinterpret_cast<Node*>(position);
    }
    static POSITION positionOf(Node* node) { return reinterpret_cast<POSITION>(node); }

    Node* link(Node* previous, Node* next, const T& value) {
        Node* node = new Node{value, previous, next};
        (previous != nullptr ? previous->next : m_pHead) = node;
        (next != nullptr ? next->previous : m_pTail) = node;
        ++m_nCount;
        return node;
    }
    T unlink(Node* node) {
        assert(node != nullptr && "an empty list has nothing to remove");
        (node->previous != nullptr ? node->previous->next : m_pHead) = node->next;
        (node->next != nullptr ? node->next->previous : m_pTail) = node->previous;
        T value = std::move(node->value);
        delete node;
        --m_nCount;
        return value;
    }

    Node* m_pHead = nullptr;
    Node* m_pTail = nullptr;
    int m_nCount = 0;
};

/// A growing array, counted from 0. REQUIRES of all members that take an index of an element: it is one.
template <typename T>
class CArray : public CObject {
public:
    CArray() = default;
    CArray(const CArray&) = delete;
    CArray& operator=(const CArray&) = delete;

    [[nodiscard]] int GetSize() const { return static_cast<int>(m_values.size()); }
    [[nodiscard]] int GetUpperBound() const { return GetSize() - 1; }
    /// `growBy` is taken for the platform's sake: growing doubles.
    void SetSize(int size, int /*growBy*/ = -1) { m_values.resize(static_cast<std::size_t>(size)); }
    void RemoveAll() { m_values.clear(); }
    [[nodiscard]] T& ElementAt(int index) {
        assert(index >= 0 && index < GetSize() && "an index lies inside the array");
        return m_values[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] const T& GetAt(int index) const { return const_cast<CArray*>(this)->ElementAt(index); }
    void SetAt(int index, const T& value) { ElementAt(index) = value; }
    const T& operator[](int index) const { return GetAt(index); }
    T& operator[](int index) { return ElementAt(index); }
    [[nodiscard]] T* GetData() { return m_values.data(); }
    [[nodiscard]] const T* GetData() const { return m_values.data(); }
    /// The index of the new element.
    int Add(const T& value) {
        m_values.push_back(value);
        return GetUpperBound();
    }
    void SetAtGrow(int index, const T& value) {
        if (index >= GetSize())
            SetSize(index + 1);
        SetAt(index, value);
    }
    void InsertAt(int index, const T& value, int count = 1) {
        if (index > GetSize())
            SetSize(index);
        m_values.insert(m_values.begin() + index, static_cast<std::size_t>(count), value);
    }
    void RemoveAt(int index, int count = 1) {
        assert(index >= 0 && count >= 0 && index + count <= GetSize() && "what is removed lies inside the array");
        m_values.erase(m_values.begin() + index, m_values.begin() + index + count);
    }

private:
    std::vector<T> m_values;
};

struct AFX_HASH {
    std::size_t operator()(const CString& text) const { return std::hash<std::string_view>()(text.View()); }
    template <typename T>
    std::size_t operator()(const T& value) const {
        return std::hash<T>()(value);
    }
};

/// A map without an order.
template <typename K, typename V>
class CMap : public CObject {
public:
    CMap() = default;
    CMap(const CMap&) = delete;
    CMap& operator=(const CMap&) = delete;

    [[nodiscard]] int GetCount() const { return static_cast<int>(m_values.size()); }
    [[nodiscard]] BOOL IsEmpty() const { return m_values.empty(); }
    /// FALSE, and `value` unchanged, when the key is missing.
    BOOL Lookup(const K& key, V& value) const {
        const auto found = m_values.find(key);
        if (found == m_values.end())
            return FALSE;
        value = found->second;
        return TRUE;
    }
    void SetAt(const K& key, const V& value) { m_values[key] = value; }
    V& operator[](const K& key) { return m_values[key]; }
    BOOL RemoveKey(const K& key) { return m_values.erase(key) != 0; }
    void RemoveAll() { m_values.clear(); }
    [[nodiscard]] POSITION GetStartPosition() const { return m_values.empty() ? nullptr : positionOf(1); }
    /// Elements must not be added or removed between two calls.
    void GetNextAssoc(POSITION& position, K& key, V& value) const {
        const std::size_t index = reinterpret_cast<std::size_t>(position);
        auto at = m_values.begin();
        if (index != 1 && m_nNext == index)
            at = m_next;
        else
            std::advance(at, static_cast<std::ptrdiff_t>(index - 1));
        key = at->first;
        value = at->second;
        m_next = ++at;
        m_nNext = index + 1;
        position = index < m_values.size() ? positionOf(index + 1) : nullptr;
    }

private:
    static POSITION positionOf(std::size_t index) { return reinterpret_cast<POSITION>(index); }

    std::unordered_map<K, V, AFX_HASH> m_values;
    // Where the walk that GetNextAssoc makes has come to, so that a whole walk visits each element once.
    mutable typename std::unordered_map<K, V, AFX_HASH>::const_iterator m_next;
    mutable std::size_t m_nNext = 0;
};

class CObList : public CList<CObject*> {};
class CPtrList : public CList<void*> {};
class CStringList : public CList<CString> {};

class CObArray : public CArray<CObject*> {};
class CPtrArray : public CArray<void*> {};
class CByteArray : public CArray<BYTE> {};
class CWordArray : public CArray<WORD> {};
class CDWordArray : public CArray<DWORD> {};
class CUIntArray : public CArray<UINT> {};

class CMapStringToString : public CMap<CString, CString> {};
class CMapStringToPtr : public CMap<CString, void*> {};
class CMapStringToOb : public CMap<CString, CObject*> {};
class CMapPtrToPtr : public CMap<void*, void*> {};
class CMapWordToPtr : public CMap<WORD, void*> {};
