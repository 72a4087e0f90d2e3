#ifndef ZOR3GEOM_PLANE_3D_H
#define ZOR3GEOM_PLANE_3D_H

namespace zor::geom
{

/// Plane a·x + b·y + c·z + d = 0 in general form; (a, b, c) is its normal, of any length above 0.
struct PLANE_3D
{
    double a = 0.0; ///< normal, x
    double b = 0.0; ///< normal, y
    double c = 0.0; ///< normal, z
    double d = 0.0; ///< coordinate units where the normal has length 1

    /// No plane: nothing is in front of it.
    PLANE_3D() = default;

    /// The plane of four coefficients.
    PLANE_3D(double dA, double dB, double dC, double dD) : a(dA), b(dB), c(dC), d(dD) {}

    /// @return true on the side to which the normal points. A point on the plane is not in front of
    ///         it, nor is anything in front of a plane with a coefficient that is not a number.
    bool IsInFrontOf(double x, double y, double z) const noexcept { return a * x + b * y + c * z + d > 0.0; }
};

} // namespace zor::geom

#endif
