#include <zor3geom/LINE_2D.h>

#include <algorithm>
#include <cmath>

using zor::geom::LINE_2D;

namespace
{

bool IsFinite(const LINE_2D& line) noexcept
{
    return std::isfinite(line.x1) && std::isfinite(line.y1) && std::isfinite(line.x2) &&
           std::isfinite(line.y2);
}

bool RangesMeet(double a1, double a2, double b1, double b2) noexcept
{
    return std::max(a1, a2) >= std::min(b1, b2) && std::max(b1, b2) >= std::min(a1, a2);
}

/// Sign of a·b − c·d. Rounding keeps order: where the rounded products differ, they differ as the
/// products do, and where they are equal their rounding errors, which are exact, decide.
int CalcSign(double a, double b, double c, double d) noexcept
{
    const double dAB = a * b;
    const double dCD = c * d;
    if (dAB != dCD)
        return dAB > dCD ? 1 : -1;
    const double dErrorAB = std::fma(a, b, -dAB);
    const double dErrorCD = std::fma(c, d, -dCD);
    if (dErrorAB == dErrorCD)
        return 0;
    return dErrorAB > dErrorCD ? 1 : -1;
}

/// @return 1 when (x, y) lies left of the line, -1 right of it, 0 on it.
int CalcSide(const LINE_2D& line, double x, double y) noexcept
{
    return CalcSign(line.x2 - line.x1, y - line.y1, line.y2 - line.y1, x - line.x1);
}

/// Does the line through `a` leave the ends of `b` on one side?
bool Separates(const LINE_2D& a, const LINE_2D& b) noexcept
{
    return CalcSide(a, b.x1, b.y1) * CalcSide(a, b.x2, b.y2) > 0;
}

} // namespace

// Segments whose boxes meet are apart only if the line of one of them has the other on one side. That
// holds for segments on one line and for segments without length too.
bool LINE_2D::intersect(const LINE_2D& line) const noexcept
{
    if (!IsFinite(*this) || !IsFinite(line))
        return false;
    if (!RangesMeet(x1, x2, line.x1, line.x2) || !RangesMeet(y1, y2, line.y1, line.y2))
        return false;
    return !Separates(*this, line) && !Separates(line, *this);
}
