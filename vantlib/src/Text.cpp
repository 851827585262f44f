#include "Text.h"

#include <cstdint>

namespace vantlib {

OdString textFromUtf8(const char* utf8, size_t length) {
    std::wstring out;
    out.resize(length);
    size_t n = 0;
    size_t i = 0;
    while (i < length) {
        unsigned char c = static_cast<unsigned char>(utf8[i]);
        if (c < 0x80) {
            out[n++] = wchar_t(c);
            ++i;
            continue;
        }
        size_t extra = (c & 0xE0) == 0xC0 ? 1 : (c & 0xF0) == 0xE0 ? 2 : (c & 0xF8) == 0xF0 ? 3 : 0;
        uint32_t cp = extra == 1 ? (c & 0x1Fu) : extra == 2 ? (c & 0x0Fu) : (c & 0x07u);
        bool valid = extra != 0;
        for (size_t k = 1; valid && k <= extra; ++k) {
            if (i + k >= length || (static_cast<unsigned char>(utf8[i + k]) & 0xC0) != 0x80)
                valid = false;
            else
                cp = (cp << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3Fu);
        }
        if (!valid) {
            out[n++] = wchar_t(0xFFFD);
            ++i;
            continue;
        }
        out[n++] = wchar_t(cp);
        i += extra + 1;
    }
    out.resize(n);
    return OdString(std::move(out));
}

std::string textToUtf8(const OdString& text) {
    const std::wstring& in = text.str();
    std::string out;
    out.reserve(in.size());
    for (wchar_t ch : in) {
        uint32_t cp = uint32_t(ch);
        if (cp < 0x80) {
            out += char(cp);
        } else if (cp < 0x800) {
            out += char(0xC0 | (cp >> 6));
            out += char(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += char(0xE0 | (cp >> 12));
            out += char(0x80 | ((cp >> 6) & 0x3F));
            out += char(0x80 | (cp & 0x3F));
        } else {
            out += char(0xF0 | (cp >> 18));
            out += char(0x80 | ((cp >> 12) & 0x3F));
            out += char(0x80 | ((cp >> 6) & 0x3F));
            out += char(0x80 | (cp & 0x3F));
        }
    }
    return out;
}

std::wstring foldCase(const OdString& text) {
    std::wstring out = text.str();
    for (wchar_t& ch : out)
        if (ch >= L'A' && ch <= L'Z')
            ch = wchar_t(ch - L'A' + L'a');
    return out;
}

bool sameName(const OdString& a, const OdString& b) {
    const std::wstring& x = a.str();
    const std::wstring& y = b.str();
    if (x.size() != y.size())
        return false;
    for (size_t i = 0; i < x.size(); ++i) {
        wchar_t p = x[i], q = y[i];
        if (p >= L'A' && p <= L'Z') p = wchar_t(p - L'A' + L'a');
        if (q >= L'A' && q <= L'Z') q = wchar_t(q - L'A' + L'a');
        if (p != q)
            return false;
    }
    return true;
}

std::wstring sizeKey(const OdString& size) {
    std::wstring key;
    for (wchar_t ch : foldCase(size)) {
        if (ch == L' ' || ch == L'\t')
            continue;
        key += (ch == L'*' || ch == L'\u00D7') ? L'x' : ch;
    }
    return key;
}

std::string sizeKeySql(const std::string& column) {
    return "replace(replace(replace(replace(lower(" + column + "), ' ', ''), char(9), ''), '*', 'x'), char(215), 'x')";
}

}  // namespace vantlib
