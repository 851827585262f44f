#pragma once
// A small typed value: what a header variable or a stored setting holds.
#include <cstdint>

#include "OdError.h"
#include "OdString.h"

class OdTypedValue {
public:
    enum Type { kNone = 0, kBool, kShort, kInt, kDouble, kString };

    OdTypedValue() = default;
    OdTypedValue(bool value) : m_type(kBool), m_int(value ? 1 : 0) {}
    OdTypedValue(int16_t value) : m_type(kShort), m_int(value) {}
    OdTypedValue(int value) : m_type(kInt), m_int(value) {}
    OdTypedValue(double value) : m_type(kDouble), m_real(value) {}
    OdTypedValue(const OdString& value) : m_type(kString), m_text(value) {}
    OdTypedValue(const wchar_t* value) : m_type(kString), m_text(value) {}
    // Narrow text would otherwise turn silently into a bool.
    OdTypedValue(const char*) = delete;

    Type type() const { return m_type; }
    bool isNone() const { return m_type == kNone; }
    bool isNumeric() const { return m_type == kBool || m_type == kShort || m_type == kInt || m_type == kDouble; }

    // Numeric kinds convert among each other (a double must be integral to be read as an
    // integer); text never converts. A failed conversion throws OdError(eInvalidInput).
    bool asBool() const;
    int16_t asShort() const;
    int asInt() const;
    double asDouble() const;
    const OdString& asString() const;

    // Text form used by the persisted stores, e.g. "int:42", "string:Brick".
    OdString toText() const;
    static OdTypedValue fromText(const OdString& text);  // throws OdError(eInvalidInput)
    static const wchar_t* typeName(Type type);

    friend bool operator==(const OdTypedValue& a, const OdTypedValue& b) {
        return a.m_type == b.m_type && a.m_int == b.m_int && a.m_real == b.m_real && a.m_text == b.m_text;
    }
    friend bool operator!=(const OdTypedValue& a, const OdTypedValue& b) { return !(a == b); }

private:
    Type m_type = kNone;
    int64_t m_int = 0;
    double m_real = 0.0;
    OdString m_text;
};
