#include <formats/CGeoKeys.h>

#include <formats/CoordUnits.h>
#include <formats/EpsgFeet.h>

#include <algorithm>

namespace
{

constexpr std::size_t c_nEntry = 4; // numbers of the head, and of a key: its number, where, how many, what

// Where the value of a key stands: in the directory itself, or in one of the other two.
constexpr int c_nHere = 0;
constexpr int c_nInDoubles = 34736;
constexpr int c_nInTexts = 34737;

constexpr int c_nModel = 1024; // 1: projected, 2: longitudes and latitudes, 3: from the middle of the earth
constexpr int c_nProjected = 1;
constexpr int c_nGeographic = 2;
constexpr int c_nGeocentric = 3;
constexpr int c_nCitation = 1026;
constexpr int c_nGeographicCode = 2048;
constexpr int c_nGeographicCitation = 2049;
constexpr int c_nGeoLengthUnit = 2052;
constexpr int c_nGeoLengthSize = 2053;
constexpr int c_nAngleUnit = 2054;
constexpr int c_nAngleSize = 2055;
constexpr int c_nProjectedCode = 3072;
constexpr int c_nProjectedCitation = 3073;
constexpr int c_nLengthUnit = 3076;
constexpr int c_nLengthSize = 3077;
constexpr int c_nHeightCode = 4096;
constexpr int c_nHeightUnit = 4099;

constexpr int c_nUserDefined = 32767;

bool IsCode(std::optional<int> code)
{
    return code && *code > 0 && *code < c_nUserDefined;
}

/// @return the first of them that is a name: what writers put where they have none is none.
std::string FirstName(const std::string& sName, const std::string& sOther)
{
    for (const std::string& sText : {sName, sOther})
        if (!sText.empty() && sText != "unknown" && sText != "unnamed")
            return sText;
    return {};
}

} // namespace

/// Where the directory ends before it says so, so do the keys.
const std::uint16_t* CGeoKeys::FindEntry(int nKey) const
{
    if (vecDirectory.size() < c_nEntry)
        return nullptr;
    const std::size_t nNumKeys = std::min<std::size_t>(vecDirectory[3], vecDirectory.size() / c_nEntry - 1);
    for (std::size_t i = 1; i <= nNumKeys; ++i)
        if (vecDirectory[i * c_nEntry] == nKey)
            return &vecDirectory[i * c_nEntry];
    return nullptr;
}

std::optional<int> CGeoKeys::FindNumber(int nKey) const
{
    const std::uint16_t* const pEntry = FindEntry(nKey);
    if (pEntry == nullptr || pEntry[1] != c_nHere)
        return {};
    return pEntry[3];
}

std::optional<double> CGeoKeys::FindDouble(int nKey) const
{
    const std::uint16_t* const pEntry = FindEntry(nKey);
    if (pEntry == nullptr || pEntry[1] != c_nInDoubles || pEntry[3] >= vecDoubles.size())
        return {};
    return vecDoubles[pEntry[3]];
}

std::string CGeoKeys::FindText(int nKey) const
{
    const std::uint16_t* const pEntry = FindEntry(nKey);
    if (pEntry == nullptr || pEntry[1] != c_nInTexts || pEntry[3] >= sTexts.size())
        return {};
    std::string sText = sTexts.substr(pEntry[3], pEntry[2]);
    sText.resize(std::min(sText.find('\0'), sText.size()));
    sText.resize(sText.find_last_not_of("| ") + 1);
    std::replace_if(
        sText.begin(), sText.end(), [](unsigned char c) { return c < ' ' || c > '~'; }, '?');
    return sText;
}

CCoordUnit CGeoKeys::FindUnit(int nKey, int nSizeKey, bool bAngle) const
{
    const std::optional<int> code = FindNumber(nKey);
    if (!code)
        return {};
    const CCoordUnit unit = UnitFromCode(*code);
    if (unit.IsStated())
        return unit;
    const std::optional<double> size = FindDouble(nSizeKey);
    return size ? UnitFromName("user-defined", *size, bAngle) : CCoordUnit();
}

void CGeoKeys::TakePlan(CCoordSystem& coords, bool bProjected) const
{
    const std::optional<int> code = FindNumber(bProjected ? c_nProjectedCode : c_nGeographicCode);
    if (IsCode(code))
        coords.sCode = "EPSG:" + std::to_string(*code);
    coords.sName =
        FirstName(FindText(bProjected ? c_nProjectedCitation : c_nGeographicCitation), FindText(c_nCitation));
    coords.plan = bProjected ? FindUnit(c_nLengthUnit, c_nLengthSize, false)
                             : FindUnit(c_nAngleUnit, c_nAngleSize, true);
    if (!coords.plan.IsStated() && !bProjected)
        coords.plan = UnitFromCode(c_nDegree); // as the keys have it where they do not say
    if (!coords.plan.IsStated() && IsCode(code))
        coords.plan = UnitFromCode(FindFeetOfProjection(*code));
}

void CGeoKeys::TakeHeight(CCoordSystem& coords) const
{
    coords.height = FindUnit(c_nHeightUnit, 0, false);
    const std::optional<int> code = FindNumber(c_nHeightCode);
    if (!coords.height.IsStated() && IsCode(code))
        coords.height = UnitFromCode(FindFeetOfHeights(*code));
}

CCoordSystem CGeoKeys::GetCoordSystem() const
{
    CCoordSystem coords;
    int nModel = FindNumber(c_nModel).value_or(0);
    if (nModel != c_nProjected && nModel != c_nGeographic && nModel != c_nGeocentric)
        nModel = FindNumber(c_nProjectedCode)    ? c_nProjected
                 : FindNumber(c_nGeographicCode) ? c_nGeographic
                                                 : 0;
    if (nModel == 0 && !FindNumber(c_nHeightUnit) && !FindNumber(c_nHeightCode))
        return coords;
    coords.eSource = enumCoordSource::GeoKeys;
    if (nModel == c_nGeocentric)
    {
        coords.sName = FirstName(FindText(c_nCitation), "geocentric");
        coords.plan = FindUnit(c_nGeoLengthUnit, c_nGeoLengthSize, false);
    }
    else if (nModel != 0)
    {
        TakePlan(coords, nModel == c_nProjected);
    }
    TakeHeight(coords);
    return coords;
}
