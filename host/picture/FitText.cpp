#include <host/picture/FitText.h>

#include <algorithm>
#include <vector>

namespace zorcld
{

namespace
{

/// Length of the UTF-8 sequence that begins at `i`; 0 if there is none.
std::size_t FindSequence(const std::string& sText, std::size_t i)
{
    const auto byte = [&](std::size_t n)
    { return n < sText.size() ? static_cast<unsigned char>(sText[n]) : static_cast<unsigned char>(0); };
    const unsigned char uc = byte(i);
    if (uc < 0x80)
        return uc < 0x20 || uc == 0x7F ? 0 : 1;
    const std::size_t nLength = uc >= 0xC2 && uc < 0xE0   ? 2
                                : uc >= 0xE0 && uc < 0xF0 ? 3
                                : uc >= 0xF0 && uc < 0xF5 ? 4
                                                          : 0;
    for (std::size_t n = 1; n < nLength; ++n)
        if ((byte(i + n) & 0xC0U) != 0x80)
            return 0;
    const unsigned char ucNext = byte(i + 1);
    const bool bBad = (uc == 0xE0 && ucNext < 0xA0) ||
                      (uc == 0xED && ucNext >= 0xA0) ||                                // too long, surrogates
                      (uc == 0xF0 && ucNext < 0x90) || (uc == 0xF4 && ucNext >= 0x90); // beyond the last
    return bBad ? 0 : nLength;
}

} // namespace

std::string MakePrintable(const std::string& sText)
{
    std::string sPrintable;
    for (std::size_t i = 0; i < sText.size();)
    {
        const std::size_t nLength = FindSequence(sText, i);
        sPrintable += nLength == 0 ? "?" : sText.substr(i, nLength);
        i += std::max<std::size_t>(nLength, 1);
    }
    return sPrintable;
}

std::string FitText(const std::string& sText, double dMaxWidth, enumCut eCut,
                    const std::function<double(const std::string&)>& calcWidth)
{
    if (calcWidth(sText) <= dMaxWidth)
        return sText;
    std::vector<std::size_t> vecStarts; // of characters
    for (std::size_t i = 0; i < sText.size(); ++i)
        if ((static_cast<unsigned char>(sText[i]) & 0xC0U) != 0x80)
            vecStarts.push_back(i);
    vecStarts.push_back(sText.size());
    const std::size_t nAll = vecStarts.size() - 1;
    const auto make = [&](std::size_t nKept)
    {
        const std::size_t nTail = eCut == Cut_Middle ? nKept / 2 : 0;
        return sText.substr(0, vecStarts[nKept - nTail]) + "\u2026" + sText.substr(vecStarts[nAll - nTail]);
    };
    std::size_t nLow = 0; // the width grows with what is kept
    std::size_t nHigh = nAll;
    while (nLow < nHigh)
    {
        const std::size_t nKept = (nLow + nHigh + 1) / 2;
        if (calcWidth(make(nKept)) <= dMaxWidth)
            nLow = nKept;
        else
            nHigh = nKept - 1;
    }
    const std::string sFitted = make(nLow);
    return nLow == 0 && calcWidth(sFitted) > dMaxWidth ? std::string() : sFitted;
}

} // namespace zorcld
