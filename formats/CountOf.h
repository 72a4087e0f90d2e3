#ifndef FORMATS_COUNTOF_H
#define FORMATS_COUNTOF_H

#include <cstdint>
#include <string>

/// The word that goes with a number: `pOne` with 1, `pMany` with every other.
inline const char* OneOrMany(std::int64_t n, const char* pOne, const char* pMany)
{
    return n == 1 ? pOne : pMany;
}

/// A number of things: "1 point", "1234 points".
inline std::string CountOf(std::int64_t n, const char* pNoun)
{
    return std::to_string(n) + " " + pNoun + OneOrMany(n, "", "s");
}

#endif
