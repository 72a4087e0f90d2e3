#include <formats/CoordSystemFromWkt.h>

#include <formats/CWktNode.h>
#include <formats/CoordUnits.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace
{

constexpr std::array<std::string_view, 2> c_asCompound = {"COMPD_CS", "COMPOUNDCRS"};
constexpr std::array<std::string_view, 4> c_asHeight = {"VERT_CS", "VERTCS", "VERTCRS", "VERTICALCRS"};
constexpr std::array<std::string_view, 5> c_asGeographic = {"GEOGCS", "GEOGCRS", "GEOGRAPHICCRS", "GEODCRS",
                                                            "GEODETICCRS"};
constexpr std::array<std::string_view, 8> c_asOtherPlan = {
    "PROJCS", "PROJCRS", "PROJECTEDCRS", "DERIVEDPROJCRS", "GEOCCS", "LOCAL_CS", "ENGCRS", "ENGINEERINGCRS"};

template <std::size_t nNum>
bool IsOneOf(const CWktNode& node, const std::array<std::string_view, nNum>& asNames)
{
    return std::find(asNames.begin(), asNames.end(), node.sKeyword) != asNames.end();
}

bool IsPlan(const CWktNode& node)
{
    return IsOneOf(node, c_asGeographic) || IsOneOf(node, c_asOtherPlan);
}

/// What a text is made of.
struct CParts
{
    const CWktNode* pPlan = nullptr;
    const CWktNode* pHeight = nullptr;
};

/// Some writers put the heights behind the system or into it, instead of around both.
void CollectParts(const CWktNode& node, CParts& parts)
{
    if (IsOneOf(node, c_asHeight))
        parts.pHeight = parts.pHeight == nullptr ? &node : parts.pHeight;
    else if (IsPlan(node) && parts.pPlan == nullptr)
        parts.pPlan = &node;
    else if (!IsOneOf(node, c_asCompound) && !node.Is("BOUNDCRS") && !node.Is("SOURCECRS"))
        return;
    for (const CWktNode& child : node.vecNodes)
        if (!IsPlan(node) || IsOneOf(child, c_asHeight))
            CollectParts(child, parts);
}

/// With axes of lengths from the middle of the earth, not of angles on it.
bool IsCartesian(const CWktNode& node)
{
    const CWktNode* const pCs = node.Find("CS");
    return pCs != nullptr && !pCs->vecWords.empty() && pCs->vecWords.front() == "CARTESIAN";
}

const CWktNode* FindUnitNode(const CWktNode& node)
{
    for (const char* const pName : {"LENGTHUNIT", "ANGLEUNIT", "UNIT"})
        if (const CWktNode* const pUnit = node.Find(pName))
            return pUnit;
    return nullptr;
}

CCoordUnit ReadUnit(const CWktNode* pUnit, bool bAngle)
{
    if (pUnit == nullptr)
        return {};
    return UnitFromName(pUnit->GetName(), pUnit->vecNumbers.empty() ? 0.0 : pUnit->vecNumbers.front(),
                        pUnit->Is("UNIT") ? bAngle : pUnit->Is("ANGLEUNIT"));
}

/// Of the axis `nAxis`: its own unit, or the one for all.
CCoordUnit FindUnit(const CWktNode& node, std::size_t nAxis)
{
    std::vector<const CWktNode*> vecAxes;
    for (const CWktNode& child : node.vecNodes)
        if (child.Is("AXIS"))
            vecAxes.push_back(&child);
    const bool bAngle = IsOneOf(node, c_asGeographic) && !IsCartesian(node);
    if (nAxis < vecAxes.size())
        if (const CWktNode* const pUnit = FindUnitNode(*vecAxes[nAxis]))
            return ReadUnit(pUnit, bAngle && nAxis < 2);
    return nAxis < 2 ? ReadUnit(FindUnitNode(node), bAngle) : CCoordUnit();
}

std::string FindCode(const CWktNode& node)
{
    const CWktNode* const pId = node.Find("ID") != nullptr ? node.Find("ID") : node.Find("AUTHORITY");
    if (pId == nullptr || pId->vecTexts.empty())
        return {};
    std::string sNumber;
    if (pId->vecTexts.size() > 1)
        sNumber = pId->vecTexts[1];
    else if (!pId->vecNumbers.empty() && pId->vecNumbers.front() >= 0.0 && pId->vecNumbers.front() < 1e9)
        sNumber = std::to_string(static_cast<long>(pId->vecNumbers.front()));
    return sNumber.empty() ? std::string() : pId->vecTexts.front() + ":" + sNumber;
}

} // namespace

CCoordSystem CoordSystemFromWkt(std::string_view sText)
{
    CCoordSystem coords;
    const std::vector<CWktNode> vecNodes = ParseWktNodes(sText);
    CParts parts;
    for (const CWktNode& node : vecNodes)
        CollectParts(node, parts);
    if (parts.pPlan == nullptr && parts.pHeight == nullptr)
        return coords;
    coords.eSource = enumCoordSource::Wkt;
    coords.sWkt = sText;
    const CWktNode& whole =
        IsOneOf(vecNodes.front(), c_asCompound) || parts.pPlan == nullptr ? vecNodes.front() : *parts.pPlan;
    coords.sName = whole.GetName();
    coords.sCode = FindCode(whole);
    if (parts.pPlan != nullptr)
    {
        coords.plan = FindUnit(*parts.pPlan, 0);
        coords.height = FindUnit(*parts.pPlan, 2);
    }
    if (parts.pHeight != nullptr)
        coords.height = FindUnit(*parts.pHeight, 0);
    return coords;
}
