#include <host/picture/FindAttributes.h>

#include <host/output/AttributeBytes.h>
#include <zor4data/CPntCld.h>

#include <numeric>

namespace zorcld
{

namespace
{

constexpr double c_dLowShare = 0.02; // of the points lie below the range, as many above it

/// @return the least attribute that more than `dRank` points do not exceed.
double FindRank(const std::vector<std::uint32_t>& vecCounts, double dRank)
{
    double dSum = 0.0;
    for (std::size_t n = 0; n < vecCounts.size(); ++n)
    {
        dSum += vecCounts[n];
        if (dSum > dRank)
            return static_cast<double>(n);
    }
    return 0.0;
}

} // namespace

std::vector<std::uint32_t> CountAttributes(const CPntCld& cloud, CQuery query)
{
    query.dLod = 0.0; // a rare class has its place in the legend
    std::vector<std::uint32_t> vecCounts(65536);
    ForEachPnt(cloud, query,
               [&](const CCldCadPnt& pnt)
               {
                   unsigned char r = 0;
                   unsigned char g = 0;
                   unsigned char b = 0;
                   cloud.GetPntColor(pnt.m_nIndex, r, g, b);
                   ++vecCounts[AttributeFromBytes(r, g)];
               });
    return vecCounts;
}

CIntensityRange FindIntensities(const std::vector<std::uint32_t>& vecCounts)
{
    const double dNumPnts = std::accumulate(vecCounts.begin(), vecCounts.end(), 0.0);
    const double dLow = c_dLowShare * (dNumPnts - 1.0);
    return {FindRank(vecCounts, dLow), FindRank(vecCounts, dNumPnts - 1.0 - dLow)};
}

} // namespace zorcld
