#include "OdUnitsFormatter.h"

#include <cmath>
#include <cstdint>
#include <string>

#include "OdError.h"
#include "OdNumberText.h"

namespace {

// Counts beyond this cannot be held exactly in the integer arithmetic that rounds feet and
// inches, so such lengths are refused rather than printed wrongly.
constexpr double kLargestCount = 9.0e15;

void validate(double value, const OdLengthFormat& format) {
    if (format.lunits < OdDb::kScientific || format.lunits > OdDb::kFractional)
        throw OdError(eInvalidInput, OdString::formatted(L"Unknown length notation LUNITS=%d", format.lunits));
    if (format.luprec < 0 || format.luprec > 8)
        throw OdError(eInvalidInput, OdString::formatted(L"Length precision LUPREC=%d is outside 0-8", format.luprec));
    if (format.dimzin < 0) throw OdError(eInvalidInput, OdString::formatted(L"Invalid DIMZIN=%d", format.dimzin));
    if (!std::isfinite(value)) throw OdError(eInvalidInput, L"Cannot format a length that is not a finite number");
}

int64_t roundToCount(double magnitude, int64_t perUnit) {
    double scaled = magnitude * static_cast<double>(perUnit);
    if (scaled > kLargestCount)
        throw OdError(eInvalidInput, OdString::formatted(L"Length %g is too large for this notation", magnitude));
    return std::llround(scaled);
}

int64_t powerOfTen(int exponent) {
    int64_t value = 1;
    for (int i = 0; i < exponent; ++i) value *= 10;
    return value;
}

std::wstring stripTrailingZeros(std::wstring text) {
    size_t dot = text.find(L'.');
    if (dot == std::wstring::npos) return text;
    size_t end = text.size();
    while (end > dot + 1 && text[end - 1] == L'0') --end;
    if (end == dot + 1) --end;
    return text.substr(0, end);
}

// Digits of count / 10^decimals with exactly `decimals` places.
std::wstring fixedPoint(int64_t count, int decimals) {
    const int64_t scale = powerOfTen(decimals);
    std::wstring text = std::to_wstring(count / scale);
    if (decimals > 0) {
        std::wstring fraction = std::to_wstring(count % scale);
        text += L'.';
        text += std::wstring(static_cast<size_t>(decimals) - fraction.size(), L'0') + fraction;
    }
    return text;
}

std::wstring applyDecimalSuppression(std::wstring text, int dimzin, bool isZero) {
    if (dimzin & 8) text = stripTrailingZeros(text);
    if ((dimzin & 4) && !isZero && text.size() > 1 && text[0] == L'0' && text[1] == L'.') text.erase(0, 1);
    return text;
}

int64_t gcd(int64_t a, int64_t b) {
    while (b != 0) {
        int64_t t = a % b;
        a = b;
        b = t;
    }
    return a;
}

// "whole num/den" (or "whole-num/den" in the compact form); a zero whole part is left out
// unless `keepZeroWhole`.
std::wstring mixedNumber(int64_t whole, int64_t numerator, int64_t denominator, bool compact, bool keepZeroWhole) {
    if (numerator == 0) return std::to_wstring(whole);
    int64_t common = gcd(numerator, denominator);
    std::wstring fraction = std::to_wstring(numerator / common) + L'/' + std::to_wstring(denominator / common);
    if (whole == 0 && !keepZeroWhole) return fraction;
    return std::to_wstring(whole) + (compact ? L"-" : L" ") + fraction;
}

std::wstring formatScientific(double magnitude, const OdLengthFormat& format) {
    OdString text = OdString(OdNumberText::scientific(magnitude, format.luprec));
    std::wstring out = text.str();
    if (format.dimzin & 8) {
        size_t e = out.find(L'E');
        out = stripTrailingZeros(out.substr(0, e)) + out.substr(e);
    }
    return out;
}

std::wstring formatDecimal(double magnitude, const OdLengthFormat& format, bool& isZero) {
    std::wstring out = OdNumberText::fixed(magnitude, format.luprec);
    isZero = out.find_first_not_of(L"0.") == std::wstring::npos;
    return applyDecimalSuppression(out, format.dimzin, isZero);
}

// Engineering and architectural lengths: the value is in inches and is rounded to the
// notation's step before it is split, so 11.9999" becomes 1'-0", never 0'-12".
std::wstring formatFeetAndInches(double magnitude, const OdLengthFormat& format, bool& isZero) {
    const bool architectural = format.lunits == OdDb::kArchitectural;
    const bool compact = format.unitmode == 1;
    const int64_t perInch = architectural ? (int64_t(1) << format.luprec) : powerOfTen(format.luprec);
    const int64_t count = roundToCount(magnitude, perInch);
    isZero = count == 0;
    const int64_t feet = count / (12 * perInch);
    const int64_t inchCount = count % (12 * perInch);

    const int zeroRule = format.dimzin & 3;
    bool showFeet = feet != 0 || zeroRule == 1 || zeroRule == 2;
    bool showInches = inchCount != 0 || zeroRule == 1 || zeroRule == 3;
    if (!showFeet && !showInches) showInches = true;  // a zero length still needs a figure

    std::wstring inches;
    if (architectural) {
        inches = mixedNumber(inchCount / perInch, inchCount % perInch, perInch, compact, showFeet);
    } else {
        inches = fixedPoint(inchCount, format.luprec);
        if (format.dimzin & 8) inches = stripTrailingZeros(inches);
        if ((format.dimzin & 4) && !showFeet && inchCount != 0 && inches.size() > 1 && inches[0] == L'0' && inches[1] == L'.')
            inches.erase(0, 1);
    }

    std::wstring out;
    if (showFeet) out = std::to_wstring(feet) + L'\'';
    if (showFeet && showInches && !compact) out += L'-';
    if (showInches) out += inches + L'"';
    return out;
}

std::wstring formatFractional(double magnitude, const OdLengthFormat& format, bool& isZero) {
    const int64_t denominator = int64_t(1) << format.luprec;
    const int64_t count = roundToCount(magnitude, denominator);
    isZero = count == 0;
    return mixedNumber(count / denominator, count % denominator, denominator, format.unitmode == 1, false);
}

}  // namespace

OdString OdUnitsFormatter::formatL(double value, int lunits, int luprec, int dimzin, int unitmode) {
    OdLengthFormat format;
    format.lunits = lunits;
    format.luprec = luprec;
    format.dimzin = dimzin;
    format.unitmode = unitmode;
    return formatL(value, format);
}

OdString OdUnitsFormatter::formatL(double value, const OdLengthFormat& format) {
    validate(value, format);
    const double magnitude = std::fabs(value);
    bool isZero = magnitude == 0.0;
    std::wstring body;
    switch (format.lunits) {
    case OdDb::kScientific: body = formatScientific(magnitude, format); break;
    case OdDb::kDecimal: body = formatDecimal(magnitude, format, isZero); break;
    case OdDb::kEngineering:
    case OdDb::kArchitectural: body = formatFeetAndInches(magnitude, format, isZero); break;
    default: body = formatFractional(magnitude, format, isZero); break;
    }
    // A negative value that rounds to zero prints without a sign.
    if (value < 0 && !isZero) body.insert(body.begin(), L'-');
    return OdString(body);
}
