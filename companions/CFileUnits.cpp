#include <zor4data/CFileUnits.h>

#include <formats/CLasGuard.h>
#include <formats/OpenRegularFile.h>

CFileUnits FindFileUnits(const zor::String& sPath, enumPntCldFile eType)
{
    CFileUnits units;
    CFileCause cause;
    if (eType != PntCldFile_Las || OpenRegularFile(sPath.c_str(), cause) == nullptr)
        return units;
    CLasGuard guard(sPath.c_str());
    if (!guard.Check())
        return units;
    const CCoordSystem coords = guard.ReadCoordSystem();
    units.plan = {coords.plan.sName, coords.GetPlanMetres(), coords.plan.bAngle};
    const CCoordUnit& height = coords.height.IsLength() ? coords.height : coords.plan;
    if (!height.bAngle)
        units.height = {height.sName, coords.GetHeightMetres(), false};
    return units;
}
