#ifndef HOST_SHAPES_CSHAPES_H
#define HOST_SHAPES_CSHAPES_H

#include <host/shapes/TRing.h>
#include <zor3geom/TMultiPartPolygon.h>

#include <string>
#include <vector>

namespace zorcld
{

/// Regions and lines in plan view, in the cloud's own coordinates.
struct CShapes
{
    std::vector<zor::geom::TMultiPartPolygon> vecPolygons;
    std::vector<TRing> vecLines;

    /// The polygons, and those lines that end where they begin.
    /// @throws CFailure naming `sPath` when there is none.
    std::vector<zor::geom::TMultiPartPolygon> GetRegions(const std::string& sPath) const;
};

} // namespace zorcld

#endif
