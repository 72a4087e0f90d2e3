#ifndef HOST_OUTPUT_FORMATCOUNT_H
#define HOST_OUTPUT_FORMATCOUNT_H

#include <formats/CountOf.h>
#include <host/output/GroupDigits.h>

#include <cstdint>
#include <string>

namespace zorcld
{

/// A noun as it stands behind a number: "point" behind 1, "points" behind every other.
inline std::string WithPlural(const char* pNoun, std::int64_t nCount)
{
    return std::string(pNoun) + OneOrMany(nCount, "", "s");
}

/// A number of things: "1 point", "1 234 567 points".
inline std::string FormatCount(std::int64_t nCount, const char* pNoun)
{
    return GroupDigits(nCount) + " " + WithPlural(pNoun, nCount);
}

} // namespace zorcld

#endif
