#ifndef OCTREE_STOREPNT_H
#define OCTREE_STOREPNT_H

#include <formats/Compact.h>
#include <octree/COcTreeData.h>
#include <octree/CTruncPnt.h>
#include <octree/CTruncPnt_Color.h>

#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Takes the next free slot. @return null, and nothing changes, when none is free.
template <class T>
inline T* TakeSlot(COcTreeData<T>& store) noexcept
{
    if (store.m_nNumAdded >= store.m_nNumPnts)
        return nullptr;
    return store.m_pPnts.get() + store.m_nNumAdded++;
}

#if defined(__SSE2__)

/// Writes the offsets of a point into its record.
///
/// The offsets are written straight into the slot: the processor would have to wait for the parts of a record
/// that is put together elsewhere and copied.
///
/// @return false, and nothing is written, when one may have to be saturated.
template <class T>
inline bool PutOffsets(T& slot, const COcTreeData<T>& store, double x, double y, double z) noexcept
{
    const __m128d orgXY = _mm_set_pd(static_cast<double>(store.m_fOrgY), static_cast<double>(store.m_fOrgX));
    const __m128d orgZ = _mm_set_sd(static_cast<double>(store.m_fOrgZ));
    const __m128d scale = _mm_set1_pd(c_dCompactScale);
    const __m128i xy = _mm_cvttpd_epi32(_mm_mul_pd(_mm_sub_pd(_mm_set_pd(y, x), orgXY), scale));
    const __m128i z0 = _mm_cvttpd_epi32(_mm_mul_sd(_mm_sub_sd(_mm_set_sd(z), orgZ), scale));
    // What is out of range or not a number has become the smallest int32.
    const __m128i worst = _mm_set1_epi32(std::numeric_limits<std::int32_t>::min());
    if (_mm_movemask_epi8(_mm_cmpeq_epi32(_mm_unpacklo_epi64(xy, z0), worst)) != 0)
        return false;
    _mm_storel_epi64(static_cast<__m128i*>(static_cast<void*>(&slot)), xy);
    slot.m_nZ = _mm_cvtsi128_si32(z0);
    return true;
}

#else

template <class T>
inline bool PutOffsets(T& slot, const COcTreeData<T>& store, double x, double y, double z) noexcept
{
    const double dX = CompactUnits(x, store.m_fOrgX);
    const double dY = CompactUnits(y, store.m_fOrgY);
    const double dZ = CompactUnits(z, store.m_fOrgZ);
    if (!FitsInt32(dX) || !FitsInt32(dY) || !FitsInt32(dZ))
        return false;
    slot.m_nX = static_cast<std::int32_t>(dX);
    slot.m_nY = static_cast<std::int32_t>(dY);
    slot.m_nZ = static_cast<std::int32_t>(dZ);
    return true;
}

#endif

/// The rare side of StoreOffsets: it stores the first point, which sets the origin (L6), and offsets that
/// must be saturated.
template <class T>
[[gnu::cold]] [[gnu::noinline]] void StoreOffsetsSlowly(COcTreeData<T>& store, T& slot, double x, double y,
                                                        double z) noexcept
{
    if (store.m_nNumAdded == 1)
    {
        store.m_fOrgX = SaturateToFloat(x);
        store.m_fOrgY = SaturateToFloat(y);
        store.m_fOrgZ = SaturateToFloat(z);
    }
    slot.m_nX = CompactFromCoord(x, store.m_fOrgX);
    slot.m_nY = CompactFromCoord(y, store.m_fOrgY);
    slot.m_nZ = CompactFromCoord(z, store.m_fOrgZ);
}

/// Stores the offsets of a point in the slot that was taken last; L6: the first point sets the origin.
///
/// The caller stores whatever else the point carries before this call: with nothing left to do behind the
/// rare side, the usual side need not save registers for it.
///
/// @param x, y, z  coordinate units.
template <class T>
inline void StoreOffsets(COcTreeData<T>& store, T& slot, double x, double y, double z) noexcept
{
    if (store.m_nNumAdded == 1 || !PutOffsets(slot, store, x, y, z))
        StoreOffsetsSlowly(store, slot, x, y, z);
}

/// Stores a point in the next free slot; the first one sets the origin.
///
/// @param x, y, z  coordinate units.
/// @return whether a slot was free.
inline bool StorePnt(COcTreeData<CTruncPnt>& store, double x, double y, double z) noexcept
{
    CTruncPnt* const pSlot = TakeSlot(store);
    if (pSlot == nullptr)
        return false;
    StoreOffsets(store, *pSlot, x, y, z);
    return true;
}

/// The same with colour, 0 to 255 a channel.
inline bool StorePnt(COcTreeData<CTruncPnt_Color>& store, double x, double y, double z, unsigned char r,
                     unsigned char g, unsigned char b) noexcept
{
    CTruncPnt_Color* const pSlot = TakeSlot(store);
    if (pSlot == nullptr)
        return false;
    pSlot->m_ucR = r;
    pSlot->m_ucG = g;
    pSlot->m_ucB = b;
    StoreOffsets(store, *pSlot, x, y, z);
    return true;
}

#endif
