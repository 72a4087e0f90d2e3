#include <zor4data/FindPntsInPolygons.h>

#include <cloud/CCldStores.h>
#include <octree/contour/QueryPolygons.h>

void FindPntsInPolygons(const CPntCld& cld, IPntCldListener* pListener,
                        const std::vector<zor::geom::TMultiPartPolygon>& polygons, bool bOutside, int nBatch)
{
    CCldStores::Ask(cld, 0,
                    [&](const auto& store)
                    {
                        QueryPolygons(store, pListener, polygons, bOutside, nBatch);
                        return 0;
                    });
}
