#ifndef OCTREE_STOREPNT_H
#define OCTREE_STOREPNT_H

#include <octree/COcTreeData.h>
#include <octree/Compact.h>

/// Stores a point in the next free slot; the first one sets the origin.
///
/// @param x, y, z  coordinate units.
/// @param pnt      the record to store but for its offsets: carries the colour.
/// @return false, and nothing changes, when no slot is free.
template <class T>
inline bool StorePnt(COcTreeData<T>& store, double x, double y, double z, T pnt) noexcept
{
    if (store.m_nNumAdded >= store.m_nNumPnts)
        return false;
    if (store.m_nNumAdded == 0)
    {
        store.m_fOrgX = SaturateToFloat(x);
        store.m_fOrgY = SaturateToFloat(y);
        store.m_fOrgZ = SaturateToFloat(z);
    }
    pnt.m_nX = CompactDaCoord(x, store.m_fOrgX);
    pnt.m_nY = CompactDaCoord(y, store.m_fOrgY);
    pnt.m_nZ = CompactDaCoord(z, store.m_fOrgZ);
    store.m_pPnts.get()[store.m_nNumAdded++] = pnt;
    return true;
}

#endif
