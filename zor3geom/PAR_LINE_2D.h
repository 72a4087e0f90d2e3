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
    /// The line through two points.
    PAR_LINE_2D(const PNT_2D& start, const PNT_2D& end)
        : m_start(start), m_way(end.x - start.x, end.y - start.y)
    {
    }

    /// @return the distance from start to end.
    double length() const noexcept { return std::hypot(m_way.x, m_way.y); }

    /// Turns the line about a point.
    /// @param centre  stays where it is.
    /// @param angle   radians, counter-clockwise positive.
    void Rotate(const PNT_2D& centre, double angle) noexcept
    {
        const double dSin = std::sin(angle);
        const double dCos = std::cos(angle);
        const PNT_2D start = CalcRotated({m_start.x - centre.x, m_start.y - centre.y}, dSin, dCos);
        m_start = PNT_2D(centre.x + start.x, centre.y + start.y);
        m_way = CalcRotated(m_way, dSin, dCos);
    }

    /// Calculates a point of the line.
    /// @param t    0 gives the start, 1 the end; any other value a point beyond or between.
    /// @param out  receives it.
    void calcPt(double t, PNT_2D& out) const noexcept
    {
        out.x = m_start.x + t * m_way.x;
        out.y = m_start.y + t * m_way.y;
    }

private:
    static PNT_2D CalcRotated(const PNT_2D& way, double dSin, double dCos) noexcept
    {
        return {way.x * dCos - way.y * dSin, way.x * dSin + way.y * dCos};
    }

    PNT_2D m_start;

    // From start to end. An end kept as a place would be rounded to the steps of coordinates far from the
    // origin, and a large parameter would make the rounding as much larger.
    PNT_2D m_way;
};

} // namespace zor::geom

#endif
