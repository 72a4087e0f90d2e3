#include <formats/IPntSource.h>

#include <algorithm>

std::string IPntSource::ForEachPlace(const TOnPlaces& onPlaces)
{
    const std::size_t nAtOnce = CalcNumAtOnce(sizeof(CSourcePnt));
    std::vector<CSourcePnt> vecPnts;
    vecPnts.reserve(nAtOnce);
    std::string sCause = ForEach(
        [&](const CSourcePnt& pnt)
        {
            vecPnts.push_back(pnt);
            if (vecPnts.size() < nAtOnce)
                return;
            onPlaces(vecPnts.data(), vecPnts.size());
            vecPnts.clear();
        });
    if (!vecPnts.empty())
        onPlaces(vecPnts.data(), vecPnts.size());
    return sCause;
}

std::size_t IPntSource::CalcNumAtOnce(std::size_t nPntSize)
{
    constexpr std::size_t c_nNumBytes = std::size_t{1} << 17U;
    constexpr std::size_t c_nMost = 2048;
    return std::clamp<std::size_t>(c_nNumBytes / std::max<std::size_t>(nPntSize, 1), 1, c_nMost);
}
