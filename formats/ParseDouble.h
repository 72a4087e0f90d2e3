#ifndef FORMATS_PARSEDOUBLE_H
#define FORMATS_PARSEDOUBLE_H

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string_view>
#include <system_error>

/// Whether a number that no double holds is too large rather than too small: by the place of its first digit
/// that is not 0, and its exponent.
///
/// @param sNumber  digits, perhaps with a point and an exponent; a sign is passed over.
inline bool IsTooLarge(std::string_view sNumber)
{
    const std::size_t nExp = std::min(sNumber.find_first_of("eE"), sNumber.size());
    const std::size_t nFirst = sNumber.find_first_of("123456789");
    const std::size_t nPoint = std::min(sNumber.find('.'), nExp);
    const std::ptrdiff_t nPlace = static_cast<std::ptrdiff_t>(nPoint) - static_cast<std::ptrdiff_t>(nFirst);
    std::ptrdiff_t nExponent = 0;
    if (nExp < sNumber.size())
    {
        const std::size_t nStart = nExp + (sNumber.substr(nExp + 1, 1) == "+" ? 2 : 1);
        const char* const pEnd = sNumber.data() + sNumber.size();
        if (std::from_chars(sNumber.data() + nStart, pEnd, nExponent).ec == std::errc::result_out_of_range)
            return sNumber[nStart] != '-';
    }
    return nExponent > -nPlace;
}

/// The number at the start of a word, with or without a plus sign, whatever the locale; 0 when there is none.
/// One too large for a double is infinite, one too small is 0.
///
/// @param bWhole  whether the word is nothing but that number.
inline double ParseDouble(std::string_view sWord, bool& bWhole)
{
    double d = 0.0;
    const char* const pEnd = sWord.data() + sWord.size();
    const char* const pStart = sWord.data() + (!sWord.empty() && sWord.front() == '+' ? 1 : 0);
    const std::from_chars_result result = std::from_chars(pStart, pEnd, d);
    if (result.ec == std::errc::result_out_of_range)
    {
        const bool bLarge = IsTooLarge({pStart, static_cast<std::size_t>(result.ptr - pStart)});
        d = bLarge ? std::numeric_limits<double>::infinity() : 0.0;
        d = *pStart == '-' ? -d : d;
    }
    bWhole = result.ec != std::errc::invalid_argument && result.ptr == pEnd;
    return d;
}

#endif
