#include <zor0lang/DoubleDaString.h>
#include <zor0lang/IsWhiteSpace.h>
#include <zor0lang/LongDaStringNullZero.h>

#include <charconv>
#include <limits>
#include <system_error>

namespace zor
{
namespace
{

/// The text behind white space and a sign: where digits, or "inf" and "nan", must follow.
class CUnsignedText
{
public:
    explicit CUnsignedText(const std::string& sText)
        : m_pStart(sText.data()), m_pEnd(sText.data() + sText.size())
    {
        while (m_pStart != m_pEnd && IsWhiteSpace(*m_pStart))
            ++m_pStart;
        if (m_pStart == m_pEnd || (*m_pStart != '-' && *m_pStart != '+'))
            return;
        m_bNegative = *m_pStart == '-';
        ++m_pStart;
    }

    // A second sign ends the text: from_chars alone would take it for the number's own.
    bool HasSecondSign() const { return m_pStart != m_pEnd && *m_pStart == '-'; }

    const char* m_pStart;
    const char* m_pEnd;
    bool m_bNegative = false;
};

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
    const auto [pEnd, eError] = std::from_chars(text.m_pStart, text.m_pEnd, d);
    if (eError == std::errc::invalid_argument)
        return 0.0;
    if (eError == std::errc::result_out_of_range)
        d = IsAboveOne(text.m_pStart, pEnd) ? std::numeric_limits<double>::infinity() : 0.0;
    return text.m_bNegative ? -d : d;
}

long LongDaStringNullZero(const std::string& sText)
{
    const CUnsignedText text(sText);
    if (text.HasSecondSign())
        return 0;
    // The sign is read with the digits: the lowest long has no positive counterpart.
    const char* const pStart = text.m_bNegative ? text.m_pStart - 1 : text.m_pStart;
    long n = 0;
    if (std::from_chars(pStart, text.m_pEnd, n).ec != std::errc::result_out_of_range)
        return n;
    return text.m_bNegative ? std::numeric_limits<long>::min() : std::numeric_limits<long>::max();
}

} // namespace zor
