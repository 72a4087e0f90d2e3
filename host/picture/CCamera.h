#ifndef HOST_PICTURE_CCAMERA_H
#define HOST_PICTURE_CCAMERA_H

#include <zor3geom/PNT_3D.h>

#include <algorithm>
#include <limits>

namespace zorcld
{

/// A place on the picture plane: to the right, upwards, and away from the viewer, coordinate units.
struct CViewPnt
{
    double x = 0.0;
    double y = 0.0;
    double dDepth = 0.0;
};

/// What of the picture plane the points take.
struct CViewExtent
{
    double xmin = std::numeric_limits<double>::max();
    double ymin = std::numeric_limits<double>::max();
    double xmax = std::numeric_limits<double>::lowest();
    double ymax = std::numeric_limits<double>::lowest();

    void Add(const CViewPnt& pnt)
    {
        xmin = std::min(xmin, pnt.x);
        ymin = std::min(ymin, pnt.y);
        xmax = std::max(xmax, pnt.x);
        ymax = std::max(ymax, pnt.y);
    }
};

/// How many times as large coordinates are drawn, before they are projected.
struct CStretch
{
    double x = 1.0;
    double y = 1.0;
    double z = 1.0;
};

/// Parallel projection along one direction.
class CCamera
{
public:
    /// @param dAzimuth    where the viewer stands, degrees clockwise from north (+y).
    /// @param dElevation  how high, degrees from -90 to 90; 90 looks straight down.
    CCamera(double dAzimuth, double dElevation);

    /// North up, east to the right.
    static CCamera Plan() { return {180.0, 90.0}; }

    void SetStretch(const CStretch& stretch) { m_stretch = stretch; }

    /// The largest change of place on the picture plane for a change of coordinates.
    double GetLargestStretch() const { return std::max({m_stretch.x, m_stretch.y, m_stretch.z}); }

    CViewPnt Project(const zor::geom::PNT_3D& pnt) const
    {
        const double x = m_stretch.x * pnt.x;
        const double y = m_stretch.y * pnt.y;
        const double z = m_stretch.z * pnt.z;
        return {m_right.x * x + m_right.y * y, m_up.x * x + m_up.y * y + m_up.z * z,
                -(m_viewer.x * x + m_viewer.y * y + m_viewer.z * z)};
    }

private:
    zor::geom::PNT_3D m_viewer; // unit vectors
    zor::geom::PNT_3D m_right;
    zor::geom::PNT_3D m_up;
    CStretch m_stretch;
};

} // namespace zorcld

#endif
