#ifndef FORMATS_PARSEDOUBLE_H
#define FORMATS_PARSEDOUBLE_H

#include <charconv>
#include <limits>
#include <string_view>

/// The number at the start of a word, with or without a plus sign, whatever the locale; 0 when there is none.
///
/// @param bWhole  whether the word is nothing but that number.
inline double ParseDouble(std::string_view sWord, bool& bWhole)
{
    double d = 0.0;
    const char* const pEnd = sWord.data() + sWord.size();
    const char* const pStart = sWord.data() + (!sWord.empty() && sWord.front() == '+' ? 1 : 0);
    const std::from_chars_result result = std::from_chars(pStart, pEnd, d);
    if (result.ec == std::errc::result_out_of_range)
        d = sWord.front() == '-' ? -std::numeric_limits<double>::infinity()
                                 : std::numeric_limits<double>::infinity();
    bWhole = result.ec != std::errc::invalid_argument && result.ptr == pEnd;
    return d;
}

#endif
