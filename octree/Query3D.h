#ifndef OCTREE_QUERY3D_H
#define OCTREE_QUERY3D_H

#include <octree/CIndexVisitor.h>
#include <octree/COcTreeListener.h>
#include <zor3geom/PLANE_3D.h>

#include <vector>

/// The queries in space, on one store. Each makes its visitor (one `SetZRange`), walks, and flushes.
/// Without a tree, or with one without a root, all but the first deliver nothing.
///
/// @tparam Visitor  what it delivers: records, or indices alone (`CIndexVisitor`, which sets no range).
template <class T, class Visitor = COcTreeListener<T>>
class CQuery3D
{
public:
    using IHost = typename Visitor::IHost;

    CQuery3D(const COcTreeData<T>& store, IHost* pListener, int nBatch)
        : m_store(store), m_pListener(pListener), m_nBatch(nBatch)
    {
    }

    /// Delivers every live point, in index order.
    void GetPnts() const;

    /// Delivers a level of detail. @param dLod  spacing, coordinate units.
    void GetPnts_Lod(double dLod) const;

    /// Delivers the points in front of none of the planes, coordinate units.
    void GetPnts_Clip(const std::vector<zor::geom::PLANE_3D>& vecPlanes) const;

    /// Delivers a level of detail of the points in front of none of the planes.
    void GetPnts_LodClip(double dLod, const std::vector<zor::geom::PLANE_3D>& vecPlanes) const;

private:
    template <class TFn>
    void WalkClipped(const std::vector<zor::geom::PLANE_3D>& vecPlanes, TFn walk) const;

    const COcTreeData<T>& m_store;
    IHost* m_pListener;
    int m_nBatch;
};

extern template class CQuery3D<CTruncPnt, COcTreeListener<CTruncPnt>>;
extern template class CQuery3D<CTruncPnt_Color, COcTreeListener<CTruncPnt_Color>>;
extern template class CQuery3D<CTruncPnt, CIndexVisitor<CTruncPnt>>;
extern template class CQuery3D<CTruncPnt_Color, CIndexVisitor<CTruncPnt_Color>>;

#endif
