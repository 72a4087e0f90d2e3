#include <host/picture/FitText.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace zorcld
{

namespace
{

/// @return whether what stands before this place ends in a number, or in a part of one: blanks group digits.
bool EndsInNumber(std::string_view sBefore)
{
    const std::size_t nLast = sBefore.find_last_not_of(" .e+-");
    return nLast != std::string_view::npos && sBefore[nLast] >= '0' && sBefore[nLast] <= '9';
}

} // namespace

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
    while (eCut == Cut_End && nLow > 0 && EndsInNumber(std::string_view(sText).substr(0, vecStarts[nLow])))
        --nLow;
    const std::string sFitted = make(nLow);
    return nLow == 0 && calcWidth(sFitted) > dMaxWidth ? std::string() : sFitted;
}

} // namespace zorcld
