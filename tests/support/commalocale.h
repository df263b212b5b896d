#pragma once

#include <clocale>
#include <locale>
#include <string>

/// While it lives, numbers are written the continental way ("1.234,5") by every stream of the program and, where the
/// system has a German locale, by the C library.
class CommaLocale
{
public:
    CommaLocale() { std::setlocale(LC_NUMERIC, "de_DE.UTF-8"); }
    ~CommaLocale()
    {
        std::locale::global(previous);
        std::setlocale(LC_NUMERIC, previousNumeric.c_str());
    }
    CommaLocale(const CommaLocale &) = delete;
    CommaLocale &operator=(const CommaLocale &) = delete;

private:
    struct Punctuation : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    const std::string previousNumeric = std::setlocale(LC_NUMERIC, nullptr);
    // The locale owns its facet.
    const std::locale previous = std::locale::global(std::locale(std::locale(), new Punctuation));
};
