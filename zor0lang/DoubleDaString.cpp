#include <zor0lang/DoubleDaString.h>

#include <zor0lang/CUnsignedText.h>
#include <zor0lang/LongDaStringNullZero.h>

#include <charconv>
#include <limits>
#include <system_error>

namespace zor
{
namespace
{

/// Tells a number too large for a double from one too small, both of them far from 1.
///
/// @param pStart, pEnd  an unsigned decimal number with a digit other than 0.
bool IsAboveOne(const char* pStart, const char* pEnd)
{
    const char* p = pStart;
    while (*p == '0')
        ++p;
    long nMagnitude = 0; // decimal exponent of the first digit other than 0, plus 1, without "e..."
    for (; p != pEnd && *p >= '0' && *p <= '9'; ++p)
        ++nMagnitude;
    if (p != pEnd && *p == '.')
        for (++p; nMagnitude <= 0 && p != pEnd && *p == '0'; ++p)
            --nMagnitude;
    while (p != pEnd && *p != 'e' && *p != 'E')
        ++p;
    if (p == pEnd)
        return nMagnitude > 0;
    const long nExponent = LongDaStringNullZero(std::string(p + 1, pEnd));
    return nExponent > -nMagnitude;
}

} // namespace

double DoubleDaString(const std::string& sText)
{
    const CUnsignedText text(sText);
    if (text.HasSecondSign())
        return 0.0;
    double d = 0.0;
    const auto [pEnd, eError] = std::from_chars(text.pStart, text.pEnd, d);
    if (eError == std::errc::invalid_argument)
        return 0.0;
    if (eError == std::errc::result_out_of_range)
        d = IsAboveOne(text.pStart, pEnd) ? std::numeric_limits<double>::infinity() : 0.0;
    return text.bNegative ? -d : d;
}

} // namespace zor
