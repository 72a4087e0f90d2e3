#include <octree/contour/QueryContour.h>

#include <octree/HasRoot.h>
#include <octree/contour/WalkContour.h>

using zor::geom::PNT_2D;
using zor::geom::TMultiPartPolygon;

namespace
{

template <class T>
void FindContour(const COcTreeData<T>& store, IPntCldListener* pListener, const TMultiPartPolygon& polygon,
                 enumContourLeaf eLeaf)
{
    if (store.m_pTree == nullptr)
        return; // no call at all, not even of SetZRange
    COcTreeListener<T> listener(pListener, store, 1);
    if (HasRoot(store))
        CWalkContour<T>(store, listener, polygon, eLeaf).Walk();
    listener.OnLeafEnd();
}

} // namespace

// KEPT: in straddling leaves the test is the other way round: squares inside the contour deliver all, and of
// the leaves on it come the points outside (IntCnt_DeliversTheOutsideOfStraddlingLeaves_Kept).
template <class T>
void CQueryContour<T>::FindPnts2D_IntCnt(const std::vector<PNT_2D>& contour) const
{
    FindContour(m_store, m_pListener, {contour, {}}, enumContourLeaf::OutsideRing);
}

// KEPT: with holes given, a point of a straddling leaf that lies in the outer ring is taken to lie in a hole:
// such leaves deliver nothing (Cnts_HoleDropsEveryStraddlingLeaf_Kept).
template <class T>
void CQueryContour<T>::FindPnts2D_Cnts(const std::vector<PNT_2D>& outer,
                                       const std::vector<std::vector<PNT_2D>>& holes) const
{
    FindContour(m_store, m_pListener, {outer, holes},
                holes.empty() ? enumContourLeaf::InsideRing : enumContourLeaf::Nothing);
}

template class CQueryContour<CTruncPnt>;
template class CQueryContour<CTruncPnt_Color>;
