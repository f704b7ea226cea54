// CString: 8-bit text (code page 1252) with value semantics. Short texts live inside the object.
//
// Positions count bytes from 0; -1 means "not found". A position or count outside the text is clipped, never an error.
#pragma once

#include "win32/types.h"

#include <cstdarg>
#include <string>
#include <string_view>

class CString {
public:
    CString() = default;
    CString(LPCSTR text) : m_text(text != nullptr ? text : "") {}
    CString(LPCSTR text, int length) : m_text(text, static_cast<std::size_t>(length)) {}
    explicit CString(std::string_view text) : m_text(text) {}
    explicit CString(char c, int repeat = 1) : m_text(static_cast<std::size_t>(repeat > 0 ? repeat : 0), c) {}

    operator LPCSTR() const { return m_text.c_str(); }
    [[nodiscard]] std::string_view View() const { return m_text; }

    [[nodiscard]] int GetLength() const { return static_cast<int>(m_text.size()); }
    [[nodiscard]] BOOL IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    /// REQUIRES: 0 <= index < GetLength().
    [[nodiscard]] char GetAt(int index) const;
    void SetAt(int index, char c);
    char operator[](int index) const { return GetAt(index); }

    CString& operator+=(const CString& text);
    CString& operator+=(LPCSTR text);
    CString& operator+=(char c);

    [[nodiscard]] CString Left(int count) const;
    [[nodiscard]] CString Right(int count) const;
    [[nodiscard]] CString Mid(int first) const;
    [[nodiscard]] CString Mid(int first, int count) const;
    /// The leading characters that all stand, or none of which stands, in `set`.
    [[nodiscard]] CString SpanIncluding(LPCSTR set) const;
    [[nodiscard]] CString SpanExcluding(LPCSTR set) const;

    [[nodiscard]] int Find(char c, int start = 0) const;
    [[nodiscard]] int Find(LPCSTR text, int start = 0) const;
    [[nodiscard]] int ReverseFind(char c) const;
    [[nodiscard]] int FindOneOf(LPCSTR set) const;

    [[nodiscard]] int Compare(LPCSTR other) const;
    [[nodiscard]] int CompareNoCase(LPCSTR other) const;

    void MakeUpper();
    void MakeLower();
    void MakeReverse();
    /// Without arguments blanks, tabs and line ends go.
    void TrimLeft();
    void TrimRight();
    void TrimLeft(char c);
    void TrimRight(char c);
    /// Replaces every occurrence, left to right, and returns their number. An empty `old` replaces nothing.
    int Replace(LPCSTR old, LPCSTR fresh);
    int Replace(char old, char fresh);
    /// Both return the new length.
    int Insert(int index, LPCSTR text);
    int Delete(int index, int count = 1);
    /// Removes every `c` and returns how many there were.
    int Remove(char c);

    void Format(LPCSTR format, ...) __attribute__((format(printf, 2, 3)));
    /// The format is string `formatId` of the resources.
    void Format(UINT formatId, ...);
    void FormatV(LPCSTR format, va_list arguments) __attribute__((format(printf, 2, 0)));

    /// A buffer of at least `minimum` characters beside the NUL, holding the text; valid until ReleaseBuffer, which
    /// has to follow before any other call.
    LPSTR GetBuffer(int minimum);
    /// Takes the buffer's text over: up to its NUL, or `length` characters.
    void ReleaseBuffer(int length = -1);

    /// Loads a string of the resources, searched as AfxFindStringHandle does. FALSE (and an empty text) when missing.
    BOOL LoadString(UINT id);

private:
    std::string m_text;
};

CString operator+(const CString& a, const CString& b);
CString operator+(const CString& a, LPCSTR b);
CString operator+(LPCSTR a, const CString& b);
CString operator+(const CString& a, char b);
CString operator+(char a, const CString& b);

// All comparisons are by bytes and take case into account.
bool operator==(const CString& a, const CString& b);
bool operator==(const CString& a, LPCSTR b);
bool operator<(const CString& a, const CString& b);
