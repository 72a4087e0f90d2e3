#include <formats/CoordUnits.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{

constexpr double c_dRadian = 3.14159265358979323846 / 180.0;
constexpr double c_dSurveyFoot = 1200.0 / 3937.0;
constexpr double c_dLargestUnit = 1e7; // a unit beyond it is a damaged number

struct CUnitOfCode
{
    int nCode;
    const char* pName;
    double dSize;
    bool bAngle;
};

// Units that coordinates of points come in, by their numbers in the EPSG dataset.
constexpr CUnitOfCode c_aUnits[] = {
    {c_nMetre, "metre", 1.0, false},
    {c_nFoot, "foot", 0.3048, false},
    {c_nSurveyFoot, "US survey foot", c_dSurveyFoot, false},
    {9004, "modified American foot", 12.0004584 / 39.37, false},
    {9005, "Clarke's foot", 0.3047972654, false},
    {9006, "Indian foot", 12.0 / 39.370142, false},
    {9014, "fathom", 1.8288, false},
    {9030, "nautical mile", 1852.0, false},
    {9031, "German legal metre", 1.0000135965, false},
    {9036, "kilometre", 1000.0, false},
    {9037, "Clarke's yard", 0.9143917962, false},
    {9039, "Clarke's link", 0.201166195164, false},
    {9040, "British yard (Sears 1922)", 0.914398414616029, false},
    {9041, "British foot (Sears 1922)", 0.304799471538676, false},
    {9042, "British chain (Sears 1922)", 20.1167651215526, false},
    {9080, "Indian foot", 0.304799510248147, false},
    {9084, "Indian yard", 0.914398530744441, false},
    {9093, "statute mile", 1609.344, false},
    {9094, "Gold Coast foot", 0.304799710181509, false},
    {9096, "yard", 0.9144, false},
    {9097, "chain", 20.1168, false},
    {9098, "link", 0.201168, false},
    {1025, "millimetre", 0.001, false},
    {1033, "centimetre", 0.01, false},
    {9101, "radian", 1.0, true},
    {c_nDegree, "degree", c_dRadian, true},
    {9103, "arc-minute", c_dRadian / 60.0, true},
    {9104, "arc-second", c_dRadian / 3600.0, true},
    {9105, "grad", 0.9 * c_dRadian, true},
    {9106, "gon", 0.9 * c_dRadian, true},
    {9122, "degree", c_dRadian, true},
};

std::string ToLower(std::string_view sText)
{
    std::string sLower(sText);
    for (char& c : sLower)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return sLower;
}

bool Has(const std::string& sText, const char* pPart)
{
    return sText.find(pPart) != std::string::npos;
}

/// @return the size of a unit that is called so; 0: not known.
double SizeFromName(const std::string& sName, bool bAngle)
{
    if (bAngle)
        return Has(sName, "deg") ? c_dRadian : 0.0;
    if (Has(sName, "foot") || Has(sName, "feet") || sName.substr(0, 2) == "ft")
        return Has(sName, "us") || Has(sName, "survey") || Has(sName, "u.s") ? c_dSurveyFoot : 0.3048;
    const bool bMetre = sName == "m" || sName.substr(0, 5) == "metre" || sName.substr(0, 5) == "meter";
    return bMetre ? 1.0 : 0.0;
}

bool IsSize(double d)
{
    return std::isnormal(d) && d > 0.0 && d < c_dLargestUnit;
}

} // namespace

CCoordUnit UnitFromCode(int nCode)
{
    const auto* const pFound = std::find_if(std::begin(c_aUnits), std::end(c_aUnits),
                                            [nCode](const CUnitOfCode& unit) { return unit.nCode == nCode; });
    if (pFound == std::end(c_aUnits))
        return {};
    return {pFound->pName, pFound->dSize, pFound->bAngle};
}

CCoordUnit UnitFromSize(double dSize, bool bAngle)
{
    constexpr double c_dRounded = 1e-8; // feet of different countries lie farther apart
    const auto* const pFound = std::find_if(
        std::begin(c_aUnits), std::end(c_aUnits),
        [&](const CUnitOfCode& unit)
        { return unit.bAngle == bAngle && std::fabs(unit.dSize - dSize) <= c_dRounded * unit.dSize; });
    return UnitFromName(pFound == std::end(c_aUnits) ? "" : pFound->pName, dSize, bAngle);
}

CCoordUnit UnitFromName(std::string_view sName, double dSize, bool bAngle)
{
    CCoordUnit unit = {std::string(sName), IsSize(dSize) ? dSize : 0.0, bAngle};
    const double dOfName = SizeFromName(ToLower(sName), bAngle);
    if (!IsSize(dSize) || (!bAngle && dSize == 1.0 && dOfName > 0.0))
        unit.dSize = dOfName;
    if (unit.sName.empty())
        unit.sName = bAngle ? "angle" : "length";
    return unit;
}
