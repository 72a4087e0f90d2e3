#ifndef OCTREE_CRAYKEY_H
#define OCTREE_CRAYKEY_H

#include <octree/CCoordBox.h>
#include <zor3geom/PLANE_3D.h>
#include <zor3geom/PNT_3D.h>

#include <vector>

/// A key of the best-point search: how far along a ray a place lies, wanted within a cone about the ray and
/// in front of no plane. Coordinate units; what is computed is told where `PickPnt` is declared.
class CRayKey
{
public:
    /// Further out no distance is squared without overflow.
    static constexpr double c_dMaxCoord = 1e150;

    CRayKey(const zor::geom::PNT_3D& from, const zor::geom::PNT_3D& direction, double dTan,
            const std::vector<zor::geom::PLANE_3D>& planes);

    /// @return whether there is a ray with a cone: if not, nothing may be asked.
    bool IsValid() const noexcept { return m_bValid; }

    /// @return distance along the ray, below 0 behind its beginning.
    double CalcKey(const zor::geom::PNT_3D& pnt) const noexcept
    {
        return (pnt.x - m_from.x) * m_dir.x + (pnt.y - m_from.y) * m_dir.y + (pnt.z - m_from.z) * m_dir.z;
    }

    /// @param dKey  as calculated for the place.
    bool IsWanted(const zor::geom::PNT_3D& pnt, double dKey) const noexcept;

    /// @param dBound  receives a key that no wanted place of the box lies below.
    /// @return false: no place of the box is wanted.
    bool CalcBound(const CCoordBox& box, double& dBound) const noexcept;

private:
    bool IsBesideCone(double dSquare, double dKey) const noexcept
    {
        return dSquare > (m_dTan * dKey) * (m_dTan * dKey);
    }

    zor::geom::PNT_3D m_from;
    zor::geom::PNT_3D m_dir; // of length 1
    double m_dTan;
    bool m_bValid;
    const std::vector<zor::geom::PLANE_3D>& m_planes;
    std::vector<zor::geom::PLANE_3D> m_vecBoundingPlanes; // those by which boxes may be judged
};

#endif
