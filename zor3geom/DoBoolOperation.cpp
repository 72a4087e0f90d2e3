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
    result = geos.GetParts(geos.CalcDifference(geos.MakeRegion(a), geos.MakeRegion(b)));
}

} // namespace zor::geom
