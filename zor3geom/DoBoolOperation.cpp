#include <zor3geom/DoBoolOperation.h>

#include <zor3geom/CGeos.h>

namespace zor::geom
{

void DoBoolOperation(const TMultiPartPolygon& a, const TMultiPartPolygon& b, BOOL_OP op,
                     std::vector<TMultiPartPolygon>& result)
{
    result.clear();
    if (op != BOOL_OP_SUB)
        return;
    const CGeos geos;
    const CGeos::Geometry regionA = geos.MakeRegion(a);
    const CGeos::Geometry regionB = geos.MakeRegion(b);
    result = geos.GetParts(geos.CalcDifference(regionA.get(), regionB.get()).get());
}

} // namespace zor::geom
