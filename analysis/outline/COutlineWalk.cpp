#include <analysis/outline/COutlineWalk.h>

#include <analysis/outline/CLeftTurn.h>
#include <octree/CPntBits.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/CollectLeaves2D.h>

#include <cmath>

/// Shows `onPnt(index, dx, dy)` the open points within a radius of the last point of the path that do
/// not share its place, leaf by leaf; dx and dy lead from that point to them.
///
/// @param dTried  a smaller radius that has been tried from here: the points within it are left out.
template <class T>
template <class OnPnt>
void COutlineWalk<T>::VisitNear(double dRadius, double dTried, OnPnt onPnt) const
{
    const double x = static_cast<double>(m_pPnts[m_path.GetLast()].m_nX);
    const double y = static_cast<double>(m_pPnts[m_path.GetLast()].m_nY);
    const double dRadiusSquare = dRadius * dRadius;
    const zor::geom::TPlanBox<std::int64_t> boxTried =
        RoundInwards({x - dTried, y - dTried, x + dTried, y + dTried});
    const auto onLeaf = [&](const COcTreeLeaf& leaf, const CPlanSquare& square)
    {
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
std::int32_t COutlineWalk<T>::FindFirst(double dRadius, double dTried) const
{
    std::int32_t nBest = -1;
    double dBest = 0.0;
    VisitNear(dRadius, dTried,
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

template <class T>
std::int32_t COutlineWalk<T>::FindSharpest(double dRadius, double dTried) const
{
    const std::int32_t nPrev = m_path.GetLastButOne();
    const T& pnt = m_pPnts[m_path.GetLast()];
    const T& pntPrev = m_pPnts[nPrev];
    CLeftTurn turn(static_cast<double>(pnt.m_nX) - static_cast<double>(pntPrev.m_nX),
                   static_cast<double>(pnt.m_nY) - static_cast<double>(pntPrev.m_nY));
    std::int32_t nBest = -1;
    VisitNear(dRadius, dTried,
              [&](std::int32_t k, double dx, double dy)
              {
                  if (k == nPrev || !turn.CanBeat(dx, dy))
                      return;
                  const double dTurn = turn.CalcTurn(dx, dy);
                  if (!turn.IsSharper(dTurn) || m_path.IsCrossedBy(k))
                      return;
                  turn.SetBest(dTurn, dx, dy);
                  nBest = k;
              });
    return nBest;
}

// What refuses a point does not depend on the radius, so each radius asks only for what it adds.
/// @return the point to go on to, or -1.
template <class T>
std::int32_t COutlineWalk<T>::FindNext() const
{
    constexpr double c_dMaxSteps = 10.0;
    double dTried = 0.0;
    while (true)
    {
        const double dRadius = dTried + m_dStep;
        const std::int32_t nNext =
            m_path.GetNumPnts() == 1 ? FindFirst(dRadius, dTried) : FindSharpest(dRadius, dTried);
        if (nNext != -1 || !(dRadius < c_dMaxSteps * m_dStep))
            return nNext;
        dTried = dRadius;
    }
}

// A point of the path need not be tried again: any way to it would meet the segment that ends there. So
// the walk closes a point as soon as it takes it, and leaves it closed when it gives the point up; only the
// start point stays open, to be reached again. That is why the walk ends: it takes no point twice.
template <class T>
bool COutlineWalk<T>::Walk(std::int32_t nStart)
{
    m_path.Push(nStart);
    do
    {
        const std::int32_t nNext = FindNext();
        if (nNext == -1)
        {
            m_path.Pop();
            continue;
        }
        m_path.Push(nNext);
        if (nNext == nStart)
            return true;
        CPntBits::Clear(m_pOpen, nNext);
    } while (!m_path.IsEmpty());
    return false;
}

template class COutlineWalk<CTruncPnt>;
template class COutlineWalk<CTruncPnt_Color>;
