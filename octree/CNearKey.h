#ifndef OCTREE_CNEARKEY_H
#define OCTREE_CNEARKEY_H

#include <octree/CCoordBox.h>
#include <zor3geom/PNT_3D.h>

#include <cmath>

/// A key of the best-point search: the square of the distance from a place, wanted up to a limit. Coordinate
/// units; what is computed is told where `FindNearestPnt` is declared.
///
/// @tparam IsPlan  heights are not looked at.
template <bool IsPlan>
class CNearKey
{
public:
    /// @param dMax  largest distance wanted.
    CNearKey(const zor::geom::PNT_3D& from, double dMax) noexcept
        : m_from(from), m_dMax(dMax * dMax),
          m_bValid(IsCoord(from.x) && IsCoord(from.y) && (IsPlan || IsCoord(from.z)) && dMax >= 0.0)
    {
    }

    /// @return whether there are a place and a distance: if not, nothing may be asked.
    bool IsValid() const noexcept { return m_bValid; }

    double CalcKey(const zor::geom::PNT_3D& pnt) const noexcept
    {
        const double dX = pnt.x - m_from.x;
        const double dY = pnt.y - m_from.y;
        if constexpr (IsPlan)
            return dX * dX + dY * dY;
        const double dZ = pnt.z - m_from.z;
        return dX * dX + dY * dY + dZ * dZ;
    }

    bool IsWanted(const zor::geom::PNT_3D&, double dKey) const noexcept { return dKey <= m_dMax; }

    /// @param dBound  receives a key that no place of the box lies below: the same operations as for a point,
    ///                in the same order (see CCoordRange).
    /// @return false: no place of the box is wanted.
    bool CalcBound(const CCoordBox& box, double& dBound) const noexcept
    {
        dBound = (box.x - m_from.x).GetMinSquare() + (box.y - m_from.y).GetMinSquare();
        if constexpr (!IsPlan)
            dBound += (box.z - m_from.z).GetMinSquare();
        return dBound <= m_dMax;
    }

private:
    static bool IsCoord(double d) noexcept { return std::fabs(d) <= 1e150; } // its square does not overflow

    zor::geom::PNT_3D m_from;
    double m_dMax; // square of the distance
    bool m_bValid;
};

#endif
