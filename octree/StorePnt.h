#ifndef OCTREE_STOREPNT_H
#define OCTREE_STOREPNT_H

#include <octree/COcTreeData.h>
#include <octree/CTruncPnt_Color.h>
#include <octree/Compact.h>

/// Stores a point in the next free slot; the first one sets the origin.
///
/// The offsets are written straight into the slot: a record put together elsewhere and copied would make
/// the processor wait for its parts.
///
/// @param x, y, z  coordinate units.
/// @return the slot, for what else the point carries; null, and nothing changes, when none is free.
template <class T>
inline T* StorePnt(COcTreeData<T>& store, double x, double y, double z) noexcept
{
    if (store.m_nNumAdded >= store.m_nNumPnts)
        return nullptr;
    if (store.m_nNumAdded == 0)
    {
        store.m_fOrgX = SaturateToFloat(x);
        store.m_fOrgY = SaturateToFloat(y);
        store.m_fOrgZ = SaturateToFloat(z);
    }
    T* const pSlot = store.m_pPnts.get() + store.m_nNumAdded;
    pSlot->m_nX = CompactDaCoord(x, store.m_fOrgX);
    pSlot->m_nY = CompactDaCoord(y, store.m_fOrgY);
    pSlot->m_nZ = CompactDaCoord(z, store.m_fOrgZ);
    ++store.m_nNumAdded;
    return pSlot;
}

/// The same with colour, 0 to 255 a channel. @return whether a slot was free.
inline bool StorePntColor(COcTreeData<CTruncPnt_Color>& store, double x, double y, double z, unsigned char r,
                          unsigned char g, unsigned char b) noexcept
{
    CTruncPnt_Color* const pSlot = StorePnt(store, x, y, z);
    if (pSlot == nullptr)
        return false;
    pSlot->m_ucR = r;
    pSlot->m_ucG = g;
    pSlot->m_ucB = b;
    return true;
}

#endif
