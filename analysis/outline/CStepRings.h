#ifndef ANALYSIS_OUTLINE_CSTEPRINGS_H
#define ANALYSIS_OUTLINE_CSTEPRINGS_H

#include <array>

/// How far the walk around a cloud looks for its next point: one step, then two, and so on up to about ten.
///
/// Ring i holds the places farther away than radius i - 1 and no farther than radius i. The radii are summed
/// up one by one, and rounding may let an eleventh come in.
class CStepRings
{
public:
    /// @param dStep  any number.
    explicit CStepRings(double dStep) noexcept
    {
        constexpr double c_dMaxSteps = 10.0;
        double dRadius = 0.0;
        do
        {
            dRadius += dStep;
            m_adRadii[static_cast<std::size_t>(m_nNum++)] = dRadius;
        } while (dRadius < c_dMaxSteps * dStep && m_nNum < c_nMost);
    }

    int GetNum() const noexcept { return m_nNum; }
    double GetRadius(int i) const noexcept { return m_adRadii[static_cast<std::size_t>(i)]; }

    /// @return the square of a ring's outer radius; for ring -1 a number below all squares.
    double GetSquare(int i) const noexcept { return i < 0 ? -1.0 : GetRadius(i) * GetRadius(i); }

    /// @return the first ring from `nFrom` on that reaches so far, GetNum() for none.
    int Find(double dSquare, int nFrom) const noexcept
    {
        while (nFrom < m_nNum && dSquare > GetSquare(nFrom))
            ++nFrom;
        return nFrom;
    }

private:
    static constexpr int c_nMost = 11; // ten sums have no room for more

    std::array<double, c_nMost> m_adRadii{};
    int m_nNum = 0;
};

#endif
