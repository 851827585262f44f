#include "OdString.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>
#include <vector>

const OdString OdString::kEmpty;

namespace {

wchar_t foldCase(wchar_t ch) { return static_cast<wchar_t>(std::towlower(static_cast<wint_t>(ch))); }

void appendUtf8(std::string& out, uint32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

}  // namespace

OdString OdString::fromUtf8(const std::string& utf8) {
    std::wstring out;
    out.reserve(utf8.size());
    size_t i = 0;
    while (i < utf8.size()) {
        unsigned char c = static_cast<unsigned char>(utf8[i]);
        uint32_t cp = 0xFFFD;
        size_t extra = 0;
        if (c < 0x80) { cp = c; }
        else if ((c & 0xE0) == 0xC0) { cp = c & 0x1F; extra = 1; }
        else if ((c & 0xF0) == 0xE0) { cp = c & 0x0F; extra = 2; }
        else if ((c & 0xF8) == 0xF0) { cp = c & 0x07; extra = 3; }
        else { out += static_cast<wchar_t>(0xFFFD); ++i; continue; }
        bool valid = true;
        for (size_t k = 1; k <= extra; ++k) {
            if (i + k >= utf8.size()) { valid = false; break; }
            unsigned char cc = static_cast<unsigned char>(utf8[i + k]);
            if ((cc & 0xC0) != 0x80) { valid = false; break; }
            cp = (cp << 6) | (cc & 0x3F);
        }
        if (!valid) { out += static_cast<wchar_t>(0xFFFD); ++i; continue; }
        out += static_cast<wchar_t>(cp);
        i += extra + 1;
    }
    return OdString(std::move(out));
}

std::string OdString::toUtf8() const {
    std::string out;
    out.reserve(m_text.size());
    for (wchar_t ch : m_text) appendUtf8(out, static_cast<uint32_t>(ch));
    return out;
}

OdString OdString::formatted(const wchar_t* format, ...) {
    OdString result;
    va_list args;
    va_start(args, format);
    result.formatV(format, args);
    va_end(args);
    return result;
}

OdString& OdString::format(const wchar_t* format, ...) {
    va_list args;
    va_start(args, format);
    formatV(format, args);
    va_end(args);
    return *this;
}

OdString& OdString::formatV(const wchar_t* format, va_list args) {
    std::vector<wchar_t> buffer(256);
    for (;;) {
        va_list copy;
        va_copy(copy, args);
        int written = std::vswprintf(buffer.data(), buffer.size(), format, copy);
        va_end(copy);
        if (written >= 0 && static_cast<size_t>(written) < buffer.size()) {
            m_text.assign(buffer.data(), static_cast<size_t>(written));
            return *this;
        }
        if (buffer.size() > (1u << 24)) {
            m_text.clear();
            return *this;
        }
        buffer.resize(buffer.size() * 4);
    }
}

wchar_t OdString::getAt(int index) const {
    if (index < 0 || index >= getLength()) return 0;
    return m_text[static_cast<size_t>(index)];
}

int OdString::compare(const OdString& other) const {
    int c = m_text.compare(other.m_text);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

int OdString::iCompare(const OdString& other) const {
    size_t n = std::min(m_text.size(), other.m_text.size());
    for (size_t i = 0; i < n; ++i) {
        wchar_t a = foldCase(m_text[i]), b = foldCase(other.m_text[i]);
        if (a != b) return a < b ? -1 : 1;
    }
    if (m_text.size() == other.m_text.size()) return 0;
    return m_text.size() < other.m_text.size() ? -1 : 1;
}

int OdString::find(wchar_t ch, int start) const {
    if (start < 0) start = 0;
    size_t pos = m_text.find(ch, static_cast<size_t>(start));
    return pos == std::wstring::npos ? -1 : static_cast<int>(pos);
}

int OdString::find(const OdString& text, int start) const {
    if (start < 0) start = 0;
    size_t pos = m_text.find(text.m_text, static_cast<size_t>(start));
    return pos == std::wstring::npos ? -1 : static_cast<int>(pos);
}

int OdString::findRev(wchar_t ch) const {
    size_t pos = m_text.rfind(ch);
    return pos == std::wstring::npos ? -1 : static_cast<int>(pos);
}

int OdString::iFind(const OdString& text) const {
    auto it = std::search(m_text.begin(), m_text.end(), text.m_text.begin(), text.m_text.end(),
                          [](wchar_t a, wchar_t b) { return foldCase(a) == foldCase(b); });
    return it == m_text.end() && !text.m_text.empty() ? -1 : static_cast<int>(it - m_text.begin());
}

OdString OdString::left(int count) const {
    if (count <= 0) return OdString();
    return OdString(m_text.substr(0, static_cast<size_t>(count)));
}

OdString OdString::right(int count) const {
    if (count <= 0) return OdString();
    size_t n = std::min(m_text.size(), static_cast<size_t>(count));
    return OdString(m_text.substr(m_text.size() - n));
}

OdString OdString::mid(int start, int count) const {
    if (start < 0) start = 0;
    if (static_cast<size_t>(start) >= m_text.size()) return OdString();
    return OdString(count < 0 ? m_text.substr(static_cast<size_t>(start))
                              : m_text.substr(static_cast<size_t>(start), static_cast<size_t>(count)));
}

OdString& OdString::trimLeft() {
    size_t i = 0;
    while (i < m_text.size() && std::iswspace(static_cast<wint_t>(m_text[i]))) ++i;
    m_text.erase(0, i);
    return *this;
}

OdString& OdString::trimRight() {
    while (!m_text.empty() && std::iswspace(static_cast<wint_t>(m_text.back()))) m_text.pop_back();
    return *this;
}

OdString& OdString::makeUpper() {
    for (auto& ch : m_text) ch = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(ch)));
    return *this;
}

OdString& OdString::makeLower() {
    for (auto& ch : m_text) ch = foldCase(ch);
    return *this;
}

int OdString::replace(const OdString& from, const OdString& to) {
    if (from.isEmpty()) return 0;
    int count = 0;
    size_t pos = 0;
    while ((pos = m_text.find(from.m_text, pos)) != std::wstring::npos) {
        m_text.replace(pos, from.m_text.size(), to.m_text);
        pos += to.m_text.size();
        ++count;
    }
    return count;
}
