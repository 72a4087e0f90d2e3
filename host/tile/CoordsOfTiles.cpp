#include <host/tile/CoordsOfTiles.h>

#include <formats/CoordUnits.h>
#include <host/tile/CTilePnt.h>

namespace zorcld
{

CCoordSystem CoordsOfTiles(const CTileUnits& units)
{
    CCoordSystem coords;
    if (units.bAngles || units.dPlan > 0.0)
        coords.plan = UnitFromSize(units.bAngles ? units.dRadians : units.dPlan, units.bAngles);
    if (units.dHeight > 0.0 && units.dHeight != units.dPlan) // else that of x and y holds for z, too
        coords.height = UnitFromSize(units.dHeight, false);
    return coords;
}

} // namespace zorcld
