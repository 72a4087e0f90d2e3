#ifndef OCTREE_CONTOUR_QUERYCONTOUR_H
#define OCTREE_CONTOUR_QUERYCONTOUR_H

#include <octree/COcTreeData.h>
#include <zor3geom/PNT_2D.h>

#include <vector>

class CTruncPnt;
class CTruncPnt_Color;
class IPntCldListener;

/// The contour queries, on one store: heights are not looked at, one record a call. Without a tree nothing
/// happens at all; with one without a root, nothing is delivered.
template <class T>
class CQueryContour
{
public:
    using PNT_2D = zor::geom::PNT_2D;

    CQueryContour(const COcTreeData<T>& store, IPntCldListener* pListener)
        : m_store(store), m_pListener(pListener)
    {
    }

    /// The squares wholly inside the contour; of the leaves on it, the points outside it.
    void FindPnts2D_IntCnt(const std::vector<PNT_2D>& contour) const;

    /// The squares wholly inside the outer ring and outside the holes; of the leaves on an edge, the points
    /// in the outer ring, or none where there are holes.
    void FindPnts2D_Cnts(const std::vector<PNT_2D>& outer,
                         const std::vector<std::vector<PNT_2D>>& holes) const;

private:
    const COcTreeData<T>& m_store;
    IPntCldListener* m_pListener;
};

extern template class CQueryContour<CTruncPnt>;
extern template class CQueryContour<CTruncPnt_Color>;

#endif
