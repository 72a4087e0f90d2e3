#ifndef EXAMPLES_CCAMERA_H
#define EXAMPLES_CCAMERA_H

#include <zor3geom/PLANE_3D.h>
#include <zor3geom/PNT_3D.h>

#include <cmath>
#include <vector>

/// Where a picture is taken from. Lengths in coordinate units.
class CCamera
{
public:
    /// @param target   the middle of the picture; not where the eye is, nor straight above or below it.
    /// @param dFov     height of what the picture shows, radians.
    /// @param nWidth, nHeight  pixels.
    CCamera(const zor::geom::PNT_3D& eye, const zor::geom::PNT_3D& target, double dFov, int nWidth,
            int nHeight)
        : m_eye(eye), m_dTanY(std::tan(0.5 * dFov)), m_dTanX(m_dTanY * nWidth / nHeight),
          m_dPixel(2.0 * m_dTanY / nHeight),
          m_ahead(Normalize({target.x - eye.x, target.y - eye.y, target.z - eye.z})),
          m_right(Normalize({m_ahead.y, -m_ahead.x, 0.0})), m_up(Cross(m_right, m_ahead))
    {
    }

    const zor::geom::PNT_3D& GetEye() const { return m_eye; }

    /// How far ahead of the eye a point lies.
    double CalcDepth(const zor::geom::PNT_3D& pnt) const
    {
        return Dot(m_ahead, {pnt.x - m_eye.x, pnt.y - m_eye.y, pnt.z - m_eye.z});
    }

    /// What a pixel covers at a depth.
    double CalcPixelSize(double dDepth) const { return m_dPixel * dDepth; }

    // [frustum]
    /// The part of the view between two depths: six planes, normals pointing out of it, as the clipped
    /// queries want them.
    std::vector<zor::geom::PLANE_3D> GetFrustum(double dNear, double dFar) const
    {
        return {MakePlane(Combine(-1.0, m_ahead, 0.0, m_up), dNear),
                MakePlane(m_ahead, -dFar),
                MakePlane(Combine(-m_dTanX, m_ahead, -1.0, m_right), 0.0),
                MakePlane(Combine(-m_dTanX, m_ahead, 1.0, m_right), 0.0),
                MakePlane(Combine(-m_dTanY, m_ahead, -1.0, m_up), 0.0),
                MakePlane(Combine(-m_dTanY, m_ahead, 1.0, m_up), 0.0)};
    }
    // [/frustum]

private:
    using PNT_3D = zor::geom::PNT_3D;

    static double Dot(const PNT_3D& a, const PNT_3D& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

    static PNT_3D Cross(const PNT_3D& a, const PNT_3D& b)
    {
        return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    }

    static PNT_3D Normalize(const PNT_3D& v)
    {
        const double dLength = std::sqrt(Dot(v, v));
        return {v.x / dLength, v.y / dLength, v.z / dLength};
    }

    static PNT_3D Combine(double s, const PNT_3D& a, double t, const PNT_3D& b)
    {
        return {s * a.x + t * b.x, s * a.y + t * b.y, s * a.z + t * b.z};
    }

    /// In front: normal · (p - eye) + d > 0.
    zor::geom::PLANE_3D MakePlane(const PNT_3D& normal, double d) const
    {
        return {normal.x, normal.y, normal.z, d - Dot(normal, m_eye)};
    }

    PNT_3D m_eye;
    double m_dTanY; // half the picture at depth 1
    double m_dTanX;
    double m_dPixel;
    PNT_3D m_ahead; // of length 1, as are the other two
    PNT_3D m_right;
    PNT_3D m_up;
};

#endif
