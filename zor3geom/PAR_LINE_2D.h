#ifndef ZOR3GEOM_PAR_LINE_2D_H
#define ZOR3GEOM_PAR_LINE_2D_H

#include <zor3geom/PNT_2D.h>

#include <cmath>

namespace zor::geom
{

/// Parametric line in plan view: start + t·(end − start).
class PAR_LINE_2D
{
public:
    PAR_LINE_2D(const PNT_2D& start, const PNT_2D& end) : m_start(start), m_end(end) {}

    /// @return the distance from start to end.
    double length() const noexcept { return std::hypot(m_end.x - m_start.x, m_end.y - m_start.y); }

    /// Turns the line about a point.
    /// @param angle  radians, counter-clockwise positive.
    void Rotate(const PNT_2D& centre, double angle) noexcept
    {
        m_start = CalcRotated(m_start, centre, angle);
        m_end = CalcRotated(m_end, centre, angle);
    }

    /// @param t  0 gives the start, 1 the end; any other value a point beyond or between.
    void calcPt(double t, PNT_2D& out) const noexcept
    {
        out.x = m_start.x + t * (m_end.x - m_start.x);
        out.y = m_start.y + t * (m_end.y - m_start.y);
    }

private:
    static PNT_2D CalcRotated(const PNT_2D& pnt, const PNT_2D& centre, double angle) noexcept
    {
        const double dSin = std::sin(angle);
        const double dCos = std::cos(angle);
        const double dx = pnt.x - centre.x;
        const double dy = pnt.y - centre.y;
        return {centre.x + dx * dCos - dy * dSin, centre.y + dx * dSin + dy * dCos};
    }

    PNT_2D m_start;
    PNT_2D m_end;
};

} // namespace zor::geom

#endif
