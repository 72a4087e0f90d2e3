#include <host/query/FilterGround.h>

#include <formats/CCoordSystem.h>
#include <formats/CloudLimits.h>
#include <host/output/CFailure.h>
#include <host/output/UnitSymbol.h>
#include <host/query/Query.h>
#include <zor4data/CPntCld.h>
#include <zor4data/FindGround.h>

#include <fmt/format.h>

#include <algorithm>

namespace zorcld
{

std::vector<int> FindNotGround(const CPntCld& cloud, const CGroundScale& scale, const std::string& sPath,
                               IPclProgressListener* pListener)
{
    std::vector<int> vecGround;
    if (!FindGround_Scaled(cloud, scale, pListener, vecGround))
        throw CFailure(sPath, fmt::format("is wider or higher than {} metres", c_nReach));
    std::vector<int> vecOthers;
    ForEachPnt(cloud, CQuery(),
               [&](const CCldCadPnt& pnt)
               {
                   if (!std::binary_search(vecGround.begin(), vecGround.end(), pnt.m_nIndex))
                       vecOthers.push_back(pnt.m_nIndex);
               });
    return vecOthers;
}

void RemovePnts(CPntCld& cloud, const std::vector<int>& vecIndices)
{
    cloud.UnSelPnts();
    for (const int nIndex : vecIndices)
        cloud.SelPnt(nIndex, false);
    cloud.DelSelPnts();
}

void FilterGround(CPntCld& cloud, const CGroundScale& scale, const std::string& sPath,
                  IPclProgressListener* pListener)
{
    if (scale.IsOne() || cloud.GetNumPnts() == 0)
        cloud.Morph(pListener);
    else
        RemovePnts(cloud, FindNotGround(cloud, scale, sPath, pListener));
}

CGroundScale FindGroundScale(const CCoordSystem& coords, const std::string& sPath)
{
    if (coords.plan.bAngle)
        throw CFailure(
            sPath,
            fmt::format("its x and y are angles ({}), the ground filter goes by metres: it must be projected "
                        "first; if they are none, --unit-scale tells how many metres a unit is",
                        GetUnitSymbol(coords.plan)));
    CGroundScale scale;
    if (coords.GetPlanMetres() > 0.0)
        scale.dPlan = coords.GetPlanMetres();
    if (coords.GetHeightMetres() > 0.0)
        scale.dHeight = coords.GetHeightMetres();
    return scale;
}

} // namespace zorcld
