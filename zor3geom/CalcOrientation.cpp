#include <zor3geom/CalcOrientation.h>

#include <zor3geom/AddOrientation.h>
#include <zor3geom/CalcWideOrientation.h>
#include <zor3geom/IsUsableRing.h>

#include <cmath>
#include <cstddef>

namespace zor::geom
{
namespace
{

/// A sum kept without rounding, as parts that do not overlap, smallest first.
class CExactSum
{
public:
    void AddProduct(double a, double b) noexcept
    {
        const double dProduct = a * b;
        Add(std::fma(a, b, -dProduct));
        Add(dProduct);
    }

    int GetSign() const noexcept
    {
        for (std::size_t i = m_nNum; i-- > 0;)
            if (m_parts[i] != 0.0)
                return m_parts[i] > 0.0 ? 1 : -1;
        return 0;
    }

private:
    void Add(double d) noexcept
    {
        for (std::size_t i = 0; i < m_nNum; ++i)
        {
            const double dSum = d + m_parts[i];
            const double dRounded = dSum - d;
            m_parts[i] = (d - (dSum - dRounded)) + (m_parts[i] - dRounded);
            d = dSum;
        }
        m_parts[m_nNum++] = d;
    }

    double m_parts[12] = {};
    std::size_t m_nNum = 0;
};

/// Can products of the number neither overflow nor vanish, not even in the parts that a rounding takes off?
bool IsUsual(double d) noexcept
{
    return d == 0.0 || (std::fabs(d) < 1e150 && std::fabs(d) > 1e-140);
}

bool IsUsual(const PNT_2D& pnt) noexcept
{
    return IsUsual(pnt.x) && IsUsual(pnt.y);
}

int CalcExactly(const PNT_2D& a, const PNT_2D& b, const PNT_2D& p) noexcept
{
    CExactSum sum;
    AddOrientation(a, b, p, sum);
    return sum.GetSign();
}

} // namespace

int CalcOrientation(const PNT_2D& a, const PNT_2D& b, const PNT_2D& p) noexcept
{
    constexpr double c_dBound = 3.3306690738754716e-16; // (3 + 16 ulp) ulp of 1
    const double dLeft = (b.x - a.x) * (p.y - a.y);
    const double dRight = (b.y - a.y) * (p.x - a.x);
    const double d = dLeft - dRight;
    constexpr double c_dVanished = 1e-300; // far above what a product loses where it comes near to nothing
    if (std::fabs(d) > c_dBound * (std::fabs(dLeft) + std::fabs(dRight)) + c_dVanished)
        return d > 0.0 ? 1 : -1;
    const bool bUsual = IsUsual(a) && IsUsual(b) && IsUsual(p);
    if (!bUsual && IsFinitePnt(a) && IsFinitePnt(b) && IsFinitePnt(p))
        return CalcWideOrientation(a, b, p);
    return CalcExactly(a, b, p);
}

} // namespace zor::geom
