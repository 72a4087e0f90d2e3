#include <host/shapes/CShapes.h>

#include <host/output/CFailure.h>

namespace zorcld
{

std::vector<zor::geom::TMultiPartPolygon> CShapes::GetRegions(const std::string& sPath) const
{
    std::vector<zor::geom::TMultiPartPolygon> vecRegions = vecPolygons;
    for (const TRing& line : vecLines)
        if (line.size() > 3 && IsClosed(line))
            vecRegions.push_back({line, {}});
    if (vecRegions.empty())
        throw CFailure(sPath, "holds neither a polygon nor a closed line");
    return vecRegions;
}

} // namespace zorcld
