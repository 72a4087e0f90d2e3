#include <host/files/SourceFacts.h>

#include <host/output/CConsole.h>
#include <host/output/CFailure.h>
#include <host/output/CProgressBar.h>
#include <host/output/GetFileName.h>

#include <algorithm>
#include <cmath>

namespace zorcld
{

namespace
{

constexpr std::size_t c_nMaxSample = 4096;

/// Keeps every n-th point, n doubling whenever there are too many.
class CSampler
{
public:
    explicit CSampler(std::vector<CSourcePnt>& vecSample) : m_vecSample(vecSample) {}

    void Add(const CSourcePnt& pnt)
    {
        if (m_nSeen++ % m_nStep != 0)
            return;
        m_vecSample.push_back(pnt);
        if (m_vecSample.size() < c_nMaxSample)
            return;
        for (std::size_t i = 0; 2 * i < m_vecSample.size(); ++i)
            m_vecSample[i] = m_vecSample[2 * i];
        m_vecSample.resize(c_nMaxSample / 2);
        m_nStep *= 2;
    }

private:
    std::vector<CSourcePnt>& m_vecSample;
    std::int64_t m_nSeen = 0;
    std::int64_t m_nStep = 1;
};

void AddColor(CSourceFacts& facts, const CSourcePnt& pnt, bool bTaken)
{
    const auto isLow = [](std::uint16_t n) { return n > 0 && n <= 255; };
    facts.nMaxColor = std::max({facts.nMaxColor, pnt.r, pnt.g, pnt.b});
    if (!bTaken)
        return;
    facts.nMaxColorTaken = std::max({facts.nMaxColorTaken, pnt.r, pnt.g, pnt.b});
    facts.nNumLowColors += isLow(pnt.r) || isLow(pnt.g) || isLow(pnt.b) ? 1 : 0;
}

} // namespace

double CSourceFacts::CalcShareMerged() const
{
    const zor::geom::RECT_3D& box = summary.box;
    if (summary.nNumPnts < 2)
        return 0.0;
    const double dCells =
        ((box.xmax - box.xmin) * c_dCompactScale + 1.0) * ((box.ymax - box.ymin) * c_dCompactScale + 1.0);
    return 1.0 - std::exp(-static_cast<double>(summary.nNumPnts) / dCells);
}

CSourceFacts CollectSourceFacts(IPntSource& source, const std::string& sPath, const CConsole& console,
                                const char* pDoing, const IPntSource::TOnPnt& onPntNear)
{
    CProgressBar progress(console, pDoing + GetFileName(sPath));
    progress.Start();
    const double dStep = 100.0 / static_cast<double>(std::max<std::int64_t>(source.GetNumAnnounced(), 1));
    CSourceFacts facts;
    facts.summary.bColor = source.HasColor();
    CSampler sampler(facts.vecSample);
    const std::string sCause = source.ForEach(
        [&](const CSourcePnt& pnt)
        {
            progress.SetPos(static_cast<int>(static_cast<double>(facts.summary.nNumPnts) * dStep));
            if (facts.summary.bColor)
                AddColor(facts, pnt, source.GetNumUntaken() == 0);
            if (!pnt.IsFinite())
            {
                ++facts.nNumNotFinite;
                facts.bInfinite =
                    facts.bInfinite || std::isinf(pnt.x) || std::isinf(pnt.y) || std::isinf(pnt.z);
                return;
            }
            const bool bFirst = facts.summary.nNumPnts == 0;
            if (bFirst)
                facts.first = pnt;
            facts.summary.Add({pnt.x, pnt.y, pnt.z});
            if (!bFirst && !pnt.IsInReachOf(facts.first)) // the first one may be, when it is rounded
                ++facts.nNumFar;
            else if (onPntNear)
                onPntNear(pnt);
            sampler.Add(pnt);
        });
    if (!sCause.empty())
        throw CFailure(sPath, sCause);
    return facts;
}

} // namespace zorcld
