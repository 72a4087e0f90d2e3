#ifndef OCTREE_CCOORDBOX_H
#define OCTREE_CCOORDBOX_H

#include <algorithm>

/// The numbers from `dLo` to `dHi`. The sums and products here round as those of single numbers do, and
/// rounding keeps the order of numbers: what is computed of a number in a range lies in the range computed
/// the same way, to the last bit, so that nothing decided by ranges contradicts what is decided by points.
struct CCoordRange
{
    double dLo;
    double dHi;

    CCoordRange operator+(const CCoordRange& other) const noexcept
    {
        return {dLo + other.dLo, dHi + other.dHi};
    }
    CCoordRange operator-(const CCoordRange& other) const noexcept
    {
        return {dLo - other.dHi, dHi - other.dLo};
    }
    CCoordRange operator-(double d) const noexcept { return {dLo - d, dHi - d}; }
    CCoordRange operator*(double d) const noexcept
    {
        return d < 0.0 ? CCoordRange{dHi * d, dLo * d} : CCoordRange{dLo * d, dHi * d};
    }

    /// @return the smallest square of a number in the range.
    double GetMinSquare() const noexcept
    {
        const double d = std::max({0.0, dLo, -dHi});
        return d * d;
    }
};

/// A box of places, coordinate units.
struct CCoordBox
{
    CCoordRange x;
    CCoordRange y;
    CCoordRange z;
};

#endif
