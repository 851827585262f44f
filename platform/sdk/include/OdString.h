#pragma once
// Wide text of the drawing SDK. Library objects and the drawing speak OdString; the UI converts
// to wxString at its boundary (see platform/host OdStringWx.h).
#include <cstdarg>
#include <functional>
#include <string>

class OdString {
public:
    OdString() = default;
    OdString(const wchar_t* text) : m_text(text ? text : L"") {}
    OdString(const wchar_t* text, size_t length) : m_text(text, length) {}
    OdString(std::wstring text) : m_text(std::move(text)) {}
    OdString(const OdString&) = default;
    OdString(OdString&&) noexcept = default;
    OdString& operator=(const OdString&) = default;
    OdString& operator=(OdString&&) noexcept = default;

    static OdString fromUtf8(const std::string& utf8);
    static OdString fromUtf8(const char* utf8) { return fromUtf8(std::string(utf8 ? utf8 : "")); }
    std::string toUtf8() const;

    // printf-style formatting with wide format strings (%ls for wide text, %d, %u, %g, ...).
    static OdString formatted(const wchar_t* format, ...);
    OdString& format(const wchar_t* format, ...);
    OdString& formatV(const wchar_t* format, va_list args);

    const wchar_t* c_str() const { return m_text.c_str(); }
    operator const wchar_t*() const { return m_text.c_str(); }
    const std::wstring& str() const { return m_text; }

    int getLength() const { return static_cast<int>(m_text.size()); }
    bool isEmpty() const { return m_text.empty(); }
    void empty() { m_text.clear(); }
    wchar_t getAt(int index) const;

    int compare(const OdString& other) const;
    int iCompare(const OdString& other) const;  // case-insensitive, locale independent for Latin text
    int find(wchar_t ch, int start = 0) const;
    int find(const OdString& text, int start = 0) const;
    int findRev(wchar_t ch) const;
    int iFind(const OdString& text) const;  // case-insensitive search, -1 when absent

    OdString left(int count) const;
    OdString right(int count) const;
    OdString mid(int start, int count = -1) const;
    OdString& trimLeft();
    OdString& trimRight();
    OdString& makeUpper();
    OdString& makeLower();
    int replace(const OdString& from, const OdString& to);

    OdString& operator+=(const OdString& other) { m_text += other.m_text; return *this; }
    OdString& operator+=(wchar_t ch) { m_text += ch; return *this; }
    friend OdString operator+(const OdString& a, const OdString& b) { return OdString(a.m_text + b.m_text); }
    friend OdString operator+(const OdString& a, const wchar_t* b) { return OdString(a.m_text + (b ? b : L"")); }
    friend OdString operator+(const wchar_t* a, const OdString& b) { return OdString((a ? a : L"") + b.m_text); }

    friend bool operator==(const OdString& a, const OdString& b) { return a.m_text == b.m_text; }
    friend bool operator!=(const OdString& a, const OdString& b) { return a.m_text != b.m_text; }
    friend bool operator<(const OdString& a, const OdString& b) { return a.m_text < b.m_text; }
    friend bool operator==(const OdString& a, const wchar_t* b) { return a.m_text == (b ? b : L""); }
    friend bool operator!=(const OdString& a, const wchar_t* b) { return !(a == b); }

    static const OdString kEmpty;

private:
    std::wstring m_text;
};

template <>
struct std::hash<OdString> {
    size_t operator()(const OdString& s) const noexcept { return std::hash<std::wstring>()(s.str()); }
};
