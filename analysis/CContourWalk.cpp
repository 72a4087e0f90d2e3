#include <analysis/CContourWalk.h>

#include <analysis/CLeftTurn.h>
#include <octree/CPntBits.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/CollectLeaves2D.h>

#include <cmath>

/// Shows `onPnt(index, dx, dy)` the open points within a radius of the last point of the path that do
/// not share its place, leaf by leaf; dx and dy lead to them.
template <class T>
template <class OnPnt>
void CContourWalk<T>::VisitNear(double dRadius, OnPnt onPnt) const
{
    const double x = static_cast<double>(m_pPnts[m_path.GetLast()].m_nX);
    const double y = static_cast<double>(m_pPnts[m_path.GetLast()].m_nY);
    const double dRadiusSquare = dRadius * dRadius;
    const auto onLeaf = [&](const COcTreeLeaf& leaf)
    {
        for (std::int32_t k = leaf.m_nFirst; k < leaf.m_nFirst + leaf.m_nCount; ++k)
        {
            const double dx = static_cast<double>(m_pPnts[k].m_nX) - x;
            const double dy = static_cast<double>(m_pPnts[k].m_nY) - y;
            const double dDistSquare = dx * dx + dy * dy;
            if (dDistSquare > dRadiusSquare || dDistSquare == 0.0 || !CPntBits::IsSet(m_pOpen, k))
                continue;
            onPnt(k, dx, dy);
        }
    };
    CollectLeaves2D(m_tree, {x - dRadius, y - dRadius, x + dRadius, y + dRadius}, onLeaf);
}

/// KEPT: the first step leads strictly north of the start point, or there is none.
template <class T>
std::int32_t CContourWalk<T>::FindFirst(double dRadius) const
{
    std::int32_t nBest = -1;
    double dBest = 0.0;
    VisitNear(dRadius,
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
std::int32_t CContourWalk<T>::FindSharpest(double dRadius) const
{
    const std::int32_t nPrev = m_path.GetLastButOne();
    const T& pnt = m_pPnts[m_path.GetLast()];
    const T& pntPrev = m_pPnts[nPrev];
    CLeftTurn turn(static_cast<double>(pnt.m_nX) - static_cast<double>(pntPrev.m_nX),
                   static_cast<double>(pnt.m_nY) - static_cast<double>(pntPrev.m_nY));
    std::int32_t nBest = -1;
    VisitNear(dRadius,
              [&](std::int32_t k, double dx, double dy)
              {
                  if (!turn.CanBeat(dx, dy) || k == nPrev)
                      return;
                  const double dTurn = turn.CalcTurn(dx, dy);
                  if (!turn.IsSharper(dTurn) || m_path.IsCrossedBy(k))
                      return;
                  turn.SetBest(dTurn, dx, dy);
                  nBest = k;
              });
    return nBest;
}

/// @return the point to go on to, or -1.
template <class T>
std::int32_t CContourWalk<T>::FindNext() const
{
    constexpr double c_dMaxSteps = 10.0;
    double dRadius = 0.0;
    std::int32_t nNext = -1;
    do
    {
        dRadius += m_dStep;
        nNext = m_path.GetNumPnts() == 1 ? FindFirst(dRadius) : FindSharpest(dRadius);
    } while (nNext == -1 && dRadius < c_dMaxSteps * m_dStep);
    return nNext;
}

// The walk ends: no point is on the path twice, for a way to a point of the path meets a segment there,
// and a point given up never comes back. So it takes at most two steps a point.
template <class T>
bool CContourWalk<T>::Walk(std::int32_t nStart)
{
    m_path.Push(nStart);
    do
    {
        const std::int32_t nNext = FindNext();
        if (nNext != -1)
        {
            m_path.Push(nNext);
            continue;
        }
        CPntBits::Clear(m_pOpen, m_path.GetLast());
        m_path.Pop();
        if (m_path.IsEmpty())
            return false;
    } while (m_path.GetNumPnts() == 1 || m_path.GetLast() != nStart);
    return true;
}

template class CContourWalk<CTruncPnt>;
template class CContourWalk<CTruncPnt_Color>;
