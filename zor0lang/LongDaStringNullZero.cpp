#include <zor0lang/LongDaStringNullZero.h>

#include <zor0lang/CUnsignedText.h>

#include <charconv>
#include <limits>
#include <system_error>

namespace zor
{

long LongDaStringNullZero(const std::string& sText)
{
    const CUnsignedText text(sText);
    if (text.HasSecondSign())
        return 0;
    // The sign is read with the digits: the lowest long has no positive counterpart.
    const char* const pStart = text.bNegative ? text.pStart - 1 : text.pStart;
    long n = 0;
    if (std::from_chars(pStart, text.pEnd, n).ec != std::errc::result_out_of_range)
        return n;
    return text.bNegative ? std::numeric_limits<long>::min() : std::numeric_limits<long>::max();
}

} // namespace zor
