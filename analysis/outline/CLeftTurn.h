#ifndef ANALYSIS_OUTLINE_CLEFTTURN_H
#define ANALYSIS_OUTLINE_CLEFTTURN_H

#include <zor3geom/TPlanBox.h>

#include <algorithm>
#include <cmath>

/// Finds the sharpest left turn among directions, seen from one heading.
///
/// A turn is the heading in minus the heading out, radians, within -π and π: negative to the left,
/// just above -π nearly straight back. The best so far begins above all turns.
///
/// The angles decide, and they are costly. So a number that grows with the turn and needs no angle
/// (`CalcOrder`) tells first whether a direction can be sharper than the best; where it comes near to a
/// tie, and near the way back, it leaves the answer to the angles.
class CLeftTurn
{
public:
    /// @param dx, dy  direction of arrival, whole numbers, not both 0; below 2^33.
    CLeftTurn(double dx, double dy) noexcept : m_dx(dx), m_dy(dy), m_dHeading(std::atan2(dy, dx)) {}

    /// @return whether the direction may be sharper than the best: false only if it is not, true now and
    ///         then although it is not. Cost: a few operations, without an angle.
    bool CanBeat(double dx, double dy) const noexcept
    {
        const double dOrder = CalcOrder(dx, dy);
        return dOrder <= m_dBestOrder + c_dSlack || dOrder >= c_dBack - c_dSlack;
    }

    /// @return false only if no direction into a box can beat the best.
    /// @param box  relative to the place of the turn; it must not hold that place.
    bool CanBeat(const zor::geom::TPlanBox<double>& box) const noexcept
    {
        double dLeast = c_dBack;
        double dMost = -c_dBack;
        for (const double dx : {box.xmin, box.xmax})
            for (const double dy : {box.ymin, box.ymax})
            {
                const double dOrder = CalcOrder(dx, dy);
                dLeast = std::min(dLeast, dOrder);
                dMost = std::max(dMost, dOrder);
            }
        // Half a turn is an order of 2, and a box fills less: one that seems to fill more lies across the way
        // back.
        constexpr double c_dHalf = 2.0;
        return dLeast <= m_dBestOrder + c_dSlack || dMost >= c_dBack - c_dSlack ||
               dMost - dLeast >= c_dHalf - c_dSlack;
    }

    /// @return the turn; -π exactly for a direction that is refused because it leads straight back.
    double CalcTurn(double dx, double dy) const noexcept
    {
        double dTurn = m_dHeading - std::atan2(dy, dx);
        if (dTurn < -c_dPi)
            dTurn += 2.0 * c_dPi;
        if (dTurn > c_dPi)
            dTurn -= 2.0 * c_dPi;
        return dTurn;
    }

    /// @return whether the turn is sharper than the best.
    /// KEPT: straight back is refused only where the angles give -π exactly; where they give π, it is the
    /// widest turn to the right (IsSharper_StraightBackDependsOnTheSign_Kept).
    bool IsSharper(double dTurn) const noexcept { return IsForward(dTurn) && dTurn < m_dBest; }

    /// @return false for the turn that is refused.
    bool IsForward(double dTurn) const noexcept { return dTurn != -c_dPi; }

    bool IsBest(double dTurn) const noexcept { return dTurn == m_dBest; }

    void SetBest(double dTurn, double dx, double dy) noexcept
    {
        m_dBest = dTurn;
        m_dBestOrder = CalcOrder(dx, dy);
        // Near the way back the side is what the angles say, not what the products say.
        if (std::fabs(m_dBestOrder) >= c_dBack - c_dSlack)
            m_dBestOrder = std::copysign(c_dBack, dTurn);
    }

private:
    static constexpr double c_dPi = 3.14159265358979323846;
    static constexpr double c_dBack = 2.0;     // order of the way back, at either end
    static constexpr double c_dSlack = 1.0e-9; // far more than what rounding does to orders and angles

    /// A number from -2 to 2 that grows with the turn, at least half as fast.
    double CalcOrder(double dx, double dy) const noexcept
    {
        const double dAlong = m_dx * dx + m_dy * dy;
        const double dLeft = m_dx * dy - m_dy * dx;
        const double dOrder = dAlong / (std::fabs(dAlong) + std::fabs(dLeft));
        return dLeft > 0.0 ? dOrder - 1.0 : 1.0 - dOrder;
    }

    double m_dx;
    double m_dy;
    double m_dHeading;
    double m_dBest = 2.0 * c_dPi;
    double m_dBestOrder = 2.0 * c_dBack;
};

#endif
