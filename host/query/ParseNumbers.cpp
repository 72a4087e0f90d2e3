#include <host/query/ParseNumbers.h>

#include <host/output/CFailure.h>

#include <fmt/format.h>

#include <charconv>
#include <cmath>

namespace zorcld
{

std::vector<double> ParseNumbers(std::string_view sText, char cSeparator, std::size_t nCount,
                                 const std::string& sOption)
{
    std::vector<double> vecNumbers;
    const char* pPos = sText.data();
    const char* const pEnd = pPos + sText.size();
    bool bGood = true;
    while (bGood)
    {
        double d = 0.0;
        if (pPos != pEnd && *pPos == '+')
            ++pPos;
        const std::from_chars_result result = std::from_chars(pPos, pEnd, d);
        bGood = result.ec == std::errc() && std::isfinite(d);
        vecNumbers.push_back(d);
        pPos = result.ptr;
        if (pPos == pEnd)
            break;
        bGood = bGood && *pPos++ == cSeparator;
    }
    if (!bGood || vecNumbers.size() != nCount)
        throw CUsageError(nCount == 1 ? fmt::format("{}: '{}' is not a number", sOption, sText)
                                      : fmt::format("{}: '{}' is not {} numbers with '{}' between them",
                                                    sOption, sText, nCount, cSeparator));
    return vecNumbers;
}

} // namespace zorcld
