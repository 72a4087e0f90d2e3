#ifndef SAMPLE_CBUILDINGS_H
#define SAMPLE_CBUILDINGS_H

#include <sample/CHashRandom.h>
#include <sample/CLand.h>
#include <sample/CSurface.h>

namespace sample
{

/// The buildings of the villages, one at most on each lot.
class CBuildings
{
public:
    /// @param land  must outlive the object.
    explicit CBuildings(const CLand& land) : m_land(land) {}

    /// @return whether a building stands within the margin of the place, metres, as far as its lot tells.
    bool IsNearBuilding(double x, double y, double dMargin) const;

    /// Lets the pulse end on the building, if it meets one, or on the pavement around it.
    ///
    /// @param random  numbers of the pulse.
    /// @return whether it does.
    bool AddBuilding(double x, double y, CHashRandom& random, CSurface& surface) const;

private:
    struct CLot;

    CLot GetLot(double x, double y) const;
    bool HasBuilding(CLot& lot) const;

    const CLand& m_land;
};

} // namespace sample

#endif
