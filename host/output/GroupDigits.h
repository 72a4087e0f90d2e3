#ifndef HOST_OUTPUT_GROUPDIGITS_H
#define HOST_OUTPUT_GROUPDIGITS_H

#include <cstdint>
#include <string>

namespace zorcld
{

/// 1234567 as "1 234 567".
inline std::string GroupDigits(std::int64_t n)
{
    std::string sText = std::to_string(n);
    const std::size_t nFirst = n < 0 ? 1 : 0;
    for (std::size_t nPos = sText.size(); nPos > nFirst + 3;)
    {
        nPos -= 3;
        sText.insert(nPos, 1, ' ');
    }
    return sText;
}

} // namespace zorcld

#endif
