#include <host/query/FilterGround.h>

#include <formats/CCoordSystem.h>
#include <formats/CloudLimits.h>
#include <host/output/CFailure.h>
#include <host/output/UnitSymbol.h>
#include <zor4data/CPntCld.h>
#include <zor4data/FindGround.h>
#include <zor4data/KeepPnts.h>

#include <fmt/format.h>

namespace zorcld
{

std::vector<int> FindGroundPnts(const CPntCld& cloud, const CGroundScale& scale, const std::string& sPath,
                                IPclProgressListener* pListener)
{
    std::vector<int> vecGround;
    if (!FindGround_Scaled(cloud, scale, pListener, vecGround))
        throw CFailure(sPath, fmt::format("is wider or higher than {} metres", c_nReach));
    return vecGround;
}

void FilterGround(CPntCld& cloud, const CGroundScale& scale, const std::string& sPath,
                  IPclProgressListener* pListener)
{
    if (scale.IsOne() || cloud.GetNumPnts() == 0)
        return cloud.Morph(pListener);
    const std::vector<int> vecGround = FindGroundPnts(cloud, scale, sPath, pListener);
    if (vecGround.size() < static_cast<std::size_t>(cloud.GetNumPnts())) // else the order may stay, too
        KeepPnts(cloud, vecGround);
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
