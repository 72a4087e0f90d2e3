#include <zor4data/PickPnt.h>

#include <cloud/CCldStores.h>
#include <octree/CNearKey.h>
#include <octree/CRayKey.h>
#include <octree/WalkBest.h>

using zor::geom::PLANE_3D;
using zor::geom::PNT_2D;
using zor::geom::PNT_3D;

namespace
{

template <class Key>
int FindBest(const CPntCld& cld, const Key& key)
{
    if (!key.IsValid())
        return -1;
    return CCldStores::Ask(cld, -1, [&](const auto& store) { return FindBestPnt(store, key); });
}

} // namespace

int PickPnt(const CPntCld& cld, const PNT_3D& from, const PNT_3D& direction, double dTan,
            const std::vector<PLANE_3D>& planes)
{
    return FindBest(cld, CRayKey(from, direction, dTan, planes));
}

int FindNearestPnt(const CPntCld& cld, const PNT_3D& pnt, double dMax)
{
    return FindBest(cld, CNearKey<false>(pnt, dMax));
}

int FindNearestPnt2D(const CPntCld& cld, const PNT_2D& pnt, double dMax)
{
    return FindBest(cld, CNearKey<true>(PNT_3D(pnt.x, pnt.y, 0.0), dMax));
}
