#include "mfc/string.h"

#include "mfc/module_state.h"

#include "win32/codepage.h"
#include "win32/windows.h"

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstring>

namespace {

constexpr const char* kWhite = " \t\r\n\v\f";

int position(std::size_t at) { return at == std::string::npos ? -1 : static_cast<int>(at); }

std::size_t clipped(int value) { return static_cast<std::size_t>(std::max(value, 0)); }

LPCSTR orEmpty(LPCSTR text) { return text != nullptr ? text : ""; }

} // namespace

char CString::GetAt(int index) const {
    assert(index >= 0 && index < GetLength() && "CString: index outside the text");
    return m_text[static_cast<std::size_t>(index)];
}

void CString::SetAt(int index, char c) {
    assert(index >= 0 && index < GetLength() && "CString: index outside the text");
    m_text[static_cast<std::size_t>(index)] = c;
}

CString& CString::operator+=(const CString& text) {
    m_text += text.m_text;
    return *this;
}

CString& CString::operator+=(LPCSTR text) {
    m_text += orEmpty(text);
    return *this;
}

CString& CString::operator+=(char c) {
    m_text += c;
    return *this;
}

CString CString::Left(int count) const { return CString(View().substr(0, clipped(count))); }

CString CString::Right(int count) const {
    const std::size_t kept = std::min(clipped(count), m_text.size());
    return CString(View().substr(m_text.size() - kept));
}

CString CString::Mid(int first) const { return CString(View().substr(std::min(clipped(first), m_text.size()))); }

CString CString::Mid(int first, int count) const {
    return CString(View().substr(std::min(clipped(first), m_text.size()), clipped(count)));
}

CString CString::SpanIncluding(LPCSTR set) const { return CString(View().substr(0, m_text.find_first_not_of(set))); }

CString CString::SpanExcluding(LPCSTR set) const { return CString(View().substr(0, m_text.find_first_of(set))); }

int CString::Find(char c, int start) const { return position(m_text.find(c, clipped(start))); }

int CString::Find(LPCSTR text, int start) const { return position(m_text.find(orEmpty(text), clipped(start))); }

int CString::ReverseFind(char c) const { return position(m_text.rfind(c)); }

int CString::FindOneOf(LPCSTR set) const { return position(m_text.find_first_of(orEmpty(set))); }

int CString::Compare(LPCSTR other) const { return m_text.compare(orEmpty(other)); }

int CString::CompareNoCase(LPCSTR other) const { return vndk::win32::compareNoCase(m_text, orEmpty(other)); }

void CString::MakeUpper() { std::transform(m_text.begin(), m_text.end(), m_text.begin(), vndk::win32::upper1252); }

void CString::MakeLower() { std::transform(m_text.begin(), m_text.end(), m_text.begin(), vndk::win32::lower1252); }

void CString::MakeReverse() { std::reverse(m_text.begin(), m_text.end()); }

void CString::TrimLeft() { m_text.erase(0, m_text.find_first_not_of(kWhite)); }

void CString::TrimRight() { m_text.erase(m_text.find_last_not_of(kWhite) + 1); }

void CString::TrimLeft(char c) { m_text.erase(0, m_text.find_first_not_of(c)); }

void CString::TrimRight(char c) { m_text.erase(m_text.find_last_not_of(c) + 1); }

int CString::Replace(LPCSTR old, LPCSTR fresh) {
    const std::string_view wanted = orEmpty(old);
    if (wanted.empty())
        return 0;
    std::string result;
    int count = 0;
    std::size_t from = 0;
    for (std::size_t at; (at = m_text.find(wanted, from)) != std::string::npos; from = at + wanted.size()) {
        result.append(m_text, from, at - from).append(orEmpty(fresh));
        ++count;
    }
    result.append(m_text, from);
    m_text = std::move(result); // Built aside, for old or fresh may point into this text.
    return count;
}

int CString::Replace(char old, char fresh) {
    const auto count = std::count(m_text.begin(), m_text.end(), old);
    std::replace(m_text.begin(), m_text.end(), old, fresh);
    return static_cast<int>(count);
}

int CString::Insert(int index, LPCSTR text) {
    m_text.insert(std::min(clipped(index), m_text.size()), orEmpty(text));
    return GetLength();
}

int CString::Delete(int index, int count) {
    if (clipped(index) < m_text.size())
        m_text.erase(clipped(index), clipped(count));
    return GetLength();
}

int CString::Remove(char c) { return static_cast<int>(std::erase(m_text, c)); }

void CString::Format(LPCSTR format, ...) {
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::Format(UINT formatId, ...) {
    CString format;
    format.LoadString(formatId);
    va_list arguments;
    va_start(arguments, formatId);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(LPCSTR format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    std::string result(clipped(length), '\0');
    if (length > 0)
        std::vsnprintf(result.data(), result.size() + 1, format, again);
    va_end(again);
    m_text = std::move(result); // Built aside, for an argument may be this very text.
}

LPSTR CString::GetBuffer(int minimum) {
    m_text.resize(std::max(m_text.size(), clipped(minimum)));
    return m_text.data();
}

void CString::ReleaseBuffer(int length) {
    const std::size_t kept = length >= 0 ? clipped(length) : std::strlen(m_text.c_str());
    m_text.resize(std::min(kept, m_text.size()));
}

BOOL CString::LoadString(UINT id) {
    Empty();
    const HINSTANCE instance = AfxFindStringHandle(id);
    if (instance == nullptr)
        return FALSE;
    constexpr int kLongest = 0x10000; // A string's length has 16 bits.
    const int length = LoadStringA(instance, id, GetBuffer(kLongest), kLongest);
    ReleaseBuffer(length);
    return length > 0;
}

CString operator+(const CString& a, const CString& b) {
    CString sum(a);
    sum += b;
    return sum;
}

CString operator+(const CString& a, LPCSTR b) {
    CString sum(a);
    sum += b;
    return sum;
}

CString operator+(LPCSTR a, const CString& b) { return CString(a) + b; }

CString operator+(const CString& a, char b) {
    CString sum(a);
    sum += b;
    return sum;
}

CString operator+(char a, const CString& b) { return CString(a) + b; }

bool operator==(const CString& a, const CString& b) { return a.View() == b.View(); }

bool operator==(const CString& a, LPCSTR b) { return a.Compare(b) == 0; }

bool operator<(const CString& a, const CString& b) { return a.View() < b.View(); }
