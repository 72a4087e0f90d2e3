#include <bench/OutlineCases.h>

#include <cmath>

namespace
{

/// Sums up the area inside an outline, its points coming one by one.
class CAreaListener final : public IPntCldListener
{
public:
    void OnPnts(int nNumPnts, CCldCadPnt* pPnts) override
    {
        for (int i = 0; i < nNumPnts; ++i)
        {
            const double x = pPnts[i].m_pnt.x - CSampleTerrain::c_dOrgX;
            const double y = pPnts[i].m_pnt.y - CSampleTerrain::c_dOrgY;
            if (m_nNumCorners++ > 0)
                m_dTwice += x * m_dLastY - m_dLastX * y; // clockwise counts up
            m_dLastX = x;
            m_dLastY = y;
        }
    }

    double GetArea() const noexcept { return m_dTwice / 2.0; }

private:
    std::int64_t m_nNumCorners = 0;
    double m_dTwice = 0.0;
    double m_dLastX = 0.0;
    double m_dLastY = 0.0;
};

} // namespace

std::uint64_t CheckOutlineArea(std::int64_t nNum, double dArea)
{
    const double dSide = CSampleTerrain(nNum).GetSide();
    return std::fabs(dArea - dSide * dSide) < 0.02 * dSide * dSide ? 1U : 0U;
}

std::uint64_t OutlineProduct(std::int64_t nNum, CCpuTimer& timer)
{
    const CPntCld& cld = GetTerrainCld(nNum);
    CAreaListener listener;
    bool bClosed = false;
    timer.Measure([&] { bClosed = cld.CalcCnt(nullptr, &listener, c_dOutlineDistance); });
    return bClosed ? CheckOutlineArea(nNum, listener.GetArea()) : 2U;
}
