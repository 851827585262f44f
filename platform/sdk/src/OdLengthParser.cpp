#include <cmath>
#include <cwctype>
#include <string>

#include "OdError.h"
#include "OdNumberText.h"
#include "OdUnitsFormatter.h"

namespace {

// Recursive-descent reader of the length notations:
//   length  := [sign] ( measure "'" [ ["-"] measure ] ["\""] | measure ["\""] )
//   measure := integer "/" integer | integer (" "+ | "-") integer "/" integer | number
//   number  := digits ["." digits] [exponent] | "." digits [exponent]
class LengthReader {
public:
    explicit LengthReader(const std::wstring& text) : m_text(text) {}

    double read() {
        skipBlanks();
        if (atEnd()) fail();
        double sign = 1.0;
        if (peek() == L'-' || peek() == L'+') {
            sign = peek() == L'-' ? -1.0 : 1.0;
            ++m_pos;
        }
        double value = measure();
        if (accept(L'\'')) {
            double inches = 0.0;
            const bool dash = accept(L'-');
            skipSpaces();
            if (startsMeasure()) {
                inches = measure();
                accept(L'"');
            } else if (dash) {
                fail();  // "1'-" names no inches
            }
            value = value * 12.0 + inches;
        } else {
            accept(L'"');
        }
        skipBlanks();
        if (!atEnd()) fail();
        if (!std::isfinite(value)) fail();
        return sign * value;
    }

private:
    struct Number {
        double value;
        bool isInteger;
    };

    [[noreturn]] void fail() const {
        throw OdError(eInvalidInput, L"Not a length: \"" + OdString(m_text) + L"\"");
    }

    bool atEnd() const { return m_pos >= m_text.size(); }
    wchar_t peek(size_t ahead = 0) const { return m_pos + ahead < m_text.size() ? m_text[m_pos + ahead] : L'\0'; }
    bool accept(wchar_t ch) {
        if (peek() != ch || atEnd()) return false;
        ++m_pos;
        return true;
    }
    static bool isDigit(wchar_t ch) { return ch >= L'0' && ch <= L'9'; }
    void skipBlanks() { while (!atEnd() && std::iswspace(static_cast<wint_t>(peek()))) ++m_pos; }
    void skipSpaces() { while (peek() == L' ') ++m_pos; }
    bool startsMeasure() const { return isDigit(peek()) || (peek() == L'.' && isDigit(peek(1))); }

    size_t digits() {
        size_t start = m_pos;
        while (isDigit(peek())) ++m_pos;
        return m_pos - start;
    }

    // The number that the text from `start` to the position spells; too large for a double
    // is not a length.
    double numberAt(size_t start) const {
        double value = 0.0;
        if (!OdNumberText::parse(m_text.substr(start, m_pos - start), value)) fail();
        return value;
    }

    Number number() {
        const size_t start = m_pos;
        bool isInteger = true;
        size_t count = digits();
        if (peek() == L'.') {
            ++m_pos;
            isInteger = false;
            count += digits();
        }
        if (count == 0) fail();
        if (peek() == L'e' || peek() == L'E') {
            const size_t beforeExponent = m_pos;
            ++m_pos;
            if (peek() == L'+' || peek() == L'-') ++m_pos;
            if (digits() == 0)
                m_pos = beforeExponent;  // not an exponent: the letter is left as junk
            else
                isInteger = false;
        }
        return {numberAt(start), isInteger};
    }

    // integer "/" integer, with the position just past the numerator's digits.
    double fractionAfter(double numerator) {
        ++m_pos;  // the slash
        const size_t start = m_pos;
        if (digits() == 0) fail();
        double denominator = numberAt(start);
        if (denominator == 0.0) fail();
        return numerator / denominator;
    }

    // Tries "<sep> integer / integer" after a whole number; restores the position when the
    // text that follows is not a fraction.
    bool tryFractionTail(double& fraction) {
        const size_t start = m_pos;
        if (peek() == L'-') {
            ++m_pos;
        } else if (peek() == L' ') {
            skipSpaces();
        } else {
            return false;
        }
        const size_t numeratorStart = m_pos;
        if (digits() > 0 && peek() == L'/') {
            double numerator = numberAt(numeratorStart);
            fraction = fractionAfter(numerator);
            return true;
        }
        m_pos = start;
        return false;
    }

    double measure() {
        if (!startsMeasure()) fail();
        Number first = number();
        if (peek() == L'/') {
            if (!first.isInteger) fail();
            return fractionAfter(first.value);
        }
        double fraction = 0.0;
        if (first.isInteger && tryFractionTail(fraction)) return first.value + fraction;
        return first.value;
    }

    const std::wstring& m_text;
    size_t m_pos = 0;
};

}  // namespace

double OdUnitsFormatter::unformatL(const OdString& text) {
    return LengthReader(text.str()).read();
}
