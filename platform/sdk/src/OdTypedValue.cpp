#include "OdTypedValue.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "OdNumberText.h"

namespace {

OdError conversionError(OdTypedValue::Type from, const wchar_t* to) {
    return OdError(eInvalidInput, OdString::formatted(L"A %ls value cannot be read as %ls", OdTypedValue::typeName(from), to));
}

bool parseInteger(const std::wstring& text, int64_t& out) {
    if (text.empty()) return false;
    errno = 0;
    wchar_t* end = nullptr;
    long long value = std::wcstoll(text.c_str(), &end, 10);
    if (errno != 0 || end != text.c_str() + text.size()) return false;
    out = value;
    return true;
}

}  // namespace

const wchar_t* OdTypedValue::typeName(Type type) {
    switch (type) {
    case kNone: return L"none";
    case kBool: return L"bool";
    case kShort: return L"short";
    case kInt: return L"int";
    case kDouble: return L"double";
    case kString: return L"string";
    }
    return L"unknown";
}

bool OdTypedValue::asBool() const {
    if (m_type == kDouble) return m_real != 0.0;
    if (m_type == kBool || m_type == kShort || m_type == kInt) return m_int != 0;
    throw conversionError(m_type, L"bool");
}

int16_t OdTypedValue::asShort() const {
    int value = asInt();
    if (value < std::numeric_limits<int16_t>::min() || value > std::numeric_limits<int16_t>::max())
        throw OdError(eInvalidInput, OdString::formatted(L"%d does not fit a short integer", value));
    return static_cast<int16_t>(value);
}

int OdTypedValue::asInt() const {
    if (m_type == kBool || m_type == kShort || m_type == kInt) return static_cast<int>(m_int);
    if (m_type == kDouble) {
        if (std::floor(m_real) == m_real && m_real >= std::numeric_limits<int>::min() && m_real <= std::numeric_limits<int>::max())
            return static_cast<int>(m_real);
        throw OdError(eInvalidInput, OdString::formatted(L"%g is not an integer", m_real));
    }
    throw conversionError(m_type, L"int");
}

double OdTypedValue::asDouble() const {
    if (m_type == kDouble) return m_real;
    if (m_type == kBool || m_type == kShort || m_type == kInt) return static_cast<double>(m_int);
    throw conversionError(m_type, L"double");
}

const OdString& OdTypedValue::asString() const {
    if (m_type != kString) throw conversionError(m_type, L"string");
    return m_text;
}

OdString OdTypedValue::toText() const {
    OdString prefix = OdString(typeName(m_type)) + L":";
    switch (m_type) {
    case kNone: return prefix;
    case kBool: return prefix + (m_int ? L"1" : L"0");
    case kShort:
    case kInt: return prefix + OdString::formatted(L"%lld", static_cast<long long>(m_int));
    case kDouble: return prefix + OdString(OdNumberText::precise(m_real));
    case kString: return prefix + m_text;
    }
    return prefix;
}

OdTypedValue OdTypedValue::fromText(const OdString& text) {
    int colon = text.find(L':');
    if (colon < 0) throw OdError(eInvalidInput, L"Stored value without a type: " + text);
    OdString type = text.left(colon);
    std::wstring body = text.mid(colon + 1).str();
    OdError bad(eInvalidInput, L"Malformed stored value: " + text);
    if (type == L"none") {
        if (!body.empty()) throw bad;
        return OdTypedValue();
    }
    if (type == L"string") return OdTypedValue(OdString(body));
    if (type == L"double") {
        double value = 0.0;
        if (!OdNumberText::parse(body, value)) throw bad;
        return OdTypedValue(value);
    }
    int64_t value = 0;
    if (!parseInteger(body, value)) throw bad;
    if (type == L"bool") {
        if (value != 0 && value != 1) throw bad;
        return OdTypedValue(value == 1);
    }
    if (type == L"short") {
        if (value < std::numeric_limits<int16_t>::min() || value > std::numeric_limits<int16_t>::max()) throw bad;
        return OdTypedValue(static_cast<int16_t>(value));
    }
    if (type == L"int") {
        if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max()) throw bad;
        return OdTypedValue(static_cast<int>(value));
    }
    throw bad;
}
