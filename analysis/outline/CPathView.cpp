#include <analysis/outline/CPathView.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr double c_dEndless = std::numeric_limits<double>::infinity();
constexpr double c_dNear = 1.0e-6;         // sectors: far more than rounding does to a direction
constexpr double c_dMargin = 1.0 + 1.0e-6; // of squares of distances: more than rounding does to these

/// The place where a segment meets a border, as the square of its distance; not below the true one by more
/// than the margin allows.
double CalcCrossing(double dFromX, double dFromY, double dToX, double dToY, double dBorderX, double dBorderY,
                    double dLargest) noexcept
{
    const double dx = dToX - dFromX;
    const double dy = dToY - dFromY;
    const double a = dFromX * dy;
    const double b = dFromY * dx;
    const double c = dBorderX * dy;
    const double d = dBorderY * dx;
    constexpr double c_dSound = 1.0e-6; // less than that is left of the products: rounding may have spoilt it
    if (std::fabs(a - b) < c_dSound * (std::fabs(a) + std::fabs(b)) ||
        std::fabs(c - d) < c_dSound * (std::fabs(c) + std::fabs(d)))
        return dLargest;
    const double dAlong = (a - b) / (c - d);
    return std::min(dAlong * dAlong * (dBorderX * dBorderX + dBorderY * dBorderY), dLargest);
}

} // namespace

// The sector is taken from the quarter and the ratio of the coordinates, which grows with the angle and needs
// no angle.
CPathView::CSeen CPathView::See(double dx, double dy) noexcept
{
    constexpr double c_dQuarter = c_nNumSectors / 4.0;
    const double dRatio = dx / (std::fabs(dx) + std::fabs(dy));
    const double dSector = dy >= 0.0 ? c_dQuarter * (1.0 - dRatio) : c_dQuarter * (3.0 + dRatio);
    return {dx, dy, dx * dx + dy * dy, dSector < c_nNumSectors ? dSector : 0.0};
}

void CPathView::Clear() noexcept
{
    m_adHidden.fill(c_dEndless);
    m_bChain = false;
}

void CPathView::Add(std::size_t i, double dFromX, double dFromY, double dToX, double dToY) noexcept
{
    if ((dFromX == 0.0 && dFromY == 0.0) || (dToX == 0.0 && dToY == 0.0))
    {
        m_bChain = false; // seen from an end of its own a segment has no direction
        return;
    }
    if (!m_bChain || i + 1 != m_nLast)
    {
        m_last = See(dToX, dToY);
        m_nSector = static_cast<int>(m_last.dSector);
        m_nEntered = 0;
        m_bChain = true;
    }
    m_nLast = i;
    Draw(See(dFromX, dFromY));
}

/// The chain leaves its sector, to the next one up or down. If it had come in by the other side, it has
/// closed the sector.
void CPathView::Cross(const CSeen& to, int nBorder, bool bUp) noexcept
{
    constexpr double c_dQuarter = c_nNumSectors / 4.0;
    const double u = (nBorder & (c_nNumSectors - 1)) / c_dQuarter; // 0 to 4
    const double dBorderX = u <= 2.0 ? 1.0 - u : u - 3.0;
    const double dBorderY = u <= 2.0 ? 1.0 - std::fabs(1.0 - u) : std::fabs(u - 3.0) - 1.0;
    const double dSquare = CalcCrossing(m_last.dx, m_last.dy, to.dx, to.dy, dBorderX, dBorderY,
                                        std::max(m_last.dSquare, to.dSquare));
    double& dHidden = m_adHidden[static_cast<std::size_t>(m_nSector & (c_nNumSectors - 1))];
    if (m_nEntered == (bUp ? -1 : 1))
        dHidden = std::min(dHidden, std::max(m_dFarthest, dSquare));
    m_nSector += bUp ? 1 : -1;
    m_nEntered = bUp ? -1 : 1;
    m_dFarthest = dSquare;
}

void CPathView::Draw(const CSeen& to) noexcept
{
    constexpr double c_dHalf = c_nNumSectors / 2.0;
    const double dTurn = to.dSector - m_last.dSector;
    if (std::fabs(std::fabs(dTurn) - c_dHalf) < c_dNear) // to which side it leads is not certain
    {
        m_bChain = false;
        return;
    }
    const int nSector = static_cast<int>(to.dSector);
    const int nEnd = nSector + (dTurn > c_dHalf ? -c_nNumSectors : dTurn < -c_dHalf ? c_nNumSectors : 0);
    while (m_nSector < nEnd)
        Cross(to, m_nSector + 1, true);
    while (m_nSector > nEnd)
        Cross(to, m_nSector, false);
    m_nSector = nSector;
    m_dFarthest = std::max(m_dFarthest, to.dSquare);
    m_last = to;
}

bool CPathView::Hides(double dx, double dy) const noexcept
{
    const CSeen seen = See(dx, dy);
    return seen.dSquare > m_adHidden[static_cast<std::size_t>(seen.dSector)] * c_dMargin;
}

// From outside, a box fills less than half of the directions: those from one of its corners to another.
bool CPathView::Hides(const TBox& box) const noexcept
{
    if (box.Contains(0.0, 0.0))
        return false;
    const double dNearX = std::max({box.xmin, -box.xmax, 0.0});
    const double dNearY = std::max({box.ymin, -box.ymax, 0.0});
    const double dNearest = dNearX * dNearX + dNearY * dNearY;
    const bool bWest = box.xmax < 0.0;
    const bool bEast = box.xmin > 0.0;
    const bool bSouth = box.ymax < 0.0;
    const bool bNorth = box.ymin > 0.0;
    const double dFirst = See(bNorth || (bWest && !bSouth) ? box.xmax : box.xmin,
                              bEast || (bNorth && !bWest) ? box.ymin : box.ymax)
                              .dSector;
    double dLast = See(bNorth || (bEast && !bSouth) ? box.xmin : box.xmax,
                       bEast || (bSouth && !bWest) ? box.ymax : box.ymin)
                       .dSector;
    dLast += dLast < dFirst ? c_nNumSectors : 0;
    for (int i = static_cast<int>(dFirst); i <= static_cast<int>(dLast); ++i)
        if (!(dNearest > m_adHidden[static_cast<std::size_t>(i & (c_nNumSectors - 1))] * c_dMargin))
            return false;
    return true;
}

double CPathView::CalcFarthest() const noexcept
{
    return *std::max_element(m_adHidden.begin(), m_adHidden.end()) * c_dMargin;
}
