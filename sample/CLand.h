#ifndef SAMPLE_CLAND_H
#define SAMPLE_CLAND_H

#include <sample/CSurface.h>
#include <sample/Hash.h>

#include <cstdint>

namespace sample
{

/// The land of one seed: ground, roads, and where villages and woods are. Metres from the lower left corner.
class CLand
{
public:
    explicit CLand(std::uint64_t nSeed) : m_nSeed(nSeed) {}

    double CalcGround(double x, double y) const;
    CColor CalcGroundColor(double x, double y) const;

    /// Above 0 in villages.
    double CalcVillage(double x, double y) const;

    /// Above 0 in woods.
    double CalcWood(double x, double y) const;

    /// From the middle of the nearest road.
    double CalcRoadDistance(double x, double y) const;

    /// Lays the road, if there is one, over the ground. Roads bend with the land and keep its height, less
    /// its roughness. @return whether there is one.
    bool AddRoad(double x, double y, CSurface& surface) const;

    /// @return a hash for a cell of a lattice, another for each layer.
    std::uint64_t HashCell(std::int64_t i, std::int64_t k, std::uint64_t nLayer) const
    {
        return Hash(i, k, m_nSeed * 64U + nLayer);
    }

    static constexpr double c_dRoadHalf = 3.2; ///< half the width of a road

private:
    double N(double x, double y, double dSize, std::uint64_t nLayer) const;

    std::uint64_t m_nSeed;
};

} // namespace sample

#endif
