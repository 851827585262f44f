#pragma once
// Numbers as text in the one notation that drawings, settings and the command line use: a point
// before the decimals, whatever the process locale says. The C library's conversions follow
// LC_NUMERIC, which the toolkit sets from the user's environment (a decimal comma in German),
// so lengths and stored values never go through them.
#include <string>

namespace OdNumberText {

// Reads the whole of `text` as [+|-]digits[.digits][(e|E)[+|-]digits] (digits on at least one
// side of the point); false when it is not exactly such a number or it is out of range.
bool parse(const std::wstring& text, double& value);

// As "%.*f" in the C locale: `decimals` digits after the point, correctly rounded.
std::wstring fixed(double value, int decimals);

// As "%.*E" in the C locale: one digit, the point, `decimals` digits, "E", a sign and at least
// two exponent digits.
std::wstring scientific(double value, int decimals);

// As "%.*g" in the C locale: at most `significantDigits` digits, no trailing zeros, exponent
// notation for very large or small values ("%g" is general(value, 6)).
std::wstring general(double value, int significantDigits = 6);

// As "%.17g" in the C locale: enough digits to read back as the same double.
std::wstring precise(double value);

}  // namespace OdNumberText
