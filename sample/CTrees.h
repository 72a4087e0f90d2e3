#ifndef SAMPLE_CTREES_H
#define SAMPLE_CTREES_H

#include <sample/CBuildings.h>
#include <sample/CHashRandom.h>
#include <sample/CLand.h>
#include <sample/CSurface.h>

#include <cstdint>

namespace sample
{

/// Single trees, and those of the woods.
class CTrees
{
public:
    /// @param land, buildings  where no tree stands; must outlive the object.
    CTrees(const CLand& land, const CBuildings& buildings) : m_land(land), m_buildings(buildings) {}

    /// Lets the pulse end in the highest crown over the place, if it meets one above the surface.
    ///
    /// @param random  numbers of the pulse.
    void AddTrees(double x, double y, CHashRandom& random, CSurface& surface) const;

private:
    /// One tree at most a cell; its crown stays inside the cell.
    void AddTree(double x, double y, double dCell, double dShift, std::uint64_t nLayer, CHashRandom& random,
                 CSurface& surface) const;

    const CLand& m_land;
    const CBuildings& m_buildings;
};

} // namespace sample

#endif
