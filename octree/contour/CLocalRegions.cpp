#include <octree/contour/CLocalRegions.h>

#include <optional>
#include <utility>

using zor::geom::CGeosRegion;
using zor::geom::PNT_2D;
using zor::geom::TMultiPartPolygon;
using zor::geom::TPlanBox;

CLocalRegions::CLocalRegions(const TMultiPartPolygon& polygon)
{
    m_vecLevels.push_back({{}, {}, false, enumState::Valid, m_geos.MakeRegion(polygon)});
    m_nNumPnts = m_geos.GetNumPnts(GetWhole());
}

std::vector<TMultiPartPolygon> CLocalRegions::GetParts() const
{
    return m_geos.GetParts(GetWhole());
}

TPlanBox<double> CLocalRegions::GetFrame(const TPlanBox<double>& box) noexcept
{
    return box.GetGrown((box.xmax - box.xmin) * 0.4673);
}

std::size_t CLocalRegions::EnterRoot() noexcept
{
    Truncate(1);
    return 0;
}

std::size_t CLocalRegions::Enter(const CContourSquare& square, bool bCentreInside)
{
    m_vecLevels.push_back({GetFrame(square.box), square.centre, bCentreInside, enumState::NotMade, {}});
    return m_vecLevels.size() - 1;
}

void CLocalRegions::Truncate(std::size_t nNumLevels) noexcept
{
    while (m_vecLevels.size() > nNumLevels)
        m_vecLevels.pop_back();
}

std::vector<TMultiPartPolygon> CLocalRegions::Subtract(const std::vector<PNT_2D>& ring,
                                                       const CGeosRegion& region) const
{
    return m_geos.GetParts(m_geos.CalcDifference(m_geos.MakePolygon(ring), region));
}

std::vector<TMultiPartPolygon> CLocalRegions::SubtractWhole(const std::vector<PNT_2D>& ring)
{
    ++m_nNumWhole;
    return Subtract(ring, GetWhole());
}

std::vector<TMultiPartPolygon> CLocalRegions::SubtractLocal(const std::vector<PNT_2D>& ring,
                                                            std::size_t nLevel)
{
    return Subtract(ring, GetLocal(nLevel));
}

const CGeosRegion& CLocalRegions::GetLocal(std::size_t nLevel)
{
    CLevel& level = m_vecLevels[CutDownTo(nLevel)];
    if (level.eState == enumState::Made && !IsGood(level))
        CutSurely(level);
    level.eState = enumState::Valid;
    return level.region;
}

/// Makes the region of a level and, on the way there, those of the levels above it that are not made yet.
/// @return the level, or one above it whose region is small already.
std::size_t CLocalRegions::CutDownTo(std::size_t nLevel)
{
    std::size_t nMade = nLevel;
    while (m_vecLevels[nMade].eState == enumState::NotMade)
        --nMade;
    for (; nMade < nLevel; ++nMade)
    {
        const CGeosRegion& above = m_vecLevels[nMade].region;
        if (m_geos.GetNumPnts(above) <= c_nSmall)
            break;
        CLevel& level = m_vecLevels[nMade + 1];
        std::optional<CGeosRegion> cut = m_geos.ClipQuickly(above, level.frame);
        if (!cut)
            CutSurely(level);
        else
        {
            level.region = std::move(*cut);
            level.eState = enumState::Made;
        }
    }
    return nMade;
}

/// Has the quick way put the rings together as they should be? Else they cross, or the other side of an edge
/// is inside.
bool CLocalRegions::IsGood(const CLevel& level) const
{
    return m_geos.IsValid(level.region) && m_geos.MayBe(level.region, level.centre, level.bCentreInside);
}

/// Cuts the region around a square out of the whole.
void CLocalRegions::CutSurely(CLevel& level)
{
    ++m_nNumCutSurely;
    level.region = m_geos.Clip(GetWhole(), level.frame);
    level.eState = enumState::Valid;
}
