#ifndef ANALYSIS_OUTLINE_CNEXTPNT_H
#define ANALYSIS_OUTLINE_CNEXTPNT_H

#include <analysis/outline/CLeftTurn.h>
#include <analysis/outline/COutlinePath.h>
#include <analysis/outline/CPathView.h>
#include <analysis/outline/CStepRings.h>

#include <cstdint>

/// The point that a path goes on to, chosen from those it is offered: of the nearest ring, the one of the
/// sharpest left turn that does not meet the path, of equal turns the first.
///
/// Where the path refuses one point after the other, it looks around: what lies behind the path is then
/// refused at a glance.
template <class T>
class CNextPnt
{
public:
    using TBox = zor::geom::TPlanBox<std::int32_t>; // compact units

    /// @param path  of two points or more; not to change while this one is in use. Nor are the others.
    CNextPnt(const T* pPnts, COutlinePath<T>& path, const CStepRings& rings, CPathView& view) noexcept;

    /// @return -1 when no point has been good enough.
    std::int32_t Get() const noexcept { return m_nBest; }

    /// Begins behind a point that was the best before, from the same path: what would have been better was
    /// refused then.
    ///
    /// @param nRing  the ring it lies in.
    void BeginBehind(std::int32_t nIndex, int nRing) noexcept;

    int GetRing() const noexcept { return m_nRing; }

    /// Offers the next point: points come ring by ring, those of a ring in their order.
    ///
    /// @param dx, dy  from the last point of the path to it, not both 0.
    void Offer(std::int32_t nIndex, double dx, double dy)
    {
        if (nIndex == m_nPrev || !m_turn.CanBeat(dx, dy) || IsHidden(nIndex, dx, dy))
            return;
        const double dTurn = m_turn.CalcTurn(dx, dy);
        if (m_turn.IsSharper(dTurn))
            Take(nIndex, dx, dy, dTurn);
    }

    /// Offers a point, points coming in any order: those of lower indices are the first ones.
    ///
    /// @param findRing  `findRing()`: the ring it lies in, or more than there are. Asked if the point may do.
    template <class FindRing>
    void OfferAny(std::int32_t nIndex, double dx, double dy, FindRing findRing)
    {
        if (nIndex == m_nPrev || IsHidden(nIndex, dx, dy))
            return;
        const int nRing = findRing();
        if (nRing > m_nRing || nRing < m_nFirstRing || (nRing == m_nRing && !m_turn.CanBeat(dx, dy)))
            return;
        const double dTurn = m_turn.CalcTurn(dx, dy);
        if (nRing == m_nFirstRing && dTurn < m_dFirstTurn)
            return;
        const bool bBetter = m_turn.IsSharper(dTurn) || (m_turn.IsBest(dTurn) && nIndex < m_nBest);
        if ((bBetter || (nRing < m_nRing && m_turn.IsForward(dTurn))) && Take(nIndex, dx, dy, dTurn))
            m_nRing = nRing;
    }

    /// @return the square of the distance of a box.
    double CalcSquare(const TBox& box) const noexcept;

    /// @return false only if no point in the box can be chosen, of points no farther than `dMost` and farther
    ///         than `dTried` (squares of distances).
    bool CanHold(const TBox& box, double dSquare, double dTried, double dMost) const noexcept;

    /// @return segments of the path looked at.
    std::int64_t GetNumLooks() const noexcept { return m_nNumLooks; }

private:
    /// The first point is never taken for hidden: the path may touch itself there.
    bool IsHidden(std::int32_t nIndex, double dx, double dy) const noexcept
    {
        return m_bLookedAround && nIndex != m_path.GetFirst() && m_view.Hides(dx, dy);
    }

    bool Take(std::int32_t nIndex, double dx, double dy, double dTurn);
    bool HoldsFirst(const TBox& box) const noexcept;
    void LookAround();

    const T* m_pPnts;
    COutlinePath<T>& m_path;
    const CStepRings& m_rings;
    CPathView& m_view;
    const T& m_pnt; // the last point of the path
    std::int32_t m_nPrev;
    CLeftTurn m_turn;
    std::int32_t m_nBest = -1;
    int m_nRing;          // of the best point; without one the last ring
    int m_nFirstRing = 0; // with BeginBehind: nothing before this ring
    double m_dFirstTurn;  // and sharper than this turn in it is to be found
    bool m_bLookedAround = false;
    double m_dSeen; // square of the distance beyond which everything is hidden
    std::int64_t m_nNumRefused = 0;
    std::int64_t m_nNextLook;     // refusals after which it is due
    std::int32_t m_nNextRing = 0; // of cells of the path's grid: the first one not looked at
    std::int64_t m_nNumLooks = 0;
};

class CTruncPnt;
class CTruncPnt_Color;
extern template class CNextPnt<CTruncPnt>;
extern template class CNextPnt<CTruncPnt_Color>;

#endif
