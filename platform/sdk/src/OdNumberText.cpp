#include "OdNumberText.h"

#include <charconv>
#include <cmath>
#include <system_error>

#include "OdError.h"

namespace OdNumberText {

namespace {

// Large enough for any double in fixed notation with up to 8 decimals, or in any other form.
constexpr size_t kBufferSize = 400;

// The text of a to_chars result; only a buffer too small fails, which the size above rules out
// for the precisions the formatters use.
std::wstring widened(const char* begin, const std::to_chars_result& result) {
    if (result.ec != std::errc())
        throw OdError(eInvalidInput, L"A number is too long to be written as text");
    return std::wstring(begin, static_cast<const char*>(result.ptr));
}

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

}  // namespace

bool parse(const std::wstring& text, double& value) {
    // from_chars takes narrow text and accepts forms ("inf", "nan", hex) that are not numbers
    // here, so the notation is checked first and only plain ASCII goes through.
    size_t i = 0;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) ++i;
    size_t digits = 0;
    while (i < text.size() && isDigit(text[i])) ++i, ++digits;
    if (i < text.size() && text[i] == L'.') {
        ++i;
        while (i < text.size() && isDigit(text[i])) ++i, ++digits;
    }
    if (digits == 0) return false;
    if (i < text.size() && (text[i] == L'e' || text[i] == L'E')) {
        ++i;
        if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) ++i;
        size_t exponentDigits = 0;
        while (i < text.size() && isDigit(text[i])) ++i, ++exponentDigits;
        if (exponentDigits == 0) return false;
    }
    if (i != text.size()) return false;

    std::string narrow(text.begin(), text.end());
    const char* begin = narrow.data() + (narrow[0] == '+' ? 1 : 0);
    const char* end = narrow.data() + narrow.size();
    double result = 0.0;
    const auto [stop, error] = std::from_chars(begin, end, result);
    if (error != std::errc() || stop != end || !std::isfinite(result)) return false;
    value = result;
    return true;
}

std::wstring fixed(double value, int decimals) {
    char buffer[kBufferSize];
    return widened(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals));
}

std::wstring scientific(double value, int decimals) {
    char buffer[kBufferSize];
    std::wstring text =
        widened(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific, decimals));
    for (wchar_t& c : text)
        if (c == L'e') c = L'E';
    return text;
}

std::wstring general(double value, int significantDigits) {
    char buffer[kBufferSize];
    return widened(buffer,
                   std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, significantDigits));
}

std::wstring precise(double value) { return general(value, 17); }

}  // namespace OdNumberText
