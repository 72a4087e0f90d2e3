#include <analysis/outline/COutlineWalk.h>

#include <octree/CPntBits.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/CollectLeaves2D.h>

#include <cmath>
#include <limits>

/// Shows `onPnt(index, dx, dy)` the open points of a ring around the last point of the path that do not share
/// its place, leaf by leaf; dx and dy lead from that point to them. Those of the rings within are left out.
template <class T>
template <class OnPnt>
void COutlineWalk<T>::VisitRing(int nRing, OnPnt onPnt)
{
    const double x = static_cast<double>(m_pPnts[m_path.GetLast()].m_nX);
    const double y = static_cast<double>(m_pPnts[m_path.GetLast()].m_nY);
    const double dRadius = m_rings.GetRadius(nRing);
    const double dTried = nRing == 0 ? 0.0 : m_rings.GetRadius(nRing - 1);
    const double dRadiusSquare = dRadius * dRadius;
    const zor::geom::TPlanBox<std::int64_t> boxTried =
        RoundInwards({x - dTried, y - dTried, x + dTried, y + dTried});
    const auto onLeaf = [&](const COcTreeLeaf& leaf, const CPlanSquare& square)
    {
        m_nNumLooks += leaf.m_nCount;
        const double dTriedSquare = boxTried.Meets(square.GetBox()) ? dTried * dTried : 0.0;
        for (std::int32_t k = leaf.m_nFirst; k < leaf.m_nFirst + leaf.m_nCount; ++k)
        {
            const double dx = static_cast<double>(m_pPnts[k].m_nX) - x;
            const double dy = static_cast<double>(m_pPnts[k].m_nY) - y;
            const double dDistSquare = dx * dx + dy * dy;
            if (dDistSquare > dRadiusSquare || dDistSquare <= dTriedSquare || !CPntBits::IsSet(m_pOpen, k))
                continue;
            onPnt(k, dx, dy);
        }
    };
    CollectLeaves2D(m_tree, {x - dRadius, y - dRadius, x + dRadius, y + dRadius}, onLeaf);
}

/// KEPT: the first step leads strictly north of the start point, or there is none
/// (FirstStepIsStrictlyNorth_Kept).
template <class T>
std::int32_t COutlineWalk<T>::FindFirst()
{
    std::int32_t nBest = -1;
    double dBest = 0.0;
    for (int nRing = 0; nRing < m_rings.GetNum() && nBest == -1; ++nRing)
        VisitRing(nRing,
                  [&](std::int32_t k, double dx, double dy)
                  {
                      const double dAngle = std::atan2(dy, dx);
                      if (dAngle > dBest)
                      {
                          dBest = dAngle;
                          nBest = k;
                      }
                  });
    return nBest;
}

// What refuses a point does not depend on the radius, so each radius asks only for what it adds.
template <class T>
void COutlineWalk<T>::FindInTree(CNextPnt<T>& next)
{
    for (int nRing = 0; nRing < m_rings.GetNum() && next.Get() == -1; ++nRing)
        VisitRing(nRing, [&](std::int32_t k, double dx, double dy) { next.Offer(k, dx, dy); });
}

/// @param dTried, dMost  squares of distances: the points between them are asked for.
template <class T>
void COutlineWalk<T>::FindInIndex(CNextPnt<T>& next, double dTried, double dMost)
{
    const T& pnt = m_pPnts[m_path.GetLast()];
    const auto isWanted = [&](const COpenPnts::TBox& box, double dSquare)
    {
        ++m_nNumLooks;
        return next.CanHold(box, dSquare, dTried, dMost);
    };
    const auto onPnt = [&](const COpenPnts::CEntry& entry)
    {
        ++m_nNumLooks;
        const double dx = static_cast<double>(entry.x) - static_cast<double>(pnt.m_nX);
        const double dy = static_cast<double>(entry.y) - static_cast<double>(pnt.m_nY);
        const double dSquare = dx * dx + dy * dy;
        if (dSquare > dTried && dSquare <= dMost)
            next.OfferAny(entry.nIndex, dx, dy,
                          [&] { return m_pIndex->FindRing(m_rings, entry.nIndex, pnt, dSquare); });
    };
    m_pIndex->GetPnts().Visit([&](const COpenPnts::TBox& box) { return next.CalcSquare(box); }, isWanted,
                              [&](std::int32_t k) { return CPntBits::IsSet(m_pOpen, k); }, onPnt);
}

/// First in the ring of one step, which most often is enough, then in all others.
///
/// @param nGivenUp  the last point that was given up from here; -1: none.
template <class T>
void COutlineWalk<T>::FindInRings(CNextPnt<T>& next, std::int32_t nGivenUp)
{
    int nFirst = 0;
    if (nGivenUp != -1)
    {
        const T& pnt = m_pPnts[m_path.GetLast()];
        const double dx = static_cast<double>(m_pPnts[nGivenUp].m_nX) - static_cast<double>(pnt.m_nX);
        const double dy = static_cast<double>(m_pPnts[nGivenUp].m_nY) - static_cast<double>(pnt.m_nY);
        nFirst = m_pIndex->FindRing(m_rings, nGivenUp, pnt, dx * dx + dy * dy);
        next.BeginBehind(nGivenUp, nFirst);
    }
    const int nLast = m_rings.GetNum() - 1;
    const double dStepSquare = m_rings.GetSquare(0);
    if (nFirst == 0)
        FindInIndex(next, 0.0, dStepSquare);
    if (nLast > 0 && (next.Get() == -1 || next.GetRing() > 0))
        FindInIndex(next, dStepSquare, m_rings.GetSquare(nLast));
}

template <class T>
void COutlineWalk<T>::MakeIndex()
{
    if (!(m_rings.GetRadius(0) > 0.0)) // not a number, or below 0: the tree finds what no ring holds
        return;
    m_pIndex = CPlanIndex<T>::Make(m_tree, m_pPnts, m_pOpen);
    if (m_pIndex == nullptr || m_pIndex->GetPnts().GetBox().IsEmpty())
        return;
    constexpr std::size_t c_nMaxPnts = 200000000; // the grid lists a segment up to nine times, in an int32
    if (m_pIndex->GetPnts().GetNumPnts() < c_nMaxPnts)
        m_path.MakeGrid(m_pIndex->GetPnts().GetBox(), m_pIndex->GetPnts().GetNumPnts() / 2 + 1);
}

/// @return the point to go on to, or -1.
template <class T>
std::int32_t COutlineWalk<T>::FindNext(std::int32_t nGivenUp)
{
    if (m_path.GetNumPnts() == 1)
        return FindFirst();
    if (m_nNumLooks >= m_nPatience)
    {
        m_nPatience = std::numeric_limits<std::int64_t>::max();
        MakeIndex();
    }
    CNextPnt<T> next(m_pPnts, m_path, m_rings, m_view);
    if (m_pIndex == nullptr)
        FindInTree(next);
    else
        FindInRings(next, nGivenUp);
    m_nNumLooks += next.GetNumLooks();
    return next.Get();
}

// From a place where a point was given up no way leads on as long as the path to it is the same, whichever of
// the points at that place it ends at: points are closed meanwhile, and none is opened.
template <class T>
bool COutlineWalk<T>::IsGivenUpAgain(std::int32_t nIndex, std::int32_t nGivenUp,
                                     std::int32_t nStart) const noexcept
{
    return nGivenUp != -1 && nIndex != nStart && m_pPnts[nIndex].m_nX == m_pPnts[nGivenUp].m_nX &&
           m_pPnts[nIndex].m_nY == m_pPnts[nGivenUp].m_nY;
}

// A point of the path need not be tried again: any way to it would meet the segment that ends there. So
// the walk closes a point as soon as it takes it, and leaves it closed when it gives the point up; only the
// start point stays open, to be reached again. That is why the walk ends: it takes no point twice.
template <class T>
enumOutline COutlineWalk<T>::Walk(std::int32_t nStart, std::int64_t nMaxLooks)
{
    std::int32_t nGivenUp = -1; // from the last point of the path as it is
    m_path.Push(nStart);
    do
    {
        const std::int32_t nNext = FindNext(nGivenUp);
        if (nNext == -1)
        {
            nGivenUp = m_path.GetLast();
            m_path.Pop();
            continue;
        }
        if (!IsGivenUpAgain(nNext, nGivenUp, nStart))
        {
            m_path.Push(nNext);
            nGivenUp = -1;
        }
        if (nNext == nStart)
            return Outline_Closed;
        CPntBits::Clear(m_pOpen, nNext);
    } while (!m_path.IsEmpty() && GetNumLooks() <= nMaxLooks);
    return m_path.IsEmpty() ? Outline_None : Outline_LeftOff;
}

template class COutlineWalk<CTruncPnt>;
template class COutlineWalk<CTruncPnt_Color>;
