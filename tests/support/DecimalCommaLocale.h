#pragma once
// Puts the process into a German locale, whose decimal separator is a comma, for the life of the
// object: the C library's number conversions then read "1.5" as 1 and write 1.5 as "1,5".
// tools/install-deps.sh generates the locale; a test without it fails on active().
#include <clocale>
#include <string>

class DecimalCommaLocale {
public:
    DecimalCommaLocale() : m_previous(std::setlocale(LC_ALL, nullptr)) {
        m_active = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    }
    ~DecimalCommaLocale() { std::setlocale(LC_ALL, m_previous.c_str()); }
    DecimalCommaLocale(const DecimalCommaLocale&) = delete;
    DecimalCommaLocale& operator=(const DecimalCommaLocale&) = delete;

    // Whether the locale could be set and uses a comma (run tools/install-deps.sh if not).
    bool active() const { return m_active && *std::localeconv()->decimal_point == ','; }

private:
    std::string m_previous;
    bool m_active = false;
};
