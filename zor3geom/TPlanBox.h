#ifndef ZOR3GEOM_TPLANBOX_H
#define ZOR3GEOM_TPLANBOX_H

#include <algorithm>
#include <limits>

namespace zor::geom
{

/// Axis-parallel box in plan view, over one kind of number: coordinate units as double and float, compact
/// units as integers. Its edges belong to it. Not put in order: a minimum above its maximum stays so, and
/// such a box holds nothing.
template <class T>
struct TPlanBox
{
    T xmin; ///< lower limit, included
    T ymin; ///< lower limit, included
    T xmax; ///< upper limit, included
    T ymax; ///< upper limit, included

    /// @return the box of no place at all, from which `Add` and `Extend` start.
    static constexpr TPlanBox GetEmpty() noexcept
    {
        constexpr bool c_bEndless = std::numeric_limits<T>::has_infinity;
        constexpr T c_highest =
            c_bEndless ? std::numeric_limits<T>::infinity() : std::numeric_limits<T>::max();
        constexpr T c_lowest =
            c_bEndless ? -std::numeric_limits<T>::infinity() : std::numeric_limits<T>::lowest();
        return {c_highest, c_highest, c_lowest, c_lowest};
    }

    /// @return the box of two places, given in any order.
    static constexpr TPlanBox Around(T x1, T y1, T x2, T y2) noexcept
    {
        return {std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
    }

    /// @return whether the box holds nothing; also where a limit is not a number.
    constexpr bool IsEmpty() const noexcept { return !(xmin <= xmax && ymin <= ymax); }

    /// @return whether the place lies in the box or on its edge; never for a place that is not a number.
    constexpr bool Contains(T x, T y) const noexcept
    {
        // Without branches: on which side a place fails cannot be foreseen.
        const unsigned nInX = static_cast<unsigned>(x >= xmin) & static_cast<unsigned>(x <= xmax);
        const unsigned nInY = static_cast<unsigned>(y >= ymin) & static_cast<unsigned>(y <= ymax);
        return (nInX & nInY) != 0;
    }

    /// The same for a point with members `x` and `y`.
    template <class TPnt>
    constexpr bool Contains(const TPnt& pnt) const noexcept
    {
        return Contains(pnt.x, pnt.y);
    }

    /// @return whether the boxes have a place in common; touching counts.
    constexpr bool Meets(const TPlanBox& box) const noexcept
    {
        return xmin <= box.xmax && box.xmin <= xmax && ymin <= box.ymax && box.ymin <= ymax;
    }

    /// @return the box that reaches `d` farther on every side. REQUIRES: no integer overflow.
    constexpr TPlanBox GetGrown(T d) const noexcept { return {xmin - d, ymin - d, xmax + d, ymax + d}; }

    /// Widens the box so that it holds the place; one that is not a number changes nothing.
    constexpr void Add(T x, T y) noexcept { Extend({x, y, x, y}); }

    /// Widens the box so that it holds the other one.
    constexpr void Extend(const TPlanBox& box) noexcept
    {
        xmin = std::min(xmin, box.xmin); // keeps its first argument where the second is not a number
        ymin = std::min(ymin, box.ymin);
        xmax = std::max(xmax, box.xmax);
        ymax = std::max(ymax, box.ymax);
    }
};

} // namespace zor::geom

#endif
