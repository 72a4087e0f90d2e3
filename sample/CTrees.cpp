#include <sample/CTrees.h>

#include <cmath>

namespace sample
{

void CTrees::AddTrees(double x, double y, CHashRandom& random, CSurface& surface) const
{
    AddTree(x, y, 13.0, 0.0, 21, random, surface);
    AddTree(x, y, 11.0, 5.2, 22, random, surface);
    AddTree(x, y, 9.0, 2.9, 23, random, surface);
}

void CTrees::AddTree(double x, double y, double dCell, double dShift, std::uint64_t nLayer,
                     CHashRandom& random, CSurface& surface) const
{
    const auto i = static_cast<std::int64_t>(std::floor((x + dShift) / dCell));
    const auto k = static_cast<std::int64_t>(std::floor((y + dShift) / dCell));
    CHashRandom tree(m_land.HashCell(i, k, nLayer));
    const double dChance = tree.Next();
    const double dRadius = dCell * tree.Next(0.2, 0.38);
    const double dPlay = dCell * 0.5 - dRadius;
    const double dX = (static_cast<double>(i) + 0.5) * dCell - dShift + tree.Next(-dPlay, dPlay);
    const double dY = (static_cast<double>(k) + 0.5) * dCell - dShift + tree.Next(-dPlay, dPlay);
    const double dSquare = ((x - dX) * (x - dX) + (y - dY) * (y - dY)) / (dRadius * dRadius);
    if (dSquare >= 1.0 || dChance > (m_land.CalcWood(dX, dY) > 0.0 ? 0.85 : 0.05))
        return;
    if (m_land.CalcRoadDistance(dX, dY) < CLand::c_dRoadHalf + 0.6 * dRadius ||
        m_buildings.IsNearBuilding(dX, dY, dRadius))
        return;

    const bool bConifer = tree.Next() < 0.4;
    const double dHeight = dRadius * (bConifer ? tree.Next(3.6, 5.2) : tree.Next(2.4, 3.6));
    const double dShade = tree.Next(0.82, 1.15);
    if (random.Next() < 0.08)
        return;                                   // the pulse reached the ground
    const double dCrown = bConifer ? 0.86 : 0.62; // share of the height that the crown takes
    const double dTop = bConifer ? 1.0 - std::sqrt(dSquare) : std::sqrt(1.0 - dSquare);
    const double dShare = 1.0 - dCrown + dCrown * dTop * (random.Next() < 0.8 ? 1.0 : random.Next(0.3, 1.0));
    const double z = m_land.CalcGround(dX, dY) + dHeight * dShare + random.Next(-0.25, 0.25);
    if (z <= surface.z)
        return;
    surface.z = z;
    const CColor leaf = bConifer ? CColor{62, 92, 58} : CColor{92, 122, 54};
    surface.color = Scale(leaf, dShade * (0.55 + 0.5 * dShare) * random.Next(0.9, 1.1));
}

} // namespace sample
