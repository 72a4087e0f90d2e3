#include <host/output/UnitSymbol.h>

#include <formats/CCoordSystem.h>
#include <formats/MakePrintable.h>

#include <cmath>

namespace zorcld
{

namespace
{

constexpr double c_dDegree = 3.14159265358979323846 / 180.0;

bool IsNear(double d, double dOther)
{
    return std::fabs(d - dOther) < 1e-5 * dOther; // feet of every country
}

} // namespace

bool IsDegree(const CCoordUnit& unit)
{
    return unit.bAngle && IsNear(unit.dSize, c_dDegree);
}

std::string GetUnitSymbol(const CCoordUnit& unit)
{
    if (IsDegree(unit))
        return "degrees";
    if (unit.IsLength() && IsNear(unit.dSize, 1.0))
        return "m";
    if (unit.IsLength() && IsNear(unit.dSize, 0.3048))
        return "ft";
    if (unit.IsLength() && IsNear(unit.dSize, 1000.0))
        return "km";
    return MakePrintableName(unit.sName);
}

} // namespace zorcld
