#include <tests/analysis/ground/RefMorph.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace
{

bool IsFinite(const pcl::PointXYZ& pnt)
{
    return std::isfinite(pnt.x) && std::isfinite(pnt.y) && std::isfinite(pnt.z);
}

/// The points of a cloud that have a place, by x, so that a window begins and ends where bisection says.
class CPntsByX
{
public:
    explicit CPntsByX(const std::vector<pcl::PointXYZ>& vecPnts) : m_vecPnts(vecPnts)
    {
        for (std::size_t i = 0; i < vecPnts.size(); ++i)
            if (IsFinite(vecPnts[i]))
                m_vecOrder.push_back(i);
        std::sort(m_vecOrder.begin(), m_vecOrder.end(),
                  [&](std::size_t a, std::size_t b) { return vecPnts[a].x < vecPnts[b].x; });
    }

    /// Calls fn(index) for each point whose x and y lie at most half a window from those of `middle`.
    template <class TFn>
    void ForEachInWindow(const pcl::PointXYZ& middle, float fHalf, TFn fn) const
    {
        const float fXMin = middle.x - fHalf;
        const float fXMax = middle.x + fHalf;
        const float fYMin = middle.y - fHalf;
        const float fYMax = middle.y + fHalf;
        auto it = std::partition_point(m_vecOrder.begin(), m_vecOrder.end(),
                                       [&](std::size_t i) { return m_vecPnts[i].x < fXMin; });
        for (; it != m_vecOrder.end() && m_vecPnts[*it].x <= fXMax; ++it)
            if (m_vecPnts[*it].y >= fYMin && m_vecPnts[*it].y <= fYMax)
                fn(*it);
    }

private:
    const std::vector<pcl::PointXYZ>& m_vecPnts;
    std::vector<std::size_t> m_vecOrder;
};

/// @return for each point the lowest (the highest) of the heights in its window; its own where there is none.
template <class TBetter>
std::vector<float> Morph(const std::vector<pcl::PointXYZ>& vecPnts, const CPntsByX& byX, float fHalf,
                         const std::vector<float>& vecHeights, TBetter isBetter)
{
    std::vector<float> vecResult = vecHeights;
    for (std::size_t i = 0; i < vecPnts.size(); ++i)
    {
        bool bAny = false;
        byX.ForEachInWindow(vecPnts[i], fHalf,
                            [&](std::size_t k)
                            {
                                if (!bAny || isBetter(vecHeights[k], vecResult[i]))
                                    vecResult[i] = vecHeights[k];
                                bAny = true;
                            });
    }
    return vecResult;
}

/// @return for each point the surface opened with a window of that size.
std::vector<float> Open(const std::vector<pcl::PointXYZ>& vecPnts, float fSize)
{
    std::vector<float> vecHeights;
    for (const pcl::PointXYZ& pnt : vecPnts)
        vecHeights.push_back(pnt.z);
    const CPntsByX byX(vecPnts);
    const float fHalf = fSize / 2.0F;
    const std::vector<float> vecEroded = Morph(vecPnts, byX, fHalf, vecHeights, std::less<>());
    return Morph(vecPnts, byX, fHalf, vecEroded, std::greater<>());
}

float CalcSize(const CMorphCase& morphCase, int nStep)
{
    // With the published filter's types and in its order: a window's border is where these operations put it.
    if (morphCase.bExponential)
        return static_cast<float>(static_cast<double>(morphCase.fCellSize) *
                                  (2.0 * std::pow(static_cast<double>(morphCase.fBase), nStep) + 1.0));
    return morphCase.fCellSize * (2.0F * static_cast<float>(nStep + 1) * morphCase.fBase + 1.0F);
}

std::vector<int> ListIndices(const CMorphCase& morphCase)
{
    if (morphCase.bIndices)
        return morphCase.vecIndices;
    std::vector<int> vecAll;
    for (std::size_t i = 0; i < morphCase.pCloud->size(); ++i)
        vecAll.push_back(static_cast<int>(i));
    return vecAll;
}

/// The points listed; of a list as long as the cloud, the cloud.
std::vector<pcl::PointXYZ> TakePnts(const CMorphCase& morphCase, const std::vector<int>& vecIndices)
{
    const CMorphCase::TCloud& cloud = *morphCase.pCloud;
    if (vecIndices.size() == cloud.size())
        return {cloud.begin(), cloud.end()};
    std::vector<pcl::PointXYZ> vecPnts;
    for (const int nIndex : vecIndices)
        vecPnts.push_back(cloud[static_cast<std::size_t>(nIndex)]);
    return vecPnts;
}

std::vector<int> KeepLow(const CMorphCase& morphCase, const std::vector<int>& vecGround, float fSize,
                         float fMaxDiff)
{
    const std::vector<pcl::PointXYZ> vecPnts = TakePnts(morphCase, vecGround);
    const std::vector<float> vecOpened = Open(vecPnts, fSize);
    std::vector<int> vecKept;
    for (std::size_t i = 0; i < vecGround.size(); ++i)
        if (vecPnts[i].z - vecOpened[i] < fMaxDiff)
            vecKept.push_back(vecGround[i]);
    return vecKept;
}

} // namespace

std::vector<int> ExtractByScan(const CMorphCase& morphCase)
{
    std::vector<int> vecGround = ListIndices(morphCase);
    float fSize = 0.0F;
    for (int nStep = 0; fSize < static_cast<float>(morphCase.nMaxWindowSize); ++nStep)
    {
        const float fBefore = fSize;
        fSize = CalcSize(morphCase, nStep);
        float fMaxDiff = morphCase.fInitialDistance;
        if (nStep > 0)
            fMaxDiff =
                morphCase.fSlope * (fSize - fBefore) * morphCase.fCellSize + morphCase.fInitialDistance;
        vecGround = KeepLow(morphCase, vecGround, fSize, std::min(fMaxDiff, morphCase.fMaxDistance));
    }
    return vecGround;
}
