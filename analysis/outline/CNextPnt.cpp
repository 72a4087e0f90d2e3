#include <analysis/outline/CNextPnt.h>

#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr std::int64_t c_nPatience = 2;   // refusals between two looks around
constexpr std::int64_t c_nMaxLook = 48;   // segments and cells, after which a look ends
constexpr std::int32_t c_nMaxRings = 100; // of cells: there is an end to every look
constexpr double c_dEndless = std::numeric_limits<double>::infinity();

template <class T>
double CalcDx(const T& from, const T& to) noexcept
{
    return static_cast<double>(to.m_nX) - static_cast<double>(from.m_nX);
}

template <class T>
double CalcDy(const T& from, const T& to) noexcept
{
    return static_cast<double>(to.m_nY) - static_cast<double>(from.m_nY);
}

/// A box relative to a place.
template <class T>
zor::geom::TPlanBox<double> MakeRelative(const zor::geom::TPlanBox<std::int32_t>& box, const T& pnt) noexcept
{
    const double x = static_cast<double>(pnt.m_nX);
    const double y = static_cast<double>(pnt.m_nY);
    return {static_cast<double>(box.xmin) - x, static_cast<double>(box.ymin) - y,
            static_cast<double>(box.xmax) - x, static_cast<double>(box.ymax) - y};
}

} // namespace

template <class T>
CNextPnt<T>::CNextPnt(const T* pPnts, COutlinePath<T>& path, const CStepRings& rings,
                      CPathView& view) noexcept
    : m_pPnts(pPnts), m_path(path), m_rings(rings), m_view(view), m_pnt(pPnts[path.GetLast()]),
      m_nPrev(path.GetLastButOne()), m_turn(CalcDx(pPnts[m_nPrev], m_pnt), CalcDy(pPnts[m_nPrev], m_pnt)),
      m_nRing(rings.GetNum() - 1), m_dFirstTurn(-c_dEndless), m_dSeen(c_dEndless),
      m_nNextLook(path.GetGrid() == nullptr ? std::numeric_limits<std::int64_t>::max() : c_nPatience)
{
}

template <class T>
void CNextPnt<T>::BeginBehind(std::int32_t nIndex, int nRing) noexcept
{
    const T& pnt = m_pPnts[nIndex];
    m_nFirstRing = nRing;
    m_dFirstTurn = m_turn.CalcTurn(CalcDx(m_pnt, pnt), CalcDy(m_pnt, pnt));
}

/// Takes a point for the best, unless the path refuses it.
template <class T>
bool CNextPnt<T>::Take(std::int32_t nIndex, double dx, double dy, double dTurn)
{
    if (m_path.IsCrossedBy(nIndex))
    {
        if (++m_nNumRefused >= m_nNextLook)
            LookAround();
        return false;
    }
    m_turn.SetBest(dTurn, dx, dy);
    m_nBest = nIndex;
    return true;
}

// Each look goes on where the one before ended: no farther than the refusals so far have earned.
template <class T>
void CNextPnt<T>::LookAround()
{
    const CSegmentGrid& grid = *m_path.GetGrid();
    if (!m_bLookedAround)
        m_view.Clear();
    m_bLookedAround = true;
    std::int64_t nNum = 0;
    const double x = static_cast<double>(m_pnt.m_nX);
    const double y = static_cast<double>(m_pnt.m_nY);
    const auto isHidden = [&](const zor::geom::TPlanBox<double>& box)
    {
        ++nNum;
        return m_view.Hides({box.xmin - x, box.ymin - y, box.xmax - x, box.ymax - y});
    };
    const auto add = [&](std::int32_t nSegment)
    {
        ++nNum;
        const auto i = static_cast<std::size_t>(nSegment);
        if (i + 2 >= m_path.GetNumPnts()) // the last one ends here
            return;
        const T& from = m_pPnts[m_path.GetIndices()[i]];
        const T& to = m_pPnts[m_path.GetIndices()[i + 1]];
        m_view.Add(i, CalcDx(m_pnt, from), CalcDy(m_pnt, from), CalcDx(m_pnt, to), CalcDy(m_pnt, to));
    };
    const double dLast = m_rings.GetRadius(m_rings.GetNum() - 1);
    bool bEnough = false;
    while (nNum < c_nMaxLook && !bEnough)
    {
        grid.VisitRing(x, y, m_nNextRing, isHidden, add);
        bEnough = m_nNextRing * grid.GetEdge() > dLast || m_nNextRing >= c_nMaxRings;
        ++m_nNextRing;
    }
    m_dSeen = m_view.CalcFarthest();
    m_nNumLooks += nNum;
    const double dDone = m_nNextRing * grid.GetEdge();
    bEnough = bEnough || m_dSeen < dDone * dDone;
    m_nNextLook = bEnough ? std::numeric_limits<std::int64_t>::max() : m_nNumRefused + c_nPatience;
}

template <class T>
double CNextPnt<T>::CalcSquare(const TBox& box) const noexcept
{
    const zor::geom::TPlanBox<double> rel = MakeRelative(box, m_pnt);
    const double dx = std::max({rel.xmin, -rel.xmax, 0.0});
    const double dy = std::max({rel.ymin, -rel.ymax, 0.0});
    return dx * dx + dy * dy;
}

template <class T>
bool CNextPnt<T>::HoldsFirst(const TBox& box) const noexcept
{
    const T& first = m_pPnts[m_path.GetFirst()];
    return box.Contains(first.m_nX, first.m_nY);
}

template <class T>
bool CNextPnt<T>::CanHold(const TBox& box, double dSquare, double dTried, double dMost) const noexcept
{
    if (dSquare > dMost || (m_nBest != -1 && dSquare > m_rings.GetSquare(m_nRing)))
        return false;
    if (dSquare > m_dSeen && !HoldsFirst(box))
        return false;
    const zor::geom::TPlanBox<double> rel = MakeRelative(box, m_pnt);
    const double dFarX = std::max(-rel.xmin, rel.xmax);
    const double dFarY = std::max(-rel.ymin, rel.ymax);
    if (dFarX * dFarX + dFarY * dFarY <= dTried)
        return false;
    if (dSquare == 0.0)
        return true;
    if (m_nBest != -1 && dSquare > m_rings.GetSquare(m_nRing - 1) && !m_turn.CanBeat(rel))
        return false;
    return !m_bLookedAround || !m_view.Hides(rel) || HoldsFirst(box);
}

template class CNextPnt<CTruncPnt>;
template class CNextPnt<CTruncPnt_Color>;
